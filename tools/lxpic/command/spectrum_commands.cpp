// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/spectrum_commands.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#include "tools/lxpic/command/clashes.h"
#include "tools/lxpic/common/operation.h"
#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

// What both commands take.
struct Files {
  std::string input;
  std::string output;

  void Add(CLI::App& app) {
    app.add_option("IMAGE", input, "A grey picture")->required();
    app.add_option("-o,--output", output, "The file to write")->required();
    AddMaxPixels(app);
  }
  ImageValue Read() const {
    CheckFormat(output);
    CheckClashes({{{input, output, ""}}, {}, ""});
    return ReadGrey(input);
  }
};

ImageValue SpectrumOf(const ImageValue& image) {
  ImageValue spectrum(Pixel::kComplex64, image.Width(), image.Height());
  const bool isFast = std::has_single_bit(static_cast<unsigned>(image.Width())) &&
                      std::has_single_bit(static_cast<unsigned>(image.Height()));
  const auto transform = isFast ? &PicFastDFT : &PicSlowDFT;
  transform(&image.As<LxBW8>(), &spectrum.As<LxComplex64>(), 1);
  CheckOperation("the spectrum");
  return spectrum;
}

// What a table makes of the differences between the neighbours of each pixel.
ImageValue Looked(const ImageValue& image, LxImage<LxBW8>& table) {
  CheckOperation("the table");
  ImageValue looked(Pixel::kBW8, image.Width(), image.Height());
  PicGradientScalar(&image.As<LxBW8>(), &looked.As<LxBW8>(), &table);
  CheckOperation("the gradient");
  return looked;
}

// The colour of a direction, 256 of which go around, at a brightness of 0 to 255: red, yellow,
// green, cyan, blue, magenta.
LxC24 ColourOf(unsigned direction, unsigned brightness) {
  const auto part = [&](int offset) {
    // Full within a sixth of the circle to either side, and nothing beyond a third.
    const int away = std::abs((static_cast<int>(direction) - offset + 384) % 256 - 128);
    const int share = std::clamp(512 - 6 * away, 0, 256);
    return static_cast<std::uint8_t>(static_cast<int>(brightness) * share / 256);
  };
  return {part(171), part(85), part(0)};
}

}  // namespace

ExitCode RunFourier(const Arguments& arguments) {
  CLI::App app(
      "The modulus of a picture's spectrum, the zero frequency in the middle, on a logarithmic "
      "scale up to the largest value that there can be",
      "lxpic fourier");
  Files files;
  float linear = 0;
  files.Add(app);
  app.add_option("--linear", linear, "Multiply it by this instead")->check(CheckNumber);
  if (!Parse(app, arguments)) return kFine;
  const ImageValue image = files.Read();
  const ImageValue spectrum = SpectrumOf(image);
  constexpr double kWhite = 255;
  const double largest = kWhite * std::sqrt(1.0 * image.Width() * image.Height());
  const bool isLogarithmic = linear == 0;
  ImageValue modulus(Pixel::kBW8, image.Width(), image.Height());
  PicComplexModulus(&spectrum.As<LxComplex64>(), &modulus.As<LxBW8>(), isLogarithmic ? 1 : linear,
                    isLogarithmic ? 1 : 0, static_cast<float>(kWhite / std::log1p(largest)));
  CheckOperation("the modulus");
  WriteImage(files.output, modulus);
  return kFine;
}

ExitCode RunGradient(const Arguments& arguments) {
  CLI::App app(
      "How steep a picture is as brightness, and which way it rises as colour: red to the left, "
      "and on through yellow, green and blue",
      "lxpic gradient");
  Files files;
  float gain = 1;
  files.Add(app);
  app.add_option("--gain", gain, "Multiplies the brightness")
      ->check(CheckNumber)
      ->check(CLI::Range(0.0, 1000.0))
      ->capture_default_str();
  if (!Parse(app, arguments)) return kFine;
  const ImageValue image = files.Read();
  LxImage<LxBW8> table;
  PicModulusImage(&table, gain);
  const ImageValue steepness = Looked(image, table);
  PicArgumentImage(&table, 0, 0);
  const ImageValue direction = Looked(image, table);
  ImageValue colours(Pixel::kC24, image.Width(), image.Height());
  for (int y = 0; y < image.Height(); ++y) {
    auto* const row = reinterpret_cast<LxC24*>(colours.Row(y));
    std::transform(direction.Row(y), direction.Row(y) + image.Width(), steepness.Row(y), row,
                   [](unsigned way, unsigned steep) { return ColourOf(way, steep); });
  }
  WriteImage(files.output, colours);
  return kFine;
}

}  // namespace lx::tool
