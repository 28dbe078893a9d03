// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/report/objects.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tools/lxpic/common/operation.h"

namespace lx::tool {

namespace {

constexpr unsigned char kWanted = 255;

// A row of pixels of one object.
struct Stretch {
  int first;
  int end;
  int y;
};

// Takes objects out of a mask, one after the other.
class Finder {
 public:
  explicit Finder(ImageValue marked) : mask(std::move(marked)) {}

  Outlined Take(int x, int y) {
    Outlined found{};
    found.outline = Trace(x, y);
    const auto stretches = Fill(x, y);
    Measure(stretches, found);
    for (const auto& [first, end, row] : stretches) {
      std::fill(mask.Row(row) + first, mask.Row(row) + end, kTaken);
    }
    return found;
  }

  static constexpr unsigned char kTaken = 0;

 private:
  static constexpr unsigned char kSeen = 1;

  std::vector<LxPath> Trace(int x, int y) const {
    LxPathVector path(0);
    PicContour(&mask.As<LxBW8>(), CONTOUR_CLOCKWISE_ALONG_BORDER, x, y, CONTOUR_ABOVE_THRESHOLD,
               kWanted, CONNEXITY_8, &path);
    if (LxGetError() == LX_ERROR_CONTOUR_START_ISOLATED) {
      return {{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)}};
    }
    CheckOperation("an outline");
    return {path.begin(), path.end()};
  }

  Stretch Around(int x, int y) const {
    unsigned char* const row = mask.Row(y);
    int first = x;
    while (first > 0 && row[first - 1] == kWanted) --first;
    int end = x + 1;
    while (end < mask.Width() && row[end] == kWanted) ++end;
    std::fill(row + first, row + end, kSeen);
    return {first, end, y};
  }

  std::vector<Stretch> Fill(int x, int y) const {
    std::vector<Stretch> stretches = {Around(x, y)};
    for (std::size_t i = 0; i < stretches.size(); ++i) {
      const Stretch from = stretches[i];
      for (const int row : {from.y - 1, from.y + 1}) {
        if (row < 0 || row >= mask.Height()) continue;
        const int end = std::min(from.end + 1, mask.Width());
        for (int column = std::max(from.first - 1, 0); column < end; ++column) {
          if (mask.Row(row)[column] == kWanted) stretches.push_back(Around(column, row));
        }
      }
    }
    return stretches;
  }

  void Measure(const std::vector<Stretch>& stretches, Outlined& found) const {
    LxROI<LxBW8> object(&mask.As<LxBW8>(), 0, 0, mask.Width(), mask.Height());
    int right = 0;
    int bottom = 0;
    found.x = mask.Width();
    found.y = mask.Height();
    for (const auto& [first, end, row] : stretches) {
      object.AddRun(first, row, end - first);
      found.x = std::min(found.x, first);
      found.y = std::min(found.y, row);
      right = std::max(right, end);
      bottom = std::max(bottom, row + 1);
    }
    found.width = right - found.x;
    found.height = bottom - found.y;
    found.area = PicArea(&object);
    CheckOperation("an area");
    PicGravityCenter(&object, kSeen, found.centreX, found.centreY);
    CheckOperation("a centre of gravity");
  }

  ImageValue mask;
};

}  // namespace

std::vector<Outlined> FindObjects(const ImageValue& image, const ObjectTest& test) {
  constexpr int kMost = std::numeric_limits<std::int16_t>::max() + 1;
  if (image.Width() > kMost || image.Height() > kMost) {
    throw Failure(kOperationFailed, "an outline has coordinates below 32768");
  }
  ImageValue mask(Pixel::kBW8, image.Width(), image.Height());
  for (int y = 0; y < image.Height(); ++y) {
    std::transform(image.Row(y), image.Row(y) + image.Width(), mask.Row(y),
                   [&](unsigned char level) { return test.Has(level) ? kWanted : 0; });
  }
  std::vector<Outlined> objects;
  Finder finder(mask);
  for (int y = 0; y < mask.Height(); ++y) {
    const unsigned char* const row = mask.Row(y);
    for (int x = 0; x < mask.Width(); ++x) {
      if (row[x] == kWanted) objects.push_back(finder.Take(x, y));
    }
  }
  return objects;
}

ImageValue PaintOutlines(const ImageValue& image, const std::vector<Outlined>& objects) {
  ImageValue painted(Pixel::kC24, image.Width(), image.Height());
  if (image.PixelType() == Pixel::kC24) {
    PicCopy(&image.As<LxC24>(), &painted.As<LxC24>());
  } else {
    PicConvert(&image.As<LxBW8>(), &painted.As<LxC24>());
  }
  CheckOperation("a picture of outlines");
  LxC24PathVector path(0);
  for (const Outlined& each : objects) {
    for (const LxPath& point : each.outline) {
      path.AddElement({point.m_n16X, point.m_n16Y, {0, 0, 255}});
    }
  }
  PicPathToImage(&painted.As<LxC24>(), &path);
  CheckOperation("a picture of outlines");
  return painted;
}

}  // namespace lx::tool
