// SPDX-License-Identifier: Apache-2.0
// An operation with everything that a call of it needs.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/trial/arguments.h"
#include "support/trial/content.h"

namespace lx::bench {

using catalogue::Operation;
using Image = std::unique_ptr<LxGenericROI>;

/// One way to call an operation: what differs from its most usual arguments.
struct Form {
  std::string label = {};  ///< behind the operation's name; "" for the only form
  int choice = -1;         ///< of an operation with choices
  std::vector<std::pair<std::string, double>> numbers = {};  ///< by the parameters' names
  std::shared_ptr<LxKernel> kernel = {};
  bool inPlace = false;
  test::Content content = test::Content::kNoise;
};

struct Subject {
  const Operation* operation;
  Form form;
  int width;
  int height;
  test::Arguments call;
  std::vector<Image> images;

  Subject(const Operation& described, const Form& selected, int w, int h);

  std::string Name() const;
  /// Bytes of the larger of one source and the destination; 0 without images.
  std::size_t ImageBytes() const;
  /// Two images of that size, in memory like the subject's own.
  std::pair<Image, Image> MakeCopyPair() const;
  /// Why a call is not worth timing; "" when it is.
  std::string WhyNot();

 private:
  struct PixelSize {
    catalogue::Pixel type;
    std::size_t bytes;
  };
  PixelSize LargestPixel() const;
};

}  // namespace lx::bench
