// SPDX-License-Identifier: Apache-2.0
// Times every operation beside memcpy, its plain path and OpenCV, and prints multiples of memcpy.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "bench/peers.h"
#include "bench/stopwatch.h"
#include "bench/subject.h"
#include "bench/targets.h"

namespace lx::bench {
namespace {

// Medians that differ by less are equal.
constexpr double kTolerance = 1.03;

struct Options {
  std::string csv;
  std::string filter = ".*";
  std::vector<std::string> sizes = {"640x480", "1920x1080", "4096x3072"};
  double seconds = 0.15;
};

// Multiples of memcpy; 0 where there is nothing to compare.
struct Row {
  std::string name;
  std::string size;
  double fast = 0;
  double plain = 0;
  double peer = 0;
  double target = 0;

  bool Missed() const { return target > 0 && fast > target * kTolerance; }
  bool Slower() const { return peer > 0 && fast > peer * kTolerance; }
  const char* Verdict() const {
    if (Missed()) return Slower() ? "missed, slower than OpenCV" : "missed";
    if (Slower()) return "slower than OpenCV";
    return target > 0 ? "met" : "";
  }
};

// Runs on one path of the library. An operation that fails is not worth timing.
Job MakeJob(const Subject& subject, int fast) {
  return [&subject, fast] {
    LxSetMMX(fast);
    subject.operation->call(subject.call.values);
  };
}

Row Time(const Subject& subject, const std::string& size, double seconds) {
  const std::size_t bytes = subject.ImageBytes();
  const auto [from, to] = subject.MakeCopyPair();
  const Job copy = [bytes, source = from->GetPixelPtr(0, 0), copied = to->GetPixelPtr(0, 0)] {
    std::memcpy(copied, source, bytes);
    // Keeps the copy: its result is never read.
    asm volatile("" : : "r"(copied) : "memory");
  };
  const auto ratios =
      TimeSideBySide({copy, MakeJob(subject, 1), MakeJob(subject, 0), MakePeer(subject)}, seconds);
  return {subject.Name(), size, ratios[1], ratios[2], ratios[3], TargetOf(subject)};
}

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.2f", value);
  return value > 0 ? text : "";
}

void Print(const Row& row) {
  std::printf("%-9s %7s %7s %7s %7s  %-27s %s\n", row.size.c_str(), Number(row.fast).c_str(),
              Number(row.plain).c_str(), Number(row.peer).c_str(), Number(row.target).c_str(),
              row.Verdict(), row.name.c_str());
  std::fflush(stdout);
}

void Write(const Row& row, std::ofstream& csv) {
  csv << '"' << row.name << "\"," << row.size << ',' << Number(row.fast) << ',' << Number(row.plain)
      << ',' << Number(row.peer) << ',' << Number(row.target) << ",\"" << row.Verdict() << "\"\n";
}

// Whether the library does the subject's job without an error.
bool Works(const Subject& subject) {
  if (subject.images.empty()) return false;
  subject.operation->call(subject.call.values);
  return LxGetError() == LX_OK;
}

std::pair<int, int> ParseSize(const std::string& text) {
  const std::size_t cross = text.find('x');
  return {std::stoi(text), std::stoi(text.substr(cross + 1))};
}

int Run(const Options& options) {
  const std::regex filter(options.filter);
  std::ofstream csv(options.csv);
  csv << "operation,size,lxpic,plain,opencv,target,verdict\n";
  std::printf("%-9s %7s %7s %7s %7s\n", "", "lxpic", "plain", "OpenCV", "target");
  int missed = 0;
  int slower = 0;
  int rows = 0;
  for (const Operation& operation : catalogue::All()) {
    for (const Form& form : FormsOf(operation)) {
      for (const std::string& size : options.sizes) {
        const auto [width, height] = ParseSize(size);
        if (!std::regex_search(Subject(operation, form, 0, 0).Name(), filter)) continue;
        const Subject subject(operation, form, width, height);
        if (!Works(subject)) continue;
        const Row row = Time(subject, size, options.seconds);
        Print(row);
        Write(row, csv);
        ++rows;
        missed += row.Missed() ? 1 : 0;
        slower += row.Slower() ? 1 : 0;
      }
    }
  }
  std::printf("%d rows, %d targets missed, %d slower than OpenCV\n", rows, missed, slower);
  return 0;
}

}  // namespace
}  // namespace lx::bench

int main(int argc, char** argv) {
  lx::bench::Options options;
  CLI::App app("Times operations as multiples of memcpy of the same image");
  app.add_option("--csv", options.csv, "Also write the table to this file");
  app.add_option("--filter", options.filter, "Only what matches: \"PicOper.*BW16.* add$\"");
  app.add_option("--sizes", options.sizes, "Image sizes")->delimiter(',')->capture_default_str();
  app.add_option("--seconds", options.seconds, "Time for each row")->capture_default_str();
  CLI11_PARSE(app, argc, argv);
  return lx::bench::Run(options);
}
