// SPDX-License-Identifier: Apache-2.0
// Kernels for the operations that take one.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/random.h"
#include "lxpic/lxpic.h"

namespace lx::test {

/// A kernel of these coefficients, row by row, with gain 1 and rectifier 2.
std::shared_ptr<LxKernel> MakeKernel(int columns, const std::vector<float>& coefficients);
/// The 5 × 5 binomial: a kernel that every operation takes and none takes in place.
std::shared_ptr<LxKernel> StandardKernel();
std::shared_ptr<LxKernel> PresetKernel(KERNEL_TYPE type);
/// Mostly a kernel of one row of three.
std::shared_ptr<LxKernel> DrawRowKernel(Random& random);
/// A pattern for thinning: mostly a 3 × 3 kernel of -1, 0 and 1.
std::shared_ptr<LxKernel> DrawPattern(Random& random);
/// A preset, or random coefficients; sizes, gains, offsets, rectifiers and outside values of every
/// kind.
std::shared_ptr<LxKernel> DrawKernel(Random& random);
/// Size, coefficients and settings in one line.
std::string KernelText(LxKernel& kernel);

}  // namespace lx::test
