// SPDX-License-Identifier: Apache-2.0
// Times every operation beside memcpy, its plain path and OpenCV, and prints ratios.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/family.h"
#include "hwy/targets.h"

namespace lx::bench {
namespace {

// Medians that differ by less are equal.
constexpr double kTolerance = 1.03;

struct Options {
  std::string csv;
  std::string filter = ".*";
  std::vector<std::string> sizes = {"640x480", "1920x1080", "4096x3072"};
  double seconds = 0.15;
  std::string target;
};

// The competitors, in the order in which they are timed.
enum Competitor : std::size_t {
  kCopy,
  kFast,
  kPlain,
  kPeer
};

struct Row {
  std::string family;
  std::string name;
  std::string size;
  double microseconds = 0;
  // Multiples of memcpy; 0 where there is nothing to compare.
  double fast = 0;
  double plain = 0;
  double peer = 0;
  double share = 0;   ///< of OpenCV's time
  double target = 0;  ///< of the share

  bool Missed() const { return target > 0 && share > target * kTolerance; }
  const char* Verdict() const {
    if (share == 0 || target == 0) return "";
    if (!Missed()) return "met";
    return share > kTolerance ? "missed, slower than OpenCV" : "missed";
  }
};

// Runs on one path of the library. Numbers that a call reads and changes start each time anew.
Job MakeJob(Subject& subject, int fast) {
  std::vector<std::pair<std::size_t, catalogue::Argument>> updated;
  for (std::size_t i = 0; i < subject.call.values.size(); ++i) {
    const catalogue::Parameter& parameter = subject.operation->parameters[i];
    if (parameter.role == catalogue::Role::kUpdated && catalogue::IsNumber(parameter.kind)) {
      updated.emplace_back(i, subject.call.values[i]);
    }
  }
  return [&subject, fast, updated] {
    LxSetMMX(fast);
    for (const auto& [index, value] : updated) subject.call.values[index] = value;
    subject.operation->call(subject.call.values);
  };
}

double TargetAt(const std::string& size, const Target& target) {
  if (size == "640x480" || size == "512x512") return target.computing;
  return size == "1920x1080" ? target.memory : 0;
}

Row Time(Subject& subject, const std::string& size, double seconds) {
  const Family& family = FamilyOf(*subject.operation);
  const std::size_t bytes = subject.ImageBytes();
  Job copy;
  std::pair<Image, Image> pair;
  if (bytes > 0) {
    pair = subject.MakeCopyPair();
    copy = [bytes, from = pair.first->GetPixelPtr(0, 0), to = pair.second->GetPixelPtr(0, 0)] {
      std::memcpy(to, from, bytes);
      // Keeps the copy: its result is never read.
      asm volatile("" : : "r"(to) : "memory");
    };
  }
  const Timing timing = TimeSideBySide(
      {copy, MakeJob(subject, 1), MakeJob(subject, 0), family.peer(subject)}, seconds);
  return {subject.operation->family,
          subject.Name(),
          bytes > 0 ? size : "",
          timing.Microseconds(kFast),
          timing.Ratio(kFast, kCopy),
          timing.Ratio(kPlain, kCopy),
          timing.Ratio(kPeer, kCopy),
          timing.Ratio(kFast, kPeer),
          TargetAt(size, family.target(subject))};
}

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.2f", value);
  return value > 0 ? text : "";
}

void Print(const Row& row) {
  std::printf("%-9s %10s %7s %7s %7s %6s %6s  %-27s %s\n", row.size.c_str(),
              Number(row.microseconds).c_str(), Number(row.fast).c_str(), Number(row.plain).c_str(),
              Number(row.peer).c_str(), Number(row.share).c_str(),
              Number(row.share > 0 ? row.target : 0).c_str(), row.Verdict(), row.name.c_str());
  std::fflush(stdout);
}

void Write(const Row& row, std::ofstream& csv) {
  csv << row.family << ",\"" << row.name << "\"," << row.size << ',' << Number(row.microseconds)
      << ',' << Number(row.fast) << ',' << Number(row.plain) << ',' << Number(row.peer) << ','
      << Number(row.share) << ',' << Number(row.target) << ",\"" << row.Verdict() << "\"\n";
}

std::pair<int, int> ParseSize(const std::string& text) {
  const std::size_t cross = text.find('x');
  return {std::stoi(text), std::stoi(text.substr(cross + 1))};
}

// The family's forms, or one for each choice.
std::vector<Form> FormsOf(const Operation& operation) {
  std::vector<Form> forms = FamilyOf(operation).forms(operation);
  if (!forms.empty()) return forms;
  for (const int choice : test::ChoicesOf(operation)) {
    std::string label = test::ChoiceText(operation, choice);
    if (!label.empty()) label.erase(0, 1);
    forms.push_back({.label = label, .choice = choice});
  }
  return forms;
}

// Of the members of objects, those forms that know what to call them on.
std::vector<Form> MemberForms(const Operation& member) {
  if (member.family == "vectors") return {};
  std::vector<Form> forms = FamilyOf(member).forms(member);
  std::erase_if(forms, [](const Form& each) { return each.object == nullptr; });
  return forms;
}

// All rows of one run.
class Table {
 public:
  explicit Table(const Options& chosen) : options(chosen), csv(chosen.csv) {
    csv << "family,operation,size,microseconds,lxpic,plain,opencv,share,target,verdict\n";
    std::printf("%-9s %10s %7s %7s %7s %6s %6s\n", "", "us", "lxpic", "plain", "OpenCV", "share",
                "target");
  }

  void Add(const Operation& operation, const Form& form) {
    const std::vector<std::string> own = {form.size};
    for (const std::string& size : form.size.empty() ? options.sizes : own) {
      const auto [width, height] = ParseSize(size);
      Subject subject(operation, form, width, height);
      if (const std::string why = subject.WhyNot(); !why.empty()) {
        untimed.insert(subject.Name() + ": " + why);
        return;
      }
      const Row row = Time(subject, size, options.seconds);
      Print(row);
      Write(row, csv);
      ++rows;
      missed += row.Missed() ? 1 : 0;
      if (subject.images.empty()) return;  // no size to vary
    }
  }

  void Summarise() const {
    for (const std::string& each : untimed) std::printf("not timed: %s\n", each.c_str());
    std::printf("%d rows, %d targets missed, %zu forms not timed\n", rows, missed, untimed.size());
  }

 private:
  const Options& options;
  std::ofstream csv;
  std::set<std::string> untimed;
  int rows = 0;
  int missed = 0;
};

// Those of the named set and of older ones, which have higher bits.
void RestrictInstructions(const std::string& name) {
  const std::int64_t all = hwy::SupportedTargets();
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    if (name == hwy::TargetName(target)) {
      hwy::SetSupportedTargetsForTest(all & ~(target - 1));
      return;
    }
  }
  throw CLI::ValidationError("--target", name + " is not here");
}

int Run(const Options& options) {
  if (!options.target.empty()) RestrictInstructions(options.target);
  const std::regex filter(options.filter);
  Table table(options);
  const auto add = [&](const Operation& operation, const std::vector<Form>& forms) {
    for (const Form& form : forms) {
      if (std::regex_search(Subject(operation, form, 0, 0).Name(), filter)) {
        table.Add(operation, form);
      }
    }
  };
  for (const Operation& operation : catalogue::All()) add(operation, FormsOf(operation));
  for (const catalogue::Object& object : catalogue::Objects()) {
    for (const Operation& member : object.members) add(member, MemberForms(member));
  }
  table.Summarise();
  return 0;
}

}  // namespace
}  // namespace lx::bench

int main(int argc, char** argv) {
  lx::bench::Options options;
  CLI::App app("Times operations as multiples of memcpy of the same image, and shares of OpenCV");
  app.add_option("--csv", options.csv, "Also write the table to this file");
  app.add_option("--filter", options.filter, "Only what matches: \"PicOper.*BW16.* add$\"");
  app.add_option("--sizes", options.sizes, "Image sizes")->delimiter(',')->capture_default_str();
  app.add_option("--seconds", options.seconds, "Time for each row")->capture_default_str();
  app.add_option("--target", options.target, "The newest instruction set to use: AVX2");
  try {
    app.parse(argc, argv);
    return lx::bench::Run(options);
  } catch (const CLI::Error& error) {
    return app.exit(error);
  }
}
