// SPDX-License-Identifier: Apache-2.0
// What the families' peers share.
#pragma once

#include <opencv2/core.hpp>

#include "bench/peers.h"

namespace lx::bench {

/// The pixels of an image that a subject works on.
cv::Mat ViewOf(LxGenericROI* image, catalogue::Pixel pixel);

/// A peer that had to make an image of its own would not do the same job.
inline void ExpectResultIn(const cv::Mat& destination, const cv::Mat& result) {
  CV_Assert(result.data == destination.data);
}

/// The families' peers; empty when there is none.
Job PointPeer(const Subject& subject);
Job ConvolutionPeer(const Subject& subject);

}  // namespace lx::bench
