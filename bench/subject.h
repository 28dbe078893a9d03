// SPDX-License-Identifier: Apache-2.0
// An operation with everything that a call of it needs.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "support/trial/arguments.h"

namespace lx::bench {

using catalogue::Operation;
using Image = std::unique_ptr<LxGenericROI>;

/// One way to call an operation: what differs from its standard arguments.
struct Form {
  std::string label;            ///< behind the operation's name; "" for the only form
  int choice = -1;              ///< of an operation with choices
  std::vector<double> numbers;  ///< of the last parameters
  std::shared_ptr<LxKernel> kernel;
  bool inPlace = false;
};

/// The forms that are timed.
std::vector<Form> FormsOf(const Operation& operation);
/// Those of neighbourhood operations: their sizes and kernels, and some in place.
std::vector<Form> ConvolutionForms(const Operation& operation);

struct Subject {
  const Operation* operation;
  Form form;
  int width;
  int height;
  test::Arguments call;  ///< standard values, and images of noise
  std::vector<Image> images;

  Subject(const Operation& described, const Form& selected, int w, int h);

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
