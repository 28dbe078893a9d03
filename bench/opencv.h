// SPDX-License-Identifier: Apache-2.0
// What the families' peers share.
#pragma once

#include <opencv2/core.hpp>

#include "bench/subject.h"

namespace lx::bench {

/// The pixels of the region argument `index` of a subject.
cv::Mat ViewOf(const Subject& subject, std::size_t index);

/// A peer that had to make an image of its own would not do the same job.
inline void ExpectResultIn(const cv::Mat& destination, const cv::Mat& result) {
  CV_Assert(result.data == destination.data);
}

}  // namespace lx::bench
