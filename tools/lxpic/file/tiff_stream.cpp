// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/file/tiff_stream.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <new>

#include "tools/lxpic/file/files.h"

namespace lx::tool {

// A file that can be read at any place, or else the content itself.
struct TiffStream::Bytes {
  InputFile* file = nullptr;
  std::string content;
  std::uint64_t place = 0;

  std::uint64_t Size() const { return file != nullptr ? *file->Size() : content.size(); }

  std::size_t Read(void* target, std::size_t count) {
    if (file != nullptr) return file->ReadAt(place, target, count);
    if (place >= content.size()) return 0;
    return content.copy(static_cast<char*>(target), count, place);
  }

  std::size_t Write(const void* data, std::size_t count) {
    if (file != nullptr) return 0;
    try {
      content.resize(std::max<std::size_t>(content.size(), place + count));
    } catch (const std::exception&) {
      return 0;
    }
    std::memcpy(content.data() + place, data, count);
    return count;
  }

  static Bytes& Of(thandle_t handle) { return *static_cast<Bytes*>(handle); }
  tmsize_t Moved(std::size_t count) {
    place += count;
    return static_cast<tmsize_t>(count);
  }
};

namespace {

int OnError(TIFF* /*tiff*/, void* kept, const char* /*module*/, const char* format,
            va_list arguments) {
  auto* const error = static_cast<ErrorText*>(kept);
  if (error->text[0] == '\0') std::vsnprintf(error->text, sizeof error->text, format, arguments);
  return 1;
}

int OnWarning(TIFF* /*tiff*/, void* /*kept*/, const char* /*module*/, const char* /*format*/,
              va_list /*arguments*/) {
  return 1;
}

struct OptionsFreer {
  void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

// As much as a picture of 16-bit colours can take, and what a file has besides.
std::size_t MostBytes() { return 6 * MaxPixels() + (1UL << 20); }

}  // namespace

TiffStream::TiffStream(InputFile& file) : bytes(new Bytes, [](Bytes* each) { delete each; }) {
  if (file.Size()) {
    bytes->file = &file;
  } else {
    bytes->content = file.ReadAll(MostBytes());
  }
  Open("rm");
}

TiffStream::TiffStream() : bytes(new Bytes, [](Bytes* each) { delete each; }) { Open("w"); }

void TiffStream::Open(const char* mode) {
  const std::unique_ptr<TIFFOpenOptions, OptionsFreer> options(TIFFOpenOptionsAlloc());
  if (!options) throw std::bad_alloc();
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), OnError, &error);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), OnWarning, nullptr);
  TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(MostBytes()));
  tiff.reset(TIFFClientOpenExt(
      "TIFF", mode, bytes.get(),
      [](thandle_t handle, void* target, tmsize_t count) {
        Bytes& all = Bytes::Of(handle);
        return all.Moved(all.Read(target, static_cast<std::size_t>(count)));
      },
      [](thandle_t handle, void* data, tmsize_t count) {
        Bytes& all = Bytes::Of(handle);
        return all.Moved(all.Write(data, static_cast<std::size_t>(count)));
      },
      [](thandle_t handle, toff_t offset, int whence) {
        Bytes& all = Bytes::Of(handle);
        const std::uint64_t from = whence == SEEK_SET   ? 0
                                   : whence == SEEK_CUR ? all.place
                                                        : all.Size();
        all.place = from + offset;
        return toff_t{all.place};
      },
      [](thandle_t) { return 0; },
      [](thandle_t handle) { return toff_t{Bytes::Of(handle).Size()}; },
      [](thandle_t, void**, toff_t*) { return 0; }, [](thandle_t, void*, toff_t) {},
      options.get()));
}

const std::string& TiffStream::Finish() {
  tiff.reset();
  return bytes->content;
}

}  // namespace lx::tool
