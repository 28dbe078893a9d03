// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/image.h"

#include <algorithm>
#include <type_traits>

#include "base/allocate.h"
#include "base/failure.h"

namespace {

constexpr std::uint64_t kCacheLine = 64;
// Rows that lie a multiple of this apart compete for the same cache sets.
constexpr std::uint64_t kAliasingDistance = 2048;

template <class T>
std::uint64_t RowBytes(int width) {
  const auto pixels = static_cast<std::uint64_t>(width);
  return std::is_same_v<T, int> ? (pixels + 7) / 8 : pixels * sizeof(T);
}

std::uint64_t PitchFor(std::uint64_t rowBytes) {
  if (rowBytes == 0) return 0;
  const std::uint64_t pitch = (rowBytes + kCacheLine - 1) / kCacheLine * kCacheLine;
  return pitch % kAliasingDistance == 0 ? pitch + kCacheLine : pitch;
}

// Whether `height` rows `pitch` bytes apart can be addressed at all.
bool Representable(std::uint64_t pitch, int height) {
  return pitch <=
         static_cast<std::uint64_t>(PTRDIFF_MAX) / std::max(1U, static_cast<unsigned>(height));
}

// An empty image has an address too: that is what makes it attached.
std::uint64_t StorageBytes(std::uint64_t pitch, unsigned height) {
  return std::max(pitch * height, kCacheLine);
}

}  // namespace

template <class T>
LxImage<T>::LxImage() = default;

template <class T>
LxImage<T>::LxImage(int width, int height) {
  if (!Allocate(width, height)) lx::Fail(LX_ERROR_ALLOCATION_FAILED, "LxImage::LxImage");
}

template <class T>
LxImage<T>::~LxImage() {
  Release();
}

template <class T>
void LxImage<T>::Release() {
  if (m_bOwner) lx::ReleaseBytes(m_pPixels);
}

template <class T>
void LxImage<T>::Adopt(std::uint8_t* pixels, int width, int height, std::ptrdiff_t pitch,
                       bool owner) {
  Release();
  m_pPixels = pixels;
  m_nPitch = pitch;
  m_bOwner = owner;
  this->m_un32Width = static_cast<std::uint32_t>(width);
  this->m_un32Height = static_cast<std::uint32_t>(height);
}

template <class T>
bool LxImage<T>::Allocate(int width, int height) {
  if (width < 0 || height < 0) return false;
  if (m_bOwner && this->m_un32Width == static_cast<std::uint32_t>(width) &&
      this->m_un32Height == static_cast<std::uint32_t>(height)) {
    return true;
  }
  const std::uint64_t pitch = PitchFor(RowBytes<T>(width));
  if (!Representable(pitch, height)) return false;
  auto* const pixels = static_cast<std::uint8_t*>(
      lx::AllocateBytes(StorageBytes(pitch, static_cast<unsigned>(height))));
  if (pixels == nullptr) return false;
  Adopt(pixels, width, height, static_cast<std::ptrdiff_t>(pitch), true);
  return true;
}

template <class T>
void LxImage<T>::SetSize(int width, int height) {
  if (!Allocate(width, height)) lx::Fail(LX_ERROR_ALLOCATION_FAILED, "LxImage::SetSize");
}

template <class T>
void LxImage<T>::SetSize(LxGenericROI* model) {
  if (model == nullptr) {
    lx::Fail(LX_ERROR_ROI_NOT_ATTACHED, "LxImage::SetSize");
  } else if (m_pPixels == nullptr || m_bOwner) {
    SetSize(static_cast<int>(model->GetWidth()), static_cast<int>(model->GetHeight()));
  } else if (model->GetWidth() != this->m_un32Width || model->GetHeight() != this->m_un32Height) {
    lx::Fail(LX_ERROR_SIZE_MISMATCH, "LxImage::SetSize");
  }
}

template <class T>
bool LxImage<T>::Owns(const void* address) const {
  const auto offset =
      reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(m_pPixels);
  return m_bOwner &&
         offset < StorageBytes(static_cast<std::uint64_t>(m_nPitch), this->m_un32Height);
}

template <class T>
void LxImage<T>::Attach(void* pixels, int width, int height, std::ptrdiff_t pitch) {
  const auto distance =
      pitch < 0 ? 0 - static_cast<std::uint64_t>(pitch) : static_cast<std::uint64_t>(pitch);
  LX_ERRORS error = LX_OK;
  if (pixels == nullptr || Owns(pixels)) {
    error = LX_ERROR_ARGUMENT_1_OUT_OF_RANGE;
  } else if (width < 0) {
    error = LX_ERROR_ARGUMENT_2_OUT_OF_RANGE;
  } else if (height < 0) {
    error = LX_ERROR_ARGUMENT_3_OUT_OF_RANGE;
  } else if (distance < RowBytes<T>(width) || !Representable(distance, height)) {
    error = LX_ERROR_ARGUMENT_4_OUT_OF_RANGE;
  }
  if (error != LX_OK) {
    lx::Fail(error, "LxImage::Attach");
    return;
  }
  Adopt(static_cast<std::uint8_t*>(pixels), width, height, pitch, false);
}

template <class T>
typename LxROI<T>::Origin LxImage<T>::Locate() const {
  return {m_pPixels, m_nPitch, 0};
}

template class LxImage<LxBW8>;
template class LxImage<LxBW16>;
template class LxImage<LxBW32>;
template class LxImage<LxC24>;
template class LxImage<LxC15>;
template class LxImage<LxC16>;
template class LxImage<LxC24A>;
template class LxImage<LxComplex64>;
template class LxImage<int>;
