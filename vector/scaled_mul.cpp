// Scaled integer multiplication of real numbers in 8 and 16 bits.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

template <class D>
using WideLanes = hn::RepartitionToWide<D>;

// The products of 16-bit lanes in two halves.
template <class V>
KVRS_INLINE HighLow<V> product(V a, V b) {
  a = inRegister(a);
  b = inRegister(b);
  return {hn::MulHigh(a, b), hn::Mul(a, b)};
}

struct Times {
  template <class D, class V>
  KVRS_INLINE auto operator()(D, V a, V b) const {
    if constexpr (sizeof(hn::TFromD<D>) == 1) {
      // Even and odd lanes apart, each in 16 bits: odd ones by the high half of the product times 2^16, which spares
      // them the way down.
      const WideLanes<D> dw;
      const auto part = [&](V v, uint16_t bits) { return hn::And(hn::BitCast(dw, v), hn::Set(dw, bits)); };
      return EvenOdd<hn::Vec<WideLanes<D>>>{hn::Mul(part(a, 0x00FF), part(b, 0x00FF)),
                                            hn::MulHigh(part(a, 0xFF00), part(b, 0xFF00))};
    } else {
      return product(a, b);
    }
  }
};

// Products of 16 bits for the scale factors of which the result, or all but a trace of it, is in the high half.

// 16s at 15, the scale of fractions: the processor's product for it rounds halves up, so ties turn odd numbers into
// the even ones below. -1 times -1 wraps to the lowest number, which is no other product.
struct TimesAt15 {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const V lowest = hn::Set(d, std::numeric_limits<int16_t>::min());
    a = inRegister(a);
    b = inRegister(b);
    const V r = hn::MulFixedPoint15(a, b);
    const V low = hn::Mul(a, b);
    const auto tie = hn::Eq(hn::Add(low, low), lowest);
    const auto wraps = hn::Eq(r, lowest);
    if constexpr (kMaskRegisters) {
      const V even = hn::IfThenElse(tie, hn::And(r, hn::Set(d, int16_t{-2})), r);
      return hn::IfThenElse(wraps, hn::Set(d, std::numeric_limits<int16_t>::max()), even);
    } else {
      const hn::RebindToUnsigned<D> du;
      const auto one = hn::ShiftRight<15>(hn::BitCast(du, hn::VecFromMask(d, tie)));
      return hn::Xor(hn::AndNot(hn::BitCast(d, one), r), hn::VecFromMask(d, wraps));
    }
  }
};

// At 16: the high half, plus 1 where the low one rounds up.
struct TimesAt16 {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const hn::RebindToUnsigned<D> du;
    const hn::RebindToSigned<D> di;
    const auto [high, lowBits] = product(a, b);
    const auto low = hn::BitCast(du, lowBits);
    const auto lowered = hn::SaturatedSub(low, hn::AndNot(hn::BitCast(du, high), hn::Set(du, uint16_t{1})));
    return hn::Sub(high, hn::BitCast(d, hn::BroadcastSignBit(hn::BitCast(di, lowered))));
  }
};

// Above 16: the high half, and a sticky bit for the low one.
struct TimesAbove16 {
  ptrdiff_t shift;  // scale factor - 16
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const hn::RebindToUnsigned<D> du;
    const auto [high, low] = product(a, b);
    const auto sticky = hn::Min(hn::BitCast(du, low), hn::Set(du, uint16_t{1}));
    return shiftRightEven(d, high, hn::BitCast(d, sticky), static_cast<int>(shift));
  }
};

// Unsigned a by signed b. A negative b read as unsigned is 2^16 too large, and the product by a * 2^16.
struct UnsignedTimesSigned {
  template <class D, class U, class V>
  KVRS_INLINE auto operator()(D d, U a, V b) const {
    const hn::RebindToUnsigned<D> du;
    const V high = hn::BitCast(d, hn::MulHigh(a, hn::BitCast(du, b)));
    const V excess = hn::And(hn::BitCast(d, a), hn::BroadcastSignBit(b));
    return interleaved(d, HighLow<V>{hn::Sub(high, excess), hn::Mul(hn::BitCast(d, a), b)});
  }
};

// 16s by 16s in 32 bits.
struct TimesWide {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a, V b) const {
    return mulWiden(d, a, b);
  }
};

// The same by 2^(-shift), for scale factors up to 15. Two vectors of results are made at a time, from both halves of
// the products of full vectors.
template <bool kRounded>
struct TimesWideBy {
  ptrdiff_t shift;
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return inWholeBlocks(
        [this](auto whole, auto x, auto y) {
          const auto r = mulWiden(whole, x, y);
          if constexpr (kRounded) return shiftRightEven(whole, r, static_cast<int>(shift));
          if constexpr (!kRounded) return r;
        },
        d, a, b);
  }
  template <class V>
  KVRS_INLINE auto operator()(TwoVectors<Kvr32s>, V a, V b) const {
    const hn::DFromV<V> d;
    return widenedProducts<kRounded>(d, product(a, b), static_cast<int>(shift));
  }
};

// Op's results in 16 bits, extended to 32.
template <class Op>
struct Extended {
  Op op;
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return hn::PromoteTo(d, op(hn::DFromV<V>(), a, b));
  }
};

// 8u by 8u in 16 bits.
struct TimesWidened {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a, V b) const {
    return hn::Mul(hn::PromoteTo(d, a), hn::PromoteTo(d, b));
  }
};

// Products of real numbers: map(op) for the op of the scale factor, of which some are already rounded, and general()
// for the others, which mapScaled tells apart.
template <class T, class Map, class General>
KVRS_INLINE KvrStatus mapTimes(ScaleBounds bounds, int scaleFactor, Map map, General general) {
  if constexpr (sizeof(T) == 2) {
    if (scaleFactor >= 15 && scaleFactor <= bounds.zeroAbove) {
      if (scaleFactor > 16) return map(TimesAbove16{scaleFactor - 16});
      if (scaleFactor == 16) return map(TimesAt16());
      if constexpr (std::is_signed_v<T>) return map(TimesAt15());
    }
  }
  return general();
}

template <class T>
KvrStatus realVectors(const T* a, const T* b, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(a, b, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  return mapTimes<T>(
      bounds, scaleFactor, [=](auto op) { return mapSaturated(op, dst, n, a, b); },
      [=] { return mapScaled(Times(), bounds, scaleFactor, dst, n, a, b); });
}

// In 32 bits by the scale factors that have no kernel of their own. Apart, so that those are not kept waiting.
[[gnu::noinline]] KvrStatus extendedProducts(const Kvr16s* src1, const Kvr16s* src2, Kvr32s* dst, int len,
                                             int scaleFactor) {
  const size_t n = static_cast<size_t>(len);
  return mapTimes<Kvr16s>(
      kMul16s32s, scaleFactor,
      [=](auto op) { return mapElements(Extended<decltype(op)>{op}, dst, n, src1, src2); },
      [=] { return mapScaled(TimesWide(), kMul16s32s, scaleFactor, dst, n, src1, src2); });
}

template <class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  if (val == 0) return zeroInstead(dst, len);
  if (val == 1 && scaleFactor == 0) return copyInstead(src, dst, len);
  return mapTimes<T>(
      bounds, scaleFactor, [=](auto op) { return mapSaturated(thenScalar(op, val), dst, n, src); },
      [=] { return mapScaled(thenScalar(Times(), val), bounds, scaleFactor, dst, n, src); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMul_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                         int scaleFactor) noexcept {
  return realVectors(src1, src2, dst, len, kMul8u, scaleFactor);
}
KvrStatus kvrsMul_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return realVectors<Kvr8u>(srcDst, src, srcDst, len, kMul8u, scaleFactor);
}
KvrStatus kvrsMul_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                          int scaleFactor) noexcept {
  return realVectors(src1, src2, dst, len, kMul16u, scaleFactor);
}
KvrStatus kvrsMul_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return realVectors<Kvr16u>(srcDst, src, srcDst, len, kMul16u, scaleFactor);
}
KvrStatus kvrsMul_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                          int scaleFactor) noexcept {
  return realVectors(src1, src2, dst, len, kMul16s, scaleFactor);
}
KvrStatus kvrsMul_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return realVectors<Kvr16s>(srcDst, src, srcDst, len, kMul16s, scaleFactor);
}
KvrStatus kvrsMul_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) noexcept {
  return vectorVector<Times>(src1, src2, dst, len);
}
KvrStatus kvrsMul_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) noexcept {
  return vectorVector<Times>(srcDst, src, srcDst, len);
}
KvrStatus kvrsMul_8u16u(const Kvr8u* src1, const Kvr8u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<TimesWidened>(src1, src2, dst, len);
}
KvrStatus kvrsMul_16u16s_Sfs(const Kvr16u* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                             int scaleFactor) noexcept {
  return vectorVector<UnsignedTimesSigned>(src1, src2, dst, len, kMul16u16s, scaleFactor);
}
KvrStatus kvrsMul_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr32s* dst, int len,
                             int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  const size_t n = static_cast<size_t>(len);
  const auto wide = reinterpret_cast<Wide<Kvr32s>*>(dst);
  if (scaleFactor == 0) return mapElements(TimesWideBy<false>{0}, wide, n, src1, src2);
  if (scaleFactor > 0 && scaleFactor < 16) {
    return mapElements(TimesWideBy<true>{scaleFactor}, wide, n, src1, src2);
  }
  return extendedProducts(src1, src2, dst, len, scaleFactor);
}

KvrStatus kvrsMulC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kMul8u, scaleFactor);
}
KvrStatus kvrsMulC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul8u, scaleFactor);
}
KvrStatus kvrsMulC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  if (val == 0 || scaleFactor > kMul16u.zeroAbove) return zeroInstead(dst, len);
  return vectorScalar(src, val, dst, len, kMul16u, scaleFactor);
}
KvrStatus kvrsMulC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul16u, scaleFactor);
}
KvrStatus kvrsMulC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kMul16s, scaleFactor);
}
KvrStatus kvrsMulC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul16s, scaleFactor);
}
KvrStatus kvrsMulC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul16s, 0);
}
