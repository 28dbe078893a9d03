// SPDX-License-Identifier: Apache-2.0
// The 3 × 3 and one-dimensional filters, from which their enumeration, kernels and frames are made:
// OPERATION(function, rule, plain border, trace of the grey forms) for those that are three
// overloads of a function, STEP(rule, plain border) for those that are steps of others. Rules have
// their names in filters_rules-inl.h. The plain border is that of the plain two-image path of grey
// images; every other path replicates the edge.
#pragma once

#define LX_FILTERS(OPERATION, STEP)                                             \
  OPERATION(PicConvolSobelX, SobelX, kZero, "PicConvolSobelX")                  \
  OPERATION(PicConvolSobelY, SobelY, kZero, "PicConvolSobelY")                  \
  OPERATION(PicConvolSobel, Sobel, kZero, "PicConvolSobel")                     \
  OPERATION(PicConvolPrewittX, PrewittX, kReplicate, "PicConvolPrewittX")       \
  OPERATION(PicConvolPrewittY, PrewittY, kZero, "PicConvolPrewittY")            \
  OPERATION(PicConvolPrewitt, Prewitt, kZero, "PicConvolPrewitt")               \
  OPERATION(PicConvolLaplacian4, Laplacian4, kZero, "PicConvolLaplacian4")      \
  OPERATION(PicConvolLaplacian8, Laplacian8, kZero, "PicConvolLaplacian8")      \
  OPERATION(PicConvolLaplacianX, LaplacianX, kReplicate, "PicConvolLaplacianX") \
  OPERATION(PicConvolLaplacianY, LaplacianY, kReplicate, "PicConvolLaplacianY") \
  OPERATION(PicConvolHighpass1, Sharpen4, kZero, "PicConvolHighpass1")          \
  OPERATION(PicConvolHighpass2, Sharpen8, kZero, "PicConvolHighpass2")          \
  OPERATION(PicConvolLowpass1, Uniform, kReplicate, "PicConvolLowpass1")        \
  OPERATION(PicConvolLowpass2, MeanOfEight, kZero, "PicConvolLowpass2")         \
  OPERATION(PicConvolLowpass3, Gaussian, kReplicate, "PicConvolLowpass3")       \
  OPERATION(PicConvolGradientX, GradientX, kReplicate, "PicConvolGradientX")    \
  OPERATION(PicConvolGradientY, GradientY, kReplicate, "ConvolGradientY")       \
  OPERATION(PicConvolGradient, Gradient, kReplicate, "PicConvolGradient")       \
  STEP(Roberts, kReplicate)                                                     \
  STEP(UniformX, kReplicate)                                                    \
  STEP(UniformY, kReplicate)                                                    \
  STEP(GaussianX, kReplicate)                                                   \
  STEP(GaussianY, kReplicate)

namespace lx::convolution {

enum class Filter {
#define LX_OF_OPERATION(function, rule, border, trace) k##rule,
#define LX_OF_STEP(rule, border) k##rule,
  LX_FILTERS(LX_OF_OPERATION, LX_OF_STEP)
#undef LX_OF_OPERATION
#undef LX_OF_STEP
};

}  // namespace lx::convolution
