// Squares.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/loop.h"
#include "kvrs/unary.h"

namespace kvrs {
namespace {

struct Square {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V v) const {
    return hn::Mul(v, v);
  }
};

// (re * re - im * im, (2 * re) * im). Parts by themselves take five operations and four shuffles for two vectors; as pairs
// they would take eight and the same loads three times.
struct ComplexSquare {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, Complex<V> z) const {
    return {hn::Sub(hn::Mul(z.re, z.re), hn::Mul(z.im, z.im)), hn::Mul(hn::Add(z.re, z.re), z.im)};
  }
};

template <class T>
KvrStatus square(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Square(), dst, static_cast<size_t>(len), src);
}

template <class T>
KvrStatus squareComplex(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ComplexSquare(), dst, static_cast<size_t>(len), src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSqr_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return square(src, dst, len);
}
KvrStatus kvrsSqr_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return square(src, dst, len);
}
KvrStatus kvrsSqr_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return squareComplex(src, dst, len);
}
KvrStatus kvrsSqr_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return squareComplex(src, dst, len);
}
KvrStatus kvrsSqr_32f_I(Kvr32f* srcDst, int len) noexcept {
  return square(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_64f_I(Kvr64f* srcDst, int len) noexcept {
  return square(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return squareComplex(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return squareComplex(srcDst, srcDst, len);
}
