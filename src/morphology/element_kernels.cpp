// SPDX-License-Identifier: Apache-2.0
#include "morphology/element_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "morphology/element_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "morphology/element_sweep-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::morphology::HWY_NAMESPACE {
namespace {

template <class Op>
struct ExtremeKernel {
  template <class D>
  static void Run(const Plane& plane, const ElementPlan& plan, std::uint8_t* scratch) {
    ElementSweep<D, Op> sweep(plan, scratch);
    StoredRows<hn::TFromD<D>> out(plane.destination, plane.height);
    while (!sweep.IsDone()) sweep.Advance({plane.source, plane.height}, out);
  }
};

// Takes rows, and writes their differences from rows that lie elsewhere.
template <class D>
class DifferenceRows final : public RowSink<hn::TFromD<D>> {
 public:
  using T = hn::TFromD<D>;

  DifferenceRows(const Plane& plane, const RowSource& other, bool isOtherLarger, const Rows& rows)
      : plane_(plane), other_(other), isOtherLarger_(isOtherLarger), rows_(rows) {}

  T* Row(std::size_t y) override { return rows_.template Row<T>(y % BoxLayout::kRows); }

  void Finish(std::size_t first, std::size_t count) override {
    for (std::size_t y = first; y < first + count; ++y) Subtract(y);
  }

 private:
  void Subtract(std::size_t y) {
    const T* const other = other_.Row<T>(y);
    const T* const large = isOtherLarger_ ? other : Row(y);
    const T* const small = isOtherLarger_ ? Row(y) : other;
    T* const to = plane_.destination.template Row<T>(y);
    const D d;
    ForEachVector(d, plane_.elements, [&](std::size_t x, auto access) HWY_ATTR {
      access.Store(d, hn::Sub(access.Load(d, large + x), access.Load(d, small + x)), to + x);
    });
  }

  const Plane& plane_;
  RowSource other_;
  bool isOtherLarger_;
  Rows rows_;
};

template <class First, class Second>
struct DifferenceKernel {
  template <class D>
  static void Run(const Plane& plane, const ElementPlan& plan, Difference difference,
                  std::uint8_t* scratch) {
    using T = hn::TFromD<D>;
    const DifferenceLayout layout(difference, plane, plan);
    ElementSweep<D, First> first(plan, scratch);
    ElementSweep<D, Second> second(plan, scratch + layout.sweep);
    const auto pitch = static_cast<std::ptrdiff_t>(layout.row);
    const Rows finished = {scratch + 2 * layout.sweep, pitch};
    const RowSource source = {plane.source, plane.height};
    const RowSource ring = {{finished.data + BoxLayout::kRows * layout.row, pitch}, layout.slots};
    const bool isGradient = difference == Difference::kGradient;
    StoredRows<T> between(ring.rows, ring.slots);
    DifferenceRows<D> out(plane, isGradient ? ring : source, difference == Difference::kWhiteTopHat,
                          finished);
    while (!second.IsDone()) {
      if (isGradient) {
        first.Advance(source, between);
        second.Advance(source, out);
      } else {
        while (between.Count() < second.Needs()) first.Advance(source, between);
        second.Advance(ring, out);
      }
    }
  }
};

void RunExtreme(Extreme extreme, const Plane& plane, const ElementPlan& plan,
                std::uint8_t* scratch) {
  extreme == Extreme::kMinimum ? RunOnElements<ExtremeKernel<Minimum>>(plane, plan, scratch)
                               : RunOnElements<ExtremeKernel<Maximum>>(plane, plan, scratch);
}

void RunTwo(Difference difference, const Plane& plane, const ElementPlan& plan,
            std::uint8_t* scratch) {
  difference == Difference::kBlackTopHat
      ? RunOnElements<DifferenceKernel<Maximum, Minimum>>(plane, plan, difference, scratch)
      : RunOnElements<DifferenceKernel<Minimum, Maximum>>(plane, plan, difference, scratch);
}

}  // namespace
}  // namespace lx::morphology::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::morphology {

HWY_EXPORT(RunExtreme);
HWY_EXPORT(RunTwo);

void RunElement(Extreme extreme, const Plane& plane, const ElementPlan& plan,
                std::uint8_t* scratch) {
  LX_CALL(plane.path, RunExtreme, extreme, plane, plan, scratch);
}

void RunDifference(Difference difference, const Plane& plane, const ElementPlan& plan,
                   std::uint8_t* scratch) {
  LX_CALL(plane.path, RunTwo, difference, plane, plan, scratch);
}

// The second sweep of a top-hat reads at most five half-widths of rows between those that it will
// need no more and those that the first has made; of a gradient, both are equally far.
DifferenceLayout::DifferenceLayout(Difference difference, const Plane& plane,
                                   const ElementPlan& plan)
    : sweep(plan.Bytes()),
      slots(difference == Difference::kGradient ? std::max(BoxLayout::kRows, plan.box.BlockRows())
                                                : 5 * plan.box.halfY + 2 * BoxLayout::kRows),
      row(WholeVectors(plane.elements * plane.elementBytes) + kLargestVector) {
  slots = std::min(slots, plane.height);
}

}  // namespace lx::morphology
#endif
