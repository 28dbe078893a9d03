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
  int spare = 0;  ///< groups allocated beyond those in use; not compared
  // Of a path:
  int closed = 0;

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

/// A column or row before FitCoordinate(): one in `oddity` is to lie outside.
double DrawCoordinate(Random& random, std::size_t oddity);
/// The coordinate that was drawn, for a region of `size` columns or rows.
double FitCoordinate(double drawn, int size);
/// Whether the vector's elements are points.
bool HasPoints(const catalogue::Parameter& parameter);
/// Calls `visit` with references to the column and the row of each point.
template <class Visit>
void ForEachPoint(const catalogue::Parameter& parameter, Elements& content, const Visit& visit) {
  const bool segment = parameter.meaning == catalogue::Meaning::kSegment;
  const std::size_t first = segment ? 1 : 0;
  const std::size_t step = segment ? 3 : FieldsOf(parameter.kind);
  for (std::size_t i = first; i + 1 < content.values.size(); i += step) {
    visit(content.values[i], content.values[i + 1]);
  }
}

/// Content for a parameter: as many elements as it may have, or as chance has it.
Elements DrawElements(const catalogue::Parameter& parameter, Random& random);
/// The content that is most usual.
Elements UsualElements(const catalogue::Parameter& parameter);

/// Both in short, and where they differ first; "" when they do not.
std::string ElementsDifference(const Elements& expected, const Elements& seen, double tolerance);

}  // namespace lx::test
