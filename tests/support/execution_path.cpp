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
    const std::int64_t all = hwy::SupportedTargets();
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
      // Older sets have higher bits.
      made.push_back({hwy::TargetName(target), true, all & ~(target - 1)});
    }
    return made;
  }();
  return paths;
}

#if defined(__x86_64__)
std::vector<std::string> OfferedInstructionSets() {
  struct Set {
    std::int64_t target;
    bool offered;
  };
  const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  const bool avx512 = avx2 && __builtin_cpu_supports("avx512f") &&
                      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512dq") &&
                      __builtin_cpu_supports("avx512bw");
  const bool newest = avx512 && __builtin_cpu_supports("avx512vnni") &&
                      __builtin_cpu_supports("avx512vbmi") &&
                      __builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("vpclmulqdq");
  const Set sets[] = {{HWY_AVX3_DL, newest},
                      {HWY_AVX3, avx512},
                      {HWY_AVX2, avx2},
                      {HWY_SSE4, __builtin_cpu_supports("sse4.2") != 0},
                      {HWY_STATIC_TARGET, true}};
  std::vector<std::string> names;
  for (const Set& each : sets) {
    const bool built = (each.target & (HWY_DISABLED_TARGETS)) == 0;
    if (each.offered && built) names.emplace_back(hwy::TargetName(each.target));
  }
  return names;
}
#else
std::vector<std::string> OfferedInstructionSets() {
  std::vector<std::string> names;
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    names.emplace_back(hwy::TargetName(target));
  }
  return names;
}
#endif

PathScope::PathScope(const ExecutionPath& path) : wasFast(LxGetMMX()) {
  LxSetMMX(path.fast ? 1 : 0);
  hwy::SetSupportedTargetsForTest(path.targets);
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
