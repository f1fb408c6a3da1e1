// The multiply-adds that FIR kernels are made of: how inputs are loaded, taps spread over a vector, products added up, and
// what becomes of the sums.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_ARITH_INL_H
#define KVRS_FILTERS_FIR_ARITH_INL_H

#include "filters/fir_kernel.h"
#include "frame/complex.h"
#include "frame/interleave.h"
#include "frame/widen.h"

namespace kvrs::fir_detail {

// Part k of the parts of a tap in the kernel's table, in all lanes.
template <class D, class Part = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> spread(D d, const Part* table, size_t k) {
  if constexpr (kTapCopies<Part> == 1) {
    return hn::Set(d, table[k]);
  } else {
    return hn::LoadU(d, table + kTapCopies<Part> * k);
  }
}

// Arith<T, O> computes O outputs side by side. A step takes kGroup taps.
template <class T, size_t O>
struct Arith {
  static_assert(!FirElement<T>::kComplex && !FirElement<T>::kInteger);
  static constexpr int kGroup = 1;
  static constexpr int kVectorsOfSum = 1;
  using D = Lanes<T, O>;
  using V = hn::Vec<D>;
  using Input = V;
  using Tap = V;
  using Sum = V;

  static KVRS_INLINE Sum zero() { return hn::Zero(D()); }
  static KVRS_INLINE Input load(const T* in) { return hn::LoadU(D(), in); }
  static KVRS_INLINE Input held(Input x) { return inRegister(x); }
  static KVRS_INLINE Tap tap(const T* table) { return spread(D(), table, 0); }
  static KVRS_INLINE Sum add(Sum sum, Input x, Tap tap) { return hn::MulAdd(x, tap, sum); }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return hn::Add(a, b); }
  static KVRS_INLINE void store(Sum sum, T* out) { hn::StoreU(sum, D(), out); }
};

// Complex numbers: the parts of the inputs times the real part of a tap and times its imaginary part are added up apart
// and joined once per output, so that no product needs a shuffle.
template <class T, class Part, size_t O>
struct ComplexArith {
  static constexpr int kGroup = 1;
  static constexpr int kVectorsOfSum = 2;
  using D = Lanes<Part, 2 * O>;
  using V = hn::Vec<D>;
  struct Two {
    V re, im;
  };
  using Input = V;
  using Tap = Two;
  using Sum = Two;

  static KVRS_INLINE Sum zero() { return {hn::Zero(D()), hn::Zero(D())}; }
  static KVRS_INLINE Input load(const T* in) { return hn::LoadU(D(), &in->re); }
  static KVRS_INLINE Input held(Input x) { return inRegister(x); }
  static KVRS_INLINE Tap tap(const Part* table) { return {spread(D(), table, 0), spread(D(), table, 1)}; }
  static KVRS_INLINE Sum add(Sum sum, Input x, Tap tap) {
    return {hn::MulAdd(x, tap.re, sum.re), hn::MulAdd(x, tap.im, sum.im)};
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return {hn::Add(a.re, b.re), hn::Add(a.im, b.im)}; }
  static KVRS_INLINE void store(Sum sum, T* out) {
    hn::StoreU(subAdd(D(), sum.re, swapParts(D(), sum.im)), D(), &out->re);
  }
};
template <size_t O>
struct Arith<Kvr32fc, O> : ComplexArith<Kvr32fc, Kvr32f, O> {};
template <size_t O>
struct Arith<Kvr64fc, O> : ComplexArith<Kvr64fc, Kvr64f, O> {};

// 16-bit integers: one instruction multiplies pairs and adds neighbours. So a step takes two taps; inputs from n on give
// outputs n, n + 2 ... and inputs from n + 1 on the others.
template <size_t O>
struct Arith<Kvr16s, O> {
  static constexpr int kGroup = 2;
  static constexpr int kVectorsOfSum = 2;
  using D = Lanes<Kvr16s, O>;
  using D32 = Lanes<Kvr32s, O / 2>;
  using V = hn::Vec<D>;
  using V32 = hn::Vec<D32>;
  struct Input {
    V even, odd;
  };
  using Tap = V;
  struct Sum {
    V32 even, odd;
  };

  static KVRS_INLINE Sum zero() { return {hn::Zero(D32()), hn::Zero(D32())}; }
  static KVRS_INLINE Input load(const Kvr16s* in) { return {hn::LoadU(D(), in), hn::LoadU(D(), in + 1)}; }
  static KVRS_INLINE Input held(Input x) { return {inRegister(x.even), inRegister(x.odd)}; }
  static KVRS_INLINE Tap tap(const Kvr16s* table) {
    int32_t pair;
    __builtin_memcpy(&pair, table, sizeof pair);
    return pairTap(pair);
  }
  // One tap, for the second input of a pair.
  static KVRS_INLINE Tap lastTap(const Kvr16s* table) {
    return pairTap(static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint16_t>(*table)) << 16));
  }
  static KVRS_INLINE Sum add(Sum sum, Input x, Tap tap) {
    return {hn::Add(sum.even, mulAddNeighbours(D32(), x.even, tap)),
            hn::Add(sum.odd, mulAddNeighbours(D32(), x.odd, tap))};
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return {hn::Add(a.even, b.even), hn::Add(a.odd, b.odd)}; }
  static KVRS_INLINE void store(Sum sum, Kvr32s* out) { storeInterleaved(sum.even, sum.odd, D32(), out); }

 private:
  static KVRS_INLINE Tap pairTap(int32_t pair) { return hn::BitCast(D(), hn::Set(D32(), pair)); }
};

// Complex 16-bit integers: the pair of an input's parts times (re, -im) and times (im, re) of a tap.
template <size_t O>
struct Arith<Kvr16sc, O> {
  static constexpr int kGroup = 1;
  static constexpr int kVectorsOfSum = 2;
  using D = Lanes<Kvr16s, 2 * O>;
  using D32 = Lanes<Kvr32s, O>;
  using V = hn::Vec<D>;
  using V32 = hn::Vec<D32>;
  using Input = V;
  struct Tap {
    V re, im;
  };
  struct Sum {
    V32 re, im;
  };

  static KVRS_INLINE Sum zero() { return {hn::Zero(D32()), hn::Zero(D32())}; }
  static KVRS_INLINE Input load(const Kvr16sc* in) { return hn::LoadU(D(), &in->re); }
  static KVRS_INLINE Input held(Input x) { return inRegister(x); }
  static KVRS_INLINE Tap tap(const Kvr16s* table) {
    int32_t pairs[2];
    __builtin_memcpy(pairs, table, sizeof pairs);
    return {hn::BitCast(D(), hn::Set(D32(), pairs[0])), hn::BitCast(D(), hn::Set(D32(), pairs[1]))};
  }
  static KVRS_INLINE Sum add(Sum sum, Input x, Tap tap) {
    return {hn::Add(sum.re, mulAddNeighbours(D32(), x, tap.re)),
            hn::Add(sum.im, mulAddNeighbours(D32(), x, tap.im))};
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return {hn::Add(a.re, b.re), hn::Add(a.im, b.im)}; }
  static KVRS_INLINE void store(Sum sum, Kvr32sc* out) { storeInterleaved(sum.re, sum.im, D32(), &out->re); }
};

}  // namespace kvrs::fir_detail

#endif
