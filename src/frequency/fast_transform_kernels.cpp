// SPDX-License-Identifier: Apache-2.0
#include "frequency/fast_transform_kernels.h"

#include <bit>
#include <cmath>
#include <numbers>

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

// The batch, as where elements come from and go to.
struct Batch {
  HWY_INLINE Complex operator()(std::size_t i) const { return Get(Element(elements, i)); }
  HWY_INLINE void operator()(std::size_t i, Complex value) const {
    Put(value, Element(elements, i));
  }

  float* elements;
};

// The stage of span 1.
template <class From, class To>
HWY_INLINE void RunFirst(const float* twiddles, std::size_t count, const From& from, const To& to) {
  const Twiddle w = TwiddleAt(twiddles, 1);
  for (std::size_t i = 0; i < count; i += 2) {
    Complex a = from(i);
    Complex b = from(i + 1);
    Butterfly(a, b, w);
    to(i, a);
    to(i + 1, b);
  }
}

// The stages of `span` and of twice that: four elements meet nobody else in them.
template <class From, class To>
HWY_INLINE void RunTwo(const float* twiddles, std::size_t count, std::size_t span, const From& from,
                       const To& to) {
  for (std::size_t first = 0; first < count; first += 4 * span) {
    for (std::size_t m = 0; m < span; ++m) {
      const std::size_t i = first + m;
      const Twiddle one = TwiddleAt(twiddles, span + m);
      Complex a = from(i);
      Complex b = from(i + span);
      Complex c = from(i + 2 * span);
      Complex d = from(i + 3 * span);
      Butterfly(a, b, one);
      Butterfly(c, d, one);
      Butterfly(a, c, TwiddleAt(twiddles, 2 * span + m));
      Butterfly(b, d, TwiddleAt(twiddles, 3 * span + m));
      to(i, a);
      to(i + span, b);
      to(i + 2 * span, c);
      to(i + 3 * span, d);
    }
  }
}

// Transforms `count` elements, which `from` knows by their reversed positions. Which butterflies
// there are and what they compute is defined; in which order those run that do not meet is not, so
// that elements are touched as seldom as can be. All are read before the first result is written.
template <class From, class To>
HWY_INLINE void RunStages(const FastPlan& plan, std::size_t count, const From& from, const To& to) {
  const Batch batch{plan.batch};
  if (count == 1) return to(0, from(0));
  if (count == 2) return RunFirst(plan.twiddles, count, from, to);
  if (count == 4) return RunTwo(plan.twiddles, count, 1, from, to);
  const bool isOdd = std::countr_zero(count) % 2 != 0;
  if (isOdd) {
    RunFirst(plan.twiddles, count, from, batch);
  } else {
    RunTwo(plan.twiddles, count, 1, from, batch);
  }
  std::size_t span = isOdd ? 2 : 4;
  for (; 4 * span < count; span *= 4) RunTwo(plan.twiddles, count, span, batch, batch);
  RunTwo(plan.twiddles, count, span, batch, to);
}

// Where the elements of `count` come from: the bits of a short position are the high ones of a long
// position in reverse.
class Order {
 public:
  HWY_INLINE Order(const FastPlan& plan, std::size_t count)
      : reversed_(plan.reversed), shift_(std::countr_zero(plan.longest / count)) {}
  HWY_INLINE std::size_t operator()(std::size_t i) const { return reversed_[i] >> shift_; }

 private:
  const std::uint32_t* reversed_;
  int shift_;
};

void TransformRows(const Transform& work, const FastPlan& plan) {
  const Order order(plan, work.width);
  for (std::size_t y = 0; y < work.height; y += kBatch) {
    const Samples samples(work, y, plan.pixels);
    const auto from = [&](std::size_t i) HWY_ATTR {
      return Complex{samples(order(i)), hn::Zero(Reals())};
    };
    RunStages(plan, work.width, from, Batch{plan.batch});
    StoreRows(plan.batch, work, y);
  }
}

void TransformColumns(const Transform& work, const FastPlan& plan) {
  const Order order(plan, work.height);
  for (std::size_t x = 0; x < work.width; x += kBatch) {
    const auto pixels = [&](std::size_t y)
                            HWY_ATTR { return work.destination.Row<float>(y) + 2 * x; };
    WithColumns(work, x, [&](const auto& access) HWY_ATTR {
      const auto from = [&](std::size_t i)
                            HWY_ATTR { return LoadPixels(pixels(order(i)), access); };
      const auto to = [&](std::size_t y, Complex value)
                          HWY_ATTR { StorePixels(value, pixels(y), access); };
      RunStages(plan, work.height, from, to);
    });
  }
}

void Fast(const Transform& work, const FastPlan& plan) {
  TransformRows(work, plan);
  if (work.height > 1) TransformColumns(work, plan);
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
  const Scratch<std::uint8_t> pixels(PixelBytes(transform.width));
  const Scratch<float> batch(BatchFloats(longest));
  if (!twiddles || !reversed || !pixels || !batch) return;
  MakeTwiddles(longest, twiddles.get());
  ReversePositions(longest, reversed.get());
  LX_CALL(transform.path, Fast, transform,
          {longest, twiddles.get(), reversed.get(), pixels.get(), batch.get()});
}

}  // namespace lx::frequency
#endif
