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
  std::int64_t target;  ///< of the SIMD dispatcher; 0 leaves the choice to it
};

/// The plain path first.
const std::vector<ExecutionPath>& ExecutionPaths();

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
