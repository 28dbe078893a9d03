// SPDX-License-Identifier: Apache-2.0
// Interlaced frames and averages over time.
#include <algorithm>
#include <cmath>
#include <limits>

#include "support/reference.h"

namespace lx::test {

namespace {

using Pictures = std::vector<Picture>;

void CopyRow(const Picture& s, int from, Picture& d, int to) {
  for (int x = 0; x < d.width; ++x) {
    for (int k = 0; k < d.components; ++k) d.At(x, to, k) = s.At(x, from, k);
  }
}

template <bool kGet>
void CopyField(const Arguments& call, const Pictures& sources, Pictures& destinations) {
  const int height = kGet ? sources.front().height : destinations.front().height;
  for (int y = call.Number("parity") != 0 ? 1 : 0; y < height; y += 2) {
    CopyRow(sources.front(), kGet ? y : y / 2, destinations.front(), kGet ? y / 2 : y);
  }
}

int FirstRow(const Arguments& call) {
  return static_cast<std::int64_t>(call.Number("reference")) % 2 == 0 ? 1 : 0;
}

void Realign(const Arguments& call, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources.front();
  Picture& d = destinations.front();
  for (int y = FirstRow(call); y < d.height; y += 2) {
    for (int x = 0; x < d.width; ++x) {
      const Value from = x - static_cast<Value>(call.Number("shift"));
      for (int k = 0; k < d.components; ++k) {
        d.At(x, y, k) = s.At(static_cast<int>(std::clamp<Value>(from, 0, d.width - 1)), y, k);
      }
    }
  }
}

void Match(const Arguments& call, Outcome& outcome) {
  const Picture& s = outcome.Image(0);
  const auto number = [&call](const char* name) { return static_cast<Value>(call.Number(name)); };
  const Value lowest = number("lowest");
  const Value highest = number("highest");
  if (highest < lowest || highest - lowest > s.width) {
    return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  }
  if (number("row") < 0 || number("row") + 1 >= s.height) {
    return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  }
  const auto row = static_cast<int>(number("row"));
  Value least = std::numeric_limits<Value>::max();
  for (Value shift = lowest; shift <= highest; ++shift) {
    Value sum = 0;
    for (Value x = std::max<Value>(highest, 0); x < s.width + std::min<Value>(lowest, 0); ++x) {
      for (int k = 0; k < s.components; ++k) {
        const Value difference =
            s.At(static_cast<int>(x), row, k) - s.At(static_cast<int>(x - shift), row + 1, k);
        sum += difference * difference;
      }
    }
    if (sum < least) outcome.Number(4) = static_cast<double>(shift);
    least = std::min(least, sum);
  }
}

void Rebuild(const Arguments& call, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources.front();
  Picture& d = destinations.front();
  if (d.height == 1) return;
  for (int y = FirstRow(call); y < d.height; y += 2) {
    const int above = y > 0 ? y - 1 : y + 1;
    const int below = y + 1 < d.height ? y + 1 : y - 1;
    for (int x = 0; x < d.width; ++x) {
      for (int k = 0; k < d.components; ++k) {
        d.At(x, y, k) = (s.At(x, above, k) + s.At(x, below, k)) / 2;
      }
    }
  }
}

void Swap(const Arguments& /*call*/, const Pictures& sources, Pictures& destinations) {
  const Picture s = sources.front();
  Picture& d = destinations.front();
  for (int y = 0; y < d.height - d.height % 2; ++y) CopyRow(s, y ^ 1, d, y);
}

// The steps for differences of 0, 1, 2, ...
std::vector<double> StepsOf(double noiseReduction, double width) {
  const double squared = noiseReduction * noiseReduction;
  std::vector<double> steps;
  float linear = 0.5F;
  float power = 1;
  for (int i = 0; i <= 4095; ++i) {
    const double fraction = power > 1e38F ? 1 : (power - 1.0) / (power + 1.0);
    const double edges = 16 * width * (1 - squared) / (1 + squared) * fraction + i;
    steps.push_back(std::trunc(width == 0 ? double{linear} : edges));
    linear += static_cast<float>(2 / (squared + 1));
    if (power <= 1e38F) power = static_cast<float>(power * std::exp(1 / (16 * width)));
  }
  return steps;
}

void FillSteps(const Arguments& call, Outcome& outcome) {
  if (!std::isfinite(call.Number(1))) return outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE);
  if (!std::isfinite(call.Number(2))) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  const auto real = [&call](std::size_t i) { return double{static_cast<float>(call.Number(i))}; };
  auto& steps = outcome.Vector(0).values;
  steps.assign(8191, 0);
  const auto positive = StepsOf(real(1), real(2));
  const auto word = [](double value) { return value < 0 ? value + 65536 : value; };
  for (std::size_t i = 0; i <= 4095; ++i) {
    steps[4095 + i] = word(positive[i]);
    steps[4095 - i] = word(-positive[i]);
  }
}

Value Signed(Value word) { return word < 0x8000 ? word : word - 0x10000; }

void Filter(const Arguments& call, Outcome& outcome) {
  const Picture source = outcome.Image(0);
  Picture& state = outcome.Image(1);
  const auto& steps = call.Content(3)->values;
  for (std::size_t i = 0; i < source.values.size(); ++i) {
    const Value old = Signed(state.values[i]);
    const Value difference = std::clamp<Value>(16 * source.values[i] - old, -4095, 4095);
    const auto step = static_cast<Value>(steps[static_cast<std::size_t>(4095 + difference)]);
    state.values[i] = (old + step) & 0xFFFF;
    const double level = std::floor(static_cast<double>(Signed(state.values[i])) / 16);
    outcome.Image(2).values[i] = static_cast<Value>(std::clamp(level, 0.0, 255.0));
  }
}

}  // namespace

std::vector<Reference> SequenceReferences() {
  std::vector<Reference> made = {
      Measured("PicSetRecursiveAverageLUT(LxBW16Vector*, float, float)", FillSteps),
      Measured("PicRecursiveAverage(LxROI<LxBW8>*, LxROI<LxBW16>*, LxROI<LxBW8>*, LxBW16Vector*)",
               Filter)};
  for (const std::string region : {"LxROI<LxBW8>*", "LxROI<LxC24>*", "LxROI<LxBW16>*"}) {
    const std::string pair = "(" + region + ", " + region;
    made.push_back(Whole("PicGetFrame" + pair + ", int)", CopyField<true>));
    made.push_back(Whole("PicSetFrame" + pair + ", int)", CopyField<false>));
    made.push_back(Whole("PicRealignFrame" + pair + ", int, unsigned int)", Realign));
    made.push_back(Measured("PicMatchFrames(" + region + ", int, int, int, int&)", Match));
    made.push_back(Whole("PicRebuildFrame" + pair + ", unsigned int)", Rebuild));
    made.push_back(Whole("PicSwapFrames" + pair + ")", Swap));
  }
  return made;
}

}  // namespace lx::test
