// SPDX-License-Identifier: Apache-2.0
// A damaged file gives exit code 3 and a message that names it, and nothing worse.
#include <algorithm>

#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

class DamagedFiles : public ToolTest {
 protected:
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

  void ExpectRefused(const std::string& path, const std::string& what) const {
    const Run run = Tool({"info", path});
    EXPECT_EQ(run.code, kFileFailed) << what;
    EXPECT_TRUE(Contains(run.err, "lxpic: " + path + ": ")) << what << ": " << run.err;
  }
};

TEST_F(DamagedFiles, TruncatedFilesAreRefusedAtEveryLength) {
  for (const char* const name : kNames) {
    const std::string content = Valid(name);
    // The last four bytes of a TIFF only say that no other image follows.
    const std::size_t needed = content.size() - (content.starts_with("II") ? 4 : 0);
    for (std::size_t length = 0; length < needed; ++length) {
      ExpectRefused(Write("cut", content.substr(0, length)),
                    std::string(name) + " cut to " + std::to_string(length));
    }
  }
}

// Some bits do not matter, so that the image may be read; the rest must be refused in order.
TEST_F(DamagedFiles, FlippedBitsAreSurvived) {
  for (const char* const name : kNames) {
    const std::string content = Valid(name);
    int refused = 0;
    for (std::size_t i = 0; i < content.size(); ++i) {
      std::string damaged = content;
      damaged[i] = static_cast<char>(damaged[i] ^ (1 << (i % 8)));
      const Run run = Tool({"info", Write("flipped", damaged)});
      ASSERT_TRUE(run.code == kFine || run.code == kFileFailed) << name << " byte " << i;
      EXPECT_EQ(run.err.empty(), run.code == kFine) << name << " byte " << i << run.err;
      refused += run.code == kFine ? 0 : 1;
    }
    EXPECT_GT(refused, 2) << name;
  }
}

TEST_F(DamagedFiles, HeadersThatClaimTooMuchAreRefused) {
  for (const char* const content :
       {"P5\n99999999 99999999\n255\nx", "P5\n1000000 200\n255\nx", "P5\n0 4\n255\n",
        "P5\n4 4\n0\nabcdabcdabcdabcd", "P5\n4 4\n70000\nabcdabcdabcdabcd", "P5\n-4 4\n255\nabcd",
        "P5\n4294967297 1\n255\nabcd", "P2\n2 1\n7\n8 1", "P2\n1 1\n255\nx", "P5 2 1 255#a",
        "P6\n1 1\n1000\nabcdef", "P7\n1 1\n255\na", "P5", "P5 #", "GIF89a"}) {
    ExpectRefused(Write("header", content), content);
  }
}

TEST_F(DamagedFiles, MissingFilesAndFoldersAreNamed) {
  ExpectRefused(Path("missing.png"), "missing");
  ExpectRefused(folder.string(), "folder");
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
