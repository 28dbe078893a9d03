// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>

#include "tools/lxpic/common/words.h"
#include "tools/lxpic/file/format.h"
#include "tools/lxpic/file/identity.h"

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
  ImageValue (*read)(InputFile&);
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
  void (*write)(OutputFile&, const ImageValue&);
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

const Extension* FindExtension(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const auto* const found = std::find_if(kExtensions.begin(), kExtensions.end(),
                                         [&](const Extension& each) { return each.name == name; });
  return found == kExtensions.end() ? nullptr : found;
}

std::string KnownExtensions() {
  std::vector<std::string> names;
  for (const Extension& each : kExtensions) names.emplace_back(each.name);
  return Join(names, ", ");
}

const Extension& ChooseFormat(const std::string& path, const std::string& format) {
  const std::string own = std::filesystem::path(path).extension().string();
  const Extension* found = FindExtension(format.empty() ? own : "." + format);
  if (found == nullptr && format.empty() && IsStream(path)) found = kExtensions.data();
  if (found != nullptr) return *found;
  throw Failure(kWrongUsage,
                format.empty()
                    ? path + ": the name must end with one of these: " + KnownExtensions()
                    : "'" + format + "' is none of these: " + KnownExtensions());
}

const Magic& FindMagic(InputFile& file) {
  const std::string_view start = file.Peek(8);
  file.CheckRead();
  const auto* const found = std::find_if(kMagics.begin(), kMagics.end(), [&](const Magic& each) {
    return start.substr(0, each.bytes.size()) == each.bytes;
  });
  if (found == kMagics.end()) {
    throw Failure(kFileFailed, start.empty() ? "the file is empty"
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

void WriteAs(const Extension& extension, const std::string& path, const ImageValue& image) {
  const ImageValue shown = Presentable(image, extension.holds);
  if ((extension.holds & MaskOf(shown.PixelType())) == 0) {
    throw Failure(kFileFailed, std::string(extension.format) + " cannot hold " + shown.TypeName() +
                                   " pixels; convert the image first");
  }
  if (shown.Width() == 0 || shown.Height() == 0) {
    throw Failure(kFileFailed, "an image without pixels cannot be written");
  }
  OutputFile file(path);
  extension.write(file, shown);
  file.Finish();
}

FileContent ReadFrom(InputFile& file) {
  const Magic& magic = FindMagic(file);
  try {
    return {magic.read(file), magic.format};
  } catch (const Failure&) {
    file.CheckRead();
    throw;
  }
}

}  // namespace

FileContent ReadFile(const std::string& path) {
  try {
    InputFile file(path);
    return ReadFrom(file);
  } catch (const Failure& failure) {
    throw Failure(kFileFailed, ShownInput(path) + ": " + failure.what());
  }
}

ImageValue ReadImage(const std::string& path) { return ReadFile(path).image; }

ImageValue ReadGrey(const std::string& path) {
  ImageValue image = ReadImage(path);
  if (image.PixelType() == Pixel::kBW8) return image;
  throw Failure(kWrongUsage,
                path + " is " + image.TypeName() + ", not bw8: convert it to bw8 first");
}

void WriteImage(const std::string& path, const ImageValue& image, const std::string& format) {
  const Extension& extension = ChooseFormat(path, format);
  try {
    WriteAs(extension, path, image);
  } catch (const Failure& failure) {
    throw failure.Of(path);
  }
}

bool HasKnownExtension(const std::string& path) {
  return FindExtension(std::filesystem::path(path).extension().string()) != nullptr;
}

void CheckFormat(const std::string& path, const std::string& format) { ChooseFormat(path, format); }

}  // namespace lx::tool
