// SPDX-License-Identifier: Apache-2.0
// The parts of vector files that do not depend on the element type. Every function but Finish sets
// the error code and gives false when it fails.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace lx {

using FileHeader = std::array<std::uint8_t, 4>;

bool WriteBytes(std::FILE* file, const std::uint8_t* bytes, std::size_t count);

/// `file` may be null.
bool WriteCount(std::FILE* file, std::uint32_t count);

/// `file` may be null.
bool ReadCount(std::FILE* file, std::uint32_t& count);

/// Reads the header and compares it.
bool ReadHeader(std::FILE* file, const FileHeader& expected);

/// Refuses to believe that `bytes` more bytes follow when the file does not hold them and they are
/// more than a damaged count should ever make us allocate.
bool CheckExtent(std::FILE* file, std::uint64_t bytes);

/// Ends Save() or Load(): closes `file`, which is null when it could not be opened, sets the code
/// that belongs to it, and traces `name` after any failure.
void Finish(std::FILE* file, bool good, const char* name);

}  // namespace lx
