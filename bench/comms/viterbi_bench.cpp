// SPDX-License-Identifier: MIT
#include "kvrs/viterbi.h"

#include <algorithm>
#include <cstring>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

__attribute__((noipa)) void loopPoint(const Kvr16sc* src, Kvr16sc* dstPoint, Kvr32u* dst, const Kvr8u* labels,
                                      int numStates) {
  static constexpr struct {
    int right, up;
  } kPlaces[12] = {{0, 0},  {1, 0}, {1, 1}, {0, 1}, {2, 0},  {-1, 0},
                   {-1, 1}, {2, 1}, {0, 2}, {1, 2}, {1, -1}, {0, -1}};
  const int a = (src->re & 255) ^ 128, b = (src->im & 255) ^ 128;
  *dstPoint = {static_cast<Kvr16s>(src->re - a), static_cast<Kvr16s>(src->im - b)};
  const int column = ((src->re - a - 128) >> 8) + 2, row = ((src->im - b - 128) >> 8) + 2;
  const auto label = [&](int k) {
    return labels[4 * ((row + kPlaces[k].up) & 3) + ((column + kPlaces[k].right) & 3)] &
           (numStates == 16 ? 3 : 7);
  };
  const auto distance = [&](int k) {
    const int x = 256 * kPlaces[k].right - a, y = 256 * kPlaces[k].up - b;
    return x * x / 16 + y * y / 16;
  };
  for (int k = 0; k < 4; ++k) dst[label(k)] = static_cast<Kvr32u>(k << 16 | distance(k));
  for (int k = 4; k < 8 && numStates != 16; ++k) {
    const int near = distance(k), other = distance(k + 4);
    dst[label(k)] = static_cast<Kvr32u>(near < other ? k << 16 | near : (k + 4) << 16 | other);
  }
}

__attribute__((noipa)) void loopSymbols(const Kvr32u* src, Kvr16sc* dst, int numStates, int mask) {
  for (int v = 0; v < 16; ++v) {
    const int u = (v ^ mask) + 2 * (v & 8);
    for (int k = 0; k < 2; ++k) {
      const int symbol = u ^ (8 * k);
      const int first = (symbol >> 2) & (numStates == 16 ? 3 : 7), second = (symbol + (symbol >> 2)) & 3;
      const int sum = static_cast<int>((src[first] & 0xFFFF) + (src[8 + second] & 0xFFFF));
      dst[2 * v + k] = {static_cast<Kvr16s>(symbol), static_cast<Kvr16s>(std::min(sum, 32767))};
    }
  }
}

__attribute__((noipa)) void loopSelect(const Kvr16u* pathError, const Kvr8u* nextState, Kvr16u* curError,
                                       const Kvr16u* symbolTable, Kvr32u* survivors, int numStates) {
  for (int s = 0; s < numStates; ++s) {
    for (int j = 0; j < 16; ++j) {
      const int t = nextState[16 * s + j];
      const Kvr16u* const entry = symbolTable + 4 * j + 2 * (s & 1);
      const int error = pathError[s] + entry[1];
      if (error < curError[t]) {
        curError[t] = static_cast<Kvr16u>(error);
        survivors[t] = static_cast<Kvr32u>(s << 16 | entry[0]);
      }
    }
  }
}

__attribute__((noipa)) void loopNormalize(Kvr16u* metrics, Kvr16u* dstMin, Kvr8u* dstIndex, Kvr16u* dst,
                                          int numStates) {
  Kvr16u least = 65535;
  for (int s = 0; s < numStates; ++s) least = std::min(least, metrics[s]);
  int index = 0;
  while (metrics[index] != least) ++index;
  for (int s = 0; s < numStates; ++s) dst[s] = static_cast<Kvr16u>(metrics[s] - least);
  for (int s = 0; s < numStates; ++s) metrics[s] = 65535;
  *dstMin = least;
  *dstIndex = static_cast<Kvr8u>(index);
}

// Received points from all over, so that no branch can be learnt.
constexpr size_t kPoints = 4096;

Register viterbi([] {
  for (int states : {16, 32, 64}) {
    const std::string n = std::to_string(states);
    const auto points = array<Kvr16sc>(kPoints), base = array<Kvr16sc>(1), symbols = array<Kvr16sc>(32);
    const auto metrics = array<Kvr32u>(16);
    const auto labels = array<Kvr8u>(16);
    add("viterbi/GetVarPoint/" + n, "kvrs", [=] {
      for (size_t i = 0; i < 64; ++i)
        kvrsGetVarPointDV_16sc(points.get() + i, base.get(), metrics.get(), labels.get(), states);
    });
    add("viterbi/GetVarPoint/" + n, "loop", [=] {
      for (size_t i = 0; i < 64; ++i)
        loopPoint(points.get() + i, base.get(), metrics.get(), labels.get(), states);
    });
    add("viterbi/BuildSymblTable/" + n, "kvrs",
        [=] { kvrsBuildSymblTableDV4D_16sc(metrics.get(), symbols.get(), states, 5); });
    add("viterbi/BuildSymblTable/" + n, "loop",
        [=] { loopSymbols(metrics.get(), symbols.get(), states, 5); });

    // 64 steps of a decoder, each with its own metrics; the same in both but for who computes.
    const size_t count = static_cast<size_t>(states);
    const auto errors = array<Kvr16u>(64 * count), tables = array<Kvr16u>(64 * 64),
               current = array<Kvr16u>(count);
    const auto next = array<Kvr8u>(16 * count), index = array<Kvr8u>(1);
    const auto survivors = array<Kvr32u>(count);
    for (size_t i = 0; i < 64 * count; ++i) errors.get()[i] %= 20000;
    for (size_t i = 0; i < 64 * 64; ++i) tables.get()[i] %= 20000;
    for (size_t i = 0; i < 16 * count; ++i) next.get()[i] = static_cast<Kvr8u>((i * 7 + i / count) % count);
    add("viterbi/CalcStates/" + n, "kvrs", [=] {
      for (size_t i = 0; i < 64; ++i) {
        memset(current.get(), 255, 2 * count);
        kvrsCalcStatesDV_16sc(errors.get() + i * count, next.get(), current.get(), tables.get() + 64 * i,
                              survivors.get(), states, 0);
      }
    });
    add("viterbi/CalcStates/" + n, "loop", [=] {
      for (size_t i = 0; i < 64; ++i) {
        memset(current.get(), 255, 2 * count);
        loopSelect(errors.get() + i * count, next.get(), current.get(), tables.get() + 64 * i,
                   survivors.get(), states);
      }
    });

    const auto given = array<Kvr16u>(64 * count), least = array<Kvr16u>(1), dst = array<Kvr16u>(count);
    add("viterbi/UpdatePathMetrics/" + n, "kvrs", [=] {
      memcpy(given.get(), errors.get(), 128 * count);
      for (size_t i = 0; i < 64; ++i)
        kvrsUpdatePathMetricsDV_16u(given.get() + i * count, least.get(), index.get(), dst.get(), states);
    });
    add("viterbi/UpdatePathMetrics/" + n, "loop", [=] {
      memcpy(given.get(), errors.get(), 128 * count);
      for (size_t i = 0; i < 64; ++i)
        loopNormalize(given.get() + i * count, least.get(), index.get(), dst.get(), states);
    });
  }
});

}  // namespace
}  // namespace kvrs::bench
