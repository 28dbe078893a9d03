// SPDX-License-Identifier: Apache-2.0
/// @file projection.h
/// Sums and averages of the columns and of the rows of a region.
#pragma once

#include "lxpic/base/roi.h"
#include "lxpic/base/vector.h"

/// @name Projections
/// Vectors get as many elements as the region has columns, or rows. Sums are taken modulo 2^32 in
/// the forms that return them. Averages are those of the true sums, truncated. Runs do not count.
/// Errors, each with nothing changed: LX_ERROR_ROI_NOT_ATTACHED; LX_ERROR_VECTOR_NO_DATA: a null
/// vector; LX_ERROR_EMPTY_HISTOGRAM: averages of elements without a pixel;
/// LX_ERROR_ALLOCATION_FAILED.
/// @{

/// Element i is the sum of column i. Trace "PicProjectOnARow ( BW8 Image Sum)".
LXPIC_API void PicProjectOnARow(LxROI<LxBW8>* source, LxBW32Vector* sums);
/// Element i is the average of column i. Trace "PicProjectOnARow ( BW8 Image Average)".
LXPIC_API void PicProjectOnARow(LxROI<LxBW8>* source, LxBW8Vector* averages);
/// Element i is the sum of column i. Trace "PicProjectOnARow ( BW16 Image Sum)".
LXPIC_API void PicProjectOnARow(LxROI<LxBW16>* source, LxBW32Vector* sums);
/// Element i is the average of column i. Trace "PicProjectOnARow ( BW16 Image Average)".
LXPIC_API void PicProjectOnARow(LxROI<LxBW16>* source, LxBW16Vector* averages);
/// Element i is the average of column i, each component by itself. Trace
/// "PicProjectOnARow ( C24 Image Average)".
LXPIC_API void PicProjectOnARow(LxROI<LxC24>* source, LxC24Vector* averages);
/// The untyped vector is laid out anew as a histogram (kind 2) whose entry i is the sum of column i.
/// Trace "PicProjectOnARow ( LxVector)".
LXPIC_API void PicProjectOnARow(LxROI<LxBW8>* source, LxVector* sums);

/// Element i is the sum of row i. Trace "PicProjectOnAColumn ( BW8 Image Sum)".
LXPIC_API void PicProjectOnAColumn(LxROI<LxBW8>* source, LxBW32Vector* sums);
/// Element i is the average of row i. Trace "PicProjectOnAColumn ( BW8 Image Average)".
LXPIC_API void PicProjectOnAColumn(LxROI<LxBW8>* source, LxBW8Vector* averages);
/// Element i is the sum of row i. Trace "PicProjectOnAColumn ( BW16 Image Sum)".
LXPIC_API void PicProjectOnAColumn(LxROI<LxBW16>* source, LxBW32Vector* sums);
/// Element i is the average of row i. Trace "PicProjectOnAColumn ( BW16 Image Average)".
LXPIC_API void PicProjectOnAColumn(LxROI<LxBW16>* source, LxBW16Vector* averages);
/// Element i is the average of row i, each component by itself. Trace
/// "PicProjectOnAColumn ( C24 Image Average)".
LXPIC_API void PicProjectOnAColumn(LxROI<LxC24>* source, LxC24Vector* averages);
/// The untyped vector is laid out anew as a histogram (kind 2) whose entry i is the sum of row i.
/// Trace "PicProjectOnAColumn".
LXPIC_API void PicProjectOnAColumn(LxROI<LxBW8>* source, LxVector* sums);
/// @}
