// SPDX-License-Identifier: Apache-2.0
#include "lxpic/vectors/histogram_vector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/frame.h"
#include "foundation/truncate.h"
#include "vectors/entropy.h"

namespace {

int DevicePosition(float value) { return static_cast<int>(lx::TruncateTo32(value)); }

}  // namespace

LxBWHistogramVector::LxBWHistogramVector(unsigned capacity) { SetMaxElements(capacity, 1); }

void LxBWHistogramVector::Clear() { std::fill(begin(), end(), 0U); }

void LxBWHistogramVector::Draw(HDC target, float x, float y, float width, float height) {
  lx::RunOperation(nullptr, [&] {
    if (target == nullptr) return;
    const unsigned count = GetNumElements();
    const unsigned largest = count == 0 ? 0 : *std::max_element(begin(), end());
    m_Plot.SetRange(0.0, count > 2 ? count - 1 : 1, 0.0, std::max(largest, 1U));
    m_Plot.DrawAnnotations(target, DevicePosition(x), DevicePosition(y), DevicePosition(width),
                           DevicePosition(height), "Value", "Count");
    if (LxGetError() != LX_OK) return;
    const int origin = m_Plot.GetAxisOrigin();
    for (unsigned i = 0; i < count; ++i) {
      const int top = m_Plot.YView(m_pElements[i]);
      std::int64_t column = m_Plot.XView(i);
      const std::int64_t end = std::max<std::int64_t>(m_Plot.XView(i + 1.0), column + 1);
      for (; column < end; ++column) {
        target->MoveTo(static_cast<int>(column), origin);
        target->LineTo(static_cast<int>(column), top);
      }
    }
  });
}

float LxBWHistogramVector::Entropy(unsigned first, unsigned last) const {
  float entropy = 0.0F;
  lx::RunOperation("LxBWHistogramVector::Entropy", [&] {
    const unsigned count = GetNumElements();
    if (!lx::Require(first < count, LX_ERROR_ARGUMENT_1_OUT_OF_RANGE)) return;
    if (last == 0xFFFFFFFF) last = count - 1;
    if (!lx::Require(last < count, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE)) return;
    std::uint64_t total = 0;
    float weighted = 0.0F;
    for (unsigned i = first; i <= last; ++i) {
      total += m_pElements[i];
      weighted = lx::EntropyTerm<float>(m_pElements[i]).AddTo(weighted, 1);
    }
    if (total != 0) {
      const auto nats = lx::EntropyOf<float, long double>(total, weighted);
      entropy = static_cast<float>(nats / std::log(2.0L));
    }
  });
  return entropy;
}
