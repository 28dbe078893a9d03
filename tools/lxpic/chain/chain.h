// SPDX-License-Identifier: Apache-2.0
// A chain of operations, run on one image after another.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tools/lxpic/chain/operand_files.h"
#include "tools/lxpic/chain/store.h"

namespace lx::tool {

/// The step that keeps what the one before it left under a name.
inline constexpr const char* kStoreStep = "store";

/// Whether a word begins a step.
bool StartsStep(const std::string& word);

/// One step that has run.
struct StepReport {
  std::string words;
  ImageValue image;  ///< the current image behind it
  double milliseconds;
};

/// What a chain leaves.
struct ChainResult {
  ImageValue image;                   ///< the current image; none where none was ever there
  std::vector<NamedNumbers> numbers;  ///< the values that are kept
  std::string lastVector;  ///< the name of one that the last step left and that can be drawn, or ""
};

class Chain {
 public:
  using Observer = std::function<void(const StepReport&)>;

  /// Each operation runs `runs` times, from the same start each time. Chains that run the same
  /// steps may share `operandFiles`.
  explicit Chain(std::vector<std::string> steps, int runs,
                 std::shared_ptr<OperandFiles> operandFiles);

  /// `input` may be no image. Throws Failure, which names the step.
  ChainResult Run(const ImageValue& input, const Observer& observe = {});

 private:
  struct State {
    ImageValue input;
    ImageValue current;
    Store store;
    bool leftImage = true;               // whether the step before did
    std::vector<std::string> leftNames;  // the names of what else it left
  };

  std::size_t RunStep(std::size_t first, State& state, const Observer& observe);
  static void RunStore(const std::string& name, State& state);
  std::size_t RunOperation(std::size_t first, State& state, const Observer& observe);
  ImageValue FindImage(const std::string& word, const State& state);

  std::vector<std::string> words;
  int repeat;
  std::shared_ptr<OperandFiles> files;
};

}  // namespace lx::tool
