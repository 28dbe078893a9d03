// SPDX-License-Identifier: Apache-2.0
// Contours, and images along paths.
#include "profile/contour_definition.h"
#include "support/reference.h"

namespace lx::test {

namespace {

constexpr std::size_t kResult = 7;

DefinedContour Follow(const Arguments& call, const Picture& picture, std::size_t most = SIZE_MAX) {
  const double threshold = call.Number(5);
  const bool above = call.Number(4) == 0;
  const Scene scene = {picture.width, picture.height,
                       [&](int x, int y) {
                         const auto level = static_cast<double>(picture.At(x, y));
                         return above ? level >= threshold : level <= threshold;
                       },
                       most};
  return DefineContour(scene, static_cast<int>(call.Number(1)), static_cast<int>(call.Number(2)),
                       static_cast<int>(call.Number(3)), call.Number(6) == 1);
}

// `third` are the numbers behind column and row: none, levels, or directions where wanted.
void Contour(const Arguments& call, Outcome& outcome, bool hasThird) {
  const Picture& picture = outcome.Image(0);
  const DefinedContour contour = Follow(call, picture);
  Elements& path = outcome.Vector(kResult);
  path.values.clear();
  path.closed = contour.closed;
  for (const auto& [x, y, direction] : contour.points) {
    path.values.insert(path.values.end(), {1.0 * x, 1.0 * y});
    if (!hasThird) continue;
    const bool codes = call.Number(kResult + 1) != 0;
    path.values.push_back(codes ? direction : static_cast<double>(picture.At(x, y)));
  }
  if (contour.error != LX_OK) outcome.Refuse(contour.error);
}

void UntypedContour(const Arguments& call, Outcome& outcome) {
  const Picture& picture = outcome.Image(0);
  Elements& vector = outcome.Vector(kResult);
  const bool hasNoRoom = vector.values.empty() && vector.spare == 0;
  if (vector.kind == LX_VECTOR_CONTOUR && hasNoRoom) return outcome.Refuse(LX_ERROR_VECTOR_NO_DATA);
  const DefinedContour contour = Follow(call, picture, picture.values.size() / 8);
  vector.values.clear();
  vector.kind = LX_VECTOR_CONTOUR;
  vector.dataSize = LX_DATA_SIZE_32;
  vector.dataType = LX_DATA_SIGNED;
  vector.groupLength = 3;
  for (const auto& [x, y, direction] : contour.points) {
    vector.values.insert(vector.values.end(), {1.0 * x, 1.0 * y, 1.0 * direction});
  }
  if (contour.error != LX_OK) outcome.Refuse(contour.error);
}

// Levels from the picture to the path, or back.
void Exchange(Outcome& outcome, bool toImage) {
  Picture& picture = outcome.Image(0);
  Elements& path = outcome.Vector(1);
  const auto components = static_cast<std::size_t>(picture.components);
  for (std::size_t i = 0; i < path.values.size(); i += 2 + components) {
    const double x = path.values[i];
    const double y = path.values[i + 1];
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) {
      outcome.Refuse(LX_ERROR_POINT_OUTSIDE_IMAGE);
      continue;
    }
    for (std::size_t k = 0; k < components; ++k) {
      Value& pixel = picture.At(static_cast<int>(x), static_cast<int>(y), static_cast<int>(k));
      double& level = path.values[i + 2 + k];
      if (toImage) pixel = static_cast<Value>(level);
      level = static_cast<double>(pixel);
    }
  }
}

Reference ContourReference(const std::string& pixel, const std::string& result, bool hasThird) {
  const std::string task =
      ">*, CONTOUR_MODE, int, int, CONTOUR_THRESHOLD, unsigned int, CONNEXITY, ";
  return Measured("PicContour(LxROI<" + pixel + task + result + ")",
                  [=](const Arguments& call, Outcome& outcome) {
                    if (result == "LxVector*") return UntypedContour(call, outcome);
                    Contour(call, outcome, hasThird);
                  });
}

}  // namespace

std::vector<Reference> ContourReferences() {
  std::vector<Reference> made = {ContourReference("LxBW8", "LxPathVector*", false),
                                 ContourReference("LxBW8", "LxBW8PathVector*, int", true),
                                 ContourReference("LxBW8", "LxVector*", true),
                                 ContourReference("LxBW16", "LxPathVector*", false),
                                 ContourReference("LxBW16", "LxBW16PathVector*, int", true)};
  for (const std::string pixel : {"BW8", "BW16", "C24"}) {
    const std::string arguments = "(LxROI<Lx" + pixel + ">*, Lx" + pixel + "PathVector*)";
    for (const bool toImage : {false, true}) {
      made.push_back(Measured(
          (toImage ? "PicPathToImage" : "PicImageToPath") + arguments,
          [toImage](const Arguments& /*call*/, Outcome& outcome) { Exchange(outcome, toImage); }));
    }
  }
  return made;
}

}  // namespace lx::test
