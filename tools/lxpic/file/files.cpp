// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/format.h"

namespace lx::tool {

namespace {

using PixelMask = unsigned;

constexpr PixelMask MaskOf(Pixel pixel) { return 1U << static_cast<unsigned>(pixel); }

constexpr PixelMask kGrey = MaskOf(Pixel::kBW8) | MaskOf(Pixel::kBW16);
constexpr PixelMask kColour = MaskOf(Pixel::kC24);

// The first bytes that tell a format, if they do.
struct Magic {
  std::string_view bytes;
  const char* format;
  ImageValue (*read)(const std::string&);
};

using namespace std::string_view_literals;
constexpr std::array kMagics = {Magic{"\x89PNG\r\n\x1a\n"sv, "PNG", ReadPng},
                                Magic{"\xFF\xD8\xFF"sv, "JPEG", ReadJpeg},
                                Magic{"II*\0"sv, "TIFF", ReadTiff},
                                Magic{"MM\0*"sv, "TIFF", ReadTiff},
                                Magic{"II+\0"sv, "TIFF", ReadTiff},
                                Magic{"MM\0+"sv, "TIFF", ReadTiff},
                                Magic{"P2"sv, "PGM", ReadPnm},
                                Magic{"P3"sv, "PPM", ReadPnm},
                                Magic{"P4"sv, "PBM", ReadPnm},
                                Magic{"P5"sv, "PGM", ReadPnm},
                                Magic{"P6"sv, "PPM", ReadPnm}};

struct Extension {
  std::string_view name;
  const char* format;
  PixelMask holds;
  void (*write)(const std::string&, const ImageValue&);
};

constexpr std::array kExtensions = {
    Extension{".png", "PNG", kGrey | kColour, WritePng},
    Extension{".tif", "TIFF", kGrey | kColour, WriteTiff},
    Extension{".tiff", "TIFF", kGrey | kColour, WriteTiff},
    Extension{".jpg", "JPEG", MaskOf(Pixel::kBW8) | kColour, WriteJpeg},
    Extension{".jpeg", "JPEG", MaskOf(Pixel::kBW8) | kColour, WriteJpeg},
    Extension{".pgm", "PGM", kGrey, WritePnm},
    Extension{".ppm", "PPM", kColour, WritePnm},
    Extension{".pnm", "PNM", kGrey | kColour, WritePnm}};

const Extension* FindExtension(const std::string& path) {
  std::string name = std::filesystem::path(path).extension().string();
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const auto* const found = std::find_if(kExtensions.begin(), kExtensions.end(),
                                         [&](const Extension& each) { return each.name == name; });
  return found == kExtensions.end() ? nullptr : found;
}

const Magic& FindMagic(const std::string& path) {
  char head[8] = {};
  const File file = OpenFile(path, "rb");
  const std::size_t count = std::fread(head, 1, sizeof head, file.get());
  if (std::ferror(file.get()) != 0) {
    throw Failure(kFileFailed, std::string("cannot be read: ") + std::strerror(errno));
  }
  const std::string_view start(head, count);
  const auto* const found = std::find_if(kMagics.begin(), kMagics.end(), [&](const Magic& each) {
    return start.substr(0, each.bytes.size()) == each.bytes;
  });
  if (found == kMagics.end()) {
    throw Failure(kFileFailed, count == 0 ? "the file is empty"
                                          : "not an image: PNG, TIFF, JPEG and PNM are read");
  }
  return *found;
}

template <class From, class To>
ImageValue Converted(const ImageValue& image, Pixel to) {
  ImageValue made(to, image.Width(), image.Height());
  PicConvert(&image.As<From>(), &made.As<To>());
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, catalogue::ErrorName(LxGetError()));
  return made;
}

ImageValue GreyFromBinary(const ImageValue& image) {
  ImageValue made(Pixel::kBW8, image.Width(), image.Height());
  for (int y = 0; y < image.Height(); ++y) {
    for (int x = 0; x < image.Width(); ++x) {
      made.Row(y)[x] = image.As<int>().GetPixel(x, y) != 0 ? 255 : 0;
    }
  }
  return made;
}

// The image as a type that files know, if that keeps its meaning.
ImageValue Presentable(const ImageValue& image, PixelMask holds) {
  switch (image.PixelType()) {
    case Pixel::kC15:
      return Converted<LxC15, LxC24>(image, Pixel::kC24);
    case Pixel::kC16:
      return Converted<LxC16, LxC24>(image, Pixel::kC24);
    case Pixel::kC24A:
      return Converted<LxC24A, LxC24>(image, Pixel::kC24);
    case Pixel::kBinary:
      return Presentable(GreyFromBinary(image), holds);
    case Pixel::kBW8:
      if ((holds & kGrey) == 0) return Converted<LxBW8, LxC24>(image, Pixel::kC24);
      [[fallthrough]];
    default:
      return image;
  }
}

std::string KnownExtensions() {
  std::vector<std::string> names;
  for (const Extension& each : kExtensions) names.emplace_back(each.name);
  return Join(names, ", ");
}

void WriteAs(const Extension& extension, const std::string& path, const ImageValue& image) {
  const ImageValue shown = Presentable(image, extension.holds);
  if ((extension.holds & MaskOf(shown.PixelType())) == 0) {
    throw Failure(kFileFailed, std::string(extension.format) + " cannot hold " + shown.TypeName() +
                                   " pixels; convert the image first");
  }
  if (shown.Width() == 0 || shown.Height() == 0) {
    throw Failure(kFileFailed, "an image without pixels cannot be written");
  }
  try {
    extension.write(path, shown);
  } catch (const Failure&) {
    // Half an image is worse than none.
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) std::filesystem::remove(path, ignored);
    throw;
  }
}

}  // namespace

ImageValue ReadImage(const std::string& path) {
  try {
    return FindMagic(path).read(path);
  } catch (const Failure& failure) {
    throw Failure(kFileFailed, path + ": " + failure.what());
  }
}

void WriteImage(const std::string& path, const ImageValue& image) {
  CheckExtension(path);
  try {
    WriteAs(*FindExtension(path), path, image);
  } catch (const Failure& failure) {
    throw failure.Of(path);
  }
}

std::string FormatOf(const std::string& path) {
  try {
    return FindMagic(path).format;
  } catch (const Failure& failure) {
    throw failure.Of(path);
  }
}

bool HasKnownExtension(const std::string& path) { return FindExtension(path) != nullptr; }

void CheckExtension(const std::string& path) {
  if (HasKnownExtension(path)) return;
  throw Failure(kWrongUsage, path + ": the name must end with one of these: " + KnownExtensions());
}

}  // namespace lx::tool
