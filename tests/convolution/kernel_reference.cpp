// SPDX-License-Identifier: Apache-2.0
// Convolution with kernels. Coefficients and real sums are in single precision, in row order, so
// that equality to the bit can be expected.
#include <array>
#include <cmath>
#include <cstdint>

#include "convolution/replicated.h"
#include "support/reference.h"

namespace lx::test {

namespace {

struct Octant {
  int column;
  int row;
  int cells;
};

// The coefficients of a symmetric kernel that are read, and how many cells have each.
const std::vector<Octant>& OctantOf(int size) {
  static const std::vector<Octant> three = {{0, 0, 4}, {1, 0, 4}, {1, 1, 1}};
  static const std::vector<Octant> five = {{0, 0, 4}, {1, 0, 8}, {2, 0, 4},
                                           {1, 1, 4}, {2, 1, 4}, {2, 2, 1}};
  static const std::vector<Octant> seven = {{0, 0, 4}, {1, 0, 8}, {2, 0, 8}, {3, 0, 4}, {1, 1, 4},
                                            {2, 1, 8}, {3, 1, 4}, {2, 2, 4}, {3, 2, 4}, {3, 3, 1}};
  return size == 3 ? three : size == 5 ? five : seven;
}

// Truncated toward zero and kept within `limit`, 32 bits unless stated.
Value Truncated(float value, double limit = 2147483648.0) {
  const double whole = std::isnan(value) ? 0 : std::trunc(static_cast<double>(value));
  return static_cast<Value>(std::clamp(whole, -limit, limit - 1));
}

// What `bits` bits keep of an integer, read as a signed one.
Value Wrapped(Value value, int bits) {
  const Value range = Value{1} << bits;
  const Value low = ((value % range) + range) % range;
  return low < range / 2 ? low : low - range;
}

class Convolution {
 public:
  Convolution(LxKernel& kernel, const Picture& image)
      : source(image),
        columns(kernel.GetSizeX()),
        rows(kernel.GetSizeY()),
        gain(kernel.GetGain()),
        offset(static_cast<std::int32_t>(kernel.GetOffset())),
        rectifier(kernel.GetRectifier()),
        outside(static_cast<float>(kernel.GetOutsideValue())),
        maximum(FormatOf(image.pixel).maximum) {
    coefficients.assign(kernel.GetDataPtr(), kernel.GetDataPtr() + columns * rows);
  }

  void Run(Picture& destination) {
    float sum = 0;
    float magnitudes = 0;
    for (const float k : coefficients) {
      sum += k;
      magnitudes += std::fabs(k);
    }
    Normalise(sum, magnitudes);
    if (rectifier == 2 && columns == 3 && rows == 3) {
      RunPositive(destination);
    } else if (rectifier == 0 || !IsFixedSize()) {
      RunReal(destination);
    } else {
      RunFixed(destination);
    }
  }

  void RunSymmetric(Picture& destination) {
    float sum = 0;
    float magnitudes = 0;
    std::vector<float> whole(coefficients.size());
    for (const auto& [column, row, cells] : OctantOf(columns)) {
      const float k = coefficients[static_cast<std::size_t>(row * columns + column)];
      sum += static_cast<float>(cells) * k;
      magnitudes += static_cast<float>(cells) * std::fabs(k);
      // Both axes and both diagonals.
      for (const int x : {column, columns - 1 - column}) {
        for (const int y : {row, columns - 1 - row}) {
          whole[static_cast<std::size_t>(y * columns + x)] = k;
          whole[static_cast<std::size_t>(x * columns + y)] = k;
        }
      }
    }
    coefficients = whole;
    Normalise(sum, magnitudes);
    RunFixed(destination);
  }

 private:
  bool IsFixedSize() const {
    return columns == rows && (columns == 3 || columns == 5 || columns == 7);
  }

  void Normalise(float sum, float magnitudes) {
    if (std::fabs(sum) > magnitudes * 0.00001F) gain = gain / sum;
  }

  // Only the sums of 8-bit pixels wrap.
  Value Accumulated(Value value) const { return maximum == 255 ? Wrapped(value, 32) : value; }

  Value SumAt(int x, int y, int k, const std::vector<Value>& fixed) const {
    Value sum = 0;
    for (int j = 0; j < rows; ++j) {
      for (int i = 0; i < columns; ++i) {
        sum += fixed[static_cast<std::size_t>(j * columns + i)] *
               Nearest(source, x + i - columns / 2, y + j - rows / 2, k);
      }
    }
    return sum;
  }

  void RunPositive(Picture& destination) const {
    std::vector<Value> fixed;
    for (const float k : coefficients) {
      fixed.push_back(Wrapped(Truncated(256.0F * (gain * k)), 16));
    }
    ForEachComponent(destination, [&](int x, int y, int k) {
      return std::clamp<Value>(Accumulated(SumAt(x, y, k, fixed)) >> 8, 0, maximum);
    });
  }

  void RunFixed(Picture& destination) const {
    if (rectifier < 1 || rectifier > 3) return;
    const int sign = rectifier == 1 ? -1 : 1;
    std::vector<Value> fixed;
    for (const float k : coefficients) {
      fixed.push_back(Truncated(static_cast<float>(sign) * gain * k * 32768.0F));
    }
    ForEachComponent(destination, [&](int x, int y, int k) {
      const Value start = sign * Value{offset} * 32768;
      const Value v = Accumulated(start + SumAt(x, y, k, fixed)) >> 15;
      return std::clamp<Value>(rectifier == 3 ? std::abs(v) : v, 0, maximum);
    });
  }

  // The cells that meet the image from nowhere come first.
  float RealSumAt(int x, int y, int k) const {
    const auto meets = [](int distance, int length) { return std::abs(distance) < length; };
    float sum = 0;
    for (const bool meeting : {false, true}) AddReal(x, y, k, meeting, meets, sum);
    return sum;
  }

  template <class Meets>
  void AddReal(int x, int y, int k, bool meeting, const Meets& meets, float& sum) const {
    for (int j = 0; j < rows; ++j) {
      for (int i = 0; i < columns; ++i) {
        const int column = x + i - columns / 2;
        const int row = y + j - rows / 2;
        if (meeting != (meets(column - x, source.width) && meets(row - y, source.height))) continue;
        const bool inside = column >= 0 && row >= 0 && column < source.width && row < source.height;
        const float pixel = inside ? static_cast<float>(source.At(column, row, k)) : outside;
        const float scaled = coefficients[static_cast<std::size_t>(j * columns + i)] * gain;
        sum += pixel * scaled;
      }
    }
  }

  void RunReal(Picture& destination) const {
    ForEachComponent(destination, [&](int x, int y, int k) {
      Value v = Truncated(RealSumAt(x, y, k), 1e18);
      if (rectifier == 1) v = v < 1 ? -v : 0;
      if (rectifier == 2) v = std::max<Value>(v, 0);
      if (rectifier == 3) v = std::abs(v);
      if (v > INT32_MAX || v < INT32_MIN) return v > 0 ? maximum : 0;
      return std::clamp<Value>(Wrapped(v + offset, 32), 0, maximum);
    });
  }

  const Picture& source;
  int columns;
  int rows;
  float gain;
  std::int32_t offset;
  int rectifier;
  float outside;
  Value maximum;
  std::vector<float> coefficients;
};

LxKernel& KernelOf(const Arguments& call) { return *std::get<LxKernel*>(call.values[2]); }

bool IsSquare(LxKernel& kernel) {
  const int size = kernel.GetSizeX();
  return size == kernel.GetSizeY() && (size == 3 || size == 5 || size == 7);
}

// Of the symmetric form; colours pass through the grey one.
Reference SymmetricReference(const std::string& signature, bool colour) {
  Reference made =
      Whole(signature, [](const Arguments& call, const auto& sources, auto& destinations) {
        Convolution(KernelOf(call), sources.front()).RunSymmetric(destinations.front());
      });
  made.rule = [colour, convolve = made.rule](const Arguments& call, Outcome& outcome) {
    std::vector<std::string> inner;
    if (colour) inner.emplace_back("PicConvolSymmetricKernel");
    LxKernel& kernel = KernelOf(call);
    if (kernel.GetRectifier() == 0) return outcome.Refuse(LX_ERROR_KERNEL_RECTIFIER, inner);
    if (!IsSquare(kernel)) return outcome.Refuse(LX_ERROR_UNSUPPORTED_KERNEL_SIZE, inner);
    convolve(call, outcome);
  };
  return made;
}

}  // namespace

std::vector<Reference> KernelReferences() {
  std::vector<Reference> references;
  for (const std::string pixel : {"LxBW8", "LxBW16", "LxC24"}) {
    const std::string region = "LxROI<" + pixel + ">*";
    const std::string parameters = "(" + region + ", " + region + ", LxKernel*)";
    references.push_back(
        Whole("PicConvolKernel" + parameters,
              [](const Arguments& call, const auto& sources, auto& destinations) {
                Convolution(KernelOf(call), sources.front()).Run(destinations.front());
              }));
    references.push_back(
        SymmetricReference("PicConvolSymmetricKernel" + parameters, pixel == "LxC24"));
  }
  return references;
}

}  // namespace lx::test
