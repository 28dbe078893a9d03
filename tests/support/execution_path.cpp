// SPDX-License-Identifier: Apache-2.0
#include "support/execution_path.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "support/execution_path.cpp"
#include "hwy/foreach_target.h"
// Behind foreach_target.h.
#include "hwy/highway.h"
#include "lxpic/lxpic.h"

HWY_BEFORE_NAMESPACE();
namespace lx::test::HWY_NAMESPACE {

std::int64_t CompiledFor() { return HWY_TARGET; }

}  // namespace lx::test::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::test {

namespace {
HWY_EXPORT(CompiledFor);
}

const std::vector<ExecutionPath>& ExecutionPaths() {
  static const std::vector<ExecutionPath> paths = [] {
    std::vector<ExecutionPath> made = {{"plain", false, 0}};
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
      made.push_back({hwy::TargetName(target), true, target});
    }
    return made;
  }();
  return paths;
}

PathScope::PathScope(const ExecutionPath& path) : wasFast(LxGetMMX()) {
  LxSetMMX(path.fast ? 1 : 0);
  hwy::SetSupportedTargetsForTest(path.target);
  hwy::GetChosenTarget().DeInit();
}

PathScope::~PathScope() {
  LxSetMMX(wasFast);
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().DeInit();
}

bool PathScope::Dispatched() const { return hwy::GetChosenTarget().IsInitialized(); }

std::string PathScope::Running() { return hwy::TargetName(HWY_DYNAMIC_DISPATCH(CompiledFor)()); }

}  // namespace lx::test
#endif
