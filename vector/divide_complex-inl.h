// Quotients of 16-bit complex integers, in double precision. Products of parts and their sums are exact
// there.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_DIVIDE_COMPLEX_INL_H
#define KVRS_VECTOR_DIVIDE_COMPLEX_INL_H

#include <limits>

#include "vector/divide_integer-inl.h"

namespace kvrs {

// n / (d * scale) = n * conj(d) / (|d|^2 * scale), rounded to nearest. Each part is one division of exact
// numbers, so it rounds on to the integer that the exact quotient rounds to. 0 where d is 0.
class ComplexQuotient {
 public:
  explicit ComplexQuotient(double scale) : scale_(scale) {}

  template <class D, class V>
  KVRS_INLINE Complex<hn::Vec<D>> operator()(D d, Complex<V> divisor, Complex<V> dividend) {
    const hn::Rebind<double, D> dw;
    const auto ar = widen<double>(divisor.re), ai = widen<double>(divisor.im);
    const auto br = widen<double>(dividend.re), bi = widen<double>(dividend.im);
    const auto square = hn::Add(hn::Mul(ar, ar), hn::Mul(ai, ai));
    const auto isZero = hn::Eq(square, hn::Zero(dw));
    met_ |= !hn::AllFalse(dw, isZero);
    // 0 / infinity.
    const auto divideBy = hn::IfThenElse(isZero, hn::Set(dw, std::numeric_limits<double>::infinity()),
                                         hn::Mul(square, hn::Set(dw, scale_)));
    const auto re = hn::Add(hn::Mul(br, ar), hn::Mul(bi, ai));
    const auto im = hn::Sub(hn::Mul(bi, ar), hn::Mul(br, ai));
    return {roundTo<QuotientRounding::byMode>(d, hn::Div(re, divideBy)),
            roundTo<QuotientRounding::byMode>(d, hn::Div(im, divideBy))};
  }

  bool metZeroDivisor() const { return met_; }

 private:
  double scale_;
  bool met_ = false;
};

// (0, 0), whatever the dividend.
class ComplexZeroQuotient {
 public:
  template <class D, class V>
  KVRS_INLINE Complex<hn::Vec<D>> operator()(D d, Complex<V> divisor) {
    met_ |= !hn::AllFalse(d, hn::Eq(hn::Or(divisor.re, divisor.im), hn::Zero(d)));
    return {hn::Zero(d), hn::Zero(d)};
  }

  bool metZeroDivisor() const { return met_; }

 private:
  bool met_ = false;
};

}  // namespace kvrs

#endif
