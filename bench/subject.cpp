// SPDX-License-Identifier: Apache-2.0
#include "bench/subject.h"

#include <algorithm>
#include <cstring>

#include "support/trial/region.h"

namespace lx::bench {

namespace {

void Paint(LxGenericROI& image, test::Content content, Random& random) {
  const auto bytes = static_cast<std::size_t>(image.GetWidth()) * image.GetPixelSize();
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, y));
    if (content == test::Content::kConstant) {
      std::memset(row, 100, bytes);
    } else {
      std::generate_n(row, bytes, [&random] { return static_cast<std::uint8_t>(random.Next()); });
    }
  }
}

}  // namespace

Subject::Subject(const Operation& described, const Form& selected, int w, int h)
    : operation(&described), form(selected), width(w), height(h), call(described) {
  if (form.choice >= 0) call.SetChoice(form.choice);
  for (const auto& [name, number] : form.numbers) call.Set(name, number);
  Random random(described.signature);
  for (std::size_t i = 0; i < described.parameters.size(); ++i) {
    const catalogue::Parameter& parameter = described.parameters[i];
    if (parameter.kind == catalogue::Kind::kKernel && form.kernel != nullptr) {
      call.SetKernel(i, form.kernel);
    }
    if (!parameter.IsRegion()) continue;
    images.push_back(test::MakeImage(parameter.pixel, w, h));
    Paint(*images.back(), form.content, random);
    call.values[i] = images.back().get();
  }
  if (form.inPlace) call.values[described.SourceIndices().front()] = images.back().get();
}

std::string Subject::Name() const {
  std::string name = operation->signature;
  if (!form.label.empty()) name.append(" ").append(form.label);
  return name;
}

std::size_t Subject::ImageBytes() const {
  return LargestPixel().bytes * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

std::pair<Image, Image> Subject::MakeCopyPair() const {
  const catalogue::Pixel pixel = LargestPixel().type;
  std::pair<Image, Image> made = {test::MakeImage(pixel, width, height),
                                  test::MakeImage(pixel, width, height)};
  Random random(operation->signature);
  Paint(*made.first, test::Content::kNoise, random);
  Paint(*made.second, test::Content::kNoise, random);
  return made;
}

std::string Subject::WhyNot() {
  if (images.empty() && operation->ResultIndices().empty()) return "computes nothing";
  LxOk();  // some leave the error state alone
  auto values = call.values;
  operation->call(values);
  return LxGetError() == LX_OK ? "" : "refuses with " + catalogue::ErrorName(LxGetError());
}

Subject::PixelSize Subject::LargestPixel() const {
  PixelSize largest{catalogue::Pixel::kNone, 0};
  auto image = images.begin();
  for (const catalogue::Parameter& parameter : operation->parameters) {
    if (!parameter.IsRegion()) continue;
    const std::size_t bytes = (*image++)->GetPixelSize();
    if (bytes > largest.bytes) largest = {parameter.pixel, bytes};
  }
  return largest;
}

}  // namespace lx::bench
