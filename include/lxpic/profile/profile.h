// SPDX-License-Identifier: Apache-2.0
/// @file profile.h
/// Peaks of profiles, and filters of one dimension.
#pragma once
