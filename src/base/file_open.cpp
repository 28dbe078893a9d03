// SPDX-License-Identifier: Apache-2.0
#include "base/file_open.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace lx {

namespace {

// Longer names cannot be opened anyway.
constexpr std::size_t kNameBytes = 4096;

/// A zero-terminated name that grows inside fixed memory.
class Name {
 public:
  /// Appends one code point; false when it does not fit.
  bool Append(std::uint32_t codePoint) {
    const int continuations = codePoint < 0x80      ? 0
                              : codePoint < 0x800   ? 1
                              : codePoint < 0x10000 ? 2
                                                    : 3;
    if (m_used + static_cast<std::size_t>(continuations) + 1 >= kNameBytes) return false;
    constexpr std::array<std::uint32_t, 4> kLead = {0x00, 0xC0, 0xE0, 0xF0};
    Push(kLead[static_cast<std::size_t>(continuations)] | codePoint >> (6 * continuations));
    for (int left = continuations - 1; left >= 0; --left) {
      Push(0x80 | (codePoint >> (6 * left) & 0x3F));
    }
    return true;
  }
  const char* Text() const { return m_text.data(); }

 private:
  void Push(std::uint32_t byte) { m_text[m_used++] = static_cast<char>(byte); }

  std::array<char, kNameBytes> m_text{};
  std::size_t m_used = 0;
};

bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; }

bool Convert(const unsigned short* utf16, Name& name) {
  while (*utf16 != 0) {
    std::uint32_t codePoint = *utf16++;
    if (IsLowSurrogate(codePoint)) return false;
    if (IsHighSurrogate(codePoint)) {
      // The terminating zero is no low surrogate, so the end is never passed.
      if (!IsLowSurrogate(*utf16)) return false;
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (*utf16++ - 0xDC00U);
    }
    if (!name.Append(codePoint)) return false;
  }
  return true;
}

}  // namespace

std::FILE* OpenFile(const char* name, const char* mode) {
  return name == nullptr ? nullptr : std::fopen(name, mode);
}

std::FILE* OpenFile(const unsigned short* name, const char* mode) {
  Name text;
  if (name == nullptr || !Convert(name, text)) return nullptr;
  return std::fopen(text.Text(), mode);
}

}  // namespace lx
