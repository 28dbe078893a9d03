// SPDX-License-Identifier: Apache-2.0
#include "convolution/chosen_case.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lx::test {

const Operation& OperationOn(std::string_view function, std::string_view pixel) {
  const std::string start = std::string(function) + "(LxROI<" + std::string(pixel) + ">";
  for (const Operation& each : catalogue::All()) {
    if (each.signature.starts_with(start)) return each;
  }
  ADD_FAILURE() << "no " << start;
  return catalogue::All().front();
}

std::string CaseFailure(const Operation& operation, const Arguments& call, Size size,
                        Content content, Onto onto) {
  Random random(operation.signature);
  const SweepCase chosen{size, content, {{Pitch::kOdd, 1}, {Pitch::kTight, 0}}, onto};
  SweepResult result;
  RunCase(operation, *FindReference(operation.signature), chosen, call, random, result);
  std::string failures;
  for (const std::string& each : result.failures) failures += each;
  return failures;
}

std::string NumbersFailure(const Operation& operation, const std::vector<double>& numbers,
                           Size size, Content content, Onto onto) {
  Arguments call(operation);
  std::copy(numbers.rbegin(), numbers.rend(), call.values.rbegin());
  return CaseFailure(operation, call, size, content, onto);
}

}  // namespace lx::test
