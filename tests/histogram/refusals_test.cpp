// SPDX-License-Identifier: Apache-2.0
// Numbers far out of range, vectors of a kind without data, features that do not exist, and what is
// left when memory runs out.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "lxpic/lxpic.h"
#include "support/allocation_failure.h"
#include "support/filled.h"
#include "support/outcome_text.h"
#include "vectors/histograms.h"

namespace lx::test {
namespace {

using Call = std::function<void()>;

TEST(Refusals, OfUnusualArguments) {
  LxImage<LxBW16> words(4, 4);
  LxImage<LxBW32> longs(4, 4);
  auto bytes = HistogramWith({{1, 1}});
  auto wide = HistogramWith({{1, 1}}, 65536);
  LxVector table;
  LxVector noData;
  table.SetType(LX_VECTOR_TABLE, 1, 256);
  noData.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  int result = 5;
  constexpr auto kCount = PIC_HIST_PIXEL_COUNT;
  constexpr auto kUnknown = static_cast<PIC_HISTOGRAM_FEATURE>(9);
  const std::string ofWords = " PicHistogram ( LxBW16)";
  const std::string ofLongs = " PicHistogram ( LxBW32)";
  const std::string analyse = " PicAnalyseHistogram";
  const std::string untyped = " PicIsodataThreshold ( LxVector)";
  const std::vector<std::pair<std::string, Call>> rows = {
      {"1013" + ofWords, [&] { PicHistogram(&words, &bytes, 0xFFFFFFFF, 0, 1); }},
      {"1014" + ofLongs, [&] { PicHistogram(&longs, &bytes, 31, 0xFFFFFFFF, 0); }},
      {"1013" + analyse, [&] { PicAnalyseHistogram(&bytes, kCount, INT_MIN, 256); }},
      {"1007" + analyse, [&] { PicAnalyseHistogram(&bytes, kCount, 0, INT_MIN); }},
      {"1601" + untyped, [&] { PicIsodataThreshold(&noData, 0, 255); }},
      // A feature that does not exist is traced, in one form, and no error.
      {"0" + analyse, [&] { EXPECT_EQ(PicAnalyseHistogram(&bytes, kUnknown, 0, 255), 0.0F); }},
      {"1013" + analyse, [&] { PicAnalyseHistogram(&bytes, kUnknown, -1, 255); }},
      {"0", [&] { EXPECT_EQ(PicAnalyseHistogramBW16(&wide, kUnknown, 0, 255), 0.0F); }},
      {"1601" + analyse, [&] { PicAnalyseHistogram(&noData, 0, 255, 6, result); }},
      {"1601 PicSetupEqualize ( LxVector)", [&] { PicSetupEqualize(&noData, &table); }}};
  for (const auto& [outcome, call] : rows) {
    call();
    EXPECT_EQ(TakeOutcome(), outcome);
  }
  EXPECT_EQ(bytes.GetNumElements(), 256U);
  EXPECT_EQ(result, 5);
}

TEST(Refusals, KeepResultsWhenMemoryRunsOut) {
  Filled<LxBW8> bytes(4, 4, LxBW8(9));
  for (int y = 0; y < 4; ++y) bytes.AddRun(0, y, 2);
  Filled<LxBW16> words(4, 4, LxBW16(9));
  LxBWHistogramVector histogram(0);
  const auto expect = [&](const Call& call) {
    histogram = HistogramOf({7, 8, 9});
    const auto check = [&] {
      EXPECT_EQ(TakeOutcome().substr(0, 4), "1303");
      EXPECT_EQ(std::vector(histogram.begin(), histogram.end()), (std::vector{7U, 8U, 9U}));
      EXPECT_EQ(bytes.GetPixel(3, 3) + words.GetPixel(3, 3), 18);
    };
    EXPECT_GE(FailEachAllocation(call, check), 1);
    EXPECT_EQ(TakeOutcome(), "0");
    bytes.SetPixel(LxBW8(9), 3, 3);
    words.SetPixel(LxBW16(9), 3, 3);
  };
  expect([&] { PicHistogram(&bytes, &histogram); });
  expect([&] { PicHistogram(&words, &histogram, 14, 12, 0); });
  expect([&] { PicEqualize(&bytes, &bytes); });
  expect([&] { PicEqualize(&words, &words); });
}

}  // namespace
}  // namespace lx::test
