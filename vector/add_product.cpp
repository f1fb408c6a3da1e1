// Sums of products of floats.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"
#include "frame/overlap.h"
#include "frame/unroll.h"
#include "kvrs/mixed.h"

namespace kvrs {
namespace {

struct AddProduct {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b, V sum) const {
    return hn::Add(sum, hn::Mul(a, b));
  }
};

// On pairs.
struct AddComplexProduct {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b, V sum) const {
    return hn::Add(sum, mulPairs(d, a, b));
  }
};

template <class T>
struct AddScaled {
  T val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V sum) const {
    return hn::Add(sum, hn::Mul(a, hn::Set(d, val)));
  }
};

// srcDst[i] = op(src[i]..., srcDst[i])
template <class T, class Op, class... S>
KvrStatus accumulate(const Op& op, T* srcDst, int len, const S*... src) {
  const auto map = [&](T* to, size_t n, const S*... from)
                       KVRS_UNROLLED { return mapElements(op, to, n, from..., static_cast<const T*>(to)); };
  return inElementOrder(map, srcDst, static_cast<size_t>(len), src...);
}

template <class T>
KvrStatus addProduct(const T* src1, const T* src2, T* srcDst, int len) {
  KVRS_CHECK(pointers(src1, src2, srcDst), length(len));
  return accumulate(AddProduct(), srcDst, len, src1, src2);
}

template <class Part, class T>
KvrStatus addComplexProduct(const T* src1, const T* src2, T* srcDst, int len) {
  KVRS_CHECK(pointers(src1, src2, srcDst), length(len));
  return accumulate(AddComplexProduct(), asPairs<Part>(srcDst), len, asPairs<Part>(src1),
                    asPairs<Part>(src2));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAddProduct_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* srcDst, int len) noexcept {
  return addProduct(src1, src2, srcDst, len);
}
KvrStatus kvrsAddProduct_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* srcDst, int len) noexcept {
  return addProduct(src1, src2, srcDst, len);
}
KvrStatus kvrsAddProduct_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* srcDst, int len) noexcept {
  return addComplexProduct<Kvr32f>(src1, src2, srcDst, len);
}
KvrStatus kvrsAddProduct_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* srcDst, int len) noexcept {
  return addComplexProduct<Kvr64f>(src1, src2, srcDst, len);
}
KvrStatus kvrsAddProductC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  KVRS_CHECK(pointers(src, srcDst), length(len));
  return accumulate(AddScaled<Kvr32f>{val}, srcDst, len, src);
}
