// SPDX-License-Identifier: Apache-2.0
#include "support/trial/kernels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace lx::test {

namespace {

struct KernelSize {
  short columns;
  short rows;
};

constexpr std::array kFixedSizes = {KernelSize{3, 3}, KernelSize{5, 5}, KernelSize{7, 7}};
constexpr std::array kOtherSizes = {
    KernelSize{1, 1}, KernelSize{2, 2}, KernelSize{4, 4}, KernelSize{1, 5},  KernelSize{5, 1},
    KernelSize{2, 3}, KernelSize{6, 3}, KernelSize{9, 9}, KernelSize{1, 12}, KernelSize{31, 1}};
constexpr std::array kGains = {1.0F, 1.0F, 0.5F, -1.0F, 2.75F, 0.0F, 40.0F, 3000.0F};
// Negative offsets are those modulo 2^32.
constexpr std::array kOffsets = {0, 0, 1, 100, 255, 40000, -1, -37, -40000, 1 << 24};
constexpr std::array<short, 10> kRectifiers = {0, 0, 1, 1, 2, 2, 2, 3, 3, 4};
constexpr std::array kOutsideValues = {0U, 0U, 1U, 128U, 255U, 65535U, 100000U};

void DrawCoefficients(LxKernel& kernel, Random& random) {
  const auto count = static_cast<std::size_t>(kernel.GetSizeX() * kernel.GetSizeY());
  float* const data = kernel.GetDataPtr();
  const std::size_t style = random.Below(4);
  for (std::size_t i = 0; i < count; ++i) {
    const auto whole = static_cast<float>(random.Between(-4, 4));
    const auto fraction = static_cast<float>(random.Real(-1, 1));
    data[i] = style == 0 ? fraction : style == 1 ? std::abs(whole) : whole;
  }
  if (style < 3) return;
  float rest = 0;
  for (std::size_t i = 1; i < count; ++i) rest += data[i];
  data[0] = -rest;  // an edge kernel, whose coefficients cancel out
}

void DrawSettings(LxKernel& kernel, Random& random) {
  kernel.SetGain(random.Pick(kGains));
  kernel.SetOffset(static_cast<unsigned>(random.Pick(kOffsets)));
  kernel.SetOutsideValue(random.Pick(kOutsideValues));
}

std::shared_ptr<LxKernel> DrawOfSize(KernelSize size, Random& random) {
  auto kernel = std::make_shared<LxKernel>(size.columns, size.rows, 1.0F, 0, RECTIFIER_POSITIVE, 0);
  DrawCoefficients(*kernel, random);
  DrawSettings(*kernel, random);
  kernel->SetRectifier(random.Pick(kRectifiers));
  return kernel;
}

}  // namespace

std::shared_ptr<LxKernel> MakeKernel(int columns, const std::vector<float>& coefficients) {
  const auto rows = static_cast<short>(static_cast<int>(coefficients.size()) / columns);
  auto kernel =
      std::make_shared<LxKernel>(static_cast<short>(columns), rows, 1.0F, 0, RECTIFIER_POSITIVE, 0);
  std::copy(coefficients.begin(), coefficients.end(), kernel->GetDataPtr());
  return kernel;
}

std::shared_ptr<LxKernel> StandardKernel() {
  return MakeKernel(
      5, {1, 4, 6, 4, 1, 4, 16, 24, 16, 4, 6, 24, 36, 24, 6, 4, 16, 24, 16, 4, 1, 4, 6, 4, 1});
}

std::shared_ptr<LxKernel> PresetKernel(KERNEL_TYPE type) {
  return std::make_shared<LxKernel>(type);
}

std::shared_ptr<LxKernel> DrawRowKernel(Random& random) {
  return random.Below(12) == 0 ? DrawKernel(random) : DrawOfSize({3, 1}, random);
}

std::shared_ptr<LxKernel> DrawPattern(Random& random) {
  if (random.Below(8) == 0) return DrawKernel(random);
  auto kernel = PresetKernel(random.Below(2) == 0 ? KERNEL_THIN : KERNEL_THICK);
  if (random.Below(3) > 0) {
    // The fewer cells count, the more pixels match.
    const std::size_t counting = 1 + random.Below(9);
    for (int i = 0; i < 9; ++i) {
      const bool counts = random.Below(9) < counting;
      kernel->GetDataPtr()[i] = counts ? static_cast<float>(random.Below(2)) : -1.0F;
    }
  }
  kernel->SetOutsideValue(random.Pick(kOutsideValues));
  return kernel;
}

std::shared_ptr<LxKernel> DrawKernel(Random& random) {
  switch (random.Below(4)) {
    case 0: {
      auto kernel = std::make_shared<LxKernel>(static_cast<KERNEL_TYPE>(random.Between(1, 14)));
      if (random.Below(2) == 0) DrawSettings(*kernel, random);
      return kernel;
    }
    case 1:
      return DrawOfSize(random.Pick(kOtherSizes), random);
    default:
      return DrawOfSize(random.Pick(kFixedSizes), random);
  }
}

std::string KernelText(LxKernel& kernel) {
  std::ostringstream text;
  text.precision(9);
  text << kernel.GetSizeX() << 'x' << kernel.GetSizeY() << '{';
  const int count = kernel.GetSizeX() * kernel.GetSizeY();
  for (int i = 0; i < count; ++i) text << (i > 0 ? " " : "") << kernel.GetDataPtr()[i];
  text << "} gain=" << kernel.GetGain() << " offset=" << static_cast<int>(kernel.GetOffset())
       << " rectifier=" << kernel.GetRectifier() << " outside=" << kernel.GetOutsideValue();
  return text.str();
}

}  // namespace lx::test
