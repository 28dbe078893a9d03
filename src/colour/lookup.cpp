// SPDX-License-Identifier: Apache-2.0
#include "lxpic/colour/lookup.h"

LxColorLookup::~LxColorLookup() = default;

void LxColorLookup::Transform(LxC24 colour, LxC24& result) { result = colour; }
