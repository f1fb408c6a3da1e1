// Haar transforms of whole vectors.
//
// The signal is an array of pairs, whose halves come apart on the way into vectors and together on the way out. Sums and
// differences of integers take the stages of all exact results (frame/scaled.h), two of them side by side.
// SPDX-License-Identifier: MIT
#include <climits>
#include <cstring>

#include "frame/check.h"
#include "frame/scaled.h"
#include "frame/unaligned.h"
#include "kvrs/wavelet.h"
#include "transforms/byte_pairs.h"

namespace kvrs {
namespace {

using scaled_detail::Halved;
using scaled_detail::Saturated;
using scaled_detail::ShiftedLeft;
using scaled_detail::ShiftedRight;

template <class T>
struct PairOf;
template <>
struct PairOf<Kvr8s> {
  using Type = Kvr8sc;
};
template <>
struct PairOf<Kvr16s> {
  using Type = Kvr16sc;
};
template <>
struct PairOf<Kvr32s> {
  using Type = Kvr32sc;
};
template <>
struct PairOf<Kvr64s> {
  using Type = Kvr64sc;
};
template <>
struct PairOf<Kvr32f> {
  using Type = Kvr32fc;
};
template <>
struct PairOf<Kvr64f> {
  using Type = Kvr64fc;
};
template <class T>
using PairsOf = typename PairOf<T>::Type;

// --- operations: of a pair low and high, and the other way round ---

template <class Stage>
struct Forward {
  [[no_unique_address]] Stage stage;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> x) const {
    return {stage(d, Sum<V>{x.re, x.im}), stage(d, Difference<V>{x.im, x.re})};
  }
};

template <class Stage>
struct Inverse {
  [[no_unique_address]] Stage stage;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V low, V high) const {
    return {stage(d, Difference<V>{low, high}), stage(d, Sum<V>{low, high})};
  }
};

struct ForwardOfFloats {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V> x) const {
    const V half = hn::Set(d, hn::TFromD<D>(0.5));
    const V first = hn::Mul(x.re, half), second = hn::Mul(x.im, half);
    return {hn::Add(first, second), hn::Sub(second, first)};
  }
};

struct InverseOfFloats {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, V low, V high) const {
    return {hn::Sub(low, high), hn::Add(low, high)};
  }
};

struct ZeroPairs {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, Complex<V>) const {
    return {hn::Zero(d), hn::Zero(d)};
  }
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V, V) const {
    return {hn::Zero(d), hn::Zero(d)};
  }
};

// --- loops ---

// Op<stage> by what is left of the exact sums and differences times 2^(-shift).
template <class T, template <class> class Op, class Dst, class... Src>
[[gnu::noinline]] KvrStatus mapPairs(Src... src, Dst dst, size_t pairs, int shift) {
  constexpr int kBits = 8 * sizeof(T);
  switch (scaleKernel(shift, {kBits, -kBits})) {
    case ScaleKernel::none:
      return mapElements(Op<Saturated>{}, dst, pairs, src...);
    case ScaleKernel::one:
      return mapElements(Op<Halved>{}, dst, pairs, src...);
    case ScaleKernel::shiftRight:
      return mapElements(Op<ShiftedRight>{{shift}}, dst, pairs, src...);
    case ScaleKernel::shiftLeft:
      return mapElements(Op<ShiftedLeft>{{-shift}}, dst, pairs, src...);
    case ScaleKernel::bySign:
      return mapElements(Op<ShiftedLeft>{{kBits}}, dst, pairs, src...);
    case ScaleKernel::zero:
      break;
  }
  return mapElements(ZeroPairs(), dst, pairs, src...);
}

template <class T>
KVRS_INLINE KvrStatus forwardPairs(const T* src, T* low, T* high, size_t pairs, int shift) {
  const auto* const from = reinterpret_cast<const PairsOf<T>*>(src);
  if constexpr (std::is_floating_point_v<T>) {
    return mapElements(ForwardOfFloats(), Planes<T>{low, high}, pairs, from);
  } else {
    return mapPairs<T, Forward, Planes<T>, const PairsOf<T>*>(from, Planes<T>{low, high}, pairs, shift);
  }
}
template <class T>
KVRS_INLINE KvrStatus inversePairs(const T* low, const T* high, T* dst, size_t pairs, int shift) {
  auto* const to = reinterpret_cast<PairsOf<T>*>(dst);
  if constexpr (std::is_floating_point_v<T>) {
    return mapElements(InverseOfFloats(), to, pairs, low, high);
  } else {
    return mapPairs<T, Inverse, PairsOf<T>*, const T*, const T*>(low, high, to, pairs, shift);
  }
}

// A last sample without a partner: (x + x) * 2^(-shift) is x times what it is to be scaled by.
template <class T>
[[gnu::noinline]] void forwardLast(const T* src, T* low, int shift) {
  if constexpr (std::is_floating_point_v<T>) {
    unaligned::put(unaligned::get(src), low);
  } else {
    const T x = unaligned::get(src), twice[2] = {x, x};
    T unused;
    T result;
    forwardPairs(twice, &result, &unused, 1, shift);
    unaligned::put(result, low);
  }
}
template <class T>
[[gnu::noinline]] void inverseLast(const T* low, T* dst, int shift) {
  if constexpr (std::is_floating_point_v<T>) {
    unaligned::put(unaligned::get(low), dst);
  } else {
    const T x = unaligned::get(low), none = 0;
    T result[2];
    inversePairs(&x, &none, result, 1, shift);
    unaligned::put(result[1], dst);
  }
}

// `shift`: sums and differences times 2^(-shift).
template <class T>
KvrStatus forward(const T* src, int len, T* dstLow, T* dstHigh, int shift) {
  KVRS_CHECK(pointers(src, dstLow, dstHigh), lengthOf<T>(len));
  const size_t n = static_cast<size_t>(len), pairs = n / 2;
  if (pairs != 0) forwardPairs(src, dstLow, dstHigh, pairs, shift);
  if (n % 2 != 0) forwardLast(src + n - 1, dstLow + pairs, shift);
  return kvrStatusOk;
}
template <class T>
KvrStatus inverse(const T* srcLow, const T* srcHigh, T* dst, int len, int shift) {
  KVRS_CHECK(pointers(srcLow, srcHigh, dst), lengthOf<T>(len));
  const size_t n = static_cast<size_t>(len), pairs = n / 2;
  if (pairs != 0) inversePairs(srcLow, srcHigh, dst, pairs, shift);
  if (n % 2 != 0) inverseLast(srcLow + pairs, dst + n - 1, shift);
  return kvrStatusOk;
}

// The halves of the forward transform are one more bit.
constexpr int withHalf(int scaleFactor) {
  return scaleFactor == INT_MAX ? INT_MAX : scaleFactor + 1;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsWTHaarFwd_8s(const Kvr8s* src, int len, Kvr8s* dstLow, Kvr8s* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 1);
}
KvrStatus kvrsWTHaarFwd_16s(const Kvr16s* src, int len, Kvr16s* dstLow, Kvr16s* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 1);
}
KvrStatus kvrsWTHaarFwd_32s(const Kvr32s* src, int len, Kvr32s* dstLow, Kvr32s* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 1);
}
KvrStatus kvrsWTHaarFwd_64s(const Kvr64s* src, int len, Kvr64s* dstLow, Kvr64s* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 1);
}
KvrStatus kvrsWTHaarFwd_32f(const Kvr32f* src, int len, Kvr32f* dstLow, Kvr32f* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 0);
}
KvrStatus kvrsWTHaarFwd_64f(const Kvr64f* src, int len, Kvr64f* dstLow, Kvr64f* dstHigh) noexcept {
  return forward(src, len, dstLow, dstHigh, 0);
}
KvrStatus kvrsWTHaarFwd_8s_Sfs(const Kvr8s* src, int len, Kvr8s* dstLow, Kvr8s* dstHigh,
                               int scaleFactor) noexcept {
  return forward(src, len, dstLow, dstHigh, withHalf(scaleFactor));
}
KvrStatus kvrsWTHaarFwd_16s_Sfs(const Kvr16s* src, int len, Kvr16s* dstLow, Kvr16s* dstHigh,
                                int scaleFactor) noexcept {
  return forward(src, len, dstLow, dstHigh, withHalf(scaleFactor));
}
KvrStatus kvrsWTHaarFwd_32s_Sfs(const Kvr32s* src, int len, Kvr32s* dstLow, Kvr32s* dstHigh,
                                int scaleFactor) noexcept {
  return forward(src, len, dstLow, dstHigh, withHalf(scaleFactor));
}
KvrStatus kvrsWTHaarFwd_64s_Sfs(const Kvr64s* src, int len, Kvr64s* dstLow, Kvr64s* dstHigh,
                                int scaleFactor) noexcept {
  return forward(src, len, dstLow, dstHigh, withHalf(scaleFactor));
}
KvrStatus kvrsWTHaarInv_8s(const Kvr8s* srcLow, const Kvr8s* srcHigh, Kvr8s* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_16s(const Kvr16s* srcLow, const Kvr16s* srcHigh, Kvr16s* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_32s(const Kvr32s* srcLow, const Kvr32s* srcHigh, Kvr32s* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_64s(const Kvr64s* srcLow, const Kvr64s* srcHigh, Kvr64s* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_32f(const Kvr32f* srcLow, const Kvr32f* srcHigh, Kvr32f* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_64f(const Kvr64f* srcLow, const Kvr64f* srcHigh, Kvr64f* dst, int len) noexcept {
  return inverse(srcLow, srcHigh, dst, len, 0);
}
KvrStatus kvrsWTHaarInv_8s_Sfs(const Kvr8s* srcLow, const Kvr8s* srcHigh, Kvr8s* dst, int len,
                               int scaleFactor) noexcept {
  return inverse(srcLow, srcHigh, dst, len, scaleFactor);
}
KvrStatus kvrsWTHaarInv_16s_Sfs(const Kvr16s* srcLow, const Kvr16s* srcHigh, Kvr16s* dst, int len,
                                int scaleFactor) noexcept {
  return inverse(srcLow, srcHigh, dst, len, scaleFactor);
}
KvrStatus kvrsWTHaarInv_32s_Sfs(const Kvr32s* srcLow, const Kvr32s* srcHigh, Kvr32s* dst, int len,
                                int scaleFactor) noexcept {
  return inverse(srcLow, srcHigh, dst, len, scaleFactor);
}
KvrStatus kvrsWTHaarInv_64s_Sfs(const Kvr64s* srcLow, const Kvr64s* srcHigh, Kvr64s* dst, int len,
                                int scaleFactor) noexcept {
  return inverse(srcLow, srcHigh, dst, len, scaleFactor);
}
