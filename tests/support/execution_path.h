// SPDX-License-Identifier: Apache-2.0
// The ways through the library: the plain path, and the fast path on every instruction set that
// this machine has.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lx::test {

struct ExecutionPath {
  std::string name;
  bool fast;
  /// Of the SIMD dispatcher: this set and those that a processor with it has besides, since a kernel
  /// that is not built for it runs on the next older one. 0 leaves the choice to the dispatcher.
  std::int64_t targets;
};

/// The plain path first.
const std::vector<ExecutionPath>& ExecutionPaths();

/// The instruction sets that this processor offers, of those that the library is built for, by the
/// processor's own account.
std::vector<std::string> OfferedInstructionSets();

/// Makes the library take a path, for as long as the object lives.
class PathScope {
 public:
  explicit PathScope(const ExecutionPath& path);
  ~PathScope();
  PathScope(const PathScope&) = delete;
  PathScope& operator=(const PathScope&) = delete;

  /// Whether a kernel was dispatched in this scope.
  bool Dispatched() const;
  /// The name of the instruction set that kernels run on.
  static std::string Running();

 private:
  int wasFast;
};

}  // namespace lx::test
