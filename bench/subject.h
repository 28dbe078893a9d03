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

/// What a member is called on.
struct MadeObject {
  std::shared_ptr<void> owner;
  catalogue::Argument argument;
};

/// One way to call an operation: what differs from its most usual arguments.
struct Form {
  std::string label = {};  ///< behind the operation's name; "" for the only form
  int choice = -1;         ///< of an operation with choices
  std::vector<std::pair<std::string, double>> numbers = {};  ///< by the parameters' names
  std::shared_ptr<LxKernel> kernel = {};
  bool inPlace = false;
  int divisor = 1;  ///< the destination's sides are this part of the source's
  test::Content content = test::Content::kNoise;
  /// Of vectors that may have any, filled with noise, or waves for a ramp; 0 for the usual one.
  std::size_t length = 0;
  /// What images show instead.
  void (*paint)(LxGenericROI& image) = nullptr;
  std::string size = {};  ///< "512x512", of an operation that does not take the usual ones
  /// What a member is called on, made for images of a size.
  MadeObject (*object)(int width, int height) = nullptr;
};

struct Subject {
  const Operation* operation;
  Form form;
  int width;
  int height;
  test::Arguments call;
  std::vector<Image> images;
  MadeObject object;

  Subject(const Operation& described, const Form& selected, int w, int h);

  std::string Name() const;
  /// Bytes of the larger of one source and the destination; 0 without images.
  std::size_t ImageBytes() const;
  /// Two images of that size, in memory like the subject's own.
  std::pair<Image, Image> MakeCopyPair() const;
  /// Why a call is not worth timing; "" when it is.
  std::string WhyNot();

 private:
  struct Measure {
    catalogue::Pixel pixel;
    int width;
    int height;
    std::size_t bytes;
  };
  /// Coordinates apart.
  Measure LargestImage() const;
  catalogue::Extent SizeOf(const catalogue::Parameter& parameter) const;
};

}  // namespace lx::bench
