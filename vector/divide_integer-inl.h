// Quotients of integers, by division in floating point.
//
// A quotient n / (d * 2^s) of b-bit operands lies no closer to a tie than 1/(2n) of its value, or 1/(2d) in
// all where n has been multiplied by 2^-s: so a quotient that is correctly rounded to a few bits more than
// that rounds on to the integer that the exact one rounds to, and ties are met exactly. Single precision has
// these bits for 8-bit operands at every scale factor and for 16-bit ones from kSingleFrom on; double
// precision has them for all others but 32-bit quotients scaled up by more than 2^20, which are rounded
// twice.
//
// The scale goes to the divisor, where it is exact. A zero divisor is replaced by one so small that every
// dividend but 0 leaves the range of the result, with its own sign: the rule for x / 0 needs no operation,
// and no division by zero is carried out.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_DIVIDE_INTEGER_INL_H
#define KVRS_VECTOR_DIVIDE_INTEGER_INL_H

#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/rounding.h"
#include "frame/scale.h"
#include "frame/simd.h"
#include "frame/threads.h"
#include "frame/to_integer.h"

namespace kvrs {

enum class QuotientRounding {
  byMode,  // single precision: by the vector unit's mode, whatever it is; double: nearest, which must be set
  zero,    // toward zero
  away,    // to nearest, ties away from zero; the mode must be nearest
};

// The least scale factor at which single precision serves 16-bit operands.
inline constexpr int kSingleFrom = -5;

// Vectors of integers as vectors of Work.
template <class Work, class V>
KVRS_INLINE auto widen(V v) {
  using D = hn::DFromV<V>;
  const hn::Rebind<Work, D> dw;
  const hn::Rebind<int32_t, D> di;
  if constexpr (std::is_same_v<hn::TFromD<D>, int32_t>) {
    return hn::PromoteTo(dw, v);
  } else if constexpr (std::is_same_v<Work, float>) {
    return hn::ConvertTo(dw, hn::PromoteTo(di, v));
  } else {
    return hn::PromoteTo(dw, hn::PromoteTo(di, v));
  }
}

// Rounds to integers of D's type and saturates.
template <QuotientRounding kRounding, class D, class V>
KVRS_INLINE hn::Vec<D> roundTo(D d, V q) {
  using T = hn::TFromD<D>;
  const hn::Rebind<int32_t, D> di;
  if constexpr (std::is_same_v<hn::TFromV<V>, float>) {
    // The conversions saturate, but the narrowing of AVX-512 takes 2^15 for 0.
    if constexpr (sizeof(T) == 1) q = hn::Min(q, hn::Set(hn::DFromV<V>(), std::numeric_limits<T>::max()));
    if constexpr (kRounding == QuotientRounding::byMode) return hn::DemoteTo(d, hn::NearestInt(q));
    if constexpr (kRounding == QuotientRounding::zero) return hn::DemoteTo(d, hn::ConvertTo(di, q));
    if constexpr (kRounding == QuotientRounding::away) return hn::DemoteTo(d, hn::ConvertTo(di, withHalf(q)));
  } else {
    const hn::DFromV<V> dw;
    q = hn::Min(hn::Max(q, hn::Set(dw, std::numeric_limits<T>::lowest())),
                hn::Set(dw, std::numeric_limits<T>::max()));
    hn::Vec<decltype(di)> i;
    if constexpr (kRounding == QuotientRounding::byMode) {
      // 1.5 * 2^52 leaves no bits for a fraction, and the integer in the lower half.
      const auto sum = hn::Add(q, hn::Set(dw, 0x1.8p52));
      i = hn::BitCast(di, hn::TruncateTo(hn::Rebind<uint32_t, D>(),
                                         hn::BitCast(hn::RebindToUnsigned<decltype(dw)>(), sum)));
    } else {
      i = hn::DemoteTo(di, kRounding == QuotientRounding::zero ? q : withHalf(q));
    }
    if constexpr (std::is_same_v<T, int32_t>) {
      return i;
    } else {
      return hn::DemoteTo(d, i);
    }
  }
}

// dividend / (divisor * scale)
template <class Work, QuotientRounding kRounding>
class Quotient {
 public:
  explicit Quotient(double scale) : scale_(static_cast<Work>(scale)) {}

  template <class D, class V1, class V2>
  KVRS_INLINE hn::Vec<D> operator()(D d, V1 divisor, V2 dividend) {
    const hn::Rebind<Work, D> dw;
    const auto scaled = hn::Mul(widen<Work>(divisor), hn::Set(dw, scale_));
    const auto isZero = hn::Eq(scaled, hn::Zero(dw));
    met_ |= !hn::AllFalse(dw, isZero);
    const auto divideBy = hn::IfThenElse(isZero, hn::Set(dw, kReplacement), scaled);
    return roundTo<kRounding>(d, hn::Div(widen<Work>(dividend), divideBy));
  }

  bool metZeroDivisor() const { return met_; }

 private:
  // Quotients by it are at least 2^16, or 2^64; single ones stay within the range of 32-bit integers or just
  // above it.
  static constexpr Work kReplacement = std::is_same_v<Work, float> ? Work(0x1p-16) : Work(0x1p-64);

  Work scale_;
  bool met_ = false;
};

// What is left when no quotient can round to anything but 0: the rule for x / 0.
class QuotientByZeroOnly {
 public:
  template <class D, class V1, class V2>
  KVRS_INLINE hn::Vec<D> operator()(D d, V1 divisor, V2 dividend) {
    using T = hn::TFromD<D>;
    const hn::DFromV<V1> d1;
    const auto isZero = hn::Eq(divisor, hn::Zero(d1));
    if (hn::AllFalse(d1, isZero)) return hn::Zero(d);
    met_ = true;
    hn::Vec<D> n;
    if constexpr (sizeof(hn::TFromV<V2>) > sizeof(T)) {
      n = hn::DemoteTo(d, dividend);  // saturates, so that its sign and zero stay
    } else {
      n = dividend;
    }
    const auto zero = hn::Zero(d);
    auto extreme = hn::Set(d, std::numeric_limits<T>::max());
    if constexpr (std::is_signed_v<T>) {
      extreme = hn::IfThenElse(hn::Lt(n, zero), hn::Set(d, std::numeric_limits<T>::lowest()), extreme);
    }
    extreme = hn::IfThenZeroElse(hn::Eq(n, zero), extreme);
    return hn::IfThenElseZero(hn::RebindMask(d, isZero), extreme);
  }

  bool metZeroDivisor() const { return met_; }

 private:
  bool met_ = false;
};

template <class Op, class T>
class WithDivisor {
 public:
  WithDivisor(Op op, T divisor) : op_(op), divisor_(divisor) {}

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V dividend) {
    return op_(d, hn::Set(hn::Rebind<T, D>(), divisor_), dividend);
  }

  bool metZeroDivisor() const { return op_.metZeroDivisor(); }

 private:
  Op op_;
  T divisor_;
};

template <class Op, class T>
class WithDividend {
 public:
  WithDividend(Op op, T dividend) : op_(op), dividend_(dividend) {}

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V divisor) {
    return op_(d, divisor, hn::Set(hn::Rebind<T, D>(), dividend_));
  }

  bool metZeroDivisor() const { return op_.metZeroDivisor(); }

 private:
  Op op_;
  T dividend_;
};

// When a family's quotients saturate by their signs alone, when they are all 0, and from which length and on
// how many threads at the most its work is shared.
struct Division {
  int signBelow;
  int zeroAbove;
  size_t threadedFrom;  // elements
  int mostThreads = kTwoThreads;
};

// Runs `op` over whole vectors; the status tells whether a divisor was zero.
template <class Work, class D, class Op, class... S>
KvrStatus divideVectors(const Division& rule, const Op& op, D* dst, int len, const S*... src) {
  KVRS_CHECK(length(len, dst, src...));
  const bool met = runSliced(
      static_cast<size_t>(len), rule.threadedFrom, rule.mostThreads, [=](size_t begin, size_t count) {
        return mapKeeping<Work>(op, dst + begin, count, (src + begin)...).metZeroDivisor();
      });
  return met ? kvrStatusDivByZeroWarn : kvrStatusOk;
}

template <class... T>
constexpr size_t widestBytes() {
  size_t widest = 0;
  ((widest = sizeof(T) > widest ? sizeof(T) : widest), ...);
  return widest;
}

// dst[i] = dividend / (divisor * 2^scaleFactor). `make` turns an operation on (divisor, dividend) into one on
// the sources. Work in single precision may follow the vector unit's mode; work in double rounds to nearest.
template <QuotientRounding kRounding, class D, class Make, class... S>
KvrStatus divideIntegers(const Division& rule, int scaleFactor, Make make, D* dst, int len, const S*... src) {
  if (scaleFactor > rule.zeroAbove) {
    return divideVectors<D>(rule, make(QuotientByZeroOnly()), dst, len, src...);
  }
  constexpr size_t widest = widestBytes<D, S...>();
  if constexpr (widest == 1) {
    // Just beyond the bound all quotients saturate, and single ones still fit into 32-bit integers.
    const int exponent = scaleFactor < rule.signBelow ? rule.signBelow - 1 : scaleFactor;
    const Quotient<float, kRounding> op(powerOfTwo<double>(exponent));
    return divideVectors<float>(rule, make(op), dst, len, src...);
  } else {
    const double scale = powerOfTwo<double>(scaleFactor < rule.signBelow ? -64 : scaleFactor);
    if constexpr (widest == 2) {
      if (scaleFactor >= kSingleFrom) {
        return divideVectors<float>(rule, make(Quotient<float, kRounding>(scale)), dst, len, src...);
      }
    }
    return underRounding(Rounding::nearest, [=] {
      return divideVectors<double>(rule, make(Quotient<double, kRounding>(scale)), dst, len, src...);
    });
  }
}

}  // namespace kvrs

#endif
