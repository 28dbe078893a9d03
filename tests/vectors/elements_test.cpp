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

// Saves a vector of `element`, compares the file with `expected` from the signature byte on, loads
// it, and saves what was loaded: that must give the same file.
template <class T>
void ExpectFileForm(const T& element, const Bytes& expected) {
  Bytes whole = {0x4C, expected[0], expected[1], 0x4C ^ expected[0] ^ expected[1], 1, 0, 0, 0};
  whole.insert(whole.end(), expected.begin() + 2, expected.end());
  const std::string path = testing::TempDir() + "lxpic_elements_" + std::to_string(getpid());
  LxVectorTemplate<T> vector;
  vector.AddElement(element);
  for (int turn = 0; turn < 2; ++turn) {
    vector.Save(path.c_str());
    EXPECT_EQ(lx::test::TakeOutcome(), "0");
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), whole);
    vector.Empty();
    vector.Load(path.c_str());
    EXPECT_EQ(lx::test::TakeOutcome(), "0");
  }
  std::remove(path.c_str());
}

TEST(Elements, HaveTheirFileForm) {
  ExpectFileForm(0xFEDCBA98U, {0xFF, 0xFF, 0x98, 0xBA, 0xDC, 0xFE});
  ExpectFileForm(LxPath{-2, 0x0304}, {6, 1, 0xFE, 0xFF, 4, 3});
  ExpectFileForm(LxBW8Path{1, -32768, 0xAB}, {7, 1, 1, 0, 0, 0x80, 0xAB, 0});
  ExpectFileForm(LxBW16Path{1, 2, 0xABCD}, {11, 1, 1, 0, 2, 0, 0xCD, 0xAB});
  ExpectFileForm(LxC24Path{1, 2, {7, 8, 9}}, {8, 1, 1, 0, 2, 0, 7, 8, 9, 0});
  ExpectFileForm(LxPeak{0x01020304, 5, -1.5F, -2, 0x7FFFFFFF},
                 {9, 1,    4,    3,    2,    1,    5,    0,    0,    0,    0,
                  0, 0xC0, 0xBF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F});
  // Of the image model.
  ExpectFileForm(LxBW8(200), {1, 1, 200});
  ExpectFileForm(LxBW16(0x1234), {2, 1, 0x34, 0x12});
  ExpectFileForm(LxBW32(0x12345678), {3, 1, 0x78, 0x56, 0x34, 0x12});
  ExpectFileForm(LxC24{1, 2, 3}, {4, 1, 1, 2, 3});
  ExpectFileForm(LxRun{0x102, 0x304, 0xAABBCCDD},
                 {5, 1, 2, 1, 0, 0, 0, 0, 0, 0, 4, 3, 0, 0, 0, 0, 0, 0, 0xDD, 0xCC, 0xBB, 0xAA});
}

}  // namespace
