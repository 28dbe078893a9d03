// SPDX-License-Identifier: Apache-2.0
// What every operation promises about its regions and its errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "support/allocation_failure.h"
#include "support/trial_call.h"

namespace lx::test {
namespace {

// Calls check(operation, choice) for every choice of every operation that takes regions and has a
// reference; the sweep fails for those that lack one.
template <class Check>
void ForEveryOperation(const Check& check) {
  for (const Operation& operation : catalogue::All()) {
    if (FindReference(operation.signature) == nullptr) continue;
    for (const int choice : ChoicesOf(operation)) {
      SCOPED_TRACE(operation.signature + " " + catalogue::ChoiceName(choice));
      if (!TrialCall(operation, choice).regions.empty()) check(operation, choice);
    }
  }
}

bool SizesMustAgree(const Operation& operation) {
  return !FindReference(operation.signature)->sizeOf;
}

bool RefusesInPlace(const Operation& operation) {
  const auto& codes = operation.errors;
  return std::find(codes.begin(), codes.end(), LX_ERROR_DESTINATION_IS_SOURCE) != codes.end();
}

bool MayLackDestination(const Operation& operation) {
  return FindReference(operation.signature)->optionalDestination;
}

TEST(Contract, UnattachedRegion) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const TrialCall whole(operation, choice);
    for (const std::size_t index : whole.regions) {
      TrialCall trial(operation, choice);
      const auto unattached = MakeUnattached(operation.parameters[index].pixel);
      trial.call.values[index] = unattached.get();
      trial.Run();
      EXPECT_EQ(trial.Refusal(LX_ERROR_ROI_NOT_ATTACHED), "") << index;
    }
  });
}

TEST(Contract, NullRegion) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const TrialCall whole(operation, choice);
    for (const std::size_t index : whole.regions) {
      const bool written = operation.parameters[index].written;
      if (written && MayLackDestination(operation)) continue;
      TrialCall trial(operation, choice);
      trial.call.values[index] = static_cast<LxGenericROI*>(nullptr);
      trial.Run();
      EXPECT_EQ(trial.Refusal(written && RefusesInPlace(operation) ? LX_ERROR_DESTINATION_IS_SOURCE
                                                                   : LX_ERROR_ROI_NOT_ATTACHED),
                "")
          << index;
    }
  });
}

// By memory: another region object over the same pixels is refused as well.
TEST(Contract, DestinationThatIsTheSource) {
  ForEveryOperation([](const Operation& operation, int choice) {
    if (!RefusesInPlace(operation)) return;
    TrialCall trial(operation, choice);
    const std::size_t source = operation.SourceIndices().front();
    const std::size_t destination = operation.DestinationIndex();
    trial.call.values[destination] = trial.call.values[source];
    trial.Run();
    EXPECT_EQ(trial.Refusal(LX_ERROR_DESTINATION_IS_SOURCE), "");
    trial.call.values[destination] = trial.Twin(source);
    trial.Run();
    EXPECT_EQ(trial.Refusal(LX_ERROR_DESTINATION_IS_SOURCE), "");
  });
}

TEST(Contract, SizesThatDiffer) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const TrialCall whole(operation, choice);
    if (!SizesMustAgree(operation) || whole.regions.size() < 2) return;
    const auto [width, height] = whole.size;
    for (const std::size_t index : whole.regions) {
      for (const Size size : {Size{width + 1, height}, Size{width - 1, height},
                              Size{width, height + 1}, Size{height, width}, Size{0, 0}}) {
        TrialCall trial(operation, choice);
        trial.Resize(index, size);
        trial.Run();
        EXPECT_EQ(trial.Refusal(LX_ERROR_SIZE_MISMATCH), "") << index;
      }
    }
  });
}

TEST(Contract, MissingRegionComesBeforeSizes) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const TrialCall whole(operation, choice);
    for (const std::size_t wrong : whole.regions) {
      for (const std::size_t missing : whole.regions) {
        if (wrong == missing) continue;
        TrialCall trial(operation, choice);
        trial.Resize(wrong, {5, 5});
        const auto unattached = MakeUnattached(operation.parameters[missing].pixel);
        trial.call.values[missing] = unattached.get();
        trial.Run();
        EXPECT_EQ(trial.Refusal(LX_ERROR_ROI_NOT_ATTACHED), "") << wrong << " " << missing;
      }
    }
  });
}

TEST(Contract, FailingAllocations) {
  ForEveryOperation([](const Operation& operation, int choice) {
    TrialCall trial(operation, choice, {67, 9});
    trial.Run();
    const auto live = LiveAllocations();
    FailEachAllocation([&trial] { trial.Run(); },
                       [live] {
                         const LX_ERRORS code = LxGetError();
                         EXPECT_TRUE(code == LX_OK || code == LX_ERROR_ALLOCATION_FAILED ||
                                     code == LX_ERROR_NOT_ENOUGH_MEMORY)
                             << catalogue::ErrorName(code);
                         EXPECT_EQ(LiveAllocations(), live);
                       });
    EXPECT_EQ(trial.Failure(), "");
    EXPECT_EQ(LiveAllocations(), live);
  });
}

// Source and destination share some of their pixels: what the destination holds is open, but
// nothing outside it may change.
TEST(Contract, RegionsThatOverlapInPart) {
  ForEveryOperation([](const Operation& operation, int choice) {
    constexpr int kWidth = 150;
    constexpr int kHeight = 12;
    TrialCall trial(operation, choice);
    const std::size_t destination = operation.DestinationIndex();
    if (destination == operation.parameters.size()) return;
    const Pixel pixel = operation.parameters[destination].pixel;
    const std::ptrdiff_t pitch = RowBytes(pixel, kWidth);
    std::vector<std::uint8_t> memory(static_cast<std::size_t>(pitch) * kHeight, 0x5A);
    const auto image = MakeView(pixel, kWidth, kHeight, {memory.data(), pitch, 0});
    const auto written = MakeChild(pixel, image.get(), 5, 2, 100, 8);
    const auto read = MakeChild(pixel, image.get(), 0, 0, 100, 8);
    for (const std::size_t index : trial.regions) {
      const bool same = operation.parameters[index].pixel == pixel;
      if (!same || operation.parameters[index].written) {
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

TEST(Contract, ThreadsHaveTheirOwnState) {
  const auto work = [](LxC24 colour, bool fail) {
    PicSetOverlayColor(colour);
    for (int turn = 0; turn < 20; ++turn) {
      for (const Operation& operation : catalogue::All()) {
        if (operation.DestinationIndex() == operation.parameters.size()) continue;
        std::vector<std::unique_ptr<LxGenericROI>> images;
        Arguments call(operation);
        for (std::size_t i = 0; i < call.values.size(); ++i) {
          const Parameter& parameter = operation.parameters[i];
          if (parameter.kind != Kind::kRegion) continue;
          images.push_back(fail ? MakeUnattached(parameter.pixel)
                                : MakeImage(parameter.pixel, 33, 4));
          if (!fail) {
            std::memset(images.back()->GetPixelPtr(0, 0), 1,
                        static_cast<std::size_t>(images.back()->GetPitch()) * 4);
          }
          call.values[i] = images.back().get();
        }
        operation.call(call.values);
        ASSERT_EQ(LxGetError(), fail ? LX_ERROR_ROI_NOT_ATTACHED : LX_OK) << operation.signature;
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
