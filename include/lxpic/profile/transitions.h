// SPDX-License-Identifier: Apache-2.0
/// @file transitions.h
/// Segments as untyped vectors, and crossings of a threshold along them.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"

/// Which crossings of a threshold are recorded.
enum TRANS_SCAN_EDGE : int {
  TRANS_SCAN_EDGE_RISING = 1,   ///< from below the threshold to it or above
  TRANS_SCAN_EDGE_FALLING = 2,  ///< from above the threshold to it or below
  TRANS_SCAN_EDGE_ANY = 3       ///< both
};

/// @name Segments of an image
/// A segment is the digital line from (x0, y0) to (x1, y1), both included: it has a pixel for each
/// column, or for each row where there are more of them, and takes the one that lies nearer. As an
/// untyped vector it is of kind 4 (LX_VECTOR_SEGMENT), with a group of three signed 32-bit integers
/// for each pixel. Results of that kind with room keep their storage, all others are laid out anew.
/// Vectors whose groups are longer than three are not of that kind.
///
/// Refusals change nothing. Regions that are missing or not attached come first
/// (LX_ERROR_ROI_NOT_ATTACHED); then coordinates outside the region, each with the code of its
/// argument; then vectors that are null (LX_ERROR_VECTOR_NO_DATA); then what each form says.
/// @{

/// Writes level, column and row of each pixel to `vector`, with use code 5.
/// LX_ERROR_ALLOCATION_FAILED, after "LxVector::SetType". Trace "PicLineSegToVect".
LXPIC_API void PicLineSegToVect(LxROI<LxBW8>* region, LxVector* vector, int x0, int y0, int x1,
                                int y1);

/// Writes the level of each group, clamped to 0..255, to the pixel that it names. A vector that
/// PicLineSegToVect() did not make, of another kind or use code or without a group, sets
/// LX_ERROR_WRONG_VECTOR_KIND; a group outside the region LX_ERROR_INCONSISTENT_ARGUMENTS. Trace
/// "PicVectToLineSeg".
LXPIC_API void PicVectToLineSeg(LxVector* vector, LxROI<LxBW8>* region);
/// Writes the levels, clamped to 0..255, along a segment; columns and rows in the vector do not
/// matter, nor does its use code. A vector of another kind, or with fewer groups than the segment
/// has pixels, sets LX_ERROR_WRONG_VECTOR_KIND. Trace "PicVectToLineSeg".
LXPIC_API void PicVectToLineSeg(LxVector* vector, int x0, int y0, int x1, int y1,
                                LxROI<LxBW8>* region);

/// Writes column, row and direction (1 rising, 2 falling) of the first pixel behind each crossing of
/// the threshold to `result`, at most `maximum` of them; 0 or below means all. An edge that does not
/// exist sets LX_ERROR_UNSUPPORTED_OPERATION, before the coordinates are looked at.
/// LX_ERROR_ALLOCATION_FAILED, after "LxVector::SetType". Trace "PicTransitionScan".
LXPIC_API void PicTransitionScan(TRANS_SCAN_EDGE edge, LxROI<LxBW8>* region, int x0, int y0, int x1,
                                 int y1, int threshold, int maximum, LxVector* result);
/// @}

/// @name Crossings in a vector
/// Finds where the elements of the first group of `source` cross the threshold: from it or below to
/// above it, or back. `result` gets pairs of signed 32-bit integers, with use code 7: the index of
/// the element before the crossing, and the difference to the next one, modulo 2^32. It is laid out
/// anew, for as many pairs as its storage had room for, or without any storage for a sixteenth of
/// the elements.
///
/// Errors, in this order: LX_ERROR_VECTOR_NO_DATA: a null vector; LX_ERROR_DESTINATION_IS_SOURCE;
/// LX_ERROR_VECTOR_EMPTY: no group; LX_ERROR_UNSUPPORTED_DATA_SIZE: not of 8, 16 or 32 bits;
/// LX_ERROR_UNSUPPORTED_DATA_TYPE: not of the form's sign; LX_ERROR_ALLOCATION_FAILED, after
/// "LxVector::SetStructure"; LX_ERROR_TOO_MANY_TRANSITIONS: a pair too many, with all that fitted
/// in the result, whose groups are all in use. Trace "PicGetVectTransition".
/// @{

/// Of signed integers.
LXPIC_API void PicGetVectTransition(LxVector* source, LxVector* result, int threshold);
/// Of unsigned integers; differences are magnitudes.
LXPIC_API void PicGetVectTransition(LxVector* source, LxVector* result, unsigned int threshold);
/// @}
