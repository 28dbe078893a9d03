// SPDX-License-Identifier: Apache-2.0
#include "support/crash_note.h"

#include <signal.h>

#include <cstdio>

namespace lx::test {

namespace {

struct Running {
  const char* operation;
  const char* path;
  int width;
  int height;
};
Running running{};
struct sigaction previous {};

// Puts the former handler back and returns, so that the access is repeated and ends the test.
void Report(int signal) {
  if (running.operation != nullptr) {
    std::fprintf(stderr, "invalid access in %s, %dx%d, %s\n", running.operation, running.width,
                 running.height, running.path);
  }
  sigaction(signal, &previous, nullptr);
}

void Install() {
  struct sigaction action {};
  action.sa_handler = Report;
  sigaction(SIGSEGV, &action, &previous);
}

}  // namespace

CrashNote::CrashNote(const std::string& operation, const std::string& path, int width, int height) {
  static const bool installed = (Install(), true);
  static_cast<void>(installed);
  running = {operation.c_str(), path.c_str(), width, height};
}

CrashNote::~CrashNote() { running = {}; }

}  // namespace lx::test
