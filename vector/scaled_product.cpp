// Scaled products added to a vector in 16 bits, and to one of 32 bits.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "vector/scaled_form.h"

namespace kvrs {
namespace {

// a * b + c in 32 bits: neighbouring pairs (a, c) and (b, 1) multiplied and added.
struct TimesPlus {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a, V b, V c) const {
    const hn::RepartitionToWide<D> dw;
    const V one = hn::Set(d, int16_t{1});
    return RoomyInterleaved<hn::Vec<decltype(dw)>>{
        mulAddNeighbours(dw, hn::InterleaveLower(d, a, c), hn::InterleaveLower(d, b, one)),
        mulAddNeighbours(dw, hn::InterleaveUpper(d, a, c), hn::InterleaveUpper(d, b, one))};
  }
};

// The same by 2^(-31), which leaves 1 or -1 of the largest numbers.
struct TimesPlusAt31 {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b, V c) const {
    const auto r = TimesPlus()(d, a, b, c);
    const hn::RepartitionToWide<D> dw;
    return hn::ReorderDemote2To(d, shiftRightEven(dw, r.lower, 31), shiftRightEven(dw, r.upper, 31));
  }
};

// a * b in 32 bits, as a sum with c of 32 bits.
struct TimesWidePlus {
  template <class D, class V, class W>
  KVRS_INLINE Sum<W> operator()(D d, V a, V b, W c) const {
    return {mulWiden(d, a, b), c};
  }
};

template <class Op, class T>
KvrStatus addProduct(const Kvr16s* a, const Kvr16s* b, T* srcDst, int len, ScaleBounds bounds,
                     int scaleFactor) {
  KVRS_CHECK(pointers(a, b, srcDst), length(len));
  return mapScaled(Op(), bounds, scaleFactor, srcDst, static_cast<size_t>(len), a, b,
                   static_cast<const T*>(srcDst));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsAddProduct_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* srcDst, int len,
                                 int scaleFactor) noexcept {
  if (scaleFactor == kAddProduct16s.zeroAbove) {
    KVRS_CHECK(pointers(src1, src2, srcDst), length(len));
    return mapSaturated(TimesPlusAt31(), srcDst, static_cast<size_t>(len), src1, src2,
                        static_cast<const Kvr16s*>(srcDst));
  }
  return addProduct<TimesPlus>(src1, src2, srcDst, len, kAddProduct16s, scaleFactor);
}
KvrStatus kvrsAddProduct_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr32s* srcDst, int len,
                                    int scaleFactor) noexcept {
  return addProduct<TimesWidePlus>(src1, src2, srcDst, len, kAddProduct16s32s, scaleFactor);
}
