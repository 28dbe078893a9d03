// SPDX-License-Identifier: Apache-2.0
// Boxes and disks, pass by pass.
#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

struct Extreme {
  bool isMinimum;

  Value operator()(Value a, Value b) const { return isMinimum ? std::min(a, b) : std::max(a, b); }
};

struct Offset {
  int x;
  int y;
};
using Pass = std::vector<Offset>;

const Pass kLine = {{-1, 0}, {0, 0}, {1, 0}};
const Pass kColumn = {{0, -1}, {0, 0}, {0, 1}};
const Pass kCross = {{0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}};

void Repeat(Picture& picture, Extreme extreme, std::uint32_t passes, const Pass& pass) {
  for (; passes > 0; --passes) {
    const Picture before = picture;
    ForEachComponent(picture, [&](int x, int y, int k) {
      Value found = before.At(x, y, k);
      for (const Offset& offset : pass) {
        found = extreme(found, Nearest(before, x + offset.x, y + offset.y, k));
      }
      return found;
    });
    if (picture.values == before.values) return;  // nor would a later pass change anything
  }
}

// Passes along rows or columns. As many as there are pixels leave each its extreme.
void RepeatAlong(Picture& picture, Extreme extreme, std::uint32_t passes, bool isDown) {
  const int size = isDown ? picture.height : picture.width;
  if (passes < static_cast<std::uint32_t>(size)) {
    return Repeat(picture, extreme, passes, isDown ? kColumn : kLine);
  }
  Picture lines(picture.pixel, isDown ? picture.width : 1, isDown ? 1 : picture.height);
  ForEachComponent(lines, [&](int x, int y, int k) {
    Value found = picture.At(x, y, k);
    for (int i = 0; i < size; ++i) {
      found = extreme(found, picture.At(isDown ? x : i, isDown ? i : y, k));
    }
    return found;
  });
  ForEachComponent(picture, [&](int x, int y, int k) { return Nearest(lines, x, y, k); });
}

// A square pass is one of lines and then one of columns, which may change places.
void OverRectangle(Picture& picture, Extreme extreme, std::uint32_t x, std::uint32_t y) {
  if (picture.values.empty()) return;
  RepeatAlong(picture, extreme, x, false);
  RepeatAlong(picture, extreme, y, true);
}

void OverBox(Picture& picture, Extreme extreme, const Arguments& call) {
  constexpr std::uint32_t kSameAsX = 0xFFFFFFFF;
  const auto x = static_cast<std::uint32_t>(call.Number(2));
  const auto y = static_cast<std::uint32_t>(call.Number(3));
  OverRectangle(picture, extreme, x, y == kSameAsX ? x : y);
}

void OverDisk(Picture& picture, Extreme extreme, const Arguments& call) {
  const auto radius = static_cast<std::uint32_t>(call.Number(2));
  OverRectangle(picture, extreme, radius / 2, radius / 2);
  Repeat(picture, extreme, radius - radius / 2, kCross);
}

using Over = void (*)(Picture&, Extreme, const Arguments&);

constexpr Extreme kMinimum = {true};
constexpr Extreme kMaximum = {false};

Picture Applied(const Picture& picture, Over element, const std::vector<Extreme>& extremes,
                const Arguments& call) {
  Picture result = picture;
  for (const Extreme extreme : extremes) element(result, extreme, call);
  return result;
}

struct Side {
  std::vector<Extreme> extremes;  // none stands for the source
};

// An operator is one side, or the difference of two.
struct Row {
  std::string function;
  std::vector<Side> sides;
};

const std::vector<Row> kRows = {{"PicErode", {{{kMinimum}}}},
                                {"PicDilate", {{{kMaximum}}}},
                                {"PicOpen", {{{kMinimum, kMaximum}}}},
                                {"PicClose", {{{kMaximum, kMinimum}}}},
                                {"PicWhiteTopHat", {{{}}, {{kMinimum, kMaximum}}}},
                                {"PicBlackTopHat", {{{kMaximum, kMinimum}}, {{}}}},
                                {"PicMorphoGradient", {{{kMaximum}}, {{kMinimum}}}}};

PictureRule RuleOf(const Row& row, Over element) {
  return [&row, element](const Arguments& call, const auto& sources, auto& destinations) {
    const Picture& source = sources.front();
    Picture& result = destinations.front();
    result = Applied(source, element, row.sides[0].extremes, call);
    if (row.sides.size() == 1) return;
    const Picture less = Applied(source, element, row.sides[1].extremes, call);
    for (std::size_t i = 0; i < less.values.size(); ++i) result.values[i] -= less.values[i];
  };
}

}  // namespace

std::vector<Reference> BoxAndDiskReferences() {
  std::vector<Reference> all;
  for (const Row& row : kRows) {
    for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
      const std::string regions = "(LxROI<" + pixel + ">*, LxROI<" + pixel + ">*, unsigned int";
      all.push_back(
          Whole(row.function + "Box" + regions + ", unsigned int)", RuleOf(row, OverBox)));
      all.push_back(Whole(row.function + "Disk" + regions + ")", RuleOf(row, OverDisk)));
    }
  }
  return all;
}

}  // namespace lx::test
