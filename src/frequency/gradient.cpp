// SPDX-License-Identifier: Apache-2.0
#include "lxpic/frequency/gradient.h"

#include <cmath>
#include <cstring>

#include "foundation/frame.h"
#include "frequency/gradient_kernels.h"
#include "lxpic/base/settings.h"

namespace {

using namespace lx;
using namespace lx::frequency;

// A table of what rule(dx, dy) gives.
template <class Rule>
void FillTable(LxImage<LxBW8>* table, const Rule& rule) {
  if (!Require(table != nullptr, LX_ERROR_ROI_NOT_ATTACHED) ||
      !Resize(table, kTableSide, kTableSide)) {
    return;
  }
  for (int row = 0; row < kTableSide; ++row) {
    auto* const to = RowsOf(table).Row<std::uint8_t>(static_cast<std::size_t>(row));
    for (int column = 0; column < kTableSide; ++column) {
      to[column] = rule(column - kTableCentre, row - kTableCentre);
    }
  }
}

std::uint8_t MagnitudeCode(double value) {
  if (!(value < 256)) return 255;
  return value <= 0 ? 0 : static_cast<std::uint8_t>(value);
}

std::uint8_t DirectionCode(double value) {
  constexpr double kBeyond64Bits = 0x1p63;
  if (!(std::abs(value) < kBeyond64Bits)) return 255;
  return static_cast<std::uint8_t>(static_cast<std::int64_t>(value));
}

// Codes to a radian.
float CodesOf(float period) {
  constexpr float kOfFullTurn = 40.7436637878418F;
  return period == 0 ? kOfFullTurn : 256.0F / LxToRadians(period);
}

template <class S, class D>
GradientImage ImageOf(const LxROI<S>* source, const LxROI<D>* destination) {
  return {RowsOf(destination), RowsOf(source), source->GetWidth(), source->GetHeight()};
}

// Calls run(image, scratch) unless there is nothing to do.
template <class Run>
void RunInRows(const GradientImage& image, const Run& run) {
  if (image.width == 0 || image.height == 0) return;
  const Scratch<std::uint8_t> scratch(GradientBytes(image.width));
  if (scratch) run(image, scratch.get());
}

// Calls run(rows of the table), of a copy when they are too far apart.
template <class Run>
void RunWithTable(const LxROI<LxBW8>* table, const Run& run) {
  const Rows rows = RowsOf(table);
  if (std::abs(rows.pitch) <= kLargestTablePitch) return run(rows);
  const Scratch<std::uint8_t> copy(std::size_t{kTableSide} * kTableSide);
  if (!copy) return;
  const Rows close = {copy.get(), kTableSide};
  for (std::size_t y = 0; y < kTableSide; ++y) {
    std::memcpy(close.Row<std::uint8_t>(y), rows.Row<const std::uint8_t>(y), kTableSide);
  }
  run(close);
}

bool UsableWithTable(LxGenericROI* source, LxGenericROI* destination, LxGenericROI* table) {
  return Attached({source, destination, table}) && Usable({destination, source}) &&
         Require(table->GetWidth() == kTableSide && table->GetHeight() == kTableSide,
                 LX_ERROR_ARGUMENT_3_OUT_OF_RANGE);
}

}  // namespace

void PicModulusImage(LxImage<LxBW8>* table, float gain) {
  RunOperation("PicModulusImage", [&] {
    FillTable(table, [gain](int dx, int dy) {
      return MagnitudeCode(std::sqrt(static_cast<double>(dx * dx + dy * dy)) * double{gain} + 0.5);
    });
  });
}

void PicArgumentImage(LxImage<LxBW8>* table, LxBW8 origin, float period) {
  RunOperation("PicArgumentImage", [&] {
    const double codes = double{CodesOf(period)};
    const double first = origin.value + 256.5;
    FillTable(table, [=](int dx, int dy) {
      if (dx == 0 && dy == 0) return std::uint8_t{0};
      return DirectionCode(std::atan2(dy, dx) * codes + first);
    });
  });
}

void PicGradientVector(LxROI<LxBW8>* source, LxROI<LxBW32>* destination) {
  RunOperation("PicGradientVector", [&] {
    if (!Usable({source, destination})) return;
    RunInRows(ImageOf(source, destination), FindDifferences);
  });
}

void PicGradientScalar(LxROI<LxBW8>* source, LxROI<LxBW8>* destination, LxROI<LxBW8>* table) {
  RunOperation("PicGradientScalar", [&] {
    if (!UsableWithTable(source, destination, table)) return;
    RunWithTable(table, [&](const Rows& rows) {
      RunInRows(ImageOf(source, destination),
                [&rows](const GradientImage& image, std::uint8_t* scratch) {
                  LookUpGradients(image, rows, scratch);
                });
    });
  });
}

void PicGradientScalar(LxROI<LxBW32>* source, LxROI<LxBW8>* destination, LxROI<LxBW8>* table) {
  RunOperation("PicGradientScalar", [&] {
    if (!UsableWithTable(source, destination, table)) return;
    RunWithTable(table,
                 [&](const Rows& rows) { LookUpDifferences(MapOf(destination, source), rows); });
  });
}
