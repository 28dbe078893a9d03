// SPDX-License-Identifier: Apache-2.0
// Medians, distances, morphology of counted passes, thinning.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_MEDIAN(pixel, name)                                              \
  LX_FORM(PicMedian, void(LxROI<pixel>*, LxROI<pixel>*), .trace = (name),   \
          .parameters = "source >destination", .summary = "Median of nine", \
          .inPlace = InPlace::kYes, .reach = "1")

const std::vector<Group> kMedians = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEDIAN(LxBW8, "PicMedian"), LX_MEDIAN(LxBW16, "PicMedian (BW16)"),
      LX_FORM(PicMedian, void(LxROI<LxBW8>*, LxROI<LxBW8>*, int), .trace = "PicMedian",
              .parameters = "source >destination outside~0,255,128,-3,70000:0..255",
              .summary = "Median of nine, with a level outside", .inPlace = InPlace::kYes,
              .reach = "1"),
      LX_FORM(PicMedian, void(LxROI<LxC24>*, LxROI<LxC24>*, LxC24), .trace = "PicMedian ( C24)",
              .parameters = "source >destination outside~0",
              .summary = "Median of nine, with a colour outside", .inPlace = InPlace::kYes,
              .reach = "1")}}};

#undef LX_MEDIAN

const std::vector<Group> kDistance = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicDistance, void(LxROI<LxBW8>*, LxImage<LxBW16>*, int), .trace = "PicDistance",
              .parameters = "source >destination outside~0,65535,1,20,254,255,256,-3,70000:0..255",
              .summary = "Chessboard distance to the nearest dark pixel", .reach = "all")}}};

#define LX_COUNT "source >destination count~2,1,0,3,8,9,17,-1,1000000:0..20 "
#define LX_LEVEL "~0,255,128,-3,70000:0..255"

// Reaches over as many pixels as there are passes.
#define LX_ONE_STEP(function, pixel, outside, suffix, level, text)                               \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, int, outside), .trace = #function suffix, \
          .innerTraces = "PicErodeDilate", .parameters = LX_COUNT "outside" level,               \
          .summary = (text), .inPlace = InPlace::kYes, .reach = "count")
#define LX_TWO_STEPS(function, pixel, outside, suffix, level, text, place)                \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, int, outside, outside),            \
          .trace = #function suffix, .innerTraces = "PicErodeDilate",                     \
          .parameters = LX_COUNT "outside-1" level " outside-2" level, .summary = (text), \
          .inPlace = InPlace::place, .reach = "all")
#define LX_REPEATED(...)                                                           \
  LX_ONE_STEP(PicErode, __VA_ARGS__, "Repeated minimum of nine"),                  \
      LX_ONE_STEP(PicDilate, __VA_ARGS__, "Repeated maximum of nine"),             \
      LX_TWO_STEPS(PicOpen, __VA_ARGS__, "Repeated erosion, then dilation", kYes), \
      LX_TWO_STEPS(PicClose, __VA_ARGS__, "Repeated dilation, then erosion", kYes)
#define LX_TOP_HATS(...)                                                                   \
  LX_TWO_STEPS(PicWhiteTopHat, __VA_ARGS__, "Source less its repeated opening", kRefused), \
      LX_TWO_STEPS(PicBlackTopHat, __VA_ARGS__, "Repeated closing less the source", kRefused)

const std::vector<Group> kCounted = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_REPEATED(LxBW8, int, "", LX_LEVEL), LX_REPEATED(LxC24, LxC24, " ( C24)", "~0")}},
    {{{LX_ERROR_ALLOCATION_FAILED}, {LX_ERROR_DESTINATION_IS_SOURCE}},
     {LX_TOP_HATS(LxBW8, int, "", LX_LEVEL), LX_TOP_HATS(LxC24, LxC24, " ( C24)", "~0")}}};

#undef LX_TOP_HATS
#undef LX_REPEATED
#undef LX_TWO_STEPS
#undef LX_ONE_STEP
#undef LX_LEVEL
#undef LX_COUNT

#define LX_THINNING(function, pixel, suffix, steps, text)                                 \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, LxKernel*, KERNEL_ROTATION, int&), \
          .trace = #function suffix, .innerTraces = (steps),                              \
          .parameters =                                                                   \
              "source >destination pattern~1,2 rotation{0-2} "                            \
              "<>count~0,1,2,3,5,40,1023,1024,-1:0..20",                                  \
          .summary = (text), .inPlace = InPlace::kYes, .reach = "all")
#define LX_THINNING_FORMS(function, text)                                                         \
  LX_THINNING(function, LxBW8, "", "", text), LX_THINNING(function, LxBW16, " (BW16)", "", text), \
      LX_THINNING(function, LxC24, " ( C24)", #function, text)

const std::vector<Group> kThinning = {
    {{{LX_ERROR_KERNEL_NO_DATA},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE},
      {LX_ERROR_KERNEL_UNSUITABLE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE, "the count is 0"},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, "the count is 0"},
      {LX_ERROR_NOT_ENOUGH_MEMORY, "the count is 0"}},
     {LX_THINNING_FORMS(PicThin, "Clears pixels that match a pattern"),
      LX_THINNING_FORMS(PicThick, "Sets pixels that match a pattern")}}};

#undef LX_THINNING_FORMS
#undef LX_THINNING

}  // namespace

std::vector<Operation> NonlinearOperations() {
  std::vector<Operation> all;
  for (const auto* const groups : {&kMedians, &kDistance, &kCounted, &kThinning}) {
    for (Operation& each : Describe("morphology", *groups)) all.push_back(std::move(each));
  }
  return all;
}

}  // namespace lx::catalogue
