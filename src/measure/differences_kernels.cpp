// SPDX-License-Identifier: Apache-2.0
#include "measure/differences_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/differences_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/image_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

// Squared differences of the first image from each of the others; and squares of its pixels.
template <typename T, bool kSignal>
class Differences {
 public:
  using Element = T;
  // Up to two differences of a pixel go to the same lanes.
  static constexpr std::size_t kVectors = SumOfProducts<T>::kVectors / 2;

  HWY_INLINE Differences() {}

  template <class D, class... V>
  HWY_INLINE void Add(D d, hn::Vec<D> v, V... others) {
    (AddSquare(d, hn::Sub(hn::Max(v, others), hn::Min(v, others)), differences_), ...);
    if constexpr (kSignal) AddSquare(d, v, signal_);
  }
  HWY_INLINE void Spill() {
    differences_.Spill();
    signal_.Spill();
  }
  HWY_INLINE Powers Result() const { return {signal_.Result(), differences_.Result()}; }

 private:
  template <class D>
  static HWY_INLINE void AddSquare(D d, hn::Vec<D> v, SumOfProducts<T>& sum) {
    sum.Add(d, v, v);
  }

  SumOfProducts<T> differences_;
  SumOfProducts<T> signal_;
};

template <typename T>
std::uint64_t Gradient(const PixelMap& map) {
  return SumImages<Differences<T, false>, T, T, T>(map, {}).Result().difference;
}

std::uint64_t ByteGradient(const PixelMap& map) { return Gradient<std::uint8_t>(map); }
std::uint64_t WordGradient(const PixelMap& map) { return Gradient<std::uint16_t>(map); }

template <typename T>
Powers PairPowers(const PixelMap& map, bool signal) {
  if (signal) return SumImages<Differences<T, true>, T, T>(map, {}).Result();
  return SumImages<Differences<T, false>, T, T>(map, {}).Result();
}

Powers BytePowers(const PixelMap& map, bool signal) {
  return PairPowers<std::uint8_t>(map, signal);
}
Powers WordPowers(const PixelMap& map, bool signal) {
  return PairPowers<std::uint16_t>(map, signal);
}

// Sums of frames against one of them.
template <bool kSignal>
class SumDifferences {
 public:
  using Element = std::uint16_t;
  static constexpr std::size_t kVectors = SumOfWordProducts::kVectors;

  HWY_INLINE explicit SumDifferences(int shift) : shift_(shift) {}

  template <class D>
  HWY_INLINE void Add(D d, hn::Vec<D> v, hn::Vec<D> sum) {
    powers_.Add(d, v, hn::ShiftRightSame(sum, shift_));
  }
  HWY_INLINE void Spill() { powers_.Spill(); }
  HWY_INLINE Powers Result() const { return powers_.Result(); }

 private:
  int shift_;
  Differences<std::uint16_t, kSignal> powers_;
};

template <bool kSignal>
Powers SumPowersOf(const PixelMap& map) {
  const SumDifferences<kSignal> rule(map.constants[0]);
  return SumImages<SumDifferences<kSignal>, std::uint8_t, std::uint16_t>(map, rule).Result();
}

Powers SumPowers(const PixelMap& map, bool signal) {
  return signal ? SumPowersOf<true>(map) : SumPowersOf<false>(map);
}

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(BytePowers);
HWY_EXPORT(WordPowers);
HWY_EXPORT(SumPowers);
HWY_EXPORT(ByteGradient);
HWY_EXPORT(WordGradient);

Powers PowersOfBytes(const PixelMap& map, bool signal) {
  return LX_CALL(map.path, BytePowers, map, signal);
}

Powers PowersOfWords(const PixelMap& map, bool signal) {
  return LX_CALL(map.path, WordPowers, map, signal);
}

Powers PowersOfSums(const PixelMap& map, bool signal) {
  return LX_CALL(map.path, SumPowers, map, signal);
}

std::uint64_t GradientOfBytes(const PixelMap& map) { return LX_CALL(map.path, ByteGradient, map); }

std::uint64_t GradientOfWords(const PixelMap& map) { return LX_CALL(map.path, WordGradient, map); }

}  // namespace lx::measure
#endif
