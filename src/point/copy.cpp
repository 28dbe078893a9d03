// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/copy.h"

#include "foundation/frame.h"
#include "point/copy_rows.h"

namespace {

using namespace lx;
using namespace lx::point;

template <class T>
void Copy(const char* trace, LxROI<T>* source, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (Usable({source, destination})) CopyRows(MapOf(destination, source), sizeof(T));
  });
}

template <class T>
void FillWith(const char* trace, std::uint16_t word, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (Usable({destination})) FillWords(WithConstant(MapOf(destination), word));
  });
}

}  // namespace

void PicCopy(LxBW8 value, LxROI<LxBW8>* destination) {
  RunOperation("PicCopy ( BW8 Const to Image)", [&] {
    if (Usable({destination})) FillBytes(WithConstant(MapOf(destination), value));
  });
}

void PicCopy(LxC24 value, LxROI<LxC24>* destination) {
  RunOperation("PicCopy (C24 Const)", [&] {
    if (!Usable({destination})) return;
    FillBytes(WithConstant(ComponentMapOf(destination), value));
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
