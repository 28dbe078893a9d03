// SPDX-License-Identifier: Apache-2.0
// Interlaced frames, averages over time.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_FIELD(function, pixel, words, text)                                                    \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, int), .trace = #function " ( " #pixel ")", \
          .parameters = words " parity~0,1,-1:0..1", .summary = (text), .inPlace = InPlace::kYes, \
          .reach = "all", .withoutKernel = "all", .part = FieldExtent)
#define LX_GET_FRAME(pixel) \
  LX_FIELD(PicGetFrame, pixel, "frame >field(part)", "A field of a frame as an image")
#define LX_SET_FRAME(pixel) \
  LX_FIELD(PicSetFrame, pixel, "field(part) <>frame", "An image as a field of a frame")
#define LX_REALIGN_FRAME(pixel)                                                            \
  LX_FORM(PicRealignFrame, void(LxROI<pixel>*, LxROI<pixel>*, int, unsigned),              \
          .trace = "PicRealignFrame ( " #pixel ")",                                        \
          .parameters =                                                                    \
              "source <>destination shift~2,-3,0,-2147483648,2147483647:-20..20 "          \
              "reference~0,1,4294967295:0..1",                                             \
          .summary = "Moves one field sideways", .inPlace = InPlace::kYes, .reach = "all", \
          .withoutKernel = "all")
#define LX_MATCH_FRAMES(pixel)                                         \
  LX_FORM(PicMatchFrames, void(LxROI<pixel>*, int, int, int, int&),    \
          .trace = "PicMatchFrames ( " #pixel ")",                     \
          .parameters =                                                \
              "region row~0,0,1,0,-1:0..1 lowest~-2,-1,0,-70,4:-2..2 " \
              "highest~3,5,2,-3,60:-1..6 >best",                       \
          .summary = "How far one row lies beside the one above it")
#define LX_REBUILD_FRAME(pixel)                                               \
  LX_FORM(PicRebuildFrame, void(LxROI<pixel>*, LxROI<pixel>*, unsigned),      \
          .trace = "PicRebuildFrame ( " #pixel ")",                           \
          .parameters = "source <>destination reference~0,1,4294967294:0..1", \
          .summary = "Makes one field from the other", .inPlace = InPlace::kYes, .reach = "0 1")
#define LX_SWAP_FRAMES(pixel)                                                           \
  LX_FORM(PicSwapFrames, void(LxROI<pixel>*, LxROI<pixel>*),                            \
          .trace = "PicSwapFrames ( " #pixel ")", .parameters = "source <>destination", \
          .summary = "Fields change places", .inPlace = InPlace::kYes, .reach = "0 1")
#define LX_EACH(form) form(LxBW8), form(LxC24), form(LxBW16)

// The even field has the last row of an odd number.
Extent FieldExtent(const Arguments& call, Extent frame) {
  const int more = std::get<double>(call[2]) != 0 ? 0 : 1;
  return {frame.width, (frame.height + more) / 2};
}

const std::vector<Group> kGroups = {
    {{},
     {LX_EACH(LX_GET_FRAME), LX_EACH(LX_SET_FRAME), LX_EACH(LX_REALIGN_FRAME),
      LX_EACH(LX_REBUILD_FRAME), LX_EACH(LX_SWAP_FRAMES)}},
    {{{LX_ERROR_INCONSISTENT_ARGUMENTS}, {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}},
     {LX_EACH(LX_MATCH_FRAMES)}},
    {{{LX_ERROR_VECTOR_NO_DATA}},
     {LX_FORM(PicSetRecursiveAverageLUT, void(LxBW16Vector*, float, float),
              .trace = "PicSetRecursiveAverageLUT",
              .innerTraces = "LxVector::SetMaxElements < LxVector::SetNumElements",
              .parameters = ">table noise-reduction~3,1,0,1e30,-2:0..10 "
                            "width~0,5,0.001,-4,1e30,1e-30:0..20",
              .summary = "The steps of a linear or edge-preserving filter", .withoutKernel = "all",
              .refusals = {{LX_ERROR_ARGUMENT_2_OUT_OF_RANGE},
                           {LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
                           {LX_ERROR_ALLOCATION_FAILED}}),
      LX_FORM(
          PicRecursiveAverage, void(LxROI<LxBW8>*, LxROI<LxBW16>*, LxROI<LxBW8>*, LxBW16Vector*),
          .trace = "PicRecursiveAverage", .parameters = "source <>state >destination table#8191",
          .summary = "Filters a sequence of images pixel by pixel",
          .refusals = {{LX_ERROR_WRONG_VECTOR_SIZE}})}}};

#undef LX_EACH
#undef LX_SWAP_FRAMES
#undef LX_REBUILD_FRAME
#undef LX_MATCH_FRAMES
#undef LX_REALIGN_FRAME
#undef LX_SET_FRAME
#undef LX_GET_FRAME
#undef LX_FIELD

const std::vector<Group> kMembers = {
    {{},
     {LX_MEMBER(LxMovingAverage, GetSize, void (LxMovingAverage::*)(unsigned&, int&, int&, int&),
                .parameters = "average >period >width >height >in-buffer",
                .summary = "What was given to SetSize; 0 of an empty object"),
      LX_MEMBER(LxMovingAverage, Reset, void (LxMovingAverage::*)(), .parameters = "<>average",
                .summary = "The next image is the first one")}},
    {{{LX_ERROR_ARGUMENT_1_OUT_OF_RANGE}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEMBER(LxMovingAverage, SetSize, void (LxMovingAverage::*)(unsigned, int, int, int),
                .trace = "LxMovingAverage::SetSize", .innerTraces = "LxImage::LxImage",
                .parameters = "<>average period~3,4,2,1,257,258,0:1..9 "
                              "width~33,33,33,33,0,-1 height~2,2,2,2,0,-1 in-buffer~0,1,-1",
                .summary = "Makes room for images of a size")}},
    {{{LX_ERROR_UNSUPPORTED_OPERATION}},
     {LX_MEMBER(LxMovingAverage, GetSrcImage, LxImage<LxBW8>* (LxMovingAverage::*)(),
                .trace = "LxMovingAverage::GetSrcImage", .parameters = "average image",
                .summary = "The buffer of the next image")}},
    {{{LX_ERROR_UNSUPPORTED_OPERATION}, {LX_ERROR_ROI_NOT_ATTACHED}, {LX_ERROR_SIZE_MISMATCH}},
     {LX_MEMBER(LxMovingAverage, Average, void (LxMovingAverage::*)(LxROI<LxBW8>*, LxROI<LxBW8>*),
                .trace = "LxMovingAverage::Average", .parameters = "<>average source >destination",
                .summary = "Takes an image and gives the average"),
      LX_MEMBER(LxMovingAverage, Average, void (LxMovingAverage::*)(LxROI<LxBW8>*),
                .trace = "LxMovingAverage::Average", .parameters = "<>average >destination",
                .summary = "Takes the image in the buffer and gives the average")}}};

}  // namespace

std::vector<Operation> SequenceOperations() { return Describe("sequence", kGroups); }

Object MovingAverageObject() {
  return {"LxMovingAverage", "The average of the last images", Describe("sequence", kMembers)};
}

}  // namespace lx::catalogue
