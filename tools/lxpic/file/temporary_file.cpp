// SPDX-License-Identifier: Apache-2.0
// The handler of a signal may touch nothing that is allocated or locked, so the names of temporary
// files lie in a fixed table. A file exists only while its name is in the table, and none is made
// once a handler reads it.
#include "tools/lxpic/file/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

namespace {

enum class State {
  kFree,
  kTaken,
  kNamed
};

struct Slot {
  std::atomic<State> state = State::kFree;
  std::array<char, PATH_MAX> path{};
};

// More than there are threads, each of which writes one file at a time.
std::array<Slot, 320> slots;
std::atomic<bool> stopping = false;

constexpr std::array kEndingSignals = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU};

extern "C" void RemoveFilesAndEnd(int signal) {
  stopping = true;
  for (const Slot& each : slots) {
    if (each.state == State::kNamed) unlink(each.path.data());
  }
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

// A signal that is ignored, as by nohup, stays so.
bool HandleSignals() {
  for (const int signal : kEndingSignals) {
    if (std::signal(signal, RemoveFilesAndEnd) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
  // A file that grows beyond its limit is an error like a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  return true;
}

std::size_t TakeSlot() {
  for (std::size_t i = 0; i < slots.size(); ++i) {
    State expected = State::kFree;
    if (slots[i].state.compare_exchange_strong(expected, State::kTaken)) return i;
  }
  throw Failure(kFileFailed, "too many files are written at once");
}

[[noreturn]] void CannotBeMade(int error) {
  throw Failure(kFileFailed, std::string("cannot be opened: ") + std::strerror(error));
}

// Names the file of a slot and makes it; -1 and errno as open() leaves them.
int MakeFile(Slot& slot, const std::string& start, unsigned number) {
  std::snprintf(slot.path.data(), slot.path.size(), "%s%u", start.c_str(), number);
  slot.state = State::kNamed;
  while (stopping) pause();
  const int made = open(slot.path.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (made < 0) slot.state = State::kTaken;
  return made;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& target) {
  static const bool handled = HandleSignals();
  static_cast<void>(handled);
  static std::atomic<unsigned> count = 0;
  const std::string start = (std::filesystem::path(target).parent_path() / ".lxpic-").string() +
                            std::to_string(getpid()) + "-";
  if (start.size() + 16 > PATH_MAX) CannotBeMade(ENAMETOOLONG);
  slot = TakeSlot();
  int error = EEXIST;
  // Another program of the same number may have left its files.
  for (int attempt = 0; descriptor < 0 && error == EEXIST && attempt < 1000; ++attempt) {
    descriptor = MakeFile(slots[slot], start, count++);
    error = errno;
  }
  if (descriptor >= 0) return;
  slots[slot].state = State::kFree;
  CannotBeMade(error);
}

TemporaryFile::~TemporaryFile() {
  if (slots[slot].state == State::kNamed) unlink(slots[slot].path.data());
  slots[slot].state = State::kFree;
}

void TemporaryFile::Rename(const std::string& target) {
  if (std::rename(slots[slot].path.data(), target.c_str()) != 0) {
    throw Failure(kFileFailed, std::string("cannot be replaced: ") + std::strerror(errno));
  }
  slots[slot].state = State::kTaken;
}

}  // namespace lx::tool
