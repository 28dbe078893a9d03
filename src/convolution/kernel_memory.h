// SPDX-License-Identifier: Apache-2.0
// The working memory of the kernel engine's workers.
#pragma once

#include <cstddef>

namespace lx::convolution {

// A ring of padded rows, each of all components, in elements of 16 bits, with some spare rows behind
// it, and rows of components on their way in or out.
struct FixedMemory {
  std::size_t stride;  // elements from component to component
  void* rows;
  void* components;
};

// A ring of rows in single precision with their surroundings, a row of nothing but outside, a row
// of components on their way in, and one of components on their way out.
struct RealMemory {
  std::size_t slots;
  std::size_t stride;  // elements from component to component
  float* rows;
  float* outside;
  void* input;
  void* output;
  const float** taps;  // the rows of one result, kernel row by kernel row
};

}  // namespace lx::convolution
