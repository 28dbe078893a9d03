// SPDX-License-Identifier: Apache-2.0
// Synthetic camera pictures of a product.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/lxpic/common/words.h"
#include "tools/lxpic/scene/defect.h"
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
};

struct SynthPicture {
  ImageValue image;  ///< bw8, or c24
  std::vector<Defect> defects;
};

/// The names that SynthOptions::scene may have.
std::vector<std::string> SceneNames();

/// The same options give the same picture. Throws Failure.
SynthPicture Synthesise(const SynthOptions& options);

}  // namespace lx::tool
