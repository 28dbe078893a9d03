// SPDX-License-Identifier: Apache-2.0
#include "catalogue/entry.h"

namespace lx::catalogue {

namespace {

// The three overloads of a filter from a source to a destination.
#define LX_FILTER_ENTRIES(function, bw8Trace, bw16Trace, summary)                                 \
  LX_ENTRY(function, (LxROI<LxBW8>*, LxROI<LxBW8>*), bw8Trace, InPlace::kYes, kParameters,        \
           summary, {LX_ERROR_ALLOCATION_FAILED}),                                                \
      LX_ENTRY(function, (LxROI<LxBW16>*, LxROI<LxBW16>*), bw16Trace, InPlace::kYes, kParameters, \
               summary, {LX_ERROR_ALLOCATION_FAILED}),                                            \
      LX_ENTRY(function, (LxROI<LxC24>*, LxROI<LxC24>*), #function " ( C24)", InPlace::kYes,      \
               kParameters, summary, {LX_ERROR_ALLOCATION_FAILED})

#define LX_FILTER(function, summary) \
  LX_FILTER_ENTRIES(function, #function " (BW8)", #function " (BW16)", summary)

constexpr const char* kParameters = "source >destination";
constexpr const char* kSized = "source >destination half-x=2:0..50 half-y=4294967295:0..50";

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
                        "Difference of the neighbours in the column"),
      LX_FILTER(PicConvolGradient, "Sum of both differences"),
      LX_ENTRY(PicConvolRoberts, (LxROI<LxBW8>*, LxROI<LxBW8>*), "PicConvolRoberts", InPlace::kNo,
               kParameters, "Roberts cross",
               {LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolRoberts, (LxROI<LxBW16>*, LxROI<LxBW16>*), "PicConvolRoberts (BW16)",
               InPlace::kNo, kParameters, "Roberts cross",
               {LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolRoberts, (LxROI<LxC24>*, LxROI<LxC24>*), "PicConvolRoberts ( C24)",
               InPlace::kYes, kParameters, "Roberts cross", {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolUniform3x3, (LxROI<LxBW8>*, LxROI<LxBW8>*), "PicConvolUniform3x3 (BW8)",
               InPlace::kYes, kParameters, "Mean of nine", {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolGaussian3x3, (LxROI<LxBW8>*, LxROI<LxBW8>*), "PicConvolGaussian3x3 (BW8)",
               InPlace::kYes, kParameters, "Binomial 1 2 1", {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolUniform5x5, (LxROI<LxBW8>*, LxROI<LxBW8>*), "ConvolUniform5x5",
               InPlace::kNo, kParameters, "Mean of 25",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolUniform7x7, (LxROI<LxBW8>*, LxROI<LxBW8>*), "PicConvolUniform7x7",
               InPlace::kNo, kParameters, "Mean of 49",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolGaussian5x5, (LxROI<LxBW8>*, LxROI<LxBW8>*), "ConvolGaussian5x5",
               InPlace::kNo, kParameters, "Binomial 1 4 6 4 1",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolGaussian7x7, (LxROI<LxBW8>*, LxROI<LxBW8>*), "PicConvolGaussian7x7",
               InPlace::kNo, kParameters, "Binomial 1 6 15 20 15 6 1",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolUniform, (LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, unsigned),
               "PicConvolUniform", InPlace::kNo, kSized, "Mean over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolUniform, (LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, unsigned),
               "PicConvolUniform (BW16)", InPlace::kNo, kSized, "Mean over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolUniform, (LxROI<LxC24>*, LxROI<LxC24>*, unsigned, unsigned),
               "PicConvolUniform ( C24)", InPlace::kYes, kSized, "Mean over a box",
               {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolGaussian, (LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, unsigned),
               "PicConvolGaussian", InPlace::kYes, kSized, "Binomial smoothing of any size",
               {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolGaussian, (LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, unsigned),
               "PicConvolGaussian (BW16)", InPlace::kYes, kSized, "Binomial smoothing of any size",
               {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolGaussian, (LxROI<LxC24>*, LxROI<LxC24>*, unsigned, unsigned),
               "PicConvolGaussian ( C24)", InPlace::kYes, kSized, "Binomial smoothing of any size",
               {LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicLocalAverage, (LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, unsigned),
               "PicLocalAverage", InPlace::kNo, kSized, "Mean over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicLocalAverage, (LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, unsigned),
               "PicLocalAverage (BW16)", InPlace::kNo, kSized, "Mean over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicLocalDeviation, (LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned, unsigned),
               "PicLocalDeviation", InPlace::kNo, kSized, "Standard deviation over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicLocalDeviation, (LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned, unsigned),
               "PicLocalDeviation (BW16)", InPlace::kNo, kSized, "Standard deviation over a box",
               {LX_ERROR_ALLOCATION_FAILED, LX_ERROR_DESTINATION_IS_SOURCE}),
      LX_ENTRY(PicConvolKernel, (LxROI<LxBW8>*, LxROI<LxBW8>*, LxKernel*), "PicConvolKernel BW8",
               InPlace::kNo, "source >destination kernel", "Any kernel",
               {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
                LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolKernel, (LxROI<LxBW16>*, LxROI<LxBW16>*, LxKernel*), "PicConvolKernel BW16",
               InPlace::kNo, "source >destination kernel", "Any kernel",
               {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
                LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(PicConvolKernel, (LxROI<LxC24>*, LxROI<LxC24>*, LxKernel*), "PicConvolKernel ( C24)",
               InPlace::kNo, "source >destination kernel", "Any kernel",
               {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
                LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(
          PicConvolSymmetricKernel, (LxROI<LxBW8>*, LxROI<LxBW8>*, LxKernel*),
          "PicConvolSymmetricKernel", InPlace::kNo, "source >destination kernel",
          "Symmetric kernel, from its octant",
          {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_KERNEL_RECTIFIER, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
           LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(
          PicConvolSymmetricKernel, (LxROI<LxBW16>*, LxROI<LxBW16>*, LxKernel*),
          "PicConvolSymmetricKernel BW16", InPlace::kNo, "source >destination kernel",
          "Symmetric kernel, from its octant",
          {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_KERNEL_RECTIFIER, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
           LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
      LX_ENTRY(
          PicConvolSymmetricKernel, (LxROI<LxC24>*, LxROI<LxC24>*, LxKernel*),
          "PicConvolSymmetricKernel ( C24)", InPlace::kNo, "source >destination kernel",
          "Symmetric kernel, from its octant",
          {LX_ERROR_KERNEL_NO_DATA, LX_ERROR_KERNEL_RECTIFIER, LX_ERROR_UNSUPPORTED_KERNEL_SIZE,
           LX_ERROR_DESTINATION_IS_SOURCE, LX_ERROR_ALLOCATION_FAILED}),
  };
}

}  // namespace lx::catalogue
