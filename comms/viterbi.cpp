// Viterbi decoding of trellis-coded modulation.
//
// The selection of paths meets each of 16 branches of each state with the best path so far to the state that the branch
// leads to, and which of both is better no processor can guess. So paths are numbers, of which the smaller is kept:
//
//   bits 16 .. 31   metric of the path
//   bits  0 .. 15   number of the branch, counted from 1 on; 0 for the path that was there
//
// Of equal metrics the first branch has the smaller number, and what was there a smaller one still.
// SPDX-License-Identifier: MIT
#include "kvrs/viterbi.h"

#include <algorithm>
#include <cstring>

#include "frame/check.h"
#include "frame/reduce.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

namespace kvrs {
namespace {

using unaligned::get;
using unaligned::put;

constexpr Kvr32u kNumber = 1 << 16;  // words have a number above a metric

// --- points ---

constexpr Kvr32u squared(Kvr32u x) {
  return x * x / 16;
}

void slice(const Kvr16sc* src, Kvr16sc* dstPoint, Kvr32u* dstMetrics, const Kvr8u* labels, bool isCoarse) {
  const Kvr16sc point = get(src);
  const Kvr32u x = static_cast<Kvr16u>(point.re), y = static_cast<Kvr16u>(point.im);
  const Kvr32u a = (x & 255) ^ 128, b = (y & 255) ^ 128;
  put({static_cast<Kvr16s>(x - a), static_cast<Kvr16s>(y - b)}, dstPoint);

  const Kvr32u column = (x - a - 128) / 256 + 2, row = (y - b - 128) / 256 + 2;
  const Kvr32u labelBits = isCoarse ? 3 : 7;
  const auto store = [&](Kvr32u right, Kvr32u up, Kvr32u word) {
    const Kvr32u label = labels[(row + up) % 4 * 4 + (column + right) % 4] & labelBits;
    put(word, dstMetrics + label);
  };
  const Kvr32u left = squared(a), right = squared(256 - a), below = squared(b), above = squared(256 - b);
  store(0, 0, 0 * kNumber + left + below);
  store(1, 0, 1 * kNumber + right + below);
  store(1, 1, 2 * kNumber + right + above);
  store(0, 1, 3 * kNumber + left + above);
  if (isCoarse) return;

  // Of a column at the side and a row above or below, at the points that have one label.
  const Kvr32u right2 = squared(512 - a), left2 = squared(256 + a);
  const Kvr32u above2 = squared(512 - b), below2 = squared(256 + b);
  const auto nearer = [](Kvr32u number, Kvr32u atSide, Kvr32u atEnd) {
    return atSide < atEnd ? number * kNumber + atSide : (number + 4) * kNumber + atEnd;
  };
  store(2, 0, nearer(4, right2 + below, left + above2));
  store(3, 0, nearer(5, left2 + below, right + above2));
  store(3, 1, nearer(6, left2 + above, right + below2));
  store(2, 1, nearer(7, right2 + above, left + below2));
}

// --- symbols ---

constexpr Kvr32u kSubsets = 16;
constexpr int kSecondPoint = 8;  // where its metrics begin

void addMetrics(const Kvr32u* src, Kvr16sc* dst, bool isCoarse, int mask) {
  const Kvr32u firstBits = isCoarse ? 3 : 7, changed = static_cast<Kvr32u>(mask) & 15;
  Kvr32u metric[2 * kSecondPoint];
  for (int i = 0; i < 2 * kSecondPoint; ++i) metric[i] = get(src + i) & 0xFFFF;
  const auto entry = [&](Kvr32u symbol) {
    const Kvr32u first = symbol >> 2, second = (symbol + first) & 3;
    const Kvr32u sum = metric[first & firstBits] + metric[kSecondPoint + second];
    return Kvr16sc{static_cast<Kvr16s>(symbol), static_cast<Kvr16s>(std::min(sum, Kvr32u{32767}))};
  };
  for (Kvr32u v = 0; v < kSubsets; ++v) {
    const Kvr32u u = (v ^ changed) + 2 * (v & 8);
    put(entry(u), dst + 2 * v);
    put(entry(u ^ 8), dst + 2 * v + 1);
  }
}

// --- paths ---

constexpr int kBranches = 16;
constexpr int kNextStates = 256;  // that a byte can name
// So many states at a time have their branches numbered in 16 bits.
constexpr int kStatesAtOnce = 65536 / kBranches / 2;

// Of `count` states, the first of which is `begin`.
void selectPaths(const Kvr16u* pathError, const Kvr8u* nextState, Kvr16u* curError, const Kvr16u* symbolTable,
                 Kvr32u* survivors, int reached, int begin, int count) {
  alignas(64)
      Kvr32u best[kNextStates] = {};  // nothing is better than 0, so that branches to states unknown are lost
  for (int t = 0; t < reached; ++t) best[t] = Kvr32u{get(curError + t)} << 16;

  alignas(64) Kvr32u metric[2][kBranches];  // to even states, to odd ones
  for (int j = 0; j < kBranches; ++j) {
    metric[0][j] = get(symbolTable + 4 * j + 1);
    metric[1][j] = get(symbolTable + 4 * j + 3);
  }
  for (int s = 0; s < count; ++s) {
    const Kvr32u error = get(pathError + begin + s), number = static_cast<Kvr32u>(s * kBranches + 1);
    const Kvr32u* const added = metric[(begin + s) & 1];
    alignas(64) Kvr32u path[kBranches];
    for (Kvr32u j = 0; j < kBranches; ++j) {
      path[j] = (std::min(error + added[j], Kvr32u{65535}) << 16) + number + j;
    }
    // In memory, where each of them is a load: the compiler would take them out of vectors one by one.
    asm("" : "+m"(path));
    const Kvr8u* const next = nextState + ptrdiff_t{kBranches} * (begin + s);
    for (int j = 0; j < kBranches; ++j) best[next[j]] = std::min(best[next[j]], path[j]);
  }

  for (int t = 0; t < reached; ++t) {
    const Kvr32u number = best[t] & 0xFFFF;
    if (number == 0) continue;
    const Kvr32u s = static_cast<Kvr32u>(begin) + (number - 1) / kBranches, j = (number - 1) % kBranches;
    put(static_cast<Kvr16u>(best[t] >> 16), curError + t);
    put(s << 16 | get(symbolTable + 4 * j + 2 * (s & 1)), survivors + t);
  }
}

// --- metrics ---

struct Equal {
  Kvr16u value;
  template <class V>
  KVRS_INLINE auto operator()(V v) const {
    return hn::Eq(v, hn::Set(hn::DFromV<V>(), value));
  }
};

template <size_t kStates>
void normalize(Kvr16u* metrics, Kvr16u* dstMin, Kvr8u* dstIndex, Kvr16u* dstMetrics) {
  constexpr size_t N = std::min(kStates, kLanes<Kvr16u>);
  constexpr int kVectors = kStates / N;
  const Lanes<Kvr16u, N> d;
  hn::Vec<decltype(d)> v[kVectors];
  unroll<kVectors>([&](auto k) KVRS_UNROLLED { v[k] = hn::LoadU(d, metrics + k * N); });
  auto smallest = v[0];
  unroll<kVectors>([&](auto k) KVRS_UNROLLED { smallest = hn::Min(smallest, v[k]); });
  const Kvr16u least = foldLanes(smallest, [](auto a, auto b) KVRS_UNROLLED { return hn::Min(a, b); });
  const size_t at = findFirst(metrics, kStates, Equal{least});

  const auto all = hn::Set(d, least), reset = hn::Set(d, Kvr16u{65535});
  unroll<kVectors>([&](auto k) KVRS_UNROLLED { hn::StoreU(hn::Sub(v[k], all), d, dstMetrics + k * N); });
  unroll<kVectors>([&](auto k) KVRS_UNROLLED { hn::StoreU(reset, d, metrics + k * N); });
  put(least, dstMin);
  *dstIndex = static_cast<Kvr8u>(at);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsGetVarPointDV_16sc(const Kvr16sc* src, Kvr16sc* dstPoint, Kvr32u* dstMetrics,
                                 const Kvr8u* labels, int numStates) noexcept {
  KVRS_CHECK(pointers(src, dstPoint, dstMetrics, labels));
  slice(src, dstPoint, dstMetrics, labels, numStates == 16);
  return kvrStatusOk;
}

KvrStatus kvrsBuildSymblTableDV4D_16sc(const Kvr32u* src, Kvr16sc* dst, int numStates, int mask) noexcept {
  KVRS_CHECK(pointers(src, dst));
  addMetrics(src, dst, numStates == 16, mask);
  return kvrStatusOk;
}

KvrStatus kvrsCalcStatesDV_16sc(const Kvr16u* pathError, const Kvr8u* nextState, Kvr16u* curError,
                                const Kvr16u* symbolTable, Kvr32u* survivors, int numStates,
                                int offset) noexcept {
  KVRS_CHECK(pointers(pathError, nextState, curError, symbolTable, survivors));
  const int reached = std::min(numStates, kNextStates);
  for (int begin = 0; begin < numStates; begin += kStatesAtOnce) {
    selectPaths(pathError, nextState, curError, symbolTable, survivors + offset, reached, begin,
                std::min(numStates - begin, kStatesAtOnce));
  }
  return kvrStatusOk;
}

KvrStatus kvrsUpdatePathMetricsDV_16u(Kvr16u* metrics, Kvr16u* dstMin, Kvr8u* dstIndex, Kvr16u* dstMetrics,
                                      int numStates) noexcept {
  KVRS_CHECK(pointers(metrics, dstMin, dstIndex, dstMetrics));
  switch (numStates) {
    case 16:
      normalize<16>(metrics, dstMin, dstIndex, dstMetrics);
      break;
    case 32:
      normalize<32>(metrics, dstMin, dstIndex, dstMetrics);
      break;
    default:
      normalize<64>(metrics, dstMin, dstIndex, dstMetrics);
  }
  return kvrStatusOk;
}
