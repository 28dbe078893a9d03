// SPDX-License-Identifier: Apache-2.0
// Times competitors side by side: their repetitions alternate, so that a machine's moods meet all
// of them alike.
#pragma once

#include <functional>
#include <vector>

namespace lx::bench {

using Job = std::function<void()>;

/// For each job, the median over the repetitions of its time as a multiple of the first job's time
/// in the same repetition; 0 for an empty job. Takes about `seconds` in all.
std::vector<double> TimeSideBySide(const std::vector<Job>& jobs, double seconds);

}  // namespace lx::bench
