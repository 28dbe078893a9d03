// SPDX-License-Identifier: Apache-2.0
#include "tools/lxpic/value/vectors.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "tools/lxpic/common/failure.h"
#include "tools/lxpic/value/tables.h"

namespace lx::tool {

namespace {

using catalogue::Kind;

// An element as its fields. The primary template is for plain numbers.
template <class Element>
struct Fields {
  static std::vector<std::string> Names() { return {""}; }
  static void Load(const Element& element, std::vector<double>& values) {
    values.push_back(static_cast<double>(element));
  }
};

template <>
struct Fields<LxC24> {
  static std::vector<std::string> Names() { return {"red", "green", "blue"}; }
  static void Load(const LxC24& element, std::vector<double>& values) {
    for (const auto value : {element.c2, element.c1, element.c0}) values.push_back(value);
  }
};

template <>
struct Fields<LxPeak> {
  static std::vector<std::string> Names() {
    return {"start", "length", "center", "amplitude", "area"};
  }
  static void Load(const LxPeak& peak, std::vector<double>& values) {
    const auto add = [&values](auto... fields) {
      (values.push_back(static_cast<double>(fields)), ...);
    };
    add(peak.m_un32Start, peak.m_un32Length, peak.m_f32Center, peak.m_n32Amplitude, peak.m_n32Area);
  }
};

template <class Vector>
Numbers ReadVector(const Vector& vector, Numbers::Drawing drawing) {
  using Element = std::remove_reference_t<decltype(vector[0])>;
  Numbers numbers{true, drawing, Fields<Element>::Names(), {}};
  for (const Element& element : vector) Fields<Element>::Load(element, numbers.values);
  return numbers;
}

// Some are made with a capacity.
template <class Vector>
std::shared_ptr<Vector> MakeEmpty() {
  if constexpr (std::is_default_constructible_v<Vector>) {
    return std::make_shared<Vector>();
  } else {
    return std::make_shared<Vector>(0U);
  }
}

template <class Vector, Numbers::Drawing drawing>
Value MakeTyped() {
  auto vector = MakeEmpty<Vector>();
  return {vector.get(), vector, [vector] { return ReadVector(*vector, drawing); }};
}

Value MakeUntyped() {
  auto vector = std::make_shared<LxVector>();
  return {vector.get(), vector, [vector] { return VectorNumbers(*vector); }};
}

struct VectorKind {
  Kind kind;
  Value (*make)();
};

constexpr std::array kVectorKinds = {
    VectorKind{Kind::kByteVector, MakeTyped<LxBW8Vector, Numbers::Drawing::kLine>},
    VectorKind{Kind::kWordVector, MakeTyped<LxBW16Vector, Numbers::Drawing::kLine>},
    VectorKind{Kind::kDoubleWordVector, MakeTyped<LxBW32Vector, Numbers::Drawing::kLine>},
    VectorKind{Kind::kColourVector, MakeTyped<LxC24Vector, Numbers::Drawing::kLine>},
    VectorKind{Kind::kHistogramVector, MakeTyped<LxBWHistogramVector, Numbers::Drawing::kBars>},
    VectorKind{Kind::kPeaksVector, MakeTyped<LxPeaksVector, Numbers::Drawing::kNone>},
    VectorKind{Kind::kVector, MakeUntyped}};

template <class Element>
constexpr unsigned kMaximum = std::numeric_limits<Element>::max();

template <class Element>
constexpr std::size_t kEntries = std::size_t{kMaximum<Element>} + 1;

// `Element` is the unsigned integer type of a full table's index and entries.
template <class Element>
std::vector<Element> FullTable(const std::vector<unsigned>& entries) {
  if (entries.size() != kEntries<Element>) {
    throw Failure(kWrongUsage, "the table must have " + std::to_string(kEntries<Element>) +
                                   " entries, not " + std::to_string(entries.size()));
  }
  return {entries.begin(), entries.end()};
}

template <class Element>
Value MakeRawTable(const std::vector<unsigned>& entries) {
  auto table = std::make_shared<std::vector<Element>>(FullTable<Element>(entries));
  return {table->data(), table, {}};
}

// A plain function cannot carry a table, so the one that is passed looks here. It serves one step
// at a time: a step runs before the words of the next are read, on the same thread.
template <class Element>
std::vector<Element>& FunctionTable() {
  thread_local std::vector<Element> table;
  return table;
}

template <class Element>
Element LookUp(Element in) {
  return FunctionTable<Element>()[in];
}

template <class Element>
Value MakeFunction(const std::vector<unsigned>& entries) {
  FunctionTable<Element>() = FullTable<Element>(entries);
  return {&LookUp<Element>, {}, {}};
}

template <class Pixel>
int IsMarked(Pixel& pixel) {
  return static_cast<int>(FunctionTable<decltype(Pixel::value)>()[pixel]);
}

// The pixels whose entries are not 0.
template <class Pixel>
Value MakePredicate(const std::vector<unsigned>& entries) {
  using Element = decltype(Pixel::value);
  FunctionTable<Element>() = FullTable<Element>(entries);
  return {&IsMarked<Pixel>, {}, {}};
}

template <class Vector, class Plain, Numbers::Drawing drawing = Numbers::Drawing::kLine>
Value MakeFilled(const std::vector<unsigned>& entries) {
  using Element = std::remove_reference_t<decltype(std::declval<Vector&>()[0])>;
  LxOk();
  auto vector = MakeEmpty<Vector>();
  for (const unsigned entry : entries) {
    vector->AddElement(Element(static_cast<Plain>(entry)));
  }
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, "no memory for a vector");
  return {vector.get(), vector, [vector] { return ReadVector(*vector, drawing); }};
}

// Red, green and blue of each element.
Value MakeColours(const std::vector<unsigned>& entries) {
  if (entries.size() % 3 != 0) {
    throw Failure(kWrongUsage, "colours are three numbers each, not " +
                                   std::to_string(entries.size()) + " in all");
  }
  LxOk();
  auto vector = std::make_shared<LxC24Vector>();
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(entries[i]); };
  for (std::size_t i = 0; i < entries.size(); i += 3) {
    vector->AddElement({byte(i + 2), byte(i + 1), byte(i)});
  }
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, "no memory for a vector");
  return {vector.get(), vector, [vector] { return ReadVector(*vector, Numbers::Drawing::kLine); }};
}

template <class Element>
constexpr TableKind MakeTableKind(Kind kind, Value (*make)(const std::vector<unsigned>&)) {
  return {kind, kEntries<Element>, kMaximum<Element>, make};
}

constexpr std::array kTableKinds = {
    MakeTableKind<std::uint8_t>(Kind::kByteTable, MakeRawTable<unsigned char>),
    MakeTableKind<std::uint16_t>(Kind::kWordTable, MakeRawTable<unsigned short>),
    MakeTableKind<std::uint8_t>(Kind::kByteVector, MakeFilled<LxBW8Vector, std::uint8_t>),
    MakeTableKind<std::uint16_t>(Kind::kWordVector, MakeFilled<LxBW16Vector, std::uint16_t>),
    MakeTableKind<std::uint8_t>(Kind::kColourVector, MakeColours),
    TableKind{Kind::kHistogramVector, kEntries<std::uint8_t>, std::numeric_limits<unsigned>::max(),
              MakeFilled<LxBWHistogramVector, unsigned, Numbers::Drawing::kBars>},
    MakeTableKind<std::uint8_t>(Kind::kByteFunction, MakeFunction<unsigned char>),
    MakeTableKind<std::uint16_t>(Kind::kWordFunction, MakeFunction<unsigned short>),
    MakeTableKind<std::uint8_t>(Kind::kBytePredicate, MakePredicate<LxBW8>),
    MakeTableKind<std::uint16_t>(Kind::kWordPredicate, MakePredicate<LxBW16>)};

template <class Entry, std::size_t count>
const Entry* Find(const std::array<Entry, count>& entries, Kind kind) {
  const auto* const found = std::find_if(entries.begin(), entries.end(),
                                         [=](const Entry& each) { return each.kind == kind; });
  return found == entries.end() ? nullptr : found;
}

}  // namespace

const TableKind* FindTableKind(Kind kind) { return Find(kTableKinds, kind); }

Value MakeEmptyVector(Kind kind) {
  const VectorKind* const found = Find(kVectorKinds, kind);
  return found == nullptr ? Value{} : found->make();
}

}  // namespace lx::tool
