// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "support/temporary_folder.h"
#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/command/commands.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

// While it lives, a descriptor of the process is `path`.
class Redirected {
 public:
  Redirected(int which, const std::string& path, int mode) : target(which), before(dup(which)) {
    const int opened = open(path.c_str(), mode);
    dup2(opened, target);
    close(opened);
  }
  ~Redirected() {
    dup2(before, target);
    close(before);
  }
  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;

 private:
  int target;
  int before;
};

class ToolTest : public testing::Test, protected test::TemporaryFolder {
 protected:
  /// A grey image file whose pixels are listed row by row.
  std::string WriteGrey(const std::string& name, int width, const std::vector<int>& levels) const {
    const int count = static_cast<int>(levels.size());
    ImageValue image(Pixel::kBW8, width, count / width);
    for (int i = 0; i < count; ++i) {
      image.Row(i / width)[i % width] =
          static_cast<unsigned char>(levels[static_cast<std::size_t>(i)]);
    }
    WriteImage(Path(name), image);
    return Path(name);
  }

  static std::vector<int> LevelsOf(const std::string& path) {
    const ImageValue image = ReadImage(path);
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
    LxSetMMX(1);
    return {code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
  }
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
