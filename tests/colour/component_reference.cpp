// SPDX-License-Identifier: Apache-2.0
#include "support/reference.h"

namespace lx::test {

namespace {

LxC24 ColourAt(const Pixels& p) {
  return {static_cast<std::uint8_t>(p.a[0]), static_cast<std::uint8_t>(p.a[1]),
          static_cast<std::uint8_t>(p.a[2])};
}

void Extract(const Pixels& p) {
  LxC24 colour = ColourAt(p);
  if (auto* const lookup = std::get<LxColorLookup*>(p.call.values[3])) {
    lookup->Transform(ColourAt(p), colour);
  }
  const Value components[] = {colour.c0, colour.c1, colour.c2};
  *p.d = components[static_cast<std::size_t>(p.call.Number(2))];
}

void Insert(const Pixels& p) { p.d[static_cast<std::size_t>(p.call.Number(2))] = *p.a; }

Reference OfAComponent(std::string_view signature, PixelRule rule) {
  Reference made = Pointwise(signature, std::move(rule));
  made.rule = [apply = made.rule](const Arguments& call, Outcome& outcome) {
    if (call.Number(2) > 2) return outcome.Refuse(LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
    apply(call, outcome);
  };
  return made;
}

}  // namespace

std::vector<Reference> ColourReferences() {
  return {
      OfAComponent("TintGetComponent(LxROI<LxC24>*, LxROI<LxBW8>*, unsigned int, LxColorLookup*)",
                   Extract),
      OfAComponent("TintSetComponent(LxROI<LxBW8>*, LxROI<LxC24>*, unsigned int)", Insert)};
}

}  // namespace lx::test
