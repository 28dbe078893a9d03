// SPDX-License-Identifier: Apache-2.0
// The 3 × 3 and one-dimensional filters, from their weights.
#include <array>
#include <cstdlib>

#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

// A neighbourhood or its weights, row by row.
using Nine = std::array<Value, 9>;

Value Sum(const Nine& pixels, const Nine& weights) {
  Value sum = 0;
  for (std::size_t i = 0; i < 9; ++i) sum += pixels[i] * weights[i];
  return sum;
}

constexpr Nine kSobelX = {-1, 0, 1, -2, 0, 2, -1, 0, 1};
constexpr Nine kSobelY = {-1, -2, -1, 0, 0, 0, 1, 2, 1};
constexpr Nine kPrewittX = {-1, 0, 1, -1, 0, 1, -1, 0, 1};
constexpr Nine kPrewittY = {-1, -1, -1, 0, 0, 0, 1, 1, 1};
constexpr Nine kOnes = {1, 1, 1, 1, 1, 1, 1, 1, 1};
constexpr Nine kBinomial = {1, 2, 1, 2, 4, 2, 1, 2, 1};

template <Value... kWeights>
Value Magnitude(const Nine& pixels) {
  return std::abs(Sum(pixels, {kWeights...}));
}

struct Filter {
  std::string name;
  bool zeroBorder;  ///< on the plain path from one grey image to another
  Value (*response)(const Nine& pixels);
};

const std::array kFilters = {
    Filter{"PicConvolSobelX", true, Magnitude<-1, 0, 1, -2, 0, 2, -1, 0, 1>},
    Filter{"PicConvolSobelY", true, Magnitude<-1, -2, -1, 0, 0, 0, 1, 2, 1>},
    Filter{"PicConvolSobel", true,
           [](const Nine& p) { return std::abs(Sum(p, kSobelX)) + std::abs(Sum(p, kSobelY)); }},
    Filter{"PicConvolPrewittX", false, Magnitude<-1, 0, 1, -1, 0, 1, -1, 0, 1>},
    Filter{"PicConvolPrewittY", true, Magnitude<-1, -1, -1, 0, 0, 0, 1, 1, 1>},
    Filter{"PicConvolPrewitt", true,
           [](const Nine& p) { return std::abs(Sum(p, kPrewittX)) + std::abs(Sum(p, kPrewittY)); }},
    Filter{"PicConvolLaplacian4", true, Magnitude<0, 1, 0, 1, -4, 1, 0, 1, 0>},
    Filter{"PicConvolLaplacian8", true, Magnitude<1, 1, 1, 1, -8, 1, 1, 1, 1>},
    Filter{"PicConvolLaplacianX", false, Magnitude<0, 0, 0, 1, -2, 1, 0, 0, 0>},
    Filter{"PicConvolLaplacianY", false, Magnitude<0, 1, 0, 0, -2, 0, 0, 1, 0>},
    Filter{"PicConvolHighpass1", true, Magnitude<0, -1, 0, -1, 5, -1, 0, -1, 0>},
    Filter{"PicConvolHighpass2", true, Magnitude<-1, -1, -1, -1, 9, -1, -1, -1, -1>},
    Filter{"PicConvolLowpass1", false, [](const Nine& p) { return Sum(p, kOnes) * 14 / 128; }},
    Filter{"PicConvolLowpass2", true, [](const Nine& p) { return (Sum(p, kOnes) - p[4]) / 8; }},
    Filter{"PicConvolLowpass3", false, [](const Nine& p) { return Sum(p, kBinomial) / 16; }},
    Filter{"PicConvolGradientX", false, [](const Nine& p) { return std::abs(p[3] - p[5]); }},
    Filter{"PicConvolGradientY", false, [](const Nine& p) { return std::abs(p[1] - p[7]); }},
    Filter{"PicConvolGradient", false,
           [](const Nine& p) { return std::abs(p[1] - p[7]) + std::abs(p[3] - p[5]); }}};
// With an 8-bit form only.
const std::array kByteFilters = {
    Filter{"PicConvolUniform3x3", false, [](const Nine& p) { return Sum(p, kOnes) * 14 / 128; }},
    Filter{"PicConvolGaussian3x3", false, [](const Nine& p) { return Sum(p, kBinomial) / 16; }}};

bool RunsInPlace(const Arguments& call) {
  const auto* const source = std::get<LxGenericROI*>(call.values[0]);
  const auto* const destination = std::get<LxGenericROI*>(call.values[1]);
  return destination == nullptr || destination->GetPixelPtr(0, 0) == source->GetPixelPtr(0, 0);
}

// 16-bit images have no fast path, and colours go in place.
bool HasZeroBorder(const Filter& filter, const Arguments& call, Pixel pixel) {
  const bool plain = pixel == Pixel::kBW16 || (pixel == Pixel::kBW8 && LxGetMMX() == 0);
  return filter.zeroBorder && plain && !RunsInPlace(call);
}

Nine Neighbourhood(const Picture& picture, int x, int y, int k, bool zeroBorder) {
  Nine pixels{};
  for (int i = 0; i < 9; ++i) {
    const int column = x + i % 3 - 1;
    const int row = y + i / 3 - 1;
    const bool outside = column < 0 || row < 0 || column >= picture.width || row >= picture.height;
    pixels[static_cast<std::size_t>(i)] =
        outside && zeroBorder ? 0 : Nearest(picture, column, row, k);
  }
  return pixels;
}

Reference FilterReference(const Filter& filter, const std::string& pixel) {
  const std::string region = "LxROI<" + pixel + ">*";
  return Whole(filter.name + "(" + region + ", " + region + ")",
               [&filter](const Arguments& call, const auto& sources, auto& destinations) {
                 const Picture& source = sources.front();
                 const Value maximum = FormatOf(source.pixel).maximum;
                 const bool zero = HasZeroBorder(filter, call, source.pixel);
                 ForEachComponent(destinations.front(), [&](int x, int y, int k) {
                   return std::min(filter.response(Neighbourhood(source, x, y, k, zero)), maximum);
                 });
               });
}

void Roberts(const Arguments& /*call*/, const std::vector<Picture>& sources,
             std::vector<Picture>& destinations) {
  const Picture& p = sources.front();
  const Value maximum = FormatOf(p.pixel).maximum;
  ForEachComponent(destinations.front(), [&](int x, int y, int k) -> Value {
    const bool lastColumn = x == p.width - 1;
    const bool lastRow = y == p.height - 1;
    if (lastColumn && lastRow) return 0;
    if (lastColumn) return std::min(2 * std::abs(p.At(x, y, k) - p.At(x, y + 1, k)), maximum);
    if (lastRow) return std::min(2 * std::abs(p.At(x, y, k) - p.At(x + 1, y, k)), maximum);
    return std::min(std::abs(p.At(x + 1, y, k) - p.At(x, y + 1, k)) +
                        std::abs(p.At(x, y, k) - p.At(x + 1, y + 1, k)),
                    maximum);
  });
}

}  // namespace

std::vector<Reference> FilterReferences() {
  std::vector<Reference> references;
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    for (const Filter& filter : kFilters) references.push_back(FilterReference(filter, pixel));
    const std::string region = "LxROI<" + pixel + ">*";
    references.push_back(Whole("PicConvolRoberts(" + region + ", " + region + ")", Roberts));
  }
  for (const Filter& filter : kByteFilters) {
    references.push_back(FilterReference(filter, "LxBW8"));
  }
  return references;
}

}  // namespace lx::test
