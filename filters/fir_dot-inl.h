// One output of a FIR filter: the sum of products of inputs and taps, and the filter of a few taps that is fed sample by
// sample.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_DOT_INL_H
#define KVRS_FILTERS_FIR_DOT_INL_H

#include "filters/fir_kernel.h"
#include "frame/complex.h"
#include "frame/widen.h"

namespace kvrs {
namespace fir_detail {

// The lower half of a vector plus its upper half.
template <class T, size_t N, class V>
KVRS_INLINE hn::Vec<Lanes<T, N / 2>> folded(V sum) {
  const Lanes<T, N / 2> half;
  // s8 would take a constant for the upper of two lanes.
  const auto upper =
      N == 2 ? hn::LowerHalf(half, hn::Reverse2(Lanes<T, N>(), sum)) : hn::UpperHalf(half, sum);
  return hn::Add(hn::LowerHalf(half, sum), upper);
}

// DotArith<T, N> multiplies and adds up N elements side by side.
template <class T, size_t N>
struct DotArith {
  static constexpr size_t kFewest = 1;
  using D = Lanes<T, N>;
  using Sum = hn::Vec<D>;

  static KVRS_INLINE Sum zero() { return hn::Zero(D()); }
  static KVRS_INLINE Sum add(Sum sum, const T* in, const T* taps) {
    return hn::MulAdd(hn::LoadU(D(), in), hn::LoadU(D(), taps), sum);
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return hn::Add(a, b); }
  static KVRS_INLINE auto half(Sum sum) { return folded<T, N>(sum); }
  static KVRS_INLINE T result(Sum sum) { return hn::GetLane(sum); }
};

// Products of like parts, which are joined in the end, and of unlike ones.
template <class T, class Part, size_t N>
struct ComplexDotArith {
  static constexpr size_t kFewest = 1;
  using D = Lanes<Part, 2 * N>;
  using V = hn::Vec<D>;
  struct Sum {
    V like, unlike;
  };

  static KVRS_INLINE Sum zero() { return {hn::Zero(D()), hn::Zero(D())}; }
  static KVRS_INLINE Sum add(Sum sum, const T* in, const T* taps) {
    const V x = inRegister(hn::LoadU(D(), &in->re)), h = hn::LoadU(D(), &taps->re);
    return {hn::MulAdd(x, h, sum.like), hn::MulAdd(x, swapParts(D(), h), sum.unlike)};
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return {hn::Add(a.like, b.like), hn::Add(a.unlike, b.unlike)}; }
  static KVRS_INLINE auto half(Sum sum) {
    return typename ComplexDotArith<T, Part, N / 2>::Sum{folded<Part, 2 * N>(sum.like),
                                                         folded<Part, 2 * N>(sum.unlike)};
  }
  static KVRS_INLINE T result(Sum sum) {
    Part like[2], unlike[2];
    hn::StoreU(sum.like, D(), like);
    hn::StoreU(sum.unlike, D(), unlike);
    return {like[0] - like[1], unlike[0] + unlike[1]};
  }
};
template <size_t N>
struct DotArith<Kvr32fc, N> : ComplexDotArith<Kvr32fc, Kvr32f, N> {};
template <size_t N>
struct DotArith<Kvr64fc, N> : ComplexDotArith<Kvr64fc, Kvr64f, N> {};

template <size_t N>
struct DotArith<Kvr16s, N> {
  static constexpr size_t kFewest = 2;
  using D = Lanes<Kvr16s, N>;
  using D32 = Lanes<Kvr32s, N / 2>;
  using Sum = hn::Vec<D32>;

  static KVRS_INLINE Sum zero() { return hn::Zero(D32()); }
  static KVRS_INLINE Sum add(Sum sum, const Kvr16s* in, const Kvr16s* taps) {
    return hn::Add(sum, mulAddNeighbours(D32(), hn::LoadU(D(), in), hn::LoadU(D(), taps)));
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return hn::Add(a, b); }
  static KVRS_INLINE auto half(Sum sum) { return folded<Kvr32s, N / 2>(sum); }
  static KVRS_INLINE Kvr32s result(Sum sum) { return hn::GetLane(sum); }
};

template <size_t N>
struct DotArith<Kvr16sc, N> {
  static constexpr size_t kFewest = 1;
  using D = Lanes<Kvr16s, 2 * N>;
  using D32 = Lanes<Kvr32s, N>;
  using V32 = hn::Vec<D32>;
  struct Sum {
    V32 re, im;
  };

  static KVRS_INLINE Sum zero() { return {hn::Zero(D32()), hn::Zero(D32())}; }
  static KVRS_INLINE Sum add(Sum sum, const Kvr16sc* in, const Kvr16sc* taps) {
    const auto x = hn::LoadU(D(), &in->re), h = hn::LoadU(D(), &taps->re);
    const auto negative = hn::BitCast(D(), hn::Set(D32(), static_cast<int32_t>(0xFFFF0000u)));
    const auto conjugate = hn::Sub(hn::Xor(h, negative), negative);
    return {hn::Add(sum.re, mulAddNeighbours(D32(), x, conjugate)),
            hn::Add(sum.im, mulAddNeighbours(D32(), x, hn::Reverse2(D(), h)))};
  }
  static KVRS_INLINE Sum join(Sum a, Sum b) { return {hn::Add(a.re, b.re), hn::Add(a.im, b.im)}; }
  static KVRS_INLINE auto half(Sum sum) {
    return typename DotArith<Kvr16sc, N / 2>::Sum{folded<Kvr32s, N>(sum.re), folded<Kvr32s, N>(sum.im)};
  }
  static KVRS_INLINE Kvr32sc result(Sum sum) { return {hn::GetLane(sum.re), hn::GetLane(sum.im)}; }
};

// The lanes of `sum`, and fewer than N products besides: those of the first N/2, N/4 ... elements that are left
// come in when the sum has been folded to as many lanes.
template <class T, size_t N>
KVRS_INLINE FirSum<T> foldedSum(typename DotArith<T, N>::Sum sum, const T* in, const T* taps, size_t len) {
  using A = DotArith<T, N>;
  if constexpr (N == A::kFewest) {
    auto result = A::result(sum);
    if constexpr (N == 2) {
      if (len % 2 != 0) {
        T x, tap;
        __builtin_memcpy(&x, in, sizeof x);
        __builtin_memcpy(&tap, taps, sizeof tap);
        result = static_cast<Kvr32s>(static_cast<uint32_t>(result) + static_cast<uint32_t>(x * tap));
      }
    }
    return result;
  } else {
    auto half = A::half(sum);
    if (len & (N / 2)) {
      half = DotArith<T, N / 2>::add(half, in, taps);
      in += N / 2;
      taps += N / 2;
    }
    return foldedSum<T, N / 2>(half, in, taps, len);
  }
}

// in[0]*taps[0] + ... + in[len-1]*taps[len-1].
template <class T>
KVRS_INLINE FirSum<T> dot(const T* in, const T* taps, size_t len) {
  constexpr size_t N = kFirLanes<T>;
  using A = DotArith<T, N>;
  auto sum0 = A::zero(), sum1 = sum0, sum2 = sum0, sum3 = sum0;
  size_t i = 0;
  for (; i + 4 * N <= len; i += 4 * N) {
    sum0 = A::add(sum0, in + i, taps + i);
    sum1 = A::add(sum1, in + i + N, taps + i + N);
    sum2 = A::add(sum2, in + i + 2 * N, taps + i + 2 * N);
    sum3 = A::add(sum3, in + i + 3 * N, taps + i + 3 * N);
  }
  for (; i + N <= len; i += N) sum0 = A::add(sum0, in + i, taps + i);
  return foldedSum<T, N>(A::join(A::join(sum0, sum1), A::join(sum2, sum3)), in + i, taps + i, len - i);
}

}  // namespace fir_detail

// Up to kShiftTaps real taps, single samples shift the whole window by vectors: the next call loads the very vectors that
// this one stores, which the processor hands through without waiting for the cache. A few taps are faster by short
// vectors, which take less to shift and to fold.
template <class T>
inline constexpr bool kShifts = !FirElement<T>::kComplex && !FirElement<T>::kInteger;
template <class T>
inline constexpr size_t kFewShiftLanes = 16 / sizeof(T);
template <class T>
inline constexpr size_t kShiftLanes = kVectorBytes < 32 ? kFirLanes<T> : 32 / sizeof(T);
template <class T>
inline constexpr size_t kShiftTaps = kShifts<T> ? 16 * kShiftLanes<T> : 0;

template <class T>
constexpr bool shiftsByFew(size_t tapsLen) {
  return kFewShiftLanes<T> < kShiftLanes<T> && tapsLen <= 2 * kFewShiftLanes<T>;
}

// The window and the taps end with such a vector; these elements are before them in their first one.
template <class T>
constexpr size_t shiftPadding(size_t tapsLen) {
  if (!kShifts<T>) return 0;
  return (0 - tapsLen) % (shiftsByFew<T>(tapsLen) ? kFewShiftLanes<T> : kShiftLanes<T>);
}

namespace fir_detail {

// From kLanes - 1 - k on: a vector whose first k lanes are 0 and whose others have all bits set.
template <class T>
struct KeepTable {
  alignas(64) hwy::MakeSigned<T> bits[2 * kShiftLanes<T>];
  constexpr KeepTable() : bits() {
    for (size_t i = 0; i < 2 * kShiftLanes<T>; ++i) bits[i] = i < kShiftLanes<T> ? 0 : -1;
  }
};
template <class T>
inline constexpr KeepTable<T> kKeep;

// firShift by vectors of N.
template <class T, size_t N>
KVRS_INLINE T shift(T* window, const T* taps, size_t len, T newest) {
  const Lanes<T, N> d;
  auto sum = hn::Zero(d);
  auto upper = hn::Set(d, newest);
  const auto step = [&](auto lower) KVRS_UNROLLED {
    auto next = upper;  // of each 16 bytes of `lower`, what comes behind
    if constexpr (N * sizeof(T) == 32) next = hn::ConcatLowerUpper(d, upper, lower);
    const auto moved = hn::CombineShiftRightBytes<sizeof(T)>(d, next, lower);
    hn::StoreU(moved, d, window);
    sum = hn::MulAdd(moved, hn::LoadU(d, taps), sum);
    upper = lower;
  };
  // The lanes of the first vector that are neither before the window nor its oldest sample.
  const size_t dropped = (0 - len) % N + 1;
  const hn::RebindToSigned<decltype(d)> di;
  const auto keep = hn::BitCast(d, hn::LoadU(di, kKeep<T>.bits + (kShiftLanes<T> - dropped)));
  // From the end on, where both arrays have whole vectors.
  window += len - N;
  taps += len - N;
  for (; len > N; len -= N, window -= N, taps -= N) step(hn::LoadU(d, window));
  step(hn::And(hn::LoadU(d, window), keep));
  return hn::GetLane(hn::SumOfLanes(d, sum));
}

}  // namespace fir_detail

// firShift where shiftsByFew.
template <class T>
KVRS_INLINE T firShiftByFew(T* window, const T* taps, size_t len, T newest) {
  return fir_detail::shift<T, kFewShiftLanes<T>>(window, taps, len, newest);
}

// Puts `newest` behind a window of `len` samples, moves them all by one to the front, and returns their sum of products.
template <class T>
KVRS_INLINE T firShift(T* window, const T* taps, size_t len, T newest) {
  if (shiftsByFew<T>(len)) return firShiftByFew(window, taps, len, newest);
  return fir_detail::shift<T, kShiftLanes<T>>(window, taps, len, newest);
}

}  // namespace kvrs

#endif
