// SPDX-License-Identifier: Apache-2.0
// The one door through which the library takes memory for pixels and elements. Going through the
// replaceable operator new lets a program count, pool or refuse the library's allocations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

namespace lx {

/// Alignment of all storage: a cache line, and the widest vector register.
inline constexpr std::size_t kStorageAlignment = 64;

/// Aligned uninitialised memory, or null. Never throws.
inline void* AllocateBytes(std::uint64_t bytes) noexcept {
  if (bytes > static_cast<std::uint64_t>(PTRDIFF_MAX)) return nullptr;
  return ::operator new (static_cast<std::size_t>(bytes), std::align_val_t{kStorageAlignment},
                         std::nothrow);
}

/// Frees what AllocateBytes() gave; null is fine.
inline void ReleaseBytes(void* bytes) noexcept {
  ::operator delete (bytes, std::align_val_t{kStorageAlignment});
}

}  // namespace lx
