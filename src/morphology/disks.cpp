// SPDX-License-Identifier: Apache-2.0
#include "lxpic/morphology/disks.h"

#include "morphology/operators.h"

using namespace lx::morphology;

#define LX_DEFINE_FORM(function, wanted, type, trace)                                           \
  void function(LxROI<type>* source, LxROI<type>* destination, unsigned radius) {               \
    RunMorphology(trace, Operator::wanted, source, destination, Element{true, radius, radius}); \
  }
#define LX_DEFINE_DISK(function, wanted, trace)                 \
  LX_DEFINE_FORM(function, wanted, LxBW8, trace)                \
  LX_DEFINE_FORM(function, wanted, LxBW16, #function " (BW16)") \
  LX_DEFINE_FORM(function, wanted, LxC24, #function " ( C24)")

LX_DEFINE_DISK(PicErodeDisk, kErode, "PicErodeDisk")
LX_DEFINE_DISK(PicDilateDisk, kDilate, "PicDilateDisk")
LX_DEFINE_DISK(PicOpenDisk, kOpen, "PicOpenDisk ")
LX_DEFINE_DISK(PicCloseDisk, kClose, "PicCloseDisk")
LX_DEFINE_DISK(PicWhiteTopHatDisk, kWhiteTopHat, "PicWhiteTopHatDisk (BW8)")
LX_DEFINE_DISK(PicBlackTopHatDisk, kBlackTopHat, "PicBlackTopHatDisk (BW8)")
LX_DEFINE_DISK(PicMorphoGradientDisk, kGradient, "PicMorphoGradientDisk")

#undef LX_DEFINE_DISK
#undef LX_DEFINE_FORM
