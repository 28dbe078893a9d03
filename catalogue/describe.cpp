// SPDX-License-Identifier: Apache-2.0
// Takes the texts of the rows apart.
#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <map>
#include <sstream>
#include <stdexcept>

#include "catalogue/row.h"

namespace lx::catalogue {

namespace {

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + separator.size(), text.size()));
  }
  return parts;
}

// The words of a parameter text; blanks within quotes do not part them.
std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  bool quoted = false;
  bool inside = false;
  for (const char c : text) {
    if (c == '\'') quoted = !quoted;
    const bool blank = c == ' ' && !quoted;
    if (!blank && !inside) words.emplace_back();
    if (!blank) words.back() += c;
    inside = !blank;
  }
  return words;
}

std::vector<std::int64_t> Values(std::string_view list) {
  std::vector<std::int64_t> values;
  for (const std::string& item : Split(list, ",")) {
    const std::size_t dash = item.find('-', 1);
    const std::int64_t first = std::stoll(item);
    const std::int64_t last = dash == std::string::npos ? first : std::stoll(item.substr(dash + 1));
    for (std::int64_t value = first; value <= last; ++value) values.push_back(value);
  }
  return values;
}

// One word of a parameter text, read from its start.
class ParameterWord {
 public:
  ParameterWord(std::string_view text, Parameter& described) : rest(text), parameter(described) {}

  void Read() {
    if (Take("<>")) {
      parameter.role = Role::kUpdated;
    } else if (Take(">")) {
      parameter.role = Role::kWritten;
    }
    parameter.name = Until("?=~:{#(");
    while (!rest.empty()) ReadSuffix();
    if (parameter.trials.empty()) {
      parameter.trials = {parameter.leftOut ? parameter.leftOut->value : 0};
    }
  }

 private:
  void ReadSuffix() {
    const char kind = rest.front();
    rest.remove_prefix(1);
    switch (kind) {
      case '?':
        parameter.whenNull = Quoted();
        break;
      case '=': {
        const double value = std::stod(Until("?~:{#('"));
        parameter.leftOut = LeftOut{value, rest.starts_with('\'') ? Quoted() : ""};
        break;
      }
      case '~':
        for (const std::string& each : Split(Until("?=:{#("), ",")) {
          parameter.trials.push_back(std::stod(each));
        }
        break;
      case ':':
        ReadRange(Until("?=~{#("));
        break;
      case '{':
        ReadChoices(Until("}"));
        rest.remove_prefix(1);
        break;
      case '#':
        parameter.perColumn = Take("width");
        parameter.counted = Take("count");
        for (const std::int64_t count : Values(Until("?=~:{("))) {
          parameter.counts.push_back(static_cast<unsigned>(count));
        }
        break;
      case '(':
        ReadProperty(Until(")"));
        rest.remove_prefix(1);
        break;
      default:
        throw std::logic_error("unknown suffix");
    }
  }

  void ReadProperty(const std::string& word) {
    static const std::map<std::string, SizeRule> sizes = {
        {"free", SizeRule::kFree}, {"follows", SizeRule::kFollows}, {"part", SizeRule::kPart}};
    static const std::map<std::string, Meaning> meanings = {
        {"columns", Meaning::kColumns},   {"rows", Meaning::kRows},
        {"points", Meaning::kPoints},     {"column", Meaning::kColumn},
        {"row", Meaning::kRow},           {"segment", Meaning::kSegment},
        {"group", Meaning::kGroup},       {"signed", Meaning::kSigned},
        {"unsigned", Meaning::kUnsigned}, {"energy", Meaning::kEnergy}};
    if (const auto size = sizes.find(word); size != sizes.end()) {
      parameter.size = size->second;
    } else if (const auto meaning = meanings.find(word); meaning != meanings.end()) {
      parameter.meaning = meaning->second;
    } else if (const std::size_t by = word.find('x'); by != std::string::npos) {
      parameter.size = SizeRule::kFixed;
      parameter.fixed = {std::stoi(word), std::stoi(word.substr(by + 1))};
    } else {
      throw std::logic_error("unknown property");
    }
  }

  void ReadRange(const std::string& range) {
    parameter.minimum = std::stod(range);
    parameter.maximum = std::stod(range.substr(range.find("..") + 2));
  }

  void ReadChoices(const std::string& choices) {
    if (std::isdigit(static_cast<unsigned char>(choices.front())) == 0) {
      parameter.enumeration = choices;
      parameter.choices = NamesOf(choices);
      return;
    }
    for (const std::int64_t value : Values(choices)) {
      const auto& all = NamesOf(parameter.enumeration);
      const auto found = std::find_if(all.begin(), all.end(),
                                      [value](const Named& each) { return each.value == value; });
      parameter.choices.push_back(found == all.end() ? Named{value, std::to_string(value)}
                                                     : *found);
    }
    parameter.trials = {static_cast<double>(parameter.choices.front().value)};
  }

  bool Take(std::string_view token) {
    if (!rest.starts_with(token)) return false;
    rest.remove_prefix(token.size());
    return true;
  }
  std::string Until(std::string_view ends) {
    const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
    std::string taken(rest.substr(0, end));
    rest.remove_prefix(end);
    return taken;
  }
  std::string Quoted() {
    rest.remove_prefix(1);
    std::string words = Until("'");
    rest.remove_prefix(1);
    return words;
  }

  std::string_view rest;
  Parameter& parameter;
};

// "k*3" stands for k1, k2 and k3.
std::vector<std::string> Repeated(const std::vector<std::string>& words) {
  std::vector<std::string> all;
  for (const std::string& word : words) {
    const std::size_t star = word.find('*');
    if (star == std::string::npos) {
      all.push_back(word);
      continue;
    }
    const int count = std::stoi(word.substr(star + 1));
    for (int i = 1; i <= count; ++i) all.push_back(word.substr(0, star) + std::to_string(i));
  }
  return all;
}

void DescribeParameters(Operation& operation, std::string_view text) {
  const auto words = Repeated(Words(text));
  if (words.size() != operation.parameters.size()) throw std::logic_error("parameters");
  for (std::size_t i = 0; i < words.size(); ++i) {
    ParameterWord(words[i], operation.parameters[i]).Read();
    const bool isChoice = operation.parameters[i].kind == Kind::kChoice;
    if (isChoice && operation.parameters[i].choices.empty()) throw std::logic_error("choices");
  }
}

Reach ReadReach(const Operation& operation, std::string_view text) {
  if (text == "all") return {Reach::Form::kUnbounded, 0, 0};
  if (text == "kernel") return {Reach::Form::kKernel, 0, 0};
  auto words = Words(text);
  Reach reach;
  if (words.front() == "twice") {
    reach.times = 2;
    words.erase(words.begin());
  }
  if (std::isdigit(static_cast<unsigned char>(words.front().front())) != 0) {
    reach.across = static_cast<unsigned>(std::stoul(words.front()));
    reach.down = static_cast<unsigned>(std::stoul(words.back()));
    return reach;
  }
  reach.form = Reach::Form::kParameter;
  reach.across = static_cast<unsigned>(operation.IndexOf(words.front()));
  reach.down = static_cast<unsigned>(operation.IndexOf(words.back()));
  if (reach.down >= operation.parameters.size()) throw std::logic_error("reach");
  return reach;
}

constexpr std::array kRegionCodes = {LX_ERROR_ROI_NOT_ATTACHED, LX_ERROR_SIZE_MISMATCH};

// Takes over the refusals of a group and a row, as an order and as a list of different codes.
void DescribeRefusals(Operation& operation, std::vector<Refusal> all) {
  const bool hasRegion =
      std::any_of(operation.parameters.begin(), operation.parameters.end(),
                  [](const Parameter& each) { return each.IsRegion() && !each.IsReturned(); });
  for (Refusal& each : all) {
    operation.checks.push_back(each.code);
    const bool general =
        hasRegion && std::count(kRegionCodes.begin(), kRegionCodes.end(), each.code) != 0;
    if (!general && operation.FindRefusal(each.code) == nullptr) {
      operation.refusals.push_back(std::move(each));
    }
  }
  const bool apart = operation.unattached == kRegionCodes.front();
  if (!hasRegion || !apart || operation.Refuses(kRegionCodes.front())) return;
  operation.checks.insert(operation.checks.begin(), kRegionCodes.begin(), kRegionCodes.end());
}

Operation DescribeOne(std::string_view family, const Group& group, const Row& row) {
  Operation made;
  made.family = family;
  made.function = row.function;
  made.name = KebabName(row.function);
  made.signature = made.function + row.binding.parameterList();
  made.summary = row.summary;
  made.trace = row.trace;
  for (const std::string& list : Split(row.innerTraces, " | ")) {
    made.innerTraces.push_back(Split(list, " < "));
  }
  made.parameters = row.binding.parameters();
  DescribeParameters(made, row.parameters);
  made.inPlace = row.inPlace;
  made.worksInPlace = row.worksInPlace;
  made.reach = ReadReach(made, row.reach);
  made.unattached = row.unattached;
  made.powersOfTwo = row.powersOfTwo;
  made.followsRuns = row.followsRuns;
  made.follows = row.follows;
  made.part = row.part;
  if (made.Has(SizeRule::kFollows) != (made.follows != nullptr)) throw std::logic_error("follows");
  if (made.Has(SizeRule::kPart) != (made.part != nullptr)) throw std::logic_error("part");
  made.count = row.count;
  const bool counts = std::any_of(made.parameters.begin(), made.parameters.end(),
                                  [](const Parameter& each) { return each.counted; });
  if (counts != (made.count != nullptr)) throw std::logic_error("count");
  made.pathsDiffer = row.pathsDiffer;
  made.hasKernel = row.withoutKernel != "all";
  if (made.hasKernel) {
    for (const std::int64_t choice : Values(row.withoutKernel)) {
      made.plainChoices.push_back(static_cast<int>(choice));
    }
  }
  std::vector<Refusal> refusals = group.refusals;
  refusals.insert(refusals.end(), row.refusals.begin(), row.refusals.end());
  DescribeRefusals(made, std::move(refusals));
  made.call = row.binding.call;
  return made;
}

}  // namespace

std::vector<Operation> Describe(std::string_view family, const std::vector<Group>& groups) {
  std::vector<Operation> made;
  for (const Group& group : groups) {
    for (const Row& row : group.rows) {
      try {
        made.push_back(DescribeOne(family, group, row));
      } catch (const std::exception& wrong) {
        throw std::logic_error("catalogue: " + std::string(row.function) + " " +
                               std::string(row.trace) + " is described wrongly: " + wrong.what());
      }
    }
  }
  return made;
}

}  // namespace lx::catalogue
