// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/command/outputs.h"

#include <algorithm>
#include <filesystem>

#include "tools/lxpic/chain/chain.h"
#include "tools/lxpic/chain/overloads.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/files.h"
#include "tools/lxpic/file/identity.h"
#include "tools/lxpic/file/input_file.h"
#include "tools/lxpic/report/drawing_format.h"

namespace lx::tool {

namespace {

namespace fs = std::filesystem;

bool LooksLikeFile(const std::string& word) {
  std::error_code ignored;
  return word == kStandardStream || word.find_first_of("./") != std::string::npos ||
         fs::exists(word, ignored);
}

// The file in the folder for `input`, whose name it keeps as far as it can be written.
std::string OutputFor(const std::string& input, const OutputOption& option) {
  fs::path name = input == kStandardStream ? "stdin" : fs::path(input).filename();
  if (!option.format.empty()) {
    name.replace_extension(option.format);
  } else if (!HasKnownExtension(name.string())) {
    name.replace_extension("png");
  }
  return (fs::path(option.path) / name).string();
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
  if (std::count(words.begin(), words.end(), kStandardStream) > 1) {
    throw Failure(kWrongUsage, "standard input can be read only once");
  }
  return split;
}

bool NamesFolder(const OutputOption& option, const std::vector<std::string>& inputs) {
  const std::string& path = option.path;
  // Without an input there is no name for a file in a folder.
  if (path.empty() || inputs.front().empty() || IsStream(path)) return false;
  std::error_code ignored;
  return path.ends_with('/') || fs::is_directory(path, ignored) ||
         (inputs.size() > 1 && !HasKnownExtension(path) && !DrawingFormatOf(path));
}

std::vector<std::string> ChooseOutputs(const OutputOption& option,
                                       const std::vector<std::string>& inputs) {
  if (option.path.empty()) return std::vector<std::string>(inputs.size());
  const bool isDrawing =
      option.format.empty() ? DrawingFormatOf(option.path).has_value() : option.format == "svg";
  if (NamesFolder(option, inputs)) {
    if (!option.format.empty() && !isDrawing) CheckFormat(option.path, option.format);
    std::vector<std::string> outputs;
    for (const std::string& input : inputs) outputs.push_back(OutputFor(input, option));
    return outputs;
  }
  if (inputs.size() > 1) {
    throw Failure(kWrongUsage, std::string("several images need a folder to be written to: ") +
                                   option.name + " FOLDER/");
  }
  if (!isDrawing) CheckFormat(option.path, option.format);
  return {option.path};
}

}  // namespace lx::tool
