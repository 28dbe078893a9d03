// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/settings.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <numbers>

#include "base/failure.h"
#include "base/thread_block.h"

namespace {

std::atomic<int> fastPaths{1};
std::atomic<LX_ANGLE_UNITS> angleUnit{LX_ANGLE_UNIT_DEGREES};
thread_local lx::ThreadBlock threadBlock;

constexpr double kTurnInRadians = 2.0 * std::numbers::pi;
// A full turn in each unit, in the order of LX_ANGLE_UNITS.
constexpr std::array kTurn = {360.0, kTurnInRadians, 1.0, 400.0};

double RadiansPerUnit() {
  return kTurnInRadians / kTurn[static_cast<std::size_t>(angleUnit.load())];
}

}  // namespace

int LxGetMMX() { return fastPaths.load(std::memory_order_relaxed); }

void LxSetMMX(int enabled) { fastPaths.store(enabled != 0 ? 1 : 0, std::memory_order_relaxed); }

LX_ANGLE_UNITS LxGetAngleUnit() { return angleUnit.load(); }

void LxSetAngleUnit(LX_ANGLE_UNITS unit) {
  if (unit < LX_ANGLE_UNIT_DEGREES || unit > LX_ANGLE_UNIT_GRADS) {
    lx::Fail(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, "LxSetAngleUnit");
    return;
  }
  angleUnit.store(unit);
}

float LxToRadians(float angle) { return static_cast<float>(angle * RadiansPerUnit()); }

float LxFromRadians(float angle) { return static_cast<float>(angle / RadiansPerUnit()); }

void* LxGetTLSPtr() { return &threadBlock; }
