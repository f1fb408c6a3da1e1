// FIR streams against their definition.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_stream.h"

#include "kvrs/fir.h"
#include "tests/filters/fir_kinds.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

struct Rates {
  int up = 1, upPhase = 0, down = 1, downPhase = 0;
};

// dst[n] = sum of taps[tapsLen-1-k] * x(t+k), t = downPhase + n * down, where sample i stands at upPhase + i * up.
std::vector<int64_t> sumsOf(const std::vector<int64_t>& taps, const std::vector<int64_t>& src, size_t outputs,
                            Rates r) {
  std::vector<int64_t> sums(outputs);
  for (size_t n = 0; n < outputs; ++n) {
    for (size_t k = 0; k < taps.size(); ++k) {
      const int64_t at = r.downPhase + static_cast<int64_t>(n) * r.down + static_cast<int64_t>(k) - r.upPhase;
      if (at < 0 || at % r.up != 0) continue;
      sums[n] += taps[taps.size() - 1 - k] * src.at(static_cast<size_t>(at / r.up));
    }
  }
  return sums;
}

// Samples that `outputs` outputs read.
size_t samplesFor(size_t tapsLen, size_t outputs, Rates r) {
  const int64_t end =
      r.downPhase + static_cast<int64_t>(outputs - 1) * r.down + static_cast<int64_t>(tapsLen);
  return end > r.upPhase ? static_cast<size_t>((end - r.upPhase + r.up - 1) / r.up) : 0;
}

int64_t rounded(int64_t sum, int shift, KvrRoundMode mode) {
  shift = std::max(-31, std::min(31, shift));
  const int32_t value = static_cast<int32_t>(static_cast<uint32_t>(sum));
  int64_t result;
  if (shift <= 0) {
    result = static_cast<int32_t>(static_cast<uint32_t>(value) << -shift);
  } else if (mode == kvrRoundZero) {
    result = value >> shift;
  } else if (mode == kvrRoundNear) {
    const uint32_t addend = (uint32_t{1} << (shift - 1)) - 1 + (static_cast<uint32_t>(value >> shift) & 1);
    result = static_cast<int32_t>(static_cast<uint32_t>(value) + addend) >> shift;
  } else {
    const int64_t wide = value, half = int64_t{1} << (shift - 1);
    result = wide < 0 ? -((-wide + half) >> shift) : (wide + half) >> shift;
  }
  return std::max<int64_t>(-32768, std::min<int64_t>(32767, result));
}

std::vector<int64_t> numbers(Random& random, size_t count, int most) {
  std::vector<int64_t> all(count);
  for (int64_t& number : all)
    number = static_cast<int64_t>(random.below(static_cast<uint32_t>(2 * most + 1))) - most;
  return all;
}

template <class T>
std::vector<T> as(const std::vector<int64_t>& numbers) {
  return {numbers.begin(), numbers.end()};
}

// In blocks of exactly the stated sizes, from sources that end at a page that may not be touched.
class StreamTest : public testing::Test {
 protected:
  void check32f(int tapsLen, int len, const Rates* rates) {
    const Rates r = rates != nullptr ? *rates : Rates();
    SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples, up " << r.up << " from "
                                    << r.upPhase << ", down " << r.down << " from " << r.downPhase);
    const auto taps = numbers(random_, static_cast<size_t>(tapsLen), 8);
    const size_t outputs = static_cast<size_t>(len * r.up);
    const auto src = numbers(random_, samplesFor(taps.size(), outputs, r), 64);
    int size = 0, single = 0;
    ASSERT_EQ(kvrStatusOk, kvrsFIRGetStateSize_32f(tapsLen, &single));
    ASSERT_EQ(kvrStatusOk, rates == nullptr ? kvrsFIRStreamGetStateSize_32f(tapsLen, &size)
                                            : kvrsFIRMRStreamGetStateSize_32f(tapsLen, r.up, r.down, &size));
    ASSERT_EQ(single, size);
    auto* block = state_.place<Kvr8u>(static_cast<size_t>(size), Side::back, random_.below(64));
    KvrsFIRStreamState_32f* state = nullptr;
    ASSERT_EQ(kvrStatusOk, rates == nullptr
                               ? kvrsFIRStreamInit_32f(&state, as<Kvr32f>(taps).data(), tapsLen, block)
                               : kvrsFIRMRStreamInit_32f(&state, as<Kvr32f>(taps).data(), tapsLen, r.up,
                                                         r.upPhase, r.down, r.downPhase, block));
    auto* in = src_.place<Kvr32f>(src.size(), Side::back, random_.below(8));
    for (size_t i = 0; i < src.size(); ++i) put(in, i, static_cast<Kvr32f>(src[i]));
    auto* out = dst_.place<Kvr32f>(outputs, Side::back, random_.below(8));
    const std::vector<Kvr8u> before(block, block + size);
    ASSERT_EQ(kvrStatusOk, kvrsFIR_32f(in, out, len, state));
    const auto want = sumsOf(taps, src, outputs, r);
    for (size_t n = 0; n < outputs; ++n) ASSERT_EQ(static_cast<Kvr32f>(want[n]), get(out, n)) << n;
    EXPECT_TRUE(dst_.intact() && src_.intact() && state_.intact());
    EXPECT_EQ(0, memcmp(before.data(), block, before.size()));  // a state is only read
    EXPECT_EQ(kvrStatusContextMismatch, kvrsFIR_32f_I(out, 1, state));
    EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRGetDlyLine_32f(state, in));
    EXPECT_EQ(kvrStatusContextMismatch, kvrsFIROne_32f(1, out, state));
    EXPECT_EQ(kvrStatusOk, kvrsFIRFree_32f(state));
  }

  void check16s(int tapsLen, int len, const Rates* rates, int most, int tapsFactor, int scaleFactor,
                KvrRoundMode mode) {
    const Rates r = rates != nullptr ? *rates : Rates();
    SCOPED_TRACE(testing::Message() << tapsLen << " taps, " << len << " samples, up " << r.up << " from "
                                    << r.upPhase << ", down " << r.down << " from " << r.downPhase
                                    << ", factors " << tapsFactor << " " << scaleFactor << ", mode " << mode);
    const auto taps = numbers(random_, static_cast<size_t>(tapsLen), most);
    const size_t outputs = static_cast<size_t>(len * r.up);
    const auto src = numbers(random_, samplesFor(taps.size(), outputs, r), most);
    int size = 0;
    ASSERT_EQ(kvrStatusOk, rates == nullptr ? kvrsFIRStreamGetStateSize_16s(tapsLen, &size)
                                            : kvrsFIRMRStreamGetStateSize_16s(tapsLen, r.up, r.down, &size));
    if (rates == nullptr) {
      ASSERT_EQ((2 * tapsLen + 15) / 16 * 16 + 96 + (tapsLen == 64 ? 1136 : tapsLen == 16 ? 384 : 0), size);
    }
    auto* block = state_.place<Kvr8u>(static_cast<size_t>(size), Side::back, random_.below(64));
    KvrsFIRStreamState_16s* state = nullptr;
    ASSERT_EQ(kvrStatusOk,
              rates == nullptr
                  ? kvrsFIRStreamInit_16s(&state, as<Kvr16s>(taps).data(), tapsLen, tapsFactor, mode, block)
                  : kvrsFIRMRStreamInit_16s(&state, as<Kvr16s>(taps).data(), tapsLen, tapsFactor, r.up,
                                            r.upPhase, r.down, r.downPhase, mode, block));
    auto* in = src_.place<Kvr16s>(src.size(), Side::back, random_.below(8));
    for (size_t i = 0; i < src.size(); ++i) put(in, i, static_cast<Kvr16s>(src[i]));
    auto* out = dst_.place<Kvr16s>(outputs, Side::back, random_.below(8));
    ASSERT_EQ(kvrStatusOk, kvrsFIR_16s_Sfs(in, out, len, state, scaleFactor));
    const auto want = sumsOf(taps, src, outputs, r);
    for (size_t n = 0; n < outputs; ++n) {
      ASSERT_EQ(rounded(want[n], scaleFactor - tapsFactor, mode), get(out, n)) << n << ": " << want[n];
    }
    EXPECT_TRUE(dst_.intact() && src_.intact() && state_.intact());
    std::vector<Kvr16s> stored(taps.size());
    int factor;
    EXPECT_EQ(kvrStatusOk, kvrsFIRGetTaps_16s(state, stored.data(), &factor));
    EXPECT_EQ(as<Kvr16s>(taps), stored);
    EXPECT_EQ(tapsFactor, factor);
    EXPECT_EQ(kvrStatusContextMismatch, kvrsFIRSetTaps_16s(stored.data(), state, 0));
    EXPECT_EQ(kvrStatusOk, kvrsFIRFree_16s(state));
  }

  Random random_;
  Arena src_{1 << 18}, dst_{1 << 18}, state_{1 << 18};
};

TEST_F(StreamTest, OneRate) {
  for (int tapsLen : {1, 2, 3, 4, 8, 15, 16, 17, 31, 63, 64, 65, 200}) {
    for (int len : {1, 2, 3, 7, 16, 33, 100, 700}) {
      check32f(tapsLen, len, nullptr);
      check16s(tapsLen, len, nullptr, 100, 0, 3, kvrRoundNear);
      if (HasFailure()) return;
    }
  }
}

TEST_F(StreamTest, Rounding) {
  for (KvrRoundMode mode : {kvrRoundZero, kvrRoundNear, kvrRoundFinancial}) {
    for (int scaleFactor : {-40, -1, 0, 1, 2, 7, 15, 16, 30, 31, 32, 100}) {
      check16s(3, 100, nullptr, 20, 0, scaleFactor, mode);
      check16s(5, 100, nullptr, 32767, 1, scaleFactor, mode);
      if (HasFailure()) return;
    }
  }
}

TEST_F(StreamTest, TwoRates) {
  for (int up = 1; up <= 6; ++up) {
    for (int down = 1; down <= 6; ++down) {
      for (int turn = 0; turn < 8; ++turn) {
        const Rates r{up, static_cast<int>(random_.below(static_cast<uint32_t>(up))), down,
                      static_cast<int>(random_.below(static_cast<uint32_t>(down)))};
        const int tapsLen = 1 + static_cast<int>(random_.below(turn < 4 ? 5 : 40));
        const int len = 1 + static_cast<int>(random_.below(60));
        check32f(tapsLen, len, &r);
        check16s(tapsLen, len, &r, 100, 1, 3, static_cast<KvrRoundMode>(turn % 3));
        if (HasFailure()) return;
      }
    }
  }
  // Long pieces, and the pairs of factors that are common in telephony.
  for (Rates r : {Rates{1, 0, 10, 0}, {1, 0, 4, 0}, {2, 0, 5, 0}, {160, 5, 147, 11}}) {
    for (int tapsLen : {32, 44, 64, 500}) {
      check32f(tapsLen, 30, &r);
      check16s(tapsLen, 30, &r, 1000, 0, 12, kvrRoundFinancial);
      if (HasFailure()) return;
    }
  }
}

// Streams of 32f take any factors and phases; to be run they need right ones.
TEST_F(StreamTest, WrongRates) {
  const Kvr32f taps[8] = {};
  Kvr32f src[64] = {}, dst[64] = {};
  const auto run = [&](int up, int upPhase, int down, int downPhase) {
    KvrsFIRMRStreamState_32f* state = nullptr;
    EXPECT_EQ(kvrStatusOk, kvrsFIRMRStreamInitAlloc_32f(&state, taps, 8, up, upPhase, down, downPhase));
    const KvrStatus status = kvrsFIR_32f(src, dst, 1, state);
    EXPECT_EQ(kvrStatusOk, kvrsFIRFree_32f(state));
    return status;
  };
  EXPECT_EQ(kvrStatusOk, run(3, 2, 2, 1));
  EXPECT_EQ(kvrStatusBadRateFactor, run(0, 0, 1, 0));
  EXPECT_EQ(kvrStatusBadRateFactor, run(-5, 0, 1, 0));
  EXPECT_EQ(kvrStatusBadRateFactor, run(1, 0, 0, 0));
  EXPECT_EQ(kvrStatusBadPhase, run(3, 3, 1, 0));
  EXPECT_EQ(kvrStatusBadPhase, run(3, 0, 1, -1));
}

TEST_F(StreamTest, Memory) {
  const Kvr32f taps32f[64] = {};
  const Kvr16s taps16s[64] = {};
  const auto check = [](auto make) {
    EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
  };
  check([&] {
    KvrsFIRStreamState_32f* state = nullptr;
    const KvrStatus status = kvrsFIRStreamInitAlloc_32f(&state, taps32f, 64);
    return status == kvrStatusOk ? kvrsFIRFree_32f(state) : status;
  });
  check([&] {
    KvrsFIRMRStreamState_32f* state = nullptr;
    const KvrStatus status = kvrsFIRMRStreamInitAlloc_32f(&state, taps32f, 64, 2, 0, 3, 0);
    return status == kvrStatusOk ? kvrsFIRFree_32f(state) : status;
  });
  check([&] {
    KvrsFIRStreamState_16s* state = nullptr;
    const KvrStatus status = kvrsFIRStreamInitAlloc_16s(&state, taps16s, 64, 0, kvrRoundNear);
    return status == kvrStatusOk ? kvrsFIRFree_16s(state) : status;
  });
  check([&] {
    KvrsFIRMRStreamState_16s* state = nullptr;
    const KvrStatus status = kvrsFIRMRStreamInitAlloc_16s(&state, taps16s, 64, 0, 2, 0, 3, 0, kvrRoundNear);
    return status == kvrStatusOk ? kvrsFIRFree_16s(state) : status;
  });
}

}  // namespace
