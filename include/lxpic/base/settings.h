// SPDX-License-Identifier: Apache-2.0
/// @file settings.h
/// Process-wide settings and the per-thread block.
#pragma once

#include "lxpic/base/export.h"

/// Unit of the angles that geometric operations take and give.
enum LX_ANGLE_UNITS : int {
  LX_ANGLE_UNIT_DEGREES = 0,  ///< 360 to a turn (the default)
  LX_ANGLE_UNIT_RADIANS = 1,
  LX_ANGLE_UNIT_REVOLUTIONS = 2,
  LX_ANGLE_UNIT_GRADS = 3  ///< 400 to a turn
};

/// Non-zero when fast paths may be used. On at start; process-wide, safe to read from any thread.
LXPIC_API int LxGetMMX();

/// Switches the fast paths off (0) or on (any other value) for the calls that start afterwards.
LXPIC_API void LxSetMMX(int enabled);

/// The angle unit in force; degrees at start.
LXPIC_API LX_ANGLE_UNITS LxGetAngleUnit();

/// Sets the angle unit, process-wide. A value outside the enumeration sets
/// `LX_ERROR_ARGUMENT_1_OUT_OF_RANGE` and changes nothing; trace "LxSetAngleUnit".
LXPIC_API void LxSetAngleUnit(LX_ANGLE_UNITS unit);

/// An angle in the current unit, converted to radians.
LXPIC_API float LxToRadians(float angle);

/// An angle in radians, converted to the current unit.
LXPIC_API float LxFromRadians(float angle);

/// Address of the calling thread's storage block, which holds the overlay colour. Never null.
LXPIC_API void* LxGetTLSPtr();
