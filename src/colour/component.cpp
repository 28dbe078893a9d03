// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include <cstddef>
#include <cstdint>

#include "base/failure.h"

namespace {

constexpr std::size_t kComponents = 3;

bool Attached(LxGenericROI* region) {
  if (region != nullptr && region->GetPixelPtr(0, 0) != nullptr) return true;
  LxSetError(LX_ERROR_ROI_NOT_ATTACHED);
  return false;
}

bool ArgumentsGood(LxGenericROI* source, LxGenericROI* destination, unsigned index) {
  if (!Attached(source) || !Attached(destination)) return false;
  source->CheckSize(destination);
  if (LxGetError() != LX_OK) return false;
  if (index < kComponents) return true;
  LxSetError(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  return false;
}

// Calls rule(colours, greys, width) for the rows of two regions of one size.
template <class Rule>
void ForEachRow(LxROI<LxC24>* colours, LxROI<LxBW8>* greys, Rule rule) {
  auto* colourRow = static_cast<std::uint8_t*>(colours->GetPixelPtr(0, 0));
  auto* greyRow = static_cast<std::uint8_t*>(greys->GetPixelPtr(0, 0));
  const std::ptrdiff_t colourPitch = colours->GetPitch();
  const std::ptrdiff_t greyPitch = greys->GetPitch();
  const std::size_t width = colours->GetWidth();
  for (unsigned y = colours->GetHeight(); y > 0; --y) {
    rule(colourRow, greyRow, width);
    colourRow += colourPitch;
    greyRow += greyPitch;
  }
}

}  // namespace

void TintGetComponent(LxROI<LxC24>* source, LxROI<LxBW8>* plane, unsigned index,
                      LxColorLookup* lookup) {
  LxOk();
  if (!ArgumentsGood(source, plane, index)) {
    LxTraceError("TintGetComponent");
    return;
  }
  ForEachRow(source, plane,
             [=](const std::uint8_t* colours, std::uint8_t* greys, std::size_t width) {
               for (std::size_t x = 0; x < width; ++x) {
                 const std::uint8_t* const pixel = colours + kComponents * x;
                 if (lookup == nullptr) {
                   greys[x] = pixel[index];
                   continue;
                 }
                 LxC24 result{};
                 lookup->Transform({pixel[0], pixel[1], pixel[2]}, result);
                 const std::uint8_t components[kComponents] = {result.c0, result.c1, result.c2};
                 greys[x] = components[index];
               }
             });
}

void TintSetComponent(LxROI<LxBW8>* plane, LxROI<LxC24>* target, unsigned index) {
  LxOk();
  if (!ArgumentsGood(plane, target, index)) {
    LxTraceError("TintSetComponent");
    return;
  }
  ForEachRow(target, plane,
             [=](std::uint8_t* colours, const std::uint8_t* greys, std::size_t width) {
               for (std::size_t x = 0; x < width; ++x) colours[kComponents * x + index] = greys[x];
             });
}
