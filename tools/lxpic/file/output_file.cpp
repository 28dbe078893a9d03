// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/identity.h"

namespace lx::tool {

namespace {

[[noreturn]] void Fail(const char* what, int error) {
  throw Failure(kFileFailed, std::string(what) + ": " + std::strerror(error));
}

}  // namespace

OutputFile::OutputFile(const std::string& path) {
  buffer.reserve(kBufferSize);
  if (IsStream(path)) {
    OpenStream(path);
  } else {
    OpenBeside(path);
  }
}

void OutputFile::OpenStream(const std::string& path) {
  if (IsStandardOutput(path)) {
    std::fflush(stdout);
    descriptor = dup(STDOUT_FILENO);
  } else {
    descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  }
  if (descriptor < 0) Fail("cannot be opened", errno);
}

// A new file may be put in the place of one that is protected, which its owner would not expect.
void OutputFile::OpenBeside(const std::string& path) {
  target = WithoutLinks(path);
  struct stat old {};
  const bool replaces = stat(target.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) Fail("cannot be opened", EISDIR);
  if (replaces && access(target.c_str(), W_OK) != 0) Fail("cannot be opened", errno);
  temporary = std::make_unique<TemporaryFile>(target);
  descriptor = temporary->Descriptor();
  if (!replaces) return;
  // Only some may give a file away; whoever may not, owns the new one.
  if (fchown(descriptor, old.st_uid, old.st_gid) != 0) errno = 0;
  if (fchmod(descriptor, old.st_mode & 0777) == 0) return;
  const int failed = errno;
  close(descriptor);
  Fail("cannot be written", failed);
}

OutputFile::~OutputFile() {
  if (descriptor >= 0) close(descriptor);
}

void OutputFile::Write(const void* data, std::size_t count) noexcept {
  const auto* const bytes = static_cast<const unsigned char*>(data);
  if (buffer.size() + count > kBufferSize) {
    Send(buffer.data(), buffer.size());
    buffer.clear();
  }
  if (count >= kBufferSize) {
    Send(bytes, count);
  } else {
    buffer.insert(buffer.end(), bytes, bytes + count);
  }
}

void OutputFile::Send(const unsigned char* data, std::size_t count) noexcept {
  while (count > 0 && error == 0) {
    const ssize_t sent = write(descriptor, data, count);
    if (sent >= 0) {
      data += sent;
      count -= static_cast<std::size_t>(sent);
    } else if (errno != EINTR) {
      error = errno;
    }
  }
}

void OutputFile::Finish() {
  Send(buffer.data(), buffer.size());
  buffer.clear();
  const bool closed = close(descriptor) == 0;
  descriptor = -1;
  if (!closed && error == 0) error = errno;
  if (error != 0) Fail("cannot be written", error);
  if (temporary) temporary->Rename(target);
}

void WriteText(const std::string& path, std::string_view text) {
  try {
    OutputFile file(path);
    file.Write(text.data(), text.size());
    file.Finish();
  } catch (const Failure& failure) {
    throw failure.Of(path);
  }
}

}  // namespace lx::tool
