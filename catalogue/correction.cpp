// SPDX-License-Identifier: Apache-2.0
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

#define LX_BY_IMAGE(pixel, name)                                                              \
  LX_FORM(PicUniformize, void(LxROI<pixel>*, pixel, LxROI<pixel>*, LxROI<pixel>*, int),       \
          .trace = "PicUniformize ( " name " Single Image)",                                  \
          .parameters = "source level~128 reference >destination multiplicative~1,0,1:-2..2", \
          .summary = "Corrects uneven light by a picture of an even scene",                   \
          .inPlace = InPlace::kYes)
#define LX_BY_IMAGES(pixel, name)                                                         \
  LX_FORM(PicUniformize,                                                                  \
          void(LxROI<pixel>*, pixel, LxROI<pixel>*, pixel, LxROI<pixel>*, LxROI<pixel>*), \
          .trace = "PicUniformize ( " name " Light/Dark Images)",                         \
          .parameters = "source light-level~200 light dark-level~20 dark >destination",   \
          .summary = "Corrects uneven light by a picture of light and one of the dark",   \
          .inPlace = InPlace::kYes)
#define LX_BY_VECTOR(pixel, name)                                                               \
  LX_FORM(                                                                                      \
      PicUniformize, void(LxROI<pixel>*, pixel, pixel##Vector*, LxROI<pixel>*, int),            \
      .trace = "PicUniformize ( " name " Single Vector)",                                       \
      .parameters = "source level~128 reference#width >destination multiplicative~1,0,1:-2..2", \
      .summary = "Corrects uneven columns by a profile of an even scene",                       \
      .inPlace = InPlace::kYes)
#define LX_BY_VECTORS(pixel, name)                                                              \
  LX_FORM(                                                                                      \
      PicUniformize,                                                                            \
      void(LxROI<pixel>*, pixel, pixel##Vector*, pixel, pixel##Vector*, LxROI<pixel>*),         \
      .trace = "PicUniformize ( " name " Light/Dark Vectors)",                                  \
      .parameters = "source light-level~200 light#width dark-level~20 dark#width >destination", \
      .summary = "Corrects uneven columns by a profile of light and one of the dark",           \
      .inPlace = InPlace::kYes)
#define LX_NORMALIZE(pixel, suffix)                                            \
  LX_FORM(PicNormalize, void(LxROI<pixel>*, LxROI<pixel>*, float, float),      \
          .trace = "PicNormalize" suffix,                                      \
          .parameters =                                                        \
              "source >destination average~128,128,0,-40,3e4,1e9:-100..70000 " \
              "deviation~40,40,0,-5,2e4,1e-3,1e9:-100..30000",                 \
          .summary = "Grey levels of a given mean and standard deviation",     \
          .inPlace = InPlace::kYes, .reach = "all")
#define LX_EACH(form) form(LxBW8, "BW8"), form(LxBW16, "BW16"), form(LxC24, "C24")

const std::vector<Group> kGroups = {
    {{},
     {LX_EACH(LX_BY_IMAGE), LX_EACH(LX_BY_IMAGES), LX_NORMALIZE(LxBW8, ""),
      LX_NORMALIZE(LxBW16, " (BW16)")}},
    {{{LX_ERROR_VECTOR_NO_DATA}, {LX_ERROR_WRONG_VECTOR_SIZE}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_EACH(LX_BY_VECTOR)}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_WRONG_VECTOR_SIZE},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_EACH(LX_BY_VECTORS)}}};

#undef LX_EACH
#undef LX_NORMALIZE
#undef LX_BY_VECTORS
#undef LX_BY_VECTOR
#undef LX_BY_IMAGES
#undef LX_BY_IMAGE

}  // namespace

std::vector<Operation> CorrectionOperations() { return Describe("correction", kGroups); }

}  // namespace lx::catalogue
