// SPDX-License-Identifier: Apache-2.0
#include "lxpic/correction/flat_field.h"

#include <type_traits>

#include "correction/flat_field_kernels.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"

namespace {

using namespace lx;
using namespace lx::correction;

std::array<std::uint16_t, 3> Components(LxBW8 level) { return {level, level, level}; }
std::array<std::uint16_t, 3> Components(LxBW16 level) { return {level, level, level}; }
std::array<std::uint16_t, 3> Components(LxC24 level) { return {level.c0, level.c1, level.c2}; }

template <class T>
inline constexpr bool kIsWord = std::is_same_v<T, LxBW16>;

// The elements that are corrected: pixels, or the components of colours.
template <class T, class... S>
PixelMap ElementsOf(LxROI<T>* destination, S*... sources) {
  PixelMap map = MapOf(destination, sources...);
  if (std::is_same_v<T, LxC24>) map.width *= 3;
  return map;
}

template <class T>
void ByImage(const char* trace, LxROI<T>* source, T level, LxROI<T>* reference,
             LxROI<T>* destination, int multiplicative) {
  RunOperation(trace, [&] {
    if (!Usable({source, reference, destination})) return;
    const PixelMap map = ElementsOf(destination, source, reference, reference);
    const Levels levels{Components(level)};
    if constexpr (kIsWord<T>) {
      (multiplicative != 0 ? ScaleWords : OffsetWords)(map, levels);
    } else {
      (multiplicative != 0 ? ScaleBytes : OffsetBytes)(map, levels);
    }
  });
}

template <class T>
void ByImages(const char* trace, LxROI<T>* source, T lightLevel, LxROI<T>* light, T darkLevel,
              LxROI<T>* dark, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!Usable({source, light, dark, destination})) return;
    const PixelMap map = ElementsOf(destination, source, light, dark);
    const Levels levels{Components(lightLevel), Components(darkLevel)};
    (kIsWord<T> ? StretchWords : StretchBytes)(map, levels);
  });
}

constexpr std::int64_t kUnit = 1 << 12;

// A column whose reference tells nothing becomes as bright as can be.
template <class T>
constexpr ColumnLine kBright = {0, kIsWord<T> ? 0xFFFF : 0xFF};

template <class T>
ColumnLine LineOf(int level, int reference, int multiplicative) {
  if (multiplicative == 0) return {kUnit, level - reference};
  return reference == 0 ? kBright<T> : ColumnLine{level * kUnit / reference, 0};
}

template <class T>
ColumnLine LineOf(int lightLevel, int light, int darkLevel, int dark) {
  if (light == dark) return kBright<T>;
  const std::int64_t rise = lightLevel - darkLevel;
  return {rise * kUnit / (light - dark), darkLevel - dark * rise / (light - dark)};
}

template <class T>
bool HasColumns(const LxVectorTemplate<T>* vector, const LxROI<T>* destination) {
  return Require(vector != nullptr, LX_ERROR_VECTOR_NO_DATA) &&
         Require(vector->GetNumElements() == destination->GetWidth(), LX_ERROR_WRONG_VECTOR_SIZE);
}

// Corrects with line(x, k) for component k of column x.
template <class T, class Line>
void Correct(LxROI<T>* source, LxROI<T>* destination, const Line& line) {
  constexpr std::size_t kComponents = std::is_same_v<T, LxC24> ? 3 : 1;
  // Rows stay rows, as their elements are corrected by different lines.
  PixelMap map;
  map.destination = RowsOf(destination);
  map.sources[0] = RowsOf(source);
  map.width = kComponents * destination->GetWidth();
  map.height = destination->GetHeight();
  const Scratch<ColumnLine> lines(map.width);
  if (!lines) return;
  for (std::size_t i = 0; i < map.width; ++i) {
    lines.get()[i] = line(static_cast<unsigned>(i / kComponents), i % kComponents);
  }
  (kIsWord<T> ? CorrectWords : CorrectBytes)(map, lines.get());
}

template <class T>
void ByVector(const char* trace, LxROI<T>* source, T level, LxVectorTemplate<T>* reference,
              LxROI<T>* destination, int multiplicative) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination}) || !HasColumns(reference, destination)) return;
    Correct(source, destination, [&](unsigned x, std::size_t k) {
      return LineOf<T>(Components(level)[k], Components((*reference)[x])[k], multiplicative);
    });
  });
}

template <class T>
void ByVectors(const char* trace, LxROI<T>* source, T lightLevel, LxVectorTemplate<T>* light,
               T darkLevel, LxVectorTemplate<T>* dark, LxROI<T>* destination) {
  RunOperation(trace, [&] {
    if (!Usable({source, destination})) return;
    if (!HasColumns(light, destination) || !HasColumns(dark, destination)) return;
    Correct(source, destination, [&](unsigned x, std::size_t k) {
      return LineOf<T>(Components(lightLevel)[k], Components((*light)[x])[k],
                       Components(darkLevel)[k], Components((*dark)[x])[k]);
    });
  });
}

}  // namespace

#define LX_FLAT_FIELD(pixel, name)                                                                 \
  void PicUniformize(LxROI<pixel>* source, pixel level, LxROI<pixel>* reference,                   \
                     LxROI<pixel>* destination, int multiplicative) {                              \
    ByImage("PicUniformize ( " name " Single Image)", source, level, reference, destination,       \
            multiplicative);                                                                       \
  }                                                                                                \
  void PicUniformize(LxROI<pixel>* source, pixel lightLevel, LxROI<pixel>* light, pixel darkLevel, \
                     LxROI<pixel>* dark, LxROI<pixel>* destination) {                              \
    ByImages("PicUniformize ( " name " Light/Dark Images)", source, lightLevel, light, darkLevel,  \
             dark, destination);                                                                   \
  }                                                                                                \
  void PicUniformize(LxROI<pixel>* source, pixel level, pixel##Vector* reference,                  \
                     LxROI<pixel>* destination, int multiplicative) {                              \
    ByVector<pixel>("PicUniformize ( " name " Single Vector)", source, level, reference,           \
                    destination, multiplicative);                                                  \
  }                                                                                                \
  void PicUniformize(LxROI<pixel>* source, pixel lightLevel, pixel##Vector* light,                 \
                     pixel darkLevel, pixel##Vector* dark, LxROI<pixel>* destination) {            \
    ByVectors<pixel>("PicUniformize ( " name " Light/Dark Vectors)", source, lightLevel, light,    \
                     darkLevel, dark, destination);                                                \
  }

LX_FLAT_FIELD(LxBW8, "BW8")
LX_FLAT_FIELD(LxBW16, "BW16")
LX_FLAT_FIELD(LxC24, "C24")
