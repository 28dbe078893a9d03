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

TEST(Kernel, ValuesThatAreNoPreset) {
  for (const int type : {0, 15, -1, 1000}) {
    LxKernel made(static_cast<KERNEL_TYPE>(type));
    EXPECT_EQ(TakeOutcome(), "1011 LxKernel::SetKernel");
    EXPECT_EQ(SettingsOf(made), (Settings{3, 3, 9, 0, 0, 0, 0}));
  }
  LxKernel kernel(5, 5, 2, 3, RECTIFIER_ABSOLUTE, 4);
  std::fill_n(kernel.GetDataPtr(), 25, 7.0F);
  kernel.SetKernel(static_cast<KERNEL_TYPE>(15));
  EXPECT_EQ(TakeOutcome(), "1011 LxKernel::SetKernel");
  EXPECT_EQ(SettingsOf(kernel), (Settings{3, 3, 25, 0, 0, 0, 0}));
  EXPECT_EQ(Coefficients(kernel), std::vector<float>(9, 7.0F));
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

TEST(Kernel, ListsFillRowByRow) {
  LxKernel kernel(1, 1, 9, 8, 1, 7);
  kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(Coefficients(kernel), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(SettingsOf(kernel), (Settings{3, 3, 9, 9, 8, 1, 7}));
  kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
                       22, 23, 24, 25);
  EXPECT_EQ(SettingsOf(kernel), (Settings{5, 5, 25, 9, 8, 1, 7}));
  kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
                       22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40,
                       41, 42, 43, 44, 45, 46, 47, 48, 49);
  EXPECT_EQ(SettingsOf(kernel), (Settings{7, 7, 49, 9, 8, 1, 7}));
  const auto values = Coefficients(kernel);
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], static_cast<float>(i + 1));
  // Storage never shrinks.
  const float* const data = kernel.GetDataPtr();
  kernel.SetKernel(KERNEL_SOBEL_X);
  EXPECT_EQ(kernel.GetDataPtr(), data);
  EXPECT_EQ(SettingsOf(kernel), (Settings{3, 3, 49, 1, 0, 2, 0}));
}

TEST(Kernel, Elements) {
  LxKernel kernel(KERNEL_SOBEL_Y);
  float value = 0;
  kernel.GetKernelData(1, 0, value);
  EXPECT_EQ(value, -2);
  kernel.GetKernelData(1, 2, value);
  EXPECT_EQ(value, 2);
  kernel.SetSizeX(2);
  kernel.SetKernelData(1, 2, 5);
  EXPECT_EQ(kernel.GetDataPtr()[5], 5);
  kernel.SetSizeX(3);

  const auto outcome = [&value](LxKernel& of, int x, int y) {
    value = 77;
    of.GetKernelData(x, y, value);
    const std::string got = TakeOutcome();
    EXPECT_EQ(value, 77);
    of.SetKernelData(x, y, 1);
    return got + ", " + TakeOutcome();
  };
  const std::string column = "1011 LxKernel::GetKernelData, 1011 LxKernel::SetKernelData";
  const std::string row = "1012 LxKernel::GetKernelData, 1012 LxKernel::SetKernelData";
  EXPECT_EQ(outcome(kernel, 3, 0), column);
  EXPECT_EQ(outcome(kernel, -1, 3), column);
  EXPECT_EQ(outcome(kernel, 0, 3), row);
  EXPECT_EQ(outcome(kernel, 2, -1), row);
  LxKernel empty;
  EXPECT_EQ(outcome(empty, 0, 0), "1704 LxKernel::GetKernelData, 1704 LxKernel::SetKernelData");
}

TEST(Kernel, SizesGrowTheStorage) {
  LxKernel kernel(KERNEL_SOBEL_Y);
  const float* const data = kernel.GetDataPtr();
  kernel.SetSizeX(2);
  kernel.SetSizeY(4);
  EXPECT_EQ(kernel.GetDataPtr(), data);
  EXPECT_EQ(Coefficients(kernel), (std::vector<float>{-1, -2, -1, 0, 0, 0, 1, 2}));
  EXPECT_EQ(kernel.GetAllocatedSize(), 9U);
  kernel.SetSizeX(5);
  EXPECT_EQ(kernel.GetAllocatedSize(), 20U);
  kernel.SetSizeY(5);
  EXPECT_EQ(kernel.GetAllocatedSize(), 25U);
  EXPECT_EQ(TakeOutcome(), "0");
  kernel.SetAllocatedSize(24);
  EXPECT_EQ(kernel.GetAllocatedSize(), 25U);
  kernel.SetAllocatedSize(26);
  EXPECT_EQ(kernel.GetAllocatedSize(), 26U);
  std::fill_n(kernel.GetDataPtr(), 26, 1.0F);
  // Sizes are taken as they come.
  kernel.SetSizeX(-3);
  kernel.SetSizeY(0);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(kernel.GetSizeX(), -3);
  EXPECT_EQ(kernel.GetSizeY(), 0);
  EXPECT_EQ(kernel.GetAllocatedSize(), 26U);
}

TEST(Kernel, EveryMemberResetsTheState) {
  LxKernel kernel(KERNEL_SOBEL_X);
  float value = 0;
  int member = 0;
  const auto expectReset = [&member](const auto& call) {
    LxSetError(LX_ERROR_INTERNAL);
    LxTraceError("before");
    call();
    EXPECT_EQ(TakeOutcome(), "0") << "call " << member;
    ++member;
  };
  expectReset([&] { kernel.GetSizeX(); });
  expectReset([&] { kernel.GetSizeY(); });
  expectReset([&] { kernel.GetGain(); });
  expectReset([&] { kernel.GetOffset(); });
  expectReset([&] { kernel.GetRectifier(); });
  expectReset([&] { kernel.GetOutsideValue(); });
  expectReset([&] { kernel.GetAllocatedSize(); });
  expectReset([&] { kernel.GetDataPtr(); });
  expectReset([&] { kernel.SetGain(2); });
  expectReset([&] { kernel.SetOffset(3); });
  expectReset([&] { kernel.SetRectifier(-4); });
  expectReset([&] { kernel.SetOutsideValue(5); });
  expectReset([&] { kernel.SetSizeX(2); });
  expectReset([&] { kernel.SetSizeY(1); });
  expectReset([&] { kernel.SetAllocatedSize(1); });
  expectReset([&] { kernel.SetKernelData(0, 0, 1); });
  expectReset([&] { kernel.GetKernelData(0, 0, value); });
  expectReset([&] { const LxKernel copy(kernel); });
  expectReset([&] { const LxKernel empty; });
  EXPECT_EQ(SettingsOf(kernel), (Settings{2, 1, 9, 2, 3, -4, 5}));
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
    EXPECT_EQ(FailingOutcome([&] { assigned.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9); }),
              "1303 LxKernel::SetKernelData 3x3");
    EXPECT_EQ(FailingOutcome([&] {
                kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18,
                                     19, 20, 21, 22, 23, 24, 25);
              }),
              "1303 LxKernel::SetKernelData 5x5");
    expectEmpty(kernel);
    EXPECT_EQ(FailingOutcome([&] {
                kernel.SetKernelData(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18,
                                     19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34,
                                     35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49);
              }),
              "1303 LxKernel::SetKernelData 7x7");
    kernel.SetKernel(KERNEL_SOBEL_X);
    EXPECT_EQ(FailingOutcome([&] { kernel.SetSizeX(5); }),
              "1303 LxKernel::SetAllocatedSize < LxKernel::SetSizeX");
    EXPECT_EQ(kernel.GetSizeX(), 3);
    expectEmpty(kernel);
    kernel.SetKernel(KERNEL_SOBEL_X);
    EXPECT_EQ(FailingOutcome([&] { kernel.SetSizeY(5); }),
              "1303 LxKernel::SetAllocatedSize < LxKernel::SetSizeY");
    EXPECT_EQ(kernel.GetSizeY(), 3);
    EXPECT_EQ(FailingOutcome([&] { kernel.SetAllocatedSize(1); }),
              "1303 LxKernel::SetAllocatedSize");
  }
  EXPECT_EQ(LiveAllocations(), live);
}

}  // namespace
}  // namespace lx::test
