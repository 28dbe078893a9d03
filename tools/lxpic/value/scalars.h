// SPDX-License-Identifier: Apache-2.0
// Numbers, pixels, colours and choices from words of the command line.
#pragma once

#include <string>

#include "catalogue/catalogue.h"

namespace lx::tool {

/// The names of the choices that a parameter offers.
std::vector<std::string> ChoiceNames(const catalogue::Parameter& parameter);

/// Each reads `word` as a value of `parameter`, which is of the kind that its name says. They throw
/// Failure.
catalogue::Argument ReadConstant(const catalogue::Parameter& parameter, const std::string& word);
catalogue::Argument ReadChoice(const catalogue::Parameter& parameter, const std::string& word);
catalogue::Argument ReadInteger(const catalogue::Parameter& parameter, const std::string& word);
catalogue::Argument ReadReal(const catalogue::Parameter& parameter, const std::string& word);
catalogue::Argument ReadColour(const catalogue::Parameter& parameter, const std::string& word);

}  // namespace lx::tool
