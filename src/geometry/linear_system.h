// SPDX-License-Identifier: Apache-2.0
// Three linear equations.
#pragma once

#include <array>

namespace lx::geometry {

using Triple = std::array<float, 3>;

// The factors of the rows that make up `right`: for every column i,
// sum of factors[k] * rows[k][i] = right[i]. By Cramer's rule, with determinants in extended
// precision; a determinant of 0 sets LX_ERROR_SINGULAR_SYSTEM.
bool SolveSystem(const std::array<Triple, 3>& rows, const Triple& right, Triple& factors);

}  // namespace lx::geometry
