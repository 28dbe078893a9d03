// SPDX-License-Identifier: Apache-2.0
#include "bench/family.h"

namespace lx::bench {

namespace {

std::vector<Form> FormsOf(const Operation& /*operation*/) { return {}; }

Target TargetOf(const Subject& /*subject*/) { return {1, 1}; }

Job MakePeer(const Subject& /*subject*/) { return {}; }

}  // namespace

const Family kContourFamily = {FormsOf, MakePeer, TargetOf};

}  // namespace lx::bench
