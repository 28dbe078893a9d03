// SPDX-License-Identifier: Apache-2.0
// Where the runs of a region lie.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lxpic/base/pixel.h"

namespace lx {

inline bool SpanFits(int start, int length, std::uint32_t available) {
  return start >= 0 && length >= 0 && std::int64_t{start} + length <= std::int64_t{available};
}

// The pixels of an attached region, of whole bytes, that its runs refer to.
struct RunGround {
  const std::uint8_t* base;  // pixel (0, 0); null when runs hold offsets from it
  std::ptrdiff_t pitch;
  std::uint32_t width;
  std::uint32_t height;
  std::size_t pixelSize;
};

// The run of no pixels at (x, y).
inline LxRun RunAt(int x, int y, const RunGround& ground) {
  LxRun run;
  run.start = reinterpret_cast<std::uintptr_t>(ground.base) +
              static_cast<std::uintptr_t>(y * ground.pitch) +
              static_cast<unsigned>(x) * ground.pixelSize;
  run.end = run.start;
  run.position = static_cast<std::uint32_t>(y) << 16 | static_cast<std::uint32_t>(x);
  return run;
}

// Whether `run` is a stretch of one row, and says so in all of its three values.
inline bool HoldsRun(const RunGround& ground, const LxRun& run) {
  if (run.end < run.start) return false;
  const std::uintptr_t length = (run.end - run.start) / ground.pixelSize;
  const int x = static_cast<std::int16_t>(run.position & 0xFFFF);
  const int y = static_cast<std::int16_t>(run.position >> 16);
  if (length > ground.width || !SpanFits(x, static_cast<int>(length), ground.width) ||
      !SpanFits(y, 1, ground.height)) {
    return false;
  }
  const LxRun empty = RunAt(x, y, ground);
  return run.start == empty.start && run.end == empty.start + length * ground.pixelSize;
}

}  // namespace lx
