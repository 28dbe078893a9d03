// SPDX-License-Identifier: Apache-2.0
#include "lxpic/base/vector.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/allocate.h"
#include "base/failure.h"

namespace {

constexpr int kHistogramEntries = 256;
constexpr int kExtremesRecords = 2048;
constexpr int kExtremesUse = 6;

struct Shape {
  int dataSize;
  int dataType;
  int groups;
  int groupLength;
  bool filled;  // whether the groups are in use
};

Shape EntriesShape(int dataSize, int entries) {
  return {dataSize, LX_DATA_UNSIGNED, entries == 0 ? 0 : 1, std::max(entries, 1), true};
}

Shape TriplesShape(int groups, bool filled) {
  return {LX_DATA_SIZE_32, LX_DATA_SIGNED, groups, 3, filled};
}

struct Kind {
  int kind;
  Shape (*shape)(int a, int b);
};

constexpr std::array kKinds = {
    Kind{LX_VECTOR_CONTOUR, [](int a, int) { return TriplesShape(a, false); }},
    Kind{LX_VECTOR_HISTOGRAM,
         [](int a, int b) {
           return EntriesShape(LX_DATA_SIZE_32, a == 0 && b == 0 ? kHistogramEntries : b);
         }},
    Kind{LX_VECTOR_TABLE, [](int, int b) { return EntriesShape(LX_DATA_SIZE_8, b); }},
    Kind{LX_VECTOR_SEGMENT,
         [](int a, int b) {
           return Shape{LX_DATA_SIZE_32, LX_DATA_SIGNED, a, std::max(b, 3), true};
         }},
    Kind{LX_VECTOR_EXTREMES, [](int, int) { return TriplesShape(kExtremesRecords, false); }},
    Kind{LX_VECTOR_DISC_ENERGY,
         [](int a, int) {
           return Shape{LX_DATA_SIZE_32, LX_DATA_FLOAT, a, 1, true};
         }},
};

std::uint64_t GroupBytes(int dataSize, int groupLength) {
  return static_cast<std::uint64_t>(groupLength) * static_cast<unsigned>(dataSize) / 2;
}

// Zeroed storage in `data`, null when there is nothing to store; false when it cannot be had.
bool AllocateGroups(int groups, std::uint64_t groupBytes, void*& data) {
  data = nullptr;
  if (groups == 0) return true;
  const auto count = static_cast<unsigned>(groups);
  if (groupBytes > static_cast<std::uint64_t>(PTRDIFF_MAX) / count) return false;
  data = lx::AllocateBytes(groupBytes * count);
  if (data == nullptr) return false;
  std::memset(data, 0, groupBytes * count);
  return true;
}

}  // namespace

LxVector::~LxVector() { lx::ReleaseBytes(m_pData); }

void LxVector::SetNbGroup(int count) {
  if (count < 0 || count > m_n32MaxGroups) {
    lx::Fail(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, "LxVector::SetNbGroup");
    return;
  }
  m_n32Groups = count;
}

std::size_t LxVector::GetAllocatedSize() const {
  return GroupBytes(m_n32DataSize, m_n32GroupLength) * static_cast<unsigned>(m_n32MaxGroups);
}

bool LxVector::Layout(int dataSize, int maxGroups, int groupLength, int dataType) {
  void* data = nullptr;
  if (!AllocateGroups(maxGroups, GroupBytes(dataSize, groupLength), data)) return false;
  lx::ReleaseBytes(m_pData);
  m_pData = data;
  m_n32DataSize = dataSize;
  m_n32DataType = dataType;
  m_n32GroupLength = groupLength;
  m_n32Groups = maxGroups;
  m_n32MaxGroups = maxGroups;
  m_n32Kind = LX_VECTOR_NONE;
  return true;
}

void LxVector::SetStructure(int dataSize, int groups, int groupLength, int dataType) {
  const bool knownType = dataType == LX_DATA_UNSIGNED || dataType == LX_DATA_SIGNED ||
                         (dataType == LX_DATA_FLOAT && dataSize == LX_DATA_SIZE_32);
  LX_ERRORS error = LX_OK;
  if (dataSize != LX_DATA_SIZE_8 && dataSize != LX_DATA_SIZE_16 && dataSize != LX_DATA_SIZE_32) {
    error = LX_ERROR_UNSUPPORTED_DATA_SIZE;
  } else if (!knownType) {
    error = LX_ERROR_UNSUPPORTED_DATA_TYPE;
  } else if (groups < 0) {
    error = LX_ERROR_ARGUMENT_2_OUT_OF_RANGE;
  } else if (groupLength < 1) {
    error = LX_ERROR_ARGUMENT_3_OUT_OF_RANGE;
  } else if (!Layout(dataSize, groups, groupLength, dataType)) {
    error = LX_ERROR_ALLOCATION_FAILED;
  }
  if (error != LX_OK) lx::Fail(error, "LxVector::SetStructure");
}

void LxVector::SetType(int kind, int a, int b) {
  const auto* const found = std::find_if(kKinds.begin(), kKinds.end(),
                                         [kind](const Kind& row) { return row.kind == kind; });
  LX_ERRORS error = LX_OK;
  if (found == kKinds.end()) {
    error = LX_ERROR_ARGUMENT_1_OUT_OF_RANGE;
  } else if (a < 0) {
    error = LX_ERROR_ARGUMENT_2_OUT_OF_RANGE;
  } else if (b < 0) {
    error = LX_ERROR_ARGUMENT_3_OUT_OF_RANGE;
  } else if (const Shape shape = found->shape(a, b);
             !Layout(shape.dataSize, shape.groups, shape.groupLength, shape.dataType)) {
    error = LX_ERROR_ALLOCATION_FAILED;
  } else {
    m_n32Kind = kind;
    if (!shape.filled) m_n32Groups = 0;
    if (kind == LX_VECTOR_EXTREMES) m_n32Use = kExtremesUse;
  }
  if (error != LX_OK) lx::Fail(error, "LxVector::SetType");
}

void LxVector::Reallocate(int capacity) {
  const std::uint64_t groupBytes = GroupBytes(m_n32DataSize, m_n32GroupLength);
  LX_ERRORS error = LX_OK;
  if (capacity < 0) {
    error = LX_ERROR_ARGUMENT_1_OUT_OF_RANGE;
  } else if (groupBytes == 0) {
    error = LX_ERROR_VECTOR_NO_DATA;
  } else if (const std::uint64_t groups =
                 (static_cast<unsigned>(capacity) + groupBytes - 1) / groupBytes;
             !Grow(static_cast<int>(groups))) {
    error = LX_ERROR_ALLOCATION_FAILED;
  }
  if (error != LX_OK) lx::Fail(error, "LxVector::Reallocate");
}

bool LxVector::Grow(int groups) {
  if (groups <= m_n32MaxGroups) return true;
  void* data = nullptr;
  if (!AllocateGroups(groups, GroupBytes(m_n32DataSize, m_n32GroupLength), data)) return false;
  // More groups than before have storage.
  // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker)
  if (m_pData != nullptr) std::memcpy(data, m_pData, GetAllocatedSize());
  lx::ReleaseBytes(m_pData);
  m_pData = data;
  m_n32MaxGroups = groups;
  return true;
}
