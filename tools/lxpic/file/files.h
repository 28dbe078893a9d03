// SPDX-License-Identifier: Apache-2.0
// Image files: read by their content, written by the extension of their name.
#pragma once

#include <string>

#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

/// Reads an image of type bw8, bw16 or c24, c24 with blue in byte 0. An alpha channel is dropped,
/// and of 16-bit colours the upper 8 bits are kept. Throws Failure, which names the file.
ImageValue ReadImage(const std::string& path);

/// Writes `image` in the format that the extension names. Packed colours and colours with alpha
/// are written as c24, binary images as bw8 with 0 and 255. Throws Failure, which names the file.
void WriteImage(const std::string& path, const ImageValue& image);

/// Name of the format of a file's content, for instance "PNG". Throws Failure like ReadImage.
std::string FormatOf(const std::string& path);

/// Throws Failure (kWrongUsage) when no format has the extension of `path`.
void CheckExtension(const std::string& path);
/// Whether a format has the extension of `path`.
bool HasKnownExtension(const std::string& path);

}  // namespace lx::tool
