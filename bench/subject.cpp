// SPDX-License-Identifier: Apache-2.0
#include "bench/subject.h"

#include <algorithm>

#include "support/random.h"
#include "support/region.h"

namespace lx::bench {

namespace {

void FillWithNoise(LxGenericROI& image, test::Random& random) {
  const auto bytes = static_cast<std::size_t>(image.GetWidth()) * image.GetPixelSize();
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, y));
    std::generate_n(row, bytes, [&random] { return static_cast<std::uint8_t>(random.Next()); });
  }
}

}  // namespace

Subject::Subject(const Operation& described, int selected, int w, int h)
    : operation(&described), choice(selected), width(w), height(h), call(described) {
  if (choice >= 0) call.SetChoice(choice);
  test::Random random(described.signature);
  for (std::size_t i = 0; i < described.parameters.size(); ++i) {
    const catalogue::Parameter& parameter = described.parameters[i];
    if (parameter.kind != catalogue::Kind::kRegion) continue;
    images.push_back(test::MakeImage(parameter.pixel, w, h));
    FillWithNoise(*images.back(), random);
    call.values[i] = images.back().get();
  }
}

std::string Subject::Name() const {
  std::string name = operation->signature;
  if (choice >= 0) name.append(" ").append(catalogue::ChoiceName(choice));
  return name;
}

std::size_t Subject::ImageBytes() const {
  return LargestPixel().bytes * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

std::pair<Image, Image> Subject::MakeCopyPair() const {
  const catalogue::Pixel pixel = LargestPixel().type;
  std::pair<Image, Image> made = {test::MakeImage(pixel, width, height),
                                  test::MakeImage(pixel, width, height)};
  test::Random random(operation->signature);
  FillWithNoise(*made.first, random);
  FillWithNoise(*made.second, random);
  return made;
}

Subject::PixelSize Subject::LargestPixel() const {
  PixelSize largest{catalogue::Pixel::kNone, 0};
  auto image = images.begin();
  for (const catalogue::Parameter& parameter : operation->parameters) {
    if (parameter.kind != catalogue::Kind::kRegion) continue;
    const std::size_t bytes = (*image++)->GetPixelSize();
    if (bytes > largest.bytes) largest = {parameter.pixel, bytes};
  }
  return largest;
}

std::vector<LxGenericROI*> Subject::Images(bool written) const {
  std::vector<LxGenericROI*> found;
  std::size_t next = 0;
  for (const catalogue::Parameter& parameter : operation->parameters) {
    if (parameter.kind != catalogue::Kind::kRegion) continue;
    LxGenericROI* const image = images[next++].get();
    if (parameter.written == written) found.push_back(image);
  }
  return found;
}

}  // namespace lx::bench
