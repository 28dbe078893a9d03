// SPDX-License-Identifier: Apache-2.0
#include "frequency/slow_transform_kernels.h"

#include <cmath>
#include <numbers>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frequency/slow_transform_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "frequency/batches-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::frequency::HWY_NAMESPACE {
namespace {

enum class Parts {
  kReal,  // the imaginary parts are 0: what they would add is no change to any bit
  kComplex
};

template <Parts kParts>
HWY_INLINE void AddProduct(const float* sample, const float* twiddle, Complex& sum) {
  const Reals d;
  const auto c = hn::Set(d, twiddle[0]);
  const auto s = hn::Set(d, twiddle[1]);
  const auto re = hn::Load(d, sample);
  if constexpr (kParts == Parts::kReal) {
    sum = {hn::Add(sum.re, hn::Mul(re, c)), hn::Add(sum.im, hn::Mul(re, s))};
  } else {
    const auto im = hn::Load(d, sample + kBatch);
    sum = {hn::Add(sum.re, hn::Sub(hn::Mul(re, c), hn::Mul(im, s))),
           hn::Add(sum.im, hn::Add(hn::Mul(re, s), hn::Mul(im, c)))};
  }
}

// Sums k to k + kSums - 1: several, as each one waits for its own last addition.
template <Parts kParts, std::size_t kSums>
HWY_INLINE void Sum(const SlowPlan& plan, const float* twiddles, std::size_t count, std::size_t k) {
  const Reals d;
  Complex sums[kSums];
  std::size_t at[kSums] = {};
  LX_UNROLL
  for (Complex& each : sums) each = {hn::Zero(d), hn::Zero(d)};
  for (std::size_t n = 0; n < count; ++n) {
    const float* const sample = Element(plan.samples, n);
    LX_UNROLL
    for (std::size_t i = 0; i < kSums; ++i) {
      AddProduct<kParts>(sample, twiddles + 2 * at[i], sums[i]);
      const std::size_t next = at[i] + k + i;
      at[i] = next < count ? next : next - count;
    }
  }
  LX_UNROLL
  for (std::size_t i = 0; i < kSums; ++i) Put(sums[i], Element(plan.sums, k + i));
}

// The batch of samples becomes the batch of sums.
template <Parts kParts>
HWY_INLINE void SumAll(const SlowPlan& plan, const float* twiddles, std::size_t count) {
  constexpr std::size_t kAtOnce = 4;
  std::size_t k = 0;
  for (; k + kAtOnce <= count; k += kAtOnce) Sum<kParts, kAtOnce>(plan, twiddles, count, k);
  for (; k < count; ++k) Sum<kParts, 1>(plan, twiddles, count, k);
}

void Slow(const Transform& work, const SlowPlan& plan) {
  const Reals d;
  for (std::size_t y = 0; y < work.height; y += kBatch) {
    const Samples samples(work, y, plan.pixels);
    for (std::size_t x = 0; x < work.width; ++x) {
      hn::Store(samples(x), d, Element(plan.samples, x));
    }
    SumAll<Parts::kReal>(plan, plan.across, work.width);
    StoreRows(plan.sums, work, y);
  }
  for (std::size_t x = 0; x < work.width; x += kBatch) {
    WithColumns(work, x, [&](const auto& access) HWY_ATTR {
      for (std::size_t y = 0; y < work.height; ++y) {
        Put(LoadPixels(work.destination.Row<float>(y) + 2 * x, access), Element(plan.samples, y));
      }
      SumAll<Parts::kComplex>(plan, plan.down, work.height);
      for (std::size_t y = 0; y < work.height; ++y) {
        StorePixels(Get(Element(plan.sums, y)), work.destination.Row<float>(y) + 2 * x, access);
      }
    });
  }
}

}  // namespace
}  // namespace lx::frequency::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::frequency {

HWY_EXPORT(Slow);

namespace {

// Powers of the first root of unity by multiplication in single precision; the root itself is
// computed in double precision and rounded once.
void MakePowers(std::size_t count, float* twiddles) {
  const double angle = -2 * std::numbers::pi / static_cast<double>(count);
  const auto c = static_cast<float>(std::cos(angle));
  const auto s = static_cast<float>(std::sin(angle));
  float re = 1;
  float im = 0;
  for (std::size_t m = 0; m < count; ++m) {
    twiddles[2 * m] = re;
    twiddles[2 * m + 1] = im;
    const float before = re;
    re = re * c - im * s;
    im = before * s + im * c;
  }
}

}  // namespace

void TransformSlowly(const Transform& transform) {
  const std::size_t longest = std::max(transform.width, transform.height);
  const Scratch<float> across(2 * transform.width);
  const Scratch<float> down(2 * transform.height);
  const Scratch<std::uint8_t> pixels(PixelBytes(transform.width));
  const Scratch<float> samples(BatchFloats(longest));
  const Scratch<float> sums(BatchFloats(longest));
  if (!across || !down || !pixels || !samples || !sums) return;
  MakePowers(transform.width, across.get());
  MakePowers(transform.height, down.get());
  LX_CALL(transform.path, Slow, transform,
          {across.get(), down.get(), pixels.get(), samples.get(), sums.get()});
}

}  // namespace lx::frequency
#endif
