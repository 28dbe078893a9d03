// SPDX-License-Identifier: Apache-2.0
// The vectors that draw themselves.
#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

using Draws = void (LxBWHistogramVector::*)(HDC, float, float, float, float);

const std::vector<Group> kHistogramMembers = {
    {{},
     {LX_MEMBER(LxBWHistogramVector, Clear, void (LxBWHistogramVector::*)(),
                .parameters = "<>histogram", .summary = "Sets all counts to 0",
                .withoutKernel = "all"),
      LX_MEMBER(LxBWHistogramVector, Draw, Draws,
                .parameters = "histogram target?'draws nothing' x y width~300 height~200",
                .summary = "Draws bars above annotated axes", .withoutKernel = "all")}},
    {{{LX_ERROR_ARGUMENT_1_OUT_OF_RANGE}, {LX_ERROR_ARGUMENT_2_OUT_OF_RANGE}},
     {LX_MEMBER(LxBWHistogramVector, Entropy,
                float (LxBWHistogramVector::*)(unsigned, unsigned) const,
                .trace = "LxBWHistogramVector::Entropy",
                .parameters = "histogram first~0,100,256:0..255 last~4294967295,200,256:0..255 "
                              "entropy",
                .summary = "Shannon entropy in bits", .withoutKernel = "all")}}};

// A path vector of the type `Path`.
template <class Path>
std::vector<Operation> PathMembers(std::string_view draw) {
  using Member = void (Path::*)(HDC, float, float, float, float) const;
  Row row{.function = draw,
          .binding = Bound<static_cast<Member>(&Path::Draw)>::kBinding,
          .parameters = "path target?'draws nothing' zoom-x~1 zoom-y~0 pan-x pan-y",
          .summary = "Draws a line through the points",
          .withoutKernel = "all"};
  return Describe("vectors", {{{}, {row}}});
}

}  // namespace

std::vector<Object> VectorObjects() {
  return {{"LxBWHistogramVector", "Counts of pixels by bins of grey levels",
           Describe("vectors", kHistogramMembers)},
          {"LxPathVector", "Points of a path", PathMembers<LxPathVector>("LxPathVector::Draw")},
          {"LxBW8PathVector", "Points of a path with their grey levels",
           PathMembers<LxBW8PathVector>("LxBW8PathVector::Draw")},
          {"LxBW16PathVector", "Points of a path with their 16-bit grey levels",
           PathMembers<LxBW16PathVector>("LxBW16PathVector::Draw")},
          {"LxC24PathVector", "Points of a path with their colours",
           PathMembers<LxC24PathVector>("LxC24PathVector::Draw")}};
}

}  // namespace lx::catalogue
