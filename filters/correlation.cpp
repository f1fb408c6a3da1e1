// Correlation of two signals, and of a signal with itself.
// SPDX-License-Identifier: MIT
#include "kvrs/correlation.h"

#include <cstring>

#include "filters/sliding_sums.h"
#include "frame/check.h"

namespace kvrs {
namespace {

using sliding::Norm;

// From here on transforms take over: of lags, times the quotient of the shorter and the longer length in a cross-correlation.
template <class T>
inline constexpr int kCrossFromLags = 512;
template <>
inline constexpr int kCrossFromLags<Kvr32f> = 384;
template <>
inline constexpr int kCrossFromLags<Kvr16s> = 384;
template <>
inline constexpr int kCrossFromLags<Kvr32fc> = 256;

template <class T>
inline constexpr size_t kAutoFromLags = 856;
template <>
inline constexpr size_t kAutoFromLags<Kvr32fc> = 152;
template <>
inline constexpr size_t kAutoFromLags<Kvr64fc> = 368;

// The lags that have products, behind `zeros` and in front of other lags that have none.
struct Lags {
  size_t zeros, count;
  int64_t lowest;
};

Lags lagsWithProducts(int len1, int len2, int dstLen, int lowLag) {
  const auto among = [=](int64_t n) { return n < 0 ? int64_t{0} : n < dstLen ? n : int64_t{dstLen}; };
  const int64_t begin = among(int64_t{1} - lowLag - len1), end = among(int64_t{len2} - lowLag);
  return {static_cast<size_t>(begin), static_cast<size_t>(end > begin ? end - begin : 0), lowLag + begin};
}

// The shorter signal as taps of the longer one. If that is the second one, lags and sums come out mirrored.
template <class S>
sliding::Sums<S> sumsOf(const S* src1, int len1, const S* src2, int len2, const Lags& lags) {
  const bool isFirstShorter = len1 <= len2;
  return {.in = isFirstShorter ? src2 : src1,
          .inLen = static_cast<size_t>(isFirstShorter ? len2 : len1),
          .taps = isFirstShorter ? src1 : src2,
          .tapsLen = static_cast<size_t>(isFirstShorter ? len1 : len2),
          .reversed = false,
          .first = isFirstShorter ? lags.lowest : 1 - static_cast<int64_t>(lags.count) - lags.lowest,
          .count = lags.count};
}

template <class T>
void zeroOtherLags(T* dst, int dstLen, const Lags& lags) {
  const size_t end = lags.zeros + lags.count;
  memset(static_cast<void*>(dst), 0, lags.zeros * sizeof(T));
  memset(static_cast<void*>(dst + end), 0, (static_cast<size_t>(dstLen) - end) * sizeof(T));
}

template <class T>
bool crossTakesTransforms(size_t lags, int len1, int len2) {
  const int shorter = len1 < len2 ? len1 : len2, longer = len1 < len2 ? len2 : len1;
  const float counted = static_cast<float>(lags) * static_cast<float>(shorter) / static_cast<float>(longer);
  return counted >= static_cast<float>(kCrossFromLags<T>);
}

template <class T>
KvrStatus crossCorrelate(const T* src1, int len1, const T* src2, int len2, T* dst, int dstLen, int lowLag,
                         int scaleFactor = 0) {
  KVRS_CHECK(pointers(src1, src2, dst), length(len1), length(len2), length(dstLen));
  const Lags lags = lagsWithProducts(len1, len2, dstLen, lowLag);
  if (lags.count > 0) {
    const sliding::Sums<T> sums = sumsOf(src1, len1, src2, len2, lags);
    const sliding::Results<T> results{
        .dst = dst + lags.zeros, .scaleFactor = scaleFactor, .mirrored = len1 > len2};
    if (crossTakesTransforms<T>(lags.count, len1, len2)) {
      const KvrStatus status = sliding::byTransforms(sums, results, false);
      if (status != kvrStatusOk) return status;
    } else {
      sliding::directly(sums, results);
    }
  }
  zeroOtherLags(dst, dstLen, lags);
  return kvrStatusOk;
}

template <class T>
KvrStatus autoCorrelate(const T* src, int srcLen, T* dst, int dstLen, Norm norm, int scaleFactor = 0) {
  KVRS_CHECK(pointers(src, dst), length(srcLen), length(dstLen));
  const Lags lags = lagsWithProducts(srcLen, srcLen, dstLen, 0);
  const sliding::Sums<T> sums = sumsOf(src, srcLen, src, srcLen, lags);
  const sliding::Results<T> results{
      .dst = dst, .scaleFactor = scaleFactor, .norm = norm, .length = static_cast<size_t>(srcLen)};
  if (lags.count >= kAutoFromLags<T>) {
    const KvrStatus status = sliding::byTransforms(sums, results, false);
    if (status != kvrStatusOk) return status;
  } else {
    sliding::directly(sums, results);
  }
  zeroOtherLags(dst, dstLen, lags);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCrossCorr_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2, Kvr32f* dst,
                            int dstLen, int lowLag) noexcept {
  return crossCorrelate(src1, len1, src2, len2, dst, dstLen, lowLag);
}

KvrStatus kvrsCrossCorr_64f(const Kvr64f* src1, int len1, const Kvr64f* src2, int len2, Kvr64f* dst,
                            int dstLen, int lowLag) noexcept {
  return crossCorrelate(src1, len1, src2, len2, dst, dstLen, lowLag);
}

KvrStatus kvrsCrossCorr_32fc(const Kvr32fc* src1, int len1, const Kvr32fc* src2, int len2, Kvr32fc* dst,
                             int dstLen, int lowLag) noexcept {
  return crossCorrelate(src1, len1, src2, len2, dst, dstLen, lowLag);
}

KvrStatus kvrsCrossCorr_64fc(const Kvr64fc* src1, int len1, const Kvr64fc* src2, int len2, Kvr64fc* dst,
                             int dstLen, int lowLag) noexcept {
  return crossCorrelate(src1, len1, src2, len2, dst, dstLen, lowLag);
}

KvrStatus kvrsCrossCorr_16s_Sfs(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2, Kvr16s* dst,
                                int dstLen, int lowLag, int scaleFactor) noexcept {
  return crossCorrelate(src1, len1, src2, len2, dst, dstLen, lowLag, scaleFactor);
}

KvrStatus kvrsAutoCorr_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::none);
}

KvrStatus kvrsAutoCorr_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::none);
}

KvrStatus kvrsAutoCorr_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::none);
}

KvrStatus kvrsAutoCorr_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::none);
}

KvrStatus kvrsAutoCorr_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                               int scaleFactor) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::none, scaleFactor);
}

KvrStatus kvrsAutoCorr_NormA_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byLength);
}

KvrStatus kvrsAutoCorr_NormA_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byLength);
}

KvrStatus kvrsAutoCorr_NormA_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byLength);
}

KvrStatus kvrsAutoCorr_NormA_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byLength);
}

KvrStatus kvrsAutoCorr_NormA_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                                     int scaleFactor) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byLength, scaleFactor);
}

KvrStatus kvrsAutoCorr_NormB_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byProducts);
}

KvrStatus kvrsAutoCorr_NormB_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byProducts);
}

KvrStatus kvrsAutoCorr_NormB_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byProducts);
}

KvrStatus kvrsAutoCorr_NormB_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int dstLen) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byProducts);
}

KvrStatus kvrsAutoCorr_NormB_16s_Sfs(const Kvr16s* src, int srcLen, Kvr16s* dst, int dstLen,
                                     int scaleFactor) noexcept {
  return autoCorrelate(src, srcLen, dst, dstLen, Norm::byProducts, scaleFactor);
}

KvrStatus kvrsCrossCorr_16s64s(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2, Kvr64s* dst,
                               int dstLen, int lowLag) noexcept {
  KVRS_CHECK(pointers(src1, src2), pointers(dst), length(len1), length(len2), length(dstLen));
  const Lags lags = lagsWithProducts(len1, len2, dstLen, lowLag);
  if (lags.count > 0) sliding::exactly(sumsOf(src1, len1, src2, len2, lags), dst + lags.zeros, len1 > len2);
  zeroOtherLags(dst, dstLen, lags);
  return kvrStatusOk;
}
