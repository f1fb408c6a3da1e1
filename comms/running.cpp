// Running sums and averages.
// SPDX-License-Identifier: MIT
#include "kvrs/running.h"

#include <algorithm>
#include <limits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

namespace kvrs {
namespace {

// --- averages ---

template <class F>
Kvr32s truncated(F acc) {
  using Limits = std::numeric_limits<Kvr32s>;
  if (acc >= F{0x1p31}) return Limits::max();
  if (acc <= F{-0x1p31}) return Limits::min();
  return static_cast<Kvr32s>(acc);
}

// One rounding or two: numbers in range make no difference, as they are integers that no rounding touches.
KVRS_INLINE double mulAdd(double x, double y, double z) {
  return kFusedMulAdd ? __builtin_fma(x, y, z) : x * y + z;
}

// An average is out of range for good beyond this: with a magnitude of alpha from 2 on its next value is further away, as
// |acc * alpha| - |acc| is at least |acc|, and |v * (1 - alpha)| at most 2^30 * 1.5 * |alpha|, which is less than half of
// |acc * alpha|.
constexpr double kForGood = 0x1p33;
// So many samples make no double of kForGood infinite.
constexpr size_t kSamplesAtOnce = 32;
// Up to this magnitude two samples are taken at once: the square of alpha times an average in range is exact.
constexpr int kMostForPairs = 1023;

template <class Value>
double average(Value value, size_t len, double acc, int alpha) {
  if (alpha == 1) return acc;
  const double a = alpha, b = 1 - alpha;
  const bool byPairs = alpha >= -kMostForPairs && alpha <= kMostForPairs;
  size_t i = alpha == 0 ? len - 1 : 0;
  while (i < len) {
    const size_t end = std::min(len, i + kSamplesAtOnce);
    if (byPairs) {
      for (; i + 2 <= end; i += 2) acc = mulAdd(acc, a * a, value(i) * (a * b) + value(i + 1) * b);
    }
    for (; i < end; ++i) acc = mulAdd(acc, a, value(i) * b);
    const bool isOut = acc > kForGood || acc < -kForGood;
    if (isOut && alpha != -1) return alpha < 0 && (len - i) % 2 != 0 ? -acc : acc;
  }
  return acc;
}

template <class Value>
float averageFast(Value value, size_t len, float acc, int alpha) {
  if (alpha == 1) return acc;
  const int64_t a = alpha, b = 1 - a;
  const float a1 = static_cast<float>(a), a2 = static_cast<float>(a * a),
              a4 = static_cast<float>(a * a * a * a);
  const float b0 = static_cast<float>(b), b1 = static_cast<float>(b * a), b2 = static_cast<float>(b * a * a),
              b3 = static_cast<float>(b * a * a * a);
  size_t i = 0;
  for (; i + 4 <= len; i += 4) {
    acc = acc * a4 + ((value(i) * b3 + value(i + 1) * b2) + (value(i + 2) * b1 + value(i + 3) * b0));
  }
  if (i + 2 <= len) {
    acc = acc * a2 + (value(i) * b1 + value(i + 1) * b0);
    i += 2;
  }
  return i < len ? acc * a1 + value(i) * b0 : acc;
}

// --- sums ---

// The first sum of a window, in the order that its contract states.
template <class T>
float windowSum(const T* src, size_t count) {
  float lane[4] = {};
  size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    for (size_t k = 0; k < 8; ++k) lane[k % 4] += static_cast<float>(unaligned::get(src + i + k));
  }
  float sum = (lane[0] + lane[2]) + (lane[1] + lane[3]);
  for (; i < count; ++i) sum += static_cast<float>(unaligned::get(src + i));
  return sum;
}

// Lane i becomes the sum of lanes 0 to i.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V prefixSums(D d, V v) {
  constexpr int N = static_cast<int>(hn::MaxLanes(D()));
  // Within blocks of 16 bytes; then with the end of the block before, which is the sum of one; then with that of the second
  // block before, which is the sum of two.
  v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
  v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
  constexpr int kSteps = N == 16 ? 2 : N == 8 ? 1 : 0;
  unroll<kSteps>([&](auto step) KVRS_UNROLLED {
    constexpr int kBlocks = 1 + decltype(step)::value;
    struct Ends {
      alignas(64) int32_t from[N];
      constexpr Ends() : from() {
        for (int i = 0; i < N; ++i) from[i] = std::max(i / 4 - kBlocks, 0) * 4 + 3;
      }
    };
    static constexpr Ends kEnds;
    const V ends = hn::TableLookupLanes(v, hn::SetTableIndices(d, kEnds.from));
    v = hn::Add(v, hn::IfThenZeroElse(firstLanes(d, 4 * kBlocks), ends));
  });
  return v;
}

// The sums behind the first one as exact integers.
struct ExactSums {
  using D32 = Lanes<int32_t, kLanes<int32_t>>;
  hn::Vec<D32> sum;  // the last one, in all lanes

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V joins, V leaves) {
    const D32 di;
    const auto steps = hn::Sub(hn::PromoteTo(di, joins), hn::PromoteTo(di, leaves));
    const auto sums = hn::Add(sum, prefixSums(di, steps));
    sum = last(di, sums);
    return hn::ConvertTo(d, sums);
  }

 private:
  template <class V>
  static KVRS_INLINE V last(D32 d, V v) {
    constexpr int N = static_cast<int>(hn::MaxLanes(D32()));
    if constexpr (N == 4) {
      return hn::Broadcast<3>(v);
    } else {
      return hn::TableLookupLanes(v, hn::IndicesFromVec(d, hn::Set(d, N - 1)));
    }
  }
};

template <class T>
KvrStatus sumWindows(const T* src, float* dst, int len, int maskSize) {
  KVRS_CHECK(pointers(src, dst), require(maskSize >= 1, kvrStatusBadWindowLength));
  if (len < 1) return kvrStatusOk;
  KVRS_CHECK(lengthOf<Kvr32f>(len));
  const size_t mask = static_cast<size_t>(maskSize), rest = static_cast<size_t>(len) - 1;
  float sum = windowSum(src, mask);
  unaligned::put(sum, dst);
  // As long as no sum leaves the integers that floats can tell apart.
  constexpr size_t kMagnitude = std::is_signed_v<T> ? 32768 : 255;
  if (mask <= (size_t{1} << 24) / kMagnitude) {
    ExactSums op{hn::Set(ExactSums::D32(), static_cast<int32_t>(sum))};
    mapKeeping<Kvr32f>(op, dst + 1, rest, src + mask, src);
    return kvrStatusOk;
  }
  for (size_t i = 0; i < rest; ++i) {
    sum += static_cast<float>(unaligned::get(src + i + mask) - unaligned::get(src + i));
    unaligned::put(sum, dst + i + 1);
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsUpdateLinear_16s32s_I(const Kvr16s* src, int len, Kvr32s* srcDst, int srcShiftRight,
                                    Kvr16s alpha, KvrHintAlgorithm) noexcept {
  KVRS_CHECK(pointers(src, srcDst), length(len));
  const int shift = std::clamp(srcShiftRight, 0, 15);
  const auto value = [=](size_t i) { return static_cast<double>(unaligned::get(src + i) >> shift); };
  const double acc = average(value, static_cast<size_t>(len), unaligned::get(srcDst), alpha);
  unaligned::put(truncated(acc), srcDst);
  return kvrStatusOk;
}

KvrStatus kvrsUpdatePower_16s32s_I(const Kvr16s* src, int len, Kvr32s* srcDst, int srcShiftRight,
                                   Kvr16s alpha, KvrHintAlgorithm hint) noexcept {
  KVRS_CHECK(pointers(src, srcDst), length(len));
  const int shift = std::clamp(srcShiftRight, 0, 31);
  const size_t n = static_cast<size_t>(len);
  const auto power = [=](size_t i) {
    const int x = unaligned::get(src + i);
    return x * x >> shift;
  };
  if (alpha == 1) return kvrStatusOk;
  const Kvr32s acc = unaligned::get(srcDst);
  if (hint == kvrHintFast) {
    const auto value = [=](size_t i) { return static_cast<float>(power(i)); };
    unaligned::put(truncated(averageFast(value, n, static_cast<float>(acc), alpha)), srcDst);
  } else {
    const auto value = [=](size_t i) { return static_cast<double>(power(i)); };
    unaligned::put(truncated(average(value, n, acc, alpha)), srcDst);
  }
  return kvrStatusOk;
}

KvrStatus kvrsSumWindow_8u32f(const Kvr8u* src, Kvr32f* dst, int len, int maskSize) noexcept {
  return sumWindows(src, dst, len, maskSize);
}
KvrStatus kvrsSumWindow_16s32f(const Kvr16s* src, Kvr32f* dst, int len, int maskSize) noexcept {
  return sumWindows(src, dst, len, maskSize);
}
