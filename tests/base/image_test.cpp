// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/image.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>

#include "base/pixel_types.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"
#include "support/trial/guarded_buffer.h"

namespace {

using lx::test::GuardedBuffer;
using lx::test::GuardedEnd;
using lx::test::kBinary;
using lx::test::kKeepsBit15;
using lx::test::MakePixel;
using lx::test::SameBytes;
using lx::test::TakeOutcome;

struct Size {
  int width, height;
};

template <class T>
int RowBytes(int width) {
  return kBinary<T> ? (width + 7) / 8 : width * static_cast<int>(sizeof(T));
}

template <class T>
void FillAndCheck(LxImage<T>& image) {
  const int width = static_cast<int>(image.GetWidth());
  const int pixels = width * static_cast<int>(image.GetHeight());
  for (int i = 0; i < pixels; ++i) {
    if constexpr (kKeepsBit15<T>) std::memset(image.GetPixelPtr(i % width, i / width), 0xFF, 2);
    image.SetPixel(MakePixel<T>(static_cast<unsigned>(i)), i % width, i / width);
  }
  for (int i = 0; i < pixels; ++i) {
    T pixel = MakePixel<T>(static_cast<unsigned>(i));
    if constexpr (kKeepsBit15<T>) pixel.word |= 0x8000;
    ASSERT_TRUE(SameBytes(image.GetPixel(i % width, i / width), pixel)) << i;
  }
}

template <class T>
class Image : public testing::Test {
 protected:
  Image() : live(lx::test::LiveAllocations()) { LxOk(); }
  ~Image() override { EXPECT_EQ(lx::test::LiveAllocations(), live); }

  std::int64_t live;
};
TYPED_TEST_SUITE(Image, lx::test::PixelTypes);

TYPED_TEST(Image, OwnsRowsThatNeitherOverlapNorAlias) {
  for (const int width : {1, 7, 8, 9, 64, 683, 2048}) {
    LxImage<TypeParam> image(width, 5);
    const std::ptrdiff_t pitch = image.GetPitch();
    EXPECT_GE(pitch, RowBytes<TypeParam>(width));
    EXPECT_EQ(pitch % 64, 0);
    EXPECT_NE(pitch % 2048, 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(image.GetPixelPtr(0, 0)) % 64, 0U);
    FillAndCheck(image);
  }
  EXPECT_EQ(TakeOutcome(), "0");
}

TYPED_TEST(Image, RefusesSizesThatCannotBe) {
  LxImage<TypeParam> image(6, 4);
  const void* const address = image.GetPixelPtr(0, 0);
  for (const auto& [width, height] :
       {Size{-1, 1}, Size{1, -1}, Size{INT_MIN, INT_MIN}, Size{INT_MIN, 0}, Size{INT_MAX, INT_MAX},
        Size{INT_MAX - 63, INT_MAX}}) {
    const auto allocations = lx::test::AllocationCount();
    image.SetSize(width, height);
    // The bytes of so many bytes or bits could be counted.
    if (sizeof(TypeParam) > 1 && !kBinary<TypeParam> && width != INT_MAX - 63) {
      EXPECT_EQ(lx::test::AllocationCount(), allocations) << width << " x " << height;
    }
    EXPECT_EQ(TakeOutcome(), "1303 LxImage::SetSize") << width << " x " << height;
    EXPECT_EQ(image.GetPixelPtr(0, 0), address);
    EXPECT_EQ(image.GetWidth(), 6U);
    EXPECT_EQ(image.GetHeight(), 4U);
    const LxImage<TypeParam> fresh(width, height);
    EXPECT_EQ(TakeOutcome(), "1303 LxImage::LxImage");
    fresh.Check();
    EXPECT_EQ(TakeOutcome(), "1400");
  }
  image.SetSize(nullptr);
  EXPECT_EQ(TakeOutcome(), "1400 LxImage::SetSize");
}

TYPED_TEST(Image, SurvivesAFailedAllocation) {
  LxImage<TypeParam> image(6, 4);
  const auto allocations = lx::test::AllocationCount();
  image.SetSize(6, 4);
  EXPECT_EQ(lx::test::AllocationCount(), allocations);
  const void* const address = image.GetPixelPtr(0, 0);
  LxImage<TypeParam> model(9, 9);
  const auto unchanged = [&] {
    EXPECT_EQ(TakeOutcome(), "1303 LxImage::SetSize");
    EXPECT_EQ(image.GetPixelPtr(0, 0), address);
    EXPECT_EQ(image.GetWidth(), 6U);
  };
  EXPECT_EQ(lx::test::FailEachAllocation([&] { image.SetSize(&model); }, unchanged), 1);
  EXPECT_EQ(image.GetHeight(), 9U);
  EXPECT_EQ(lx::test::LiveAllocations(), this->live + 2);
  const auto failed = [] { EXPECT_EQ(TakeOutcome(), "1303 LxImage::LxImage"); };
  EXPECT_EQ(lx::test::FailEachAllocation([] { LxImage<TypeParam>(3, 3); }, failed), 1);
}

TYPED_TEST(Image, EmptyIsAttachedOnceItHasASize) {
  LxImage<TypeParam> image;
  image.Check();
  EXPECT_EQ(TakeOutcome(), "1400");
  for (const auto& [width, height] : {Size{0, 0}, Size{0, 5}, Size{5, 0}, Size{0, INT_MAX}}) {
    image.SetSize(width, height);
    EXPECT_NE(image.GetPixelPtr(0, 0), nullptr);
    EXPECT_NE(image.GetIdentity(), 0U);
    image.Check();
    EXPECT_EQ(TakeOutcome(), "0");
  }
  EXPECT_EQ(image.GetPixelPtr(0, INT_MAX), image.GetPixelPtr(0, 0));
}

TYPED_TEST(Image, ViewsMemoryAtAnyAddressAndPitch) {
  constexpr int kWidth = 11;
  constexpr int kHeight = 6;
  const int row = RowBytes<TypeParam>(kWidth);
  for (const GuardedEnd end : {GuardedEnd::kFirst, GuardedEnd::kLast}) {
    for (const int gap : {0, 1, 3}) {
      const int pitch = row + gap;
      GuardedBuffer memory(static_cast<std::size_t>((kHeight - 1) * pitch + row), end);
      LxImage<TypeParam> image(3, 3);
      image.Attach(memory.GetData(), kWidth, kHeight, pitch);
      FillAndCheck(image);
      image.Attach(memory.GetData() + (kHeight - 1) * pitch, kWidth, kHeight, -pitch);
      EXPECT_EQ(image.GetPitch(), -pitch);
      EXPECT_EQ(image.GetPixelPtr(0, kHeight - 1), memory.GetData());
      FillAndCheck(image);
    }
  }
  EXPECT_EQ(TakeOutcome(), "0");
}

TYPED_TEST(Image, RefusesViewsThatCannotBe) {
  std::array<std::uint8_t, 256> memory{};
  const std::ptrdiff_t row = RowBytes<TypeParam>(9);
  LxImage<TypeParam> image;
  image.Attach(nullptr, -1, -1, 0);
  EXPECT_EQ(TakeOutcome(), "1011 LxImage::Attach");
  image.Attach(memory.data(), -1, -1, 0);
  EXPECT_EQ(TakeOutcome(), "1012 LxImage::Attach");
  image.Attach(memory.data(), 9, -1, 0);
  EXPECT_EQ(TakeOutcome(), "1013 LxImage::Attach");
  for (const std::ptrdiff_t pitch : {row - 1, 1 - row, PTRDIFF_MAX, PTRDIFF_MIN}) {
    image.Attach(memory.data(), 9, 3, pitch);
    EXPECT_EQ(TakeOutcome(), "1014 LxImage::Attach") << pitch;
  }
  image.Attach(memory.data(), 0, 0, PTRDIFF_MIN);
  EXPECT_EQ(TakeOutcome(), "1014 LxImage::Attach");
  image.Check();
  EXPECT_EQ(TakeOutcome(), "1400");
  // Memory that would be freed under the view.
  for (const int height : {0, 3}) {
    image.SetSize(9, height);
    for (const int y : {0, std::max(0, height - 1)}) {
      image.Attach(image.GetPixelPtr(0, y), 1, 1, 64);
      EXPECT_EQ(TakeOutcome(), "1011 LxImage::Attach") << height << ' ' << y;
    }
    EXPECT_EQ(image.GetWidth(), 9U);
  }
}

TYPED_TEST(Image, AViewIsOnlyReplacedOnPurpose) {
  std::array<std::uint8_t, 64> memory{};
  LxImage<TypeParam> image(2, 2);
  image.Attach(memory.data(), 2, 2, 32);
  EXPECT_EQ(lx::test::LiveAllocations(), this->live);
  LxImage<TypeParam> same(2, 2);
  LxImage<TypeParam> other(3, 2);
  image.SetSize(&same);
  EXPECT_EQ(TakeOutcome(), "0");
  image.SetSize(&other);
  EXPECT_EQ(TakeOutcome(), "1403 LxImage::SetSize");
  EXPECT_EQ(image.GetPixelPtr(0, 0), memory.data());
  image.SetSize(2, 2);
  EXPECT_NE(image.GetPixelPtr(0, 0), memory.data());
}

}  // namespace
