// SPDX-License-Identifier: Apache-2.0
// The search for the best split of a histogram into two filled classes.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "histogram/pixel_class.h"
#include "vectors/entropy.h"

namespace lx::histogram {

// A criterion values the split before bin `threshold`, the less the better, and follows the bins
// that move from the bright class to the dark. `Real` is what decides; the rest is extended. One of
// the classes alone, `kOfClasses`, does not change where empty bins move.

// The distance of the threshold from the midpoint of the class means.
template <typename Real>
struct MidpointDistance {
  static constexpr bool kOfClasses = false;

  explicit MidpointDistance(const Range& /*range*/) {}

  Real operator()(const PixelClass& dark, const PixelClass& bright, unsigned threshold) const {
    return static_cast<Real>(
        std::fabs(HalfMean(dark) + HalfMean(bright) - static_cast<long double>(threshold)));
  }
  void Move(std::uint32_t /*pixels*/) {}

 private:
  static long double HalfMean(const PixelClass& pixels) {
    return 0.5L * static_cast<long double>(pixels.sum) / static_cast<long double>(pixels.count);
  }
};

// What the variance within the classes is short of the sum of squares.
template <typename Real>
struct NegativeBetweenSquares {
  static constexpr bool kOfClasses = true;

  explicit NegativeBetweenSquares(const Range& /*range*/) {}

  Real operator()(const PixelClass& dark, const PixelClass& bright, unsigned /*threshold*/) const {
    return static_cast<Real>(-SquareOverCount(dark) - SquareOverCount(bright));
  }
  void Move(std::uint32_t /*pixels*/) {}
  // What one class of all pixels has.
  Real Whole(const PixelClass& all) const { return static_cast<Real>(-SquareOverCount(all)); }

 private:
  static long double SquareOverCount(const PixelClass& pixels) {
    const Real sum = static_cast<Real>(pixels.sum);
    const Real square = sum * sum;
    return static_cast<long double>(square) / static_cast<long double>(pixels.count);
  }
};

// The class entropies, negative.
template <typename Real>
class NegativeEntropies {
 public:
  static constexpr bool kOfClasses = true;

  explicit NegativeEntropies(const Range& range) {
    // From the top, which decides how the sum is rounded.
    for (unsigned bin = range.last + 1; bin-- > range.first;) {
      bright_ = EntropyTerm<Real>(range.counts[bin]).AddTo(bright_, 1);
    }
  }

  Real operator()(const PixelClass& dark, const PixelClass& bright, unsigned /*threshold*/) const {
    return RoundOnce<Real>(
        [&](auto wide) {
          using Wide = decltype(wide);
          return -(EntropyOf<Real, Wide>(dark.count, dark_) +
                   EntropyOf<Real, Wide>(bright.count, bright_));
        },
        4 * kMostNats);
  }
  void Move(std::uint32_t pixels) {
    const EntropyTerm<Real> term(pixels);
    dark_ = term.AddTo(dark_, 1);
    bright_ = term.AddTo(bright_, -1);
  }
  // What one class of all pixels has, before any has moved.
  Real Whole(const PixelClass& all) const {
    return static_cast<Real>(-EntropyOf<Real, long double>(all.count, bright_));
  }

 private:
  static constexpr double kMostNats = 2 * kMostNatsOf32;

  Real dark_ = 0;
  Real bright_ = 0;
};

// The lowest threshold whose criterion is the least of all and less than `best`. Both classes must
// hold pixels.
template <typename Real, class Criterion>
std::optional<unsigned> BestSplit(const Range& range, PixelClass bright, Criterion criterion,
                                  Real best = std::numeric_limits<Real>::max()) {
  std::optional<unsigned> threshold;
  PixelClass dark;
  bool moved = false;
  for (unsigned bin = range.first; bin <= range.last; ++bin) {
    if (bright.count == 0) break;
    if (dark.count != 0 && (moved || !Criterion::kOfClasses)) {
      const Real value = criterion(dark, bright, bin);
      if (value < best) {
        best = value;
        threshold = bin;
      }
    }
    const std::uint32_t pixels = range.counts[bin];
    moved = pixels != 0;
    if (!moved) continue;
    dark.Add(bin, pixels);
    bright.Remove(bin, pixels);
    criterion.Move(pixels);
  }
  return threshold;
}

}  // namespace lx::histogram
