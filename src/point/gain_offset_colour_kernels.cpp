// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "foundation/truncate.h"
#include "point/gain_offset_kernels.h"
#include "point/lut_kernels.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "point/gain_offset_colour_kernels.cpp"
#include "hwy/foreach_target.h"

// Highway asks for this order.
#include "foundation/pixel_map-inl.h"
#include "foundation/wide-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::point::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

namespace {

#if LX_HAS_LANES && !LX_HAS_BYTE_PERMUTE

using BytesTag = hn::ScalableTag<std::uint8_t>;
using RealsTag = hn::Repartition<float, BytesTag>;
using Bytes = hn::Vec<BytesTag>;
using Reals = hn::Vec<RealsTag>;

struct SingleScale {
  float gain[3];
  float offset[3];
};

// source * gain + offset of colour pixels in single precision, truncated and clamped. A vector is
// taken apart into four, of every fourth byte; byte 4 j + k of one that starts with component c is of
// component (c + j + k) mod 3.
class ScaleInSingles {
 public:
  explicit HWY_INLINE ScaleInSingles(const SingleScale& scale) {
    for (std::size_t c = 0; c < 3; ++c) {
      HWY_ALIGN float gain[hn::MaxLanes(RealsTag())];
      HWY_ALIGN float offset[hn::MaxLanes(RealsTag())];
      for (std::size_t j = 0; j < hn::Lanes(RealsTag()); ++j) {
        gain[j] = scale.gain[(c + j) % 3];
        offset[j] = scale.offset[(c + j) % 3];
      }
      gain_[c] = hn::Load(RealsTag(), gain);
      offset_[c] = hn::Load(RealsTag(), offset);
    }
  }

  // A vector whose first byte is of component `first`.
  HWY_INLINE Bytes operator()(Bytes bytes, std::size_t first) const {
    const hn::RebindToUnsigned<RealsTag> quads;
    const hn::RebindToSigned<RealsTag> whole;
    const auto scaled = [&](auto levels, std::size_t k) HWY_ATTR {
      const std::size_t c = (first + k) % 3;
      const auto level = hn::ConvertTo(RealsTag(), hn::BitCast(whole, levels));
      return TruncateFitting(hn::MulAdd(level, gain_[c], offset_[c]));
    };
    const auto p = hn::BitCast(quads, bytes);
    const auto low = hn::Set(quads, 0xFF);
    return JoinQuartersClamped(
        BytesTag(), scaled(hn::And(p, low), 0), scaled(hn::And(hn::ShiftRight<8>(p), low), 1),
        scaled(hn::And(hn::ShiftRight<16>(p), low), 2), scaled(hn::ShiftRight<24>(p), 3));
  }

 private:
  Reals gain_[3];
  Reals offset_[3];
};

void ScaleRow(const ScaleInSingles& scale, const std::uint8_t* from, std::size_t bytes,
              std::uint8_t* to) {
  const BytesTag d;
  constexpr std::size_t n = hn::MaxLanes(d);
  std::size_t x = 0;
  for (; x + 3 * n <= bytes; x += 3 * n) {
    const auto first = scale(hn::LoadU(d, from + x), 0);
    const auto second = scale(hn::LoadU(d, from + x + n), n % 3);
    const auto third = scale(hn::LoadU(d, from + x + 2 * n), 2 * n % 3);
    hn::StoreU(first, d, to + x);
    hn::StoreU(second, d, to + x + n);
    hn::StoreU(third, d, to + x + 2 * n);
  }
  ForEachVector(d, bytes - x, [&](std::size_t i, auto access) HWY_ATTR {
    access.Store(d, scale(access.Load(d, from + x + i), i % 3), to + x + i);
  });
}

// How far single precision is turned aside, lest a product that lies beside a whole number is
// rounded to it.
constexpr double kNudges[] = {0, -0x1P-20, 0x1P-20, -0x1P-18, 0x1P-18};

// Finds what gives the entries of the tables, level by level, on this instruction set.
bool FindSingles(const ColourScale& wanted, const ByteTableData (&tables)[3], SingleScale& found) {
  std::uint8_t levels[3 * 256];
  std::uint8_t scaled[3 * 256];
  for (std::size_t i = 0; i < sizeof(levels); ++i) levels[i] = static_cast<std::uint8_t>(i / 3);
  bool settled[3] = {};
  for (const double nudge : kNudges) {
    SingleScale tried{};
    for (std::size_t c = 0; c < 3; ++c) {
      tried.gain[c] = static_cast<float>(wanted.components[c].gain * (1 + nudge));
      tried.offset[c] = static_cast<float>(wanted.components[c].offset);
    }
    ScaleRow(ScaleInSingles(tried), levels, sizeof(levels), scaled);
    for (std::size_t c = 0; c < 3; ++c) {
      bool equal = !settled[c];
      for (std::size_t v = 0; v < 256 && equal; ++v) equal = scaled[3 * v + c] == tables[c][v];
      if (!equal) continue;
      found.gain[c] = tried.gain[c];
      found.offset[c] = tried.offset[c];
      settled[c] = true;
    }
    if (settled[0] && settled[1] && settled[2]) return true;
  }
  return false;
}

// False where single precision does not give what the tables hold.
bool Colours(const PixelMap& map, const ColourScale& wanted, const ByteTableData (&tables)[3]) {
  SingleScale found{};
  if (!FindSingles(wanted, tables, found)) return false;
  const ScaleInSingles scale(found);
  for (std::size_t y = 0; y < map.height; ++y) {
    ScaleRow(scale, map.sources[0].Row<const std::uint8_t>(y), 3 * map.width,
             map.destination.Row<std::uint8_t>(y));
  }
  return true;
}

#else

// Tables are faster here.
bool Colours(const PixelMap& /*map*/, const ColourScale& /*wanted*/,
             const ByteTableData (&/*tables*/)[3]) {
  return false;
}

#endif

}  // namespace
}  // namespace lx::point::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace lx::point {

HWY_EXPORT(Colours);

void ScaleColours(const PixelMap& map, const ColourScale& scale) {
  ByteTableData tables[3];
  for (std::size_t c = 0; c < 3; ++c) {
    const auto& [gain, offset] = scale.components[c];
    for (int v = 0; v < 256; ++v) {
      tables[c][v] = static_cast<std::uint8_t>(TruncateTo(v * gain + offset, 0, 255));
    }
  }
  if (!LX_CALL(map.path, Colours, map, scale, tables)) LookUpComponents(map, tables);
}

}  // namespace lx::point
#endif
