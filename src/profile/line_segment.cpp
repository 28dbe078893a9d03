// SPDX-License-Identifier: Apache-2.0
#include "lxpic/profile/line_segment.h"

#include <cstring>

#include "foundation/frame.h"
#include "foundation/rows.h"
#include "vectors/line.h"

namespace {

using namespace lx;
using vectors::Line;
using vectors::Point;

bool RequireInside(int coordinate, std::uint32_t size, LX_ERRORS code) {
  return Require(coordinate >= 0 && static_cast<std::uint32_t>(coordinate) < size, code);
}

bool EndsInside(const LxGenericROI* region, Point from, Point to) {
  const std::uint32_t width = region->GetWidth();
  const std::uint32_t height = region->GetHeight();
  return RequireInside(from.x, width, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE) &&
         RequireInside(from.y, height, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE) &&
         RequireInside(to.x, width, LX_ERROR_ARGUMENT_5_OUT_OF_RANGE) &&
         RequireInside(to.y, height, LX_ERROR_ARGUMENT_6_OUT_OF_RANGE);
}

// Calls visit(pixel) with the address of each pixel, which may be any.
template <class T, class Visit>
void ForEachPixel(const LxROI<T>* region, const Line& line, const Visit& visit) {
  const Rows rows = RowsOf(region);
  line.ForEachOffset(sizeof(T), rows.pitch,
                     [&](std::ptrdiff_t offset) { visit(rows.data + offset); });
}

template <class T>
void Sample(const char* trace, LxROI<T>* source, LxVectorTemplate<T>* profile, Point from,
            Point to) {
  RunOperation(trace, [&] {
    if (!Attached({source}) || !Require(profile != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    if (!EndsInside(source, from, to)) return;
    const Line line(from, to);
    profile->SetMaxElements(line.Count(), 1);
    if (LxGetError() != LX_OK) return;
    profile->SetNumElements(line.Count());
    T* element = profile->GetDataPtr();
    ForEachPixel(source, line,
                 [&](const void* pixel) { std::memcpy(element++, pixel, sizeof(T)); });
  });
}

template <class T>
void DrawProfile(const char* trace, LxROI<T>* destination, const LxVectorTemplate<T>* profile,
                 Point from, Point to) {
  RunOperation(trace, [&] {
    if (!Attached({destination}) || !Require(profile != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    if (!EndsInside(destination, from, to)) return;
    const Line line(from, to);
    if (!Require(profile->GetNumElements() == line.Count(), LX_ERROR_WRONG_VECTOR_SIZE)) return;
    const T* element = profile->GetDataPtr();
    ForEachPixel(destination, line, [&](void* pixel) { std::memcpy(pixel, element++, sizeof(T)); });
  });
}

template <class T>
void DrawValue(const char* trace, LxROI<T>* destination, T value, Point from, Point to) {
  RunOperation(trace, [&] {
    if (!Attached({destination}) || !EndsInside(destination, from, to)) return;
    ForEachPixel(destination, Line(from, to),
                 [&](void* pixel) { std::memcpy(pixel, &value, sizeof(T)); });
  });
}

}  // namespace

#define LX_SEGMENT_FORMS(pixel, suffix)                                                            \
  void PicImageToLineSegment(LxROI<Lx##pixel>* source, Lx##pixel##Vector* profile, int x0, int y0, \
                             int x1, int y1) {                                                     \
    Sample("PicImageToLineSegment ( " suffix ")", source, profile, {x0, y0}, {x1, y1});            \
  }                                                                                                \
  void PicLineSegmentToImage(LxROI<Lx##pixel>* destination, Lx##pixel##Vector* profile, int x0,    \
                             int y0, int x1, int y1) {                                             \
    DrawProfile("PicLineSegmentToImage ( " suffix ", vector)", destination, profile, {x0, y0},     \
                {x1, y1});                                                                         \
  }                                                                                                \
  void PicLineSegmentToImage(LxROI<Lx##pixel>* destination, Lx##pixel value, int x0, int y0,       \
                             int x1, int y1) {                                                     \
    DrawValue("PicLineSegmentToImage ( " suffix ", const)", destination, value, {x0, y0},          \
              {x1, y1});                                                                           \
  }

LX_SEGMENT_FORMS(BW8, "BW8")
LX_SEGMENT_FORMS(BW16, "BW16")
LX_SEGMENT_FORMS(C24, "C24")

#undef LX_SEGMENT_FORMS
