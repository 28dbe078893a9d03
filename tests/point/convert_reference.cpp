// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "support/reference.h"

namespace lx::test {

namespace {

// The widths of the fields of a packed colour, the lowest first.
using Fields = std::array<int, 3>;
constexpr Fields kC15 = {5, 5, 5};
constexpr Fields kC16 = {5, 6, 5};

// Grey sources have their level in every component.
template <int Components>
Value Pack(const Value* source, const Fields& fields) {
  Value word = 0;
  int position = 0;
  for (int k = 0; k < 3; ++k) {
    const int bits = fields[static_cast<std::size_t>(k)];
    word += (source[Components == 1 ? 0 : k] >> (8 - bits)) << position;
    position += bits;
  }
  return word;
}

// Component `k` of a packed colour, its field moved up to 8 bits.
Value Unpack(Value word, const Fields& fields, int k) {
  int position = 0;
  for (int j = 0; j < k; ++j) position += fields[static_cast<std::size_t>(j)];
  const int bits = fields[static_cast<std::size_t>(k)];
  return ((word >> position) % (1 << bits)) << (8 - bits);
}

template <int Components>
void ToC15(const Pixels& p) {
  *p.d = Pack<Components>(p.a, kC15) + (*p.d & 0x8000);
}

template <int Components>
void ToC16(const Pixels& p) {
  *p.d = Pack<Components>(p.a, kC16);
}

template <const Fields& fields>
void FromPacked(const Pixels& p) {
  for (int k = 0; k < 3; ++k) p.d[k] = Unpack(*p.a, fields, k);
}

template <const Fields& fields>
void GreyFromPacked(const Pixels& p) {
  *p.d = (Unpack(*p.a, fields, 0) + Unpack(*p.a, fields, 1) + Unpack(*p.a, fields, 2)) / 3;
}

void CopyColour(const Pixels& p) {
  for (int k = 0; k < 3; ++k) p.d[k] = p.a[k];
}

void MergeAlpha(const Pixels& p) {
  CopyColour(p);
  p.d[3] = *p.b;
}

void SplitAlpha(const Pixels& p) {
  CopyColour(p);
  *p.d2 = p.a[3];
}

void GreyToColour(const Pixels& p) {
  for (int k = 0; k < 3; ++k) p.d[k] = *p.a;
}

void ColourToGrey(const Pixels& p) { *p.d = (p.a[0] + p.a[1] + p.a[2]) * 85 / 256; }

int ShiftOf(const Pixels& p) { return static_cast<int>(p.call.Number(2)) % 32; }

void ShiftRight8(const Pixels& p) { *p.d = (*p.a >> ShiftOf(p)) % 256; }
void ShiftRight16(const Pixels& p) { *p.d = (*p.a >> ShiftOf(p)) % 65536; }
void ShiftLeft16(const Pixels& p) { *p.d = (*p.a << ShiftOf(p)) % 65536; }
void ShiftLeft32(const Pixels& p) { *p.d = (*p.a << ShiftOf(p)) % (Value{1} << 32); }

void NeutralChroma(const Pixels& p) { *p.d = *p.a + 128 * 256; }

}  // namespace

std::vector<Reference> ConvertReferences() {
  return {
      Pointwise("PicConvert(LxROI<LxC24>*, LxROI<LxC15>*)", ToC15<3>),
      Pointwise("PicConvert(LxROI<LxBW8>*, LxROI<LxC15>*)", ToC15<1>),
      Pointwise("PicConvert(LxROI<LxC15>*, LxROI<LxC24>*)", FromPacked<kC15>),
      Pointwise("PicConvert(LxROI<LxC15>*, LxROI<LxBW8>*)", GreyFromPacked<kC15>),
      Pointwise("PicConvert(LxROI<LxC24>*, LxROI<LxC16>*)", ToC16<3>),
      Pointwise("PicConvert(LxROI<LxBW8>*, LxROI<LxC16>*)", ToC16<1>),
      Pointwise("PicConvert(LxROI<LxC16>*, LxROI<LxC24>*)", FromPacked<kC16>),
      Pointwise("PicConvert(LxROI<LxC16>*, LxROI<LxBW8>*)", GreyFromPacked<kC16>),
      Pointwise("PicConvert(LxROI<LxC24>*, LxROI<LxC24A>*)", CopyColour),
      Pointwise("PicConvert(LxROI<LxC24A>*, LxROI<LxC24>*)", CopyColour),
      Pointwise("PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*, LxROI<LxC24A>*)", MergeAlpha),
      Pointwise("PicConvert(LxROI<LxC24A>*, LxROI<LxC24>*, LxROI<LxBW8>*)", SplitAlpha),
      Pointwise("PicConvert(LxROI<LxBW8>*, LxROI<LxC24>*)", GreyToColour),
      Pointwise("PicConvert(LxROI<LxC24>*, LxROI<LxBW8>*)", ColourToGrey),
      Pointwise("PicConvert(LxROI<LxBW16>*, LxROI<LxBW8>*, unsigned int)", ShiftRight8),
      Pointwise("PicConvert(LxROI<LxBW32>*, LxROI<LxBW8>*, unsigned int)", ShiftRight8),
      Pointwise("PicConvert(LxROI<LxBW32>*, LxROI<LxBW16>*, unsigned int)", ShiftRight16),
      Pointwise("PicConvert(LxROI<LxBW8>*, LxROI<LxBW16>*, unsigned int)", ShiftLeft16),
      Pointwise("PicConvert(LxROI<LxBW8>*, LxROI<LxBW32>*, unsigned int)", ShiftLeft32),
      Pointwise("PicConvert(LxROI<LxBW16>*, LxROI<LxBW32>*, unsigned int)", ShiftLeft32),
      Pointwise("PicConvertTo422(LxROI<LxBW8>*, LxROI<LxBW16>*)", NeutralChroma),
  };
}

}  // namespace lx::test
