// SPDX-License-Identifier: Apache-2.0
// What the file formats share. Their functions throw Failure without naming the file; those that
// read leave it to their caller to tell an end of the file from a failure of the system.
#pragma once

#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/file/input_file.h"
#include "tools/lxpic/file/output_file.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

ImageValue ReadPng(InputFile& file);
void WritePng(OutputFile& file, const ImageValue& image);

ImageValue ReadJpeg(InputFile& file);
void WriteJpeg(OutputFile& file, const ImageValue& image);

ImageValue ReadTiff(InputFile& file);
void WriteTiff(OutputFile& file, const ImageValue& image);

ImageValue ReadPnm(InputFile& file);
void WritePnm(OutputFile& file, const ImageValue& image);

/// An image for the pixels of a file. Refuses sizes that only a damaged file would claim, and more
/// than MaxPixels() / `cost`, where reading takes `cost` times the memory that the image does.
ImageValue MakeImageFor(Pixel pixel, unsigned long width, unsigned long height,
                        unsigned long cost = 1);

/// Addresses of the rows, top row first.
std::vector<unsigned char*> Rows(const ImageValue& image);

/// The failure of a format's codec, which tells why; "" where it does not.
Failure NotReadable(const char* format, const std::string& reason);

/// Where the C libraries leave the text of their error before they jump out.
struct ErrorText {
  char text[256] = "";
};

}  // namespace lx::tool
