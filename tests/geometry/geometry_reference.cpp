// SPDX-License-Identifier: Apache-2.0
// Shrinking, mirrors, warps.
#include <algorithm>
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

using Pictures = std::vector<Picture>;

void Shrink(const Arguments& /*call*/, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources.front();
  Picture& d = destinations.front();
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      for (int k = 0; k < d.components; ++k) {
        Value sum = 0;
        Value count = 0;
        for (int v = y * s.height / d.height; v < (y + 1) * s.height / d.height; ++v) {
          for (int u = x * s.width / d.width; u < (x + 1) * s.width / d.width; ++u) {
            sum += s.At(u, v, k);
            ++count;
          }
        }
        d.At(x, y, k) = sum / count;
      }
    }
  }
}

void Halve(const Arguments& /*call*/, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources.front();
  Picture& d = destinations.front();
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      const bool wide = 2 * x + 1 < s.width;
      const bool high = 2 * y + 1 < s.height;
      Value sum = s.At(2 * x, 2 * y);
      if (wide) sum += s.At(2 * x + 1, 2 * y);
      if (high) sum += s.At(2 * x, 2 * y + 1);
      if (wide && high) sum += s.At(2 * x + 1, 2 * y + 1);
      d.At(x, y) = sum / ((wide ? 2 : 1) * (high ? 2 : 1));
    }
  }
}

template <bool kAcross>
void Mirror(const Arguments& /*call*/, const Pictures& /*sources*/, Pictures& destinations) {
  Picture& d = destinations.front();
  const Picture old = d;
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      for (int k = 0; k < d.components; ++k) {
        d.At(x, y, k) = kAcross ? old.At(d.width - 1 - x, y, k) : old.At(x, d.height - 1 - y, k);
      }
    }
  }
}

Value Signed(Value word) { return word < 0x8000 ? word : word - 0x10000; }

bool IsIn(const Picture& picture, Value x, Value y) {
  return x >= 0 && x < picture.width && y >= 0 && y < picture.height;
}

void WarpTwoMaps(const Arguments& call, const Pictures& sources, Pictures& destinations) {
  const Picture& s = sources.front();
  Picture& d = destinations.front();
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      const Value u = Signed(sources[1].At(x, y)) + static_cast<Value>(call.Number("x-offset"));
      const Value v = Signed(sources[2].At(x, y)) + static_cast<Value>(call.Number("y-offset"));
      for (int k = 0; k < d.components; ++k) {
        d.At(x, y, k) = IsIn(s, u, v) ? s.At(static_cast<int>(u), static_cast<int>(v), k) : 0;
      }
    }
  }
}

void WarpPacked(const Arguments& /*call*/, Outcome& outcome) {
  const Picture s = outcome.Image(0);
  Picture& d = outcome.Image(1);
  const Picture& map = outcome.Image(2);
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      const Value u = map.At(x, y) & 0xFFFF;
      const Value v = map.At(x, y) >> 16;
      if (!IsIn(s, u, v)) return outcome.Refuse(LX_ERROR_WARP_TABLE);
      d.At(x, y) = s.At(static_cast<int>(u), static_cast<int>(v));
    }
  }
}

Value Coordinate(float value) {
  if (std::isnan(value)) return 0;
  return static_cast<Value>(std::trunc(std::clamp(value, -32768.0F, 32767.0F))) & 0xFFFF;
}

void SetCircleWarp(const Arguments& call, Outcome& outcome) {
  const auto real = [&call](const char* name) { return static_cast<float>(call.Number(name)); };
  const auto height = static_cast<int>(call.Number("height"));
  const auto width = static_cast<int>(call.Number("width"));
  if (height < 1) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
  if (width < 1) return outcome.Refuse(LX_ERROR_ARGUMENT_6_OUT_OF_RANGE);
  const float first = LxToRadians(real("angle-1"));
  const float last = LxToRadians(real("angle-2"));
  for (int u = 0; u < width; ++u) {
    const auto rest = static_cast<float>(width - 1 - u);
    const float angle =
        width == 1 ? first
                   : (rest * first + static_cast<float>(u) * last) / static_cast<float>(width - 1);
    const auto point = [&](const char* centre, const char* radius, double part) {
      return static_cast<float>(call.Number(centre) + call.Number(radius) * part);
    };
    const double cosine = std::cos(static_cast<double>(angle));
    const double sine = std::sin(static_cast<double>(angle));
    float t = 0;
    float s = 1;
    for (int v = 0; v < height; ++v) {
      outcome.Image(8).At(u, v) = Coordinate(t * point("centre-x", "radius-1", cosine) +
                                             s * point("centre-x", "radius-2", cosine));
      outcome.Image(9).At(u, v) = Coordinate(t * point("centre-y", "radius-1", sine) +
                                             s * point("centre-y", "radius-2", sine));
      t += 1.0F / static_cast<float>(height - 1);
      s -= 1.0F / static_cast<float>(height - 1);
    }
  }
}

}  // namespace

std::vector<Reference> GeometryReferences() {
  std::vector<Reference> made = {
      Whole("PicHalve(LxROI<LxBW8>*, LxROI<LxBW8>*, int)", Halve),
      Measured("PicWarp(LxROI<LxBW8>*, LxROI<LxBW8>*, LxImage<LxBW32>*)", WarpPacked),
      Measured("PicSetCircleWarp(float, float, int, float, float, int, float, float, "
               "LxImage<LxBW16>*, LxImage<LxBW16>*)",
               SetCircleWarp)};
  for (const std::string region : {"LxROI<LxBW8>*", "LxROI<LxBW16>*", "LxROI<LxC24>*"}) {
    made.push_back(Whole("PicShrink(" + region + ", " + region + ")", Shrink));
    made.push_back(Whole("PicVerticalMirror(" + region + ")", Mirror<false>));
    made.push_back(Whole("PicHorizontalMirror(" + region + ")", Mirror<true>));
    if (region == "LxROI<LxBW16>*") continue;
    made.push_back(Whole(
        "PicWarp(" + region + ", " + region + ", LxImage<LxBW16>*, LxImage<LxBW16>*, int, int)",
        WarpTwoMaps));
  }
  return made;
}

}  // namespace lx::test
