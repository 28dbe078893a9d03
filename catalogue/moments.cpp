// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

using Byte = LxROI<LxBW8>*;
using Word = LxROI<LxBW16>*;

#define LX_THRESHOLD_BYTE "source threshold~100,0,1,255,256,4294967295:0..255 "
#define LX_THRESHOLD_WORD "source threshold~25000,0,1,65535,65536,4294967295:0..65535 "
#define LX_FIRST "m00 m10 m01"
#define LX_SECOND LX_FIRST " m20 m11 m02"
#define LX_THIRD LX_SECOND " m30 m21 m12 m03"
#define LX_FOURTH LX_THIRD " m40 m31 m22 m13 m04"

constexpr std::string_view kBinary = "Moments of the pixels that reach a level";
constexpr std::string_view kWeighted = "Moments of pixels that weigh their value";

const std::vector<Group> kGroups = {
    {{},
     {LX_FORM(PicBinaryMoments, void(Byte, unsigned, float&, float&, float&),
              .trace = "PicBinaryMoments ( first order)", .parameters = LX_THRESHOLD_BYTE LX_FIRST,
              .summary = kBinary),
      LX_FORM(PicBinaryMoments, void(Word, unsigned, float&, float&, float&),
              .trace = "PicBinaryMoments (first order)(BW16)",
              .parameters = LX_THRESHOLD_WORD LX_FIRST, .summary = kBinary),
      LX_FORM(PicBinaryMoments,
              void(Byte, unsigned, float&, float&, float&, float&, float&, float&),
              .trace = "PicBinaryMoments ( second order)",
              .parameters = LX_THRESHOLD_BYTE LX_SECOND, .summary = kBinary),
      LX_FORM(PicBinaryMoments,
              void(Word, unsigned, float&, float&, float&, float&, float&, float&),
              .trace = "PicBinaryMoments (second order)(BW16)",
              .parameters = LX_THRESHOLD_WORD LX_SECOND, .summary = kBinary),
      LX_FORM(PicWeightedMoments, void(Byte, float&, float&, float&),
              .trace = "PicWeighedMoments ( first order)", .parameters = "source " LX_FIRST,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments, void(Word, float&, float&, float&),
              .trace = "PicWeighedMoments (first order)(BW16)", .parameters = "source " LX_FIRST,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments, void(Byte, float&, float&, float&, float&, float&, float&),
              .trace = "PicWeighedMoments ( second order)", .parameters = "source " LX_SECOND,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments, void(Word, float&, float&, float&, float&, float&, float&),
              .trace = "PicWeighedMoments (second order)(BW16)", .parameters = "source " LX_SECOND,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments,
              void(Byte, float&, float&, float&, float&, float&, float&, float&, float&, float&,
                   float&),
              .trace = "PicWeighedMoments ( third order)", .parameters = "source " LX_THIRD,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments,
              void(Word, float&, float&, float&, float&, float&, float&, float&, float&, float&,
                   float&),
              .trace = "PicWeighedMoments (third order)(BW16)", .parameters = "source " LX_THIRD,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments,
              void(Byte, float&, float&, float&, float&, float&, float&, float&, float&, float&,
                   float&, float&, float&, float&, float&, float&),
              .trace = "PicWeighedMoments ( fourth order)", .parameters = "source " LX_FOURTH,
              .summary = kWeighted),
      LX_FORM(PicWeightedMoments,
              void(Word, float&, float&, float&, float&, float&, float&, float&, float&, float&,
                   float&, float&, float&, float&, float&, float&),
              .trace = "PicWeighedMoments (fourth order)(BW16)", .parameters = "source " LX_FOURTH,
              .summary = kWeighted),
      LX_FORM(PicGravityCenter, void(Word, unsigned, float&, float&),
              .trace = "PicGravityCenter (BW16)", .parameters = LX_THRESHOLD_WORD "x y",
              .summary = "The centre of the pixels that reach a level")}},
    {{{LX_ERROR_INCONSISTENT_ARGUMENTS}},
     {LX_FORM(PicGravityCenter, void(Byte, unsigned, float&, float&), .trace = "PicGravityCenter",
              .parameters = LX_THRESHOLD_BYTE "x y",
              .summary = "The centre of the pixels that reach a level", .followsRuns = true),
      LX_FORM(PicInertia, void(Byte, unsigned, float&, float&, float&, float*, float*, unsigned*),
              .trace = "PicInertia ( binary)",
              .parameters = LX_THRESHOLD_BYTE
              "ixx ixy iyy centre-x?'not wanted' centre-y?'not wanted' count?'not wanted'",
              .summary = "Variances of the places of the pixels that reach a level",
              .followsRuns = true)}},
    {{{LX_ERROR_WRONG_VECTOR_SIZE}, {LX_ERROR_INCONSISTENT_ARGUMENTS}},
     {LX_FORM(PicCentroid, void(Byte, float&, float&, LxBW8Vector*), .trace = "PicCentroid",
              .parameters = "source x y weights?'each weighs its value'#256",
              .summary = "The centre of weighted pixels", .followsRuns = true),
      LX_FORM(PicInertia,
              void(Byte, float&, float&, float&, float*, float*, unsigned*, LxBW8Vector*),
              .trace = "PicInertia ( weighed)",
              .parameters = "source ixx ixy iyy centre-x?'not wanted' centre-y?'not wanted' "
                            "weight?'not wanted' weights?'each weighs its value'#256",
              .summary = "Variances of the places of weighted pixels", .followsRuns = true)}},
};

}  // namespace

std::vector<Operation> MomentOperations() { return Describe("measure", kGroups); }

}  // namespace lx::catalogue
