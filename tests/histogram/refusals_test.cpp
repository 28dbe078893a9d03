// SPDX-License-Identifier: Apache-2.0
// Which of several bad arguments is told, numbers far out of range, and what is left when memory
// runs out.
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

TEST(Refusals, ComeInTheirOrder) {
  LxImage<LxBW16> noWords;
  LxImage<LxBW16> words(4, 4);
  LxImage<LxBW32> longs(4, 4);
  auto bytes = HistogramWith({{1, 1}});
  auto wide = HistogramWith({{1, 1}}, 65536);
  LxVector table;
  LxVector noData;
  table.SetType(LX_VECTOR_TABLE, 1, 256);
  noData.SetType(LX_VECTOR_HISTOGRAM, 1, 0);
  int result = 5;
  LxVector* const noVector = nullptr;
  constexpr auto kCount = PIC_HIST_PIXEL_COUNT;
  constexpr auto kUnknown = static_cast<PIC_HISTOGRAM_FEATURE>(9);
  const std::string ofWords = " PicHistogram ( LxBW16)";
  const std::string ofLongs = " PicHistogram ( LxBW32)";
  const std::string analyse = " PicAnalyseHistogram";
  const std::string setUp = " PicSetupEqualize ( LxBWHistogramVector)";
  const std::string isodata = " PicIsodataThreshold ( LxBWHistogramVector)";
  const std::string untyped = " PicIsodataThreshold ( LxVector)";
  const std::vector<std::pair<std::string, Call>> rows = {
      {"1400" + ofWords, [&] { PicHistogram(&noWords, nullptr, 16, 18, 0); }},
      {"1601" + ofWords, [&] { PicHistogram(&words, nullptr, 16, 18, 0); }},
      {"1013" + ofWords, [&] { PicHistogram(&words, &bytes, 0xFFFFFFFF, 0, 1); }},
      {"1014" + ofLongs, [&] { PicHistogram(&longs, &bytes, 31, 0xFFFFFFFF, 0); }},
      {"1613" + setUp, [&] { PicSetupEqualize(&wide, nullptr); }},
      {"1613" + analyse, [&] { PicAnalyseHistogram(&wide, kCount, -1, 256); }},
      {"1013" + analyse, [&] { PicAnalyseHistogram(&bytes, kCount, INT_MIN, 256); }},
      {"1007" + analyse, [&] { PicAnalyseHistogram(&bytes, kCount, 0, INT_MIN); }},
      {"1613" + isodata, [&] { PicIsodataThreshold(&wide, 256, 256); }},
      {"1012" + untyped, [&] { PicIsodataThreshold(noVector, 256, 0); }},
      {"1601" + untyped, [&] { PicIsodataThreshold(&noData, 0, 255); }},
      // A feature that does not exist is traced, in one form, and no error.
      {"0" + analyse, [&] { EXPECT_EQ(PicAnalyseHistogram(&bytes, kUnknown, 0, 255), 0.0F); }},
      {"1013" + analyse, [&] { PicAnalyseHistogram(&bytes, kUnknown, -1, 255); }},
      {"0", [&] { EXPECT_EQ(PicAnalyseHistogramBW16(&wide, kUnknown, 0, 255), 0.0F); }},
      {"1602" + analyse, [&] { PicAnalyseHistogram(&table, 0, 255, 6, result); }},
      {"1601" + analyse, [&] { PicAnalyseHistogram(&noData, 0, 255, 6, result); }},
      {"1603 PicSetupEqualize ( LxVector)", [&] { PicSetupEqualize(&table, &table); }},
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
