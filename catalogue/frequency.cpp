// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_TRANSFORM(function, ofPowers, text)                                                    \
  LX_FORM(function, void(LxROI<LxBW8>*, LxROI<LxComplex64>*, float), .trace = #function,          \
          .parameters = "source >destination factor~1,0.37,-2.5,0,1000:-8..8", .summary = (text), \
          .reach = "all", .powersOfTwo = (ofPowers))

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_TRANSFORM(PicSlowDFT, false, "Centred Fourier transform of an image of any size")}},
    {{{LX_ERROR_NOT_POWER_OF_TWO}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_TRANSFORM(PicFastDFT, true,
                   "Centred Fourier transform of an image whose sides are powers of two")}}};

}  // namespace

std::vector<Operation> FrequencyOperations() { return Describe("frequency", kGroups); }

}  // namespace lx::catalogue
