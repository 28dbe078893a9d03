// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "convolution/box_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/deviation_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/windows-inl.h"
#include "foundation/products-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

#if LX_HAS_LANES

using Words = hn::ScalableTag<std::int16_t>;
using Longs = hn::ScalableTag<std::int32_t>;
using Reals = hn::ScalableTag<float>;
using VLong = hn::Vec<Longs>;
using VReal = hn::Vec<Reals>;

template <typename Lane>
HWY_INLINE Lane* PlaneOf(const WindowMemory& memory, std::size_t plane) {
  return reinterpret_cast<Lane*>(memory.columns + plane * memory.plane + memory.margin);
}

template <typename Lane>
HWY_INLINE ColumnSums<Lane> ColumnsOf(const WindowMemory& memory, std::size_t quantity) {
  return {{PlaneOf<Lane>(memory, 2 * quantity), PlaneOf<Lane>(memory, 2 * quantity + 1)}};
}

// trunc(root / count) in single precision. A product with the inverse gives the same where it steps
// at the same roots, which is tried for every quotient of bytes.
class Quotient {
 public:
  explicit Quotient(std::uint64_t count)
      : count_(static_cast<float>(count)), inverse_(1.0F / count_) {
    for (int level = 1; level <= 128; ++level) {
      const float step = static_cast<float>(level) * count_;
      const float below = std::nextafter(step, 0.0F);
      isProduct_ =
          isProduct_ && static_cast<int>(step * inverse_) == static_cast<int>(step / count_) &&
          static_cast<int>(below * inverse_) == static_cast<int>(below / count_) &&
          static_cast<int>(step / count_) == level && static_cast<int>(below / count_) == level - 1;
    }
  }

  HWY_INLINE VLong OfByte(VReal root) const {
    const Reals d;
    const auto quotient = isProduct_ ? hn::Mul(root, hn::Set(d, inverse_)) : Divided(root);
    return hn::ConvertTo(Longs(), quotient);
  }
  HWY_INLINE VLong OfWord(VReal root) const { return hn::ConvertTo(Longs(), Divided(root)); }

 private:
  HWY_INLINE VReal Divided(VReal root) const { return hn::Div(root, hn::Set(Reals(), count_)); }

  float count_;
  float inverse_;
  bool isProduct_ = true;
};

// What goes down the image with the window: `Sums` holds the column sums and turns those of a row
// into deviations.
template <typename T, class Sums>
void Run(const Window& window, const WindowMemory& memory, T neutral) {
  const Sums sums(window, memory);
  T* const nothing = reinterpret_cast<T*>(memory.neutral);
  std::fill(nothing, nothing + window.width, neutral);
  const auto half = static_cast<std::ptrdiff_t>(window.halfY);
  const auto last = static_cast<std::ptrdiff_t>(window.height) - 1;
  const auto row = [&](std::ptrdiff_t y) {
    const auto at = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(y, 0, last));
    return window.source.template Row<const T>(at);
  };
  // The window of the row before the first, which the first changes like every other.
  for (std::ptrdiff_t y = -half - 1; y < half; ++y) sums.Change(row(y), nothing);
  for (std::ptrdiff_t y = 0; y <= last; ++y) {
    sums.Change(row(y + half), row(y - half - 1));
    sums.Write(window.destination.template Row<T>(static_cast<std::size_t>(y)));
  }
}

// Windows of up to 255 bytes: sums of the bytes less 128, which changes no deviation, in 16 bits,
// and of their squares in 32. The sums of squares of columns 4k + c lie in plane c.
template <std::size_t kHalf>
class SmallSums {
 public:
  SmallSums(const Window& window, const WindowMemory& memory)
      : window_(window), memory_(memory), quotient_(window.Count()) {
    for (std::size_t c = 0; c < 4; ++c) squares_[c] = PlaneOf<std::int32_t>(memory, 2 + c);
  }

  void Change(const std::uint8_t* coming, const std::uint8_t* going) const {
    const hn::ScalableTag<std::uint8_t> d;
    const ColumnSums<std::int16_t> sums = ColumnsOf<std::int16_t>(memory_, 0);
    std::int32_t* const squares[4] = {squares_[0], squares_[1], squares_[2], squares_[3]};
    ForEachVector(d, window_.width, [&](std::size_t x, auto access) HWY_ATTR {
      const Words words;
      const auto centre = hn::Set(d, 0x80);
      // The lanes of a part beyond the row take part like others, and are written over or never
      // read.
      const auto plus = hn::BitCast(words, hn::Xor(access.Load(d, coming + x), centre));
      const auto minus = hn::BitCast(words, hn::Xor(access.Load(d, going + x), centre));
      const auto change = [&](std::size_t h, auto fresh, auto old) HWY_ATTR {
        const auto difference = hn::Sub(fresh, old);
        const auto sum = hn::Add(fresh, old);
        std::int16_t* const at = sums.half[h] + x / 2;
        hn::StoreU(hn::Add(hn::LoadU(words, at), difference), words, at);
        // The difference of squares.
        std::int32_t* const even = squares[h] + x / 4;
        std::int32_t* const odd = squares[h + 2] + x / 4;
        hn::StoreU(hn::Add(hn::LoadU(Longs(), even), EvenProducts(difference, sum)), Longs(), even);
        hn::StoreU(hn::Add(hn::LoadU(Longs(), odd), OddProducts(difference, sum)), Longs(), odd);
      };
      change(0, hn::ShiftRight<8>(hn::ShiftLeft<8>(plus)),
             hn::ShiftRight<8>(hn::ShiftLeft<8>(minus)));
      change(1, hn::ShiftRight<8>(plus), hn::ShiftRight<8>(minus));
    });
  }

  void Write(std::uint8_t* to) const {
    const Words words;
    const hn::Repartition<std::uint8_t, Longs> bytes;
    const ColumnSums<std::int16_t> sums = ColumnsOf<std::int16_t>(memory_, 0);
    ReplicateEnds(window_.width, kHalf / 2 + 2, sums);
    ReplicateSquares();
    const Windows<std::int16_t> windows(sums, kHalf);
    const SmallSums self = *this;
    ForEachVector(bytes, window_.width, [=](std::size_t x, auto access) HWY_ATTR {
      const auto shared = SumOfPairs<kHalf, kHalf>(
          words, windows, static_cast<const std::int16_t*>(nullptr), kHalf, x / 2);
      const auto even = hn::Add(shared, windows.First(words, x / 2));
      const auto odd = hn::Add(shared, windows.Last(words, x / 2));
      VLong squares[4];
      self.SumSquares(x / 4, squares);
      const auto first = self.Deviation(squares[0], SquareOfEven(even));
      const auto second = self.Deviation(squares[1], SquareOfEven(odd));
      const auto third = self.Deviation(squares[2], SquareOfOdd(even));
      const auto fourth = self.Deviation(squares[3], SquareOfOdd(odd));
      const auto low = hn::Or(first, hn::ShiftLeft<8>(second));
      const auto high = hn::Or(hn::ShiftLeft<16>(third), hn::ShiftLeft<24>(fourth));
      access.Store(bytes, hn::BitCast(bytes, hn::Or(low, high)), to + x);
    });
  }

 private:
  using VWord = hn::Vec<Words>;

  static HWY_INLINE VLong SquareOfEven(VWord v) { return EvenProducts(v, v); }
  static HWY_INLINE VLong SquareOfOdd(VWord v) { return OddProducts(v, v); }

  // The sum of squares of column 4k + kColumn.
  template <int kColumn>
  HWY_INLINE VLong Square(std::size_t k) const {
    constexpr int kPlane = (kColumn % 4 + 4) % 4;
    return hn::LoadU(Longs(),
                     squares_[kPlane] + static_cast<std::ptrdiff_t>(k) + (kColumn - kPlane) / 4);
  }
  template <int kFirst, int kLast>
  HWY_INLINE VLong Squares(std::size_t k) const {
    if constexpr (kFirst == kLast) {
      return Square<kFirst>(k);
    } else {
      return hn::Add(Squares<kFirst, kLast - 1>(k), Square<kLast>(k));
    }
  }

  // Over the windows at columns 4k to 4k + 3, which share all columns but three at either end.
  HWY_INLINE void SumSquares(std::size_t k, VLong (&sums)[4]) const {
    constexpr int kReach = kHalf;
    if constexpr (kReach < 2) {
      sums[0] = Squares<-1, 1>(k);
      sums[1] = Squares<0, 2>(k);
      sums[2] = Squares<1, 3>(k);
      sums[3] = Squares<2, 4>(k);
    } else {
      const VLong shared = Squares<3 - kReach, kReach>(k);
      const VLong left1 = Square<2 - kReach>(k);
      const VLong left2 = hn::Add(left1, Square<1 - kReach>(k));
      const VLong left3 = hn::Add(left2, Square<-kReach>(k));
      const VLong right1 = Square<kReach + 1>(k);
      const VLong right2 = hn::Add(right1, Square<kReach + 2>(k));
      const VLong right3 = hn::Add(right2, Square<kReach + 3>(k));
      sums[0] = hn::Add(shared, left3);
      sums[1] = hn::Add(hn::Add(shared, left2), right1);
      sums[2] = hn::Add(hn::Add(shared, left1), right2);
      sums[3] = hn::Add(shared, right3);
    }
  }

  HWY_INLINE VLong Deviation(VLong squares, VLong squareOfSum) const {
    const auto count = hn::Set(Longs(), static_cast<std::int32_t>(window_.Count()));
    const auto radicand = hn::Sub(hn::Mul(squares, count), squareOfSum);
    return quotient_.OfByte(hn::Sqrt(hn::ConvertTo(Reals(), radicand)));
  }

  void ReplicateSquares() const {
    const std::size_t last = (window_.width - 1) / 4;
    const std::size_t lastPlane = (window_.width - 1) % 4;
    const auto before = hn::Set(Longs(), squares_[0][0]);
    const auto behind = hn::Set(Longs(), squares_[lastPlane][last]);
    const std::size_t n = hn::Lanes(Longs());
    for (std::size_t c = 0; c < 4; ++c) {
      if (c > lastPlane) squares_[c][last] = squares_[lastPlane][last];
      for (std::size_t i = 0; i < kHalf / 4 + 2; i += n) {
        hn::StoreU(before, Longs(), squares_[c] - n - i);
        hn::StoreU(behind, Longs(), squares_[c] + last + 1 + i);
      }
    }
  }

  const Window& window_;
  const WindowMemory& memory_;
  Quotient quotient_;
  std::int32_t* squares_[4];
};
// Larger windows, and words: sums of the pixels less the middle of their range and of the squares of
// that, in 32 bits; where squares need more, their sums modulo 2^32 and those of their upper halves.
template <typename T, int kHalf, bool kLong>
class LargeSums {
 public:
  LargeSums(const Window& window, const WindowMemory& memory)
      : window_(window), memory_(memory), quotient_(window.Count()) {}

  void Change(const T* coming, const T* going) const {
    const std::size_t width = window_.width;
    if constexpr (sizeof(T) == 2) {
      ChangeWords(coming, going);
    } else {
      auto* const wide = reinterpret_cast<std::uint16_t*>(memory_.wide);
      std::copy(coming, coming + width, wide);
      std::copy(going, going + width, wide + width);
      ChangeWords(wide, wide + width);
    }
  }

  void Write(T* to) const {
    const hn::Repartition<T, hn::DFromV<decltype(Joined(VLong(), VLong()))>> pixels;
    const std::size_t half = window_.halfX;
    const std::size_t pairRow = memory_.pairRow / sizeof(std::int32_t);
    auto* const pairs = reinterpret_cast<std::int32_t*>(memory_.pairs);
    for (std::size_t q = 0; q < kQuantities; ++q) {
      const auto sums = ColumnsOf<std::int32_t>(memory_, q);
      ReplicateEnds(window_.width, half / 2 + 2, sums);
      PreparePairs<kHalf>(Windows<std::int32_t>(sums, half), (window_.width + 1) / 2, half,
                          pairs + q * pairRow);
    }
    const LargeSums self = *this;
    ForEachVector(pixels, window_.width, [=](std::size_t x, auto access) HWY_ATTR {
      VLong even[kQuantities];
      VLong odd[kQuantities];
      for (std::size_t q = 0; q < kQuantities; ++q) {
        const Windows<std::int32_t> windows(ColumnsOf<std::int32_t>(self.memory_, q), half);
        even[q] = windows.First(Longs(), x / 2);
        odd[q] = windows.Last(Longs(), x / 2);
        if constexpr (kHalf != 0) {
          const auto shared = SumOfPairs<kHalf>(Longs(), windows, pairs + q * pairRow, half, x / 2);
          even[q] = hn::Add(even[q], shared);
          odd[q] = hn::Add(odd[q], shared);
        }
      }
      access.Store(pixels, Joined(self.Deviation(even), self.Deviation(odd)), to + x);
    });
  }

 private:
  static constexpr std::size_t kQuantities = sizeof(T) == 2 ? 3 : 2;
  static constexpr std::uint16_t kMiddle = 1 << (8 * sizeof(T) - 1);

  using Doubles = hn::ScalableTag<double>;
  using VDouble = hn::Vec<Doubles>;

  void ChangeWords(const std::uint16_t* coming, const std::uint16_t* going) const {
    const hn::ScalableTag<std::uint16_t> d;
    ForEachVector(d, window_.width, [&](std::size_t x, auto access) HWY_ATTR {
      const Words words;
      const auto middle = hn::Set(d, kMiddle);
      const auto plus = hn::BitCast(words, hn::Sub(access.Load(d, coming + x), middle));
      const auto minus = hn::BitCast(words, hn::Sub(access.Load(d, going + x), middle));
      const auto lower = [](auto v) HWY_ATTR {
        return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(Longs(), v)));
      };
      const auto upper = [](auto v)
                             HWY_ATTR { return hn::ShiftRight<16>(hn::BitCast(Longs(), v)); };
      Add(0, x / 2, hn::Sub(lower(plus), lower(minus)));
      Add(1, x / 2, hn::Sub(upper(plus), upper(minus)));
      AddSquares(2, x / 2, EvenProducts(plus, plus), EvenProducts(minus, minus));
      AddSquares(3, x / 2, OddProducts(plus, plus), OddProducts(minus, minus));
    });
  }

  HWY_INLINE void Add(std::size_t plane, std::size_t k, VLong change) const {
    auto* const at = PlaneOf<std::int32_t>(memory_, plane) + k;
    hn::StoreU(hn::Add(hn::LoadU(Longs(), at), change), Longs(), at);
  }
  HWY_INLINE void AddSquares(std::size_t plane, std::size_t k, VLong plus, VLong minus) const {
    Add(plane, k, hn::Sub(plus, minus));
    if constexpr (kQuantities == 3) {
      Add(plane + 2, k, hn::Sub(hn::ShiftRight<16>(plus), hn::ShiftRight<16>(minus)));
    }
  }

  // The roots of the radicands. Every product is exact in doubles as long as the window is small.
  HWY_INLINE VReal Roots(const VLong (&sums)[kQuantities], VLong low) const {
    const Doubles d;
    const hn::Rebind<std::int32_t, Doubles> halves;
    const auto count = static_cast<double>(window_.Count());
    const auto radicand = [&](const auto& half) HWY_ATTR {
      const auto sum = hn::PromoteTo(d, half(sums[0]));
      auto scaled = hn::Mul(hn::PromoteTo(d, half(low)), hn::Set(d, count));
      if constexpr (kQuantities == 3) {
        const auto high = hn::PromoteTo(d, half(sums[2]));
        scaled = hn::Add(scaled, hn::Mul(high, hn::Set(d, count * 65536.0)));
      }
      return hn::DemoteTo(hn::Rebind<float, Doubles>(), hn::Sub(scaled, hn::Mul(sum, sum)));
    };
    const auto first = radicand([](VLong v) HWY_ATTR { return hn::LowerHalf(v); });
    const auto second = radicand([=](VLong v) HWY_ATTR { return hn::UpperHalf(halves, v); });
    return hn::Sqrt(hn::Combine(Reals(), second, first));
  }

  // The same in 64-bit integers, lane by lane.
  HWY_INLINE VReal LongRoots(const VLong (&sums)[kQuantities], VLong low) const {
    constexpr std::size_t kLanes = hn::MaxLanes(Longs());
    HWY_ALIGN std::int32_t sum[kLanes];
    HWY_ALIGN std::int32_t lower[kLanes];
    HWY_ALIGN std::int32_t upper[kLanes];
    HWY_ALIGN float radicand[kLanes];
    hn::Store(sums[0], Longs(), sum);
    hn::Store(low, Longs(), lower);
    hn::Store(sums[kQuantities - 1], Longs(), upper);
    const auto count = static_cast<std::int64_t>(window_.Count());
    for (std::size_t i = 0; i < kLanes; ++i) {
      const std::int64_t squares =
          std::int64_t{upper[i]} * 65536 + static_cast<std::uint32_t>(lower[i]);
      radicand[i] = static_cast<float>(count * squares - std::int64_t{sum[i]} * sum[i]);
    }
    return hn::Sqrt(hn::Load(Reals(), radicand));
  }

  HWY_INLINE VLong Deviation(const VLong (&sums)[kQuantities]) const {
    VLong low = sums[1];
    if constexpr (kQuantities == 3) low = hn::Sub(low, hn::ShiftLeft<16>(sums[2]));
    if constexpr (kLong) {
      return quotient_.OfWord(LongRoots(sums, low));
    } else {
      const auto roots = Roots(sums, low);
      return sizeof(T) == 1 ? quotient_.OfByte(roots) : quotient_.OfWord(roots);
    }
  }

  static HWY_INLINE auto Joined(VLong even, VLong odd) {
    const auto both = hn::Or(even, hn::ShiftLeft<static_cast<int>(8 * sizeof(T))>(odd));
    if constexpr (sizeof(T) == 2) {
      return hn::BitCast(hn::ScalableTag<std::uint16_t>(), both);
    } else {
      const hn::Rebind<std::uint16_t, Longs> halves;
      const hn::RebindToUnsigned<Longs> lanes;
      return hn::BitCast(hn::Repartition<std::uint8_t, decltype(halves)>(),
                         Narrow(halves, hn::BitCast(lanes, both)));
    }
  }

  const Window& window_;
  const WindowMemory& memory_;
  Quotient quotient_;
};

template <std::size_t kHalf>
void Small(const Window& window, const WindowMemory& memory) {
  Run<std::uint8_t, SmallSums<kHalf>>(window, memory, 128);
}

void BytesSmall(const Window& window, const WindowMemory& memory) {
  static constexpr DeviationKernel kKernels[] = {&Small<1>, &Small<2>, &Small<3>, &Small<4>,
                                                 &Small<5>, &Small<6>, &Small<7>};
  kKernels[window.halfX - 1](window, memory);
}

template <typename T, int kHalf, bool kLong = false>
void Large(const Window& window, const WindowMemory& memory) {
  Run<T, LargeSums<T, kHalf, kLong>>(window, memory, static_cast<T>(1 << (8 * sizeof(T) - 1)));
}

void Bytes(const Window& window, const WindowMemory& memory) {
  (window.halfX == 0 ? &Large<std::uint8_t, 0> : &Large<std::uint8_t, kOfPrefixes>)(window, memory);
}

void WordsSmall(const Window& window, const WindowMemory& memory) {
  static constexpr DeviationKernel kKernels[] = {&Large<std::uint16_t, 0>, &Large<std::uint16_t, 1>,
                                                 &Large<std::uint16_t, 2>, &Large<std::uint16_t, 3>,
                                                 &Large<std::uint16_t, 4>};
  const auto kernel =
      window.halfX <= kMostDirect ? kKernels[window.halfX] : &Large<std::uint16_t, kOfPrefixes>;
  kernel(window, memory);
}

void AllWords(const Window& window, const WindowMemory& memory) {
  const auto kernel =
      window.halfX == 0 ? &Large<std::uint16_t, 0, true> : &Large<std::uint16_t, kOfPrefixes, true>;
  kernel(window, memory);
}

DeviationKernels Kernels() { return {&BytesSmall, &Bytes, &WordsSmall, &AllWords}; }

#else

DeviationKernels Kernels() { return {}; }

#endif

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Kernels);

DeviationKernels DeviationKernelsOf(Path path) { return LX_CALL(path, Kernels); }

}  // namespace lx::convolution
#endif
