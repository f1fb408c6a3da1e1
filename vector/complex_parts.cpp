// Complex numbers and their parts.
// SPDX-License-Identifier: MIT
#include "kvrs/complex_parts.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/plain.h"

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

// The same on the words that a reversed array is moved in, a complex number each.
template <class T>
struct ConjugateWords {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V words) const {
    const hn::Repartition<T, D> parts;
    return hn::BitCast(d, conjugate(parts, hn::BitCast(parts, words)));
  }
};

template <class C>
struct WordOf;
template <>
struct WordOf<Kvr16sc> {
  using Type = Kvr32u;
};
template <>
struct WordOf<Kvr32fc> {
  using Type = Kvr64u;
};
template <>
struct WordOf<Kvr64fc> {
  using Type = Pair<Kvr64u>;
};

template <class Op, class T, class C>
KvrStatus part(const C* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Op(), dst, static_cast<size_t>(len), src);
}

template <class T, class C>
KvrStatus split(const C* src, T* dstRe, T* dstIm, int len) {
  KVRS_CHECK(pointers(src, dstRe, dstIm), length(len));
  return mapElements(BothParts(), Planes<T>{dstRe, dstIm}, static_cast<size_t>(len), src);
}

template <class T, class C>
KvrStatus join(const T* srcRe, const T* srcIm, C* dst, int len) {
  KVRS_CHECK(pointers(dst), length(len), require(srcRe != nullptr || srcIm != nullptr, kvrStatusNullPointer));
  const size_t count = static_cast<size_t>(len);
  if (srcIm == nullptr) return mapElements(WithoutImag(), dst, count, srcRe);
  if (srcRe == nullptr) return mapElements(WithoutReal(), dst, count, srcIm);
  return mapElements(JoinParts(), dst, count, srcRe, srcIm);
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
  using Word = typename WordOf<C>::Type;
  return mapElements(ConjugateWords<LaneOf<C>>(), reinterpret_cast<Word*>(dst), static_cast<size_t>(len),
                     Backward<Word>{reinterpret_cast<const Word*>(src) + len});
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
