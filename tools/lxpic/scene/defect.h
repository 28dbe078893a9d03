// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace lx::tool {

/// A defect that was drawn into a picture, and the box of its pixels.
struct Defect {
  std::string kind;
  int x;
  int y;
  int width;
  int height;
};

}  // namespace lx::tool
