// SPDX-License-Identifier: Apache-2.0
#include "bench/subject.h"

#include <algorithm>

#include "support/trial/random.h"
#include "support/trial/region.h"

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

std::vector<Form> FormsOf(const Operation& operation) {
  std::vector<Form> forms = ConvolutionForms(operation);
  if (!forms.empty()) return forms;
  for (const int choice : test::ChoicesOf(operation)) {
    forms.push_back({choice < 0 ? "" : catalogue::ChoiceName(choice), choice, {}, {}});
  }
  return forms;
}

Subject::Subject(const Operation& described, const Form& selected, int w, int h)
    : operation(&described), form(selected), width(w), height(h), call(described) {
  if (form.choice >= 0) call.SetChoice(form.choice);
  std::copy(form.numbers.rbegin(), form.numbers.rend(), call.values.rbegin());
  if (form.kernel != nullptr) call.values.back() = form.kernel.get();
  test::Random random(described.signature);
  for (std::size_t i = 0; i < described.parameters.size(); ++i) {
    const catalogue::Parameter& parameter = described.parameters[i];
    if (parameter.kind != catalogue::Kind::kRegion) continue;
    images.push_back(test::MakeImage(parameter.pixel, w, h));
    FillWithNoise(*images.back(), random);
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
