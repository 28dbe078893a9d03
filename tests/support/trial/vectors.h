// SPDX-License-Identifier: Apache-2.0
// Vectors as plain numbers.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "common/random.h"

namespace lx::test {

/// What a vector holds. An element of several fields counts as several elements.
struct Elements {
  std::vector<double> values;
  // Of an untyped vector:
  int kind = 0;
  int dataSize = 0;
  int dataType = 0;
  int groupLength = 0;
  int use = 0;

  bool operator==(const Elements&) const = default;
};

/// A vector of one kind.
struct VectorObject {
  std::shared_ptr<void> owner;
  catalogue::Argument argument;
};

/// A vector of this content.
VectorObject MakeVector(catalogue::Kind kind, const Elements& content);
/// How many values stand for one element.
std::size_t FieldsOf(catalogue::Kind kind);
/// The content of a vector.
Elements ReadVector(catalogue::Kind kind, const catalogue::Argument& vector);

/// Content for a parameter: as many elements as it may have, or as chance has it.
Elements DrawElements(const catalogue::Parameter& parameter, Random& random);
/// The content that is most usual.
Elements UsualElements(const catalogue::Parameter& parameter);

/// Both in short, and where they differ first; "" when they do not.
std::string ElementsDifference(const Elements& expected, const Elements& seen, double tolerance);

}  // namespace lx::test
