// SPDX-License-Identifier: Apache-2.0
#include "geometry/linear_system.h"

#include "foundation/frame.h"

namespace lx::geometry {

namespace {

// The rule of Sarrus.
long double Determinant(const std::array<Triple, 3>& m) {
  const auto product = [&m](std::size_t i, std::size_t j, std::size_t k) {
    return static_cast<long double>(m[0][i]) * m[1][j] * m[2][k];
  };
  return product(0, 1, 2) + product(1, 2, 0) + product(2, 0, 1) - product(2, 1, 0) -
         product(0, 2, 1) - product(1, 0, 2);
}

}  // namespace

bool SolveSystem(const std::array<Triple, 3>& rows, const Triple& right, Triple& factors) {
  const auto determinant = static_cast<double>(Determinant(rows));
  if (!Require(determinant != 0.0, LX_ERROR_SINGULAR_SYSTEM)) return false;
  for (std::size_t k = 0; k < 3; ++k) {
    std::array<Triple, 3> replaced = rows;
    replaced[k] = right;
    factors[k] = static_cast<float>(Determinant(replaced) / determinant);
  }
  return true;
}

}  // namespace lx::geometry
