// SPDX-License-Identifier: Apache-2.0
// Says which case was running when a test touches memory that it must not.
#pragma once

#include <string>

namespace lx::test {

/// While it lives, an invalid memory access is reported with these values before it ends the test.
/// The strings must outlive the note.
class CrashNote {
 public:
  CrashNote(const std::string& operation, const std::string& path, int width, int height);
  ~CrashNote();
  CrashNote(const CrashNote&) = delete;
  CrashNote& operator=(const CrashNote&) = delete;
};

}  // namespace lx::test
