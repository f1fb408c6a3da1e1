// Squares.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/complex.h"
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

// On pairs: (re * re - im * im, (2 * re) * im).
template <class Part>
struct ComplexSquare {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V v) const {
    const V re = dupEven(v), im = dupOdd(v);
    const V product = hn::Mul(hn::Mul(re, setPairs(d, Part(1), Part(2))), v);
    return hn::OddEven(product, hn::Sub(product, hn::Mul(im, im)));
  }
};

template <class T>
KvrStatus square(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(Square(), dst, static_cast<size_t>(len), src);
}

template <class Part, class T>
KvrStatus squareComplex(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapElements(ComplexSquare<Part>(), asPairs<Part>(dst), static_cast<size_t>(len), asPairs<Part>(src));
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
  return squareComplex<Kvr32f>(src, dst, len);
}
KvrStatus kvrsSqr_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return squareComplex<Kvr64f>(src, dst, len);
}
KvrStatus kvrsSqr_32f_I(Kvr32f* srcDst, int len) noexcept {
  return square(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_64f_I(Kvr64f* srcDst, int len) noexcept {
  return square(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return squareComplex<Kvr32f>(srcDst, srcDst, len);
}
KvrStatus kvrsSqr_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return squareComplex<Kvr64f>(srcDst, srcDst, len);
}
