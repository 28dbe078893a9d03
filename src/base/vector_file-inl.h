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

/// Reads elements into next..end; gives the first one that the stream does not hold.
template <class T>
T* ReadUpTo(T* next, T* end, std::FILE* file) {
  Chunk<T> chunk;
  while (next != end) {
    const auto wanted =
        static_cast<std::size_t>(std::min<std::ptrdiff_t>(end - next, chunk.kCapacity));
    const std::size_t got = std::fread(chunk.bytes.data(), chunk.kElement, wanted, file);
    FieldDecoder decoder(chunk.bytes.data());
    for (const T* const last = next + got; next != last; ++next) {
      ElementRecord<T>::Visit(decoder, *next);
    }
    if (got != wanted) break;
  }
  return next;
}

/// Gives the vector exactly `count` elements, or none and false when there is no memory.
template <class T>
bool Enlarge(LxVectorTemplate<T>& vector, unsigned count) {
  vector.SetMaxElements(count, 1);
  const bool enlarged = vector.GetMaxElements() == count;
  vector.SetNumElements(enlarged ? count : 0);
  return enlarged;
}

/// Reads count and elements; sets the error code and gives false when that fails. Elements that a
/// file lacks are zero. Where a count has to be taken on its word, the vector grows with the data.
template <class T>
bool ReadElements(LxVectorTemplate<T>& vector, std::FILE* file) {
  std::uint32_t total = 0;
  if (!ReadCount(file, total)) return false;
  vector.Empty();
  std::uint64_t trusted = 0;
  if (!TrustBytes(file, std::uint64_t{total} * ElementRecord<T>::kBytes, trusted)) return false;
  const std::uint64_t first = trusted / ElementRecord<T>::kBytes;
  std::uint64_t room = first;
  do {
    const unsigned count = vector.GetNumElements();
    if (!Enlarge(vector, static_cast<unsigned>(std::min<std::uint64_t>(room, total)))) return false;
    T* const missing = ReadUpTo(vector.begin() + count, vector.end(), file);
    if (missing != vector.end()) {
      std::fill(missing, vector.end(), T{});
      if (first < total) vector.SetMaxElements(0, 0);
      LxSetError(first < total ? LX_ERROR_ALLOCATION_FAILED : LX_ERROR_FILE_READ_FAILED);
      return false;
    }
    room *= 2;
  } while (vector.GetNumElements() < total);
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
