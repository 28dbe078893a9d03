// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <vector>

#include "support/execution_path.h"
#include "support/outcome_text.h"
#include "support/trial/guarded_buffer.h"

namespace {

using lx::test::ExecutionPath;
using lx::test::ExecutionPaths;
using lx::test::GuardedBuffer;
using lx::test::GuardedEnd;
using lx::test::PathScope;
using lx::test::TakeOutcome;
using Bytes = std::vector<std::uint8_t>;

struct Rotate : LxColorLookup {
  void Transform(LxC24 colour, LxC24& result) override {
    result = {colour.c1, colour.c2, static_cast<std::uint8_t>(255 - colour.c0)};
  }
};

/// A view of one size over guarded noise, rows `gap` bytes apart.
template <class T>
struct View {
  View(int width, int height, int gap, GuardedEnd end)
      : pitch(width * static_cast<int>(sizeof(T)) + gap),
        memory(static_cast<std::size_t>(height == 0 ? 0 : pitch * height - gap), end) {
    unsigned level = sizeof(T);
    for (std::size_t i = 0; i < memory.GetSize(); ++i) {
      level = level * 1664525 + 1013904223;
      memory.GetData()[i] = static_cast<std::uint8_t>(level >> 24);
    }
    image.Attach(memory.GetData(), width, height, pitch);
  }
  Bytes Snapshot() const { return {memory.GetData(), memory.GetData() + memory.GetSize()}; }

  int pitch;
  GuardedBuffer memory;
  LxImage<T> image;
};

/// Calls `check` with views of many sizes and the index of a component, on every path.
template <class Check>
void ForEachScene(GuardedEnd end, Check check) {
  LxOk();
  for (const ExecutionPath& path : ExecutionPaths()) {
    SCOPED_TRACE(path.name);
    const PathScope scope(path);
    for (int scene = 0; scene < 6 * 260; ++scene) {
      const int width = scene % 260;
      const int height = scene / 260 % 3;
      const int gap = scene / 780 * 5;
      View<LxC24> colour(width, height, gap, end);
      View<LxBW8> grey(width, height, gap, end);
      for (unsigned index = 0; index < 3; ++index) check(colour, grey, index);
      ASSERT_EQ(TakeOutcome(), "0") << width << " x " << height;
    }
    EXPECT_EQ(scope.Dispatched(), path.fast);
  }
}

/// Calls `visit` with the offsets of every colour and grey pixel.
template <class Visit>
void ForEachPixel(const View<LxC24>& colour, const View<LxBW8>& grey, Visit visit) {
  for (int y = 0; y < static_cast<int>(grey.image.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(grey.image.GetWidth()); ++x) {
      visit(static_cast<std::size_t>(y * colour.pitch + 3 * x),
            static_cast<std::size_t>(y * grey.pitch + x));
    }
  }
}

class Component : public testing::TestWithParam<GuardedEnd> {};
INSTANTIATE_TEST_SUITE_P(Ends, Component, testing::Values(GuardedEnd::kFirst, GuardedEnd::kLast));

TEST_P(Component, IsInsertedAndExtracted) {
  Rotate rotate;
  ForEachScene(GetParam(), [&](View<LxC24>& colour, View<LxBW8>& grey, unsigned index) {
    Bytes pixels = colour.Snapshot();
    Bytes plane = grey.Snapshot();
    ForEachPixel(colour, grey, [&](auto c, auto g) { pixels[c + index] = plane[g]; });
    TintSetComponent(&grey.image, &colour.image, index);
    ASSERT_EQ(colour.Snapshot(), pixels);

    const unsigned next = (index + 1) % 3;
    ForEachPixel(colour, grey, [&](auto c, auto g) { plane[g] = pixels[c + next]; });
    TintGetComponent(&colour.image, &grey.image, next, nullptr);
    ASSERT_EQ(grey.Snapshot(), plane);

    const unsigned flip = index == 2 ? 255 : 0;
    ForEachPixel(colour, grey, [&](auto c, auto g) {
      plane[g] = static_cast<std::uint8_t>(pixels[c + next] ^ flip);
    });
    TintGetComponent(&colour.image, &grey.image, index, &rotate);
    ASSERT_EQ(grey.Snapshot(), plane);
  });
}

TEST(ComponentArguments, AreCheckedInOrder) {
  LxImage<LxC24> colour(4, 4);
  LxImage<LxBW8> grey(4, 4);
  LxImage<LxBW8> wide(5, 4);
  LxImage<LxBW8> noGrey;
  LxImage<LxC24> noColour;
  grey.SetPixel(77, 1, 1);
  struct Row {
    LxROI<LxC24>* colour;
    LxROI<LxBW8>* plane;
    unsigned index;
    std::string error;
  };
  for (const Row& row : {Row{nullptr, &wide, 3, "1400"}, Row{&noColour, &wide, 3, "1400"},
                         Row{&colour, nullptr, 3, "1400"}, Row{&colour, &noGrey, 3, "1400"},
                         Row{&colour, &wide, 3, "1403"}, Row{&colour, &grey, 3, "1013"},
                         Row{&colour, &grey, 0xFFFFFFFF, "1013"}}) {
    TintGetComponent(row.colour, row.plane, row.index, nullptr);
    EXPECT_EQ(TakeOutcome(), row.error + " TintGetComponent");
    TintSetComponent(row.plane, row.colour, row.index);
    EXPECT_EQ(TakeOutcome(), row.error + " TintSetComponent");
  }
  EXPECT_EQ(grey.GetPixel(1, 1), 77);
  LxSetError(LX_ERROR_INTERNAL);
  TintSetComponent(&grey, &colour, 0);
  EXPECT_EQ(TakeOutcome(), "0");
}

struct Throwing : LxColorLookup {
  void Transform(LxC24 /*colour*/, LxC24& /*result*/) override { throw std::runtime_error("no"); }
};

TEST(ColorLookup, MayThrow) {
  LxImage<LxC24> colour(4, 4);
  LxImage<LxBW8> grey(4, 4);
  Throwing lookup;
  TintGetComponent(&colour, &grey, 0, &lookup);
  EXPECT_EQ(TakeOutcome(), "32767 TintGetComponent");
}

TEST(ColorLookup, IsTheIdentityUnlessOverridden) {
  LxColorLookup identity;
  LxC24 result{};
  identity.Transform({1, 2, 3}, result);
  EXPECT_EQ(result, (LxC24{1, 2, 3}));
}

}  // namespace
