// SPDX-License-Identifier: Apache-2.0
#include "bench/family.h"

#include <map>
#include <string>

namespace lx::bench {

const Family& FamilyOf(const Operation& operation) {
  static const std::map<std::string, const Family*> families = {
      {"colour", &kPointFamily},
      {"point", &kPointFamily},
      {"convolution", &kConvolutionFamily},
      {"histogram", &kHistogramFamily},
      {"morphology", &kMorphologyFamily}};
  return *families.at(operation.family);
}

}  // namespace lx::bench
