// SPDX-License-Identifier: Apache-2.0
#define LX_FILTER_KERNEL FilterColours
#define LX_FILTER_ELEMENT std::uint8_t
#define LX_FILTER_STRIDE 3

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/filters_colour_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "convolution/filters_kernels-inl.h"
