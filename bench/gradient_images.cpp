// SPDX-License-Identifier: Apache-2.0
// Gradients through lookup images and spectra as images.
#ifdef LXPIC_HAS_OPENCV
#include <opencv2/core.hpp>

#include "bench/opencv.h"
#endif

#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "bench/family.h"

namespace lx::bench {

namespace {

// Moduli within the range of pixels, and levels of other images.
void PaintSpectrum(LxGenericROI& image) {
  Random random("spectrum");
  const bool isComplex = image.GetPixelSize() == sizeof(LxComplex64);
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
      const LxComplex64 pixel = {static_cast<float>(random.Real(-180, 180)),
                                 static_cast<float>(random.Real(-180, 180))};
      std::memcpy(image.GetPixelPtr(x, y), &pixel, isComplex ? sizeof(pixel) : 1);
    }
  }
}

std::vector<Form> FormsOf(const Operation& operation) {
  if (!operation.function.starts_with("PicComplex")) return {};
  std::vector<Form> forms = {{.label = "512", .paint = PaintSpectrum, .size = "512x512"}};
  if (operation.function.ends_with("Modulus")) {
    forms.push_back(forms.front());
    forms.back().label = "logarithmic";
    forms.back().numbers = {{"logarithmic", 1}};
  }
  return forms;
}

bool IsGradient(const Subject& subject) {
  return subject.operation->function == "PicGradientScalar" &&
         subject.operation->parameters.front().pixel == catalogue::Pixel::kBW8;
}

Target TargetOf(const Subject& subject) {
  if (IsGradient(subject)) return {0.5, 0.5};
  return subject.operation->function == "PicComplexModulus" ? Target{0.9, 0.9} : Target{1, 1};
}

#ifdef LXPIC_HAS_OPENCV

// Nobody else has it: a loop over the pixels as one writes it.
Job LookedUpOneByOne(const Subject& subject) {
  return
      [from = ViewOf(subject, 0), to = ViewOf(subject, 1), table = ViewOf(subject, 2)]() mutable {
        for (int y = 0; y < from.rows; ++y) {
          const auto* const above = from.ptr<std::uint8_t>(y == 0 ? 0 : y - 1);
          const auto* const row = from.ptr<std::uint8_t>(y);
          const auto* const below = from.ptr<std::uint8_t>(y + 1 < from.rows ? y + 1 : y);
          auto* const written = to.ptr<std::uint8_t>(y);
          for (int x = 0; x < from.cols; ++x) {
            const int across = row[x == 0 ? 0 : x - 1] - row[x + 1 < from.cols ? x + 1 : x];
            written[x] = table.ptr<std::uint8_t>(above[x] - below[x] + 256)[across + 256];
          }
        }
      };
}

Job ConvertedMagnitude(const Subject& subject) {
  const cv::Mat source = ViewOf(subject, 0);
  const cv::Mat destination = ViewOf(subject, 1);
  std::array<cv::Mat, 2> parts = {cv::Mat(source.size(), CV_32FC1),
                                  cv::Mat(source.size(), CV_32FC1)};
  return [=, modulus = cv::Mat(source.size(), CV_32FC1), result = destination]() mutable {
    cv::split(source, parts.data());
    cv::magnitude(parts[0], parts[1], modulus);
    modulus.convertTo(result, CV_8U);
    ExpectResultIn(destination, result);
  };
}

Job MakePeer(const Subject& subject) {
  if (IsGradient(subject)) return LookedUpOneByOne(subject);
  const bool isModulus = subject.operation->function == "PicComplexModulus";
  return isModulus && subject.form.label == "512" ? ConvertedMagnitude(subject) : Job{};
}

#else

Job MakePeer(const Subject& /*subject*/) { return {}; }

#endif

}  // namespace

const Family kGradientImageFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
