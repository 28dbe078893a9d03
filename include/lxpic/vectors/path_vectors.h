// SPDX-License-Identifier: Apache-2.0
/// @file path_vectors.h
/// Vectors of path points and of peaks, and the text form of their elements.
#pragma once

#include <iosfwd>

#include "lxpic/base/plot.h"
#include "lxpic/vectors/elements.h"

/// @name Paths
/// Points in the order in which a path visits them. Made empty, with room for `capacity` points;
/// LX_ERROR_ALLOCATION_FAILED leaves no room. A copy has the points and `m_bClosed`.
///
/// `Draw` draws the path as one line through the centres of its pixels: the point (x, y) lies at
/// `floor((x + 0.5 + panX) * zoomX)`, `floor((y + 0.5 + panY) * zoomY)`, the products in single
/// precision, positions that no device has clamped to 32 bits. A `zoomY` of 0 is `zoomX`. A closed
/// path starts at its last point. A null target or an empty path draws nothing. It reports nothing
/// but what the target throws.
/// @{

class LXPIC_API LxPathVector : public LxVectorTemplate<LxPath> {
 public:
  explicit LxPathVector(unsigned capacity);
  void Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const;

  int m_bClosed = 0;  ///< non-zero when the last point is joined to the first
};

class LXPIC_API LxBW8PathVector : public LxVectorTemplate<LxBW8Path> {
 public:
  explicit LxBW8PathVector(unsigned capacity);
  void Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const;

  int m_bClosed = 0;  ///< non-zero when the last point is joined to the first
};

class LXPIC_API LxBW16PathVector : public LxVectorTemplate<LxBW16Path> {
 public:
  explicit LxBW16PathVector(unsigned capacity);
  void Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const;

  int m_bClosed = 0;  ///< non-zero when the last point is joined to the first
};

class LXPIC_API LxC24PathVector : public LxVectorTemplate<LxC24Path> {
 public:
  explicit LxC24PathVector(unsigned capacity);
  void Draw(HDC target, float zoomX, float zoomY, float panX, float panY) const;

  int m_bClosed = 0;  ///< non-zero when the last point is joined to the first
};
/// @}

/// Peaks of a profile.
class LXPIC_API LxPeaksVector : public LxVectorTemplate<LxPeak> {
 public:
  /// Empty, with room for `capacity` peaks; LX_ERROR_ALLOCATION_FAILED leaves no room.
  explicit LxPeaksVector(unsigned capacity);
};

/// @name Text
/// One element in parentheses, its fields by name: `( LxPath : m_n16X = 3 m_n16Y = -4)`. Numbers
/// follow the format of the stream; a grey level of 8 bits is the character of that code. No line
/// break.
/// @{
LXPIC_API std::ostream& operator<<(std::ostream& stream, const LxPeak& peak);
LXPIC_API std::ostream& operator<<(std::ostream& stream, const LxPath& point);
LXPIC_API std::ostream& operator<<(std::ostream& stream, const LxBW8Path& point);
/// @}
