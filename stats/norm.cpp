// Norms of vectors.
// SPDX-License-Identifier: MIT
#include "kvrs/norm.h"

#include "stats/norm-inl.h"

namespace kvrs {
namespace {

// What several exports share.
[[gnu::noinline]] uint64_t sumOfMagnitudes(const Kvr16s* src, size_t len) {
  return wordsL1(len, src);
}
[[gnu::noinline]] uint64_t sumOfSquares(const Kvr16s* src, size_t len) {
  return wordsL2(len, src);
}
[[gnu::noinline]] Kvr64f sumOfSquares(const Kvr64f* src, size_t len) {
  return floatNorm<L2Norm, Kvr64f>(len, src);
}

// The magnitude of the lowest element is that of the highest here.
uint64_t saturatedInf(size_t len, const Kvr16s* src) {
  const uint64_t most = wordsInf(len, src);
  return most > 32767 ? 32767 : most;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsNorm_Inf_16s32f(const Kvr16s* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(saturatedInf(n, src));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_Inf_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted32(saturatedInf(n, src), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_Inf_32f(const Kvr32f* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<InfNorm, Kvr32f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_Inf_32fc32f(const Kvr32fc* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(std::sqrt(floatNorm<InfNorm, Kvr64f>(n, src)));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_Inf_64f(const Kvr64f* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<InfNorm, Kvr64f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_Inf_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<InfNorm, Kvr64f>(n, src));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_16s32f(const Kvr16s* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(sumOfMagnitudes(src, n));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted32(sumOfMagnitudes(src, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_16s64s_Sfs(const Kvr16s* src, int len, Kvr64s* norm, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted64(sumOfMagnitudes(src, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_32f(const Kvr32f* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr32f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_32fc64f(const Kvr32fc* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_64f(const Kvr64f* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L1_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = floatNorm<L1Norm, Kvr64f>(n, src);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2Sqr_16s64s_Sfs(const Kvr16s* src, int len, Kvr64s* norm, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = shifted64(sumOfSquares(src, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_16s32f(const Kvr16s* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = static_cast<Kvr32f>(std::sqrt(static_cast<double>(sumOfSquares(src, n))));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* norm, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr16s>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = scaledRoot(sumOfSquares(src, n), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_32f(const Kvr32f* src, int len, Kvr32f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<L2Norm, Kvr32f>(n, src));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_32fc64f(const Kvr32fc* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr32fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(floatNorm<L2Norm, Kvr64f>(2 * n, reinterpret_cast<const Kvr32f*>(src)));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_64f(const Kvr64f* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64f>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(sumOfSquares(src, n));
  return kvrStatusOk;
}
KvrStatus kvrsNorm_L2_64fc64f(const Kvr64fc* src, int len, Kvr64f* norm) noexcept {
  KVRS_CHECK(pointers(src, norm), lengthOf<Kvr64fc>(len));
  const size_t n = static_cast<size_t>(len);
  *norm = std::sqrt(sumOfSquares(reinterpret_cast<const Kvr64f*>(src), 2 * n));
  return kvrStatusOk;
}
