// SPDX-License-Identifier: Apache-2.0
// Vector files, whole and damaged.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "lxpic/vectors/elements.h"
#include "support/allocation_failure.h"
#include "support/outcome_text.h"
#include "support/temporary_folder.h"

namespace {

using lx::test::TakeOutcome;
using Vector = LxVectorTemplate<LxBW8Path>;

constexpr std::size_t kHeader = 8;
constexpr std::size_t kElement = 6;

LxBW8Path PointAt(int x, int y, int level) {
  return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
          static_cast<std::uint8_t>(level)};
}

class VectorFile : public testing::Test, protected lx::test::TemporaryFolder {
 protected:
  VectorFile() {
    LxOk();
    for (int i = 0; i < 3; ++i) vector.AddElement(PointAt(0x0102 + i, -2 - i, 0x80 + i));
    other.AddElement(PointAt(9, 9, 9));
  }

  /// The file of `vector`, written out.
  static std::string Whole() {
    constexpr unsigned char kBytes[] = {0x4C, 7, 1,    0x4C ^ 7 ^ 1, 3,    0, 0, 0,  //
                                        0x02, 1, 0xFE, 0xFF,         0x80, 0,        //
                                        0x03, 1, 0xFD, 0xFF,         0x81, 0,        //
                                        0x04, 1, 0xFC, 0xFF,         0x82, 0};
    return {std::begin(kBytes), std::end(kBytes)};
  }
  std::string Saved(Vector& saved) const {
    LxSetError(LX_ERROR_INTERNAL);
    saved.Save(path.c_str());
    EXPECT_EQ(TakeOutcome(), "0");
    return Content(path);
  }
  /// What `other` becomes when it loads a file of these bytes.
  Vector Loaded(const std::string& bytes, const char* outcome) const {
    Write("vector", bytes);
    Vector target = other;
    LxSetError(LX_ERROR_INTERNAL);
    target.Load(path.c_str());
    EXPECT_EQ(TakeOutcome(), outcome);
    return target;
  }
  /// Whether `loaded` has `count` points: the first `whole` of `vector`, and zeros behind.
  void ExpectPoints(const Vector& loaded, unsigned count, std::size_t whole = 3) const {
    ASSERT_EQ(loaded.GetNumElements(), count);
    for (unsigned i = 0; i < count; ++i) {
      const LxBW8Path expected = i < whole ? vector[i] : LxBW8Path{};
      ASSERT_EQ(loaded[i].m_n16X, expected.m_n16X) << i;
      ASSERT_EQ(loaded[i].m_n16Y, expected.m_n16Y) << i;
      ASSERT_EQ(loaded[i].m_bw8Pixel, expected.m_bw8Pixel) << i;
    }
  }
  static void ExpectUnchanged(const Vector& loaded) {
    ASSERT_EQ(loaded.GetNumElements(), 1U);
    EXPECT_EQ(loaded[0].m_n16X, 9);
  }
  template <class Name>
  void ExpectNotOpened(Name name, const std::string& form) {
    vector.Save(name);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save" + form);
    other.Load(name);
    EXPECT_EQ(TakeOutcome(), "1102 LxVector::Load" + form);
    ExpectUnchanged(other);
  }

  const std::string path = Path("vector");
  Vector vector;
  Vector other;
};

TEST_F(VectorFile, HoldsWhatItShould) {
  EXPECT_EQ(Saved(vector), Whole());
  const Vector loaded = Loaded(Whole(), "0");
  ExpectPoints(loaded, 3);
  EXPECT_EQ(loaded.GetMaxElements(), 3U);
  Vector none;
  EXPECT_EQ(Saved(none), std::string("\x4C\7\1\x4A\0\0\0\0", kHeader));
  EXPECT_EQ(Loaded(Content(path), "0").GetNumElements(), 0U);
}

TEST_F(VectorFile, PassesMoreThanOneBufferful) {
  Vector large;
  for (int i = 0; i < 5000; ++i) large.AddElement(PointAt(i, -i, i % 251));
  const std::string bytes = Saved(large);
  EXPECT_EQ(bytes.size(), kHeader + 5000 * kElement);
  Vector loaded = Loaded(bytes, "0");
  ASSERT_EQ(loaded.GetNumElements(), 5000U);
  for (int i = 0; i < 5000; ++i) ASSERT_EQ(loaded[static_cast<unsigned>(i)].m_n16X, i);
  EXPECT_EQ(Saved(loaded), bytes);
}

TEST_F(VectorFile, PaddingCarriesNoMeaning) {
  std::string bytes = Whole();
  for (unsigned i = 0; i < 3; ++i) {
    bytes[kHeader + (i + 1) * kElement - 1] = '\xEE';
    reinterpret_cast<unsigned char*>(&vector[i])[kElement - 1] = 0xEE;
  }
  ExpectPoints(Loaded(bytes, "0"), 3);
  EXPECT_EQ(Saved(vector), Whole());
}

TEST_F(VectorFile, MayEndAnywhere) {
  for (std::size_t length = 0; length < Whole().size(); ++length) {
    SCOPED_TRACE(length);
    const Vector loaded = Loaded(Whole().substr(0, length), "1103 LxVector::Load");
    if (length < kHeader) {
      ExpectUnchanged(loaded);
    } else {
      ExpectPoints(loaded, 3, (length - kHeader) / kElement);
    }
  }
  ExpectPoints(Loaded(Whole() + std::string(1000, 'U'), "0"), 3);
}

TEST_F(VectorFile, EveryHeaderByteCounts) {
  for (unsigned position = 0; position < 4; ++position) {
    for (int change = 1; change < 256; change <<= 1) {
      SCOPED_TRACE(change);
      std::string bytes = Whole();
      bytes[position] = static_cast<char>(bytes[position] ^ change);
      ExpectUnchanged(Loaded(bytes, "1105 LxVector::Load"));
    }
  }
  LxVectorTemplate<LxC24Path>().Save(path.c_str());
  ExpectUnchanged(Loaded(Content(path), "1105 LxVector::Load"));
}

TEST_F(VectorFile, ImpossibleCountsAllocateNothing) {
  for (const char* const count : {"\xFF\xFF\xFF\xFF", "\0\0\0\x80", "\0\0\0\x20"}) {
    Write("vector", Whole().replace(4, 4, count, 4));
    Vector target = other;
    const auto allocations = lx::test::AllocationCount();
    target.Load(path.c_str());
    EXPECT_EQ(lx::test::AllocationCount(), allocations);
    EXPECT_EQ(TakeOutcome(), "1303 LxVector::Load");
    EXPECT_EQ(target.GetNumElements(), 0U);
    target.AddElement(vector[0]);
    EXPECT_EQ(TakeOutcome(), "0");
  }
  // A count that a file cut short could have.
  ExpectPoints(Loaded(Whole().replace(6, 1, "\2"), "1103 LxVector::Load"), 0x20003);
}

TEST_F(VectorFile, StorageMayFail) {
  Write("vector", Whole());
  const lx::test::FailAllocation guard(0);
  other.Load(path.c_str());
  EXPECT_TRUE(guard.Fired());
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::SetMaxElements < LxVector::Load");
  EXPECT_EQ(other.GetNumElements(), 0U);
}

const unsigned short* UnitsOf(const std::u16string& name) {
  return reinterpret_cast<const unsigned short*>(name.c_str());
}

TEST_F(VectorFile, NamesMayBeUtf16) {
  // Characters of one, two, three and four bytes in UTF-8, the first and the last ones of each.
  const std::u16string name =
      folder.u16string() + u"/\x7F\x80\u07FF\u0800\u65E5\xFFFF\U00010000\U0001F600";
  vector.Save(UnitsOf(name));
  EXPECT_EQ(Content(Path("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xE6\x97\xA5\xEF\xBF\xBF"
                         "\xF0\x90\x80\x80\xF0\x9F\x98\x80")),
            Whole());
  other.Load(UnitsOf(name));
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectPoints(other, 3);
}

TEST_F(VectorFile, NamesThatCannotBeOpened) {
  const std::u16string start = folder.u16string() + u"/";
  for (const std::u16string& name :
       {start + u'\xD800', start + u'\xDC00', start + u"\xDBFFx", start + u"\xD83D\xD83D\xDE00",
        start + u"missing/x", std::u16string(5000, u'x'), std::u16string(2000, u'\x65E5'),
        std::u16string()}) {
    ExpectNotOpened(UnitsOf(name), " ( Unicode)");
  }
  ExpectNotOpened(static_cast<const unsigned short*>(nullptr), " ( Unicode)");
  const std::string missing = Path("missing/x");
  for (const char* name : {missing.c_str(), "", static_cast<const char*>(nullptr)}) {
    ExpectNotOpened(name, "");
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  vector.Save(folder.c_str());
  EXPECT_EQ(TakeOutcome(), "1102 LxVector::Save");
  other.Load(folder.c_str());
  EXPECT_EQ(TakeOutcome(), "1103 LxVector::Load");
  ExpectUnchanged(other);
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
      ExpectPoints(other, count);
    }
    EXPECT_EQ(TakeOutcome(), "0");
    other.Serialize(stream.get(), 0, 1);
    EXPECT_EQ(TakeOutcome(), "1103 LxVector::Serialize");
  }
  const Stream readOnly(std::fopen(path.c_str(), "rb"), std::fclose);
  for (std::FILE* const file : {readOnly.get(), static_cast<std::FILE*>(nullptr)}) {
    vector.Serialize(file, 1, 1);
    EXPECT_EQ(TakeOutcome(), "1104 LxVector::Serialize");
  }
  vector.Serialize(nullptr, 0, 1);
  EXPECT_EQ(TakeOutcome(), "1103 LxVector::Serialize");
}

TEST_F(VectorFile, StreamsNeedNotSeek) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  Stream out(fdopen(ends[1], "wb"), std::fclose);
  const Stream in(fdopen(ends[0], "rb"), std::fclose);
  vector.Serialize(out.get(), 1, 1);
  const std::uint32_t impossible = 0xFFFFFFFF;
  std::fwrite(&impossible, sizeof impossible, 1, out.get());
  out.reset();
  other.Serialize(in.get(), 0, 1);
  EXPECT_EQ(TakeOutcome(), "0");
  ExpectPoints(other, 3);
  other.Serialize(in.get(), 0, 1);
  EXPECT_EQ(lx::test::LastAllocation(), (1U << 26) / kElement * sizeof(LxBW8Path));
  EXPECT_EQ(TakeOutcome(), "1303 LxVector::Serialize");
  EXPECT_EQ(other.GetNumElements(), 0U);
}

// More than is believed unseen.
TEST_F(VectorFile, LargeOnesLoadFromFilesAndStreams) {
  constexpr unsigned kCount = 0xB71B00;
  Write("vector", Whole().replace(4, 4, std::string("\0\x1B\xB7\0", 4)));
  std::filesystem::resize_file(path, kHeader + std::size_t{kCount} * kElement);
  const Stream pipe(popen(("tail -c +5 " + path).c_str(), "r"), pclose);
  const std::array<std::function<void()>, 2> loads = {[&] { other.Load(path.c_str()); },
                                                      [&] { other.Serialize(pipe.get(), 0, 1); }};
  for (const auto& load : loads) {
    load();
    EXPECT_EQ(TakeOutcome(), "0");
    EXPECT_EQ(other.GetMaxElements(), kCount);
    EXPECT_EQ(other[kCount - 1].m_n16X, 0);
    other.SetNumElements(5);
    ExpectPoints(other, 5);
    other.SetMaxElements(0, 0);
  }
}

}  // namespace
