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

/// How many of the `bytes` bytes that a count claims may be allocated before they have been read:
/// all that the file holds, and not more of a stream that cannot tell than a damaged count should
/// ever make us allocate. False when the file holds less and they are more than that.
bool TrustBytes(std::FILE* file, std::uint64_t bytes, std::uint64_t& trusted);

/// Ends Save() or Load(): closes `file`, which is null when it could not be opened, sets the code
/// that belongs to it, and traces `name` after any failure.
void Finish(std::FILE* file, bool good, const char* name);

}  // namespace lx
