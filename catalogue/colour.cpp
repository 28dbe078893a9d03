// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE}},
     {LX_FORM(TintGetComponent, void(LxROI<LxC24>*, LxROI<LxBW8>*, unsigned, LxColorLookup*),
              .trace = "TintGetComponent",
              .parameters = "source >plane index~0,1,2,3,4294967295:0..2 "
                            "lookup?'colours as they are'",
              .summary = "One component of each colour",
              .refusals = {{LX_ERROR_ALLOCATION_FAILED, "what was done until the lookup threw"},
                           {LX_ERROR_INTERNAL, "what was done until the lookup threw"}}),
      LX_FORM(TintSetComponent, void(LxROI<LxBW8>*, LxROI<LxC24>*, unsigned),
              .trace = "TintSetComponent",
              .parameters = "plane <>target index~0,1,2,3,4294967295:0..2",
              .summary = "Replaces one component of each colour")}}};

}  // namespace

std::vector<Operation> ColourOperations() { return Describe("colour", kGroups); }

}  // namespace lx::catalogue
