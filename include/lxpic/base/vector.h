// SPDX-License-Identifier: Apache-2.0
/// @file vector.h
/// The untyped vector and the pixel vectors.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lxpic/base/export.h"
#include "lxpic/base/vector_template.h"

/// Element width codes of LxVector: twice the width in bytes.
enum LX_DATA_SIZES : int {
  LX_DATA_SIZE_8 = 2,
  LX_DATA_SIZE_16 = 4,
  LX_DATA_SIZE_32 = 8
};

/// Element type codes of LxVector.
enum LX_DATA_TYPES : int {
  LX_DATA_UNSIGNED = 1,
  LX_DATA_SIGNED = 2,
  LX_DATA_FLOAT = 4
};

/// Kinds of LxVector, with what SetType(kind, a, b) makes of them.
enum LX_VECTOR_KINDS : int {
  LX_VECTOR_NONE = 0,        ///< laid out by hand with SetStructure()
  LX_VECTOR_CONTOUR = 1,     ///< room for `a` groups of three signed 32-bit integers, none in use
  LX_VECTOR_HISTOGRAM = 2,   ///< a group of `b` unsigned 32-bit entries; 256 when `a`, `b` are 0
  LX_VECTOR_TABLE = 3,       ///< a group of `b` unsigned 8-bit entries
  LX_VECTOR_SEGMENT = 4,     ///< `a` groups of three signed 32-bit integers (`b`, when larger)
  LX_VECTOR_EXTREMES = 5,    ///< room for 2,048 groups of three signed 32-bit integers, use code 6
  LX_VECTOR_DISC_ENERGY = 7  ///< `a` groups of one 32-bit float
};

/// Vector of groups of elements whose width, type and kind are chosen at run time.
class LXPIC_API LxVector {
 public:
  LxVector() = default;
  ~LxVector();
  LxVector(const LxVector&) = delete;
  LxVector& operator=(const LxVector&) = delete;

  /// Address of the first element, or null when nothing is allocated.
  void* GetDataPtr() const { return m_pData; }
  /// Groups in use.
  int GetNbGroup() const { return m_n32Groups; }
  /// Sets the number of groups in use. A count below 0 or above GetNbMaxGroup() sets
  /// LX_ERROR_ARGUMENT_1_OUT_OF_RANGE and changes nothing. Trace "LxVector::SetNbGroup".
  void SetNbGroup(int count);
  /// Groups allocated.
  int GetNbMaxGroup() const { return m_n32MaxGroups; }
  /// Elements per group.
  int GetGroupLength() const { return m_n32GroupLength; }
  /// Element width code: 2, 4 or 8; 0 before the first layout.
  int GetDataSize() const { return m_n32DataSize; }
  /// Element type code: 1 unsigned, 2 signed, 4 floating point; 0 before the first layout.
  int GetDataType() const { return m_n32DataType; }
  /// Allocated bytes.
  std::size_t GetAllocatedSize() const;

  /// Lays the vector out as `groups` zeroed groups, all in use, of `groupLength` elements of the
  /// width code `dataSize` and the type code `dataType`; the kind becomes 0. Errors, each changing
  /// nothing: a width code but 2, 4 and 8 LX_ERROR_UNSUPPORTED_DATA_SIZE; a type code but 1, 2 and
  /// 4 (4 with width 8 only) LX_ERROR_UNSUPPORTED_DATA_TYPE; a negative count
  /// LX_ERROR_ARGUMENT_2_OUT_OF_RANGE; a group length below 1 LX_ERROR_ARGUMENT_3_OUT_OF_RANGE;
  /// LX_ERROR_ALLOCATION_FAILED. Trace "LxVector::SetStructure".
  void SetStructure(int dataSize, int groups, int groupLength, int dataType);
  /// Lays the vector out as a kind of LX_VECTOR_KINDS, zeroed; without entries there is no group.
  /// Errors, each changing nothing: another kind (0 too) or a negative size
  /// LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, _2_ or _3_; LX_ERROR_ALLOCATION_FAILED. Trace
  /// "LxVector::SetType".
  void SetType(int kind, int a, int b);
  /// Non-zero when the vector is of `kind`.
  int IsSameVectType(int kind) const { return m_n32Kind == kind ? 1 : 0; }
  int GetVectType() const { return m_n32Kind; }
  /// A tag that says what the content means, set by the operation that made it.
  int GetUse() const { return m_n32Use; }
  void SetUse(int use) { m_n32Use = use; }
  /// Grows the storage to whole groups of at least `capacity` bytes, zeroed, and keeps the content;
  /// a smaller capacity changes nothing. LX_ERROR_ARGUMENT_1_OUT_OF_RANGE when negative,
  /// LX_ERROR_VECTOR_NO_DATA before the first layout, LX_ERROR_ALLOCATION_FAILED. Trace
  /// "LxVector::Reallocate".
  void Reallocate(int capacity);

 private:
  LXPIC_PRIVATE bool Layout(int dataSize, int maxGroups, int groupLength, int dataType);
  LXPIC_PRIVATE bool Grow(int groups);

  void* m_pData = nullptr;
  int m_n32DataSize = 0;
  int m_n32DataType = 0;
  int m_n32GroupLength = 0;
  int m_n32Groups = 0;
  int m_n32MaxGroups = 0;
  int m_n32Kind = LX_VECTOR_NONE;
  int m_n32Use = 0;
};

/// Vector of 8-bit grey levels, for instance a lookup table.
class LXPIC_API LxBW8Vector : public LxVectorTemplate<LxBW8> {
 public:
  LxBW8Vector() = default;
  /// `count` elements, zeroed when `zero` is non-zero; empty after LX_ERROR_ALLOCATION_FAILED.
  explicit LxBW8Vector(unsigned count, int zero);
};

/// Vector of 16-bit grey levels.
class LXPIC_API LxBW16Vector : public LxVectorTemplate<LxBW16> {
 public:
  LxBW16Vector() = default;
  /// As LxBW8Vector(unsigned, int).
  explicit LxBW16Vector(unsigned count, int zero);
};

/// Vector of 32-bit values.
class LXPIC_API LxBW32Vector : public LxVectorTemplate<LxBW32> {
 public:
  LxBW32Vector() = default;
  /// As LxBW8Vector(unsigned, int).
  explicit LxBW32Vector(unsigned count, int zero);
};

/// Vector of colours.
class LXPIC_API LxC24Vector : public LxVectorTemplate<LxC24> {
 public:
  LxC24Vector() = default;
  /// As LxBW8Vector(unsigned, int).
  explicit LxC24Vector(unsigned count, int zero);
};
