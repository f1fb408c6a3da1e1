// Sums of products of floats.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"
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

// Whether elements of src are stored before they are read when elements are computed one after the other: it
// begins below dst and reaches into it.
template <class T>
bool readsResults(const T* src, const T* dst, int len) {
  const uintptr_t from = reinterpret_cast<uintptr_t>(src), to = reinterpret_cast<uintptr_t>(dst);
  return from < to && to - from < static_cast<size_t>(len) * sizeof(T);
}

// srcDst[i] = op(src[i]..., srcDst[i]) in the order of the elements. The element loop may run over vectors as
// long as no source reads results: what lies above is read before it is stored.
template <class T, class Op, class... S>
KvrStatus accumulate(const Op& op, T* srcDst, int len, const S*... src) {
  if (__builtin_expect((readsResults(src, static_cast<const T*>(srcDst), len) || ...), false)) {
    for (int i = 0; i < len; ++i) mapElements(op, srcDst + i, 1, (src + i)..., srcDst + i);
    return kvrStatusOk;
  }
  return mapElements(op, srcDst, static_cast<size_t>(len), src..., srcDst);
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
