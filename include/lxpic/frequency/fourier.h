// SPDX-License-Identifier: Apache-2.0
/// @file fourier.h
/// Fourier transforms of grey images.
#pragma once
