// SPDX-License-Identifier: Apache-2.0
// Objects with state: short random sequences of their members, each held to a plain model.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "support/allocation_failure.h"
#include "support/trial.h"

namespace lx::test {

/// What a member does to the model of an object. Results go into the outcome; `memory` says whether
/// the call gets the storage that it asks for.
template <class Model>
using MemberRule = void (*)(Model&, const Arguments& call, bool memory, Outcome& outcome);
/// By signature.
template <class Model>
using MemberRules = std::map<std::string, MemberRule<Model>>;

/// Runs one member with drawn arguments on the object and on its model, and compares what it
/// reports. A model that has a Place() puts the regions in. One call in eight is refused its first allocation.
template <class Object, class Model>
void ExpectStep(const Operation& member, Object& object, Model& model,
                const MemberRules<Model>& rules, Random& random) {
  const auto rule = rules.find(member.signature);
  ASSERT_NE(rule, rules.end()) << member.signature << " has no rule";
  Arguments call(member, random);
  call.SetChoice(static_cast<int>(random.Pick(ChoicesOf(member))));
  call.values[0] = &object;
  if constexpr (requires { model.Place(member, call, random); }) model.Place(member, call, random);
  bool fired = false;
  LxSetError(LX_ERROR_INTERNAL);
  LxTraceError("before");
  Arguments seen = call;
  {
    const FailAllocation guard(random.Below(8) == 0 ? 0 : 1000);
    member.call(seen.values);
    fired = guard.Fired();
  }
  Outcome expected;
  expected.values.resize(member.parameters.size());
  rule->second(model, call, !fired, expected);
  if (expected.error != LX_OK) expected.trace.push_back(member.trace);
  EXPECT_EQ(LxGetError(), expected.error);
  EXPECT_EQ(TraceNow(), expected.trace);
  if (expected.error != LX_OK) {
    EXPECT_TRUE(member.Refuses(expected.error)) << "a code that is not listed";
  }
  for (std::size_t i = 0; i < expected.values.size(); ++i) {
    if (const auto* const number = std::get_if<double>(&expected.values[i])) {
      EXPECT_EQ(seen.Number(i), *number) << member.parameters[i].name;
    }
  }
}

/// Many short scenarios. `make` makes an object and its model; `compare` looks at both after each
/// step.
template <class Make, class Model, class Compare>
void ExpectScenarios(const catalogue::Object& object, const MemberRules<Model>& rules,
                     const Make& make, const Compare& compare) {
  constexpr int kScenarios = 2000;
  constexpr int kSteps = 12;
  Random random(object.name);
  for (int scenario = 0; scenario < kScenarios; ++scenario) {
    std::string steps;
    auto [real, model] = make(random);
    for (int step = 0; step < kSteps; ++step) {
      const Operation& member = random.Pick(object.members);
      steps.append(" ").append(member.signature, 0, member.signature.find('('));
      SCOPED_TRACE(steps);
      ExpectStep(member, *real, model, rules, random);
      compare(*real, model);
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace lx::test
