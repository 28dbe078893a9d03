// SPDX-License-Identifier: Apache-2.0
// Shrinking, mirrors, warps, pyramids.
#include <algorithm>

#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_SHRINK(pixel, name)                                                        \
  LX_FORM(PicShrink, void(LxROI<pixel>*, LxROI<pixel>*), .trace = (name),             \
          .parameters = "source(free) >destination", .summary = "Averages of blocks", \
          .inPlace = InPlace::kYes, .reach = "all")

#define LX_MIRROR(function, pixel, name, text)                                      \
  LX_FORM(function, void(LxROI<pixel>*), .trace = (name), .parameters = "<>region", \
          .summary = (text), .reach = "all")

#define LX_MIRRORS(function, text)                              \
  LX_MIRROR(function, LxBW8, #function " ( gray-level)", text), \
      LX_MIRROR(function, LxBW16, #function " ( BW16)", text),  \
      LX_MIRROR(function, LxC24, #function " ( color)", text)

#define LX_TWO_MAPS(pixel, name)                                                                \
  LX_FORM(PicWarp,                                                                              \
          void(LxROI<pixel>*, LxROI<pixel>*, LxImage<LxBW16>*, LxImage<LxBW16>*, int, int),     \
          .trace = (name),                                                                      \
          .parameters =                                                                         \
              "source(free) >destination x-map(columns) y-map(rows) "                           \
              "x-offset~0,1,-2147483648,2147483647:-20..20 "                                    \
              "y-offset~0,-1,2147483647,-2147483648:-20..20",                                   \
          .summary = "Pixels from the places that two maps name", .inPlace = InPlace::kRefused, \
          .reach = "all")

Extent HalfExtent(const Arguments& call) {
  const LxGenericROI& source = *std::get<LxGenericROI*>(call[0]);
  const int more = std::get<double>(call[2]) != 0 ? 0 : 1;
  return {(static_cast<int>(source.GetWidth()) + more) / 2,
          (static_cast<int>(source.GetHeight()) + more) / 2};
}

Extent RingExtent(const Arguments& call) {
  const auto side = [&call](std::size_t i) {
    return static_cast<int>(std::max(std::get<double>(call[i]), 0.0));
  };
  return {side(5), side(2)};
}

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_SHRINK(LxBW8, "PicShrink"), LX_SHRINK(LxBW16, "PicShrink (BW16)"),
      LX_SHRINK(LxC24, "PicShrink ( C24)")}},
    {{{LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicHalve, void(LxROI<LxBW8>*, LxROI<LxBW8>*, int), .trace = "PicHalve ( BW8)",
              .innerTraces = "LxImage::SetSize",
              .parameters = "source >destination(follows) drop-odd~1,0,-1:0..1",
              .summary = "Averages of 2 x 2", .inPlace = InPlace::kRefused, .reach = "all",
              .follows = HalfExtent)}},
    {{},
     {LX_MIRRORS(PicVerticalMirror, "Top and bottom change places"),
      LX_MIRRORS(PicHorizontalMirror, "Left and right change places")}},
    {{{LX_ERROR_DESTINATION_IS_SOURCE}},
     {LX_TWO_MAPS(LxBW8, "PicWarp"), LX_TWO_MAPS(LxC24, "PicWarp ( C24)"),
      LX_FORM(PicWarp, void(LxROI<LxBW8>*, LxROI<LxBW8>*, LxImage<LxBW32>*), .trace = "PicWarp",
              .parameters = "source >destination map(free)(points)",
              .summary = "Pixels from the places that one map names", .inPlace = InPlace::kRefused,
              .reach = "all",
              .refusals = {{LX_ERROR_WARP_RANGE},
                           {LX_ERROR_WARP_TABLE, "the pixels before the bad entry are written"}})}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_6_OUT_OF_RANGE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_SIZE_MISMATCH},
      {LX_ERROR_ALLOCATION_FAILED, "the x map may have its new size"}},
     {LX_FORM(PicSetCircleWarp,
              void(float, float, int, float, float, int, float, float, LxImage<LxBW16>*,
                   LxImage<LxBW16>*),
              .trace = "PicSetCircleWarp", .innerTraces = "LxImage::SetSize",
              .parameters =
                  "centre-x~10.5,-3,1e30:-50..50 centre-y~8,40000:-50..50 height~3,1,0,-1:1..20 "
                  "radius-1~2,-1e30:-50..50 radius-2~9,0:-50..50 width~19,1,0,-7:1..70 "
                  "angle-1~0,30,-1e9:-400..400 angle-2~360,90,1e9:-400..400 >x-map(follows) "
                  ">y-map(follows)",
              .summary = "Maps that unroll a ring", .withoutKernel = "all",
              .follows = RingExtent)}}};

#undef LX_TWO_MAPS
#undef LX_MIRRORS
#undef LX_MIRROR
#undef LX_SHRINK

#define LX_HALVE(pixel, name)                                                         \
  LX_MEMBER(LxPyramid, Halve, void (LxPyramid::*)(LxROI<pixel>*, LxROI<pixel>*, int), \
            .trace = (name), .innerTraces = "LxImage::SetSize",                       \
            .parameters = "pyramid source >destination drop-odd~1,0",                 \
            .summary = "Averages of 2 x 2")

const std::vector<Group> kMembers = {
    {{},
     {LX_MEMBER(LxPyramid, GetNumLevels, unsigned (LxPyramid::*)(), .parameters = "pyramid count",
                .summary = "The number of levels"),
      LX_MEMBER(LxPyramid, GetHalvingMode, int (LxPyramid::*)(), .parameters = "pyramid drop-odd",
                .summary = "What becomes of odd edges"),
      LX_MEMBER(LxPyramid, SetHalvingMode, void (LxPyramid::*)(int),
                .parameters = "<>pyramid drop-odd~1,0,-1", .summary = "Sets it")}},
    {{{LX_ERROR_ALLOCATION_FAILED}, {LX_ERROR_UNSUPPORTED_IMAGE_TYPE}},
     {LX_MEMBER(LxPyramid, SetNumLevels, void (LxPyramid::*)(unsigned, LX_IMAGE_TYPES),
                .trace = "LxPyramid::SetNumLevels",
                .parameters = "<>pyramid count~3,0,1,8 type{1,2,3,6,8,-1,4}",
                .summary = "Makes empty levels")}},
    {{{LX_ERROR_ARGUMENT_1_OUT_OF_RANGE}},
     {LX_MEMBER(LxPyramid, GetImage, LxGenericROI* (LxPyramid::*)(unsigned),
                .trace = "LxPyramid::GetImage", .parameters = "pyramid level~0,1,3,9 image",
                .summary = "The image of a level")}},
    {{{LX_ERROR_UNSUPPORTED_IMAGE_TYPE},
      {LX_ERROR_WRONG_IMAGE_TYPE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEMBER(LxPyramid, Build, void (LxPyramid::*)(), .trace = "LxBW8Pyramid::Build",
                .parameters = "<>pyramid", .summary = "Halves level after level"),
      LX_MEMBER(LxPyramid, Build, void (LxPyramid::*)(LxROI<LxBW8>*),
                .trace = "LxBW8Pyramid::Build", .parameters = "<>pyramid source(free)",
                .summary = "Copies the source and halves level after level")}},
    {{{LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_DESTINATION_IS_SOURCE},
      {LX_ERROR_HALVE_SIZE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_HALVE(LxBW8, "LxBW8Pyramid::Halve ( BW8)"),
      LX_HALVE(LxBW32, "LxBW8Pyramid::Halve ( GRADIENT32)")}}};

#undef LX_HALVE

}  // namespace

std::vector<Operation> GeometryOperations() { return Describe("geometry", kGroups); }

Object PyramidObject() {
  return {"LxPyramid", "Images of successively halved size", Describe("geometry", kMembers)};
}

}  // namespace lx::catalogue
