// Products with complex vectors and arithmetic with complex scalars.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_float.h"

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"
#include "frame/scalar.h"
#include "vector/arith_float.h"

namespace kvrs {
namespace {

template <class Part>
struct MulC {
  Pair<Part> val;
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return subAdd(d, hn::Mul(a, hn::Set(d, val.re)), hn::Mul(swapParts(d, a), hn::Set(d, val.im)));
  }
};

template <class T>
KvrStatus multiply(const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  using Part = LaneOf<T>;
  return mapElements(MulPairs(), asPairs<Part>(dst), static_cast<size_t>(len), asPairs<Part>(src1),
                     asPairs<Part>(src2));
}

template <class Op, class T>
KvrStatus vectorScalar(const Op& op, const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  using Part = LaneOf<T>;
  return mapElements(op, asPairs<Part>(dst), static_cast<size_t>(len), asPairs<Part>(src));
}
template <class T>
KvrStatus sum(const T* src, T val, T* dst, int len) {
  return vectorScalar(thenScalar(Add(), val), src, dst, len);
}
template <class T>
KvrStatus difference(const T* src, T val, T* dst, int len) {
  return vectorScalar(thenScalar(SubRev(), val), src, dst, len);
}
template <class T>
KvrStatus reverseDifference(const T* src, T val, T* dst, int len) {
  return vectorScalar(scalarThen(SubRev(), val), src, dst, len);
}
template <class T>
KvrStatus product(const T* src, T val, T* dst, int len) {
  return vectorScalar(MulC<LaneOf<T>>{{val.re, val.im}}, src, dst, len);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMul_32fc(const Kvr32fc* src1, const Kvr32fc* src2, Kvr32fc* dst, int len) noexcept {
  return multiply(src1, src2, dst, len);
}
KvrStatus kvrsMul_64fc(const Kvr64fc* src1, const Kvr64fc* src2, Kvr64fc* dst, int len) noexcept {
  return multiply(src1, src2, dst, len);
}
KvrStatus kvrsMul_32fc_I(const Kvr32fc* src, Kvr32fc* srcDst, int len) noexcept {
  return multiply(src, srcDst, srcDst, len);
}
KvrStatus kvrsMul_64fc_I(const Kvr64fc* src, Kvr64fc* srcDst, int len) noexcept {
  return multiply(src, srcDst, srcDst, len);
}
KvrStatus kvrsAddC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return sum(src, val, dst, len);
}
KvrStatus kvrsAddC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return sum(src, val, dst, len);
}
KvrStatus kvrsAddC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return sum(srcDst, val, srcDst, len);
}
KvrStatus kvrsAddC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return sum(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return difference(src, val, dst, len);
}
KvrStatus kvrsSubC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return difference(src, val, dst, len);
}
KvrStatus kvrsSubC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return difference(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return difference(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return reverseDifference(src, val, dst, len);
}
KvrStatus kvrsSubCRev_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return reverseDifference(src, val, dst, len);
}
KvrStatus kvrsSubCRev_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return reverseDifference(srcDst, val, srcDst, len);
}
KvrStatus kvrsSubCRev_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return reverseDifference(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  return product(src, val, dst, len);
}
KvrStatus kvrsMulC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  return product(src, val, dst, len);
}
KvrStatus kvrsMulC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  return product(srcDst, val, srcDst, len);
}
KvrStatus kvrsMulC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  return product(srcDst, val, srcDst, len);
}
