// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx::test {

/// The end of a GuardedBuffer that touches memory which cannot be accessed.
enum class GuardedEnd {
  kLast,
  kFirst
};

/// Memory in which one byte too many is a crash: it lies between two inaccessible pages, and
/// touches one of them.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(std::size_t bytes, GuardedEnd end = GuardedEnd::kLast);
  ~GuardedBuffer();
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;

  std::uint8_t* GetData() const { return m_data; }
  std::size_t GetSize() const { return m_size; }

 private:
  void* m_mapping;
  std::size_t m_mappingSize;
  std::uint8_t* m_data;
  std::size_t m_size;
};

}  // namespace lx::test
