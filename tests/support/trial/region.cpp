// SPDX-License-Identifier: Apache-2.0
#include "support/trial/region.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <utility>

namespace lx::test {

namespace {

using Owner = std::unique_ptr<LxGenericROI>;

// Margins of a child region inside its parent, in pixels.
constexpr int kLeft = 3;  // of binary ones, as the offset says
constexpr int kRight = 2;
constexpr int kTop = 1;
constexpr int kBottom = 1;
// Foreign bytes before and, unless an unmapped page follows, behind the pixels.
constexpr std::ptrdiff_t kMargin = 64;

constexpr std::size_t kCapacity = std::size_t{3} << 20;

const GuardedBuffer& BufferOf(std::size_t slot, GuardedEnd end) {
  thread_local std::map<std::pair<std::size_t, GuardedEnd>, GuardedBuffer> buffers;
  return buffers.try_emplace({slot, end}, kCapacity, end).first->second;
}

// The foreign bytes: no two neighbours are alike, none is 0 or 255.
std::uint8_t ForeignByte(std::size_t index) {
  return static_cast<std::uint8_t>(1 + (index * 97 + index / 251) % 254);
}

const std::vector<std::uint8_t>& ForeignBytes() {
  static const std::vector<std::uint8_t> bytes = [] {
    std::vector<std::uint8_t> made(kCapacity);
    for (std::size_t i = 0; i < made.size(); ++i) made[i] = ForeignByte(i);
    return made;
  }();
  return bytes;
}

std::ptrdiff_t PitchBytes(Pitch pitch, std::ptrdiff_t rowBytes) {
  switch (pitch) {
    case Pitch::kTight:
    case Pitch::kChild:
      return rowBytes;
    case Pitch::kPadded:
      return (rowBytes + 127) / 64 * 64;
    case Pitch::kOdd:
      return rowBytes + 13 + rowBytes % 2;
    case Pitch::kNegative:
      return -(rowBytes + 7);
  }
  return rowBytes;
}

}  // namespace

Owner MakeUnattached(Pixel pixel) {
  return VisitPixel(pixel, [](auto tag) -> Owner {
    return std::make_unique<LxImage<typename decltype(tag)::Type>>();
  });
}

Owner MakeView(Pixel pixel, int width, int height, const Placement& place) {
  return VisitPixel(pixel, [&](auto tag) -> Owner {
    auto image = std::make_unique<LxImage<typename decltype(tag)::Type>>();
    image->Attach(place.base, width, height, place.pitch);
    return image;
  });
}

Owner MakeChild(Pixel pixel, LxGenericROI* parent, int x, int y, int width, int height) {
  return VisitPixel(pixel, [&](auto tag) -> Owner {
    using T = typename decltype(tag)::Type;
    return std::make_unique<LxROI<T>>(static_cast<LxROI<T>*>(parent), x, y, width, height);
  });
}

void SetRuns(Pixel pixel, LxGenericROI* region, const std::vector<Run>& runs, bool absolute) {
  const auto origin = reinterpret_cast<std::uintptr_t>(region->GetPixelPtr(0, 0));
  LxVectorTemplate<LxRun> list;
  for (const Run& run : runs) {
    const auto first = reinterpret_cast<std::uintptr_t>(region->GetPixelPtr(run.x, run.y));
    const std::uintptr_t start = first - (absolute ? 0 : origin);
    const auto bytes = static_cast<std::uintptr_t>(RowBytes(pixel, run.length));
    const auto position = static_cast<std::uint32_t>(run.x) | static_cast<std::uint32_t>(run.y)
                                                                  << 16;
    list.AddElement({start, start + bytes, position});
  }
  VisitPixel(pixel, [&](auto tag) {
    static_cast<LxROI<typename decltype(tag)::Type>*>(region)->SetRuns(list, absolute);
  });
}

std::string LayoutText(Layout layout) {
  static constexpr std::array kNames = {"tight", "padded", "odd", "negative", "child"};
  return std::string(kNames[static_cast<std::size_t>(layout.pitch)]) + "@" +
         (layout.offset == kGuardBehind   ? "last"
          : layout.offset == kGuardBefore ? "first"
                                          : std::to_string(layout.offset));
}

Arena::Arena(std::size_t slot, Pixel type, int w, int h, Layout layout)
    : pixel(type),
      width(w),
      height(h),
      child(layout.pitch == Pitch::kChild),
      left(type == Pixel::kBinary ? layout.offset & 15 : kLeft) {
  const int wholeWidth = child ? w + left + kRight : w;
  const int wholeHeight = child ? h + kTop + kBottom : h;
  const std::ptrdiff_t rowBytes = RowBytes(type, wholeWidth);
  pitch = PitchBytes(layout.pitch, rowBytes);
  const std::ptrdiff_t step = std::abs(pitch);
  const std::ptrdiff_t span = wholeHeight > 0 ? step * (wholeHeight - 1) + rowBytes : 0;
  const bool guardBefore = layout.offset == kGuardBefore;
  const GuardedBuffer& buffer =
      BufferOf(slot, guardBefore ? GuardedEnd::kFirst : GuardedEnd::kLast);
  std::uint8_t* const end = buffer.GetData() + buffer.GetSize();
  const std::ptrdiff_t lead = guardBefore ? 0 : kMargin;
  std::ptrdiff_t slack = guardBefore ? kMargin : 0;
  if (layout.offset >= 0) {
    const auto address = reinterpret_cast<std::uintptr_t>(end - span);
    const std::uintptr_t surplus = address - static_cast<std::uintptr_t>(layout.offset);
    slack = kMargin + static_cast<std::ptrdiff_t>(surplus % kMargin);
  }
  size = static_cast<std::size_t>(lead + span + slack);
  memory = guardBefore ? buffer.GetData() : end - size;
  origin = lead + (pitch < 0 && wholeHeight > 0 ? step * (wholeHeight - 1) : 0);
  region = MakeRegion(parent);
  twin = MakeRegion(twinParent);
  if (!child) return;
  firstBit = type == Pixel::kBinary ? left % 8 : 0;
  origin += kTop * pitch + (type == Pixel::kBinary ? left / 8 : RowBytes(type, left));
}

Owner Arena::MakeRegion(Owner& whole) const {
  const Placement place{memory + origin, pitch, 0};
  if (!child) return MakeView(pixel, width, height, place);
  whole = MakeView(pixel, width + left + kRight, height + kTop + kBottom, place);
  return MakeChild(pixel, whole.get(), left, kTop, width, height);
}

void Arena::Paint(const Picture& picture, std::vector<std::uint8_t>& bytes) const {
  bytes.assign(ForeignBytes().begin(), ForeignBytes().begin() + static_cast<std::ptrdiff_t>(size));
  Store(picture, {bytes.data() + origin, pitch, firstBit});
}

void Arena::SetRuns(const std::vector<Run>& runs, bool absolute) {
  if (pixel == Pixel::kBinary) return;
  for (LxGenericROI* const each : {region.get(), twin.get()}) {
    test::SetRuns(pixel, each, runs, absolute);
  }
}

void Arena::Reset() { std::memcpy(memory, before.data(), size); }

bool Arena::IsUntouched() const { return std::memcmp(memory, before.data(), size) == 0; }

std::string Arena::Difference() const {
  if (std::memcmp(memory, expected.data(), size) == 0) return {};
  const auto* const found = std::mismatch(memory, memory + size, expected.begin()).first;
  const auto byte = static_cast<std::size_t>(found - memory);
  return Locate(found - memory) + ": expected " + std::to_string(expected[byte]) + ", got " +
         std::to_string(*found);
}

// The pixel and byte of it that a byte of the memory belongs to.
std::string Arena::Locate(std::ptrdiff_t byte) const {
  for (int y = 0; y < height; ++y) {
    const std::ptrdiff_t column = byte - origin - y * pitch;
    if (column < 0 || column >= RowBytes(pixel, width, firstBit)) continue;
    if (pixel == Pixel::kBinary) {
      return "row " + std::to_string(y) + ", byte " + std::to_string(column);
    }
    const std::ptrdiff_t pixelBytes = RowBytes(pixel, 1);
    return "pixel (" + std::to_string(column / pixelBytes) + ", " + std::to_string(y) + ") byte " +
           std::to_string(column % pixelBytes);
  }
  return "byte " + std::to_string(byte - origin) + " from the first pixel, outside the region";
}

}  // namespace lx::test
