// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace lx::tool {

enum class DrawingFormat {
  kPng,
  kSvg
};

/// The format that the extension of the name tells, if it does.
std::optional<DrawingFormat> DrawingFormatOf(const std::string& path);

}  // namespace lx::tool
