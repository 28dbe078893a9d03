// SPDX-License-Identifier: Apache-2.0
// The driver of 3 × 3 neighbourhoods. A rule has a horizontal step, which turns a pixel and its
// left and right neighbours into values (planes), and a vertical step, which turns the planes of
// three rows into the result. Every source row goes through the horizontal step once; borders and
// work in place are decided here: no rule contains a border case. Included once for each
// instruction set.

#if defined(LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#undef LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#else
#define LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
#endif

#include <algorithm>

#include "foundation/neighbourhood.h"
#include "foundation/taps-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Writes what stands for the neighbours beyond either end of a row, which lies at any address.
// `outside` are the pixels of a constant border.
template <std::size_t kStride, typename T>
HWY_INLINE void PadEnds(const T* from, std::size_t width, Border border, const T* outside, T* left,
                        T* right) {
  const bool isConstant = border == Border::kConstant;
  std::memcpy(left, isConstant ? outside : from, kStride * sizeof(T));
  std::memcpy(right, isConstant ? outside : from + width - kStride, kStride * sizeof(T));
}

// What the passes of all instruction sets share: the rows that a pass reads and writes.
template <typename T, std::size_t kStride, class Rule>
class PassRows {
 protected:
  using Taps = TapsFor<T, kStride, Rule>;
  using Lanes = typename Taps::Lanes;
  using Lane = hn::TFromD<Lanes>;
  using V = typename Taps::V;
  static constexpr std::size_t kPlanes = Rule::kPlanes;
  // Elements before a row, and the component that the first of them belongs to.
  static constexpr std::size_t kMargin = kLargestVector / sizeof(T);
  static constexpr std::size_t kPhase = (kStride - kMargin % kStride) % kStride;

  // The first pass reads the source, those behind it what they work on together.
  HWY_INLINE void StartRows(const Neighbourhood& map, bool isFirst, std::uint8_t* scratch) {
    source_ = isFirst ? map.source : map.destination;
    destination_ = map.destination;
    width_ = map.elements;
    height_ = static_cast<std::ptrdiff_t>(map.height);
    border_ = map.border;
    const PassLayout layout(map, sizeof(T), kPlanes);
    rowElements_ = layout.row / sizeof(T);
    outside_ = reinterpret_cast<T*>(scratch + kLargestVector);
    FillOutside(map.outside);
    records_ = reinterpret_cast<Lane*>(scratch + layout.rows);
  }

  const T* SourceRow(std::ptrdiff_t y) const {
    return source_.template Row<const T>(static_cast<std::size_t>(y));
  }
  T* DestinationRow(std::ptrdiff_t y) const {
    return destination_.template Row<T>(static_cast<std::size_t>(y));
  }
  T* Unused() const { return outside_ + rowElements_; }

  // A copy of a source row with what stands for its outside. The destination may be the source.
  HWY_INLINE const T* PaddedCopy(std::ptrdiff_t y, std::size_t slot) const {
    T* const to = CopyAt(slot);
    std::memcpy(to, SourceRow(y), width_ * sizeof(T));
    PadEnds<kStride>(SourceRow(y), width_, border_, outside_, to - kStride, to + width_);
    return to;
  }
  HWY_INLINE void FillOutside(const std::array<std::uint16_t, 3>& components) const {
    T* const all = outside_ - kMargin;
    for (std::size_t i = 0; i < kStride; ++i) {
      all[i] = static_cast<T>(components[(i + kPhase) % kStride]);
    }
    for (std::size_t n = kStride; n < rowElements_; n *= 2) {
      std::memcpy(all + n, all, HWY_MIN(n, rowElements_ - n) * sizeof(T));
    }
  }
  T* CopyAt(std::size_t slot) const { return outside_ + (2 + slot) * rowElements_; }

  Rows source_;
  Rows destination_;
  std::size_t width_ = 0;
  std::ptrdiff_t height_ = 0;
  Border border_ = Border::kReplicate;
  std::size_t rowElements_ = 0;
  T* outside_ = nullptr;  // a row of what a constant border has
  Lane* records_ = nullptr;
};

#if LX_HAS_LANES

// One pass of a rule over an image. A step takes four rows down all vector columns: the planes of
// the two rows above lie in one record for each column, and those of the four rows in registers.
template <typename T, std::size_t kStride, class Rule>
class Pass : PassRows<T, kStride, Rule> {
  using Base = PassRows<T, kStride, Rule>;
  using Base::border_;
  using Base::height_;
  using Base::kMargin;
  using Base::kPlanes;
  using Base::outside_;
  using Base::records_;
  using Base::width_;
  using typename Base::Lane;
  using typename Base::Lanes;
  using typename Base::Taps;
  using typename Base::V;
  using D = hn::ScalableTag<T>;
  static constexpr std::size_t kRows = kSweepRows;
  static constexpr std::size_t kParts = Taps::kParts;
  static constexpr std::size_t kVector = hn::MaxLanes(D());
  static constexpr std::size_t kPlane = hn::MaxLanes(Lanes());
  static constexpr std::size_t kRecord = 2 * kPlanes * kParts * kPlane;

 public:
  static std::size_t Steps(std::size_t height) { return (height + 2 * kRows - 1) / kRows; }

  // `scratch` has PassLayout::Bytes() bytes.
  HWY_INLINE void Start(const Neighbourhood& map, bool isFirst, std::uint8_t* scratch) {
    Base::StartRows(map, isFirst, scratch);
    isPadded_ = !isFirst || map.IsInPlace() || width_ < 2 * (kVector + kStride);
    if (width_ < kVector) {
      // What lies behind a row is read, and what lies behind results written.
      std::memset(Base::CopyAt(0), 0, kRows * Base::rowElements_ * sizeof(T));
    }
    const std::size_t columns = (width_ + kVector - 1) / kVector + 2;
    std::memset(records_, 0, columns * kRecord * sizeof(Lane));
  }

  // Takes the rows y .. y + 3 and writes y - 1 .. y + 2, for y = 4 * step - 3. Some of them stand
  // for the outside or for nothing.
  HWY_INLINE void Step(std::size_t step) {
    const auto y = static_cast<std::ptrdiff_t>(kRows * step + 1 - kRows);
    HWY_ALIGN T narrow[kRows][kVector];
    Segment segments[3];
    std::size_t count = 1;
    for (std::size_t i = 0; i < kRows; ++i) {
      const std::ptrdiff_t row = y + static_cast<std::ptrdiff_t>(i);
      T* const to = !IsInside(row - 1) ? Base::Unused()
                    : width_ < kVector ? narrow[i]
                                       : Base::DestinationRow(row - 1);
      if (isPadded_) {
        segments[0].SetRow(i, PaddedRow(row, i), to);
      } else {
        CutRow(row, i, to, segments);
      }
    }
    if (isPadded_) {
      segments[0].SetColumns(0, HWY_MAX(width_, kVector));
    } else {
      count = 3;
      segments[0].SetColumns(0, kVector);
      segments[1].SetColumns(kVector, width_ - kVector);
      segments[2].SetColumns(0, kVector);
    }
    Lane* record = records_;
    for (std::size_t i = 0; i < count; ++i) record = Sweep(segments[i], record);
    if (width_ < kVector) StoreNarrow(y, narrow);
  }

 private:
  // Columns of rows that lie somewhere, and where their results go.
  struct Segment {
    const T* from[kRows];
    T* to[kRows];
    std::size_t first;
    std::size_t end;

    HWY_INLINE void SetRow(std::size_t i, const T* source, T* destination) {
      from[i] = source;
      to[i] = destination;
    }
    HWY_INLINE void SetColumns(std::size_t begin, std::size_t beyond) {
      first = begin;
      end = beyond;
    }
  };

  bool IsInside(std::ptrdiff_t row) const { return row >= 0 && row < height_; }
  // Whether a row is one of the constant border, or nobody wants it.
  bool IsConstant(std::ptrdiff_t row) const {
    return row > height_ || (border_ == Border::kConstant && !IsInside(row));
  }

  // Copies are made before anything of the step is written: in place, a row is still what it was.
  HWY_INLINE const T* PaddedRow(std::ptrdiff_t row, std::size_t slot) const {
    if (IsConstant(row)) return outside_;
    return Base::PaddedCopy(std::clamp<std::ptrdiff_t>(row, 0, height_ - 1), slot);
  }

  // A row in three segments: its inside lies where it is, and its ends, with what stands for their
  // outside, in small copies.
  HWY_INLINE void CutRow(std::ptrdiff_t row, std::size_t slot, T* to, Segment (&segments)[3]) {
    T* const last = to + (width_ - kVector);
    if (IsConstant(row)) {
      segments[0].SetRow(slot, outside_, to);
      segments[1].SetRow(slot, outside_, to);
      segments[2].SetRow(slot, outside_ + (width_ - kVector), last);
      return;
    }
    const T* const from = Base::SourceRow(std::clamp<std::ptrdiff_t>(row, 0, height_ - 1));
    constexpr std::size_t kEnd = kVector + kStride;
    T* const left = ends_[2 * slot] + kMargin;
    T* const right = ends_[2 * slot + 1] + kMargin;
    std::memcpy(left, from, kEnd * sizeof(T));
    std::memcpy(right - kStride, from + width_ - kEnd, kEnd * sizeof(T));
    PadEnds<kStride>(from, width_, border_, outside_, left - kStride, right + kVector);
    segments[0].SetRow(slot, left, to);
    segments[1].SetRow(slot, from, to);
    segments[2].SetRow(slot, right, last);
  }

  // All columns of a segment, the last of which may overlap with the one before. Returns the record
  // of the next column.
  static HWY_INLINE Lane* Sweep(const Segment& segment, Lane* record) {
    // Copies, because the compiler must take every stored byte for a change of the originals.
    const T* from[kRows];
    T* to[kRows];
    std::copy(segment.from, segment.from + kRows, from);
    std::copy(segment.to, segment.to + kRows, to);
    const std::size_t end = segment.end;
    for (std::size_t x = segment.first; x < end; x += kVector, record += kRecord) {
      Column(from, to, HWY_MIN(x, end - kVector), record);
    }
    return record;
  }

  static HWY_INLINE void Column(const T* const (&from)[kRows], T* const (&to)[kRows], std::size_t x,
                                Lane* record) {
    const Lanes lanes;
    V planes[kParts][kRows + 2][kPlanes];
    const auto at = [record](std::size_t part, std::size_t row, std::size_t plane) {
      return record + ((part * 2 + row) * kPlanes + plane) * kPlane;
    };
    LX_UNROLL
    for (std::size_t i = 0; i < kParts * 2 * kPlanes; ++i) {
      const std::size_t part = i / (2 * kPlanes);
      const std::size_t row = i / kPlanes % 2;
      planes[part][row][i % kPlanes] = hn::Load(lanes, at(part, row, i % kPlanes));
    }
    LX_UNROLL
    for (std::size_t i = 0; i < kRows; ++i) {
      const Taps taps{LoadTaps<kStride>(from[i] + x)};
      V results[kParts];
      const auto apply = [&](auto part) HWY_ATTR {
        V(&rows)[kRows + 2][kPlanes] = planes[decltype(part)::value];
        Rule::Horizontal(typename Taps::template Part<decltype(part)::value>{taps}, rows[i + 2]);
        const bool isSecond = Rule::kAnyOrder && i % 2 != 0;
        results[decltype(part)::value] = isSecond
                                             ? Rule::Vertical(rows[i + 2], rows[i], rows[i + 1])
                                             : Rule::Vertical(rows[i], rows[i + 1], rows[i + 2]);
      };
      apply(std::integral_constant<std::size_t, 0>());
      if constexpr (kParts > 1) apply(std::integral_constant<std::size_t, 1>());
      hn::StoreU(Taps::template Join<Rule::kFits>(results), D(), to[i] + x);
    }
    LX_UNROLL
    for (std::size_t i = 0; i < kParts * 2 * kPlanes; ++i) {
      const std::size_t part = i / (2 * kPlanes);
      const std::size_t row = i / kPlanes % 2;
      hn::Store(planes[part][kRows + row][i % kPlanes], lanes, at(part, row, i % kPlanes));
    }
  }

  void StoreNarrow(std::ptrdiff_t y, const T (&rows)[kRows][kVector]) const {
    for (std::size_t i = 0; i < kRows; ++i) {
      const std::ptrdiff_t row = y + static_cast<std::ptrdiff_t>(i) - 1;
      if (IsInside(row)) std::memcpy(Base::DestinationRow(row), rows[i], width_ * sizeof(T));
    }
  }

  bool isPadded_ = false;
  T ends_[2 * kRows][kVector + 2 * kMargin];
};

#else

// One pass where a lane is a pixel. A step takes a row and writes the one before it; both halves are
// plain loops over a row, which the compiler turns into what vectors its target has.
template <typename T, std::size_t kStride, class Rule>
class Pass : PassRows<T, kStride, Rule> {
  using Base = PassRows<T, kStride, Rule>;
  using Base::border_;
  using Base::height_;
  using Base::kPlanes;
  using Base::width_;
  using typename Base::Lane;
  using typename Base::Lanes;
  using typename Base::Taps;
  using typename Base::V;

 public:
  static std::size_t Steps(std::size_t height) { return height + 1; }

  HWY_INLINE void Start(const Neighbourhood& map, bool isFirst, std::uint8_t* scratch) {
    Base::StartRows(map, isFirst, scratch);
    if (border_ == Border::kConstant) TakeRow(Base::outside_, kOutside);
  }

  HWY_INLINE void Step(std::size_t step) {
    const auto y = static_cast<std::ptrdiff_t>(step);
    if (y < height_) TakeRow(Base::PaddedCopy(y, 0), step % kRing);
    if (y > 0) WriteRow(y - 1);
  }

 private:
  static constexpr std::size_t kRing = 3;
  static constexpr std::size_t kOutside = 3;  // the slot of a row outside

  Lane* Plane(std::size_t slot, std::size_t plane) const {
    return Base::records_ + (slot * kPlanes + plane) * width_;
  }
  std::size_t SlotOf(std::ptrdiff_t y) const {
    if (border_ == Border::kConstant && (y < 0 || y >= height_)) return kOutside;
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(y, 0, height_ - 1)) % kRing;
  }

  void TakeRow(const T* row, std::size_t slot) const {
    Lane* to[kPlanes];
    for (std::size_t p = 0; p < kPlanes; ++p) to[p] = Plane(slot, p);
    for (std::size_t x = 0; x < width_; ++x) {
      V planes[kPlanes];
      const Taps taps{LoadTaps<kStride>(row + x)};
      Rule::Horizontal(typename Taps::template Part<0>{taps}, planes);
      for (std::size_t p = 0; p < kPlanes; ++p) to[p][x] = hn::GetLane(planes[p]);
    }
  }

  void WriteRow(std::ptrdiff_t y) const {
    const Lane* rows[3][kPlanes];
    for (std::size_t p = 0; p < kPlanes; ++p) {
      for (std::size_t j = 0; j < 3; ++j) {
        rows[j][p] = Plane(SlotOf(y + static_cast<std::ptrdiff_t>(j) - 1), p);
      }
    }
    T* const to = Base::DestinationRow(y);
    const std::size_t width = width_;
    for (std::size_t x = 0; x < width; ++x) {
      V planes[3][kPlanes];
      for (std::size_t j = 0; j < 3; ++j) {
        for (std::size_t p = 0; p < kPlanes; ++p) planes[j][p] = hn::Set(Lanes(), rows[j][p][x]);
      }
      const V results[1] = {Rule::Vertical(planes[0], planes[1], planes[2])};
      hn::StoreU(Taps::template Join<Rule::kFits>(results), hn::ScalableTag<T>(), to + x);
    }
  }
};

#endif

// destination = rule(3 × 3 neighbourhood of source), `passes` times over; `scratch` has
// PassLayout::Bytes() bytes for each pass. The image is not empty. Rows go through all passes while
// they are in the cache: at step n, pass k takes its step n - k, whose rows pass k - 1 has just
// written.
template <typename T, std::size_t kStride, class Rule>
void Map3x3(const Neighbourhood& map, std::size_t passes, std::uint8_t* scratch) {
  using ThisPass = Pass<T, kStride, Rule>;
  ThisPass chain[kMostPasses];
  const std::size_t bytes = PassLayout(map, sizeof(T), Rule::kPlanes).Bytes();
  for (std::size_t k = 0; k < passes; ++k) chain[k].Start(map, k == 0, scratch + k * bytes);
  const std::size_t steps = ThisPass::Steps(map.height);
  for (std::size_t n = 0; n + 1 < steps + passes; ++n) {
    for (std::size_t k = n < steps ? 0 : n + 1 - steps; k < passes && k <= n; ++k) {
      chain[k].Step(n - k);
    }
  }
}

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_NEIGHBOURHOOD_INL_H_
