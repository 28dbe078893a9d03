// SPDX-License-Identifier: Apache-2.0
// Moments, centres and inertia: each pixel's term in long integers.
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

__extension__ using Whole128 = __int128;

constexpr std::size_t kNone = 99;

// What pixels weigh: the parameters that say so.
struct Scale {
  std::size_t threshold = kNone;
  std::size_t table = kNone;
  bool followRuns = false;

  Value WeightOf(Value level, const Arguments& call) const {
    if (threshold != kNone) return static_cast<double>(level) >= call.Number(threshold) ? 1 : 0;
    const Elements* const weights = table == kNone ? nullptr : call.Content(table);
    if (weights == nullptr) return level;
    return static_cast<Value>(weights->values[static_cast<std::size_t>(level)]);
  }
};

class Moments {
 public:
  Moments(const Scale& scale, const Arguments& call, const Picture& picture) {
    const auto selected = Selected(picture);
    for (int y = 0; y < picture.height; ++y) {
      for (int x = 0; x < picture.width; ++x) {
        const int times = scale.followRuns ? selected[picture.Index(x, y, 0)] : 1;
        Add(x, y, times * scale.WeightOf(picture.At(x, y), call));
      }
    }
  }
  Whole128 Of(int p, int q) const { return sums[p][q]; }
  float Centre(int p, int q) const {
    if (Of(0, 0) == 0) return 0.0F;
    return static_cast<float>(static_cast<long double>(Of(p, q)) /
                              static_cast<long double>(Of(0, 0)));
  }
  float Covariance(int p, int q) const {
    const Whole128 a = p == 0 ? Of(0, 1) : Of(1, 0);
    const Whole128 b = q == 0 ? Of(1, 0) : Of(0, 1);
    const Whole128 whole = Of(0, 0) * Of(p, q) - a * b;
    return static_cast<float>(static_cast<double>(whole) /
                              (static_cast<double>(Of(0, 0)) * static_cast<double>(Of(0, 0))));
  }

 private:
  void Add(int x, int y, Value weight) {
    Whole128 across = weight;
    for (int p = 0; p <= 4; ++p, across *= x) {
      Whole128 term = across;
      for (int q = 0; p + q <= 4; ++q, term *= y) sums[p][q] += term;
    }
  }

  Whole128 sums[5][5] = {};
};

Reference AllUpTo(int order, const std::string& start, const Scale& scale) {
  std::string signature = start;
  for (int i = 0; i < (order + 1) * (order + 2) / 2; ++i) signature += ", float&";
  return Measured(signature + ")", [=](const Arguments& call, Outcome& outcome) {
    const Moments moments(scale, call, outcome.Image(0));
    std::size_t at = scale.threshold == kNone ? 1 : 2;
    for (int k = 0; k <= order; ++k) {
      for (int q = 0; q <= k; ++q) outcome.Number(at++) = static_cast<float>(moments.Of(k - q, q));
    }
  });
}

// Writes x and y behind parameter `x`.
Reference Centre(const std::string& signature, std::size_t x, const Scale& scale) {
  return Measured(signature, [=](const Arguments& call, Outcome& outcome) {
    const Moments moments(scale, call, outcome.Image(0));
    outcome.Number(x) = moments.Centre(1, 0);
    outcome.Number(x + 1) = moments.Centre(0, 1);
  });
}

Reference Inertia(const std::string& signature, std::size_t ixx, const Scale& scale) {
  return Measured(signature, [=](const Arguments& call, Outcome& outcome) {
    const Moments moments(scale, call, outcome.Image(0));
    if (moments.Of(0, 0) == 0) return;
    outcome.Number(ixx) = moments.Covariance(2, 0);
    outcome.Number(ixx + 1) = moments.Covariance(1, 1);
    outcome.Number(ixx + 2) = moments.Covariance(0, 2);
    outcome.Offer(ixx + 3, moments.Centre(1, 0));
    outcome.Offer(ixx + 4, moments.Centre(0, 1));
    outcome.Offer(ixx + 5, static_cast<double>(moments.Of(0, 0)));
  });
}

}  // namespace

std::vector<Reference> MomentReferences() {
  const std::string byte = "LxROI<LxBW8>*";
  const std::string word = "LxROI<LxBW16>*";
  const Scale reaching = {1, kNone, true};
  const std::string places = ", float&, float&, float&, float*, float*, unsigned int*";
  std::vector<Reference> all = {
      Centre("PicGravityCenter(" + byte + ", unsigned int, float&, float&)", 2, reaching),
      Centre("PicGravityCenter(" + word + ", unsigned int, float&, float&)", 2, {1}),
      Centre("PicCentroid(" + byte + ", float&, float&, LxBW8Vector*)", 1, {kNone, 3, true}),
      Inertia("PicInertia(" + byte + ", unsigned int" + places + ")", 2, reaching),
      Inertia("PicInertia(" + byte + places + ", LxBW8Vector*)", 1, {kNone, 7, true})};
  for (const std::string& roi : {byte, word}) {
    for (const int order : {1, 2}) {
      all.push_back(AllUpTo(order, "PicBinaryMoments(" + roi + ", unsigned int", {1}));
    }
    for (const int order : {1, 2, 3, 4}) {
      all.push_back(AllUpTo(order, "PicWeightedMoments(" + roi, {}));
    }
  }
  return all;
}

}  // namespace lx::test
