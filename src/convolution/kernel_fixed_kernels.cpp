// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstdlib>

#include "convolution/kernel_memory.h"
#include "convolution/kernel_worker.h"
#include "foundation/scratch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "convolution/kernel_fixed_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/component_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

// Sums in 32 bits, modulo 2^32; pixels of either type.
template <typename T>
class Sums32 {
 public:
  HWY_INLINE explicit Sums32(const FixedKernel& kernel) : kernel_(kernel) {}

  // rows[j] + x is the pixel above the first tap of kernel row j.
  void Row(const T* const* rows, std::size_t width, T* to) const {
    const hn::ScalableTag<std::int32_t> d;
    const hn::Rebind<T, decltype(d)> narrow;
    const std::size_t size = kernel_.size;
    ForEachVector(d, width, [&](std::size_t x, auto access) HWY_ATTR {
      auto sum = hn::Set(d, static_cast<std::int32_t>(kernel_.offset));
      for (std::size_t j = 0; j < size; ++j) {
        for (std::size_t i = 0; i < size; ++i) {
          const auto pixels = hn::PromoteTo(d, hn::LoadU(narrow, rows[j] + x + i));
          sum = hn::Add(sum, hn::Mul(pixels, hn::Set(d, kernel_.coefficients[j * size + i])));
        }
      }
      access.Store(narrow, Finish(d, sum), to + x);
    });
  }

 private:
  template <class D>
  HWY_INLINE hn::Vec<hn::Rebind<T, D>> Finish(D d, hn::Vec<D> sum) const {
    auto v = hn::ShiftRightSame(sum, kernel_.fraction);
    if (kernel_.absolute) v = hn::Abs(v);
    // The conversion saturates only what fits 16 bits.
    v = hn::Min(hn::Max(v, hn::Zero(d)), hn::Set(d, hwy::LimitsMax<T>()));
    return hn::DemoteTo(hn::Rebind<T, D>(), v);
  }

  const FixedKernel& kernel_;
};

// Sums of 16-bit pixels beyond 32 bits: a double holds every one exactly.
class SumsReal {
 public:
  HWY_INLINE explicit SumsReal(const FixedKernel& kernel) : kernel_(kernel) {}

  void Row(const std::uint16_t* const* rows, std::size_t width, std::uint16_t* to) const {
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

#if LX_HAS_DOT_PRODUCT

// Every processor of this target has the dot products, but Highway's options leave them out.
#pragma GCC push_options
#pragma GCC target("avx512vnni")

// Sums of bytes by dot products of four neighbours with four coefficient bytes. A coefficient is
// taken apart into signed digits of base 256; the products of each digit are added up on their own
// and joined in the end, modulo 2^32.
class SumsOfDots {
 public:
  explicit SumsOfDots(const FixedKernel& kernel) : kernel_(kernel) {
    bool found[4] = {};
    for (std::size_t k = 0; k < kernel.size * kernel.size; ++k) {
      std::int8_t digits[4];
      TakeDigits(kernel.coefficients[k], digits);
      const std::size_t row = k / kernel.size;
      const std::size_t tap = k % kernel.size;
      for (std::size_t i = 0; i < 4; ++i) {
        coefficients_[i][row][tap] = digits[i];
        found[i] |= digits[i] != 0;
      }
    }
    for (std::size_t i = 0; i < 4; ++i) {
      if (found[i]) digits_[used_++] = i;
    }
    used_ = std::max<std::size_t>(used_, 1);
    for (std::size_t lane = 0; lane < 64; ++lane) {
      spread_[0][lane] = static_cast<std::uint8_t>(lane / 4 + lane % 4);
      spread_[1][lane] = static_cast<std::uint8_t>(lane / 4 + lane % 4 + 4);
    }
  }

  void Row(const std::uint8_t* const* rows, std::size_t width, std::uint8_t* to) const {
    using RowKernel =
        void (SumsOfDots::*)(const std::uint8_t* const*, std::size_t, std::uint8_t*) const;
    static constexpr RowKernel kKernels[3][4] = {
        {&SumsOfDots::RowOf<3, 1>, &SumsOfDots::RowOf<3, 2>, &SumsOfDots::RowOf<3, 3>,
         &SumsOfDots::RowOf<3, 4>},
        {&SumsOfDots::RowOf<5, 1>, &SumsOfDots::RowOf<5, 2>, &SumsOfDots::RowOf<5, 3>,
         &SumsOfDots::RowOf<5, 4>},
        {&SumsOfDots::RowOf<7, 1>, &SumsOfDots::RowOf<7, 2>, &SumsOfDots::RowOf<7, 3>,
         &SumsOfDots::RowOf<7, 4>}};
    (this->*kKernels[kernel_.size / 2 - 1][used_ - 1])(rows, width, to);
  }

 private:
  // The signed digits of a coefficient, the lowest first. The carry out of the last one is lost, as
  // the sums are taken modulo 2^32.
  static void TakeDigits(std::int32_t coefficient, std::int8_t (&digits)[4]) {
    std::int64_t rest = coefficient;
    for (std::int8_t& digit : digits) {
      digit = static_cast<std::int8_t>(rest);
      rest = (rest - digit) >> 8;
    }
  }

  // The coefficients' digits stay in registers along the row; everything that repeats is unrolled.
  template <std::size_t kSize, std::size_t kDigits>
  void RowOf(const std::uint8_t* const* rows, std::size_t width, std::uint8_t* to) const {
    constexpr std::size_t kGroups = kSize > 3 ? 2 : 1;
    __m512i factors[kDigits][kSize][kGroups];
    __m512i shifts[kDigits];
    for (std::size_t k = 0; k < kDigits; ++k) {
      shifts[k] = _mm512_set1_epi32(static_cast<int>(8 * digits_[k]));
      for (std::size_t j = 0; j < kSize; ++j) {
        for (std::size_t g = 0; g < kGroups; ++g) {
          std::int32_t four = 0;
          std::memcpy(&four, &coefficients_[digits_[k]][j][4 * g], sizeof(four));
          factors[k][j][g] = _mm512_set1_epi32(four);
        }
      }
    }
    const __m512i spread[2] = {_mm512_load_si512(spread_[0]), _mm512_load_si512(spread_[1])};
    const __m512i offset = _mm512_set1_epi32(static_cast<std::int32_t>(kernel_.offset));
    const __m512i fraction = _mm512_set1_epi32(kernel_.fraction);
    const bool absolute = kernel_.absolute;
    const std::uint8_t* lines[kSize];
    std::copy(rows, rows + kSize, lines);
    for (std::size_t x = 0; x < width; x += 16) {
      __m512i sums[kDigits] = {};
#pragma GCC unroll 8
      for (std::size_t j = 0; j < kSize; ++j) {
        // Twenty-three bytes are wanted: half a vector seldom crosses a cache line.
        const __m512i pixels = _mm512_castsi256_si512(
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(lines[j] + x)));
#pragma GCC unroll 2
        for (std::size_t g = 0; g < kGroups; ++g) {
          const __m512i taps = _mm512_permutexvar_epi8(spread[g], pixels);
#pragma GCC unroll 4
          for (std::size_t k = 0; k < kDigits; ++k) {
            sums[k] = _mm512_dpbusd_epi32(sums[k], taps, factors[k][j][g]);
          }
        }
      }
      __m512i sum = offset;
#pragma GCC unroll 4
      for (std::size_t k = 0; k < kDigits; ++k) {
        sum = _mm512_add_epi32(sum, _mm512_sllv_epi32(sums[k], shifts[k]));
      }
      sum = _mm512_srav_epi32(sum, fraction);
      if (absolute) sum = _mm512_abs_epi32(sum);
      const __m128i bytes = _mm512_cvtusepi32_epi8(_mm512_max_epi32(sum, _mm512_setzero_si512()));
      if (x + 16 <= width) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + x), bytes);
      } else {
        _mm_mask_storeu_epi8(to + x, static_cast<__mmask16>((1U << (width - x)) - 1), bytes);
      }
    }
  }

  const FixedKernel& kernel_;
  std::size_t used_ = 0;
  std::size_t digits_[4] = {};
  std::int8_t coefficients_[4][7][8] = {};  // by digit, row and tap
  alignas(64) std::uint8_t spread_[2][64];
};

#pragma GCC pop_options

using ByteSums = SumsOfDots;
#else
using ByteSums = Sums32<std::uint8_t>;
#endif

template <typename T, class Sums>
void Run(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  const Sums sums(kernel);
  const std::size_t size = kernel.size;
  const std::size_t radius = size / 2;
  const std::size_t stride = memory.stride;
  const auto padded = [&](std::size_t y) {
    return static_cast<T*>(memory.rows) + y % size * image.components * stride + kLargestVector;
  };
  const auto write = [&](std::size_t y) {
    T* const output = static_cast<T*>(memory.output);
    for (std::size_t c = 0; c < image.components; ++c) {
      const T* rows[7];
      for (std::size_t j = 0; j < size; ++j) {
        const std::size_t row = y + j < radius ? 0 : std::min(y + j - radius, image.height - 1);
        rows[j] = padded(row) + c * stride - radius;
      }
      sums.Row(rows, image.width, ComponentOutput(image, y, output, stride, c));
    }
    StoreComponents(image, y, output, stride);
  };
  for (std::size_t n = 0; n < image.height; ++n) {
    LoadComponents(image, n, padded(n), stride, radius, radius);
    if (n >= radius) write(n - radius);
  }
  for (std::size_t y = image.height > radius ? image.height - radius : 0; y < image.height; ++y)
    write(y);
}

void RunBytes(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  Run<std::uint8_t, ByteSums>(image, kernel, memory);
}

void RunWords(const ComponentImage& image, const FixedKernel& kernel, const FixedMemory& memory) {
  Run<std::uint16_t, Sums32<std::uint16_t>>(image, kernel, memory);
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
  memory.stride = ComponentStride(image, kernel.size, kernel.size);
  const std::size_t row = image.components * memory.stride;
  const Scratch<T> scratch((kernel.size + 1) * row + kLargestVector);
  if (!scratch) return false;
  memory.output = scratch.get();
  memory.rows = scratch.get() + row;
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
