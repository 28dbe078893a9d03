// SPDX-License-Identifier: Apache-2.0
#include "support/reference.h"

namespace lx::test {

std::vector<Reference> ContourReferences() { return {}; }

}  // namespace lx::test
