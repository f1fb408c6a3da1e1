// Scaled integer subtraction: of two vectors, and of a vector and a scalar in either order.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

// a - b; in unsigned lanes raised to 0, after which it fits.
struct Minus {
  template <class D, class V>
  KVRS_INLINE auto operator()(D, V a, V b) const {
    if constexpr (std::is_unsigned_v<hn::TFromD<D>>) {
      return hn::SaturatedSub(a, b);
    } else {
      return Difference<V>{a, b};
    }
  }
};

// src - val.
template <class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (isZero(val) && scaleFactor == 0) return copyInstead(src, dst, len);
  return mapScaled(thenScalar(Minus(), val), bounds, scaleFactor, elements(dst), static_cast<size_t>(len),
                   elements(src));
}

// val - src.
template <class T>
KvrStatus scalarVector(const T* src, T val, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (std::is_unsigned_v<LaneOf<T>> && isZero(val)) return zeroInstead(dst, len);
  return mapScaled(scalarThen(Minus(), val), bounds, scaleFactor, elements(dst), static_cast<size_t>(len),
                   elements(src));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSub_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                         int scaleFactor) noexcept {
  return vectorVector<Minus>(src2, src1, dst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSub_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Minus>(srcDst, src, srcDst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSub_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                          int scaleFactor) noexcept {
  if (scaleFactor > kSub16u.zeroAbove) return zeroInstead(dst, len);
  return vectorVector<Minus>(src2, src1, dst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSub_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  if (scaleFactor > kSub16u.zeroAbove) return zeroInstead(srcDst, len);
  return vectorVector<Minus>(srcDst, src, srcDst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSub_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                          int scaleFactor) noexcept {
  return vectorVector<Minus>(src2, src1, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSub_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Minus>(srcDst, src, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSub_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                           int scaleFactor) noexcept {
  return partByPart<Minus>(src2, src1, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSub_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return partByPart<Minus>(srcDst, src, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSub_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                          int scaleFactor) noexcept {
  return vectorVector<Minus>(src2, src1, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSub_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Minus>(srcDst, src, srcDst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSub_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                           int scaleFactor) noexcept {
  return partByPart<Minus>(src2, src1, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSub_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return partByPart<Minus>(srcDst, src, srcDst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSub_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) noexcept {
  return vectorVector<Minus>(src2, src1, dst, len);
}
KvrStatus kvrsSub_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) noexcept {
  return vectorVector<Minus>(srcDst, src, srcDst, len);
}

KvrStatus kvrsSubC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSubC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSubC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  if (scaleFactor > kSub16u.zeroAbove) return zeroInstead(dst, len);
  return vectorScalar(src, val, dst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSubC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSubC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kSub16s, 0);
}

KvrStatus kvrsSubCRev_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSubCRev_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub8u, scaleFactor);
}
KvrStatus kvrsSubCRev_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSubCRev_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub16u, scaleFactor);
}
KvrStatus kvrsSubCRev_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubCRev_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubCRev_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                               int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubCRev_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub16s, scaleFactor);
}
KvrStatus kvrsSubCRev_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubCRev_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubCRev_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                               int scaleFactor) noexcept {
  return scalarVector(src, val, dst, len, kSub32s, scaleFactor);
}
KvrStatus kvrsSubCRev_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return scalarVector(srcDst, val, srcDst, len, kSub32s, scaleFactor);
}
