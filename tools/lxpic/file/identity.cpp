// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/identity.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "tools/lxpic/file/input_file.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

using Status = struct stat;

std::optional<Status> StatusOf(const std::string& path) {
  Status status{};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

bool IsSame(const Status& a, const Status& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

std::string WithoutLinks(const std::string& path) {
  constexpr int kMostLinks = 40;
  fs::path name = path;
  std::error_code error;
  for (int i = 0; i < kMostLinks; ++i) {
    const fs::path target = fs::read_symlink(name, error);
    if (error) break;
    name = name.parent_path() / target;
  }
  return name.string();
}

bool IsStandardOutput(const std::string& path) {
  if (path == kStandardStream || path == "/dev/stdout") return true;
  Status output{};
  const auto status = StatusOf(path);
  return status && S_ISREG(status->st_mode) && fstat(STDOUT_FILENO, &output) == 0 &&
         IsSame(*status, output);
}

bool IsStream(const std::string& path) {
  if (IsStandardOutput(path)) return true;
  const auto status = StatusOf(path);
  return status && !S_ISREG(status->st_mode) && !S_ISDIR(status->st_mode);
}

std::string IdentityOf(const std::string& path) {
  if (path.empty()) return "";
  if (const auto status = StatusOf(path)) {
    if (!S_ISREG(status->st_mode)) return "";
    return std::to_string(status->st_dev) + ":" + std::to_string(status->st_ino);
  }
  std::error_code error;
  const fs::path whole = fs::absolute(WithoutLinks(path), error);
  return fs::weakly_canonical(whole, error).string();
}

}  // namespace lx::tool
