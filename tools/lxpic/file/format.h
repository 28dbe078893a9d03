// SPDX-License-Identifier: Apache-2.0
// What the file formats share. Their functions throw Failure without naming the file.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/value/image_value.h"

namespace lx::tool {

ImageValue ReadPng(const std::string& path);
void WritePng(const std::string& path, const ImageValue& image);

ImageValue ReadJpeg(const std::string& path);
void WriteJpeg(const std::string& path, const ImageValue& image);

ImageValue ReadTiff(const std::string& path);
void WriteTiff(const std::string& path, const ImageValue& image);

ImageValue ReadPnm(const std::string& path);
void WritePnm(const std::string& path, const ImageValue& image);

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

File OpenFile(const std::string& path, const char* mode);
/// Closes a file that was written, and fails when not all of it reached the disk.
void CloseWritten(File file);

/// An image for the pixels of a file. Refuses sizes that only a damaged file would claim.
ImageValue MakeImageFor(Pixel pixel, unsigned long width, unsigned long height);

/// Addresses of the rows, top row first.
std::vector<unsigned char*> Rows(const ImageValue& image);

/// Where the C libraries leave the text of their error before they jump out.
struct ErrorText {
  char text[256] = "";
};

}  // namespace lx::tool
