// SPDX-License-Identifier: Apache-2.0
// Lookup tables, functions, gain and offset, copies and overlays.
#include <algorithm>
#include <array>
#include <cmath>

#include "support/reference.h"

namespace lx::test {

namespace {

constexpr double kTopBits = 4294967295.0;

template <class Pointer>
void MapThroughTable(const Pixels& p) {
  const Pointer table = std::get<Pointer>(p.call.values[2]);
  *p.d = table[*p.a];
}

template <class Vector>
void MapThroughVector(const Pixels& p) {
  *p.d = (*std::get<Vector*>(p.call.values[2]))[static_cast<unsigned>(*p.a)].value;
}

template <class Function>
void MapThroughFunction(const Pixels& p) {
  const auto function = std::get<Function>(p.call.values[2]);
  *p.d = function(static_cast<decltype(function({}))>(*p.a));
}

// The table has 2^k entries; `shift` is the lowest of the k bits that select one, or kTopBits.
void MapBits(const Pixels& p) {
  const auto& table = *std::get<LxBW8Vector*>(p.call.values[2]);
  const Value entries = table.GetNumElements();
  Value divisor = 65536 / entries;
  if (p.call.Number(3) != kTopBits) divisor = Value{1} << static_cast<int>(p.call.Number(3));
  *p.d = table[static_cast<unsigned>(*p.a / divisor % entries)].value;
}

// Refuses bits that lie beyond the pixel.
Reference BitTableReference(std::string_view signature) {
  Reference made = Pointwise(signature, MapBits);
  made.rule = [map = made.rule](const Arguments& call, Outcome& outcome) {
    const auto entries = static_cast<double>(outcome.Vector(2).values.size());
    const bool top = call.Number(3) == kTopBits;
    if (!top && std::exp2(call.Number(3)) * entries > 65536) {
      return outcome.Refuse(LX_ERROR_ARGUMENT_4_OUT_OF_RANGE);
    }
    map(call, outcome);
  };
  return made;
}

// Fixed point with five fractional bits.
template <int Maximum>
void ScaleFixed(const Pixels& p) {
  const auto gain = static_cast<Value>(std::trunc(p.call.Number(2) * 32));
  const auto offset = static_cast<Value>(std::trunc(p.call.Number(3)));
  const auto scaled = static_cast<Value>(std::floor(static_cast<double>(gain * *p.a) / 32));
  *p.d = std::clamp<Value>(scaled + offset, 0, Maximum);
}

// The first value of an LxColor goes with the last byte of a pixel.
void ScaleColour(const Pixels& p) {
  const auto gain = std::get<LxColor>(p.call.values[2]);
  const auto offset = std::get<LxColor>(p.call.values[3]);
  const std::array<double, 3> gains = {gain.c2, gain.c1, gain.c0};
  const std::array<double, 3> offsets = {offset.c2, offset.c1, offset.c0};
  for (std::size_t k = 0; k < 3; ++k) {
    const double scaled = static_cast<double>(p.a[k]) * gains[k] + offsets[k];
    p.d[k] = static_cast<Value>(std::clamp(std::trunc(scaled), 0.0, 255.0));
  }
}

void FillConstant(const Pixels& p) {
  for (int k = 0; k < p.components; ++k) p.d[k] = p.call.Component(0, k);
}

void CopyPixel(const Pixels& p) { std::copy_n(p.a, p.components, p.d); }

Value PackWord(const Picture& source, int x, int y, int greenBits) {
  return (source.At(x, y, 0) >> 3) + ((source.At(x, y, 1) >> (8 - greenBits)) << 5) +
         ((source.At(x, y, 2) >> 3) << (5 + greenBits));
}

template <int GreenBits>
void Overlay(const Arguments& call, const std::vector<Picture>& sources,
             std::vector<Picture>& destinations) {
  const Picture& source = sources.front();
  Picture& destination = destinations.front();
  for (int y = 0; y < source.height; ++y) {
    for (int x = 0; x < source.width; ++x) {
      bool isKey = true;
      for (int k = 0; k < 3; ++k) isKey = isKey && source.At(x, y, k) == call.Component(4, k);
      const double column = call.Number(2) + x;
      const double row = call.Number(3) + y;
      const bool inside =
          column >= 0 && column < destination.width && row >= 0 && row < destination.height;
      if (isKey || !inside) continue;
      Value& word = destination.At(static_cast<int>(column), static_cast<int>(row));
      word = PackWord(source, x, y, GreenBits) + (GreenBits == 5 ? word & 0x8000 : 0);
    }
  }
}

}  // namespace

std::vector<Reference> LookupReferences() {
  std::vector<Reference> references = {
      Pointwise("PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, LxBW8Vector*)",
                MapThroughVector<LxBW8Vector>),
      Pointwise("PicLut(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char*)",
                MapThroughTable<unsigned char*>),
      BitTableReference("PicLut(LxROI<LxBW16>*, LxROI<LxBW8>*, LxBW8Vector*, unsigned int)"),
      Pointwise("PicLut(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned short*)",
                MapThroughTable<unsigned short*>),
      // Each case draws 65536 elements.
      Pointwise("PicLut(LxROI<LxBW16>*, LxROI<LxBW16>*, LxBW16Vector*)",
                MapThroughVector<LxBW16Vector>)
          .InRounds(3),
      Pointwise("PicTransform(LxROI<LxBW8>*, LxROI<LxBW8>*, unsigned char (*)(unsigned char), int)",
                MapThroughFunction<catalogue::ByteFunction>),
      Pointwise("PicTransform(LxROI<LxBW16>*, LxROI<LxBW16>*, unsigned short (*)(unsigned short))",
                MapThroughFunction<catalogue::WordFunction>),
      Pointwise("PicGainOffset(LxROI<LxBW8>*, LxROI<LxBW8>*, float, float)", ScaleFixed<255>),
      Pointwise("PicGainOffset(LxROI<LxC24>*, LxROI<LxC24>*, LxColor, LxColor)", ScaleColour),
      Pointwise("PicGainOffset(LxROI<LxBW16>*, LxROI<LxBW16>*, float, float)", ScaleFixed<65535>),
      Whole("PicOverlay(LxROI<LxC24>*, LxROI<LxC16>*, int, int, LxC24)", Overlay<6>),
      Whole("PicOverlay(LxROI<LxC24>*, LxROI<LxC15>*, int, int, LxC24)", Overlay<5>),
  };
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24", "LxC15", "LxC16"}) {
    const std::string region = "LxROI<" + pixel + ">*";
    references.push_back(Pointwise("PicCopy(" + pixel + ", " + region + ")", FillConstant));
    references.push_back(Pointwise("PicCopy(" + region + ", " + region + ")", CopyPixel));
  }
  return references;
}

}  // namespace lx::test
