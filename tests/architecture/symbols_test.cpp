// SPDX-License-Identifier: Apache-2.0
// What the built library shows to the outside: its symbols and the libraries it needs.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue.h"

namespace lx::test {
namespace {

std::vector<std::string> LinesOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::vector<std::string> lines;
  std::array<char, 4096> line{};
  while (pipe != nullptr && std::fgets(line.data(), line.size(), pipe.get()) != nullptr) {
    lines.emplace_back(line.data());
    while (!lines.back().empty() &&
           std::isspace(static_cast<unsigned char>(lines.back().back())) != 0) {
      lines.back().pop_back();
    }
  }
  return lines;
}

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// The demangled names of the symbols that the library defines for others.
std::vector<std::string> ExportedSymbols() {
  std::vector<std::string> symbols;
  for (const std::string& line :
       LinesOf("nm --dynamic --defined-only --demangle '" LXPIC_LIBRARY "'")) {
    constexpr std::size_t kNameColumn = 19;  // behind the address and the kind
    if (line.size() > kNameColumn) symbols.push_back(line.substr(kNameColumn));
  }
  return symbols;
}

std::set<std::string> ExportedSymbolsOf(std::string_view start) {
  std::set<std::string> found;
  for (const std::string& symbol : ExportedSymbols()) {
    if (StartsWith(symbol, start)) found.insert(symbol);
  }
  return found;
}

TEST(Architecture, CatalogueHoldsEveryExportedOperation) {
  std::set<std::string> described;
  for (const auto& operation : catalogue::All()) {
    const bool member = operation.function.find("::") != std::string::npos;
    if (member) continue;
    EXPECT_TRUE(described.insert(operation.signature).second) << operation.signature << " is twice";
  }
  std::set<std::string> exported = ExportedSymbolsOf("Pic");
  exported.merge(ExportedSymbolsOf("Tint"));
  EXPECT_EQ(exported, described);
}

// All but what makes, copies and destroys objects.
TEST(Architecture, CatalogueHoldsEveryMemberOfObjects) {
  for (const auto& object : catalogue::Objects()) {
    const std::string scope = object.name + "::";
    std::set<std::string> exported = ExportedSymbolsOf(scope);
    for (const std::string& special :
         {object.name + "(", "~" + object.name, std::string("operator")}) {
      std::erase_if(exported,
                    [&](const std::string& symbol) { return StartsWith(symbol, scope + special); });
    }
    std::set<std::string> described;
    for (const auto& member : object.members) described.insert(member.signature);
    EXPECT_FALSE(described.empty()) << object.name;
    EXPECT_EQ(exported, described);
  }
}

TEST(Architecture, NothingPrivateIsExported) {
  constexpr std::array<std::string_view, 7> kAbout = {"vtable for ",
                                                      "typeinfo for ",
                                                      "typeinfo name for ",
                                                      "guard variable for ",
                                                      "TLS init function for ",
                                                      "TLS wrapper function for ",
                                                      "VTT for "};
  constexpr std::array<std::string_view, 6> kPublic = {
      "Lx", "Pic", "Tint", "MoveToEx(", "LineTo(", "operator<<(std::ostream&, Lx"};
  const auto symbols = ExportedSymbols();
  EXPECT_FALSE(symbols.empty());
  for (const std::string& symbol : symbols) {
    std::string_view name = symbol;
    for (const std::string_view about : kAbout) {
      if (StartsWith(name, about)) name.remove_prefix(about.size());
    }
    EXPECT_TRUE(std::any_of(kPublic.begin(), kPublic.end(), [name](std::string_view start) {
      return StartsWith(name, start);
    })) << symbol;
  }
}

TEST(Architecture, NeedsNoOtherLibraries) {
#ifdef LXPIC_INSTRUMENTED
  GTEST_SKIP() << "instrumented builds need the libraries of their instrumentation";
#else
  constexpr std::array<std::string_view, 7> kAllowed = {
      "libstdc++.so", "libgcc_s.so", "libm.so", "libc.so", "ld-linux", "linux-vdso", "libhwy.so"};
  const auto lines = LinesOf("ldd '" LXPIC_LIBRARY "'");
  EXPECT_FALSE(lines.empty());
  for (const std::string& line : lines) {
    EXPECT_TRUE(std::any_of(kAllowed.begin(), kAllowed.end(), [&line](std::string_view name) {
      return line.find(name) != std::string::npos;
    })) << line;
  }
#endif
}

}  // namespace
}  // namespace lx::test
