// SPDX-License-Identifier: Apache-2.0
// Lookup tables and vectors from words of the command line.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "lxpic/lxpic.h"
#include "tools/lxpic/value/numbers.h"

namespace lx::tool {

/// Text for the help: the forms that ReadTable understands.
inline constexpr const char* kTableForms =
    "a file of numbers, identity, invert, gamma:G or threshold:N";

/// Reads the text of a table's file. Throws Failure, which names the file.
using ReadFileText = std::function<std::string(const std::string& path)>;

/// The text of a file of at most 1 MiB, which no table exceeds.
std::string ReadTableText(const std::string& path);

/// A table of values 0..`maximum`. The named forms have `size` entries, a file has as many as it
/// holds. "gamma:G" raises to the power 1/G, "threshold:N" is `maximum` from N upwards. Throws
/// Failure.
std::vector<unsigned> ReadTable(const std::string& word, std::size_t size, unsigned maximum,
                                const ReadFileText& readText);

/// "1,2,3" as signed 32-bit elements; a prefix "u8:", "s8:", "u16:", "s16:", "u32:", "s32:" or
/// "f32:" names another type. What it stands for says how elements make up groups: signals are one
/// group, and three elements are a pixel of a line. Throws Failure.
std::shared_ptr<LxVector> ReadVector(const std::string& word, catalogue::Meaning meaning);

/// The elements, of which each holds a group. Nothing for a layout that is not known.
Numbers VectorNumbers(const LxVector& vector);

}  // namespace lx::tool
