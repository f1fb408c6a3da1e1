// Recursive filters without a context.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <climits>
#include <cmath>

#include "kvrs/iir.h"
#include "tests/filters/iir_oracle.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

int32_t wrap(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}

// One sample through one direct form or section by its definition, in 64 bits that are cut to 32 after each operation.
int32_t step(const Kvr16s* taps, int order, int32_t x, Kvr32s* d) {
  const Kvr16s* const b = taps;
  const Kvr16s* const a = taps + order + 1;
  const int shift = a[0] % 32;
  const int32_t acc = wrap(int64_t{b[0]} * x + d[0]);
  const int64_t half = int64_t{1} << (shift + 31) % 32;
  const int32_t y = wrap(int64_t{acc} + ((acc >> shift) & 1) + half - 1) >> shift;
  for (int k = 0; k < order; ++k) {
    const int64_t next = k + 1 < order ? d[k + 1] : 0;
    d[k] = wrap(int64_t{wrap(int64_t{b[k + 1]} * x)} - wrap(int64_t{a[k + 1]} * y) + next);
  }
  return y;
}

Kvr16s saturated(int64_t value) {
  return static_cast<Kvr16s>(std::clamp<int64_t>(value, -32768, 32767));
}

std::vector<Kvr16s> randomTaps(Random& random, size_t count, int most) {
  std::vector<Kvr16s> taps(count);
  for (Kvr16s& tap : taps)
    tap = static_cast<Kvr16s>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) - most);
  return taps;
}

TEST(IirDirect, OneSample) {
  Random random;
  for (int order : {1, 2, 3, 4, 9}) {
    const auto count = static_cast<size_t>(order);
    for (int shift : {0, 1, 2, 7, 14, 15, 16, 30, 31, 32, 45, 32767}) {
      auto taps = randomTaps(random, 2 * count + 2, 32767);
      taps[count + 1] = static_cast<Kvr16s>(shift);
      std::vector<Kvr32s> line(count), want;
      for (Kvr32s& d : line) d = static_cast<Kvr32s>(random.bits());
      want = line;
      for (int i = 0; i < 50; ++i) {
        const auto x = random.value<Kvr16s>();
        const Kvr16s y = saturated(step(taps.data(), order, x, want.data()));
        Kvr16s got = x;
        if (i % 2 == 0) {
          ASSERT_EQ(kvrStatusOk, kvrsIIROne_Direct_16s(x, &got, taps.data(), order, line.data()));
        } else {
          ASSERT_EQ(kvrStatusOk, kvrsIIROne_Direct_16s_I(&got, taps.data(), order, line.data()));
        }
        ASSERT_EQ(y, got) << order << " " << shift;
        ASSERT_EQ(want, line) << order << " " << shift;
      }
    }
  }
}

TEST(IirDirect, OneSampleThroughSections) {
  Random random;
  for (int numBq : {1, 2, 5}) {
    const auto count = static_cast<size_t>(numBq);
    auto taps = randomTaps(random, 6 * count, 20000);
    for (size_t i = 0; i < count; ++i) taps[6 * i + 3] = static_cast<Kvr16s>(random.below(16));
    std::vector<Kvr32s> line(2 * count), want(2 * count);
    for (int i = 0; i < 100; ++i) {
      const auto x = random.value<Kvr16s>();
      int32_t y = x;
      for (size_t s = 0; s < count; ++s) y = step(&taps[6 * s], 2, y, &want[2 * s]);
      Kvr16s got = x;
      if (i % 2 == 0) {
        ASSERT_EQ(kvrStatusOk, kvrsIIROne_BiQuadDirect_16s(x, &got, taps.data(), numBq, line.data()));
      } else {
        ASSERT_EQ(kvrStatusOk, kvrsIIROne_BiQuadDirect_16s_I(&got, taps.data(), numBq, line.data()));
      }
      ASSERT_EQ(saturated(y), got);
      ASSERT_EQ(want, line);
    }
  }
}

// With a shift of 0 the rounding term is 2^31 - 1 and the sum wraps.
TEST(IirDirect, ShiftOfZero) {
  const Kvr16s taps[4] = {1, 0, 0, 0};
  Kvr32s line[1] = {0};
  Kvr16s y = 0;
  ASSERT_EQ(kvrStatusOk, kvrsIIROne_Direct_16s(2, &y, taps, 1, line));
  EXPECT_EQ(-32768, y);  // 2 + 0 + 2^31 - 1 wraps
  ASSERT_EQ(kvrStatusOk, kvrsIIROne_Direct_16s(0, &y, taps, 1, line));
  EXPECT_EQ(32767, y);  // 2^31 - 1
}

// A section whose shift is negative stops the sample there: those before have moved on.
TEST(IirDirect, NegativeShift) {
  const Kvr16s taps[12] = {2, 1, 1, 1, 0, 0, 1, 1, 1, -1, 1, 1};
  Kvr32s line[4] = {5, 6, 7, 8};
  Kvr16s y = 99;
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIROne_BiQuadDirect_16s(4, &y, taps, 2, line));
  EXPECT_EQ(99, y);
  EXPECT_EQ(4 + 6, line[0]);
  EXPECT_EQ(4, line[1]);
  EXPECT_EQ(7, line[2]);
  EXPECT_EQ(8, line[3]);
  const Kvr16s x[2] = {4, 4};
  Kvr16s out[2] = {99, 99};
  const int blocks = liveBlocks();
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIR_BiQuadDirect_16s(x, out, 2, taps, 2, line));
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIR_Direct_16s(x, out, 2, taps + 6, 2, line));
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIR_Direct_16s(x, out, 0, taps + 6, 2, line));  // before the length
  EXPECT_EQ(kvrStatusBadLength, kvrsIIR_BiQuadDirect_16s(x, out, 0, taps, 2, line));
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIROne_Direct_16s(1, out, taps + 6, 2, line));
  EXPECT_EQ(kvrStatusBadTapScale, kvrsIIROne_Direct_16s_I(out, taps + 6, 2, line));
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIROne_Direct_16s_I(nullptr, taps, 0, line));
  EXPECT_EQ(kvrStatusBadIirOrder, kvrsIIROne_Direct_16s_I(out, nullptr, 0, line));
  EXPECT_EQ(99, out[0]);
  EXPECT_EQ(10, line[0]);
  EXPECT_EQ(blocks, liveBlocks());
}

TEST(IirDirect, AllocationFails) {
  const Kvr16s taps[6] = {2, 1, 1, 1, 0, 0};
  Kvr32s line[2] = {};
  Kvr16s data[4] = {1, 2, 3, 4};
  EXPECT_EQ(1, countAllocationsWithFailures([&] { return kvrsIIR_Direct_16s_I(data, 4, taps, 2, line); },
                                            kvrStatusOutOfMemory));
  EXPECT_EQ(1, countAllocationsWithFailures(
                   [&] { return kvrsIIR_BiQuadDirect_16s_I(data, 4, taps, 1, line); }, kvrStatusOutOfMemory));
}

// y[n] = x[n] / 2 - y[n-1] / 2, of which the delay line keeps -y: halves away from zero here, cut off there.
TEST(IirDirect, RoundingsOfTheDelayLine) {
  const Kvr16s taps[6] = {1, 0, 0, 1, 1, 0};
  const struct {
    Kvr16s x;
    Kvr32s rounded, cut;
  } cases[] = {{1, -1, 0}, {-1, 1, 0}, {3, -2, -1}, {-3, 2, 1}, {4, -2, -2}, {0, 0, 0}, {5, -3, -2}};
  for (const auto& c : cases) {
    Kvr32s line[2] = {0, 0};
    Kvr16s y;
    ASSERT_EQ(kvrStatusOk, kvrsIIR_Direct_16s(&c.x, &y, 1, taps, 2, line));
    EXPECT_EQ(c.rounded, line[0]);
    EXPECT_EQ(static_cast<int>(std::nearbyint(c.x / 2.0)), y);
    line[0] = line[1] = 0;
    ASSERT_EQ(kvrStatusOk, kvrsIIR_BiQuadDirect_16s(&c.x, &y, 1, taps, 1, line));
    EXPECT_EQ(c.cut, line[0]);
  }
}

TEST(IirDirect, DelayLineSaturates) {
  const Kvr16s taps[6] = {0, 32767, 0, 0, 0, 0};
  for (Kvr16s x : {Kvr16s{0}, Kvr16s{32767}, Kvr16s{-32767}}) {
    for (Kvr32s start : {INT_MAX, INT_MIN, 1000}) {
      for (bool sections : {false, true}) {
        Kvr32s line[2] = {0, start};
        Kvr16s y;
        ASSERT_EQ(kvrStatusOk, sections ? kvrsIIR_BiQuadDirect_16s(&x, &y, 1, taps, 1, line)
                                        : kvrsIIR_Direct_16s(&x, &y, 1, taps, 2, line));
        const float sum = 32767.0f * x + static_cast<float>(start);
        const auto want = std::clamp<int64_t>(static_cast<int64_t>(sum), INT_MIN, INT_MAX);
        EXPECT_EQ(want, line[0]) << x << " " << start;
      }
    }
  }
}

// Blocks against the definition with taps and delay line times 2^-shift.
TEST(IirDirect, Blocks) {
  Random random;
  Arena srcArena(4000), dstArena(4000), tapsArena(400), lineArena(400);
  for (bool sections : {false, true}) {
    for (int n : {1, 2, 4}) {
      const auto form = sections ? IirForm::cascade : IirForm::direct;
      const auto lines = static_cast<size_t>(lineLength(form, n));
      for (int shift : {0, 4, 13}) {
        for (int len : {1, 4 * n, 4 * n + 1, 50, 1030}) {
          // Poles within 0.5: the taps behind a0 are small beside it.
          const int most = shift == 0 ? 0 : (1 << shift) / (sections ? 4 : 4 * n);
          auto taps = randomTaps(random, static_cast<size_t>(tapCount(form, n)), most);
          Numbers scaled;
          const size_t order = sections ? 2 : static_cast<size_t>(n), perSection = 2 * order + 2;
          for (size_t i = 0; i < taps.size(); ++i) {
            if (i % perSection == order + 1) taps[i] = static_cast<Kvr16s>(shift);
            if (i % perSection == 0) taps[i] = static_cast<Kvr16s>(1 << shift);
            scaled.push_back(
                i % perSection == order + 1 ? 1.0L : std::ldexp(static_cast<long double>(taps[i]), -shift));
          }
          std::vector<Kvr32s> line(lines);
          Numbers scaledLine;
          for (Kvr32s& d : line) {
            d = static_cast<Kvr32s>(random.below(20000)) - 10000;
            scaledLine.push_back(std::ldexp(static_cast<long double>(d), -shift));
          }
          std::vector<Kvr16s> src(static_cast<size_t>(len));
          Numbers signal;
          for (Kvr16s& x : src) {
            x = static_cast<Kvr16s>(static_cast<int>(random.below(8000)) - 4000);
            signal.push_back(x);
          }
          IirOracle oracle(form, n, scaled, scaledLine);
          const auto want = oracle.run(signal);
          const auto wantLine = oracle.line();
          const long double allowed = 8 * 0x1p-24L * oracle.sensitivity(200);
          const Side side = random.below(2) == 0 ? Side::front : Side::back;
          auto* tapsAt = tapsArena.place<Kvr16s>(taps.size(), side, random.below(9));
          auto* lineAt = lineArena.place<Kvr32s>(lines, side, random.below(9));
          auto* srcAt = srcArena.place<Kvr16s>(src.size(), side, random.below(9));
          auto* dstAt = dstArena.place<Kvr16s>(src.size(), side, random.below(9));
          memcpy(static_cast<void*>(tapsAt), taps.data(), taps.size() * 2);
          for (bool inPlace : {false, true}) {
            SCOPED_TRACE(testing::Message() << sections << " " << n << ", shift " << shift << ", " << len);
            memcpy(static_cast<void*>(lineAt), line.data(), lines * 4);
            memcpy(static_cast<void*>(srcAt), src.data(), src.size() * 2);
            KvrStatus status;
            if (sections) {
              status = inPlace ? kvrsIIR_BiQuadDirect_16s_I(srcAt, len, tapsAt, n, lineAt)
                               : kvrsIIR_BiQuadDirect_16s(srcAt, dstAt, len, tapsAt, n, lineAt);
            } else {
              status = inPlace ? kvrsIIR_Direct_16s_I(srcAt, len, tapsAt, n, lineAt)
                               : kvrsIIR_Direct_16s(srcAt, dstAt, len, tapsAt, n, lineAt);
            }
            ASSERT_EQ(kvrStatusOk, status);
            for (size_t i = 0; i < src.size(); ++i) {
              const long double y = std::clamp(want[i].real(), -32768.0L, 32767.0L);
              ASSERT_NEAR(static_cast<double>(y), get(inPlace ? srcAt : dstAt, i),
                          static_cast<double>(0.5L + allowed))
                  << i;
            }
            for (size_t k = 0; k < lines; ++k) {
              const long double d = std::ldexp(wantLine[k].real(), shift);
              const long double off = (sections ? 1.0L : 0.5L) + std::ldexp(allowed, shift);
              ASSERT_NEAR(static_cast<double>(d), get(lineAt, k), static_cast<double>(off)) << k;
            }
            EXPECT_TRUE(tapsArena.intact() && lineArena.intact() && srcArena.intact() && dstArena.intact());
          }
        }
      }
    }
  }
}

}  // namespace
