// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>

#include "foundation/frame.h"
#include "lxpic/profile/profile.h"

namespace {

using namespace lx;

struct Limits {
  std::int64_t low;
  std::int64_t high;
  std::int64_t amplitude;
  std::int64_t area;
};

enum class Side {
  kAbove,
  kBelow
};

// How far a sample lies beyond the threshold of its side; 0 or less when it does not.
template <Side side>
std::int64_t Excess(std::int64_t sample, const Limits& limits) {
  return side == Side::kAbove ? sample - limits.high : limits.low - sample;
}

// What is known of a run: sums of excesses, in numbers that no profile overflows and that are exact
// far beyond what the results hold.
struct Run {
  unsigned start;
  unsigned end;
  std::int64_t amplitude = 0;
  double area = 0;
  double moment = 0;  // sum of the areas after each sample
};

template <Side side>
LxPeak PeakOf(const Run& run) {
  constexpr int kSign = side == Side::kAbove ? 1 : -1;
  const auto saturated = [](double value) {
    return static_cast<std::int32_t>(std::clamp<double>(kSign * value, INT32_MIN, INT32_MAX));
  };
  return {run.start, run.end - run.start, static_cast<float>(run.end - run.moment / run.area),
          saturated(static_cast<double>(run.amplitude)), saturated(run.area)};
}

// Peaks go straight to where the vector has room, and AddElement() makes more of it.
class PeakList {
 public:
  explicit PeakList(LxPeaksVector& peaks) : peaks_(peaks) { Follow(); }
  ~PeakList() { peaks_.SetNumElements(count_); }
  PeakList(const PeakList&) = delete;
  PeakList& operator=(const PeakList&) = delete;

  bool HasFailed() const { return hasFailed_; }
  void Add(const LxPeak& peak) {
    if (count_ < room_) {
      peaks_.GetDataPtr()[count_++] = peak;
      return;
    }
    peaks_.SetNumElements(count_);
    peaks_.AddElement(peak);
    hasFailed_ = LxGetError() != LX_OK;
    Follow();
  }

 private:
  void Follow() {
    count_ = peaks_.GetNumElements();
    room_ = peaks_.GetMaxElements();
  }

  LxPeaksVector& peaks_;
  unsigned count_ = 0;
  unsigned room_ = 0;
  bool hasFailed_ = false;
};

// Records the run that begins at a sample, unless it touches an end of the profile, and returns its
// end.
template <Side side, class T>
unsigned TakeRun(const LxVectorTemplate<T>& profile, unsigned start, const Limits& limits,
                 PeakList& peaks) {
  const T* const samples = profile.GetDataPtr();
  const unsigned count = profile.GetNumElements();
  Run run{start, start};
  for (; run.end < count; ++run.end) {
    const std::int64_t excess = Excess<side>(samples[run.end].value, limits);
    if (excess <= 0) break;
    run.amplitude = std::max(run.amplitude, excess);
    run.area += static_cast<double>(excess);
    run.moment += run.area;
  }
  const bool isInside = start > 0 && run.end < count;
  if (isInside && run.amplitude >= limits.amplitude &&
      run.area >= static_cast<double>(limits.area)) {
    peaks.Add(PeakOf<side>(run));
  }
  return run.end;
}

template <class T>
void FindPeaks(const LxVectorTemplate<T>& profile, const Limits& limits, PeakList& peaks) {
  const T* const samples = profile.GetDataPtr();
  const unsigned count = profile.GetNumElements();
  for (unsigned i = 0; i < count && !peaks.HasFailed();) {
    if (Excess<Side::kAbove>(samples[i].value, limits) > 0) {
      i = TakeRun<Side::kAbove>(profile, i, limits, peaks);
    } else if (Excess<Side::kBelow>(samples[i].value, limits) > 0) {
      i = TakeRun<Side::kBelow>(profile, i, limits, peaks);
    } else {
      ++i;
    }
  }
}

template <class T>
void GetPeaks(const char* trace, const LxVectorTemplate<T>* profile, LxPeaksVector* peaks,
              const Limits& limits) {
  RunOperation(trace, [&] {
    if (!Require(profile != nullptr && peaks != nullptr, LX_ERROR_VECTOR_NO_DATA)) return;
    if (!Require(limits.low <= limits.high, LX_ERROR_INCONSISTENT_ARGUMENTS)) return;
    peaks->Empty();
    PeakList list(*peaks);
    FindPeaks(*profile, limits, list);
  });
}

std::int64_t AsSigned(unsigned minimum) { return static_cast<std::int32_t>(minimum); }

}  // namespace

void PicGetProfilePeaks(LxBW8Vector* profile, LxPeaksVector* peaks, unsigned low, unsigned high,
                        unsigned minimumAmplitude, unsigned minimumArea) {
  GetPeaks("PicGetProfilePeaks ( BW8)", profile, peaks,
           {low, high, AsSigned(minimumAmplitude), AsSigned(minimumArea)});
}

void PicGetProfilePeaks(LxBW16Vector* profile, LxPeaksVector* peaks, unsigned low, unsigned high,
                        unsigned minimumAmplitude, unsigned minimumArea) {
  GetPeaks("PicGetProfilePeaks ( BW16)", profile, peaks,
           {low, high, AsSigned(minimumAmplitude), AsSigned(minimumArea)});
}
