// SPDX-License-Identifier: Apache-2.0
// Medians: all nine pixels sorted. Distances: two plain passes. Counted morphology: pass by pass.
#include <array>

#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

bool IsInside(const Picture& picture, int x, int y) {
  return x >= 0 && y >= 0 && x < picture.width && y < picture.height;
}

// The value of an argument for component `k` of pixels outside.
Value Outside(const Arguments& call, std::size_t index, int k) {
  return std::clamp<Value>(call.Component(index, k), 0, 255);
}

void Median(const Arguments& call, const std::vector<Picture>& sources,
            std::vector<Picture>& destinations) {
  const Picture& source = sources.front();
  ForEachComponent(destinations.front(), [&](int x, int y, int k) {
    std::array<Value, 9> nine{};
    for (int i = 0; i < 9; ++i) {
      const int column = x + i % 3 - 1;
      const int row = y + i / 3 - 1;
      const bool isGiven = call.values.size() > 2 && !IsInside(source, column, row);
      nine[static_cast<std::size_t>(i)] =
          isGiven ? Outside(call, 2, k) : Nearest(source, column, row, k);
    }
    std::sort(nine.begin(), nine.end());
    return nine[4];
  });
}

// The least of a pixel and of its neighbours in one direction, those plus 1.
void Shorten(Picture& map, Value outside, int x, int y, int direction) {
  Value& here = map.At(x, y);
  for (const auto& [i, j] : {std::pair{-1, -1}, {0, -1}, {1, -1}, {-1, 0}}) {
    const int column = x + direction * i;
    const int row = y + direction * j;
    here = std::min(here, 1 + (IsInside(map, column, row) ? map.At(column, row) : outside));
  }
}

void Distance(const Arguments& call, const std::vector<Picture>& sources,
              std::vector<Picture>& destinations) {
  const Picture& source = sources.front();
  Picture& map = destinations.front();
  map.values = source.values;
  const Value outside = std::clamp<Value>(call.Component(2, 0), 0, 65535);
  for (int y = 0; y < map.height; ++y) {
    for (int x = 0; x < map.width; ++x) Shorten(map, outside, x, y, 1);
  }
  for (int y = map.height; y-- > 0;) {
    for (int x = map.width; x-- > 0;) Shorten(map, outside, x, y, -1);
  }
}

using Extreme = const Value& (*)(const Value&, const Value&);

// Stops when a pass changes nothing, as none behind it will.
void Repeat(Picture& picture, Extreme extreme, const Arguments& call, std::size_t outside) {
  Picture before;
  for (Value left = call.Component(2, 0); left > 0 && before.values != picture.values; --left) {
    before = picture;
    ForEachComponent(picture, [&](int x, int y, int k) {
      Value found = before.At(x, y, k);
      for (int i = 0; i < 9; ++i) {
        const int column = x + i % 3 - 1;
        const int row = y + i / 3 - 1;
        const bool isInside = IsInside(before, column, row);
        found = extreme(found, isInside ? before.At(column, row, k) : Outside(call, outside, k));
      }
      return found;
    });
  }
}

// One or two kinds of passes, and the sign of a top-hat's source, or 0.
PictureRule Counted(const std::vector<Extreme>& steps, int sign) {
  return [=](const Arguments& call, const std::vector<Picture>& sources,
             std::vector<Picture>& destinations) {
    const Picture& source = sources.front();
    Picture& made = destinations.front();
    if (sign == 0 && call.Component(2, 0) <= 0) return;
    made = source;
    for (std::size_t i = 0; i < steps.size(); ++i) Repeat(made, steps[i], call, 3 + i);
    if (sign == 0) return;
    ForEachComponent(made, [&](int x, int y, int k) {
      return std::max<Value>(0, sign * (source.At(x, y, k) - made.At(x, y, k)));
    });
  };
}

void AddCounted(std::vector<Reference>& all, const std::string& pixel, const std::string& outside) {
  const Extreme least = &std::min<Value>;
  const Extreme most = &std::max<Value>;
  const std::string one = "(LxROI<" + pixel + ">*, LxROI<" + pixel + ">*, int, " + outside;
  const std::string two = one + ", " + outside + ")";
  all.push_back(Whole("PicErode" + one + ")", Counted({least}, 0)));
  all.push_back(Whole("PicDilate" + one + ")", Counted({most}, 0)));
  all.push_back(Whole("PicOpen" + two, Counted({least, most}, 0)));
  all.push_back(Whole("PicClose" + two, Counted({most, least}, 0)));
  all.push_back(Whole("PicWhiteTopHat" + two, Counted({least, most}, 1)));
  all.push_back(Whole("PicBlackTopHat" + two, Counted({most, least}, -1)));
}

}  // namespace

std::vector<Reference> NonlinearReferences() {
  std::vector<Reference> all = {
      Whole("PicMedian(LxROI<LxBW8>*, LxROI<LxBW8>*)", Median),
      Whole("PicMedian(LxROI<LxBW16>*, LxROI<LxBW16>*)", Median),
      Whole("PicMedian(LxROI<LxBW8>*, LxROI<LxBW8>*, int)", Median),
      Whole("PicMedian(LxROI<LxC24>*, LxROI<LxC24>*, LxC24)", Median),
      Whole("PicDistance(LxROI<LxBW8>*, LxImage<LxBW16>*, int)", Distance)};
  AddCounted(all, "LxBW8", "int");
  AddCounted(all, "LxC24", "LxC24");
  // Passes of plain loops add up.
  for (Reference& each : all) each.rounds = 4;
  return all;
}

}  // namespace lx::test
