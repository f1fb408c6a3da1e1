// Sine and cosine of vectors of doubles, for every finite argument.
//
// 1. Range reduction. |x| = q * pi/2 + r with |r| <= pi/4, and a remainder r whose error is small beside r itself,
//    however close |x| is to a multiple of pi/2. The nearest that doubles below 2^15 quarter turns come to one is
//    about 2^-56, so pi/2 has to be known to more than twice a double's precision:
//    - Up to 2^15 quarter turns (51,471 radians) pi/2 is two parts of 38 bits, whose products with q are exact, and a
//      third one (Cody and Waite, Software Manual for the Elementary Functions, 1980).
//    - Out of line, up to 2^23 quarter turns (2^31 for singles), the same in four parts with fewer bits each.
//    - Beyond that, lane by lane in integers, with those 192 bits of 2/pi that matter for the exponent of x (Payne and
//      Hanek, Radian Reduction for Trigonometric Functions, SIGNUM Newsletter 18, 1983).
// 2. Minimax polynomials in r^2 (Remez), evaluated so that the rounding of the large term is the last one.
// 3. The quarter q exchanges the two and gives their signs; the sine has the sign of x besides, and so -0 for -0.
//
// Products and sums are fused where the module has that, so that modules may differ in the last bit. All of this wants
// the rounding mode to be to nearest: q comes from a sum that is rounded to an integer.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_SINCOS_H
#define KVRS_FRAME_SINCOS_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "frame/simd.h"
#include "frame/unroll.h"

namespace kvrs {

// What sinCos is computed for. The relative errors are those of the polynomials and of r together, before the last
// rounding.
enum class SinCosFor {
  doubles,  // any finite x, 2^-54.5
  singles,  // any finite x that is a single, 2^-27.8
  integers,  // |x| <= 2^31, an integer or at least 2^-31 apart from all multiples of pi/2; absolute error 2^-52
};

template <class V>
struct SinCos {
  V sin, cos;
};

namespace sincos_detail {

// r as the sum of two doubles, and q, of which only the lowest two bits count.
struct Remainder {
  double high, low;
  uint64_t quarters;
};

// 2/pi after the binary point, 64 bits each, with a word of zeros in front.
inline constexpr uint64_t kTwoOverPi[] = {
    0x0000000000000000, 0xA2F9836E4E441529, 0xFC2757D1F534DDC0, 0xDB6295993C439041, 0xFE5163ABDEBBC561,
    0xB7246E3A424DD2E0, 0x06492EEA09D1921C, 0xFE1DEB1CB129A73E, 0xE88235F52EBB4484, 0xE99C7026B45F7E41,
    0x3991D639835339F4, 0x9C845F8BBDF9283B, 0x1FF897FFDE05980F, 0xEF2F118B5A0A6D1F, 0x6D367ECF27CB09B7,
    0x4F463F669E5FEA2D, 0x7527BAC7EBE5F17B, 0x3D0739F78A5292EA, 0x6BFB5FB11F8D5D08, 0x56033046FC7B6BAB};

// Exact reduction of x from 1 on, up to the largest double; NaN for an infinity or a NaN.
//
// x is an integer m < 2^53 times 2^e. The bits of 2/pi before position e - 2 contribute multiples of 4 quarter turns
// and are left out; the next 192 give m * w mod 2^192 = x * 2/pi mod 4, as a fixed-point number with 190 bits behind
// the point. The bits left out behind them are worth less than 2^53 units. 62 leading zeros of the fraction are the
// most for any double, so that its first 128 bits hold at least 64 good ones. In integers throughout, which no rounding
// mode reaches.
inline Remainder exactRemainder(double x) {
  const uint64_t bits = std::bit_cast<uint64_t>(x);
  const int exponent = static_cast<int>(bits >> 52);
  if (exponent == 0x7FF) return {std::numeric_limits<double>::quiet_NaN(), 0, 0};
  const uint64_t m = (bits & ((uint64_t{1} << 52) - 1)) | uint64_t{1} << 52;

  const int from = exponent - 1075 - 2 + 64, shift = from % 64;
  const uint64_t* words = kTwoOverPi + from / 64;
  const auto window = [&](int i) { return words[i] << shift | words[i + 1] >> 1 >> (63 - shift); };
  uint64_t high1, high2;
  const uint64_t low1 = hwy::Mul128(m, window(1), &high1), low2 = hwy::Mul128(m, window(2), &high2);
  const uint64_t middle = low1 + high2;
  const uint64_t top = m * window(0) + high1 + (middle < low1 ? 1 : 0);

  // To the nearest quarter: the fraction, `first` and `second`, is in [-1/2, 1/2) of one.
  uint64_t quarters = top >> 62, first = top << 2 | middle >> 62, second = middle << 2 | low2 >> 62;
  const uint64_t sign = first & uint64_t{1} << 63, negate = 0 - (sign >> 63);
  quarters += sign >> 63;
  first ^= negate;
  second ^= negate;
  if (first == 0) return {0, 0, quarters};  // not for any double
  const int zeros = std::countl_zero(first);
  const uint64_t significant = first << zeros | second >> (64 - zeros);  // the first bit is 0 now

  // Times pi/2, 0xC90F... * 2^-63, in two parts that are exact as doubles.
  uint64_t product;
  hwy::Mul128(significant, 0xC90FDAA22168C235, &product);
  const double unit = std::bit_cast<double>(sign | static_cast<uint64_t>(1023 - 63 - zeros) << 52);
  return {static_cast<double>(static_cast<int64_t>(product >> 11)) * 2048 * unit,
          static_cast<double>(static_cast<int32_t>(product & 2047)) * unit, quarters};
}

// The same for a double that is a single, from 2^31 on: an integer m < 2^24 times 2^e. No single is closer to a multiple
// of pi/2 than 2^-30 of a quarter turn, so that a fraction of 62 bits will do.
inline Remainder exactRemainderOfSingle(double x) {
  const uint64_t bits = std::bit_cast<uint64_t>(x);
  const int exponent = static_cast<int>(bits >> 52);
  if (exponent == 0x7FF) return {std::numeric_limits<double>::quiet_NaN(), 0, 0};
  const uint64_t m = (bits >> 29 & ((uint64_t{1} << 23) - 1)) | uint64_t{1} << 23;

  const int from = exponent - 1046 - 2 + 64, shift = from % 64;
  const uint64_t* words = kTwoOverPi + from / 64;
  const auto window = [&](int i) { return words[i] << shift | words[i + 1] >> 1 >> (63 - shift); };
  const uint64_t turns = m * window(0) + (m * (window(1) >> 32) >> 32);
  const uint64_t quarters = (turns + (uint64_t{1} << 61)) >> 62;
  // As two halves: a whole would be rounded in the mode of another unit in a 32-bit process.
  const int64_t fraction = static_cast<int64_t>(turns << 2);
  const double high = static_cast<double>(static_cast<int32_t>(fraction >> 32));
  const double low = static_cast<double>(static_cast<int32_t>(static_cast<uint32_t>(fraction) >> 1));
  return {(high * 0x1p32 + low * 2) * (0x1.921fb54442d18p+0 * 0x1p-64), 0, quarters};
}

template <class V>
struct Reduced {
  V high, low;  // `low` only for doubles
  V quarters;   // q in the lowest bits of its fraction
};

// a - b and what its rounding lost (Knuth).
template <class V>
struct Difference {
  V value, error;
};
template <class V>
KVRS_INLINE Difference<V> exactDifference(V a, V b) {
  const V value = hn::Sub(a, b);
  const V minusB = hn::Sub(value, a);
  return {value, hn::Sub(hn::Sub(a, hn::Sub(value, minusB)), hn::Add(b, minusB))};
}

// |x| below these is reduced in line and, out of line, in vectors.
inline constexpr double kInLine = 0x1.921fb54442d18p+15;             // 2^15 quarter turns
inline constexpr double kVectorsForDoubles = 0x1.921fb54442d18p+23;  // 2^23
inline constexpr double kVectorsForSingles = 0x1.921fb54442d18p+31;  // 2^31
// Integers are never as close to pi/2 as other numbers, so that one remainder of plain differences does.

template <class D, class V = hn::Vec<D>>
KVRS_INLINE V shiftedQuarters(D d, V x) {
  return hn::MulAdd(x, hn::Set(d, 0x1.45f306dc9c883p-1), hn::Set(d, 0x1.8p52));
}

// r2 - q * part2 - q * part3 as high and low.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE Reduced<V> twoParts(Difference<V> r, V lowPart, V shifted) {
  const V low = hn::Sub(r.error, lowPart);
  const V high = hn::Add(r.value, low);
  return {high, hn::Sub(low, hn::Sub(high, r.value)), shifted};
}

template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE Reduced<V> reduceInLine(D d, V x) {
  const V shifted = shiftedQuarters(d, x);
  const V q = hn::Sub(shifted, hn::Set(d, 0x1.8p52));
  const V r1 = hn::NegMulAdd(q, hn::Set(d, 0x1.921fb5444p+0), x);
  if constexpr (use == SinCosFor::singles) {
    return {hn::NegMulAdd(q, hn::Set(d, 0x1.68c234c4c6629p-39), r1), r1, shifted};
  } else {
    const auto r2 = exactDifference(r1, hn::Mul(q, hn::Set(d, 0x1.68c234c4cp-39)));
    return twoParts<D>(r2, hn::Mul(q, hn::Set(d, 0x1.98a2e03707345p-77)), shifted);
  }
}

// In four parts.
template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE Reduced<V> reduceWide(D d, V x) {
  const V shifted = shiftedQuarters(d, x);
  const V q = hn::Sub(shifted, hn::Set(d, 0x1.8p52));
  if constexpr (use == SinCosFor::doubles) {
    const V r1 = hn::NegMulAdd(q, hn::Set(d, 0x1.921fb54p+0), x);
    const auto r2 = exactDifference(r1, hn::Mul(q, hn::Set(d, 0x1.10b46118p-30)));
    auto r3 = exactDifference(r2.value, hn::Mul(q, hn::Set(d, 0x1.313198ap-61)));
    r3.error = hn::Add(r3.error, r2.error);
    return twoParts<D>(r3, hn::Mul(q, hn::Set(d, 0x1.701b839a25205p-92)), shifted);
  } else {
    const V r1 = hn::NegMulAdd(q, hn::Set(d, 0x1.921fbp+0), x);
    const V r2 = hn::NegMulAdd(q, hn::Set(d, 0x1.5110bp-22), r1);
    const V r3 = hn::NegMulAdd(q, hn::Set(d, 0x1.184698p-44), r2);
    return {hn::NegMulAdd(q, hn::Set(d, 0x1.3198a2e037073p-69), r3), r3, shifted};
  }
}

// Any |x|.
template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE Reduced<V> reduceAny(D d, V x) {
  constexpr double kVectors = use == SinCosFor::doubles ? kVectorsForDoubles : kVectorsForSingles;
  Reduced<V> r = reduceWide<use>(d, x);
  if (hn::AllTrue(d, hn::Le(x, hn::Set(d, kVectors)))) return r;
  constexpr size_t N = hn::MaxLanes(D());
  alignas(64) double of[N], high[N], low[N];
  alignas(64) uint64_t quarters[N];
  const hn::Rebind<uint64_t, D> du;
  hn::Store(x, d, of);
  hn::Store(r.high, d, high);
  hn::Store(r.low, d, low);
  hn::Store(hn::BitCast(du, r.quarters), du, quarters);
  for (size_t i = 0; i < N; ++i) {
    if (of[i] <= kVectors) continue;
    const Remainder exact = use == SinCosFor::singles ? exactRemainderOfSingle(of[i]) : exactRemainder(of[i]);
    high[i] = exact.high;
    low[i] = exact.low;
    quarters[i] = exact.quarters;
  }
  return {hn::Load(d, high), hn::Load(d, low), hn::BitCast(d, hn::Load(du, quarters))};
}

// Sine and cosine of the remainder.
template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE SinCos<V> ofRemainder(D d, Reduced<V> x) {
  const auto c = [&](double value) KVRS_UNROLLED { return hn::Set(d, value); };
  const V r = x.high, z = hn::Mul(r, r);
  if constexpr (use == SinCosFor::singles) {
    // sin r = r * (1 + r^2 * S(r^2)), cos r = 1 + r^2 * C(r^2): with digits to spare, and -0 for -0.
    V s = hn::MulAdd(z, c(-0x1.99363d892f45dp-13), c(0x1.11071376db63cp-7));
    s = hn::MulAdd(z, s, c(-0x1.555544c4531efp-3));
    V k = hn::MulAdd(z, c(0x1.99086437edc2cp-16), c(-0x1.6c07b4c14b9fbp-10));
    k = hn::MulAdd(z, k, c(0x1.55553bde99f40p-5));
    k = hn::MulAdd(z, k, c(-0x1.ffffffc9cd882p-2));
    return {hn::Mul(r, hn::MulAdd(z, s, c(1))), hn::MulAdd(z, k, c(1))};
  } else {
    // sin r = r + r^3 * S(r^2), cos r = 1 - r^2/2 + r^4 * C(r^2). The rounding of 1 - r^2/2 is known exactly and goes
    // into the smaller term; so does the low part of r, through the derivatives.
    V s = hn::MulAdd(z, c(0x1.5d897250edfc8p-33), c(-0x1.ae5e4598e2740p-26));
    s = hn::MulAdd(z, s, c(0x1.71de354e93006p-19));
    s = hn::MulAdd(z, s, c(-0x1.a01a019be306dp-13));
    s = hn::MulAdd(z, s, c(0x1.111111110f711p-7));
    s = hn::MulAdd(z, s, c(-0x1.5555555555548p-3));
    V k = hn::MulAdd(z, c(-0x1.8f99cad0d813ep-37), c(0x1.1ee9c3348390cp-29));
    k = hn::MulAdd(z, k, c(-0x1.27e4f7cd30af8p-22));
    k = hn::MulAdd(z, k, c(0x1.a01a019c5c38ap-16));
    k = hn::MulAdd(z, k, c(-0x1.6c16c16c14e00p-10));
    k = hn::MulAdd(z, k, c(0x1.555555555554ap-5));
    const V rz = hn::Mul(r, z), half = hn::Mul(z, c(0.5)), one = c(1), w = hn::Sub(one, half);
    V sinSmall, cosSmall;
    if constexpr (use == SinCosFor::doubles) {
      sinSmall = hn::MulAdd(rz, s, hn::Mul(x.low, w));
      cosSmall = hn::NegMulAdd(r, x.low, hn::Sub(hn::Sub(one, w), half));
    } else {
      sinSmall = hn::Mul(rz, s);
      cosSmall = hn::Sub(hn::Sub(one, w), half);
    }
    return {hn::Add(r, sinSmall), hn::Add(w, hn::MulAdd(hn::Mul(z, z), k, cosSmall))};
  }
}

// a and b, exchanged where `by` is negative. (Highway's IfNegativeThenElse takes a sign for a mask, which only processors
// with a blend do.)
template <class D, class V = hn::Vec<D>>
KVRS_INLINE void exchange(D d, V by, V& a, V& b) {
  if constexpr (kBlends) {
    const V before = a;
    a = hn::IfNegativeThenElse(by, b, a);
    b = hn::IfNegativeThenElse(by, before, b);
  } else {
    const V mask = hn::BitCast(d, hn::BroadcastSignBit(hn::BitCast(hn::RebindToSigned<D>(), by)));
    const V difference = hn::And(mask, hn::Xor(a, b));
    a = hn::Xor(a, difference);
    b = hn::Xor(b, difference);
  }
}

// Sorts them by quarter and gives them their signs. `sign` is x's.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE SinCos<V> sorted(D d, SinCos<V> of, V quarters, V sign) {
  const hn::Rebind<uint64_t, D> du;
  const auto q = hn::BitCast(du, quarters);
  const V odd = hn::BitCast(d, hn::ShiftLeft<63>(q)), second = hn::BitCast(d, hn::ShiftLeft<62>(q));
  exchange(d, odd, of.sin, of.cos);
  return {hn::Xor(of.sin, hn::Xor(hn::And(second, hn::SignBit(d)), sign)),
          hn::Xor(of.cos, hn::And(hn::Xor(second, odd), hn::SignBit(d)))};
}

template <SinCosFor use, class D, class V = hn::Vec<D>>
[[gnu::noinline]] SinCos<V> ofAny(D d, V x) {
  const V magnitude = hn::Abs(x), sign = hn::Xor(x, magnitude);
  const auto r = reduceAny<use>(d, magnitude);
  return sorted(d, ofRemainder<use>(d, r), r.quarters, sign);
}

// |x| up to kInLine, or any integers.
template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE SinCos<V> ofUsual(D d, V x) {
  if constexpr (use == SinCosFor::singles) {
    const auto r = reduceInLine<use>(d, x);  // q may be negative
    return sorted(d, ofRemainder<use>(d, r), r.quarters, hn::Zero(d));
  } else {
    const V magnitude = hn::Abs(x), sign = hn::Xor(x, magnitude);
    const auto r =
        use == SinCosFor::integers ? reduceWide<use>(d, magnitude) : reduceInLine<use>(d, magnitude);
    return sorted(d, ofRemainder<use>(d, r), r.quarters, sign);
  }
}

// Whether all of x are small enough for ofUsual.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE bool isUsual(D d, V x) {
  constexpr auto bound = static_cast<hn::TFromD<D>>(sizeof(hn::TFromD<D>) == 4 ? 0x1.921fb4p+15 : kInLine);
  return __builtin_expect(hn::AllTrue(d, hn::Le(hn::Abs(x), hn::Set(d, bound))), true);
}

}  // namespace sincos_detail

// NaN of an infinity and of NaN.
template <SinCosFor use, class D, class V = hn::Vec<D>>
KVRS_INLINE SinCos<V> sinCos(D d, V x) {
  using namespace sincos_detail;
  if (use != SinCosFor::integers && !isUsual(d, x)) return ofAny<use>(d, x);
  return ofUsual<use>(d, x);
}

// Singles as such and as doubles, in two halves; loaded so, the conversions take no shuffles. A single lane is `lower`.
template <class V, class Wide>
struct WidenedSingles {
  V singles;
  Wide lower, upper;
};
template <class D>
inline constexpr size_t kHalfLanes = (hn::MaxLanes(D()) + 1) / 2;

template <class D, class Wide = hn::Vec<Lanes<double, kHalfLanes<D>>>>
KVRS_INLINE WidenedSingles<hn::Vec<D>, Wide> loadWidened(D d, const float* p) {
  constexpr size_t half = kHalfLanes<D>, second = hn::MaxLanes(D()) - half;
  const Lanes<double, half> wide;
  const Lanes<float, half> narrow;
  return {hn::LoadU(d, p), hn::PromoteTo(wide, hn::LoadU(narrow, p)),
          hn::PromoteTo(wide, hn::LoadU(narrow, p + second))};
}

// Of both halves, with one question for both, so that they run side by side.
template <class Wide>
struct SinCosHalves {
  SinCos<Wide> lower, upper;
};
template <class V, class Wide>
KVRS_INLINE SinCosHalves<Wide> sinCos(const WidenedSingles<V, Wide>& x) {
  using namespace sincos_detail;
  constexpr auto use = SinCosFor::singles;
  const hn::DFromV<V> d;
  const hn::DFromV<Wide> wide;
  if (!isUsual(d, x.singles)) return {ofAny<use>(wide, x.lower), ofAny<use>(wide, x.upper)};
  return {ofUsual<use>(wide, x.lower), ofUsual<use>(wide, x.upper)};
}

}  // namespace kvrs

#endif
