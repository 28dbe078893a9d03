// SPDX-License-Identifier: Apache-2.0
// The 3 × 3 and one-dimensional filters, from which their enumeration, kernels, frames and catalogue
// entries are made: OPERATION(function, rule, plain border, trace of the grey forms, summary) for
// those that are three overloads of a function, STEP(rule, plain border) for those that are steps of
// others. Rules have their names in filters_rules-inl.h. The plain border is that of the plain
// two-image path of grey images; every other path replicates the edge.
#pragma once

#define LX_FILTERS(OPERATION, STEP)                                                               \
  OPERATION(PicConvolSobelX, SobelX, kZero, "PicConvolSobelX", "Horizontal Sobel response")       \
  OPERATION(PicConvolSobelY, SobelY, kZero, "PicConvolSobelY", "Vertical Sobel response")         \
  OPERATION(PicConvolSobel, Sobel, kZero, "PicConvolSobel", "Sobel gradient")                     \
  OPERATION(PicConvolPrewittX, PrewittX, kReplicate, "PicConvolPrewittX",                         \
            "Horizontal Prewitt response")                                                        \
  OPERATION(PicConvolPrewittY, PrewittY, kZero, "PicConvolPrewittY", "Vertical Prewitt response") \
  OPERATION(PicConvolPrewitt, Prewitt, kZero, "PicConvolPrewitt", "Prewitt gradient")             \
  OPERATION(PicConvolLaplacian4, Laplacian4, kZero, "PicConvolLaplacian4",                        \
            "Laplacian over four neighbours")                                                     \
  OPERATION(PicConvolLaplacian8, Laplacian8, kZero, "PicConvolLaplacian8",                        \
            "Laplacian over eight neighbours")                                                    \
  OPERATION(PicConvolLaplacianX, LaplacianX, kReplicate, "PicConvolLaplacianX",                   \
            "Second difference along the row")                                                    \
  OPERATION(PicConvolLaplacianY, LaplacianY, kReplicate, "PicConvolLaplacianY",                   \
            "Second difference along the column")                                                 \
  OPERATION(PicConvolHighpass1, Sharpen4, kZero, "PicConvolHighpass1", "Sharpening")              \
  OPERATION(PicConvolHighpass2, Sharpen8, kZero, "PicConvolHighpass2", "Strong sharpening")       \
  OPERATION(PicConvolLowpass1, Uniform, kReplicate, "PicConvolLowpass1", "Box smoothing")         \
  OPERATION(PicConvolLowpass2, MeanOfEight, kZero, "PicConvolLowpass2",                           \
            "Mean of the eight neighbours")                                                       \
  OPERATION(PicConvolLowpass3, Gaussian, kReplicate, "PicConvolLowpass3", "Binomial smoothing")   \
  OPERATION(PicConvolGradientX, GradientX, kReplicate, "PicConvolGradientX",                      \
            "Difference of the neighbours in the row")                                            \
  OPERATION(PicConvolGradientY, GradientY, kReplicate, "ConvolGradientY",                         \
            "Difference of the neighbours in the column")                                         \
  OPERATION(PicConvolGradient, Gradient, kReplicate, "PicConvolGradient",                         \
            "Sum of both differences")                                                            \
  STEP(Roberts, kReplicate)                                                                       \
  STEP(UniformX, kReplicate)                                                                      \
  STEP(UniformY, kReplicate)                                                                      \
  STEP(GaussianX, kReplicate)                                                                     \
  STEP(GaussianY, kReplicate)

namespace lx::convolution {

enum class Filter {
#define LX_OF_OPERATION(function, rule, border, trace, summary) k##rule,
#define LX_OF_STEP(rule, border) k##rule,
  LX_FILTERS(LX_OF_OPERATION, LX_OF_STEP)
#undef LX_OF_OPERATION
#undef LX_OF_STEP
};

}  // namespace lx::convolution
