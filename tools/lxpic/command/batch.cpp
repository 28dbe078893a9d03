// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/batch.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/command/outputs.h"
#include "tools/lxpic/common/jobs.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/report/drawing.h"
#include "tools/lxpic/report/plot.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

// A bar on stderr, on a terminal and for several inputs only.
class Progress {
 public:
  Progress(std::size_t inputCount, bool wanted)
      : count(inputCount), shown(wanted && inputCount > 1 && isatty(STDERR_FILENO) != 0) {}
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(std::size_t done, const std::string& name) const {
    if (!shown) return;
    const std::size_t filled = kWidth * done / count;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "\r\033[K[%s] %zu/%zu %s", bar.c_str(), done, count, name.c_str());
  }
  void Clear() const {
    if (shown) std::fputs("\r\033[K", stderr);
  }

 private:
  static constexpr std::size_t kWidth = 30;
  std::size_t count;
  bool shown;
};

// The files of one run of the chain; "" for none.
struct FileNames {
  std::string input;
  std::string output;
  std::string plot;
};

std::vector<FileNames> ChooseFiles(const BatchOptions& options,
                                   const std::vector<std::string>& inputs) {
  if (!options.plot.empty() && options.plot == options.output) {
    throw Failure(kWrongUsage, "-o and --plot name the same file");
  }
  const auto outputs = ChooseOutputs("-o", options.output, inputs);
  const auto plots = ChooseOutputs("--plot", options.plot, inputs);
  std::vector<FileNames> files;
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    files.push_back({inputs[i], outputs[i], plots[i]});
  }
  return files;
}

// What one run of the chain leaves to be told.
struct RunReport {
  TableRow row;
  std::string times;
  std::optional<Failure> failure;
};

std::string TimeText(const BatchOptions& options, const std::string& input,
                     const StepReport& step) {
  std::array<char, 64> time{};
  std::snprintf(time.data(), time.size(), ": %.3f ms", step.milliseconds);
  const std::string file = input.empty() ? "" : input + ": ";
  const std::string runs =
      options.repeat > 1 ? " (median of " + std::to_string(options.repeat) + ")" : "";
  return file + step.words + time.data() + runs + "\n";
}

// In a folder the file has the name of an image; "a.tif.png" is drawn where that cannot be.
void DrawTo(const std::string& path, const NamedNumbers& vector) {
  WritePlot(IsDrawingName(path) ? path : path + ".png", vector);
}

const NamedNumbers* FindVector(const ChainResult& result, bool ofLastStep) {
  for (auto each = result.numbers.rbegin(); each != result.numbers.rend(); ++each) {
    const bool isDrawn = each->numbers.drawing != Numbers::Drawing::kNone;
    if (isDrawn && (!ofLastStep || each->name == result.lastVector)) return &*each;
  }
  return nullptr;
}

// Writes what the options ask for.
void WriteFiles(const BatchOptions& options, const FileNames& files, const ChainResult& result) {
  const NamedNumbers* const last = FindVector(result, true);
  if (!files.plot.empty()) {
    const NamedNumbers* const vector = last != nullptr ? last : FindVector(result, false);
    if (vector == nullptr) throw Failure(kWrongUsage, "there is no vector to draw");
    DrawTo(files.plot, *vector);
  }
  if (files.output.empty()) {
    const bool isTold = !files.plot.empty() || !result.numbers.empty() || options.time;
    if (!isTold) throw Failure(kWrongUsage, "nothing is written: add -o FILE");
  } else if (last != nullptr && files.plot.empty()) {
    DrawTo(files.output, *last);
  } else {
    if (!result.image) throw Failure(kWrongUsage, "there is no image to write");
    WriteImage(files.output, result.image);
  }
}

ChainResult RunChain(Chain& chain, const std::string& input, const Chain::Observer& observe) {
  const ImageValue start = input.empty() ? ImageValue() : ReadImage(input);
  try {
    return chain.Run(start, observe);
  } catch (const Failure& failure) {
    if (input.empty()) throw;
    throw failure.Of(input);
  }
}

RunReport RunOne(Chain& chain, const BatchOptions& options, const FileNames& files) {
  RunReport report{{files.input, {}}, "", std::nullopt};
  try {
    const ChainResult result = RunChain(chain, files.input, [&](const StepReport& step) {
      if (options.time) report.times += TimeText(options, files.input, step);
    });
    WriteFiles(options, files, result);
    report.row.numbers = result.numbers;
  } catch (const Failure& failure) {
    report.failure = failure;
  }
  return report;
}

// A table of the format that the file's extension or the option names.
TableFormat FormatOf(const BatchOptions& options) {
  if (options.format) return *options.format;
  const fs::path extension = fs::path(options.values).extension();
  if (extension == ".csv") return TableFormat::kCsv;
  return extension == ".json" ? TableFormat::kJson : TableFormat::kText;
}

void WriteNumbers(const BatchOptions& options, const std::vector<TableRow>& rows) {
  const std::string text = TableText(rows, FormatOf(options));
  if (options.values.empty()) {
    std::fputs(text.c_str(), stdout);
    return;
  }
  std::ofstream file(options.values, std::ios::binary);
  file << text;
  file.close();
  if (!file) throw Failure(kFileFailed, options.values + ": cannot be written");
}

// Tells of the runs in their order, and keeps their numbers.
class Teller {
 public:
  Teller(std::size_t count, bool showsProgress)
      : inputCount(count), progress(count, showsProgress) {
    progress.Show(0, "");
  }

  void Tell(const RunReport& report) {
    std::fputs(report.times.c_str(), stderr);
    if (report.failure && inputCount == 1) throw Failure(*report.failure);
    if (report.failure) {
      progress.Clear();
      ReportFailure(report.failure->what());
      if (code == kFine) code = report.failure->Code();
    } else {
      rows.push_back(report.row);
    }
    progress.Show(++done, report.row.file);
  }

  ExitCode Finish(const BatchOptions& options) const {
    progress.Clear();
    WriteNumbers(options, rows);
    return code;
  }

 private:
  std::size_t inputCount;
  Progress progress;
  std::size_t done = 0;
  std::vector<TableRow> rows;
  ExitCode code = kFine;
};

}  // namespace

ExitCode RunBatch(const BatchOptions& options) {
  auto [inputs, steps] = SplitInputs(options.words);
  if (inputs.empty()) inputs.emplace_back();
  const auto files = ChooseFiles(options, inputs);
  Teller teller(files.size(), !options.time);
  RunJobs(files.size(), options.jobs, [&, &words = steps] {
    const auto chain = std::make_shared<Chain>(words, options.repeat);
    return [&, chain](std::size_t i) {
      return [&teller, report = RunOne(*chain, options, files[i])] { teller.Tell(report); };
    };
  });
  return teller.Finish(options);
}

void ReportFailure(const std::string& message) {
  std::fprintf(stderr, "lxpic: %s\n", message.c_str());
}

}  // namespace lx::tool
