// SPDX-License-Identifier: Apache-2.0
// Reading the words of a command line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lx::tool {

struct Size {
  int width;
  int height;
};

/// A finite number that fills the whole word and that single precision can hold.
std::optional<double> ReadNumber(std::string_view word);

/// One number, or several with commas between them.
std::optional<std::vector<double>> ReadNumbers(std::string_view word);

/// "640x480"; both sides at least 1.
std::optional<Size> ReadSize(std::string_view word);

/// The name among `names` that `word` most likely meant: the one fewest edits away, if these are
/// few for its length; "" when none is near.
std::string NearestName(std::string_view word, const std::vector<std::string>& names);

/// "; did you mean 'NAME'?" with the nearest name; "" when none is near.
std::string Suggestion(std::string_view word, const std::vector<std::string>& names);

/// The items with `separator` between them.
std::string Join(const std::vector<std::string>& items, std::string_view separator);

/// Adds `item` unless it is there.
void AddOnce(std::vector<std::string>& items, const std::string& item);

/// A number without needless digits.
std::string NumberText(double value);

}  // namespace lx::tool
