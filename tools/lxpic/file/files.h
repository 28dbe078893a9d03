// SPDX-License-Identifier: Apache-2.0
// Image files: read by their content, written by the extension of their name or as a word says.
#pragma once

#include <string>

#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

/// An image and the name of the format that it was read from, for instance "PNG".
struct FileContent {
  ImageValue image;
  std::string format;
};

/// Reads an image of type bw8, bw16 or c24, c24 with blue in byte 0. An alpha channel is dropped,
/// and of 16-bit colours the upper 8 bits are kept. "-" is standard input. The file is read once
/// and in order. Throws Failure, which names the file.
FileContent ReadFile(const std::string& path);
/// The image alone.
ImageValue ReadImage(const std::string& path);
/// One of bw8. Throws Failure for any other.
ImageValue ReadGrey(const std::string& path);

/// Writes `image` in the format `format`, an extension without its dot; or left out in that of the
/// name's own extension, or PNG to standard output, pipes and devices. Packed colours and colours
/// with alpha are written as c24, binary images as bw8 with 0 and 255. What was there is replaced
/// when all is written. Throws Failure, which names the file.
void WriteImage(const std::string& path, const ImageValue& image, const std::string& format = "");

/// Throws Failure (kWrongUsage) when neither `format` nor `path` tells a format.
void CheckFormat(const std::string& path, const std::string& format = "");
/// Whether a format has the extension of `path`.
bool HasKnownExtension(const std::string& path);

/// How many pixels an image file may have; files whose reading takes more memory have a part of it.
inline constexpr unsigned long kDefaultMaxPixels = 1UL << 27;
void SetMaxPixels(unsigned long count);
unsigned long MaxPixels();

}  // namespace lx::tool
