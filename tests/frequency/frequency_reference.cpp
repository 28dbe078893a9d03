// SPDX-License-Identifier: Apache-2.0
// Fourier transforms as defined: single precision, one operation after the other, so that every bit
// is. Constants come from functions in double precision and are rounded once.
#include <bit>
#include <cmath>
#include <cstring>
#include <utility>

#include "support/reference.h"

namespace lx::test {

namespace {

const double kPi = std::acos(-1.0);

struct Number {
  float re;
  float im;
};

using Line = std::vector<Number>;
using LineRule = void (*)(Line&);

float Scale(const Arguments& call, const Picture& source) {
  const double pixels = static_cast<double>(source.width) * source.height;
  const auto factor = static_cast<float>(call.Number(2));
  return static_cast<float>(factor / std::sqrt(pixels));
}

// Every row, then every column.
void TransformLines(const Arguments& call, const Picture& source, Picture& spectrum,
                    LineRule rule) {
  const float scale = Scale(call, source);
  Line row(static_cast<std::size_t>(source.width));
  Line column(static_cast<std::size_t>(source.height));
  std::vector<Line> rows;
  for (int y = 0; y < source.height; ++y) {
    for (int x = 0; x < source.width; ++x) {
      const float sample = scale * static_cast<float>(source.At(x, y));
      row[static_cast<std::size_t>(x)] = {(x + y) % 2 == 0 ? sample : -sample, 0};
    }
    rule(row);
    rows.push_back(row);
  }
  for (int x = 0; x < source.width; ++x) {
    for (std::size_t y = 0; y < column.size(); ++y)
      column[y] = rows[y][static_cast<std::size_t>(x)];
    rule(column);
    for (int y = 0; y < source.height; ++y) {
      const Number number = column[static_cast<std::size_t>(y)];
      spectrum.At(x, y, 0) = std::bit_cast<std::uint32_t>(number.re);
      spectrum.At(x, y, 1) = std::bit_cast<std::uint32_t>(number.im);
    }
  }
}

Number Product(Number a, Number b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

void SumEach(Line& line) {
  const std::size_t count = line.size();
  const double angle = -2 * kPi / static_cast<double>(count);
  const Number root = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
  Line powers = {{1, 0}};
  while (powers.size() < count) powers.push_back(Product(powers.back(), root));
  Line sums;
  for (std::size_t k = 0; k < count; ++k) {
    Number sum = {0, 0};
    for (std::size_t n = 0; n < count; ++n) {
      const Number term = Product(line[n], powers[n * k % count]);
      sum = {sum.re + term.re, sum.im + term.im};
    }
    sums.push_back(sum);
  }
  line = sums;
}

void ExchangeReversed(Line& line) {
  std::size_t j = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (i < j) std::swap(line[i], line[j]);
    std::size_t m = line.size() / 2;
    while (m != 0 && (j & m) != 0) {
      j &= ~m;
      m /= 2;
    }
    j |= m;
  }
}

void RunButterflies(Line& line) {
  ExchangeReversed(line);
  for (std::size_t span = 1; span < line.size(); span *= 2) {
    const auto half = static_cast<float>(std::sin(-kPi / (2 * static_cast<double>(span))));
    const float wpr = -2 * (half * half);
    const auto wpi = static_cast<float>(std::sin(-kPi / static_cast<double>(span)));
    Number w = {1, 0};
    for (std::size_t m = 0; m < span; ++m) {
      for (std::size_t i = m; i < line.size(); i += 2 * span) {
        Number& a = line[i];
        Number& b = line[i + span];
        const Number turned = {w.re * b.re - w.im * b.im, w.im * b.re + w.re * b.im};
        b = {a.re - turned.re, a.im - turned.im};
        a = {a.re + turned.re, a.im + turned.im};
      }
      w = {wpr * w.re + w.re - wpi * w.im, wpi * w.re + w.im + wpr * w.im};
    }
  }
}

bool IsPowerOfTwo(int side) {
  int power = 1;
  while (power < side) power *= 2;
  return power == side;
}

}  // namespace

std::vector<Reference> FrequencyReferences() {
  const std::string slow = "PicSlowDFT(LxROI<LxBW8>*, LxROI<LxComplex64>*, float)";
  const std::string fast = "PicFastDFT(LxROI<LxBW8>*, LxROI<LxComplex64>*, float)";
  const auto transform = [](LineRule rule) {
    return [rule](const Arguments& call, Outcome& outcome) {
      TransformLines(call, outcome.Image(0), outcome.Image(1), rule);
    };
  };
  return {
      Measured(slow, transform(SumEach)).InRounds(2),
      Measured(fast, [fast = transform(RunButterflies)](const Arguments& call, Outcome& outcome) {
        const Picture& source = outcome.Image(0);
        if (!IsPowerOfTwo(source.width) || !IsPowerOfTwo(source.height)) {
          outcome.Refuse(LX_ERROR_NOT_POWER_OF_TWO);
          return;
        }
        fast(call, outcome);
      })};
}

}  // namespace lx::test
