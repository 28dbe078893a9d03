// SPDX-License-Identifier: Apache-2.0
// What every operation promises about its arguments, its errors and its neighbours.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <thread>

#include "support/allocation_failure.h"
#include "support/execution_path.h"
#include "support/trial.h"
#include "support/trial/content.h"

namespace lx::test {
namespace {

using catalogue::InPlace;

// Calls check(operation, choice) for every choice of every operation.
template <class Check>
void ForEveryOperation(const Check& check) {
  for (const Operation& operation : catalogue::All()) {
    for (const int choice : ChoicesOf(operation)) {
      SCOPED_TRACE(operation.signature + ChoiceText(operation, choice));
      check(operation, choice);
    }
  }
}

bool SizesMustAgree(const Operation& operation) {
  return std::all_of(
      operation.parameters.begin(), operation.parameters.end(),
      [](const Parameter& each) { return each.size == catalogue::SizeRule::kEqual; });
}

bool Lists(const Operation& operation, LX_ERRORS code) {
  return operation.FindRefusal(code) != nullptr;
}

// What a null for a parameter that must not be null is refused with.
LX_ERRORS NullCode(const Operation& operation, const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::kRegion:
      return parameter.IsWritten() && Lists(operation, LX_ERROR_DESTINATION_IS_SOURCE)
                 ? LX_ERROR_DESTINATION_IS_SOURCE
                 : LX_ERROR_ROI_NOT_ATTACHED;
    case Kind::kKernel:
      return LX_ERROR_KERNEL_NO_DATA;
    default:
      return catalogue::IsVector(parameter.kind) ? LX_ERROR_VECTOR_NO_DATA
                                                 : LX_ERROR_ARGUMENT_3_OUT_OF_RANGE;
  }
}

TEST(Contract, UnattachedRegion) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const Trial whole(operation, choice);
    for (const std::size_t index : whole.Regions()) {
      Trial trial(operation, choice);
      trial.Detach(index);
      trial.Run();
      EXPECT_EQ(trial.Refusal(LX_ERROR_ROI_NOT_ATTACHED), "") << index;
    }
  });
}

TEST(Contract, Nulls) {
  ForEveryOperation([](const Operation& operation, int choice) {
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const Parameter& parameter = operation.parameters[i];
      if (!catalogue::IsPointer(parameter.kind) || parameter.IsReturned()) continue;
      Trial trial(operation, choice);
      if (parameter.IsRegion()) {
        trial.call.values[i] = static_cast<LxGenericROI*>(nullptr);
      } else {
        trial.call.SetNull(i);
      }
      const bool allowed = parameter.whenNull &&
                           (!parameter.IsRegion() || operation.WorksInPlace(trial.call.values));
      trial.Run();
      if (allowed) {
        EXPECT_EQ(LxGetError(), LX_OK) << parameter.name;
      } else {
        EXPECT_EQ(trial.Refusal(NullCode(operation, parameter)), "") << parameter.name;
      }
    }
  });
}

// By memory: another region object over the same pixels is the same region. What does not refuse it
// must work.
TEST(Contract, DestinationThatIsTheSource) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const std::size_t destination = operation.DestinationIndex();
    const auto sources = operation.SourceIndices();
    if (destination == operation.parameters.size() || sources.empty()) return;
    const Pixel pixel = operation.parameters[destination].pixel;
    const bool sameType = operation.parameters[sources.front()].pixel == pixel;
    if (operation.inPlace == InPlace::kNo) {
      EXPECT_FALSE(Lists(operation, LX_ERROR_DESTINATION_IS_SOURCE));
      EXPECT_FALSE(sameType) << "must say whether it runs in place";
      return;
    }
    Trial trial(operation, choice);
    if (!sameType || operation.WorksInPlace(trial.call.values)) return;  // the sweep's
    trial.call.values[destination] = trial.call.values[sources.front()];
    trial.Run();
    EXPECT_EQ(trial.Refusal(LX_ERROR_DESTINATION_IS_SOURCE), "");
    trial.call.values[destination] = trial.Twin(sources.front());
    trial.Run();
    EXPECT_EQ(trial.Refusal(LX_ERROR_DESTINATION_IS_SOURCE), "");
  });
}

TEST(Contract, SizesThatDiffer) {
  ForEveryOperation([](const Operation& operation, int choice) {
    constexpr Size kSize = {19, 3};
    const Trial whole(operation, choice);
    if (!SizesMustAgree(operation) || whole.Regions().size() < 2) return;
    for (const std::size_t index : whole.Regions()) {
      for (const Size size :
           {Size{kSize.width + 1, kSize.height}, Size{kSize.width - 1, kSize.height},
            Size{kSize.width, kSize.height + 1}, Size{kSize.height, kSize.width}, Size{0, 0}}) {
        Trial trial(operation, choice, kSize);
        trial.Resize(index, size);
        trial.Run();
        EXPECT_EQ(trial.Refusal(LX_ERROR_SIZE_MISMATCH), "") << index;
      }
    }
  });
}

TEST(Contract, MissingRegionComesBeforeSizes) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const Trial whole(operation, choice);
    for (const std::size_t wrong : whole.Regions()) {
      for (const std::size_t missing : whole.Regions()) {
        if (wrong == missing) continue;
        Trial trial(operation, choice);
        trial.Resize(wrong, {5, 5});
        trial.Detach(missing);
        trial.Run();
        EXPECT_EQ(trial.Refusal(LX_ERROR_ROI_NOT_ATTACHED), "") << wrong << " " << missing;
      }
    }
  });
}

TEST(Contract, VectorsOfTheWrongLength) {
  ForEveryOperation([](const Operation& operation, int choice) {
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const Parameter& parameter = operation.parameters[i];
      const bool typed = catalogue::IsVector(parameter.kind) && parameter.kind != Kind::kVector;
      if (!typed || parameter.counts.empty() || parameter.role == catalogue::Role::kWritten) {
        continue;
      }
      for (const unsigned count : {0U, parameter.counts.back() - 1, parameter.counts.back() + 1}) {
        Arguments call(operation);
        call.SetChoice(choice);
        Elements content;
        content.values.resize(count, 1);
        call.SetVector(i, content);
        Trial trial(operation, std::move(call), {19, 3});
        trial.Run();
        EXPECT_EQ(trial.Refusal(LX_ERROR_WRONG_VECTOR_SIZE), "") << parameter.name << " " << count;
      }
    }
  });
}

// Lets each allocation of a call fail, and collects the names that are then traced before the
// operation's own.
void ExpectFailuresAreReported(Trial& trial, const Reference& reference,
                               std::set<std::vector<std::string>>& traces) {
  const Operation& operation = trial.Described();
  const Outcome& expected = trial.Expect(reference);
  if (expected.error != LX_OK) {
    auto names = expected.trace;
    names.pop_back();
    traces.insert(names);
  }
  trial.Run();
  trial.Prepare();
  auto live = LiveAllocations();
  const auto check = [&] {
    const LX_ERRORS code = LxGetError();
    if (operation.ResultIndices().empty()) {
      EXPECT_EQ(LiveAllocations(), live);
    }
    if (code == LX_ERROR_ALLOCATION_FAILED || code == LX_ERROR_NOT_ENOUGH_MEMORY) {
      EXPECT_TRUE(Lists(operation, code)) << catalogue::ErrorName(code);
      EXPECT_EQ(trial.TraceFault(), "");
      auto names = TraceNow();
      if (!names.empty()) names.pop_back();
      traces.insert(names);
    } else {
      EXPECT_EQ(trial.Difference(), "");
    }
    trial.Prepare();
    live = LiveAllocations();
  };
  FailEachAllocation([&trial] { trial.Call(); }, check);
  EXPECT_EQ(trial.Difference(), "");
}

// Gives the sources run lists.
void PlaceRuns(Trial& trial, Size size, Random& random) {
  for (const std::size_t index : trial.Described().SourceIndices()) {
    Picture picture(trial.Described().parameters[index].pixel, size.width, size.height);
    Fill(picture, Content::kNoise, 0, 0, random);
    picture.runs = DrawRuns(picture, random);
    trial.Place(index, picture, {Pitch::kOdd, 0});
  }
}

// Every allocation fails once, over arguments of every kind. A call that succeeds after all has its
// whole result. Each name that an inner step may trace is seen.
TEST(Contract, FailingAllocations) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const Reference* const reference = FindReference(operation.signature);
    if (reference == nullptr) return;
    std::set<std::vector<std::string>> traces;
    Random random(operation.signature);
    const auto& inner = operation.innerTraces;
    const auto missing = [&] {
      return std::any_of(inner.begin(), inner.end(),
                         [&](const auto& names) { return traces.count(names) == 0; });
    };
    for (int turn = 0; turn < 4 || (turn < 3000 && missing()); ++turn) {
      Arguments call = turn == 0 ? Arguments(operation) : Arguments(operation, random);
      call.SetChoice(choice);
      constexpr Size kSize = {67, 9};
      Trial trial(operation, std::move(call), kSize);
      if (operation.followsRuns && turn % 2 != 0) PlaceRuns(trial, kSize, random);
      ExpectFailuresAreReported(trial, *reference, traces);
      if (testing::Test::HasFailure()) return;
    }
    for (const auto& names : inner) {
      EXPECT_EQ(traces.count(names), 1U) << "never traced: " << names.front();
    }
  });
}

// Source and destination share some of their pixels: what the destination holds is open, but
// nothing outside it may change.
TEST(Contract, RegionsThatOverlapInPart) {
  ForEveryOperation([](const Operation& operation, int choice) {
    constexpr int kWidth = 150;
    constexpr int kHeight = 12;
    Trial trial(operation, choice);
    const std::size_t destination = operation.DestinationIndex();
    if (destination == operation.parameters.size()) return;
    const Pixel pixel = operation.parameters[destination].pixel;
    const std::ptrdiff_t pitch = RowBytes(pixel, kWidth);
    std::vector<std::uint8_t> memory(static_cast<std::size_t>(pitch) * kHeight, 0x5A);
    const auto image = MakeView(pixel, kWidth, kHeight, {memory.data(), pitch, 0});
    const auto written = MakeChild(pixel, image.get(), 5, 2, 100, 8);
    const auto read = MakeChild(pixel, image.get(), 0, 0, 100, 8);
    for (const std::size_t index : trial.Regions()) {
      const bool same = operation.parameters[index].pixel == pixel;
      if (!same || operation.parameters[index].IsWritten()) {
        if (index != destination) trial.Resize(index, {100, 8});
      } else {
        trial.call.values[index] = read.get();
      }
    }
    trial.call.values[destination] = written.get();
    operation.call(trial.call.values);
    const std::ptrdiff_t first = RowBytes(pixel, 5);
    const std::ptrdiff_t last = RowBytes(pixel, 105);
    for (int y = 0; y < kHeight; ++y) {
      for (std::ptrdiff_t x = 0; x < pitch; ++x) {
        const bool inside = y >= 2 && y < 10 && x >= first && x < last;
        if (inside) continue;
        ASSERT_EQ(memory[static_cast<std::size_t>(y * pitch + x)], 0x5A) << x << " " << y;
      }
    }
  });
}

std::vector<std::uint8_t> BytesOf(const LxGenericROI& region, std::size_t rowBytes) {
  std::vector<std::uint8_t> bytes;
  for (int y = 0; y < static_cast<int>(region.GetHeight()); ++y) {
    const auto* const row = static_cast<const std::uint8_t*>(region.GetPixelPtr(0, y));
    bytes.insert(bytes.end(), row, row + rowBytes);
  }
  return bytes;
}

int ReachOf(const Trial& trial, unsigned reach, unsigned ifLeftOut) {
  const catalogue::Reach& described = trial.Described().reach;
  double pixels = reach;
  if (described.form == catalogue::Reach::Form::kParameter) {
    pixels = trial.call.Number(reach);
    if (pixels == 4294967295.0) pixels = trial.call.Number(ifLeftOut);
  }
  return static_cast<int>(pixels * described.times);
}

// Changes one pixel of source `index`, and looks at what changes in the destination.
void ExpectReach(const Operation& operation, int choice, std::size_t index, int column, int row) {
  constexpr Size kSize = {41, 17};
  Trial trial(operation, choice, kSize);
  const auto& reach = operation.reach;
  const int across = ReachOf(trial, reach.across, reach.across);
  const int down = ReachOf(trial, reach.down, reach.across);
  const std::size_t destination = operation.DestinationIndex();
  const auto& result = *std::get<LxGenericROI*>(trial.call.values[destination]);
  const std::ptrdiff_t pixelBytes = RowBytes(operation.parameters[destination].pixel, 1);
  const auto rowBytes = static_cast<std::size_t>(pixelBytes * kSize.width);
  trial.Run();
  const auto before = BytesOf(result, rowBytes);
  trial.Prepare();
  const auto& source = *std::get<LxGenericROI*>(trial.call.values[index]);
  auto* const pixel = static_cast<std::uint8_t*>(source.GetPixelPtr(column, row));
  for (unsigned i = 0; i < source.GetPixelSize(); ++i) pixel[i] ^= 0xFF;
  trial.Call();
  const auto after = BytesOf(result, rowBytes);
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    const int x = static_cast<int>(i % rowBytes) / static_cast<int>(pixelBytes);
    const int y = static_cast<int>(i / rowBytes);
    ASSERT_LE(std::abs(x - column), across) << column << " " << row;
    ASSERT_LE(std::abs(y - row), down) << column << " " << row;
  }
}

// A pixel of the result does not change with a source pixel that lies beyond the stated reach.
TEST(Contract, Reach) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const std::size_t destination = operation.DestinationIndex();
    const auto sources = operation.SourceIndices();
    const auto& reach = operation.reach;
    const bool bounded = reach.form == catalogue::Reach::Form::kPixels ||
                         reach.form == catalogue::Reach::Form::kParameter;
    if (!bounded || !SizesMustAgree(operation)) return;
    if (destination == operation.parameters.size() || sources.empty()) return;
    for (const std::size_t index : sources) {
      for (const auto& [x, y] : {std::pair{20, 8}, std::pair{0, 0}, std::pair{40, 16}}) {
        ExpectReach(operation, choice, index, x, y);
      }
    }
  });
}

TEST(Contract, ThreadsHaveTheirOwnState) {
  const auto work = [](LxC24 colour, bool fail) {
    PicSetOverlayColor(colour);
    for (int turn = 0; turn < 20; ++turn) {
      for (const Operation& operation : catalogue::All()) {
        if (!WhyNoReference(operation.signature).empty()) continue;
        std::vector<std::unique_ptr<LxGenericROI>> images;
        Arguments call(operation);
        for (std::size_t i = 0; i < call.values.size(); ++i) {
          const Parameter& parameter = operation.parameters[i];
          if (!parameter.IsRegion()) continue;
          images.push_back(fail ? MakeUnattached(parameter.pixel)
                                : MakeImage(parameter.pixel, 33, 4));
          if (!fail) {
            std::memset(images.back()->GetPixelPtr(0, 0), 1,
                        static_cast<std::size_t>(images.back()->GetPitch()) * 4);
          }
          call.values[i] = images.back().get();
        }
        operation.call(call.values);
        const bool refused = fail && !images.empty();
        if (refused) {
          ASSERT_EQ(LxGetError(), LX_ERROR_ROI_NOT_ATTACHED) << operation.signature;
        } else {
          ASSERT_TRUE(LxGetError() == LX_OK || Lists(operation, LxGetError()))
              << operation.signature;
        }
        ASSERT_EQ(PicGetOverlayColor(), colour);
      }
    }
  };
  std::thread good(work, LxC24{1, 2, 3}, false);
  std::thread bad(work, LxC24{9, 8, 7}, true);
  good.join();
  bad.join();
}

}  // namespace
}  // namespace lx::test
