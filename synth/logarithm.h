// The natural logarithm of doubles between 0 and 1, in plain sums and products, so that all modules agree to the bit: a seed
// has one sequence of random numbers everywhere. The one in frame/logarithm.h fuses products and sums where the module can,
// has special values too, and single precision; it is faster and may differ between modules in the last bit.
//
// q = m * 2^k with m between the square roots of 1/2 and of 2, and with f = m - 1, which is exact, and s = f / (2 + f)
//
//   ln m = 2 artanh s = 2s + s * P(s^2),  P(z) = 2/3 z + 2/5 z^2 + 2/7 z^3 + ...
//        = f - s * (f - P(s^2)),          as 2s = f - s * f
//
// s^2 is below 0.0295, so that the terms left out are below 2^-62. The subtrahend is below 0.08 and its few roundings
// count little; what the rounding of k * ln 2 + f loses is added at the end, together with the low part of ln 2. So the
// whole is within 0.9 units in the last place.
// SPDX-License-Identifier: MIT
#ifndef KVRS_SYNTH_LOGARITHM_H
#define KVRS_SYNTH_LOGARITHM_H

#include "frame/simd.h"

namespace kvrs {

// Of normal numbers.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V naturalLog(D d, V q) {
  const hn::RebindToUnsigned<D> du;
  const auto bits = hn::BitCast(du, q);
  // Counted from sqrt(1/2) on, the exponent of the bits is k. 1024 more, and none is negative.
  constexpr uint64_t kRootHalf = 0x3FE6A09E667F3BCD, k1024 = uint64_t{1} << 62;
  const auto counted = hn::ShiftRight<52>(hn::Add(bits, hn::Set(du, k1024 - kRootHalf)));
  const V m = hn::BitCast(d, hn::Sub(hn::Add(bits, hn::Set(du, k1024)), hn::ShiftLeft<52>(counted)));
  // The last bits of 2^52 are its integers.
  const V integer = hn::BitCast(d, hn::Or(counted, hn::BitCast(du, hn::Set(d, 0x1p52))));
  const V k = hn::Sub(integer, hn::Set(d, 0x1p52 + 1024));

  const V f = hn::Sub(m, hn::Set(d, 1));
  const V s = hn::Div(f, hn::Add(hn::Set(d, 2), f));
  const V z = hn::Mul(s, s);
  V p = hn::Set(d, 2.0 / 25);
  for (int n = 23; n >= 3; n -= 2) p = hn::Add(hn::Mul(p, z), hn::Set(d, 2.0 / n));
  p = hn::Mul(p, z);

  // k * kHigh is exact, and larger than f where it is not 0.
  constexpr double kHigh = 0x1.62e42fefa38p-1, kLow = 0x1.ef35793c7673p-45;
  const V whole = hn::Mul(k, hn::Set(d, kHigh));
  const V sum = hn::Add(whole, f);
  const V lost = hn::Sub(f, hn::Sub(sum, whole));
  const V small = hn::Sub(hn::Add(lost, hn::Mul(k, hn::Set(d, kLow))), hn::Mul(s, hn::Sub(f, p)));
  return hn::Add(sum, small);
}

}  // namespace kvrs

#endif
