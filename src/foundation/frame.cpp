// SPDX-License-Identifier: Apache-2.0
#include "foundation/frame.h"

#include <algorithm>

#include "lxpic/base/image.h"

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

bool Resize(LxGenericROI* region, std::uint32_t width, std::uint32_t height,
            const LxGenericROI* source) {
  const bool fits = region->GetWidth() == width && region->GetHeight() == height;
  if (!fits && source != nullptr && source->GetIdentity() == region->GetIdentity()) {
    LxSetError(LX_ERROR_DESTINATION_IS_SOURCE);
    return false;
  }
  // A model has a size and needs no pixels.
  std::uint8_t nothing = 0;
  LxImage<LxBW8> model;
  model.Attach(&nothing, static_cast<int>(width), static_cast<int>(height),
               static_cast<std::ptrdiff_t>(width));
  region->SetSize(&model);
  return LxGetError() == LX_OK;
}

}  // namespace lx
