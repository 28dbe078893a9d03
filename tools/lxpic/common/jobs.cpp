// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/common/jobs.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <future>
#include <thread>
#include <vector>

namespace lx::tool {

namespace {

using Finish = std::function<void()>;

class Threads {
 public:
  Threads(std::vector<std::promise<Finish>>& promises, std::size_t count,
          const std::function<Job()>& makeJob) {
    try {
      for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([this, &promises, job = makeJob()] { Work(promises, job); });
      }
    } catch (const std::exception&) {
      // Fewer threads do the same work.
      if (threads.empty()) throw;
    }
  }
  // Waits for all of them.
  ~Threads() { stopped = true; }
  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;

 private:
  void Work(std::vector<std::promise<Finish>>& promises, const Job& job) {
    for (std::size_t i = next++; i < promises.size() && !stopped; i = next++) {
      try {
        promises[i].set_value(job(i));
      } catch (...) {
        promises[i].set_exception(std::current_exception());
      }
    }
  }

  std::atomic<std::size_t> next = 0;
  std::atomic<bool> stopped = false;
  std::vector<std::jthread> threads;
};

}  // namespace

void RunJobs(std::size_t count, std::size_t threads, const std::function<Job()>& makeJob) {
  threads = std::min(threads, count);
  if (threads <= 1) {
    const Job job = makeJob();
    for (std::size_t i = 0; i < count; ++i) job(i)();
    return;
  }
  std::vector<std::promise<Finish>> promises(count);
  const Threads running(promises, threads, makeJob);
  for (std::promise<Finish>& each : promises) each.get_future().get()();
}

}  // namespace lx::tool
