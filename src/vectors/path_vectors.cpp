// SPDX-License-Identifier: Apache-2.0
#include "lxpic/vectors/path_vectors.h"

#include <cmath>
#include <ostream>

#include "foundation/frame.h"
#include "foundation/truncate.h"

namespace {

// Maps one coordinate of a path to the device.
struct Axis {
  float zoom;
  float pan;

  int operator()(std::int16_t coordinate) const {
    const auto position = static_cast<float>((coordinate + (0.5 + pan)) * zoom);
    return static_cast<int>(lx::TruncateTo32(std::floor(position)));
  }
};

template <class Path>
void DrawPath(const Path& path, HDC target, Axis x, Axis y) {
  if (y.zoom == 0.0F) y.zoom = x.zoom;
  lx::RunOperation(nullptr, [&] {
    if (target == nullptr || path.GetNumElements() == 0) return;
    const auto* point = path.begin();
    const auto& start = path.m_bClosed != 0 ? *(path.end() - 1) : *point++;
    target->MoveTo(x(start.m_n16X), y(start.m_n16Y));
    for (; point != path.end(); ++point) target->LineTo(x(point->m_n16X), y(point->m_n16Y));
  });
}

}  // namespace

LxPathVector::LxPathVector(unsigned capacity) { SetMaxElements(capacity, 1); }

LxBW8PathVector::LxBW8PathVector(unsigned capacity) { SetMaxElements(capacity, 1); }

LxBW16PathVector::LxBW16PathVector(unsigned capacity) { SetMaxElements(capacity, 1); }

LxC24PathVector::LxC24PathVector(unsigned capacity) { SetMaxElements(capacity, 1); }

LxPeaksVector::LxPeaksVector(unsigned capacity) { SetMaxElements(capacity, 1); }

void LxPathVector::Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const {
  DrawPath(*this, target, {zoomX, panX}, {zoomY, panY});
}

void LxBW8PathVector::Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const {
  DrawPath(*this, target, {zoomX, panX}, {zoomY, panY});
}

void LxBW16PathVector::Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const {
  DrawPath(*this, target, {zoomX, panX}, {zoomY, panY});
}

void LxC24PathVector::Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const {
  DrawPath(*this, target, {zoomX, panX}, {zoomY, panY});
}

std::ostream& operator<<(std::ostream& stream, const LxPeak& peak) {
  return stream << "( LxPeak : m_un32Start = " << peak.m_un32Start
                << " m_un32Length = " << peak.m_un32Length
                << " m_f32Center = " << static_cast<double>(peak.m_f32Center)
                << " m_n32Amplitude = " << peak.m_n32Amplitude << " m_n32Area = " << peak.m_n32Area
                << ")";
}

std::ostream& operator<<(std::ostream& stream, const LxPath& point) {
  return stream << "( LxPath : m_n16X = " << point.m_n16X << " m_n16Y = " << point.m_n16Y << ")";
}

std::ostream& operator<<(std::ostream& stream, const LxBW8Path& point) {
  return stream << "( LxBW8Path : m_n16X = " << point.m_n16X << " m_n16Y = " << point.m_n16Y
                << " m_bw8Pixel = " << point.m_bw8Pixel.value << ")";
}
