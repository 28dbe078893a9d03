// SPDX-License-Identifier: Apache-2.0
#include "foundation/frame.h"

#include <algorithm>

namespace lx {

bool Attached(std::initializer_list<LxGenericROI*> regions) {
  return std::all_of(regions.begin(), regions.end(), [](const LxGenericROI* region) {
    if (!Require(region != nullptr, LX_ERROR_ROI_NOT_ATTACHED)) return false;
    region->Check();
    return LxGetError() == LX_OK;
  });
}

bool Usable(std::initializer_list<LxGenericROI*> regions) {
  if (!Attached(regions)) return false;
  LxGenericROI* const model = *(regions.end() - 1);
  return std::all_of(regions.begin(), regions.end(), [model](const LxGenericROI* region) {
    region->CheckSize(model);
    return LxGetError() == LX_OK;
  });
}

}  // namespace lx
