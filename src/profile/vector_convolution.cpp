// SPDX-License-Identifier: Apache-2.0
#include <cstdint>

#include "foundation/frame.h"
#include "lxpic/profile/vector_filters.h"
#include "profile/vector_convolution_kernels.h"
#include "vectors/integers.h"

namespace {

using namespace lx;
using namespace lx::profile;
using namespace lx::vectors;

constexpr int kTaps = 3;

void SetRectifier(VectorFilter& filter, short rectifier) {
  filter.positive = rectifier == RECTIFIER_NEGATIVE ? 0 : 1;
  filter.negative = rectifier == RECTIFIER_POSITIVE                                      ? 0
                    : rectifier == RECTIFIER_NEGATIVE || rectifier == RECTIFIER_ABSOLUTE ? -1
                                                                                         : 1;
}

// Of a kernel that fits. The coefficients are scaled in single precision: their sum becomes the
// gain, unless they cancel out.
VectorFilter FilterOf(LxKernel& kernel) {
  VectorFilter filter{};
  const float* const data = kernel.GetDataPtr();
  const float sum = data[0] + data[1] + data[2];
  const float gain = sum != 0 ? kernel.GetGain() / sum : kernel.GetGain();
  for (int i = 0; i < kTaps; ++i) {
    filter.taps[i] = static_cast<double>(gain != 0 ? data[i] * gain : data[i]);
  }
  filter.outside = kernel.GetOutsideValue();
  filter.offset = static_cast<std::int32_t>(kernel.GetOffset());
  SetRectifier(filter, kernel.GetRectifier());
  return filter;
}

// The kernel is there, of one row of three, and has storage.
bool IsUsable(LxKernel* kernel) {
  if (!Require(kernel != nullptr, LX_ERROR_KERNEL_NO_DATA)) return false;
  return Require(kernel->GetSizeX() == kTaps && kernel->GetSizeY() == 1,
                 LX_ERROR_UNSUPPORTED_KERNEL_SIZE) &&
         Require(kernel->GetDataPtr() != nullptr, LX_ERROR_KERNEL_NO_DATA);
}

}  // namespace

void PicConvolVect(LxVector* source, LxVector* result, LxKernel* kernel, int first, int last) {
  RunOperation("PicConvolVect", [&] {
    if (!Require(source != nullptr && result != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !Require(source != result, LX_ERROR_DESTINATION_IS_SOURCE)) {
      return;
    }
    const int end = last == -1 ? source->GetNbGroup() - 1 : last;
    if (!Require(HoldsGroups(*source, first, end), LX_ERROR_INVALID_GROUP_RANGE) ||
        !HasIntegers(*source)) {
      return;
    }
    const int length = source->GetGroupLength();
    const int count = end - first + 1;
    result->SetStructure(source->GetDataSize(), count, length, source->GetDataType());
    if (LxGetError() != LX_OK || !IsUsable(kernel)) return;
    const VectorFilter filter = FilterOf(*kernel);
    VisitElement(*source, [&](auto zero) {
      using T = decltype(zero);
      const GroupsOf<T> groups{GroupOf<const T>(*source, first), GroupOf<T>(*result, 0),
                               static_cast<std::size_t>(count), static_cast<std::size_t>(length)};
      FilterGroups(filter, groups, CurrentPath());
    });
  });
}
