// Arithmetic on floating-point vectors, part by part: real ones, and sums and differences of complex ones.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_float.h"

#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/scalar.h"
#include "vector/arith_float.h"
#include "vector/stand_in.h"

namespace kvrs {
namespace {

// The second operand less the first.
struct Sub {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Sub(b, a);
  }
};

struct Mul {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Mul(a, b);
  }
};

template <class Op, class T>
KvrStatus vectorVector(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  return mapElements(Op(), dst, static_cast<size_t>(len), src1, src2);
}

template <class T>
const LaneOf<T>* asParts(const T* p) {
  return reinterpret_cast<const LaneOf<T>*>(p);
}
template <class T>
LaneOf<T>* asParts(T* p) {
  return reinterpret_cast<LaneOf<T>*>(p);
}

// Complex vectors are real ones of twice the length, which is tested before the pointers.
template <class Op, class T>
KvrStatus complexVectors(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(length(len), pointers(src1, src2, dst));
  return mapElements(Op(), asParts(dst), 2 * static_cast<size_t>(len), asParts(src1), asParts(src2));
}

template <class Op, class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(scalarThen(Op(), val), dst, static_cast<size_t>(len), src);
}

// Op is Add or Sub. A scalar of 0 changes nothing.
template <class Op, class T>
KvrStatus sum(const T* src, T val, T* dst, int len) {
  return val == 0 ? copyInstead(src, dst, len) : vectorScalar<Op>(src, val, dst, len);
}

template <class T>
KvrStatus product(const T* src, T val, T* dst, int len) {
  if (val == 1) return copyInstead(src, dst, len);
  if (val != 0) return vectorScalar<Mul>(src, val, dst, len);
  KVRS_CHECK(pointers(src, dst), length(len));
  return zeroInstead(dst, len);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAdd_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return vectorVector<Add>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return vectorVector<Add>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return complexVectors<Add>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return complexVectors<Add>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return vectorVector<Add>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAdd_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return vectorVector<Add>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAdd_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return complexVectors<Add>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAdd_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return complexVectors<Add>(src, srcDst, srcDst, len);
}
KvrStatus kvrsSub_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return vectorVector<Sub>(src1, src2, dst, len);
}
KvrStatus kvrsSub_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return vectorVector<Sub>(src1, src2, dst, len);
}
KvrStatus kvrsSub_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return complexVectors<Sub>(src1, src2, dst, len);
}
KvrStatus kvrsSub_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return complexVectors<Sub>(src1, src2, dst, len);
}
KvrStatus kvrsSub_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return vectorVector<Sub>(src, srcDst, srcDst, len);
}
KvrStatus kvrsSub_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return vectorVector<Sub>(src, srcDst, srcDst, len);
}
KvrStatus kvrsSub_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return complexVectors<Sub>(src, srcDst, srcDst, len);
}
KvrStatus kvrsSub_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return complexVectors<Sub>(src, srcDst, srcDst, len);
}
KvrStatus kvrsMul_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return vectorVector<Mul>(src1, src2, dst, len);
}
KvrStatus kvrsMul_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return vectorVector<Mul>(src1, src2, dst, len);
}
KvrStatus kvrsMul_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return vectorVector<Mul>(src, srcDst, srcDst, len);
}
KvrStatus kvrsMul_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return vectorVector<Mul>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAddC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return sum<Add>(src, val, dst, len);
}
KvrStatus kvrsAddC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) noexcept {
  return sum<Add>(src, val, dst, len);
}
KvrStatus kvrsAddC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return sum<Add>(srcDst, val, srcDst, len);
}
KvrStatus kvrsAddC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) noexcept {
  return sum<Add>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return sum<Sub>(src, val, dst, len);
}
KvrStatus kvrsSubC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) noexcept {
  return sum<Sub>(src, val, dst, len);
}
KvrStatus kvrsSubC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return sum<Sub>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) noexcept {
  return sum<Sub>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return vectorScalar<SubRev>(src, val, dst, len);
}
KvrStatus kvrsSubCRev_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) noexcept {
  return vectorScalar<SubRev>(src, val, dst, len);
}
KvrStatus kvrsSubCRev_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return vectorScalar<SubRev>(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_64f_I(Kvr64f val, Kvr64f* srcDst, int len) noexcept {
  return vectorScalar<SubRev>(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  return product(src, val, dst, len);
}
KvrStatus kvrsMulC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) noexcept {
  return product(src, val, dst, len);
}
KvrStatus kvrsMulC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  return product(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) noexcept {
  return product(srcDst, val, srcDst, len);
}
