// FIR filters against their definition.
// SPDX-License-Identifier: MIT
#include "kvrs/fir.h"

#include <algorithm>

#include "tests/filters/fir_oracle.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// A call of `len` samples on a new state, and all that it leaves.
void checkCall(const std::vector<Kvr32f>& taps, int len, Random& random) {
  const int tapsLen = static_cast<int>(taps.size());
  SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples");
  const auto dlyLine = wholeSamples(random, tapsLen), src = wholeSamples(random, len);
  FirState state(taps, dlyLine.data());
  FirOracle oracle(taps, dlyLine.data());
  std::vector<Kvr32f> dst(src.size());
  ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), len, state));
  expectNear(oracle.run(src), dst.data(), toleranceOf(tapsLen, len));
  EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
}

TEST(Fir, EveryShortLength) {
  Random random;
  for (int tapsLen = 1; tapsLen <= 70; ++tapsLen) {
    const auto taps = wholeTaps(random, tapsLen);
    for (int len = 1; len <= 150; ++len) checkCall(taps, len, random);
    for (int len : {191, 256, 257, 300, 511, 512, 513, 1000, 1600, 1601}) checkCall(taps, len, random);
    if (HasFailure()) return;
  }
}

TEST(Fir, LongTaps) {
  Random random;
  for (int tapsLen : {127, 128, 129, 200, 255, 256, 257, 500, 512, 1000, 1024, 1025, 2047, 4096}) {
    const auto taps = wholeTaps(random, tapsLen);
    int fftLen = 4;
    while (fftLen <= 2 * tapsLen) fftLen *= 2;  // from two to four times the taps
    const int step = fftLen - tapsLen + 1, staged = (tapsLen + 3) / 4 * 4 + 1;
    for (int around : {tapsLen, staged, 512, 1601, step, fftLen, 2 * step, 3 * step}) {
      for (int len = around - 1; len <= around + 1; ++len) {
        if (int64_t{len} * tapsLen < 20000000) checkCall(taps, len, random);
      }
    }
    if (HasFailure()) return;
  }
}

// Numbers that are not whole: the error of a sum of L products, each in [-1, 1), is a few eps * sqrt(L).
TEST(Fir, Rounding) {
  Random random;
  for (int tapsLen : {1, 7, 31, 32, 64, 333, 1024}) {
    for (int len : {100, 511, 512, 5000}) {
      std::vector<Kvr32f> taps(static_cast<size_t>(tapsLen)), src(static_cast<size_t>(len)), dst(src);
      for (Kvr32f& tap : taps) tap = random.value<Kvr32f>();
      for (Kvr32f& sample : src) sample = random.value<Kvr32f>();
      FirState state(taps);
      FirOracle oracle(taps, nullptr);
      EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), len, state));
      SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples");
      expectNear(oracle.run(src), dst.data(), 16 * 0x1p-23 * std::sqrt(tapsLen));
    }
  }
}

// The output of an impulse is the taps, and special values stay where they are.
TEST(Fir, SpecialValues) {
  Random random;
  const Kvr32f infinity = std::numeric_limits<Kvr32f>::infinity();
  for (int tapsLen : {1, 5, 6, 16, 40, 63, 66}) {
    const auto taps = wholeTaps(random, tapsLen);
    FirState state(taps);
    std::vector<Kvr32f> src(200, 0.0f), dst(200);
    src[100] = 1;
    EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), 200, state));
    for (int i = 0; i < 200; ++i) {
      EXPECT_EQ(100 <= i && i < 100 + tapsLen ? taps[static_cast<size_t>(i - 100)] : 0,
                dst[static_cast<size_t>(i)]);
    }
    src[100] = infinity;
    EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), 200, state));
    for (int i = 0; i < 200; ++i) {
      EXPECT_EQ(i < 100 || i >= 100 + tapsLen, std::isfinite(dst[static_cast<size_t>(i)]))
          << tapsLen << " " << i;
    }
    // One by one: what lies beyond the window must not come in.
    EXPECT_EQ(kvrStatusOk, kvrsFIRSetDlyLine_32f(state, nullptr));
    for (int i = 0; i < 200; ++i) {
      Kvr32f one;
      EXPECT_EQ(kvrStatusOk, kvrsFIROne_32f(i == 100 ? infinity : 1, &one, state));
      EXPECT_EQ(i < 100 || i >= 100 + tapsLen, std::isfinite(one)) << tapsLen << " " << i;
    }
  }
}

// Arrays at every byte offset, right before and right behind pages that may not be touched.
TEST(Fir, AlignmentAndBounds) {
  Random random;
  constexpr int kMost = 1700;
  Arena srcArena(kMost * 4), dstArena(kMost * 4), tapsArena(400), lineArena(400);
  for (int tapsLen : {1, 2, 3, 8, 17, 40, 100}) {
    const auto taps = wholeTaps(random, tapsLen), dlyLine = wholeSamples(random, tapsLen);
    const size_t tapsBytes = taps.size() * sizeof(Kvr32f);
    for (int len : {1, 2, 7, 15, 16, 33, 64, 100, 511, 512, 1650}) {
      const auto src = wholeSamples(random, len);
      const size_t bytes = src.size() * sizeof(Kvr32f);
      FirOracle oracle(taps, dlyLine.data());
      const auto want = oracle.run(src);
      for (size_t offset = 0; offset < 8; ++offset) {
        for (Side side : {Side::front, Side::back}) {
          SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples, offset " << offset);
          auto* tapsAt = tapsArena.place<Kvr32f>(taps.size(), side, offset);
          auto* lineAt = lineArena.place<Kvr32f>(taps.size(), side, 7 - offset);
          auto* srcAt = srcArena.place<Kvr32f>(src.size(), side, offset * 9 % 64);
          auto* dstAt = dstArena.place<Kvr32f>(src.size(), side, offset * 13 % 64);
          memcpy(static_cast<void*>(tapsAt), taps.data(), tapsBytes);
          memcpy(static_cast<void*>(lineAt), dlyLine.data(), tapsBytes);
          memcpy(static_cast<void*>(srcAt), src.data(), bytes);
          KvrsFIRState_32f* state;
          ASSERT_EQ(kvrStatusOk, kvrsFIRInitAlloc_32f(&state, tapsAt, tapsLen, lineAt));
          ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(srcAt, dstAt, len, state));
          expectNear(want, dstAt, toleranceOf(tapsLen, len));
          EXPECT_TRUE(dstArena.intact());
          EXPECT_EQ(0, memcmp(srcAt, src.data(), bytes));
          // In place, the same bytes: it is the same call through the scratch area.
          ASSERT_EQ(kvrStatusOk, kvrsFIRSetDlyLine_32f(state, lineAt));
          ASSERT_EQ(kvrStatusOk, kvrsFIR_32f_I(srcAt, len, state));
          expectNear(want, srcAt, toleranceOf(tapsLen, len));
          EXPECT_TRUE(srcArena.intact());
          ASSERT_EQ(kvrStatusOk, kvrsFIRGetTaps_32f(state, tapsAt));
          EXPECT_EQ(0, memcmp(tapsAt, taps.data(), tapsBytes));
          EXPECT_TRUE(tapsArena.intact());
          ASSERT_EQ(kvrStatusOk, kvrsFIRGetDlyLine_32f(state, lineAt));
          EXPECT_EQ(0, memcmp(lineAt, oracle.delayLine().data(), tapsBytes));
          EXPECT_TRUE(lineArena.intact());
          ASSERT_EQ(kvrStatusOk, kvrsFIRFree_32f(state));
        }
      }
      if (HasFailure()) return;
    }
  }
}

// A signal cut anywhere, its pieces run in every way there is, is the signal run in one piece.
TEST(Fir, StreamsInPieces) {
  Random random;
  for (int tapsLen : {1, 2, 5, 16, 31, 32, 63, 64, 100, 300}) {
    auto taps = wholeTaps(random, tapsLen);
    const auto dlyLine = wholeSamples(random, tapsLen);
    FirState state(taps, dlyLine.data());
    FirOracle oracle(taps, dlyLine.data());
    for (int piece = 0; piece < 200; ++piece) {
      const uint32_t most = random.below(10) == 0 ? 3000 : random.below(2) == 0 ? 100 : 5;
      const auto src = wholeSamples(random, 1 + static_cast<int>(random.below(most)));
      const int len = static_cast<int>(src.size());
      std::vector<Kvr32f> dst(src);
      const uint32_t way = random.below(3);
      SCOPED_TRACE(testing::Message()
                   << tapsLen << " taps, piece " << piece << ", " << len << " samples, way " << way);
      if (way == 0) {
        ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), len, state));
      } else if (way == 1) {
        ASSERT_EQ(kvrStatusOk, kvrsFIR_32f_I(dst.data(), len, state));
      } else {
        for (Kvr32f& sample : dst) ASSERT_EQ(kvrStatusOk, kvrsFIROne_32f(sample, &sample, state));
      }
      expectNear(oracle.run(src), dst.data(), toleranceOf(tapsLen, way == 2 ? 1 : len));
      EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
      // Now and then other taps, or another delay line.
      if (random.below(20) == 0) {
        taps = wholeTaps(random, tapsLen);
        oracle.setTaps(taps);
        ASSERT_EQ(kvrStatusOk, kvrsFIRSetTaps_32f(taps.data(), state));
        std::vector<Kvr32f> stored(taps.size());
        ASSERT_EQ(kvrStatusOk, kvrsFIRGetTaps_32f(state, stored.data()));
        EXPECT_EQ(taps, stored);
      } else if (random.below(20) == 0) {
        const auto line = wholeSamples(random, tapsLen);
        const Kvr32f* given = random.below(2) == 0 ? line.data() : nullptr;
        oracle.setDelayLine(given);
        ASSERT_EQ(kvrStatusOk, kvrsFIRSetDlyLine_32f(state, given));
        EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
      }
      if (HasFailure()) return;
    }
  }
}

TEST(Fir, OneSampleAtATime) {
  Random random;
  for (int tapsLen = 1; tapsLen <= 140; ++tapsLen) {
    const auto taps = wholeTaps(random, tapsLen), dlyLine = wholeSamples(random, tapsLen);
    FirState state(taps, dlyLine.data());
    FirOracle oracle(taps, dlyLine.data());
    const auto src = wholeSamples(random, 3 * tapsLen);
    std::vector<Kvr32f> dst(src.size());
    for (size_t i = 0; i < src.size(); ++i) ASSERT_EQ(kvrStatusOk, kvrsFIROne_32f(src[i], &dst[i], state));
    SCOPED_TRACE(testing::Message() << tapsLen << " taps");
    expectNear(oracle.run(src), dst.data(), 0);
    EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
  }
}

TEST(Fir, InPlace) {
  Random random;
  for (int tapsLen : {1, 8, 40, 63, 64, 128, 500, 1024, 3000}) {
    const auto taps = wholeTaps(random, tapsLen);
    for (int len : {1, 100, 511, 512, 4095, 4096, 4097, 4607, 4608, 8192, 8704, 9000}) {
      FirState state(taps);
      FirOracle oracle(taps, nullptr);
      const auto src = wholeSamples(random, len);
      auto srcDst = src;
      SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples");
      ASSERT_EQ(kvrStatusOk, kvrsFIR_32f_I(srcDst.data(), len, state));
      expectNear(oracle.run(src), srcDst.data(), toleranceOf(tapsLen, len));
      EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
    }
    if (HasFailure()) return;
  }
}

// Teams of all sizes, on states that were made for as many threads, for fewer and for more.
TEST(Fir, Threads) {
  Random random;
  struct Case {
    int tapsLen, len;
  };
  for (Case c : {Case{1, 1600}, {3, 1601}, {40, 1601}, {63, 60000}, {64, 60000}, {700, 1601}, {700, 40001}}) {
    const auto taps = wholeTaps(random, c.tapsLen), dlyLine = wholeSamples(random, c.tapsLen);
    const auto src = wholeSamples(random, c.len);
    FirOracle oracle(taps, dlyLine.data());
    const auto want = oracle.run(src);
    for (int made : {1, 2, 3, 8}) {
      for (int used : {1, 2, 3, 8}) {
        SCOPED_TRACE(testing::Message()
                     << c.tapsLen << " taps, " << c.len << " samples, threads " << made << " " << used);
        ThreadCount atInit(made);
        FirState state(taps, dlyLine.data());
        ThreadCount atCall(used);
        std::vector<Kvr32f> dst(src.size());
        ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), c.len, state));
        expectNear(want, dst.data(), toleranceOf(c.tapsLen, c.len));
        EXPECT_EQ(oracle.delayLine(), delayLineOf(state, c.tapsLen));
        dst = src;
        ASSERT_EQ(kvrStatusOk, kvrsFIRSetDlyLine_32f(state, dlyLine.data()));
        ASSERT_EQ(kvrStatusOk, kvrsFIR_32f_I(dst.data(), c.len, state));
        expectNear(want, dst.data(), toleranceOf(c.tapsLen, c.len));
      }
    }
    if (HasFailure()) return;
  }
}

// What runs on the FFT engine, told by a spoilt FFT context; a failure comes back, on all threads.
TEST(Fir, EngineOfEachCall) {
  Random random;
  const auto run = [&](int tapsLen, int len, bool inPlace, int threads) {
    ThreadCount count(threads);
    FirState state(wholeTaps(random, tapsLen));
    EXPECT_TRUE(spoilFft(state, tapsLen));
    const auto src = wholeSamples(random, len);
    std::vector<Kvr32f> dst(src);
    return inPlace ? kvrsFIR_32f_I(dst.data(), len, state) : kvrsFIR_32f(src.data(), dst.data(), len, state);
  };
  for (int threads : {1, 3}) {
    EXPECT_EQ(kvrStatusContextMismatch, run(1024, 100000, false, threads));
    EXPECT_EQ(kvrStatusContextMismatch, run(512, 4611, false, threads));  // three blocks of 1,537
    EXPECT_EQ(kvrStatusContextMismatch, run(511, 513, false, threads));   // one block
    EXPECT_EQ(kvrStatusOk, run(512, 511, false, threads));
    EXPECT_EQ(kvrStatusOk, run(1024, 511, false, threads));
    EXPECT_EQ(kvrStatusContextMismatch, run(1024, 512, false, threads));
    // In place, what counts is what is left behind the first 4,096.
    EXPECT_EQ(kvrStatusOk, run(512, 4096, true, threads));
    EXPECT_EQ(kvrStatusOk, run(512, 4607, true, threads));
    EXPECT_EQ(kvrStatusContextMismatch, run(512, 4608, true, threads));
  }
}

}  // namespace
