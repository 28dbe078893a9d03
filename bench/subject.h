// SPDX-License-Identifier: Apache-2.0
// An operation with everything that a call of it needs.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "support/arguments.h"

namespace lx::bench {

using catalogue::Operation;
using Image = std::unique_ptr<LxGenericROI>;

struct Subject {
  const Operation* operation;
  int choice;  ///< -1 for an operation without choices
  int width;
  int height;
  test::Arguments call;  ///< standard values, and images of noise
  std::vector<Image> images;

  Subject(const Operation& described, int selected, int w, int h);

  std::string Name() const;
  /// Bytes of the larger of one source and the destination.
  std::size_t ImageBytes() const;
  /// Two images of that size, in memory like the subject's own.
  std::pair<Image, Image> MakeCopyPair() const;
  /// The images in the order of the parameters: those that are read, or those that are written.
  std::vector<LxGenericROI*> Images(bool written) const;

 private:
  struct PixelSize {
    catalogue::Pixel type;
    std::size_t bytes;
  };
  PixelSize LargestPixel() const;
};

}  // namespace lx::bench
