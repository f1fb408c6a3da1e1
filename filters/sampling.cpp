// Samples put between others, and taken out.
// SPDX-License-Identifier: MIT
#include "kvrs/sampling.h"

#include <cstddef>
#include <cstring>

#include "frame/check.h"
#include "frame/unaligned.h"

namespace kvrs {
namespace {

KvrStatus checkSampling(int srcLen, int factor, const int* phase) {
  KVRS_CHECK(length(srcLen), require(factor >= 1, kvrStatusBadSampleFactor));
  const int at = unaligned::get(phase);
  return check::require(at >= 0 && at < factor, kvrStatusBadSamplePhase);
}

// An element as bits of its width, which is all that counts here.
template <size_t bytes>
struct Bits {
  unsigned char at[bytes];
};

// Source elements that are spread at a time, so that what is cleared ahead of them is still in the cache.
constexpr size_t kBlock = 4096;

template <class T>
KvrStatus sampleUp(const T* source, int srcLen, T* target, int* dstLen, int factor, int* phase) {
  KVRS_CHECK(pointers(source, target, dstLen, phase));
  KVRS_CHECK(checkSampling(srcLen, factor, phase));
  using E = Bits<sizeof(T)>;
  const auto* src = reinterpret_cast<const E*>(source);
  auto* dst = reinterpret_cast<E*>(target);
  const size_t len = static_cast<size_t>(srcLen), step = static_cast<size_t>(factor);
  const size_t first = static_cast<size_t>(unaligned::get(phase));
  unaligned::put(static_cast<int>(static_cast<unsigned>(srcLen) * static_cast<unsigned>(factor)), dstLen);
  if (step == 1) {
    memcpy(dst, src, len * sizeof(E));
  } else if (step == 2) {
    // Both elements of a pair at once.
    for (size_t i = 0; i < len; ++i) {
      E pair[2] = {};
      pair[first] = src[i];
      memcpy(dst + 2 * i, pair, sizeof pair);
    }
  } else {
    for (size_t block = 0; block < len; block += kBlock) {
      const size_t end = len - block < kBlock ? len : block + kBlock;
      memset(dst + block * step, 0, (end - block) * step * sizeof(E));
      for (size_t i = block; i < end; ++i) dst[first + i * step] = src[i];
    }
  }
  return kvrStatusOk;
}

template <class T>
KvrStatus sampleDown(const T* source, int srcLen, T* target, int* dstLen, int factor, int* phase) {
  KVRS_CHECK(pointers(source, target, dstLen, phase));
  KVRS_CHECK(checkSampling(srcLen, factor, phase));
  using E = Bits<sizeof(T)>;
  const auto* src = reinterpret_cast<const E*>(source);
  auto* dst = reinterpret_cast<E*>(target);
  const size_t len = static_cast<size_t>(srcLen), step = static_cast<size_t>(factor);
  const size_t first = static_cast<size_t>(unaligned::get(phase));
  const size_t kept = first < len ? (len - first - 1) / step + 1 : 0;
  if (step == 1) {
    memcpy(dst, src, len * sizeof(E));
  } else if (step == 2) {
    for (size_t n = 0; n < kept; ++n) dst[n] = src[first + 2 * n];
  } else {
    for (size_t n = 0; n < kept; ++n) dst[n] = src[first + n * step];
  }
  unaligned::put(static_cast<int>(kept), dstLen);
  unaligned::put(static_cast<int>(first + kept * step - len), phase);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using kvrs::sampleDown;
using kvrs::sampleUp;

KvrStatus kvrsSampleUp_16s(const Kvr16s* src, int srcLen, Kvr16s* dst, int* dstLen, int factor,
                           int* phase) noexcept {
  return sampleUp(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleUp_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int* dstLen, int factor,
                           int* phase) noexcept {
  return sampleUp(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleUp_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int* dstLen, int factor,
                           int* phase) noexcept {
  return sampleUp(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleUp_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int* dstLen, int factor,
                            int* phase) noexcept {
  return sampleUp(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_16s(const Kvr16s* src, int srcLen, Kvr16s* dst, int* dstLen, int factor,
                             int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_16sc(const Kvr16sc* src, int srcLen, Kvr16sc* dst, int* dstLen, int factor,
                              int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_32f(const Kvr32f* src, int srcLen, Kvr32f* dst, int* dstLen, int factor,
                             int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_32fc(const Kvr32fc* src, int srcLen, Kvr32fc* dst, int* dstLen, int factor,
                              int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_64f(const Kvr64f* src, int srcLen, Kvr64f* dst, int* dstLen, int factor,
                             int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}

KvrStatus kvrsSampleDown_64fc(const Kvr64fc* src, int srcLen, Kvr64fc* dst, int* dstLen, int factor,
                              int* phase) noexcept {
  return sampleDown(src, srcLen, dst, dstLen, factor, phase);
}
