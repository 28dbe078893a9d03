// SPDX-License-Identifier: Apache-2.0
#include "support/trial/guarded_buffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace lx::test {

GuardedBuffer::GuardedBuffer(std::size_t bytes, GuardedEnd end) : m_size(bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t usable = (bytes + page - 1) / page * page;
  m_mappingSize = usable + 2 * page;
  m_mapping = mmap(nullptr, m_mappingSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (m_mapping == MAP_FAILED) std::abort();
  std::uint8_t* const first = static_cast<std::uint8_t*>(m_mapping) + page;
  if (usable != 0 && mprotect(first, usable, PROT_READ | PROT_WRITE) != 0) std::abort();
  m_data = end == GuardedEnd::kLast ? first + (usable - bytes) : first;
}

GuardedBuffer::~GuardedBuffer() { munmap(m_mapping, m_mappingSize); }

}  // namespace lx::test
