// SPDX-License-Identifier: Apache-2.0
/// @file vector_template.h
/// The growable array of plain elements, with persistence to a small binary file.
///
/// Every failing member sets an error code and appends "LxVector::" and its own name to the trace,
/// whatever the element type; a successful member leaves the error state as it was, except that
/// Save() and Load() reset it. After a failure the vector is usable.
#pragma once

#include <cstdint>

#include "lxpic/base/export.h"
#include "lxpic/base/pixel.h"

/// Growable array of fixed-size elements that are copied as raw bytes. It exists for the element
/// types that the library instantiates: the pixel types LxBW8, LxBW16, LxBW32 and LxC24, LxRun,
/// `unsigned int`, LxPath, LxBW8Path, LxBW16Path, LxC24Path and LxPeak.
template <class T>
class LXPIC_API LxVectorTemplate {
 public:
  /// An empty vector: no elements, no storage.
  LxVectorTemplate();
  /// A copy whose capacity is exactly its element count. LX_ERROR_ALLOCATION_FAILED leaves it
  /// empty.
  LxVectorTemplate(const LxVectorTemplate& other);
  /// Frees the storage.
  virtual ~LxVectorTemplate();
  /// Copies `other`; the capacity becomes exactly its count. On failure nothing changes.
  LxVectorTemplate& operator=(const LxVectorTemplate& other);

  /// Sets count and capacity to 0 and forgets the storage without freeing it.
  void InitEmpty();
  /// Copies this vector to `destination` and returns it. A null destination makes a new vector on
  /// the heap that the caller owns; null when that cannot be allocated.
  LxVectorTemplate* CopyTo(LxVectorTemplate* destination) const;
  /// CopyTo() that first calls InitEmpty() on the destination when `initialise` is non-zero.
  LxVectorTemplate* InternalCopyTo(LxVectorTemplate* destination, int initialise) const;

  /// Element `index`. An index not below the count sets LX_ERROR_ARGUMENT_1_OUT_OF_RANGE and gives
  /// the calling thread's spare element, which may be read and written freely; it starts as zero.
  T& operator[](unsigned index) const {
    return index < m_un32NumElements ? m_pElements[index] : OutOfRange();
  }

  /// Sets the capacity exactly. The elements in use survive, cut at the new capacity, when `keep`
  /// is non-zero; otherwise the count becomes 0. Nothing happens when the capacity is already
  /// `capacity`. LX_ERROR_ALLOCATION_FAILED changes nothing.
  void SetMaxElements(unsigned capacity, int keep);
  /// Sets the count, growing the capacity to exactly that if needed. New elements are not
  /// initialised.
  void SetNumElements(unsigned count);
  /// Appends a copy of `element`, doubling the capacity when full.
  void AddElement(T element);
  /// Appends a copy of `element`, which may be an element of this vector.
  void AddElementByRef(T& element);
  /// Removes element `index` and moves the later ones down. LX_ERROR_ARGUMENT_1_OUT_OF_RANGE.
  void RemoveElement(unsigned index);
  /// Sets the count to 0 and keeps the storage.
  void Empty();

  /// Writes the vector to a file. LX_ERROR_FILE_OPEN_FAILED, _WRITE_FAILED, _CLOSE_FAILED.
  /// `fileName` is UTF-8 or whatever the file system takes.
  void Save(const char* fileName);
  /// Save() with a zero-terminated UTF-16 name; trace "LxVector::Save ( Unicode)".
  void Save(const unsigned short* fileName);
  /// Replaces the content by that of a file. LX_ERROR_FILE_OPEN_FAILED or
  /// LX_ERROR_BAD_FILE_SIGNATURE: nothing changes. LX_ERROR_FILE_READ_FAILED: the file ends early;
  /// when that is behind the count, the vector has all its elements, the missing ones zero.
  /// LX_ERROR_ALLOCATION_FAILED: the count claims more than 64 MiB that the file does not hold, or
  /// there is no memory; the vector is empty. Bytes after the last element are ignored.
  void Load(const char* fileName);
  /// Load() with a zero-terminated UTF-16 name; trace "LxVector::Load ( Unicode)".
  void Load(const unsigned short* fileName);
  /// Writes (`write` non-zero) or reads the count and the elements at the position of `file`, an
  /// open C stream (`FILE*`). `version` is the version byte of the element type.
  void Serialize(void* file, int write, unsigned version);

  unsigned GetNumElements() const { return m_un32NumElements; }
  unsigned GetMaxElements() const { return m_un32MaxElements; }
  /// Address of the first element, or null when nothing is allocated.
  T* GetDataPtr() const { return m_pElements; }
  T* begin() const { return m_pElements; }
  T* end() const { return m_pElements + m_un32NumElements; }

 protected:
  std::uint32_t m_un32NumElements;
  std::uint32_t m_un32MaxElements;
  T* m_pElements;

  static const std::uint8_t m_un8Signature;  ///< type byte of the file header
  static const std::uint8_t m_un8Version;    ///< version byte of the file header

 private:
  T& OutOfRange() const;
  bool Resize(unsigned capacity, bool keep);
  void Append(T element, const char* name);

  static thread_local T m_PlaceHolder;
};

extern template class LxVectorTemplate<LxBW8>;
extern template class LxVectorTemplate<LxBW16>;
extern template class LxVectorTemplate<LxBW32>;
extern template class LxVectorTemplate<LxC24>;
extern template class LxVectorTemplate<LxRun>;
