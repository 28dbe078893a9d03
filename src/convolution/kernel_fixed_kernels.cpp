// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>

#include "convolution/kernel_memory.h"
#include "convolution/kernel_plan.h"
#include "foundation/scratch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/kernel_fixed_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/component_rows-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// A row of results from the rows that it is made of: rows[j] + x is the pixel above the first
// coefficient of kernel row j. Each of these classes takes the pixels in elements of its own.

#if LX_HAS_LANES

// Pairs of neighbouring pixels times pairs of coefficients, added up in 32 bits, modulo 2^32. Even
// and odd results come from the same loads; several vectors are in flight.
template <typename T>
class SumsOfPairs {
 public:
  using Element = std::int16_t;

  HWY_INLINE explicit SumsOfPairs(const FixedKernel& kernel)
      : plan_(sizeof(T) == 1 ? PlanForBytes(kernel) : PlanForWords(kernel)) {}

  static HWY_INLINE void LoadRow(const T* from, std::size_t width, Element* to) {
    const Words d;
    const hn::Rebind<T, Words> narrow;
    ForEachVector(narrow, width, [=](std::size_t x, auto access) HWY_ATTR {
      const auto pixels = access.Load(narrow, from + x);
      if constexpr (sizeof(T) == 1) {
        hn::StoreU(hn::PromoteTo(d, pixels), d, to + x);
      } else {
        const auto middle = hn::Set(narrow, 0x8000);
        hn::StoreU(hn::BitCast(d, hn::Xor(pixels, middle)), d, to + x);
      }
    });
  }

  // `spare` has room for rows as long as the others.
  void Row(const Element* const* rows, std::size_t width, Element* spare, std::size_t stride,
           T* to) const {
    const Element* lines[7];
    std::copy(rows, rows + plan_.size, lines);
    if (plan_.isFolded) Fold(lines, width, spare, stride);
    const Element* taps[28];
    for (std::size_t t = 0; t < plan_.count; ++t) {
      taps[t] = lines[plan_.taps[t].row] + plan_.taps[t].column;
    }
    if (plan_.isLong) {
      AddUp<2>(taps, width, to);
    } else {
      AddUp<1>(taps, width, to);
    }
  }

 private:
  using Words = hn::ScalableTag<std::int16_t>;
  using Longs = hn::ScalableTag<std::int32_t>;
  using Pixels = hn::ScalableTag<T>;
  using VLong = hn::Vec<Longs>;

  // Adds up the rows that share their coefficients. Sums of two bytes are still positive words.
  HWY_INLINE void Fold(const Element* (&lines)[7], std::size_t width, Element* spare,
                       std::size_t stride) const {
    const Words d;
    for (std::size_t j = 0; j < plan_.size / 2; ++j) {
      const Element* const above = lines[j];
      const Element* const below = lines[plan_.size - 1 - j];
      Element* const sums = spare + j * stride;
      for (std::size_t i = 0; i < width + plan_.size - 1; i += hn::Lanes(d)) {
        hn::StoreU(hn::Add(hn::LoadU(d, above + i), hn::LoadU(d, below + i)), d, sums + i);
      }
      lines[j] = sums;
    }
  }

  // One digit leaves registers for twice as many vectors as two.
  template <std::size_t kDigits>
  HWY_INLINE void AddUp(const Element* const* taps, std::size_t width, T* to) const {
    constexpr std::size_t kVectors = 4 / kDigits;
    const Words d;
    const std::size_t n = hn::Lanes(d);
    const TapPair* const pairs = plan_.taps;
    const std::size_t count = plan_.count;
    const auto offset = hn::Set(Longs(), static_cast<std::int32_t>(plan_.offset));
    for (std::size_t x = 0; x < width; x += n * kVectors) {
      VLong even[kVectors][kDigits];
      VLong odd[kVectors][kDigits];
      for (std::size_t v = 0; v < kVectors; ++v) {
        for (std::size_t k = 0; k < kDigits; ++k) {
          even[v][k] = odd[v][k] = k == 0 ? offset : hn::Zero(Longs());
        }
      }
      for (std::size_t t = 0; t < count; ++t) {
        const Element* const at = taps[t] + x;
        LX_UNROLL
        for (std::size_t v = 0; v < kVectors; ++v) {
          const auto pixels = hn::LoadU(d, at + v * n);
          LX_UNROLL
          for (std::size_t k = 0; k < kDigits; ++k) {
            even[v][k] = hn::Add(even[v][k], Product(pixels, pairs[t].even[k]));
            odd[v][k] = hn::Add(odd[v][k], Product(pixels, pairs[t].odd[k]));
          }
        }
      }
      LX_UNROLL
      for (std::size_t v = 0; v < kVectors; v += kTogether) {
        StorePixels(even + v, odd + v, x + v * n, width, to);
      }
    }
  }

  static HWY_INLINE VLong Product(hn::Vec<Words> pixels, std::uint32_t factors) {
    const auto both = hn::Set(Longs(), static_cast<std::int32_t>(factors));
    return PairProducts(pixels, hn::BitCast(Words(), both));
  }

  // Vectors of sums that make a vector of pixels.
  static constexpr std::size_t kTogether = 2 / sizeof(T);

  template <std::size_t kDigits>
  HWY_INLINE void StorePixels(const VLong (*even)[kDigits], const VLong (*odd)[kDigits],
                              std::size_t x, std::size_t width, T* to) const {
    if (x >= width) return;
    const Pixels d;
    VLong results[2 * kTogether];
    for (std::size_t v = 0; v < kTogether; ++v) {
      results[2 * v] = Finish(even[v]);
      results[2 * v + 1] = Finish(odd[v]);
    }
    const auto pixels = Join(results);
    if (width - x >= hn::Lanes(d)) {
      hn::StoreU(pixels, d, to + x);
    } else {
      PartVector{width - x}.Store(d, pixels, to + x);
    }
  }

  // Even and odd results, saturated to pixels.
  static HWY_INLINE hn::Vec<Pixels> Join(const VLong (&results)[2 * kTogether]) {
    const Pixels d;
    if constexpr (sizeof(T) == 2) return JoinClamped(d, results[0], results[1]);
#if LX_HAS_PAIR_PRODUCTS
    // In every block: even and odd results of the first vector, and those of the second.
    if constexpr (sizeof(T) == 1) {
      return Unblock(JoinClamped(d, hn::ReorderDemote2To(Words(), results[0], results[2]),
                                 hn::ReorderDemote2To(Words(), results[1], results[3])));
    }
#else
    if constexpr (sizeof(T) == 1) {
      const hn::Rebind<std::uint16_t, Longs> halves;
      const hn::RebindToUnsigned<Words> whole;
      const auto both = [&](std::size_t i) HWY_ATTR {
        return Narrow(halves,
                      hn::Or(Clamped<T>(results[i]), hn::ShiftLeft<8>(Clamped<T>(results[i + 1]))));
      };
      return hn::BitCast(d, hn::Combine(whole, both(2), both(0)));
    }
#endif
  }

#if LX_HAS_PAIR_PRODUCTS
  // Brings the first halves of all blocks before the second ones.
  static HWY_INLINE hn::Vec<Pixels> Unblock(hn::Vec<Pixels> v) {
    const hn::Repartition<std::uint32_t, Pixels> d;
    constexpr std::size_t kCount = hn::MaxLanes(d);
    if constexpr (kCount == 4) return v;
    HWY_ALIGN std::int32_t order[kCount];
    for (std::size_t i = 0; i < kCount; ++i) {
      const std::size_t block = i % (kCount / 2) / 2;
      order[i] = static_cast<std::int32_t>(4 * block + i % 2 + (i < kCount / 2 ? 0 : 2));
    }
    const auto moved = hn::TableLookupLanes(hn::BitCast(d, v), hn::SetTableIndices(d, order));
    return hn::BitCast(Pixels(), moved);
  }
#endif

  template <std::size_t kDigits>
  HWY_INLINE VLong Finish(const VLong (&digits)[kDigits]) const {
    VLong sum = digits[0];
    if constexpr (kDigits > 1) sum = hn::Add(sum, hn::ShiftLeft<16>(digits[1]));
    sum = hn::ShiftRightSame(sum, plan_.fraction);
    return plan_.absolute ? hn::Abs(sum) : sum;
  }

  KernelPlan plan_;
};

#else

// The same, pixel by pixel.
template <typename T>
class SumsOfPairs {
 public:
  using Element = T;

  explicit SumsOfPairs(const FixedKernel& kernel) : kernel_(kernel) {}

  static void LoadRow(const T* from, std::size_t width, Element* to) {
    std::memcpy(to, from, width * sizeof(T));
  }

  void Row(const Element* const* rows, std::size_t width, Element* /*spare*/,
           std::size_t /*stride*/, T* to) const {
    for (std::size_t x = 0; x < width; x += kAtOnce) {
      AddUp(rows, x, std::min(kAtOnce, width - x), to + x);
    }
  }

 private:
  static constexpr std::size_t kAtOnce = 256;

  // Coefficient by coefficient, so that the compiler has long loops to work on.
  void AddUp(const Element* const* rows, std::size_t first, std::size_t count, T* to) const {
    const std::size_t size = kernel_.size;
    std::uint32_t sums[kAtOnce];
    std::fill(sums, sums + count, static_cast<std::uint32_t>(kernel_.offset));
    for (std::size_t i = 0; i < size * size; ++i) {
      const Element* const row = rows[i / size] + first + i % size;
      const auto coefficient = static_cast<std::uint32_t>(kernel_.coefficients[i]);
      for (std::size_t x = 0; x < count; ++x) sums[x] += row[x] * coefficient;
    }
    for (std::size_t x = 0; x < count; ++x) {
      const std::int64_t v = static_cast<std::int32_t>(sums[x]) >> kernel_.fraction;
      const std::int64_t rectified = kernel_.absolute ? std::abs(v) : v;
      const auto pixel =
          static_cast<T>(std::clamp<std::int64_t>(rectified, 0, hwy::LimitsMax<T>()));
      std::memcpy(to + x, &pixel, sizeof(T));
    }
  }

  const FixedKernel& kernel_;
};

#endif

// Sums of 16-bit pixels beyond 32 bits: a double holds every one exactly.
class SumsReal {
 public:
  using Element = std::uint16_t;

  HWY_INLINE explicit SumsReal(const FixedKernel& kernel) : kernel_(kernel) {}

  static void LoadRow(const std::uint16_t* from, std::size_t width, Element* to) {
    std::memcpy(to, from, width * sizeof(Element));
  }

  void Row(const Element* const* rows, std::size_t width, Element* /*spare*/,
           std::size_t /*stride*/, std::uint16_t* to) const {
    const hn::ScalableTag<double> d;
    const hn::Rebind<std::uint16_t, decltype(d)> narrow;
    const hn::Rebind<std::int32_t, decltype(d)> whole;
    const std::size_t size = kernel_.size;
    const auto scale = hn::Set(d, 1.0 / static_cast<double>(1 << kernel_.fraction));
    ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
      auto sum = hn::Set(d, static_cast<double>(kernel_.offset));
      for (std::size_t j = 0; j < size; ++j) {
        for (std::size_t i = 0; i < size; ++i) {
          const auto pixels = hn::PromoteTo(whole, hn::LoadU(narrow, rows[j] + x + i));
          const auto factor = hn::Set(d, static_cast<double>(kernel_.coefficients[j * size + i]));
          sum = hn::Add(sum, hn::Mul(hn::PromoteTo(d, pixels), factor));
        }
      }
      auto v = hn::Floor(hn::Mul(sum, scale));
      if (kernel_.absolute) v = hn::Abs(v);
      v = hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, 65535.0));
      access.Store(narrow, hn::DemoteTo(narrow, hn::DemoteTo(whole, v)), to + x);
    });
  }

 private:
  const FixedKernel& kernel_;
};

// Rows of all components, in the elements of `Sums`, wait in a ring until their windows are done.
template <typename T, class Sums>
void Run(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  using Element = typename Sums::Element;
  const Sums sums(kernel);
  const std::size_t size = kernel.size;
  const std::size_t radius = size / 2;
  const std::size_t stride = memory.stride;
  T* const components = static_cast<T*>(memory.components);
  const auto padded = [&](std::size_t y) {
    return static_cast<Element*>(memory.rows) + y % size * image.components * stride +
           kLargestVector;
  };
  Element* const spare = padded(size - 1) + image.components * stride;
  const auto take = [&](std::size_t y) {
    const T* from = image.source.template Row<const T>(y);
    if (image.components > 1) LoadComponents(image, y, components, stride, 0, 0);
    for (std::size_t c = 0; c < image.components; ++c) {
      Element* const row = padded(y) + c * stride;
      Sums::LoadRow(image.components > 1 ? components + c * stride : from, image.width, row);
      std::fill(row - radius, row, row[0]);
      std::fill(row + image.width, row + image.width + radius, row[image.width - 1]);
    }
  };
  const auto write = [&](std::size_t y) {
    for (std::size_t c = 0; c < image.components; ++c) {
      const Element* rows[7];
      for (std::size_t j = 0; j < size; ++j) {
        const std::size_t row = y + j < radius ? 0 : std::min(y + j - radius, image.height - 1);
        rows[j] = padded(row) + c * stride - radius;
      }
      sums.Row(rows, image.width, spare, stride, ComponentOutput(image, y, components, stride, c));
    }
    StoreComponents(image, y, components, stride);
  };
  for (std::size_t n = 0; n < image.height; ++n) {
    take(n);
    if (n >= radius) write(n - radius);
  }
  for (std::size_t y = image.height > radius ? image.height - radius : 0; y < image.height; ++y)
    write(y);
}

void RunBytes(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  Run<std::uint8_t, SumsOfPairs<std::uint8_t>>(image, kernel, memory);
}

void RunWords(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  Run<std::uint16_t, SumsOfPairs<std::uint16_t>>(image, kernel, memory);
}

void RunWideWords(const ComponentImage& image, const FixedKernel& kernel,
                  const FixedMemory& memory) {
  Run<std::uint16_t, SumsReal>(image, kernel, memory);
}

}  // namespace
}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::convolution {

HWY_EXPORT(RunBytes);
HWY_EXPORT(RunWords);
HWY_EXPORT(RunWideWords);

namespace {

template <typename T, class Kernel>
bool WithMemory(const ComponentImage& image, const FixedKernel& kernel, Kernel run) {
  FixedMemory memory{};
  // Several vectors of results are made at a time, whose windows reach beyond the row.
  memory.stride = ComponentStride(image, kernel.size, kernel.size) + 4 * kLargestVector;
  const std::size_t row = image.components * memory.stride;
  const std::size_t rows = kernel.size * row + kernel.size / 2 * memory.stride + kLargestVector;
  const Scratch<std::uint16_t> ring(rows);
  const Scratch<T> components(row);
  if (!ring || !components) return false;
  std::memset(ring.get(), 0, rows * sizeof(std::uint16_t));
  memory.rows = ring.get();
  memory.components = components.get();
  run(image, kernel, memory);
  return true;
}

// Whether every sum of 16-bit pixels fits 32 bits.
bool FitsWords(const FixedKernel& kernel) {
  std::int64_t largest = std::abs(kernel.offset);
  for (std::size_t i = 0; i < kernel.size * kernel.size; ++i) {
    largest += 0xFFFF * std::abs(std::int64_t{kernel.coefficients[i]});
  }
  return largest <= INT32_MAX;
}

}  // namespace

bool FixedBytes(const ComponentImage& image, const FixedKernel& kernel) {
  return WithMemory<std::uint8_t>(image, kernel, LX_KERNEL(image.path, RunBytes));
}

bool FixedWords(const ComponentImage& image, const FixedKernel& kernel) {
  return WithMemory<std::uint16_t>(
      image, kernel,
      FitsWords(kernel) ? LX_KERNEL(image.path, RunWords) : LX_KERNEL(image.path, RunWideWords));
}

}  // namespace lx::convolution
#endif
