// SPDX-License-Identifier: Apache-2.0
#include "support/trial/content.h"

#include <algorithm>
#include <array>
#include <bit>

namespace lx::test {

namespace {

void FillRamp(Picture& picture, int index, Value maximum) {
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Value across = x + (maximum > 255 ? Value{256} * y : 0);
      const Value down = y + (maximum > 255 ? Value{256} * x : 0);
      for (int k = 0; k < picture.components; ++k) {
        picture.At(x, y, k) = ((index % 2 == 0 ? across : down) + 85 * k) & maximum;
      }
    }
  }
}

void FillEdges(Picture& picture, Value maximum, Random& random) {
  const auto edge = static_cast<int>(random.Below(static_cast<std::size_t>(picture.width) + 1));
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (int k = 0; k < picture.components; ++k) {
        const Value step = random.Between(0, maximum / 4);
        picture.At(x, y, k) = x < edge ? step : maximum - step;
      }
    }
  }
}

void FillSparse(Picture& picture, Value maximum, Random& random) {
  const auto components = static_cast<std::size_t>(picture.components);
  for (std::size_t i = 0; i < picture.values.size(); i += components) {
    if (random.Below(4) != 0) continue;
    picture.values[i + random.Below(components)] = random.Between(0, maximum);
  }
}

template <class Make>
void FillEach(Picture& picture, Make make) {
  std::generate(picture.values.begin(), picture.values.end(), make);
}

void FillLevels(Picture& picture, Value maximum, Content content, int index, std::uint64_t level,
                Random& random) {
  const Value shared = static_cast<Value>(level >> 8) & maximum;
  const std::array<Value, 6> extremes = {0, 1, maximum / 2, maximum / 2 + 1, maximum - 1, maximum};
  switch (content) {
    case Content::kNoise:
      return FillEach(picture, [&] { return random.Between(0, maximum); });
    case Content::kRamp:
      return FillRamp(picture, index, maximum);
    case Content::kEdges:
      return FillEdges(picture, maximum, random);
    case Content::kConstant: {
      const Value value = index == 0 ? shared : random.Between(0, maximum);
      return FillEach(picture, [&] { return value; });
    }
    case Content::kExtremes:
      return FillEach(picture, [&] { return random.Pick(extremes); });
    case Content::kNear:
      return FillEach(
          picture, [&] { return std::clamp<Value>(shared + random.Between(-2, 2), 0, maximum); });
    case Content::kSparse:
      std::fill(picture.values.begin(), picture.values.end(), 0);
      return FillSparse(picture, maximum, random);
    case Content::kLargest:
      std::fill(picture.values.begin(), picture.values.end(), maximum);
  }
}

}  // namespace

void Fill(Picture& picture, Content content, int index, std::uint64_t level, Random& random) {
  if (picture.pixel != Pixel::kComplex64) {
    return FillLevels(picture, FormatOf(picture.pixel).maximum, content, index, level, random);
  }
  // Signed 16-bit levels, as floats with fractions.
  FillLevels(picture, 0xFFFF, content, index, level, random);
  for (Value& value : picture.values) {
    value = std::bit_cast<std::uint32_t>(static_cast<float>(static_cast<std::int16_t>(value)) / 64);
  }
}

void FillCoordinates(Picture& picture, catalogue::Meaning meaning, int width, int height,
                     bool strays, Random& random) {
  const auto inside = [&random](int size) { return random.Between(0, std::max(size, 1) - 1); };
  if (meaning == catalogue::Meaning::kPoints) {
    FillEach(picture, [&] { return inside(width) | inside(height) << 16; });
    if (!strays || picture.values.empty()) return;
    for (int i = 0; i < 3; ++i) {
      picture.values[random.Below(picture.values.size())] =
          i == 0 ? Value{width} : random.Between(0, 0xFFFFFFFF);
    }
    return;
  }
  // Everywhere, around the source, or like the place that they stand at.
  const std::size_t style = random.Below(3);
  const int size = meaning == catalogue::Meaning::kColumns ? width : height;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Value here = meaning == catalogue::Meaning::kColumns ? x : y;
      const Value value = style == 0   ? random.Between(0, 0xFFFF)
                          : style == 1 ? random.Between(-2, size + 1)
                                       : here;
      picture.At(x, y) = value & 0xFFFF;
    }
  }
}

namespace {

enum class RunStyle {
  kNone,
  kEmpty,
  kPixels,
  kRows,
  kAny  // overlapping each other, some empty, in any order
};
constexpr std::array kRunStyles = {RunStyle::kNone,   RunStyle::kNone, RunStyle::kEmpty,
                                   RunStyle::kPixels, RunStyle::kRows, RunStyle::kAny,
                                   RunStyle::kAny};

Run DrawRun(const Picture& picture, RunStyle style, Random& random) {
  const int x = static_cast<int>(random.Between(0, picture.width - 1));
  const int y = static_cast<int>(random.Between(0, picture.height - 1));
  switch (style) {
    case RunStyle::kRows:
      return {0, y, picture.width};
    case RunStyle::kPixels:
      return {x, y, 1};
    case RunStyle::kEmpty:
      return {x, y, 0};
    default:
      return {x, y, static_cast<int>(random.Between(0, picture.width - x))};
  }
}

}  // namespace

std::vector<Run> DrawRuns(const Picture& picture, Random& random) {
  const RunStyle style = random.Pick(kRunStyles);
  std::vector<Run> runs;
  if (style == RunStyle::kNone || picture.width == 0 || picture.height == 0) return runs;
  runs.resize(1 + random.Below(12));
  for (Run& run : runs) run = DrawRun(picture, style, random);
  return runs;
}

}  // namespace lx::test
