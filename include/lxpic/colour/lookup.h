// SPDX-License-Identifier: Apache-2.0
/// @file lookup.h
/// Colour lookups.
#pragma once

#include "lxpic/base/export.h"
#include "lxpic/base/pixel.h"

/// A transform of single colours. Applications derive from it.
class LXPIC_API LxColorLookup {
 public:
  virtual ~LxColorLookup();
  /// Stores the transformed `colour` in `result`. The default is the identity.
  virtual void Transform(LxC24 colour, LxC24& result);
};
