// SPDX-License-Identifier: Apache-2.0
/// @file gradient.h
/// Gradient images through lookup images.
#pragma once
