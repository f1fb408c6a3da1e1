// FIR filters at two rates against their definition: insert zeros, filter, drop.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_multirate.h"

#include <climits>

#include "tests/filters/fir_kinds.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

using Rates = WholeFilter::Rates;

// Taps of 16 bits that are held as given: of floats, those that fill 16 bits.
Wholes tapsAsHeld(Random& random, const FirKind& kind, int tapsLen) {
  Wholes taps = tapsFor(random, kind, tapsLen);
  if (kind.floatTaps) taps[0] = {20000, 0};
  return taps;
}

struct Filter {
  const FirKind& kind;
  int tapsLen;
  Rates rates;
  Wholes taps, line;
  WholeFilter oracle;
  void* state = nullptr;

  Filter(const FirKind& filterKind, Random& random, int length, Rates r)
      : kind(filterKind),
        tapsLen(length),
        rates(r),
        taps(tapsAsHeld(random, kind, length)),
        oracle(kind, taps, 0, {}, r) {
    line = samplesFor(random, kind, oracle.delayLength());
    oracle.setDelayLine(line);
  }

  void alloc() {
    EXPECT_EQ(kvrStatusOk,
              kind.initAllocMR(&state, bytesOf(*kind.taps, taps).data(), tapsLen, 0, rates.up, rates.upPhase,
                               rates.down, rates.downPhase, bytesOf(*kind.data, line).data()));
  }

  void run(Random& random, int numIters, bool inPlace, int scaleFactor = 0) {
    const size_t in = static_cast<size_t>(numIters * rates.down),
                 out = static_cast<size_t>(numIters * rates.up);
    const Wholes samples = samplesFor(random, kind, in);
    auto src = bytesOf(*kind.data, samples);
    std::vector<Kvr8u> dst(std::max(in, out) * kind.data->bytes);
    if (inPlace) {
      memcpy(dst.data(), src.data(), src.size());
      ASSERT_EQ(kvrStatusOk, kind.runInPlace(dst.data(), numIters, state, scaleFactor));
    } else {
      ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), numIters, state, scaleFactor));
    }
    expectSame(oracle.run(samples, scaleFactor), wholesOf(*kind.data, dst.data(), out));
    expectDelayLine();
  }

  void expectDelayLine() {
    const Wholes want = oracle.delayLine();
    std::vector<Kvr8u> bytes(want.size() * kind.data->bytes);
    ASSERT_EQ(kvrStatusOk, kind.getDlyLine(state, bytes.data()));
    expectSame(want, wholesOf(*kind.data, bytes.data(), want.size()));
  }
};

template <class Check>
void forKinds(Check check) {
  for (const FirKind& kind : firKinds()) {
    if (kind.initMR == nullptr) continue;
    SCOPED_TRACE(kind.name);
    check(kind);
    if (testing::Test::HasFailure()) return;
  }
}

void checkFilter(const FirKind& kind, Random& random, int tapsLen, Rates rates) {
  SCOPED_TRACE(testing::Message() << tapsLen << " taps, up " << rates.up << " from " << rates.upPhase
                                  << ", down " << rates.down << " from " << rates.downPhase);
  Filter filter(kind, random, tapsLen, rates);
  filter.alloc();
  filter.run(random, 1, false);
  filter.run(random, 1 + static_cast<int>(random.below(40)), false);
  filter.run(random, 1 + static_cast<int>(random.below(9)), true);
  filter.run(random, 2, false);
  EXPECT_EQ(kvrStatusOk, kind.free(filter.state));
}

// All factors to 12, all phases of some types and some of all types.
TEST(FirMultirate, FactorsAndPhases) {
  Random random;
  forKinds([&](const FirKind& kind) {
    const bool all = kind.is("_32f") || kind.is("_16s") || kind.is("64fc_32sc");
    for (int up = 1; up <= 12; ++up) {
      for (int down = 1; down <= 12; ++down) {
        for (int phase = 0; phase < (all ? up * down : 2); ++phase) {
          const Rates rates{up, all ? phase % up : static_cast<int>(random.below(static_cast<uint32_t>(up))),
                            down,
                            all ? phase / up : static_cast<int>(random.below(static_cast<uint32_t>(down)))};
          checkFilter(kind, random,
                      1 + static_cast<int>(random.below(static_cast<uint32_t>(4 * std::max(up, down)))),
                      rates);
          if (testing::Test::HasFailure()) return;
        }
      }
    }
  });
}

// Long filters whose factors have a common divisor: the outputs of an iteration are of a few phases only.
TEST(FirMultirate, FactorsWithACommonDivisor) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (Rates rates :
         {Rates{2, 1, 2, 1}, {2, 0, 4, 0}, {4, 3, 2, 0}, {3, 2, 3, 2}, {4, 1, 6, 5}, {6, 0, 3, 0}}) {
      for (int tapsLen : {33, 64, 97, 128, 151, 301}) {
        checkFilter(kind, random, tapsLen, rates);
        Filter filter(kind, random, tapsLen, rates);
        filter.alloc();
        filter.run(random, 100, false);
        filter.run(random, 100, true);
        EXPECT_EQ(kvrStatusOk, kind.free(filter.state));
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

TEST(FirMultirate, TapsAboutTheFactors) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (Rates rates : {Rates{1, 0, 4, 3},
                        {4, 1, 1, 0},
                        {3, 2, 2, 1},
                        {2, 0, 3, 0},
                        {1, 0, 10, 0},
                        {160, 7, 147, 80},
                        {7, 3, 700, 9}}) {
      const int factor = std::max(rates.up, rates.down);
      for (int tapsLen :
           {1, 2, factor - 1, factor, factor + 1, 2 * factor, 3 * rates.down, 4 * factor + 3, 300}) {
        if (tapsLen > 0) checkFilter(kind, random, tapsLen, rates);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// More samples than are staged at a time, and more iterations; results that are scaled.
TEST(FirMultirate, LongPieces) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (Rates rates : {Rates{1, 0, 4, 1}, {3, 1, 2, 1}, {4, 3, 1, 0}, {2, 1, 1, 0}}) {
      for (int tapsLen : {24, 71}) {
        Filter filter(kind, random, tapsLen, rates);
        filter.alloc();
        for (int scaleFactor : {0, 2, 5}) {
          filter.run(random, 1500, false, scaleFactor);
          filter.run(random, 1100, true, scaleFactor);
        }
        EXPECT_EQ(kvrStatusOk, kind.free(filter.state));
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// In a block of exactly the stated size; other taps and another delay line keep the rest.
TEST(FirMultirate, StayInTheirBlock) {
  Random random;
  Arena arena(2000000);
  forKinds([&](const FirKind& kind) {
    for (Rates rates : {Rates{1, 0, 1, 0},
                        {1, 0, 4, 3},
                        {3, 2, 2, 0},
                        {12, 5, 1, 0},
                        {1, 0, 50, 49},
                        {40, 1, 41, 2},
                        {500, 3, 2, 0}}) {
      for (int tapsLen : {1, 2, 5, 33, 1000}) {
        SCOPED_TRACE(testing::Message() << tapsLen << " taps, up " << rates.up << ", down " << rates.down);
        int size = 0;
        ASSERT_EQ(kvrStatusOk, kind.getStateSizeMR(tapsLen, rates.up, rates.down, &size));
        for (size_t offset : {0, 33}) {
          Filter filter(kind, random, tapsLen, rates);
          auto* buffer = arena.place<Kvr8u>(static_cast<size_t>(size), Side::back, offset);
          ASSERT_EQ(kvrStatusOk,
                    kind.initMR(&filter.state, bytesOf(*kind.taps, filter.taps).data(), tapsLen, 0, rates.up,
                                rates.upPhase, rates.down, rates.downPhase, nullptr, buffer));
          filter.oracle.setDelayLine({});
          filter.run(random, 15, false);
          filter.taps = tapsAsHeld(random, kind, tapsLen);
          filter.oracle.setTaps(filter.taps, 0);
          ASSERT_EQ(kvrStatusOk, kind.setTaps(bytesOf(*kind.taps, filter.taps).data(), filter.state, 0));
          std::vector<Kvr8u> stored(filter.taps.size() * kind.taps->bytes);
          int factor;
          ASSERT_EQ(kvrStatusOk, kind.getTaps(filter.state, stored.data(), &factor));
          expectSame(filter.taps, wholesOf(*kind.taps, stored.data(), filter.taps.size()));
          filter.expectDelayLine();
          filter.line = samplesFor(random, kind, filter.oracle.delayLength());
          filter.oracle.setDelayLine(filter.line);
          ASSERT_EQ(kvrStatusOk, kind.setDlyLine(filter.state, bytesOf(*kind.data, filter.line).data()));
          filter.expectDelayLine();
          filter.run(random, 10, true);
          ASSERT_EQ(kvrStatusOk, kind.free(filter.state));
          ASSERT_TRUE(arena.intact());
          if (testing::Test::HasFailure()) return;
        }
      }
    }
  });
}

int64_t up16(int64_t bytes) {
  return (bytes + 15) / 16 * 16;
}

TEST(FirMultirate, CopiedAsBytes) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (Rates rates : {Rates{1, 0, 4, 3}, {3, 2, 2, 0}, {40, 1, 41, 2}}) {
      int size = 0;
      ASSERT_EQ(kvrStatusOk, kind.getStateSizeMR(33, rates.up, rates.down, &size));
      const size_t bytes = static_cast<size_t>(size);
      std::vector<Kvr8u> first(bytes + 64), second(bytes + 64);
      const auto aligned = [](std::vector<Kvr8u>& memory) {
        return reinterpret_cast<Kvr8u*>((reinterpret_cast<uintptr_t>(memory.data()) + 63) / 64 * 64);
      };
      Filter filter(kind, random, 33, rates);
      ASSERT_EQ(kvrStatusOk, kind.initMR(&filter.state, bytesOf(*kind.taps, filter.taps).data(), 33, 0,
                                         rates.up, rates.upPhase, rates.down, rates.downPhase,
                                         bytesOf(*kind.data, filter.line).data(), aligned(first)));
      for (int turn = 0; turn < 3; ++turn) {
        filter.run(random, 15, turn == 1);
        memcpy(aligned(second), aligned(first), bytes);
        memset(aligned(first), 0xFF, bytes);
        std::swap(first, second);
        filter.state = aligned(first);
      }
    }
  });
}

TEST(FirMultirate, Sizes) {
  forKinds([&](const FirKind& kind) {
    for (int64_t up = 1; up <= 8; ++up) {
      for (int64_t down = 1; down <= 8; ++down) {
        for (int64_t taps = 1; taps <= 100; ++taps) {
          int size = 0;
          ASSERT_EQ(kvrStatusOk, kind.getStateSizeMR(static_cast<int>(taps), static_cast<int>(up),
                                                     static_cast<int>(down), &size));
          if (up == 1 && down == 1 && !kind.data->complex && !kind.integer()) {
            int single = 0;
            ASSERT_EQ(kvrStatusOk, kind.getStateSize(static_cast<int>(taps), &single));
            ASSERT_EQ(single, size);
            continue;
          }
          const int64_t line = (taps + up - 1) / up;
          int64_t padded = taps + 3 * down;
          while (padded % up != 0) ++padded;
          int64_t staged = 0;
          do {
            staged += 4 * down;
          } while (staged <= line);
          ++staged;
          if (kind.is("_16s") || kind.is("32s_16s") || kind.is("32s_16s32f")) {
            ASSERT_EQ(up16(4 * taps) + up16(16 * up + 4) + 32 * padded + up16(8 * padded) +
                          up16(2 * (line + staged) + 2) + 96,
                      size);
          } else if (kind.is("_32f") || kind.is("32f_16s")) {
            const float r = static_cast<float>(taps) / static_cast<float>(taps + 3 * down);
            if (r > (up == 1 ? 0.5f : 0.3f)) continue;
            for (int64_t outputs = (down + line - 1) / down * up; outputs % (4 * up) != 0; outputs += up)
              staged += down;
            ASSERT_EQ(16 * (((4 * taps + 15) >> 4) + padded) + up16(16 * up + 4) +
                          4 * std::max<int64_t>(8 * padded, 4096) + up16(4 * (line + staged) + 4) + 112,
                      size)
                << taps << " taps, up " << up << ", down " << down;
          }
        }
      }
    }
  });
}

// With both factors 1, real floating-point filters are those of one rate.
TEST(FirMultirate, FactorsOfOne) {
  Random random;
  forKinds([&](const FirKind& kind) {
    Filter filter(kind, random, 5, Rates());
    filter.alloc();
    const Kvr8u sample[16] = {};
    Kvr8u result[16];
    const bool single = !kind.data->complex && !kind.integer();
    EXPECT_EQ(single ? kvrStatusOk : kvrStatusContextMismatch, kind.one(sample, result, filter.state, 0));
    EXPECT_EQ(kvrStatusOk, kind.free(filter.state));
  });
}

TEST(FirMultirate, Memory) {
  Random random;
  forKinds([&](const FirKind& kind) {
    const Rates rates{3, 0, 2, 0};
    const auto make = [&] {
      Filter filter(kind, random, 20, rates);
      const KvrStatus status = kind.initAllocMR(&filter.state, bytesOf(*kind.taps, filter.taps).data(), 20, 0,
                                                3, 0, 2, 0, nullptr);
      EXPECT_EQ(status == kvrStatusOk, filter.state != nullptr);
      return status == kvrStatusOk ? kind.free(filter.state) : status;
    };
    EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
    Filter filter(kind, random, 20, rates);
    filter.alloc();
    std::vector<Kvr8u> data(30 * kind.data->bytes, 1);
    const auto before = data;
    {
      FailingAllocator failing(1);
      EXPECT_EQ(kvrStatusOutOfMemory, kind.runInPlace(data.data(), 10, filter.state, 0));
    }
    EXPECT_EQ(before, data);
    filter.expectDelayLine();
    const auto run = [&] { return kind.runInPlace(data.data(), 10, filter.state, 0); };
    EXPECT_EQ(1, countAllocationsWithFailures(run, kvrStatusOutOfMemory));
    EXPECT_EQ(kvrStatusOk, kind.free(filter.state));
  });
}

TEST(FirMultirate, OrderOfChecks) {
  Random random;
  forKinds([&](const FirKind& kind) {
    const auto taps = bytesOf(*kind.taps, tapsFor(random, kind, 8));
    std::vector<Kvr8u> buffer(100000);
    void* state = nullptr;
    const auto init = [&](const void* given, int tapsLen, int up, int upPhase, int down, int downPhase) {
      const KvrStatus status =
          kind.initMR(&state, given, tapsLen, 0, up, upPhase, down, downPhase, nullptr, buffer.data());
      EXPECT_EQ(status, kind.initAllocMR(&state, given, tapsLen, 0, up, upPhase, down, downPhase, nullptr));
      return status;
    };
    EXPECT_EQ(kvrStatusNullPointer, init(nullptr, 0, 0, 0, 0, 0));
    EXPECT_EQ(kvrStatusBadTapsLength, init(taps.data(), 0, 0, 5, 0, 5));
    EXPECT_EQ(kvrStatusBadRateFactor, init(taps.data(), 8, 0, 5, 1, 5));
    EXPECT_EQ(kvrStatusBadRateFactor, init(taps.data(), 8, 1, 5, 0, 5));
    EXPECT_EQ(kvrStatusBadPhase, init(taps.data(), 8, 3, 3, 2, 0));
    EXPECT_EQ(kvrStatusBadPhase, init(taps.data(), 8, 3, -1, 2, 0));
    EXPECT_EQ(kvrStatusBadPhase, init(taps.data(), 8, 3, 0, 2, 2));
    EXPECT_EQ(nullptr, state);
    int size = 77;
    EXPECT_EQ(kvrStatusNullPointer, kind.getStateSizeMR(0, 0, 0, nullptr));
    EXPECT_EQ(kvrStatusBadTapsLength, kind.getStateSizeMR(0, 0, 0, &size));
    EXPECT_EQ(kvrStatusBadRateFactor, kind.getStateSizeMR(1, 1, 0, &size));
    EXPECT_EQ(kvrStatusBadTapsLength, kind.getStateSizeMR(INT_MAX, 1, 2, &size));
    EXPECT_EQ(77, size);
  });
}

}  // namespace
