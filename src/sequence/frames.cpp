// SPDX-License-Identifier: Apache-2.0
#include "lxpic/sequence/frames.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "foundation/frame.h"
#include "point/arithmetic_kernels.h"
#include "point/copy_rows.h"
#include "sequence/frames_kernels.h"

namespace {

using namespace lx;
using namespace lx::sequence;

template <class T>
inline constexpr int kStride = std::is_same_v<T, LxC24> ? 3 : 1;

// Every other row from `first` on.
Rows FieldOf(const Rows& rows, std::size_t first) {
  return {rows.Row<std::uint8_t>(first), 2 * rows.pitch};
}

std::size_t FieldHeight(std::size_t height, std::size_t first) { return (height + 1 - first) / 2; }

// Copies between a field of a frame and an image, which one of the two regions is.
template <class T>
void CopyField(const char* trace, LxROI<T>* source, LxROI<T>* destination, LxROI<T>* frame,
               LxROI<T>* field, int parity) {
  RunOperation(trace, [&] {
    if (!Attached({source, destination})) return;
    const std::size_t first = parity != 0 ? 1 : 0;
    const std::size_t height = FieldHeight(frame->GetHeight(), first);
    const bool fits = field->GetWidth() == frame->GetWidth() && field->GetHeight() == height;
    if (!Require(fits, LX_ERROR_SIZE_MISMATCH) || height == 0) return;
    PixelMap map;
    Rows& rows = source == frame ? map.sources[0] : map.destination;
    rows = FieldOf(RowsOf(frame), first);
    (source == frame ? map.destination : map.sources[0]) = RowsOf(field);
    map.width = frame->GetWidth();
    map.height = height;
    point::CopyRows(map, sizeof(T));
  });
}

template <class T>
void Get(const char* trace, LxROI<T>* frame, LxROI<T>* field, int parity) {
  CopyField(trace, frame, field, frame, field, parity);
}

template <class T>
void Set(const char* trace, LxROI<T>* field, LxROI<T>* frame, int parity) {
  CopyField(trace, field, frame, frame, field, parity);
}

// The first row that does not belong to the reference field.
std::size_t FirstRow(unsigned reference) { return reference % 2 == 0 ? 1 : 0; }

// A pixel of `bytes` bytes again and again, each copy doubling what there is.
void Repeat(const std::uint8_t* pixel, std::size_t bytes, std::uint8_t* to, std::size_t count) {
  if (bytes == 1) {
    std::memset(to, *pixel, count);
    return;
  }
  if (count == 0) return;
  std::memcpy(to, pixel, bytes);
  for (std::size_t filled = 1; filled < count; filled += std::min(filled, count - filled)) {
    std::memcpy(to + filled * bytes, to, std::min(filled, count - filled) * bytes);
  }
}

// The pixels at the ends of a row are read before anything is written, for work in place.
template <class T>
void ShiftRow(const std::uint8_t* from, std::uint8_t* to, std::size_t width, std::int64_t shift) {
  const std::size_t free = std::min(width, static_cast<std::size_t>(shift < 0 ? -shift : shift));
  const std::size_t kept = width - free;
  std::uint8_t edge[sizeof(T)];
  std::memcpy(edge, shift < 0 ? from + (width - 1) * sizeof(T) : from, sizeof(T));
  if (shift < 0) {
    std::memmove(to, from + free * sizeof(T), kept * sizeof(T));
    Repeat(edge, sizeof(T), to + kept * sizeof(T), free);
  } else {
    std::memmove(to + free * sizeof(T), from, kept * sizeof(T));
    Repeat(edge, sizeof(T), to, free);
  }
}

template <class T>
void Realign(const char* trace, LxROI<T>* source, LxROI<T>* destination, int shift,
             unsigned reference) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination}) || source->GetWidth() == 0) return;
    const Rows from = RowsOf(source);
    const Rows to = RowsOf(destination);
    for (std::size_t y = FirstRow(reference); y < source->GetHeight(); y += 2) {
      ShiftRow<T>(from.Row<std::uint8_t>(y), to.Row<std::uint8_t>(y), source->GetWidth(), shift);
    }
  });
}

template <class T>
void Match(const char* trace, LxROI<T>* region, int row, int lowest, int highest, int& best) {
  RunOperation(trace, [&] {
    if (!Attached({region})) return;
    const std::int64_t width = region->GetWidth();
    const bool ordered = highest >= lowest && std::int64_t{highest} - std::int64_t{lowest} <= width;
    if (!Require(ordered, LX_ERROR_INCONSISTENT_ARGUMENTS)) return;
    const bool inside = row >= 0 && std::int64_t{row} + 1 < region->GetHeight();
    if (!Require(inside, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE)) return;
    const std::int64_t first = std::max(highest, 0);
    const std::int64_t end = width + std::min(lowest, 0);
    best = lowest;
    if (first >= end) return;
    const Rows rows = RowsOf(region);
    const auto upper = static_cast<std::size_t>(row);
    const RowMatch match{rows.Row<std::uint8_t>(upper),
                         rows.Row<std::uint8_t>(upper + 1),
                         first * kStride<T>,
                         end * kStride<T>,
                         kStride<T>,
                         lowest,
                         highest};
    best = (std::is_same_v<T, LxBW16> ? BestShiftOfWords : BestShiftOfBytes)(match);
  });
}

// The averages of rows `above` and `below` of the source, and of every other row from there on.
struct Neighbours {
  std::size_t row;
  std::size_t above;
  std::size_t below;
  std::size_t count;
};

template <class T>
void Average(LxROI<T>* source, LxROI<T>* destination, const Neighbours& rows) {
  if (rows.count == 0) return;
  PixelMap map;
  map.sources = {FieldOf(RowsOf(source), rows.above), FieldOf(RowsOf(source), rows.below), Rows()};
  map.destination = FieldOf(RowsOf(destination), rows.row);
  map.width = source->GetWidth() * std::size_t{kStride<T>};
  map.height = rows.count;
  const auto kernel = std::is_same_v<T, LxBW16> ? point::WordKernel : point::ByteKernel;
  kernel(point::Operands::kImages, ARITH_LOGIC_AVERAGE, map.path)(map);
}

template <class T>
void Rebuild(const char* trace, LxROI<T>* source, LxROI<T>* destination, unsigned reference) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    const std::size_t height = source->GetHeight();
    std::size_t first = FirstRow(reference);
    if (height < 2 || source->GetWidth() == 0) return;
    std::size_t count = FieldHeight(height, first);
    if (first == 0) {
      Average(source, destination, {0, 1, 1, 1});
      first = 2;
      --count;
    }
    const bool reachesEnd = count > 0 && first + 2 * (count - 1) == height - 1;
    if (reachesEnd) {
      Average(source, destination, {height - 1, height - 2, height - 2, 1});
      --count;
    }
    Average(source, destination, {first, first - 1, first + 1, count});
  });
}

template <class T>
void Swap(const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    PixelMap map;
    map.sources[0] = RowsOf(source);
    map.destination = RowsOf(destination);
    map.width = source->GetWidth() * sizeof(T);
    map.height = source->GetHeight();
    CrossPairs(map);
  });
}

}  // namespace

#define LX_FRAMES(type)                                                                     \
  void PicGetFrame(LxROI<type>* frame, LxROI<type>* field, int parity) {                    \
    Get("PicGetFrame ( " #type ")", frame, field, parity);                                  \
  }                                                                                         \
  void PicSetFrame(LxROI<type>* field, LxROI<type>* frame, int parity) {                    \
    Set("PicSetFrame ( " #type ")", field, frame, parity);                                  \
  }                                                                                         \
  void PicRealignFrame(LxROI<type>* source, LxROI<type>* destination, int shift,            \
                       unsigned reference) {                                                \
    Realign("PicRealignFrame ( " #type ")", source, destination, shift, reference);         \
  }                                                                                         \
  void PicMatchFrames(LxROI<type>* region, int row, int lowest, int highest, int& best) {   \
    Match("PicMatchFrames ( " #type ")", region, row, lowest, highest, best);               \
  }                                                                                         \
  void PicRebuildFrame(LxROI<type>* source, LxROI<type>* destination, unsigned reference) { \
    Rebuild("PicRebuildFrame ( " #type ")", source, destination, reference);                \
  }                                                                                         \
  void PicSwapFrames(LxROI<type>* source, LxROI<type>* destination) {                       \
    Swap("PicSwapFrames ( " #type ")", source, destination);                                \
  }

LX_FRAMES(LxBW8)
LX_FRAMES(LxC24)
LX_FRAMES(LxBW16)
