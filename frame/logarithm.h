// The natural logarithm, for vectors of single and double precision.
//
// x = 2^k * m with m in [2/3, 4/3) in single precision, in [sqrt(1/2), sqrt(2)) in double precision, and f = m - 1, which
// is exact. ln x = k ln 2 + ln(1 + f), with ln 2 in two parts, of which the upper one times k is exact.
//
// - Single precision: ln(1 + f) = f - f^2/2 + f^3 P(f), P of degree 7 (Remez, relative error 2^-27.7). The sum of the upper
//   parts is exact with what it loses, so that f, which may cancel half of k ln 2, is not rounded before the last sum.
// - Double precision: with s = f / (2 + f), ln(1 + f) = 2 artanh(s) = 2s + s R(s^2), R of degree 7 (Remez, relative error
//   2^-58.6); 2s = f - f s, so that ln(1 + f) = f - (f^2/2 - s (f^2/2 + R)) has f itself for its large term.
//
// Products and sums are fused where the module has that, so that modules may differ in the last bit. Errors are told for
// rounding to nearest: below 1 unit in the last place in both precisions.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOGARITHM_H
#define KVRS_FRAME_LOGARITHM_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "frame/simd.h"

namespace kvrs {
namespace logarithm_detail {

template <class T>
struct Constants;
template <>
struct Constants<float> {
  static constexpr float kLowestFactor = 0x1.555556p-1f;  // 2/3
  static constexpr float kLn2 = 0x1.62ep-1f, kLn2Low = 0x1.0bfbe8p-15f;
  static constexpr float kP[] = {0x1.555506p-2f, -0x1.fffefp-3f,  0x1.99d028p-3f, -0x1.559dccp-3f,
                                 0x1.1ed718p-3f, -0x1.f31136p-4f, 0x1.1e66b8p-3f, -0x1.08059cp-3f};
};
template <>
struct Constants<double> {
  static constexpr double kLowestFactor = 0x1.6a09e667f3bcdp-1;  // sqrt(1/2)
  static constexpr double kLn2 = 0x1.62e42feep-1, kLn2Low = 0x1.a39ef35793c76p-33;
  static constexpr double kR[] = {0x1.555555555557cp-1, 0x1.99999999847e9p-2, 0x1.2492493fad552p-2,
                                  0x1.c71c52be8192ap-3, 0x1.746647dd066c2p-3, 0x1.399d294f88f5bp-3,
                                  0x1.2f50f43e64db5p-3};
};

}  // namespace logarithm_detail

// x = 2^k * m for positive normal x, m as told above. Of all other doubles k is below -1021 or
// above 1023.
template <class V>
struct PowerAndFactor {
  V k, m;
};
template <class D, class V = hn::Vec<D>>
KVRS_INLINE PowerAndFactor<V> splitPowerOfTwo(D d, V x) {
  using T = hn::TFromD<D>;
  using C = logarithm_detail::Constants<T>;
  if constexpr (sizeof(T) == 4) {
    const hn::RebindToSigned<D> di;
    const auto bits = hn::BitCast(di, x);
    const auto k = hn::ShiftRight<23>(hn::Sub(bits, hn::Set(di, std::bit_cast<int32_t>(C::kLowestFactor))));
    return {hn::ConvertTo(d, k), hn::BitCast(d, hn::Sub(bits, hn::ShiftLeft<23>(k)))};
  } else {
    // No arithmetic shift and no conversion of 64-bit lanes in most modules: k + bias, which is positive, becomes the low
    // bits of 2^52 + k + bias.
    const hn::RebindToUnsigned<D> du;
    constexpr uint64_t kOne = uint64_t{1023} << 52;
    const auto bits = hn::BitCast(du, x);
    const auto offset = hn::Set(du, kOne - std::bit_cast<uint64_t>(C::kLowestFactor));
    const auto biased = hn::ShiftRight<52>(hn::Add(bits, offset));
    const auto whole = hn::BitCast(d, hn::Or(biased, hn::Set(du, std::bit_cast<uint64_t>(0x1p52))));
    return {hn::Sub(whole, hn::Set(d, 0x1p52 + 1023)),
            hn::BitCast(d, hn::Add(hn::Sub(bits, hn::ShiftLeft<52>(biased)), hn::Set(du, kOne)))};
  }
}

namespace logarithm_detail {

// k ln 2 + ln m.
template <class D, class V>
KVRS_INLINE V join(D d, PowerAndFactor<V> x) {
  using T = hn::TFromD<D>;
  using C = Constants<T>;
  const auto set = [d](T c) __attribute__((always_inline)) {
    return hn::Set(d, c);
  };
  const V f = hn::Sub(x.m, set(1));
  if constexpr (sizeof(T) == 4) {
    constexpr auto& p = C::kP;
    const V ff = hn::Mul(f, f);
    // Pairs of coefficients, for shorter chains.
    const V p01 = hn::MulAdd(f, set(p[1]), set(p[0])), p23 = hn::MulAdd(f, set(p[3]), set(p[2]));
    const V p45 = hn::MulAdd(f, set(p[5]), set(p[4])), p67 = hn::MulAdd(f, set(p[7]), set(p[6]));
    const V sum = hn::MulAdd(ff, hn::MulAdd(ff, hn::MulAdd(ff, p67, p45), p23), p01);
    const V q = hn::MulAdd(f, sum, set(-0.5f));
    const V s = hn::MulAdd(x.k, set(C::kLn2), f);
    const V lost = hn::Add(hn::MulSub(x.k, set(C::kLn2), s), f);  // k ln 2 is exact, fused or not
    return hn::Add(s, hn::MulAdd(ff, q, hn::MulAdd(x.k, set(C::kLn2Low), lost)));
  } else {
    constexpr auto& r = C::kR;
    const V s = hn::Div(f, hn::Add(f, set(2)));
    const V z = hn::Mul(s, s), zz = hn::Mul(z, z);
    const V even = hn::MulAdd(zz, hn::MulAdd(zz, hn::MulAdd(zz, set(r[6]), set(r[4])), set(r[2])), set(r[0]));
    const V odd = hn::MulAdd(zz, hn::MulAdd(zz, set(r[5]), set(r[3])), set(r[1]));
    const V half = hn::Mul(hn::Mul(f, set(0.5)), f);
    const V rest = hn::MulAdd(z, hn::MulAdd(z, odd, even), half);
    const V low = hn::Sub(half, hn::MulAdd(s, rest, hn::Mul(x.k, set(C::kLn2Low))));
    return hn::Sub(hn::Mul(x.k, set(C::kLn2)), hn::Sub(low, f));
  }
}

}  // namespace logarithm_detail

// Which lanes hold positive normal numbers.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE auto isPositiveNormal(D d, V x) {
  using T = hn::TFromD<D>;
  using L = std::numeric_limits<T>;
  if constexpr (sizeof(T) == 4) {
    // Counted from the smallest one on, their bits are the lowest of all: one comparison.
    const hn::RebindToSigned<D> di;
    constexpr uint32_t kFirst = std::bit_cast<uint32_t>(L::min()),
                       kEnd = std::bit_cast<uint32_t>(L::infinity());
    constexpr auto counted = [](uint32_t bits) { return static_cast<int32_t>(bits - kFirst + 0x80000000u); };
    const auto fromFirst = hn::Add(hn::BitCast(di, x), hn::Set(di, counted(0)));
    return hn::RebindMask(d, hn::Lt(fromFirst, hn::Set(di, counted(kEnd))));
  } else {
    return hn::And(hn::Ge(x, hn::Set(d, L::min())), hn::Lt(x, hn::Set(d, L::infinity())));
  }
}

// ln x of positive normal numbers; of others any number.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V logarithmOfNormal(D d, V x) {
  return logarithm_detail::join(d, splitPowerOfTwo(d, x));
}

// ln x of every number: minus infinity of zeros, NaN of what lies below and of NaN, infinity of infinity.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V logarithm(D d, V x) {
  using T = hn::TFromD<D>;
  using L = std::numeric_limits<T>;
  constexpr int kUp = L::digits;
  const V zero = hn::Zero(d), infinity = hn::Set(d, L::infinity());
  const auto isSmall = hn::Lt(x, hn::Set(d, L::min()));
  const V scaled = hn::Mul(x, hn::Set(d, static_cast<T>(uint64_t{1} << kUp)));
  const auto parts = splitPowerOfTwo(d, hn::IfThenElse(isSmall, scaled, x));
  const V k = hn::Sub(parts.k, hn::IfThenElseZero(isSmall, hn::Set(d, T{kUp})));
  V y = logarithm_detail::join(d, PowerAndFactor<V>{k, parts.m});
  y = hn::IfThenElse(hn::Lt(x, infinity), y, hn::Add(x, x));  // infinity and NaN
  y = hn::IfThenElse(hn::Eq(x, zero), hn::Neg(infinity), y);
  return hn::IfThenElse(hn::Lt(x, zero), hn::Set(d, L::quiet_NaN()), y);
}

}  // namespace kvrs

#endif
