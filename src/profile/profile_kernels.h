// SPDX-License-Identifier: Apache-2.0
// Filters of profiles.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/path.h"

namespace lx::profile {

// At least one sample, and where the results go, which may be the same place.
template <typename T>
struct Profile {
  const T* from;
  T* to;
  std::size_t count;
  Path path = CurrentPath();
};

using ByteProfile = Profile<std::uint8_t>;
using WordProfile = Profile<std::uint16_t>;

void Differentiate(const ByteProfile& profile);
void Differentiate(const WordProfile& profile);

// At least one pass each.
void Smooth(const ByteProfile& profile, std::size_t passes);
void Smooth(const WordProfile& profile, std::size_t passes);
void Dilate(const ByteProfile& profile, std::size_t passes);
void Dilate(const WordProfile& profile, std::size_t passes);
void Erode(const ByteProfile& profile, std::size_t passes);
void Erode(const WordProfile& profile, std::size_t passes);

}  // namespace lx::profile
