// Inverses of elements whose magnitude is raised to a level.
// SPDX-License-Identifier: MIT
#include <cstddef>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/note.h"
#include "frame/threads.h"
#include "kvrs/threshold.h"
#include "vector/threshold.h"

namespace kvrs {
namespace {

// 1 / y, where y has at least the level's magnitude and the sign of x. With a level of 0 the inverse of a zero is infinite by
// itself.
template <class T>
struct Inverse {
  static constexpr bool kIsHeavy = true;
  T level;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    // NaN, for a second operand, stays.
    const V raised = hn::Max(hn::Set(d, level), hn::Abs(x));
    return hn::Div(hn::Set(d, T{1}), hn::CopySignToAbs(raised, x));
  }
  template <class D, class V>
  static KVRS_INLINE auto isZero(D d, V x) {
    return hn::Eq(x, hn::Zero(d));
  }
};

template <class T>
struct ComplexInverse {
  static constexpr bool kIsHeavy = true;
  T level;

  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> z) const {
    // A level of -0.0 is one of 0.
    const V l = hn::Abs(hn::Set(d, level)), zero = hn::Zero(d), square = squareOf(z);
    const auto isBelow = hn::Lt(square, hn::Mul(l, l)), isNone = hn::Eq(square, zero);
    const V raised = hn::IfThenElse(isBelow, hn::Mul(hn::Sqrt(square), l), square);
    const V divisor = hn::IfThenElse(isNone, l, raised);
    const V re = hn::IfThenElse(isNone, hn::Set(d, T{1}), z.re);
    const V im = hn::IfThenZeroElse(isNone, hn::Div(hn::Neg(z.im), divisor));
    return {hn::Div(re, divisor), im};
  }
  template <class D, class V>
  static KVRS_INLINE auto isZero(D d, Complex<V> z) {
    return hn::Eq(squareOf(z), hn::Zero(d));
  }

 private:
  template <class V>
  static KVRS_INLINE V squareOf(Complex<V> z) {
    return hn::Add(hn::Mul(z.re, z.re), hn::Mul(z.im, z.im));
  }
};

// With a level of 0.
template <class Op>
struct NotingZeros {
  static constexpr bool kIsHeavy = true;
  Op op;

  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    return hn::Not(Op::isZero(d, x));
  }
  template <class D, class V>
  KVRS_INLINE V quick(D d, V x) const {
    return op(d, x);
  }
  template <class D, class V>
  KVRS_INLINE V any(D d, Notes& notes, V x) const {
    notes.add(d, kvrStatusInvZeroWarn, Op::isZero(d, x));
    return op(d, x);
  }
};

// The warning depends on whether vectors of this length are among those that may be shared among threads.
template <class Op, class T, class S>
KvrStatus inverses(Op op, int longFrom, const S* src, S* dst, int len, T level) {
  KVRS_CHECK(pointers(src, dst), length(len), magnitudeLevel(level));
  const size_t n = static_cast<size_t>(len);
  if (!loop_detail::fitsAddress(n, sizeof(S))) return kvrStatusBadLength;
  const bool met = runSliced(
      n, threadedLength(static_cast<size_t>(longFrom)), kTwoThreads, [=](size_t begin, size_t count) {
        if (level == 0) return mapNoting(NotingZeros<Op>{op}, dst + begin, count, src + begin) != kvrStatusOk;
        return mapElements(op, dst + begin, count, src + begin) != kvrStatusOk;
      });
  if (!met) return kvrStatusOk;
  return len < longFrom ? kvrStatusInvZeroWarn : kvrStatusDivByZeroWarn;
}

constexpr int kLong32f = 8192, kLong32fc = 2048, kLong64f = 2048, kLong64fc = 512;

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsThreshold_LTInv_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f level) noexcept {
  return inverses(Inverse<Kvr32f>{level}, kLong32f, src, dst, len, level);
}
KvrStatus kvrsThreshold_LTInv_32f_I(Kvr32f* srcDst, int len, Kvr32f level) noexcept {
  return inverses(Inverse<Kvr32f>{level}, kLong32f, srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTInv_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f level) noexcept {
  return inverses(ComplexInverse<Kvr32f>{level}, kLong32fc, src, dst, len, level);
}
KvrStatus kvrsThreshold_LTInv_32fc_I(Kvr32fc* srcDst, int len, Kvr32f level) noexcept {
  return inverses(ComplexInverse<Kvr32f>{level}, kLong32fc, srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTInv_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f level) noexcept {
  return inverses(Inverse<Kvr64f>{level}, kLong64f, src, dst, len, level);
}
KvrStatus kvrsThreshold_LTInv_64f_I(Kvr64f* srcDst, int len, Kvr64f level) noexcept {
  return inverses(Inverse<Kvr64f>{level}, kLong64f, srcDst, srcDst, len, level);
}
KvrStatus kvrsThreshold_LTInv_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f level) noexcept {
  return inverses(ComplexInverse<Kvr64f>{level}, kLong64fc, src, dst, len, level);
}
KvrStatus kvrsThreshold_LTInv_64fc_I(Kvr64fc* srcDst, int len, Kvr64f level) noexcept {
  return inverses(ComplexInverse<Kvr64f>{level}, kLong64fc, srcDst, srcDst, len, level);
}
