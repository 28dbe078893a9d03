// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/lut.h"

#include <bit>

#include "foundation/frame.h"
#include "point/lut_kernels.h"

namespace {

using namespace lx;
using namespace lx::point;

constexpr unsigned kTopBits = 0xFFFFFFFF;

// Each table is checked after the regions: there, and of the right length.
template <class Vector>
bool HasEntries(const Vector* table, unsigned count) {
  return Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA) &&
         Require(table->GetNumElements() == count, LX_ERROR_WRONG_VECTOR_SIZE);
}

const std::uint8_t* Bytes(const LxBW8Vector* table) { return &table->GetDataPtr()->value; }

// The bits of a pixel that index a table of `entries` entries.
struct BitField {
  unsigned shift;
  unsigned mask;
};

bool ChooseBits(unsigned entries, unsigned shift, BitField& field) {
  const auto k = entries == 0 ? 0U : static_cast<unsigned>(std::bit_width(entries)) - 1;
  if (shift != kTopBits &&
      !Require(shift <= 16 && shift + k <= 16, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE)) {
    return false;
  }
  if (!Require(k <= 16 && std::has_single_bit(entries), LX_ERROR_WRONG_VECTOR_SIZE)) return false;
  field = {shift == kTopBits ? 16 - k : shift, entries - 1};
  return true;
}

template <typename T>
void TransformEach(const PixelMap& map, T (*function)(T)) {
  MapEach<T, T>(map, [=](T pixel, std::size_t) { return function(pixel); });
}

}  // namespace

void PicLut(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxBW8Vector* table) {
  RunOperation("PicLut", [&] {
    if (!Usable({source, destination}) || !HasEntries(table, 256)) return;
    LookUpBytes(MapOf(destination, source), Bytes(table));
  });
}

void PicLut(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned char* table) {
  RunOperation(nullptr, [&] {
    if (!Usable({source, destination})) return;
    if (!Require(table != nullptr, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    LookUpBytes(MapOf(destination, source), table);
  });
}

void PicLut(LxROI<LxBW16>* source, LxROI<LxBW8>* destination, LxBW8Vector* table, unsigned shift) {
  RunOperation("PicLut ( BW16 to BW8)", [&] {
    if (!Usable({source, destination})) return;
    if (!Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    BitField field{};
    if (!ChooseBits(table->GetNumElements(), shift, field)) return;
    LookUpBits(MapOf(destination, source), Bytes(table), field.shift, field.mask);
  });
}

void PicLut(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned short* table) {
  RunOperation("PicLut (BW16)", [&] {
    if (!Usable({source, destination})) return;
    if (!Require(table != nullptr, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    LookUpWords(MapOf(destination, source), table);
  });
}

void PicLut(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxBW16Vector* table) {
  RunOperation("PicLut (BW16)", [&] {
    if (!Usable({source, destination}) || !HasEntries(table, 65536)) return;
    LookUpWords(MapOf(destination, source), &table->GetDataPtr()->value);
  });
}

void PicTransform(LxROI<LxBW8>* source, LxROI<LxBW8>* destination,
                  unsigned char (*function)(unsigned char), int useTable) {
  RunOperation("PicTransform", [&] {
    if (!Usable({source, destination})) return;
    if (!Require(function != nullptr, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    const PixelMap map = MapOf(destination, source);
    if (useTable == 0) {
      TransformEach(map, function);
      return;
    }
    ByteTableData table;
    for (int level = 0; level < 256; ++level) {
      table[level] = function(static_cast<unsigned char>(level));
    }
    LookUpBytes(map, table);
  });
}

void PicTransform(LxROI<LxBW16>* source, LxROI<LxBW16>* destination,
                  unsigned short (*function)(unsigned short)) {
  RunOperation("PicTransform (BW16)", [&] {
    if (!Usable({source, destination})) return;
    if (!Require(function != nullptr, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    TransformEach(MapOf(destination, source), function);
  });
}
