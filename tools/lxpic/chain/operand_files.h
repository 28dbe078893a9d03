// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

/// The files that the steps of a chain name. Each is opened once, however many images and threads
/// need it, as a pipe can be read only once.
class OperandFiles {
 public:
  /// Names are those of files in `folder` unless they are absolute.
  explicit OperandFiles(std::filesystem::path folder = {}) : start(std::move(folder)) {}

  /// They throw Failure, which names the file; the same one each time.
  ImageValue Image(const std::string& word);
  std::string TableText(const std::string& word);

 private:
  template <class Content>
  struct Entry {
    Content content;
    std::optional<Failure> failure;
  };
  template <class Content>
  using Entries = std::map<std::string, Entry<Content>>;

  template <class Content>
  Content Find(Entries<Content>& entries, const std::string& word,
               Content (*read)(const std::string& path));

  std::filesystem::path start;
  std::mutex mutex;
  Entries<ImageValue> images;
  Entries<std::string> tables;
};

}  // namespace lx::tool
