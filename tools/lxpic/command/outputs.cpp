// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/outputs.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/report/drawing.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

bool LooksLikeFile(const std::string& word) {
  std::error_code ignored;
  return word.find_first_of("./") != std::string::npos || fs::exists(word, ignored);
}

bool NamesFolder(const std::string& output, const std::vector<std::string>& inputs) {
  // Without an input there is no name for a file in a folder.
  if (inputs.front().empty()) return false;
  std::error_code ignored;
  return output.ends_with('/') || fs::is_directory(output, ignored) ||
         (inputs.size() > 1 && !HasKnownExtension(output) && !IsDrawingName(output));
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

std::vector<std::string> ChooseOutputs(const std::string& option, const std::string& output,
                                       const std::vector<std::string>& inputs) {
  if (output.empty()) return std::vector<std::string>(inputs.size());
  if (NamesFolder(output, inputs)) return OutputsInFolder(inputs, output);
  if (inputs.size() > 1) {
    throw Failure(kWrongUsage,
                  "several images need a folder to be written to: " + option + " FOLDER/");
  }
  if (!IsDrawingName(output)) CheckExtension(output);
  return {output};
}

}  // namespace lx::tool
