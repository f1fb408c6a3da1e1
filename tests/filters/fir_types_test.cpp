// FIR filters of all types against their definition.
// SPDX-License-Identifier: MIT
#include <climits>

#include "tests/filters/fir_kinds.h"
#include "tests/support/core.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

// Taps as a filter holds them, and the factor that goes with them. Taps of floats are multiplied with a power of two.
Wholes heldTaps(const FirKind& kind, const Wholes& taps, int* tapsFactor) {
  Wholes held = taps;
  if (!kind.floatTaps) return held;
  int64_t largest = 0;
  for (const Whole& tap : taps) largest = std::max({largest, std::abs(tap.re), std::abs(tap.im)});
  *tapsFactor = 0;
  while (largest != 0 && 2 * largest < 32767) {
    largest *= 2;
    --*tapsFactor;
    for (Whole& tap : held) tap = {2 * tap.re, 2 * tap.im};
  }
  return held;
}

// A state with its oracle.
class Pair {
 public:
  Pair(const FirKind& kind, Random& random, int tapsLen, int tapsFactor = 0)
      : kind_(kind), tapsLen_(tapsLen), factor_(kind.factored ? tapsFactor : 0), oracle_(kind, {Whole()}) {
    const Wholes taps = tapsFor(random, kind, tapsLen),
                 line = samplesFor(random, kind, static_cast<size_t>(tapsLen));
    const Wholes held = heldTaps(kind, taps, &factor_);
    oracle_ = WholeFilter(kind, held, factor_, line);
    EXPECT_EQ(kvrStatusOk, kind.initAlloc(&state_, bytesOf(*kind.taps, taps).data(), tapsLen, factor_,
                                          bytesOf(*kind.data, line).data()));
  }
  ~Pair() { EXPECT_EQ(kvrStatusOk, kind_.free(state_)); }
  Pair(const Pair&) = delete;
  Pair& operator=(const Pair&) = delete;

  void* state() const { return state_; }

  // `len` new samples. Results by FFT are rounded, as sums of whole numbers that are small enough come out.
  enum Way { kOutOfPlace, kInPlace, kOneByOne };
  void run(Random& random, size_t len, Way way, int scaleFactor = 0) {
    const Wholes samples = samplesFor(random, kind_, len);
    const auto src = bytesOf(*kind_.data, samples);
    auto dst = src;
    const int count = static_cast<int>(len);
    if (way == kOutOfPlace) {
      ASSERT_EQ(kvrStatusOk, kind_.run(src.data(), dst.data(), count, state_, scaleFactor));
    } else if (way == kInPlace) {
      ASSERT_EQ(kvrStatusOk, kind_.runInPlace(dst.data(), count, state_, scaleFactor));
    } else {
      const size_t bytes = kind_.data->bytes;
      for (size_t i = 0; i < len; ++i) {
        ASSERT_EQ(kvrStatusOk,
                  kind_.one(src.data() + i * bytes, dst.data() + i * bytes, state_, scaleFactor));
      }
    }
    const Wholes want = oracle_.run(samples, scaleFactor);
    if (kind_.data->floating && tapsLen_ >= 16 && len >= 256) {
      expectNear(want, dst);
    } else if (!kind_.integer() && kind_.scaled && tapsLen_ >= 16 && len >= 256 && scaleFactor > 0) {
      // What lies next to a half may be rounded to the other side.
      const Wholes got = wholesOf(*kind_.data, dst.data(), len);
      for (size_t i = 0; i < len; ++i) {
        ASSERT_LE(std::abs(want[i].re - got[i].re), 1) << i;
        ASSERT_LE(std::abs(want[i].im - got[i].im), 1) << i;
      }
    } else {
      expectSame(want, wholesOf(*kind_.data, dst.data(), len));
    }
    expectDelayLine();
  }

  void expectDelayLine() {
    const Wholes want = oracle_.delayLine();
    std::vector<Kvr8u> line(want.size() * kind_.data->bytes);
    ASSERT_EQ(kvrStatusOk, kind_.getDlyLine(state_, line.data()));
    expectSame(want, wholesOf(*kind_.data, line.data(), want.size()));
  }

  void changeTaps(Random& random) {
    const Wholes taps = tapsFor(random, kind_, tapsLen_);
    int factor = kind_.factored ? factor_ + 1 : 0;
    const Wholes held = heldTaps(kind_, taps, &factor);
    oracle_.setTaps(held, factor);
    factor_ = factor;
    ASSERT_EQ(kvrStatusOk, kind_.setTaps(bytesOf(*kind_.taps, taps).data(), state_, factor));
    std::vector<Kvr8u> stored(taps.size() * kind_.taps->bytes);
    int storedFactor = factor;
    ASSERT_EQ(kvrStatusOk, kind_.getTaps(state_, stored.data(), &storedFactor));
    expectSame(taps, wholesOf(*kind_.taps, stored.data(), taps.size()));
    EXPECT_EQ(factor, storedFactor);
  }

  void changeDelayLine(Random& random, bool silent) {
    Wholes line = samplesFor(random, kind_, static_cast<size_t>(tapsLen_));
    if (silent) line.assign(line.size(), Whole());
    oracle_.setDelayLine(line);
    ASSERT_EQ(kvrStatusOk, kind_.setDlyLine(state_, silent ? nullptr : bytesOf(*kind_.data, line).data()));
    expectDelayLine();
  }

 private:
  // Floats within a quarter of the whole numbers that they should be.
  void expectNear(const Wholes& want, const std::vector<Kvr8u>& dst) {
    const bool wide = kind_.data->bytes / (kind_.data->complex ? 2 : 1) == 8;
    const size_t parts = kind_.data->complex ? 2 : 1;
    for (size_t i = 0; i < want.size(); ++i) {
      for (size_t part = 0; part < parts; ++part) {
        const size_t at = parts * i + part;
        const double got = wide ? get(reinterpret_cast<const Kvr64f*>(dst.data()), at)
                                : get(reinterpret_cast<const Kvr32f*>(dst.data()), at);
        ASSERT_NEAR(static_cast<double>(part == 0 ? want[i].re : want[i].im), got, 0.25) << i;
      }
    }
  }

  const FirKind& kind_;
  int tapsLen_, factor_;
  WholeFilter oracle_;
  void* state_ = nullptr;
};

template <class Check>
void forKinds(Check check) {
  for (const FirKind& kind : firKinds()) {
    SCOPED_TRACE(kind.name);
    check(kind);
    if (testing::Test::HasFailure()) return;
  }
}

// A signal cut anywhere, its pieces run in every way there is, is the signal run in one piece.
TEST(FirTypes, StreamsInPieces) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {1, 2, 3, 5, 8, 16, 31, 32, 63, 64, 100, 300}) {
      Pair pair(kind, random, tapsLen);
      for (int piece = 0; piece < 60; ++piece) {
        const uint32_t most = random.below(10) == 0 ? 3000 : random.below(2) == 0 ? 100 : 5;
        const size_t len = 1 + random.below(most);
        const auto way = static_cast<Pair::Way>(random.below(3));
        SCOPED_TRACE(testing::Message()
                     << tapsLen << " taps, piece " << piece << ", " << len << " samples, way " << way);
        pair.run(random, len, way);
        if (random.below(15) == 0) pair.changeTaps(random);
        if (random.below(15) == 0) pair.changeDelayLine(random, random.below(2) == 0);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

TEST(FirTypes, EveryShortLength) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {1, 2, 3, 4, 7, 8, 9, 15, 16, 17, 33}) {
      Pair pair(kind, random, tapsLen);
      for (size_t len = 1; len <= 80; ++len)
        pair.run(random, len, len % 2 ? Pair::kOutOfPlace : Pair::kInPlace);
      for (size_t len : {127, 128, 129, 255, 256, 257, 511, 512, 513})
        pair.run(random, len, Pair::kOutOfPlace);
      if (testing::Test::HasFailure()) return;
    }
  });
}

TEST(FirTypes, LengthsAboutTheGates) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {16, 64, 200}) {
      Pair pair(kind, random, tapsLen);
      for (size_t gate : {256, 512, 801, 1601, 2048, 4608}) {
        for (size_t len : {gate - 1, gate}) {
          pair.run(random, len, Pair::kOutOfPlace);
          pair.run(random, len, Pair::kInPlace);
        }
      }
      if (testing::Test::HasFailure()) return;
    }
  });
}

TEST(FirTypes, ScaleFactors) {
  Random random;
  forKinds([&](const FirKind& kind) {
    if (!kind.scaled) return;
    for (int tapsFactor : {0, 3, -4}) {
      for (int tapsLen : {3, 20}) {
        Pair pair(kind, random, tapsLen, tapsFactor);
        for (int scaleFactor :
             {0,    1,       2,  3,  5,  9,   15,  16,  17,  30,  31,  32,   33,   64,    200,
              2000, INT_MAX, -1, -2, -6, -12, -16, -30, -31, -32, -33, -100, -200, -2000, INT_MIN}) {
          SCOPED_TRACE(testing::Message() << "factors " << tapsFactor << " " << scaleFactor);
          pair.run(random, 70, Pair::kOutOfPlace, scaleFactor);
          pair.run(random, 33, Pair::kInPlace, scaleFactor);
          pair.run(random, 10, Pair::kOneByOne, scaleFactor);
        }
      }
    }
  });
}

// The caller's rounding mode has no influence on whole results.
TEST(FirTypes, RoundingModes) {
  Random random;
  forKinds([&](const FirKind& kind) {
    if (!kind.scaled) return;
    for (int mode : kCallerModes) {
      Pair pair(kind, random, 5);
      const auto samples = bytesOf(*kind.data, samplesFor(random, kind, 100));
      std::vector<Kvr8u> want(samples), got(samples), one(samples);
      const auto line = bytesOf(*kind.data, samplesFor(random, kind, 5));
      ASSERT_EQ(kvrStatusOk, kind.setDlyLine(pair.state(), line.data()));
      ASSERT_EQ(kvrStatusOk, kind.run(samples.data(), want.data(), 100, pair.state(), 3));
      ASSERT_EQ(kvrStatusOk, kind.setDlyLine(pair.state(), line.data()));
      callWithRounding(mode, [&] { return kind.run(samples.data(), got.data(), 100, pair.state(), 3); });
      EXPECT_EQ(want, got);
      ASSERT_EQ(kvrStatusOk, kind.setDlyLine(pair.state(), line.data()));
      for (size_t i = 0; i < 100; ++i) {
        const size_t at = i * kind.data->bytes;
        callWithRounding(mode, [&] { return kind.one(&samples[at], &one[at], pair.state(), 3); });
      }
      EXPECT_EQ(want, one);
    }
  });
}

// Sums of 16-bit taps and samples of all magnitudes, which leave 32 bits.
TEST(FirTypes, WrappedSums) {
  Random random;
  forKinds([&](const FirKind& kind) {
    if (!kind.factored) return;
    for (int tapsLen : {1, 2, 7, 40}) {
      const auto anything = [&](const ElementType& type, size_t count, int64_t lowest) {
        Wholes values(count);
        const auto part = [&] { return std::max<int64_t>(lowest, random.value<Kvr16s>()); };
        for (Whole& value : values) value = {part(), type.complex ? part() : 0};
        return values;
      };
      // No tap is so large that all would be halved.
      Wholes taps = anything(*kind.taps, static_cast<size_t>(tapsLen), -32766);
      for (Whole& tap : taps) tap = {std::min<int64_t>(tap.re, 32766), std::min<int64_t>(tap.im, 32766)};
      const Wholes samples = anything(*kind.data, 200, -32768);
      for (int scaleFactor : {-20, -1, 0, 1, 14, 16, 31}) {
        void* state = nullptr;
        ASSERT_EQ(kvrStatusOk, kind.initAlloc(&state, bytesOf(*kind.taps, taps).data(), tapsLen, 0, nullptr));
        WholeFilter oracle(kind, taps);
        const auto src = bytesOf(*kind.data, samples);
        auto dst = src;
        ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), 200, state, scaleFactor));
        expectSame(oracle.run(samples, scaleFactor), wholesOf(*kind.data, dst.data(), 200));
        for (size_t i = 0; i < 200; ++i) {
          const size_t at = i * kind.data->bytes;
          ASSERT_EQ(kvrStatusOk, kind.one(&src[at], &dst[at], state, scaleFactor));
        }
        expectSame(oracle.run(samples, scaleFactor), wholesOf(*kind.data, dst.data(), 200));
        ASSERT_EQ(kvrStatusOk, kind.free(state));
      }
    }
  });
}

// In a block of exactly the stated size, at any address: nothing is touched outside.
TEST(FirTypes, StayInTheirBlock) {
  Random random;
  Arena arena(1500000);
  forKinds([&](const FirKind& kind) {
    for (int threads : {1, 3}) {
      ThreadCount count(threads);
      for (int tapsLen : {1, 2, 3, 4, 5, 8, 9, 16, 17, 31, 33, 64, 65, 400}) {
        int size = 0;
        ASSERT_EQ(kvrStatusOk, kind.getStateSize(tapsLen, &size));
        for (size_t offset : {0, 1, 33, 63}) {
          SCOPED_TRACE(testing::Message() << tapsLen << " taps, offset " << offset);
          auto* buffer = arena.place<Kvr8u>(static_cast<size_t>(size), Side::back, offset);
          const Wholes taps = tapsFor(random, kind, tapsLen);
          int factor = 0;
          const Wholes held = heldTaps(kind, taps, &factor);
          WholeFilter oracle(kind, held, factor);
          void* state = nullptr;
          ASSERT_EQ(kvrStatusOk,
                    kind.init(&state, bytesOf(*kind.taps, taps).data(), tapsLen, 0, nullptr, buffer));
          const auto address = reinterpret_cast<uintptr_t>(buffer);
          EXPECT_EQ((address + 15) / 16 * 16, reinterpret_cast<uintptr_t>(state));
          for (size_t len : {static_cast<size_t>(tapsLen) * 2 + 14, size_t{4700}}) {
            const auto src = bytesOf(*kind.data, samplesFor(random, kind, len));
            auto dst = src;
            ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), static_cast<int>(len), state, 0));
            for (int i = 0; i + 1 < tapsLen; ++i)
              ASSERT_EQ(kvrStatusOk, kind.one(src.data(), dst.data(), state, 0));
            ASSERT_EQ(kvrStatusOk, kind.runInPlace(dst.data(), static_cast<int>(len), state, 0));
            ASSERT_TRUE(arena.intact());
          }
          // It is sound to the end.
          ASSERT_EQ(kvrStatusOk, kind.setDlyLine(state, nullptr));
          const Wholes samples = samplesFor(random, kind, 100);
          const auto src = bytesOf(*kind.data, samples);
          auto dst = src;
          ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), 100, state, 0));
          expectSame(oracle.run(samples, 0), wholesOf(*kind.data, dst.data(), 100));
          ASSERT_EQ(kvrStatusOk, kind.free(state));
          ASSERT_TRUE(arena.intact());
        }
      }
    }
  });
}

TEST(FirTypes, CopiedAsBytes) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {1, 20, 64, 300}) {
      int size = 0;
      ASSERT_EQ(kvrStatusOk, kind.getStateSize(tapsLen, &size));
      const size_t bytes = static_cast<size_t>(size);
      std::vector<Kvr8u> first(bytes + 64), second(bytes + 64);
      const auto aligned = [](std::vector<Kvr8u>& memory) {
        return reinterpret_cast<Kvr8u*>((reinterpret_cast<uintptr_t>(memory.data()) + 63) / 64 * 64);
      };
      const Wholes taps = tapsFor(random, kind, tapsLen);
      int factor = 0;
      const Wholes held = heldTaps(kind, taps, &factor);
      WholeFilter oracle(kind, held, factor);
      void* state = nullptr;
      ASSERT_EQ(kvrStatusOk,
                kind.init(&state, bytesOf(*kind.taps, taps).data(), tapsLen, 0, nullptr, aligned(first)));
      for (int turn = 0; turn < 3; ++turn) {
        const Wholes samples = samplesFor(random, kind, 150);
        const auto src = bytesOf(*kind.data, samples);
        auto dst = src;
        ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), 150, state, 0));
        expectSame(oracle.run(samples, 0), wholesOf(*kind.data, dst.data(), 150));
        memcpy(aligned(second), aligned(first), bytes);
        memset(aligned(first), 0xFF, bytes);
        std::swap(first, second);
        state = aligned(first);
      }
    }
  });
}

TEST(FirTypes, AllocationFails) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {1, 100}) {
      const auto taps = bytesOf(*kind.taps, tapsFor(random, kind, tapsLen));
      const auto make = [&] {
        void* state = nullptr;
        const KvrStatus status = kind.initAlloc(&state, taps.data(), tapsLen, 0, nullptr);
        EXPECT_EQ(status == kvrStatusOk, state != nullptr);
        if (status == kvrStatusOk) {
          EXPECT_EQ(kvrStatusOk, kind.free(state));
        }
        return status;
      };
      EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
    }
    EXPECT_EQ(kvrStatusBadTapsLength, [&] {
      int size;
      return kind.getStateSize(INT_MAX, &size);
    }());
  });
}

// Sums that are rounded are the same bytes for every number of threads, as they stand and by blocks.
TEST(FirTypes, ThreadCounts) {
  Random random;
  forKinds([&](const FirKind& kind) {
    for (int tapsLen : {3, 40, 200}) {
      const int len = tapsLen == 3 ? 400000 : 60001;
      const auto taps =
          bytesOf(*kind.taps, randomWholes(random, *kind.taps, static_cast<size_t>(tapsLen), 30000));
      const auto src = bytesOf(*kind.data, randomWholes(random, *kind.data, static_cast<size_t>(len), 30000));
      std::vector<Kvr8u> want;
      for (int threads : {1, 2, 3, 8}) {
        void* state = nullptr;
        {
          ThreadCount atInit(8);
          ASSERT_EQ(kvrStatusOk, kind.initAlloc(&state, taps.data(), tapsLen, 0, nullptr));
        }
        ThreadCount atCall(threads);
        auto dst = src;
        ASSERT_EQ(kvrStatusOk, kind.run(src.data(), dst.data(), len, state, 12));
        ASSERT_EQ(kvrStatusOk, kind.free(state));
        if (threads == 1) want = dst;
        EXPECT_EQ(0, memcmp(want.data(), dst.data(), dst.size()))
            << tapsLen << " taps, " << threads << " threads";
      }
    }
  });
}

// ---- Sizes

int64_t up16(int64_t bytes) {
  return (bytes + 15) / 16 * 16;
}
int64_t down32(int64_t bytes) {
  return bytes / 32 * 32;
}

struct FftSizes {
  int64_t len = 0, spec = 0, initBuf = 0, work = 0;
};

// As the transforms state them, for orders 6 to 12.
FftSizes fftSizes(int64_t taps, int64_t fromTaps, bool complex, bool wide) {
  FftSizes sizes;
  if (taps < fromTaps) return sizes;
  int order = 2;
  while (taps >> (order - 1) != 0) ++order;
  const int64_t n = int64_t{1} << order, half = n / 2, part = wide ? 8 : 4;
  sizes.len = n;
  const int64_t slack = wide ? 47 : 39;
  if (complex) {
    sizes.spec = order < 6 ? (wide ? 120 : 116) : down32(2 * part * n + slack) + down32(n + 35) + 128;
    sizes.work = wide || order < 6 ? 0 : down32(8 * n + 31) + 32;
  } else {
    sizes.spec = 2 * down32(part / 2 * n + 31) + down32(half + 35) + down32(2 * part * half + slack) + 128;
    sizes.work = wide ? 0 : down32(8 * half + 31) + 32;
  }
  sizes.initBuf = order <= 10 ? 0 : wide ? down32(2 * n + 39) + 32 : down32(n + 35) + 32;
  return sizes;
}

int64_t statedSize(const FirKind& kind, int64_t taps, int64_t threads) {
  const auto withFft = [&](const FftSizes& fft, int64_t bytes) {
    return (fft.work + up16(bytes * fft.len)) * threads + fft.spec + fft.initBuf + up16(bytes * fft.len) +
           up16(4 * threads);
  };
  const std::string name = kind.name;
  const int64_t q = (taps + 11) / 8 * 8;
  const int64_t integers = 80 + up16(2 * (2 * taps + q + 4)) + 64 * ((taps + 11) >> 3) + 16400;
  if (name == "_16s") return up16(2 * taps) + integers;
  if (name == "32s_16s" || name == "32s_16s32f") return up16(4 * taps) + integers;
  if (kind.integer()) return up16(8 * taps) + 80 + 16 * taps + up16(12 * taps + 16) + 16400;
  if (name == "_32s") {
    return 16 * threads + 32752 + up16(8 * taps) + 112 + up16(24 * taps + 32) + 32 * ((8 * taps + 15) >> 4) +
           15;
  }
  if (name == "_32f" || name == "32f_16s") {
    return withFft(fftSizes(taps, 64, false, false), 4) + up16(4 * taps) + up16(12 * taps + 16) +
           64 * (((taps + 6) >> 2) + ((4 * taps + 15) >> 4)) + 16 * threads + 16496;
  }
  if (name == "_32fc" || name == "32fc_16sc") {
    return withFft(fftSizes(taps, 16, true, false), 8) + up16(8 * taps) + up16(24 * taps + 32) +
           12 * up16(8 * taps) + 96 + 64 * threads + 32832;
  }
  if (!kind.data->complex) {
    return withFft(fftSizes(taps, 64, false, true), 8) + up16(8 * taps) + up16(24 * taps + 32) +
           32 * ((taps + 2) >> 1) + 16 * threads + 32880;
  }
  return withFft(fftSizes(taps, 32, true, true), 16) + 16 * (taps + ((48 * taps + 79) >> 4)) + 32 * taps +
         65664;
}

TEST(FirTypes, Sizes) {
  forKinds([&](const FirKind& kind) {
    for (int threads : {1, 2, 8}) {
      ThreadCount count(threads);
      for (int tapsLen = 1; tapsLen <= 600; ++tapsLen) {
        int size = 0;
        ASSERT_EQ(kvrStatusOk, kind.getStateSize(tapsLen, &size));
        ASSERT_EQ(statedSize(kind, tapsLen, threads), size) << tapsLen << " taps, " << threads << " threads";
      }
    }
  });
}

// ---- Words

uint32_t wordOf(int number) {
  return 0x46493030u + static_cast<uint32_t>(number / 10 * 256 + number % 10);
}

struct KindWords {
  const char* name;
  int single, multi;
};
const KindWords kWords[] = {
    {"_32f", 1, 3},        {"_32fc", 2, 4},       {"32f_16s", 5, 7},     {"32fc_16sc", 6, 8},
    {"32s_16s", 9, 11},    {"32s_16s32f", 9, 11}, {"32sc_16sc", 10, 12}, {"32sc_16sc32fc", 10, 12},
    {"_64f", 13, 15},      {"_64fc", 14, 16},     {"64f_32f", 17, 19},   {"64fc_32fc", 18, 20},
    {"64f_32s", 21, 23},   {"_32s", 21, 23},      {"64fc_32sc", 22, 24}, {"64f_16s", 25, 27},
    {"64fc_16sc", 26, 28}, {"_16s", 29, 30},
};

TEST(FirTypes, Words) {
  Random random;
  forKinds([&](const FirKind& kind) {
    const KindWords* words = nullptr;
    for (const KindWords& row : kWords) {
      if (kind.is(row.name)) words = &row;
    }
    ASSERT_NE(nullptr, words);
    std::vector<Kvr8u> buffer(200000), data(64), taps(bytesOf(*kind.taps, tapsFor(random, kind, 4)));
    void* state = nullptr;
    ASSERT_EQ(kvrStatusOk, kind.init(&state, taps.data(), 4, 0, nullptr, buffer.data()));
    uint32_t stored;
    memcpy(&stored, state, sizeof stored);
    EXPECT_EQ(wordOf(words->single), stored);
    for (int number = 0; number <= 35; ++number) {
      const uint32_t word = number == 0 ? 0 : wordOf(number);
      SCOPED_TRACE(testing::Message() << "FI" << number);
      memcpy(state, &word, sizeof word);
      const bool single = number == words->single, pair = single || number == words->multi;
      const bool stream32f = number >= 33 && number <= 34, stream16s = number >= 31 && number <= 32;
      const auto status = [](bool taken) { return taken ? kvrStatusOk : kvrStatusContextMismatch; };
      int factor;
      const bool streams = (kind.is("_32f") && stream32f) || (kind.is("_16s") && stream16s);
      EXPECT_EQ(status(kind.is("_32s") ? single : pair || streams), kind.free(state));
      EXPECT_EQ(status(pair || (kind.is("_16s") && stream16s)), kind.getTaps(state, data.data(), &factor));
      EXPECT_EQ(status(pair), kind.getDlyLine(state, data.data()));
      if (single) continue;
      const auto before = buffer;
      EXPECT_EQ(kvrStatusContextMismatch, kind.one(data.data(), data.data(), state, 0));
      if (pair || streams) continue;
      EXPECT_EQ(kvrStatusContextMismatch, kind.setTaps(taps.data(), state, 0));
      EXPECT_EQ(kvrStatusContextMismatch, kind.setDlyLine(state, nullptr));
      EXPECT_EQ(kvrStatusContextMismatch, kind.run(data.data(), data.data(), 1, state, 0));
      EXPECT_EQ(kvrStatusContextMismatch, kind.runInPlace(data.data(), 1, state, 0));
      EXPECT_EQ(before, buffer);
    }
  });
}

// ---- Integer taps

template <class T>
std::vector<T> heldBy(const FirKind& kind, const std::vector<T>& taps, int factor, int* heldFactor) {
  void* state = nullptr;
  EXPECT_EQ(kvrStatusOk, kind.initAlloc(&state, taps.data(), static_cast<int>(taps.size()), factor, nullptr));
  std::vector<T> held(taps.size());
  EXPECT_EQ(kvrStatusOk, kind.getTaps(state, held.data(), heldFactor));
  std::vector<T> again(taps.size());
  int againFactor = *heldFactor;
  EXPECT_EQ(kvrStatusOk, kind.setTaps(taps.data(), state, factor));
  EXPECT_EQ(kvrStatusOk, kind.getTaps(state, again.data(), &againFactor));
  EXPECT_EQ(0, memcmp(held.data(), again.data(), held.size() * sizeof(T)));
  EXPECT_EQ(*heldFactor, againFactor);
  EXPECT_EQ(kvrStatusOk, kind.free(state));
  return held;
}

const FirKind& kindOf(const char* name) {
  for (const FirKind& kind : firKinds()) {
    if (kind.is(name)) return kind;
  }
  abort();
}

TEST(FirTypes, TapsOf16Bits) {
  int factor = 0;
  EXPECT_EQ((std::vector<Kvr16s>{32767, -32767, 5}),
            heldBy<Kvr16s>(kindOf("_16s"), {32767, -32767, 5}, 7, &factor));
  EXPECT_EQ(7, factor);
  EXPECT_EQ((std::vector<Kvr16s>{-16384, 16383, -3}),
            heldBy<Kvr16s>(kindOf("_16s"), {-32768, 32767, -5}, 7, &factor));
  EXPECT_EQ(8, factor);
  const FirKind& wide = kindOf("32s_16s");
  EXPECT_EQ((std::vector<Kvr32s>{32766, -32766}), heldBy<Kvr32s>(wide, {32766, -32766}, -3, &factor));
  EXPECT_EQ(-3, factor);
  EXPECT_EQ((std::vector<Kvr32s>{16383, -1}), heldBy<Kvr32s>(wide, {32767, -1}, 0, &factor));
  EXPECT_EQ(1, factor);
  // The magnitude is halved and rounded down, the tap shifted: -65533 becomes -32767.
  EXPECT_EQ((std::vector<Kvr32s>{-32767, 1}), heldBy<Kvr32s>(wide, {-65533, 3}, 0, &factor));
  EXPECT_EQ(1, factor);
  EXPECT_EQ((std::vector<Kvr32s>{-16384, 16383}), heldBy<Kvr32s>(wide, {INT_MIN, INT_MAX}, 0, &factor));
  EXPECT_EQ(17, factor);
  const auto complex = heldBy<Kvr32sc>(kindOf("32sc_16sc"), {{1, -70000}, {40000, 8}}, 2, &factor);
  EXPECT_EQ(4, factor);
  EXPECT_EQ(0, complex[0].re);
  EXPECT_EQ(-17500, complex[0].im);
  EXPECT_EQ(10000, complex[1].re);
  EXPECT_EQ(2, complex[1].im);
}

TEST(FirTypes, TapsOfFloats) {
  int unused = 0;
  const FirKind& kind = kindOf("32s_16s32f");
  // By the rule: halved until not above 32767, or doubled while below.
  const auto expected = [](const std::vector<Kvr32f>& taps) {
    double largest = 0, scale = 1;
    for (Kvr32f tap : taps) largest = std::max(largest, std::abs(double{tap}));
    if (largest > 32767) {
      for (; largest > 32767; largest /= 2) scale /= 2;
    } else {
      for (; 2 * largest < 32767; largest *= 2) scale *= 2;
    }
    std::vector<Kvr32f> held;
    for (Kvr32f tap : taps)
      held.push_back(static_cast<Kvr32f>(std::trunc(tap * scale + (tap < 0 ? -0.5 : 0.5)) / scale));
    return held;
  };
  Random random;
  for (double magnitude : {1.0, 1e-30, 1e30, 0.49, 32766.9, 32767.0, 32767.5, 16383.5, 16384.0, 3e-39}) {
    std::vector<Kvr32f> taps(20);
    for (Kvr32f& tap : taps) tap = static_cast<Kvr32f>(magnitude * random.unit());
    taps[7] = static_cast<Kvr32f>(magnitude);
    EXPECT_EQ(expected(taps), heldBy(kind, taps, 0, &unused)) << magnitude;
  }
  EXPECT_EQ((std::vector<Kvr32f>{0, 0, 0}), heldBy<Kvr32f>(kind, {0, 0, 0}, 0, &unused));
  const auto complex = heldBy<Kvr32fc>(kindOf("32sc_16sc32fc"), {{0.25f, -1.0f}, {0, 1e-6f}}, 0, &unused);
  EXPECT_EQ(0.25f, complex[0].re);
  EXPECT_EQ(-1.0f, complex[0].im);
  EXPECT_EQ(0.0f, complex[1].re);
  EXPECT_EQ(0.0f, complex[1].im);
}

}  // namespace
