// SPDX-License-Identifier: Apache-2.0
// Thinning and thickening, pixel by pixel on masks of nine bits.
#include <array>

#include "support/reference.h"

namespace lx::test {

namespace {

constexpr std::array<unsigned, 9> kCell = {0x100, 0x020, 0x004, 0x080, 0x010,
                                           0x002, 0x040, 0x008, 0x001};

struct Pattern {
  unsigned care = 0;
  unsigned value = 0;
  bool outsideMatches = false;
};

// The mask with every outer cell moved to the next one.
unsigned Turned(unsigned mask, int rotation) {
  constexpr std::array<unsigned, 8> kWay = {0x100, 0x020, 0x004, 0x002, 0x001, 0x008, 0x040, 0x080};
  unsigned made = mask & 0x010;
  for (std::size_t i = 0; i < 8; ++i) {
    if ((mask & kWay[i]) != 0) made |= kWay[(i + (rotation == 1 ? 1 : 7)) % 8];
  }
  return made;
}

// One component, the picture before the pass and the one that it makes.
struct Pass {
  const Picture& before;
  Picture& after;
  int k;
  Value to;  // of matching pixels
  bool isFirst;

  bool Matches(const Pattern& pattern, int x, int y) const {
    unsigned bits = 0;
    for (std::size_t i = 0; i < 9; ++i) {
      const int column = x + static_cast<int>(i % 3) - 1;
      const int row = y + static_cast<int>(i / 3) - 1;
      const bool inside = column >= 0 && row >= 0 && column < before.width && row < before.height;
      const bool isSet = inside ? before.At(column, row, k) != 0
                                : pattern.outsideMatches && (pattern.value & kCell[i]) != 0;
      if (isSet) bits |= kCell[i];
    }
    return (bits & pattern.care) == pattern.value;
  }

  bool Run(const Pattern& pattern) const {
    bool changes = false;
    for (int y = 0; y < before.height; ++y) {
      for (int x = 0; x < before.width; ++x) {
        if (Matches(pattern, x, y)) {
          changes |= before.At(x, y, k) != to;
          after.At(x, y, k) = to;
        } else if (isFirst) {
          changes = true;
          after.At(x, y, k) = before.At(x, y, k) != 0 ? FormatOf(before.pixel).maximum : 0;
        }
      }
    }
    return changes;
  }
};

LX_ERRORS ReadPattern(LxKernel* kernel, Pattern& pattern) {
  if (kernel == nullptr) return LX_ERROR_KERNEL_NO_DATA;
  if (kernel->GetSizeX() != 3 || kernel->GetSizeY() != 3) return LX_ERROR_UNSUPPORTED_KERNEL_SIZE;
  for (std::size_t i = 0; i < 9; ++i) {
    const float cell = kernel->GetDataPtr()[i];
    if (cell != -1 && cell != 0 && cell != 1) return LX_ERROR_KERNEL_UNSUITABLE;
    if (cell >= 0) pattern.care |= kCell[i];
    if (cell > 0) pattern.value |= kCell[i];
  }
  pattern.outsideMatches = kernel->GetOutsideValue() != 0;
  return LX_OK;
}

// Component `k` from what `made` holds; `count` goes in and out.
LX_ERRORS Transform(Picture& made, int k, bool thickens, const Arguments& call, double& count) {
  Pattern pattern;
  const LX_ERRORS refused = ReadPattern(std::get<LxKernel*>(call.values[2]), pattern);
  if (refused != LX_OK) return refused;
  const auto rotation = static_cast<int>(call.Number(3));
  const double given = count;
  count = 0;
  if (given < 0 || given >= 1024) return LX_ERROR_ARGUMENT_5_OUT_OF_RANGE;
  int left = given == 0 ? made.width : static_cast<int>(given);
  if (made.values.empty()) left = 0;
  if (rotation != 0) left *= 8;
  int quiet = 8;
  int passes = 0;
  for (bool stop = false; left > 0 && !stop; --left) {
    const Picture before = made;
    const Value to = thickens ? FormatOf(made.pixel).maximum : 0;
    const bool changes = Pass{before, made, k, to, passes == 0}.Run(pattern);
    if (passes % 8 == 0) quiet = 8;
    ++passes;
    if (!changes) --quiet;
    stop = rotation == 0 ? !changes : quiet == 0;
    if (rotation == 0) continue;
    pattern.care = Turned(pattern.care, rotation);
    pattern.value = Turned(pattern.value, rotation);
  }
  count = rotation == 0 ? passes : passes / 8;
  return LX_OK;
}

void Add(std::vector<Reference>& all, const std::string& function, bool thickens) {
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const std::string regions = "(LxROI<" + pixel + ">*, LxROI<" + pixel + ">*, ";
    all.push_back(Measured(
        function + regions + "LxKernel*, KERNEL_ROTATION, int&)",
        [=](const Arguments& call, Outcome& outcome) {
          Picture made = outcome.Image(0);
          for (int k = 0; k < made.components; ++k) {
            const LX_ERRORS refused = Transform(made, k, thickens, call, outcome.Number(4));
            if (refused == LX_OK) continue;
            return outcome.Refuse(
                refused, made.components == 3 ? std::vector{function} : std::vector<std::string>());
          }
          outcome.Image(1) = made;
        }));
  }
}

}  // namespace

std::vector<Reference> ThinningReferences() {
  std::vector<Reference> all;
  Add(all, "PicThin", false);
  Add(all, "PicThick", true);
  // Passes of plain loops add up.
  for (Reference& each : all) each.rounds = 3;
  return all;
}

}  // namespace lx::test
