// The sums of a FIR filter, y[n] = sum over k of in[n+k] * tap[k], for any run of outputs whose inputs lie in
// one piece.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_KERNEL_H
#define KVRS_FILTERS_FIR_KERNEL_H

#include <cstddef>

#include "frame/simd.h"
#include "frame/unroll.h"

namespace kvrs {

// Filters are told apart by the element T of their taps and inputs: 32f, 64f, 32fc, 64fc, and 16s and 16sc, whose
// products are added up in 32 bits, modulo 2^32.
template <class LaneType, class SumType, bool kIsComplex, bool kIsInteger>
struct FirElementOf {
  using Lane = LaneType;
  using Sum = SumType;
  static constexpr bool kComplex = kIsComplex, kInteger = kIsInteger;
};
template <class T>
struct FirElement : FirElementOf<T, T, false, false> {};
template <>
struct FirElement<Kvr32fc> : FirElementOf<Kvr32f, Kvr32fc, true, false> {};
template <>
struct FirElement<Kvr64fc> : FirElementOf<Kvr64f, Kvr64fc, true, false> {};
template <>
struct FirElement<Kvr16s> : FirElementOf<Kvr16s, Kvr32s, false, true> {};
template <>
struct FirElement<Kvr16sc> : FirElementOf<Kvr16s, Kvr32sc, true, true> {};

template <class T>
using FirLane = typename FirElement<T>::Lane;
template <class T>
using FirSum = typename FirElement<T>::Sum;

// The elements that a full vector holds.
template <class T>
inline constexpr size_t kFirLanes = kVectorBytes / sizeof(T);

// How often a part of a tap stands in the kernel's table. From AVX on, and for double precision before, a load can
// spread one number over a vector; else a table of whole vectors saves the shuffle.
template <class Part>
inline constexpr size_t kTapCopies = kVectorBytes == 16 && sizeof(Part) == 4 ? 4 : 1;

// The lanes of a tap in the kernel's table. Complex integers stand there as (re, -im) and (im, re), the partners of an
// input's parts in the two parts of a product.
template <class T>
inline constexpr size_t kTapLanes = FirElement<T>::kInteger
                                        ? (FirElement<T>::kComplex ? 4 : 1)
                                        : (FirElement<T>::kComplex ? 2 : 1) * kTapCopies<FirLane<T>>;

// Whether the table is more than the taps themselves.
template <class T>
inline constexpr bool kHasTapTable = kTapLanes<T> * sizeof(FirLane<T>) > sizeof(T);

// Fills the kernel's table of `tapsLen` taps.
template <class T>
void fillTapTable(const T* taps, FirLane<T>* table, size_t tapsLen) {
  for (size_t k = 0; k < tapsLen; ++k, table += kTapLanes<T>) {
    if constexpr (!FirElement<T>::kComplex) {
      for (size_t i = 0; i < kTapLanes<T>; ++i) table[i] = taps[k];
    } else if constexpr (FirElement<T>::kInteger) {
      table[0] = table[3] = taps[k].re;
      table[1] = static_cast<FirLane<T>>(-taps[k].im);
      table[2] = taps[k].im;
    } else {
      constexpr size_t kCopies = kTapLanes<T> / 2;
      for (size_t i = 0; i < kCopies; ++i) {
        table[i] = taps[k].re;
        table[kCopies + i] = taps[k].im;
      }
    }
  }
}

// Inputs and the taps that they meet; `table` begins with the tap of the oldest input.
template <class T>
struct FirBranch {
  const T* in;
  const FirLane<T>* table;
  size_t tapsLen;
};

// out[n] for n in [0, count), each the sum of all branches. Reads in[0 .. count + tapsLen - 2] of each. `out` does not
// overlap them.
template <class T>
void firKernel(const FirBranch<T>* branches, size_t branchCount, FirSum<T>* out, size_t count);

// The same with one branch.
template <class T>
void firKernel(const T* in, FirSum<T>* out, size_t count, const FirLane<T>* table, size_t tapsLen) {
  const FirBranch<T> branch{in, table, tapsLen};
  firKernel(&branch, 1, out, count);
}

// Outputs of whole tiles: work that is cut at multiples of it gives the same sums as in one piece.
template <class T>
size_t firTileOutputs();

// in[0]*taps[0] + ... + in[len-1]*taps[len-1], the taps as they stand.
template <class T>
FirSum<T> firDot(const T* in, const T* taps, size_t len);

extern template void firKernel<Kvr32f>(const FirBranch<Kvr32f>*, size_t, Kvr32f*, size_t);
extern template void firKernel<Kvr64f>(const FirBranch<Kvr64f>*, size_t, Kvr64f*, size_t);
extern template void firKernel<Kvr32fc>(const FirBranch<Kvr32fc>*, size_t, Kvr32fc*, size_t);
extern template void firKernel<Kvr64fc>(const FirBranch<Kvr64fc>*, size_t, Kvr64fc*, size_t);
extern template void firKernel<Kvr16s>(const FirBranch<Kvr16s>*, size_t, Kvr32s*, size_t);
extern template void firKernel<Kvr16sc>(const FirBranch<Kvr16sc>*, size_t, Kvr32sc*, size_t);
extern template size_t firTileOutputs<Kvr32f>();
extern template size_t firTileOutputs<Kvr64f>();
extern template size_t firTileOutputs<Kvr32fc>();
extern template size_t firTileOutputs<Kvr64fc>();
extern template Kvr32f firDot(const Kvr32f*, const Kvr32f*, size_t);
extern template Kvr64f firDot(const Kvr64f*, const Kvr64f*, size_t);
extern template Kvr32fc firDot(const Kvr32fc*, const Kvr32fc*, size_t);
extern template Kvr64fc firDot(const Kvr64fc*, const Kvr64fc*, size_t);
extern template Kvr32s firDot(const Kvr16s*, const Kvr16s*, size_t);
extern template Kvr32sc firDot(const Kvr16sc*, const Kvr16sc*, size_t);

}  // namespace kvrs

#endif
