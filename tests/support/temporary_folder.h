// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace lx::test {

/// What a test derives from to have a folder of its own, which is gone afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

 protected:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "lxpic-XXXXXX").string();
    folder = mkdtemp(name.data());
  }
  ~TemporaryFolder() {
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

  std::filesystem::path folder;
};

}  // namespace lx::test
