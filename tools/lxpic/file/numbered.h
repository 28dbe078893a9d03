// SPDX-License-Identifier: Apache-2.0
// Names of files that belong together.
#pragma once

#include <string>

namespace lx::tool {

/// "out/level-07.png" for file 7 of 100 of "out/level.png".
std::string NumberedPath(const std::string& path, int number, int count);

}  // namespace lx::tool
