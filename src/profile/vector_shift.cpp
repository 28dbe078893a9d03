// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "foundation/frame.h"
#include "lxpic/profile/vector_filters.h"
#include "vectors/integers.h"

namespace {

using namespace lx;
using namespace lx::vectors;

constexpr unsigned kCounts = 32;

// In 32 bits, so that a count may be that of the element's bits or more.
template <class T>
void Shift(T* begin, T* end, int shift) {
  using Wide = std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>;
  const unsigned magnitude = static_cast<unsigned>(shift);
  const unsigned count = (shift < 0 ? 0 - magnitude : magnitude) % kCounts;
  if (shift < 0) {
    std::transform(begin, end, begin,
                   [=](T v) { return static_cast<T>(static_cast<std::uint32_t>(v) << count); });
  } else {
    std::transform(begin, end, begin, [=](T v) { return static_cast<T>(Wide{v} >> count); });
  }
}

}  // namespace

void PicVectDataShift(LxVector* vector, int shift, int first, int last) {
  RunOperation("PicVectDataShift", [&] {
    if (!Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const bool isWhole = first == 0 && last == 0;
    if (!Require(isWhole || HoldsGroups(*vector, first, last), LX_ERROR_VECTOR_EMPTY) ||
        !Require(vector->GetDataPtr() != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !HasIntegers(*vector)) {
      return;
    }
    const int end = isWhole ? vector->GetNbGroup() : last + 1;
    VisitElement(*vector, [&](auto zero) {
      using T = decltype(zero);
      Shift(GroupOf<T>(*vector, first), GroupOf<T>(*vector, end), shift);
    });
  });
}
