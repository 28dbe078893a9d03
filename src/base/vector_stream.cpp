// SPDX-License-Identifier: Apache-2.0
#include "base/vector_stream.h"

#include <sys/types.h>

#include <optional>

#include "base/element_record.h"
#include "lxpic/base/errors.h"

namespace lx {

namespace {

// What a count may claim on its word alone.
constexpr std::uint64_t kUnprovenBytes = std::uint64_t{1} << 26;

bool Failed(LX_ERRORS code) {
  LxSetError(code);
  return false;
}

// Bytes after the current position; none when the stream cannot tell.
std::optional<std::uint64_t> BytesLeft(std::FILE* file) {
  const off_t here = ftello(file);
  if (here < 0 || fseeko(file, 0, SEEK_END) != 0) return std::nullopt;
  const off_t end = ftello(file);
  fseeko(file, here, SEEK_SET);
  return end > here ? static_cast<std::uint64_t>(end - here) : 0;
}

}  // namespace

bool WriteBytes(std::FILE* file, const std::uint8_t* bytes, std::size_t count) {
  return std::fwrite(bytes, 1, count, file) == count || Failed(LX_ERROR_FILE_WRITE_FAILED);
}

bool WriteCount(std::FILE* file, std::uint32_t count) {
  if (file == nullptr) return Failed(LX_ERROR_FILE_WRITE_FAILED);
  std::array<std::uint8_t, 4> bytes;
  FieldEncoder encoder(bytes.data());
  encoder(count);
  return WriteBytes(file, bytes.data(), bytes.size());
}

bool ReadCount(std::FILE* file, std::uint32_t& count) {
  std::array<std::uint8_t, 4> bytes;
  if (file == nullptr || std::fread(bytes.data(), bytes.size(), 1, file) != 1) {
    return Failed(LX_ERROR_FILE_READ_FAILED);
  }
  FieldDecoder decoder(bytes.data());
  decoder(count);
  return true;
}

bool ReadHeader(std::FILE* file, const FileHeader& expected) {
  FileHeader header;
  if (std::fread(header.data(), header.size(), 1, file) != 1) {
    return Failed(LX_ERROR_FILE_READ_FAILED);
  }
  return header == expected || Failed(LX_ERROR_BAD_FILE_SIGNATURE);
}

bool TrustBytes(std::FILE* file, std::uint64_t bytes, std::uint64_t& trusted) {
  trusted = bytes;
  if (bytes <= kUnprovenBytes) return true;
  const auto left = BytesLeft(file);
  if (!left) trusted = kUnprovenBytes;
  return !left || bytes <= *left || Failed(LX_ERROR_ALLOCATION_FAILED);
}

void Finish(std::FILE* file, bool good, const char* name) {
  if (file == nullptr) {
    LxSetError(LX_ERROR_FILE_OPEN_FAILED);
  } else if (std::fclose(file) != 0 && good) {
    LxSetError(LX_ERROR_FILE_CLOSE_FAILED);
  }
  if (LxGetError() != LX_OK) LxTraceError(name);
}

}  // namespace lx
