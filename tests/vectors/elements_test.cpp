// SPDX-License-Identifier: Apache-2.0
#include "lxpic/vectors/elements.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "lxpic/base/vector.h"
#include "support/outcome_text.h"

namespace {

using Bytes = std::vector<int>;

/// Saves a vector of `element`, compares the file with `expected` from the signature byte on, and
/// gives back what loading it yields.
template <class T>
T RoundTrip(const T& element, const Bytes& expected) {
  const std::string path = testing::TempDir() + "lxpic_elements_" + std::to_string(getpid());
  LxVectorTemplate<T> vector;
  vector.AddElement(element);
  vector.Save(path.c_str());
  EXPECT_EQ(lx::test::TakeOutcome(), "0");
  std::ifstream stream(path, std::ios::binary);
  Bytes bytes;
  for (std::istreambuf_iterator<char> next(stream), last; next != last; ++next) {
    bytes.push_back(static_cast<unsigned char>(*next));
  }
  Bytes whole = {0x4C, expected[0], expected[1], 0x4C ^ expected[0] ^ expected[1], 1, 0, 0, 0};
  whole.insert(whole.end(), expected.begin() + 2, expected.end());
  EXPECT_EQ(bytes, whole);
  LxVectorTemplate<T> loaded;
  loaded.Load(path.c_str());
  EXPECT_EQ(lx::test::TakeOutcome(), "0");
  EXPECT_EQ(loaded.GetNumElements(), 1U);
  std::remove(path.c_str());
  return loaded[0];
}

TEST(Elements, HaveTheirFileForm) {
  LxOk();
  EXPECT_EQ(RoundTrip(0xFEDCBA98U, {0xFF, 0xFF, 0x98, 0xBA, 0xDC, 0xFE}), 0xFEDCBA98U);

  const auto path = RoundTrip(LxPath{-2, 0x0304}, {6, 1, 0xFE, 0xFF, 4, 3});
  EXPECT_EQ(path.m_n16X, -2);
  EXPECT_EQ(path.m_n16Y, 0x0304);

  const auto grey = RoundTrip(LxBW8Path{1, -32768, 0xAB}, {7, 1, 1, 0, 0, 0x80, 0xAB, 0});
  EXPECT_EQ(grey.m_n16X, 1);
  EXPECT_EQ(grey.m_n16Y, -32768);
  EXPECT_EQ(grey.m_bw8Pixel, 0xAB);

  const auto wide = RoundTrip(LxBW16Path{1, 2, 0xABCD}, {11, 1, 1, 0, 2, 0, 0xCD, 0xAB});
  EXPECT_EQ(wide.m_n16Y, 2);
  EXPECT_EQ(wide.m_bw16Pixel, 0xABCD);

  const auto colour = RoundTrip(LxC24Path{1, 2, {7, 8, 9}}, {8, 1, 1, 0, 2, 0, 7, 8, 9, 0});
  EXPECT_EQ(colour.m_n16X, 1);
  EXPECT_EQ(colour.m_c24Pixel, (LxC24{7, 8, 9}));

  const auto peak = RoundTrip(LxPeak{0x01020304, 5, -1.5F, -2, 0x7FFFFFFF},
                              {9, 1,    4,    3,    2,    1,    5,    0,    0,    0,    0,
                               0, 0xC0, 0xBF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F});
  EXPECT_EQ(peak.m_un32Start, 0x01020304U);
  EXPECT_EQ(peak.m_un32Length, 5U);
  EXPECT_EQ(peak.m_f32Center, -1.5F);
  EXPECT_EQ(peak.m_n32Amplitude, -2);
  EXPECT_EQ(peak.m_n32Area, 0x7FFFFFFF);
}

TEST(Elements, OfTheImageModelHaveTheirFileForm) {
  LxOk();
  EXPECT_EQ(RoundTrip(LxBW8(200), {1, 1, 200}), 200);
  EXPECT_EQ(RoundTrip(LxBW16(0x1234), {2, 1, 0x34, 0x12}), 0x1234);
  EXPECT_EQ(RoundTrip(LxBW32(0x12345678), {3, 1, 0x78, 0x56, 0x34, 0x12}), 0x12345678U);
  EXPECT_EQ(RoundTrip(LxC24{1, 2, 3}, {4, 1, 1, 2, 3}), (LxC24{1, 2, 3}));
  const auto run =
      RoundTrip(LxRun{0x102, 0x304, 0xAABBCCDD},
                {5, 1, 2, 1, 0, 0, 0, 0, 0, 0, 4, 3, 0, 0, 0, 0, 0, 0, 0xDD, 0xCC, 0xBB, 0xAA});
  EXPECT_EQ(run.start, 0x102U);
  EXPECT_EQ(run.end, 0x304U);
  EXPECT_EQ(run.position, 0xAABBCCDDU);
}

}  // namespace
