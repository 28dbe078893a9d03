// SPDX-License-Identifier: Apache-2.0
#include "point/arithmetic_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/arithmetic_byte_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "point/arithmetic_tables-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

using Element = std::uint8_t;

bool InvertElements(const PixelMap& map) {
  MapOne<Element>(map, Invert{});
  return true;
}

bool Images(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return RunImages<OnImages, Element>(operation, map);
}

bool WithConstants(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return RunWithConstant<OnConstant, Element>(operation, map);
}

bool ConstantsWith(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return RunConstantWith<OnConstant, Element>(operation, map);
}

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(InvertElements);
HWY_EXPORT(Images);
HWY_EXPORT(WithConstants);
HWY_EXPORT(ConstantsWith);

bool InvertElements8(const PixelMap& map) { return LX_CALL(map.path, InvertElements, map); }

bool CombineImages8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, Images, operation, map);
}

bool CombineWithConstant8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, WithConstants, operation, map);
}

bool CombineConstantWith8(ARITH_LOGIC_OPERATIONS operation, const PixelMap& map) {
  return LX_CALL(map.path, ConstantsWith, operation, map);
}

}  // namespace lx::point
#endif
