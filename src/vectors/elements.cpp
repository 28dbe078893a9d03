// SPDX-License-Identifier: Apache-2.0
#include "lxpic/vectors/elements.h"

#include "base/vector_template-inl.h"

namespace lx {

/// A point, its pixel if it has one, and padding to a whole number of 16-bit words.
template <class T, std::uint8_t signature>
struct PathRecord {
  static constexpr std::uint8_t kSignature = signature;
  static constexpr std::uint8_t kVersion = 1;
  static constexpr std::size_t kBytes = sizeof(T);
  template <class Visitor, class Element>
  static void Visit(Visitor& visitor, Element& point) {
    visitor(point.m_n16X);
    visitor(point.m_n16Y);
    if constexpr (std::is_same_v<T, LxBW8Path>) {
      visitor(point.m_bw8Pixel.value);
      visitor.Pad();
    } else if constexpr (std::is_same_v<T, LxBW16Path>) {
      visitor(point.m_bw16Pixel.value);
    } else if constexpr (std::is_same_v<T, LxC24Path>) {
      visitor(point.m_c24Pixel.c0);
      visitor(point.m_c24Pixel.c1);
      visitor(point.m_c24Pixel.c2);
      visitor.Pad();
    }
  }
};

template <>
struct ElementRecord<unsigned int> : IntegerRecord<unsigned int, 0xFF, 0xFF> {};
template <>
struct ElementRecord<LxPath> : PathRecord<LxPath, 6> {};
template <>
struct ElementRecord<LxBW8Path> : PathRecord<LxBW8Path, 7> {};
template <>
struct ElementRecord<LxBW16Path> : PathRecord<LxBW16Path, 11> {};
template <>
struct ElementRecord<LxC24Path> : PathRecord<LxC24Path, 8> {};

template <>
struct ElementRecord<LxPeak> {
  static constexpr std::uint8_t kSignature = 9;
  static constexpr std::uint8_t kVersion = 1;
  static constexpr std::size_t kBytes = 20;
  template <class Visitor, class Element>
  static void Visit(Visitor& visitor, Element& peak) {
    visitor(peak.m_un32Start);
    visitor(peak.m_un32Length);
    visitor(peak.m_f32Center);
    visitor(peak.m_n32Amplitude);
    visitor(peak.m_n32Area);
  }
};

}  // namespace lx

template class LxVectorTemplate<unsigned int>;
template class LxVectorTemplate<LxPath>;
template class LxVectorTemplate<LxBW8Path>;
template class LxVectorTemplate<LxBW16Path>;
template class LxVectorTemplate<LxC24Path>;
template class LxVectorTemplate<LxPeak>;
