// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/roi.h"

#include <gtest/gtest.h>

#include <climits>
#include <deque>
#include <vector>

#include "base/pixel_types.h"
#include "lxpic/base/image.h"
#include "support/outcome_text.h"

namespace {

using lx::test::kBinary;
using lx::test::kKeepsBit15;
using lx::test::MakePixel;
using lx::test::SameBytes;
using lx::test::TakeOutcome;

int FloorOfEighth(int value) { return (value - (value % 8 + 8) % 8) / 8; }

/// What a pixel's bytes say, read without the region's help.
template <class T>
T ReadMemory(const std::uint8_t* base, std::ptrdiff_t pitch, int x, int y) {
  T pixel{};
  if constexpr (kBinary<T>) {
    const std::uint8_t byte = base[y * pitch + x / 8];
    pixel = (byte & (1 << (7 - x % 8))) != 0 ? 1 : 0;
  } else {
    std::memcpy(&pixel, base + y * pitch + x * static_cast<int>(sizeof(T)), sizeof(T));
  }
  return pixel;
}

template <class T>
class Region : public testing::Test {
 protected:
  static constexpr int kWidth = 45;
  static constexpr int kHeight = 23;

  Region() {
    LxOk();
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) image.SetPixel(Expected(x, y), x, y);
    }
  }
  static T Expected(int x, int y) { return MakePixel<T>(static_cast<unsigned>(y * kWidth + x)); }

  LxImage<T> image{kWidth, kHeight};
  LxROI<T> child{&image, 3, 5, 30, 15};
  LxROI<T> grandchild{&child, 8, 2, 19, 9};  // at (11, 7) of the image
};
TYPED_TEST_SUITE(Region, lx::test::PixelTypes);

TYPED_TEST(Region, PixelsAreWhereTheImageHasThem) {
  auto* const base = static_cast<std::uint8_t*>(this->image.GetPixelPtr(0, 0));
  const std::ptrdiff_t pitch = this->image.GetPitch();
  for (int y = 0; y < this->kHeight; ++y) {
    // What a fresh image holds in the kept bits is unknown.
    for (int x = 0; x < this->kWidth && !kKeepsBit15<TypeParam>; ++x) {
      ASSERT_TRUE(SameBytes(ReadMemory<TypeParam>(base, pitch, x, y), this->Expected(x, y)));
    }
  }
  for (int y = -8; y < 20; ++y) {
    for (int x = -20; x < 40; ++x) {
      const int column = kBinary<TypeParam> ? FloorOfEighth(x + 11)
                                            : (x + 11) * static_cast<int>(sizeof(TypeParam));
      ASSERT_EQ(this->grandchild.GetPixelPtr(x, y), base + (y + 7) * pitch + column);
      ASSERT_EQ(this->grandchild.GetBitPosition(x, y),
                kBinary<TypeParam> ? ((x + 11) % 8 + 8) % 8 : 0);
      const bool inside = x >= 0 && x < 19 && y >= 0 && y < 9;
      const TypeParam expected =
          inside ? ReadMemory<TypeParam>(base, pitch, x + 11, y + 7) : TypeParam{};
      ASSERT_TRUE(SameBytes(this->grandchild.GetPixel(x, y), expected)) << x << ' ' << y;
    }
  }
}

TYPED_TEST(Region, WritesOnePixelAndNoOther) {
  auto* const base = static_cast<std::uint8_t*>(this->image.GetPixelPtr(0, 0));
  const auto bytes = static_cast<std::size_t>(this->image.GetPitch()) * this->kHeight;
  std::memset(base, 0xA5, bytes);
  const std::vector<std::uint8_t> before(base, base + bytes);
  for (int y = -1; y < 11; ++y) {
    for (int x = -1; x < 21; ++x) {
      TypeParam pixel = MakePixel<TypeParam>(static_cast<unsigned>(x * 31 + y));
      this->grandchild.SetPixel(pixel, x, y);
      if (x >= 0 && x < 19 && y >= 0 && y < 9) {
        if constexpr (kKeepsBit15<TypeParam>) pixel.word |= 0x8000;
        ASSERT_TRUE(
            SameBytes(ReadMemory<TypeParam>(base, this->image.GetPitch(), x + 11, y + 7), pixel));
        TypeParam old;
        if constexpr (kBinary<TypeParam>) {
          old = 0xA5 >> (7 - (x + 11) % 8) & 1;
        } else {
          std::memset(&old, 0xA5, sizeof old);
        }
        this->image.SetPixel(old, x + 11, y + 7);
      }
      ASSERT_EQ(std::memcmp(base, before.data(), bytes), 0) << x << ' ' << y;
    }
  }
}

TYPED_TEST(Region, DistancesDescribeTheWalkFromRowToRow) {
  for (LxROI<TypeParam>* region :
       std::initializer_list<LxROI<TypeParam>*>{&this->image, &this->child, &this->grandchild}) {
    EXPECT_EQ(region->GetPixelSize(), kBinary<TypeParam> ? 0 : sizeof(TypeParam));
    EXPECT_EQ(region->GetPitch(), this->image.GetPitch());
    EXPECT_EQ(region->GetIdentity(), this->image.GetIdentity());
    const auto* const next = static_cast<std::uint8_t*>(region->GetPixelPtr(0, 1));
    const int width = static_cast<int>(region->GetWidth());
    constexpr int kStep = kBinary<TypeParam> ? 1 : static_cast<int>(sizeof(TypeParam));
    const auto* const last = static_cast<std::uint8_t*>(region->GetPixelPtr(width - 1, 0));
    EXPECT_EQ(next - last, region->GetRowSkip() + kStep);
  }
  LxImage<TypeParam> other(1, 1);
  EXPECT_NE(other.GetIdentity(), this->image.GetIdentity());
}

TYPED_TEST(Region, PlacementOutsideTheParentIsRefused) {
  struct Place {
    int x, y, width, height;
  };
  const void* const address = this->grandchild.GetPixelPtr(0, 0);
  for (const auto& [x, y, width, height] :
       {Place{-1, 0, 5, 5}, Place{0, -1, 5, 5}, Place{0, 0, -1, 5}, Place{0, 0, 5, -1},
        Place{12, 0, 19, 5}, Place{0, 7, 5, 9}, Place{31, 0, 0, 0}, Place{INT_MAX, 0, INT_MAX, 1},
        Place{1, 1, 1, INT_MAX}}) {
    this->grandchild.SetPlacement(x, y, width, height);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetPlacement");
    EXPECT_EQ(this->grandchild.GetPixelPtr(0, 0), address);
    EXPECT_EQ(this->grandchild.GetWidth(), 19U);
    EXPECT_EQ(this->grandchild.GetHeight(), 9U);
    const LxROI<TypeParam> fresh(&this->child, x, y, width, height);
    EXPECT_EQ(TakeOutcome(), "1007 LxROI::LxROI");
    EXPECT_EQ(fresh.GetWidth() + fresh.GetHeight(), 0U);
    EXPECT_EQ(fresh.GetPixelPtr(0, 0), nullptr);
  }
  this->grandchild.SetPlacement(0, 0, 30, 15);
  EXPECT_EQ(this->grandchild.GetPixelPtr(0, 0), this->child.GetPixelPtr(0, 0));
  this->grandchild.SetPlacement(30, 15, 0, 0);
  this->grandchild.Check();
  EXPECT_EQ(TakeOutcome(), "0");
  this->image.SetPlacement(0, 0, 1, 1);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::SetPlacement");
}

template <class T>
void ExpectDetached(const LxROI<T>& region) {
  EXPECT_EQ(region.GetPixelPtr(0, 0), nullptr);
  EXPECT_EQ(region.GetPixelPtr(3, 1), nullptr);
  EXPECT_EQ(region.GetIdentity(), 0U);
  EXPECT_EQ(region.GetPitch(), 0);
  EXPECT_EQ(region.GetRowSkip(), 0);
  EXPECT_TRUE(SameBytes(region.GetPixel(0, 0), T{}));
  region.Check();
  EXPECT_EQ(TakeOutcome(), "1400");
}

TYPED_TEST(Region, FollowsItsParents) {
  this->image.SetSize(20, 20);
  ExpectDetached(this->child);
  ExpectDetached(this->grandchild);
  this->grandchild.SetPixel(MakePixel<TypeParam>(1), 0, 0);
  this->image.SetSize(this->kWidth, 15);
  ExpectDetached(this->grandchild);
  this->image.SetSize(100, 100);
  EXPECT_EQ(this->child.GetPixelPtr(0, 0), this->image.GetPixelPtr(3, 5));
  EXPECT_EQ(this->grandchild.GetPixelPtr(0, 0), this->image.GetPixelPtr(11, 7));
  this->child.SetPlacement(50, 60, 30, 15);
  EXPECT_EQ(this->grandchild.GetPixelPtr(0, 0), this->image.GetPixelPtr(58, 62));
  this->child.SetPlacement(0, 0, 26, 15);
  ExpectDetached(this->grandchild);
  EXPECT_EQ(TakeOutcome(), "0");
}

TYPED_TEST(Region, WithoutAnImageIsNotAttached) {
  const LxROI<TypeParam> none;
  ExpectDetached(none);
  const LxROI<TypeParam> orphan(nullptr, 0, 0, 1, 1);
  EXPECT_EQ(TakeOutcome(), "1400 LxROI::LxROI");
  ExpectDetached(orphan);
  const LxROI<TypeParam> own(const_cast<LxROI<TypeParam>*>(&own), 0, 0, 0, 0);
  EXPECT_EQ(TakeOutcome(), "1007 LxROI::LxROI");
  ExpectDetached(own);
  LxImage<TypeParam> empty;
  const LxROI<TypeParam> part(&empty, 0, 0, 0, 0);
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectDetached(part);
  empty.SetSize(0, 0);
  part.Check();
  EXPECT_EQ(TakeOutcome(), "0");
}

TYPED_TEST(Region, ComparesSizes) {
  LxImage<LxBW8> same(30, 15);
  LxImage<LxBW8> wider(31, 15);
  LxImage<LxBW8> taller(30, 16);
  for (LxGenericROI* other : {&wider, &taller}) {
    this->child.CheckSize(other);
    EXPECT_EQ(TakeOutcome(), "1403");
    this->child.SetSize(other);
    EXPECT_EQ(TakeOutcome(), "1403");
  }
  this->child.CheckSize(nullptr);
  EXPECT_EQ(TakeOutcome(), "1400");
  LxSetError(LX_ERROR_INTERNAL);
  this->child.CheckSize(&same);
  this->child.Check();
  EXPECT_EQ(TakeOutcome(), "32767");
}

TEST(NestedRegions, MayBeDeeperThanTheStack) {
  LxImage<LxBW8> image(8, 8);
  std::deque<LxROI<LxBW8>> regions;
  regions.emplace_back(&image, 2, 3, 6, 5);
  while (regions.size() < 300'000) regions.emplace_back(&regions.back(), 0, 0, 6, 5);
  EXPECT_EQ(regions.back().GetPixelPtr(0, 0), image.GetPixelPtr(2, 3));
  EXPECT_EQ(regions.back().GetIdentity(), image.GetIdentity());
}

TEST(BinaryRegion, RowSkipCountsTouchedBytes) {
  LxImage<int> image(64, 2);
  const std::ptrdiff_t pitch = image.GetPitch();
  struct Row {
    int x, width, bytes;
  };
  for (const Row row : {Row{0, 8, 1}, Row{7, 1, 1}, Row{7, 2, 2}, Row{1, 16, 3}, Row{5, 0, 0}}) {
    const LxROI<int> child(&image, row.x, 0, row.width, 2);
    EXPECT_EQ(child.GetRowSkip(), pitch - row.bytes) << row.x << ' ' << row.width;
  }
}

}  // namespace
