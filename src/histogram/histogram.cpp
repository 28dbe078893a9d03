// SPDX-License-Identifier: Apache-2.0
#include "lxpic/histogram/histogram.h"

#include "foundation/frame.h"
#include "histogram/histogram_kernels.h"
#include "histogram/legacy_vectors.h"

namespace {

// Gives the vector `count` elements, whatever they are.
bool Resized(LxBWHistogramVector& histogram, unsigned count) {
  histogram.SetNumElements(count);
  return LxGetError() == LX_OK;
}

constexpr unsigned kMostBits = 24;

template <class T>
void CountBins(const char* trace, LxROI<T>* source, LxBWHistogramVector* histogram, unsigned msb,
               unsigned bits, int saturate, decltype(lx::histogram::CountWords)* count) {
  constexpr unsigned kDepth = 8 * sizeof(T);
  lx::RunOperation(trace, [&] {
    if (!lx::Attached({source})) return;
    if (!lx::Require(histogram != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    if (!lx::Require(msb < kDepth, LX_ERROR_ARGUMENT_3_OUT_OF_RANGE)) return;
    if (!lx::Require(bits <= msb + 1 && bits <= kMostBits, LX_ERROR_ARGUMENT_4_OUT_OF_RANGE)) {
      return;
    }
    const unsigned last = (1U << bits) - 1;
    const unsigned beyond = saturate != 0 || msb == kDepth - 1 ? last : last + 1;
    if (!Resized(*histogram, beyond + 1)) return;
    count(lx::Spans(source, lx::RunLists::kIgnore), {msb + 1 - bits, last, beyond},
          histogram->GetDataPtr());
    histogram->SetNumElements(last + 1);
  });
}

}  // namespace

void PicHistogram(LxROI<LxBW8>* source, LxBWHistogramVector* histogram) {
  lx::RunOperation("PicHistogram", [&] {
    if (!lx::Attached({source})) return;
    if (!lx::Require(histogram != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const lx::Spans spans(source, lx::RunLists::kFollow);
    if (!spans || !Resized(*histogram, 256)) return;
    lx::histogram::CountBytes(spans, histogram->GetDataPtr());
  });
}

void PicHistogram(LxROI<LxBW8>* source, LxVector* histogram) {
  lx::RunOperation("PicHistogram ( LxVector)", [&] {
    if (!lx::Attached({source})) return;
    if (!lx::Require(histogram != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    auto* const counts = lx::histogram::CountsToFill(*histogram);
    if (counts == nullptr) return;
    lx::histogram::CountBytes(lx::Spans(source, lx::RunLists::kIgnore), counts);
  });
}

void PicHistogram(LxROI<LxBW16>* source, LxBWHistogramVector* histogram, unsigned msb,
                  unsigned bits, int saturate) {
  CountBins("PicHistogram ( LxBW16)", source, histogram, msb, bits, saturate,
            &lx::histogram::CountWords);
}

void PicHistogram(LxROI<LxBW32>* source, LxBWHistogramVector* histogram, unsigned msb,
                  unsigned bits, int saturate) {
  CountBins("PicHistogram ( LxBW32)", source, histogram, msb, bits, saturate,
            &lx::histogram::CountLongs);
}
