// SPDX-License-Identifier: Apache-2.0
#include "bench/peers.h"

namespace lx::bench {

Job MakePeer(const Subject& /*subject*/) { return {}; }

}  // namespace lx::bench
