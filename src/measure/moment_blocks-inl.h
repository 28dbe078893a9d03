// SPDX-License-Identifier: Apache-2.0
// Moments by additions alone. A sum that is added to another one after every element, and that to a
// third one, counts elements by binomial coefficients of their distance from the last: down some
// rows in narrow lanes, one for each column of a vector, and then along these vectors in wide
// lanes. Powers of rows and columns are combinations of those coefficients. Included once for each
// instruction set.

#if defined(LXPIC_MEASURE_MOMENT_BLOCKS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_MEASURE_MOMENT_BLOCKS_INL_H_
#undef LXPIC_MEASURE_MOMENT_BLOCKS_INL_H_
#else
#define LXPIC_MEASURE_MOMENT_BLOCKS_INL_H_
#endif

#include "foundation/wide-inl.h"
#include "measure/moments_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace lx::measure::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

constexpr std::uint64_t Binomial(std::uint64_t n, std::uint64_t k) {
  std::uint64_t value = 1;
  for (std::uint64_t i = 1; i <= k; ++i) value = value * (n - k + i) / i;
  return value;
}

// The most rows whose `order` times repeated sums fit narrow lanes.
constexpr std::size_t MostRows(std::uint64_t heaviest, std::uint64_t laneMaximum, unsigned order) {
  std::size_t rows = 1;
  while (rows < 64 && heaviest * Binomial(rows + 1 + order, order + 1) <= laneMaximum) ++rows;
  return rows;
}

// The most vectors whose sums, repeated along them, fit wide lanes.
constexpr std::size_t MostBlocks(std::uint64_t heaviest, std::uint64_t laneMaximum, unsigned order,
                                 std::size_t rows) {
  const auto fits = [&](std::size_t blocks) {
    for (unsigned q = 0; q <= order; ++q) {
      const std::uint64_t column = heaviest * Binomial(rows + q, q + 1);
      if (Binomial(blocks + order - q, order - q + 1) > laneMaximum / column) return false;
    }
    return true;
  };
  std::size_t blocks = 1;
  while (blocks < 256 && fits(blocks + 1)) ++blocks;
  return blocks;
}

// kPowers[q][j]: u^q is the sum over j of this times C(u + j, j).
constexpr int kPowers[5][5] = {{1}, {-1, 1}, {1, -3, 2}, {-1, 7, -12, 6}, {1, -15, 50, -60, 24}};
constexpr int kChoose[5][5] = {{1}, {1, 1}, {1, 2, 1}, {1, 3, 3, 1}, {1, 4, 6, 4, 1}};

// A rectangle of at most kMostRows rows and kMostBlocks vectors of elements of type T.
template <typename T, int kOrder>
class Block {
 public:
  static constexpr std::uint64_t kHeaviest = static_cast<T>(-1);
  using Narrow = hwy::MakeWide<T>;
  using Wide = hwy::MakeWide<Narrow>;
  static constexpr std::size_t kMostRows = MostRows(kHeaviest, static_cast<Narrow>(-1), kOrder);
  static constexpr std::size_t kMostBlocks =
      MostBlocks(kHeaviest, static_cast<Wide>(-1), kOrder, kMostRows);

  // weigh(row, x, count) is the weights of a vector, 0 behind the first `count`. Rows and vectors
  // are taken from the last to the first, so that coefficients count from the first.
  template <class Weigh>
  HWY_INLINE void Sum(std::size_t width, std::size_t rows, const Weigh& weigh) {
    const std::size_t n = hn::Lanes(d_);
    for (auto& of : wide_) {
      for (auto& sums : of) {
        for (auto& quarter : sums.of) quarter = hn::Zero(wideTag_);
      }
    }
    for (std::size_t x = (width - 1) / n * n;; x -= n) {
      AddColumns(rows, [&](std::size_t y) HWY_ATTR { return weigh(y, x, width - x); });
      if (x == 0) break;
    }
  }

  // The moments about the first pixel.
  HWY_INLINE MomentTable<Uint128> Moments() const {
    // along[j][p]: sums of C(y + j, j) x^p
    Uint128 along[kOrder + 1][kOrder + 1] = {};
    const std::size_t n = hn::Lanes(d_);
    for (int j = 0; j <= kOrder; ++j) {
      Lanes lanes[kOrder + 1];
      const int rest = kOrder - j;
      for (int k = 0; k <= rest; ++k) lanes[k] = LanesOf(wide_[j][k], rest - k);
      for (int p = 0; p <= rest; ++p) {
        // x = n * block + lane
        Uint128 power = 1;
        for (int b = 0; b <= p; ++b, power *= n) {
          for (int k = 0; k <= b; ++k) {
            along[j][p] += Signed(kPowers[b][k] * kChoose[p][b]) * power * lanes[k].moments[p - b];
          }
        }
      }
    }
    MomentTable<Uint128> table{};
    for (int p = 0; p <= kOrder; ++p) {
      for (int q = 0; q <= kOrder - p; ++q) {
        for (int j = 0; j <= q; ++j) {
          table[static_cast<std::size_t>(p)][static_cast<std::size_t>(q)] +=
              Signed(kPowers[q][j]) * along[j][p];
        }
      }
    }
    return table;
  }

 private:
  static constexpr hn::ScalableTag<T> d_{};
  static constexpr WideTag<hn::ScalableTag<T>> narrowTag_{};
  static constexpr WideTag<WideTag<hn::ScalableTag<T>>> wideTag_{};
  using NarrowVec = hn::Vec<WideTag<hn::ScalableTag<T>>>;
  using WideVec = hn::Vec<WideTag<WideTag<hn::ScalableTag<T>>>>;
  static constexpr std::size_t kQuarters = kHalves * kHalves;

  // Quarter h + kHalves * w holds elements kQuarters * lane + h + kHalves * w.
  struct Quarters {
    WideVec of[kQuarters];
  };
  // Sums of lanes times powers of their indices.
  struct Lanes {
    std::uint64_t moments[kOrder + 1];
  };

  static HWY_INLINE Uint128 Signed(int factor) { return static_cast<Uint128>(Int128{factor}); }

  template <class Load>
  HWY_INLINE void AddColumns(std::size_t rows, const Load& load) {
    NarrowVec columns[kOrder + 1][kHalves];
    for (auto& of : columns) {
      for (auto& half : of) half = hn::Zero(narrowTag_);
    }
    for (std::size_t y = rows; y-- > 0;) {
      const auto halves = Widen(d_, load(y));
      for (std::size_t h = 0; h < kHalves; ++h) {
        columns[0][h] = hn::Add(columns[0][h], halves.half[h]);
        LX_UNROLL
        for (int j = 1; j <= kOrder; ++j) {
          columns[j][h] = hn::Add(columns[j][h], columns[j - 1][h]);
        }
      }
    }
    LX_UNROLL
    for (int j = 0; j <= kOrder; ++j) {
      for (std::size_t h = 0; h < kHalves; ++h) {
        const auto halves = Widen(narrowTag_, columns[j][h]);
        for (std::size_t w = 0; w < kHalves; ++w) {
          WideVec sum = halves.half[w];
          LX_UNROLL
          for (int k = 0; k <= kOrder - j; ++k) {
            WideVec& to = wide_[j][k].of[h + kHalves * w];
            sum = to = hn::Add(to, sum);
          }
        }
      }
    }
  }

#if LX_HAS_LANES
  // Powers of the indices of elements, where the quarters hold them.
  struct Powers {
    alignas(64) std::uint32_t of[kOrder + 1][kQuarters][hn::MaxLanes(wideTag_)];
  };
  static constexpr Powers MakePowers() {
    Powers made{};
    for (std::uint32_t quarter = 0; quarter < kQuarters; ++quarter) {
      for (std::uint32_t i = 0; i < hn::MaxLanes(wideTag_); ++i) {
        std::uint32_t power = 1;
        for (int a = 0; a <= kOrder; ++a, power *= kQuarters * i + quarter) {
          made.of[a][quarter][i] = power;
        }
      }
    }
    return made;
  }

  // Where products of lanes have twice their width.
  static HWY_INLINE Lanes ProductsOf(const Quarters& quarters, int order) {
    static constexpr Powers kIndexPowers = MakePowers();
    const hn::ScalableTag<std::uint64_t> d64;
    const auto odd = [&](WideVec v) HWY_ATTR {
      return hn::BitCast(wideTag_, hn::ShiftRight<32>(hn::BitCast(d64, v)));
    };
    Lanes sums = {};
    for (int a = 0; a <= order; ++a) {
      auto total = hn::Zero(d64);
      for (std::size_t quarter = 0; quarter < kQuarters; ++quarter) {
        const auto powers = hn::Load(wideTag_, kIndexPowers.of[a][quarter]);
        const auto lanes = quarters.of[quarter];
        total = hn::Add(total,
                        hn::Add(hn::MulEven(lanes, powers), hn::MulEven(odd(lanes), odd(powers))));
      }
      sums.moments[a] = hn::GetLane(hn::SumOfLanes(d64, total));
    }
    return sums;
  }
#endif

  static HWY_INLINE Lanes LanesOf(const Quarters& quarters, int order) {
#if LX_HAS_LANES
    if constexpr (sizeof(Wide) == 4) return ProductsOf(quarters, order);
#endif
    Lanes sums = {};
    for (std::size_t quarter = 0; quarter < kQuarters; ++quarter) {
      HWY_ALIGN Wide lanes[hn::MaxLanes(wideTag_)];
      hn::Store(quarters.of[quarter], wideTag_, lanes);
      for (std::size_t i = 0; i < hn::Lanes(wideTag_); ++i) {
        const std::uint64_t index = kQuarters * i + quarter;
        std::uint64_t term = lanes[i];
        for (int a = 0; a <= order; ++a, term *= index) sums.moments[a] += term;
      }
    }
    return sums;
  }

  Quarters wide_[kOrder + 1][kOrder + 1];
};

// Walks an area by blocks. weigh(d, v) is the weights of a vector of elements.
template <typename T, int kOrder, class Weigh>
void AddBlocks(const MomentArea& area, const Weigh& weigh, MomentSums& sums) {
  using Sums = Block<T, kOrder>;
  const hn::ScalableTag<T> d;
  const std::size_t n = hn::Lanes(d);
  for (std::size_t y = 0; y < area.height; y += Sums::kMostRows) {
    const std::size_t rows = HWY_MIN(Sums::kMostRows, area.height - y);
    for (std::size_t x = 0; x < area.width; x += Sums::kMostBlocks * n) {
      const std::size_t width = HWY_MIN(Sums::kMostBlocks * n, area.width - x);
      Sums block;
      block.Sum(width, rows, [&](std::size_t row, std::size_t at, std::size_t count) HWY_ATTR {
        const T* const from = area.rows.template Row<const T>(y + row) + x + at;
        if (count >= n) return weigh(d, hn::LoadU(d, from));
        const auto v = PartVector{count}.Load(d, from);
        return hn::IfThenElseZero(hn::FirstN(d, count), weigh(d, v));
      });
      sums.Add(block.Moments(), area.x + x, area.y + y);
    }
  }
}

}  // namespace lx::measure::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_MEASURE_MOMENT_BLOCKS_INL_H_
