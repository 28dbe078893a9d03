// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/vector_arithmetic.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/frame.h"
#include "vectors/integers.h"

namespace {

using namespace lx;
using namespace lx::vectors;

using Operation = ARITH_LOGIC_OPERATIONS;

// Combines elements of type T with a constant in 64 bits, which hold every intermediate result.
template <typename T>
class Combiner {
 public:
  Combiner(Operation operation, int constant)
      : operation_(operation), constant_(static_cast<T>(constant)) {
    const bool tooFar = constant < 0 || constant > kBits;
    if (operation == ARITH_LOGIC_SHIFT_LEFT && tooFar) {
      operation_ = ARITH_LOGIC_SET_WHERE_NONZERO;
      constant_ = static_cast<T>(-1);
    } else if (operation == ARITH_LOGIC_SHIFT_RIGHT && tooFar) {
      operation_ = ARITH_LOGIC_SET;
      constant_ = 0;
    }
  }

  static bool Offers(Operation operation) {
    switch (operation) {
      case ARITH_LOGIC_BITWISE_AND:
      case ARITH_LOGIC_BITWISE_OR:
      case ARITH_LOGIC_BITWISE_XOR:
      case ARITH_LOGIC_MINIMUM:
      case ARITH_LOGIC_MAXIMUM:
      case ARITH_LOGIC_SET_WHERE_NONZERO:
      case ARITH_LOGIC_SET:
        return true;
      default:
        return operation >= ARITH_LOGIC_COPY && operation <= ARITH_LOGIC_AVERAGE;
    }
  }

  bool DividesByZero() const {
    return constant_ == 0 && (operation_ == ARITH_LOGIC_DIVIDE || operation_ == ARITH_LOGIC_MODULO);
  }

  T operator()(T element) const { return static_cast<T>(Saturated(Combine(element, constant_))); }

 private:
  static constexpr int kBits = 8 * sizeof(T);
  static constexpr std::int64_t kLowest = std::numeric_limits<T>::min();
  static constexpr std::int64_t kHighest = std::numeric_limits<T>::max();

  static std::int64_t Saturated(std::int64_t value) { return std::clamp(value, kLowest, kHighest); }

  // The product of two unsigned 32-bit elements would leave 64 signed bits.
  static std::int64_t Product(std::int64_t v, std::int64_t c) {
    if (std::is_unsigned_v<T> && c != 0 && v > kHighest / c) return kHighest;
    return v * c;
  }

  std::int64_t Combine(std::int64_t v, std::int64_t c) const {
    switch (operation_) {
      case ARITH_LOGIC_INVERT:
        return static_cast<T>(~v);
      case ARITH_LOGIC_ADD:
        return v + c;
      case ARITH_LOGIC_SUBTRACT:
        return v - c;
      case ARITH_LOGIC_MULTIPLY:
        return Product(v, c);
      case ARITH_LOGIC_DIVIDE:
        return c == 0 ? kHighest : v / c;
      case ARITH_LOGIC_MODULO:
        return c == 0 ? kHighest : v % c;
      case ARITH_LOGIC_SHIFT_LEFT:
        return Product(v, std::int64_t{1} << c);
      case ARITH_LOGIC_SHIFT_RIGHT:
        return v >> c;
      case ARITH_LOGIC_AVERAGE:
        return (v + c) >> 1;
      case ARITH_LOGIC_BITWISE_AND:
        return v & c;
      case ARITH_LOGIC_BITWISE_OR:
        return v | c;
      case ARITH_LOGIC_BITWISE_XOR:
        return v ^ c;
      case ARITH_LOGIC_MINIMUM:
        return std::min(v, c);
      case ARITH_LOGIC_MAXIMUM:
        return std::max(v, c);
      case ARITH_LOGIC_SET_WHERE_NONZERO:
        return v != 0 ? c : 0;
      case ARITH_LOGIC_SET:
        return c;
      default:
        return v;
    }
  }

  Operation operation_;
  T constant_;
};

// The groups that a call processes, as elements, and all elements.
struct ElementRange {
  std::size_t first;
  std::size_t end;
  std::size_t count;
};

template <typename T>
void CombineElements(Operation operation, const LxVector& source, int constant,
                     LxVector& destination, const ElementRange& range) {
  const Combiner<T> combine(operation, constant);
  const auto* const from = static_cast<const T*>(source.GetDataPtr());
  auto* const to = static_cast<T*>(destination.GetDataPtr());
  std::transform(from + range.first, from + range.end, to + range.first, combine);
  std::fill(to, to + range.first, T{0});
  std::fill(to + range.end, to + range.count, T{0});
  Require(!combine.DividesByZero(), LX_ERROR_DIVISION_BY_ZERO);
}

bool CheckGroups(const LxVector& vector, int first, int& last) {
  const int count = vector.GetNbGroup();
  if (last == -1) last = count - 1;
  const bool good = Require(first >= 0 && first < count && last < count, LX_ERROR_VECTOR_EMPTY) &&
                    Require(first <= last, LX_ERROR_RANGE_END_BEFORE_START);
  if (!good) LxTraceError("CheckGroups");
  return good;
}

bool HasLayoutOf(const LxVector& a, const LxVector& b) {
  return a.GetDataSize() == b.GetDataSize() && a.GetDataType() == b.GetDataType() &&
         a.GetNbGroup() == b.GetNbGroup() && a.GetGroupLength() == b.GetGroupLength();
}

// Gives the destination the source's layout. In place, or in a destination that has it already, the
// storage stays.
bool Restructure(const LxVector& source, LxVector& destination) {
  if (HasLayoutOf(source, destination)) return true;
  destination.SetStructure(source.GetDataSize(), source.GetNbGroup(), source.GetGroupLength(),
                           source.GetDataType());
  return LxGetError() == LX_OK;
}

}  // namespace

void PicVect1c2(ARITH_LOGIC_OPERATIONS operation, LxVector* source, int constant,
                LxVector* destination, int first, int last) {
  RunOperation("PicVect1c2", [&] {
    if (!Require(source != nullptr && destination != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    if (!HasIntegers(*source) || !CheckGroups(*source, first, last)) return;
    if (!Restructure(*source, *destination)) return;
    if (!Require(source->GetDataPtr() != nullptr && destination->GetDataPtr() != nullptr,
                 LX_ERROR_ROI_NOT_ATTACHED)) {
      return;
    }
    if (!Require(Combiner<int>::Offers(operation), LX_ERROR_UNSUPPORTED_OPERATION)) return;
    const auto length = static_cast<std::size_t>(source->GetGroupLength());
    const ElementRange range{static_cast<std::size_t>(first) * length,
                             (static_cast<std::size_t>(last) + 1) * length,
                             static_cast<std::size_t>(source->GetNbGroup()) * length};
    VisitElement(*source, [&](auto zero) {
      CombineElements<decltype(zero)>(operation, *source, constant, *destination, range);
    });
  });
}

void PicVect1c2(ARITH_LOGIC_OPERATIONS /*operation*/, LxVector* source, double /*constant*/,
                LxVector* destination) {
  RunOperation("PicVect1c2", [&] {
    if (!Require(source != nullptr && destination != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const bool isReal = source->GetDataType() == LX_DATA_FLOAT;
    LxSetError(isReal ? LX_ERROR_UNSUPPORTED_DATA_SIZE : LX_ERROR_UNSUPPORTED_DATA_TYPE);
  });
}
