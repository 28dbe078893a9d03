// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/boxes.h"

#include "morphology/operators.h"

namespace {

using namespace lx::morphology;

Element BoxOf(unsigned halfX, unsigned halfY) {
  constexpr unsigned kSameAsX = 0xFFFFFFFF;
  return {false, halfX, halfY == kSameAsX ? halfX : halfY};
}

}  // namespace

#define LX_DEFINE_FORM(function, wanted, type, trace)                                            \
  void function(LxROI<type>* source, LxROI<type>* destination, unsigned halfX, unsigned halfY) { \
    RunMorphology(trace, Operator::wanted, source, destination, BoxOf(halfX, halfY));            \
  }
#define LX_DEFINE_BOX(function, wanted, trace)                  \
  LX_DEFINE_FORM(function, wanted, LxBW8, trace)                \
  LX_DEFINE_FORM(function, wanted, LxBW16, #function " (BW16)") \
  LX_DEFINE_FORM(function, wanted, LxC24, #function " ( C24)")

LX_DEFINE_BOX(PicErodeBox, kErode, "PicErodeBox")
LX_DEFINE_BOX(PicDilateBox, kDilate, "PicDilateBox")
LX_DEFINE_BOX(PicOpenBox, kOpen, "PicOpenBox")
LX_DEFINE_BOX(PicCloseBox, kClose, "PicCloseBox")
LX_DEFINE_BOX(PicWhiteTopHatBox, kWhiteTopHat, "PicWhiteTopHatBox (BW8)")
LX_DEFINE_BOX(PicBlackTopHatBox, kBlackTopHat, "PicBlackTopHatBox (BW8)")
LX_DEFINE_BOX(PicMorphoGradientBox, kGradient, "PicMorphoGradientBox")

#undef LX_DEFINE_BOX
#undef LX_DEFINE_FORM
