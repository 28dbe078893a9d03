// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/frame.h"
#include "lxpic/profile/vector_filters.h"
#include "profile/group_writer.h"
#include "vectors/integers.h"

namespace {

using namespace lx;
using namespace lx::profile;
using namespace lx::vectors;

constexpr int kExtremesUse = 6;

using Record = GroupWriter<3>::Group;

// Makes room for more records. False, with the error set, when there is none to be had.
bool Enlarge(LxVector& result, GroupWriter<3>& records) {
  constexpr int kBytes = 24576;
  constexpr int kMost = std::numeric_limits<int>::max() - kBytes;
  const std::size_t bytes = result.GetAllocatedSize();
  if (!Require(bytes <= kMost, LX_ERROR_ALLOCATION_FAILED)) return false;
  result.Reallocate(static_cast<int>(bytes) + kBytes);
  if (LxGetError() != LX_OK) return false;
  records.Move(result.GetDataPtr(), result.GetNbMaxGroup());
  return true;
}

// The run that the last element belongs to, if it belongs to one. Noise begins and ends a run every
// few elements, so that this is arithmetic and nothing depends on a branch.
template <class Limit>
class Run {
 public:
  Run(Limit low, Limit high)
      : low_(low), high_(high), lowStart_(std::min(low, high)), highStart_(std::max(low, high)) {}

  bool IsRun() const { return isHigh_ || isLow_; }

  // That of the elements before `end`.
  Record RecordTo(int end) const {
    const auto behind = static_cast<std::uint32_t>(end);
    return {static_cast<std::int32_t>((start_ + behind - 1) / 2),
            static_cast<std::int32_t>(behind - start_), static_cast<std::int32_t>(area_)};
  }

  // Takes the next element, and returns whether it ends a run.
  bool Take(Limit value, int index) {
    const bool wasRun = IsRun();
    const bool isHigh = (value > (isHigh_ ? high_ : highStart_)) && !isLow_;
    const bool isLow = (value < (isLow_ ? low_ : lowStart_)) && !isHigh_;
    start_ = wasRun ? start_ : static_cast<std::uint32_t>(index);
    area_ = (wasRun ? area_ : 0) + static_cast<std::uint32_t>(value) -
            static_cast<std::uint32_t>(isHigh ? high_ : low_);
    isHigh_ = isHigh;
    isLow_ = isLow;
    return wasRun && !IsRun();
  }

 private:
  Limit low_;
  Limit high_;
  Limit lowStart_;
  Limit highStart_;
  bool isHigh_ = false;
  bool isLow_ = false;
  std::uint32_t start_ = 0;
  std::uint32_t area_ = 0;
};

// Writes down the runs of a group, and returns how many there are.
template <class T, class Limit>
int FindRuns(const T* elements, int count, Run<Limit> run, LxVector& result) {
  GroupWriter<3> records(result.GetDataPtr(), result.GetNbMaxGroup());
  for (int i = 0; i < count;) {
    // Each element ends one run at most.
    const int end = i + std::min(count - i, records.Room());
    for (; i < end; ++i) {
      const Record record = run.RecordTo(i);
      records.Offer(record, run.Take(elements[i], i));
    }
    for (; i < count && records.Room() == 0; ++i) {
      const Record record = run.RecordTo(i);
      if (!run.Take(elements[i], i)) continue;
      if (!Enlarge(result, records)) return records.Found();
      records.Offer(record, true);
    }
  }
  if (run.IsRun() && (records.Room() > 0 || Enlarge(result, records))) {
    records.Offer(run.RecordTo(count), true);
  }
  return records.Found();
}

template <class Limit>
void GetExtremes(LxVector* source, LxVector* result, Limit low, Limit high) {
  constexpr bool kSigned = std::is_signed_v<Limit>;
  RunOperation("PicGetVectExtremes", [&] {
    if (!Require(source != nullptr && result != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !Require(source != result, LX_ERROR_DESTINATION_IS_SOURCE) ||
        !Require(source->GetNbGroup() > 0, LX_ERROR_VECTOR_EMPTY) ||
        !HasIntegers(*source, kSigned ? LX_DATA_SIGNED : LX_DATA_UNSIGNED)) {
      return;
    }
    if (result->IsSameVectType(LX_VECTOR_EXTREMES) == 0) result->SetType(LX_VECTOR_EXTREMES, 0, 0);
    if (LxGetError() != LX_OK) return;
    result->SetUse(kExtremesUse);
    VisitElement<kSigned>(source->GetDataSize(), [&](auto zero) {
      const auto* const elements = GroupOf<const decltype(zero)>(*source, 0);
      result->SetNbGroup(FindRuns(elements, source->GetGroupLength(), Run(low, high), *result));
    });
  });
}

}  // namespace

void PicGetVectExtremes(LxVector* source, LxVector* result, int low, int high) {
  GetExtremes(source, result, low, high);
}

void PicGetVectExtremes(LxVector* source, LxVector* result, unsigned int low, unsigned int high) {
  GetExtremes(source, result, low, high);
}
