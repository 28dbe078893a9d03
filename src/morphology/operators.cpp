// SPDX-License-Identifier: Apache-2.0
#include "morphology/operators.h"

#include <algorithm>
#include <array>

#include "foundation/scratch.h"
#include "morphology/element_kernels.h"
#include "morphology/passes_kernels.h"

namespace lx::morphology {

namespace {

// How often each pass runs, the source going into the first of them.
struct PassCounts {
  std::array<std::size_t, 4> count{};  // by pass

  std::size_t& operator[](Pass pass) { return count[static_cast<std::size_t>(pass)]; }
  std::size_t Largest() const { return *std::max_element(count.begin(), count.end()); }
};

// Passes are quicker up to some size; none stands for elements beyond.
PassCounts PassesOf(const Element& element) {
  constexpr std::size_t kLargestRadius = 4;
  PassCounts passes;
  if (element.isDisk) {
    if (element.Radius() > kLargestRadius) return passes;
    passes[Pass::kSquare] = element.Radius() / 2;
    passes[Pass::kCross] = element.Radius() - element.Radius() / 2;
  } else if (element.halfX <= 1 && element.halfY <= 1) {
    passes[element.halfY == 0   ? Pass::kLine
           : element.halfX == 0 ? Pass::kColumn
                                : Pass::kSquare] = 1;
  }
  return passes;
}

// Finds extremes in memory that is taken once.
class ExtremeWorker {
 public:
  ExtremeWorker(const Plane& plane, const Element& element)
      : plane_(plane),
        passes_(PassesOf(element)),
        plan_(element, plane),
        scratch_(passes_.Largest() > 0 ? PassScratch(plane, passes_.Largest()) : plan_.Bytes()) {}

  explicit operator bool() const { return static_cast<bool>(scratch_); }

  // From the source the first time, and then on the destination.
  void Run(Extreme extreme) {
    if (passes_.Largest() == 0) RunElement(extreme, plane_, plan_, scratch_.get());
    for (const Pass pass : {Pass::kSquare, Pass::kCross, Pass::kLine, Pass::kColumn}) {
      if (passes_[pass] == 0) continue;
      RunPasses(extreme, pass, plane_, passes_[pass], scratch_.get());
      plane_.source = plane_.destination;
    }
    plane_.source = plane_.destination;
  }

 private:
  Plane plane_;
  PassCounts passes_;
  ElementPlan plan_;
  Scratch<std::uint8_t> scratch_;
};

void ApplyDifference(Difference difference, const Plane& plane, const Element& element) {
  const ElementPlan plan(element, plane);
  const Scratch<std::uint8_t> scratch(DifferenceLayout(difference, plane, plan).Bytes());
  if (scratch) RunDifference(difference, plane, plan, scratch.get());
}

}  // namespace

void Apply(Operator wanted, const Plane& plane, const Element& element) {
  if (wanted == Operator::kWhiteTopHat) {
    return ApplyDifference(Difference::kWhiteTopHat, plane, element);
  }
  if (wanted == Operator::kBlackTopHat) {
    return ApplyDifference(Difference::kBlackTopHat, plane, element);
  }
  if (wanted == Operator::kGradient) {
    return ApplyDifference(Difference::kGradient, plane, element);
  }
  ExtremeWorker worker(plane, element);
  if (!worker) return;
  const bool minimumFirst = wanted == Operator::kErode || wanted == Operator::kOpen;
  worker.Run(minimumFirst ? Extreme::kMinimum : Extreme::kMaximum);
  if (wanted == Operator::kOpen) worker.Run(Extreme::kMaximum);
  if (wanted == Operator::kClose) worker.Run(Extreme::kMinimum);
}

}  // namespace lx::morphology
