// Convolution of two finite signals.
// SPDX-License-Identifier: MIT
#include "kvrs/convolution.h"

#include <cstring>

#include "filters/sliding_sums.h"
#include "frame/check.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "kvrs/convert.h"

namespace kvrs {
namespace {

// From here on, in results and in elements of the shorter source, transforms take over; blocks run on threads from so many
// elements of the longer one on.
constexpr uint64_t kTransformsFromResults = 512;
constexpr size_t kTransformsFromTaps = 64, kThreadsAbove = 4096;

template <class T>
KvrStatus convolve(const T* src1, int len1, const T* src2, int len2, const sliding::Results<T>& results) {
  KVRS_CHECK(pointers(src1, src2, results.dst), length(len1), length(len2));
  const bool isFirstLonger = len1 >= len2;
  const auto longer = static_cast<size_t>(isFirstLonger ? len1 : len2),
             shorter = static_cast<size_t>(isFirstLonger ? len2 : len1);
  const uint64_t count = uint64_t{longer} + shorter - 1;
  if (count > SIZE_MAX / sizeof(T)) return kvrStatusOutOfMemory;
  const sliding::Sums<T> sums{.in = isFirstLonger ? src1 : src2,
                              .inLen = longer,
                              .taps = isFirstLonger ? src2 : src1,
                              .tapsLen = shorter,
                              .reversed = true,
                              .first = 1 - static_cast<int64_t>(shorter),
                              .count = static_cast<size_t>(count)};
  if (count < kTransformsFromResults || shorter < kTransformsFromTaps) {
    sliding::directly(sums, results);
    return kvrStatusOk;
  }
  return sliding::byTransforms(sums, results, longer > kThreadsAbove);
}

// An array of N elements twice, so that N of them from any of the first N on are a turn of it.
template <class T, size_t N>
struct TwoTurns {
  explicit TwoTurns(const T* h) {
    memcpy(static_cast<void*>(at), h, N * sizeof(T));
    memcpy(static_cast<void*>(at + N), h, N * sizeof(T));
  }
  T at[2 * N];
};

// N numbers x with N elements of kParts numbers each.
template <int N, int kParts>
KVRS_INLINE void cyclic(const Kvr32f* x, const Kvr32f* h, Kvr32f* y) {
  constexpr int kNumbers = N * kParts, kFull = kLanes<Kvr32f>, kLane = kFull < kNumbers ? kFull : kNumbers,
                kVectors = kNumbers / kLane;
  const Lanes<Kvr32f, kLane> d;
  const TwoTurns<Kvr32f, kNumbers> turns(h);
  hn::Vec<decltype(d)> sum[kVectors];
  unroll<kVectors>([&](auto v) KVRS_UNROLLED { sum[v] = hn::Zero(d); });
  unroll<N>([&](auto k) KVRS_UNROLLED {
    const auto factor = hn::Set(d, unaligned::get(x + k));
    unroll<kVectors>([&](auto v) KVRS_UNROLLED {
      const Kvr32f* const turned = turns.at + (v * kLane + kNumbers - kParts * k);
      sum[v] = hn::MulAdd(factor, hn::LoadU(d, turned), sum[v]);
    });
  });
  unroll<kVectors>([&](auto v) KVRS_UNROLLED { hn::StoreU(sum[v], d, y + v * kLane); });
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsConv_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2, Kvr32f* dst) noexcept {
  return convolve<Kvr32f>(src1, len1, src2, len2, {.dst = dst});
}

KvrStatus kvrsConv_64f(const Kvr64f* src1, int len1, const Kvr64f* src2, int len2, Kvr64f* dst) noexcept {
  return convolve<Kvr64f>(src1, len1, src2, len2, {.dst = dst});
}

KvrStatus kvrsConv_16s_Sfs(const Kvr16s* src1, int len1, const Kvr16s* src2, int len2, Kvr16s* dst,
                           int scaleFactor) noexcept {
  return convolve<Kvr16s>(src1, len1, src2, len2, {.dst = dst, .scaleFactor = scaleFactor});
}

KvrStatus kvrsConvBiased_32f(const Kvr32f* src1, int len1, const Kvr32f* src2, int len2, Kvr32f* dst,
                             int dstLen, int bias) noexcept {
  KVRS_CHECK(pointers(src1, src2, dst), length(len1), length(len2), length(dstLen));
  // As an address, since with a bias that reaches none of the elements there is no such array.
  const uintptr_t array = reinterpret_cast<uintptr_t>(src2) - static_cast<uintptr_t>(bias) * sizeof *src2;
  const sliding::Sums<Kvr32f> sums{.in = reinterpret_cast<const Kvr32f*>(array),
                                   .inLen = static_cast<size_t>(len2),
                                   .taps = src1,
                                   .tapsLen = static_cast<size_t>(len1),
                                   .reversed = true,
                                   .first = int64_t{bias} - len1 + 1,
                                   .count = static_cast<size_t>(dstLen)};
  sliding::directly(sums, sliding::Results<Kvr32f>{.dst = dst});
  return kvrStatusOk;
}

// Without any checks: that is its contract.
KvrStatus kvrsConvCyclic8x8_32f(const Kvr32f* x, const Kvr32f* h, Kvr32f* y) noexcept {
  cyclic<8, 1>(x, h, y);
  return kvrStatusOk;
}

// Without any checks: that is its contract.
KvrStatus kvrsConvCyclic8x8_16s_Sfs(const Kvr16s* x, const Kvr16s* h, Kvr16s* y, int scaleFactor) noexcept {
  constexpr int kN = 8, kMostScale = 31;  // beyond it all sums round to 0, and the conversion takes no more
  if (scaleFactor > kMostScale) {
    memset(y, 0, kN * sizeof *y);
    return kvrStatusOk;
  }
  const TwoTurns<Kvr16s, kN> turns(h);
  uint32_t sums[kN] = {};
  for (int k = 0; k < kN; ++k) {
    const int factor = unaligned::get(x + k);
    for (int n = 0; n < kN; ++n) sums[n] += static_cast<uint32_t>(factor * turns.at[kN + n - k]);
  }
  return kvrsConvert_32s16s_Sfs(reinterpret_cast<const Kvr32s*>(sums), y, kN, scaleFactor);
}

// Without any checks: that is its contract.
KvrStatus kvrsConvCyclic4x4_32f32fc(const Kvr32f* x, const Kvr32fc* h, Kvr32fc* y) noexcept {
  cyclic<4, 2>(x, &h->re, &y->re);
  return kvrStatusOk;
}
