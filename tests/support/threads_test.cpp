// SPDX-License-Identifier: Apache-2.0
// Calls of two threads at the same time.
#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "support/every_operation.h"
#include "support/trial.h"

namespace lx::test {
namespace {

constexpr int kThreads = 2;

/// Waits until all threads are here.
class Meeting {
 public:
  void Wait() {
    const int turn = turns;
    if (++waiting == kThreads) {
      waiting = 0;
      ++turns;
    }
    while (turns == turn) std::this_thread::yield();
  }

 private:
  std::atomic<int> waiting{0};
  std::atomic<int> turns{0};
};

/// A call with arguments of its own that succeeds, if one is found soon.
std::unique_ptr<Trial> DrawTrial(const Operation& operation, const Reference& reference,
                                 Random& random) {
  std::unique_ptr<Trial> trial;
  for (int attempt = 0; attempt < 20; ++attempt) {
    Arguments call(operation, random);
    call.SetChoice(static_cast<int>(random.Pick(ChoicesOf(operation))));
    trial = std::make_unique<Trial>(operation, std::move(call), Size{67, 3});
    if (trial->Expect(reference).error == LX_OK) break;
  }
  return trial;
}

void CallAll(const char* name, LxC24 colour, Meeting& meeting) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kTime = std::chrono::milliseconds(4);
  PicSetOverlayColor(colour);
  Random random(name);
  for (const Operation& operation : catalogue::All()) {
    const Reference* const reference = FindReference(operation.signature);
    if (reference == nullptr) continue;
    const auto trial = DrawTrial(operation, *reference, random);
    meeting.Wait();
    const auto end = Clock::now() + kTime;
    std::string difference;
    for (int turn = 0; difference.empty() && (turn < 5 || Clock::now() < end); ++turn) {
      trial->Run();
      difference = trial->Difference();
    }
    EXPECT_EQ(difference, "") << operation.signature << trial->call.Text();
  }
}

// Each with its own arguments, error state and overlay colour, on the same operation at a time.
TEST(Contract, ThreadsComputeSideBySide) {
  Meeting meeting;
  std::thread other(CallAll, "other", LxC24{1, 2, 3}, std::ref(meeting));
  CallAll("one", {9, 8, 7}, meeting);
  other.join();
  PicSetOverlayColor({0, 0, 255});
}

}  // namespace
}  // namespace lx::test
