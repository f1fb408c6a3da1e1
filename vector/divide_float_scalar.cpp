// Division of floats by a scalar: a product with its reciprocal.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "kvrs/arith_float.h"
#include "kvrs/divide.h"

namespace kvrs {
namespace {

template <class T>
auto squaredMagnitude(T val) {
  return val.re * val.re + val.im * val.im;
}

// conj(val) / |val|^2
template <class T>
T reciprocal(T val) {
  const auto inverse = 1 / squaredMagnitude(val);
  return {val.re * inverse, -val.im * inverse};
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDivC_32f(const Kvr32f* src, Kvr32f val, Kvr32f* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  return kvrsMulC_32f(src, 1 / val, dst, len);
}
KvrStatus kvrsDivC_32f_I(Kvr32f val, Kvr32f* srcDst, int len) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len), divisor(val == 0));
  return kvrsMulC_32f_I(1 / val, srcDst, len);
}
KvrStatus kvrsDivC_64f(const Kvr64f* src, Kvr64f val, Kvr64f* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  return kvrsMulC_64f(src, 1 / val, dst, len);
}
KvrStatus kvrsDivC_64f_I(Kvr64f val, Kvr64f* srcDst, int len) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len), divisor(val == 0));
  return kvrsMulC_64f_I(1 / val, srcDst, len);
}
KvrStatus kvrsDivC_32fc(const Kvr32fc* src, Kvr32fc val, Kvr32fc* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(squaredMagnitude(val) == 0));
  return kvrsMulC_32fc(src, reciprocal(val), dst, len);
}
KvrStatus kvrsDivC_32fc_I(Kvr32fc val, Kvr32fc* srcDst, int len) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len), divisor(squaredMagnitude(val) == 0));
  return kvrsMulC_32fc_I(reciprocal(val), srcDst, len);
}
KvrStatus kvrsDivC_64fc(const Kvr64fc* src, Kvr64fc val, Kvr64fc* dst, int len) noexcept {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(squaredMagnitude(val) == 0));
  return kvrsMulC_64fc(src, reciprocal(val), dst, len);
}
KvrStatus kvrsDivC_64fc_I(Kvr64fc val, Kvr64fc* srcDst, int len) noexcept {
  KVRS_CHECK(pointers(srcDst), length(len), divisor(squaredMagnitude(val) == 0));
  return kvrsMulC_64fc_I(reciprocal(val), srcDst, len);
}
