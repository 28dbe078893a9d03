// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lx::point {

// The packed colour types.
enum class Packing {
  kC15,
  kC16
};

}  // namespace lx::point
