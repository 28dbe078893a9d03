// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/numbered.h"

#include <filesystem>

namespace lx::tool {

std::string NumberedPath(const std::string& path, int number, int count) {
  const std::filesystem::path whole(path);
  std::string digits = std::to_string(number);
  digits.insert(0, std::to_string(count - 1).size() - digits.size(), '0');
  std::filesystem::path name = whole.stem();
  name += "-" + digits;
  name += whole.extension();
  return (whole.parent_path() / name).string();
}

}  // namespace lx::tool
