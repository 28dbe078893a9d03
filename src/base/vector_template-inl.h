// SPDX-License-Identifier: Apache-2.0
// The members of LxVectorTemplate, for the files that instantiate it. They need the ElementRecord
// of the element type.
#pragma once

#include <algorithm>
#include <cstring>
#include <new>
#include <type_traits>

#include "base/allocate.h"
#include "base/failure.h"
#include "base/vector_file-inl.h"
#include "lxpic/base/vector_template.h"

template <class T>
const std::uint8_t LxVectorTemplate<T>::m_un8Signature = lx::ElementRecord<T>::kSignature;

template <class T>
const std::uint8_t LxVectorTemplate<T>::m_un8Version = lx::ElementRecord<T>::kVersion;

template <class T>
thread_local T LxVectorTemplate<T>::m_PlaceHolder{};

template <class T>
LxVectorTemplate<T>::LxVectorTemplate() {
  static_assert(std::is_trivially_copyable_v<T>);
  InitEmpty();
}

template <class T>
LxVectorTemplate<T>::LxVectorTemplate(const LxVectorTemplate& other) {
  other.InternalCopyTo(this, 1);
}

template <class T>
LxVectorTemplate<T>::~LxVectorTemplate() {
  lx::ReleaseBytes(m_pElements);
}

template <class T>
LxVectorTemplate<T>& LxVectorTemplate<T>::operator=(const LxVectorTemplate& other) {
  if (this != &other) other.InternalCopyTo(this, 0);
  return *this;
}

template <class T>
void LxVectorTemplate<T>::InitEmpty() {
  m_un32NumElements = 0;
  m_un32MaxElements = 0;
  m_pElements = nullptr;
}

template <class T>
LxVectorTemplate<T>* LxVectorTemplate<T>::CopyTo(LxVectorTemplate* destination) const {
  return InternalCopyTo(destination, 0);
}

template <class T>
LxVectorTemplate<T>* LxVectorTemplate<T>::InternalCopyTo(LxVectorTemplate* destination,
                                                         int initialise) const {
  if (destination == this) return destination;
  LxVectorTemplate* const made =
      destination == nullptr ? new (std::nothrow) LxVectorTemplate : nullptr;
  LxVectorTemplate* const target = destination == nullptr ? made : destination;
  if (target == nullptr) {
    lx::Fail(LX_ERROR_ALLOCATION_FAILED, "LxVector::CopyTo");
    return nullptr;
  }
  if (initialise != 0) target->InitEmpty();
  if (!target->Resize(m_un32NumElements, false)) {
    delete made;
    return destination;
  }
  if (m_un32NumElements != 0) {
    std::memcpy(target->m_pElements, m_pElements, m_un32NumElements * sizeof(T));
  }
  target->m_un32NumElements = m_un32NumElements;
  return target;
}

template <class T>
T& LxVectorTemplate<T>::OutOfRange() const {
  lx::Fail(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, "LxVector::operator[]");
  return m_PlaceHolder;
}

// Every change of the capacity, whoever asks for it, is traced under the one name.
template <class T>
bool LxVectorTemplate<T>::Resize(unsigned capacity, bool keep) {
  if (capacity == m_un32MaxElements) return true;
  T* elements = nullptr;
  if (capacity != 0) {
    elements = static_cast<T*>(lx::AllocateBytes(std::uint64_t{capacity} * sizeof(T)));
    if (elements == nullptr) {
      lx::Fail(LX_ERROR_ALLOCATION_FAILED, "LxVector::SetMaxElements");
      return false;
    }
  }
  const unsigned kept = keep ? std::min(m_un32NumElements, capacity) : 0;
  if (kept != 0) std::memcpy(elements, m_pElements, kept * sizeof(T));
  lx::ReleaseBytes(m_pElements);
  m_pElements = elements;
  m_un32MaxElements = capacity;
  m_un32NumElements = kept;
  return true;
}

template <class T>
void LxVectorTemplate<T>::SetMaxElements(unsigned capacity, int keep) {
  Resize(capacity, keep != 0);
}

template <class T>
void LxVectorTemplate<T>::SetNumElements(unsigned count) {
  if (count > m_un32MaxElements && !Resize(count, true)) {
    LxTraceError("LxVector::SetNumElements");
    return;
  }
  m_un32NumElements = count;
}

template <class T>
void LxVectorTemplate<T>::Append(T element, const char* name) {
  constexpr unsigned kMost = UINT32_MAX;
  if (m_un32NumElements == m_un32MaxElements) {
    const unsigned doubled =
        m_un32MaxElements > kMost / 2 ? kMost : std::max(2 * m_un32MaxElements, 1U);
    if (m_un32MaxElements == kMost) LxSetError(LX_ERROR_ALLOCATION_FAILED);
    if (m_un32MaxElements == kMost || !Resize(doubled, true)) {
      LxTraceError(name);
      return;
    }
  }
  m_pElements[m_un32NumElements++] = element;
}

template <class T>
void LxVectorTemplate<T>::AddElement(T element) {
  Append(element, "LxVector::AddElement");
}

template <class T>
void LxVectorTemplate<T>::AddElementByRef(T& element) {
  Append(element, "LxVector::AddElementByRef");
}

template <class T>
void LxVectorTemplate<T>::RemoveElement(unsigned index) {
  if (index >= m_un32NumElements) {
    lx::Fail(LX_ERROR_ARGUMENT_1_OUT_OF_RANGE, "LxVector::RemoveElement");
    return;
  }
  std::copy(begin() + index + 1, end(), begin() + index);
  --m_un32NumElements;
}

template <class T>
void LxVectorTemplate<T>::Empty() {
  m_un32NumElements = 0;
}

template <class T>
void LxVectorTemplate<T>::Save(const char* fileName) {
  lx::SaveVector(*this, fileName, "LxVector::Save");
}

template <class T>
void LxVectorTemplate<T>::Save(const unsigned short* fileName) {
  lx::SaveVector(*this, fileName, "LxVector::Save ( Unicode)");
}

template <class T>
void LxVectorTemplate<T>::Load(const char* fileName) {
  lx::LoadVector(*this, fileName, "LxVector::Load");
}

template <class T>
void LxVectorTemplate<T>::Load(const unsigned short* fileName) {
  lx::LoadVector(*this, fileName, "LxVector::Load ( Unicode)");
}

template <class T>
void LxVectorTemplate<T>::Serialize(void* file, int write, unsigned /*version*/) {
  auto* const stream = static_cast<std::FILE*>(file);
  const bool done = write != 0 ? lx::WriteElements(*this, stream) : lx::ReadElements(*this, stream);
  if (!done) LxTraceError("LxVector::Serialize");
}
