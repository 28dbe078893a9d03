// SPDX-License-Identifier: Apache-2.0
#include "measure/statistics_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "measure/sums_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <typename T>
std::uint64_t Total(const Spans& spans) {
  return ReduceSpans(spans, Sum<T>()).Result();
}

std::uint64_t ByteSum(const Spans& spans) { return Total<std::uint8_t>(spans); }
std::uint64_t WordSum(const Spans& spans) { return Total<std::uint16_t>(spans); }

Sums ByteSums(const Spans& spans) {
  const auto total = ReduceSpans(spans, Both(Sum<std::uint8_t>(), ByteSquares()));
  return {total.first.Result(), total.second.Result()};
}

// v^2 = (v - 2^15)^2 + 2^16 v - 2^30, modulo 2^64 as all sums are.
Sums WordSums(const Spans& spans) {
  const auto total = ReduceSpans(spans, Both(Sum<std::uint16_t>(), CentredWordSquares()));
  const std::uint64_t sum = total.first.Result();
  return {sum, total.second.Result() + (sum << 16) - (spans.CountPixels() << 30)};
}

template <typename T>
Summary Summarize(const Spans& spans) {
  const auto total = ReduceSpans(spans, Both(Both(SmallestOf<T>(), LargestOf<T>()), Sum<T>()));
  return {{total.first.first.Result(), total.first.second.Result()}, total.second.Result()};
}

Summary ByteSummary(const Spans& spans) { return Summarize<std::uint8_t>(spans); }
Summary WordSummary(const Spans& spans) { return Summarize<std::uint16_t>(spans); }

}  // namespace
}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::measure {

HWY_EXPORT(ByteSum);
HWY_EXPORT(WordSum);
HWY_EXPORT(ByteSums);
HWY_EXPORT(WordSums);
HWY_EXPORT(ByteSummary);
HWY_EXPORT(WordSummary);

std::uint64_t SumOfBytes(const Spans& spans) { return LX_CALL(spans.GetPath(), ByteSum, spans); }
std::uint64_t SumOfWords(const Spans& spans) { return LX_CALL(spans.GetPath(), WordSum, spans); }
Sums SumsOfBytes(const Spans& spans) { return LX_CALL(spans.GetPath(), ByteSums, spans); }
Sums SumsOfWords(const Spans& spans) { return LX_CALL(spans.GetPath(), WordSums, spans); }

Summary SummaryOfBytes(const Spans& spans) { return LX_CALL(spans.GetPath(), ByteSummary, spans); }
Summary SummaryOfWords(const Spans& spans) { return LX_CALL(spans.GetPath(), WordSummary, spans); }

}  // namespace lx::measure
#endif
