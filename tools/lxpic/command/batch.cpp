// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/batch.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/file/files.h"

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

bool LooksLikeFile(const std::string& word) {
  std::error_code ignored;
  return word.find_first_of("./") != std::string::npos || fs::exists(word, ignored);
}

bool NamesFolder(const std::string& output, const std::vector<std::string>& inputs) {
  // Without an input there is no name for a file in a folder.
  if (inputs.front().empty()) return false;
  std::error_code ignored;
  return output.ends_with('/') || fs::is_directory(output, ignored) ||
         (inputs.size() > 1 && !HasKnownExtension(output));
}

// The file in the folder for `input`, whose name it keeps as far as it can be written.
fs::path OutputFor(const std::string& input, const fs::path& folder) {
  fs::path name = fs::path(input).filename();
  if (!HasKnownExtension(name.string())) name.replace_extension(".png");
  return folder / name;
}

std::vector<std::string> OutputsInFolder(const std::vector<std::string>& inputs,
                                         const std::string& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw Failure(kFileFailed, folder + ": cannot be made: " + error.message());
  std::vector<std::string> outputs;
  std::set<fs::path> used;
  for (const std::string& input : inputs) {
    const fs::path output = OutputFor(input, folder);
    if (!used.insert(output).second) {
      throw Failure(kWrongUsage, "two inputs would be written to " + output.string());
    }
    if (fs::exists(output, error) && fs::equivalent(input, output, error)) {
      throw Failure(kWrongUsage, input + " would be overwritten by its result");
    }
    outputs.push_back(output.string());
  }
  return outputs;
}

// One output for each input; "" where nothing is written.
std::vector<std::string> ChooseOutputs(const BatchOptions& options,
                                       const std::vector<std::string>& inputs) {
  if (options.output.empty()) return std::vector<std::string>(inputs.size());
  if (NamesFolder(options.output, inputs)) return OutputsInFolder(inputs, options.output);
  if (inputs.size() > 1) {
    throw Failure(kWrongUsage, "several images need a folder to be written to: -o FOLDER/");
  }
  CheckExtension(options.output);
  return {options.output};
}

void PrintReport(const BatchOptions& options, const std::string& input, const StepReport& report) {
  for (const std::string& result : report.results) std::printf("%s\n", result.c_str());
  if (!options.time) return;
  const std::string file = input.empty() ? "" : input + ": ";
  const std::string runs =
      options.repeat > 1 ? " (median of " + std::to_string(options.repeat) + ")" : "";
  std::fprintf(stderr, "%s%s: %.3f ms%s\n", file.c_str(), report.words.c_str(), report.milliseconds,
               runs.c_str());
}

ImageValue RunChain(Chain& chain, const std::string& input, const ImageValue& start,
                    const Chain::Observer& observe) {
  try {
    return chain.Run(start, observe);
  } catch (const Failure& failure) {
    if (input.empty()) throw;
    throw failure.Of(input);
  }
}

// Runs the chain on `input`, "" being no image; true when it left something for the user.
bool RunOne(Chain& chain, const BatchOptions& options, const std::string& input,
            const std::string& output) {
  bool printed = options.time;
  const ImageValue start = input.empty() ? ImageValue() : ReadImage(input);
  const auto observe = [&](const StepReport& report) {
    printed = printed || !report.results.empty();
    PrintReport(options, input, report);
  };
  const ImageValue result = RunChain(chain, input, start, observe);
  if (output.empty()) return printed;
  if (!result) throw Failure(kWrongUsage, "there is no image to write");
  WriteImage(output, result);
  return true;
}

}  // namespace

SplitWords SplitInputs(const std::vector<std::string>& words) {
  SplitWords split;
  const auto firstStep = std::find_if(words.begin(), words.end(), StartsStep);
  split.inputs.assign(words.begin(), firstStep);
  split.steps.assign(firstStep, words.end());
  for (const std::string& input : split.inputs) {
    if (LooksLikeFile(input)) continue;
    throw Failure(kWrongUsage, "'" + input + "' is neither a file nor an operation" +
                                   Suggestion(input, OperationNames()));
  }
  return split;
}

ExitCode RunBatch(const BatchOptions& options) {
  auto [inputs, steps] = SplitInputs(options.words);
  const bool several = inputs.size() > 1;
  if (inputs.empty()) inputs.emplace_back();
  const auto outputs = ChooseOutputs(options, inputs);
  Chain chain(steps, options.repeat);
  const Progress progress(inputs.size(), !options.time);
  ExitCode code = kFine;
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    progress.Show(i, inputs[i]);
    try {
      if (!RunOne(chain, options, inputs[i], outputs[i])) {
        throw Failure(kWrongUsage, "nothing is written: add -o FILE");
      }
    } catch (const Failure& failure) {
      if (!several) throw;
      progress.Clear();
      ReportFailure(failure.what());
      if (code == kFine) code = failure.Code();
    }
  }
  return code;
}

void ReportFailure(const std::string& message) {
  std::fprintf(stderr, "lxpic: %s\n", message.c_str());
}

}  // namespace lx::tool
