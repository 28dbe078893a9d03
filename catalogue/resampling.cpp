// SPDX-License-Identifier: Apache-2.0
// Affine resampling and registration.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_BITS "interpolation~8,0,4,8,0,4,8,4,2,-8:0..8"
// Usual coefficients; none and opposite ones; what shrinks, stretches and leaves all ranges.
#define LX_OWN "~0.96,1,1,0.5,2,-1,0.3,1.05,0,-0.0001,25,0.0078125,1e-30,3e8:-3..3 "
#define LX_OTHER "~-0.17,0,0,0,0.1,-1,0,1.5,0,-0.02,1e9:-2..2 "
#define LX_ALONG "~3.25,0,0.5,-4,7.75,-60.5,0,1e12:-20..20 "
#define LX_PIVOT "~3,0,2.5,150,7.25,-20,1e6:-20..200 "
#define LX_SCALE "~1.1,1,1,0.5,2,-1,0,0.125,1e-20,1e20:-3..3 "

#define LX_TRANSFORM(pixel, suffix, inner)                                                   \
  LX_FORM(PicLinearTransform,                                                                \
          void(LxROI<pixel>*, float, float, float, float, float, float, LxROI<pixel>*, int), \
          .trace = "PicLinearTransform" suffix, .innerTraces = (inner),                      \
          .parameters = "source(free) a0" LX_OWN "a1" LX_OTHER "a2" LX_ALONG "b0" LX_OTHER   \
                        "b1" LX_OWN "b2" LX_ALONG ">destination(free) " LX_BITS,             \
          .summary = "The image through an affine transform", .inPlace = InPlace::kYes,      \
          .reach = "all")

#define LX_MOTION                                                                    \
  "source-pivot-x" LX_PIVOT "source-pivot-y" LX_PIVOT "destination-pivot-x" LX_PIVOT \
  "destination-pivot-y" LX_PIVOT "scale-x" LX_SCALE "scale-y" LX_SCALE               \
  "angle~10,0,0,90,180,-45,270,0.01,1e7:-360..360 "

#define LX_MOVE(pixel, suffix, inner)                                                           \
  LX_FORM(                                                                                      \
      PicScaleRotate,                                                                           \
      void(LxROI<pixel>*, float, float, float, float, float, float, float, LxROI<pixel>*, int), \
      .trace = "PicScaleRotate" suffix, .innerTraces = (inner),                                 \
      .parameters = "source(free) " LX_MOTION ">destination(free) " LX_BITS,                    \
      .summary = "The image scaled and rotated", .inPlace = InPlace::kYes, .reach = "all")

#define LX_MOVE_IN_PLACE(pixel, suffix, inner)                                                \
  LX_FORM(PicScaleRotate,                                                                     \
          void(LxROI<pixel>*, float, float, float, float, float, float, float, int),          \
          .trace = "PicScaleRotate" suffix, .innerTraces = (inner),                           \
          .parameters = "<>region(free) " LX_MOTION LX_BITS, .summary = "Scales and rotates", \
          .reach = "all")

#define LX_ONE_PIVOT(pixel, suffix, inner)                                                      \
  LX_FORM(PicRegister, void(LxROI<pixel>*, LxROI<pixel>*, float, float, float, float, int),     \
          .trace = "PicScaleRotate" suffix, .innerTraces = (inner),                             \
          .parameters = "source(free) >destination(free) source-x" LX_PIVOT "source-y" LX_PIVOT \
                        "destination-x" LX_PIVOT "destination-y" LX_PIVOT LX_BITS,              \
          .summary = "The image moved by a pivot", .inPlace = InPlace::kYes, .reach = "all")

// Usual pivots are those of a small motion; drawn ones lie anywhere, on each other too.
#define LX_LEFT(name) name "~4,0,4,20.5,-1e4:-20..300 "
#define LX_RIGHT(name) name "~120,100,150.5,4,1e4:-20..300 "
#define LX_TOP(name) name "~3,0,4,1.5,1e3:-20..40 "
#define LX_BOTTOM(name) name "~12,7,4,3,-1e3:-20..40 "

#define LX_TWO_PIVOTS(pixel, suffix, inner)                                                   \
  LX_FORM(PicRegister,                                                                        \
          void(LxROI<pixel>*, LxROI<pixel>*, float, float, float, float, float, float, float, \
               float, int, int),                                                              \
          .trace = "PicScaleRotate" suffix, .innerTraces = (inner),                           \
          .parameters =                                                                       \
              "source(free) >destination(free) " LX_LEFT("source-0-x") LX_TOP("source-0-y")   \
                  LX_RIGHT("source-1-x") LX_BOTTOM("source-1-y") LX_LEFT("destination-0-x")   \
                      LX_BOTTOM("destination-0-y") LX_RIGHT("destination-1-x")                \
                          LX_TOP("destination-1-y") LX_BITS " scaling~1,0,1,0,2:0..1",        \
          .summary = "The image moved by two pivots", .inPlace = InPlace::kYes, .reach = "all")

#define LX_THREE_PIVOTS(pixel, suffix, inner)                                                      \
  LX_FORM(PicRegister,                                                                             \
          void(LxROI<pixel>*, LxROI<pixel>*, float, float, float, float, float, float, float,      \
               float, float, float, float, float, int),                                            \
          .trace = "PicRegister ( " suffix ", 3 pivots)", .innerTraces = (inner),                  \
          .parameters =                                                                            \
              "source(free) >destination(free) " LX_LEFT("source-0-x") LX_TOP("source-0-y")        \
                  LX_RIGHT("source-1-x") LX_TOP("source-1-y") LX_LEFT("source-2-x")                \
                      LX_BOTTOM("source-2-y") LX_LEFT("destination-0-x") LX_TOP("destination-0-y") \
                          LX_RIGHT("destination-1-x") LX_TOP("destination-1-y")                    \
                              LX_LEFT("destination-2-x") LX_BOTTOM("destination-2-y") LX_BITS,     \
          .summary = "The image moved by three pivots", .inPlace = InPlace::kYes, .reach = "all")

const std::vector<Group> kGroups = {
    {{{LX_ERROR_DIVISION_BY_ZERO}, {LX_ERROR_INCONSISTENT_ARGUMENTS}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_TRANSFORM(LxBW8, "", ""), LX_TRANSFORM(LxBW16, " (BW16)", ""),
      LX_TRANSFORM(LxC24, " ( C24)", "PicLinearTransform"),
      LX_MOVE(LxBW8, "", "PicLinearTransform"),
      LX_MOVE(LxBW16, " (BW16)", "PicLinearTransform (BW16)"),
      LX_MOVE(LxC24, " ( C24)", "PicLinearTransform < PicScaleRotate"),
      LX_MOVE_IN_PLACE(LxBW8, "", "PicLinearTransform < PicScaleRotate"),
      LX_MOVE_IN_PLACE(LxBW16, " (BW16)", "PicLinearTransform (BW16) < PicScaleRotate (BW16)"),
      LX_ONE_PIVOT(LxBW8, "", "PicLinearTransform"),
      LX_ONE_PIVOT(LxBW16, " (BW16)", "PicLinearTransform (BW16)"),
      LX_ONE_PIVOT(LxC24, " ( C24)", "PicLinearTransform < PicScaleRotate"),
      LX_TWO_PIVOTS(LxBW8, "", "PicLinearTransform"),
      LX_TWO_PIVOTS(LxBW16, " (BW16)", "PicLinearTransform (BW16)"),
      LX_TWO_PIVOTS(LxC24, " ( C24)", "PicLinearTransform < PicScaleRotate")}},
    {{{LX_ERROR_SINGULAR_SYSTEM},
      {LX_ERROR_ROI_NOT_ATTACHED},
      {LX_ERROR_DIVISION_BY_ZERO},
      {LX_ERROR_INCONSISTENT_ARGUMENTS},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_THREE_PIVOTS(LxBW8, "BW8", "PicLinearTransform"),
      LX_THREE_PIVOTS(LxBW16, "BW16", "PicLinearTransform (BW16)"),
      LX_THREE_PIVOTS(
          LxC24, "C24",
          "PicLinearTransform ( C24) | PicLinearTransform < PicLinearTransform ( C24)")}}};

#undef LX_THREE_PIVOTS
#undef LX_TWO_PIVOTS
#undef LX_BOTTOM
#undef LX_TOP
#undef LX_RIGHT
#undef LX_LEFT
#undef LX_ONE_PIVOT
#undef LX_MOVE_IN_PLACE
#undef LX_MOVE
#undef LX_MOTION
#undef LX_TRANSFORM
#undef LX_SCALE
#undef LX_PIVOT
#undef LX_ALONG
#undef LX_OTHER
#undef LX_OWN
#undef LX_BITS

}  // namespace

std::vector<Operation> ResamplingOperations() { return Describe("geometry", kGroups); }

}  // namespace lx::catalogue
