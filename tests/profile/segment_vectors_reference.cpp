// SPDX-License-Identifier: Apache-2.0
// Segments as vectors, crossings, and filters, runs and shifts of vectors.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "support/reference.h"

namespace lx::test {

namespace {

struct Place {
  int x;
  int y;
};

// From one end to the other, each time to the pixel that lies nearer.
std::vector<Place> PlacesOf(const Arguments& call) {
  const auto end = [&](const char* name) { return static_cast<int>(call.Number(name)); };
  Place at{end("x0"), end("y0")};
  const int dx = end("x1") - at.x;
  const int dy = end("y1") - at.y;
  const int major = std::max(std::abs(dx), std::abs(dy));
  const int minor = std::min(std::abs(dx), std::abs(dy));
  const bool isFlat = std::abs(dx) >= std::abs(dy);
  std::vector<Place> places = {at};
  int decision = 2 * minor - major;
  for (int i = 0; i < major; ++i) {
    const bool aside = decision >= 0;
    decision += 2 * minor - (aside ? 2 * major : 0);
    if (isFlat || aside) at.x += dx > 0 ? 1 : -1;
    if (!isFlat || aside) at.y += dy > 0 ? 1 : -1;
    places.push_back(at);
  }
  return places;
}

// Whether both ends lie inside; refuses with the codes of four arguments from `argument` on if not.
bool EndsLieIn(const Picture& picture, const Arguments& call, int argument, Outcome& outcome) {
  constexpr std::array kNames = {"x0", "y0", "x1", "y1"};
  for (int i = 0; i < 4; ++i) {
    const double coordinate = call.Number(kNames[static_cast<std::size_t>(i)]);
    if (coordinate >= 0 && coordinate < (i % 2 == 0 ? picture.width : picture.height)) continue;
    outcome.Refuse(static_cast<LX_ERRORS>(1010 + argument + i));
    return false;
  }
  return true;
}

double GroupsOf(const Elements& e) {
  return e.groupLength == 0 ? 0 : static_cast<double>(e.values.size()) / e.groupLength;
}

// In bytes. Vectors of kind 5 are made with room for 2,048 groups.
double AllocatedBytes(const Elements& e) {
  const double groups = e.kind == 5 ? 2048 : GroupsOf(e) + e.spare;
  return groups * e.groupLength * e.dataSize / 2;
}

// The layout of groups of 32-bit signed integers.
void LayOut(Elements& e, int kind, int groupLength) {
  e.kind = kind;
  e.dataSize = 8;
  e.dataType = 2;
  e.groupLength = groupLength;
  e.values.clear();
}

void SegmentToVector(const Arguments& call, Outcome& outcome) {
  const Picture& picture = outcome.Image(0);
  if (!EndsLieIn(picture, call, 3, outcome)) return;
  Elements& segment = outcome.Vector(1);
  LayOut(segment, 4, 3);
  segment.use = 5;
  for (const auto& [x, y] : PlacesOf(call)) {
    const auto level = static_cast<double>(picture.At(x, y, 0));
    segment.values.insert(segment.values.end(), {level, double(x), double(y)});
  }
}

Value LevelOf(double value) { return static_cast<Value>(std::clamp(value, 0.0, 255.0)); }

void VectorToImage(const Arguments& /*call*/, Outcome& outcome) {
  const Elements& segment = outcome.Vector(0);
  Picture& picture = outcome.Image(1);
  const auto& v = segment.values;
  if (segment.use != 5 || segment.kind != 4 || v.empty()) {
    return outcome.Refuse(LX_ERROR_WRONG_VECTOR_KIND);
  }
  for (std::size_t i = 0; i < v.size(); i += 3) {
    const bool inside =
        v[i + 1] >= 0 && v[i + 1] < picture.width && v[i + 2] >= 0 && v[i + 2] < picture.height;
    if (!inside) return outcome.Refuse(LX_ERROR_INCONSISTENT_ARGUMENTS);
  }
  for (std::size_t i = 0; i < v.size(); i += 3) {
    picture.At(static_cast<int>(v[i + 1]), static_cast<int>(v[i + 2]), 0) = LevelOf(v[i]);
  }
}

void VectorToSegment(const Arguments& call, Outcome& outcome) {
  const Elements& segment = outcome.Vector(0);
  Picture& picture = outcome.Image(5);
  if (!EndsLieIn(picture, call, 2, outcome)) return;
  const auto places = PlacesOf(call);
  if (segment.kind != 4 || segment.values.size() < 3 * places.size()) {
    return outcome.Refuse(LX_ERROR_WRONG_VECTOR_KIND);
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    picture.At(places[i].x, places[i].y, 0) = LevelOf(segment.values[3 * i]);
  }
}

void Scan(const Arguments& call, Outcome& outcome) {
  const int edge = static_cast<int>(call.Number("edge"));
  const Picture& picture = outcome.Image(1);
  if (!EndsLieIn(picture, call, 2, outcome)) return;
  const auto places = PlacesOf(call);
  const double threshold = call.Number("threshold");
  const double maximum = call.Number("maximum");
  Elements& found = outcome.Vector(8);
  LayOut(found, 4, 3);
  for (std::size_t i = 1; i < places.size(); ++i) {
    const Place at = places[i];
    const auto before = static_cast<double>(picture.At(places[i - 1].x, places[i - 1].y, 0));
    const auto level = static_cast<double>(picture.At(at.x, at.y, 0));
    const auto append = [&](double direction) {
      found.values.insert(found.values.end(), {double(at.x), double(at.y), direction});
    };
    if (edge != 1 && before > threshold && level <= threshold) append(2);
    if (edge != 2 && before < threshold && level >= threshold) append(1);
    if (maximum > 0 && static_cast<double>(found.values.size()) == 3 * maximum) break;
  }
}

// Modulo 2^32, as a signed number.
double Wrapped(double value) {
  const double rest = value - std::floor(value / 4294967296.0) * 4294967296.0;
  return rest >= 2147483648.0 ? rest - 4294967296.0 : rest;
}

// Whether the first group is one of integers of the form's sign; refuses if not.
bool HasSignal(const Elements& source, int dataType, Outcome& outcome) {
  if (source.values.empty()) {
    outcome.Refuse(LX_ERROR_VECTOR_EMPTY);
  } else if (source.dataType != dataType) {
    outcome.Refuse(LX_ERROR_UNSUPPORTED_DATA_TYPE);
  }
  return outcome.error == LX_OK;
}

void Transitions(const Arguments& call, Outcome& outcome, bool isSigned) {
  const Elements& source = outcome.Vector(0);
  Elements& result = outcome.Vector(1);
  if (!HasSignal(source, isSigned ? 2 : 1, outcome)) return;
  const double bytes = AllocatedBytes(result);
  const double elements = source.groupLength;
  const double capacity = std::floor(bytes != 0 ? bytes / 8 : std::floor(elements / 2) / 8);
  LayOut(result, 0, 2);
  result.use = 7;
  const double t = call.Number(2);
  for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(source.groupLength); ++i) {
    const double a = source.values[i];
    const double b = source.values[i + 1];
    if (!((a <= t && t < b) || (b <= t && t < a))) continue;
    if (static_cast<double>(result.values.size()) == 2 * capacity) {
      return outcome.Refuse(LX_ERROR_TOO_MANY_TRANSITIONS);
    }
    result.values.push_back(static_cast<double>(i));
    result.values.push_back(Wrapped(isSigned ? b - a : std::abs(b - a)));
  }
}

struct Bounds {
  double lowest;
  double highest;

  explicit Bounds(const Elements& e) {
    const double all = std::exp2(4 * e.dataSize);
    lowest = e.dataType == 2 ? -all / 2 : 0;
    highest = lowest + all - 1;
  }
};

bool HasGroups(const Elements& e, double first, double last) {
  return first >= 0 && first <= last && last < GroupsOf(e);
}

double Convolved(LxKernel& kernel, double left, double middle, double right, const Bounds& bounds) {
  const float* const k = kernel.GetDataPtr();
  const float sum = k[0] + k[1] + k[2];
  float gain = kernel.GetGain();
  if (sum != 0) gain /= sum;
  if (gain == 0) gain = 1;
  const double taps[] = {k[0] * gain, k[1] * gain, k[2] * gain};
  double v = taps[0] * left + taps[1] * middle + taps[2] * right;
  v = std::isnan(v) ? 0 : std::trunc(std::clamp(v, -1e15, 1e15));
  switch (kernel.GetRectifier()) {
    case 1:
      v = v > 0 ? 0 : -v;
      break;
    case 2:
      v = v < 0 ? 0 : v;
      break;
    case 3:
      v = std::abs(v);
      break;
    default:
      break;
  }
  return std::clamp(v + Wrapped(kernel.GetOffset()), bounds.lowest, bounds.highest);
}

void Convolve(const Arguments& call, Outcome& outcome) {
  const Elements& source = outcome.Vector(0);
  const double first = call.Number(3);
  const double last = call.Number(4) == -1 ? GroupsOf(source) - 1 : call.Number(4);
  if (!HasGroups(source, first, last)) return outcome.Refuse(LX_ERROR_INVALID_GROUP_RANGE);
  if (source.dataType == 4) return outcome.Refuse(LX_ERROR_UNSUPPORTED_DATA_TYPE);
  Elements& result = outcome.Vector(1);
  const int use = result.use;
  result = source;
  result.kind = 0;
  result.use = use;
  const auto length = static_cast<std::size_t>(source.groupLength);
  const auto start = static_cast<std::size_t>(first) * length;
  result.values.assign(static_cast<std::size_t>(last - first + 1) * length, 0);
  LxKernel& kernel = *std::get<LxKernel*>(call.values[2]);
  if (kernel.GetSizeX() != 3 || kernel.GetSizeY() != 1) {
    return outcome.Refuse(LX_ERROR_UNSUPPORTED_KERNEL_SIZE);
  }
  const double outside = kernel.GetOutsideValue();
  for (std::size_t i = 0; i < result.values.size(); ++i) {
    const double* const at = &source.values[start + i];
    const double left = i % length == 0 ? outside : at[-1];
    const double right = i % length == length - 1 ? outside : at[1];
    result.values[i] = Convolved(kernel, left, *at, right, Bounds(source));
  }
}

void Extremes(const Arguments& call, Outcome& outcome, bool isSigned) {
  const Elements& source = outcome.Vector(0);
  Elements& result = outcome.Vector(1);
  if (!HasSignal(source, isSigned ? 2 : 1, outcome)) return;
  LayOut(result, 5, 3);
  result.use = 6;
  const double low = call.Number(2);
  const double high = call.Number(3);
  const int count = source.groupLength;
  const auto at = [&](int i) { return source.values[static_cast<std::size_t>(i)]; };
  for (int i = 0; i < count; ++i) {
    const bool isHigh = at(i) > high && at(i) > low;
    const bool isLow = at(i) < high && at(i) < low;
    if (!isHigh && !isLow) continue;
    const int start = i;
    double area = 0;
    for (; i < count && (isHigh ? at(i) > high : at(i) < low); ++i) {
      area += at(i) - (isHigh ? high : low);
    }
    result.values.insert(result.values.end(),
                         {std::floor((start + i - 1) / 2.0), double(i - start), Wrapped(area)});
  }
}

void ShiftBits(const Arguments& call, Outcome& outcome) {
  Elements& vector = outcome.Vector(0);
  const int shift = static_cast<int>(call.Number(1));
  const double first = call.Number(2);
  const bool all = first == 0 && call.Number(3) == 0;
  const double last = all ? GroupsOf(vector) - 1 : call.Number(3);
  if (!all && !HasGroups(vector, first, last)) return outcome.Refuse(LX_ERROR_VECTOR_EMPTY);
  if (AllocatedBytes(vector) == 0) return outcome.Refuse(LX_ERROR_VECTOR_NO_DATA);
  if (vector.dataType == 4) return outcome.Refuse(LX_ERROR_UNSUPPORTED_DATA_TYPE);
  const Bounds bounds(vector);
  const double count = bounds.highest - bounds.lowest + 1;
  const auto length = static_cast<std::size_t>(vector.groupLength);
  for (auto i = static_cast<std::size_t>(first) * length;
       i < (static_cast<std::size_t>(last) + 1) * length; ++i) {
    double& v = vector.values[i];
    const double factor = std::exp2(std::abs(shift) % 32);
    if (shift >= 0) {
      v = std::floor(v / factor);
    } else {
      const double moved = v * factor - bounds.lowest;
      v = moved - std::floor(moved / count) * count + bounds.lowest;
    }
  }
}

// Both forms of an operation on the first group.
template <class Rule>
Reference OfSign(const std::string& signature, bool isSigned, const Rule& rule) {
  return Measured(signature,
                  [=](const Arguments& call, Outcome& outcome) { rule(call, outcome, isSigned); });
}

}  // namespace

std::vector<Reference> SegmentVectorReferences() {
  std::vector<Reference> made = {
      Measured("PicLineSegToVect(LxROI<LxBW8>*, LxVector*, int, int, int, int)", SegmentToVector),
      Measured("PicVectToLineSeg(LxVector*, LxROI<LxBW8>*)", VectorToImage),
      Measured("PicVectToLineSeg(LxVector*, int, int, int, int, LxROI<LxBW8>*)", VectorToSegment),
      Measured("PicTransitionScan(TRANS_SCAN_EDGE, LxROI<LxBW8>*, int, int, int, int, int, int, "
               "LxVector*)",
               Scan),
      Measured("PicConvolVect(LxVector*, LxVector*, LxKernel*, int, int)", Convolve),
      Measured("PicVectDataShift(LxVector*, int, int, int)", ShiftBits)};
  for (const bool isSigned : {true, false}) {
    const std::string number = isSigned ? "int" : "unsigned int";
    made.push_back(OfSign("PicGetVectTransition(LxVector*, LxVector*, " + number + ")", isSigned,
                          Transitions));
    made.push_back(
        OfSign("PicGetVectExtremes(LxVector*, LxVector*, " + number + ", " + number + ")", isSigned,
               Extremes));
  }
  return made;
}

}  // namespace lx::test
