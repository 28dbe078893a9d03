// SPDX-License-Identifier: Apache-2.0
#include "base/vector_template-inl.h"
#include "lxpic/base/vector.h"

namespace lx {

template <>
struct ElementRecord<LxBW8> : IntegerRecord<LxBW8, 1> {};
template <>
struct ElementRecord<LxBW16> : IntegerRecord<LxBW16, 2> {};
template <>
struct ElementRecord<LxBW32> : IntegerRecord<LxBW32, 3> {};

template <>
struct ElementRecord<LxC24> {
  static constexpr std::uint8_t kSignature = 4;
  static constexpr std::uint8_t kVersion = 1;
  static constexpr std::size_t kBytes = 3;
  template <class Visitor, class Element>
  static void Visit(Visitor& visitor, Element& pixel) {
    visitor(pixel.c0);
    visitor(pixel.c1);
    visitor(pixel.c2);
  }
};

template <>
struct ElementRecord<LxRun> {
  static constexpr std::uint8_t kSignature = 5;
  static constexpr std::uint8_t kVersion = 1;
  static constexpr std::size_t kBytes = 2 * sizeof(std::uintptr_t) + 4;
  template <class Visitor, class Element>
  static void Visit(Visitor& visitor, Element& run) {
    visitor(run.start);
    visitor(run.end);
    visitor(run.position);
  }
};

}  // namespace lx

template class LxVectorTemplate<LxBW8>;
template class LxVectorTemplate<LxBW16>;
template class LxVectorTemplate<LxBW32>;
template class LxVectorTemplate<LxC24>;
template class LxVectorTemplate<LxRun>;

namespace {

template <class T>
void Construct(LxVectorTemplate<T>& vector, unsigned count, int zero) {
  vector.SetNumElements(count);
  if (zero != 0) std::fill(vector.begin(), vector.end(), T{});
}

}  // namespace

LxBW8Vector::LxBW8Vector(unsigned count, int zero) { Construct(*this, count, zero); }

LxBW16Vector::LxBW16Vector(unsigned count, int zero) { Construct(*this, count, zero); }

LxBW32Vector::LxBW32Vector(unsigned count, int zero) { Construct(*this, count, zero); }

LxC24Vector::LxC24Vector(unsigned count, int zero) { Construct(*this, count, zero); }
