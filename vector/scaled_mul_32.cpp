// Scaled integer multiplication of real numbers in 32 bits, and by complex ones: in double precision.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "frame/overlap.h"
#include "frame/rounding.h"
#include "frame/unroll.h"
#include "kvrs/arith_scaled.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

// Real numbers of 32 bits in two vectors of doubles.
template <class D>
using Doubles = Lanes<double, hn::MaxLanes(D()) / 2>;

template <class D, class V = hn::Vec<D>>
struct DoublePair {
  hn::Vec<Doubles<D>> lower, upper;
};

template <class D, class V>
KVRS_INLINE DoublePair<D> toDoubles(D, V v) {
  const Doubles<D> dd;
  return {hn::PromoteTo(dd, hn::LowerHalf(v)), hn::PromoteTo(dd, hn::UpperHalf(hn::Half<D>(), v))};
}

// Added to a number in the range of 32 bits, it leaves the integer that the number is rounded to, in the current mode,
// in the low half of the sum's bits.
constexpr double kIntegerBits = 0x1.8p52;

// Doubles bounded to the range of 32 bits and rounded.
template <class D>
KVRS_INLINE hn::Vec<D> toIntegers(D d, DoublePair<D> x) {
  const Doubles<D> dd;
  const auto bits = [&](auto v) {
    const auto bounded = hn::Min(hn::Max(v, hn::Set(dd, -0x1p31)), hn::Set(dd, 0x1p31 - 1));
    return hn::BitCast(d, hn::Add(bounded, hn::Set(dd, kIntegerBits)));
  };
  return hn::ConcatEven(d, bits(x.upper), bits(x.lower));
}

// Products in double precision, rounded to 53 bits and then scaled.
struct DoubleTimes {
  double scale;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    if constexpr (kInt64Conversions) {
      // The conversion of an exact product is what rounds it. It is bounded ahead of the scale, which is exact.
      const hn::Rebind<double, hn::RepartitionToWide<D>> dd;
      const auto lowest = hn::Set(dd, -0x1p31 / scale), highest = hn::Set(dd, (0x1p31 - 1) / scale);
      const auto bits = [&](auto product) {
        const auto bounded = hn::Min(hn::Max(hn::ConvertTo(dd, product), lowest), highest);
        const auto sum = hn::MulAdd(bounded, hn::Set(dd, scale), hn::Set(dd, kIntegerBits));
        return hn::BitCast(hn::RepartitionToWide<D>(), sum);
      };
      const auto p = mulEvenOdd(d, a, b);
      return lowHalves(d, bits(p.even), bits(p.odd));
    } else {
      const auto scales = hn::Set(Doubles<D>(), scale);
      const DoublePair<D> x = toDoubles(d, a), y = toDoubles(d, b);
      return toIntegers(d, DoublePair<D>{hn::Mul(hn::Mul(x.lower, scales), y.lower),
                                         hn::Mul(hn::Mul(x.upper, scales), y.upper)});
    }
  }
};

// By a scalar that is scaled already.
struct DoubleTimesScalar {
  double scaled;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    const auto val = hn::Set(Doubles<D>(), scaled);
    const DoublePair<D> x = toDoubles(d, a);
    return toIntegers(d, DoublePair<D>{hn::Mul(x.lower, val), hn::Mul(x.upper, val)});
  }
};

// Real a by the pairs of b.
struct DoubleTimesPairs {
  double scale;

  template <class D, class V, class P>
  KVRS_INLINE P operator()(D d, V a, P b) const {
    const hn::RebindToUnsigned<hn::DFromV<V>> du;
    const hn::RepartitionToWide<hn::RebindToUnsigned<D>> dw;
    const P twice = hn::DupEven(hn::BitCast(d, hn::PromoteTo(dw, hn::BitCast(du, a))));
    return DoubleTimes{scale}(d, twice, b);
  }
};

struct DoubleTimesPlus {
  double scale;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b, V c) const {
    const auto scales = hn::Set(Doubles<D>(), scale);
    const DoublePair<D> x = toDoubles(d, a), y = toDoubles(d, b), z = toDoubles(d, c);
    return toIntegers(d, DoublePair<D>{hn::Mul(hn::Add(hn::Mul(x.lower, y.lower), z.lower), scales),
                                       hn::Mul(hn::Add(hn::Mul(x.upper, y.upper), z.upper), scales)});
  }
};

// 2^(-scaleFactor); below the lower bound any integer but 0 leaves the range already at the bound.
double boundedScale(int scaleFactor, ScaleBounds bounds) {
  return powerOfTwo<double>(-std::max(scaleFactor, bounds.signAtOrBelow));
}

// dst = op(src...) for an op in double precision, with the rounding mode forced to nearest.
template <class Op, class D, class... S>
KvrStatus mapDoubles(const Op& op, D* dst, size_t len, const S*... src) {
  return underRounding(Rounding::nearest, [=] { return mapSaturated(op, dst, len, src...); });
}

template <class Op, class D, class A, class B>
KvrStatus realVectors(const A* a, const B* b, D* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor > kMul32s.zeroAbove) return zeroInstead(dst, len);
  return mapDoubles(Op{boundedScale(scaleFactor, kMul32s)}, elements(dst), n, elements(a), elements(b));
}

KvrStatus realScalar(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor > kMul32s.zeroAbove) return zeroInstead(dst, len);
  return mapDoubles(DoubleTimesScalar{val * boundedScale(scaleFactor, kMul32s)}, dst, n, src);
}

// The parts of kvrsMul_Low_32s_Sfs, by scale factor. None rounds.

struct LowShiftedLeft {
  ptrdiff_t n;  // 0 to 31
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return shiftLeftBy(d, hn::Mul(a, b), static_cast<int>(n));
  }
};

struct LowOfShiftedRight {
  ptrdiff_t n;  // 1 to 31
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const hn::RepartitionToWide<hn::RebindToUnsigned<D>> dw;
    // The wanted bits of odd products go where they are put together at once.
    const int count = static_cast<int>(n);
    const auto shifted = [&](auto p) {
      return hn::OddEven(hn::BitCast(d, shiftLeftBy(dw, hn::BitCast(dw, p.odd), 32 - count)),
                         hn::BitCast(d, shiftRightBy(dw, hn::BitCast(dw, p.even), count)));
    };
    if constexpr (kSignedMulEven) {
      return shifted(mulEvenOdd(d, a, b));
    } else {
      const hn::RebindToUnsigned<D> du;
      const V product = shifted(mulEvenOdd(du, hn::BitCast(du, a), hn::BitCast(du, b)));
      return hn::Sub(product, shiftLeftBy(d, unsignedExcess(a, b), 32 - count));
    }
  }
};

struct HighShiftedRight {
  ptrdiff_t n;  // 0 to 30
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const auto p = mulEvenOdd(d, a, b);
    return shiftRightBy(d, highHalves(d, p.even, p.odd), static_cast<int>(n));
  }
};

struct SignOfProduct {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const auto zero = hn::Or(hn::Eq(a, hn::Zero(d)), hn::Eq(b, hn::Zero(d)));
    return hn::IfThenZeroElse(zero, extremeOfSign(d, hn::Xor(a, b)));
  }
};

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMul_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                          int scaleFactor) noexcept {
  return realVectors<DoubleTimes>(src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsMul_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return realVectors<DoubleTimes>(srcDst, src, srcDst, len, scaleFactor);
}
KvrStatus kvrsMul_32s32sc_Sfs(const Kvr32s* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                              int scaleFactor) noexcept {
  return realVectors<DoubleTimesPairs>(src1, src2, dst, len, scaleFactor);
}
KvrStatus kvrsMul_32s32sc_ISfs(const Kvr32s* src, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return realVectors<DoubleTimesPairs>(src, srcDst, srcDst, len, scaleFactor);
}

KvrStatus kvrsMulC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return realScalar(src, val, dst, len, scaleFactor);
}
KvrStatus kvrsMulC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return realScalar(srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsMul_Low_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                              int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (scaleFactor > kMulLow32s.zeroAbove) return zeroInstead(dst, len);
  const auto map = [&](const auto& op) {
    const auto loop = [&](Kvr32s* to, size_t n, const Kvr32s* a, const Kvr32s* b)
                          KVRS_UNROLLED { return mapSaturated(op, to, n, a, b); };
    return inElementOrder(loop, dst, static_cast<size_t>(len), src1, src2);
  };
  if (scaleFactor <= kMulLow32s.signAtOrBelow) return map(SignOfProduct());
  if (scaleFactor <= 0) return map(LowShiftedLeft{-scaleFactor});
  if (scaleFactor < 32) return map(LowOfShiftedRight{scaleFactor});
  return map(HighShiftedRight{scaleFactor - 32});
}
KvrStatus kvrsAddProduct_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* srcDst, int len,
                                 int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, srcDst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (scaleFactor > kAddProduct32s.zeroAbove) return zeroInstead(srcDst, len);
  return mapDoubles(DoubleTimesPlus{boundedScale(scaleFactor, kAddProduct32s)}, srcDst, n, src1, src2,
                    static_cast<const Kvr32s*>(srcDst));
}
