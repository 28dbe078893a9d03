// SPDX-License-Identifier: Apache-2.0
/// @file export.h
/// Visibility of the library's public symbols.
#pragma once

#if defined(_WIN32)
#if defined(LXPIC_BUILDING)
#define LXPIC_API __declspec(dllexport)
#else
#define LXPIC_API __declspec(dllimport)
#endif
#define LXPIC_PRIVATE
#else
#define LXPIC_API __attribute__((visibility("default")))
/// Private members of exported classes are no symbols of the library.
#define LXPIC_PRIVATE __attribute__((visibility("hidden")))
#endif
