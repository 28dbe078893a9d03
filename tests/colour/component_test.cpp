// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/component.h"

#include <gtest/gtest.h>

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

struct Rotate : LxColorLookup {
  void Transform(LxC24 colour, LxC24& result) override {
    result = {colour.c1, colour.c2, static_cast<std::uint8_t>(255 - colour.c0)};
  }
};

std::uint8_t ByteOf(LxC24 colour, unsigned index) {
  return index == 0 ? colour.c0 : index == 1 ? colour.c1 : colour.c2;
}

void FillNoise(const GuardedBuffer& buffer, unsigned seed) {
  for (std::size_t i = 0; i < buffer.GetSize(); ++i) {
    seed = seed * 1664525 + 1013904223;
    buffer.GetData()[i] = static_cast<std::uint8_t>(seed >> 24);
  }
}

/// A colour view and a grey view of one size over guarded memory, rows `gap` bytes apart.
struct Scene {
  Scene(int width, int height, int gap, GuardedEnd end)
      : colourBytes(Bytes(3 * width, height, gap), end), greyBytes(Bytes(width, height, gap), end) {
    FillNoise(colourBytes, 1);
    FillNoise(greyBytes, 2);
    colour.Attach(colourBytes.GetData(), width, height, 3 * width + gap);
    grey.Attach(greyBytes.GetData(), width, height, width + gap);
  }
  static std::size_t Bytes(int row, int height, int gap) {
    return static_cast<std::size_t>(height == 0 ? 0 : (row + gap) * (height - 1) + row);
  }
  GuardedBuffer colourBytes, greyBytes;
  LxImage<LxC24> colour;
  LxImage<LxBW8> grey;
};

std::vector<std::uint8_t> Snapshot(const GuardedBuffer& buffer) {
  return {buffer.GetData(), buffer.GetData() + buffer.GetSize()};
}

template <class Check>
void ForEachScene(Check check) {
  for (const GuardedEnd end : {GuardedEnd::kFirst, GuardedEnd::kLast}) {
    for (const int gap : {0, 5}) {
      for (const int height : {0, 1, 3}) {
        for (int width = 0; width < 260; width += width < 70 ? 1 : 13) {
          Scene scene(width, height, gap, end);
          for (unsigned index = 0; index < 3; ++index) check(scene, width, height, gap, index);
        }
      }
    }
  }
}

/// ForEachScene() on every path through the library.
template <class Check>
void ForEachSceneAndPath(Check check) {
  for (const ExecutionPath& path : ExecutionPaths()) {
    SCOPED_TRACE(path.name);
    const PathScope scope(path);
    ForEachScene(check);
    EXPECT_EQ(scope.Dispatched(), path.fast);
  }
}

TEST(Component, IsExtractedFromEveryPixel) {
  LxOk();
  Rotate rotate;
  ForEachSceneAndPath([&](Scene& scene, int width, int height, int gap, unsigned index) {
    for (LxColorLookup* lookup :
         {static_cast<LxColorLookup*>(nullptr), static_cast<LxColorLookup*>(&rotate)}) {
      std::vector<std::uint8_t> expected = Snapshot(scene.greyBytes);
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const LxC24 c = scene.colour.GetPixel(x, y);
          const LxC24 seen =
              lookup == nullptr ? c : LxC24{c.c1, c.c2, static_cast<std::uint8_t>(255 - c.c0)};
          expected[static_cast<std::size_t>(y * (width + gap) + x)] = ByteOf(seen, index);
        }
      }
      TintGetComponent(&scene.colour, &scene.grey, index, lookup);
      ASSERT_EQ(TakeOutcome(), "0");
      ASSERT_EQ(Snapshot(scene.greyBytes), expected) << width << " x " << height;
    }
  });
}

TEST(Component, IsInsertedAndTheOthersStay) {
  LxOk();
  ForEachSceneAndPath([](Scene& scene, int width, int height, int gap, unsigned index) {
    std::vector<std::uint8_t> expected = Snapshot(scene.colourBytes);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        expected[static_cast<std::size_t>(y * (3 * width + gap) + 3 * x) + index] =
            scene.grey.GetPixel(x, y);
      }
    }
    TintSetComponent(&scene.grey, &scene.colour, index);
    ASSERT_EQ(TakeOutcome(), "0");
    ASSERT_EQ(Snapshot(scene.colourBytes), expected) << width << " x " << height;
  });
}

TEST(Component, ArgumentsAreCheckedInOrder) {
  LxImage<LxC24> colour(4, 4);
  LxImage<LxBW8> grey(4, 4);
  LxImage<LxBW8> wide(5, 4);
  LxImage<LxBW8> noGrey;
  LxImage<LxC24> noColour;
  grey.SetPixel(77, 1, 1);
  const auto get = [](LxROI<LxC24>* source, LxROI<LxBW8>* plane, unsigned index) {
    LxSetError(LX_ERROR_INTERNAL);
    TintGetComponent(source, plane, index, nullptr);
    return TakeOutcome();
  };
  const auto set = [](LxROI<LxBW8>* plane, LxROI<LxC24>* target, unsigned index) {
    LxSetError(LX_ERROR_INTERNAL);
    TintSetComponent(plane, target, index);
    return TakeOutcome();
  };
  EXPECT_EQ(get(nullptr, &wide, 3), "1400 TintGetComponent");
  EXPECT_EQ(get(&noColour, &wide, 3), "1400 TintGetComponent");
  EXPECT_EQ(get(&colour, nullptr, 3), "1400 TintGetComponent");
  EXPECT_EQ(get(&colour, &noGrey, 3), "1400 TintGetComponent");
  EXPECT_EQ(get(&colour, &wide, 3), "1403 TintGetComponent");
  EXPECT_EQ(get(&colour, &grey, 3), "1013 TintGetComponent");
  EXPECT_EQ(grey.GetPixel(1, 1), 77);
  EXPECT_EQ(get(&colour, &grey, 2), "0");
  EXPECT_EQ(set(nullptr, &colour, 3), "1400 TintSetComponent");
  EXPECT_EQ(set(&noGrey, &colour, 3), "1400 TintSetComponent");
  EXPECT_EQ(set(&grey, nullptr, 3), "1400 TintSetComponent");
  EXPECT_EQ(set(&grey, &noColour, 3), "1400 TintSetComponent");
  EXPECT_EQ(set(&wide, &colour, 3), "1403 TintSetComponent");
  EXPECT_EQ(set(&grey, &colour, 0xFFFFFFFF), "1013 TintSetComponent");
  EXPECT_EQ(set(&grey, &colour, 0), "0");
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
