// SPDX-License-Identifier: Apache-2.0
// What a chain keeps under names.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "tools/lxpic/value/image_value.h"
#include "tools/lxpic/value/values.h"

namespace lx::tool {

using Kept = std::variant<ImageValue, Value>;

struct NamedKept {
  std::string name;
  Kept kept;
};

class Store {
 public:
  /// What had the name before is replaced.
  void Keep(const std::string& name, const Kept& kept);
  /// Keeps what is kept as `from` under the name `to` instead.
  void Rename(const std::string& from, const std::string& to);

  /// The image or value that a word "@NAME" names. They throw Failure when it names nothing, or
  /// the other one of both.
  const ImageValue& ImageOf(const std::string& word) const;
  const Value& ValueOf(const std::string& word) const;

  /// All values, in the order in which their names were first given.
  std::vector<NamedNumbers> AllNumbers() const;

 private:
  const Kept& Get(const std::string& word) const;

  std::vector<NamedKept> items;
};

}  // namespace lx::tool
