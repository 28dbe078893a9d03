// SPDX-License-Identifier: Apache-2.0
#include "support/trial/vectors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <tuple>

namespace lx::test {

namespace {

using catalogue::Argument;
using catalogue::Kind;
using catalogue::Parameter;

// How a kind of vector is made and read.
struct VectorType {
  Kind kind;
  double maximum;  ///< of an element
  VectorObject (*make)(const Elements&);
  Elements (*read)(const Argument&);
  std::size_t fields = 1;  ///< of an element
};

template <class Vector>
constexpr VectorType TypedVector(Kind kind) {
  using Element = decltype(Vector().begin()->value);
  return {kind, static_cast<double>(std::numeric_limits<Element>::max()),
          [](const Elements& content) -> VectorObject {
            auto made = std::make_shared<Vector>();
            for (const double value : content.values) made->AddElement(static_cast<Element>(value));
            return {made, made.get()};
          },
          [](const Argument& vector) {
            Elements content;
            for (const auto& each : *std::get<Vector*>(vector)) {
              content.values.push_back(static_cast<double>(each.value));
            }
            return content;
          }};
}

VectorObject MakeHistogram(const Elements& content) {
  auto made = std::make_shared<LxBWHistogramVector>(0);
  made->SetNumElements(static_cast<unsigned>(content.values.size()));
  std::transform(content.values.begin(), content.values.end(), made->begin(),
                 [](double count) { return static_cast<unsigned>(count); });
  return {made, made.get()};
}

Elements ReadHistogram(const Argument& vector) {
  const auto& read = *std::get<LxBWHistogramVector*>(vector);
  Elements content;
  content.values.assign(read.begin(), read.end());
  return content;
}

// Three values an element.
VectorObject MakeColours(const Elements& content) {
  auto made = std::make_shared<LxC24Vector>();
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(content.values[i]); };
  for (std::size_t i = 0; i + 2 < content.values.size(); i += 3) {
    made->AddElement({byte(i), byte(i + 1), byte(i + 2)});
  }
  return {made, made.get()};
}

Elements ReadColours(const Argument& vector) {
  Elements content;
  for (const LxC24& each : *std::get<LxC24Vector*>(vector)) {
    for (const std::uint8_t value : {each.c0, each.c1, each.c2}) content.values.push_back(value);
  }
  return content;
}

// The fields of the elements with several, in the order in which they are told.
constexpr auto Fields(LxPath& point) { return std::tie(point.m_n16X, point.m_n16Y); }
constexpr auto Fields(LxBW8Path& point) {
  return std::tie(point.m_n16X, point.m_n16Y, point.m_bw8Pixel.value);
}
constexpr auto Fields(LxBW16Path& point) {
  return std::tie(point.m_n16X, point.m_n16Y, point.m_bw16Pixel.value);
}
constexpr auto Fields(LxC24Path& point) {
  return std::tie(point.m_n16X, point.m_n16Y, point.m_c24Pixel.c0, point.m_c24Pixel.c1,
                  point.m_c24Pixel.c2);
}
constexpr auto Fields(LxPeak& peak) {
  return std::tie(peak.m_un32Start, peak.m_un32Length, peak.m_f32Center, peak.m_n32Amplitude,
                  peak.m_n32Area);
}

template <class Vector>
constexpr VectorType RecordVector(Kind kind) {
  using Element = std::remove_cvref_t<decltype(*std::declval<Vector&>().begin())>;
  constexpr std::size_t kFields = std::tuple_size_v<decltype(Fields(std::declval<Element&>()))>;
  constexpr bool kIsPath = requires(Vector & vector) { vector.m_bClosed; };
  return {
      kind, 255.0,
      [](const Elements& content) -> VectorObject {
        auto made = std::make_shared<Vector>(0U);
        if constexpr (kIsPath) made->m_bClosed = content.closed;
        for (std::size_t i = 0; i + kFields <= content.values.size(); i += kFields) {
          Element element{};
          std::apply(
              [next = &content.values[i]](auto&... field) mutable {
                ((field = static_cast<std::remove_cvref_t<decltype(field)>>(*next++)), ...);
              },
              Fields(element));
          made->AddElement(element);
        }
        return {made, made.get()};
      },
      [](const Argument& vector) {
        Elements content;
        auto& read = *std::get<Vector*>(vector);
        if constexpr (kIsPath) content.closed = read.m_bClosed;
        for (Element& each : read) {
          std::apply(
              [&](auto&... field) { (content.values.push_back(static_cast<double>(field)), ...); },
              Fields(each));
        }
        return content;
      },
      kFields};
}

// The element types of untyped vectors.
template <class Visit>
void VisitElementType(int dataSize, int dataType, const Visit& visit) {
  const bool isSigned = dataType == LX_DATA_SIGNED;
  if (dataType == LX_DATA_FLOAT) return visit(float{});
  if (dataSize == LX_DATA_SIZE_8) return isSigned ? visit(std::int8_t{}) : visit(std::uint8_t{});
  if (dataSize == LX_DATA_SIZE_16) return isSigned ? visit(std::int16_t{}) : visit(std::uint16_t{});
  return isSigned ? visit(std::int32_t{}) : visit(std::uint32_t{});
}

VectorObject MakeUntyped(const Elements& content) {
  auto made = std::make_shared<LxVector>();
  if (content.groupLength > 0) {
    const auto count = static_cast<int>(content.values.size());
    const int groups = count / content.groupLength;
    if (content.kind == LX_VECTOR_HISTOGRAM || content.kind == LX_VECTOR_TABLE) {
      made->SetType(content.kind, 1, count);
    } else if (content.kind != LX_VECTOR_NONE) {
      made->SetType(content.kind, groups + content.spare, content.groupLength);
      // Kinds with room of their own are given as much as they need.
      made->Reallocate(static_cast<int>(content.values.size() * sizeof(std::int32_t)));
      made->SetNbGroup(groups);
    } else {
      made->SetStructure(content.dataSize, groups + content.spare, content.groupLength,
                         content.dataType);
      made->SetNbGroup(groups);
    }
    VisitElementType(content.dataSize, content.dataType, [&](auto type) {
      auto* const data = static_cast<decltype(type)*>(made->GetDataPtr());
      for (std::size_t i = 0; i < content.values.size(); ++i) {
        data[i] = static_cast<decltype(type)>(content.values[i]);
      }
    });
  }
  made->SetUse(content.use);
  return {made, made.get()};
}

Elements ReadUntyped(const Argument& vector) {
  const LxVector& read = *std::get<LxVector*>(vector);
  Elements content;
  content.kind = read.GetVectType();
  content.dataSize = read.GetDataSize();
  content.dataType = read.GetDataType();
  content.groupLength = read.GetGroupLength();
  content.use = read.GetUse();
  VisitElementType(content.dataSize, content.dataType, [&](auto type) {
    const auto* const data = static_cast<const decltype(type)*>(read.GetDataPtr());
    const auto count = static_cast<std::size_t>(read.GetNbGroup() * read.GetGroupLength());
    content.values.assign(data, data + count);
  });
  return content;
}

constexpr std::array kTypes = {
    TypedVector<LxBW8Vector>(Kind::kByteVector),
    TypedVector<LxBW16Vector>(Kind::kWordVector),
    TypedVector<LxBW32Vector>(Kind::kDoubleWordVector),
    VectorType{Kind::kColourVector, 255.0, MakeColours, ReadColours, 3},
    VectorType{Kind::kHistogramVector, 4294967295.0, MakeHistogram, ReadHistogram},
    RecordVector<LxPathVector>(Kind::kPathVector),
    RecordVector<LxBW8PathVector>(Kind::kBytePathVector),
    RecordVector<LxBW16PathVector>(Kind::kWordPathVector),
    RecordVector<LxC24PathVector>(Kind::kColourPathVector),
    RecordVector<LxPeaksVector>(Kind::kPeaksVector),
    VectorType{Kind::kVector, 4294967295.0, MakeUntyped, ReadUntyped}};

const VectorType& TypeOf(Kind kind) {
  const auto* const found = std::find_if(kTypes.begin(), kTypes.end(),
                                         [kind](const auto& each) { return each.kind == kind; });
  return *found;
}

// Numbers of every style: anything, little, one value, zeros, few that are not 0.
void DrawValues(std::vector<double>& values, double minimum, double maximum, Random& random) {
  const std::size_t style = random.Below(5);
  const auto low = static_cast<std::int64_t>(minimum);
  const auto high = static_cast<std::int64_t>(maximum);
  const std::array<std::int64_t, 6> edges = {0, 1, high, high - 1, high / 2, low};
  const auto one = static_cast<double>(random.Between(low, high));
  for (double& value : values) {
    const bool edge = random.Below(4) == 0;
    if (style == 0) {
      value = static_cast<double>(edge ? random.Pick(edges) : random.Between(low, high));
    } else if (style == 1) {
      value = static_cast<double>(random.Between(0, std::min<std::int64_t>(high, 9)));
    } else if (style == 2) {
      value = one;
    } else if (style == 3) {
      value = random.Below(40) == 0 ? static_cast<double>(random.Between(low, high)) : 0;
    } else {
      value = 0;
    }
  }
  if (style == 4 && !values.empty()) values[random.Below(values.size())] = one;
}

constexpr std::array kSizes = {LX_DATA_SIZE_8, LX_DATA_SIZE_16, LX_DATA_SIZE_32};
constexpr std::array kSigns = {LX_DATA_UNSIGNED, LX_DATA_SIGNED};

// The kinds whose groups are numbers of 32 bits.
constexpr std::array kGroupKinds = {LX_VECTOR_NONE, LX_VECTOR_CONTOUR, LX_VECTOR_SEGMENT,
                                    LX_VECTOR_EXTREMES};

// Points of an image with their levels, some beyond 8 bits.
Elements DrawSegment(Random& random) {
  Elements made;
  made.kind = random.Below(16) == 0 ? random.Pick(kGroupKinds) : LX_VECTOR_SEGMENT;
  made.dataSize = LX_DATA_SIZE_32;
  made.dataType = LX_DATA_SIGNED;
  made.groupLength = 3;
  made.use = random.Below(16) == 0 ? 6 : 5;
  made.spare = static_cast<int>(random.Below(3));
  for (std::size_t i = random.Below(70) * 3; i > 0; i -= 3) {
    made.values.push_back(static_cast<double>(random.Between(-9, 300)));
    made.values.push_back(DrawCoordinate(random, 400));
    made.values.push_back(DrawCoordinate(random, 400));
  }
  return made;
}

// A result that an earlier call may have left: a kind with room for more.
Elements DrawLeftOver(Random& random) {
  Elements made;
  made.kind = random.Pick(kGroupKinds);
  made.dataSize = LX_DATA_SIZE_32;
  made.dataType = LX_DATA_SIGNED;
  made.groupLength = made.kind == LX_VECTOR_NONE ? 2 : 3;
  made.use = static_cast<int>(random.Between(0, 7));
  const std::size_t groups = random.Below(4);
  made.spare = random.Below(2) == 0 ? 0 : static_cast<int>(random.Below(300));
  made.values.assign(groups * static_cast<std::size_t>(made.groupLength), 5);
  return made;
}

// Energies that an earlier call may have left, of fewer or more discs.
Elements DrawEnergies(Random& random) {
  Elements made;
  made.kind = random.Below(16) == 0 ? LX_VECTOR_NONE : LX_VECTOR_DISC_ENERGY;
  made.dataSize = LX_DATA_SIZE_32;
  made.dataType = LX_DATA_FLOAT;
  made.groupLength = 1;
  made.use = static_cast<int>(random.Between(0, 7));
  made.spare = static_cast<int>(random.Below(30));
  made.values.assign(random.Below(200), 5);
  return made;
}

// The sign that a parameter asks for, mostly.
int DrawSign(const Parameter& parameter, Random& random) {
  const bool any = parameter.meaning == catalogue::Meaning::kLevels ||
                   parameter.meaning == catalogue::Meaning::kGroup || random.Below(12) == 0;
  if (any) return random.Pick(kSigns);
  return parameter.meaning == catalogue::Meaning::kSigned ? LX_DATA_SIGNED : LX_DATA_UNSIGNED;
}

// One group that goes up and down more often than results have room at first.
void MakeRestless(Elements& made, double minimum, double maximum) {
  made.groupLength = 5000;
  made.values.assign(5000, minimum);
  for (std::size_t i = 1; i < made.values.size(); i += 2) made.values[i] = maximum;
}

// A histogram or a table where the parameter has a count, else groups of any layout.
Elements DrawUntyped(const Parameter& parameter, Random& random) {
  Elements made;
  if (random.Below(10) == 0) return made;  // nothing laid out
  if (parameter.meaning == catalogue::Meaning::kSegment) return DrawSegment(random);
  if (parameter.meaning == catalogue::Meaning::kEnergy) return DrawEnergies(random);
  if (parameter.IsWritten() && random.Below(2) == 0) return DrawLeftOver(random);
  const bool entries = !parameter.counts.empty() && random.Below(8) != 0;
  made.kind = entries ? LX_VECTOR_HISTOGRAM : LX_VECTOR_NONE;
  made.dataSize = entries ? LX_DATA_SIZE_32 : random.Pick(kSizes);
  made.dataType = entries ? LX_DATA_UNSIGNED : DrawSign(parameter, random);
  if (!entries && random.Below(10) == 0) {
    made.dataSize = LX_DATA_SIZE_32;
    made.dataType = LX_DATA_FLOAT;
  }
  // Laid out as one group of all entries.
  // Many short groups, or few long ones.
  const bool isLong = random.Below(3) == 0;
  const std::size_t groups = entries ? 1 : isLong ? 1 + random.Below(9) : random.Below(40);
  made.groupLength = entries ? static_cast<int>(random.Pick(parameter.counts))
                             : static_cast<int>(random.Between(1, isLong ? 90 : 3));
  made.values.resize(groups * static_cast<std::size_t>(made.groupLength));
  const int bits = 4 * made.dataSize;
  const bool isSigned = made.dataType == LX_DATA_SIGNED;
  const double maximum = std::exp2(isSigned ? bits - 1 : bits) - 1;
  const double minimum = isSigned ? -maximum - 1 : 0;
  const bool isFloat = made.dataType == LX_DATA_FLOAT;
  DrawValues(made.values, minimum, isFloat ? 1 << 20 : maximum, random);
  const bool isSignal = !isFloat && parameter.meaning != catalogue::Meaning::kLevels;
  if (isSignal && random.Below(40) == 0) MakeRestless(made, minimum, maximum);
  return made;
}

}  // namespace

VectorObject MakeVector(Kind kind, const Elements& content) { return TypeOf(kind).make(content); }

// Coordinates below this are moved into the region, and this one to its end.
constexpr int kInside = 4096;

double DrawCoordinate(Random& random, std::size_t oddity) {
  constexpr std::array kOdd = {-1, kInside, kInside + 1, 32767, -32768};
  return random.Below(oddity) == 0 ? random.Pick(kOdd) : static_cast<double>(random.Below(kInside));
}

double FitCoordinate(double drawn, int size) {
  if (drawn < 0 || drawn > kInside) return drawn;
  return drawn == kInside || size == 0 ? size : static_cast<int>(drawn) % size;
}

bool HasPoints(const Parameter& parameter) {
  switch (parameter.kind) {
    case Kind::kPathVector:
    case Kind::kBytePathVector:
    case Kind::kWordPathVector:
    case Kind::kColourPathVector:
      return true;
    default:
      return parameter.meaning == catalogue::Meaning::kSegment;
  }
}

std::size_t FieldsOf(Kind kind) { return TypeOf(kind).fields; }

Elements ReadVector(Kind kind, const Argument& vector) { return TypeOf(kind).read(vector); }

Elements DrawElements(const Parameter& parameter, Random& random) {
  if (parameter.kind == Kind::kVector) return DrawUntyped(parameter, random);
  Elements made;
  made.values.resize(TypeOf(parameter.kind).fields *
                     (parameter.counts.empty() ? random.Below(70) : random.Pick(parameter.counts)));
  DrawValues(made.values, 0, TypeOf(parameter.kind).maximum, random);
  if (HasPoints(parameter)) {
    made.closed = static_cast<int>(random.Below(2));
    ForEachPoint(parameter, made, [&](double& x, double& y) {
      x = DrawCoordinate(random, 400);
      y = DrawCoordinate(random, 400);
    });
  }
  return made;
}

Elements UsualElements(const Parameter& parameter) {
  Random random(parameter.name);
  const bool isSigned = parameter.meaning == catalogue::Meaning::kSigned;
  Elements made;
  made.values.resize(TypeOf(parameter.kind).fields *
                     (parameter.counts.empty() ? 64 : parameter.counts.back()));
  if (parameter.kind == Kind::kVector) {
    const bool entries = !parameter.counts.empty();
    made.kind = entries ? LX_VECTOR_HISTOGRAM : LX_VECTOR_NONE;
    made.dataSize = entries ? LX_DATA_SIZE_32 : LX_DATA_SIZE_8;
    made.dataType = isSigned ? LX_DATA_SIGNED : LX_DATA_UNSIGNED;
    const bool isOne = entries || isSigned || parameter.meaning == catalogue::Meaning::kUnsigned ||
                       parameter.meaning == catalogue::Meaning::kGroup;
    made.groupLength = isOne ? static_cast<int>(made.values.size()) : 1;
  }
  if (parameter.meaning == catalogue::Meaning::kSegment) {
    made.values.resize(12);
    made.kind = LX_VECTOR_SEGMENT;
    made.dataSize = LX_DATA_SIZE_32;
    made.dataType = LX_DATA_SIGNED;
    made.groupLength = 3;
    made.use = 5;
  }
  if (parameter.meaning == catalogue::Meaning::kEnergy) {
    made.kind = LX_VECTOR_DISC_ENERGY;
    made.dataSize = LX_DATA_SIZE_32;
    made.dataType = LX_DATA_FLOAT;
  }
  const double maximum = std::min(TypeOf(parameter.kind).maximum, isSigned ? 127.0 : 255.0);
  for (double& value : made.values) {
    value = static_cast<double>(random.Between(0, static_cast<std::int64_t>(maximum)));
  }
  if (HasPoints(parameter)) {
    ForEachPoint(parameter, made, [](double& x, double& y) {
      x = std::fmod(x, 3);
      y = std::fmod(y, 3);
    });
  }
  return made;
}

std::string ElementsDifference(const Elements& expected, const Elements& seen, double tolerance) {
  std::ostringstream text;
  text.precision(17);
  Elements layout = seen;
  layout.values = expected.values;
  layout.spare = expected.spare;
  if (!(layout == expected)) {
    text << "kind, element, group length or use differ: " << seen.kind << ' ' << seen.dataSize
         << ' ' << seen.dataType << ' ' << seen.groupLength << ' ' << seen.use;
  } else if (seen.values.size() != expected.values.size()) {
    text << seen.values.size() << " elements instead of " << expected.values.size();
  } else {
    for (std::size_t i = 0; i < seen.values.size(); ++i) {
      const double wanted = expected.values[i];
      if (std::abs(seen.values[i] - wanted) <= tolerance * std::abs(wanted)) continue;
      text << "element " << i << ": expected " << wanted << ", got " << seen.values[i];
      break;
    }
  }
  return text.str();
}

}  // namespace lx::test
