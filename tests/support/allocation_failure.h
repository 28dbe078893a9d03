// SPDX-License-Identifier: Apache-2.0
// Makes allocations of the test program and the library fail on request, and counts them. Every
// form of the global operator new and delete is replaced in programs that link this.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lx::test {

/// While it lives, lets allocation number `index` (from 0) of this thread fail, once. Guards do not
/// nest.
class FailAllocation {
 public:
  explicit FailAllocation(int index);
  ~FailAllocation();
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;

  /// Whether the allocation came, and failed.
  bool Fired() const;
};

/// Blocks that are allocated and not yet freed, of all threads.
std::int64_t LiveAllocations();

/// Allocations of this thread so far, failed ones included.
std::int64_t AllocationCount();

/// Bytes that the last of them asked for.
std::size_t LastAllocation();

/// Runs `scene` with its first allocation failing, then its second, and so on until none is left
/// to fail; the last run is undisturbed. Returns how many allocations failed. `afterFailure` runs
/// after every failing run.
template <class Scene, class AfterFailure>
int FailEachAllocation(Scene scene, AfterFailure afterFailure) {
  for (int index = 0;; ++index) {
    bool fired = false;
    {
      const FailAllocation guard(index);
      scene();
      fired = guard.Fired();
    }
    if (!fired) return index;
    afterFailure();
  }
}

}  // namespace lx::test
