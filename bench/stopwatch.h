// SPDX-License-Identifier: Apache-2.0
// Times competitors side by side: their repetitions alternate, so that a machine's moods meet all
// of them alike.
#pragma once

#include <functional>
#include <vector>

namespace lx::bench {

using Job = std::function<void()>;

/// The seconds that one run of each competitor took, repetition by repetition.
class Timing {
 public:
  explicit Timing(std::vector<std::vector<double>> measured) : seconds(std::move(measured)) {}

  /// The median over the repetitions of how often job `a` took the time of job `b`; 0 when one of
  /// them is empty.
  double Ratio(std::size_t a, std::size_t b) const;
  /// The median time of a job in microseconds.
  double Microseconds(std::size_t job) const;

 private:
  std::vector<std::vector<double>> seconds;
};

/// Runs the jobs in turn, for about `duration` seconds in all. Empty jobs are left out.
Timing TimeSideBySide(const std::vector<Job>& jobs, double duration);

}  // namespace lx::bench
