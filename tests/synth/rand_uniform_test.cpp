// SPDX-License-Identifier: MIT
#include "kvrs/random.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "tests/support/core.h"
#include "tests/support/rounding.h"
#include "tests/synth/generated.h"
#include "tests/synth/random_model.h"

using namespace kvrs::test;

namespace {

double bits(uint64_t word) {
  double value;
  memcpy(&value, &word, sizeof value);
  return value;
}

struct Bounds {
  double scale, mean;
};

template <class T>
Bounds boundsOf(T low, T high) {
  const double k32 = bits(0x3DF0000000000007);
  if constexpr (std::is_floating_point_v<T>) {
    const T difference = high - low, sum = low + high;
    return {static_cast<double>(difference) * k32, static_cast<double>(sum) * 0.5};
  } else {
    return {(static_cast<double>(high) - static_cast<double>(low)) * k32,
            (static_cast<double>(high) + static_cast<double>(low)) * 0.5};
  }
}

enum class To { truncated, rounded, pairsRounded };

template <To to, class T>
std::vector<T> samples(WordModel& words, T low, T high, int len) {
  const Bounds bounds = boundsOf(low, high);
  std::vector<T> samples(static_cast<size_t>(len));
  for (int i = 0; i < len; ++i) {
    const double product = static_cast<double>(words.next()) * bounds.scale;
    const double v = product + bounds.mean;
    if constexpr (std::is_floating_point_v<T>) {
      samples[static_cast<size_t>(i)] = static_cast<T>(v);
    } else {
      const bool isLastOfOdd = i == len - 1 && len % 2 != 0;
      const bool rounds = to == To::rounded || (to == To::pairsRounded && !isLastOfOdd);
      samples[static_cast<size_t>(i)] =
          static_cast<T>(static_cast<int64_t>(roundedTo(v, rounds ? kvrRoundNear : kvrRoundZero)));
    }
  }
  return samples;
}

template <class T, class State>
using InitAlloc = KvrStatus (*)(State**, T, T, Kvr32u) noexcept;
template <class T, class State>
using Make = KvrStatus (*)(T*, int, State*) noexcept;
template <class T>
using Direct = KvrStatus (*)(T*, int, T, T, Kvr32u*) noexcept;

template <class T, class State>
void checkState(InitAlloc<T, State> init, Make<T, State> make, KvrStatus (*release)(State*) noexcept, T low,
                T high) {
  for (uint32_t seed : kSeeds) {
    expectGenerated<T>(
        [&](T* dst, int len) {
          State* state = nullptr;
          EXPECT_EQ(kvrStatusOk, init(&state, low, high, seed));
          const KvrStatus status = make(dst, len, state);
          EXPECT_EQ(kvrStatusOk, release(state));
          return status;
        },
        [&](int len) {
          WordModel words(seed);
          return samples<To::truncated>(words, low, high, len);
        });
  }
}

// One sequence, however it is cut.
template <class T, class State>
void checkPieces(InitAlloc<T, State> init, Make<T, State> make, KvrStatus (*release)(State*) noexcept, T low,
                 T high) {
  State* state = nullptr;
  ASSERT_EQ(kvrStatusOk, init(&state, low, high, 12345));
  WordModel words(12345);
  for (int len : {3, 4, 1, 1, 511, 513, 2, 1024, 7, 1537}) {
    std::vector<T> got(static_cast<size_t>(len));
    ASSERT_EQ(kvrStatusOk, make(got.data(), len, state));
    EXPECT_EQ(samples<To::truncated>(words, low, high, len), got) << len;
  }
  EXPECT_EQ(kvrStatusOk, release(state));
}

TEST(RandUniform, States) {
  checkState<Kvr8u>(kvrsRandUniformInitAlloc_8u, kvrsRandUniform_8u, kvrsRandUniformFree_8u, 0, 255);
  checkState<Kvr8u>(kvrsRandUniformInitAlloc_8u, kvrsRandUniform_8u, kvrsRandUniformFree_8u, 200, 10);
  checkState<Kvr16s>(kvrsRandUniformInitAlloc_16s, kvrsRandUniform_16s, kvrsRandUniformFree_16s, -32768,
                     32767);
  checkState<Kvr16s>(kvrsRandUniformInitAlloc_16s, kvrsRandUniform_16s, kvrsRandUniformFree_16s, 5, 5);
  checkState<Kvr32f>(kvrsRandUniformInitAlloc_32f, kvrsRandUniform_32f, kvrsRandUniformFree_32f, -1, 1);
  checkState<Kvr32f>(kvrsRandUniformInitAlloc_32f, kvrsRandUniform_32f, kvrsRandUniformFree_32f, 0.1f,
                     16777216.0f);
}

TEST(RandUniform, PiecesOfAnyLengthsAreOneSequence) {
  checkPieces<Kvr8u>(kvrsRandUniformInitAlloc_8u, kvrsRandUniform_8u, kvrsRandUniformFree_8u, 3, 250);
  checkPieces<Kvr16s>(kvrsRandUniformInitAlloc_16s, kvrsRandUniform_16s, kvrsRandUniformFree_16s, -300, 1000);
  checkPieces<Kvr32f>(kvrsRandUniformInitAlloc_32f, kvrsRandUniform_32f, kvrsRandUniformFree_32f, 1e-3f, -2);
}

template <class T>
void checkDirect(Direct<T> direct, T low, T high) {
  for (uint32_t seed : kSeeds) {
    uint32_t after = 0;
    expectGenerated<T>(
        [&](T* dst, int len) {
          Kvr32u inOut = seed;
          const KvrStatus status = direct(dst, len, low, high, &inOut);
          EXPECT_EQ(after, inOut) << len;
          return status;
        },
        [&](int len) {
          WordModel words(seed);
          const auto expected = samples<To::pairsRounded>(words, low, high, len);
          after = words.x1();
          return expected;
        });
  }
}

TEST(RandUniform, Direct) {
  checkDirect<Kvr16s>(kvrsRandUniform_Direct_16s, -32768, 32767);
  checkDirect<Kvr16s>(kvrsRandUniform_Direct_16s, -3, 4);
  checkDirect<Kvr32f>(kvrsRandUniform_Direct_32f, -1, 1);
  checkDirect<Kvr32f>(kvrsRandUniform_Direct_32f, 1e30f, 3e30f);
  checkDirect<Kvr64f>(kvrsRandUniform_Direct_64f, -1, 1);
  checkDirect<Kvr64f>(kvrsRandUniform_Direct_64f, 0.1, 1e100);
}

TEST(RandUniform, IntegersRoundAlikeInEveryModeOfTheCaller) {
  for (int mode : kCallerModes) {
    WordModel words(3);
    const auto expected = samples<To::pairsRounded, Kvr16s>(words, -5, 5, 101);
    std::vector<Kvr16s> got(101);
    Kvr32u seed = 3;
    callWithRounding(mode, [&] { return kvrsRandUniform_Direct_16s(got.data(), 101, -5, 5, &seed); });
    EXPECT_EQ(expected, got) << mode;
  }
}

// Where truncation and rounding part: the same seed, another first sample.
TEST(RandUniform, OneSampleIsTruncatedAndOfTwoTheFirstIsRounded) {
  int different = 0;
  for (uint32_t start = 0; start < 100; ++start) {
    Kvr16s one = 0, two[2];
    Kvr32u seed = start * 77777;
    kvrsRandUniform_Direct_16s(&one, 1, 0, 10, &seed);
    seed = start * 77777;
    kvrsRandUniform_Direct_16s(two, 2, 0, 10, &seed);
    different += one != two[0];
  }
  EXPECT_GT(different, 20);
}

TEST(RandUniform, FirstWordsOfTheCongruentialGenerator) {
  WordModel words(0);
  words.next();
  EXPECT_EQ(2061989128u, words.lcg());
  words.next();
  EXPECT_EQ(3720418011u, words.lcg());
}

TEST(RandUniform, SizeAndStateInTheCallersMemory) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsRandUniformGetSize_16s(&size));
  EXPECT_EQ(56, size);
  Arena arena(64);
  auto* state = arena.place<uint64_t>(7);
  ASSERT_EQ(kvrStatusOk, kvrsRandUniformInit_16s(reinterpret_cast<KvrsRandUniState_16s*>(state), -7, 9, 42));
  EXPECT_TRUE(arena.intact());
  const auto* reals = reinterpret_cast<const double*>(state);
  const auto* integers = reinterpret_cast<const uint32_t*>(state);
  EXPECT_EQ(1.0, get(reals, 2)) << "mean";
  EXPECT_EQ(16 * 2.3283064365387e-10, get(reals, 3)) << "scale";
  EXPECT_EQ(1131199209u, get(integers, 8)) << "lcg";
  EXPECT_EQ(42u, get(integers, 9)) << "x1";
  EXPECT_EQ(~0u, get(integers, 12)) << "borrow";
  uint64_t copy[7];  // a state may be copied as bytes
  memcpy(copy, state, sizeof copy);
  for (auto* from :
       {reinterpret_cast<KvrsRandUniState_16s*>(state), reinterpret_cast<KvrsRandUniState_16s*>(copy)}) {
    WordModel words(42);
    const auto expected = samples<To::truncated, Kvr16s>(words, -7, 9, 100);
    std::vector<Kvr16s> got(100);
    ASSERT_EQ(kvrStatusOk, kvrsRandUniform_16s(got.data(), 100, from));
    EXPECT_EQ(expected, got);
  }
  EXPECT_TRUE(arena.intact());
}

TEST(RandUniform, StatesOfOtherTypesAreRefused) {
  KvrsRandUniState_8u* uniform8u = nullptr;
  KvrsRandGaussState_16s* gauss = nullptr;
  ASSERT_EQ(kvrStatusOk, kvrsRandUniformInitAlloc_8u(&uniform8u, 0, 255, 1));
  ASSERT_EQ(kvrStatusOk, kvrsRandGaussInitAlloc_16s(&gauss, 0, 1, 1));
  Kvr16s dst[4] = {};
  EXPECT_EQ(kvrStatusContextMismatch,
            kvrsRandUniform_16s(dst, 4, reinterpret_cast<KvrsRandUniState_16s*>(uniform8u)));
  EXPECT_EQ(kvrStatusContextMismatch,
            kvrsRandUniform_16s(dst, 4, reinterpret_cast<KvrsRandUniState_16s*>(gauss)));
  EXPECT_EQ(kvrStatusContextMismatch,
            kvrsRandUniformFree_16s(reinterpret_cast<KvrsRandUniState_16s*>(gauss)));
  // The length comes before the word.
  EXPECT_EQ(kvrStatusBadLength, kvrsRandUniform_16s(dst, 0, reinterpret_cast<KvrsRandUniState_16s*>(gauss)));
  EXPECT_EQ(kvrStatusOk, kvrsRandUniformFree_8u(uniform8u));
  EXPECT_EQ(kvrStatusOk, kvrsRandGaussFree_16s(gauss));
}

// Mean, deviation, occupancy of 256 cells and the correlation of neighbours, at one seed each. Bounds are about five standard
// deviations of what true randomness would show.
TEST(RandUniform, Statistics) {
  constexpr int kLen = 1 << 20;
  std::vector<double> x(kLen);
  for (Kvr32u start : {1u, 2u, 3u}) {
    Kvr32u seed = start;
    ASSERT_EQ(kvrStatusOk, kvrsRandUniform_Direct_64f(x.data(), kLen, 0, 1, &seed));
    double sum = 0, squares = 0, lag[8] = {};
    int cells[256] = {};
    for (int i = 0; i < kLen; ++i) {
      const double v = x[static_cast<size_t>(i)];
      ASSERT_TRUE(v > -1e-9 && v < 1 + 1e-9);
      sum += v;
      squares += (v - 0.5) * (v - 0.5);
      ++cells[std::clamp(static_cast<int>(v * 256), 0, 255)];
      for (int k = 1; k <= 8 && k <= i; ++k) lag[k - 1] += (v - 0.5) * (x[static_cast<size_t>(i - k)] - 0.5);
    }
    const double n = kLen;
    EXPECT_NEAR(0.5, sum / n, 5 * std::sqrt(1 / 12.0 / n));
    EXPECT_NEAR(1 / 12.0, squares / n, 5 * std::sqrt(1 / 180.0 / n));
    double chiSquare = 0;
    for (int count : cells) chiSquare += (count - n / 256) * (count - n / 256) / (n / 256);
    EXPECT_NEAR(255, chiSquare, 5 * std::sqrt(2 * 255.0));
    for (double sumOfProducts : lag) EXPECT_NEAR(0, sumOfProducts / n * 12, 5 / std::sqrt(n));
  }
}

}  // namespace
