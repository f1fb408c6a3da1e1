// Complex numbers and their parts.
// SPDX-License-Identifier: MIT
#include "kvrs/complex_parts.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/loop_two.h"

namespace kvrs {
namespace {

struct RealPart {
  template <class D, class V>
  KVRS_INLINE V operator()(D, Complex<V> z) const {
    return z.re;
  }
};

struct ImagPart {
  template <class D, class V>
  KVRS_INLINE V operator()(D, Complex<V> z) const {
    return z.im;
  }
};

struct BothParts {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, Complex<V> z) const {
    return z;
  }
};

struct Join {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, V re, V im) const {
    return {re, im};
  }
};

struct WithoutImag {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V re) const {
    return {re, hn::Zero(d)};
  }
};

struct WithoutReal {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V im) const {
    return {hn::Zero(d), im};
  }
};

// Conjugates pairs.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V conjugate(D d, V pairs) {
  using T = hn::TFromD<D>;
  if constexpr (std::is_integral_v<T>) {
    return hn::OddEven(hn::SaturatedSub(hn::Zero(d), pairs), pairs);
  } else {
    return hn::Xor(pairs, hn::OddEven(hn::SignBit(d), hn::Zero(d)));
  }
}

struct Conjugate {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V pairs) const {
    return conjugate(d, pairs);
  }
};

// Pairs in reverse order.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V reversePairs(D d, V pairs) {
  using T = hn::TFromD<D>;
  if constexpr (hn::MaxLanes(D()) == 2) {
    return pairs;
  } else if constexpr (sizeof(T) == 8) {
    return hn::ReverseBlocks(d, pairs);
  } else {
    using Word = std::conditional_t<sizeof(T) == 2, uint32_t, uint64_t>;
    const hn::Repartition<Word, D> dw;
    return hn::BitCast(d, hn::Reverse(dw, hn::BitCast(dw, pairs)));
  }
}

// Blocks of N pairs from both ends of the array on, the last one over its neighbour.
template <size_t N, class T>
KVRS_INLINE void conjugateFlipped(const Pair<T>* src, Pair<T>* dst, ptrdiff_t len) {
  if (len < ptrdiff_t{N}) {
    if constexpr (N > 1) conjugateFlipped<N / 2>(src, dst, len);
    return;
  }
  using Pairs = Element<Pair<T>>;
  const ElementLanes<Pair<T>, N> d;
  const auto move = [&](ptrdiff_t i) __attribute__((always_inline)) {
    Pairs::store(conjugate(d, reversePairs(d, Pairs::load(d, src + (len - N - i)))), d, dst + i);
  };
  const ptrdiff_t last = len - N;
  for (ptrdiff_t i = 0; i < last; i += N) {
    loop_detail::keepIndex(i);
    move(i);
  }
  move(last);
}

template <class Op, class T, class C>
KvrStatus part(const C* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Op(), dst, static_cast<size_t>(len), src);
}

template <class T, class C>
KvrStatus split(const C* src, T* dstRe, T* dstIm, int len) {
  KVRS_CHECK(pointers(src, dstRe, dstIm), length(len));
  return mapToTwo(BothParts(), dstRe, dstIm, len, src);
}

template <class T, class C>
KvrStatus join(const T* srcRe, const T* srcIm, C* dst, int len) {
  KVRS_CHECK(pointers(dst), length(len), require(srcRe != nullptr || srcIm != nullptr, kvrStatusNullPointer));
  const size_t count = static_cast<size_t>(len);
  if (srcIm == nullptr) return mapElements(WithoutImag(), dst, count, srcRe);
  if (srcRe == nullptr) return mapElements(WithoutReal(), dst, count, srcIm);
  return mapElements(Join(), dst, count, srcRe, srcIm);
}

template <class C>
KvrStatus conj(const C* src, C* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  using T = LaneOf<C>;
  return mapElements(Conjugate(), asPairs<T>(dst), static_cast<size_t>(len), asPairs<T>(src));
}

template <class C>
KvrStatus conjFlip(const C* src, C* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  using T = LaneOf<C>;
  conjugateFlipped<loop_detail::kBlock<Pair<T>>>(asPairs<T>(src), asPairs<T>(dst), len);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsReal_16sc(const Kvr16sc* src, Kvr16s* dstRe, int len) noexcept {
  return part<RealPart>(src, dstRe, len);
}
KvrStatus kvrsReal_32fc(const Kvr32fc* src, Kvr32f* dstRe, int len) noexcept {
  return part<RealPart>(src, dstRe, len);
}
KvrStatus kvrsReal_64fc(const Kvr64fc* src, Kvr64f* dstRe, int len) noexcept {
  return part<RealPart>(src, dstRe, len);
}
KvrStatus kvrsImag_16sc(const Kvr16sc* src, Kvr16s* dstIm, int len) noexcept {
  return part<ImagPart>(src, dstIm, len);
}
KvrStatus kvrsImag_32fc(const Kvr32fc* src, Kvr32f* dstIm, int len) noexcept {
  return part<ImagPart>(src, dstIm, len);
}
KvrStatus kvrsImag_64fc(const Kvr64fc* src, Kvr64f* dstIm, int len) noexcept {
  return part<ImagPart>(src, dstIm, len);
}
KvrStatus kvrsCplxToReal_16sc(const Kvr16sc* src, Kvr16s* dstRe, Kvr16s* dstIm, int len) noexcept {
  return split(src, dstRe, dstIm, len);
}
KvrStatus kvrsCplxToReal_32fc(const Kvr32fc* src, Kvr32f* dstRe, Kvr32f* dstIm, int len) noexcept {
  return split(src, dstRe, dstIm, len);
}
KvrStatus kvrsCplxToReal_64fc(const Kvr64fc* src, Kvr64f* dstRe, Kvr64f* dstIm, int len) noexcept {
  return split(src, dstRe, dstIm, len);
}
KvrStatus kvrsRealToCplx_16s(const Kvr16s* srcRe, const Kvr16s* srcIm, Kvr16sc* dst, int len) noexcept {
  return join(srcRe, srcIm, dst, len);
}
KvrStatus kvrsRealToCplx_32f(const Kvr32f* srcRe, const Kvr32f* srcIm, Kvr32fc* dst, int len) noexcept {
  return join(srcRe, srcIm, dst, len);
}
KvrStatus kvrsRealToCplx_64f(const Kvr64f* srcRe, const Kvr64f* srcIm, Kvr64fc* dst, int len) noexcept {
  return join(srcRe, srcIm, dst, len);
}
KvrStatus kvrsConj_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return conj(src, dst, len);
}
KvrStatus kvrsConj_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return conj(srcDst, srcDst, len);
}
KvrStatus kvrsConj_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return conj(src, dst, len);
}
KvrStatus kvrsConj_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return conj(srcDst, srcDst, len);
}
KvrStatus kvrsConj_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return conj(src, dst, len);
}
KvrStatus kvrsConj_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return conj(srcDst, srcDst, len);
}
KvrStatus kvrsConjFlip_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return conjFlip(src, dst, len);
}
KvrStatus kvrsConjFlip_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return conjFlip(src, dst, len);
}
KvrStatus kvrsConjFlip_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return conjFlip(src, dst, len);
}
