// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/projection.h"

#include <type_traits>

#include "foundation/exact_division.h"
#include "foundation/frame.h"
#include "measure/projection_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

enum class Onto {
  kRow,
  kColumn
};

template <class T>
inline constexpr std::size_t kComponents = sizeof(T) == 3 ? 3 : 1;

// The sums of the columns, or of the rows, which `sums` has room for. False when there is no scratch
// memory.
template <Onto onto, class T>
bool SumPixels(const LxROI<T>* source, std::uint64_t* sums) {
  const Projection projection{RowsOf(source), source->GetWidth() * kComponents<T>,
                              source->GetHeight()};
  if constexpr (onto == Onto::kColumn) {
    (sizeof(T) == 2 ? SumWordRows : sizeof(T) == 3 ? SumColourRows : SumByteRows)(projection, sums);
    return true;
  } else {
    const Scratch<std::uint8_t> scratch(ColumnScratch(projection.elements));
    if (!scratch) return false;
    (sizeof(T) == 2 ? SumWordColumns : SumByteColumns)(projection, scratch.get(), sums);
    return true;
  }
}

// The data of a vector that is given `count` elements; null, with the error set, without memory.
template <class T>
T* Resized(LxVectorTemplate<T>& vector, unsigned count) {
  vector.SetMaxElements(count, 1);
  if (LxGetError() == LX_OK) vector.SetNumElements(count);
  return LxGetError() == LX_OK ? vector.GetDataPtr() : nullptr;
}

std::uint32_t* Resized(LxVector& vector, unsigned count) {
  vector.SetType(LX_VECTOR_HISTOGRAM, 1, static_cast<int>(count));
  return LxGetError() == LX_OK ? static_cast<std::uint32_t*>(vector.GetDataPtr()) : nullptr;
}

// What a vector holds of the sums of `pixels` pixels.

void Store(const std::uint64_t* sums, unsigned count, unsigned /*pixels*/, std::uint32_t* to) {
  for (unsigned i = 0; i < count; ++i) to[i] = static_cast<std::uint32_t>(sums[i]);
}

void Store(const std::uint64_t* sums, unsigned count, unsigned /*pixels*/, LxBW32* to) {
  for (unsigned i = 0; i < count; ++i) to[i] = static_cast<std::uint32_t>(sums[i]);
}

template <class T>
void Store(const std::uint64_t* sums, unsigned count, unsigned pixels, T* to) {
  const PixelAverage<decltype(T::value)> average(pixels);
  for (unsigned i = 0; i < count; ++i) to[i] = average(sums[i]);
}

void Store(const std::uint64_t* sums, unsigned count, unsigned pixels, LxC24* to) {
  const PixelAverage<std::uint8_t> average(pixels);
  for (unsigned i = 0; i < count; ++i, sums += 3) {
    to[i] = {average(sums[0]), average(sums[1]), average(sums[2])};
  }
}

template <class Vector>
inline constexpr bool kHoldsSums =
    std::is_same_v<Vector, LxVector> || std::is_same_v<Vector, LxBW32Vector>;

template <Onto onto, class T, class Vector>
void Project(const char* trace, LxROI<T>* source, Vector* vector) {
  RunOperation(trace, [&] {
    if (!Attached({source}) || !Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const bool across = onto == Onto::kRow;
    const unsigned count = across ? source->GetWidth() : source->GetHeight();
    const unsigned pixels = across ? source->GetHeight() : source->GetWidth();
    const bool defined = kHoldsSums<Vector> || count == 0 || pixels != 0;
    if (!Require(defined, LX_ERROR_EMPTY_HISTOGRAM)) return;
    const Scratch<std::uint64_t> sums(count * kComponents<T>);
    if (!sums || !SumPixels<onto>(source, sums.get())) return;
    auto* const to = Resized(*vector, count);
    if (to != nullptr) Store(sums.get(), count, pixels, to);
  });
}

}  // namespace

void PicProjectOnARow(LxROI<LxBW8>* source, LxBW32Vector* sums) {
  Project<Onto::kRow>("PicProjectOnARow ( BW8 Image Sum)", source, sums);
}

void PicProjectOnARow(LxROI<LxBW8>* source, LxBW8Vector* averages) {
  Project<Onto::kRow>("PicProjectOnARow ( BW8 Image Average)", source, averages);
}

void PicProjectOnARow(LxROI<LxBW16>* source, LxBW32Vector* sums) {
  Project<Onto::kRow>("PicProjectOnARow ( BW16 Image Sum)", source, sums);
}

void PicProjectOnARow(LxROI<LxBW16>* source, LxBW16Vector* averages) {
  Project<Onto::kRow>("PicProjectOnARow ( BW16 Image Average)", source, averages);
}

void PicProjectOnARow(LxROI<LxC24>* source, LxC24Vector* averages) {
  Project<Onto::kRow>("PicProjectOnARow ( C24 Image Average)", source, averages);
}

void PicProjectOnARow(LxROI<LxBW8>* source, LxVector* sums) {
  Project<Onto::kRow>("PicProjectOnARow ( LxVector)", source, sums);
}

void PicProjectOnAColumn(LxROI<LxBW8>* source, LxBW32Vector* sums) {
  Project<Onto::kColumn>("PicProjectOnAColumn ( BW8 Image Sum)", source, sums);
}

void PicProjectOnAColumn(LxROI<LxBW8>* source, LxBW8Vector* averages) {
  Project<Onto::kColumn>("PicProjectOnAColumn ( BW8 Image Average)", source, averages);
}

void PicProjectOnAColumn(LxROI<LxBW16>* source, LxBW32Vector* sums) {
  Project<Onto::kColumn>("PicProjectOnAColumn ( BW16 Image Sum)", source, sums);
}

void PicProjectOnAColumn(LxROI<LxBW16>* source, LxBW16Vector* averages) {
  Project<Onto::kColumn>("PicProjectOnAColumn ( BW16 Image Average)", source, averages);
}

void PicProjectOnAColumn(LxROI<LxC24>* source, LxC24Vector* averages) {
  Project<Onto::kColumn>("PicProjectOnAColumn ( C24 Image Average)", source, averages);
}

void PicProjectOnAColumn(LxROI<LxBW8>* source, LxVector* sums) {
  Project<Onto::kColumn>("PicProjectOnAColumn", source, sums);
}
