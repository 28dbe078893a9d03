// SPDX-License-Identifier: Apache-2.0
/// @file resampling.h
/// Images seen through an affine transform: moved, scaled, rotated, sheared.
///
/// Coordinates are in pixels: pixel (i, j) is the square from (i, j) to (i + 1, j + 1), the origin is
/// the top left corner of the region, and y points down. Source and destination have any sizes; the
/// destination keeps its own. Where a destination pixel comes from is computed backwards: its centre
/// goes through the inverse transform, whose coefficients, computed in single precision, are cut to
/// 16 fraction bits. Coordinates are exact from there on, however far apart or large the regions are.
/// A destination pixel whose point lies outside the source becomes 0.
///
/// `interpolation` is the number of fraction bits that weigh:
/// - 0: the pixel that the point lies in;
/// - 4 or 8: bilinear between the four pixels whose centres surround the point, with weights of that
///   many bits; the sum of the products is exact and truncated once. Points less than half a pixel
///   inside the border take the pixels of the edge.
///
/// The source may be the destination itself: a copy of it is resampled. Colours are resampled
/// component by component.
///
/// Errors, in the order of the checks: LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_DIVISION_BY_ZERO when the
/// transform has no inverse, or not all of it is finite; LX_ERROR_INCONSISTENT_ARGUMENTS when
/// `interpolation` is none of the above; LX_ERROR_ALLOCATION_FAILED. Nothing is written then. Points
/// that no 64-bit coordinate reaches are outside.
///
/// Traces are the function's name and "", " (BW16)" or " ( C24)", for the type of its images. An
/// operation that another one refuses for it traces the other's name first.
#pragma once

#include "lxpic/base/image.h"

/// @name Linear transform
/// Source point (x, y) goes to destination point (a0 x + a1 y + a2, b0 x + b1 y + b2).
/// @{
LXPIC_API void PicLinearTransform(LxROI<LxBW8>* source, float a0, float a1, float a2, float b0,
                                  float b1, float b2, LxROI<LxBW8>* destination, int interpolation);
LXPIC_API void PicLinearTransform(LxROI<LxBW16>* source, float a0, float a1, float a2, float b0,
                                  float b1, float b2, LxROI<LxBW16>* destination,
                                  int interpolation);
LXPIC_API void PicLinearTransform(LxROI<LxC24>* source, float a0, float a1, float a2, float b0,
                                  float b1, float b2, LxROI<LxC24>* destination, int interpolation);
/// @}

/// @name Scale and rotate
/// Scales the source along its axes, then rotates it by `angle`, in the current unit
/// (LxSetAngleUnit()), counter-clockwise as displayed; the source pivot comes to lie on the
/// destination pivot. A linear transform with a0 = scaleX cos, a1 = scaleY sin, b0 = -scaleX sin,
/// b1 = scaleY cos.
/// @{
LXPIC_API void PicScaleRotate(LxROI<LxBW8>* source, float sourcePivotX, float sourcePivotY,
                              float destinationPivotX, float destinationPivotY, float scaleX,
                              float scaleY, float angle, LxROI<LxBW8>* destination,
                              int interpolation);
LXPIC_API void PicScaleRotate(LxROI<LxBW16>* source, float sourcePivotX, float sourcePivotY,
                              float destinationPivotX, float destinationPivotY, float scaleX,
                              float scaleY, float angle, LxROI<LxBW16>* destination,
                              int interpolation);
LXPIC_API void PicScaleRotate(LxROI<LxC24>* source, float sourcePivotX, float sourcePivotY,
                              float destinationPivotX, float destinationPivotY, float scaleX,
                              float scaleY, float angle, LxROI<LxC24>* destination,
                              int interpolation);
/// @}

/// @name Scale and rotate in place
/// PicScaleRotate() of a copy of the region into the region.
/// @{
LXPIC_API void PicScaleRotate(LxROI<LxBW8>* region, float sourcePivotX, float sourcePivotY,
                              float destinationPivotX, float destinationPivotY, float scaleX,
                              float scaleY, float angle, int interpolation);
LXPIC_API void PicScaleRotate(LxROI<LxBW16>* region, float sourcePivotX, float sourcePivotY,
                              float destinationPivotX, float destinationPivotY, float scaleX,
                              float scaleY, float angle, int interpolation);
/// @}
