// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

// Small sizes, sizes around the images' own, and beyond.
constexpr std::string_view kBox =
    "source >destination?'in place' half-x~2,1,0,1,3,4,7,12,50,128,129,300,4294967294:0..50 "
    "half-y=4294967295'as half-x'~4294967295,1,0,1,2,3,4,7,12,50,128,129,300,4294967294:0..50";

#define LX_BOX_FORM(function, pixel, name, text)                                             \
  LX_FORM(function, void(LxROI<pixel>*, LxROI<pixel>*, unsigned, unsigned), .trace = (name), \
          .parameters = kBox, .summary = (text), .inPlace = InPlace::kYes,                   \
          .reach = "half-x half-y")
#define LX_BOX(function, grey, text)                            \
  LX_BOX_FORM(function, LxBW8, grey, text),                     \
      LX_BOX_FORM(function, LxBW16, #function " (BW16)", text), \
      LX_BOX_FORM(function, LxC24, #function " ( C24)", text)

const std::vector<Group> kGroups = {{{{LX_ERROR_ALLOCATION_FAILED}},
                                     {LX_BOX(PicErodeBox, "PicErodeBox", "Minimum over a box"),
                                      LX_BOX(PicDilateBox, "PicDilateBox", "Maximum over a box")}}};

#undef LX_BOX
#undef LX_BOX_FORM

}  // namespace

std::vector<Operation> MorphologyOperations() { return Describe("morphology", kGroups); }

}  // namespace lx::catalogue
