// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/boxes.h"

#include "foundation/frame.h"
#include "lxpic/point/arithmetic.h"
#include "morphology/boxes_kernels.h"
#include "morphology/passes_kernels.h"

namespace {

using namespace lx;
using namespace lx::morphology;

constexpr unsigned kSameAsX = 0xFFFFFFFF;

// What three by three pixels hold goes through a driver of their own.
void Run(Extreme extreme, const Plane& plane, std::size_t halfX, std::size_t halfY) {
  const bool isSmall = halfX <= 1 && halfY <= 1;
  const ExtremeBox box = BoxOn(plane, halfX, halfY);
  const Scratch<std::uint8_t> scratch(isSmall ? PassScratch(plane, 1) : BoxLayout(box).Bytes());
  if (!scratch) return;
  if (isSmall) {
    const Pass pass = halfY == 0 ? Pass::kLine : halfX == 0 ? Pass::kColumn : Pass::kSquare;
    RunPasses(extreme, pass, plane, 1, scratch.get());
  } else {
    RunBox(extreme, plane, box, scratch.get());
  }
}

template <class T>
void Run(const char* trace, Extreme extreme, LxROI<T>* source, LxROI<T>* destination,
         unsigned halfX, unsigned halfY) {
  RunOperation(trace, [&] {
    if (!UsablePair(source, destination)) return;
    LxROI<T>* const to = destination == nullptr ? source : destination;
    const std::size_t width = source->GetWidth();
    const std::size_t height = source->GetHeight();
    if (width == 0 || height == 0) return;
    // What lies beyond the edge is the edge.
    const std::size_t cutX = std::min<std::size_t>(halfX, width - 1);
    const std::size_t cutY = std::min<std::size_t>(halfY == kSameAsX ? halfX : halfY, height - 1);
    if (cutX == 0 && cutY == 0) return PicOper(ARITH_LOGIC_COPY, source, to);
    Run(extreme, PlaneOf(to, source), cutX, cutY);
  });
}

}  // namespace

#define LX_DEFINE_FORM(function, extreme, type, trace)                                           \
  void function(LxROI<type>* source, LxROI<type>* destination, unsigned halfX, unsigned halfY) { \
    Run(trace, Extreme::extreme, source, destination, halfX, halfY);                             \
  }
#define LX_DEFINE_BOX(function, extreme)                         \
  LX_DEFINE_FORM(function, extreme, LxBW8, #function)            \
  LX_DEFINE_FORM(function, extreme, LxBW16, #function " (BW16)") \
  LX_DEFINE_FORM(function, extreme, LxC24, #function " ( C24)")

LX_DEFINE_BOX(PicErodeBox, kMinimum)
LX_DEFINE_BOX(PicDilateBox, kMaximum)

#undef LX_DEFINE_BOX
#undef LX_DEFINE_FORM
