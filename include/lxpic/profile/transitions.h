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
