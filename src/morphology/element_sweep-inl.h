// SPDX-License-Identifier: Apache-2.0
// The sweep of a structuring element down a plane, and the rows it works on. Included once for each
// instruction set.

#if defined(LXPIC_MORPHOLOGY_ELEMENT_SWEEP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MORPHOLOGY_ELEMENT_SWEEP_INL_H_
#undef LXPIC_MORPHOLOGY_ELEMENT_SWEEP_INL_H_
#else
#define LXPIC_MORPHOLOGY_ELEMENT_SWEEP_INL_H_
#endif

#include "foundation/box_extremes-inl.h"
#include "morphology/element.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

// Rows of an image, or of a ring of `slots` rows.
template <typename T>
class StoredRows final : public RowSink<T> {
 public:
  StoredRows(const Rows& rows, std::size_t slots) : rows_(rows), slots_(slots) {}

  std::size_t Count() const { return count_; }

  T* Row(std::size_t y) override { return rows_.template Row<T>(y % slots_); }
  void Finish(std::size_t first, std::size_t count) override { count_ = first + count; }

 private:
  Rows rows_;
  std::size_t slots_;
  std::size_t count_ = 0;
};

// Joins rows along both diagonals as they come; those that are finished go on to `out`.
template <class D, class Op>
class Diagonals final : public RowSink<hn::TFromD<D>> {
 public:
  using T = hn::TFromD<D>;

  Diagonals(const ElementPlan& plan, std::uint8_t* scratch) : plan_(plan) {
    for (std::size_t i = 0; i < plan.diagonalCount; ++i) {
      rings_[i] = scratch;
      scratch += plan.diagonals[i].slots * plan.diagonals[i].row;
    }
  }

  void SetOut(RowSink<T>& out) { out_ = &out; }

  T* Row(std::size_t y) override { return RowOf(0, y); }

  void Finish(std::size_t first, std::size_t count) override {
    for (std::size_t i = 0; i < plan_.diagonalCount; ++i) {
      const std::size_t ahead = plan_.diagonals[i].Ahead();
      const std::size_t end = first + count;
      if (end <= ahead) return;
      first -= std::min(first, ahead);
      count = end - ahead - first;
      const bool isLast = i + 1 == plan_.diagonalCount;
      for (std::size_t y = first; y < first + count; ++y) {
        Join(i, y, isLast ? out_->Row(y) : RowOf(i + 1, y));
      }
    }
    out_->Finish(first, count);
  }

 private:
  T* RowOf(std::size_t step, std::size_t y) const {
    const DiagonalStep& diagonal = plan_.diagonals[step];
    return reinterpret_cast<T*>(rings_[step] + y % diagonal.slots * diagonal.row);
  }

  // Row y of a step, from the rows y and below.
  void Join(std::size_t i, std::size_t y, T* to) const {
    const DiagonalStep& step = plan_.diagonals[i];
    const std::ptrdiff_t had =
        i == 0 ? -static_cast<std::ptrdiff_t>(plan_.box.beyond) : plan_.diagonals[i - 1].begin;
    const auto stride = static_cast<std::ptrdiff_t>(plan_.box.stride);
    const T* taps[WindowPlan::kMostTaps];
    for (std::size_t k = 0; k < step.join.taps; ++k) {
      const std::size_t at = step.join.at[k];
      const std::ptrdiff_t column =
          step.begin - had + step.direction * static_cast<std::ptrdiff_t>(at);
      taps[k] = RowOf(i, y + at) + column * stride;
    }
    std::size_t count = step.join.taps;
    // Two diagonals of two pixels leave out their centre; those of boxes that are larger do not.
    if (plan_.box.halfX == 0 && i + 1 == plan_.diagonalCount) {
      taps[count++] =
          RowOf(0, y + plan_.box.beyond) + static_cast<std::ptrdiff_t>(plan_.box.beyond) * stride;
    }
    JoinRows<D, Op>(taps, count, to, step.columns * plan_.box.stride);
  }

  const ElementPlan& plan_;
  std::uint8_t* rings_[ElementPlan::kMostDiagonals];
  RowSink<T>* out_ = nullptr;
};

// Writes the rows of a plane's extremes, in order and some at a time. They may be those that are
// read.
template <class D, class Op>
class ElementSweep {
 public:
  using T = hn::TFromD<D>;

  // `scratch` has ElementPlan::Bytes() bytes.
  ElementSweep(const ElementPlan& plan, std::uint8_t* scratch)
      : box_(plan.box, scratch),
        diagonals_(plan, scratch + BoxLayout(plan.box).Bytes()),
        hasDiagonals_(plan.diagonalCount > 0) {}

  bool IsDone() const { return box_.IsDone(); }
  // Rows of the source that must be there before the next step.
  std::size_t Needs() const { return box_.Needs(); }
  void Advance(const RowSource& in, RowSink<T>& out) {
    diagonals_.SetOut(out);
    box_.Advance(in, hasDiagonals_ ? static_cast<RowSink<T>&>(diagonals_) : out);
  }

 private:
  BoxSweep<D, Op> box_;
  Diagonals<D, Op> diagonals_;
  bool hasDiagonals_;
};

// Calls Kernel::Run<D>(arguments...) for the elements of the plane, in the largest vectors that its
// rows hold.
template <class Kernel, typename T, class... Arguments>
void RunOnRows(const Plane& plane, const Arguments&... arguments) {
  using Whole = hn::ScalableTag<T>;
  using Small = hn::CappedTag<T, 16 / sizeof(T)>;
  using Single = hn::CappedTag<T, 1>;
  if (plane.elements >= hn::MaxLanes(Whole())) {
    Kernel::template Run<Whole>(plane, arguments...);
  } else if (plane.elements >= hn::MaxLanes(Small())) {
    Kernel::template Run<Small>(plane, arguments...);
  } else {
    Kernel::template Run<Single>(plane, arguments...);
  }
}

template <class Kernel, class... Arguments>
void RunOnElements(const Plane& plane, const Arguments&... arguments) {
  if (plane.elementBytes == 1) {
    RunOnRows<Kernel, std::uint8_t>(plane, arguments...);
  } else {
    RunOnRows<Kernel, std::uint16_t>(plane, arguments...);
  }
}

}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MORPHOLOGY_ELEMENT_SWEEP_INL_H_
