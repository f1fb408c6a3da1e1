// Products of packed spectra.
// SPDX-License-Identifier: MIT
#include "kvrs/spectrum.h"

#include "frame/check.h"
#include "frame/complex.h"
#include "frame/loop.h"
#include "frame/saturate.h"
#include "frame/saturating.h"
#include "frame/unaligned.h"
#include "vector/arith_float.h"

namespace kvrs {
namespace {

// Real terms are multiplied one by one.
struct FloatProduct {
  template <class T>
  void real(const T* a, const T* b, T* dst) const {
    const Lanes<T, 1> d;
    hn::StoreU(hn::Mul(hn::LoadU(d, a), hn::LoadU(d, b)), d, dst);
  }
};

struct Product : FloatProduct, MulPairs {};

struct ProductConj : FloatProduct {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    return mulPairsConj(d, a, b);
  }
};

// Products of 16-bit parts, shifted without rounding. Sums of two products fit 32 bits, but for that of the imaginary
// part where all four parts are -32768: 2^31, which arrives as its negative, as no other sum does.
class ShiftedProduct {
 public:
  explicit ShiftedProduct(int scaleFactor)
      : right_(scaleFactor < 0    ? 0
               : scaleFactor < 31 ? scaleFactor
                                  : 31),
        left_(scaleFactor >= 0    ? 0
              : scaleFactor > -15 ? -scaleFactor
                                  : 15),
        most_(scaleFactor <= 0   ? INT32_MAX
              : scaleFactor < 32 ? static_cast<int32_t>(0x80000000u >> scaleFactor)
                                 : 0) {}

  void real(const Kvr16s* a, const Kvr16s* b, Kvr16s* dst) const {
    const int product = unaligned::get(a) * unaligned::get(b) >> right_;
    unaligned::put(saturate<Kvr16s>(static_cast<int64_t>(saturate<Kvr16s>(product)) << left_), dst);
  }

  // The negative of an imaginary part b is ~b + 1, which has no overflow.
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a, V b) const {
    const hn::RepartitionToWide<D> wide;
    const auto inverted = hn::Xor(b, hn::BitCast(d, hn::Set(wide, ~0xFFFF)));
    const auto re = hn::Add(mulAddNeighbours(wide, a, inverted), hn::ShiftRight<16>(hn::BitCast(wide, a)));
    const auto im = mulAddNeighbours(wide, a, hn::Reverse2(d, b));
    const auto wrapped = hn::Eq(im, hn::Set(wide, INT32_MIN));
    const auto shiftedIm = hn::IfThenElse(wrapped, hn::Set(wide, most_), hn::ShiftRightSame(im, right_));
    const auto low = saturated(wide, hn::ShiftRightSame(re, right_));
    const auto high = hn::ShiftLeft<16>(saturated(wide, shiftedIm));
    const V product = hn::BitCast(d, hn::Or(hn::And(low, hn::Set(wide, 0xFFFF)), high));
    return left_ == 0 ? product : saturatedShiftLeft(d, product, left_);
  }

 private:
  template <class D, class V>
  static KVRS_INLINE V saturated(D d, V v) {
    return hn::Min(hn::Max(v, hn::Set(d, INT16_MIN)), hn::Set(d, INT16_MAX));
  }

  int right_, left_;
  int32_t most_;  // what is left of 2^31
};

// The complex terms, which begin at `first` and end at `end`.
template <class Op, class T>
KvrStatus complexTerms(const Op& op, const T* src1, const T* src2, T* dst, size_t first, size_t end) {
  return mapElements(op, asPairs<T>(dst + first), (end - first) / 2, asPairs<T>(src1 + first),
                     asPairs<T>(src2 + first));
}

template <class Op, class T>
KvrStatus multiplyPack(const Op& op, const T* src1, const T* src2, T* dst, int len) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (!loop_detail::fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  const size_t last = static_cast<size_t>(len) - 1;
  op.real(src1, src2, dst);
  if (len % 2 == 0) op.real(src1 + last, src2 + last, dst + last);
  return complexTerms(op, src1, src2, dst, 1, last + len % 2);
}

template <class Op, class T>
KvrStatus multiplyPerm(const Op& op, const T* src1, const T* src2, T* dst, int len) {
  if (len % 2 != 0) return multiplyPack(op, src1, src2, dst, len);
  KVRS_CHECK(pointers(src1, src2, dst), length(len));
  if (!loop_detail::fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  op.real(src1, src2, dst);
  op.real(src1 + 1, src2 + 1, dst + 1);
  return complexTerms(op, src1, src2, dst, 2, static_cast<size_t>(len));
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMulPack_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return multiplyPack(Product(), src1, src2, dst, len);
}
KvrStatus kvrsMulPack_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return multiplyPack(Product(), src1, src2, dst, len);
}
KvrStatus kvrsMulPack_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPack(Product(), srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPack_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPack(Product(), srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPerm_32f(const Kvr32f* src1, const Kvr32f* src2, Kvr32f* dst, int len) noexcept {
  return multiplyPerm(Product(), src1, src2, dst, len);
}
KvrStatus kvrsMulPerm_64f(const Kvr64f* src1, const Kvr64f* src2, Kvr64f* dst, int len) noexcept {
  return multiplyPerm(Product(), src1, src2, dst, len);
}
KvrStatus kvrsMulPerm_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPerm(Product(), srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPerm_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPerm(Product(), srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPackConj_32f_I(const Kvr32f* src, Kvr32f* srcDst, int len) noexcept {
  return multiplyPack(ProductConj(), src, srcDst, srcDst, len);
}
KvrStatus kvrsMulPackConj_64f_I(const Kvr64f* src, Kvr64f* srcDst, int len) noexcept {
  return multiplyPack(ProductConj(), src, srcDst, srcDst, len);
}
KvrStatus kvrsMulPack_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                              int scaleFactor) noexcept {
  return multiplyPack(ShiftedProduct(scaleFactor), src1, src2, dst, len);
}
KvrStatus kvrsMulPack_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return multiplyPack(ShiftedProduct(scaleFactor), srcDst, src, srcDst, len);
}
KvrStatus kvrsMulPerm_16s_Sfs(const Kvr16s* src1, const Kvr16s* src2, Kvr16s* dst, int len,
                              int scaleFactor) noexcept {
  return multiplyPerm(ShiftedProduct(scaleFactor), src1, src2, dst, len);
}
KvrStatus kvrsMulPerm_16s_ISfs(const Kvr16s* src, Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return multiplyPerm(ShiftedProduct(scaleFactor), srcDst, src, srcDst, len);
}
