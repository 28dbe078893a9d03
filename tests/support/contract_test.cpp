// SPDX-License-Identifier: Apache-2.0
// What every operation promises about its arguments, its errors and its neighbours.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "support/allocation_failure.h"
#include "support/crash_note.h"
#include "support/every_operation.h"
#include "support/fault.h"
#include "support/trial/content.h"

namespace lx::test {
namespace {

using catalogue::InPlace;

// Where the check stands that finds the fault. Where several refuse with one code, each belongs to a
// parameter, or the first to a pointer that is null and the next to what it points to.
std::size_t CheckOf(const Operation& operation, const Fault& fault,
                    const std::vector<Fault>& faults) {
  std::set<std::size_t> earlier;
  for (const Fault& each : faults) {
    if (each.code == fault.code && each.parameter < fault.parameter) earlier.insert(each.parameter);
  }
  const auto& checks = operation.checks;
  auto found = std::find(checks.begin(), checks.end(), fault.code);
  for (std::size_t i = 0; i < earlier.size(); ++i) {
    const auto next = std::find(found + 1, checks.end(), fault.code);
    if (next == checks.end()) break;
    found = next;
  }
  const bool mayBeNull = std::any_of(faults.begin(), faults.end(), [&](const Fault& each) {
    return each.isNull && each.code == fault.code && each.parameter == fault.parameter;
  });
  const auto behind = std::find(found + 1, checks.end(), fault.code);
  if (mayBeNull && !fault.isNull && behind != checks.end()) found = behind;
  return static_cast<std::size_t>(found - checks.begin());
}

// Any two bad arguments are refused for the one that is checked first.
void ExpectOrder(const Operation& operation, int choice, const std::vector<Fault>& faults) {
  for (const Fault& a : faults) {
    for (const Fault& b : faults) {
      if (a.parameter >= b.parameter || (a.relates && b.relates)) continue;
      const bool isFirst = CheckOf(operation, a, faults) <= CheckOf(operation, b, faults);
      EXPECT_EQ(FaultyCall(operation, choice, {&a, &b}).Refusal(isFirst ? a.code : b.code), "")
          << a.name << ", " << b.name;
    }
  }
}

TEST(Contract, BadArgumentsAreRefusedInOrder) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const std::vector<Fault> faults = FaultsOf(operation, choice);
    for (const Fault& fault : faults) {
      EXPECT_EQ(FaultyCall(operation, choice, {&fault}).Refusal(fault.code), "") << fault.name;
    }
    if (choice == ChoicesOf(operation).front()) ExpectOrder(operation, choice, faults);
  });
}

// Whether source and destination may be one region with any arguments.
bool HaveOneSize(const Operation& operation) {
  return !operation.Has(catalogue::SizeRule::kFollows) &&
         !operation.Has(catalogue::SizeRule::kPart);
}

// What the catalogue says of running in place fits the types and the refusals; the sweep sees that
// it works. Images that share their first pixel and not the rest are different ones.
TEST(Contract, InPlaceIsAsStated) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const std::size_t destination = operation.DestinationIndex();
    const auto sources = operation.SourceIndices();
    if (destination == operation.parameters.size() || sources.empty()) return;
    const Pixel pixel = operation.parameters[destination].pixel;
    bool sameType = false;
    for (const std::size_t source : sources) {
      if (operation.parameters[source].size == catalogue::SizeRule::kFixed) continue;
      if (operation.parameters[source].pixel != pixel) continue;
      sameType = true;
      if (!HaveOneSize(operation)) continue;
      constexpr Size kSize = {19, 3};
      Trial trial(operation, choice, kSize);
      auto& read = *std::get<LxGenericROI*>(trial.call.values[source]);
      std::vector<std::uint8_t> memory(static_cast<std::size_t>(2 * read.GetPitch()) * 3);
      const auto image = [&](std::ptrdiff_t pitch) {
        return MakeView(pixel, kSize.width, kSize.height, {memory.data(), pitch, 0});
      };
      const auto one = image(read.GetPitch());
      const auto other = image(2 * read.GetPitch());
      trial.call.values[source] = one.get();
      trial.call.values[destination] = other.get();
      trial.Run();
      EXPECT_EQ(LxGetError(), LX_OK);
    }
    EXPECT_EQ(operation.inPlace != InPlace::kNo, sameType);
    EXPECT_EQ(operation.inPlace == InPlace::kRefused || operation.inPlace == InPlace::kSometimes,
              operation.Refuses(LX_ERROR_DESTINATION_IS_SOURCE));
  });
}

// A number that is beyond what anybody passes.
double Extreme(const Parameter& parameter, Random& random) {
  const double infinity = std::numeric_limits<double>::infinity();
  const bool real = parameter.kind != Kind::kInteger;
  const double most = real ? FLT_MAX : parameter.highest;
  const double least = real ? -FLT_MAX : parameter.lowest;
  const std::array<double, 10> values = {most,
                                         least,
                                         most - 1,
                                         least / 2,
                                         0,
                                         most / 2,
                                         parameter.maximum + 1,
                                         real ? 2000.0 : 1.0,
                                         infinity,
                                         std::nan("")};
  return values[random.Below(real ? values.size() : values.size() - 2)];
}

// Some of the arguments are extreme.
Arguments DrawExtremes(const Operation& operation, Random& random) {
  Arguments call(operation, random);
  for (std::size_t i = 0; i < call.values.size(); ++i) {
    const Parameter& parameter = operation.parameters[i];
    const auto real = [&] { return static_cast<float>(Extreme(parameter, random)); };
    if (random.Below(2) == 0) continue;
    if (catalogue::IsNumber(parameter.kind)) call.SetNumber(i, Extreme(parameter, random));
    if (parameter.kind == Kind::kColour) call.values[i] = LxColor{real(), real(), real()};
    if (parameter.kind == Kind::kKernel) {
      auto& kernel = *std::get<LxKernel*>(call.values[i]);
      kernel.SetGain(real());
      kernel.GetDataPtr()[0] = real();
    }
  }
  return call;
}

// Whatever the numbers are, a call ends, and touches nothing before or behind the regions: there
// are no pages there.
TEST(Contract, ExtremeArguments) {
  ForEveryOperation([](const Operation& operation, int choice) {
    if (operation.parameters.front().IsReturned()) return;  // a getter
    Random random(operation.signature);
    for (int turn = 0; turn < 12; ++turn) {
      Trial trial(operation, DrawExtremes(operation, random));
      trial.call.SetChoice(choice);
      const int end = turn % 2 == 0 ? kGuardBehind : kGuardBefore;
      for (const std::size_t i : trial.Regions()) {
        Picture picture(operation.parameters[i].pixel, 29, 3);
        Fill(picture, Content::kNoise, 0, 0, random);
        trial.Place(i, picture, {Pitch::kTight, end});
      }
      LxSetMMX(turn / 2 % 2);
      const std::string text = trial.call.Text();
      const CrashNote note(operation.signature, text, 29, 3);
      trial.Run();
      LxSetMMX(1);
      EXPECT_TRUE(LxGetError() == LX_OK || operation.Refuses(LxGetError()))
          << text << ": " << LxGetError();
    }
  });
}

// Names that are traced before the operation's own.
std::vector<std::string> InnerNames(const Operation& operation, std::vector<std::string> trace) {
  if (!operation.trace.empty() && !trace.empty()) trace.pop_back();
  return trace;
}

// Lets each allocation of a call fail, and collects the names that are then traced before the
// operation's own.
void ExpectFailuresAreReported(Trial& trial, const Reference& reference,
                               std::set<std::vector<std::string>>& traces) {
  const Operation& operation = trial.Described();
  const Outcome& expected = trial.Expect(reference);
  if (expected.error != LX_OK) traces.insert(InnerNames(operation, expected.trace));
  trial.Run();
  trial.Prepare();
  auto live = LiveAllocations();
  const auto check = [&] {
    const LX_ERRORS code = LxGetError();
    if (operation.ResultIndices().empty()) {
      EXPECT_EQ(LiveAllocations(), live);
    }
    if (code == LX_ERROR_ALLOCATION_FAILED || code == LX_ERROR_NOT_ENOUGH_MEMORY) {
      EXPECT_TRUE(operation.Refuses(code)) << catalogue::ErrorName(code);
      EXPECT_EQ(trial.TraceFault(), "");
      traces.insert(InnerNames(operation, TraceNow()));
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
// whole result. Each name that an inner step may trace is seen, with one choice or another.
TEST(Contract, FailingAllocations) {
  std::map<std::string, std::set<std::vector<std::string>>> seen;
  ForEveryOperation([&seen](const Operation& operation, int choice) {
    const Reference* const reference = FindReference(operation.signature);
    if (reference == nullptr) return;
    auto& traces = seen[operation.signature];
    Random random(operation.signature);
    for (const std::size_t index : operation.SourceIndices()) {
      Trial unattached(operation, choice);
      unattached.Detach(index);
      unattached.Run();
      traces.insert(InnerNames(operation, TraceNow()));
    }
    const bool isLast = choice == ChoicesOf(operation).back();
    const auto& inner = isLast ? operation.innerTraces : std::vector<std::vector<std::string>>();
    // The names of results that follow are seen where those are resized.
    const bool isKept = !operation.Has(catalogue::SizeRule::kFollows);
    const auto missing = [&] {
      return isKept && std::any_of(inner.begin(), inner.end(),
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
    if (!isKept) return;
    for (const auto& names : inner) {
      EXPECT_EQ(traces.count(names), 1U) << "never traced: " << names.front();
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

// An image without a size gets the one that follows, and what a region of that size would hold; or
// none when there is no memory for it.
TEST(Contract, ResultsAreResized) {
  ForEveryOperation([](const Operation& operation, int choice) {
    if (!operation.Has(catalogue::SizeRule::kFollows)) return;
    Trial trial(operation, choice);
    trial.Run();
    std::vector<std::pair<std::size_t, LxGenericROI*>> results;
    const auto detach = [&] {
      for (const auto& [index, region] : results) trial.Detach(index);
      trial.Prepare();
    };
    for (const std::size_t i : trial.Regions()) {
      if (operation.parameters[i].size != catalogue::SizeRule::kFollows) continue;
      results.emplace_back(i, std::get<LxGenericROI*>(trial.call.values[i]));
    }
    std::vector<std::vector<std::uint8_t>> expected;
    const auto bytes = [](const LxGenericROI& region) {
      return BytesOf(region, region.GetWidth() * std::size_t{region.GetPixelSize()});
    };
    for (const auto& [index, region] : results) expected.push_back(bytes(*region));
    detach();
    std::set<std::vector<std::string>> traces;
    FailEachAllocation([&trial] { trial.Call(); },
                       [&] {
                         EXPECT_EQ(LxGetError(), LX_ERROR_ALLOCATION_FAILED);
                         EXPECT_EQ(trial.TraceFault(), "");
                         traces.insert(TraceNow());
                         detach();
                       });
    EXPECT_EQ(LxGetError(), LX_OK);
    for (std::size_t i = 0; i < results.size(); ++i) {
      const auto& [index, region] = results[i];
      const auto& made = *std::get<LxGenericROI*>(trial.call.values[index]);
      EXPECT_EQ(made.GetWidth(), region->GetWidth());
      EXPECT_EQ(made.GetHeight(), region->GetHeight());
      EXPECT_EQ(bytes(made), expected[i]);
    }
    for (std::vector<std::string> names : operation.innerTraces) {
      names.push_back(operation.trace);
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
    const std::ptrdiff_t bits = pixel == Pixel::kBinary ? 1 : 8 * RowBytes(pixel, 1);
    for (int y = 0; y < kHeight; ++y) {
      for (std::ptrdiff_t x = 0; x < 8 * pitch; ++x) {
        const bool inside = y >= 2 && y < 10 && x >= 5 * bits && x < 105 * bits;
        const int changed = memory[static_cast<std::size_t>(y * pitch + x / 8)] ^ 0x5A;
        if (inside || (changed & 0x80 >> x % 8) == 0) continue;
        FAIL() << "bit " << x << " of row " << y;
      }
    }
  });
}

// The bytes of each pixel, row by row; of a binary one, its bit.
std::vector<std::vector<std::uint8_t>> PixelsOf(const LxGenericROI& region) {
  const unsigned size = region.GetPixelSize();
  std::vector<std::vector<std::uint8_t>> pixels;
  for (int y = 0; y < static_cast<int>(region.GetHeight()); ++y) {
    for (int x = 0; x < static_cast<int>(region.GetWidth()); ++x) {
      const auto* const pixel = static_cast<const std::uint8_t*>(region.GetPixelPtr(x, y));
      const int bit = *pixel & 0x80 >> region.GetBitPosition(x, y);
      pixels.emplace_back(pixel, pixel + size);
      if (size == 0) pixels.back().push_back(static_cast<std::uint8_t>(bit != 0 ? 1 : 0));
    }
  }
  return pixels;
}

void Invert(const LxGenericROI& region, int x, int y) {
  auto* const pixel = static_cast<std::uint8_t*>(region.GetPixelPtr(x, y));
  const unsigned size = region.GetPixelSize();
  for (unsigned i = 0; i < size; ++i) pixel[i] ^= 0xFF;
  if (size == 0) *pixel = static_cast<std::uint8_t>(*pixel ^ 0x80 >> region.GetBitPosition(x, y));
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
  trial.Run();
  const auto before = PixelsOf(result);
  trial.Prepare();
  Invert(*std::get<LxGenericROI*>(trial.call.values[index]), column, row);
  trial.Call();
  const auto after = PixelsOf(result);
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    const int x = static_cast<int>(i) % kSize.width;
    const int y = static_cast<int>(i) / kSize.width;
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

}  // namespace
}  // namespace lx::test
