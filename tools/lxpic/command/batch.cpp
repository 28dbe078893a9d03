// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/batch.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/command/clashes.h"
#include "tools/lxpic/command/outputs.h"
#include "tools/lxpic/common/jobs.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/file/input_file.h"
#include "tools/lxpic/file/output_file.h"
#include "tools/lxpic/report/drawing_format.h"
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

void MakeFolder(const OutputOption& option, const std::vector<std::string>& inputs) {
  if (!NamesFolder(option, inputs)) return;
  std::error_code error;
  fs::create_directories(option.path, error);
  if (error) throw Failure(kFileFailed, option.path + ": cannot be made: " + error.message());
}

// The files of each run, once it is known that none is written over another.
std::vector<RunFiles> ChooseFiles(const BatchOptions& options, const SplitWords& words) {
  const OutputOption output{"-o", options.output, options.outputFormat};
  const OutputOption plot{"--plot", options.plot, ""};
  const auto outputs = ChooseOutputs(output, words.inputs);
  const auto plots = ChooseOutputs(plot, words.inputs);
  CommandFiles files{{}, words.steps, options.values, false};
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    files.runs.push_back({words.inputs[i], outputs[i], plots[i]});
  }
  files.mayReplace = outputs.size() == 1 && !NamesFolder(output, words.inputs);
  CheckClashes(files);
  MakeFolder(output, words.inputs);
  MakeFolder(plot, words.inputs);
  return files.runs;
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
void DrawTo(const std::string& path, const NamedNumbers& vector, const std::string& format = "") {
  const auto chosen = DrawingFormatOf(format.empty() ? path : "drawing." + format);
  if (!format.empty() && !chosen) {
    throw Failure(kWrongUsage, "--as: a drawing is png or svg, not " + format);
  }
  WritePlot(chosen || IsStream(path) ? path : path + ".png", vector, chosen);
}

const NamedNumbers* FindVector(const ChainResult& result, bool ofLastStep) {
  for (auto each = result.numbers.rbegin(); each != result.numbers.rend(); ++each) {
    const bool isDrawn = each->numbers.drawing != Numbers::Drawing::kNone;
    if (isDrawn && (!ofLastStep || each->name == result.lastVector)) return &*each;
  }
  return nullptr;
}

// Writes what the options ask for.
void WriteFiles(const BatchOptions& options, const RunFiles& files, const ChainResult& result) {
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
    DrawTo(files.output, *last, options.outputFormat);
  } else {
    if (!result.image) throw Failure(kWrongUsage, "there is no image to write");
    WriteImage(files.output, result.image, options.outputFormat);
  }
}

ChainResult RunChain(Chain& chain, const std::string& input, const Chain::Observer& observe) {
  const ImageValue start = input.empty() ? ImageValue() : ReadImage(input);
  try {
    return chain.Run(start, observe);
  } catch (const Failure& failure) {
    if (input.empty()) throw;
    throw failure.Of(ShownInput(input));
  }
}

RunReport RunOne(Chain& chain, const BatchOptions& options, const RunFiles& files) {
  RunReport report{{files.input, {}}, "", std::nullopt};
  try {
    const ChainResult result = RunChain(chain, files.input, [&](const StepReport& step) {
      if (options.time) report.times += TimeText(options, files.input, step);
    });
    WriteFiles(options, files, result);
    report.row.numbers = result.numbers;
  } catch (const Failure& failure) {
    report.failure = failure;
  } catch (const std::bad_alloc&) {
    report.failure = Failure(kOperationFailed, "not enough memory").Of(ShownInput(files.input));
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
  if (!options.values.empty()) {
    WriteText(options.values, text);
    return;
  }
  // Numbers would damage an image that goes the same way.
  const bool isTaken = IsStandardOutput(options.output) || IsStandardOutput(options.plot);
  std::fputs(text.c_str(), isTaken ? stderr : stdout);
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
  SplitWords words = SplitInputs(options.words);
  if (words.inputs.empty()) words.inputs.emplace_back();
  const auto files = ChooseFiles(options, words);
  const auto operandFiles = std::make_shared<OperandFiles>();
  Teller teller(files.size(), !options.time);
  RunJobs(files.size(), options.jobs, [&] {
    const auto chain = std::make_shared<Chain>(words.steps, options.repeat, operandFiles);
    return [&, chain](std::size_t i) {
      return [&teller, report = RunOne(*chain, options, files[i])] { teller.Tell(report); };
    };
  });
  return teller.Finish(options);
}

void ReportFailure(const char* message) noexcept { std::fprintf(stderr, "lxpic: %s\n", message); }

}  // namespace lx::tool
