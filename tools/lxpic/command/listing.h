// SPDX-License-Identifier: Apache-2.0
// What the tool tells about operations and image files.
#pragma once

#include <string>

namespace lx::tool {

/// Every form of the operations whose name contains `part`, grouped by name, one line each.
std::string ListText(const std::string& part);

/// Everything about the operation `name`. Throws Failure for an unknown name.
std::string HelpText(const std::string& name);

/// Format, size, pixel type and range of the values of an image file. Throws Failure.
std::string InfoText(const std::string& path);

}  // namespace lx::tool
