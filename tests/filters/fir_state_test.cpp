// States of FIR filters: sizes, memory, copies, what is refused.
// SPDX-License-Identifier: MIT
#include <climits>

#include "kvrs/fft.h"
#include "kvrs/fir_stream.h"
#include "tests/filters/fir_oracle.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

int64_t roundedTo32(int64_t bytes) {
  return bytes - bytes % 32;
}
int64_t upTo16(int64_t bytes) {
  return (bytes + 15) / 16 * 16;
}

// The sizes of a real FFT of an order from 8 to 16, as kvrsFFTGetSize_R_32f states them.
struct FftSizes {
  int64_t spec = 0, initBuf = 0, work = 0;
};
FftSizes fftSizes(int order) {
  const int64_t n = int64_t{1} << order, half = n / 2;
  FftSizes sizes;
  sizes.spec = 2 * roundedTo32(2 * n + 31) + roundedTo32(half + 35) + roundedTo32(8 * half + 39) + 128;
  sizes.initBuf = order > 10 ? roundedTo32(n + 35) + 32 : 0;
  sizes.work = roundedTo32(8 * half + 31) + 32;
  return sizes;
}

int64_t stateSize(int64_t taps, int64_t threads) {
  FftSizes fft;
  int64_t fftLen = 0;
  if (taps >= 64) {
    int order = 2;
    while (taps >> (order - 1) != 0) ++order;
    fftLen = int64_t{1} << order;
    fft = fftSizes(order);
  }
  return (fft.work + upTo16(4 * fftLen)) * threads + fft.spec + fft.initBuf + upTo16(4 * taps) +
         upTo16(12 * taps + 16) + 64 * (((taps + 6) >> 2) + ((4 * taps + 15) >> 4)) + 16 * threads +
         upTo16(4 * threads) + upTo16(4 * fftLen) + 16496;
}

TEST(FirState, Sizes) {
  for (int threads : {1, 2, 3, 8}) {
    ThreadCount count(threads);
    for (int tapsLen = 1; tapsLen <= 4096; ++tapsLen) {
      int size = 0, of16s = 0, ofStream = 0;
      ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(tapsLen, &size));
      ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize32f_16s(tapsLen, &of16s));
      ASSERT_EQ(kvrStatusOk, kvrsFIRStreamGetStateSize_32f(tapsLen, &ofStream));
      ASSERT_EQ(stateSize(tapsLen, threads), size) << tapsLen << " taps, " << threads << " threads";
      ASSERT_EQ(size, of16s);
      ASSERT_EQ(size, ofStream);
    }
  }
}

// Numbers that can be told by hand.
TEST(FirState, SizesByHand) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(1, &size));
  EXPECT_EQ(16 + 32 + 64 * (1 + 1) + 16 + 16 + 16496, size);
  // 64 taps: an FFT of 256 points, with 2 * 512 + 160 + 1056 + 128 bytes of context and 1024 + 32 of work.
  ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(64, &size));
  EXPECT_EQ(
      (1056 + 1024) + (2 * 512 + 160 + 1056 + 128) + 256 + 784 + 64 * (17 + 16) + 16 + 16 + 1024 + 16496,
      size);
}

TEST(FirState, SizesBeyondInt) {
  int size = 77;
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRGetStateSize_32f(INT_MAX, &size));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRGetStateSize_32f(1 << 26, &size));
  EXPECT_EQ(77, size);
  EXPECT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(1 << 20, &size));
  EXPECT_GT(size, 48 << 20);
  // Not even the taps are looked at.
  KvrsFIRState_32f* state = nullptr;
  const Kvr32f tap = 1;
  Kvr8u buffer[64] = {};
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRInit_32f(&state, &tap, INT_MAX, nullptr, buffer));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRInitAlloc_32f(&state, &tap, INT_MAX, nullptr));
  EXPECT_EQ(nullptr, state);
}

// In a block of exactly the stated size, at any address: nothing is touched outside, by Init or by the filter.
void checkBlock(Arena& arena, int tapsLen, Side side, size_t offset, Random& random) {
  SCOPED_TRACE(testing::Message() << tapsLen << " taps, offset " << offset);
  int size;
  ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(tapsLen, &size));
  auto* buffer = arena.place<Kvr8u>(static_cast<size_t>(size), side, offset);
  const auto taps = wholeTaps(random, tapsLen), dlyLine = wholeSamples(random, tapsLen);
  KvrsFIRState_32f* state = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsFIRInit_32f(&state, taps.data(), tapsLen, dlyLine.data(), buffer));
  const auto address = reinterpret_cast<uintptr_t>(buffer);
  EXPECT_EQ((address + 15) / 16 * 16, reinterpret_cast<uintptr_t>(state));
  EXPECT_TRUE(arena.intact());
  FirOracle oracle(taps, dlyLine.data());
  // The second call starts from where single samples have left the window, which is as far as it goes.
  for (int len : {3 * tapsLen + 600, 2 * tapsLen + 14}) {
    const auto src = wholeSamples(random, len);
    std::vector<Kvr32f> dst(src.size());
    ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), len, state));
    expectNear(oracle.run(src), dst.data(), toleranceOf(tapsLen, len));
    const auto singles = wholeSamples(random, tapsLen - 1);
    for (Kvr32f sample : singles) ASSERT_EQ(kvrStatusOk, kvrsFIROne_32f(sample, dst.data(), state));
    oracle.run(singles);
    EXPECT_EQ(oracle.delayLine(), delayLineOf(state, tapsLen));
    EXPECT_TRUE(arena.intact());
  }
  auto inPlace = wholeSamples(random, 4700);
  ASSERT_EQ(kvrStatusOk, kvrsFIR_32f_I(inPlace.data(), 4700, state));
  EXPECT_EQ(kvrStatusOk, kvrsFIRFree_32f(state));
  EXPECT_TRUE(arena.intact());
  std::vector<Kvr32f> stored(taps.size());
  EXPECT_EQ(kvrStatusOk, kvrsFIRGetTaps_32f(state, stored.data()));  // Free left it as it was
  EXPECT_EQ(taps, stored);
}

TEST(FirState, StaysInItsBlock) {
  Random random;
  Arena arena(400000);
  for (int threads : {1, 2, 8}) {
    ThreadCount count(threads);
    for (int tapsLen : {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 16, 17, 31, 62, 63, 64, 65, 127, 128, 400, 513}) {
      for (size_t offset = 0; offset < 64; offset += tapsLen < 10 ? 1 : 7) {
        checkBlock(arena, tapsLen, Side::back, offset, random);
        if (HasFailure()) return;
      }
      checkBlock(arena, tapsLen, Side::front, 0, random);
    }
  }
}

TEST(FirState, CopiedAsBytes) {
  Random random;
  for (int tapsLen : {1, 20, 64, 300}) {
    int size;
    ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(tapsLen, &size));
    const size_t bytes = static_cast<size_t>(size);
    for (size_t from : {size_t{0}, size_t{8}, size_t{21}, size_t{40}}) {
      std::vector<Kvr8u> first(bytes + 128), second(bytes + 4096);
      const auto at = [](std::vector<Kvr8u>& memory, size_t offset) {
        return reinterpret_cast<Kvr8u*>((reinterpret_cast<uintptr_t>(memory.data()) + 63) / 64 * 64 + offset);
      };
      const auto taps = wholeTaps(random, tapsLen);
      KvrsFIRState_32f* state;
      Kvr8u* buffer = at(first, from);
      ASSERT_EQ(kvrStatusOk, kvrsFIRInit_32f(&state, taps.data(), tapsLen, nullptr, buffer));
      FirOracle oracle(taps, nullptr);
      const auto src = wholeSamples(random, 700);
      std::vector<Kvr32f> dst(src.size());
      ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), 700, state));
      oracle.run(src);
      for (size_t shift : {size_t{64}, size_t{32}, size_t{32} * 77}) {
        Kvr8u* copy = at(second, from) + shift;
        memcpy(copy, buffer, bytes);
        auto* copied = reinterpret_cast<KvrsFIRState_32f*>(copy + (reinterpret_cast<Kvr8u*>(state) - buffer));
        if (shift == 64) memset(buffer, 0xFF, bytes);  // nothing may refer to the old place
        SCOPED_TRACE(testing::Message() << tapsLen << " taps, from " << from << ", shifted by " << shift);
        auto copiedOracle = oracle;
        ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), 700, copied));
        expectNear(copiedOracle.run(src), dst.data(), toleranceOf(tapsLen, 700));
        memcpy(buffer, copy, bytes);
        oracle = copiedOracle;
      }
    }
  }
}

TEST(FirState, AllocationFails) {
  const Kvr32f taps[100] = {1};
  for (int tapsLen : {1, 63, 64, 100}) {
    const auto make = [&] {
      KvrsFIRState_32f* state = nullptr;
      const KvrStatus status = kvrsFIRInitAlloc_32f(&state, taps, tapsLen, nullptr);
      EXPECT_EQ(status == kvrStatusOk, state != nullptr);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, kvrsFIRFree_32f(state));
      }
      return status;
    };
    EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
  }
}

TEST(FirState, FilteringAllocatesNothing) {
  Random random;
  FirState state(wholeTaps(random, 512));
  const auto src = wholeSamples(random, 9000);
  std::vector<Kvr32f> dst(src);
  const int before = allocationCount();
  EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), 9000, state));
  EXPECT_EQ(kvrStatusOk, kvrsFIR_32f_I(dst.data(), 9000, state));
  EXPECT_EQ(kvrStatusOk, kvrsFIRSetTaps_32f(src.data(), state));
  EXPECT_EQ(before, allocationCount());
}

// A transform of the taps that fails is told, and the filter goes on without.
TEST(FirState, SetTapsWithoutFft) {
  Random random;
  constexpr int kTaps = 512, kLen = 5000;
  FirState state(wholeTaps(random, kTaps));
  FirOracle oracle(wholeTaps(random, kTaps), nullptr);
  ASSERT_TRUE(spoilFft(state, kTaps));
  const auto taps = wholeTaps(random, kTaps), src = wholeSamples(random, kLen);
  std::vector<Kvr32f> dst(src.size());
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFIR_32f(src.data(), dst.data(), kLen, state));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRSetTaps_32f(taps.data(), state));
  EXPECT_EQ(kvrStatusOk, kvrsFIRSetDlyLine_32f(state, nullptr));
  oracle.setTaps(taps);
  EXPECT_EQ(kvrStatusOk, kvrsFIR_32f(src.data(), dst.data(), kLen, state));
  expectNear(oracle.run(src), dst.data(), 0);
  EXPECT_EQ(kvrStatusOk, kvrsFIRSetTaps_32f(taps.data(), state));
}

uint32_t wordOf(const char (&letters)[5]) {
  return static_cast<uint32_t>(letters[0]) << 24 | static_cast<uint32_t>(letters[1]) << 16 |
         static_cast<uint32_t>(letters[2]) << 8 | static_cast<uint32_t>(letters[3]);
}

// Which kinds of record each function takes.
TEST(FirState, Words) {
  const Kvr32f taps[4] = {1, 2, 3, 4};
  std::vector<Kvr8u> buffer(100000);
  KvrsFIRState_32f* state;
  ASSERT_EQ(kvrStatusOk, kvrsFIRInit_32f(&state, taps, 4, taps, buffer.data()));
  EXPECT_EQ(0, memcmp(state, "10IF", 4));
  const uint32_t all[] = {0,
                          1,
                          0xFFFFFFFFu,
                          wordOf("FI01"),
                          wordOf("FI02"),
                          wordOf("FI03"),
                          wordOf("FI05"),
                          wordOf("FI13"),
                          wordOf("FI17"),
                          wordOf("FI29"),
                          wordOf("FI31"),
                          wordOf("FI33"),
                          wordOf("FI34")};
  for (uint32_t word : all) {
    const auto before = buffer;
    memcpy(static_cast<void*>(state), &word, sizeof word);
    const bool single = word == wordOf("FI01"), pair = single || word == wordOf("FI03");
    const bool any = pair || word == wordOf("FI33") || word == wordOf("FI34");
    const auto status = [](bool taken) { return taken ? kvrStatusOk : kvrStatusContextMismatch; };
    const auto marked = buffer;
    SCOPED_TRACE(testing::Message() << std::hex << word);
    Kvr32f data[4] = {5, 6, 7, 8};
    EXPECT_EQ(status(any), kvrsFIRFree_32f(state));
    EXPECT_EQ(marked, buffer);
    EXPECT_EQ(status(pair), kvrsFIRGetTaps_32f(state, data));
    EXPECT_EQ(pair ? 1 : 5, data[0]);
    data[0] = 5;
    EXPECT_EQ(status(pair), kvrsFIRGetDlyLine_32f(state, data));
    EXPECT_EQ(pair ? 1 : 5, data[0]);
    EXPECT_EQ(marked, buffer);
    if (!pair) {
      data[0] = 5;
      EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRSetTaps_32f(taps, state));
      EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRSetDlyLine_32f(state, taps));
      EXPECT_EQ(kvrStatusContextMismatch, kvrsFIROne_32f(1, data, state));
      if (!any) {
        EXPECT_EQ(kvrStatusContextMismatch, kvrsFIR_32f(taps, data, 1, state));
      }
      EXPECT_EQ(kvrStatusContextMismatch, kvrsFIR_32f_I(data, 1, state));
      EXPECT_EQ(5, data[0]);
      EXPECT_EQ(marked, buffer);
    }
    if (!single) {
      EXPECT_EQ(kvrStatusContextMismatch, kvrsFIROne_32f(1, data, state));
      EXPECT_EQ(marked, buffer);
    }
    buffer = before;
  }
}

// What is tested before what. Single faults are the contract tests' business.
TEST(FirState, OrderOfChecks) {
  const Kvr32f taps[4] = {1, 2, 3, 4};
  std::vector<Kvr8u> buffer(100000);
  KvrsFIRState_32f* state = nullptr;
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRGetStateSize_32f(0, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRInit_32f(&state, nullptr, 0, nullptr, buffer.data()));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRInitAlloc_32f(&state, nullptr, 0, nullptr));
  EXPECT_EQ(kvrStatusBadTapsLength, kvrsFIRInitAlloc_32f(&state, taps, 0, nullptr));
  ASSERT_EQ(kvrStatusOk, kvrsFIRInit_32f(&state, taps, 4, nullptr, buffer.data()));
  memset(static_cast<void*>(state), 0, 4);
  Kvr32f data[4] = {5, 6, 7, 8};
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIR_32f(nullptr, data, 0, state));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIR_32f(taps, nullptr, 0, state));
  EXPECT_EQ(kvrStatusBadLength, kvrsFIR_32f(taps, data, 0, state));  // before the word
  EXPECT_EQ(kvrStatusBadLength, kvrsFIR_32f_I(data, -1, state));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFIR_32f(taps, data, 1, state));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIROne_32f(1, nullptr, state));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRGetTaps_32f(state, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRSetTaps_32f(nullptr, state));
  EXPECT_EQ(kvrStatusNullPointer, kvrsFIRGetDlyLine_32f(state, nullptr));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRSetDlyLine_32f(state, nullptr));
  EXPECT_EQ(5, data[0]);
}

}  // namespace
