// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/roi.h"

#include <cstring>
#include <type_traits>

#include "base/failure.h"
#include "base/runs.h"

namespace {

template <class T>
constexpr bool kBinary = std::is_same_v<T, int>;

template <class T>
constexpr unsigned kPixelSize = kBinary<T> ? 0 : sizeof(T);

// The byte that bit number `bit` falls into, and its place there, for any sign of `bit`.
constexpr std::ptrdiff_t ByteOf(std::ptrdiff_t bit) { return bit >> 3; }
constexpr int BitInByte(std::ptrdiff_t bit) { return static_cast<int>(bit & 7); }

}  // namespace

LxGenericROI::~LxGenericROI() = default;

template <class T>
LxROI<T>::LxROI() = default;

template <class T>
LxROI<T>::LxROI(LxROI* parent, int x, int y, int width, int height) : m_pParent(parent) {
  if (parent != nullptr && parent != this && Place(x, y, width, height)) return;
  m_pParent = nullptr;
  lx::Fail(parent == nullptr ? LX_ERROR_ROI_NOT_ATTACHED : LX_ERROR_INCONSISTENT_ARGUMENTS,
           "LxROI::LxROI");
}

template <class T>
LxROI<T>::~LxROI() = default;

template <class T>
bool LxROI<T>::Place(int x, int y, int width, int height) {
  if (m_pParent == nullptr || !lx::SpanFits(x, width, m_pParent->m_un32Width) ||
      !lx::SpanFits(y, height, m_pParent->m_un32Height)) {
    return false;
  }
  m_n32X = x;
  m_n32Y = y;
  m_un32Width = static_cast<std::uint32_t>(width);
  m_un32Height = static_cast<std::uint32_t>(height);
  return true;
}

template <class T>
void LxROI<T>::SetPlacement(int x, int y, int width, int height) {
  if (!Place(x, y, width, height)) {
    lx::Fail(LX_ERROR_INCONSISTENT_ARGUMENTS, "LxROI::SetPlacement");
  }
}

template <class T>
typename LxROI<T>::Origin LxROI<T>::Locate() const {
  // Regions may be nested deeper than a stack is.
  std::ptrdiff_t x = 0;
  std::ptrdiff_t y = 0;
  const LxROI* root = this;
  for (; root->m_pParent != nullptr; root = root->m_pParent) {
    // The parent may have moved or shrunk since the placement was set.
    const auto width = static_cast<int>(root->m_un32Width);
    const auto height = static_cast<int>(root->m_un32Height);
    if (!lx::SpanFits(root->m_n32X, width, root->m_pParent->m_un32Width) ||
        !lx::SpanFits(root->m_n32Y, height, root->m_pParent->m_un32Height)) {
      return {};
    }
    x += root->m_n32X;
    y += root->m_n32Y;
  }
  Origin origin = root == this ? Origin{} : root->Locate();
  if (origin.base == nullptr) return {};
  origin.base += y * origin.pitch;
  if constexpr (kBinary<T>) {
    origin.firstBit = x;
  } else {
    origin.base += x * std::ptrdiff_t{kPixelSize<T>};
  }
  return origin;
}

template <class T>
std::uintptr_t LxROI<T>::GetIdentity() const {
  if (Locate().base == nullptr) return 0;
  const LxROI* root = this;
  while (root->m_pParent != nullptr) root = root->m_pParent;
  return reinterpret_cast<std::uintptr_t>(root->Locate().base);
}

template <class T>
unsigned LxROI<T>::GetPixelSize() const {
  return kPixelSize<T>;
}

template <class T>
void LxROI<T>::CheckSize(LxGenericROI* other) const {
  if (other == nullptr) {
    LxSetError(LX_ERROR_ROI_NOT_ATTACHED);
  } else if (other->GetWidth() != m_un32Width || other->GetHeight() != m_un32Height) {
    LxSetError(LX_ERROR_SIZE_MISMATCH);
  }
}

template <class T>
void LxROI<T>::SetSize(LxGenericROI* model) {
  CheckSize(model);
}

template <class T>
void* LxROI<T>::GetPixelPtr(int x, int y) const {
  const Origin origin = Locate();
  if (origin.base == nullptr) return nullptr;
  const std::ptrdiff_t column =
      kBinary<T> ? ByteOf(origin.firstBit + x) : std::ptrdiff_t{x} * kPixelSize<T>;
  return origin.base + y * origin.pitch + column;
}

template <class T>
std::ptrdiff_t LxROI<T>::GetPitch() const {
  return Locate().pitch;
}

template <class T>
int LxROI<T>::GetBitPosition(int x, int /*y*/) const {
  return kBinary<T> ? BitInByte(Locate().firstBit + x) : 0;
}

template <class T>
void LxROI<T>::Check() const {
  if (Locate().base == nullptr) LxSetError(LX_ERROR_ROI_NOT_ATTACHED);
}

template <class T>
std::ptrdiff_t LxROI<T>::GetRowSkip() const {
  const Origin origin = Locate();
  if (origin.base == nullptr) return 0;
  const auto width = static_cast<std::ptrdiff_t>(m_un32Width);
  if constexpr (kBinary<T>) {
    if (width == 0) return origin.pitch;
    return origin.pitch - (ByteOf(origin.firstBit + width - 1) - ByteOf(origin.firstBit) + 1);
  } else {
    return origin.pitch - width * std::ptrdiff_t{kPixelSize<T>};
  }
}

template <class T>
T LxROI<T>::GetPixel(int x, int y) const {
  T value{};
  if (!lx::SpanFits(x, 1, m_un32Width) || !lx::SpanFits(y, 1, m_un32Height)) return value;
  const auto* const pixel = static_cast<const std::uint8_t*>(GetPixelPtr(x, y));
  if (pixel == nullptr) return value;
  if constexpr (kBinary<T>) {
    value = (*pixel >> (7 - GetBitPosition(x, y))) & 1;
  } else {
    // Rows of the caller's memory may start at any address.
    std::memcpy(&value, pixel, sizeof value);
  }
  return value;
}

template <class T>
void LxROI<T>::SetPixel(T value, int x, int y) {
  if (!lx::SpanFits(x, 1, m_un32Width) || !lx::SpanFits(y, 1, m_un32Height)) return;
  auto* const pixel = static_cast<std::uint8_t*>(GetPixelPtr(x, y));
  if (pixel == nullptr) return;
  if constexpr (kBinary<T>) {
    const int mask = 0x80 >> GetBitPosition(x, y);
    *pixel = static_cast<std::uint8_t>(value != 0 ? *pixel | mask : *pixel & ~mask);
  } else {
    if constexpr (std::is_same_v<T, LxC15>) {
      const int flag = GetPixel(x, y).word & 0x8000;
      value.word = static_cast<std::uint16_t>((value.word & 0x7FFF) | flag);
    }
    std::memcpy(pixel, &value, sizeof value);
  }
}

template <class T>
bool LxROI<T>::HoldsRun(const LxRun& run, bool absolute) const {
  const Origin origin = Locate();
  if (kBinary<T> || origin.base == nullptr) return false;
  return lx::HoldsRun(
      {absolute ? origin.base : nullptr, origin.pitch, m_un32Width, m_un32Height, sizeof(T)}, run);
}

template <class T>
void LxROI<T>::SetRuns(const LxVectorTemplate<LxRun>& runs, bool absolute) {
  for (const LxRun& run : runs) {
    if (!HoldsRun(run, absolute)) {
      lx::Fail(LX_ERROR_INCONSISTENT_ARGUMENTS, "LxROI::SetRuns");
      return;
    }
  }
  m_Runs = runs;
  // A copy that succeeded has exactly the capacity it needs.
  if (&runs != &m_Runs && m_Runs.GetMaxElements() != runs.GetNumElements()) {
    LxTraceError("LxROI::SetRuns");
    return;
  }
  m_bRunsAbsolute = absolute;
}

template <class T>
void LxROI<T>::AddRun(int x, int y, int length) {
  const Origin origin = Locate();
  if (kBinary<T> || origin.base == nullptr || !lx::SpanFits(x, length, m_un32Width) ||
      !lx::SpanFits(y, 1, m_un32Height) || x > INT16_MAX || y > INT16_MAX) {
    lx::Fail(LX_ERROR_INCONSISTENT_ARGUMENTS, "LxROI::AddRun");
    return;
  }
  LxRun run = lx::RunAt(x, y,
                        {m_bRunsAbsolute ? origin.base : nullptr, origin.pitch, m_un32Width,
                         m_un32Height, sizeof(T)});
  run.end = run.start + static_cast<unsigned>(length) * std::uintptr_t{sizeof(T)};
  const unsigned count = m_Runs.GetNumElements();
  m_Runs.AddElement(run);
  if (m_Runs.GetNumElements() == count) LxTraceError("LxROI::AddRun");
}

template class LxROI<LxBW8>;
template class LxROI<LxBW16>;
template class LxROI<LxBW32>;
template class LxROI<LxC24>;
template class LxROI<LxC15>;
template class LxROI<LxC16>;
template class LxROI<LxC24A>;
template class LxROI<LxComplex64>;
template class LxROI<int>;
