// SPDX-License-Identifier: Apache-2.0
/// @file complex.h
/// Spectra made visible, and their energy.
#pragma once
