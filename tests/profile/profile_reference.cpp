// SPDX-License-Identifier: Apache-2.0
// Line segments, peaks, filters of profiles.
#include <algorithm>
#include <cmath>
#include <utility>

#include "support/reference.h"

namespace lx::test {

namespace {

using Points = std::vector<std::pair<int, int>>;

// The digital line by its error term.
Points LineBetween(int x0, int y0, int x1, int y1) {
  const int dx = x1 - x0;
  const int dy = y1 - y0;
  const bool flat = std::abs(dx) >= std::abs(dy);
  const int n = std::max(std::abs(dx), std::abs(dy));
  const int m = std::min(std::abs(dx), std::abs(dy));
  Points points = {{x0, y0}};
  int e = n / 2;
  for (int i = 1; i <= n; ++i) {
    e += m;
    const bool aside = e >= n;
    if (aside) e -= n;
    if (flat || aside) x0 += dx > 0 ? 1 : -1;
    if (!flat || aside) y0 += dy > 0 ? 1 : -1;
    points.emplace_back(x0, y0);
  }
  return points;
}

// The points of the line that is asked for; none when an end lies outside.
Points PointsOf(const Arguments& call, Outcome& outcome) {
  const Picture& image = outcome.Image(0);
  int ends[4];
  for (int k = 0; k < 4; ++k) {
    const double number = call.Number(static_cast<std::size_t>(k) + 2);
    if (number < 0 || number >= (k % 2 == 0 ? image.width : image.height)) {
      outcome.Refuse(static_cast<LX_ERRORS>(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE + k));
      return {};
    }
    ends[k] = static_cast<int>(number);
  }
  return LineBetween(ends[0], ends[1], ends[2], ends[3]);
}

void Sample(const Arguments& call, Outcome& outcome) {
  const Points points = PointsOf(call, outcome);
  if (points.empty()) return;
  const Picture& image = outcome.Image(0);
  std::vector<double> values;
  for (const auto& [x, y] : points) {
    for (int k = 0; k < image.components; ++k) {
      values.push_back(static_cast<double>(image.At(x, y, k)));
    }
  }
  outcome.Vector(1).values = values;
}

// Draws level(point, component) at each point.
template <class Level>
void Draw(Outcome& outcome, const Points& points, const Level& level) {
  Picture& image = outcome.Image(0);
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (int k = 0; k < image.components; ++k) {
      image.At(points[i].first, points[i].second, k) = level(i, k);
    }
  }
}

void DrawProfile(const Arguments& call, Outcome& outcome) {
  const Points points = PointsOf(call, outcome);
  const auto components = static_cast<std::size_t>(outcome.Image(0).components);
  const auto& values = outcome.Vector(1).values;
  if (points.empty()) return;
  if (values.size() != points.size() * components) {
    return outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  }
  Draw(outcome, points, [&](std::size_t i, int k) {
    return static_cast<Value>(values[i * components + static_cast<std::size_t>(k)]);
  });
}

void DrawValue(const Arguments& call, Outcome& outcome) {
  Draw(outcome, PointsOf(call, outcome),
       [&](std::size_t /*i*/, int k) { return call.Component(1, k); });
}

// The minima of peaks are compared with sign.
double Signed(double minimum) { return minimum > 2147483647 ? minimum - 4294967296 : minimum; }

void FindPeaks(const Arguments& call, Outcome& outcome) {
  const double low = call.Number(2);
  const double high = call.Number(3);
  if (low > high) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  const auto& samples = outcome.Vector(0).values;
  const auto kind = [&](std::size_t i) {
    return samples[i] > high ? 1 : samples[i] < low ? -1 : 0;
  };
  auto& peaks = outcome.Vector(1).values;
  peaks.clear();
  for (std::size_t start = 1; start < samples.size(); ++start) {
    const int sign = kind(start);
    if (sign == 0 || sign == kind(start - 1)) continue;
    double amplitude = 0;
    double area = 0;
    double weighted = 0;
    std::size_t end = start;
    for (; end < samples.size() && kind(end) == sign; ++end) {
      const double excess = sign * (samples[end] - (sign > 0 ? high : low));
      amplitude = std::max(amplitude, excess);
      area += excess;
      weighted += excess * static_cast<double>(end);
    }
    const bool counts = amplitude >= Signed(call.Number(4)) && area >= Signed(call.Number(5));
    if (end == samples.size() || !counts) continue;
    const double most = sign > 0 ? 2147483647.0 : 2147483648.0;
    peaks.insert(peaks.end(), {static_cast<double>(start), static_cast<double>(end - start),
                               double{static_cast<float>(weighted / area)},
                               sign * std::min(amplitude, most), sign * std::min(area, most)});
  }
}

// The sample at `i`, or the one at the nearest end.
double At(const std::vector<double>& samples, std::ptrdiff_t i) {
  const auto last = static_cast<std::ptrdiff_t>(samples.size()) - 1;
  return samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i, 0, last))];
}

using Samples = std::vector<double>;

template <class Rule>
Samples Filtered(const Samples& samples, const Rule& rule) {
  Samples made;
  for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(samples.size()); ++i) {
    made.push_back(rule(samples, i));
  }
  return made;
}

OutcomeRule Derivative(double most) {
  return [most](const Arguments& /*call*/, Outcome& outcome) {
    const double offset = (most + 1) / 2;
    outcome.Vector(1).values = Filtered(outcome.Vector(0).values, [&](const Samples& s,
                                                                      std::ptrdiff_t i) {
      const double difference = At(s, i + 1) - At(s, i - 1);
      const bool isInside = i > 0 && i + 1 < static_cast<std::ptrdiff_t>(s.size());
      return std::clamp((isInside ? std::floor(difference / 2) : difference) + offset, 0.0, most);
    });
  };
}

void Uniform(const Arguments& call, Outcome& outcome) {
  const Samples samples = outcome.Vector(0).values;
  const double half = call.Number(2);
  const double span = 2 * half + 1;
  Samples& result = outcome.Vector(1).values;
  if (static_cast<double>(samples.size()) < span || result.size() != samples.size()) {
    return outcome.Refuse(LX_ERROR_WRONG_VECTOR_SIZE);
  }
  result = Filtered(samples, [&](const Samples& s, std::ptrdiff_t i) {
    const auto reach = static_cast<std::ptrdiff_t>(half);
    double sum = 0;
    for (std::ptrdiff_t k = -reach; k <= reach; ++k) sum += At(s, i + k);
    return std::floor(sum / span);
  });
}

// Passes until one changes nothing.
template <class Rule>
OutcomeRule Passes(const Rule& rule) {
  return [rule](const Arguments& call, Outcome& outcome) {
    Samples samples = outcome.Vector(0).values;
    for (double pass = 0; pass < call.Number(2); ++pass) {
      Samples next = Filtered(samples, [&](const Samples& s, std::ptrdiff_t i) {
        return rule(At(s, i - 1), At(s, i), At(s, i + 1));
      });
      if (next == samples) break;
      samples = std::move(next);
    }
    outcome.Vector(1).values = samples;
  };
}

}  // namespace

std::vector<Reference> ProfileReferences() {
  std::vector<Reference> made;
  const std::string points = ", int, int, int, int)";
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const std::string region = "(LxROI<" + pixel + ">*, ";
    made.push_back(Measured("PicImageToLineSegment" + region + pixel + "Vector*" + points, Sample));
    made.push_back(
        Measured("PicLineSegmentToImage" + region + pixel + "Vector*" + points, DrawProfile));
    made.push_back(Measured("PicLineSegmentToImage" + region + pixel + points, DrawValue));
  }
  for (const std::string vector : {"LxBW8Vector*", "LxBW16Vector*"}) {
    const std::string pair = "(" + vector + ", " + vector;
    const double most = vector == "LxBW8Vector*" ? 255 : 65535;
    made.push_back(Measured("PicGetProfilePeaks(" + vector +
                                ", LxPeaksVector*, unsigned int, unsigned int, unsigned int, "
                                "unsigned int)",
                            FindPeaks));
    made.push_back(Measured("PicProfileDerivative" + pair + ")", Derivative(most)));
    made.push_back(Measured("PicConvolUniform" + pair + ", unsigned int)", Uniform));
    const auto passes = [&](const std::string& function, const auto& rule) {
      made.push_back(Measured(function + pair + ", unsigned int)", Passes(rule)));
    };
    passes("PicConvolGaussian", [](double left, double centre, double right) {
      return std::floor((left + 2 * centre + right) / 4);
    });
    passes("PicDilate", [](double left, double centre, double right) {
      return std::max({left, centre, right});
    });
    passes("PicErode", [](double left, double centre, double right) {
      return std::min({left, centre, right});
    });
  }
  return made;
}

}  // namespace lx::test
