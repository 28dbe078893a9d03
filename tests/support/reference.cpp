// SPDX-License-Identifier: Apache-2.0
#include "support/reference.h"

#include <map>
#include <utility>

namespace lx::test {

namespace {

void ApplyToPixels(const PixelRule& rule, const Arguments& call,
                   const std::vector<Picture>& sources, std::vector<Picture>& destinations) {
  const auto read = [&](std::size_t k, int x, int y) -> const Value* {
    return k < sources.size() ? &sources[k].values[sources[k].Index(x, y, 0)] : nullptr;
  };
  const auto written = [&](std::size_t k, int x, int y) -> Value* {
    return k < destinations.size() ? &destinations[k].At(x, y) : nullptr;
  };
  const Picture& destination = destinations.front();
  for (int y = 0; y < destination.height; ++y) {
    for (int x = 0; x < destination.width; ++x) {
      rule({read(0, x, y), read(1, x, y), written(0, x, y), written(1, x, y),
            destination.components, call});
    }
  }
}

}  // namespace

Reference Reference::WithSizes(std::function<Size(std::size_t, Size)> sizes) && {
  sizeOf = std::move(sizes);
  return std::move(*this);
}

Reference Reference::WithArguments(std::function<void(Arguments&, Random&)> adjustment) && {
  adjust = std::move(adjustment);
  return std::move(*this);
}

Reference Reference::WithoutKernel(int choice) && {
  plainChoices.push_back(choice);
  return std::move(*this);
}

Reference Reference::WithOptionalDestination() && {
  optionalDestination = true;
  return std::move(*this);
}

Reference Reference::InPlaceWhen(std::function<bool(const Arguments&)> condition) && {
  worksInPlace = std::move(condition);
  return std::move(*this);
}

Reference Reference::DependingOnPath() && {
  dependsOnPath = true;
  return std::move(*this);
}

Reference Whole(std::string_view signature, PictureRule rule) {
  Reference made;
  made.signature = signature;
  made.rule = std::move(rule);
  return made;
}

Reference Pointwise(std::string_view signature, PixelRule rule) {
  return Whole(signature, [rule = std::move(rule)](const Arguments& call, const auto& sources,
                                                   auto& destinations) {
    ApplyToPixels(rule, call, sources, destinations);
  });
}

const Reference* FindReference(std::string_view signature) {
  static const auto references = [] {
    std::map<std::string, Reference, std::less<>> made;
    for (const auto family : {ArithmeticReferences, ConvertReferences, LookupReferences,
                              FilterReferences, SmoothingReferences, KernelReferences}) {
      for (Reference& each : family()) made.emplace(each.signature, std::move(each));
    }
    return made;
  }();
  const auto found = references.find(signature);
  return found == references.end() ? nullptr : &found->second;
}

}  // namespace lx::test
