// Integer division by a scalar and of a scalar.
// SPDX-License-Identifier: MIT
#include "kvrs/divide.h"
#include "vector/divide_complex-inl.h"
#include "vector/divide_integer-inl.h"

namespace kvrs {
namespace {

constexpr Division kC8u{-15, 8, 4096};
constexpr Division kC16u{-31, 16, kNeverThreaded};
constexpr Division kC16s{-30, 15, 4096};
constexpr Division kC16sc{-16, 64, 1024};  // nothing is left long before 64
constexpr Division kCRev16u{-31, 16, 2048};

// The exact quotient, rounded to nearest.
template <class T>
KvrStatus divideByScalar(const Division& rule, const T* src, T val, T* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  const VectorRoundingScope nearest(Rounding::nearest);
  const auto byVal = [val](auto op) { return WithDivisor(op, val); };
  return divideIntegers<QuotientRounding::byMode>(rule, scaleFactor, byVal, dst, len, src);
}

// The element times a factor: one rounding more than a quotient, and no division for each element.
class Product16s {
 public:
  explicit Product16s(float factor) : factor_(factor) {}

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V v) const {
    const hn::Rebind<float, D> dw;
    return roundTo<QuotientRounding::byMode>(d, hn::Mul(widen<float>(v), hn::Set(dw, factor_)));
  }

  bool metZeroDivisor() const { return false; }

 private:
  float factor_;
};

KvrStatus divideByScalar(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val == 0));
  if (scaleFactor > kC16s.zeroAbove) {
    memset(dst, 0, static_cast<size_t>(len) * sizeof *dst);
    return kvrStatusOk;
  }
  // One below the bound every product but 0 saturates.
  const int exponent = scaleFactor < kC16s.signBelow ? kC16s.signBelow - 1 : scaleFactor;
  const float factor = static_cast<float>(powerOfTwo(-exponent)) / static_cast<float>(val);
  return divideVectors<float>(kC16s, Product16s(factor), dst, len, src);
}

KvrStatus divideByScalar(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len), divisor(val.re == 0 && val.im == 0));
  const VectorRoundingScope nearest(Rounding::nearest);
  if (scaleFactor < kC16sc.signBelow) {
    // Scaled up so far, the errors of a product with the inverse would show.
    const ComplexQuotientBy op(val, powerOfTwo(scaleFactor < -64 ? -64 : scaleFactor));
    return divideVectors<double>(kC16sc, op, dst, len, src);
  }
  const double scale = powerOfTwo(-(scaleFactor > kC16sc.zeroAbove ? kC16sc.zeroAbove : scaleFactor));
  const double re = val.re, im = val.im;
  const double square = re * re + im * im;
  const ComplexProduct op(re / square * scale, -im / square * scale);
  return divideVectors<double>(kC16sc, op, dst, len, src);
}

KvrStatus divideScalar(Kvr16u val, const Kvr16u* src, Kvr16u* dst, int len) {
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto ofVal = [val](auto op) { return WithDividend(op, val); };
  return divideIntegers<QuotientRounding::byMode>(kCRev16u, 0, ofVal, dst, len, src);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsDivC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC8u, src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC8u, srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC16u, src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(kC16u, srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return divideByScalar(src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                            int scaleFactor) noexcept {
  return divideByScalar(src, val, dst, len, scaleFactor);
}
KvrStatus kvrsDivC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return divideByScalar(srcDst, val, srcDst, len, scaleFactor);
}
KvrStatus kvrsDivCRev_16u(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len) noexcept {
  return divideScalar(val, src, dst, len);
}
KvrStatus kvrsDivCRev_16u_I(Kvr16u val, Kvr16u* srcDst, int len) noexcept {
  return divideScalar(val, srcDst, srcDst, len);
}
