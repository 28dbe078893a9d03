// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/copy.h"

#include "foundation/frame.h"
#include "point/copy_rows.h"

namespace {

template <class T>
void Copy(const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  lx::RunOperation(trace, [&] {
    if (lx::Usable({source, destination})) lx::CopyRows(lx::MapOf(destination, source), sizeof(T));
  });
}

template <class T>
void FillWith(const char* trace, std::uint16_t word, LxROI<T>* destination) {
  lx::RunOperation(trace, [&] {
    if (lx::Usable({destination})) lx::FillWords(lx::WithConstant(lx::MapOf(destination), word));
  });
}

}  // namespace

void PicCopy(LxBW8 value, LxROI<LxBW8>* destination) {
  lx::RunOperation("PicCopy ( BW8 Const to Image)", [&] {
    if (lx::Usable({destination})) lx::FillBytes(lx::WithConstant(lx::MapOf(destination), value));
  });
}

void PicCopy(LxC24 value, LxROI<LxC24>* destination) {
  lx::RunOperation("PicCopy (C24 Const)", [&] {
    if (!lx::Usable({destination})) return;
    lx::FillBytes(lx::WithConstant(lx::ComponentMapOf(destination), value));
  });
}

void PicCopy(LxBW16 value, LxROI<LxBW16>* destination) {
  FillWith("PicCopy (BW16 Const)", value, destination);
}

void PicCopy(LxC15 value, LxROI<LxC15>* destination) {
  FillWith("PicCopy (C15 Const)", value.word, destination);
}

void PicCopy(LxC16 value, LxROI<LxC16>* destination) {
  FillWith("PicCopy (C16 Const)", value.word, destination);
}

void PicCopy(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  Copy("PicCopy ( BW8 Image to Image)", source, destination);
}

void PicCopy(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  Copy("PicCopy (BW16 Image)", source, destination);
}

void PicCopy(LxROI<LxC24>* source, LxROI<LxC24>* destination) {
  Copy("PicCopy ( C24 Image)", source, destination);
}

void PicCopy(LxROI<LxC15>* source, LxROI<LxC15>* destination) {
  Copy("PicCopy ( C15 Image)", source, destination);
}

void PicCopy(LxROI<LxC16>* source, LxROI<LxC16>* destination) {
  Copy("PicCopy ( C16 Image)", source, destination);
}
