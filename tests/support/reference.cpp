// SPDX-License-Identifier: Apache-2.0
#include "support/reference.h"

#include <map>
#include <stdexcept>
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

const Operation& OperationOf(std::string_view signature) {
  for (const Operation& each : catalogue::All()) {
    if (each.signature == signature) return each;
  }
  throw std::logic_error("no operation has the signature of the reference " +
                         std::string(signature));
}

struct Reason {
  std::string_view signature;
  std::string_view words;
};

constexpr Reason kReasons[] = {
    {"PicSetOverlayColor(LxC24)", "sets what other calls draw with, and the getter gives back"},
    {"PicGetOverlayColor()", "gives back what the setter set"},
    {"PicVect1c2(ARITH_LOGIC_OPERATIONS, LxVector*, double, LxVector*)", "always refuses"}};

}  // namespace

OutcomeRule OnPictures(std::string_view signature, PictureRule rule) {
  const Operation& operation = OperationOf(signature);
  return [&operation, rule = std::move(rule)](const Arguments& call, Outcome& outcome) {
    std::vector<Picture> sources;
    std::vector<Picture> destinations;
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const Parameter& parameter = operation.parameters[i];
      if (!parameter.IsRegion()) continue;
      (parameter.IsWritten() ? destinations : sources).push_back(outcome.Image(i));
    }
    rule(call, sources, destinations);
    auto next = destinations.begin();
    for (std::size_t i = 0; i < operation.parameters.size(); ++i) {
      const Parameter& parameter = operation.parameters[i];
      if (parameter.IsRegion() && parameter.IsWritten()) outcome.Image(i) = std::move(*next++);
    }
  };
}

Reference Measured(std::string_view signature, OutcomeRule rule) {
  Reference made;
  made.signature = signature;
  made.rule = std::move(rule);
  return made;
}

Reference Whole(std::string_view signature, PictureRule rule) {
  return Measured(signature, OnPictures(signature, std::move(rule)));
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
    for (const auto family :
         {ColourReferences,       ArithmeticReferences,       ConvertReferences,
          LookupReferences,       VectorArithmeticReferences, FilterReferences,
          SmoothingReferences,    KernelReferences,           HistogramReferences,
          ThresholdReferences,    BoxAndDiskReferences,       NonlinearReferences,
          ThinningReferences,     ThresholdingReferences,     ResamplingReferences,
          GeometryReferences,     StatisticsReferences,       MeasureReferences,
          CorrectionReferences,   SequenceReferences,         ProfileReferences,
          ContourReferences,      SegmentVectorReferences,    FrequencyReferences,
          GradientImageReferences}) {
      for (Reference& each : family()) made.emplace(each.signature, std::move(each));
    }
    return made;
  }();
  const auto found = references.find(signature);
  return found == references.end() ? nullptr : &found->second;
}

std::string WhyNoReference(std::string_view signature) {
  for (const Reason& each : kReasons) {
    if (each.signature == signature) return std::string(each.words);
  }
  return {};
}

}  // namespace lx::test
