// SPDX-License-Identifier: Apache-2.0
#include "frequency/fast_transform_kernels.h"

#include <bit>
#include <cmath>
#include <numbers>

#include "foundation/scratch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frequency/fast_transform_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "frequency/batches-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::frequency::HWY_NAMESPACE {
namespace {

struct Twiddle {
  Real re;
  Real im;
};

HWY_INLINE Twiddle TwiddleAt(const float* twiddles, std::size_t index) {
  const Reals d;
  return {hn::Set(d, twiddles[2 * index]), hn::Set(d, twiddles[2 * index + 1])};
}

HWY_INLINE void Butterfly(Complex& a, Complex& b, Twiddle w) {
  const auto re = hn::Sub(hn::Mul(w.re, b.re), hn::Mul(w.im, b.im));
  const auto im = hn::Add(hn::Mul(w.im, b.re), hn::Mul(w.re, b.im));
  b = {hn::Sub(a.re, re), hn::Sub(a.im, im)};
  a = {hn::Add(a.re, re), hn::Add(a.im, im)};
}

// The stage of span 1.
HWY_INLINE void RunFirst(const FastPlan& plan, std::size_t count) {
  const Twiddle w = TwiddleAt(plan.twiddles, 1);
  for (std::size_t i = 0; i < count; i += 2) {
    float* const element = Element(plan.batch, i);
    Complex a = Get(element);
    Complex b = Get(element + 2 * kBatch);
    Butterfly(a, b, w);
    Put(a, element);
    Put(b, element + 2 * kBatch);
  }
}

// The stages of `span` and of twice that: four elements meet nobody else in them.
HWY_INLINE void RunTwo(const FastPlan& plan, std::size_t count, std::size_t span) {
  const std::size_t step = 2 * kBatch * span;
  for (std::size_t first = 0; first < count; first += 4 * span) {
    float* element = Element(plan.batch, first);
    for (std::size_t m = 0; m < span; ++m, element += 2 * kBatch) {
      const Twiddle one = TwiddleAt(plan.twiddles, span + m);
      Complex a = Get(element);
      Complex b = Get(element + step);
      Complex c = Get(element + 2 * step);
      Complex d = Get(element + 3 * step);
      Butterfly(a, b, one);
      Butterfly(c, d, one);
      Butterfly(a, c, TwiddleAt(plan.twiddles, 2 * span + m));
      Butterfly(b, d, TwiddleAt(plan.twiddles, 3 * span + m));
      Put(a, element);
      Put(b, element + step);
      Put(c, element + 2 * step);
      Put(d, element + 3 * step);
    }
  }
}

// Transforms the batch, whose elements stand in reversed order. Which butterflies there are and what
// they compute is defined; in which order those run that do not meet is not.
HWY_INLINE void RunStages(const FastPlan& plan, std::size_t count) {
  std::size_t span = 1;
  if (std::countr_zero(count) % 2 != 0) {
    RunFirst(plan, count);
    span = 2;
  }
  for (; span < count; span *= 4) RunTwo(plan, count, span);
}

// Where the elements of `count` go.
struct Order {
  Order(const FastPlan& plan, std::size_t count)
      : reversed(plan.reversed), step(plan.longest / count) {}
  // The bits of a short position are the high ones of a long position in reverse.
  HWY_INLINE std::size_t operator()(std::size_t i) const { return reversed[i] / step; }

  const std::uint32_t* reversed;
  std::size_t step;
};

void Fast(const Transform& work, const FastPlan& plan) {
  const Reals d;
  const Order across(plan, work.width);
  for (std::size_t y = 0; y < work.height; y += kBatch) {
    ForEachSample(work, y, [&](std::size_t x, Real v) HWY_ATTR {
      Put({v, hn::Zero(d)}, Element(plan.batch, across(x)));
    });
    RunStages(plan, work.width);
    StoreRows(plan.batch, work, y);
  }
  const Order down(plan, work.height);
  for (std::size_t x = 0; x < work.width; x += kBatch) {
    WithColumns(work, x, [&](const auto& access) HWY_ATTR {
      for (std::size_t y = 0; y < work.height; ++y) {
        Put(LoadPixels(work.destination.Row<float>(y) + 2 * x, access),
            Element(plan.batch, down(y)));
      }
      RunStages(plan, work.height);
      for (std::size_t y = 0; y < work.height; ++y) {
        StorePixels(Get(Element(plan.batch, y)), work.destination.Row<float>(y) + 2 * x, access);
      }
    });
  }
}

}  // namespace
}  // namespace lx::frequency::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::frequency {

HWY_EXPORT(Fast);

namespace {

// Each stage walks its circle by a recurrence in single precision. The step comes from sines in
// double precision, each rounded once.
void MakeTwiddles(std::size_t longest, float* twiddles) {
  for (std::size_t span = 1; span < longest; span *= 2) {
    const double angle = -std::numbers::pi / static_cast<double>(span);
    const auto half = static_cast<float>(std::sin(angle / 2));
    const float stepRe = -2 * half * half;
    const auto stepIm = static_cast<float>(std::sin(angle));
    float re = 1;
    float im = 0;
    for (std::size_t m = 0; m < span; ++m) {
      twiddles[2 * (span + m)] = re;
      twiddles[2 * (span + m) + 1] = im;
      const float before = re;
      re = stepRe * re + re - stepIm * im;
      im = stepIm * before + im + stepRe * im;
    }
  }
}

void ReversePositions(std::size_t longest, std::uint32_t* reversed) {
  reversed[0] = 0;
  for (std::size_t i = 1; i < longest; ++i) {
    const std::size_t top = i % 2 != 0 ? longest / 2 : 0;
    reversed[i] = reversed[i / 2] / 2 + static_cast<std::uint32_t>(top);
  }
}

}  // namespace

void TransformFast(const Transform& transform) {
  const std::size_t longest = std::max(transform.width, transform.height);
  const Scratch<float> twiddles(2 * longest);
  const Scratch<std::uint32_t> reversed(longest);
  const Scratch<float> batch(2 * longest * kLargestVector / sizeof(float));
  if (!twiddles || !reversed || !batch) return;
  MakeTwiddles(longest, twiddles.get());
  ReversePositions(longest, reversed.get());
  LX_CALL(transform.path, Fast, transform, {longest, twiddles.get(), reversed.get(), batch.get()});
}

}  // namespace lx::frequency
#endif
