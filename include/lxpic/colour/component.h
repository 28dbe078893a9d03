// SPDX-License-Identifier: Apache-2.0
/// @file component.h
/// Extraction and insertion of single colour components.
#pragma once

#include "lxpic/base/export.h"
#include "lxpic/base/image.h"
#include "lxpic/colour/lookup.h"

/// Writes component `index` (0..2) of every pixel of `source`, passed through `lookup` when that is
/// not null, into `plane`, which must have the same size. Errors: LX_ERROR_ROI_NOT_ATTACHED,
/// LX_ERROR_SIZE_MISMATCH, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE; LX_ERROR_INTERNAL after an exception
/// from the lookup. Trace "TintGetComponent".
LXPIC_API void TintGetComponent(LxROI<LxC24>* source, LxROI<LxBW8>* plane, unsigned index,
                                LxColorLookup* lookup);

/// Writes `plane` into component `index` (0..2) of every pixel of `target`, which must have the
/// same size; the other components stay. Errors as TintGetComponent. Trace "TintSetComponent".
LXPIC_API void TintSetComponent(LxROI<LxBW8>* plane, LxROI<LxC24>* target, unsigned index);
