// SPDX-License-Identifier: Apache-2.0
// A damaged file gives exit code 3 and a message that names it, and nothing worse.
#include <sys/mman.h>
#include <tiffio.h>

#include <algorithm>
#include <map>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class DamagedFiles : public ToolTest {
 protected:
  ~DamagedFiles() override { close(memory); }

  static constexpr std::array<const char*, 5> kNames = {"a.png", "a.tif", "a.jpg", "a.pgm",
                                                        "a.ppm"};

  // The content of a small valid file of the format.
  std::string Valid(const std::string& name) const {
    ImageValue image(name == "a.ppm" ? Pixel::kC24 : Pixel::kBW8, 24, 18);
    for (int y = 0; y < 18; ++y) {
      int level = 37 * y;
      std::generate_n(image.Row(y), image.RowBytes(),
                      [&] { return static_cast<unsigned char>(level += 11 + y); });
    }
    WriteImage(Path(name), image);
    return Content(Path(name));
  }

  using Entries = std::map<std::uint32_t, std::uint32_t>;

  // A TIFF of a row of 30000 bytes that has these entries, too, and no pixels.
  static std::string TiffOf(Entries entries) {
    entries.merge(Entries{{TIFFTAG_IMAGEWIDTH, 30000},
                          {TIFFTAG_IMAGELENGTH, 1},
                          {TIFFTAG_BITSPERSAMPLE, 8},
                          {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK}});
    std::string text("II*\0\10\0\0\0", 8);
    const auto add = [&](std::uint32_t value, int bytes) {
      for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 0xFF);
    };
    add(static_cast<std::uint32_t>(entries.size()), 2);
    for (const auto& [tag, value] : entries) {
      add(tag, 2);
      add(TIFF_LONG, 2);
      add(1, 4);
      add(value, 4);
    }
    return text + std::string(4, '\0');
  }

  // A file in memory, as thousands of them are written.
  std::string Fast(const std::string& content) const {
    EXPECT_EQ(ftruncate(memory, 0), 0);
    EXPECT_EQ(pwrite(memory, content.data(), content.size(), 0),
              static_cast<ssize_t>(content.size()));
    return "/proc/self/fd/" + std::to_string(memory);
  }

  // Whether the file is refused, with its name and a reason.
  static testing::AssertionResult Refused(const std::string& path) {
    try {
      ReadImage(path);
    } catch (const Failure& failure) {
      const std::string text = failure.what();
      const bool isTold = failure.Code() == kFileFailed && text.starts_with(path + ": ") &&
                          !text.ends_with(": ") && !Contains(text, "no reason");
      return isTold ? testing::AssertionSuccess() : testing::AssertionFailure() << text;
    }
    return testing::AssertionFailure() << "it is read";
  }

 private:
  int memory = memfd_create("damaged", 0);
};

TEST_F(DamagedFiles, AreRefusedWhereverTheyEnd) {
  for (const char* const name : kNames) {
    const std::string content = Valid(name);
    // The last four bytes of a TIFF only say that no other image follows.
    const std::size_t needed = content.size() - (content.starts_with("II") ? 4 : 0);
    for (std::size_t length = 0; length < needed; ++length) {
      EXPECT_TRUE(Refused(Fast(content.substr(0, length)))) << name << " " << length;
    }
  }
}

// Some bits do not matter, so that the image may be read; the rest must be refused in order.
TEST_F(DamagedFiles, AreSurvivedWhicheverBitIsWrong) {
  for (const char* const name : kNames) {
    std::string content = Valid(name);
    for (std::size_t i = 0; i < content.size(); ++i) {
      const char was = content[i];
      content[i] = static_cast<char>(was ^ (1 << (i % 8)));
      const auto refused = Refused(Fast(content));
      EXPECT_TRUE(refused || Contains(refused.message(), "it is read")) << name << i;
      content[i] = was;
    }
  }
}

TEST_F(DamagedFiles, HeadersThatClaimTooMuchAreRefused) {
  for (const char* const content :
       {"P5\n99999999 99999999\n255\nx", "P5\n1000000 200\n255\nx", "P5\n0 4\n255\n",
        "P5\n4 4\n0\nabcdabcdabcdabcd", "P5\n4 4\n70000\nabcdabcdabcdabcd", "P5\n-4 4\n255\nabcd",
        "P5\n4294967297 1\n255\nabcd", "P2\n2 1\n7\n8 1", "P2\n1 1\n255\nx", "P5 2 1 255#a",
        "P6\n1 1\n1000\nabcdef", "P7\n1 1\n255\na", "P5", "P5 #", "GIF89a"}) {
    EXPECT_TRUE(Refused(Write("header", content))) << content;
  }
}

TEST_F(DamagedFiles, MemoryIsRefusedBeforeItIsTaken) {
  for (const char* const name : kNames) {
    Valid(name);
    const Run run = Tool({"info", "--max-pixels", "431", Path(name)});
    EXPECT_EQ(run.code, kFileFailed);
    EXPECT_EQ(run.err, "lxpic: " + Path(name) +
                           ": 24x18 pixels, but at most 431 are read; --max-pixels raises that\n");
  }
  // A row of many samples, and a tile far larger than its image.
  const Entries strips = {
      {TIFFTAG_SAMPLESPERPIXEL, 65535}, {TIFFTAG_STRIPOFFSETS, 8}, {TIFFTAG_STRIPBYTECOUNTS, 8}};
  const Entries tiles = {{TIFFTAG_TILEWIDTH, 65536},
                         {TIFFTAG_TILELENGTH, 65536},
                         {TIFFTAG_TILEOFFSETS, 8},
                         {TIFFTAG_TILEBYTECOUNTS, 8}};
  for (const auto& [entries, reason] :
       {std::pair{strips, "65535 samples a pixel"}, {tiles, "tiles of 65536x65536"}}) {
    const Run run = Tool({"info", Write("a.tif", TiffOf(entries))});
    EXPECT_TRUE(Contains(run.err, reason)) << run.err;
  }
  EXPECT_TRUE(Contains(Tool({Path("a.pgm"), "lut", "/dev/zero", "-o", Path("o.png")}).err,
                       "/dev/zero: larger than 1048576 bytes"));
}

TEST_F(DamagedFiles, MissingFilesAndFoldersAreNamed) {
  EXPECT_TRUE(Refused(Path("missing.png")));
  EXPECT_TRUE(Refused(folder.string()));
  const std::string good = WriteGrey("good.png", 2, {1, 2});
  const Run unwritable = Tool({good, "oper", "invert", "-o", Path("no/such/folder/out.png")});
  EXPECT_EQ(unwritable.code, kFileFailed);
  EXPECT_TRUE(Contains(unwritable.err, "no/such/folder/out.png"));
  for (const char* const extension : {".tif", ".jpg", ".pgm"}) {
    EXPECT_EQ(Tool({good, "-o", Path("no/such/folder/out") + extension}).code, kFileFailed);
  }
}

}  // namespace
}  // namespace lx::tool
