// SPDX-License-Identifier: Apache-2.0
#include "convolution/fixed_smoothing_kernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/fixed_smoothing_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/neighbourhood-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Rules: the taps of a row in the order of their columns, then the sums of the rows, in 16 bits.

struct Gaussian5 {
  static constexpr std::size_t kRadius = 2;

  template <class D, class V>
  HWY_INLINE V Horizontal(D d, const V (&t)[5]) const {
    const V sides = hn::Add(hn::Add(t[0], t[4]), hn::ShiftLeft<2>(hn::Add(t[1], t[3])));
    return hn::Add(sides, hn::Mul(t[2], hn::Set(d, 6)));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&r)[5]) const {
    return hn::ShiftRight<8>(Horizontal(d, r));
  }
};

struct Gaussian7 {
  static constexpr std::size_t kRadius = 3;

  template <class D, class V>
  static HWY_INLINE V Weigh(D d, V outer, V second, V third, V centre) {
    const V near = hn::Add(hn::Mul(third, hn::Set(d, 15)), hn::Mul(centre, hn::Set(d, 20)));
    return hn::Add(hn::Add(outer, hn::Mul(second, hn::Set(d, 6))), near);
  }
  template <class D, class V>
  HWY_INLINE V Horizontal(D d, const V (&t)[7]) const {
    return Weigh(d, hn::Add(t[0], t[6]), hn::Add(t[1], t[5]), hn::Add(t[2], t[4]), t[3]);
  }
  // Two sums of a row fit 16 bits together, the weighted ones do not.
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&r)[7]) const {
    const auto weigh = [](auto wide, auto outer, auto second, auto third, auto centre) HWY_ATTR {
      return hn::ShiftRight<12>(Weigh(wide, outer, second, third, centre));
    };
    return MapWide(d, weigh, hn::Add(r[0], r[6]), hn::Add(r[1], r[5]), hn::Add(r[2], r[4]), r[3]);
  }
};

template <class Rule>
class Smoother {
 public:
  HWY_INLINE Smoother(const Neighbourhood& map, std::uint8_t* scratch)
      : map_(map), stride_((map.elements / 64 + 2) * 64), padded_(scratch) {
    rows_ = reinterpret_cast<std::uint16_t*>(scratch + stride_ + 2 * kLargestVector);
  }

  void Run() {
    for (std::size_t n = 0; n < map_.height; ++n) {
      SumRow(n);
      if (n >= kRadius) WriteRow(n - kRadius);
    }
    const std::size_t written = map_.height > kRadius ? map_.height - kRadius : 0;
    for (std::size_t y = written; y < map_.height; ++y) WriteRow(y);
  }

 private:
  static constexpr std::size_t kRadius = Rule::kRadius;
  static constexpr std::size_t kTaps = 2 * kRadius + 1;
  using D = hn::ScalableTag<std::uint8_t>;
  using W = WideTag<D>;
  using Taps = hn::Vec<W>[kTaps];

  // A row of sums: those of a vector's even pixels, then those of its odd ones.
  std::uint16_t* Sums(std::size_t n) const { return rows_ + n % kTaps * stride_; }

  // The taps of the pixels of half `h` of the vector at `at`. Every other tap is loaded; between
  // two loads the odd pixels of the one and the even pixels of the other are the taps.
  static HWY_INLINE void LoadTaps(const std::uint8_t* at, Taps (&taps)[kHalves]) {
    const D d;
#if !LX_HAS_LANES
    for (std::size_t k = 0; k < kTaps; ++k) taps[0][k] = EvenHalf(d, hn::LoadU(d, at + k));
#else
    Halves<D> loaded[kRadius + 1];
    for (std::size_t m = 0; m <= kRadius; ++m) loaded[m] = Widen(d, hn::LoadU(d, at + 2 * m));
    for (std::size_t m = 0; m <= kRadius; ++m) {
      taps[0][2 * m] = loaded[m].half[0];
      taps[1][2 * m] = loaded[m].half[1];
      if (m == kRadius) break;
      taps[0][2 * m + 1] = loaded[m].half[1];
      taps[1][2 * m + 1] = loaded[m + 1].half[0];
    }
#endif
  }

  void SumRow(std::size_t n) {
    const std::size_t width = map_.elements;
    std::uint8_t* const row = padded_ + kLargestVector;
    std::memcpy(row, map_.source.Row<const std::uint8_t>(n), width);
    std::memset(row - kRadius, row[0], kRadius);
    std::memset(row + width, row[width - 1], kRadius);
    std::uint16_t* const sums = Sums(n);
    const W w;
    for (std::size_t x = 0; x < width; x += hn::Lanes(D())) {
      Taps taps[kHalves];
      LoadTaps(row + x - kRadius, taps);
      for (std::size_t h = 0; h < kHalves; ++h) {
        hn::Store(Rule().Horizontal(w, taps[h]), w, sums + x + h * hn::Lanes(w));
      }
    }
  }

  void WriteRow(std::size_t y) {
    const std::uint16_t* rows[kTaps];
    for (std::size_t k = 0; k < kTaps; ++k) {
      const std::size_t wanted = y + k < kRadius ? 0 : y + k - kRadius;
      rows[k] = Sums(std::min(wanted, map_.height - 1));
    }
    std::uint8_t* const to = map_.destination.Row<std::uint8_t>(y);
    const D d;
    const W w;
    ForEachVector(d, map_.elements, [=](std::size_t x, auto access) HWY_ATTR {
      Halves<D> result;
      for (std::size_t h = 0; h < kHalves; ++h) {
        Taps sums;
        for (std::size_t k = 0; k < kTaps; ++k) {
          sums[k] = hn::Load(w, rows[k] + x + h * hn::Lanes(w));
        }
        result.half[h] = Rule().Vertical(w, sums);
      }
      access.Store(d, Join(d, result), to + x);
    });
  }

  const Neighbourhood& map_;
  std::size_t stride_;
  std::uint8_t* padded_;
  std::uint16_t* rows_;
};

template <class Rule>
void Apply(const Neighbourhood& map, std::uint8_t* scratch) {
  Smoother<Rule>(map, scratch).Run();
}

void Smooth(FixedSmoothing smoothing, const Neighbourhood& map, std::uint8_t* scratch) {
  using Kernel = void (*)(const Neighbourhood&, std::uint8_t*);
  static constexpr Kernel kKernels[] = {&Apply<Gaussian5>, &Apply<Gaussian7>};
  kKernels[static_cast<std::size_t>(smoothing)](map, scratch);
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(Smooth);

std::size_t FixedSmoothingScratch(const Neighbourhood& map) {
  const std::size_t stride = (map.elements / 64 + 2) * 64;
  return stride + 3 * kLargestVector + 7 * stride * sizeof(std::uint16_t);
}

void SmoothBytes(FixedSmoothing smoothing, const Neighbourhood& map, std::uint8_t* scratch) {
  LX_CALL(map.path, Smooth, smoothing, map, scratch);
}

}  // namespace lx::convolution
#endif
