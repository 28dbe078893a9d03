// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/common/words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>
#include <system_error>

namespace lx::tool {

namespace {

template <class T>
std::optional<T> ReadAll(std::string_view word) {
  T value{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc{} || end != word.data() + word.size()) return std::nullopt;
  return value;
}

// Fewest insertions, deletions and substitutions that turn `a` into `b`.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t substituted = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({substituted, diagonal + 1, row[j] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::optional<double> ReadNumber(std::string_view word) {
  const auto number = ReadAll<double>(word);
  // False for what is no number, too.
  const bool isFinite = number && std::abs(*number) <= std::numeric_limits<float>::max();
  return isFinite ? number : std::nullopt;
}

std::optional<std::vector<double>> ReadNumbers(std::string_view word) {
  std::vector<double> numbers;
  for (;;) {
    const std::size_t comma = word.find(',');
    const auto number = ReadNumber(word.substr(0, comma));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    if (comma == std::string_view::npos) return numbers;
    word.remove_prefix(comma + 1);
  }
}

std::optional<Size> ReadSize(std::string_view word) {
  const std::size_t cross = word.find('x');
  if (cross == std::string_view::npos) return std::nullopt;
  const auto width = ReadAll<int>(word.substr(0, cross));
  const auto height = ReadAll<int>(word.substr(cross + 1));
  if (!width || !height || *width < 1 || *height < 1) return std::nullopt;
  return Size{*width, *height};
}

std::string NearestName(std::string_view word, const std::vector<std::string>& names) {
  std::string nearest;
  std::size_t fewest = word.size() / 3 + 2;
  for (const std::string& name : names) {
    const std::size_t edits = EditDistance(word, name);
    if (edits >= fewest) continue;
    fewest = edits;
    nearest = name;
  }
  return nearest;
}

std::string Suggestion(std::string_view word, const std::vector<std::string>& names) {
  const std::string nearest = NearestName(word, names);
  return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

std::string Join(const std::vector<std::string>& items, std::string_view separator) {
  std::string joined;
  for (const std::string& item : items) {
    if (!joined.empty()) joined += separator;
    joined += item;
  }
  return joined;
}

void AddOnce(std::vector<std::string>& items, const std::string& item) {
  if (std::find(items.begin(), items.end(), item) == items.end()) items.push_back(item);
}

std::string NumberText(double value) {
  std::array<char, 32> text{};
  const bool whole = value == std::floor(value) && std::abs(value) < 1e15;
  const auto [end, error] =
      whole ? std::to_chars(text.data(), text.data() + text.size(), static_cast<long long>(value))
            : std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), end};
}

}  // namespace lx::tool
