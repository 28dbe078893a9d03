// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "convolution/chosen_case.h"
#include "support/failing.h"
#include "support/filled.h"
#include "support/trial/kernels.h"

namespace lx::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// The result in the middle of an image of one value.
int OnConstant(LxKernel& kernel, int level) {
  Filled<LxBW8> image(9, 9, static_cast<std::uint8_t>(level));
  Filled<LxBW8> result(9, 9, 77);
  PicConvolKernel(&image, &result, &kernel);
  EXPECT_EQ(TakeOutcome(), "0");
  return result.GetPixel(4, 4).value;
}

TEST(KernelConvolution, EachWayRoundsInItsOwnFashion) {
  LxKernel uniform(KERNEL_UNIFORM);
  EXPECT_EQ(OnConstant(uniform, 200), 196);
  uniform.SetRectifier(RECTIFIER_ABSOLUTE);
  EXPECT_EQ(OnConstant(uniform, 200), 199);
  uniform.SetRectifier(RECTIFIER_NONE);
  EXPECT_EQ(OnConstant(uniform, 200), 200);
}

TEST(KernelConvolution, OffsetsAndRectifiers) {
  LxKernel small(KERNEL_UNIFORM);
  small.SetOffset(128);
  EXPECT_EQ(OnConstant(small, 100), 98);  // which takes no offset
  const auto large = MakeKernel(5, std::vector<float>(25, 1.0F));
  large->SetOffset(50);
  EXPECT_EQ(OnConstant(*large, 100), 149);
  large->SetRectifier(RECTIFIER_NEGATIVE);
  EXPECT_EQ(OnConstant(*large, 100), 0);
  large->SetOffset(0U - 120);
  EXPECT_EQ(OnConstant(*large, 100), 20);
  large->SetRectifier(RECTIFIER_ABSOLUTE);
  EXPECT_EQ(OnConstant(*large, 100), 21);
  large->SetRectifier(7);
  EXPECT_EQ(OnConstant(*large, 100), 77);
  // On the real way every rectifier that has no meaning leaves the sum alone.
  const auto odd = MakeKernel(4, std::vector<float>(16, 1.0F));
  odd->SetRectifier(7);
  EXPECT_EQ(OnConstant(*odd, 100), 100);
  odd->SetOffset(0x7FFFFFFF);
  EXPECT_EQ(OnConstant(*odd, 100), 0);
  odd->SetOffset(0U - 30);
  EXPECT_EQ(OnConstant(*odd, 100), 70);
}

// The largest offsets, and sums that they bring into the range of pixels and just beyond it.
TEST(KernelConvolution, RealSumsMeetTheirOffsets) {
  const Operation& operation = OperationOn("PicConvolKernel", "LxBW16");
  for (const double offset : {-2147483648.0, -1073741825.0, -1073741824.0, 1e6, 2147483647.0}) {
    for (const int rectifier : {RECTIFIER_NONE, RECTIFIER_NEGATIVE, RECTIFIER_ABSOLUTE}) {
      Arguments call(operation);
      // A product of 65535 brings the sum to the offset, and a few grey levels around it.
      const auto kernel = MakeKernel(2, {static_cast<float>(-offset / 65535), 0, 0, 4});
      kernel->SetGain(static_cast<float>(4 - offset / 65535));  // undoes the normalisation
      kernel->SetOffset(static_cast<unsigned>(static_cast<std::int64_t>(offset)));
      kernel->SetRectifier(static_cast<short>(rectifier));
      call.SetKernel(2, kernel);
      EXPECT_EQ(CaseFailure(operation, call, {40, 9}, Content::kExtremes), "") << offset;
    }
  }
}

TEST(KernelConvolution, ValuesBeyondEveryRange) {
  const auto real = MakeKernel(4, std::vector<float>(16, 1.0F));
  const auto fixed = StandardKernel();
  LxKernel positive(KERNEL_UNIFORM);
  for (LxKernel* const kernel : {real.get(), fixed.get(), &positive}) {
    kernel->SetGain(kNan);
    EXPECT_EQ(OnConstant(*kernel, 100), 0);
  }
  real->SetGain(1e30F);
  EXPECT_EQ(OnConstant(*real, 100), 255);
  real->SetGain(-1e30F);
  EXPECT_EQ(OnConstant(*real, 100), 0);
  real->SetGain(1);
  real->SetOutsideValue(0xFFFFFFFF);
  Filled<LxBW8> image(2, 2, 0);
  Filled<LxBW8> result(2, 2, 0);
  PicConvolKernel(&image, &result, real.get());
  EXPECT_EQ(result.GetPixel(0, 0), 255);
}

// Coefficients of one and of two digits of 16 bits, and beyond 32; rows that mirror each other.
TEST(KernelConvolution, CoefficientsOfAnySize) {
  for (const char* const pixel : {"LxBW8", "LxBW16"}) {
    for (const int size : {3, 5, 7}) {
      Random random("coefficients");
      for (const float gain : {0.9F, -5.0F, 300.0F, 1e6F}) {
        std::vector<float> coefficients(static_cast<std::size_t>(size * size));
        for (float& k : coefficients) k = static_cast<float>(random.Real(-1, 2));
        const auto kernel = MakeKernel(size, coefficients);
        kernel->SetGain(gain * static_cast<float>(size));
        kernel->SetRectifier(RECTIFIER_ABSOLUTE);
        for (const char* const function : {"PicConvolKernel", "PicConvolSymmetricKernel"}) {
          const Operation& operation = OperationOn(function, pixel);
          Arguments call(operation);
          call.SetKernel(2, kernel);
          EXPECT_EQ(CaseFailure(operation, call, {70, 9}), "") << size << " " << gain;
        }
      }
    }
  }
}

// Coefficients that cancel out but for a little more, and a little less, than is normalised.
TEST(KernelConvolution, NormalisesWhatDoesNotCancelOut) {
  const Operation& operation = OperationOn("PicConvolKernel", "LxBW8");
  for (const float rest : {5e-5F, 1.1e-5F, 0.9e-5F, 0.0F}) {
    std::vector<float> coefficients(16, 1 + 2 * rest);
    std::fill_n(coefficients.begin(), 8, -1.0F);
    Arguments call(operation);
    call.SetKernel(2, MakeKernel(4, coefficients));
    EXPECT_EQ(CaseFailure(operation, call, {9, 9}), "") << rest;
  }
}

TEST(KernelConvolution, LargeKernelsAndOnesLargerThanTheImage) {
  for (const char* const pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const Operation& operation = OperationOn("PicConvolKernel", pixel);
    Random random("large kernels");
    // Cells far outside cost nothing, however many pixels there are.
    const auto far = MakeKernel(3001, std::vector<float>(3001 * 1001, 0.01F));
    far->SetOutsideValue(100);
    Arguments wide(operation);
    wide.SetKernel(2, far);
    EXPECT_EQ(CaseFailure(operation, wide, {2, 1}), "");
    for (const auto& [columns, rows] : {std::pair{33, 2}, std::pair{2, 64}, std::pair{70, 70}}) {
      Arguments call(operation);
      std::vector<float> coefficients(static_cast<std::size_t>(columns * rows));
      for (float& k : coefficients) k = static_cast<float>(random.Real(-1, 2));
      call.SetKernel(2, MakeKernel(columns, coefficients));
      EXPECT_EQ(CaseFailure(operation, call, {40, 9}), "");
      EXPECT_EQ(CaseFailure(operation, call, {3, 1}), "");
    }
  }
}

TEST(SymmetricKernel, ReadsItsOctantOnly) {
  const auto kernel = StandardKernel();
  const auto spoilt = StandardKernel();
  spoilt->SetKernelData(4, 0, 1000);
  spoilt->SetKernelData(0, 1, kNan);
  spoilt->SetKernelData(2, 4, -5);
  Filled<LxBW8> image(9, 9, 0);
  image.SetPixel(255, 4, 4);
  image.SetPixel(130, 0, 8);
  LxImage<LxBW8> expected(9, 9);
  LxImage<LxBW8> result(9, 9);
  PicConvolSymmetricKernel(&image, &expected, kernel.get());
  PicConvolSymmetricKernel(&image, &result, spoilt.get());
  for (int i = 0; i < 81; ++i)
    EXPECT_EQ(result.GetPixel(i % 9, i / 9), expected.GetPixel(i % 9, i / 9));
  EXPECT_EQ(expected.GetPixel(4, 4), 35);
}

// Both operations, and the outcome of each on the source, a kernel and a destination.
template <class T>
struct Engine {
  Filled<T> source{6, 6, T{}};
  Filled<T> destination{6, 6, T{}};

  std::string General(LxROI<T>* to, LxKernel* kernel) {
    PicConvolKernel(&source, to, kernel);
    return TakeOutcome();
  }
  std::string Symmetric(LxROI<T>* to, LxKernel* kernel) {
    PicConvolSymmetricKernel(&source, to, kernel);
    return TakeOutcome();
  }
};

// `general` and `symmetric` are what each operation traces, blank and innermost first.
template <class T>
void ExpectErrors(const std::string& general, const std::string& symmetric) {
  Engine<T> engine;
  LxROI<T>* const to = &engine.destination;
  EXPECT_EQ(engine.General(to, nullptr), "1700" + general);
  EXPECT_EQ(engine.Symmetric(to, nullptr), "1700" + symmetric);
  LxKernel empty;
  EXPECT_EQ(engine.General(to, &empty), "1700" + general);
  LxKernel flat(KERNEL_GAUSSIAN);
  flat.SetSizeY(0);
  EXPECT_EQ(engine.General(to, &flat), "1703" + general);
  EXPECT_EQ(engine.Symmetric(to, &flat), "1703" + symmetric);
  flat.SetSizeX(-3);
  flat.SetSizeY(-3);
  EXPECT_EQ(engine.General(to, &flat), "1703" + general);

  LxKernel plain(KERNEL_GAUSSIAN);
  plain.SetRectifier(RECTIFIER_NONE);
  EXPECT_EQ(engine.General(to, &plain), "0");
  EXPECT_EQ(engine.Symmetric(to, &plain), "1702" + symmetric);
  plain.SetSizeX(1);
  EXPECT_EQ(engine.Symmetric(to, &plain), "1702" + symmetric);
  plain.SetRectifier(RECTIFIER_ABSOLUTE);
  EXPECT_EQ(engine.Symmetric(to, &plain), "1703" + symmetric);
  const auto even = MakeKernel(4, std::vector<float>(16, 1.0F));
  EXPECT_EQ(engine.Symmetric(to, even.get()), "1703" + symmetric);
}

TEST(KernelConvolution, Errors) {
  ExpectErrors<LxBW8>(" PicConvolKernel BW8", " PicConvolSymmetricKernel");
  ExpectErrors<LxBW16>(" PicConvolKernel BW16", " PicConvolSymmetricKernel BW16");
  ExpectErrors<LxC24>(" PicConvolKernel BW8 < PicConvolKernel ( C24)",
                      " PicConvolSymmetricKernel < PicConvolSymmetricKernel ( C24)");
}

TEST(KernelConvolution, OrderOfChecks) {
  LxKernel empty;
  Engine<LxBW8> grey;
  LxImage<LxBW8> other(5, 6);
  EXPECT_EQ(grey.General(nullptr, &empty), "1700 PicConvolKernel BW8");
  EXPECT_EQ(grey.General(&other, nullptr), "1403 PicConvolKernel BW8");
  EXPECT_EQ(grey.Symmetric(&other, nullptr), "1700 PicConvolSymmetricKernel");
  EXPECT_EQ(grey.Symmetric(&other, &empty), "1703 PicConvolSymmetricKernel");
  empty.SetRectifier(RECTIFIER_NONE);
  EXPECT_EQ(grey.Symmetric(&other, &empty), "1702 PicConvolSymmetricKernel");
  // Its storage is lost where the image is too small for it, and then too small for the kernel.
  LxKernel lost(KERNEL_GAUSSIAN);
  EXPECT_EQ(FailingOutcome([&] { lost.SetSizeX(50); }),
            "1303 LxKernel::SetAllocatedSize < LxKernel::SetSizeX");
  EXPECT_EQ(grey.Symmetric(&other, &lost), "1700 PicConvolSymmetricKernel");
  lost.SetAllocatedSize(1);
  EXPECT_EQ(grey.Symmetric(&other, &lost), "1703 PicConvolSymmetricKernel");
  EXPECT_EQ(grey.General(&grey.destination, &lost), "1703 PicConvolKernel BW8");
  lost.SetKernelData(2, 2, 1);
  EXPECT_EQ(TakeOutcome(), "1704 LxKernel::SetKernelData");
  LxKernel good(KERNEL_GAUSSIAN);
  EXPECT_EQ(grey.Symmetric(nullptr, &good), "1413 PicConvolSymmetricKernel");
  Engine<LxC24> colour;
  EXPECT_EQ(colour.Symmetric(nullptr, &empty), "1413 PicConvolSymmetricKernel ( C24)");
}

TEST(KernelConvolution, EachWorkerHasItsName) {
  const auto large = StandardKernel();
  const auto widest = MakeKernel(7, std::vector<float>(49, 1.0F));
  Engine<LxBW8> grey;
  Engine<LxBW16> deep;
  EXPECT_EQ(FailingOutcome([&] { PicConvolKernel(&grey.source, &grey.destination, large.get()); }),
            "1303 ConvolKernel5x5 < PicConvolKernel BW8");
  EXPECT_EQ(FailingOutcome(
                [&] { PicConvolSymmetricKernel(&deep.source, &deep.destination, widest.get()); }),
            "1303 ConvolKernelS7xS7 (BW16) < PicConvolSymmetricKernel BW16");
}

}  // namespace
}  // namespace lx::test
