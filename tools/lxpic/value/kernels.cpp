// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/kernels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "catalogue/enumerations.h"
#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/common/words.h"

namespace lx::tool {

namespace {

template <class T>
struct Named {
  const char* name;
  T value;
};

constexpr std::array<Named<KERNEL_RECTIFIER>, 4> kRectifiers = {{
    {"none", RECTIFIER_NONE},
    {"negative", RECTIFIER_NEGATIVE},
    {"positive", RECTIFIER_POSITIVE},
    {"absolute", RECTIFIER_ABSOLUTE},
}};

template <class Table>
auto FindName(const Table& table, const std::string& name) {
  const auto found =
      std::find_if(table.begin(), table.end(), [&](const auto& each) { return each.name == name; });
  if (found != table.end()) return found->value;
  std::vector<std::string> names;
  for (const auto& each : table) names.emplace_back(each.name);
  throw Failure(kWrongUsage, "'" + name + "' is not known" + Suggestion(name, names));
}

KERNEL_TYPE FindPreset(const std::string& name) {
  return static_cast<KERNEL_TYPE>(FindName(catalogue::NamesOf("KERNEL_TYPE"), name));
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = 0; end != std::string::npos; start = end + 1) {
    end = text.find(separator, start);
    parts.push_back(text.substr(start, end - start));
  }
  return parts;
}

std::shared_ptr<LxKernel> KernelOfRows(const std::string& text) {
  std::vector<double> coefficients;
  const auto rows = Split(text, '/');
  for (const std::string& row : rows) {
    const auto numbers = ReadNumbers(row);
    if (!numbers) throw Failure(kWrongUsage, "'" + row + "' is not a row of coefficients");
    coefficients.insert(coefficients.end(), numbers->begin(), numbers->end());
    const bool even =
        coefficients.size() % numbers->size() == 0 &&
        coefficients.size() / numbers->size() == static_cast<std::size_t>(&row - rows.data()) + 1;
    if (!even) throw Failure(kWrongUsage, "the rows of a kernel must have the same length");
  }
  constexpr std::size_t kMaxCoefficients = std::numeric_limits<short>::max();
  if (coefficients.size() > kMaxCoefficients) {
    throw Failure(kWrongUsage, "the kernel has too many coefficients");
  }
  LxOk();
  auto kernel =
      std::make_shared<LxKernel>(static_cast<short>(coefficients.size() / rows.size()),
                                 static_cast<short>(rows.size()), 1.0F, 0U, RECTIFIER_POSITIVE, 0U);
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, "no memory for a kernel");
  std::transform(coefficients.begin(), coefficients.end(), kernel->GetDataPtr(),
                 [](double each) { return static_cast<float>(each); });
  return kernel;
}

double SettingNumber(const std::string& value) {
  if (const auto number = ReadNumber(value)) return *number;
  throw Failure(kWrongUsage, "'" + value + "' is not a number");
}

unsigned SettingCount(const std::string& value) {
  const double number = SettingNumber(value);
  if (number >= 0 && number <= std::numeric_limits<std::uint32_t>::max() &&
      number == std::floor(number)) {
    return static_cast<unsigned>(number);
  }
  throw Failure(kWrongUsage, "'" + value + "' is not a whole number of 0 or above");
}

using Setter = void (*)(LxKernel& kernel, const std::string& value);

constexpr std::array<Named<Setter>, 4> kSettings = {{
    {"gain",
     [](LxKernel& kernel, const std::string& value) {
       kernel.SetGain(static_cast<float>(SettingNumber(value)));
     }},
    {"offset",
     [](LxKernel& kernel, const std::string& value) { kernel.SetOffset(SettingCount(value)); }},
    {"rectifier",
     [](LxKernel& kernel, const std::string& value) {
       kernel.SetRectifier(FindName(kRectifiers, value));
     }},
    {"outside", [](LxKernel& kernel,
                   const std::string& value) { kernel.SetOutsideValue(SettingCount(value)); }},
}};

}  // namespace

std::shared_ptr<LxKernel> ReadKernel(const std::string& word) {
  const auto parts = Split(word, ':');
  const bool isRows = ReadNumbers(parts.front().substr(0, parts.front().find('/'))).has_value();
  auto kernel =
      isRows ? KernelOfRows(parts.front()) : std::make_shared<LxKernel>(FindPreset(parts.front()));
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const std::size_t equals = std::min(parts[i].find('='), parts[i].size());
    FindName(kSettings, parts[i].substr(0, equals))(
        *kernel, parts[i].substr(std::min(equals + 1, parts[i].size())));
  }
  return kernel;
}

}  // namespace lx::tool
