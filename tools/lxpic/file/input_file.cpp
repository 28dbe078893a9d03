// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "tools/lxpic/common/failure.h"

namespace lx::tool {

namespace {

template <class Call>
ssize_t Uninterrupted(const Call& call) {
  ssize_t result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : isOwn(path != kStandardStream), buffer(kBufferSize) {
  if (isOwn) descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) {
    throw Failure(kFileFailed, std::string("cannot be opened: ") + std::strerror(errno));
  }
  struct stat status {};
  const off_t place = lseek(descriptor, 0, SEEK_CUR);
  if (place < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return;
  start = static_cast<std::uint64_t>(place);
  size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size - place, 0));
}

InputFile::~InputFile() {
  if (isOwn) close(descriptor);
}

// Adds what comes next behind what is still to be read.
bool InputFile::Fill() noexcept {
  std::copy(buffer.begin() + static_cast<std::ptrdiff_t>(next),
            buffer.begin() + static_cast<std::ptrdiff_t>(end), buffer.begin());
  end -= next;
  next = 0;
  const ssize_t count =
      Uninterrupted([&] { return read(descriptor, buffer.data() + end, buffer.size() - end); });
  if (count < 0) error = errno;
  if (count > 0) end += static_cast<std::size_t>(count);
  return count > 0;
}

std::string_view InputFile::Peek(std::size_t count) {
  while (end - next < count && Fill()) {
  }
  return {reinterpret_cast<const char*>(buffer.data()) + next, std::min(count, end - next)};
}

std::size_t InputFile::Read(void* target, std::size_t count) noexcept {
  std::size_t done = 0;
  while (done < count && (next < end || Fill())) {
    const std::size_t part = std::min(count - done, end - next);
    std::memcpy(static_cast<unsigned char*>(target) + done, buffer.data() + next, part);
    next += part;
    done += part;
  }
  return done;
}

std::string InputFile::ReadAll(std::size_t most) {
  std::string all;
  while (next < end || Fill()) {
    all.append(reinterpret_cast<const char*>(buffer.data()) + next, end - next);
    next = end;
    if (all.size() > most) {
      throw Failure(kFileFailed, "larger than " + std::to_string(most) + " bytes");
    }
  }
  CheckRead();
  return all;
}

void InputFile::CheckRead() const {
  if (error == 0) return;
  throw Failure(kFileFailed, std::string("cannot be read: ") + std::strerror(error));
}

std::size_t InputFile::ReadAt(std::uint64_t place, void* target, std::size_t count) noexcept {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t part = Uninterrupted([&] {
      return pread(descriptor, static_cast<unsigned char*>(target) + done, count - done,
                   static_cast<off_t>(start + place + done));
    });
    if (part < 0) error = errno;
    if (part <= 0) break;
    done += static_cast<std::size_t>(part);
  }
  return done;
}

std::string ReadText(const std::string& path, std::size_t most) {
  try {
    return InputFile(path).ReadAll(most);
  } catch (const Failure& failure) {
    throw failure.Of(ShownInput(path));
  }
}

std::string ShownInput(const std::string& path) {
  return path == kStandardStream ? "standard input" : path;
}

}  // namespace lx::tool
