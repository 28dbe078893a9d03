// SPDX-License-Identifier: Apache-2.0
#include "bench/family.h"

#include <hwy/targets.h>

#include <map>
#include <set>
#include <string>

namespace lx::bench {

const Target& Targets::Here() const {
  return (hwy::SupportedTargets() & HWY_AVX3_DL) != 0 ? wide : narrow;
}

const Family& FamilyOf(const Operation& operation) {
  static const std::map<std::string, const Family*> families = {
      {"colour", &kPointFamily},
      {"point", &kPointFamily},
      {"convolution", &kConvolutionFamily},
      {"histogram", &kHistogramFamily},
      {"morphology", &kMorphologyFamily}};
  // Small neighbourhoods have a file of their own.
  static const std::set<std::string> nonlinear = {
      "PicMedian", "PicDistance",    "PicErode",       "PicDilate", "PicOpen",
      "PicClose",  "PicWhiteTopHat", "PicBlackTopHat", "PicThin",   "PicThick"};
  if (nonlinear.count(operation.function) != 0) return kNonlinearFamily;
  return *families.at(operation.family);
}

}  // namespace lx::bench
