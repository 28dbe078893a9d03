// SPDX-License-Identifier: Apache-2.0
#include "catalogue/enumerations.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace lx::catalogue {

namespace {

struct Enumerator {
  std::int64_t value;
  std::string_view text;
};

#define LX_ENUMERATOR(name) \
  Enumerator { name, #name }

// "ARITH_LOGIC_HALF_DIFFERENCE" without its prefix becomes "half-difference".
std::string WordOf(std::string_view enumerator, std::size_t prefix) {
  std::string word(enumerator.substr(prefix));
  std::transform(word.begin(), word.end(), word.begin(), [](unsigned char c) {
    return c == '_' ? '-' : static_cast<char>(std::tolower(c));
  });
  return word;
}

std::vector<Named> WithoutPrefix(std::string_view prefix, const std::vector<Enumerator>& all) {
  std::vector<Named> named;
  for (const Enumerator& each : all) {
    named.push_back({each.value, WordOf(each.text, prefix.size())});
  }
  return named;
}

using Tables = std::map<std::string, std::vector<Named>, std::less<>>;

const Tables& AllTables() {
  static const Tables tables = {
      {"CONNEXITY",
       WithoutPrefix("CONNEXITY_", {LX_ENUMERATOR(CONNEXITY_4), LX_ENUMERATOR(CONNEXITY_8)})},
      {"CONTOUR_MODE",
       WithoutPrefix("CONTOUR_", {LX_ENUMERATOR(CONTOUR_CLOCKWISE),
                                  LX_ENUMERATOR(CONTOUR_CLOCKWISE_ALONG_BORDER),
                                  LX_ENUMERATOR(CONTOUR_CLOCKWISE_THEN_ANTICLOCKWISE),
                                  LX_ENUMERATOR(CONTOUR_ANTICLOCKWISE),
                                  LX_ENUMERATOR(CONTOUR_ANTICLOCKWISE_THEN_CLOCKWISE),
                                  LX_ENUMERATOR(CONTOUR_ANTICLOCKWISE_ALONG_BORDER)})},
      {"CONTOUR_THRESHOLD", WithoutPrefix("CONTOUR_", {LX_ENUMERATOR(CONTOUR_ABOVE_THRESHOLD),
                                                       LX_ENUMERATOR(CONTOUR_BELOW_THRESHOLD)})},
      {"TRANS_SCAN_EDGE", WithoutPrefix("TRANS_SCAN_EDGE_", {LX_ENUMERATOR(TRANS_SCAN_EDGE_RISING),
                                                             LX_ENUMERATOR(TRANS_SCAN_EDGE_FALLING),
                                                             LX_ENUMERATOR(TRANS_SCAN_EDGE_ANY)})},
      {"ARITH_LOGIC_OPERATIONS",
       WithoutPrefix("ARITH_LOGIC_", {LX_ENUMERATOR(ARITH_LOGIC_COPY),
                                      LX_ENUMERATOR(ARITH_LOGIC_INVERT),
                                      LX_ENUMERATOR(ARITH_LOGIC_ADD),
                                      LX_ENUMERATOR(ARITH_LOGIC_SUBTRACT),
                                      LX_ENUMERATOR(ARITH_LOGIC_MULTIPLY),
                                      LX_ENUMERATOR(ARITH_LOGIC_DIVIDE),
                                      LX_ENUMERATOR(ARITH_LOGIC_MODULO),
                                      LX_ENUMERATOR(ARITH_LOGIC_SHIFT_LEFT),
                                      LX_ENUMERATOR(ARITH_LOGIC_SHIFT_RIGHT),
                                      LX_ENUMERATOR(ARITH_LOGIC_AVERAGE),
                                      LX_ENUMERATOR(ARITH_LOGIC_HALF_DIFFERENCE),
                                      LX_ENUMERATOR(ARITH_LOGIC_SCALED_MULTIPLY),
                                      LX_ENUMERATOR(ARITH_LOGIC_SCALED_DIVIDE),
                                      LX_ENUMERATOR(ARITH_LOGIC_BITWISE_AND),
                                      LX_ENUMERATOR(ARITH_LOGIC_BITWISE_OR),
                                      LX_ENUMERATOR(ARITH_LOGIC_BITWISE_XOR),
                                      LX_ENUMERATOR(ARITH_LOGIC_LOGICAL_AND),
                                      LX_ENUMERATOR(ARITH_LOGIC_LOGICAL_OR),
                                      LX_ENUMERATOR(ARITH_LOGIC_LOGICAL_XOR),
                                      LX_ENUMERATOR(ARITH_LOGIC_MINIMUM),
                                      LX_ENUMERATOR(ARITH_LOGIC_MAXIMUM),
                                      LX_ENUMERATOR(ARITH_LOGIC_SET_WHERE_ZERO),
                                      LX_ENUMERATOR(ARITH_LOGIC_SET_WHERE_NONZERO),
                                      LX_ENUMERATOR(ARITH_LOGIC_EQUAL),
                                      LX_ENUMERATOR(ARITH_LOGIC_NOT_EQUAL),
                                      LX_ENUMERATOR(ARITH_LOGIC_GREATER_OR_EQUAL),
                                      LX_ENUMERATOR(ARITH_LOGIC_LESS_OR_EQUAL),
                                      LX_ENUMERATOR(ARITH_LOGIC_GREATER),
                                      LX_ENUMERATOR(ARITH_LOGIC_LESS),
                                      LX_ENUMERATOR(ARITH_LOGIC_ADD_WRAP),
                                      LX_ENUMERATOR(ARITH_LOGIC_SUBTRACT_WRAP),
                                      LX_ENUMERATOR(ARITH_LOGIC_VALUE_31),
                                      LX_ENUMERATOR(ARITH_LOGIC_VALUE_32),
                                      LX_ENUMERATOR(ARITH_LOGIC_ABSOLUTE_DIFFERENCE),
                                      LX_ENUMERATOR(ARITH_LOGIC_OVERLAY),
                                      LX_ENUMERATOR(ARITH_LOGIC_SET)})},
      {"KERNEL_ROTATION",
       WithoutPrefix("KERNEL_ROTATION_",
                     {LX_ENUMERATOR(KERNEL_ROTATION_NONE), LX_ENUMERATOR(KERNEL_ROTATION_CLOCKWISE),
                      LX_ENUMERATOR(KERNEL_ROTATION_ANTICLOCKWISE)})},
      {"KERNEL_TYPE",
       WithoutPrefix("KERNEL_",
                     {LX_ENUMERATOR(KERNEL_THIN), LX_ENUMERATOR(KERNEL_THICK),
                      LX_ENUMERATOR(KERNEL_SQUARE), LX_ENUMERATOR(KERNEL_SOBEL_X),
                      LX_ENUMERATOR(KERNEL_SOBEL_Y), LX_ENUMERATOR(KERNEL_PREWITT_X),
                      LX_ENUMERATOR(KERNEL_PREWITT_Y), LX_ENUMERATOR(KERNEL_LAPLACIAN_4),
                      LX_ENUMERATOR(KERNEL_LAPLACIAN_8), LX_ENUMERATOR(KERNEL_GAUSSIAN),
                      LX_ENUMERATOR(KERNEL_RING), LX_ENUMERATOR(KERNEL_UNIFORM),
                      LX_ENUMERATOR(KERNEL_HIGHPASS_1), LX_ENUMERATOR(KERNEL_HIGHPASS_2)})},
      {"LX_IMAGE_TYPES",
       WithoutPrefix("LX_IMAGE_",
                     {LX_ENUMERATOR(LX_IMAGE_NONE), LX_ENUMERATOR(LX_IMAGE_BW8),
                      LX_ENUMERATOR(LX_IMAGE_BW16), LX_ENUMERATOR(LX_IMAGE_BW32),
                      LX_ENUMERATOR(LX_IMAGE_C24), LX_ENUMERATOR(LX_IMAGE_GRADIENT32)})},
      {"PIC_HISTOGRAM_FEATURE",
       WithoutPrefix(
           "PIC_HIST_",
           {LX_ENUMERATOR(PIC_HIST_MOST_FREQUENT_VALUE),
            LX_ENUMERATOR(PIC_HIST_MOST_FREQUENT_COUNT),
            LX_ENUMERATOR(PIC_HIST_LEAST_FREQUENT_VALUE),
            LX_ENUMERATOR(PIC_HIST_LEAST_FREQUENT_COUNT), LX_ENUMERATOR(PIC_HIST_LOWEST_VALUE),
            LX_ENUMERATOR(PIC_HIST_HIGHEST_VALUE), LX_ENUMERATOR(PIC_HIST_PIXEL_COUNT),
            LX_ENUMERATOR(PIC_HIST_AVERAGE_VALUE), LX_ENUMERATOR(PIC_HIST_STANDARD_DEVIATION)})},
      {"PIC_REFERENCE_NOISE",
       WithoutPrefix("PIC_REFERENCE_NOISE_", {LX_ENUMERATOR(PIC_REFERENCE_NOISE_NONE),
                                              LX_ENUMERATOR(PIC_REFERENCE_NOISE_INDEPENDENT),
                                              LX_ENUMERATOR(PIC_REFERENCE_NOISE_DEPENDENT)})},
      {"PIC_THRESHOLD_MODES",
       WithoutPrefix(
           "PIC_THRESHOLD_",
           {LX_ENUMERATOR(PIC_THRESHOLD_MIN_SQUARED_DEVIATION),
            LX_ENUMERATOR(PIC_THRESHOLD_MIN_ABSOLUTE_DEVIATION),
            LX_ENUMERATOR(PIC_THRESHOLD_ISODATA), LX_ENUMERATOR(PIC_THRESHOLD_MAX_ENTROPY),
            LX_ENUMERATOR(PIC_THRESHOLD_MIN_RESIDUE), LX_ENUMERATOR(PIC_THRESHOLD_RELATIVE)})}};
  return tables;
}

}  // namespace

const std::vector<Named>& NamesOf(std::string_view enumeration) {
  static const std::vector<Named> none;
  const auto found = AllTables().find(enumeration);
  return found == AllTables().end() ? none : found->second;
}

}  // namespace lx::catalogue
