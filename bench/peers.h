// SPDX-License-Identifier: Apache-2.0
// The same jobs done by OpenCV on one thread.
#pragma once

#include "bench/stopwatch.h"
#include "bench/subject.h"

namespace lx::bench {

/// Does the subject's job on the subject's images; empty when OpenCV has no such job or was not
/// there at build time.
Job MakePeer(const Subject& subject);

}  // namespace lx::bench
