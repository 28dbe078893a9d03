// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace lx::tool {

/// A new file beside `target`, which is removed with its object, and by a signal that ends the
/// program.
class TemporaryFile {
 public:
  /// Throws Failure without naming the file.
  explicit TemporaryFile(const std::string& target);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Open for writing, to be closed by whoever takes it.
  int Descriptor() const { return descriptor; }
  /// Puts the file in the place of `target`. Throws Failure.
  void Rename(const std::string& target);

 private:
  std::size_t slot;
  int descriptor = -1;
};

}  // namespace lx::tool
