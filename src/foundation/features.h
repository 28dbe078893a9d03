// SPDX-License-Identifier: Apache-2.0
// What the instruction set offers that a kernel is being compiled for, by name: the target changes
// with every inclusion, and these with it. Targets are numbered from the newest up, so that those
// of later releases of Highway have what their elders have.
#pragma once

#include "hwy/detect_targets.h"

#define LX_IS_X86_SINCE(target) (HWY_ARCH_X86 && HWY_TARGET <= (target))

// Vectors of more than one lane; the plain path has others.
#define LX_HAS_LANES (HWY_TARGET != HWY_SCALAR)
// Products of pairs of neighbouring bytes added up in 16 bits, and saturating packs to unsigned.
#define LX_HAS_PAIR_PRODUCTS LX_IS_X86_SINCE(HWY_SSE4)
// Loads and stores of parts of vectors that do not touch the bytes beyond.
#define LX_HAS_MASKED_ACCESS LX_IS_X86_SINCE(HWY_AVX3)
// Masks that are bits, in registers of their own.
#define LX_HAS_MASK_REGISTERS LX_IS_X86_SINCE(HWY_AVX3)
// Lanes cut to half or a quarter of their width in one instruction, in order.
#define LX_HAS_TRUNCATION LX_IS_X86_SINCE(HWY_AVX3)
// Lanes of 16 and 32 bits from anywhere in a vector of 64 bytes.
#define LX_HAS_LANE_PERMUTE LX_IS_X86_SINCE(HWY_AVX3)
// Bytes from anywhere in one or two vectors of 64 bytes.
#define LX_HAS_BYTE_PERMUTE LX_IS_X86_SINCE(HWY_AVX3_DL)
// Lanes loaded one by one straight into a vector.
#define LX_HAS_LANE_LOADS LX_IS_X86_SINCE(HWY_SSE4)
// Words from computed addresses in one instruction that is quicker than a load for each.
#define LX_HAS_FAST_GATHER LX_IS_X86_SINCE(HWY_AVX3)
// Repeats the body of the next loop, whose count is a constant, instead of looping.
#if HWY_COMPILER_CLANG
#define LX_UNROLL _Pragma("clang loop unroll(full)")
#else
#define LX_UNROLL _Pragma("GCC unroll 8")
#endif
