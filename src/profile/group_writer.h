// SPDX-License-Identifier: Apache-2.0
// Groups of numbers that are found one by one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace lx::profile {

// Appends groups to storage. What may be a find is stored either way and kept if it is one, since a
// branch on noise costs more than a store. There must be room.
template <std::size_t kLength>
class GroupWriter {
 public:
  using Group = std::array<std::int32_t, kLength>;

  GroupWriter(void* data, int capacity) { Move(data, capacity); }

  // Goes on in larger storage, which holds what was found.
  void Move(void* data, int capacity) {
    groups_ = static_cast<Group*>(data);
    capacity_ = static_cast<std::size_t>(capacity);
  }

  int Room() const { return static_cast<int>(capacity_ - found_); }
  int Found() const { return static_cast<int>(found_); }

  void Offer(const Group& group, bool isFound) {
    // One by one: numbers that were stored alone are slow to load together.
    for (std::size_t i = 0; i < kLength; ++i) groups_[found_][i] = group[i];
    found_ += isFound ? 1 : 0;
  }

 private:
  Group* groups_ = nullptr;
  // Of another type than the numbers, so that a store cannot change them.
  std::size_t capacity_ = 0;
  std::size_t found_ = 0;
};

}  // namespace lx::profile
