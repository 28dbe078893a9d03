// SPDX-License-Identifier: Apache-2.0
#include "profile/vector_convolution_kernels.h"

#include <limits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "profile/vector_convolution_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/simd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::profile::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

// Unsigned numbers of 32 bits go through signed ones, half their range below.
constexpr std::uint32_t kHalfRange = 0x80000000;

template <class D, typename T, class Access>
HWY_INLINE hn::Vec<D> LoadNumbers(D d, const T* from, Access access) {
  const hn::Rebind<T, D> elements;
  const hn::Rebind<std::int32_t, D> whole;
  const auto v = access.Load(elements, from);
  if constexpr (sizeof(T) < sizeof(std::int32_t)) {
    return hn::PromoteTo(d, hn::PromoteTo(whole, v));
  } else if constexpr (hwy::IsSigned<T>()) {
    return hn::PromoteTo(d, v);
  } else {
    const auto below = hn::BitCast(whole, hn::Xor(v, hn::Set(elements, kHalfRange)));
    return hn::Add(hn::PromoteTo(d, below), hn::Set(d, double{kHalfRange}));
  }
}

// Whole numbers that the elements hold.
template <class D, typename T, class Access>
HWY_INLINE void StoreNumbers(D d, hn::Vec<D> v, T* to, Access access) {
  const hn::Rebind<T, D> elements;
  const hn::Rebind<std::int32_t, D> whole;
  if constexpr (sizeof(T) < sizeof(std::int32_t)) {
    access.Store(elements, hn::DemoteTo(elements, hn::DemoteTo(whole, v)), to);
  } else if constexpr (hwy::IsSigned<T>()) {
    access.Store(elements, hn::DemoteTo(whole, v), to);
  } else {
    const auto below = hn::DemoteTo(whole, hn::Sub(v, hn::Set(d, double{kHalfRange})));
    access.Store(elements, hn::Xor(hn::BitCast(elements, below), hn::Set(elements, kHalfRange)),
                 to);
  }
}

template <class D>
HWY_INLINE hn::Vec<D> Clamped(D d, hn::Vec<D> v, double low, double high) {
  return hn::Max(hn::Min(v, hn::Set(d, high)), hn::Set(d, low));
}

// Truncated, or 0 when it is no number; what follows is exact up to what no element holds.
template <typename T, class D>
HWY_INLINE hn::Vec<D> Filtered(D d, const VectorFilter& filter, hn::Vec<D> left, hn::Vec<D> element,
                               hn::Vec<D> right) {
  const auto tap = [&](int i, auto v) HWY_ATTR { return hn::Mul(hn::Set(d, filter.taps[i]), v); };
  const auto sum = hn::Add(hn::Add(tap(0, left), tap(1, element)), tap(2, right));
  const auto number = hn::IfThenElseZero(hn::Eq(sum, sum), sum);
  constexpr double kFar = 0x1p52;
  const auto value = hn::Trunc(Clamped(d, number, -kFar, kFar));
  const auto side = hn::IfThenElse(hn::Gt(value, hn::Zero(d)), hn::Set(d, filter.positive),
                                   hn::Set(d, filter.negative));
  const auto moved = hn::Add(hn::Mul(value, side), hn::Set(d, filter.offset));
  return Clamped(d, moved, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}

template <typename T>
void FilterGroup(const VectorFilter& filter, const T* from, std::size_t length, T* to) {
  const hn::ScalableTag<double> d;
  const hn::CappedTag<double, 1> one;
  const std::size_t last = length - 1;
  const auto end = [&](std::size_t i, double left, double right) HWY_ATTR {
    const auto element = hn::Set(one, static_cast<double>(from[i]));
    StoreNumbers(one, Filtered<T>(one, filter, hn::Set(one, left), element, hn::Set(one, right)),
                 to + i, PartVector{1});
  };
  const double outside = filter.outside;
  end(0, outside, last == 0 ? outside : static_cast<double>(from[1]));
  if (last == 0) return;
  ForEachVector(d, last - 1, [&](std::size_t x, auto access) HWY_ATTR {
    const auto left = LoadNumbers(d, from + x, access);
    const auto element = LoadNumbers(d, from + x + 1, access);
    const auto right = LoadNumbers(d, from + x + 2, access);
    StoreNumbers(d, Filtered<T>(d, filter, left, element, right), to + x + 1, access);
  });
  end(last, static_cast<double>(from[last - 1]), outside);
}

template <typename T>
HWY_INLINE void FilterEach(const VectorFilter& filter, const GroupsOf<T>& groups) {
  for (std::size_t i = 0; i < groups.count; ++i) {
    const std::size_t start = i * groups.length;
    FilterGroup(filter, groups.from + start, groups.length, groups.to + start);
  }
}

void Bytes(const VectorFilter& filter, const GroupsOf<std::uint8_t>& groups) {
  FilterEach(filter, groups);
}
void SignedBytes(const VectorFilter& filter, const GroupsOf<std::int8_t>& groups) {
  FilterEach(filter, groups);
}
void Words(const VectorFilter& filter, const GroupsOf<std::uint16_t>& groups) {
  FilterEach(filter, groups);
}
void SignedWords(const VectorFilter& filter, const GroupsOf<std::int16_t>& groups) {
  FilterEach(filter, groups);
}
void DoubleWords(const VectorFilter& filter, const GroupsOf<std::uint32_t>& groups) {
  FilterEach(filter, groups);
}
void SignedDoubleWords(const VectorFilter& filter, const GroupsOf<std::int32_t>& groups) {
  FilterEach(filter, groups);
}

}  // namespace
}  // namespace lx::profile::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::profile {

HWY_EXPORT(Bytes);
HWY_EXPORT(SignedBytes);
HWY_EXPORT(Words);
HWY_EXPORT(SignedWords);
HWY_EXPORT(DoubleWords);
HWY_EXPORT(SignedDoubleWords);

void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint8_t>& groups, Path path) {
  LX_CALL(path, Bytes, filter, groups);
}
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int8_t>& groups, Path path) {
  LX_CALL(path, SignedBytes, filter, groups);
}
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint16_t>& groups, Path path) {
  LX_CALL(path, Words, filter, groups);
}
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int16_t>& groups, Path path) {
  LX_CALL(path, SignedWords, filter, groups);
}
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::uint32_t>& groups, Path path) {
  LX_CALL(path, DoubleWords, filter, groups);
}
void FilterGroups(const VectorFilter& filter, const GroupsOf<std::int32_t>& groups, Path path) {
  LX_CALL(path, SignedDoubleWords, filter, groups);
}

}  // namespace lx::profile
#endif
