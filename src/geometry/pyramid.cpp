// SPDX-License-Identifier: Apache-2.0
#include "lxpic/geometry/pyramid.h"

#include <algorithm>
#include <array>
#include <new>

#include "base/allocate.h"
#include "geometry/halve.h"
#include "lxpic/base/image.h"
#include "lxpic/point/arithmetic.h"

namespace {

using namespace lx;
using namespace lx::geometry;

// The image class of each type.
struct LevelClass {
  LX_IMAGE_TYPES type;
  LxGenericROI* (*make)();
};

template <class T>
LxGenericROI* MakeLevel() {
  return new (std::nothrow) LxImage<T>();
}

constexpr std::array kLevelClasses = {
    LevelClass{LX_IMAGE_BW8, MakeLevel<LxBW8>}, LevelClass{LX_IMAGE_BW16, MakeLevel<LxBW16>},
    LevelClass{LX_IMAGE_BW32, MakeLevel<LxBW32>}, LevelClass{LX_IMAGE_C24, MakeLevel<LxC24>},
    LevelClass{LX_IMAGE_GRADIENT32, MakeLevel<LxBW32>}};

void DeleteLevels(LxGenericROI** levels, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) delete levels[i];
  ReleaseBytes(levels);
}

// An array of `count` empty images; null, and a code, when there is none.
LxGenericROI** MakeLevels(std::uint32_t count, LX_IMAGE_TYPES type) {
  const auto* const found =
      std::find_if(kLevelClasses.begin(), kLevelClasses.end(),
                   [type](const LevelClass& each) { return each.type == type; });
  if (!Require(found != kLevelClasses.end(), LX_ERROR_UNSUPPORTED_IMAGE_TYPE)) return nullptr;
  auto** const levels =
      static_cast<LxGenericROI**>(AllocateBytes(std::uint64_t{count} * sizeof(void*)));
  if (!Require(levels != nullptr, LX_ERROR_ALLOCATION_FAILED)) return nullptr;
  for (std::uint32_t i = 0; i < count; ++i) {
    levels[i] = found->make();
    if (levels[i] != nullptr) continue;
    DeleteLevels(levels, i);
    LxSetError(LX_ERROR_ALLOCATION_FAILED);
    return nullptr;
  }
  return levels;
}

template <class T>
void RunHalve(const char* trace, LxROI<T>* source, LxROI<T>* destination, int dropOdd,
              void (*halve)(const Halving&)) {
  RunOperation(trace, [&] {
    HalveRegion(source, destination, dropOdd, halve);
    if (LxGetError() != LX_ERROR_SIZE_MISMATCH) return;
    LxOk();  // without the name of the inner step
    LxSetError(LX_ERROR_HALVE_SIZE);
  });
}

}  // namespace

LxPyramid::LxPyramid() { LxOk(); }

LxPyramid::~LxPyramid() { Release(); }

void LxPyramid::Release() {
  DeleteLevels(m_ppLevels, m_un32NumLevels);
  m_ppLevels = nullptr;
  m_un32NumLevels = 0;
  m_n32ImageType = LX_IMAGE_NONE;
}

void LxPyramid::SetNumLevels(unsigned int count, LX_IMAGE_TYPES type) {
  RunOperation("LxPyramid::SetNumLevels", [&] {
    if (count == m_un32NumLevels && type == m_n32ImageType) return;
    LxGenericROI** const levels = count > 0 ? MakeLevels(count, type) : nullptr;
    if (count > 0 && levels == nullptr) return;
    Release();
    if (count == 0) return;
    m_ppLevels = levels;
    m_un32NumLevels = count;
    m_n32ImageType = type;
  });
}

unsigned int LxPyramid::GetNumLevels() {
  LxOk();
  return m_un32NumLevels;
}

LxGenericROI* LxPyramid::GetImage(unsigned int level) {
  LxGenericROI* image = nullptr;
  RunOperation("LxPyramid::GetImage", [&] {
    if (Require(level < m_un32NumLevels, LX_ERROR_ARGUMENT_1_OUT_OF_RANGE)) {
      image = m_ppLevels[level];
    }
  });
  return image;
}

int LxPyramid::GetHalvingMode() {
  LxOk();
  return m_n32HalvingMode;
}

void LxPyramid::SetHalvingMode(int dropOdd) {
  LxOk();
  m_n32HalvingMode = dropOdd;
}

void LxPyramid::Build() {
  RunOperation("LxBW8Pyramid::Build", [&] {
    const bool gradient = m_n32ImageType == LX_IMAGE_GRADIENT32;
    if (!Require(gradient || m_n32ImageType == LX_IMAGE_BW8, LX_ERROR_UNSUPPORTED_IMAGE_TYPE) ||
        !Attached({m_ppLevels[0]})) {
      return;
    }
    for (std::uint32_t i = 1; i < m_un32NumLevels && LxGetError() == LX_OK; ++i) {
      LxGenericROI* const from = m_ppLevels[i - 1];
      LxGenericROI* const to = m_ppLevels[i];
      if (gradient) {
        Halve(static_cast<LxROI<LxBW32>*>(from), static_cast<LxROI<LxBW32>*>(to), m_n32HalvingMode);
      } else {
        Halve(static_cast<LxROI<LxBW8>*>(from), static_cast<LxROI<LxBW8>*>(to), m_n32HalvingMode);
      }
    }
  });
}

void LxPyramid::Build(LxROI<LxBW8>* source) {
  RunOperation("LxBW8Pyramid::Build", [&] {
    if (!Require(m_n32ImageType == LX_IMAGE_BW8, LX_ERROR_WRONG_IMAGE_TYPE) ||
        !Attached({source})) {
      return;
    }
    auto* const whole = static_cast<LxROI<LxBW8>*>(m_ppLevels[0]);
    if (!Resize(whole, source->GetWidth(), source->GetHeight(), source)) return;
    PicOper(ARITH_LOGIC_COPY, source, whole);
    if (LxGetError() == LX_OK) Build();
  });
}

void LxPyramid::Halve(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, int dropOdd) {
  RunHalve("LxBW8Pyramid::Halve ( BW8)", source, destination, dropOdd, HalveBytes);
}

void LxPyramid::Halve(LxROI<LxBW32>* source, LxROI<LxBW32>* destination, int dropOdd) {
  RunHalve("LxBW8Pyramid::Halve ( GRADIENT32)", source, destination, dropOdd, HalveGradients);
}
