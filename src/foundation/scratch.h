// SPDX-License-Identifier: Apache-2.0
// Scratch memory of one call, and the vectors that it is measured in.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/allocate.h"
#include "lxpic/base/errors.h"

namespace lx {

// The largest vector in bytes of any instruction set.
inline constexpr std::size_t kLargestVector = 64;

// `bytes` rounded up to whole vectors.
inline std::size_t WholeVectors(std::size_t bytes) {
  return (bytes + kLargestVector - 1) / kLargestVector * kLargestVector;
}

// Uninitialised elements, aligned to cache lines and freed with the object. When they cannot be
// allocated the buffer is false and LX_ERROR_ALLOCATION_FAILED is set.
template <typename T>
class Scratch {
 public:
  explicit Scratch(std::size_t count) {
    if (count <= PTRDIFF_MAX / sizeof(T)) data_ = static_cast<T*>(AllocateBytes(count * sizeof(T)));
    if (data_ == nullptr) LxSetError(LX_ERROR_ALLOCATION_FAILED);
  }
  ~Scratch() { ReleaseBytes(data_); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  explicit operator bool() const { return data_ != nullptr; }
  T* get() const { return data_; }

 private:
  T* data_ = nullptr;
};

}  // namespace lx
