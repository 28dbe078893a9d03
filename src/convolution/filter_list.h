// SPDX-License-Identifier: Apache-2.0
// The 3 × 3 and one-dimensional filters: X(name, plain border). Each has a rule of its name in
// filters_rules-inl.h. The plain border is that of the plain two-image path of grey images; every
// other path replicates the edge.
#pragma once

#define LX_FILTERS(X)       \
  X(SobelX, kZero)          \
  X(SobelY, kZero)          \
  X(Sobel, kZero)           \
  X(PrewittX, kReplicate)   \
  X(PrewittY, kZero)        \
  X(Prewitt, kZero)         \
  X(Laplacian4, kZero)      \
  X(Laplacian8, kZero)      \
  X(LaplacianX, kReplicate) \
  X(LaplacianY, kReplicate) \
  X(Highpass1, kZero)       \
  X(Highpass2, kZero)       \
  X(Lowpass1, kReplicate)   \
  X(Lowpass2, kZero)        \
  X(Lowpass3, kReplicate)   \
  X(GradientX, kReplicate)  \
  X(GradientY, kReplicate)  \
  X(Gradient, kReplicate)   \
  X(Roberts, kReplicate)    \
  X(UniformX, kReplicate)   \
  X(UniformY, kReplicate)   \
  X(GaussianX, kReplicate)  \
  X(GaussianY, kReplicate)

namespace lx::convolution {

enum class Filter {
#define LX_NAME(name, border) k##name,
  LX_FILTERS(LX_NAME)
#undef LX_NAME
};

}  // namespace lx::convolution
