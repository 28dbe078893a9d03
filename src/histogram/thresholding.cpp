// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/thresholding.h"

#include "foundation/frame.h"
#include "histogram/automatic_threshold.h"
#include "histogram/levels_kernels.h"

namespace {

using namespace lx;
using namespace lx::histogram;

template <class T>
Cut CutAt(std::uint64_t threshold) {
  return Cut::At(threshold, kLargest<T>);
}

template <class T>
void MapToTwo(const char* trace, LxROI<T>* source, LxROI<T>* destination, unsigned threshold,
              T lowValue, T highValue, float relative,
              void (*map)(const PixelMap&, const TwoLevels&)) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination}) || !Resolve(source, threshold, relative)) return;
    map(MapOf(destination, source), {CutAt<T>(threshold), lowValue, highValue});
  });
}

// The upper level comes first: it is asked before the lower one.
template <class T>
void MapToThree(const char* trace, LxROI<T>* source, LxROI<T>* destination, unsigned lowThreshold,
                unsigned highThreshold, T lowValue, T midValue, T highValue,
                void (*map)(const PixelMap&, const ThreeLevels&)) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    const Cut upper = CutAt<T>(std::uint64_t{highThreshold} + 1);
    map(MapOf(destination, source), {CutAt<T>(lowThreshold), upper, lowValue, midValue, highValue});
  });
}

template <class T>
unsigned Select(LxROI<T>* source, unsigned threshold, float relative) {
  RunOperation(nullptr, [&] { Resolve(source, threshold, relative); });
  return threshold & kLargest<T>;
}

}  // namespace

void PicThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned threshold,
                  LxBW8 lowValue, LxBW8 highValue, float relative) {
  MapToTwo("PicThreshold", source, destination, threshold, lowValue, highValue, relative,
           &MapToTwoBytes);
}

void PicThreshold(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned threshold,
                  LxBW16 lowValue, LxBW16 highValue, float relative) {
  MapToTwo("PicThreshold (BW16)", source, destination, threshold, lowValue, highValue, relative,
           &MapToTwoWords);
}

void PicDoubleThreshold(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, unsigned lowThreshold,
                        unsigned highThreshold, LxBW8 lowValue, LxBW8 midValue, LxBW8 highValue) {
  MapToThree("PicDoubleThreshold ( BW8 to BW8)", source, destination, lowThreshold, highThreshold,
             lowValue, midValue, highValue, &MapToThreeBytes);
}

void PicDoubleThreshold(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, unsigned lowThreshold,
                        unsigned highThreshold, LxBW16 lowValue, LxBW16 midValue,
                        LxBW16 highValue) {
  MapToThree("PicDoubleThreshold ( BW16 to BW16)", source, destination, lowThreshold, highThreshold,
             lowValue, midValue, highValue, &MapToThreeWords);
}

void PicThreshold(LxROI<LxBW8>* source, LxROI<int>* destination, unsigned threshold) {
  RunOperation("PicThreshold ( BW8 to BW1)", [&] {
    if (!Usable({source, destination})) return;
    MapBytesToBits(BitMapOf(destination, source), CutAt<LxBW8>(threshold));
  });
}

void PicThreshold(LxROI<LxBW16>* source, LxROI<int>* destination, unsigned threshold,
                  float relative) {
  RunOperation("PicThreshold (BW16 to BW1)", [&] {
    if (!Usable({source, destination}) || !Resolve(source, threshold, relative)) return;
    MapWordsToBits(BitMapOf(destination, source), CutAt<LxBW16>(threshold));
  });
}

void PicThreshold(LxROI<int>* source, LxROI<LxBW8>* destination, LxBW8 lowValue, LxBW8 highValue) {
  RunOperation("PicThreshold ( BW1 to BW8)", [&] {
    if (!Usable({source, destination})) return;
    MapBitsToBytes(BitMapOf(source, destination), lowValue, highValue);
  });
}

unsigned PicAutoThreshold(LxROI<LxBW8>* source, PIC_THRESHOLD_MODES mode, float relative) {
  return Select(source, mode, relative);
}

unsigned PicAutoThreshold(LxROI<LxBW16>* source, PIC_THRESHOLD_MODES mode, float relative) {
  return Select(source, mode, relative);
}
