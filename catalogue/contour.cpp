// SPDX-License-Identifier: Apache-2.0
// Contours, and images along paths.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_CONTOUR(pixel, result, suffix, levels, text)                                            \
  LX_FORM(                                                                                         \
      PicContour,                                                                                  \
      void(LxROI<pixel>*, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, result), \
      .trace = "PicContour ( " suffix,                                                             \
      .innerTraces = "LxVector::SetMaxElements < LxVector::AddElement",                            \
      .parameters = LX_TASK(levels) " >path", .summary = (text), .withoutKernel = "all")
#define LX_CONTOUR_LEVELS(pixel, result, suffix, levels)                                      \
  LX_FORM(PicContour,                                                                         \
          void(LxROI<pixel>*, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY, \
               result, int),                                                                  \
          .trace = "PicContour ( " suffix,                                                    \
          .innerTraces = "LxVector::SetMaxElements < LxVector::AddElement",                   \
          .parameters = LX_TASK(levels) " >path chain-code~0,1,-1:0..1",                      \
          .summary = "The outline of an object, with levels or directions",                   \
          .withoutKernel = "all")
#define LX_TASK(levels)                                                             \
  "region mode{0-5} start-x~2(column) start-y~2(row) test{0-1} threshold~1," levels \
  " connectivity{0-1}"
#define LX_BYTE_LEVELS "0,2,40,100,128,200,255,256,4294967295:1..255"
#define LX_WORD_LEVELS "0,2,10000,25000,32768,50000,65535,65536,4294967295:1..65535"

#define LX_IMAGE_TO_PATH(pixel, suffix)                                          \
  LX_FORM(PicImageToPath, void(LxROI<Lx##pixel>*, Lx##pixel##PathVector*),       \
          .trace = "PicImageToPath (" suffix ")", .parameters = "region <>path", \
          .summary = "The levels of an image along a path", .withoutKernel = "all")
#define LX_PATH_TO_IMAGE(pixel)                                                   \
  LX_FORM(PicPathToImage, void(LxROI<Lx##pixel>*, Lx##pixel##PathVector*),        \
          .trace = "PicPathToImage ( " #pixel ")", .parameters = "<>region path", \
          .summary = "Draws the levels of a path into an image", .reach = "all",  \
          .withoutKernel = "all")

constexpr const char* kEmptied = "an empty, closed path";
constexpr const char* kSoFar = "the points so far";
constexpr const char* kNothing = "an empty vector";

const std::vector<Group> kGroups = {
    {{{LX_ERROR_UNKNOWN_MODE},
      {LX_ERROR_UNKNOWN_MODE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_CONTOUR_START, kEmptied},
      {LX_ERROR_CONTOUR_START_INSIDE_OBJECT, kEmptied},
      {LX_ERROR_CONTOUR_START_ISOLATED, kEmptied},
      {LX_ERROR_POINT_OUTSIDE_IMAGE, kSoFar},
      {LX_ERROR_ALLOCATION_FAILED, kSoFar}},
     {LX_CONTOUR(LxBW8, LxPathVector*, "LxPathVector)", LX_BYTE_LEVELS, "The outline of an object"),
      LX_CONTOUR_LEVELS(LxBW8, LxBW8PathVector*, "LxBW8PathVector)", LX_BYTE_LEVELS),
      LX_CONTOUR(LxBW16, LxPathVector*, "LxPathVector)(BW16)", LX_WORD_LEVELS,
                 "The outline of an object"),
      LX_CONTOUR_LEVELS(LxBW16, LxBW16PathVector*, "LxBW16PathVector)(BW16)", LX_WORD_LEVELS)}},
    {{{LX_ERROR_UNKNOWN_MODE},
      {LX_ERROR_UNKNOWN_MODE},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_VECTOR_NO_DATA, "an empty vector, unless it is null"},
      {LX_ERROR_CONTOUR_START, kNothing},
      {LX_ERROR_CONTOUR_START_INSIDE_OBJECT, kNothing},
      {LX_ERROR_CONTOUR_START_ISOLATED, kNothing},
      {LX_ERROR_POINT_OUTSIDE_IMAGE, kSoFar},
      {LX_ERROR_CONTOUR_OVERFLOW, kSoFar},
      {LX_ERROR_ALLOCATION_FAILED, kSoFar}},
     {LX_FORM(PicContour,
              void(LxROI<LxBW8>*, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned, CONNEXITY,
                   LxVector*),
              .trace = "PicContour ( LxVector)",
              .innerTraces = "LxVector::SetType | LxVector::Reallocate",
              .parameters = LX_TASK(LX_BYTE_LEVELS) " >path",
              .summary = "The outline of an object, with directions", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_POINT_OUTSIDE_IMAGE, "the other points done", false}},
     {LX_IMAGE_TO_PATH(BW8, " BW8"), LX_IMAGE_TO_PATH(BW16, "BW16"), LX_IMAGE_TO_PATH(C24, " C24"),
      LX_PATH_TO_IMAGE(BW8), LX_PATH_TO_IMAGE(BW16), LX_PATH_TO_IMAGE(C24)}}};

#undef LX_PATH_TO_IMAGE
#undef LX_IMAGE_TO_PATH
#undef LX_WORD_LEVELS
#undef LX_BYTE_LEVELS
#undef LX_TASK
#undef LX_CONTOUR_LEVELS
#undef LX_CONTOUR

}  // namespace

std::vector<Operation> ContourOperations() { return Describe("profile", kGroups); }

}  // namespace lx::catalogue
