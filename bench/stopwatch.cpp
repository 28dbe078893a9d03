// SPDX-License-Identifier: Apache-2.0
#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "common/median.h"

namespace lx::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kShortest = 0.001;  // a repetition in seconds, far above the clock's step
constexpr int kFewest = 7;
constexpr int kMost = 400;

double SecondsOf(const Job& job, int times) {
  const auto start = Clock::now();
  for (int i = 0; i < times; ++i) job();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// A competitor and how often it runs in one repetition.
struct Runner {
  const Job* job;
  int times;
  std::vector<double> seconds;  // of one run, by repetition
};

Runner Prepare(const Job& job) {
  if (!job) return {&job, 0, {}};
  SecondsOf(job, 1);
  const double once = std::max(SecondsOf(job, 1), 1e-7);
  return {&job, std::max(1, static_cast<int>(std::ceil(kShortest / once))), {}};
}

void RunOnce(Runner& runner) {
  if (runner.times == 0) return;
  // Untimed and as often, so that it finds its own images in the caches whoever ran before.
  SecondsOf(*runner.job, runner.times);
  runner.seconds.push_back(SecondsOf(*runner.job, runner.times) / runner.times);
}

}  // namespace

double Timing::Ratio(std::size_t a, std::size_t b) const {
  std::vector<double> quotients;
  for (std::size_t i = 0; i < std::min(seconds[a].size(), seconds[b].size()); ++i) {
    quotients.push_back(seconds[a][i] / seconds[b][i]);
  }
  return quotients.empty() ? 0 : Median(quotients);
}

double Timing::Microseconds(std::size_t job) const {
  return seconds[job].empty() ? 0 : 1e6 * Median(seconds[job]);
}

Timing TimeSideBySide(const std::vector<Job>& jobs, double duration) {
  std::vector<Runner> runners;
  for (const Job& job : jobs) runners.push_back(Prepare(job));
  const auto start = Clock::now();
  for (int repetition = 0; repetition < kMost; ++repetition) {
    const double spent = std::chrono::duration<double>(Clock::now() - start).count();
    if (repetition >= kFewest && spent > duration) break;
    RunOnce(runners.front());
    // The others turn round each time: who follows the first finds the caches full of its images.
    for (std::size_t i = 1; i < runners.size(); ++i) {
      RunOnce(runners[repetition % 2 == 0 ? i : runners.size() - i]);
    }
  }
  std::vector<std::vector<double>> seconds;
  for (Runner& runner : runners) seconds.push_back(std::move(runner.seconds));
  return Timing(std::move(seconds));
}

}  // namespace lx::bench
