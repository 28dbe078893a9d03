// SPDX-License-Identifier: Apache-2.0
/// @file elements.h
/// Element records of path and profile vectors, and the vectors that hold them.
#pragma once

#include <cstdint>

#include "lxpic/base/export.h"
#include "lxpic/base/pixel.h"
#include "lxpic/base/vector_template.h"

/// A point of a path.
struct LXPIC_API LxPath {
  std::int16_t m_n16X;  ///< column
  std::int16_t m_n16Y;  ///< row
};

/// A point with its grey level.
struct LXPIC_API LxBW8Path {
  std::int16_t m_n16X;
  std::int16_t m_n16Y;
  LxBW8 m_bw8Pixel;
};

/// A point with its 16-bit grey level.
struct LXPIC_API LxBW16Path {
  std::int16_t m_n16X;
  std::int16_t m_n16Y;
  LxBW16 m_bw16Pixel;
};

/// A point with its colour.
struct LXPIC_API LxC24Path {
  std::int16_t m_n16X;
  std::int16_t m_n16Y;
  LxC24 m_c24Pixel;
};

/// A peak of a profile.
struct LXPIC_API LxPeak {
  std::uint32_t m_un32Start;
  std::uint32_t m_un32Length;
  float m_f32Center;
  std::int32_t m_n32Amplitude;
  std::int32_t m_n32Area;
};

static_assert(sizeof(LxPath) == 4 && sizeof(LxBW8Path) == 6 && sizeof(LxBW16Path) == 6);
static_assert(sizeof(LxC24Path) == 8 && sizeof(LxPeak) == 20);

extern template class LxVectorTemplate<unsigned int>;
extern template class LxVectorTemplate<LxPath>;
extern template class LxVectorTemplate<LxBW8Path>;
extern template class LxVectorTemplate<LxBW16Path>;
extern template class LxVectorTemplate<LxC24Path>;
extern template class LxVectorTemplate<LxPeak>;
