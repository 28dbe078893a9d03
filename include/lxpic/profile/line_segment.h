// SPDX-License-Identifier: Apache-2.0
/// @file line_segment.h
/// Profiles along line segments of an image, and lines drawn into it.
#pragma once
