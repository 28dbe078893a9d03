// SPDX-License-Identifier: Apache-2.0
// Vectors of any length for benchmarks.
#pragma once

#include "bench/subject.h"

namespace lx::bench {

/// Gives vector parameter `index` of a call `form.length` elements, or room for as many groups,
/// unless its length is not free.
void SetLength(test::Arguments& call, const catalogue::Parameter& parameter, std::size_t index,
               const Form& form, Random& random);

}  // namespace lx::bench
