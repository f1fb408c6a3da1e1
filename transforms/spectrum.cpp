// Products of packed spectra.
// SPDX-License-Identifier: MIT
#include "kvrs/spectrum.h"

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"

namespace kvrs {
namespace {

struct Product {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return mulPairs(d, a, b);
  }
};

struct ProductConj {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return mulPairsConj(d, a, b);
  }
};

// N real terms.
template <size_t N, class T>
void realTerms(const T* src1, const T* src2, T* dst) {
  const Lanes<T, N> d;
  hn::StoreU(hn::Mul(hn::LoadU(d, src1), hn::LoadU(d, src2)), d, dst);
}

// The complex terms, which begin at `first` and end at `end`.
template <class Op, class T>
KvrStatus complexTerms(const T* src1, const T* src2, T* dst, size_t first, size_t end) {
  return mapElements(Op(), asPairs<T>(dst + first), (end - first) / 2, asPairs<T>(src1 + first),
                     asPairs<T>(src2 + first));
}

template <class Op, class T>
KvrStatus multiplyPack(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (!loop_detail::fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  const size_t last = static_cast<size_t>(len) - 1;
  realTerms<1>(src1, src2, dst);
  if (len % 2 == 0) realTerms<1>(src1 + last, src2 + last, dst + last);
  return complexTerms<Op>(src1, src2, dst, 1, last + len % 2);
}

template <class T>
KvrStatus multiplyPerm(const T* src1, const T* src2, T* dst, int len) {
  if (len % 2 != 0) return multiplyPack<Product>(src1, src2, dst, len);
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (!loop_detail::fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  realTerms<2>(src1, src2, dst);
  return complexTerms<Product>(src1, src2, dst, 2, static_cast<size_t>(len));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMulPack_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return multiplyPack<Product>(src1, src2, dst, len);
}
KvrStatus kvrsMulPack_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return multiplyPack<Product>(src1, src2, dst, len);
}
KvrStatus kvrsMulPack_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPack<Product>(srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPack_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPack<Product>(srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPerm_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return multiplyPerm(src1, src2, dst, len);
}
KvrStatus kvrsMulPerm_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return multiplyPerm(src1, src2, dst, len);
}
KvrStatus kvrsMulPerm_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPerm(srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPerm_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPerm(srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPackConj_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPack<ProductConj>(src, srcDst, srcDst, len);
}
KvrStatus kvrsMulPackConj_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPack<ProductConj>(src, srcDst, srcDst, len);
}
