// Division of floats and of complex floats.
// SPDX-License-Identifier: MIT
#include <limits>

#include "frame/check.h"
#include "frame/threads.h"
#include "frame/unroll.h"
#include "frame/wide_loop.h"
#include "kvrs/divide.h"

namespace kvrs {
namespace {

// What is stored for a quotient that has no value: all bits of the fraction but the first.
constexpr uint32_t undefinedBits(float) {
  return 0x7FBFFFFF;
}
constexpr uint64_t undefinedBits(double) {
  return 0x7FF7FFFFFFFFFFFF;
}

template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> undefined(D d) {
  return hn::BitCast(d, hn::Set(hn::RebindToUnsigned<D>(), undefinedBits(T())));
}

// Each operation has three members: `isUsual` tells which lanes have nothing special about them, `quick` is the result
// where all are usual, and `any` the result everywhere, which also sets `met` where a division by zero or NaN was met.
// kTurn vectors are asked together.

struct Quotient {
  static constexpr int kTurn = 4;

  // The divisor is neither zero nor NaN: -|divisor| < 0, which takes fewer operations than 0 < |divisor| where
  // the comparison overwrites its first operand. The sign is made in a register, since position-independent code
  // has to find its own address first to load it in a 32-bit process.
  template <class D, class V>
  static KVRS_INLINE auto isUsual(D d, V divisor, V) {
    const hn::RebindToSigned<D> di;
    const auto ones = inRegister(hn::Set(di, -1));
    const auto sign = hn::BitCast(d, hn::ShiftLeft<8 * sizeof(hn::TFromD<D>) - 1>(ones));
    return hn::Lt(hn::Or(divisor, sign), hn::Zero(d));
  }

  template <class D, class V>
  static KVRS_INLINE V quick(D, V divisor, V dividend) {
    return hn::Div(dividend, divisor);
  }

  template <class D, class V>
  static KVRS_INLINE V any(D d, bool& met, V divisor, V dividend) {
    const auto zero = hn::Zero(d);
    const auto usual = isUsual(d, divisor, dividend);
    met |= !hn::AllTrue(d, usual);
    const auto isInfinite = hn::And(hn::Eq(divisor, zero), hn::Gt(hn::Abs(dividend), zero));
    const auto infinity = hn::Set(d, std::numeric_limits<hn::TFromD<D>>::infinity());
    const auto replaced = hn::IfThenElse(isInfinite, hn::CopySignToAbs(infinity, dividend), undefined(d));
    const auto divideBy = hn::IfThenElse(usual, divisor, hn::Set(d, hn::TFromD<D>(1)));
    return hn::IfThenElse(usual, hn::Div(dividend, divideBy), replaced);
  }
};

template <class T>
struct QuotientOf {
  static constexpr int kTurn = Quotient::kTurn;

  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V divisor) const {
    return Quotient::isUsual(d, divisor, divisor);
  }
  template <class D, class V>
  KVRS_INLINE V quick(D d, V divisor) const {
    return Quotient::quick(d, divisor, hn::Set(d, dividend));
  }
  template <class D, class V>
  KVRS_INLINE V any(D d, bool& met, V divisor) const {
    return Quotient::any(d, met, divisor, hn::Set(d, dividend));
  }

  T dividend;
};

struct ComplexQuotient {
  static constexpr int kTurn = 1;

  template <class V>
  static KVRS_INLINE V square(Complex<V> v) {
    return hn::Add(hn::Mul(v.re, v.re), hn::Mul(v.im, v.im));
  }

  template <class V>
  static KVRS_INLINE Complex<V> times(V inverse, Complex<V> divisor, Complex<V> dividend) {
    const auto re = hn::Add(hn::Mul(dividend.re, divisor.re), hn::Mul(dividend.im, divisor.im));
    const auto im = hn::Sub(hn::Mul(dividend.im, divisor.re), hn::Mul(dividend.re, divisor.im));
    return {hn::Mul(re, inverse), hn::Mul(im, inverse)};
  }

  template <class D, class V>
  static KVRS_INLINE auto isUsual(D d, Complex<V> divisor, Complex<V>) {
    return hn::Gt(square(divisor), hn::Zero(d));
  }

  template <class D, class V>
  static KVRS_INLINE Complex<V> quick(D d, Complex<V> divisor, Complex<V> dividend) {
    return times(hn::Div(hn::Set(d, hn::TFromD<D>(1)), square(divisor)), divisor, dividend);
  }

  template <class D, class V>
  static KVRS_INLINE Complex<V> any(D d, bool& met, Complex<V> divisor, Complex<V> dividend) {
    const auto isZero = hn::Eq(square(divisor), hn::Zero(d));
    met |= !hn::AllFalse(d, isZero);
    const auto one = hn::Set(d, hn::TFromD<D>(1));
    const auto inverse = hn::Div(one, hn::IfThenElse(isZero, one, square(divisor)));
    const auto q = times(inverse, divisor, dividend);
    return {hn::IfThenElse(isZero, undefined(d), q.re), hn::IfThenElse(isZero, undefined(d), q.im)};
  }
};

// `any`, as an operation of mapWide.
template <class Op>
struct Any {
  template <class D, class... V>
  KVRS_INLINE auto operator()(D d, V... v) {
    return op.any(d, met, v...);
  }

  Op op;
  bool met = false;
};

template <class M>
KVRS_INLINE M allOf(M mask) {
  return mask;
}
template <class M, class... Rest>
KVRS_INLINE M allOf(M mask, Rest... rest) {
  return hn::And(mask, allOf(rest...));
}

// dst[i] = op(src[i]...) up to a turn with an unusual divisor; how many elements these are, at most `len`. The last
// turn's blocks may lie over each other, but not over those before it. All pointers move: s8 has registers for them and
// for what is left, but not for an index and a bound as well.
template <class D, class Op, class... S>
KVRS_INLINE ptrdiff_t divideUsual(const Op& op, D* dst, const ptrdiff_t len, const S*... src) {
  constexpr ptrdiff_t N = loop_detail::kBlock<D, S...>, kTurn = Op::kTurn;
  const ElementLanes<D, N> d;
  const auto with = [&](auto use, ptrdiff_t at)
                        KVRS_UNROLLED { return use(Element<S>::load(ElementLanes<S, N>(), src + at)...); };
  const auto isUsual = [&](auto... v) KVRS_UNROLLED { return op.isUsual(d, v...); };
  const auto quotient = [&](auto... v) KVRS_UNROLLED { return op.quick(d, v...); };
  const auto turn = [&](auto... at) KVRS_UNROLLED {
    if (__builtin_expect(!hn::AllTrue(d, allOf(with(isUsual, at)...)), false)) return false;
    const auto store = [&](auto... q) KVRS_UNROLLED { (Element<D>::store(q, d, dst + at), ...); };
    store(with(quotient, at)...);
    return true;
  };
  ptrdiff_t left = len;
  const auto advance = [&](ptrdiff_t by) KVRS_UNROLLED {
    ((src += by), ...);
    dst += by;
    left -= by;
  };
  if (left < N) return 0;
  if constexpr (kTurn == 4) {
    for (; left >= 5 * N; advance(4 * N))
      if (!turn(Index<0>(), Index<N>(), Index<2 * N>(), Index<3 * N>())) return len - left;
  }
  for (; left > (kTurn == 4 ? 4 : 2) * N; advance(N))
    if (!turn(Index<0>())) return len - left;
  if (kTurn == 4 && left > 2 * N)
    return turn(Index<0>(), Index<N>(), left - 2 * N, left - N) ? len : len - left;
  return turn(Index<0>(), left - N) ? len : len - left;
}

// For elements the next of which are unusual: takes so many of these the long way before it tries again.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus divideUnusual(const S*... src, D* dst, ptrdiff_t len, Op op) {
  constexpr ptrdiff_t kUnusual = 16 * loop_detail::kBlock<D, S...>;
  bool met = false;
  for (ptrdiff_t i = 0; i < len; i += divideUsual(op, dst + i, len - i, (src + i)...)) {
    const ptrdiff_t count = len - i < kUnusual ? len - i : kUnusual;
    met |= mapWide<LaneOf<D>>(Any<Op>{op}, dst + i, static_cast<size_t>(count), (src + i)...).met;
    i += count;
  }
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

// A function of its own that calls nothing but at its end: no frame, nothing to save.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus divideInOne(const S*... src, D* dst, ptrdiff_t len, Op op) {
  const ptrdiff_t i = divideUsual(op, dst, len, src...);
  if (__builtin_expect(i == len, true)) return kvrStatusOk;
  return divideUnusual<D, Op, S...>((src + i)..., dst + i, len - i, op);
}

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus divideInSlices(const S*... src, D* dst, size_t len, Op op) {
  const bool met = runSlicesOfTeam(len, kTwoThreads, [=](size_t begin, size_t count) {
    return divideInOne<D, Op, S...>((src + begin)..., dst + begin, static_cast<ptrdiff_t>(count), op) !=
           kvrStatusOk;
  });
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

template <class D, class Op, class... S>
KVRS_INLINE KvrStatus divideElements(const Op& op, int threadedFrom, D* dst, int len, const S*... src) {
  if (__builtin_expect(len >= threadedFrom * int{kThreadedLengthFactor}, false)) {
    return divideInSlices<D, Op, S...>(src..., dst, static_cast<size_t>(len), op);
  }
  return divideInOne<D, Op, S...>(src..., dst, len, op);
}

template <class Op, class T>
KVRS_INLINE KvrStatus divide(const Op& op, int threadedFrom, const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return divideElements(op, threadedFrom, dst, len, src1, src2);
}

KVRS_INLINE KvrStatus divideScalar(Kvr32f val, const Kvr32f* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return divideElements(QuotientOf<Kvr32f>{val}, 4096, dst, len, src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDiv_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return divide(Quotient(), 4096, src1, src2, dst, len);
}
KvrStatus kvrsDiv_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return divide(Quotient(), 4096, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return divide(Quotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return divide(Quotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return divide(ComplexQuotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return divide(ComplexQuotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return divide(ComplexQuotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return divide(ComplexQuotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDivCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return divideScalar(val, src, dst, len);
}
KvrStatus kvrsDivCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return divideScalar(val, srcDst, srcDst, len);
}
