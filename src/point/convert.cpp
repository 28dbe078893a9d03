// SPDX-License-Identifier: Apache-2.0
#include "lxpic/point/convert.h"

#include "foundation/frame.h"
#include "point/convert_kernels.h"

namespace {

using namespace lx;
using namespace lx::point;

// The frame of every conversion: `kernel` maps the regions' pixels.
template <class S, class D, class Kernel>
void Convert(const char* trace, LxROI<S>* source, LxROI<D>* destination, const Kernel& kernel) {
  RunOperation(trace, [&] {
    if (Usable({source, destination})) kernel(MapOf(destination, source));
  });
}

using DepthKernel = void (*)(const PixelMap&, unsigned);

// A shift counts modulo 32.
auto Shifted(DepthKernel kernel, unsigned shift) {
  return [kernel, shift](const PixelMap& map) { kernel(map, shift % 32); };
}

using PackedKernel = void (*)(Packing, const PixelMap&);

auto Packed(PackedKernel kernel, Packing packing) {
  return [kernel, packing](const PixelMap& map) { kernel(packing, map); };
}

}  // namespace

void PicConvert(LxROI<LxC24>* source, LxROI<LxC15>* destination) {
  Convert("PicConvert ( C24 to C15)", source, destination, Packed(&PackColour, Packing::kC15));
}

void PicConvert(LxROI<LxBW8>* source, LxROI<LxC15>* destination) {
  Convert("PicConvert ( BW8 to C15)", source, destination, Packed(&PackGrey, Packing::kC15));
}

void PicConvert(LxROI<LxC15>* source, LxROI<LxC24>* destination) {
  Convert("PicConvert ( C15 to C24)", source, destination, Packed(&UnpackToColour, Packing::kC15));
}

void PicConvert(LxROI<LxC15>* source, LxROI<LxBW8>* destination) {
  Convert("PicConvert ( C15 to BW8)", source, destination, Packed(&UnpackToGrey, Packing::kC15));
}

void PicConvert(LxROI<LxC24>* source, LxROI<LxC16>* destination) {
  Convert("PicConvert ( C24 to C16)", source, destination, Packed(&PackColour, Packing::kC16));
}

void PicConvert(LxROI<LxBW8>* source, LxROI<LxC16>* destination) {
  Convert("PicConvert ( BW8 to C16)", source, destination, Packed(&PackGrey, Packing::kC16));
}

void PicConvert(LxROI<LxC16>* source, LxROI<LxC24>* destination) {
  Convert("PicConvert ( C16 to C24)", source, destination, Packed(&UnpackToColour, Packing::kC16));
}

void PicConvert(LxROI<LxC16>* source, LxROI<LxBW8>* destination) {
  Convert("PicConvert ( C16 to BW8)", source, destination, Packed(&UnpackToGrey, Packing::kC16));
}

void PicConvert(LxROI<LxC24>* source, LxROI<LxC24A>* destination) {
  Convert("PicConvert ( C24 to C24A)", source, destination, &AddAlpha);
}

void PicConvert(LxROI<LxC24A>* source, LxROI<LxC24>* destination) {
  Convert("PicConvert ( C24A to C24)", source, destination, &DropAlpha);
}

void PicConvert(LxROI<LxC24>* source, LxROI<LxBW8>* alpha, LxROI<LxC24A>* destination) {
  RunOperation("PicConvert ( C24 to C24A with Alpha)", [&] {
    if (Usable({source, alpha, destination})) MergeAlpha(MapOf(destination, source, alpha));
  });
}

void PicConvert(LxROI<LxC24A>* source, LxROI<LxC24>* destination, LxROI<LxBW8>* alpha) {
  RunOperation("PicConvert ( C24A to C24 with Alpha)", [&] {
    if (!Usable({source, destination, alpha})) return;
    // The plane is a second destination; as a source of the map it only decides whether rows join.
    const PixelMap map = MapOf(destination, source, alpha);
    SplitAlpha(map, map.sources[1]);
  });
}

void PicConvert(LxROI<LxBW8>* source, LxROI<LxC24>* destination) {
  Convert("PicConvert ( BW8 to C24)", source, destination,
          [](const PixelMap& map) { GreyToColour(map, false); });
}

void PicConvert(LxROI<LxC24>* source, LxROI<LxBW8>* destination) {
  Convert("PicConvert ( C24 to BW8)", source, destination, &ColourToGrey);
}

void PicConvert(LxROI<LxBW16>* source, LxROI<LxBW8>* destination, unsigned shift) {
  Convert("PicConvert ( BW16 to BW8)", source, destination, Shifted(&Bits16To8, shift));
}

void PicConvert(LxROI<LxBW32>* source, LxROI<LxBW8>* destination, unsigned shift) {
  Convert("PicConvert ( BW32 to BW8)", source, destination, Shifted(&Bits32To8, shift));
}

void PicConvert(LxROI<LxBW32>* source, LxROI<LxBW16>* destination, unsigned shift) {
  Convert("PicConvert ( BW32 to BW16)", source, destination, Shifted(&Bits32To16, shift));
}

void PicConvert(LxROI<LxBW8>* source, LxROI<LxBW16>* destination, unsigned shift) {
  Convert("PicConvert ( BW8 to BW16)", source, destination, Shifted(&Bits8To16, shift));
}

void PicConvert(LxROI<LxBW8>* source, LxROI<LxBW32>* destination, unsigned shift) {
  Convert("PicConvert ( BW8 to BW32)", source, destination, Shifted(&Bits8To32, shift));
}

void PicConvert(LxROI<LxBW16>* source, LxROI<LxBW32>* destination, unsigned shift) {
  Convert("PicConvert ( BW16 to BW32)", source, destination, Shifted(&Bits16To32, shift));
}

void PicConvertTo422(LxROI<LxBW8>* source, LxROI<LxBW16>* destination) {
  Convert("PicConvertTo422 ( BW8 to BW16)", source, destination, &GreyTo422);
}
