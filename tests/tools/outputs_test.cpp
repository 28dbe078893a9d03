// SPDX-License-Identifier: Apache-2.0
// The tool loses nothing: what fails leaves every file as it was, and no run destroys what another
// one reads.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <map>

#include "support/allocation_failure.h"
#include "tools/lxpic/file/output_file.h"
#include "tools/tool_fixture.h"

namespace lx::tool {
namespace {

namespace fs = std::filesystem;

// While it lives, no file grows beyond `bytes`, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before{};
};

class Outputs : public ToolTest {
 protected:
  Outputs() : a(WriteGrey("a.png", 2, {1, 2})), b(WriteGrey("b.png", 2, {3, 4})) {}

  // The content of every file by its name, those in folders included.
  std::map<std::string, std::string> AllFiles() const {
    std::map<std::string, std::string> all;
    for (const auto& each : fs::recursive_directory_iterator(folder)) {
      if (each.is_regular_file()) all[each.path().string()] = Content(each.path().string());
    }
    return all;
  }

  std::string Linked(const std::string& name, const std::string& target, bool symbolic) const {
    fs::create_directories(fs::path(Path(name)).parent_path());
    if (symbolic) {
      fs::create_symlink(target, Path(name));
    } else {
      fs::create_hard_link(target, Path(name));
    }
    return Path(name);
  }

  std::string a;
  std::string b;
};

TEST_F(Outputs, WhatFailsLeavesTheOldFileAndNothingElse) {
  const std::vector<std::string> vector = {a, "vect1c2", "add", "u8:1,200,7", "3"};
  const auto chain = [&](std::initializer_list<std::string> options) {
    std::vector<std::string> words = vector;
    words.insert(words.end(), options);
    return words;
  };
  // Each writes to its last word.
  std::vector<std::vector<std::string>> commands = {{a, "oper", "invert", "-o", a},
                                                    {"synth", "board", "-o", Path("s.png")}};
  for (const char* const name : {"o.png", "o.tif", "o.jpg", "o.pgm"}) {
    commands.push_back({a, "copy", "7", "-o", Path(name)});
  }
  for (const char* const name : {"p.png", "p.svg"}) commands.push_back(chain({"-o", Path(name)}));
  for (const char* const name : {"v.csv", "v.json"}) {
    commands.push_back(chain({"--values", Path(name)}));
  }
  for (const auto& command : commands) {
    const std::string& path = command.back();
    if (path != a) Write(fs::path(path).filename().string(), "old");
    const auto before = AllFiles();
    {
      const FullDisk disk(12);
      EXPECT_EQ(Tool(command).code, kFileFailed) << path;
    }
    EXPECT_EQ(AllFiles(), before) << path;
    EXPECT_EQ(Tool(command).code, kFine) << path;
    EXPECT_NE(Content(path), before.at(path));
    EXPECT_EQ(AllFiles().size(), before.size()) << path;
  }
}

TEST_F(Outputs, SignalsLeaveTheOldFileAndNothingElse) {
  const auto before = AllFiles();
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    // Whoever started the tests may have them ignore it.
    struct sigaction action {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) continue;
    const auto interrupt = [&] {
      OutputFile file(a);
      file.Write(a.data(), a.size());
      EXPECT_EQ(AllFiles().size(), before.size() + 1);
      std::raise(signal);
    };
    EXPECT_EXIT(interrupt(), testing::KilledBySignal(signal), "");
    EXPECT_EQ(AllFiles(), before) << signal;
  }
}

// Whichever allocation fails, a file is the old one or the whole new one.
TEST_F(Outputs, LackOfMemoryLeavesTheOldFileAndNothingElse) {
  const std::string path = Path("o/a.png");
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{a, "lut", "invert", "-o", path},
        {a, b, "oper", "invert", "--jobs", "2", "-o", Path("o/")}}) {
    fs::create_directories(Path("o"));
    ASSERT_EQ(Tool(words).code, kFine);
    const std::string whole = Content(path);
    const std::size_t count = AllFiles().size();
    WriteText(path, "old");
    testing::internal::CaptureStderr();
    int code = kFine;
    int halves = 0;
    const auto check = [&] {
      const std::string now = Content(path);
      const bool isKept = now == whole || (now == "old" && code != kFine);
      halves += isKept && AllFiles().size() == count ? 0 : 1;
      if (now == whole) WriteText(path, "old");
    };
    EXPECT_GT(test::FailEachAllocation([&] { code = RunTool(words); }, check), 100);
    EXPECT_EQ(halves, 0);
    EXPECT_TRUE(Contains(testing::internal::GetCapturedStderr(), "lxpic: not enough memory\n"));
  }
}

TEST_F(Outputs, LinksAndPermissionsStay) {
  const std::string link = Linked("l.png", "b.png", true);
  const std::string twin = Linked("twin.png", b, false);
  chmod(b.c_str(), 0640);
  ASSERT_EQ(Tool({a, "-o", link}).code, kFine);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(LevelsOf(b), (std::vector<int>{1, 2}));
  EXPECT_EQ(LevelsOf(twin), (std::vector<int>{3, 4}));
  EXPECT_EQ(fs::status(b).permissions(), fs::perms(0640));
  // A link to nothing makes what it names.
  ASSERT_EQ(Tool({a, "-o", Linked("m.png", "new.png", true)}).code, kFine);
  EXPECT_EQ(LevelsOf(Path("new.png")), (std::vector<int>{1, 2}));
}

TEST_F(Outputs, NoRunWritesOverWhatIsRead) {
  Linked("out/b.png", a, false);
  Linked("links/a.png", b, true);
  Linked("operand/a.png", b, false);
  const std::string bitmap = Write("a.pbm", "P4\n1 1\n\x80");
  const std::string tiff = WriteGrey("t.tif", 2, {5, 6});
  const std::string drawing = Linked("out/t.tif.png", b, false);
  const auto before = AllFiles();
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{b, a, "copy", "-o", Path("out/")},
        {a, b, "copy", "-o", Path("links")},
        {a, bitmap, "copy", "-o", Path("new/")},
        {a, Path("out/b.png"), "oper", "add", b, "-o", Path("operand")},
        {a, tiff, "oper", "add", drawing, "histogram", "-o", Path("out/")},
        {a, "histogram", "--values", a},
        {a, "histogram", "--plot", a},
        {a, "oper", "add", b, "histogram", "--plot", b},
        {a, "histogram", "-o", Path("o.png"), "--plot", Path("./o.png")},
        {a, "histogram", "-o", "-", "--plot", "/dev/stdout"},
        {"-", "oper", "add", "-", "-o", Path("o.png")}}) {
    const Run run = Tool(command);
    EXPECT_EQ(run.code, kWrongUsage) << command.back() << run.err;
    EXPECT_EQ(AllFiles(), before) << command.back();
  }
  EXPECT_FALSE(fs::exists(Path("new")));
  // One run reads all before it writes.
  ASSERT_EQ(Tool({a, "oper", "add", b, "-o", b}).code, kFine);
  EXPECT_EQ(LevelsOf(b), (std::vector<int>{4, 6}));
}

// All that the demonstration makes, and the two copies, unless they are the originals themselves.
TEST_F(Outputs, TheDemonstrationKeepsItsInputs) {
  fs::create_directories(Path("d"));
  ImageValue deep(Pixel::kBW16, 2, 1);
  deep.Clear();
  WriteImage(Path("deep.png"), deep);
  ASSERT_EQ(Tool({"demo", Path("deep.png"), Path("deep.png"), "-o", Path("d")}).code, kFine);
  const auto made = fs::directory_iterator(Path("d"));
  EXPECT_EQ(std::distance(begin(made), end(made)), 13);
  for (const auto& each : fs::directory_iterator(Path("d"))) {
    const std::string name = each.path().filename().string();
    const std::string golden = Linked("e/" + name, a, false);
    const bool isOwn = name == "golden.png";
    EXPECT_EQ(Tool({"demo", golden, b, "-o", Path("e")}).code, isOwn ? kFine : kWrongUsage) << name;
    EXPECT_TRUE(fs::equivalent(golden, a)) << name;
    fs::remove_all(Path("e"));
  }
}

TEST_F(Outputs, StreamsAreWrittenAsTheyAre) {
  const std::string ppm = "P6\n2 1\n255\n\1\1\1\2\2\2";
  EXPECT_EQ(Tool({a, "-o", "-", "--as", "ppm"}).out, ppm);
  EXPECT_TRUE(Tool({a, "-o", "/dev/stdout"}).out.starts_with("\x89PNG"));
  for (const char* const format : {"tif", "jpg", "png"}) {
    const Run run =
        Tool({a, "vect1c2", "add", "1", "1", "oper", "copy", "-o", "-", "--as", format});
    EXPECT_EQ(ReadFile(Write("out", run.out)).image.SizeText(), "2x1") << format;
    EXPECT_EQ(run.err, "destination 2\n");
  }
  EXPECT_TRUE(Contains(Tool({a, "histogram", "-o", "-", "--as", "svg"}).out, "</svg>"));
  ASSERT_EQ(Tool({a, b, "-o", Path("new/"), "--as", "PPM"}).code, kFine);
  EXPECT_EQ(Content(Path("new/a.PPM")), ppm);
  EXPECT_EQ(Tool({a, "-o", Path("o.png"), "--as", "bmp"}).code, kWrongUsage);

  const Run full = Tool({a, "-o", "/dev/full"});
  EXPECT_EQ(full.code, kFileFailed);
  EXPECT_EQ(full.err, "lxpic: /dev/full: cannot be written: No space left on device\n");
  EXPECT_EQ(Tool({a, "-o", "/dev/null"}).code, kFine);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Outputs, AFullStandardOutputIsAnError) {
  testing::internal::CaptureStderr();
  int code = kFine;
  {
    const Redirected full(STDOUT_FILENO, "/dev/full", O_WRONLY);
    code = RunTool({"list"});
    std::clearerr(stdout);
  }
  EXPECT_EQ(code, kFileFailed);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "lxpic: standard output: cannot be written: No space left on device\n");
}

}  // namespace
}  // namespace lx::tool
