// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>

namespace lx {

/// fopen() that gives null for a null name.
std::FILE* OpenFile(const char* name, const char* mode);

/// The same for a zero-terminated UTF-16 name, which is opened under its UTF-8 form. A name with a
/// lone surrogate has none and is not opened.
std::FILE* OpenFile(const unsigned short* name, const char* mode);

}  // namespace lx
