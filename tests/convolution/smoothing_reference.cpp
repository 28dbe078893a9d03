// SPDX-License-Identifier: Apache-2.0
// Smoothing of any size, and the local deviation.
#include <array>
#include <cmath>

#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

constexpr std::uint32_t kSameAsX = 0xFFFFFFFF;

struct Halves {
  std::uint32_t x;
  std::uint32_t y;

  explicit Halves(const Arguments& call)
      : x(static_cast<std::uint32_t>(call.Number(2))),
        y(static_cast<std::uint32_t>(call.Number(3))) {
    if (y == kSameAsX) y = x;
  }
};

// Half-widths of the sizes that have rules of their own.
bool IsSmall(const Arguments& call) {
  const Halves halves(call);
  return halves.x <= 1 && halves.y <= 1;
}

// Sum of weights[j] * weights[i] * pixel, the weights centred on (x, y).
Value WeightedSum(const Picture& p, int x, int y, int k, const std::vector<Value>& across,
                  const std::vector<Value>& down) {
  const int halfX = static_cast<int>(across.size()) / 2;
  const int halfY = static_cast<int>(down.size()) / 2;
  Value sum = 0;
  for (int j = -halfY; j <= halfY; ++j) {
    for (int i = -halfX; i <= halfX; ++i) {
      sum += across[static_cast<std::size_t>(i + halfX)] *
             down[static_cast<std::size_t>(j + halfY)] * Nearest(p, x + i, y + j, k);
    }
  }
  return sum;
}

// An image filtered by separable weights: (sum * factor) >> shift.
Picture Smoothed(const Picture& source, const std::vector<Value>& across,
                 const std::vector<Value>& down, Value factor, int shift) {
  Picture result = source;
  ForEachComponent(result, [&](int x, int y, int k) {
    return (WeightedSum(source, x, y, k, across, down) * factor) >> shift;
  });
  return result;
}

const std::vector<Value> kOne = {1};
const std::vector<Value> kThree = {1, 1, 1};
const std::vector<Value> kFive = {1, 1, 1, 1, 1};
const std::vector<Value> kSeven = {1, 1, 1, 1, 1, 1, 1};
const std::vector<Value> kBinomial3 = {1, 2, 1};
const std::vector<Value> kBinomial5 = {1, 4, 6, 4, 1};
const std::vector<Value> kBinomial7 = {1, 6, 15, 20, 15, 6, 1};

// The window of `halves` over a component, cut where it would be wider than twice the image.
struct Box {
  Box(const Picture& picture, const Halves& halves)
      : halfX(Cut(halves.x, picture.width)), halfY(Cut(halves.y, picture.height)) {}

  Value Count() const { return (2 * Value{halfX} + 1) * (2 * Value{halfY} + 1); }

  // The sum over the window at each pixel of value(pixel), component by component.
  template <class Term>
  Picture Sums(const Picture& p, const Term& term) const {
    Picture rows = p;
    ForEachComponent(rows, [&](int x, int y, int k) {
      Value sum = 0;
      for (int i = -halfX; i <= halfX; ++i) sum += term(Nearest(p, x + i, y, k));
      return sum;
    });
    Picture sums = p;
    ForEachComponent(sums, [&](int x, int y, int k) {
      Value sum = 0;
      for (int j = -halfY; j <= halfY; ++j) sum += Nearest(rows, x, y + j, k);
      return sum;
    });
    return sums;
  }

  int halfX;
  int halfY;

 private:
  static int Cut(std::uint32_t half, int size) {
    return static_cast<int>(std::min<Value>(half, size - 1));
  }
};

Picture BoxMean(const Picture& source, const Halves& halves) {
  const Box box(source, halves);
  Picture result = box.Sums(source, [](Value v) { return v; });
  const Value reciprocal = (Value{1} << 24) / box.Count();
  for (Value& v : result.values) v = (v * reciprocal) >> 24;
  return result;
}

void Uniform(const Arguments& call, const std::vector<Picture>& sources,
             std::vector<Picture>& destinations) {
  const Picture& source = sources.front();
  const Halves halves(call);
  Picture& result = destinations.front();
  if (source.values.empty()) return;
  if (!IsSmall(call)) {
    result = BoxMean(source, halves);
  } else if (halves.x == 1 && halves.y == 1) {
    result = Smoothed(source, kThree, kThree, 14, 7);
  } else if (halves.x == 1) {
    result = Smoothed(source, kThree, kOne, 85, 8);
  } else if (halves.y == 1) {
    result = Smoothed(source, kOne, kThree, 85, 8);
  } else {
    result = source;
  }
}

void Gaussian(const Arguments& call, const std::vector<Picture>& sources,
              std::vector<Picture>& destinations) {
  Halves halves(call);
  Picture picture = sources.front();
  for (; halves.x > 0 && halves.y > 0; --halves.x, --halves.y) {
    picture = Smoothed(picture, kBinomial3, kBinomial3, 1, 4);
  }
  for (; halves.x > 0; --halves.x) picture = Smoothed(picture, kBinomial3, kOne, 1, 2);
  for (; halves.y > 0; --halves.y) picture = Smoothed(picture, kOne, kBinomial3, 1, 2);
  destinations.front() = picture;
}

void Deviation(const Arguments& call, const std::vector<Picture>& sources,
               std::vector<Picture>& destinations) {
  const Picture& source = sources.front();
  if (source.values.empty()) return;
  const Box box(source, Halves(call));
  const Picture sums = box.Sums(source, [](Value v) { return v; });
  const Picture squares = box.Sums(source, [](Value v) { return v * v; });
  const Value maximum = FormatOf(source.pixel).maximum;
  __extension__ using Wide = __int128;
  const Wide count = box.Count();
  const auto divisor = static_cast<float>(box.Count());
  for (std::size_t i = 0; i < sums.values.size(); ++i) {
    const Wide sum = sums.values[i];
    const auto radicand = static_cast<float>(count * squares.values[i] - sum * sum);
    const float deviation = std::sqrt(radicand) / divisor;
    destinations.front().values[i] = std::min(static_cast<Value>(deviation), maximum);
  }
}

PictureRule Fixed(const std::vector<Value>& weights, Value factor, int shift) {
  return [=](const Arguments& /*call*/, const auto& sources, auto& destinations) {
    destinations.front() = Smoothed(sources.front(), weights, weights, factor, shift);
  };
}

}  // namespace

std::vector<Reference> SmoothingReferences() {
  std::vector<Reference> references;
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const std::string region = "LxROI<" + pixel + ">*";
    const std::string sized = "(" + region + ", " + region + ", unsigned int, unsigned int)";
    references.push_back(Whole("PicConvolUniform" + sized, Uniform));
    references.push_back(Whole("PicConvolGaussian" + sized, Gaussian));
    if (pixel == "LxC24") continue;
    references.push_back(Whole("PicLocalAverage" + sized, Uniform));
    references.push_back(Whole("PicLocalDeviation" + sized, Deviation));
  }
  const std::string bytes = "(LxROI<LxBW8>*, LxROI<LxBW8>*)";
  references.push_back(Whole("PicConvolUniform5x5" + bytes, Fixed(kFive, 335544, 23)));
  references.push_back(Whole("PicConvolUniform7x7" + bytes, Fixed(kSeven, 171196, 23)));
  references.push_back(Whole("PicConvolGaussian5x5" + bytes, Fixed(kBinomial5, 1, 8)));
  references.push_back(Whole("PicConvolGaussian7x7" + bytes, Fixed(kBinomial7, 1, 12)));
  return references;
}

}  // namespace lx::test
