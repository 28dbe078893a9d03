// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

std::vector<Operation> FrequencyOperations() { return Describe("frequency", {}); }

}  // namespace lx::catalogue
