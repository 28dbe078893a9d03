// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/synth.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/scene/scene.h"

namespace lx::tool {

namespace {

constexpr Size kSmallest{160, 120};
constexpr Size kLargest{8192, 8192};

struct SceneKind {
  const char* name;
  Scene (*draw)(const Size&);
};

constexpr std::array kScenes = {SceneKind{"label", DrawLabel}, SceneKind{"board", DrawBoard}};

// How bright the light is at a place: 1 near the upper left, darker with the square of the
// distance.
class Light {
 public:
  Light(const Size& size, double percent)
      : loss(percent / 100), scaleX(1.0 / size.width), scaleY(1.0 / size.height) {}

  double At(int x, int y) const {
    const double dx = x * scaleX - kCentreX;
    const double dy = y * scaleY - kCentreY;
    return 1 - loss * (dx * dx + dy * dy) / kFarthest;
  }

 private:
  static constexpr double kCentreX = 0.35;
  static constexpr double kCentreY = 0.3;
  // The square of the distance to the lower right corner.
  static constexpr double kFarthest =
      (1 - kCentreX) * (1 - kCentreX) + (1 - kCentreY) * (1 - kCentreY);
  double loss;
  double scaleX;
  double scaleY;
};

// Blue, green and red of a pixel as the camera sees them, or only their grey level.
std::array<double, 3> Components(std::uint32_t pixel, bool colour) {
  const double blue = pixel & 0xFF;
  const double green = pixel >> 8 & 0xFF;
  const double red = pixel >> 16 & 0xFF;
  if (colour) return {blue, green, red};
  return {0.114 * blue + 0.587 * green + 0.299 * red, 0, 0};
}

ImageValue TakePicture(const Scene& scene, const SynthOptions& options, Random& random) {
  cairo_surface_flush(scene.Surface());
  const unsigned char* const pixels = cairo_image_surface_get_data(scene.Surface());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(scene.Surface());
  const Light light(options.size, options.light);
  ImageValue image(options.colour ? Pixel::kC24 : Pixel::kBW8, options.size.width,
                   options.size.height);
  for (int y = 0; y < image.Height(); ++y) {
    const auto* const line = reinterpret_cast<const std::uint32_t*>(pixels + y * stride);
    unsigned char* target = image.Row(y);
    for (int x = 0; x < image.Width(); ++x) {
      const auto components = Components(line[x], options.colour);
      for (std::size_t k = 0; k < (options.colour ? 3U : 1U); ++k) {
        const double level = components[k] * light.At(x, y) + options.noise * random.Noise();
        *target++ = static_cast<unsigned char>(std::lround(std::clamp(level, 0.0, 255.0)));
      }
    }
  }
  return image;
}

void CheckOptions(const SynthOptions& options) {
  const Size& size = options.size;
  if (size.width < kSmallest.width || size.height < kSmallest.height ||
      size.width > kLargest.width || size.height > kLargest.height) {
    throw Failure(kWrongUsage, "the size must be 160x120 to 8192x8192");
  }
}

}  // namespace

std::vector<std::string> SceneNames() {
  std::vector<std::string> names;
  for (const SceneKind& each : kScenes) names.emplace_back(each.name);
  return names;
}

SynthPicture Synthesise(const SynthOptions& options) {
  CheckOptions(options);
  const auto* const kind = std::find_if(kScenes.begin(), kScenes.end(), [&](const SceneKind& each) {
    return each.name == options.scene;
  });
  if (kind == kScenes.end()) {
    throw Failure(kWrongUsage, "there is no scene '" + options.scene + "'" +
                                   Suggestion(options.scene, SceneNames()));
  }
  Scene scene = kind->draw(options.size);
  Random random(options.seed);
  SynthPicture picture;
  picture.defects = AddDefects(scene, options.defects, random);
  picture.image = TakePicture(scene, options, random);
  return picture;
}

}  // namespace lx::tool
