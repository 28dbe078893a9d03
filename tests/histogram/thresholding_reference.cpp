// SPDX-License-Identifier: Apache-2.0
// Thresholds of images: each pixel compared with what a plain count of all of them selects.
#include <algorithm>
#include <cmath>

#include "histogram/references.h"

namespace lx::test {

namespace {

unsigned Whole(double number) { return static_cast<unsigned>(static_cast<std::int64_t>(number)); }

// How an image is counted, and the name of the operation that selects.
struct Levels {
  unsigned bins;
  bool followRuns;
  const char* selector;
};
constexpr Levels kBytes = {256, true, "PicHistogramThreshold"};
constexpr Levels kWords = {65536, false, "PicHistogramThreshold (BW16)"};

// What a threshold argument stands for; itself when nothing can be selected, which refuses.
unsigned Resolved(const Levels& levels, unsigned mode, double relative, Outcome& outcome) {
  if (mode < levels.bins) return mode;
  const bool isFraction = relative >= 0 && relative <= 1;
  if (mode < PIC_THRESHOLD_MIN_SQUARED_DEVIATION || mode > PIC_THRESHOLD_RELATIVE) {
    outcome.Refuse(LX_ERROR_ARGUMENT_2_OUT_OF_RANGE, {levels.selector});
  } else if (mode == PIC_THRESHOLD_RELATIVE && !isFraction) {
    outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE, {levels.selector});
  } else {
    const auto pixels = CountPixels(outcome.Image(0), levels.bins, levels.followRuns);
    const std::vector<unsigned> counts(pixels.begin(), pixels.end());
    return ExpectedOf({counts.data(), 0, levels.bins - 1}, levels.bins, mode,
                      static_cast<float>(relative))
        .threshold;
  }
  return mode;
}

void WriteLevels(Outcome& outcome, unsigned threshold, Value low, Value high) {
  const std::vector<Value> source = outcome.Image(0).values;
  for (std::size_t i = 0; i < source.size(); ++i) {
    outcome.Image(1).values[i] = source[i] < Value{threshold} ? low : high;
  }
}

Reference TwoLevels(std::string_view signature, const Levels& levels) {
  return Measured(signature, [levels](const Arguments& call, Outcome& outcome) {
    const unsigned threshold = Resolved(levels, Whole(call.Number(2)), call.Number(5), outcome);
    WriteLevels(outcome, threshold, call.Component(3, 0), call.Component(4, 0));
  });
}

Reference AutoThreshold(std::string_view signature, const Levels& levels) {
  return Measured(signature, [levels](const Arguments& call, Outcome& outcome) {
    outcome.Number(3) =
        Resolved(levels, Whole(call.Number(1)), call.Number(2), outcome) % levels.bins;
  });
}

void WordsToBits(const Arguments& call, Outcome& outcome) {
  WriteLevels(outcome, Resolved(kWords, Whole(call.Number(2)), call.Number(3), outcome), 0, 1);
}

void BytesToBits(const Pixels& p) { *p.d = *p.a >= p.call.Component(2, 0) ? 1 : 0; }

void BitsToBytes(const Pixels& p) { *p.d = p.call.Component(*p.a == 0 ? 2 : 3, 0); }

void ThreeLevels(const Pixels& p) {
  if (*p.a > p.call.Component(3, 0)) {
    *p.d = p.call.Component(6, 0);
  } else {
    *p.d = p.call.Component(*p.a < p.call.Component(2, 0) ? 4 : 5, 0);
  }
}

bool IsInBox(const Value* colour, const Arguments& call) {
  bool inside = true;
  for (int k = 0; k < 3; ++k) {
    inside &= colour[k] >= call.Component(2, k) && colour[k] <= call.Component(3, k);
  }
  return inside;
}

void Box(const Pixels& p) { *p.d = IsInBox(p.a, p.call) ? 255 : 0; }

void TransformedBox(const Pixels& p) {
  auto* const lookup = std::get<LxColorLookup*>(p.call.values[4]);
  const auto byte = [&p](int k) { return static_cast<std::uint8_t>(p.a[k]); };
  LxC24 colour = {byte(0), byte(1), byte(2)};
  if (lookup != nullptr) lookup->Transform(LxC24(colour), colour);
  const Value components[] = {colour.c0, colour.c1, colour.c2};
  *p.d = p.call.Component(IsInBox(components, p.call) ? 6 : 5, 0);
}

// The nodes along one side: n + 1 of them.
int NodesOf(int size, int tile) {
  const float tiles = static_cast<float>(size) / static_cast<float>(tile);
  return static_cast<int>(std::ceil(tiles));
}

unsigned NodeOf(const Picture& source, int i, int n, int j, int m, Value halfX, Value halfY,
                unsigned mode) {
  std::vector<unsigned> counts(256);
  const Value centreX = Value{i} * source.width / n;
  const Value centreY = Value{j} * source.height / m;
  const auto inside = [](Value at, Value size) { return std::clamp<Value>(at, 0, size); };
  const Value right = inside(centreX + halfX, source.width);
  const Value bottom = inside(centreY + halfY, source.height);
  for (Value y = inside(centreY - halfY, source.height); y < bottom; ++y) {
    for (Value x = inside(centreX - halfX, source.width); x < right; ++x) {
      ++counts[static_cast<std::size_t>(source.At(static_cast<int>(x), static_cast<int>(y)))];
    }
  }
  const BinRange all = {counts.data(), 0, 255};
  const auto levels =
      std::count_if(counts.begin(), counts.end(), [](unsigned each) { return each > 0; });
  const bool splits = mode == PIC_THRESHOLD_ISODATA || mode == PIC_THRESHOLD_MAX_ENTROPY ||
                      mode == PIC_THRESHOLD_MIN_RESIDUE;
  if (splits && levels < 2) return ExpectedIsodata(all);
  return std::min(ExpectedOf(all, 256, mode, 0.5F).threshold, 255U);
}

// Stretches the grid as the reference of that operation does.
Picture Stretched(const Picture& grid, float across, float down, const Picture& destination) {
  const Operation& stretch = *catalogue::Find(
      "PicScaleRotate", "LxROI<LxBW8>*, float, float, float, float, float, float, float, LxROI");
  Arguments call(stretch);
  const double numbers[] = {0, 0, 0, 0, across, down, 0};
  for (std::size_t k = 0; k < 7; ++k) call.SetNumber(k + 1, numbers[k]);
  call.SetNumber(9, 8);
  Outcome outcome;
  outcome.values.resize(call.values.size());
  outcome.values[0] = grid;
  outcome.values[8] = destination;
  FindReference(stretch.signature)->rule(call, outcome);
  return outcome.Image(8);
}

void Surface(const Arguments& call, Outcome& outcome) {
  const int tileWidth = static_cast<int>(call.Number(3));
  const int tileHeight = static_cast<int>(call.Number(4));
  if (tileWidth <= 0) return outcome.Refuse(LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
  if (tileHeight < 0) return outcome.Refuse(LX_ERROR_ARGUMENT_5_OUT_OF_RANGE);
  const int height = tileHeight == 0 ? tileWidth : tileHeight;
  const Picture source = outcome.Image(0);
  if (source.width == 0 || source.height == 0) return;
  const int n = NodesOf(source.width, tileWidth);
  const int m = NodesOf(source.height, height);
  Picture grid(Pixel::kBW8, n + 1, m + 1);
  for (int j = 0; j <= m; ++j) {
    for (int i = 0; i <= n; ++i) {
      grid.At(i, j) = NodeOf(source, i, n, j, m, tileWidth / 2, height / 2, Whole(call.Number(2)));
    }
  }
  const auto step = [](int size, int count) {
    return static_cast<float>(size) / static_cast<float>(count);
  };
  outcome.Image(1) = Stretched(grid, step(source.width, n), step(source.height, m), source);
}

}  // namespace

std::vector<Reference> ThresholdingReferences() {
  const std::string box = "PicThreshold(LxROI<LxC24>*, LxROI<LxBW8>*, LxC24, LxC24";
  const std::string autoOf = ", PIC_THRESHOLD_MODES, float)";
  // Modes search 65536 bins of words.
  return {
      TwoLevels("PicThreshold(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned int, LxBW8, LxBW8, float)",
                kBytes),
      TwoLevels("PicThreshold(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned int, LxBW16, LxBW16, float)",
                kWords)
          .InRounds(2),
      Measured("PicThreshold(LxROI<LxBW16>*, LxROI<int>*, unsigned int, float)", WordsToBits)
          .InRounds(2),
      Pointwise("PicThreshold(LxROI<LxBW8>*, LxROI<int>*, unsigned int)", BytesToBits),
      Pointwise("PicThreshold(LxROI<int>*, LxROI<LxBW8>*, LxBW8, LxBW8)", BitsToBytes),
      Pointwise(box + ")", Box), Pointwise(box + ", LxColorLookup*, LxBW8, LxBW8)", TransformedBox),
      Pointwise("PicDoubleThreshold(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned int, unsigned int, "
                "LxBW8, LxBW8, LxBW8)",
                ThreeLevels),
      Pointwise("PicDoubleThreshold(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned int, unsigned int, "
                "LxBW16, LxBW16, LxBW16)",
                ThreeLevels),
      AutoThreshold("PicAutoThreshold(LxROI<LxBW8>*" + autoOf, kBytes),
      AutoThreshold("PicAutoThreshold(LxROI<LxBW16>*" + autoOf, kWords).InRounds(1),
      // Images may have as many nodes as pixels.
      Measured("PicAutoAdaptiveThreshold(LxROI<LxBW8>*, LxROI<LxBW8>*, PIC_THRESHOLD_MODES, int, "
               "int)",
               Surface)
          .InRounds(1)};
}

}  // namespace lx::test
