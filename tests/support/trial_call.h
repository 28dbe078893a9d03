// SPDX-License-Identifier: Apache-2.0
// One call of an operation on small regions, for tests of what every operation promises.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/arguments.h"
#include "support/reference.h"
#include "support/region.h"

namespace lx::test {

class TrialCall {
 public:
  /// Standard arguments and regions full of noise, all of one size unless the operation wants
  /// others.
  explicit TrialCall(const Operation& operation, int choice = -1, Size size = {19, 3});

  /// Replaces region parameter `index` by a region of another size.
  void Resize(std::size_t index, Size size);
  /// Another region object over the pixels of region parameter `index`.
  LxGenericROI* Twin(std::size_t index) const;
  void Run();
  /// "" when error state and trace say that all went well and the regions are as they must be.
  std::string Failure() const;
  /// "" when the operation failed with `code`, traced itself and left every region alone.
  std::string Refusal(LX_ERRORS code) const;

  Arguments call;
  std::vector<std::size_t> regions;  ///< the region parameters
  Size size;

 private:
  std::string TraceFault() const;

  const Operation& operation;
  std::vector<std::unique_ptr<Arena>> arenas;  ///< of each region parameter
  std::vector<std::unique_ptr<LxGenericROI>> others;
};

}  // namespace lx::test
