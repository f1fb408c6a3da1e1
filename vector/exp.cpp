// The exponential of floats.
//
// In single precision its steps are told by the contract. In double precision, after x = n ln 2 + r with |r| <= ln 2 / 2:
// e^r = 1 + (r + r^2 P(r)) with P of degree 9 (Remez, relative error 2^-56.8), and then 2^n, in two factors where the module
// has no instruction for it, so that results may be subnormal.
// SPDX-License-Identifier: MIT
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/masked_control.h"
#include "frame/powers_of_2.h"
#include "frame/rounding.h"
#include "frame/unaligned.h"
#include "kvrs/exponential.h"

namespace kvrs {
namespace {

// The limits of single precision: above the first one results are infinite, up to the second one they are 0.
constexpr Kvr32f kHighest = 0x1.5c6666p+6f;  // 87.0999984741211
constexpr Kvr32f kLowest = -0x1.5d5894p+6f;  // -87.33650207519531

struct Exponential32f {
  static constexpr bool kIsHeavy = true;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    const hn::RebindToSigned<D> di;
    const auto set = [d](float c) __attribute__((always_inline)) {
      return hn::Set(d, c);
    };
    // A big number without the sign of x rounds to the same integers, and leaves them in the lowest bits.
    const V whole = hn::Add(hn::Mul(x, set(1.44269502f)), set(12582912.0f)),
            n = hn::Sub(whole, set(12582912.0f));
    // The first product is exact. The others are rounded by themselves in all modules, up to the estimate.
    const V upper = hn::MulAdd(n, set(-0.693359375f), x);
    const V r = hn::Add(upper, hn::Mul(n, set(0.00021219444170128554f)));
    const V s = hn::Add(hn::Mul(r, r), set(10.0f));
    const V p = hn::Mul(r, hn::Add(s, set(50.0f))), q = hn::Mul(set(12.0f), s);
    const V divisor = hn::Sub(q, p), estimate = hn::ApproximateReciprocal(divisor);
    const V inverse = hn::Mul(estimate, hn::NegMulAdd(divisor, estimate, set(2.0f)));
    const V power = hn::Mul(hn::Add(q, p), inverse);  // e^r
    const auto exponent = hn::ShiftLeft<23>(hn::BitCast(di, whole));
    // Between the limits 2^n times a number next to 1 is the number with n more in its exponent; the lower limit may as well
    // be the other's opposite here.
    const auto isUsual = hn::Le(hn::Abs(x), set(kHighest));
    if (__builtin_expect(hn::AllTrue(d, isUsual), true))
      return hn::BitCast(d, hn::Add(hn::BitCast(di, power), exponent));
    const V y = hn::Mul(power, hn::BitCast(d, hn::Add(exponent, hn::BitCast(di, set(1.0f)))));
    // As integers: positive NaN lies above infinity. A negative NaN is what the arithmetic has made of it.
    const auto bits = hn::BitCast(di, x), infinity = hn::Set(di, 0x7F800000),
               quietNaN = hn::Set(di, 0x7FC00000);
    const auto high = hn::IfThenElse(hn::Gt(bits, infinity), quietNaN, infinity);
    const auto isAbove = hn::Gt(bits, hn::Set(di, std::bit_cast<int32_t>(kHighest)));
    const auto notBelow = hn::IfThenElse(isAbove, high, hn::BitCast(di, y));
    return hn::IfThenZeroElse(hn::Le(x, set(kLowest)), hn::BitCast(d, notBelow));
  }
};

// The last elements, which fill no vector of four.
Kvr32f exponentialOfLast(Kvr32f x) {
  if (std::isnan(x)) return std::bit_cast<Kvr32f>(std::signbit(x) ? 0xFFC00000 : 0x7FC00000);
  if (x >= kHighest) return std::numeric_limits<Kvr32f>::infinity();
  if (x <= kLowest) return 0;
  return static_cast<Kvr32f>(std::exp(static_cast<long double>(x)));
}

KvrStatus exponential(const Kvr32f* src, Kvr32f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), lengthOf<Kvr32f>(len));
  const int last = len & 3;
  const KvrStatus status = mapElements(Exponential32f(), dst, static_cast<size_t>(len - last), src);
  for (int i = len - last; i < len; ++i) {
    unaligned::put(exponentialOfLast(unaligned::get(src + i)), dst + i);
  }
  clearExceptions(kInvalidOperation | kUnderflow);
  return status;
}

// Of doubles, or of singles.
struct Exponential64f {
  static constexpr bool kIsHeavy = true;
  static constexpr double kLog2E = 0x1.71547652b82fep+0;
  static constexpr double kLn2 = 0x1.62e42fefa3p-1, kLn2Low = 0x1.3de6af278ece6p-42;
  static constexpr double kP[] = {0x1.0000000000009p-1,  0x1.5555555555558p-3,  0x1.55555555503e3p-5,
                                  0x1.111111110f803p-7,  0x1.6c16c18601e8cp-10, 0x1.a01a01b00c2c6p-13,
                                  0x1.a01993b37a9cap-16, 0x1.71ddf6b3f10d1p-19, 0x1.28b410d73d492p-22,
                                  0x1.af632ad6abee8p-26};

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V x) const {
    if constexpr (sizeof(hn::TFromV<V>) == 4) {
      return of(d, hn::PromoteTo(d, x));
    } else {
      return of(d, x);
    }
  }

  template <class D, class V>
  static KVRS_INLINE V of(D d, V x) {
    const auto set = [d](double c) __attribute__((always_inline)) {
      return hn::Set(d, c);
    };
    // Beyond these everything is infinite or 0. NaN, for a second operand, stays.
    const V bounded = hn::Max(set(-746), hn::Min(set(710), x));
    // Lower bits of the sum: n as an integer.
    const V whole = hn::MulAdd(bounded, set(kLog2E), set(0x1.8p52)), n = hn::Sub(whole, set(0x1.8p52));
    const V r = hn::NegMulAdd(n, set(kLn2Low), hn::NegMulAdd(n, set(kLn2), bounded));
    const V rr = hn::Mul(r, r), r4 = hn::Mul(rr, rr);
    const auto pair = [&](int i) __attribute__((always_inline)) {
      return hn::MulAdd(r, set(kP[i + 1]), set(kP[i]));
    };
    const V upper = hn::MulAdd(rr, hn::MulAdd(rr, pair(8), pair(6)), pair(4));
    const V p = hn::MulAdd(r4, upper, hn::MulAdd(rr, pair(2), pair(0)));
    const V y = hn::Add(set(1), hn::MulAdd(rr, p, r));
    if constexpr (kMaskRegisters) {
      return timesPowersOf2(y, n);
    } else {
      const hn::RebindToSigned<D> di;
      const hn::Repartition<int32_t, D> di32;
      const auto bits = hn::BitCast(di, whole);
      const auto half = hn::BitCast(di, hn::ShiftRight<1>(hn::BitCast(di32, bits)));
      const auto powerOfTwo = [&](auto exponent) __attribute__((always_inline)) {
        return hn::BitCast(d, hn::ShiftLeft<52>(hn::Add(exponent, hn::Set(di, int64_t{1023}))));
      };
      return hn::Mul(hn::Mul(y, powerOfTwo(half)), powerOfTwo(hn::Sub(bits, half)));
    }
  }
};

template <class S>
KvrStatus exponential(const S* src, Kvr64f* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return underRounding(Rounding::nearest,
                       [=] { return mapElements(Exponential64f(), dst, static_cast<size_t>(len), src); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsExp_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return exponential(src, dst, len);
}
KvrStatus kvrsExp_32f_I(Kvr32f* srcDst, int len) noexcept {
  return exponential(srcDst, srcDst, len);
}
KvrStatus kvrsExp_32f64f(const Kvr32f* src, Kvr64f* dst, int len) noexcept {
  return exponential(src, dst, len);
}
KvrStatus kvrsExp_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return exponential(src, dst, len);
}
KvrStatus kvrsExp_64f_I(Kvr64f* srcDst, int len) noexcept {
  return exponential(srcDst, srcDst, len);
}
