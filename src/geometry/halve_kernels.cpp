// SPDX-License-Identifier: Apache-2.0
#include "geometry/halve_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/halve_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/colour_pixels-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::geometry::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// The left and the right pixels of the next blocks.
template <class D>
struct Pairs {
  hn::Vec<D> left;
  hn::Vec<D> right;
};

template <class D>
HWY_INLINE Pairs<D> PairsOf([[maybe_unused]] D d, hn::Vec<D> first, hn::Vec<D> second) {
#if LX_HAS_LANES
  if constexpr (hn::MaxLanes(d) > 1) {
    return {hn::ConcatEven(d, second, first), hn::ConcatOdd(d, second, first)};
  } else
#endif
  {
    return {first, second};
  }
}

template <class D>
HWY_INLINE Pairs<D> LoadPairs(D d, const hn::TFromD<D>* from) {
  return PairsOf(d, hn::LoadU(d, from), hn::LoadU(d, from + hn::Lanes(d)));
}

// (sum of both pairs) >> 2 of grey levels.
template <typename T>
struct Levels {
  using Element = T;

  template <class D>
  static HWY_INLINE hn::Vec<D> Average(D d, Pairs<D> top, Pairs<D> bottom) {
    const auto rule = [](auto /*wide*/, auto a, auto b, auto e, auto f) HWY_ATTR {
      return hn::ShiftRight<2>(hn::Add(hn::Add(a, b), hn::Add(e, f)));
    };
    if constexpr (hn::MaxLanes(d) == 1) {
      const hn::Rebind<hwy::MakeWide<T>, D> wide;
      const auto w = [wide](auto v) HWY_ATTR { return hn::PromoteTo(wide, v); };
      const auto average = rule(wide, w(top.left), w(top.right), w(bottom.left), w(bottom.right));
      return hn::DemoteTo(d, hn::BitCast(hn::RebindToSigned<decltype(wide)>(), average));
    } else {
      return MapWide(d, rule, top.left, top.right, bottom.left, bottom.right);
    }
  }
};

// The same of two signed components.
struct Gradients {
  using Element = std::uint32_t;

  template <class D>
  static HWY_INLINE hn::Vec<D> Average(D d, Pairs<D> top, Pairs<D> bottom) {
    const hn::RebindToSigned<D> whole;
    const auto low = [whole](auto v) HWY_ATTR {
      return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(whole, v)));
    };
    const auto high = [whole](auto v)
                          HWY_ATTR { return hn::ShiftRight<16>(hn::BitCast(whole, v)); };
    const auto average = [&](auto part) HWY_ATTR {
      const auto sum = hn::Add(hn::Add(part(top.left), part(top.right)),
                               hn::Add(part(bottom.left), part(bottom.right)));
      return hn::BitCast(d, hn::ShiftRight<2>(sum));
    };
    return hn::Or(hn::And(average(low), hn::Set(d, 0xFFFF)), hn::ShiftLeft<16>(average(high)));
  }
};

// Vectors of blocks of pixels of one element.
template <class Rule>
struct Single {
  using T = typename Rule::Element;
  static constexpr std::size_t kElements = 1;

  template <class D>
  static HWY_INLINE void Write(D d, const T* top, const T* bottom, T* to) {
#if LX_HAS_PAIR_PRODUCTS
    if constexpr (sizeof(T) == 1 && hn::MaxLanes(d) >= 16) {
      const auto half = [&](std::size_t x) HWY_ATTR {
        return hn::ShiftRight<2>(hn::Add(PairSums<1, 1>(hn::LoadU(d, top + x)),
                                         PairSums<1, 1>(hn::LoadU(d, bottom + x))));
      };
      hn::StoreU(PackInOrder(half(0), half(hn::Lanes(d))), d, to);
    } else
#endif
    {
      hn::StoreU(Rule::Average(d, LoadPairs(d, top), LoadPairs(d, bottom)), d, to);
    }
  }

  // A block of one column, twice.
  static HWY_INLINE void WriteLast(const T* top, const T* bottom, T* to) {
    const hn::CappedTag<T, 1> one;
    const auto above = hn::LoadU(one, top);
    const auto below = hn::LoadU(one, bottom);
    hn::StoreU(Rule::Average(one, {above, above}, {below, below}), one, to);
  }
};

// And of colours, which are halved without a column or row of their own.
struct Colours {
  using T = std::uint8_t;
  static constexpr std::size_t kElements = 3;

  template <class D>
  static HWY_INLINE void Load(D d, const T* from, Pairs<D> (&pairs)[3]) {
    hn::Vec<D> a0, a1, a2, b0, b1, b2;
    LoadColour(d, from, a0, a1, a2);
    LoadColour(d, from + 3 * hn::Lanes(d), b0, b1, b2);
    pairs[0] = PairsOf(d, a0, b0);
    pairs[1] = PairsOf(d, a1, b1);
    pairs[2] = PairsOf(d, a2, b2);
  }
  template <class D>
  static HWY_INLINE void Write(D d, const T* top, const T* bottom, T* to) {
    Pairs<D> above[3];
    Pairs<D> below[3];
    Load(d, top, above);
    Load(d, bottom, below);
    const auto average = [&](int c) HWY_ATTR { return Levels<T>::Average(d, above[c], below[c]); };
    StoreColour(d, average(0), average(1), average(2), to);
  }
  static HWY_INLINE void WriteLast(const T* /*top*/, const T* /*bottom*/, T* /*to*/) {}
};

// One row of blocks. The last vector overlaps the one before it.
template <class Blocks, typename T = typename Blocks::T>
HWY_INLINE void HalveRow(const T* top, const T* bottom, std::size_t count, bool keepsLast, T* to) {
  constexpr std::size_t kElements = Blocks::kElements;
  const hn::ScalableTag<T> d;
  const std::size_t n = hn::Lanes(d);
  const auto step = [&](auto tag, std::size_t x) HWY_ATTR {
    const std::size_t from = 2 * kElements * x;
    Blocks::Write(tag, top + from, bottom + from, to + kElements * x);
  };
  std::size_t x = 0;
  for (; x + n <= count; x += n) step(d, x);
  if (x < count && count >= n) {
    step(d, count - n);
  } else {
    for (; x < count; ++x) step(hn::CappedTag<T, 1>(), x);
  }
  if (keepsLast) Blocks::WriteLast(top + 2 * count, bottom + 2 * count, to + count);
}

template <class Blocks>
void Halve(const Halving& halving) {
  using T = typename Blocks::T;
  // A single row is a block of it, twice.
  const std::size_t rows = halving.rows + (halving.keepsRow ? 1 : 0);
  for (std::size_t y = 0; y < rows; ++y) {
    const T* const top = halving.source.Row<const T>(2 * y);
    const T* const bottom = y < halving.rows ? halving.source.Row<const T>(2 * y + 1) : top;
    HalveRow<Blocks>(top, bottom, halving.columns, halving.keepsColumn,
                     halving.destination.Row<T>(y));
  }
}

void ByteBlocks(const Halving& halving) { Halve<Single<Levels<std::uint8_t>>>(halving); }
void WordBlocks(const Halving& halving) { Halve<Single<Levels<std::uint16_t>>>(halving); }
void ColourBlocks(const Halving& halving) { Halve<Colours>(halving); }
void GradientBlocks(const Halving& halving) { Halve<Single<Gradients>>(halving); }

}  // namespace
}  // namespace lx::geometry::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::geometry {

HWY_EXPORT(ByteBlocks);
HWY_EXPORT(WordBlocks);
HWY_EXPORT(ColourBlocks);
HWY_EXPORT(GradientBlocks);

void HalveBytes(const Halving& halving) { LX_CALL(halving.path, ByteBlocks, halving); }
void HalveWords(const Halving& halving) { LX_CALL(halving.path, WordBlocks, halving); }
void HalveColours(const Halving& halving) { LX_CALL(halving.path, ColourBlocks, halving); }
void HalveGradients(const Halving& halving) { LX_CALL(halving.path, GradientBlocks, halving); }

}  // namespace lx::geometry
#endif
