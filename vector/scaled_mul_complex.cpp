// Scaled integer multiplication of complex numbers, by parts of twice the width.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

// On pairs. The imaginary part of four lowest parts -2^(w-1) is 2^(2w-1), one more than the wide lanes hold; it is taken
// as one less, which no rounding tells from it.
struct ComplexTimes {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a, V b) const {
    if constexpr (sizeof(hn::TFromD<D>) == 2) {
      return in16(d, a, b);
    } else {
      return in32(d, a, b);
    }
  }

 private:
  // The negative of -32768 has no place in 16 bits, so the real part is taken as ar*br + ai*~bi + ai, which is the same
  // number.
  template <class D, class V>
  static KVRS_INLINE auto in16(D d, V a, V b) {
    const hn::RepartitionToWide<D> dw;
    using W = hn::Vec<decltype(dw)>;
    const V notImaginary = hn::BitCast(d, hn::Set(dw, static_cast<int32_t>(0xFFFF0000)));
    const W aImaginary = hn::ShiftRight<16>(hn::BitCast(dw, a));
    const W re = hn::Add(mulAddNeighbours(dw, a, hn::Xor(b, notImaginary)), aImaginary);
    const W im = mulAddNeighbours(dw, a, hn::Reverse2(d, b));
    return EvenOdd<W>{re, unwrapped(dw, im)};
  }

  template <class D, class V>
  static KVRS_INLINE auto in32(D d, V a, V b) {
    const hn::RepartitionToWide<D> dw;
    using W = hn::Vec<decltype(dw)>;
    const V swapped = hn::Reverse2(d, b);
    EvenOdd<W> squares, crossed;  // ar*br and ai*bi, ar*bi and ai*br
    if constexpr (kSignedMulEven) {
      const V imaginary = hn::Reverse2(d, a);
      squares = {hn::MulEven(a, b), hn::MulEven(imaginary, swapped)};
      crossed = {hn::MulEven(a, swapped), hn::MulEven(imaginary, b)};
    } else {
      squares = mulEvenOdd(d, a, b);
      crossed = mulEvenOdd(d, a, swapped);
    }
    const W im = hn::Add(crossed.even, crossed.odd);
    return EvenOdd<W>{hn::Sub(squares.even, squares.odd), unwrapped(dw, im)};
  }
};

template <class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  return mapScaled(thenScalar(ComplexTimes(), val), bounds, scaleFactor, elements(dst),
                   static_cast<size_t>(len), elements(src));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMul_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                           int scaleFactor) noexcept {
  return vectorVector<ComplexTimes>(src1, src2, dst, len, kMul16sc, scaleFactor);
}
KvrStatus kvrsMul_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<ComplexTimes>(srcDst, src, srcDst, len, kMul16sc, scaleFactor);
}
KvrStatus kvrsMul_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                           int scaleFactor) noexcept {
  return vectorVector<ComplexTimes>(src1, src2, dst, len, kMul32sc, scaleFactor);
}
KvrStatus kvrsMul_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<ComplexTimes>(srcDst, src, srcDst, len, kMul32sc, scaleFactor);
}

KvrStatus kvrsMulC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kMul16sc, scaleFactor);
}
KvrStatus kvrsMulC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul16sc, scaleFactor);
}
KvrStatus kvrsMulC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kMul32sc, scaleFactor);
}
KvrStatus kvrsMulC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kMul32sc, scaleFactor);
}
