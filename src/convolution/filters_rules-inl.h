// SPDX-License-Identifier: Apache-2.0
// The filters as rules of the 3 × 3 driver. A rule works on wide unsigned lanes; differences wrap
// and are read as signed. The horizontal step gets the left neighbour, the pixel and the right
// neighbour; the vertical step gets the planes of the row above, the pixel's row and the row below.
// Included once for each instruction set.

#if defined(LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#undef LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#else
#define LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
#endif

#include "foundation/neighbourhood-inl.h"

HWY_BEFORE_NAMESPACE();
namespace lx::convolution::HWY_NAMESPACE {

using namespace lx::HWY_NAMESPACE;

// The largest value of the pixels whose wide lanes `D` holds.
template <class D>
HWY_INLINE hn::Vec<D> LargestPixel(D d) {
  return hn::Set(d, hwy::LimitsMax<hwy::MakeNarrow<hn::TFromD<D>>>());
}

template <class D>
HWY_INLINE hn::Vec<D> Absolute(D d, hn::Vec<D> v) {
  const hn::RebindToSigned<D> whole;
  return hn::BitCast(d, hn::Abs(hn::BitCast(whole, v)));
}

// min(|v|, largest pixel)
template <class D>
HWY_INLINE hn::Vec<D> Magnitude(D d, hn::Vec<D> v) {
  return hn::Min(Absolute(d, v), LargestPixel(d));
}

// min(|x| + |y|, largest pixel)
template <class D>
HWY_INLINE hn::Vec<D> MagnitudeSum(D d, hn::Vec<D> x, hn::Vec<D> y) {
  return hn::Min(hn::Add(Absolute(d, x), Absolute(d, y)), LargestPixel(d));
}

template <class V>
HWY_INLINE V Sum(V a, V b, V c) {
  return hn::Add(hn::Add(a, c), b);
}

// a + 2b + c
template <class V>
HWY_INLINE V Binomial(V a, V b, V c) {
  return hn::Add(hn::Add(a, c), hn::Add(b, b));
}

template <int kFactor, class D>
HWY_INLINE hn::Vec<D> Times(D d, hn::Vec<D> v) {
  return hn::Mul(v, hn::Set(d, kFactor));
}

struct SobelX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V /*centre*/, V right, V (&planes)[1]) const {
    planes[0] = hn::Sub(right, left);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&here)[1], const V (&below)[1]) const {
    return Magnitude(d, Binomial(above[0], here[0], below[0]));
  }
};

struct SobelY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = Binomial(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&/*here*/)[1],
                        const V (&below)[1]) const {
    return Magnitude(d, hn::Sub(below[0], above[0]));
  }
};

struct Sobel {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = hn::Sub(right, left);
    planes[1] = Binomial(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return MagnitudeSum(d, Binomial(above[0], here[0], below[0]), hn::Sub(below[1], above[1]));
  }
};

struct PrewittX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V /*centre*/, V right, V (&planes)[1]) const {
    planes[0] = hn::Sub(right, left);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&here)[1], const V (&below)[1]) const {
    return Magnitude(d, Sum(above[0], here[0], below[0]));
  }
};

struct PrewittY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = Sum(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&/*here*/)[1],
                        const V (&below)[1]) const {
    return Magnitude(d, hn::Sub(below[0], above[0]));
  }
};

struct Prewitt {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = hn::Sub(right, left);
    planes[1] = Sum(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return MagnitudeSum(d, Sum(above[0], here[0], below[0]), hn::Sub(below[1], above[1]));
  }
};

struct Laplacian4 {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = centre;
    planes[1] = hn::Sub(hn::Add(left, right), Times<4>(d, centre));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return Magnitude(d, Sum(above[0], here[1], below[0]));
  }
};

struct Laplacian8 {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = Sum(left, centre, right);
    planes[1] = hn::Sub(planes[0], Times<9>(d, centre));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return Magnitude(d, Sum(above[0], here[1], below[0]));
  }
};

struct LaplacianX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = Magnitude(d, hn::Sub(hn::Add(left, right), hn::Add(centre, centre)));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&/*above*/)[1], const V (&here)[1],
                        const V (&/*below*/)[1]) const {
    return here[0];
  }
};

struct LaplacianY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V /*left*/, V centre, V /*right*/, V (&planes)[1]) const {
    planes[0] = centre;
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&here)[1], const V (&below)[1]) const {
    return Magnitude(d, hn::Sub(hn::Add(above[0], below[0]), hn::Add(here[0], here[0])));
  }
};

struct Sharpen4 {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = centre;
    planes[1] = hn::Sub(Times<5>(d, centre), hn::Add(left, right));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return Magnitude(d, hn::Sub(here[1], hn::Add(above[0], below[0])));
  }
};

struct Sharpen8 {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = Sum(left, centre, right);
    planes[1] = hn::Sub(Times<10>(d, centre), planes[0]);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return Magnitude(d, hn::Sub(here[1], hn::Add(above[0], below[0])));
  }
};

// 14/128 stands for a ninth.
struct Uniform {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = Sum(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&here)[1], const V (&below)[1]) const {
    return hn::ShiftRight<7>(Times<14>(d, Sum(above[0], here[0], below[0])));
  }
};

struct MeanOfEight {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = Sum(left, centre, right);
    planes[1] = hn::Add(left, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&above)[2], const V (&here)[2],
                        const V (&below)[2]) const {
    return hn::ShiftRight<3>(Sum(above[0], here[1], below[0]));
  }
};

struct Gaussian {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = Binomial(left, centre, right);
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&above)[1], const V (&here)[1],
                        const V (&below)[1]) const {
    return hn::ShiftRight<4>(Binomial(above[0], here[0], below[0]));
  }
};

struct GradientX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V /*centre*/, V right, V (&planes)[1]) const {
    planes[0] = Absolute(d, hn::Sub(left, right));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&/*above*/)[1], const V (&here)[1],
                        const V (&/*below*/)[1]) const {
    return here[0];
  }
};

struct GradientY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V /*left*/, V centre, V /*right*/, V (&planes)[1]) const {
    planes[0] = centre;
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&/*here*/)[1],
                        const V (&below)[1]) const {
    return Absolute(d, hn::Sub(above[0], below[0]));
  }
};

struct Gradient {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[2]) const {
    planes[0] = centre;
    planes[1] = Absolute(d, hn::Sub(left, right));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[2], const V (&here)[2], const V (&below)[2]) const {
    return hn::Min(hn::Add(here[1], Absolute(d, hn::Sub(above[0], below[0]))), LargestPixel(d));
  }
};

struct Roberts {
  static constexpr std::size_t kPlanes = 2;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V /*left*/, V centre, V right, V (&planes)[2]) const {
    planes[0] = centre;
    planes[1] = right;
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&/*above*/)[2], const V (&here)[2],
                        const V (&below)[2]) const {
    return MagnitudeSum(d, hn::Sub(here[1], below[0]), hn::Sub(here[0], below[1]));
  }
};

// 85/256 stands for a third.
struct UniformX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D d, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = hn::ShiftRight<8>(Times<85>(d, Sum(left, centre, right)));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&/*above*/)[1], const V (&here)[1],
                        const V (&/*below*/)[1]) const {
    return here[0];
  }
};

struct UniformY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V /*left*/, V centre, V /*right*/, V (&planes)[1]) const {
    planes[0] = centre;
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D d, const V (&above)[1], const V (&here)[1], const V (&below)[1]) const {
    return hn::ShiftRight<8>(Times<85>(d, Sum(above[0], here[0], below[0])));
  }
};

struct GaussianX {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V left, V centre, V right, V (&planes)[1]) const {
    planes[0] = hn::ShiftRight<2>(Binomial(left, centre, right));
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&/*above*/)[1], const V (&here)[1],
                        const V (&/*below*/)[1]) const {
    return here[0];
  }
};

struct GaussianY {
  static constexpr std::size_t kPlanes = 1;

  template <class D, class V>
  HWY_INLINE void Horizontal(D /*d*/, V /*left*/, V centre, V /*right*/, V (&planes)[1]) const {
    planes[0] = centre;
  }
  template <class D, class V>
  HWY_INLINE V Vertical(D /*d*/, const V (&above)[1], const V (&here)[1],
                        const V (&below)[1]) const {
    return hn::ShiftRight<2>(Binomial(above[0], here[0], below[0]));
  }
};

}  // namespace lx::convolution::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // LXPIC_CONVOLUTION_FILTERS_RULES_INL_H_
