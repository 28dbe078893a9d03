// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/failing.h"

namespace lx::test {
namespace {

std::vector<float> Coefficients(LxKernel& kernel) {
  const float* const data = kernel.GetDataPtr();
  return {data, data + kernel.GetSizeX() * kernel.GetSizeY()};
}

// Size, capacity, gain, offset, rectifier and outside value.
using Settings = std::array<double, 7>;

Settings SettingsOf(LxKernel& kernel) {
  return {double(kernel.GetSizeX()),         double(kernel.GetSizeY()),
          double(kernel.GetAllocatedSize()), double(kernel.GetGain()),
          double(kernel.GetOffset()),        double(kernel.GetRectifier()),
          double(kernel.GetOutsideValue())};
}

TEST(Kernel, Presets) {
  struct Preset {
    KERNEL_TYPE type;
    std::vector<float> coefficients;
    bool isPattern;
  };
  const std::vector<Preset> presets = {
      {KERNEL_THIN, {0, 0, 0, -1, 1, -1, 1, 1, 1}, true},
      {KERNEL_THICK, {0, 0, 0, -1, 0, -1, 1, 1, 1}, true},
      {KERNEL_SQUARE, {1, 1, 1, 1, 1, 1, 1, 1, 1}, true},
      {KERNEL_SOBEL_X, {-1, 0, 1, -2, 0, 2, -1, 0, 1}, false},
      {KERNEL_SOBEL_Y, {-1, -2, -1, 0, 0, 0, 1, 2, 1}, false},
      {KERNEL_PREWITT_X, {-1, 0, 1, -1, 0, 1, -1, 0, 1}, false},
      {KERNEL_PREWITT_Y, {-1, -1, -1, 0, 0, 0, 1, 1, 1}, false},
      {KERNEL_LAPLACIAN_4, {0, 1, 0, 1, -4, 1, 0, 1, 0}, false},
      {KERNEL_LAPLACIAN_8, {1, 1, 1, 1, -8, 1, 1, 1, 1}, false},
      {KERNEL_GAUSSIAN, {1, 2, 1, 2, 4, 2, 1, 2, 1}, false},
      {KERNEL_RING, {1, 1, 1, 1, 0, 1, 1, 1, 1}, false},
      {KERNEL_UNIFORM, {1, 1, 1, 1, 1, 1, 1, 1, 1}, false},
      {KERNEL_HIGHPASS_1, {0, -1, 0, -1, 5, -1, 0, -1, 0}, false},
      {KERNEL_HIGHPASS_2, {-1, -1, -1, -1, 9, -1, -1, -1, -1}, false}};
  for (std::size_t i = 0; i < presets.size(); ++i) {
    const Preset& preset = presets[i];
    EXPECT_EQ(preset.type, static_cast<int>(i) + 1);
    LxKernel kernel(preset.type);
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(Coefficients(kernel), preset.coefficients) << preset.type;
    const Settings expected =
        preset.isPattern ? Settings{3, 3, 9, 0, 0, 0, 0} : Settings{3, 3, 9, 1, 0, 2, 0};
    EXPECT_EQ(SettingsOf(kernel), expected) << preset.type;
  }
}

TEST(Kernel, Constructors) {
  LxKernel empty;
  EXPECT_EQ(SettingsOf(empty), (Settings{0, 0, 0, 1, 0, 2, 0}));
  EXPECT_EQ(empty.GetDataPtr(), nullptr);
  LxKernel sized(4, 3, -2.5F, 0xFFFFFFFF, 3, 255);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(SettingsOf(sized), (Settings{4, 3, 12, -2.5, 4294967295.0, 3, 255}));
  ASSERT_NE(sized.GetDataPtr(), nullptr);
  std::fill_n(sized.GetDataPtr(), 12, 1.0F);
  LxKernel impossible(-1, 3, 1, 0, 2, 0);
  EXPECT_EQ(TakeOutcome(), "1303 LxKernel::LxKernel");
  EXPECT_EQ(impossible.GetAllocatedSize(), 0U);
  EXPECT_EQ(impossible.GetDataPtr(), nullptr);
}

TEST(Kernel, SizesAreTakenAsTheyCome) {
  LxKernel kernel(KERNEL_SOBEL_Y);
  kernel.SetSizeX(-3);
  kernel.SetSizeY(0);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(SettingsOf(kernel), (Settings{-3, 0, 9, 1, 0, 2, 0}));
}

TEST(Kernel, CopiesAreDeep) {
  LxKernel kernel(3, 2, 4, 5, 1, 6);
  std::fill_n(kernel.GetDataPtr(), 6, 8.0F);
  LxKernel copy(kernel);
  LxKernel assigned(KERNEL_UNIFORM);
  assigned = kernel;
  kernel.SetKernelData(0, 0, 1);
  for (LxKernel* const each : {&copy, &assigned}) {
    EXPECT_EQ(Coefficients(*each), std::vector<float>(6, 8.0F));
    EXPECT_EQ(each->GetSizeX(), 3);
    EXPECT_EQ(each->GetOutsideValue(), 6U);
  }
  LxKernel& self = copy;
  copy = self;
  EXPECT_EQ(Coefficients(copy), std::vector<float>(6, 8.0F));
  copy = LxKernel();
  EXPECT_EQ(copy.GetDataPtr(), nullptr);
  EXPECT_EQ(copy.GetAllocatedSize(), 0U);
  EXPECT_EQ(TakeOutcome(), "0");
}

TEST(Kernel, FailingAllocations) {
  const auto live = LiveAllocations();
  {
    LxKernel kernel(KERNEL_SOBEL_X);
    const auto expectEmpty = [](LxKernel& of) {
      EXPECT_EQ(of.GetDataPtr(), nullptr);
      EXPECT_EQ(of.GetAllocatedSize(), 0U);
    };
    EXPECT_EQ(FailingOutcome([&] { LxKernel made(2, 2, 1, 0, 2, 0); }), "1303 LxKernel::LxKernel");
    EXPECT_EQ(FailingOutcome([&] { LxKernel made(KERNEL_SOBEL_X); }), "1303 LxKernel::SetKernel");
    EXPECT_EQ(FailingOutcome([&] { LxKernel made(kernel); }), "1303 LxKernel::LxKernel");
    LxKernel assigned;
    EXPECT_EQ(FailingOutcome([&] { assigned = kernel; }), "1303 LxKernel::operator=");
    expectEmpty(assigned);
  }
  EXPECT_EQ(LiveAllocations(), live);
}

}  // namespace
}  // namespace lx::test
