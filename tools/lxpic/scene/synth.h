// SPDX-License-Identifier: Apache-2.0
// Synthetic camera pictures of a product.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/lxpic/common/words.h"
#include "tools/lxpic/scene/defect.h"
#include "tools/lxpic/scene/pose.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

struct SynthOptions {
  std::string scene = "label";
  Size size{1200, 900};
  int defects = 0;
  std::uint64_t seed = 1;  ///< of the defects and the noise; the scene itself never changes
  double noise = 2;        ///< standard deviation in grey levels
  double light = 12;       ///< how many percent darker the darkest corner is
  bool colour = false;
  Pose pose = {};  ///< how the product lies
  /// How far to the right the product has moved when the odd rows are exposed, in pixels.
  double fieldShift = 0;
};

struct SynthPicture {
  ImageValue image;  ///< bw8, or c24
  std::vector<Defect> defects;
  std::vector<Point> marks;  ///< three places of the product, by which it can be registered
};

/// The names that SynthOptions::scene may have.
std::vector<std::string> SceneNames();

/// A defect of a picture with these options, with the box that it has where the product lies
/// straight.
Defect LaidStraight(const Defect& defect, const SynthOptions& options);

/// The same options give the same picture. Throws Failure.
SynthPicture Synthesise(const SynthOptions& options);

/// `count` pictures of the same, which differ in their noise; the first one is that of
/// Synthesise(). Throws Failure.
void SynthesiseFrames(const SynthOptions& options, int count,
                      const std::function<void(const SynthPicture&)>& take);

}  // namespace lx::tool
