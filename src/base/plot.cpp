// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/plot.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "base/failure.h"

namespace {

// Room for the annotations around the axes, in device pixels; never more than a quarter each.
constexpr int kLeftMargin = 48;
constexpr int kRightMargin = 12;
constexpr int kTopMargin = 20;
constexpr int kBottomMargin = 32;
// Texts of the tool's standard size.
constexpr int kLineHeight = 14;
constexpr int kCharacterWidth = 7;

int Clamp(std::int64_t position) {
  return static_cast<int>(std::clamp<std::int64_t>(position, INT_MIN, INT_MAX));
}

void SetAxis(double minimum, double maximum, double& low, double& high) {
  const bool usable = std::isfinite(maximum - minimum) && minimum < maximum;
  low = usable ? minimum : 0.0;
  high = usable ? maximum : 1.0;
}

int View(double value, double low, double high, int first, int last) {
  const double position =
      std::round(first + (value - low) / (high - low) * (static_cast<double>(last) - first));
  if (std::isnan(position)) return first;
  return static_cast<int>(std::clamp<double>(position, INT_MIN, INT_MAX));
}

void Inset(int start, int length, int before, int after, int& first, int& last) {
  const int usable = std::max(length, 1);
  first = Clamp(std::int64_t{start} + std::min(before, usable / 4));
  last = Clamp(std::int64_t{start} + usable - 1 - std::min(after, usable / 4));
}

void Line(HDC target, int x0, int y0, int x1, int y1) {
  target->MoveTo(x0, y0);
  target->LineTo(x1, y1);
}

using Number = std::array<char, 32>;

// The text of an axis end, and its width in device pixels.
int Format(double value, Number& text) {
  return kCharacterWidth * std::snprintf(text.data(), text.size(), "%g", value);
}

}  // namespace

LxDrawTarget::~LxDrawTarget() = default;

void MoveToEx(HDC target, int x, int y) {
  if (target != nullptr) lx::RunGuarded([&] { target->MoveTo(x, y); });
}

void LineTo(HDC target, int x, int y) {
  if (target != nullptr) lx::RunGuarded([&] { target->LineTo(x, y); });
}

void LxPlot::SetRange(double xMinimum, double xMaximum, double yMinimum, double yMaximum) {
  SetAxis(xMinimum, xMaximum, m_f64XMinimum, m_f64XMaximum);
  SetAxis(yMinimum, yMaximum, m_f64YMinimum, m_f64YMaximum);
}

int LxPlot::XView(double x) const {
  return View(x, m_f64XMinimum, m_f64XMaximum, m_n32Left, m_n32Right);
}

int LxPlot::YView(double y) const {
  return View(y, m_f64YMinimum, m_f64YMaximum, m_n32AxisOrigin, m_n32Top);
}

void LxPlot::DrawAnnotations(HDC target, int x, int y, int width, int height, const char* xLabel,
                             const char* yLabel) {
  Inset(x, width, kLeftMargin, kRightMargin, m_n32Left, m_n32Right);
  Inset(y, height, kTopMargin, kBottomMargin, m_n32Top, m_n32AxisOrigin);
  if (target != nullptr) lx::RunGuarded([&] { DrawAxes(target, xLabel, yLabel); });
}

void LxPlot::DrawAxes(HDC target, const char* xLabel, const char* yLabel) const {
  Line(target, m_n32Left, m_n32AxisOrigin, m_n32Right, m_n32AxisOrigin);
  Line(target, m_n32Left, m_n32AxisOrigin, m_n32Left, m_n32Top);

  const int below = Clamp(std::int64_t{m_n32AxisOrigin} + kLineHeight);
  const auto leftOf = [](int edge, int textWidth) { return Clamp(std::int64_t{edge} - textWidth); };
  Number text;
  Format(m_f64XMinimum, text);
  target->Text(m_n32Left, below, text.data());
  const int xWidth = Format(m_f64XMaximum, text);
  target->Text(leftOf(m_n32Right, xWidth), below, text.data());
  const int lowWidth = Format(m_f64YMinimum, text);
  target->Text(leftOf(m_n32Left, lowWidth), m_n32AxisOrigin, text.data());
  const int highWidth = Format(m_f64YMaximum, text);
  target->Text(leftOf(m_n32Left, highWidth), Clamp(std::int64_t{m_n32Top} + kLineHeight),
               text.data());
  if (xLabel != nullptr) {
    target->Text(m_n32Left, Clamp(std::int64_t{below} + kLineHeight), xLabel);
  }
  if (yLabel != nullptr) target->Text(m_n32Left, leftOf(m_n32Top, kLineHeight / 2), yLabel);
}
