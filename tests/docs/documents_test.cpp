// SPDX-License-Identifier: Apache-2.0
// What the documents say is true: their code stands in the tree and prints what they say it prints,
// their commands run, their names and links exist.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "docs/document.h"

namespace lx::test {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = LXPIC_SOURCE_DIR;
const fs::path kPrograms = LXPIC_PROGRAMS;

std::string TextOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

std::vector<fs::path> FilesUnder(const std::string& folder) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

/// A folder of its own, which is the current one, for programs that write files.
class Playground : public testing::Test {
 protected:
  Playground() : before(fs::current_path()) {
    std::string name = (fs::temp_directory_path() / "lxpic_docs_XXXXXX").string();
    folder = mkdtemp(name.data());
    fs::current_path(folder);
  }
  ~Playground() override {
    fs::current_path(before);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }

  struct Run {
    int status;
    Lines output;
  };

  /// Runs a shell command, with the project's programs found by name.
  static Run Shell(const std::string& command) {
    const std::string line = "PATH='" + kPrograms.string() + "':\"$PATH\"; { " + command +
                             "\n} >output.txt 2>messages.txt";
    const int status = std::system(line.c_str());
    if (status != 0) ADD_FAILURE() << command << "\n" << TextOf("messages.txt");
    return {status, LinesOf("output.txt")};
  }

 private:
  fs::path before;
  fs::path folder;
};

using Documentation = Playground;

/// The file of the tree in which the block stands, or nothing.
fs::path HomeOf(const CodeBlock& block) {
  for (const std::string folder : {"examples", "include", "src", "catalogue", "tests"}) {
    for (const fs::path& file : FilesUnder(folder)) {
      if (Contains(LinesOf(file), block.lines)) return file;
    }
  }
  return {};
}

// A block of text behind code of an example is what the example prints.
TEST_F(Documentation, CodeStandsInTheTreeAndPrintsWhatIsSaid) {
  std::set<std::string> quoted;
  for (const Document& document : Documents()) {
    fs::path home;
    for (const CodeBlock& block : document.blocks) {
      if (block.language == "cpp") {
        home = HomeOf(block);
        EXPECT_NE(home, fs::path()) << block.place << " stands nowhere in the tree";
      } else if (block.language == "text" && home.parent_path() == kRoot / "examples") {
        quoted.insert(home.stem().string());
        const Run run = Shell("example_" + home.stem().string());
        EXPECT_TRUE(Contains(run.output, block.lines))
            << block.place << " is not printed by " << home << ":\n"
            << testing::PrintToString(run.output);
      }
    }
  }
  for (const fs::path& file : FilesUnder("examples")) {
    if (file.extension() != ".cpp") continue;
    EXPECT_EQ(quoted.count(file.stem().string()), 1U) << file << " is shown nowhere";
  }
}

TEST_F(Documentation, CommandsOfTheToolRun) {
  if (!fs::exists(kPrograms / "lxpic")) GTEST_SKIP() << "the tool is not built";
  int commands = 0;
  for (const Document& document : Documents()) {
    for (const CodeBlock& block : document.blocks) {
      for (const std::string& line : block.lines) {
        if (block.language != "sh" || !line.starts_with("lxpic ")) continue;
        EXPECT_EQ(Shell(line).status, 0) << block.place << ": " << line;
        ++commands;
      }
    }
  }
  EXPECT_GT(commands, 4);
}

TEST_F(Documentation, LinksLeadSomewhere) {
  static const std::regex kLink(R"rule(\]\(([^)#]+)(#[^)]*)?\))rule");
  for (const Document& document : Documents()) {
    for (const std::string& line : document.lines) {
      for (std::sregex_iterator link(line.begin(), line.end(), kLink), end; link != end; ++link) {
        const std::string target = (*link)[1];
        if (target.starts_with("http")) continue;
        EXPECT_TRUE(fs::exists(document.path.parent_path() / target))
            << document.path << " links to " << target;
      }
    }
  }
}

/// Every word of the code.
std::set<std::string> WordsOfTheTree() {
  static const std::regex kWord("\\w+");
  std::set<std::string> words;
  for (const std::string folder : {"include", "src", "catalogue"}) {
    for (const fs::path& file : FilesUnder(folder)) {
      const std::string text = TextOf(file);
      for (std::sregex_iterator word(text.begin(), text.end(), kWord), end; word != end; ++word) {
        words.insert(word->str());
      }
    }
  }
  return words;
}

TEST_F(Documentation, NamesExist) {
  static const std::regex kName(R"rule(\b(Pic|Lx|LX_|Tint|ARITH_)\w+)rule");
  const std::set<std::string> words = WordsOfTheTree();
  int names = 0;
  for (const Document& document : Documents()) {
    for (const std::string& line : document.lines) {
      for (std::sregex_iterator name(line.begin(), line.end(), kName), end; name != end; ++name) {
        EXPECT_EQ(words.count(name->str()), 1U) << document.path << ": " << name->str();
        ++names;
      }
    }
  }
  EXPECT_GT(names, 50);
}

TEST_F(Documentation, CodesHaveTheirNumbers) {
  const std::string header = TextOf(kRoot / "include/lxpic/base/errors.h");
  static const std::regex kCode(R"rule(`(LX_ERROR_\w+)` \((\d+)\))rule");
  int codes = 0;
  for (const Document& document : Documents()) {
    for (const std::string& line : document.lines) {
      for (std::sregex_iterator code(line.begin(), line.end(), kCode), end; code != end; ++code) {
        const std::regex definition((*code)[1].str() + "\\s*=\\s*" + (*code)[2].str() + ",");
        EXPECT_TRUE(std::regex_search(header, definition)) << document.path << ": " << code->str();
        ++codes;
      }
    }
  }
  EXPECT_GT(codes, 10);
}

}  // namespace
}  // namespace lx::test
