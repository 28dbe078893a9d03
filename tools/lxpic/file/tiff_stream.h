// SPDX-License-Identifier: Apache-2.0
// libtiff on files that this program opens itself, and on memory.
#pragma once

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <string>

#include "tools/lxpic/file/format.h"

namespace lx::tool {

struct TiffCloser {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

/// A TIFF and the bytes below it.
class TiffStream {
 public:
  /// Reads `file`; from memory where it is a pipe.
  explicit TiffStream(InputFile& file);
  /// Writes to memory, as libtiff goes back in what it writes.
  TiffStream();
  TiffStream(const TiffStream&) = delete;
  TiffStream& operator=(const TiffStream&) = delete;

  /// Null when libtiff refuses the file.
  TIFF* Get() const { return tiff.get(); }
  /// The first error, the cause of those that follow from it; "" while there is none.
  std::string Error() const { return error.text; }
  /// Ends the writing; the bytes are those of a whole file.
  const std::string& Finish();

 private:
  struct Bytes;
  void Open(const char* mode);

  ErrorText error;
  std::unique_ptr<Bytes, void (*)(Bytes*)> bytes;
  std::unique_ptr<TIFF, TiffCloser> tiff;
};

}  // namespace lx::tool
