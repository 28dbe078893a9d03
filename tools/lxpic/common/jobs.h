// SPDX-License-Identifier: Apache-2.0
// Many pieces of work on several threads, told of in their order.
#pragma once

#include <cstddef>
#include <functional>

namespace lx::tool {

/// Does one piece of work, and returns what the calling thread is to do when all pieces before it
/// are done. It throws nothing that it would not want the whole to end with.
using Job = std::function<std::function<void()>(std::size_t)>;

/// Does the pieces 0..`count` - 1 on `threads` threads, each with a Job of its own, and finishes
/// them in order on the calling thread. The first exception, of a job or of what it returned, ends
/// it and is thrown when all threads have stopped.
void RunJobs(std::size_t count, std::size_t threads, const std::function<Job()>& makeJob);

}  // namespace lx::tool
