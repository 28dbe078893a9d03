// SPDX-License-Identifier: Apache-2.0
// Single cases of the sweep, for arguments and sizes that it does not draw.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/sweep.h"

namespace lx::test {

/// The operation of this name on images of this pixel type.
const Operation& OperationOn(std::string_view function, std::string_view pixel);

/// Runs the case on every path; "" when all of them give what the reference gives.
std::string CaseFailure(const Operation& operation, const Arguments& call, Size size,
                        Content content = Content::kNoise, Onto onto = Onto::kNone);

/// The same with numbers for the last parameters.
std::string NumbersFailure(const Operation& operation, const std::vector<double>& numbers,
                           Size size, Content content = Content::kNoise, Onto onto = Onto::kNone);

}  // namespace lx::test
