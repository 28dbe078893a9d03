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
struct Fields<LxPath> {
  static std::vector<std::string> Names() { return {"x", "y"}; }
  static void Load(const LxPath& point, std::vector<double>& values) {
    values.insert(values.end(), {1.0 * point.m_n16X, 1.0 * point.m_n16Y});
  }
};

template <>
struct Fields<LxBW8Path> {
  static std::vector<std::string> Names() { return {"x", "y", "level"}; }
  static void Load(const LxBW8Path& point, std::vector<double>& values) {
    values.insert(values.end(), {1.0 * point.m_n16X, 1.0 * point.m_n16Y, 1.0 * point.m_bw8Pixel});
  }
  static LxBW8Path Make(const unsigned* entries, LxPath at) {
    return {at.m_n16X, at.m_n16Y, static_cast<std::uint8_t>(entries[0])};
  }
};

template <>
struct Fields<LxBW16Path> {
  static std::vector<std::string> Names() { return {"x", "y", "level"}; }
  static void Load(const LxBW16Path& point, std::vector<double>& values) {
    values.insert(values.end(), {1.0 * point.m_n16X, 1.0 * point.m_n16Y, 1.0 * point.m_bw16Pixel});
  }
  static LxBW16Path Make(const unsigned* entries, LxPath at) {
    return {at.m_n16X, at.m_n16Y, static_cast<std::uint16_t>(entries[0])};
  }
};

template <>
struct Fields<LxC24Path> {
  static std::vector<std::string> Names() { return {"x", "y", "red", "green", "blue"}; }
  static void Load(const LxC24Path& point, std::vector<double>& values) {
    values.insert(values.end(), {1.0 * point.m_n16X, 1.0 * point.m_n16Y});
    Fields<LxC24>::Load(point.m_c24Pixel, values);
  }
  static LxC24Path Make(const unsigned* entries, LxPath at) {
    const auto byte = [=](int i) { return static_cast<std::uint8_t>(entries[i]); };
    return {at.m_n16X, at.m_n16Y, {byte(2), byte(1), byte(0)}};
  }
};

template <class Vector>
Numbers ReadVector(const Vector& vector, Numbers::Drawing drawing) {
  using Element = std::remove_reference_t<decltype(vector[0])>;
  if constexpr (requires { vector.m_bClosed; }) {
    if (vector.m_bClosed != 0) drawing = Numbers::Drawing::kClosedPath;
  }
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
    VectorKind{Kind::kPathVector, MakeTyped<LxPathVector, Numbers::Drawing::kPath>},
    VectorKind{Kind::kBytePathVector, MakeTyped<LxBW8PathVector, Numbers::Drawing::kPath>},
    VectorKind{Kind::kWordPathVector, MakeTyped<LxBW16PathVector, Numbers::Drawing::kPath>},
    VectorKind{Kind::kColourPathVector, MakeTyped<LxC24PathVector, Numbers::Drawing::kPath>},
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

// Column, row and what the image has there, of each point.
template <class Vector>
Value MakePath(const std::vector<unsigned>& entries) {
  using Element = std::remove_reference_t<decltype(std::declval<Vector&>()[0])>;
  const std::size_t fields = Fields<Element>::Names().size();
  if (entries.size() % fields != 0) {
    throw Failure(kWrongUsage, "points are " + std::to_string(fields) + " numbers each, not " +
                                   std::to_string(entries.size()) + " in all");
  }
  LxOk();
  auto path = MakeEmpty<Vector>();
  const auto coordinate = [](unsigned entry) {
    return static_cast<std::int16_t>(std::min(entry, 0x7FFFU));
  };
  for (std::size_t i = 0; i < entries.size(); i += fields) {
    const LxPath at = {coordinate(entries[i]), coordinate(entries[i + 1])};
    path->AddElement(Fields<Element>::Make(&entries[i + 2], at));
  }
  if (LxGetError() != LX_OK) throw Failure(kOperationFailed, "no memory for a path");
  return {path.get(), path, [path] { return ReadVector(*path, Numbers::Drawing::kPath); }};
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
    MakeTableKind<std::uint16_t>(Kind::kBytePathVector, MakePath<LxBW8PathVector>),
    MakeTableKind<std::uint16_t>(Kind::kWordPathVector, MakePath<LxBW16PathVector>),
    MakeTableKind<std::uint16_t>(Kind::kColourPathVector, MakePath<LxC24PathVector>),
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
