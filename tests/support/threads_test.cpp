// SPDX-License-Identifier: Apache-2.0
// Calls of two threads at the same time.
#include <atomic>
#include <chrono>
#include <thread>

#include "support/every_operation.h"
#include "support/trial.h"

namespace lx::test {
namespace {

/// A call with arguments of its own that succeeds, if one is found soon.
std::unique_ptr<Trial> DrawTrial(const Operation& operation, int choice, const Reference& reference,
                                 const char* seed) {
  Random random(seed);
  std::unique_ptr<Trial> trial;
  for (int attempt = 0; attempt < 20; ++attempt) {
    Arguments call(operation, random);
    call.SetChoice(choice);
    trial = std::make_unique<Trial>(operation, std::move(call), Size{67, 3});
    if (trial->Expect(reference).error == LX_OK) break;
  }
  return trial;
}

// One thread calls as often as it can; what another one gets must not know of it: each has arguments,
// an error state and an overlay colour of its own.
void ExpectApart(const Operation& operation, int choice, const Reference& reference) {
  constexpr int kTurns = 40;
  constexpr auto kMost = std::chrono::milliseconds(8);
  std::atomic<int> calls{0};
  std::atomic<bool> done{false};
  std::thread caller([&] {
    const auto trial = DrawTrial(operation, choice, reference, "caller");
    for (trial->Prepare(); !done; ++calls) {
      PicSetOverlayColor({static_cast<std::uint8_t>(calls), 2, 3});
      trial->Call();
      LxSetError(LX_ERROR_INTERNAL);
    }
    trial->Expect(reference);
    trial->Run();
    EXPECT_EQ(trial->Difference(), "") << operation.signature << trial->call.Text();
  });
  const auto trial = DrawTrial(operation, choice, reference, "other");
  while (calls == 0) std::this_thread::yield();
  const auto end = std::chrono::steady_clock::now() + kMost;
  const auto isEarly = [&] { return std::chrono::steady_clock::now() < end; };
  std::string difference;
  for (int turn = 0; turn < kTurns || (calls < kTurns && isEarly()); ++turn) {
    trial->Run();
    difference = trial->Difference();
    if (!difference.empty()) break;
  }
  done = true;
  caller.join();
  EXPECT_EQ(difference, "") << operation.signature << trial->call.Text();
}

TEST(Contract, ThreadsDoNotKnowOfEachOther) {
  ForEveryOperation([](const Operation& operation, int choice) {
    const Reference* const reference = FindReference(operation.signature);
    if (reference != nullptr) ExpectApart(operation, choice, *reference);
  });
}

}  // namespace
}  // namespace lx::test
