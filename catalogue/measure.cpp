// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_PROJECTION(function, pixel, vector, name, inner, text)                         \
  LX_FORM(function, void(LxROI<pixel>*, vector), .trace = (name), .innerTraces = (inner), \
          .parameters = "source >projection", .summary = (text))

#define LX_SUMS(function, pixel, suffix, text)                                        \
  LX_PROJECTION(function, pixel, LxBW32Vector*, #function " ( " suffix " Image Sum)", \
                "LxVector::SetMaxElements", text)

#define LX_AVERAGES(function, pixel, vector, suffix, text)                         \
  LX_PROJECTION(function, pixel, vector, #function " ( " suffix " Image Average)", \
                "LxVector::SetMaxElements", text)

#define LX_FOCUS(pixel, suffix)                                                    \
  LX_FORM(PicFocusing, float(LxROI<pixel>*), .trace = "PicFocusing ( " suffix ")", \
          .parameters = "source score", .summary = "How much neighbouring pixels differ")

#define LX_NOISE(function, pixel, suffix, result, text)                        \
  LX_FORM(function, float(LxROI<pixel>*, LxROI<pixel>*, PIC_REFERENCE_NOISE),  \
          .trace = #function " ( " suffix " source and " suffix " reference)", \
          .parameters = "source reference noise{0-1} " result, .summary = (text))

#define LX_NOISE_OF_SUM(function, result, text)                                          \
  LX_FORM(function, float(LxROI<LxBW8>*, LxROI<LxBW16>*, unsigned, PIC_REFERENCE_NOISE), \
          .trace = #function " ( BW8 source and BW16 reference)",                        \
          .parameters =                                                                  \
              "source reference frames~4,2,4,8,16,64,256,3,0,512:1..256 "                \
              "noise{0-2} " result,                                                      \
          .summary = (text))

#define LX_RMS "The root mean square of the noise"
#define LX_RATIO "The signal-to-noise ratio in decibels"

Extent LevelsExtent(const Arguments& /*call*/) { return {256, 256}; }

#define LX_CORRELOGRAM(pixel, suffix, ...)                                            \
  LX_FORM(PicCorrelogram, void(LxROI<LxBW8>*, LxROI<LxBW8>*, LxImage<pixel>*),        \
          .trace = "PicCorrelogram ( " suffix ")", .innerTraces = "LxImage::SetSize", \
          .parameters = "first second >correlogram(follows)",                         \
          .summary = "Counts each pair of grey levels", __VA_ARGS__, .reach = "all",  \
          .follows = LevelsExtent)

const std::vector<Group> kGroups = {
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_SUMS(PicProjectOnARow, LxBW8, "BW8", "Sums of columns"),
      LX_SUMS(PicProjectOnARow, LxBW16, "BW16", "Sums of columns"),
      LX_PROJECTION(PicProjectOnARow, LxBW8, LxVector*, "PicProjectOnARow ( LxVector)",
                    "LxVector::SetType", "Sums of columns"),
      LX_SUMS(PicProjectOnAColumn, LxBW8, "BW8", "Sums of rows"),
      LX_SUMS(PicProjectOnAColumn, LxBW16, "BW16", "Sums of rows"),
      LX_PROJECTION(PicProjectOnAColumn, LxBW8, LxVector*, "PicProjectOnAColumn",
                    "LxVector::SetType", "Sums of rows")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_EMPTY_HISTOGRAM}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_AVERAGES(PicProjectOnARow, LxBW8, LxBW8Vector*, "BW8", "Averages of columns"),
      LX_AVERAGES(PicProjectOnARow, LxBW16, LxBW16Vector*, "BW16", "Averages of columns"),
      LX_AVERAGES(PicProjectOnARow, LxC24, LxC24Vector*, "C24", "Averages of columns"),
      LX_AVERAGES(PicProjectOnAColumn, LxBW8, LxBW8Vector*, "BW8", "Averages of rows"),
      LX_AVERAGES(PicProjectOnAColumn, LxBW16, LxBW16Vector*, "BW16", "Averages of rows"),
      LX_AVERAGES(PicProjectOnAColumn, LxC24, LxC24Vector*, "C24", "Averages of rows")}},
    {{{LX_ERROR_EMPTY_HISTOGRAM}},
     {LX_FOCUS(LxBW8, "BW8"), LX_FOCUS(LxBW16, "BW16"), LX_FOCUS(LxC24, "C24")}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE}, {LX_ERROR_EMPTY_HISTOGRAM}},
     {LX_NOISE(PicRmsNoise, LxBW8, "BW8", "rms", LX_RMS),
      LX_NOISE(PicRmsNoise, LxBW16, "BW16", "rms", LX_RMS),
      LX_NOISE(PicRmsNoise, LxC24, "C24", "rms", LX_RMS)}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE}},
     {LX_NOISE(PicSignalNoiseRatio, LxBW8, "BW8", "decibels", LX_RATIO),
      LX_NOISE(PicSignalNoiseRatio, LxBW16, "BW16", "decibels", LX_RATIO),
      LX_NOISE(PicSignalNoiseRatio, LxC24, "C24", "decibels", LX_RATIO)}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_EMPTY_HISTOGRAM}},
     {LX_NOISE_OF_SUM(PicRmsNoise, "rms", LX_RMS)}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE}},
     {LX_NOISE_OF_SUM(PicSignalNoiseRatio, "decibels", LX_RATIO)}},
    {{{LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_CORRELOGRAM(LxBW8, "BW8", .inPlace = InPlace::kRefused)}},
    {{{LX_ERROR_ROI_NOT_ATTACHED}, {LX_ERROR_SIZE_MISMATCH}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_CORRELOGRAM(LxBW16, "BW16", .inPlace = InPlace::kNo)}},
    {{{LX_ERROR_EMPTY_HISTOGRAM, "where the first region does not vary, a fit of slope 0"}},
     {LX_FORM(PicLinearRegression, void(LxROI<LxBW8>*, LxROI<LxBW8>*, float&, float&, float&, int),
              .trace = "PicLinearRegression",
              .parameters = "first second slope offset correlation exclude-saturated~0,1,-1:0..1",
              .summary = "Fits the levels of the second region to those of the first")}}};

#undef LX_CORRELOGRAM
#undef LX_RATIO
#undef LX_RMS
#undef LX_NOISE_OF_SUM
#undef LX_NOISE
#undef LX_FOCUS
#undef LX_AVERAGES
#undef LX_SUMS
#undef LX_PROJECTION

}  // namespace

std::vector<Operation> MeasureOperations() { return Describe("measure", kGroups); }

}  // namespace lx::catalogue
