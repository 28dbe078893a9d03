// SPDX-License-Identifier: Apache-2.0
#include "lxpic/profile/transitions.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "foundation/rows.h"
#include "profile/group_writer.h"
#include "profile/segment.h"
#include "vectors/integers.h"

namespace {

using namespace lx;
using namespace lx::profile;
using namespace lx::vectors;

constexpr int kTransitionsUse = 7;

using Pair = GroupWriter<2>::Group;

struct Crossings {
  int threshold;
  bool areRising;
  bool areFalling;
};

// Writes down crossings along a line until there is no more room.
void Scan(const Rows& rows, const Line& line, const Crossings& wanted, GroupWriter<3>& found) {
  // The first pixel has none before it.
  int previous = wanted.threshold;
  line.ForEachPoint([&](Point point) {
    const int level = rows.Row<const std::uint8_t>(static_cast<std::size_t>(point.y))[point.x];
    const bool falls = previous > wanted.threshold && level <= wanted.threshold;
    const bool rises = previous < wanted.threshold && level >= wanted.threshold;
    previous = level;
    found.Offer({point.x, point.y, falls ? TRANS_SCAN_EDGE_FALLING : TRANS_SCAN_EDGE_RISING},
                (falls && wanted.areFalling) || (rises && wanted.areRising));
    return found.Room() > 0;
  });
}

// How many pairs a result takes: as many as its storage, or a share of the elements where there is
// none.
int CapacityFor(const LxVector& result, int elements) {
  const std::size_t pairs = result.GetAllocatedSize() / sizeof(Pair);
  if (result.GetAllocatedSize() == 0) return elements / 2 / static_cast<int>(sizeof(Pair));
  return static_cast<int>(std::min<std::size_t>(pairs, std::numeric_limits<int>::max()));
}

// False when there is a crossing too many.
template <class T, class Threshold>
bool FindCrossings(const T* elements, int count, Threshold threshold, GroupWriter<2>& found) {
  for (int i = 0; i + 1 < count; ++i) {
    const Threshold a = elements[i];
    const Threshold b = elements[i + 1];
    const bool crosses = (a <= threshold) != (b <= threshold);
    if (found.Room() == 0) {
      if (crosses) return false;
      continue;
    }
    const bool isMagnitude = std::is_unsigned_v<Threshold> && a > b;
    // Modulo 2^32.
    const std::uint32_t difference = static_cast<std::uint32_t>(b) - static_cast<std::uint32_t>(a);
    found.Offer({i, static_cast<std::int32_t>(isMagnitude ? 0 - difference : difference)}, crosses);
  }
  return true;
}

template <class Threshold>
void GetTransitions(LxVector* source, LxVector* result, Threshold threshold) {
  constexpr bool kSigned = std::is_signed_v<Threshold>;
  RunOperation("PicGetVectTransition", [&] {
    if (!Require(source != nullptr && result != nullptr, LX_ERROR_VECTOR_NO_DATA) ||
        !Require(source != result, LX_ERROR_DESTINATION_IS_SOURCE) ||
        !Require(source->GetNbGroup() > 0, LX_ERROR_VECTOR_EMPTY) ||
        !HasIntegers(*source, kSigned ? LX_DATA_SIGNED : LX_DATA_UNSIGNED)) {
      return;
    }
    const int count = source->GetGroupLength();
    const int capacity = CapacityFor(*result, count);
    result->SetStructure(LX_DATA_SIZE_32, capacity, 2, LX_DATA_SIGNED);
    if (LxGetError() != LX_OK) return;
    result->SetUse(kTransitionsUse);
    GroupWriter<2> found(result->GetDataPtr(), capacity);
    VisitElement<kSigned>(source->GetDataSize(), [&](auto zero) {
      const bool fit = FindCrossings(GroupOf<decltype(zero)>(*source, 0), count, threshold, found);
      if (Require(fit, LX_ERROR_TOO_MANY_TRANSITIONS)) result->SetNbGroup(found.Found());
    });
  });
}

}  // namespace

void PicTransitionScan(TRANS_SCAN_EDGE edge, LxROI<LxBW8>* region, int x0, int y0, int x1, int y1,
                       int threshold, int maximum, LxVector* result) {
  RunOperation("PicTransitionScan", [&] {
    const Point from{x0, y0};
    const Point to{x1, y1};
    const bool isKnown = edge >= TRANS_SCAN_EDGE_RISING && edge <= TRANS_SCAN_EDGE_ANY;
    if (!Attached({region}) || !Require(isKnown, LX_ERROR_UNSUPPORTED_OPERATION) ||
        !HasPoints(*region, from, to, LX_ERROR_ARGUMENT_2_OUT_OF_RANGE) ||
        !Require(result != nullptr, LX_ERROR_VECTOR_NO_DATA)) {
      return;
    }
    const Line line(from, to);
    const auto count = static_cast<int>(line.Count());
    const int most = maximum <= 0 ? count : std::min(count, maximum);
    SegmentGroup* const groups = MakeSegment(*result, most);
    if (groups == nullptr) return;
    GroupWriter<3> found(groups, most);
    Scan(RowsOf(region), line,
         {threshold, edge != TRANS_SCAN_EDGE_FALLING, edge != TRANS_SCAN_EDGE_RISING}, found);
    result->SetNbGroup(found.Found());
  });
}

void PicGetVectTransition(LxVector* source, LxVector* result, int threshold) {
  GetTransitions(source, result, threshold);
}

void PicGetVectTransition(LxVector* source, LxVector* result, unsigned int threshold) {
  GetTransitions(source, result, threshold);
}
