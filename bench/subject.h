// SPDX-License-Identifier: Apache-2.0
// An operation with everything that a call of it needs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "support/arguments.h"

namespace lx::bench {

using catalogue::Operation;

struct Subject {
  const Operation* operation;
  int choice;  ///< -1 for an operation without choices
  int width;
  int height;
  test::Arguments call;  ///< standard values, and images of noise
  std::vector<std::unique_ptr<LxGenericROI>> images;

  Subject(const Operation& described, int selected, int w, int h);

  std::string Name() const;
  /// Bytes of the larger of one source and the destination.
  std::size_t ImageBytes() const;
  /// The images in the order of the parameters: those that are read, or those that are written.
  std::vector<LxGenericROI*> Images(bool written) const;
};

}  // namespace lx::bench
