// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/scene/synth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/scene/scene.h"

namespace lx::tool {

namespace {

constexpr Size kSmallest{160, 120};
constexpr Size kLargest{8192, 8192};

struct SceneKind {
  const char* name;
  Scene (*draw)(const Size&, const Pose&);
};

constexpr std::array kScenes = {SceneKind{"label", DrawLabel}, SceneKind{"board", DrawBoard},
                                SceneKind{"sheet", DrawSheet}};

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

// The even rows show one scene, the odd rows the other.
ImageValue TakePicture(const Scene& even, const Scene& odd, const SynthOptions& options,
                       Random& random) {
  const Light light(options.size, options.light);
  ImageValue image(options.colour ? Pixel::kC24 : Pixel::kBW8, options.size.width,
                   options.size.height);
  for (int y = 0; y < image.Height(); ++y) {
    const std::uint32_t* const line = (y % 2 == 0 ? even : odd).Row(y);
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

const SceneKind& FindScene(const std::string& name) {
  const auto* const kind = std::find_if(kScenes.begin(), kScenes.end(),
                                        [&](const SceneKind& each) { return each.name == name; });
  if (kind != kScenes.end()) return *kind;
  throw Failure(kWrongUsage, "there is no scene '" + name + "'" + Suggestion(name, SceneNames()));
}

// Draws the product with its defects, and tells where they and its marks are.
Scene DrawProduct(const SceneKind& kind, const SynthOptions& options, Random& random,
                  SynthPicture& told) {
  Scene scene = kind.draw(options.size, options.pose);
  if (options.defects > 0 && scene.prints.empty()) {
    throw Failure(kWrongUsage, "scene '" + options.scene + "' has no defects");
  }
  told.marks = scene.marks;
  told.defects = AddDefects(scene, options.defects, random);
  return scene;
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

Defect LaidStraight(const Defect& defect, const SynthOptions& options) {
  const Pose& pose = options.pose;
  const double angle = pose.angle * std::numbers::pi / 180;
  const Point centre{options.size.width / 2.0, options.size.height / 2.0};
  Point low{1e9, 1e9};
  Point high{-1e9, -1e9};
  for (const int corner : {0, 1, 2, 3}) {
    const int column = defect.x + corner % 2 * defect.width;
    const int row = defect.y + corner / 2 * defect.height;
    const double x = column - centre.x - pose.shift.x;
    const double y = row - centre.y - pose.shift.y;
    const Point straight{(x * std::cos(angle) - y * std::sin(angle)) / pose.scale + centre.x,
                         (x * std::sin(angle) + y * std::cos(angle)) / pose.scale + centre.y};
    low = {std::min(low.x, straight.x), std::min(low.y, straight.y)};
    high = {std::max(high.x, straight.x), std::max(high.y, straight.y)};
  }
  const auto left = static_cast<int>(std::max(std::floor(low.x), 0.0));
  const auto top = static_cast<int>(std::max(std::floor(low.y), 0.0));
  const int right = std::min(static_cast<int>(std::ceil(high.x)), options.size.width);
  const int bottom = std::min(static_cast<int>(std::ceil(high.y)), options.size.height);
  return {defect.kind, left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

void SynthesiseFrames(const SynthOptions& options, int count,
                      const std::function<void(const SynthPicture&)>& take) {
  CheckOptions(options);
  const SceneKind& kind = FindScene(options.scene);
  Random random(options.seed);
  SynthPicture picture;
  const Scene scene = DrawProduct(kind, options, random, picture);
  std::optional<Scene> later;
  if (options.fieldShift != 0) {
    SynthOptions moved = options;
    moved.pose.shift.x += options.fieldShift;
    Random same(options.seed);
    SynthPicture untold;
    later = DrawProduct(kind, moved, same, untold);
  }
  for (int i = 0; i < count; ++i) {
    picture.image = TakePicture(scene, later ? *later : scene, options, random);
    take(picture);
  }
}

SynthPicture Synthesise(const SynthOptions& options) {
  SynthPicture taken;
  SynthesiseFrames(options, 1, [&taken](const SynthPicture& picture) { taken = picture; });
  return taken;
}

}  // namespace lx::tool
