// SPDX-License-Identifier: Apache-2.0
// The operators of grey morphology with any structuring element.
#pragma once

#include "foundation/frame.h"
#include "lxpic/point/arithmetic.h"
#include "morphology/element.h"

namespace lx::morphology {

enum class Operator {
  kErode,
  kDilate,
  kOpen,
  kClose,
  kWhiteTopHat,
  kBlackTopHat,
  kGradient
};

// Applies an operator to a plane that is not empty, with an element that is cut to it. Sets
// LX_ERROR_ALLOCATION_FAILED, with nothing written, when there is no scratch memory.
void Apply(Operator wanted, const Plane& plane, const Element& element);

template <class T>
void RunMorphology(const char* trace, Operator wanted, LxROI<T>* source, LxROI<T>* destination,
                   const Element& element) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    LxROI<T>* const to = destination == nullptr ? source : destination;
    const Plane plane = PlaneOf(to, source);
    if (plane.elements == 0 || plane.height == 0) return;
    const Element cut = CutTo(element, plane);
    if (cut.IsPixel() && wanted < Operator::kWhiteTopHat) {
      PicOper(ARITH_LOGIC_COPY, source, to);
    } else {
      Apply(wanted, plane, cut);
    }
  });
}

}  // namespace lx::morphology
