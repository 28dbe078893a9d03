// SPDX-License-Identifier: Apache-2.0
#include "lxpic/sequence/moving_average.h"

#include <new>

#include "base/allocate.h"
#include "foundation/frame.h"
#include "sequence/moving_average_kernels.h"

namespace {

using namespace lx;
using namespace lx::sequence;

constexpr const char* kAverage = "LxMovingAverage::Average";

// An image of this size; null, and a code, when there is none.
template <class T>
LxImage<T>* MakeImage(int width, int height) {
  auto* const image = new (std::nothrow) LxImage<T>(width, height);
  if (!Require(image != nullptr, LX_ERROR_ALLOCATION_FAILED)) return nullptr;
  if (LxGetError() == LX_OK) return image;
  delete image;
  return nullptr;
}

}  // namespace

LxMovingAverage::LxMovingAverage() { LxOk(); }

LxMovingAverage::LxMovingAverage(unsigned int period, int width, int height, int sourceInBuffer) {
  SetSize(period, width, height, sourceInBuffer);
}

LxMovingAverage::~LxMovingAverage() { Release(); }

void LxMovingAverage::Release() {
  if (m_ppFrames != nullptr) {
    for (std::int32_t i = 0; i < m_n32Slots; ++i) delete m_ppFrames[i];
    ReleaseBytes(m_ppFrames);
  }
  delete m_pSum;
  m_ppFrames = nullptr;
  m_pSum = nullptr;
  m_un32Period = 0;
  m_n32Counter = m_n32Slots = m_n32SourceInBuffer = 0;
}

// The frames and the sum. After a failure there may be fewer frames than slots.
bool LxMovingAverage::Allocate(int width, int height) {
  const auto slots = static_cast<std::uint32_t>(m_n32Slots);
  m_n32Slots = 0;
  if (slots > 0) {
    m_ppFrames = static_cast<LxImage<LxBW8>**>(AllocateBytes(std::uint64_t{slots} * sizeof(void*)));
    if (!Require(m_ppFrames != nullptr, LX_ERROR_ALLOCATION_FAILED)) return false;
  }
  for (std::uint32_t i = 0; i < slots; ++i) {
    LxImage<LxBW8>* const frame = MakeImage<LxBW8>(width, height);
    if (frame == nullptr) return false;
    m_ppFrames[m_n32Slots++] = frame;
  }
  m_pSum = MakeImage<LxBW16>(width, height);
  return m_pSum != nullptr;
}

void LxMovingAverage::SetSize(unsigned int period, int width, int height, int sourceInBuffer) {
  RunOperation("LxMovingAverage::SetSize", [&] {
    Release();
    const bool held = period > 0 && period <= ByteAverage::kMost;
    if (!Require(held, LX_ERROR_ARGUMENT_1_OUT_OF_RANGE)) return;
    m_n32Slots = static_cast<std::int32_t>(period) - (sourceInBuffer != 0 ? 0 : 1);
    if (!Allocate(width, height)) return Release();
    m_un32Period = period;
    m_n32SourceInBuffer = sourceInBuffer;
    m_n32Counter = -m_n32Slots;
  });
}

void LxMovingAverage::GetSize(unsigned int& period, int& width, int& height, int& sourceInBuffer) {
  LxOk();
  period = m_un32Period;
  width = m_pSum != nullptr ? static_cast<int>(m_pSum->GetWidth()) : 0;
  height = m_pSum != nullptr ? static_cast<int>(m_pSum->GetHeight()) : 0;
  sourceInBuffer = m_n32SourceInBuffer;
}

void LxMovingAverage::Reset() {
  LxOk();
  m_n32Counter = -m_n32Slots;
}

// The frame that the next image goes to; null when none is kept.
LxImage<LxBW8>* LxMovingAverage::Current() const {
  if (m_n32Slots == 0) return nullptr;
  return m_ppFrames[m_n32Counter < 0 ? m_n32Counter + m_n32Slots : m_n32Counter];
}

// The oldest frame, of which the first one stands for those that have not come.
LxImage<LxBW8>* LxMovingAverage::Outgoing() const {
  if (m_n32Slots == 0) return nullptr;
  if (m_n32Counter < 0) return m_ppFrames[0];
  return m_ppFrames[m_n32SourceInBuffer != 0 ? (m_n32Counter + 1) % m_n32Slots : m_n32Counter];
}

LxImage<LxBW8>* LxMovingAverage::GetSrcImage() {
  LxImage<LxBW8>* image = nullptr;
  RunOperation("LxMovingAverage::GetSrcImage", [&] {
    if (m_un32Period == 0) return;
    if (Require(m_n32SourceInBuffer != 0, LX_ERROR_UNSUPPORTED_OPERATION)) image = Current();
  });
  return image;
}

void LxMovingAverage::Take(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  if (!Usable({source, destination, m_pSum})) return;
  Averaging images{
      RowsOf(source),     {}, {}, RowsOf(m_pSum), RowsOf(destination), m_pSum->GetWidth(),
      m_pSum->GetHeight()};
  if (m_n32Slots > 0) {
    // The application may have resized a frame that it was given.
    if (!Usable({Current(), Outgoing(), m_pSum})) return;
    if (m_n32SourceInBuffer == 0) images.kept = RowsOf(Current());
    images.outgoing = RowsOf(Outgoing());
  }
  if (m_un32Period == 1 || m_n32Counter == -m_n32Slots) {
    StartAverage(images, static_cast<std::uint16_t>(m_un32Period - 1));
  } else {
    ContinueAverage(images, ByteAverage::Of(m_un32Period));
  }
  m_n32Counter = m_n32Counter + 1 < m_n32Slots ? m_n32Counter + 1 : 0;
}

void LxMovingAverage::Average(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  RunOperation(kAverage, [&] {
    const bool passed = m_un32Period != 0 && m_n32SourceInBuffer == 0;
    if (Require(passed, LX_ERROR_UNSUPPORTED_OPERATION)) Take(source, destination);
  });
}

void LxMovingAverage::Average(LxROI<LxBW8>* destination) {
  RunOperation(kAverage, [&] {
    const bool buffered = m_un32Period != 0 && m_n32SourceInBuffer != 0;
    if (Require(buffered, LX_ERROR_UNSUPPORTED_OPERATION)) Take(Current(), destination);
  });
}
