// SPDX-License-Identifier: Apache-2.0
#include "support/allocation_failure.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace lx::test {

namespace {

std::atomic<std::int64_t> live{0};
thread_local std::int64_t allocations = 0;
thread_local std::size_t asked = 0;
// Which allocation fails; negative when none does.
thread_local std::int64_t failing = -1;

void* Allocate(std::size_t bytes, std::size_t alignment) noexcept {
  asked = bytes;
  if (allocations++ == failing) return nullptr;
  // aligned_alloc wants whole multiples of the alignment.
  const std::size_t padding = (alignment - bytes % alignment) % alignment;
  if (bytes + padding < bytes) return nullptr;
  void* const block = std::aligned_alloc(alignment, bytes + padding + (bytes == 0 ? alignment : 0));
  if (block != nullptr) ++live;
  return block;
}

void* AllocateOrThrow(std::size_t bytes, std::size_t alignment) {
  void* const block = Allocate(bytes, alignment);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Free(void* block) noexcept {
  if (block != nullptr) --live;
  std::free(block);
}

constexpr std::size_t kPlain = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

std::size_t Value(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

FailAllocation::FailAllocation(int index) { failing = allocations + index; }

FailAllocation::~FailAllocation() { failing = -1; }

bool FailAllocation::Fired() const { return allocations > failing; }

std::int64_t LiveAllocations() { return live; }

std::int64_t AllocationCount() { return allocations; }

std::size_t LastAllocation() { return asked; }

}  // namespace lx::test

using lx::test::Allocate;
using lx::test::AllocateOrThrow;
using lx::test::Free;
using lx::test::kPlain;
using lx::test::Value;
using NoThrow = std::nothrow_t;
using Alignment = std::align_val_t;

void* operator new(std::size_t bytes) { return AllocateOrThrow(bytes, kPlain); }
void* operator new[](std::size_t bytes) { return AllocateOrThrow(bytes, kPlain); }
void* operator new(std::size_t bytes, const NoThrow&) noexcept { return Allocate(bytes, kPlain); }
void* operator new[](std::size_t bytes, const NoThrow&) noexcept { return Allocate(bytes, kPlain); }
void* operator new(std::size_t bytes, Alignment a) { return AllocateOrThrow(bytes, Value(a)); }
void* operator new[](std::size_t bytes, Alignment a) { return AllocateOrThrow(bytes, Value(a)); }
void* operator new(std::size_t bytes, Alignment a, const NoThrow&) noexcept {
  return Allocate(bytes, Value(a));
}
void* operator new[](std::size_t bytes, Alignment a, const NoThrow&) noexcept {
  return Allocate(bytes, Value(a));
}

void operator delete(void* block) noexcept { Free(block); }
void operator delete[](void* block) noexcept { Free(block); }
void operator delete(void* block, std::size_t) noexcept { Free(block); }
void operator delete[](void* block, std::size_t) noexcept { Free(block); }
void operator delete(void* block, const NoThrow&) noexcept { Free(block); }
void operator delete[](void* block, const NoThrow&) noexcept { Free(block); }
void operator delete(void* block, Alignment) noexcept { Free(block); }
void operator delete[](void* block, Alignment) noexcept { Free(block); }
void operator delete(void* block, std::size_t, Alignment) noexcept { Free(block); }
void operator delete[](void* block, std::size_t, Alignment) noexcept { Free(block); }
void operator delete(void* block, Alignment, const NoThrow&) noexcept { Free(block); }
void operator delete[](void* block, Alignment, const NoThrow&) noexcept { Free(block); }
