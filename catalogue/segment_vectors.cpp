// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// The pixels of the segment that a vector is drawn along.
std::size_t PixelsOfSegment(const Arguments& call) {
  const auto distance = [&](std::size_t from, std::size_t to) {
    return std::abs(std::get<double>(call[to]) - std::get<double>(call[from]));
  };
  return static_cast<std::size_t>(std::max(distance(1, 3), distance(2, 4))) + 1;
}

#define LX_ENDS "x0(column)~1 y0(row)~1 x1(column)~2 y1(row)~2"

#define LX_TRANSITIONS(number, meaning, threshold)                                       \
  LX_FORM(PicGetVectTransition, void(LxVector*, LxVector*, number),                      \
          .trace = "PicGetVectTransition", .innerTraces = "LxVector::SetStructure",      \
          .parameters = "source(" meaning ") >transitions threshold~100,5,0," threshold, \
          .summary = "Where " meaning " elements cross a threshold", .withoutKernel = "all")

#define LX_EXTREMES(number, meaning, low, high)                                 \
  LX_FORM(PicGetVectExtremes, void(LxVector*, LxVector*, number, number),       \
          .trace = "PicGetVectExtremes",                                        \
          .innerTraces = "LxVector::SetType | LxVector::Reallocate",            \
          .parameters = "source(" meaning ") >extremes low~" low " high~" high, \
          .summary = "Runs of large and of small " meaning " elements", .withoutKernel = "all")

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicLineSegToVect, void(LxROI<LxBW8>*, LxVector*, int, int, int, int),
              .trace = "PicLineSegToVect", .innerTraces = "LxVector::SetType",
              .parameters = "source >segment " LX_ENDS,
              .summary = "The pixels of a segment, with their places", .reach = "all",
              .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_KIND}, {LX_ERROR_INCONSISTENT_ARGUMENTS}},
     {LX_FORM(PicVectToLineSeg, void(LxVector*, LxROI<LxBW8>*), .trace = "PicVectToLineSeg",
              .parameters = "segment(segment) <>destination",
              .summary = "Draws pixels where they were", .withoutKernel = "all")}},
    {{{LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_KIND}},
     {LX_FORM(PicVectToLineSeg, void(LxVector*, int, int, int, int, LxROI<LxBW8>*),
              .trace = "PicVectToLineSeg",
              .parameters = "segment(segment)#count " LX_ENDS " <>destination",
              .summary = "Draws pixels along a segment", .withoutKernel = "all",
              .count = PixelsOfSegment)}},
    {{{LX_ERROR_UNSUPPORTED_OPERATION},
      {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_4_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_5_OUT_OF_RANGE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicTransitionScan,
              void(TRANS_SCAN_EDGE, LxROI<LxBW8>*, int, int, int, int, int, int, LxVector*),
              .trace = "PicTransitionScan", .innerTraces = "LxVector::SetType",
              .parameters = "edge{1-3} source " LX_ENDS
                            " threshold~128,0,1,100,255,256,-1:0..255 maximum~0,1,2,7,-1:0..40"
                            " >transitions",
              .summary = "Where levels along a segment cross a threshold", .reach = "all",
              .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_VECTOR_EMPTY},
      {LX_ERROR_UNSUPPORTED_DATA_SIZE},
      {LX_ERROR_UNSUPPORTED_DATA_TYPE},
      {LX_ERROR_ALLOCATION_FAILED},
      {LX_ERROR_TOO_MANY_TRANSITIONS, "the transitions that fit"}},
     {LX_TRANSITIONS(int, "signed", "-1,127,-128,30000,-100000000:-40000..40000"),
      LX_TRANSITIONS(unsigned, "unsigned", "1,255,30000,2147483648:0..70000")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_INVALID_GROUP_RANGE},
      {LX_ERROR_UNSUPPORTED_DATA_SIZE},
      {LX_ERROR_UNSUPPORTED_DATA_TYPE},
      {LX_ERROR_ALLOCATION_FAILED},
      {LX_ERROR_UNSUPPORTED_KERNEL_SIZE, "zeros in the result, which is laid out"},
      {LX_ERROR_KERNEL_NO_DATA, "zeros in the result, which is laid out"}},
     {LX_FORM(PicConvolVect, void(LxVector*, LxVector*, LxKernel*, int, int),
              .trace = "PicConvolVect", .innerTraces = "LxVector::SetStructure",
              .parameters = "source(group) >result kernel(row) "
                            "first=0'from the first group'~0,0,0,1,3,-1:0..5 "
                            "last=-1'to the last group'~-1,-1,-1,-1,2,-2:0..9",
              .summary = "Filters each group with three coefficients")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_VECTOR_EMPTY},
      {LX_ERROR_UNSUPPORTED_DATA_SIZE},
      {LX_ERROR_UNSUPPORTED_DATA_TYPE},
      {LX_ERROR_ALLOCATION_FAILED, "the runs that fit, when the result cannot grow"}},
     {LX_EXTREMES(int, "signed", "-2,4,100,-100,0,-30000,1000000000:-300..300",
                  "4,-2,-100,100,0,30000,-1000000000:-300..300"),
      LX_EXTREMES(unsigned, "unsigned", "100,50,1,0,255,60000,3000000000:0..300",
                  "50,100,1,0,254,30000,2000000000:0..300")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_VECTOR_EMPTY},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_UNSUPPORTED_DATA_SIZE},
      {LX_ERROR_UNSUPPORTED_DATA_TYPE}},
     {LX_FORM(PicVectDataShift, void(LxVector*, int, int, int), .trace = "PicVectDataShift",
              .parameters = "<>vector shift~1,-1,0,7,8,-8,15,-16,31,-31,32,33,-40:-33..33 "
                            "first=0'from the first group'~0,0,0,0,1,3,-1:0..2 "
                            "last=0'all, where both are 0'~0,0,0,1,7,-1:0..4",
              .summary = "Shifts the bits of the elements", .withoutKernel = "all")}},
};

#undef LX_EXTREMES
#undef LX_TRANSITIONS
#undef LX_ENDS

}  // namespace

std::vector<Operation> SegmentVectorOperations() { return Describe("profile", kGroups); }

}  // namespace lx::catalogue
