// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/noise.h"

#include <cmath>

#include "foundation/frame.h"
#include "measure/differences_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

constexpr unsigned kMostFrames = 256;

bool IsFrameCount(unsigned frames) {
  return frames != 0 && frames <= kMostFrames && (frames & (frames - 1)) == 0;
}

std::uint16_t ShiftOf(unsigned frames) {
  std::uint16_t shift = 0;
  while (1U << shift < frames) ++shift;
  return shift;
}

// What the reference makes of the power of the noise.
double FactorOf(PIC_REFERENCE_NOISE noise, unsigned frames) {
  const double part = 1.0 / frames;
  return noise == PIC_REFERENCE_NOISE_INDEPENDENT ? 1 + part
         : noise == PIC_REFERENCE_NOISE_DEPENDENT ? 1 - part
                                                  : 1;
}

Powers PowersOf(const LxROI<LxBW8>* source, const LxROI<LxBW8>* reference, unsigned /*frames*/,
                bool signal) {
  return PowersOfBytes(MapOfPair(source, reference), signal);
}

Powers PowersOf(const LxROI<LxBW8>* source, const LxROI<LxBW16>* reference, unsigned frames,
                bool signal) {
  return PowersOfSums(WithConstant(MapOfPair(source, reference), ShiftOf(frames)), signal);
}

Powers PowersOf(const LxROI<LxBW16>* source, const LxROI<LxBW16>* reference, unsigned /*frames*/,
                bool signal) {
  return PowersOfWords(MapOfPair(source, reference), signal);
}

Powers PowersOf(const LxROI<LxC24>* source, const LxROI<LxC24>* reference, unsigned /*frames*/,
                bool signal) {
  PixelMap map = MapOfPair(source, reference);
  map.width *= 3;
  return PowersOfBytes(map, signal);
}

// The result of measure(source, reference, factor) on regions that are fit for it; 0 on others.
template <class S, class R, class Measure>
float Compare(const char* trace, LxROI<S>* source, LxROI<R>* reference, unsigned frames,
              PIC_REFERENCE_NOISE noise, const Measure& measure) {
  float result = 0.0F;
  RunOperation(trace, [&] {
    if (!Require(IsFrameCount(frames), LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    if (!Usable({source, reference})) return;
    const double factor = FactorOf(noise, frames);
    if (!Require(factor != 0, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    result = static_cast<float>(measure(factor));
  });
  return result;
}

template <class S, class R>
float Rms(const char* trace, LxROI<S>* source, LxROI<R>* reference, unsigned frames,
          PIC_REFERENCE_NOISE noise) {
  return Compare(trace, source, reference, frames, noise, [&](double factor) {
    const double count = static_cast<double>(source->GetWidth()) * source->GetHeight();
    if (!Require(count != 0, LX_ERROR_EMPTY_HISTOGRAM)) return 0.0;
    const Powers powers = PowersOf(source, reference, frames, false);
    return std::sqrt(static_cast<double>(powers.difference) / factor / count);
  });
}

template <class S, class R>
float Ratio(const char* trace, LxROI<S>* source, LxROI<R>* reference, unsigned frames,
            PIC_REFERENCE_NOISE noise) {
  return Compare(trace, source, reference, frames, noise, [&](double factor) {
    const Powers powers = PowersOf(source, reference, frames, true);
    if (powers.difference == 0) return 0.0;
    const double ratio =
        static_cast<double>(powers.signal) / static_cast<double>(powers.difference);
    return 10 * std::log10(ratio) + 10 * std::log10(factor);
  });
}

}  // namespace

float PicRmsNoise(LxROI<LxBW8>* source, LxROI<LxBW8>* reference, PIC_REFERENCE_NOISE noise) {
  return Rms("PicRmsNoise ( BW8 source and BW8 reference)", source, reference, 1, noise);
}

float PicRmsNoise(LxROI<LxBW8>* source, LxROI<LxBW16>* reference, unsigned frames,
                  PIC_REFERENCE_NOISE noise) {
  return Rms("PicRmsNoise ( BW8 source and BW16 reference)", source, reference, frames, noise);
}

float PicRmsNoise(LxROI<LxBW16>* source, LxROI<LxBW16>* reference, PIC_REFERENCE_NOISE noise) {
  return Rms("PicRmsNoise ( BW16 source and BW16 reference)", source, reference, 1, noise);
}

float PicRmsNoise(LxROI<LxC24>* source, LxROI<LxC24>* reference, PIC_REFERENCE_NOISE noise) {
  return Rms("PicRmsNoise ( C24 source and C24 reference)", source, reference, 1, noise);
}

float PicSignalNoiseRatio(LxROI<LxBW8>* source, LxROI<LxBW8>* reference,
                          PIC_REFERENCE_NOISE noise) {
  return Ratio("PicSignalNoiseRatio ( BW8 source and BW8 reference)", source, reference, 1, noise);
}

float PicSignalNoiseRatio(LxROI<LxBW8>* source, LxROI<LxBW16>* reference, unsigned frames,
                          PIC_REFERENCE_NOISE noise) {
  return Ratio("PicSignalNoiseRatio ( BW8 source and BW16 reference)", source, reference, frames,
               noise);
}

float PicSignalNoiseRatio(LxROI<LxBW16>* source, LxROI<LxBW16>* reference,
                          PIC_REFERENCE_NOISE noise) {
  return Ratio("PicSignalNoiseRatio ( BW16 source and BW16 reference)", source, reference, 1,
               noise);
}

float PicSignalNoiseRatio(LxROI<LxC24>* source, LxROI<LxC24>* reference,
                          PIC_REFERENCE_NOISE noise) {
  return Ratio("PicSignalNoiseRatio ( C24 source and C24 reference)", source, reference, 1, noise);
}
