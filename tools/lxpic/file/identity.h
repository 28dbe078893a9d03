// SPDX-License-Identifier: Apache-2.0
// What the names of files stand for.
#pragma once

#include <string>

namespace lx::tool {

/// The name that a symbolic link stands for in the end, and any other name itself.
std::string WithoutLinks(const std::string& path);

/// Whether the name stands for the program's standard output.
bool IsStandardOutput(const std::string& path);

/// Whether the name stands for something that is written to as it is: standard output, a pipe, a
/// device.
bool IsStream(const std::string& path);

/// A text that is the same for two names of one file, one that is not there yet included; "" for
/// what may be read and written at the same time, as pipes and devices.
std::string IdentityOf(const std::string& path);

}  // namespace lx::tool
