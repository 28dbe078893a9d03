// SPDX-License-Identifier: Apache-2.0
// Flat fields, component by component.
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

template <Value kLargest>
Value Clamped(Value value) {
  return std::clamp<Value>(value, 0, kLargest);
}

// Arguments: source, level, reference, destination, multiplicative.
template <Value kLargest>
Value FromOne(const Arguments& call, Value source, Value level, Value reference) {
  if (call.Number(4) == 0) return Clamped<kLargest>(source + level - reference);
  return reference == 0 ? kLargest : Clamped<kLargest>(source * level / reference);
}

template <Value kLargest>
Value FromTwo(Value source, Value lightLevel, Value light, Value darkLevel, Value dark) {
  if (light == dark) return kLargest;
  const Value rise = (source - dark) * (lightLevel - darkLevel) / (light - dark);
  return Clamped<kLargest>(rise + darkLevel);
}

template <Value kLargest>
Value OnLine(Value source, Value gain, Value offset) {
  const auto scaled = std::floor(static_cast<double>(gain * source) / 4096);
  return Clamped<kLargest>(static_cast<Value>(scaled) + offset);
}

// Element `x` of vector `index`, its component `k`.
Value ElementOf(const Arguments& call, std::size_t index, int x, int k, int components) {
  const auto at = static_cast<std::size_t>(x * components + k);
  return static_cast<Value>(call.Content(index)->values[at]);
}

template <Value kLargest>
Value FromVector(const Arguments& call, Value source, Value level, Value reference) {
  if (call.Number(4) == 0) return OnLine<kLargest>(source, 4096, level - reference);
  return reference == 0 ? kLargest : OnLine<kLargest>(source, level * 4096 / reference, 0);
}

template <Value kLargest>
Value FromVectors(Value source, Value lightLevel, Value light, Value darkLevel, Value dark) {
  if (light == dark) return kLargest;
  const Value rise = lightLevel - darkLevel;
  return OnLine<kLargest>(source, rise * 4096 / (light - dark),
                          darkLevel - dark * rise / (light - dark));
}

// Gives each component of the destination rule(call, sources, x, y, k).
template <class Rule>
PictureRule Componentwise(Rule rule) {
  return [rule](const Arguments& call, const std::vector<Picture>& sources,
                std::vector<Picture>& destinations) {
    Picture& made = destinations.front();
    for (int y = 0; y < made.height; ++y) {
      for (int x = 0; x < made.width; ++x) {
        for (int k = 0; k < made.components; ++k) made.At(x, y, k) = rule(call, sources, x, y, k);
      }
    }
  };
}

using Pictures = std::vector<Picture>;

template <Value kLargest>
void Add(std::vector<Reference>& all, const std::string& pixel) {
  const std::string region = "LxROI<" + pixel + ">*, ";
  const std::string vector = pixel + "Vector*, ";
  const std::string name = "PicUniformize(" + region + pixel + ", ";
  const std::string end = "LxROI<" + pixel + ">*";
  all.push_back(
      Whole(name + region + end + ", int)",
            Componentwise([](const Arguments& call, const Pictures& from, int x, int y, int k) {
              return FromOne<kLargest>(call, from[0].At(x, y, k), call.Component(1, k),
                                       from[1].At(x, y, k));
            })));
  all.push_back(Whole(
      name + region + pixel + ", " + region + end + ")",
      Componentwise([](const Arguments& call, const Pictures& from, int x, int y, int k) {
        return FromTwo<kLargest>(from[0].At(x, y, k), call.Component(1, k), from[1].At(x, y, k),
                                 call.Component(3, k), from[2].At(x, y, k));
      })));
  all.push_back(
      Whole(name + vector + end + ", int)",
            Componentwise([](const Arguments& call, const Pictures& from, int x, int y, int k) {
              return FromVector<kLargest>(call, from[0].At(x, y, k), call.Component(1, k),
                                          ElementOf(call, 2, x, k, from[0].components));
            })));
  all.push_back(Whole(
      name + vector + pixel + ", " + vector + end + ")",
      Componentwise([](const Arguments& call, const Pictures& from, int x, int y, int k) {
        const int components = from[0].components;
        return FromVectors<kLargest>(from[0].At(x, y, k), call.Component(1, k),
                                     ElementOf(call, 2, x, k, components), call.Component(3, k),
                                     ElementOf(call, 4, x, k, components));
      })));
}

// Mean and deviation are stored in single precision, all else is in double.
template <Value kLargest>
void Normalize(const Arguments& call, const Pictures& from, Pictures& to) {
  const std::vector<Value>& levels = from[0].values;
  if (levels.empty()) return;
  const auto count = static_cast<long double>(levels.size());
  Value sum = 0;
  Value squares = 0;
  for (const Value v : levels) {
    sum += v;
    squares += v * v;
  }
  const long double total = sum;
  const auto mean = static_cast<float>(total / count);
  const auto variance = static_cast<float>((squares * count - total * total) / (count * count));
  const auto sigma = static_cast<float>(std::sqrt(static_cast<double>(variance)));
  const double average = static_cast<float>(call.Number(2));
  const double deviation = static_cast<float>(call.Number(3));
  const double gain = sigma == 0 ? 0 : deviation / sigma;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const double level = gain * static_cast<double>(levels[i]) + average - gain * mean;
    to[0].values[i] = static_cast<Value>(std::clamp<double>(level, 0, kLargest));
  }
}

}  // namespace

std::vector<Reference> CorrectionReferences() {
  std::vector<Reference> all = {
      Whole("PicNormalize(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)", Normalize<255>),
      Whole("PicNormalize(LxROI<LxBW16>*, LxROI<LxBW16>*, float, float)", Normalize<65535>)};
  Add<255>(all, "LxBW8");
  Add<65535>(all, "LxBW16");
  Add<255>(all, "LxC24");
  return all;
}

}  // namespace lx::test
