// SPDX-License-Identifier: Apache-2.0
// How vector elements are stored in files: field by field, little-endian, without regard to the
// processor's own layout.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "lxpic/base/pixel.h"

namespace lx {

/// The file form of element type `T`: `kSignature`, `kVersion` and `kBytes`, and `Visit`, which
/// hands every field to a visitor in file order.
template <class T>
struct ElementRecord;

/// Writes fields at an advancing address.
class FieldEncoder {
 public:
  explicit FieldEncoder(std::uint8_t* bytes) : m_next(bytes) {}

  template <class Field>
  void operator()(Field field) {
    if constexpr (std::is_same_v<Field, float>) {
      (*this)(std::bit_cast<std::uint32_t>(field));
    } else {
      auto bits = static_cast<std::uint64_t>(field);
      for (std::size_t i = 0; i < sizeof field; ++i, bits >>= 8) {
        *m_next++ = static_cast<std::uint8_t>(bits);
      }
    }
  }
  void Pad() { *m_next++ = 0; }

 private:
  std::uint8_t* m_next;
};

/// Reads fields from an advancing address.
class FieldDecoder {
 public:
  explicit FieldDecoder(const std::uint8_t* bytes) : m_next(bytes) {}

  template <class Field>
  void operator()(Field& field) {
    if constexpr (std::is_same_v<Field, float>) {
      std::uint32_t bits = 0;
      (*this)(bits);
      field = std::bit_cast<float>(bits);
    } else {
      std::uint64_t bits = 0;
      for (std::size_t i = 0; i < sizeof field; ++i) bits |= std::uint64_t{*m_next++} << (8 * i);
      field = static_cast<Field>(bits);
    }
  }
  void Pad() { ++m_next; }

 private:
  const std::uint8_t* m_next;
};

/// A record that is one unsigned integer.
template <class T, std::uint8_t signature, std::uint8_t version = 1>
struct IntegerRecord {
  static constexpr std::uint8_t kSignature = signature;
  static constexpr std::uint8_t kVersion = version;
  static constexpr std::size_t kBytes = sizeof(T);
  template <class Visitor, class Element>
  static void Visit(Visitor& visitor, Element& element) {
    if constexpr (std::is_class_v<T>) {
      visitor(element.value);
    } else {
      visitor(element);
    }
  }
};

}  // namespace lx
