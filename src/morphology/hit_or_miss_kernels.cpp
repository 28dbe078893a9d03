// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "morphology/hit_or_miss.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/hit_or_miss_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "morphology/bit_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

using Words = hn::ScalableTag<std::uint64_t>;
using V = hn::Vec<Words>;

// What a pass found.
struct Found {
  bool change;  // of a bit
  bool miss;    // of the pattern by some pixel
};

// The cells of a pattern that a row looks at: the row of bits that lies over each, and the pixels
// whose cell lies outside.
struct Asked {
  struct Cell {
    const std::uint64_t* bits;
    const std::uint64_t* outside;
  };
  Cell set[9];
  Cell clear[9];
  std::size_t sets = 0;
  std::size_t clears = 0;
};

// The bits of one component, and the passes over them.
class BitImage {
 public:
  HWY_INLINE BitImage(const HitOrMiss& work, std::size_t component, std::uint64_t* bits)
      : work_(work), component_(component), layout_(work) {
    rows_ = bits + component * layout_.plane + BitLayout::kMargin;
    std::uint64_t* at = bits + work.components * layout_.plane + BitLayout::kMargin;
    for (auto& row : moved_) {
      for (auto& move : row) move = std::exchange(at, at + layout_.pitch);
    }
    inside_ = std::exchange(at, at + layout_.pitch);
    first_ = std::exchange(at, at + layout_.pitch);
    last_ = std::exchange(at, at + layout_.pitch);
    none_ = at;
    for (std::size_t x = 0; x < work.width; ++x) inside_[x / 64] |= Bit(x);
    first_[0] = Bit(0);
    last_[(work.width - 1) / 64] = Bit(work.width - 1);
  }

  HWY_INLINE void Pack() const {
    for (std::size_t y = 0; y < work_.height; ++y) {
      std::uint64_t* const row = Row(y);
      if (work_.components == 3) {
        PackColourRow(work_.source.Row<const std::uint8_t>(y), work_.width, component_, row);
      } else if (work_.elementBytes == 2) {
        PackRow(work_.source.Row<const std::uint16_t>(y), work_.width, row);
      } else {
        PackRow(work_.source.Row<const std::uint8_t>(y), work_.width, row);
      }
      ForEachWord([&](std::size_t k) HWY_ATTR {
        hn::StoreU(hn::And(Load(row + k), Load(inside_ + k)), Words(), row + k);
      });
    }
  }

  // The rows move down through the three that are moved; the image's own row is free to be written.
  HWY_INLINE Found Pass(const Cells& cells) {
    Clear(moved_[0]);
    Move(0, moved_[1]);
    change_ = miss_ = hn::Zero(Words());
    for (std::size_t y = 0; y < work_.height; ++y) {
      if (y + 1 < work_.height) {
        Move(y + 1, moved_[2]);
      } else {
        Clear(moved_[2]);
      }
      const Asked asked = AskedOf(cells, y);
      if (work_.outsideMatches) {
        MatchRow<true>(asked, Row(y));
      } else {
        MatchRow<false>(asked, Row(y));
      }
      std::swap(moved_[0], moved_[1]);
      std::swap(moved_[1], moved_[2]);
    }
    return {IsAny(change_), IsAny(miss_)};
  }

 private:
  using Moved = std::uint64_t* [3];  // bit x is pixel x - 1, x, x + 1

  static std::uint64_t Bit(std::size_t x) { return std::uint64_t{1} << (x % 64); }
  static HWY_INLINE V Load(const std::uint64_t* from) { return hn::LoadU(Words(), from); }
  static bool IsAny(V v) { return !hn::AllTrue(Words(), hn::Eq(v, hn::Zero(Words()))); }

  std::uint64_t* Row(std::size_t y) const { return rows_ + y * layout_.pitch; }

  template <class Step>
  HWY_INLINE void ForEachWord(const Step& step) const {
    const std::size_t words = (work_.width + 63) / 64;
    for (std::size_t k = 0; k < words; k += hn::Lanes(Words())) step(k);
  }

  HWY_INLINE void Clear(const Moved& to) const {
    for (std::uint64_t* const row : to) {
      ForEachWord([&](std::size_t k) HWY_ATTR { hn::StoreU(hn::Zero(Words()), Words(), row + k); });
    }
  }

  HWY_INLINE void Move(std::size_t y, const Moved& to) const {
    const std::uint64_t* const row = Row(y);
    ForEachWord([&](std::size_t k) HWY_ATTR {
      const Words d;
      const V here = Load(row + k);
      const V left = hn::Or(hn::ShiftLeft<1>(here), hn::ShiftRight<63>(Load(row + k - 1)));
      const V right = hn::Or(hn::ShiftRight<1>(here), hn::ShiftLeft<63>(Load(row + k + 1)));
      hn::StoreU(left, d, to[0] + k);
      hn::StoreU(here, d, to[1] + k);
      hn::StoreU(right, d, to[2] + k);
    });
  }

  Asked AskedOf(const Cells& cells, std::size_t y) const {
    const std::uint64_t* const outside[3] = {first_, none_, last_};
    Asked asked;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const bool isOutside = (i < 3 && y == 0) || (i >= 6 && y + 1 == work_.height);
      if (cells[i] < 0 || (isOutside && work_.outsideMatches)) continue;
      const Asked::Cell cell = {moved_[i / 3][i % 3], outside[i % 3]};
      if (cells[i] > 0) {
        asked.set[asked.sets++] = cell;
      } else {
        asked.clear[asked.clears++] = cell;
      }
    }
    return asked;
  }

  template <bool kOutsideMatches>
  HWY_INLINE void MatchRow(const Asked& asked, std::uint64_t* row) {
    V change = change_;
    V miss = miss_;
    ForEachWord([&](std::size_t k) HWY_ATTR {
      const V inside = Load(inside_ + k);
      V match = inside;
      for (std::size_t i = 0; i < asked.sets; ++i) {
        V bits = Load(asked.set[i].bits + k);
        if (kOutsideMatches) bits = hn::Or(bits, Load(asked.set[i].outside + k));
        match = hn::And(match, bits);
      }
      for (std::size_t i = 0; i < asked.clears; ++i) {
        V bits = Load(asked.clear[i].bits + k);
        if (kOutsideMatches) bits = hn::AndNot(Load(asked.clear[i].outside + k), bits);
        match = hn::AndNot(bits, match);
      }
      const V before = Load(row + k);
      const V after = work_.sets ? hn::Or(before, match) : hn::AndNot(match, before);
      change = hn::Or(change, hn::Xor(before, after));
      miss = hn::Or(miss, hn::AndNot(match, inside));
      hn::StoreU(after, Words(), row + k);
    });
    change_ = change;
    miss_ = miss;
  }

  const HitOrMiss& work_;
  std::size_t component_;
  BitLayout layout_;
  std::uint64_t* rows_;
  Moved moved_[3];  // the row above, the row itself, the row below
  std::uint64_t* inside_;
  std::uint64_t* first_;  // pixels whose left neighbour lies outside
  std::uint64_t* last_;   // and their right one
  std::uint64_t* none_;
  V change_;
  V miss_;
};

// Moves what each outer cell asks for to the next one.
void Turn(Cells& cells, int rotation) {
  static constexpr std::size_t kRing[] = {0, 1, 2, 5, 8, 7, 6, 3};
  const Cells before = cells;
  for (std::size_t i = 0; i < 8; ++i) {
    const std::size_t next = kRing[(i + 1) % 8];
    if (rotation == 1) {
      cells[next] = before[kRing[i]];
    } else {
      cells[kRing[i]] = before[next];
    }
  }
}

// Whether a component of the source has no other value than the largest.
template <typename T>
bool IsLargest(const HitOrMiss& work, std::size_t component) {
  for (std::size_t y = 0; y < work.height; ++y) {
    const T* const row = work.source.Row<const T>(y) + component;
    for (std::size_t x = 0; x < work.width; ++x) {
      T pixel;  // rows lie at any address
      std::memcpy(&pixel, row + x * work.components, sizeof(T));
      if (pixel != hwy::LimitsMax<T>()) return false;
    }
  }
  return true;
}

// The first pass writes every pixel anew, and has left the image as it was only if all match and have
// their value already. A set bit does not yet tell the value.
bool FirstChanges(const HitOrMiss& work, std::size_t component, Found found) {
  if (found.miss || !work.sets) return found.miss || found.change;
  return !(work.elementBytes == 2 ? IsLargest<std::uint16_t>(work, component)
                                  : IsLargest<std::uint8_t>(work, component));
}

std::size_t Transform(const HitOrMiss& work, std::size_t component, std::size_t limit,
                      std::uint64_t* bits) {
  constexpr std::size_t kTurn = 8;
  BitImage image(work, component, bits);
  image.Pack();
  Cells cells = work.cells;
  std::size_t untilEnd = 1;
  for (std::size_t passes = 0; passes < limit; ++passes) {
    if (passes % kTurn == 0 && work.rotation != 0) untilEnd = kTurn;
    const Found found = image.Pass(cells);
    const bool changes = passes == 0 ? FirstChanges(work, component, found) : found.change;
    if (!changes && --untilEnd == 0) return passes + 1;
    if (work.rotation != 0) Turn(cells, work.rotation);
  }
  return limit;
}

void Write(const HitOrMiss& work, const std::uint64_t* bits) {
  const BitLayout layout(work);
  for (std::size_t y = 0; y < work.height; ++y) {
    const std::uint64_t* const row = bits + y * layout.pitch + BitLayout::kMargin;
    if (work.components == 3) {
      UnpackColourRow(row, layout.plane, work.width, work.destination.Row<std::uint8_t>(y));
    } else if (work.elementBytes == 2) {
      UnpackRow(row, work.width, work.destination.Row<std::uint16_t>(y));
    } else {
      UnpackRow(row, work.width, work.destination.Row<std::uint8_t>(y));
    }
  }
}

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(Transform);
HWY_EXPORT(Write);

std::size_t TransformComponent(const HitOrMiss& work, std::size_t component, std::size_t limit,
                               std::uint64_t* bits) {
  return LX_CALL(work.path, Transform, work, component, limit, bits);
}

void WriteComponents(const HitOrMiss& work, const std::uint64_t* bits) {
  LX_CALL(work.path, Write, work, bits);
}

}  // namespace lx::morphology
#endif
