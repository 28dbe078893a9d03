// SPDX-License-Identifier: Apache-2.0
#include "lxpic/measure/moments.h"

#include <algorithm>
#include <limits>

#include "foundation/frame.h"
#include "foundation/spans.h"
#include "measure/moments_kernels.h"

namespace {

using namespace lx;
using namespace lx::measure;

template <class T>
inline constexpr unsigned kWhite = std::numeric_limits<decltype(T::value)>::max();

Weighing Reaching(unsigned threshold) { return {Weighing::Kind::kReaching, threshold, nullptr}; }

void AddMoments(const LxROI<LxBW8>& /*type*/, const MomentArea& area, const Weighing& weighing,
                Path path, MomentSums& sums) {
  AddByteMoments(area, weighing, path, sums);
}
void AddMoments(const LxROI<LxBW16>& /*type*/, const MomentArea& area, const Weighing& weighing,
                Path path, MomentSums& sums) {
  AddWordMoments(area, weighing, path, sums);
}

// The moments of all pixels.
template <class T>
MomentSums SumAll(const LxROI<T>& source, const Weighing& weighing, int order) {
  const std::uint64_t width = source.GetWidth();
  const std::uint64_t height = source.GetHeight();
  MomentSums sums(order, width * height, std::max(width, height), kWhite<T>);
  if (weighing.level > kWhite<T>) return sums;  // nothing reaches it
  AddMoments(source, {RowsOf(&source), width, height}, weighing, CurrentPath(), sums);
  return sums;
}

// Those of the runs.
MomentSums SumRuns(const LxROI<LxBW8>& source, const LxVectorTemplate<LxRun>& runs,
                   const Weighing& weighing, int order) {
  std::uint64_t pixels = 0;
  for (const LxRun& run : runs) pixels += run.end - run.start;
  MomentSums sums(order, pixels, std::max(source.GetWidth(), source.GetHeight()), kWhite<LxBW8>);
  if (weighing.level > kWhite<LxBW8>) return sums;
  const Path path = CurrentPath();
  const Rows rows = RowsOf(&source);
  for (const LxRun& run : runs) {
    const std::uint32_t x = run.position & 0xFFFF;
    const std::uint32_t y = run.position >> 16;
    const Rows row = {rows.Row<std::uint8_t>(y) + x, rows.pitch};
    AddByteMoments({row, run.end - run.start, 1, x, y}, weighing, path, sums);
  }
  return sums;
}

// Writes the moments in the order of the parameters: by their order, then by q.
template <class T, class... Results>
void FindMoments(const char* trace, LxROI<T>* source, const Weighing& weighing,
                 Results&... results) {
  RunOperation(trace, [&] {
    if (!Attached({source})) return;
    float* const places[] = {&results...};
    int order = 0;
    while ((order + 1) * (order + 2) / 2 < static_cast<int>(sizeof...(Results))) ++order;
    const MomentSums sums = SumAll(*source, weighing, order);
    float* const* place = places;
    for (int k = 0; k <= order; ++k) {
      for (int q = 0; q <= k; ++q) **place++ = sums.Rounded(k - q, q);
    }
  });
}

void WriteCentre(const MomentSums& sums, float& x, float& y) {
  const long double weight = sums.Real(0, 0);
  x = weight == 0 ? 0.0F : static_cast<float>(sums.Real(1, 0) / weight);
  y = weight == 0 ? 0.0F : static_cast<float>(sums.Real(0, 1) / weight);
}

// Runs body(sums) with the moments of a region confined to its runs.
template <class Body>
void MeasureRuns(const char* trace, LxROI<LxBW8>* source, const LxBW8Vector* weights,
                 Weighing weighing, int order, const Body& body) {
  RunOperation(trace, [&] {
    if (!Attached({source})) return;
    if (weights != nullptr) {
      if (!Require(weights->GetNumElements() == 256, LX_ERROR_WRONG_VECTOR_SIZE)) return;
      weighing = {Weighing::Kind::kTable, 0, &weights->GetDataPtr()->value};
    }
    const auto& runs = source->GetRuns();
    if (runs.GetNumElements() == 0) {
      body(SumAll(*source, weighing, order));
    } else if (HoldsItsRuns(*source, sizeof(LxBW8), runs, source->RunsAreAbsolute())) {
      body(SumRuns(*source, runs, weighing, order));
    }
  });
}

// The covariance of x and y, or the variance of one of them, of order p + q.
float CovarianceOf(const MomentSums& sums, int p, int q) {
  const int first = p > 0 ? 1 : 0;   // of x
  const int second = q > 0 ? 0 : 1;  // of x
  const long double weight = sums.Real(0, 0);
  if (sums.IsExact() && weight * sums.Real(p, q) < 0x1p127L) {
    return Covariance(sums.Whole(0, 0), sums.Whole(first, 1 - first),
                      sums.Whole(second, 1 - second), sums.Whole(p, q));
  }
  const long double product = sums.Real(first, 1 - first) * sums.Real(second, 1 - second);
  return static_cast<float>((weight * sums.Real(p, q) - product) / (weight * weight));
}

// Where results of inertia go; null for those that are not wanted.
struct InertiaPlaces {
  float& ixx;
  float& ixy;
  float& iyy;
  float* centreX;
  float* centreY;
  unsigned* weight;
};

void WriteInertia(const MomentSums& sums, const InertiaPlaces& to) {
  const long double weight = sums.Real(0, 0);
  if (weight == 0) return;
  to.ixx = CovarianceOf(sums, 2, 0);
  to.ixy = CovarianceOf(sums, 1, 1);
  to.iyy = CovarianceOf(sums, 0, 2);
  float x = 0.0F;
  float y = 0.0F;
  WriteCentre(sums, x, y);
  if (to.centreX != nullptr) *to.centreX = x;
  if (to.centreY != nullptr) *to.centreY = y;
  constexpr auto kMost = std::numeric_limits<unsigned>::max();
  if (to.weight != nullptr) {
    *to.weight = static_cast<unsigned>(std::min(weight, static_cast<long double>(kMost)));
  }
}

}  // namespace

void PicBinaryMoments(LxROI<LxBW8>* source, unsigned threshold, float& m00, float& m10,
                      float& m01) {
  FindMoments("PicBinaryMoments ( first order)", source, Reaching(threshold), m00, m10, m01);
}
void PicBinaryMoments(LxROI<LxBW16>* source, unsigned threshold, float& m00, float& m10,
                      float& m01) {
  FindMoments("PicBinaryMoments (first order)(BW16)", source, Reaching(threshold), m00, m10, m01);
}
void PicBinaryMoments(LxROI<LxBW8>* source, unsigned threshold, float& m00, float& m10, float& m01,
                      float& m20, float& m11, float& m02) {
  FindMoments("PicBinaryMoments ( second order)", source, Reaching(threshold), m00, m10, m01, m20,
              m11, m02);
}
void PicBinaryMoments(LxROI<LxBW16>* source, unsigned threshold, float& m00, float& m10, float& m01,
                      float& m20, float& m11, float& m02) {
  FindMoments("PicBinaryMoments (second order)(BW16)", source, Reaching(threshold), m00, m10, m01,
              m20, m11, m02);
}

void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01) {
  FindMoments("PicWeighedMoments ( first order)", source, {}, m00, m10, m01);
}
void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01) {
  FindMoments("PicWeighedMoments (first order)(BW16)", source, {}, m00, m10, m01);
}
void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02) {
  FindMoments("PicWeighedMoments ( second order)", source, {}, m00, m10, m01, m20, m11, m02);
}
void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02) {
  FindMoments("PicWeighedMoments (second order)(BW16)", source, {}, m00, m10, m01, m20, m11, m02);
}
void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02, float& m30, float& m21, float& m12, float& m03) {
  FindMoments("PicWeighedMoments ( third order)", source, {}, m00, m10, m01, m20, m11, m02, m30,
              m21, m12, m03);
}
void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02, float& m30, float& m21, float& m12, float& m03) {
  FindMoments("PicWeighedMoments (third order)(BW16)", source, {}, m00, m10, m01, m20, m11, m02,
              m30, m21, m12, m03);
}
void PicWeightedMoments(LxROI<LxBW8>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02, float& m30, float& m21, float& m12, float& m03,
                        float& m40, float& m31, float& m22, float& m13, float& m04) {
  FindMoments("PicWeighedMoments ( fourth order)", source, {}, m00, m10, m01, m20, m11, m02, m30,
              m21, m12, m03, m40, m31, m22, m13, m04);
}
void PicWeightedMoments(LxROI<LxBW16>* source, float& m00, float& m10, float& m01, float& m20,
                        float& m11, float& m02, float& m30, float& m21, float& m12, float& m03,
                        float& m40, float& m31, float& m22, float& m13, float& m04) {
  FindMoments("PicWeighedMoments (fourth order)(BW16)", source, {}, m00, m10, m01, m20, m11, m02,
              m30, m21, m12, m03, m40, m31, m22, m13, m04);
}

void PicGravityCenter(LxROI<LxBW8>* source, unsigned threshold, float& x, float& y) {
  MeasureRuns("PicGravityCenter", source, nullptr, Reaching(threshold), 1,
              [&](const MomentSums& sums) { WriteCentre(sums, x, y); });
}
void PicGravityCenter(LxROI<LxBW16>* source, unsigned threshold, float& x, float& y) {
  RunOperation("PicGravityCenter (BW16)", [&] {
    if (Attached({source})) WriteCentre(SumAll(*source, Reaching(threshold), 1), x, y);
  });
}
void PicCentroid(LxROI<LxBW8>* source, float& x, float& y, LxBW8Vector* weights) {
  MeasureRuns("PicCentroid", source, weights, {}, 1,
              [&](const MomentSums& sums) { WriteCentre(sums, x, y); });
}

void PicInertia(LxROI<LxBW8>* source, unsigned threshold, float& ixx, float& ixy, float& iyy,
                float* centreX, float* centreY, unsigned* count) {
  MeasureRuns("PicInertia ( binary)", source, nullptr, Reaching(threshold), 2,
              [&](const MomentSums& sums) {
                WriteInertia(sums, {ixx, ixy, iyy, centreX, centreY, count});
              });
}
void PicInertia(LxROI<LxBW8>* source, float& ixx, float& ixy, float& iyy, float* centreX,
                float* centreY, unsigned* totalWeight, LxBW8Vector* weights) {
  MeasureRuns("PicInertia ( weighed)", source, weights, {}, 2, [&](const MomentSums& sums) {
    WriteInertia(sums, {ixx, ixy, iyy, centreX, centreY, totalWeight});
  });
}
