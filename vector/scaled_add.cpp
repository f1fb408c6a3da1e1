// Scaled integer addition: of two vectors, and of a vector and a scalar.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "kvrs/fill.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

struct Plus {
  template <class D, class V>
  KVRS_INLINE Sum<V> operator()(D, V a, V b) const {
    return {a, b};
  }
};

// In 64 bits the sum saturates before it is scaled.
struct SaturatedPlus {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return saturatedAdd(d, a, b);
  }
};

struct WidenedPlus {
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V a, V b) const {
    return hn::Add(hn::PromoteTo(d, a), hn::PromoteTo(d, b));
  }
};

struct WidenedPlusWide {
  template <class D, class V, class W>
  KVRS_INLINE Sum<W> operator()(D d, V a, W b) const {
    return {hn::PromoteTo(d, a), b};
  }
};

template <class T>
KvrStatus vectorScalar(const T* src, T val, T* dst, int len, ScaleBounds bounds, int scaleFactor) {
  KVRS_CHECK(pointers(src, dst), length(len));
  if (isZero(val) && scaleFactor == 0) return copyInstead(src, dst, len);
  return mapScaled(thenScalar(Plus(), val), bounds, scaleFactor, elements(dst), static_cast<size_t>(len),
                   elements(src));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAdd_8u_Sfs(const Kvr8u* src1, const Kvr8u* src2, Kvr8u* dst, int len,
                         int scaleFactor) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len, kAdd8u, scaleFactor);
}
KvrStatus kvrsAdd_8u_ISfs(const Kvr8u* src, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Plus>(src, srcDst, srcDst, len, kAdd8u, scaleFactor);
}
KvrStatus kvrsAdd_16u_Sfs(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len,
                          int scaleFactor) noexcept {
  if (scaleFactor > kAdd16u.zeroAbove) return zeroInstead(dst, len);
  return vectorVector<Plus>(src1, src2, dst, len, kAdd16u, scaleFactor);
}
KvrStatus kvrsAdd_16u_ISfs(const Kvr16u* src, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  if (scaleFactor > kAdd16u.zeroAbove) return zeroInstead(srcDst, len);
  return vectorVector<Plus>(src, srcDst, srcDst, len, kAdd16u, scaleFactor);
}
KvrStatus kvrsAdd_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                          int scaleFactor) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAdd_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Plus>(src, srcDst, srcDst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAdd_16sc_Sfs(const Kvr16sc* src1, const Kvr16sc* src2, Kvr16sc* dst, int len,
                           int scaleFactor) noexcept {
  return partByPart<Plus>(src1, src2, dst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAdd_16sc_ISfs(const Kvr16sc* src, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return partByPart<Plus>(src, srcDst, srcDst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAdd_32s_Sfs(const Kvr32s* src1, const Kvr32s* src2, Kvr32s* dst, int len,
                          int scaleFactor) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAdd_32s_ISfs(const Kvr32s* src, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return vectorVector<Plus>(src, srcDst, srcDst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAdd_32sc_Sfs(const Kvr32sc* src1, const Kvr32sc* src2, Kvr32sc* dst, int len,
                           int scaleFactor) noexcept {
  return partByPart<Plus>(src1, src2, dst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAdd_32sc_ISfs(const Kvr32sc* src, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return partByPart<Plus>(src, srcDst, srcDst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAdd_64s_Sfs(const Kvr64s* src1, const Kvr64s* src2, Kvr64s* dst, int len,
                          int scaleFactor) noexcept {
  return vectorVector<SaturatedPlus>(src1, src2, dst, len, kAdd64s, scaleFactor);
}
KvrStatus kvrsAdd_16u(const Kvr16u* src1, const Kvr16u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_16s(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_16s_I(const Kvr16s* src, Kvr16s* srcDst, int len) noexcept {
  return vectorVector<Plus>(src, srcDst, srcDst, len);
}
KvrStatus kvrsAdd_32u(const Kvr32u* src1, const Kvr32u* src2, Kvr32u* dst, int len) noexcept {
  return vectorVector<Plus>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_8u16u(const Kvr8u* src1, const Kvr8u* src2, Kvr16u* dst, int len) noexcept {
  return vectorVector<WidenedPlus>(src1, src2, dst, len);
}
KvrStatus kvrsAdd_16s32s_I(const Kvr16s* src, Kvr32s* srcDst, int len) noexcept {
  return vectorVector<WidenedPlusWide>(src, srcDst, srcDst, len);
}

KvrStatus kvrsAddC_8u_Sfs(const Kvr8u* src, Kvr8u val, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kAdd8u, scaleFactor);
}
KvrStatus kvrsAddC_8u_ISfs(Kvr8u val, Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd8u, scaleFactor);
}
KvrStatus kvrsAddC_16u_Sfs(const Kvr16u* src, Kvr16u val, Kvr16u* dst, int len, int scaleFactor) noexcept {
  if (scaleFactor > kAdd16u.zeroAbove) return zeroInstead(dst, len);
  if (val != 0 && scaleFactor <= kAdd16u.signAtOrBelow)
    return kvrsSet_16s(-1, reinterpret_cast<Kvr16s*>(dst), len);
  return vectorScalar(src, val, dst, len, kAdd16u, scaleFactor);
}
KvrStatus kvrsAddC_16u_ISfs(Kvr16u val, Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd16u, scaleFactor);
}
KvrStatus kvrsAddC_16s_Sfs(const Kvr16s* src, Kvr16s val, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAddC_16s_ISfs(Kvr16s val, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAddC_16sc_Sfs(const Kvr16sc* src, Kvr16sc val, Kvr16sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAddC_16sc_ISfs(Kvr16sc val, Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd16s, scaleFactor);
}
KvrStatus kvrsAddC_32s_Sfs(const Kvr32s* src, Kvr32s val, Kvr32s* dst, int len, int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAddC_32s_ISfs(Kvr32s val, Kvr32s* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAddC_32sc_Sfs(const Kvr32sc* src, Kvr32sc val, Kvr32sc* dst, int len,
                            int scaleFactor) noexcept {
  return vectorScalar(src, val, dst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAddC_32sc_ISfs(Kvr32sc val, Kvr32sc* srcDst, int len, int scaleFactor) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd32s, scaleFactor);
}
KvrStatus kvrsAddC_16s_I(Kvr16s val, Kvr16s* srcDst, int len) noexcept {
  return vectorScalar(srcDst, val, srcDst, len, kAdd16s, 0);
}
