// Division of floats and of complex floats.
// SPDX-License-Identifier: MIT
#include <limits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/note.h"
#include "frame/threads.h"
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

struct Quotient {
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
  static KVRS_INLINE V any(D d, Notes& notes, V divisor, V dividend) {
    const auto zero = hn::Zero(d);
    const auto usual = isUsual(d, divisor, dividend);
    notes.add(d, kvrStatusDivByZeroWarn, hn::Not(usual));
    const auto isInfinite = hn::And(hn::Eq(divisor, zero), hn::Gt(hn::Abs(dividend), zero));
    const auto infinity = hn::Set(d, std::numeric_limits<hn::TFromD<D>>::infinity());
    const auto replaced = hn::IfThenElse(isInfinite, hn::CopySignToAbs(infinity, dividend), undefined(d));
    // In a register: clang would choose after the division, by the divisor as it is, and raise the flag.
    const auto divideBy = inRegister(hn::IfThenElse(usual, divisor, hn::Set(d, hn::TFromD<D>(1))));
    return hn::IfThenElse(usual, hn::Div(dividend, divideBy), replaced);
  }
};

template <class T>
struct QuotientOf {
  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V divisor) const {
    return Quotient::isUsual(d, divisor, divisor);
  }
  template <class D, class V>
  KVRS_INLINE V quick(D d, V divisor) const {
    return Quotient::quick(d, divisor, hn::Set(d, dividend));
  }
  template <class D, class V>
  KVRS_INLINE V any(D d, Notes& notes, V divisor) const {
    return Quotient::any(d, notes, divisor, hn::Set(d, dividend));
  }

  T dividend;
};

struct ComplexQuotient {
  static constexpr bool kIsHeavy = true;

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
  static KVRS_INLINE Complex<V> any(D d, Notes& notes, Complex<V> divisor, Complex<V> dividend) {
    const auto isZero = hn::Eq(square(divisor), hn::Zero(d));
    notes.add(d, kvrStatusDivByZeroWarn, isZero);
    const auto one = hn::Set(d, hn::TFromD<D>(1));
    const auto inverse = hn::Div(one, inRegister(hn::IfThenElse(isZero, one, square(divisor))));
    const auto q = times(inverse, divisor, dividend);
    return {hn::IfThenElse(isZero, undefined(d), q.re), hn::IfThenElse(isZero, undefined(d), q.im)};
  }
};

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus divideInSlices(const S*... src, D* dst, int len, Op op) {
  KVRS_CHECK(length(len, dst, src...));
  const bool met = runSlicesOfTeam(static_cast<size_t>(len), kTwoThreads, [=](size_t begin, size_t count) {
    return mapNoting(op, dst + begin, count, (src + begin)...) != kvrStatusOk;
  });
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

template <class D, class Op, class... S>
KVRS_INLINE KvrStatus divideElements(const Op& op, size_t threadedFrom, D* dst, int len, const S*... src) {
  if (__builtin_expect(static_cast<size_t>(len) >= threadedFrom, false)) {
    return divideInSlices<D, Op, S...>(src..., dst, len, op);
  }
  return mapNoting(op, dst, static_cast<size_t>(len), src...);
}

template <class Op, class T>
KVRS_INLINE KvrStatus divide(const Op& op, size_t threadedFrom, const T* src1, const T* src2, T* dst,
                             int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return divideElements(op, threadedFrom, dst, len, src1, src2);
}

KVRS_INLINE KvrStatus divideScalar(Kvr32f val, const Kvr32f* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return divideElements(QuotientOf<Kvr32f>{val}, threadedLength(4096), dst, len, src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDiv_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return divide(Quotient(), threadedLength(4096), src1, src2, dst, len);
}
KvrStatus kvrsDiv_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return divide(Quotient(), threadedLength(4096), src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return divide(Quotient(), threadedLength(1024), src1, src2, dst, len);
}
KvrStatus kvrsDiv_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return divide(Quotient(), threadedLength(1024), src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return divide(ComplexQuotient(), threadedLength(1024), src1, src2, dst, len);
}
KvrStatus kvrsDiv_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return divide(ComplexQuotient(), threadedLength(1024), src, srcDst, srcDst, len);
}
KvrStatus kvrsDiv_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return divide(ComplexQuotient(), threadedLength(1024), src1, src2, dst, len);
}
KvrStatus kvrsDiv_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return divide(ComplexQuotient(), threadedLength(1024), src, srcDst, srcDst, len);
}
KvrStatus kvrsDivCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return divideScalar(val, src, dst, len);
}
KvrStatus kvrsDivCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return divideScalar(val, srcDst, srcDst, len);
}
