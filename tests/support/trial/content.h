// SPDX-License-Identifier: Apache-2.0
// What the pictures of a test show.
#pragma once

#include <array>

#include "common/random.h"
#include "support/trial/picture.h"

namespace lx::test {

enum class Content {
  kNoise,
  kRamp,      ///< every value in turn; two pictures of 256 × 256 hold every pair of 8-bit values
  kEdges,     ///< dark left of some column, bright right of it
  kConstant,  ///< one value
  kExtremes,  ///< the ends and the middle of the range, mixed
  kNear,      ///< values within 2 of one level that all pictures of a case share
  kSparse,    ///< mostly zero pixels
  kLargest    ///< the largest value everywhere
};
inline constexpr std::array kContents = {Content::kNoise,    Content::kRamp,     Content::kEdges,
                                         Content::kConstant, Content::kExtremes, Content::kNear,
                                         Content::kSparse};

/// Fills picture number `index` of a case. `level` is what the pictures of the case share.
void Fill(Picture& picture, Content content, int index, std::uint64_t level, Random& random);

/// Fills a picture whose pixels are coordinates in a source of `width` by `height`. Points lie in it,
/// unless `strays` says that some may not; columns and rows may lie anywhere.
void FillCoordinates(Picture& picture, catalogue::Meaning meaning, int width, int height,
                     bool strays, Random& random);

/// Runs of every kind for a picture: overlapping, empty, whole rows, single pixels; mostly none.
std::vector<Run> DrawRuns(const Picture& picture, Random& random);

}  // namespace lx::test
