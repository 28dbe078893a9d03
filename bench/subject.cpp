// SPDX-License-Identifier: Apache-2.0
#include "bench/subject.h"

#include <algorithm>
#include <cstring>

#include "bench/vectors.h"
#include "support/trial/region.h"

namespace lx::bench {

namespace {

void Paint(LxGenericROI& image, test::Content content, Random& random) {
  const std::size_t width = image.GetWidth();
  const bool binary = image.GetPixelSize() == 0;
  const std::size_t bytes = binary ? (width + 7) / 8 : width * image.GetPixelSize();
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, y));
    if (content == test::Content::kConstant) {
      std::memset(row, 100, bytes);
    } else {
      std::generate_n(row, bytes, [&random] { return static_cast<std::uint8_t>(random.Next()); });
    }
  }
}

// Coordinates that turn an image a little about its centre.
void PaintTurned(LxGenericROI& image, catalogue::Meaning meaning) {
  const auto width = static_cast<int>(image.GetWidth());
  const auto height = static_cast<int>(image.GetHeight());
  for (int y = 0; y < height; ++y) {
    auto* const row = static_cast<std::uint8_t*>(image.GetPixelPtr(0, y));
    for (int x = 0; x < width; ++x) {
      const int column = std::clamp(x - (y - height / 2) / 16, 0, width - 1);
      const int line = std::clamp(y + (x - width / 2) / 16, 0, height - 1);
      const auto point =
          static_cast<std::uint32_t>(meaning == catalogue::Meaning::kColumns ? column
                                     : meaning == catalogue::Meaning::kRows  ? line
                                                                             : column | line << 16);
      const std::size_t bytes = image.GetPixelSize();
      std::memcpy(row + bytes * static_cast<std::size_t>(x), &point, bytes);
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
    SetLength(call, parameter, i, form, random);
    if (!parameter.IsRegion()) continue;
    const auto [wide, high] = SizeOf(parameter);
    images.push_back(test::MakeImage(parameter.pixel, wide, high));
    if (form.paint != nullptr) {
      form.paint(*images.back());
    } else if (parameter.meaning == catalogue::Meaning::kLevels) {
      Paint(*images.back(), form.content, random);
    } else {
      PaintTurned(*images.back(), parameter.meaning);
    }
    call.values[i] = images.back().get();
  }
  if (form.object != nullptr) {
    object = form.object(w, h);
    call.values[0] = object.argument;
  }
  call.FitColumns(w);
  call.FitRegion(w, h);
  if (form.inPlace) call.values[described.SourceIndices().front()] = images.back().get();
}

catalogue::Extent Subject::SizeOf(const catalogue::Parameter& parameter) const {
  if (parameter.size == catalogue::SizeRule::kFollows) return operation->follows(call.values);
  if (parameter.size == catalogue::SizeRule::kPart) {
    return operation->part(call.values, {width, height});
  }
  if (parameter.size == catalogue::SizeRule::kFixed) return parameter.fixed;
  const int divisor = parameter.IsWritten() ? form.divisor : 1;
  return {width / divisor, height / divisor};
}

std::string Subject::Name() const {
  std::string name = operation->signature;
  if (!form.label.empty()) name.append(" ").append(form.label);
  return name;
}

std::size_t Subject::ImageBytes() const { return LargestImage().bytes; }

std::pair<Image, Image> Subject::MakeCopyPair() const {
  const Measure like = LargestImage();
  std::pair<Image, Image> made = {test::MakeImage(like.pixel, like.width, like.height),
                                  test::MakeImage(like.pixel, like.width, like.height)};
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

Subject::Measure Subject::LargestImage() const {
  Measure largest{};
  auto image = images.begin();
  for (const catalogue::Parameter& parameter : operation->parameters) {
    if (!parameter.IsRegion()) continue;
    const LxGenericROI& each = **image++;
    if (parameter.meaning != catalogue::Meaning::kLevels) continue;
    const std::size_t bytes = std::size_t{each.GetPixelSize()} * each.GetWidth() * each.GetHeight();
    if (largest.pixel == catalogue::Pixel::kNone || bytes > largest.bytes) {
      largest = {parameter.pixel, static_cast<int>(each.GetWidth()),
                 static_cast<int>(each.GetHeight()), bytes};
    }
  }
  return largest;
}

}  // namespace lx::bench
