// SPDX-License-Identifier: Apache-2.0
#include "foundation/frame.h"

#include <algorithm>

namespace lx {

bool Attached(std::initializer_list<LxGenericROI*> regions) {
  return std::all_of(regions.begin(), regions.end(), [](const LxGenericROI* region) {
    if (region == nullptr) {
      LxSetError(LX_ERROR_ROI_NOT_ATTACHED);
    } else {
      region->Check();
    }
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

bool SamePixels(const LxGenericROI* a, const LxGenericROI* b) {
  return a->GetPixelPtr(0, 0) == b->GetPixelPtr(0, 0) && a->GetPitch() == b->GetPitch() &&
         a->GetWidth() == b->GetWidth() && a->GetHeight() == b->GetHeight();
}

bool UsablePair(LxGenericROI* source, LxGenericROI* destination) {
  return destination == nullptr ? Usable({source}) : Usable({source, destination});
}

bool UsableApart(LxGenericROI* source, LxGenericROI* destination) {
  if (!UsablePair(source, destination)) return false;
  return Require(destination != nullptr && !SamePixels(source, destination),
                 LX_ERROR_DESTINATION_IS_SOURCE);
}

}  // namespace lx
