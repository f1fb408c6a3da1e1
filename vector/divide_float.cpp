// Division of floats and of complex floats.
// SPDX-License-Identifier: MIT
#include <bit>
#include <limits>

#include "frame/check.h"
#include "frame/threads.h"
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

// Neither zero nor NaN: -|divisor| < 0, which takes fewer operations than 0 < |divisor| where the comparison
// overwrites its first operand.
template <class D, class V>
KVRS_INLINE auto isUsual(D d, V divisor) {
  return hn::Lt(hn::Or(divisor, hn::SignBit(d)), hn::Zero(d));
}

// The quotients of a block that holds an unusual divisor. Out of line, as it is rarely called and would take
// registers from the loop.
template <class D, class V>
[[gnu::noinline, gnu::cold]] V quotientOfAny(D d, V divisor, V dividend) {
  const auto zero = hn::Zero(d);
  const auto usual = isUsual(d, divisor);
  const auto isInfinite = hn::And(hn::Eq(divisor, zero), hn::Gt(hn::Abs(dividend), zero));
  const auto infinity = hn::Set(d, std::numeric_limits<hn::TFromD<D>>::infinity());
  const auto replaced = hn::IfThenElse(isInfinite, hn::CopySignToAbs(infinity, dividend), undefined(d));
  const auto divideBy = hn::IfThenElse(usual, divisor, hn::Set(d, hn::TFromD<D>(1)));
  return hn::IfThenElse(usual, hn::Div(dividend, divideBy), replaced);
}

struct Quotient {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V divisor, V dividend) {
    if (__builtin_expect(hn::AllTrue(d, isUsual(d, divisor)), true)) return hn::Div(dividend, divisor);
    met = true;
    return quotientOfAny(d, divisor, dividend);
  }

  // Where vectors are narrow, a division is so short that a question for each of them shows.
  template <class D, class V>
  requires(kVectorBytes == 16) KVRS_INLINE Both<V> both(D d, Both<V> divisor, Both<V> dividend) {
    const auto usual = hn::And(isUsual(d, divisor.first), isUsual(d, divisor.second));
    if (__builtin_expect(hn::AllTrue(d, usual), true)) {
      return {hn::Div(dividend.first, divisor.first), hn::Div(dividend.second, divisor.second)};
    }
    met = true;
    return {quotientOfAny(d, divisor.first, dividend.first),
            quotientOfAny(d, divisor.second, dividend.second)};
  }

  bool met = false;
};

template <class T>
struct QuotientOf {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V divisor) {
    return op(d, divisor, hn::Set(d, dividend));
  }

  template <class D, class V>
  requires(kVectorBytes == 16) KVRS_INLINE Both<V> both(D d, Both<V> divisor) {
    return op.both(d, divisor, Both<V>{hn::Set(d, dividend), hn::Set(d, dividend)});
  }

  T dividend;
  Quotient op = {};
};

struct ComplexQuotient {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> divisor, Complex<V> dividend) {
    const auto square = hn::Add(hn::Mul(divisor.re, divisor.re), hn::Mul(divisor.im, divisor.im));
    const auto isZero = hn::Eq(square, hn::Zero(d));
    const auto one = hn::Set(d, hn::TFromD<D>(1));
    const auto re = hn::Add(hn::Mul(dividend.re, divisor.re), hn::Mul(dividend.im, divisor.im));
    const auto im = hn::Sub(hn::Mul(dividend.im, divisor.re), hn::Mul(dividend.re, divisor.im));
    if (__builtin_expect(hn::AllFalse(d, isZero), true)) {
      const auto inverse = hn::Div(one, square);
      return {hn::Mul(re, inverse), hn::Mul(im, inverse)};
    }
    met = true;
    const auto inverse = hn::Div(one, hn::IfThenElse(isZero, one, square));
    return {hn::IfThenElse(isZero, undefined(d), hn::Mul(re, inverse)),
            hn::IfThenElse(isZero, undefined(d), hn::Mul(im, inverse))};
  }

  bool met = false;
};

template <class Work, class Op, class T>
KvrStatus divide(Op op, size_t threadedFrom, const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  const auto slice = [=](size_t begin, size_t count) {
    return mapWide<Work>(op, dst + begin, count, src1 + begin, src2 + begin).met;
  };
  const bool met =
      runSliced(static_cast<size_t>(len), threadedFrom * kThreadedLengthFactor, kTwoThreads, slice);
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

KvrStatus divideScalar(Kvr32f val, const Kvr32f* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto slice = [=](size_t begin, size_t count) {
    return mapWide<Kvr32f>(QuotientOf<Kvr32f>{val}, dst + begin, count, src + begin).op.met;
  };
  const bool met = runSliced(static_cast<size_t>(len), 4096 * kThreadedLengthFactor, kTwoThreads, slice);
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDiv_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return divide<Kvr32f>(Quotient(), 4096, src1, src2, dst, len);
}
KvrStatus kvrsDiv_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return divide<Kvr32f>(Quotient(), 4096, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return divide<Kvr64f>(Quotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return divide<Kvr64f>(Quotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return divide<Kvr32f>(ComplexQuotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return divide<Kvr32f>(ComplexQuotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return divide<Kvr64f>(ComplexQuotient(), 1024, src1, src2, dst, len);
}
KvrStatus kvrsDiv_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return divide<Kvr64f>(ComplexQuotient(), 1024, src, srcDst, srcDst, len);
}
KvrStatus kvrsDivCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return divideScalar(val, src, dst, len);
}
KvrStatus kvrsDivCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return divideScalar(val, srcDst, srcDst, len);
}
