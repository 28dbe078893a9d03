// SPDX-License-Identifier: Apache-2.0
// Windows of any size: what the box mean and the local deviation share.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "foundation/component_rows.h"

namespace lx::convolution {

// A window of 2 * halfX + 1 columns and 2 * halfY + 1 rows over an image of interleaved components,
// with edge replication.
struct Window : ComponentImage {
  std::size_t halfX = 0;
  std::size_t halfY = 0;

  std::uint64_t Count() const { return (2 * halfX + 1) * (2 * halfY + 1); }
};

// The window over these regions, its halves cut at the width - 1 and the height - 1. The image is
// not empty.
template <class T>
Window WindowOf(const LxROI<T>* destination, const LxROI<T>* source, unsigned halfX,
                unsigned halfY) {
  Window made{ComponentImageOf(destination, source)};
  made.halfX = std::min<std::size_t>(halfX, made.width - 1);
  made.halfY = std::min<std::size_t>(halfY, made.height - 1);
  return made;
}

// destination = mean of the window; false when there is no scratch memory. Rows are read halfY rows
// before they are written, so that in place works.
bool BoxMeanBytes(const Window& window);
bool BoxMeanWords(const Window& window);

// destination = deviation of the window; not in place.
bool BoxDeviationBytes(const Window& window);
bool BoxDeviationWords(const Window& window);

}  // namespace lx::convolution
