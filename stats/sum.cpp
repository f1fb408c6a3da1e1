// Sums and means.
// SPDX-License-Identifier: MIT
#include "kvrs/sum.h"

#include "frame/check.h"
#include "frame/scale.h"
#include "stats/float_sums-inl.h"
#include "stats/integer_sums-inl.h"
#include "stats/scaled_result.h"

namespace kvrs {
namespace {

// The sums themselves, which sums and means share.
[[gnu::noinline]] int64_t total(const Kvr16s* src, size_t len) {
  return sumOf(src, len);
}
[[gnu::noinline]] Kvr64sc total(const Kvr16sc* src, size_t len) {
  return sumOf(src, len);
}
[[gnu::noinline]] int64_t total(const Kvr32s* src, size_t len) {
  return sumOf(src, len);
}
// Complex elements are as wide as the boundary, so that no first one is ahead of it.
[[gnu::noinline]] Sums<Kvr64f> total(const Kvr64f* src, size_t len, bool aheadOfBoundary) {
  return doubleSums<false>(src, len, aheadOfBoundary);
}
Sums<Kvr64f> total(const Kvr64fc* src, size_t len) {
  return total(&src->re, 2 * len, false);
}

Kvr64f totalOfReal(const Kvr64f* src, size_t len) {
  const Sums<Kvr64f> t = total(src, len, true);
  return t.sum[0] + t.sum[1];
}

template <class D>
D meanOf(int64_t sum, int len, int scaleFactor) {
  return nearestInteger<D>(scaledBy(static_cast<double>(sum), scaleFactor) / len);
}

// |sum| / len to nearest, ties to even, with the sign of the sum.
int64_t roundedQuotient(int64_t sum, int64_t len) {
  const int64_t magnitude = sum < 0 ? -sum : sum, quotient = magnitude / len;
  const int64_t twice = 2 * (magnitude - quotient * len);
  const int64_t rounded = quotient + (twice > len || (twice == len && (quotient & 1) != 0) ? 1 : 0);
  return sum < 0 ? -rounded : rounded;
}

// Negative scale factors shift a sum that fits in 32 bits before it is divided, and else the rounded mean.
Kvr32s scaledMean(int64_t sum, int len, int scaleFactor) {
  if (scaleFactor < 0 && scaleFactor > -32 && sum == static_cast<Kvr32s>(sum)) {
    return saturate<Kvr32s>(roundedQuotient(sum * (int64_t{1} << -scaleFactor), len));
  }
  return scaleTo<Kvr32s>(roundedQuotient(sum, len), scaleFactor);
}

// Sums or means of single precision, of each part.
template <int kParts, bool kMean>
[[gnu::noinline]] void singles(const Kvr32f* src, int len, Kvr32f (&parts)[kParts], KvrHintAlgorithm hint) {
  const size_t n = static_cast<size_t>(len);
  const auto rounded = [len](long double sum) {
    return kMean ? static_cast<Kvr32f>(static_cast<double>(sum) / len) : static_cast<Kvr32f>(sum);
  };
  if (hint != kvrHintFast && n >= kEstimatedFrom) {
    const auto e = estimateSums<kParts, false>(src, n);
    bool all = true;
    for (int p = 0; p < kParts; ++p) all &= decided(e.sums.sum[p], e.error, rounded, &parts[p]);
    if (all) return;
  }
  const Sums<long double> t =
      hint == kvrHintFast ? fastSums<kParts, false>(src, n) : accurateSums<kParts, false>(src, n);
  for (int p = 0; p < kParts; ++p) parts[p] = rounded(t.sum[p]);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSum_16s_Sfs(const Kvr16s* src, int len, Kvr16s* sum, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, sum), length(len));
  *sum = scaleTo<Kvr16s>(total(src, static_cast<size_t>(len)), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsSum_16s32s_Sfs(const Kvr16s* src, int len, Kvr32s* sum, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, sum), length(len));
  *sum = scaleTo<Kvr32s>(total(src, static_cast<size_t>(len)), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsSum_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* sum, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr16sc>(len));
  const Kvr64sc t = total(src, static_cast<size_t>(len));
  *sum = {scaleTo<Kvr16s>(t.re, scaleFactor), scaleTo<Kvr16s>(t.im, scaleFactor)};
  return kvrStatusOk;
}
KvrStatus kvrsSum_16sc32sc_Sfs(const Kvr16sc* src, int len, Kvr32sc* sum, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr16sc>(len));
  const Kvr64sc t = total(src, static_cast<size_t>(len));
  *sum = {scaleTo<Kvr32s>(t.re, scaleFactor), scaleTo<Kvr32s>(t.im, scaleFactor)};
  return kvrStatusOk;
}
KvrStatus kvrsSum_32s_Sfs(const Kvr32s* src, int len, Kvr32s* sum, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr32s>(len));
  *sum = scaleTo<Kvr32s>(total(src, static_cast<size_t>(len)), scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsSum_32f(const Kvr32f* src, int len, Kvr32f* sum, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr32f>(len));
  Kvr32f total[1];
  singles<1, false>(src, len, total, hint);
  *sum = total[0];
  return kvrStatusOk;
}
KvrStatus kvrsSum_32fc(const Kvr32fc* src, int len, Kvr32fc* sum, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr32fc>(len));
  Kvr32f parts[2];
  singles<2, false>(&src->re, len, parts, hint);
  *sum = {parts[0], parts[1]};
  return kvrStatusOk;
}
KvrStatus kvrsSum_64f(const Kvr64f* src, int len, Kvr64f* sum) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr64f>(len));
  *sum = totalOfReal(src, static_cast<size_t>(len));
  return kvrStatusOk;
}
KvrStatus kvrsSum_64fc(const Kvr64fc* src, int len, Kvr64fc* sum) noexcept {
  KVRS_CHECK(pointers(src, sum), lengthOf<Kvr64fc>(len));
  const Sums<Kvr64f> t = total(src, static_cast<size_t>(len));
  *sum = {t.sum[0], t.sum[1]};
  return kvrStatusOk;
}

KvrStatus kvrsMean_16s_Sfs(const Kvr16s* src, int len, Kvr16s* mean, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, mean), length(len));
  *mean = meanOf<Kvr16s>(total(src, static_cast<size_t>(len)), len, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsMean_16sc_Sfs(const Kvr16sc* src, int len, Kvr16sc* mean, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr16sc>(len));
  const Kvr64sc t = total(src, static_cast<size_t>(len));
  *mean = {meanOf<Kvr16s>(t.re, len, scaleFactor), meanOf<Kvr16s>(t.im, len, scaleFactor)};
  return kvrStatusOk;
}
KvrStatus kvrsMean_32s_Sfs(const Kvr32s* src, int len, Kvr32s* mean, int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr32s>(len));
  *mean = scaledMean(total(src, static_cast<size_t>(len)), len, scaleFactor);
  return kvrStatusOk;
}
KvrStatus kvrsMean_32f(const Kvr32f* src, int len, Kvr32f* mean, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr32f>(len));
  Kvr32f quotient[1];
  singles<1, true>(src, len, quotient, hint);
  *mean = quotient[0];
  return kvrStatusOk;
}
KvrStatus kvrsMean_32fc(const Kvr32fc* src, int len, Kvr32fc* mean, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr32fc>(len));
  Kvr32f parts[2];
  singles<2, true>(&src->re, len, parts, hint);
  *mean = {parts[0], parts[1]};
  return kvrStatusOk;
}
KvrStatus kvrsMean_64f(const Kvr64f* src, int len, Kvr64f* mean) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr64f>(len));
  *mean = totalOfReal(src, static_cast<size_t>(len)) / len;
  return kvrStatusOk;
}
KvrStatus kvrsMean_64fc(const Kvr64fc* src, int len, Kvr64fc* mean) noexcept {
  KVRS_CHECK(pointers(src, mean), lengthOf<Kvr64fc>(len));
  const Sums<Kvr64f> t = total(src, static_cast<size_t>(len));
  *mean = {t.sum[0] / len, t.sum[1] / len};
  return kvrStatusOk;
}
