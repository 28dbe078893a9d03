// SPDX-License-Identifier: Apache-2.0
// References: what an operation must compute, written from its definition in plain loops that share
// nothing with the library. An operation joins the sweep with one row of its family's table.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/arguments.h"
#include "support/picture.h"

namespace lx::test {

/// What a rule of single pixels sees: the components of the pixels at one position.
struct Pixels {
  const Value* a;  ///< of the first source; null when there is none
  const Value* b;  ///< of the second source
  Value* d;        ///< of the destination: the old pixel, to become the new one
  Value* d2;       ///< of the second destination
  int components;  ///< of the destination
  const Arguments& call;
};

using PixelRule = std::function<void(const Pixels&)>;
/// Destinations hold the old pixels on entry. Both lists follow the order of the parameters.
using PictureRule = std::function<void(const Arguments& call, const std::vector<Picture>& sources,
                                       std::vector<Picture>& destinations)>;

struct Size {
  int width;
  int height;
};

struct Reference {
  std::string signature;
  PictureRule rule;
  /// The size of region parameter `index` in a case of the size `base`; null when all are equal.
  std::function<Size(std::size_t index, Size base)> sizeOf;
  /// Brings drawn arguments into relations that single parameters cannot express.
  std::function<void(Arguments& call, Random& random)> adjust;
  /// The choices that dispatch no kernel on the fast path; -1 stands for an operation without
  /// choices.
  std::vector<int> plainChoices;
  /// A null destination is no error: the operation then works in place.
  bool optionalDestination = false;
  /// Whether these arguments run in place; null where the catalogue says all there is to say.
  std::function<bool(const Arguments& call)> worksInPlace;
  /// The plain path is defined to differ from the fast one: the rule looks at LxGetMMX().
  bool dependsOnPath = false;

  Reference WithSizes(std::function<Size(std::size_t, Size)> sizes) &&;
  Reference WithArguments(std::function<void(Arguments&, Random&)> adjustment) &&;
  /// Has no kernel: it copies memory, or looks up or calls a function for each pixel.
  Reference WithoutKernel(int choice = -1) &&;
  Reference WithOptionalDestination() &&;
  Reference InPlaceWhen(std::function<bool(const Arguments&)> condition) &&;
  Reference DependingOnPath() &&;
};

/// Each destination pixel from the pixels at the same position.
Reference Pointwise(std::string_view signature, PixelRule rule);
/// Whole pictures, for neighbourhoods and geometry.
Reference Whole(std::string_view signature, PictureRule rule);

/// The reference of an operation; null when there is none.
const Reference* FindReference(std::string_view signature);

/// The families' references.
std::vector<Reference> ArithmeticReferences();
std::vector<Reference> ConvertReferences();
std::vector<Reference> LookupReferences();
std::vector<Reference> FilterReferences();
std::vector<Reference> SmoothingReferences();
std::vector<Reference> KernelReferences();

}  // namespace lx::test
