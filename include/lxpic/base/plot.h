// SPDX-License-Identifier: Apache-2.0
/// @file plot.h
/// Line drawing: the target that applications implement, and plots with annotated axes.
#pragma once

#include "lxpic/base/export.h"

/// Where drawing goes. Coordinates are device pixels, y downwards. What a member throws ends the
/// drawing with LX_ERROR_INTERNAL, std::bad_alloc with LX_ERROR_ALLOCATION_FAILED.
class LXPIC_API LxDrawTarget {
 public:
  virtual ~LxDrawTarget();
  /// Sets the current position.
  virtual void MoveTo(int x, int y) = 0;
  /// Draws from the current position to (x, y), which becomes the current position.
  virtual void LineTo(int x, int y) = 0;
  /// Writes UTF-8 text whose left baseline end is at (x, y).
  virtual void Text(int x, int y, const char* text) = 0;
};

/// A device context.
using HDC = LxDrawTarget*;

/// Sets the current position of `target`; nothing when it is null.
LXPIC_API void MoveToEx(HDC target, int x, int y);
/// Draws a line on `target`; nothing when it is null.
LXPIC_API void LineTo(HDC target, int x, int y);

/// A plot: a range of values on two axes, mapped to a rectangle of a device.
class LXPIC_API LxPlot {
 public:
  /// Axes from 0 to 1.
  LxPlot() = default;

  /// Sets the range that the axes cover. An empty or not finite range counts as 0..1.
  void SetRange(double xMinimum, double xMaximum, double yMinimum, double yMaximum);
  /// Device column of value `x`, rounded to nearest and clamped to 32 bits. Like YView, it follows
  /// the rectangle of the last DrawAnnotations.
  int XView(double x) const;
  /// Device row of value `y`; larger values are higher up.
  int YView(double y) const;
  /// Draws both axes with their end values and labels inside the rectangle of `width` × `height`
  /// device pixels at (x, y), and maps the range to what the axes enclose. Null labels are left
  /// out; a null target only sets the mapping.
  void DrawAnnotations(HDC target, int x, int y, int width, int height, const char* xLabel,
                       const char* yLabel);
  /// Device row of the horizontal axis.
  int GetAxisOrigin() const { return m_n32AxisOrigin; }

 private:
  LXPIC_PRIVATE void DrawAxes(HDC target, const char* xLabel, const char* yLabel) const;

  double m_f64XMinimum = 0.0;
  double m_f64XMaximum = 1.0;
  double m_f64YMinimum = 0.0;
  double m_f64YMaximum = 1.0;
  int m_n32Left = 0;
  int m_n32Right = 1;
  int m_n32Top = 0;
  int m_n32AxisOrigin = 1;
};
