// SPDX-License-Identifier: Apache-2.0
#include "profile/profile_kernels.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "profile/profile_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/window_extremes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::profile::HWY_NAMESPACE {
namespace {

using namespace lx::HWY_NAMESPACE;

template <class D>
using Single = hn::CappedTag<hn::TFromD<D>, 1>;

// (left + 2 * centre + right) >> 2: two averages rounded down, which are those rounded up of the
// complements.
struct Binomial {
  template <class V>
  static HWY_INLINE V Of(V left, V centre, V right) {
    const V outer = hn::AverageRound(hn::Not(left), hn::Not(right));
    return hn::Not(hn::AverageRound(outer, hn::Not(centre)));
  }
};

// ((right - left) >> 1) + offset, where the offset is half of what the complement adds.
struct HalfDifference {
  template <class V>
  static HWY_INLINE V Of(V left, V /*centre*/, V right) {
    return hn::AverageRound(right, hn::Not(left));
  }
};

// to[i] = Rule::Of(from[i - 1], from[i], from[i + 1]) for `count` elements; whether any differs from
// from[i]. In place a vector's left neighbours are read before they are written, and the last
// vector, which may overlap with the one before it, first of all.
template <class Rule, class D, typename T>
HWY_INLINE bool ApplyToNeighbours(D d, const T* from, T* to, std::size_t count) {
  const std::size_t n = hn::Lanes(d);
  if (count < n) {
    if constexpr (hn::MaxLanes(D()) == 1) return false;
    return ApplyToNeighbours<Rule>(Single<D>(), from, to, count);
  }
  auto changed = hn::Zero(d);
  const auto apply = [&](auto left, std::size_t i) HWY_ATTR {
    const auto centre = hn::LoadU(d, from + i);
    const auto made = Rule::Of(left, centre, hn::LoadU(d, from + i + 1));
    changed = hn::Or(changed, hn::Xor(made, centre));
    return made;
  };
  const std::size_t end = count - n;
  const auto last = apply(hn::LoadU(d, from + end - 1), end);
  auto left = hn::LoadU(d, from - 1);
  std::size_t i = 0;
  for (; i + n <= end; i += n) {
    const auto made = apply(left, i);
    left = hn::LoadU(d, from + i + n - 1);
    hn::StoreU(made, d, to + i);
  }
  if (i < end) hn::StoreU(apply(left, i), d, to + i);
  hn::StoreU(last, d, to + end);
  return !hn::AllFalse(d, hn::Ne(changed, hn::Zero(d)));
}

// One pass, of which the caller knows the results at the ends.
template <class Rule, typename T>
HWY_INLINE bool Pass(const Profile<T>& p, T first, T last) {
  const std::size_t end = p.count - 1;
  const bool endsChange = first != p.from[0] || last != p.from[end];
  const std::size_t inside = p.count > 2 ? p.count - 2 : 0;
  const bool changes = ApplyToNeighbours<Rule>(hn::ScalableTag<T>(), p.from + 1, p.to + 1, inside);
  p.to[0] = first;
  p.to[end] = last;
  return changes || endsChange;
}

// A sample and its only neighbour, which is itself when there is one sample.
template <typename T>
struct End {
  int sample;
  int neighbour;

  static End First(const Profile<T>& p) { return {p.from[0], p.from[p.count > 1 ? 1 : 0]}; }
  static End Last(const Profile<T>& p) {
    const std::size_t last = p.count - 1;
    return {p.from[last], p.from[last > 0 ? last - 1 : 0]};
  }

  T Smoothed() const { return static_cast<T>((3 * sample + neighbour) >> 2); }
  static T Offset(int difference) {
    constexpr int kMost = hwy::LimitsMax<T>();
    return static_cast<T>(std::clamp(difference + (kMost + 1) / 2, 0, kMost));
  }
};

template <typename T>
HWY_INLINE void DifferentiateOf(const Profile<T>& p) {
  const auto first = End<T>::First(p);
  const auto last = End<T>::Last(p);
  Pass<HalfDifference>(p, End<T>::Offset(first.neighbour - first.sample),
                       End<T>::Offset(last.sample - last.neighbour));
}

template <typename T>
HWY_INLINE void SmoothOf(Profile<T> p, std::size_t passes) {
  const auto pass = [&p]() HWY_ATTR {
    return Pass<Binomial>(p, End<T>::First(p).Smoothed(), End<T>::Last(p).Smoothed());
  };
  for (; passes > 0 && pass(); --passes) p.from = p.to;
}

// data[i] = the extreme of data[i] and data[i + step], for `count` elements, none of which is read
// after it was written.
template <class Op, class D, typename T>
HWY_INLINE void JoinAhead(D d, T* data, std::size_t count, std::size_t step) {
  const std::size_t n = hn::Lanes(d);
  if (count < n) {
    if constexpr (hn::MaxLanes(D()) > 1) JoinAhead<Op>(Single<D>(), data, count, step);
    return;
  }
  const auto join = [&](std::size_t i) HWY_ATTR {
    return Op::Of(hn::LoadU(d, data + i), hn::LoadU(d, data + i + step));
  };
  const std::size_t end = count - n;
  const auto last = join(end);
  for (std::size_t i = 0; i < end; i += n) hn::StoreU(join(i), d, data + i);
  hn::StoreU(last, d, data + end);
}

// data[i + step] = the extreme of data[i] and data[i + step], the same backwards.
template <class Op, class D, typename T>
HWY_INLINE void JoinBehind(D d, T* data, std::size_t count, std::size_t step) {
  const std::size_t n = hn::Lanes(d);
  if (count < n) {
    if constexpr (hn::MaxLanes(D()) > 1) JoinBehind<Op>(Single<D>(), data, count, step);
    return;
  }
  const auto join = [&](std::size_t i) HWY_ATTR {
    return Op::Of(hn::LoadU(d, data + i), hn::LoadU(d, data + i + step));
  };
  const auto first = join(0);
  for (std::size_t i = count; i > n; i -= n) {
    hn::StoreU(join(i - n), d, data + i - n + step);
  }
  hn::StoreU(first, d, data + step);
}

// Windows that begin at each sample grow to passes + 1 samples, each time by up to their own
// length; two of them make the one around a sample.
template <class Op, typename T>
HWY_INLINE void ExtremesOf(const Profile<T>& p, std::size_t passes) {
  const hn::ScalableTag<T> d;
  const std::size_t half = std::min(passes, p.count - 1);
  if (p.to != p.from) std::copy_n(p.from, p.count, p.to);
  for (std::size_t length = 1; length <= half;) {
    const std::size_t step = std::min(length, half + 1 - length);
    JoinAhead<Op>(d, p.to, p.count - step, step);
    length += step;
  }
  const T first = p.to[0];
  JoinBehind<Op>(d, p.to, p.count - half, half);
  const auto joined = hn::Set(d, first);
  ForEachVector(d, half, [&](std::size_t i, auto access) HWY_ATTR {
    access.Store(d, Op::Of(access.Load(d, p.to + i), joined), p.to + i);
  });
}

void DifferentiateBytes(const ByteProfile& p) { DifferentiateOf(p); }
void DifferentiateWords(const WordProfile& p) { DifferentiateOf(p); }
void SmoothBytes(const ByteProfile& p, std::size_t passes) { SmoothOf(p, passes); }
void SmoothWords(const WordProfile& p, std::size_t passes) { SmoothOf(p, passes); }
void DilateBytes(const ByteProfile& p, std::size_t passes) { ExtremesOf<Maximum>(p, passes); }
void DilateWords(const WordProfile& p, std::size_t passes) { ExtremesOf<Maximum>(p, passes); }
void ErodeBytes(const ByteProfile& p, std::size_t passes) { ExtremesOf<Minimum>(p, passes); }
void ErodeWords(const WordProfile& p, std::size_t passes) { ExtremesOf<Minimum>(p, passes); }

}  // namespace
}  // namespace lx::profile::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::profile {

HWY_EXPORT(DifferentiateBytes);
HWY_EXPORT(DifferentiateWords);
HWY_EXPORT(SmoothBytes);
HWY_EXPORT(SmoothWords);
HWY_EXPORT(DilateBytes);
HWY_EXPORT(DilateWords);
HWY_EXPORT(ErodeBytes);
HWY_EXPORT(ErodeWords);

void Differentiate(const ByteProfile& profile) {
  LX_CALL(profile.path, DifferentiateBytes, profile);
}
void Differentiate(const WordProfile& profile) {
  LX_CALL(profile.path, DifferentiateWords, profile);
}
void Smooth(const ByteProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, SmoothBytes, profile, passes);
}
void Smooth(const WordProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, SmoothWords, profile, passes);
}
void Dilate(const ByteProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, DilateBytes, profile, passes);
}
void Dilate(const WordProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, DilateWords, profile, passes);
}
void Erode(const ByteProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, ErodeBytes, profile, passes);
}
void Erode(const WordProfile& profile, std::size_t passes) {
  LX_CALL(profile.path, ErodeWords, profile, passes);
}

}  // namespace lx::profile
#endif
