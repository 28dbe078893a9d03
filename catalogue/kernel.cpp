// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

template <std::size_t>
using Coefficient = float;

template <std::size_t... I>
auto SquareSetter(std::index_sequence<I...>) -> void (LxKernel::*)(Coefficient<I>...);
// SetKernelData() of this many coefficients.
template <std::size_t kCount>
using SetsSquare = decltype(SquareSetter(std::make_index_sequence<kCount>()));

using SetsNumber = void (LxKernel::*)(short);

#define LX_SETTING(name, type, text, words)                                                    \
  LX_MEMBER(LxKernel, Get##name, type (LxKernel::*)(), .parameters = "kernel " text,           \
            .summary = (words)),                                                               \
      LX_MEMBER(LxKernel, Set##name, void (LxKernel::*)(type), .parameters = "<>kernel " text, \
                .summary = "Sets it")

const std::vector<Group> kMembers = {
    {{},
     {LX_MEMBER(LxKernel, GetDataPtr, float* (LxKernel::*)(), .parameters = "kernel coefficients",
                .summary = "The coefficients, row by row"),
      LX_MEMBER(LxKernel, GetSizeX, short (LxKernel::*)(), .parameters = "kernel columns",
                .summary = "Columns"),
      LX_MEMBER(LxKernel, GetSizeY, short (LxKernel::*)(), .parameters = "kernel rows",
                .summary = "Rows"),
      LX_MEMBER(LxKernel, GetAllocatedSize, unsigned (LxKernel::*)(), .parameters = "kernel count",
                .summary = "Coefficients that the storage can hold"),
      LX_SETTING(Gain, float, "gain~1,0.5,-3", "The factor of the sum"),
      LX_SETTING(Offset, unsigned, "offset~0,128,4294967295", "What is added to the sum"),
      LX_SETTING(Rectifier, short, "rectifier~0,1,2,3,4", "What becomes of a signed result"),
      LX_SETTING(OutsideValue, unsigned, "outside-value~0,255,70000",
                 "What stands for pixels outside the image")}},
    {{{LX_ERROR_ARGUMENT_1_OUT_OF_RANGE}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEMBER(LxKernel, SetKernel, void (LxKernel::*)(KERNEL_TYPE),
                .trace = "LxKernel::SetKernel", .parameters = "<>kernel type{1-14,0,15}",
                .summary = "Makes it a preset")}},
    {{{LX_ERROR_KERNEL_NOT_ALLOCATED},
      {LX_ERROR_ARGUMENT_1_OUT_OF_RANGE},
      {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}},
     {LX_MEMBER(LxKernel, GetKernelData, void (LxKernel::*)(int, int, float&),
                .trace = "LxKernel::GetKernelData",
                .parameters = "kernel x~0,1,-1,6:0..4 y~0,1,-1,6:0..4 value",
                .summary = "One coefficient"),
      LX_MEMBER(LxKernel, SetKernelData, void (LxKernel::*)(int, int, float),
                .trace = "LxKernel::SetKernelData",
                .parameters = "<>kernel x~0,1,-1,6:0..4 y~0,1,-1,6:0..4 value~5,-0.5",
                .summary = "Sets one coefficient")}},
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_MEMBER(LxKernel, SetKernelData, SetsSquare<9>, .trace = "LxKernel::SetKernelData 3x3",
                .parameters = "<>kernel k*9", .summary = "Nine coefficients, row by row"),
      LX_MEMBER(LxKernel, SetKernelData, SetsSquare<25>, .trace = "LxKernel::SetKernelData 5x5",
                .parameters = "<>kernel k*25", .summary = "25 coefficients, row by row"),
      LX_MEMBER(LxKernel, SetKernelData, SetsSquare<49>, .trace = "LxKernel::SetKernelData 7x7",
                .parameters = "<>kernel k*49", .summary = "49 coefficients, row by row"),
      LX_MEMBER(LxKernel, SetSizeX, SetsNumber, .trace = "LxKernel::SetSizeX",
                .parameters = "<>kernel columns~3,0,1,5:0..9",
                .summary = "Sets the number of columns"),
      LX_MEMBER(LxKernel, SetSizeY, SetsNumber, .trace = "LxKernel::SetSizeY",
                .parameters = "<>kernel rows~3,0,1,5:0..9", .summary = "Sets the number of rows"),
      LX_MEMBER(LxKernel, SetAllocatedSize, void (LxKernel::*)(unsigned),
                .trace = "LxKernel::SetAllocatedSize", .parameters = "<>kernel count~9,0,25,100",
                .summary = "Makes room for coefficients")}}};

#undef LX_SETTING

}  // namespace

Object KernelObject() {
  return {"LxKernel", "A convolution kernel", Describe("convolution", kMembers)};
}

}  // namespace lx::catalogue
