// SPDX-License-Identifier: Apache-2.0
#include "lxpic/profile/profile.h"

#include <algorithm>
#include <numeric>

#include "foundation/exact_division.h"
#include "foundation/frame.h"
#include "foundation/scratch.h"
#include "profile/profile_kernels.h"

namespace {

using namespace lx;
using namespace lx::profile;

template <class T>
using ValueOf = decltype(T::value);

template <class T>
Profile<ValueOf<T>> ProfileOf(const LxVectorTemplate<T>& source, LxVectorTemplate<T>& destination) {
  return {reinterpret_cast<const ValueOf<T>*>(source.GetDataPtr()),
          reinterpret_cast<ValueOf<T>*>(destination.GetDataPtr()), source.GetNumElements()};
}

// filter(profile) into a destination that gets the source's length.
template <class T, class Filter>
void RunFilter(const char* trace, const LxVectorTemplate<T>* source,
               LxVectorTemplate<T>* destination, const Filter& filter) {
  RunOperation(trace, [&] {
    if (!Require(source != nullptr && destination != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    destination->SetNumElements(source->GetNumElements());
    if (LxGetError() != LX_OK || source->GetNumElements() == 0) return;
    filter(ProfileOf(*source, *destination));
  });
}

template <class T, class Filter>
void RunPasses(const char* trace, const LxVectorTemplate<T>* source,
               LxVectorTemplate<T>* destination, unsigned passes, const Filter& filter) {
  RunFilter(trace, source, destination, [&](const auto& profile) {
    if (passes > 0) filter(profile, passes);
  });
}

// The sum runs along a copy that has the samples beyond the ends.
template <typename T>
void Average(const Profile<T>& p, std::size_t half) {
  const std::size_t span = 2 * half + 1;
  const Scratch<T> extended(p.count + span - 1);
  if (!extended) return;
  T* const inner = std::fill_n(extended.get(), half, p.from[0]);
  std::fill_n(std::copy_n(p.from, p.count, inner), half, p.from[p.count - 1]);
  const PixelAverage<T> average(span);
  const T* const leaving = extended.get();
  const T* const entering = leaving + span;
  std::int64_t sum = std::accumulate(leaving, entering, std::int64_t{0});
  p.to[0] = average(static_cast<std::uint64_t>(sum));
  for (std::size_t i = 0; i + 1 < p.count; ++i) {
    sum += entering[i] - leaving[i];
    p.to[i + 1] = average(static_cast<std::uint64_t>(sum));
  }
}

template <class T>
void ConvolUniform(const char* trace, const LxVectorTemplate<T>* source,
                   LxVectorTemplate<T>* destination, unsigned halfSize) {
  RunOperation(trace, [&] {
    if (!Require(source != nullptr && destination != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    const std::uint32_t count = source->GetNumElements();
    const bool fits = 2 * std::uint64_t{halfSize} + 1 <= count;
    if (!Require(fits && destination->GetNumElements() == count, LX_ERROR_WRONG_VECTOR_SIZE)) {
      return;
    }
    Average(ProfileOf(*source, *destination), halfSize);
  });
}

constexpr auto kSmooth = [](const auto& profile, unsigned passes) { Smooth(profile, passes); };
constexpr auto kDilate = [](const auto& profile, unsigned passes) { Dilate(profile, passes); };
constexpr auto kErode = [](const auto& profile, unsigned passes) { Erode(profile, passes); };

}  // namespace

void PicProfileDerivative(LxBW8Vector* source, LxBW8Vector* destination) {
  RunFilter("PicProfileDerivative", source, destination,
            [](const auto& profile) { Differentiate(profile); });
}

void PicProfileDerivative(LxBW16Vector* source, LxBW16Vector* destination) {
  RunFilter("PicProfileDerivative", source, destination,
            [](const auto& profile) { Differentiate(profile); });
}

void PicConvolUniform(LxBW8Vector* source, LxBW8Vector* destination, unsigned halfSize) {
  ConvolUniform("PicConvolUniform", source, destination, halfSize);
}

void PicConvolUniform(LxBW16Vector* source, LxBW16Vector* destination, unsigned halfSize) {
  ConvolUniform("PicConvolUniform (BW16)", source, destination, halfSize);
}

void PicConvolGaussian(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes) {
  RunPasses("PicConvolBinomial ( LxBW8Vector)", source, destination, passes, kSmooth);
}

void PicConvolGaussian(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes) {
  RunPasses("PicConvolBinomial ( LxBW16Vector)", source, destination, passes, kSmooth);
}

void PicDilate(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes) {
  RunPasses("PicDilate ( LxBW8Vector)", source, destination, passes, kDilate);
}

void PicDilate(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes) {
  RunPasses("PicDilate ( LxBW16Vector)", source, destination, passes, kDilate);
}

void PicErode(LxBW8Vector* source, LxBW8Vector* destination, unsigned passes) {
  RunPasses("PicErode ( LxBW8Vector)", source, destination, passes, kErode);
}

void PicErode(LxBW16Vector* source, LxBW16Vector* destination, unsigned passes) {
  RunPasses("PicErode ( LxBW16Vector)", source, destination, passes, kErode);
}
