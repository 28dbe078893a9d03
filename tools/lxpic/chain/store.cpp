// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/chain/store.h"

#include <algorithm>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"

namespace lx::tool {

void Store::Keep(const std::string& name, const Kept& kept) {
  const auto found = std::find_if(items.begin(), items.end(),
                                  [&](const NamedKept& each) { return each.name == name; });
  if (found == items.end()) {
    items.push_back({name, kept});
  } else {
    found->kept = kept;
  }
}

void Store::Rename(const std::string& from, const std::string& to) {
  const auto isFrom = [&](const NamedKept& each) { return each.name == from; };
  const auto found = std::find_if(items.begin(), items.end(), isFrom);
  if (found == items.end() || from == to) return;
  const Kept kept = found->kept;
  items.erase(found);
  Keep(to, kept);
}

const ImageValue& Store::ImageOf(const std::string& word) const {
  if (const auto* const image = std::get_if<ImageValue>(&Get(word))) return *image;
  throw Failure(kWrongUsage, "'" + word + "' is no image");
}

const Value& Store::ValueOf(const std::string& word) const {
  if (const auto* const value = std::get_if<Value>(&Get(word))) return *value;
  throw Failure(kWrongUsage, "'" + word + "' is an image");
}

std::vector<NamedNumbers> Store::AllNumbers() const {
  std::vector<NamedNumbers> all;
  for (const auto& [name, kept] : items) {
    if (const auto* const value = std::get_if<Value>(&kept)) all.push_back({name, value->read()});
  }
  return all;
}

const Kept& Store::Get(const std::string& word) const {
  std::vector<std::string> names;
  for (const auto& [name, kept] : items) {
    if (word == "@" + name) return kept;
    names.push_back("@" + name);
  }
  throw Failure(kWrongUsage, "nothing is kept as '" + word + "'" + Suggestion(word, names));
}

}  // namespace lx::tool
