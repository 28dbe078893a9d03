// SPDX-License-Identifier: Apache-2.0
// The catalogue beside the headers as they are written.
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>

#include "catalogue/enumerations.h"
#include "support/every_operation.h"

namespace lx::test {
namespace {

using Enumerators = std::map<std::int64_t, std::string>;

/// The enumerations of the public headers by their names.
std::map<std::string, Enumerators> PublicEnumerations() {
  const std::regex start("^enum (\\w+)");
  const std::regex enumerator("^ +(\\w+) = (-?\\w+)");
  std::map<std::string, Enumerators> all;
  for (const auto& file : std::filesystem::recursive_directory_iterator(LXPIC_HEADERS)) {
    if (!file.is_regular_file()) continue;
    std::ifstream text(file.path());
    std::string name;
    std::smatch match;
    for (std::string line; std::getline(text, line);) {
      if (std::regex_search(line, match, start)) name = match[1];
      if (line.starts_with('}')) name.clear();
      if (name.empty() || !std::regex_search(line, match, enumerator)) continue;
      all[name][std::stoll(match[2], nullptr, 0)] = match[1];
    }
  }
  return all;
}

TEST(Catalogue, ChoicesAreNamedLikeTheirEnumerators) {
  auto enumerations = PublicEnumerations();
  ForEveryOperation([&](const Operation& operation, int /*choice*/) {
    for (const Parameter& parameter : operation.parameters) {
      if (parameter.enumeration.empty()) continue;
      const Enumerators& written = enumerations[parameter.enumeration];
      EXPECT_EQ(catalogue::NamesOf(parameter.enumeration).size(), written.size());
      for (const auto& [value, name] : catalogue::NamesOf(parameter.enumeration)) {
        std::string end = "_" + name;
        for (char& c : end) c = c == '-' ? '_' : static_cast<char>(std::toupper(c));
        EXPECT_TRUE(written.count(value) != 0 && written.at(value).ends_with(end))
            << name << " " << value;
      }
    }
  });
}

}  // namespace
}  // namespace lx::test
