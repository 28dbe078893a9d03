// SPDX-License-Identifier: Apache-2.0
// Vector files: four header bytes, a 32-bit count, and the elements as their ElementRecord stores
// them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "base/element_record.h"
#include "base/file_open.h"
#include "base/vector_stream.h"
#include "lxpic/base/errors.h"
#include "lxpic/base/vector_template.h"

namespace lx {

/// Elements pass through a buffer of about this size.
inline constexpr std::size_t kChunkBytes = 8192;

template <class T>
struct Chunk {
  static constexpr std::size_t kElement = ElementRecord<T>::kBytes;
  static constexpr unsigned kCapacity = kChunkBytes / kElement;
  std::array<std::uint8_t, kCapacity * kElement> bytes;
};

template <class T>
constexpr FileHeader HeaderOf() {
  constexpr std::uint8_t kMarker = 0x4C;
  constexpr auto kSignature = ElementRecord<T>::kSignature;
  constexpr auto kVersion = ElementRecord<T>::kVersion;
  return {kMarker, kSignature, kVersion, kMarker ^ kSignature ^ kVersion};
}

/// Writes count and elements; sets the error code and gives false when that fails.
template <class T>
bool WriteElements(const LxVectorTemplate<T>& vector, std::FILE* file) {
  if (!WriteCount(file, vector.GetNumElements())) return false;
  Chunk<T> chunk;
  for (const T* next = vector.begin(); next != vector.end();) {
    const auto count = std::min<std::ptrdiff_t>(vector.end() - next, chunk.kCapacity);
    FieldEncoder encoder(chunk.bytes.data());
    for (const T* const last = next + count; next != last; ++next) {
      ElementRecord<T>::Visit(encoder, *next);
    }
    if (!WriteBytes(file, chunk.bytes.data(), static_cast<std::size_t>(count) * chunk.kElement)) {
      return false;
    }
  }
  return true;
}

/// Reads count and elements; sets the error code and gives false when that fails. Elements that a
/// file lacks are zero.
template <class T>
bool ReadElements(LxVectorTemplate<T>& vector, std::FILE* file) {
  std::uint32_t total = 0;
  if (!ReadCount(file, total)) return false;
  vector.Empty();
  if (!CheckExtent(file, std::uint64_t{total} * ElementRecord<T>::kBytes)) return false;
  vector.SetMaxElements(total, 1);
  if (vector.GetMaxElements() != total) return false;
  vector.SetNumElements(total);
  Chunk<T> chunk;
  for (T* next = vector.begin(); next != vector.end();) {
    const auto wanted = std::min<std::ptrdiff_t>(vector.end() - next, chunk.kCapacity);
    const std::size_t got =
        std::fread(chunk.bytes.data(), chunk.kElement, static_cast<std::size_t>(wanted), file);
    FieldDecoder decoder(chunk.bytes.data());
    for (const T* const last = next + got; next != last; ++next) {
      ElementRecord<T>::Visit(decoder, *next);
    }
    if (got != static_cast<std::size_t>(wanted)) {
      std::fill(next, vector.end(), T{});
      LxSetError(LX_ERROR_FILE_READ_FAILED);
      return false;
    }
  }
  return true;
}

template <class T, class Character>
void SaveVector(const LxVectorTemplate<T>& vector, const Character* fileName, const char* name) {
  LxOk();
  std::FILE* const file = OpenFile(fileName, "wb");
  constexpr FileHeader kHeader = HeaderOf<T>();
  const bool good = file != nullptr && WriteBytes(file, kHeader.data(), kHeader.size()) &&
                    WriteElements(vector, file);
  Finish(file, good, name);
}

template <class T, class Character>
void LoadVector(LxVectorTemplate<T>& vector, const Character* fileName, const char* name) {
  LxOk();
  std::FILE* const file = OpenFile(fileName, "rb");
  const bool good =
      file != nullptr && ReadHeader(file, HeaderOf<T>()) && ReadElements(vector, file);
  Finish(file, good, name);
}

}  // namespace lx
