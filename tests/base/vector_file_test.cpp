// SPDX-License-Identifier: Apache-2.0
// Vector files, whole and damaged.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "lxpic/vectors/elements.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"

namespace {

using lx::test::TakeOutcome;
using Bytes = std::vector<unsigned char>;
using Vector = LxVectorTemplate<LxBW8Path>;

constexpr std::size_t kHeader = 8;
constexpr std::size_t kElement = 6;

Bytes ReadFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class VectorFile : public testing::Test {
 protected:
  VectorFile() {
    LxOk();
    std::filesystem::create_directories(folder);
    for (int i = 0; i < 3; ++i) {
      LxBW8Path point{};
      point.m_n16X = static_cast<std::int16_t>(0x0102 + i);
      point.m_n16Y = static_cast<std::int16_t>(-2 - i);
      point.m_bw8Pixel = static_cast<std::uint8_t>(0x80 + i);
      vector.AddElement(point);
    }
    other.AddElement({9, 9, 9});
  }
  ~VectorFile() override { std::filesystem::remove_all(folder); }

  /// The file of `vector`, written out.
  static Bytes Whole() {
    return {0x4C, 7, 1,    0x4C ^ 7 ^ 1, 3,    0, 0, 0,  //
            0x02, 1, 0xFE, 0xFF,         0x80, 0,        //
            0x03, 1, 0xFD, 0xFF,         0x81, 0,        //
            0x04, 1, 0xFC, 0xFF,         0x82, 0};
  }
  void Write(const Bytes& bytes) const {
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
  }
  void ExpectOtherIsUnchanged() const {
    ASSERT_EQ(other.GetNumElements(), 1U);
    EXPECT_EQ(other[0].m_n16X, 9);
  }
  /// Whether `loaded` holds the first `whole` points of `vector`, and zeros behind.
  void ExpectPoints(const Vector& loaded, unsigned whole) const {
    for (unsigned i = 0; i < loaded.GetNumElements(); ++i) {
      const LxBW8Path expected = i < whole ? vector[i] : LxBW8Path{};
      ASSERT_EQ(loaded[i].m_n16X, expected.m_n16X) << i;
      ASSERT_EQ(loaded[i].m_n16Y, expected.m_n16Y) << i;
      ASSERT_EQ(loaded[i].m_bw8Pixel, expected.m_bw8Pixel) << i;
    }
  }

  const std::string folder =
      testing::TempDir() + "lxpic_vector_file_" + std::to_string(getpid()) + "/";
  const std::string path = folder + "vector";
  Vector vector;
  Vector other;
};

TEST_F(VectorFile, HoldsWhatItShould) {
  LxSetError(LX_ERROR_INTERNAL);
  vector.Save(path.c_str());
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(ReadFile(path), Whole());
  LxSetError(LX_ERROR_INTERNAL);
  other.Load(path.c_str());
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(other.GetNumElements(), 3U);
  EXPECT_EQ(other.GetMaxElements(), 3U);
  ExpectPoints(other, 3);

  Vector().Save(path.c_str());
  EXPECT_EQ(ReadFile(path), (Bytes{0x4C, 7, 1, 0x4A, 0, 0, 0, 0}));
  other.Load(path.c_str());
  EXPECT_EQ(other.GetNumElements(), 0U);
  EXPECT_EQ(TakeOutcome(), "0");
}

TEST_F(VectorFile, PassesMoreThanOneBufferful) {
  Vector large;
  for (int i = 0; i < 5000; ++i) {
    large.AddElement(vector[static_cast<unsigned>(i % 3)]);
    large[static_cast<unsigned>(i)].m_n16X = static_cast<std::int16_t>(i);
  }
  large.Save(path.c_str());
  EXPECT_EQ(ReadFile(path).size(), kHeader + 5000 * kElement);
  other.Load(path.c_str());
  ASSERT_EQ(TakeOutcome(), "0");
  ASSERT_EQ(other.GetNumElements(), 5000U);
  for (unsigned i = 0; i < 5000; ++i) {
    ASSERT_EQ(other[i].m_n16X, static_cast<int>(i));
    ASSERT_EQ(other[i].m_n16Y, large[i].m_n16Y);
  }
}

TEST_F(VectorFile, PaddingCarriesNoMeaning) {
  Bytes bytes = Whole();
  for (unsigned i = 0; i < 3; ++i) {
    bytes[kHeader + (i + 1) * kElement - 1] = 0xEE;
    reinterpret_cast<unsigned char*>(&vector[i])[kElement - 1] = 0xEE;
  }
  Write(bytes);
  other.Load(path.c_str());
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectPoints(other, 3);
  vector.Save(path.c_str());
  EXPECT_EQ(ReadFile(path), Whole());
}

TEST_F(VectorFile, MayEndAnywhere) {
  for (std::size_t length = 0; length < Whole().size(); ++length) {
    Bytes bytes = Whole();
    bytes.resize(length);
    Write(bytes);
    Vector target = other;
    target.Load(path.c_str());
    EXPECT_EQ(TakeOutcome(), "1103 LxVector::Load") << length;
    if (length < kHeader) {
      ASSERT_EQ(target.GetNumElements(), 1U) << length;
      EXPECT_EQ(target[0].m_n16X, 9) << length;
    } else {
      ASSERT_EQ(target.GetNumElements(), 3U) << length;
      ExpectPoints(target, static_cast<unsigned>((length - kHeader) / kElement));
    }
  }
  Bytes bytes = Whole();
  bytes.insert(bytes.end(), 1000, 0x55);
  Write(bytes);
  other.Load(path.c_str());
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(other.GetNumElements(), 3U);
}

TEST_F(VectorFile, EveryHeaderByteCounts) {
  const Bytes whole = Whole();
  Write(whole);
  std::fstream stream(path, std::ios::binary | std::ios::in | std::ios::out);
  for (unsigned position = 0; position < 4; ++position) {
    for (int change = 0; change < 256; ++change) {
      stream.seekp(position).put(static_cast<char>(whole[position] ^ change)).flush();
      Vector target = other;
      target.Load(path.c_str());
      ASSERT_EQ(TakeOutcome(), change == 0 ? "0" : "1105 LxVector::Load") << position;
      ASSERT_EQ(target.GetNumElements(), change == 0 ? 3U : 1U) << position << ' ' << change;
    }
    stream.seekp(position).put(static_cast<char>(whole[position])).flush();
  }
  LxVectorTemplate<LxC24Path>().Save(path.c_str());
  other.Load(path.c_str());
  EXPECT_EQ(TakeOutcome(), "1105 LxVector::Load");
  ExpectOtherIsUnchanged();
}

TEST_F(VectorFile, ImpossibleCountsAllocateNothing) {
  for (const std::uint32_t count : {0xFFFFFFFFU, 0x80000000U, 0x20000000U}) {
    Bytes bytes = Whole();
    for (unsigned i = 0; i < 4; ++i) {
      bytes[4 + i] = static_cast<unsigned char>(count >> (8 * i));
    }
    Write(bytes);
    Vector target = other;
    const auto allocations = lx::test::AllocationCount();
    target.Load(path.c_str());
    EXPECT_EQ(lx::test::AllocationCount(), allocations);
    EXPECT_EQ(TakeOutcome(), "1303 LxVector::Load") << count;
    EXPECT_EQ(target.GetNumElements(), 0U);
    target.AddElement(vector[0]);
    EXPECT_EQ(TakeOutcome(), "0");
  }
  // A count that a file cut short could have.
  Bytes bytes = Whole();
  bytes[6] = 2;
  Write(bytes);
  other.Load(path.c_str());
  EXPECT_EQ(TakeOutcome(), "1103 LxVector::Load");
  ASSERT_EQ(other.GetNumElements(), 0x20003U);
  ExpectPoints(other, 3);
}

TEST_F(VectorFile, StorageMayFail) {
  Write(Whole());
  const lx::test::FailAllocation guard(0);
  other.Load(path.c_str());
  EXPECT_TRUE(guard.Fired());
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::SetMaxElements < LxVector::Load");
  EXPECT_EQ(other.GetNumElements(), 0U);
}

TEST_F(VectorFile, NamesMayBeUtf16) {
  // Characters of one, two, three and four bytes in UTF-8.
  const std::u16string name =
      std::u16string(folder.begin(), folder.end()) + u"a\u00E9\u65E5\U0001F600";
  const auto* const units = reinterpret_cast<const unsigned short*>(name.c_str());
  vector.Save(units);
  EXPECT_EQ(TakeOutcome(), "0");
  EXPECT_EQ(ReadFile(folder + "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80"), Whole());
  other.Load(units);
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectPoints(other, 3);
}

TEST_F(VectorFile, NamesThatCannotBeOpened) {
  const std::u16string start(folder.begin(), folder.end());
  for (const std::u16string& name :
       {start + u'\xD800', start + u'\xDC00', start + u"\xDBFFx", start + u"\xD83D\xD83D\xDE00",
        start + u"missing/x", std::u16string(5000, u'x'), std::u16string(2000, u'\x65E5'),
        std::u16string()}) {
    const auto* const units = reinterpret_cast<const unsigned short*>(name.c_str());
    vector.Save(units);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save ( Unicode)");
    other.Load(units);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Load ( Unicode)");
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  const std::string missing = folder + "missing/x";
  for (const char* name : {missing.c_str(), "", static_cast<const char*>(nullptr)}) {
    vector.Save(name);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save");
    other.Load(name);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Load");
  }
  vector.Save(static_cast<const unsigned short*>(nullptr));
  EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save ( Unicode)");
  vector.Save(folder.c_str());
  EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save");
  other.Load(folder.c_str());
  EXPECT_EQ(TakeOutcome(), "1103 LxVector::Load");
  ExpectOtherIsUnchanged();
}

TEST_F(VectorFile, FullDevices) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no full device here";
  vector.Save("/dev/full");
  EXPECT_EQ(TakeOutcome(), "1106 LxVector::Save");
  vector.SetNumElements(100'000);
  vector.Save("/dev/full");
  EXPECT_EQ(TakeOutcome(), "1104 LxVector::Save");
}

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TEST_F(VectorFile, StreamsHoldSeveralVectors) {
  {
    const Stream stream(std::fopen(path.c_str(), "w+b"), std::fclose);
    vector.Serialize(stream.get(), 1, 1);
    Vector().Serialize(stream.get(), 1, 1);
    vector.Serialize(stream.get(), 1, 1);
    std::rewind(stream.get());
    for (const unsigned count : {3U, 0U, 3U}) {
      other.Serialize(stream.get(), 0, 1);
      EXPECT_EQ(other.GetNumElements(), count);
      ExpectPoints(other, 3);
    }
    EXPECT_EQ(TakeOutcome(), "0");
    other.Serialize(stream.get(), 0, 1);
    EXPECT_EQ(TakeOutcome(), "1103 LxVector::Serialize");
  }
  const Stream readOnly(std::fopen(path.c_str(), "rb"), std::fclose);
  vector.Serialize(readOnly.get(), 1, 1);
  EXPECT_EQ(TakeOutcome(), "1104 LxVector::Serialize");
  vector.Serialize(nullptr, 1, 1);
  EXPECT_EQ(TakeOutcome(), "1104 LxVector::Serialize");
  vector.Serialize(nullptr, 0, 1);
  EXPECT_EQ(TakeOutcome(), "1103 LxVector::Serialize");
}

TEST_F(VectorFile, StreamsNeedNotSeek) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const Stream out(fdopen(ends[1], "wb"), std::fclose);
  const Stream in(fdopen(ends[0], "rb"), std::fclose);
  vector.Serialize(out.get(), 1, 1);
  const std::uint32_t impossible = 0xFFFFFFFF;
  std::fwrite(&impossible, sizeof impossible, 1, out.get());
  std::fflush(out.get());
  other.Serialize(in.get(), 0, 1);
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectPoints(other, 3);
  other.Serialize(in.get(), 0, 1);
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::Serialize");
  EXPECT_EQ(other.GetNumElements(), 0U);
}

}  // namespace
