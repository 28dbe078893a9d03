// SPDX-License-Identifier: Apache-2.0
// LxPyramid as a list of pictures, over sequences of its members.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "support/filled.h"
#include "support/scenario.h"
#include "support/trial/content.h"

namespace lx::test {
namespace {

constexpr const char* kResize = "LxImage::SetSize";
constexpr const char* kBuild = "LxBW8Pyramid::Build";

template <class T>
std::int64_t ValueOf(const LxROI<T>& region, int x, int y) {
  return region.GetPixel(x, y).value;
}

// What a region of one component holds.
template <class T>
Picture PictureOf(LxGenericROI& region) {
  const auto& pixels = static_cast<const LxROI<T>&>(region);
  Picture made(sizeof(T) == 1 ? Pixel::kBW8 : Pixel::kBW32, static_cast<int>(region.GetWidth()),
               static_cast<int>(region.GetHeight()));
  for (int y = 0; y < made.height; ++y) {
    for (int x = 0; x < made.width; ++x) made.At(x, y) = ValueOf(pixels, x, y);
  }
  return made;
}

template <class T>
void FillImage(LxImage<T>& image, Random& random) {
  image.SetSize(static_cast<int>(random.Below(80)), static_cast<int>(random.Below(30)));
  for (int y = 0; y < static_cast<int>(image.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(image.GetWidth()); ++x) {
      image.SetPixel(static_cast<decltype(T::value)>(random.Next()), x, y);
    }
  }
}

struct Level {
  bool attached = false;
  Picture picture;
};

struct PyramidModel {
  LxPyramid* real = nullptr;
  int type = -1;
  int mode = 1;
  std::vector<Level> levels;
  // Operands of a step.
  std::shared_ptr<LxGenericROI> source;
  std::shared_ptr<LxGenericROI> destination;

  void Place(const Operation& member, Arguments& call, Random& random);
};

// The average of up to four components, rounded down.
Value Average(const std::vector<Value>& values, int shift) {
  Value sum = 0;
  for (const Value each : values) {
    const Value component = each >> shift & 0xFFFF;
    sum += component < 0x8000 ? component : component - 0x10000;
  }
  const auto count = static_cast<double>(values.size());
  return (static_cast<Value>(std::floor(static_cast<double>(sum) / count)) & 0xFFFF) << shift;
}

Picture Halved(const Picture& s, bool drops) {
  const int more = drops ? 0 : 1;
  Picture d(s.pixel, (s.width + more) / 2, (s.height + more) / 2);
  for (int y = 0; y < d.height; ++y) {
    for (int x = 0; x < d.width; ++x) {
      std::vector<Value> block;
      for (int v = 2 * y; v < std::min(2 * y + 2, s.height); ++v) {
        for (int u = 2 * x; u < std::min(2 * x + 2, s.width); ++u) block.push_back(s.At(u, v));
      }
      d.At(x, y) = Average(block, 0) | (s.pixel == Pixel::kBW32 ? Average(block, 16) : 0);
    }
  }
  return d;
}

bool SameSize(const Picture& one, const Picture& other) {
  return one.width == other.width && one.height == other.height;
}

// Gives a level its picture; false when it needs memory that it does not get.
bool Take(Level& level, const Picture& picture, bool memory) {
  const bool fits = level.attached && SameSize(level.picture, picture);
  if (!fits && !memory) return false;
  level = {true, picture};
  return true;
}

void Build(PyramidModel& p, bool memory, Outcome& outcome) {
  if (p.type != LX_IMAGE_BW8 && p.type != LX_IMAGE_GRADIENT32) {
    return outcome.Refuse(LX_ERROR_UNSUPPORTED_IMAGE_TYPE);
  }
  if (!p.levels.front().attached) return outcome.Refuse(LX_ERROR_ROI_NOT_ATTACHED);
  const char* const halve =
      p.type == LX_IMAGE_BW8 ? "LxBW8Pyramid::Halve ( BW8)" : "LxBW8Pyramid::Halve ( GRADIENT32)";
  for (std::size_t i = 1; i < p.levels.size(); ++i) {
    if (!Take(p.levels[i], Halved(p.levels[i - 1].picture, p.mode != 0), memory)) {
      return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED, {kResize, halve});
    }
  }
}

void BuildFrom(PyramidModel& p, const Arguments&, bool memory, Outcome& outcome) {
  if (p.type != LX_IMAGE_BW8) return outcome.Refuse(LX_ERROR_WRONG_IMAGE_TYPE);
  if (p.source == nullptr) return outcome.Refuse(LX_ERROR_ROI_NOT_ATTACHED);
  if (!Take(p.levels.front(), PictureOf<LxBW8>(*p.source), memory)) {
    return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED, {kResize});
  }
  Build(p, memory, outcome);
  if (outcome.error != LX_OK) outcome.trace.emplace_back(kBuild);
}

void SetNumLevels(PyramidModel& p, const Arguments& call, bool memory, Outcome& outcome) {
  const auto count = static_cast<std::size_t>(call.Number(1));
  const auto type = static_cast<int>(call.Number(2));
  if (count == p.levels.size() && type == p.type) return;
  if (count > 0) {
    constexpr int kTypes[] = {1, 2, 3, 6, 8};
    if (std::count(std::begin(kTypes), std::end(kTypes), type) == 0) {
      return outcome.Refuse(LX_ERROR_UNSUPPORTED_IMAGE_TYPE);
    }
    if (!memory) return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED);
  }
  p.levels.assign(count, Level());
  p.type = count > 0 ? type : LX_IMAGE_NONE;
}

// What the regions hold is compared here: nothing of the pyramid changes.
template <class T>
void Halve(PyramidModel& p, const Arguments& call, bool memory, Outcome& outcome) {
  if (p.source == nullptr) return outcome.Refuse(LX_ERROR_ROI_NOT_ATTACHED);
  if (p.destination == nullptr || p.destination == p.source) {
    return outcome.Refuse(LX_ERROR_DESTINATION_IS_SOURCE);
  }
  const Picture expected = Halved(PictureOf<T>(*p.source), call.Number(3) != 0);
  const bool isImage = dynamic_cast<LxImage<T>*>(p.destination.get()) != nullptr;
  if (!isImage && (expected.width != 0 || expected.height != 0)) {
    return outcome.Refuse(LX_ERROR_HALVE_SIZE);
  }
  if (!memory) return outcome.Refuse(LX_ERROR_ALLOCATION_FAILED, {kResize});
  const Picture seen = PictureOf<T>(*p.destination);
  EXPECT_TRUE(SameSize(seen, expected));
  EXPECT_EQ(seen.values, expected.values);
}

template <class T>
void PlacePair(PyramidModel& p, Random& random) {
  auto source = std::make_shared<LxImage<T>>();
  FillImage(*source, random);
  p.source = source;
  p.destination = std::make_shared<LxImage<T>>();
  const std::size_t style = random.Below(10);
  if (style == 0) p.destination = nullptr;
  if (style == 1) p.destination = source;
  if (style == 2) p.destination = std::make_shared<LxROI<T>>();
  if (style == 3) p.source = nullptr;
}

void PyramidModel::Place(const Operation& member, Arguments& call, Random& random) {
  const bool halves = member.function == "LxPyramid::Halve";
  if (halves && member.parameters[1].pixel == Pixel::kBW32) {
    PlacePair<LxBW32>(*this, random);
  } else {
    PlacePair<LxBW8>(*this, random);
  }
  if (member.parameters.size() > 1 && member.parameters[1].IsRegion()) {
    call.values[1] = source.get();
    if (halves) call.values[2] = destination.get();
    return;
  }
  // Another level 0 now and then.
  if (member.function != "LxPyramid::Build" || levels.empty() || random.Below(3) == 0) return;
  LxGenericROI* const first = real->GetImage(0);
  if (type == LX_IMAGE_BW8) {
    FillImage(*static_cast<LxImage<LxBW8>*>(first), random);
    levels[0] = {true, PictureOf<LxBW8>(*first)};
  } else if (type == LX_IMAGE_GRADIENT32) {
    FillImage(*static_cast<LxImage<LxBW32>*>(first), random);
    levels[0] = {true, PictureOf<LxBW32>(*first)};
  }
}

const MemberRules<PyramidModel>& Rules() {
  static const MemberRules<PyramidModel> rules = {
      {"LxPyramid::GetNumLevels()",
       [](PyramidModel& p, const Arguments&, bool, Outcome& outcome) {
         outcome.values[1] = static_cast<double>(p.levels.size());
       }},
      {"LxPyramid::GetHalvingMode()",
       [](PyramidModel& p, const Arguments&, bool, Outcome& outcome) {
         outcome.values[1] = static_cast<double>(p.mode);
       }},
      {"LxPyramid::SetHalvingMode(int)",
       [](PyramidModel& p, const Arguments& call, bool, Outcome&) {
         p.mode = static_cast<int>(call.Number(1));
       }},
      {"LxPyramid::SetNumLevels(unsigned int, LX_IMAGE_TYPES)", SetNumLevels},
      {"LxPyramid::GetImage(unsigned int)",
       [](PyramidModel& p, const Arguments& call, bool, Outcome& outcome) {
         if (call.Number(1) < static_cast<double>(p.levels.size())) return;
         outcome.Refuse(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE);
       }},
      {"LxPyramid::Build()", [](PyramidModel& p, const Arguments&, bool memory,
                                Outcome& outcome) { Build(p, memory, outcome); }},
      {"LxPyramid::Build(LxROI<LxBW8>*)", BuildFrom},
      {"LxPyramid::Halve(LxROI<LxBW8>*, LxROI<LxBW8>*, int)", Halve<LxBW8>},
      {"LxPyramid::Halve(LxROI<LxBW32>*, LxROI<LxBW32>*, int)", Halve<LxBW32>}};
  return rules;
}

void Compare(LxPyramid& pyramid, const PyramidModel& model) {
  ASSERT_EQ(pyramid.GetNumLevels(), model.levels.size());
  for (unsigned i = 0; i < model.levels.size(); ++i) {
    LxGenericROI& image = *pyramid.GetImage(i);
    const Level& level = model.levels[i];
    constexpr unsigned kBytes[] = {0, 1, 2, 4, 0, 0, 3, 0, 4};
    ASSERT_EQ(image.GetPixelSize(), kBytes[model.type]);
    ASSERT_EQ(image.GetIdentity() != 0, level.attached);
    if (!level.attached) continue;
    const Picture seen =
        model.type == LX_IMAGE_BW8 ? PictureOf<LxBW8>(image) : PictureOf<LxBW32>(image);
    ASSERT_TRUE(SameSize(seen, level.picture)) << i;
    ASSERT_EQ(seen.values, level.picture.values) << i;
  }
  EXPECT_EQ(pyramid.GetImage(static_cast<unsigned>(model.levels.size())), nullptr);
}

TEST(Pyramid, LevelsAreHalvesOfEachOther) {
  const auto& objects = catalogue::Objects();
  const auto object = std::find_if(objects.begin(), objects.end(),
                                   [](const auto& each) { return each.name == "LxPyramid"; });
  ASSERT_NE(object, objects.end());
  ExpectScenarios(
      *object, Rules(),
      [](Random&) {
        auto real = std::make_unique<LxPyramid>();
        PyramidModel model;
        model.real = real.get();
        return std::pair(std::move(real), model);
      },
      Compare);
}

TEST(Pyramid, BuildsFromItsOwnLevel) {
  LxPyramid pyramid;
  pyramid.SetNumLevels(4, LX_IMAGE_BW8);
  Filled<LxBW8> source(640, 480, 9);
  pyramid.Build(&source);
  auto* const first = static_cast<LxImage<LxBW8>*>(pyramid.GetImage(0));
  pyramid.Build(first);
  EXPECT_EQ(LxGetError(), LX_OK);
  EXPECT_EQ(pyramid.GetImage(3)->GetWidth(), 80U);
  EXPECT_EQ(static_cast<LxImage<LxBW8>*>(pyramid.GetImage(3))->GetPixel(79, 59), 9);
  LxROI<LxBW8> child(first, 1, 1, 9, 9);
  pyramid.Build(&child);  // would free what it reads
  EXPECT_EQ(LxGetError(), LX_ERROR_DESTINATION_IS_SOURCE);
  EXPECT_EQ(first->GetWidth(), 640U);
}

}  // namespace
}  // namespace lx::test
