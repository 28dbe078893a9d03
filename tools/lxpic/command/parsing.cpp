// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/parsing.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"

namespace lx::tool {

namespace {

struct NamedFormat {
  const char* name;
  TableFormat format;
};
constexpr std::array kFormats = {NamedFormat{"text", TableFormat::kText},
                                 NamedFormat{"csv", TableFormat::kCsv},
                                 NamedFormat{"json", TableFormat::kJson}};

}  // namespace

bool Parse(CLI::App& app, Arguments arguments) {
  app.set_version_flag("--version", "lxpic " LXPIC_VERSION, "Print the version and exit");
  for (std::string& word : arguments) {
    // "-.5" would be taken for an option.
    if (word.starts_with("-.")) word.insert(1, "0");
  }
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
    return true;
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
  } catch (const CLI::CallForVersion& version) {
    std::printf("%s\n", version.what());
  } catch (const CLI::ParseError& error) {
    throw Failure(kWrongUsage, std::string(error.what()) + "; 'lxpic help' tells more");
  }
  return false;
}

void AddMaxPixels(CLI::App& app) {
  app.add_option_function<unsigned long>("--max-pixels", SetMaxPixels,
                                         "Refuse image files of more pixels than this")
      ->check(CLI::Range(1UL, 1UL << 40))
      ->default_str(std::to_string(kDefaultMaxPixels))
      ->option_text("N [" + std::to_string(kDefaultMaxPixels) + "]");
}

std::string CheckNumber(const std::string& word) {
  return ReadNumber(word) ? "" : "'" + word + "' is not a number";
}

TableFormat ReadFormat(const std::string& word) {
  const auto* const found = std::find_if(
      kFormats.begin(), kFormats.end(), [&](const NamedFormat& each) { return word == each.name; });
  if (found != kFormats.end()) return found->format;
  throw Failure(kWrongUsage, "--format: '" + word + "' is not text, csv or json");
}

Point ReadPoint(const std::string& option, const std::string& word) {
  const auto read = ReadNumbers(word);
  if (read && read->size() == 2) return {read->front(), read->back()};
  throw Failure(kWrongUsage, option + ": '" + word + "' is not a point like 3,-1.5");
}

}  // namespace lx::tool
