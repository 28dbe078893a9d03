// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// Small sizes, sizes around the images' own, and beyond.
constexpr std::string_view kBox =
    "source >destination?'in place' half-x~2,1,0,1,3,4,7,12,50,128,129,300,4294967294:0..50 "
    "half-y=4294967295'as half-x'~4294967295,1,0,1,2,3,4,7,12,50,128,129,300,4294967294:0..50";

constexpr std::string_view kDisk =
    "source >destination?'in place' radius~2,1,0,3,4,5,6,7,8,9,12,15,20,33,70,130,4294967295:0..50";

#define LX_BOX(function, pixel, name, text)                                                  \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned, unsigned), .trace = (name), \
          .parameters = kBox, .summary = (text), .inPlace = InPlace::kYes,                   \
          .reach = "half-x half-y")
#define LX_DISK(function, pixel, name, text)                                       \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned), .trace = (name), \
          .parameters = kDisk, .summary = (text), .inPlace = InPlace::kYes,        \
          .reach = "radius radius")
// The three overloads of an operator; `grey` is what that of 8-bit pixels traces.
#define LX_OPERATOR(ROW, function, grey, text)                                        \
  ROW(function, LxBW8, grey, text), ROW(function, LxBW16, #function " (BW16)", text), \
      ROW(function, LxC24, #function " ( C24)", text)

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_OPERATOR(LX_BOX, PicErodeBox, "PicErodeBox", "Minimum over a box"),
      LX_OPERATOR(LX_BOX, PicDilateBox, "PicDilateBox", "Maximum over a box"),
      LX_OPERATOR(LX_BOX, PicOpenBox, "PicOpenBox", "Erosion, then dilation by a box"),
      LX_OPERATOR(LX_BOX, PicCloseBox, "PicCloseBox", "Dilation, then erosion by a box"),
      LX_OPERATOR(LX_BOX, PicWhiteTopHatBox, "PicWhiteTopHatBox (BW8)",
                  "What is bright and smaller than a box"),
      LX_OPERATOR(LX_BOX, PicBlackTopHatBox, "PicBlackTopHatBox (BW8)",
                  "What is dark and smaller than a box"),
      LX_OPERATOR(LX_BOX, PicMorphoGradientBox, "PicMorphoGradientBox",
                  "Dilation less erosion by a box"),
      LX_OPERATOR(LX_DISK, PicErodeDisk, "PicErodeDisk", "Minimum over a disk"),
      LX_OPERATOR(LX_DISK, PicDilateDisk, "PicDilateDisk", "Maximum over a disk"),
      LX_OPERATOR(LX_DISK, PicOpenDisk, "PicOpenDisk ", "Erosion, then dilation by a disk"),
      LX_OPERATOR(LX_DISK, PicCloseDisk, "PicCloseDisk", "Dilation, then erosion by a disk"),
      LX_OPERATOR(LX_DISK, PicWhiteTopHatDisk, "PicWhiteTopHatDisk (BW8)",
                  "What is bright and smaller than a disk"),
      LX_OPERATOR(LX_DISK, PicBlackTopHatDisk, "PicBlackTopHatDisk (BW8)",
                  "What is dark and smaller than a disk"),
      LX_OPERATOR(LX_DISK, PicMorphoGradientDisk, "PicMorphoGradientDisk",
                  "Dilation less erosion by a disk")}}};

#undef LX_OPERATOR
#undef LX_DISK
#undef LX_BOX

}  // namespace

std::vector<Operation> MorphologyOperations() { return Describe("morphology", kGroups); }

}  // namespace lx::catalogue
