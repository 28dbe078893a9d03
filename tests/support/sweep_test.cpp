// SPDX-License-Identifier: Apache-2.0
#include "support/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace lx::test {
namespace {

std::vector<const Operation*> AllOperations() {
  std::vector<const Operation*> found;
  for (const Operation& each : catalogue::All()) {
    if (WhyNoReference(each.signature).empty()) found.push_back(&each);
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

// Whether the fast path is to dispatch a kernel for this choice.
bool HasKernel(const Operation& operation, int choice) {
  const auto& plain = operation.plainChoices;
  return operation.hasKernel && std::find(plain.begin(), plain.end(), choice) == plain.end();
}

class SweepTest : public testing::TestWithParam<const Operation*> {};

TEST_P(SweepTest, EqualsReferenceEverywhere) {
  const Operation& operation = *GetParam();
  const Reference* const reference = FindReference(operation.signature);
  ASSERT_NE(reference, nullptr) << operation.signature << " has neither a reference nor a reason";
  EXPECT_EQ(reference->tolerance > 0, !reference->reason.empty());
  for (const int choice : ChoicesOf(operation)) {
    SCOPED_TRACE(operation.signature + ChoiceText(operation, choice));
    const SweepResult result = Sweep(operation, *reference, choice);
    for (const std::string& failure : result.failures) EXPECT_EQ(failure, "");
    EXPECT_LT(result.refused, result.cases * 3 / 4) << "hardly anything was computed";
    std::set<std::string> wanted;
    for (const ExecutionPath& path : ExecutionPaths()) {
      if (path.fast && HasKernel(operation, choice)) wanted.insert(path.name);
    }
    EXPECT_EQ(result.instructions, wanted);
  }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, SweepTest, testing::ValuesIn(AllOperations()), TestName);

// The places that a sweep draws hold rows of bits that start at each bit of a byte.
TEST(Layouts, BinaryChildrenStartAtEveryBit) {
  std::set<int> bits;
  for (int offset = kGuardBefore; offset < 64; ++offset) {
    const Arena arena(0, Pixel::kBinary, 19, 3, {Pitch::kChild, offset});
    bits.insert(arena.Region()->GetBitPosition(0, 0));
  }
  EXPECT_EQ(bits.size(), 8U);
}

// An instruction set that the processor offers and the build leaves out runs nowhere: then the
// sweep would pass without having seen it.
TEST(InstructionSets, EveryOneOfThisProcessorIsSwept) {
  std::vector<std::string> swept;
  for (const ExecutionPath& path : ExecutionPaths()) {
    if (path.fast) swept.push_back(path.name);
  }
  EXPECT_EQ(swept, OfferedInstructionSets());
  for (const std::string& each : swept) std::printf("swept: %s\n", each.c_str());
}

}  // namespace
}  // namespace lx::test
