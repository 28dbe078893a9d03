// SPDX-License-Identifier: Apache-2.0
// The kernels behind the predefined filters. Images are not empty; `scratch` has FilterScratch()
// bytes.
#pragma once

#include "convolution/filter_list.h"
#include "foundation/neighbourhood.h"

namespace lx::convolution {

// No filter keeps more than two planes.
inline std::size_t FilterScratch(const Neighbourhood& map, std::size_t elementBytes) {
  return PassLayout(map, elementBytes, 2).Bytes();
}

void FilterBytes(Filter filter, const Neighbourhood& map, std::size_t passes,
                 std::uint8_t* scratch);
void FilterWords(Filter filter, const Neighbourhood& map, std::size_t passes,
                 std::uint8_t* scratch);
void FilterColours(Filter filter, const Neighbourhood& map, std::size_t passes,
                   std::uint8_t* scratch);

}  // namespace lx::convolution
