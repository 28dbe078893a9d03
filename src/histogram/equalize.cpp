// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/equalize.h"

#include <algorithm>
#include <numeric>

#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "histogram/bins.h"
#include "histogram/histogram_kernels.h"
#include "histogram/legacy_vectors.h"
#include "lxpic/histogram/histogram.h"
#include "lxpic/point/lut.h"
#include "point/lut_kernels.h"

namespace {

// Scales the pixels that are darker than each level.
bool Tabulate(const std::uint32_t* counts, unsigned scale, lx::point::ByteTableData& table) {
  const auto total = std::accumulate(counts, counts + 256, std::uint64_t{0});
  if (total == 0) {
    LxSetError(LX_ERROR_EMPTY_HISTOGRAM);
    return false;
  }
  std::uint64_t darker = 0;
  for (unsigned level = 0; level < 256; ++level) {
    table[level] = static_cast<std::uint8_t>(scale * darker / total);
    darker += counts[level];
  }
  return true;
}

constexpr std::size_t kWords = 65536;

// Scales the pixels up to each level. Levels that no pixel has are left out.
void TabulateWords(const std::uint32_t* counts, std::uint64_t total, std::uint16_t* table) {
  std::uint64_t upTo = 0;
  for (std::size_t level = 0; level < kWords; ++level) {
    if (counts[level] == 0) continue;
    upTo += counts[level];
    table[level] = static_cast<std::uint16_t>(upTo * 65535 / total);
  }
}

}  // namespace

void PicSetupEqualize(LxBWHistogramVector* histogram, LxBW8Vector* table) {
  lx::RunOperation("PicSetupEqualize ( LxBWHistogramVector)", [&] {
    if (!lx::histogram::HasBins(histogram, 256)) return;
    if (!lx::Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    lx::point::ByteTableData entries;
    if (!Tabulate(histogram->GetDataPtr(), 255, entries)) return;
    table->SetMaxElements(256, 1);
    if (LxGetError() != LX_OK) return;
    table->SetNumElements(256);
    std::copy(std::begin(entries), std::end(entries), table->begin());
  });
}

void PicSetupEqualize(LxVector* histogram, LxVector* table) {
  lx::RunOperation("PicSetupEqualize ( LxVector)", [&] {
    const auto* const counts = lx::histogram::CountsToRead(histogram, LX_ERROR_EQUALIZE_SETUP);
    if (counts == nullptr) return;
    if (!lx::Require(table != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    lx::point::ByteTableData entries;
    if (!Tabulate(counts, 256, entries)) return;
    // The histogram is not needed any more, should it be the vector to fill.
    auto* const filled = lx::histogram::TableToFill(*table);
    if (filled != nullptr) std::copy(std::begin(entries), std::end(entries), filled);
  });
}

void PicEqualize(LxROI<LxBW8>* source, LxROI<LxBW8>* destination) {
  lx::RunOperation("PicEqualize", [&] {
    if (!lx::Usable({source, destination})) return;
    if (source->GetWidth() == 0 || source->GetHeight() == 0) return;
    LxBWHistogramVector histogram(256);
    LxBW8Vector table;
    if (LxGetError() == LX_OK) PicHistogram(source, &histogram);
    if (LxGetError() == LX_OK) PicSetupEqualize(&histogram, &table);
    if (LxGetError() == LX_OK) PicLut(source, destination, &table);
  });
}

void PicEqualize(LxROI<LxBW16>* source, LxROI<LxBW16>* destination) {
  lx::RunOperation("PicEqualize (BW16)", [&] {
    if (!lx::Usable({source, destination})) return;
    const auto pixels = std::uint64_t{source->GetWidth()} * source->GetHeight();
    if (pixels == 0) return;
    const lx::Scratch<std::uint32_t> counts(kWords);
    const lx::Scratch<std::uint16_t> table(kWords);
    if (!counts || !table) return;
    lx::histogram::CountWords(lx::Spans(source, lx::RunLists::kIgnore), {0, kWords - 1, kWords - 1},
                              counts.get());
    TabulateWords(counts.get(), pixels, table.get());
    lx::point::LookUpWords(lx::MapOf(destination, source), table.get());
  });
}
