// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// Small sizes, and beyond the images'.
constexpr std::string_view kBox =
    "source >destination?'in place' half-x~2,1,0,1,3,4,7,12,50,4294967294:0..50 "
    "half-y=4294967295'as half-x'~4294967295,1,0,1,2,3,4,7,12,4294967294:0..50";
constexpr std::string_view kDisk =
    "source >destination?'in place' radius~2,1,0,3,4,5,6,7,8,9,12,20,4294967295:0..50";

#define LX_BOX(function, pixel, name, reaches, text)                                         \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned, unsigned), .trace = (name), \
          .parameters = kBox, .summary = text " a box", .inPlace = InPlace::kYes,            \
          .reach = reaches "half-x half-y")
#define LX_DISK(function, pixel, name, reaches, text)                               \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned), .trace = (name),  \
          .parameters = kDisk, .summary = text " a disk", .inPlace = InPlace::kYes, \
          .reach = reaches "radius radius")
// The three overloads of a function; that of 8-bit pixels has a mark of its own behind its name.
#define LX_PIXELS(ROW, function, mark, reaches, text)            \
  ROW(function, LxBW8, #function mark, reaches, text),           \
      ROW(function, LxBW16, #function " (BW16)", reaches, text), \
      ROW(function, LxC24, #function " ( C24)", reaches, text)
#define LX_OPERATOR(name, boxMark, diskMark, reaches, text)  \
  LX_PIXELS(LX_BOX, Pic##name##Box, boxMark, reaches, text), \
      LX_PIXELS(LX_DISK, Pic##name##Disk, diskMark, reaches, text)

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_OPERATOR(Erode, "", "", "", "Minimum over"),
      LX_OPERATOR(Dilate, "", "", "", "Maximum over"),
      LX_OPERATOR(Open, "", " ", "twice ", "Erosion, then dilation by"),
      LX_OPERATOR(Close, "", "", "twice ", "Dilation, then erosion by"),
      LX_OPERATOR(WhiteTopHat, " (BW8)", " (BW8)", "twice ", "What is bright and does not hold"),
      LX_OPERATOR(BlackTopHat, " (BW8)", " (BW8)", "twice ", "What is dark and does not hold"),
      LX_OPERATOR(MorphoGradient, "", "", "", "Dilation less erosion by")}}};

#undef LX_OPERATOR
#undef LX_PIXELS
#undef LX_DISK
#undef LX_BOX

}  // namespace

std::vector<Operation> MorphologyOperations() { return Describe("morphology", kGroups); }

}  // namespace lx::catalogue
