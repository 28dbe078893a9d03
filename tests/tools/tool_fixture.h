// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/command/commands.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

/// A test with a folder of its own, which is gone afterwards.
class ToolTest : public testing::Test {
 protected:
  ToolTest() {
    std::string name = (std::filesystem::temp_directory_path() / "lxpic-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~ToolTest() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  std::string Path(const std::string& name) const { return (folder / name).string(); }

  std::string Write(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
  }

  static std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// A grey image file whose pixels are listed row by row.
  std::string WriteGrey(const std::string& name, int width, const std::vector<int>& levels) const {
    ImageValue image(Pixel::kBW8, width, static_cast<int>(levels.size()) / width);
    for (std::size_t i = 0; i < levels.size(); ++i) {
      const int x = static_cast<int>(i) % width;
      const int y = static_cast<int>(i) / width;
      image.As<LxBW8>().SetPixel(static_cast<std::uint8_t>(levels[i]), x, y);
    }
    WriteImage(Path(name), image);
    return Path(name);
  }

  static std::vector<int> Levels(const ImageValue& image) {
    std::vector<int> levels;
    for (int y = 0; y < image.Height(); ++y) {
      for (int x = 0; x < image.Width(); ++x) {
        levels.push_back(image.PixelType() == Pixel::kBW16
                             ? int{image.As<LxBW16>().GetPixel(x, y).value}
                             : int{image.As<LxBW8>().GetPixel(x, y).value});
      }
    }
    return levels;
  }

  static std::vector<int> LevelsOf(const std::string& path) { return Levels(ReadImage(path)); }

  struct Run {
    int code;
    std::string out;
    std::string err;
  };

  /// Runs the tool as the program does.
  static Run Tool(const std::vector<std::string>& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = RunTool(arguments);
    std::fflush(stdout);
    return {code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
  }

  std::filesystem::path folder;
};

inline Value FindNoValue(const std::string& word) {
  throw Failure(kWrongUsage, word + " is no value");
}

/// The context of a step behind which a chain may go on.
inline StepContext ContextOf(const ImageValue& current, ImageValue (*findImage)(const std::string&),
                             Value (*findValue)(const std::string&) = FindNoValue) {
  return {current, findImage, findValue, StartsStep};
}

inline bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace lx::tool
