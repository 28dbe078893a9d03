// SPDX-License-Identifier: Apache-2.0
#include "catalogue/entry.h"

namespace lx::catalogue {

namespace {

// The three overloads of a filter from a source to a destination.
#define LX_FILTER_ENTRIES(function, bw8Trace, bw16Trace, greyInPlace, summary)                    \
  LX_ENTRY(function, (LxROI<LxBW8>*, LxROI<LxBW8>*), bw8Trace, greyInPlace, kParameters, summary, \
           {LX_ERROR_ALLOCATION_FAILED}),                                                         \
      LX_ENTRY(function, (LxROI<LxBW16>*, LxROI<LxBW16>*), bw16Trace, greyInPlace, kParameters,   \
               summary, {LX_ERROR_ALLOCATION_FAILED}),                                            \
      LX_ENTRY(function, (LxROI<LxC24>*, LxROI<LxC24>*), #function " ( C24)", InPlace::kYes,      \
               kParameters, summary, {LX_ERROR_ALLOCATION_FAILED})

#define LX_FILTER(function, summary) \
  LX_FILTER_ENTRIES(function, #function " (BW8)", #function " (BW16)", InPlace::kYes, summary)

constexpr const char* kParameters = "source >destination";

}  // namespace

std::vector<Operation> ConvolutionOperations() {
  return {
      LX_FILTER(PicConvolSobelX, "Horizontal Sobel response"),
      LX_FILTER(PicConvolSobelY, "Vertical Sobel response"),
      LX_FILTER(PicConvolSobel, "Sobel gradient"),
      LX_FILTER(PicConvolPrewittX, "Horizontal Prewitt response"),
      LX_FILTER(PicConvolPrewittY, "Vertical Prewitt response"),
      LX_FILTER(PicConvolPrewitt, "Prewitt gradient"),
      LX_FILTER(PicConvolLaplacian4, "Laplacian over four neighbours"),
      LX_FILTER(PicConvolLaplacian8, "Laplacian over eight neighbours"),
      LX_FILTER(PicConvolLaplacianX, "Second difference along the row"),
      LX_FILTER(PicConvolLaplacianY, "Second difference along the column"),
      LX_FILTER(PicConvolHighpass1, "Sharpening"),
      LX_FILTER(PicConvolHighpass2, "Strong sharpening"),
      LX_FILTER(PicConvolLowpass1, "Box smoothing"),
      LX_FILTER(PicConvolLowpass2, "Mean of the eight neighbours"),
      LX_FILTER(PicConvolLowpass3, "Binomial smoothing"),
      LX_FILTER(PicConvolGradientX, "Difference of the neighbours in the row"),
      LX_FILTER_ENTRIES(PicConvolGradientY, "ConvolGradientY (BW8)", "ConvolGradientY (BW16)",
                        InPlace::kYes, "Difference of the neighbours in the column"),
      LX_FILTER(PicConvolGradient, "Sum of both differences"),
      LX_FILTER_ENTRIES(PicConvolRoberts, "PicConvolRoberts", "PicConvolRoberts (BW16)",
                        InPlace::kNo, "Roberts cross"),
  };
}

}  // namespace lx::catalogue
