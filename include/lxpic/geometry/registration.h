// SPDX-License-Identifier: Apache-2.0
/// @file registration.h
/// Brings an image onto a reference geometry: pivots of the source come to lie on those of the
/// destination.
///
/// What is said of resampling.h holds here: coordinates, interpolation, sizes, in place, errors.
#pragma once

#include "lxpic/geometry/resampling.h"

/// @name Register by one pivot
/// A translation: PicScaleRotate() with scale 1 and angle 0, whose traces are all.
/// @{
LXPIC_API void PicRegister(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float sourcePivotX,
                           float sourcePivotY, float destinationPivotX, float destinationPivotY,
                           int interpolation);
LXPIC_API void PicRegister(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float sourcePivotX,
                           float sourcePivotY, float destinationPivotX, float destinationPivotY,
                           int interpolation);
LXPIC_API void PicRegister(LxROI<LxC24>* source, LxROI<LxC24>* destination, float sourcePivotX,
                           float sourcePivotY, float destinationPivotX, float destinationPivotY,
                           int interpolation);
/// @}

/// @name Register by two pivots
/// PicScaleRotate() that brings pivot 0 onto pivot 0 and turns the line through the pivots onto that
/// of the destination's; with `scaling` other than 0 it also brings pivot 1 onto pivot 1. Angles are
/// stored in single precision; that of pivots which coincide is 0. Traces are those of
/// PicScaleRotate().
///
/// LX_ERROR_DIVISION_BY_ZERO also when `scaling` is asked for and pivots of one image coincide.
/// @{
LXPIC_API void PicRegister(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float destinationPivot0X, float destinationPivot0Y,
                           float destinationPivot1X, float destinationPivot1Y, int interpolation,
                           int scaling);
LXPIC_API void PicRegister(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float destinationPivot0X, float destinationPivot0Y,
                           float destinationPivot1X, float destinationPivot1Y, int interpolation,
                           int scaling);
LXPIC_API void PicRegister(LxROI<LxC24>* source, LxROI<LxC24>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float destinationPivot0X, float destinationPivot0Y,
                           float destinationPivot1X, float destinationPivot1Y, int interpolation,
                           int scaling);
/// @}

/// @name Register by three pivots
/// PicLinearTransform() that brings each pivot onto its own, which determines it. Pivots of the
/// source on one line set LX_ERROR_SINGULAR_SYSTEM before anything else is looked at. Traces
/// "PicRegister ( BW8, 3 pivots)", "PicRegister ( BW16, 3 pivots)", "PicRegister ( C24, 3 pivots)".
/// @{
LXPIC_API void PicRegister(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float sourcePivot2X, float sourcePivot2Y, float destinationPivot0X,
                           float destinationPivot0Y, float destinationPivot1X,
                           float destinationPivot1Y, float destinationPivot2X,
                           float destinationPivot2Y, int interpolation);
LXPIC_API void PicRegister(LxROI<LxBW16>* source, LxROI<LxBW16>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float sourcePivot2X, float sourcePivot2Y, float destinationPivot0X,
                           float destinationPivot0Y, float destinationPivot1X,
                           float destinationPivot1Y, float destinationPivot2X,
                           float destinationPivot2Y, int interpolation);
LXPIC_API void PicRegister(LxROI<LxC24>* source, LxROI<LxC24>* destination, float sourcePivot0X,
                           float sourcePivot0Y, float sourcePivot1X, float sourcePivot1Y,
                           float sourcePivot2X, float sourcePivot2Y, float destinationPivot0X,
                           float destinationPivot0Y, float destinationPivot1X,
                           float destinationPivot1Y, float destinationPivot2X,
                           float destinationPivot2Y, int interpolation);
/// @}
