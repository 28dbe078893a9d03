// SPDX-License-Identifier: Apache-2.0
// Line segments, peaks, filters of profiles.
#include <algorithm>
#include <cmath>

#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// Pixels of the line between the last four arguments, two points.
std::size_t PixelCount(const Arguments& call) {
  const auto distance = [&](std::size_t k) {
    return std::abs(std::get<double>(call[k + 2]) - std::get<double>(call[k]));
  };
  const std::size_t x0 = 2;
  return static_cast<std::size_t>(std::max(distance(x0), distance(x0 + 1))) + 1;
}

// Elements of the first vector.
template <class Vector>
std::size_t SourceCount(const Arguments& call) {
  const auto* const source = std::get<Vector*>(call[0]);
  return source == nullptr ? 0 : source->GetNumElements();
}

#define LX_POINTS "x0(column)~15 y0(row)~0 x1(column)~0 y1(row)~2"
#define LX_SAMPLE(pixel, suffix)                                                                  \
  LX_FORM(PicImageToLineSegment, void(LxROI<Lx##pixel>*, Lx##pixel##Vector*, int, int, int, int), \
          .trace = "PicImageToLineSegment ( " suffix ")",                                         \
          .innerTraces = "LxVector::SetMaxElements", .parameters = "source >profile " LX_POINTS,  \
          .summary = "The pixels along a line as a profile", .withoutKernel = "all")
#define LX_DRAW(pixel, suffix)                                                                    \
  LX_FORM(PicLineSegmentToImage, void(LxROI<Lx##pixel>*, Lx##pixel##Vector*, int, int, int, int), \
          .trace = "PicLineSegmentToImage ( " suffix ", vector)",                                 \
          .parameters = "<>destination profile#count " LX_POINTS,                                 \
          .summary = "Draws a profile along a line", .withoutKernel = "all", .count = PixelCount)
#define LX_DRAW_VALUE(pixel, suffix)                                                     \
  LX_FORM(PicLineSegmentToImage, void(LxROI<Lx##pixel>*, Lx##pixel, int, int, int, int), \
          .trace = "PicLineSegmentToImage ( " suffix ", const)",                         \
          .parameters = "<>destination value~200 " LX_POINTS, .summary = "Draws a line", \
          .withoutKernel = "all")
#define LX_EACH(form) form(BW8, "BW8"), form(BW16, "BW16"), form(C24, "C24")

#define LX_PEAKS(pixel, suffix)                                                             \
  LX_FORM(PicGetProfilePeaks,                                                               \
          void(Lx##pixel##Vector*, LxPeaksVector*, unsigned, unsigned, unsigned, unsigned), \
          .trace = "PicGetProfilePeaks ( " suffix ")",                                      \
          .innerTraces = "LxVector::SetMaxElements < LxVector::AddElement",                 \
          .parameters =                                                                     \
              "profile >peaks low~100,0,2,4,100,40000,4294967295:0..200 "                   \
              "high~150,0,7,4,200,50000,4294967295:150..255 "                               \
              "minimum-amplitude~0,0,1,60,2147483647,2147483648,4294967295:0..90 "          \
              "minimum-area~0,0,1,100,2147483647,2147483648,4294967295:0..300",             \
          .summary = "Runs of samples above or below thresholds", .withoutKernel = "all")
#define LX_FILTER(function, pixel, name, text)                                     \
  LX_FORM(function, void(Lx##pixel##Vector*, Lx##pixel##Vector*), .trace = (name), \
          .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",    \
          .parameters = "source >destination", .summary = (text))
#define LX_PASSES(function, pixel, name, text)                                      \
  LX_FORM(function, void(Lx##pixel##Vector*, Lx##pixel##Vector*, unsigned),         \
          .trace = name " ( Lx" #pixel "Vector)",                                   \
          .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",     \
          .parameters = "source >destination passes~1,2,3,4,7,40,4294967295:1..20", \
          .summary = (text))
#define LX_MEAN(pixel, name)                                                        \
  LX_FORM(PicConvolUniform, void(Lx##pixel##Vector*, Lx##pixel##Vector*, unsigned), \
          .trace = (name),                                                          \
          .parameters =                                                             \
              "source#count <>destination#count "                                   \
              "half-size~1,2,0,3,8,2147483647,2147483648,4294967295:0..20",         \
          .summary = "Mean of neighbouring samples", .withoutKernel = "all",        \
          .count = SourceCount<Lx##pixel##Vector>)
#define LX_BOTH(function, name, text) \
  LX_PASSES(function, BW8, name, text), LX_PASSES(function, BW16, name, text)

const std::vector<Group> kGroups = {
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_EACH(LX_SAMPLE)}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE},
      {LX_ERROR_WRONG_VECTOR_SIZE}},
     {LX_EACH(LX_DRAW)}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE}},
     {LX_EACH(LX_DRAW_VALUE)}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_INCONSISTENT_ARGUMENTS},
      {LX_ERROR_ALLOCATION_FAILED, "the peaks before the one that found no room"}},
     {LX_PEAKS(BW8, "BW8"), LX_PEAKS(BW16, "BW16")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FILTER(PicProfileDerivative, BW8, "PicProfileDerivative", "Slope of a profile"),
      LX_FILTER(PicProfileDerivative, BW16, "PicProfileDerivative", "Slope of a profile"),
      LX_BOTH(PicConvolGaussian, "PicConvolBinomial", "Repeated binomial mean of three samples"),
      LX_BOTH(PicDilate, "PicDilate", "Repeated maximum of three samples"),
      LX_BOTH(PicErode, "PicErode", "Repeated minimum of three samples")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_SIZE}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEAN(BW8, "PicConvolUniform"), LX_MEAN(BW16, "PicConvolUniform (BW16)")}}};

#undef LX_BOTH
#undef LX_MEAN
#undef LX_PASSES
#undef LX_FILTER
#undef LX_PEAKS
#undef LX_EACH
#undef LX_DRAW_VALUE
#undef LX_DRAW
#undef LX_SAMPLE
#undef LX_POINTS

}  // namespace

std::vector<Operation> ProfileOperations() { return Describe("profile", kGroups); }

}  // namespace lx::catalogue
