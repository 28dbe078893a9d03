// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lx::tool {

/// The word for standard input where a file is read, and for standard output where one is written.
inline constexpr const char* kStandardStream = "-";

/// A file that is opened once and read in order, so that pipes serve as well. Its functions throw
/// Failure without naming the file.
class InputFile {
 public:
  /// "-" is standard input.
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Up to `count` bytes that come next, which stay to be read. Fewer at the end.
  std::string_view Peek(std::size_t count);
  /// The number of bytes that were read: fewer at the end, or where reading fails.
  std::size_t Read(void* target, std::size_t count) noexcept;
  /// The next byte; -1 at the end, or where reading fails.
  int Byte() {
    if (next == end && !Fill()) return -1;
    return buffer[next++];
  }
  /// Everything that is left. Refuses more than `most` bytes.
  std::string ReadAll(std::size_t most);
  /// Throws when the system failed to read, which Read and Byte only show as an end.
  void CheckRead() const;

  /// The bytes of a file that can be read at any place; none for a pipe.
  std::optional<std::uint64_t> Size() const { return size; }
  std::size_t ReadAt(std::uint64_t place, void* target, std::size_t count) noexcept;

 private:
  static constexpr std::size_t kBufferSize = 65536;

  bool Fill() noexcept;

  int descriptor = 0;  // standard input
  bool isOwn;
  int error = 0;
  std::uint64_t start = 0;  // where a file was that was handed over open
  std::optional<std::uint64_t> size;
  std::vector<unsigned char> buffer;
  std::size_t next = 0;
  std::size_t end = 0;
};

/// The text of a file of at most `most` bytes. Throws Failure, which names the file.
std::string ReadText(const std::string& path, std::size_t most);

/// How messages call the file.
std::string ShownInput(const std::string& path);

}  // namespace lx::tool
