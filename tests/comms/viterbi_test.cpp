// SPDX-License-Identifier: MIT
#include "kvrs/viterbi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <vector>

#include "tests/comms/guarded.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

int64_t floorDivision(int64_t a, int64_t b) {
  return a >= 0 ? a / b : -((-a + b - 1) / b);
}
int modulo4(int64_t a) {
  return static_cast<int>(a - 4 * floorDivision(a, 4));
}

// --- points ---

// Where the points lie from the base point on, by number, in steps of the grid.
struct Place {
  int right, up;
};
constexpr Place kPlaces[12] = {{0, 0},  {1, 0}, {1, 1}, {0, 1}, {2, 0},  {-1, 0},
                               {-1, 1}, {2, 1}, {0, 2}, {1, 2}, {1, -1}, {0, -1}};

void checkPoint(Kvr16sc point, const std::vector<Kvr8u>& labels, int numStates, Random& random) {
  const int64_t baseX = 256 * floorDivision(point.re - 128, 256) + 128,
                baseY = 256 * floorDivision(point.im - 128, 256) + 128;
  const int mask = numStates == 16 ? 3 : 7;
  const auto label = [&](int k) {
    const int column = modulo4(floorDivision(baseX, 256) + 2 + kPlaces[k].right),
              row = modulo4(floorDivision(baseY, 256) + 2 + kPlaces[k].up);
    return labels[static_cast<size_t>(4 * row + column)] & mask;
  };
  const auto distance = [&](int k) {
    const int64_t x = baseX + 256 * kPlaces[k].right - point.re, y = baseY + 256 * kPlaces[k].up - point.im;
    return static_cast<Kvr32u>(x * x / 16 + y * y / 16);
  };
  std::vector<Kvr32u> want(numStates == 16 ? 4 : 8, 0xABCDEF01);
  for (int k = 0; k < 4; ++k) want[label(k)] = static_cast<Kvr32u>(k) << 16 | distance(k);
  for (int k = 4; k < 8 && numStates != 16; ++k) {
    const int nearer = distance(k) < distance(k + 4) ? k : k + 4;
    want[label(k)] = static_cast<Kvr32u>(nearer) << 16 | distance(nearer);
  }

  const Guarded<Kvr16sc> src({point}, random), base({{1, 2}}, random);
  const Guarded<Kvr32u> metrics(std::vector<Kvr32u>(want.size(), 0xABCDEF01), random);
  const Guarded<Kvr8u> table(labels, random);
  ASSERT_EQ(kvrStatusOk, kvrsGetVarPointDV_16sc(src, base, metrics, table, numStates));
  ASSERT_EQ(static_cast<Kvr16s>(baseX), base.values()[0].re) << point.re;
  ASSERT_EQ(static_cast<Kvr16s>(baseY), base.values()[0].im) << point.im;
  ASSERT_EQ(want, metrics.values()) << point.re << ", " << point.im << ", " << numStates << " states";
  ASSERT_TRUE(base.intact() && metrics.intact());
}

// Eight subsets in which points two columns and two rows away belong together.
std::vector<Kvr8u> latticeLabels() {
  std::vector<Kvr8u> labels(16);
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      const int four = column % 2 + 2 * (row % 2), half = (column / 2 + row / 2) % 2;
      labels[static_cast<size_t>(4 * row + column)] = static_cast<Kvr8u>(four + 4 * half);
    }
  }
  return labels;
}

TEST(Viterbi, PointsAroundARandomPoint) {
  Random random;
  for (int turn = 0; turn < 3000 && !HasFatalFailure(); ++turn) {
    std::vector<Kvr8u> labels = latticeLabels();
    if (turn % 2) std::generate(labels.begin(), labels.end(), [&] { return random.value<Kvr8u>(); });
    const int states[] = {16, 32, 64, 0, -1, 17, INT_MAX};
    checkPoint(random.value<Kvr16sc>(), labels, states[random.below(7)], random);
  }
}

TEST(Viterbi, PointsOnAndBesideTheGrid) {
  Random random(2);
  for (int x : {-32768, -32767, -32641, -32640, -32639, -385, -384, -129, -128,  -127,  -1,    0,    1,
                127,    128,    129,    255,    256,    383,  384,  385,  32639, 32640, 32641, 32767}) {
    for (int y : {-32768, -128, -1, 0, 127, 128, 129, 32640, 32767}) {
      for (int numStates : {16, 32}) {
        checkPoint({static_cast<Kvr16s>(x), static_cast<Kvr16s>(y)}, latticeLabels(), numStates, random);
        if (HasFatalFailure()) return;
      }
    }
  }
  Kvr16sc on = {128, -128}, base;
  Kvr32u metrics[8] = {};
  const std::vector<Kvr8u> labels = latticeLabels();
  ASSERT_EQ(kvrStatusOk, kvrsGetVarPointDV_16sc(&on, &base, metrics, labels.data(), 16));
  EXPECT_EQ(128, base.re);
  EXPECT_EQ(-128, base.im);
  EXPECT_EQ(0u, metrics[labels[4 * 1 + 2] & 3]);
}

// In a lattice, where each subset has a point among the twelve, its metric is that of the nearest of all of its points.
TEST(Viterbi, MetricsAreThoseOfTheNearestPoints) {
  Random random(3);
  const std::vector<Kvr8u> labels = latticeLabels();
  for (int turn = 0; turn < 200; ++turn) {
    Kvr16sc point = {static_cast<Kvr16s>(random.below(4096)), static_cast<Kvr16s>(random.below(4096))}, base;
    Kvr32u metrics[8] = {}, nearest[8];
    ASSERT_EQ(kvrStatusOk, kvrsGetVarPointDV_16sc(&point, &base, metrics, labels.data(), 32));
    std::fill_n(nearest, 8, UINT_MAX);
    for (int column = -8; column < 24; ++column) {
      for (int row = -8; row < 24; ++row) {
        const int x = 256 * column + 128 - point.re, y = 256 * row + 128 - point.im;
        Kvr32u& least = nearest[labels[static_cast<size_t>(4 * modulo4(row + 2) + modulo4(column + 2))]];
        least = std::min(least, static_cast<Kvr32u>(x * x / 16 + y * y / 16));
      }
    }
    for (int label = 0; label < 8; ++label) EXPECT_EQ(nearest[label], metrics[label] & 0xFFFF) << label;
  }
}

// --- symbols ---

TEST(Viterbi, SymbolsAreSumsOfPoints) {
  Random random(4);
  for (int numStates : {16, 32, 64, 0}) {
    for (int mask = -3; mask <= 33 && !HasFatalFailure(); ++mask) {
      std::vector<Kvr32u> metrics(16);
      for (Kvr32u& m : metrics) m = random.value<Kvr32u>();
      // Sums around the highest number, and such as occur.
      for (size_t i = 0; i < 16 && mask % 2 == 0; ++i) metrics[i] = 0xB0000 + 16380 + random.below(8);
      const Guarded<Kvr32u> src(metrics, random);
      const Guarded<Kvr16sc> dst(std::vector<Kvr16sc>(32), random);
      ASSERT_EQ(kvrStatusOk, kvrsBuildSymblTableDV4D_16sc(src, dst, numStates, mask));
      const std::vector<Kvr16sc> got = dst.values();
      const int low = mask - 16 * static_cast<int>(floorDivision(mask, 16));
      for (int v = 0; v < 16; ++v) {
        const int u = v < 8 ? v ^ low : (v ^ low) + 16;
        for (int odd = 0; odd < 2; ++odd) {
          const int symbol = odd ? (u & 8 ? u - 8 : u + 8) : u;
          const int first = symbol / 4 % (numStates == 16 ? 4 : 8), second = (symbol + symbol / 4) % 4;
          const int64_t sum = int64_t{metrics[static_cast<size_t>(first)] % 65536} +
                              int64_t{metrics[static_cast<size_t>(8 + second)] % 65536};
          const Kvr16sc entry = got[static_cast<size_t>(2 * v + odd)];
          ASSERT_EQ(symbol, entry.re) << v << ", mask " << mask;
          ASSERT_EQ(std::min<int64_t>(sum, 32767), entry.im) << v << ", mask " << mask;
        }
      }
      ASSERT_TRUE(dst.intact());
    }
  }
}

// --- paths ---

struct Paths {
  std::vector<Kvr16u> pathError, curError, symbolTable;
  std::vector<Kvr8u> nextState;
  std::vector<Kvr32u> survivors;
};

// One branch after the other, as it is stated.
void select(Paths& p, int numStates, int offset) {
  for (int s = 0; s < numStates; ++s) {
    for (int j = 0; j < 16; ++j) {
      const size_t t = p.nextState[static_cast<size_t>(16 * s + j)];
      const size_t entry = static_cast<size_t>(4 * j + 2 * (s & 1));
      const int64_t sum = int64_t{p.pathError[static_cast<size_t>(s)]} + p.symbolTable[entry + 1];
      if (sum >= p.curError[t]) continue;
      p.curError[t] = static_cast<Kvr16u>(sum);
      p.survivors[static_cast<size_t>(offset) + t] = static_cast<Kvr32u>(s) << 16 | p.symbolTable[entry];
    }
  }
}

void checkPaths(int numStates, bool few, Random& random) {
  Paths p;
  const size_t states = static_cast<size_t>(numStates);
  const auto metric = [&] { return few ? static_cast<Kvr16u>(random.below(6)) : random.value<Kvr16u>(); };
  for (size_t s = 0; s < states; ++s) {
    p.pathError.push_back(metric());
    p.curError.push_back(random.below(4) ? 65535 : random.value<Kvr16u>());
    for (int j = 0; j < 16; ++j) {
      p.nextState.push_back(
          static_cast<Kvr8u>(random.below(static_cast<uint32_t>(std::min(numStates, 256)))));
    }
  }
  for (int k = 0; k < 64; ++k) p.symbolTable.push_back(k % 2 ? metric() : random.value<Kvr16u>());
  const int offset = static_cast<int>(random.below(100)) - 50;
  const size_t before = static_cast<size_t>(std::max(offset, 0));
  p.survivors.assign(before + states, 0x12345678);

  const Guarded<Kvr16u> pathError(p.pathError, random), curError(p.curError, random),
      table(p.symbolTable, random);
  const Guarded<Kvr8u> next(p.nextState, random);
  const Guarded<Kvr32u> survivors(p.survivors, random);
  // With a negative offset the pointer stands above the array.
  Kvr32u* const at = survivors + (before - static_cast<size_t>(offset));
  Kvr32u* const given = offset < 0 ? at : static_cast<Kvr32u*>(survivors);
  ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError, next, curError, table, given, numStates, offset));
  select(p, numStates, offset < 0 ? 0 : offset);
  ASSERT_EQ(p.curError, curError.values()) << numStates << " states";
  ASSERT_EQ(p.survivors, survivors.values()) << numStates << " states";
  ASSERT_TRUE(curError.intact() && survivors.intact());
}

TEST(Viterbi, TheBestPathsSurvive) {
  Random random(5);
  for (int numStates : {1, 2, 15, 16, 17, 32, 33, 64, 100, 255, 256, 257, 300, 2047, 2048, 2049, 5000}) {
    for (int turn = 0; turn < (numStates > 256 ? 4 : 40) && !HasFatalFailure(); ++turn) {
      checkPaths(numStates, turn % 2, random);
    }
  }
}

TEST(Viterbi, OfEqualPathsTheFirstStays) {
  std::vector<Kvr16u> pathError(16, 100), curError(16, 65535), table(64);
  std::vector<Kvr8u> next(256, 3);
  for (size_t k = 0; k < 64; ++k) table[k] = static_cast<Kvr16u>(k % 2 ? 5 : 1000 + k);
  std::vector<Kvr32u> survivors(16);
  ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError.data(), next.data(), curError.data(), table.data(),
                                               survivors.data(), 16, 0));
  EXPECT_EQ(105, curError[3]);
  EXPECT_EQ(1000u, survivors[3]);
  // What is there stays as well.
  survivors[3] = 7;
  ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError.data(), next.data(), curError.data(), table.data(),
                                               survivors.data(), 16, 0));
  EXPECT_EQ(7u, survivors[3]);
}

TEST(Viterbi, NoStatesNothingHappens) {
  Random random(6);
  const std::vector<Kvr16u> errors(64, 65535), zeros(64);
  const std::vector<Kvr32u> marks(64, 99);
  const Guarded<Kvr16u> pathError(zeros, random), curError(errors, random), table(zeros, random);
  const Guarded<Kvr8u> next(std::vector<Kvr8u>(64), random);
  const Guarded<Kvr32u> survivors(marks, random);
  for (int numStates : {0, -1, INT_MIN}) {
    ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError, next, curError, table, survivors, numStates, 0));
    EXPECT_EQ(errors, curError.values());
    EXPECT_EQ(marks, survivors.values());
  }
}

// A table with wrong states does no harm.
TEST(Viterbi, BranchesToUnknownStatesAreLeftOut) {
  Random random(7);
  const Guarded<Kvr16u> pathError(std::vector<Kvr16u>(16), random), table(std::vector<Kvr16u>(64), random);
  const Guarded<Kvr16u> curError(std::vector<Kvr16u>(16, 65535), random);
  const Guarded<Kvr32u> survivors(std::vector<Kvr32u>(16), random);
  std::vector<Kvr8u> states(256);
  for (size_t k = 0; k < 256; ++k) states[k] = static_cast<Kvr8u>(16 + k % 240);
  const Guarded<Kvr8u> next(states, random);
  ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError, next, curError, table, survivors, 16, 0));
  EXPECT_EQ(std::vector<Kvr16u>(16, 65535), curError.values());
  EXPECT_TRUE(curError.intact() && survivors.intact());
}

// --- metrics ---

TEST(Viterbi, TheLeastMetricIsTakenOff) {
  Random random(8);
  for (int turn = 0; turn < 2000 && !HasFatalFailure(); ++turn) {
    const int all[] = {16, 32, 64, 0, -5, 17, 1000};
    const int numStates = all[random.below(7)];
    const size_t states = numStates == 16 || numStates == 32 ? static_cast<size_t>(numStates) : 64;
    std::vector<Kvr16u> metrics(states);
    const uint32_t spread = turn % 3 ? 5 : 65536, lowest = turn % 2 ? 32765 : 0;
    for (Kvr16u& m : metrics) m = static_cast<Kvr16u>(lowest + random.below(spread));
    const Guarded<Kvr16u> given(metrics, random), least({7}, random), dst(metrics, random);
    const Guarded<Kvr8u> index({7}, random);
    ASSERT_EQ(kvrStatusOk, kvrsUpdatePathMetricsDV_16u(given, least, index, dst, numStates));
    const auto first = std::min_element(metrics.begin(), metrics.end());
    ASSERT_EQ(*first, least.values()[0]);
    ASSERT_EQ(first - metrics.begin(), index.values()[0]);
    const Kvr16u off = *first;
    for (Kvr16u& m : metrics) m = static_cast<Kvr16u>(m - off);
    ASSERT_EQ(metrics, dst.values());
    ASSERT_EQ(std::vector<Kvr16u>(states, 65535), given.values());
    ASSERT_TRUE(given.intact() && least.intact() && index.intact() && dst.intact());
  }
}

TEST(Viterbi, EqualMetrics) {
  std::vector<Kvr16u> metrics(16, 7), dst(16, 1);
  Kvr16u least = 0;
  Kvr8u index = 9;
  ASSERT_EQ(kvrStatusOk, kvrsUpdatePathMetricsDV_16u(metrics.data(), &least, &index, dst.data(), 16));
  EXPECT_EQ(7, least);
  EXPECT_EQ(0, index);
  EXPECT_EQ(std::vector<Kvr16u>(16, 0), dst);
  EXPECT_EQ(std::vector<Kvr16u>(16, 65535), metrics);
}

// --- all together ---

// A random walk through a random trellis, its points sent without noise or with some: the decoder finds the walk.
void checkDecoder(int numStates, int noise) {
  Random random(static_cast<uint64_t>(numStates + noise));
  const std::vector<Kvr8u> labels = latticeLabels();
  const size_t states = static_cast<size_t>(numStates);
  // To each state come 16 branches from states all over.
  std::vector<Kvr8u> next(16 * states);
  for (size_t k = 0; k < next.size(); ++k) next[k] = static_cast<Kvr8u>((k * 7 + k / states) % states);

  constexpr int kSteps = 60, kMask = 5;
  std::vector<Kvr16u> pathError(states, 30000), curError(states, 65535);
  pathError[0] = 0;
  std::vector<Kvr32u> survivors(kSteps * states);
  std::vector<int> sent;
  size_t state = 0;
  Kvr16u least = 0;
  Kvr8u best = 0;
  for (int time = 0; time < kSteps; ++time) {
    // The symbols' names, from metrics that do not matter.
    Kvr32u metrics[16] = {};
    Kvr16sc symbols[32];
    ASSERT_EQ(kvrStatusOk, kvrsBuildSymblTableDV4D_16sc(metrics, symbols, numStates, kMask));
    const size_t branch = random.below(16);
    const int symbol = symbols[2 * branch + (state & 1)].re;
    const int subset[2] = {(symbol >> 2) & (numStates == 16 ? 3 : 7), (symbol + (symbol >> 2)) & 3};
    for (int k = 0; k < 2; ++k) {
      // Any point of the subset.
      int column, row;
      do {
        column = static_cast<int>(random.below(16)) - 8;
        row = static_cast<int>(random.below(16)) - 8;
      } while ((labels[static_cast<size_t>(4 * modulo4(row + 2) + modulo4(column + 2))] &
                (numStates == 16 ? 3 : 7)) != subset[k]);
      const auto some = [&] { return noise == 0 ? 0 : static_cast<int>(random.below(2 * noise)) - noise; };
      const Kvr16sc received = {static_cast<Kvr16s>(256 * column + 128 + some()),
                                static_cast<Kvr16s>(256 * row + 128 + some())};
      Kvr16sc base;
      ASSERT_EQ(kvrStatusOk,
                kvrsGetVarPointDV_16sc(&received, &base, metrics + 8 * k, labels.data(), numStates));
    }
    sent.push_back(symbol);
    state = next[16 * state + branch];
    ASSERT_EQ(kvrStatusOk, kvrsBuildSymblTableDV4D_16sc(metrics, symbols, numStates, kMask));
    ASSERT_EQ(kvrStatusOk, kvrsCalcStatesDV_16sc(pathError.data(), next.data(), curError.data(),
                                                 reinterpret_cast<const Kvr16u*>(symbols), survivors.data(),
                                                 numStates, numStates * time));
    ASSERT_EQ(kvrStatusOk,
              kvrsUpdatePathMetricsDV_16u(curError.data(), &least, &best, pathError.data(), numStates));
    if (noise == 0) {
      ASSERT_EQ(0, least) << time;
    }
  }
  // Back from the best state.
  size_t s = best;
  for (int time = kSteps - 1; time >= 0; --time) {
    const Kvr32u survivor = survivors[static_cast<size_t>(time) * states + s];
    // The end of the walk is known by no later point.
    if (noise == 0 || time < kSteps - 20) {
      ASSERT_EQ(sent[static_cast<size_t>(time)], static_cast<int>(survivor & 0xFFFF)) << time;
    }
    s = survivor >> 16;
  }
  EXPECT_EQ(0u, s);
}

TEST(Viterbi, DecodesAWalkThroughATrellis) {
  for (int numStates : {16, 32, 64}) checkDecoder(numStates, 0);
}

TEST(Viterbi, DecodesWithNoise) {
  checkDecoder(32, 60);
  checkDecoder(64, 60);
}

TEST(Viterbi, NullPointersLeaveAllUnwritten) {
  Random random(9);
  const std::vector<Kvr16u> numbers(64, 5);
  const Guarded<Kvr16sc> point({{1, 2}}, random), base({{3, 4}}, random),
      symbols(std::vector<Kvr16sc>(32), random);
  const Guarded<Kvr32u> metrics(std::vector<Kvr32u>(64, 6), random);
  const Guarded<Kvr8u> bytes(std::vector<Kvr8u>(1024), random), index({9}, random);
  const Guarded<Kvr16u> a(numbers, random), b(numbers, random), c(numbers, random);
  const auto expectNull = [&](KvrStatus status) {
    EXPECT_EQ(kvrStatusNullPointer, status);
    EXPECT_EQ(3, base.values()[0].re);
    EXPECT_EQ(0, symbols.values()[0].im);
    EXPECT_EQ(std::vector<Kvr32u>(64, 6), metrics.values());
    EXPECT_EQ(numbers, a.values());
    EXPECT_EQ(numbers, b.values());
    EXPECT_EQ(numbers, c.values());
    EXPECT_EQ(9, index.values()[0]);
  };
  for (int missing = 0; missing < 5; ++missing) {
    const auto given = [&](int which, auto* p) { return which == missing ? nullptr : p; };
    Kvr16sc *const src = point, *const dst = base, *const table = symbols;
    Kvr32u* const words = metrics;
    Kvr8u *const small = bytes, *const at = index;
    Kvr16u *const first = a, *const second = b, *const third = c;
    if (missing < 4) {
      expectNull(kvrsGetVarPointDV_16sc(given(0, src), given(1, dst), given(2, words), given(3, small), 16));
      expectNull(
          kvrsUpdatePathMetricsDV_16u(given(0, first), given(1, second), given(2, at), given(3, third), 64));
    }
    if (missing < 2) expectNull(kvrsBuildSymblTableDV4D_16sc(given(0, words), given(1, table), 16, 1));
    expectNull(kvrsCalcStatesDV_16sc(given(0, first), given(1, small), given(2, second), given(3, third),
                                     given(4, words), 64, 0));
    expectNull(kvrsCalcStatesDV_16sc(given(0, first), given(1, small), given(2, second), given(3, third),
                                     given(4, words), 0, 0));
  }
}

}  // namespace
