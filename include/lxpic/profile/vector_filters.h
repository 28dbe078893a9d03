// SPDX-License-Identifier: Apache-2.0
/// @file vector_filters.h
/// Convolution, runs beyond limits and shifts of untyped vectors.
#pragma once
