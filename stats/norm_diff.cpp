// Norms of differences of vectors.
// SPDX-License-Identifier: MIT
#include "kvrs/norm.h"

#include "stats/norm-inl.h"

namespace kvrs {
namespace {

// What several exports share.
[[gnu::noinline]] uint64_t sumOfMagnitudes(const Kvr16s* src1, const Kvr16s* src2, size_t len) {
  return wordsL1(len, src1, src2);
}
[[gnu::noinline]] uint64_t sumOfSquares(const Kvr16s* src1, const Kvr16s* src2, size_t len) {
  return wordsL2(len, src1, src2);
}
[[gnu::noinline]] Kvr64f sumOfSquares(const Kvr64f* src1, const Kvr64f* src2, size_t len) {
  return floatNorm<L2Norm, Kvr64f>(len, src1, src2);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsNormDiff_Inf_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(wordsInf(n, src1, src2));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_Inf_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                      int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted32(wordsInf(n, src1, src2), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_Inf_32f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<InfNorm, Kvr32f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_Inf_32fc32f(const Kvr32fc* src1, const Kvr32fc* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(std::sqrt(floatNorm<InfNorm, Kvr64f>(n, src1, src2)));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_Inf_64f(const Kvr64f* src1, const Kvr64f* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<InfNorm, Kvr64f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_Inf_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<InfNorm, Kvr64f>(n, src1, src2));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(sumOfMagnitudes(src1, src2, n));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                     int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted32(sumOfMagnitudes(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_16s64s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr64s* norm,
                                     int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted64(sumOfMagnitudes(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_32f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr32f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_32fc64f(const Kvr32fc* src1, const Kvr32fc* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_64f(const Kvr64f* src1, const Kvr64f* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L1_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src1, src2);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2Sqr_16s64s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr64s* norm,
                                        int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted64(sumOfSquares(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_16s32f(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(std::sqrt(static_cast<double>(sumOfSquares(src1, src2, n))));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_16s32s_Sfs(const Kvr16s* src1, const Kvr16s* src2, int len, Kvr32s* norm,
                                     int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = scaledRoot(sumOfSquares(src1, src2, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_32f(const Kvr32f* src1, const Kvr32f* src2, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<L2Norm, Kvr32f>(n, src1, src2));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_32fc64f(const Kvr32fc* src1, const Kvr32fc* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<L2Norm, Kvr64f>(2 * n, reinterpret_cast<const Kvr32f*>(src1),
                                              reinterpret_cast<const Kvr32f*>(src2)));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_64f(const Kvr64f* src1, const Kvr64f* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(sumOfSquares(src1, src2, n));
  return kvrStatusOk;
}
KvrStatus kvrsNormDiff_L2_64fc64f(const Kvr64fc* src1, const Kvr64fc* src2, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src1, src2, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(
      sumOfSquares(reinterpret_cast<const Kvr64f*>(src1), reinterpret_cast<const Kvr64f*>(src2), 2 * n));
  return kvrStatusOk;
}
