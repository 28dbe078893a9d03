// SPDX-License-Identifier: Apache-2.0
// What the command lines of all commands have in common.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/lxpic/report/table.h"
#include "tools/lxpic/scene/pose.h"

namespace lx::tool {

using Arguments = std::vector<std::string>;

/// Parses the command line; false when it only asked for help, which has then been printed. Throws
/// Failure.
bool Parse(CLI::App& app, Arguments arguments);

/// The limit of image files.
void AddMaxPixels(CLI::App& app);

/// The word of --format. Throws Failure.
TableFormat ReadFormat(const std::string& word);

/// Refuses what CLI11 takes for a number, and what lies within no range.
std::string CheckNumber(const std::string& word);

/// "3,-1.5", the value of `option`. Throws Failure.
Point ReadPoint(const std::string& option, const std::string& word);

}  // namespace lx::tool
