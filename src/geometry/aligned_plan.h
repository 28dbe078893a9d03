// SPDX-License-Identifier: Apache-2.0
// Transforms that keep rows and columns: which columns come from where, and the memory it takes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/scratch.h"
#include "geometry/resampling_kernels.h"

namespace lx::geometry {

struct AlignedPlan {
  Span columns;             // of the destination, whose points lie in the source
  std::int64_t first = 0;   // column of the source; -1 is one before it
  std::int64_t length = 0;  // columns of the source

  explicit AlignedPlan(const Resampling& job) {
    const std::int64_t margin = job.Margin();
    const FixedAxis& x = job.inverse.x;
    columns = Cut({0, job.width}, x.origin, x.column, margin, job.sourceWidth * kOnePixel + margin);
    if (columns.Length() == 0) return;
    const std::int64_t one = Place(job, columns.from);
    const std::int64_t other = Place(job, columns.to - 1);
    first = std::min(one, other);
    length = std::max(one, other) - first + (job.bits == 0 ? 1 : 2);
  }

  std::size_t Count() const { return static_cast<std::size_t>(columns.Length()); }

  // The source column of a column inside, the left one of two.
  static std::int64_t Place(const Resampling& job, std::int64_t x) {
    const auto at = static_cast<std::int64_t>(job.inverse.x.At(x, 0));
    return (at >> 16) - (job.bits == 0 ? 0 : 1);
  }

  // Bytes from column `first` to the source columns of all columns.
  void MakeOffsets(const Resampling& job, std::int32_t* offsets) const {
    for (std::int64_t x = columns.from; x < columns.to; ++x) {
      const std::int64_t place = Place(job, x) - first;
      *offsets++ = static_cast<std::int32_t>(place * static_cast<std::int64_t>(job.pixelBytes));
    }
  }
};

// Where in scratch memory the tables and rows of a plan lie.
class AlignedLayout {
 public:
  AlignedLayout(const AlignedPlan& plan, std::size_t pixelBytes)
      : table_(WholeVectors(plan.Count() * sizeof(std::int32_t)) + kLargestVector),
        line_(WholeVectors(static_cast<std::size_t>(plan.length) * pixelBytes) +
              4 * kLargestVector),
        // Sums have twice the bytes of their pixels.
        row_(WholeVectors(plan.Count() * pixelBytes * 2) + 4 * kLargestVector) {}

  // Tables have an entry for each column, and then some to a whole number of vectors.
  std::size_t Offsets() const { return 0; }
  std::size_t Weights() const { return table_; }
  // A row of the source, and then some.
  std::size_t Line() const { return 2 * table_; }
  // Two rows of sums.
  std::size_t Row(std::size_t slot) const { return Line() + line_ + slot * row_; }
  std::size_t Bytes() const { return Row(2); }

 private:
  std::size_t table_;
  std::size_t line_;
  std::size_t row_;
};

}  // namespace lx::geometry
