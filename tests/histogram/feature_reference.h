// SPDX-License-Identifier: Apache-2.0
// The features of histograms by their definition, one bin after the other.
#pragma once

#include <cmath>
#include <vector>

#include "lxpic/histogram/analysis.h"

namespace lx::test {

/// What the pixels of a range of bins add up to.
struct BinSums {
  long long most = 0;
  int mostBin = 0;
  long long least = -1;
  int leastBin = 0;
  int lowest;
  int highest;
  double pixels = 0;
  double sum = 0;
  // Rounded whenever they grow:
  float count = 0;
  float first = 0;
  float second = 0;

  BinSums(const std::vector<unsigned>& counts, int from, int to)
      : lowest(to + 1), highest(from - 1) {
    for (int i = from; i <= to; ++i) Add(i, counts[static_cast<unsigned>(i)], to);
  }

 private:
  void Add(int bin, long long pixelsOfBin, int to) {
    const auto h = static_cast<double>(pixelsOfBin);
    pixels += h;
    sum += bin * h;
    count = static_cast<float>(count + h);
    first = static_cast<float>(first + bin * h);
    second = static_cast<float>(second + static_cast<double>(bin) * bin * h);
    if (pixelsOfBin == 0) return;
    highest = bin;
    if (lowest > to) lowest = bin;
    if (pixelsOfBin > most) {
      most = pixelsOfBin;
      mostBin = bin;
    }
    if (least == -1 || pixelsOfBin < least) {
      least = pixelsOfBin;
      leastBin = bin;
    }
  }
};

inline double FeatureOf(const std::vector<unsigned>& counts, unsigned feature, int from, int to) {
  const BinSums s(counts, from, to);
  const double mean = static_cast<double>(s.first) / s.count;
  switch (feature) {
    case PIC_HIST_MOST_FREQUENT_VALUE:
      return s.mostBin;
    case PIC_HIST_MOST_FREQUENT_COUNT:
      return static_cast<double>(s.most);
    case PIC_HIST_LEAST_FREQUENT_VALUE:
      return s.leastBin;
    case PIC_HIST_LEAST_FREQUENT_COUNT:
      return static_cast<double>(s.least);
    case PIC_HIST_LOWEST_VALUE:
      return s.lowest;
    case PIC_HIST_HIGHEST_VALUE:
      return s.highest;
    case PIC_HIST_PIXEL_COUNT:
      return s.pixels;
    case PIC_HIST_AVERAGE_VALUE:
      return s.pixels == 0 ? 0 : static_cast<float>(s.sum / s.pixels);
    default:
      if (s.pixels == 0) return 0;
      return static_cast<float>(
          std::sqrt(std::fabs(static_cast<double>(s.second) / s.count - mean * mean)));
  }
}

}  // namespace lx::test
