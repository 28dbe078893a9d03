// SPDX-License-Identifier: Apache-2.0
#include "lxpic/convolution/kernel.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/allocate.h"
#include "foundation/frame.h"

namespace {

struct Preset {
  std::array<float, 9> coefficients;
  float gain;
  short rectifier;
};

// In the order of KERNEL_TYPE, from 1.
constexpr std::array kPresets = {
    Preset{{0, 0, 0, -1, 1, -1, 1, 1, 1}, 0, RECTIFIER_NONE},
    Preset{{0, 0, 0, -1, 0, -1, 1, 1, 1}, 0, RECTIFIER_NONE},
    Preset{{1, 1, 1, 1, 1, 1, 1, 1, 1}, 0, RECTIFIER_NONE},
    Preset{{-1, 0, 1, -2, 0, 2, -1, 0, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{-1, -2, -1, 0, 0, 0, 1, 2, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{-1, 0, 1, -1, 0, 1, -1, 0, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{-1, -1, -1, 0, 0, 0, 1, 1, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{0, 1, 0, 1, -4, 1, 0, 1, 0}, 1, RECTIFIER_POSITIVE},
    Preset{{1, 1, 1, 1, -8, 1, 1, 1, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{1, 2, 1, 2, 4, 2, 1, 2, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{1, 1, 1, 1, 0, 1, 1, 1, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{1, 1, 1, 1, 1, 1, 1, 1, 1}, 1, RECTIFIER_POSITIVE},
    Preset{{0, -1, 0, -1, 5, -1, 0, -1, 0}, 1, RECTIFIER_POSITIVE},
    Preset{{-1, -1, -1, -1, 9, -1, -1, -1, -1}, 1, RECTIFIER_POSITIVE},
};

// Runs a member: it resets the error state, and traces `name` when `body` gives false.
template <class Body>
void Member(const char* name, const Body& body) {
  LxOk();
  if (!body()) LxTraceError(name);
}

template <typename T>
T Read(T field) {
  LxOk();
  return field;
}

template <typename T, typename V>
void Write(T& field, V value) {
  LxOk();
  field = value;
}

}  // namespace

LxKernel::LxKernel() { LxOk(); }

LxKernel::LxKernel(short sizeX, short sizeY, float gain, unsigned int offset, short rectifier,
                   unsigned int outsideValue)
    : m_n16SizeX(sizeX),
      m_n16SizeY(sizeY),
      m_f32Gain(gain),
      m_un32Offset(offset),
      m_n16Rectifier(rectifier),
      m_un32OutsideValue(outsideValue) {
  Member("LxKernel::LxKernel", [&] {
    const int count = sizeX * sizeY;
    return lx::Require(count >= 0, LX_ERROR_ALLOCATION_FAILED) &&
           Reserve(static_cast<unsigned>(count));
  });
}

LxKernel::LxKernel(KERNEL_TYPE type) { SetKernel(type); }

LxKernel::LxKernel(const LxKernel& other) {
  Member("LxKernel::LxKernel", [&] { return CopyFrom(other); });
}

LxKernel& LxKernel::operator=(const LxKernel& other) {
  Member("LxKernel::operator=", [&] { return this == &other || CopyFrom(other); });
  return *this;
}

LxKernel::~LxKernel() { lx::ReleaseBytes(m_pData); }

// Room for `count` coefficients. What was there is lost when the storage grows.
bool LxKernel::Reserve(unsigned int count) {
  if (m_pData != nullptr && count <= m_un32AllocatedSize) return true;
  lx::ReleaseBytes(m_pData);
  m_pData = static_cast<float*>(lx::AllocateBytes(std::size_t{count} * sizeof(float)));
  m_un32AllocatedSize = m_pData == nullptr ? 0 : count;
  return lx::Require(m_pData != nullptr, LX_ERROR_ALLOCATION_FAILED);
}

bool LxKernel::CopyFrom(const LxKernel& other) {
  m_n16SizeX = other.m_n16SizeX;
  m_n16SizeY = other.m_n16SizeY;
  m_f32Gain = other.m_f32Gain;
  m_un32Offset = other.m_un32Offset;
  m_n16Rectifier = other.m_n16Rectifier;
  m_un32OutsideValue = other.m_un32OutsideValue;
  if (other.m_pData == nullptr) {
    lx::ReleaseBytes(m_pData);
    m_pData = nullptr;
    m_un32AllocatedSize = 0;
    return true;
  }
  if (!Reserve(other.m_un32AllocatedSize)) return false;
  std::copy_n(other.m_pData, other.m_un32AllocatedSize, m_pData);
  return true;
}

void LxKernel::SetKernel(KERNEL_TYPE type) {
  Member("LxKernel::SetKernel", [&] {
    m_n16SizeX = 3;
    m_n16SizeY = 3;
    if (!Reserve(9)) return false;
    m_f32Gain = 0;
    m_un32Offset = 0;
    m_n16Rectifier = RECTIFIER_NONE;
    m_un32OutsideValue = 0;
    const bool known = type >= KERNEL_THIN && type <= KERNEL_HIGHPASS_2;
    if (!lx::Require(known, LX_ERROR_ARGUMENT_1_OUT_OF_RANGE)) return false;
    const Preset& preset = kPresets[static_cast<std::size_t>(type) - 1];
    std::copy(preset.coefficients.begin(), preset.coefficients.end(), m_pData);
    m_f32Gain = preset.gain;
    m_n16Rectifier = preset.rectifier;
    return true;
  });
}

bool LxKernel::SetSquare(short size, const float* coefficients) {
  m_n16SizeX = size;
  m_n16SizeY = size;
  const auto count = static_cast<unsigned>(size * size);
  if (!Reserve(count)) return false;
  std::copy_n(coefficients, count, m_pData);
  return true;
}

void LxKernel::SetKernelData(float k00, float k10, float k20, float k01, float k11, float k21,
                             float k02, float k12, float k22) {
  const std::array values = {k00, k10, k20, k01, k11, k21, k02, k12, k22};
  Member("LxKernel::SetKernelData 3x3", [&] { return SetSquare(3, values.data()); });
}

void LxKernel::SetKernelData(float k00, float k10, float k20, float k30, float k40, float k01,
                             float k11, float k21, float k31, float k41, float k02, float k12,
                             float k22, float k32, float k42, float k03, float k13, float k23,
                             float k33, float k43, float k04, float k14, float k24, float k34,
                             float k44) {
  const std::array values = {k00, k10, k20, k30, k40, k01, k11, k21, k31, k41, k02, k12, k22,
                             k32, k42, k03, k13, k23, k33, k43, k04, k14, k24, k34, k44};
  Member("LxKernel::SetKernelData 5x5", [&] { return SetSquare(5, values.data()); });
}

void LxKernel::SetKernelData(float k00, float k10, float k20, float k30, float k40, float k50,
                             float k60, float k01, float k11, float k21, float k31, float k41,
                             float k51, float k61, float k02, float k12, float k22, float k32,
                             float k42, float k52, float k62, float k03, float k13, float k23,
                             float k33, float k43, float k53, float k63, float k04, float k14,
                             float k24, float k34, float k44, float k54, float k64, float k05,
                             float k15, float k25, float k35, float k45, float k55, float k65,
                             float k06, float k16, float k26, float k36, float k46, float k56,
                             float k66) {
  const std::array values = {k00, k10, k20, k30, k40, k50, k60, k01, k11, k21, k31, k41, k51,
                             k61, k02, k12, k22, k32, k42, k52, k62, k03, k13, k23, k33, k43,
                             k53, k63, k04, k14, k24, k34, k44, k54, k64, k05, k15, k25, k35,
                             k45, k55, k65, k06, k16, k26, k36, k46, k56, k66};
  Member("LxKernel::SetKernelData 7x7", [&] { return SetSquare(7, values.data()); });
}

namespace {

struct Grid {
  int columns;
  int rows;
  unsigned capacity;  // elements of the storage, which a growth that failed leaves behind the sizes
};

bool IsElement(const float* data, const Grid& grid, int x, int y) {
  return lx::Require(data != nullptr, LX_ERROR_KERNEL_NOT_ALLOCATED) &&
         lx::Require(x >= 0 && x < grid.columns, LX_ERROR_ARGUMENT_1_OUT_OF_RANGE) &&
         lx::Require(y >= 0 && y < grid.rows, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE) &&
         lx::Require(static_cast<unsigned>(y * grid.columns + x) < grid.capacity,
                     LX_ERROR_KERNEL_NOT_ALLOCATED);
}

}  // namespace

void LxKernel::GetKernelData(int x, int y, float& value) {
  Member("LxKernel::GetKernelData", [&] {
    if (!IsElement(m_pData, {m_n16SizeX, m_n16SizeY, m_un32AllocatedSize}, x, y)) return false;
    value = m_pData[y * m_n16SizeX + x];
    return true;
  });
}

void LxKernel::SetKernelData(int x, int y, float value) {
  Member("LxKernel::SetKernelData", [&] {
    if (!IsElement(m_pData, {m_n16SizeX, m_n16SizeY, m_un32AllocatedSize}, x, y)) return false;
    m_pData[y * m_n16SizeX + x] = value;
    return true;
  });
}

void LxKernel::SetSizeX(short columns) {
  Member("LxKernel::SetSizeX", [&] {
    const int count = m_n16SizeY * columns;
    if (count > 0 && static_cast<unsigned>(count) > m_un32AllocatedSize) {
      SetAllocatedSize(static_cast<unsigned>(count));
      if (LxGetError() != LX_OK) return false;
    }
    m_n16SizeX = columns;
    return true;
  });
}

void LxKernel::SetSizeY(short rows) {
  Member("LxKernel::SetSizeY", [&] {
    const int count = m_n16SizeX * rows;
    if (count > 0 && static_cast<unsigned>(count) > m_un32AllocatedSize) {
      SetAllocatedSize(static_cast<unsigned>(count));
      if (LxGetError() != LX_OK) return false;
    }
    m_n16SizeY = rows;
    return true;
  });
}

void LxKernel::SetAllocatedSize(unsigned int count) {
  Member("LxKernel::SetAllocatedSize", [&] { return Reserve(count); });
}

float* LxKernel::GetDataPtr() { return Read(m_pData); }
short LxKernel::GetSizeX() { return Read(m_n16SizeX); }
short LxKernel::GetSizeY() { return Read(m_n16SizeY); }
unsigned int LxKernel::GetAllocatedSize() { return Read(m_un32AllocatedSize); }
float LxKernel::GetGain() { return Read(m_f32Gain); }
unsigned int LxKernel::GetOffset() { return Read(m_un32Offset); }
short LxKernel::GetRectifier() { return Read(m_n16Rectifier); }
unsigned int LxKernel::GetOutsideValue() { return Read(m_un32OutsideValue); }
void LxKernel::SetGain(float gain) { Write(m_f32Gain, gain); }
void LxKernel::SetOffset(unsigned int offset) { Write(m_un32Offset, offset); }
void LxKernel::SetRectifier(short rectifier) { Write(m_n16Rectifier, rectifier); }
void LxKernel::SetOutsideValue(unsigned int outsideValue) {
  Write(m_un32OutsideValue, outsideValue);
}
