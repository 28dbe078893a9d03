// SPDX-License-Identifier: Apache-2.0
#include "lxpic/convolution/kernel_convolution.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "convolution/kernel_worker.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "foundation/truncate.h"

namespace {

using namespace lx;
using namespace lx::convolution;

// A kernel as the engine reads it.
struct Source {
  std::size_t sizeX;
  std::size_t sizeY;
  const float* coefficients;
  float gain;
  std::uint32_t offset;
  short rectifier;
  std::uint32_t outside;

  std::size_t Count() const { return sizeX * sizeY; }
  bool IsSquare(std::size_t size) const { return sizeX == size && sizeY == size; }
  bool IsFixedSize() const { return IsSquare(3) || IsSquare(5) || IsSquare(7); }
};

// The kernel, which is there, as it is. The getters reset the error state, which has no error here.
Source SourceOf(LxKernel& kernel) {
  const auto size = [](short cells) { return static_cast<std::size_t>(std::max<short>(cells, 0)); };
  return {size(kernel.GetSizeX()), size(kernel.GetSizeY()), kernel.GetDataPtr(),
          kernel.GetGain(),        kernel.GetOffset(),      kernel.GetRectifier(),
          kernel.GetOutsideValue()};
}

bool Refuse(LX_ERRORS code) {
  LxSetError(code);
  return false;
}

// There, with storage, and of sizes that say something and that the storage holds.
bool IsUsable(LxKernel* kernel) {
  if (kernel == nullptr || kernel->GetDataPtr() == nullptr) return Refuse(LX_ERROR_KERNEL_NO_DATA);
  const std::size_t count = SourceOf(*kernel).Count();
  return Require(count > 0 && count <= kernel->GetAllocatedSize(),
                 LX_ERROR_UNSUPPORTED_KERNEL_SIZE);
}

// A symmetric kernel: there, with a rectifier, of a size that has a worker, and usable.
bool IsSymmetric(LxKernel* kernel) {
  if (kernel == nullptr) return Refuse(LX_ERROR_KERNEL_NO_DATA);
  return Require(kernel->GetRectifier() != RECTIFIER_NONE, LX_ERROR_KERNEL_RECTIFIER) &&
         Require(SourceOf(*kernel).IsFixedSize(), LX_ERROR_UNSUPPORTED_KERNEL_SIZE) &&
         IsUsable(kernel);
}

// The stored gain, divided by the sum of the coefficients unless they cancel out.
float Normalised(float gain, float sum, float magnitudes) {
  return std::fabs(sum) > magnitudes * 0.00001F ? gain / sum : gain;
}

float EffectiveGain(const Source& kernel) {
  float sum = 0;
  float magnitudes = 0;
  for (std::size_t i = 0; i < kernel.Count(); ++i) {
    sum += kernel.coefficients[i];
    magnitudes += std::fabs(kernel.coefficients[i]);
  }
  return Normalised(kernel.gain, sum, magnitudes);
}

// The octant of a symmetric kernel, with the number of cells that share each coefficient.
struct OctantCell {
  std::size_t column;
  std::size_t row;
  int cells;
};

constexpr std::array<OctantCell, 3> kOctant3 = {{{0, 0, 4}, {1, 0, 4}, {1, 1, 1}}};
constexpr std::array<OctantCell, 6> kOctant5 = {
    {{0, 0, 4}, {1, 0, 8}, {2, 0, 4}, {1, 1, 4}, {2, 1, 4}, {2, 2, 1}}};
constexpr std::array<OctantCell, 10> kOctant7 = {{{0, 0, 4},
                                                  {1, 0, 8},
                                                  {2, 0, 8},
                                                  {3, 0, 4},
                                                  {1, 1, 4},
                                                  {2, 1, 8},
                                                  {3, 1, 4},
                                                  {2, 2, 4},
                                                  {3, 2, 4},
                                                  {3, 3, 1}}};

template <class Octant>
float OctantGain(const Source& kernel, const Octant& octant) {
  float sum = 0;
  float magnitudes = 0;
  for (const OctantCell& cell : octant) {
    const float k = kernel.coefficients[cell.row * kernel.sizeX + cell.column];
    sum += k * static_cast<float>(cell.cells);
    magnitudes += std::fabs(k) * static_cast<float>(cell.cells);
  }
  return Normalised(kernel.gain, sum, magnitudes);
}

float SymmetricGain(const Source& kernel) {
  if (kernel.sizeX == 3) return OctantGain(kernel, kOctant3);
  return kernel.sizeX == 5 ? OctantGain(kernel, kOctant5) : OctantGain(kernel, kOctant7);
}

// The coefficient of cell `i` that symmetry makes of the octant.
float SymmetricCoefficient(const Source& kernel, std::size_t i) {
  const std::size_t last = kernel.sizeX - 1;
  const std::size_t x = std::min(i % kernel.sizeX, last - i % kernel.sizeX);
  const std::size_t y = std::min(i / kernel.sizeX, last - i / kernel.sizeX);
  return kernel.coefficients[std::min(x, y) * kernel.sizeX + std::max(x, y)];
}

// The kernel in fixed point with 15 fractional bits; `coefficient` gives that of each cell.
template <class Coefficient>
FixedKernel WithFifteenBits(const Source& kernel, float gain, const Coefficient& coefficient) {
  FixedKernel made;
  made.size = kernel.sizeX;
  made.fraction = 15;
  made.absolute = kernel.rectifier == RECTIFIER_ABSOLUTE;
  made.offset = std::int64_t{static_cast<std::int32_t>(kernel.offset)} * 32768;
  if (kernel.rectifier == RECTIFIER_NEGATIVE) {
    gain = -gain;
    made.offset = -made.offset;
  }
  for (std::size_t i = 0; i < kernel.Count(); ++i) {
    const float scaled = gain * coefficient(i) * 32768.0F;
    made.coefficients[i] = static_cast<std::int32_t>(TruncateTo32(scaled));
  }
  return made;
}

// The 3 × 3 kernel of positive results, with 8 fractional bits.
FixedKernel WithEightBits(const Source& kernel) {
  FixedKernel made;
  made.size = 3;
  made.fraction = 8;
  const float gain = EffectiveGain(kernel);
  for (std::size_t i = 0; i < kernel.Count(); ++i) {
    const float scaled = 256.0F * (gain * kernel.coefficients[i]);
    made.coefficients[i] = static_cast<std::int16_t>(TruncateTo32(scaled));
  }
  return made;
}

// The workers of a pixel type, and the names that they trace.
template <class T>
struct Workers;

template <>
struct Workers<LxBW8> {
  static constexpr auto kFixed = &FixedBytes;
  static constexpr auto kReal = &RealBytes;
  static constexpr const char* kNames[] = {"ConvolKernel3x3", "ConvolKernel5x5", "ConvolKernel7x7"};
  static constexpr const char* kSymmetricNames[] = {"ConvolKernelS3xS3", "ConvolKernelS5xS5",
                                                    "ConvolKernelS7xS7"};
};

template <>
struct Workers<LxBW16> {
  static constexpr auto kFixed = &FixedWords;
  static constexpr auto kReal = &RealWords;
  static constexpr const char* kNames[] = {"ConvolKernel3x3 BW16", "ConvolKernel5x5 BW16",
                                           "ConvolKernel7x7 BW16"};
  static constexpr const char* kSymmetricNames[] = {
      "ConvolKernelS3xS3 BW16", "ConvolKernelS5xS5 BW16", "ConvolKernelS7xS7 (BW16)"};
};

template <>
struct Workers<LxC24> : Workers<LxBW8> {};

template <class T>
void RunFixed(const FixedKernel& kernel, const char* const (&names)[3], LxROI<T>* source,
              LxROI<T>* destination) {
  const ComponentImage image = ComponentImageOf(destination, source);
  if (image.width == 0 || image.height == 0) return;
  if (!Workers<T>::kFixed(image, kernel)) LxTraceError(names[kernel.size / 2 - 1]);
}

// The columns or rows of a kernel that meet the region at some pixel, and how many of them lie
// before the pixel.
struct Reach {
  std::size_t first;
  std::size_t count;
  std::size_t before;

  Reach(std::size_t cells, std::size_t length)
      : first(cells / 2 - std::min(cells / 2, length - 1)),
        count(std::min(cells, cells / 2 + length) - first),
        before(cells / 2 - first) {}

  bool Has(std::size_t cell) const { return cell - first < count; }
};

// Cells that never meet the region are outside at every pixel: what they add is added once, first.
template <class T>
void RunReal(const Source& kernel, LxROI<T>* source, LxROI<T>* destination) {
  const ComponentImage image = ComponentImageOf(destination, source);
  if (image.width == 0 || image.height == 0) return;
  const Reach columns(kernel.sizeX, image.width);
  const Reach rows(kernel.sizeY, image.height);
  const Scratch<float> scaled(columns.count * rows.count);
  if (!scaled) return;
  const float gain = EffectiveGain(kernel);
  RealKernel real{columns.count, rows.count,      columns.before,
                  rows.before,   scaled.get(),    static_cast<float>(kernel.outside),
                  kernel.offset, kernel.rectifier};
  float* next = scaled.get();
  for (std::size_t i = 0; i < kernel.Count(); ++i) {
    const float coefficient = kernel.coefficients[i] * gain;
    if (rows.Has(i / kernel.sizeX) && columns.Has(i % kernel.sizeX)) {
      *next++ = coefficient;
    } else {
      real.start += coefficient * real.outside;
    }
  }
  Workers<T>::kReal(image, real);
}

bool IsRectifier(short rectifier) {
  return rectifier == RECTIFIER_NEGATIVE || rectifier == RECTIFIER_POSITIVE ||
         rectifier == RECTIFIER_ABSOLUTE;
}

// Regions are usable; a missing destination is null.
template <class T>
void Convolve(LxROI<T>* source, LxROI<T>* destination, LxKernel* given) {
  if (!IsUsable(given)) return;
  const Source kernel = SourceOf(*given);
  if (kernel.rectifier == RECTIFIER_POSITIVE && kernel.IsSquare(3)) {
    LxROI<T>* const to = destination == nullptr ? source : destination;
    RunFixed(WithEightBits(kernel), Workers<T>::kNames, source, to);
    return;
  }
  if (!UsableApart(source, destination)) return;
  if (kernel.rectifier == RECTIFIER_NONE || !kernel.IsFixedSize()) {
    RunReal(kernel, source, destination);
  } else if (IsRectifier(kernel.rectifier)) {
    const auto fixed = WithFifteenBits(kernel, EffectiveGain(kernel),
                                       [&](std::size_t i) { return kernel.coefficients[i]; });
    RunFixed(fixed, Workers<T>::kNames, source, destination);
  }
}

template <class T>
void ConvolveSymmetric(LxROI<T>* source, LxROI<T>* destination, LxKernel* given) {
  if (!IsSymmetric(given) || !UsableApart(source, destination)) return;
  const Source kernel = SourceOf(*given);
  if (!IsRectifier(kernel.rectifier)) return;
  const auto fixed = WithFifteenBits(kernel, SymmetricGain(kernel), [&](std::size_t i) {
    return SymmetricCoefficient(kernel, i);
  });
  RunFixed(fixed, Workers<T>::kSymmetricNames, source, destination);
}

// Colours go component by component through the 8-bit form, whose name failures pass through.
template <class Run>
void WithGreyTrace(const char* trace, const Run& run) {
  run();
  if (LxGetError() != LX_OK) LxTraceError(trace);
}

}  // namespace

void PicConvolKernel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxKernel* kernel) {
  RunOperation("PicConvolKernel BW8", [&] {
    if (UsablePair(source, destination)) Convolve(source, destination, kernel);
  });
}

void PicConvolKernel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxKernel* kernel) {
  RunOperation("PicConvolKernel BW16", [&] {
    if (UsablePair(source, destination)) Convolve(source, destination, kernel);
  });
}

void PicConvolKernel(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxKernel* kernel) {
  RunOperation("PicConvolKernel ( C24)", [&] {
    if (!UsableApart(source, destination)) return;
    WithGreyTrace("PicConvolKernel BW8", [&] { Convolve(source, destination, kernel); });
  });
}

void PicConvolSymmetricKernel(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxKernel* kernel) {
  RunOperation("PicConvolSymmetricKernel", [&] { ConvolveSymmetric(source, destination, kernel); });
}

void PicConvolSymmetricKernel(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, LxKernel* kernel) {
  RunOperation("PicConvolSymmetricKernel BW16",
               [&] { ConvolveSymmetric(source, destination, kernel); });
}

void PicConvolSymmetricKernel(LxROI<LxC24>* source, LxROI<LxC24>* destination, LxKernel* kernel) {
  RunOperation("PicConvolSymmetricKernel ( C24)", [&] {
    if (!UsableApart(source, destination)) return;
    WithGreyTrace("PicConvolSymmetricKernel",
                  [&] { ConvolveSymmetric(source, destination, kernel); });
  });
}
