// Squares of integers, scaled. A square is the product of a vector with itself, and its kernels are those of the
// product.
// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "kvrs/unary.h"

KvrStatus kvrsSqr_8u_Sfs(const Kvr8u* src, Kvr8u* dst, int len, int scaleFactor) noexcept {
  return kvrsMul_8u_Sfs(src, src, dst, len, scaleFactor);
}
KvrStatus kvrsSqr_8u_ISfs(Kvr8u* srcDst, int len, int scaleFactor) noexcept {
  return kvrsMul_8u_Sfs(srcDst, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqr_16u_Sfs(const Kvr16u* src, Kvr16u* dst, int len, int scaleFactor) noexcept {
  return kvrsMul_16u_Sfs(src, src, dst, len, scaleFactor);
}
KvrStatus kvrsSqr_16u_ISfs(Kvr16u* srcDst, int len, int scaleFactor) noexcept {
  return kvrsMul_16u_Sfs(srcDst, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqr_16s_Sfs(const Kvr16s* src, Kvr16s* dst, int len, int scaleFactor) noexcept {
  return kvrsMul_16s_Sfs(src, src, dst, len, scaleFactor);
}
KvrStatus kvrsSqr_16s_ISfs(Kvr16s* srcDst, int len, int scaleFactor) noexcept {
  return kvrsMul_16s_Sfs(srcDst, srcDst, srcDst, len, scaleFactor);
}
KvrStatus kvrsSqr_16sc_Sfs(const Kvr16sc* src, Kvr16sc* dst, int len, int scaleFactor) noexcept {
  return kvrsMul_16sc_Sfs(src, src, dst, len, scaleFactor);
}
KvrStatus kvrsSqr_16sc_ISfs(Kvr16sc* srcDst, int len, int scaleFactor) noexcept {
  return kvrsMul_16sc_Sfs(srcDst, srcDst, srcDst, len, scaleFactor);
}
