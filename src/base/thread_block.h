// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "lxpic/base/pixel.h"

namespace lx {

/// What LxGetTLSPtr() points to: the settings that every thread has for itself.
struct ThreadBlock {
  LxC24 overlayColour{0, 0, 255};
};

}  // namespace lx
