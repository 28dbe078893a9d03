// SPDX-License-Identifier: Apache-2.0
// Minima and maxima over boxes, in one sweep down an image and in a number of steps that hardly grows
// with the boxes. Down the columns a box spans two blocks of rows: it is a suffix of one and a prefix
// of the next, which are found row by row. Along the rows windows are joined from shorter ones.
// Included once for each instruction set.

#if defined(LXPIC_FOUNDATION_BOX_EXTREMES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_FOUNDATION_BOX_EXTREMES_INL_H_
#undef LXPIC_FOUNDATION_BOX_EXTREMES_INL_H_
#else
#define LXPIC_FOUNDATION_BOX_EXTREMES_INL_H_
#endif

#include <algorithm>
#include <cstring>
#include <utility>

#include "foundation/box_extremes.h"
#include "foundation/rows.h"
#include "foundation/window_doubling-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::HWY_NAMESPACE {

// Rows that a sweep reads: those of an image, or the last ones of it in a ring.
struct RowSource {
  Rows rows;
  std::size_t slots;

  template <typename T>
  const T* Row(std::size_t y) const {
    return rows.Row<const T>(y % slots);
  }
};

// Where the rows of a sweep go. Up to BoxLayout::kRows of them are written to Row(y); then Finish()
// is called.
template <typename T>
class RowSink {
 public:
  virtual T* Row(std::size_t y) = 0;
  virtual void Finish(std::size_t first, std::size_t count) = 0;

 protected:
  ~RowSink() = default;
};

// Finished rows come a few at a time, and the rows that they need are read before: the rows that are
// written may be those that are read. Rows have at least one vector of lanes D.
template <class D, class Op>
class BoxSweep {
 public:
  using T = hn::TFromD<D>;

  // `scratch` has BoxLayout::Bytes() bytes.
  BoxSweep(const ExtremeBox& box, std::uint8_t* scratch)
      : box_(box),
        layout_(box),
        doublings_(DoublingsOf(box)),
        plan_(2 * box.halfX + 1, std::size_t{1} << doublings_) {
    doubler_ = box.stride == 1 ? DoublerOf<D, Op, 1>(doublings_) : DoublerOf<D, Op, 3>(doublings_);
    const std::size_t rows = BoxLayout::kRows;
    const std::size_t rowElements = layout_.row / sizeof(T);
    T* const first = reinterpret_cast<T*>(scratch);
    std::fill(first, first + rows * rowElements, Op::template kNeutral<T>);
    for (std::size_t i = 0; i < rows; ++i) {
      rows_[i] = first + i * rowElements + layout_.margin / sizeof(T);
      windows_[0][i] = rows_[i] + rows * rowElements;
      windows_[1][i] = rows_[i] + 2 * rows * rowElements;
    }
    line_ = layout_.line / sizeof(T);
    neutral_ = first + 3 * rows * rowElements;
    std::fill(neutral_, neutral_ + line_, Op::template kNeutral<T>);
    prefix_ = neutral_ + line_;
    suffixes_ = prefix_ + line_;
    nextSuffixes_ = suffixes_ + (layout_.blocks - 1) * layout_.suffixes * line_;
  }

  bool IsDone() const { return done_ == box_.ResultRows(); }
  // Rows of the source that must be there before the next step.
  std::size_t Needs() const {
    const std::size_t end = done_ + (box_.halfY == 0 ? BoxLayout::kRows : 3 * box_.halfY);
    return std::min(end - std::min(end, box_.beyond), box_.height);
  }

  // Writes some more rows, in order, which begin `beyond` rows above and columns before the first.
  void Advance(const RowSource& in, RowSink<T>& out) {
    if (box_.halfY == 0) return TakeRows(in, out);
    const auto block = static_cast<std::ptrdiff_t>(box_.BlockRows());
    const auto half = static_cast<std::ptrdiff_t>(box_.halfY);
    if (done_ == 0) FindSuffixes(in, -half, suffixes_);
    const auto start = static_cast<std::ptrdiff_t>(done_) + half;
    // Before the rows are written over.
    if (start + half < Height()) FindSuffixes(in, start, nextSuffixes_);
    std::memcpy(prefix_, neutral_, layout_.line);
    for (std::ptrdiff_t j = 0; j < block && !IsDone();) {
      const std::ptrdiff_t count = block - j >= kRows ? kRows : 2;
      if (count == kRows) {
        JoinBlocks<kRows>(in, start, j);
      } else {
        JoinBlocks<2>(in, start, j);
      }
      j += count;
      Finish(static_cast<std::size_t>(count), out);
    }
    std::swap(suffixes_, nextSuffixes_);
  }

 private:
  static std::size_t DoublingsOf(const ExtremeBox& box) {
    const std::size_t most = MostDoublings<D>(box.stride);
    std::size_t count = 0;
    while (count < most && (std::size_t{2} << count) < 2 * box.halfX + 1) ++count;
    return count;
  }

  static constexpr std::ptrdiff_t kRows = BoxLayout::kRows;

  std::ptrdiff_t Height() const { return static_cast<std::ptrdiff_t>(box_.ResultRows()); }

  // A row of the results' image.
  const T* RowOf(const RowSource& in, std::ptrdiff_t row) const {
    const std::ptrdiff_t y = row - static_cast<std::ptrdiff_t>(box_.beyond);
    const bool isInside = y >= 0 && y < static_cast<std::ptrdiff_t>(box_.height);
    return isInside ? in.Row<T>(static_cast<std::size_t>(y)) : neutral_;
  }
  // Suffixes that begin below the image are not wanted, and lie in one line.
  T* Suffix(T* block, std::ptrdiff_t j) const {
    return block + std::min(static_cast<std::size_t>(j), layout_.suffixes - 1) * line_;
  }

  // The extremes from each row of the block that begins at row `start` to its last row.
  void FindSuffixes(const RowSource& in, std::ptrdiff_t start, T* block) {
    const T* carry = neutral_;
    for (auto j = static_cast<std::ptrdiff_t>(box_.BlockRows()); j > 0;) {
      const std::ptrdiff_t count = j % kRows == 0 ? kRows : 2;
      j -= count;
      if (count == kRows) {
        ExtendSuffix<kRows>(in, start, j, block, carry);
      } else {
        ExtendSuffix<2>(in, start, j, block, carry);
      }
      carry = Suffix(block, j);
    }
  }

  template <std::ptrdiff_t kCount>
  void ExtendSuffix(const RowSource& in, std::ptrdiff_t start, std::ptrdiff_t j, T* block,
                    const T* carry) {
    const T* from[kCount];
    T* to[kCount];
    for (std::ptrdiff_t i = 0; i < kCount; ++i) {
      from[i] = RowOf(in, start + j + i);
      to[i] = Suffix(block, j + i);
    }
#if LX_HAS_LANES
    const D d;
    ForEachWhole(d, box_.elements, [&](std::size_t x) HWY_ATTR {
      auto v = hn::LoadU(d, carry + x);
      LX_UNROLL
      for (std::ptrdiff_t i = kCount - 1; i >= 0; --i) {
        v = Op::Of(v, hn::LoadU(d, from[i] + x));
        hn::StoreU(v, d, to[i] + x);
      }
    });
#else
    for (std::ptrdiff_t i = kCount - 1; i >= 0; --i) {
      JoinTwo<D, Op>(i == kCount - 1 ? carry : to[i + 1], from[i], to[i], box_.elements);
    }
#endif
  }

  // The boxes' columns: suffixes of the block above row `start`, and the rows from there on.
  template <std::ptrdiff_t kCount>
  void JoinBlocks(const RowSource& in, std::ptrdiff_t start, std::ptrdiff_t j) {
    const T* from[kCount];
    const T* above[kCount];
    T* to[kCount];
    for (std::ptrdiff_t i = 0; i < kCount; ++i) {
      from[i] = RowOf(in, start + j + i);
      above[i] = Suffix(suffixes_, j + i);
      to[i] = rows_[i];
    }
#if LX_HAS_LANES
    const D d;
    T* const prefix = prefix_;
    const std::size_t n = hn::Lanes(d);
    ForEachWhole(d, box_.elements, [&](std::size_t x) HWY_ATTR {
      // The last vector overlaps, and so has a record of its own.
      T* const kept = prefix + (x + n - 1) / n * n;
      auto v = hn::LoadU(d, kept);
      LX_UNROLL
      for (std::ptrdiff_t i = 0; i < kCount; ++i) {
        v = Op::Of(v, hn::LoadU(d, from[i] + x));
        hn::StoreU(Op::Of(v, hn::LoadU(d, above[i] + x)), d, to[i] + x);
      }
      hn::StoreU(v, d, kept);
    });
#else
    for (std::ptrdiff_t i = 0; i < kCount; ++i) {
      JoinTwo<D, Op>(prefix_, from[i], prefix_, box_.elements);
      JoinTwo<D, Op>(prefix_, above[i], to[i], box_.elements);
    }
#endif
  }

  void TakeRows(const RowSource& in, RowSink<T>& out) {
    for (std::size_t i = 0; i < kRows; ++i) {
      const T* const from = RowOf(in, static_cast<std::ptrdiff_t>(done_ + i));
      std::memcpy(rows_[i], from, box_.elements * sizeof(T));
    }
    Finish(kRows, out);
  }

  void Finish(std::size_t count, RowSink<T>& out) {
    const std::size_t rows = std::min(count, box_.ResultRows() - done_);
    JoinWindows(rows, out);
    out.Finish(done_, rows);
    done_ += rows;
  }

  // A window of a step begins at its element, until the last step centres it. All rows take one step
  // before the next, so that no vector is read while parts of it wait to be stored.
  void JoinWindows(std::size_t rows, RowSink<T>& out) {
    const std::size_t reach = (box_.halfX + box_.beyond) * box_.stride;
    const std::size_t begin = WholeVectors(reach * sizeof(T)) / sizeof(T);
    T* const* had = rows_;
    if (doublings_ > 0) {
      const std::size_t less = ((std::size_t{1} << doublings_) - 1) * box_.stride;
      had = windows_[1];
      for (std::size_t i = 0; i < rows; ++i) {
        doubler_(rows_[i] - begin, had[i] - begin, begin + box_.elements + reach - less);
      }
    }
    for (std::size_t p = 0; p + 1 < plan_.count; ++p) {
      const WindowPlan::Step& step = plan_.steps[p];
      T* const* const made = windows_[p % 2];
      const std::size_t end = box_.elements + reach - (step.length - 1) * box_.stride;
      for (std::size_t i = 0; i < rows; ++i) {
        JoinStep(step, had[i] - begin, made[i] - begin, begin + end);
      }
      had = made;
    }
    for (std::size_t i = 0; i < rows; ++i) {
      JoinStep(plan_.Last(), had[i] - reach, out.Row(done_ + i), box_.ResultElements());
    }
  }

  void JoinStep(const WindowPlan::Step& step, const T* from, T* to, std::size_t width) const {
    const T* taps[WindowPlan::kMostTaps];
    for (std::size_t k = 0; k < step.taps; ++k) taps[k] = from + step.at[k] * box_.stride;
    JoinRows<D, Op>(taps, step.taps, to, width);
  }

  ExtremeBox box_;
  BoxLayout layout_;
  std::size_t doublings_;
  WindowPlan plan_;
  WindowDoubler<D> doubler_;
  std::size_t done_ = 0;
  std::size_t line_;
  T* rows_[BoxLayout::kRows];
  T* windows_[2][BoxLayout::kRows];
  T* neutral_;
  T* prefix_;
  T* suffixes_;      // of the block above
  T* nextSuffixes_;  // of the block below, which are found first
};

}  // namespace lx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_FOUNDATION_BOX_EXTREMES_INL_H_
