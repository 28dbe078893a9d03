// SPDX-License-Identifier: Apache-2.0
#include "support/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace lx::test {
namespace {

std::vector<const Operation*> ImageOperations() {
  std::vector<const Operation*> found;
  for (const Operation& each : catalogue::All()) {
    if (each.DestinationIndex() < each.parameters.size()) found.push_back(&each);
  }
  return found;
}

std::string TestName(const testing::TestParamInfo<const Operation*>& info) {
  std::string name = info.param->signature;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  name.erase(
      std::unique(name.begin(), name.end(), [](char a, char b) { return a == '_' && b == '_'; }),
      name.end());
  return name;
}

class SweepTest : public testing::TestWithParam<const Operation*> {};

TEST_P(SweepTest, EqualsReferenceEverywhere) {
  const Operation& operation = *GetParam();
  const Reference* const reference = FindReference(operation.signature);
  ASSERT_NE(reference, nullptr) << operation.signature << " has no reference";
  for (const int choice : ChoicesOf(operation)) {
    const SweepResult result = Sweep(operation, *reference, choice);
    for (const std::string& failure : result.failures) EXPECT_EQ(failure, "");
    const auto& plain = reference->plainChoices;
    const bool hasKernel = std::find(plain.begin(), plain.end(), choice) == plain.end();
    EXPECT_EQ(result.dispatched, hasKernel)
        << operation.signature << " " << catalogue::ChoiceName(choice);
  }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, SweepTest, testing::ValuesIn(ImageOperations()), TestName);

}  // namespace
}  // namespace lx::test
