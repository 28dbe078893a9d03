// SPDX-License-Identifier: Apache-2.0
// Gradients through lookup images, spectra as images.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

Extent TableExtent(const Arguments& /*call*/) { return {512, 512}; }

#define LX_TABLE(function, type, name, words, text)                                  \
  LX_FORM(function, type, .trace = (name), .innerTraces = "LxImage::SetSize",        \
          .parameters = ">table(follows) " words, .summary = (text), .reach = "all", \
          .withoutKernel = "all", .follows = TableExtent)

#define LX_GRADIENT(pixel, text, how)                                                       \
  LX_FORM(PicGradientScalar, void(LxROI<pixel>*, LxROI<LxBW8>*, LxROI<LxBW8>*),             \
          .trace = "PicGradientScalar", .parameters = "source >destination table(512x512)", \
          .summary = (text), .inPlace = (how), .reach = "all")

#define LX_MODULUS(function, text, range)                                             \
  LX_FORM(function, void(LxROI<LxComplex64>*, LxROI<LxBW8>*, float, int, float),      \
          .trace = #function,                                                         \
          .parameters =                                                               \
              "source >destination gain~1,0.25,-1,0,1e30:-2..2 logarithmic~0,1:0..1 " \
              "log-gain~30,-3,0,1e30:-60..60",                                        \
          .summary = (text), .reach = (range))

const std::vector<Group> kGroups = {
    {{{LX_ERROR_ROI_NOT_ATTACHED}, {LX_ERROR_SIZE_MISMATCH}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_TABLE(PicModulusImage, void(LxImage<LxBW8>*, float), "PicModulusImage",
               "gain~1,0.5,-1,0,1e30:0..4", "A table of gradient magnitudes"),
      LX_TABLE(PicArgumentImage, void(LxImage<LxBW8>*, LxBW8, float), "PicArgumentImage",
               "origin~0,128 period~0,360,90,-45,1e-30,1e-20:0..720",
               "A table of gradient directions")}},
    {{{LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicGradientVector, void(LxROI<LxBW8>*, LxROI<LxBW32>*), .trace = "PicGradientVector",
              .parameters = "source >destination",
              .summary = "The horizontal and the vertical difference of neighbours",
              .reach = "1")}},
    {{{LX_ERROR_ARGUMENT_3_OUT_OF_RANGE}, {LX_ERROR_ALLOCATION_FAILED}},
     {LX_GRADIENT(LxBW8, "What a table holds for the differences of neighbours", InPlace::kYes),
      LX_GRADIENT(LxBW32, "What a table holds for differences", InPlace::kNo)}},
    {{},
     {LX_MODULUS(PicComplexModulus, "Moduli of a spectrum", "0"),
      LX_MODULUS(PicComplexRescaledModulus, "Moduli weighted by the distance from the centre",
                 "all"),
      LX_FORM(PicComplexArgument, void(LxROI<LxComplex64>*, LxROI<LxBW8>*),
              .trace = "PicComplexArgument", .parameters = "source >destination",
              .summary = "Angles of a spectrum", .withoutKernel = "all")}},
    {{{LX_ERROR_VECTOR_NO_DATA},
      {LX_ERROR_VECTOR_CONTENT},
      {LX_ERROR_UNSUPPORTED_DATA_TYPE},
      {LX_ERROR_UNSUPPORTED_DATA_SIZE},
      {LX_ERROR_DISC_ENERGY},
      {LX_ERROR_ALLOCATION_FAILED}},
     {LX_FORM(PicComplexDiscEnergy, void(LxROI<LxComplex64>*, LxVector*),
              .trace = "PicComplexDiscEnergy", .innerTraces = "LxVector::SetType",
              .parameters = "source >energy(energy)",
              .summary = "The energy in discs around the centre", .withoutKernel = "all")}}};

#undef LX_MODULUS
#undef LX_GRADIENT
#undef LX_TABLE

}  // namespace

std::vector<Operation> GradientImageOperations() { return Describe("frequency", kGroups); }

}  // namespace lx::catalogue
