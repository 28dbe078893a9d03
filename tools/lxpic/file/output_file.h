// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lxpic/file/temporary_file.h"

namespace lx::tool {

/// A file that is written beside its place and put there when it is whole, so that whatever fails
/// leaves what was there before. A link stays, and the file behind it is replaced; standard output,
/// pipes and devices are written to as they are. What throws, throws Failure without naming the
/// file.
class OutputFile {
 public:
  /// "-" is standard output.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Finish() tells when this failed.
  void Write(const void* data, std::size_t count) noexcept;
  /// Writes what is left and puts the file in its place.
  void Finish();

 private:
  static constexpr std::size_t kBufferSize = 65536;

  void OpenStream(const std::string& path);
  void OpenBeside(const std::string& path);
  void Send(const unsigned char* data, std::size_t count) noexcept;

  std::vector<unsigned char> buffer;
  std::string target;
  std::unique_ptr<TemporaryFile> temporary;  // none for a stream
  int descriptor = -1;
  int error = 0;
};

/// Writes a whole file. Throws Failure, which names it.
void WriteText(const std::string& path, std::string_view text);

}  // namespace lx::tool
