// SPDX-License-Identifier: MIT
#include "kvrs/random.h"

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "tests/support/core.h"
#include "tests/synth/generated.h"
#include "tests/synth/random_model.h"

using namespace kvrs::test;

namespace {

struct DrawnPair {
  double u, v, q;
};

DrawnPair drawPair(WordModel& words) {
  const double k31 = 4.656612873077e-10;
  for (;;) {
    const double u = static_cast<double>(words.next()) * k31;
    const double v = static_cast<double>(words.next()) * k31;
    const double uu = u * u, vv = v * v, q = uu + vv;
    if (q < 1.0 && q != 0.0) return {u, v, q};
  }
}

double radiusOf(double log, double q) {
  const double product = log * -2.0;
  const double quotient = product / q;
  return std::sqrt(quotient);
}

std::array<double, 3> radii(double q) {
  const double log = static_cast<double>(std::log(static_cast<long double>(q)));
  return {radiusOf(log, q), radiusOf(std::nextafter(log, -1e9), q), radiusOf(std::nextafter(log, 1e9), q)};
}

template <class T>
T sample(double radius, double value, T mean, T stdDev) {
  const double factor = static_cast<double>(stdDev) * radius;
  const double product = factor * value;
  if constexpr (std::is_same_v<T, Kvr32f>) {
    return static_cast<float>(product) + mean;
  } else {
    const double g = product + static_cast<double>(mean);
    if constexpr (std::is_same_v<T, Kvr64f>) {
      return g;
    } else {
      return static_cast<T>(std::clamp<int32_t>(static_cast<int32_t>(g), std::numeric_limits<T>::min(),
                                                std::numeric_limits<T>::max()));
    }
  }
}

// A sample with the logarithm of the library's freedom: correctly rounded, or the number below or above.
template <class T>
using Choice = std::array<T, 3>;

template <class T>
std::vector<Choice<T>> samples(WordModel& words, T mean, T stdDev, int len) {
  std::vector<Choice<T>> all;
  for (int i = 0; i < len; i += 2) {
    const DrawnPair pair = drawPair(words);
    for (double value : {pair.v, pair.u}) {
      Choice<T> choice;
      for (size_t k = 0; k < 3; ++k) choice[k] = sample(radii(pair.q)[k], value, mean, stdDev);
      all.push_back(choice);
    }
  }
  all.resize(static_cast<size_t>(len));
  return all;
}

template <class T>
bool isAmong(T got, const Choice<T>& choice) {
  return sameBits(got, choice[0]) || sameBits(got, choice[1]) || sameBits(got, choice[2]);
}

template <class T>
int countNotFirst(const std::vector<T>& got, const std::vector<Choice<T>>& expected) {
  int others = 0;
  for (size_t i = 0; i < got.size(); ++i) {
    EXPECT_TRUE(isAmong(got[i], expected[i])) << i << ": " << +got[i] << " instead of " << +expected[i][0];
    others += !sameBits(got[i], expected[i][0]);
  }
  return others;
}

template <class T, class State>
using InitAlloc = KvrStatus (*)(State**, T, T, Kvr32u) noexcept;
template <class T, class State>
using Make = KvrStatus (*)(T*, int, State*) noexcept;
template <class T>
using Direct = KvrStatus (*)(T*, int, T, T, Kvr32u*) noexcept;

// All lengths and alignments against one call whose elements are checked.
template <class T, class Call>
void checkLengths(Call call, const std::vector<T>& all) {
  expectGenerated<T>(call, [&](int len) { return std::vector<T>(all.begin(), all.begin() + len); });
}

constexpr int kMost = 4096;

template <class T, class State>
void checkState(InitAlloc<T, State> init, Make<T, State> make, KvrStatus (*release)(State*) noexcept, T mean,
                T stdDev) {
  for (uint32_t seed : kSeeds) {
    const auto call = [&](T* dst, int len) {
      State* state = nullptr;
      EXPECT_EQ(kvrStatusOk, init(&state, mean, stdDev, seed));
      const KvrStatus status = make(dst, len, state);
      EXPECT_EQ(kvrStatusOk, release(state));
      return status;
    };
    std::vector<T> all(kMost);
    ASSERT_EQ(kvrStatusOk, call(all.data(), kMost));
    WordModel words(seed);
    countNotFirst(all, samples(words, mean, stdDev, kMost));
    checkLengths<T>(call, all);

    // Pieces: a second call begins with the second sample of a pair.
    State* state = nullptr;
    ASSERT_EQ(kvrStatusOk, init(&state, mean, stdDev, seed));
    size_t at = 0;
    for (int len : {1, 1, 3, 4, 1, 2, 5, 511, 512, 513, 1024, 7}) {
      std::vector<T> got(static_cast<size_t>(len));
      ASSERT_EQ(kvrStatusOk, make(got.data(), len, state));
      EXPECT_EQ(std::vector<T>(&all[at], &all[at] + len), got) << len << " from " << at;
      at += static_cast<size_t>(len);
    }
    EXPECT_EQ(kvrStatusOk, release(state));
  }
}

TEST(RandGauss, States) {
  checkState<Kvr8u>(kvrsRandGaussInitAlloc_8u, kvrsRandGauss_8u, kvrsRandGaussFree_8u, 100, 40);
  checkState<Kvr8u>(kvrsRandGaussInitAlloc_8u, kvrsRandGauss_8u, kvrsRandGaussFree_8u, 0, 255);
  checkState<Kvr16s>(kvrsRandGaussInitAlloc_16s, kvrsRandGauss_16s, kvrsRandGaussFree_16s, 0, 1000);
  checkState<Kvr16s>(kvrsRandGaussInitAlloc_16s, kvrsRandGauss_16s, kvrsRandGaussFree_16s, -32768, 32767);
  checkState<Kvr16s>(kvrsRandGaussInitAlloc_16s, kvrsRandGauss_16s, kvrsRandGaussFree_16s, 3, -32768);
  checkState<Kvr32f>(kvrsRandGaussInitAlloc_32f, kvrsRandGauss_32f, kvrsRandGaussFree_32f, 0, 1);
  checkState<Kvr32f>(kvrsRandGaussInitAlloc_32f, kvrsRandGauss_32f, kvrsRandGaussFree_32f, 0.1f, -3e4f);
}

template <class T>
void checkDirect(Direct<T> direct, T mean, T stdDev) {
  for (uint32_t start : kSeeds) {
    std::vector<T> all(kMost);
    Kvr32u seed = start;
    ASSERT_EQ(kvrStatusOk, direct(all.data(), kMost, mean, stdDev, &seed));
    WordModel words(start);
    countNotFirst(all, samples(words, mean, stdDev, kMost));
    drawPair(words);
    EXPECT_EQ(words.x1(), seed);
    checkLengths<T>(
        [&](T* dst, int len) {
          Kvr32u inOut = start;
          const KvrStatus status = direct(dst, len, mean, stdDev, &inOut);
          WordModel ahead(start);
          for (int pair = 0; pair < len / 2 + 1; ++pair) drawPair(ahead);
          EXPECT_EQ(ahead.x1(), inOut) << len;
          return status;
        },
        all);
  }
}

TEST(RandGauss, DirectDrawsAheadAndHandsTheSeedBack) {
  checkDirect<Kvr16s>(kvrsRandGauss_Direct_16s, 0, 1000);
  checkDirect<Kvr16s>(kvrsRandGauss_Direct_16s, 30000, 30000);
  checkDirect<Kvr32f>(kvrsRandGauss_Direct_32f, 0, 1);
  checkDirect<Kvr32f>(kvrsRandGauss_Direct_32f, -0.3f, 1e-3f);
  checkDirect<Kvr64f>(kvrsRandGauss_Direct_64f, 0, 1);
  checkDirect<Kvr64f>(kvrsRandGauss_Direct_64f, 1e3, 1e-3);
}

// The logarithm: within 0.9 units, so that most results are the correctly rounded one's.
TEST(RandGauss, LogarithmIsMostlyRoundedCorrectly) {
  constexpr int kLen = 1 << 18;
  std::vector<double> got(kLen);
  Kvr32u seed = 5;
  ASSERT_EQ(kvrStatusOk, kvrsRandGauss_Direct_64f(got.data(), kLen, 0, 1, &seed));
  WordModel words(5);
  EXPECT_LT(countNotFirst(got, samples<Kvr64f>(words, 0, 1, kLen)), kLen / 10);
}

TEST(RandGauss, SizeAndStateInTheCallersMemory) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsRandGaussGetSize_16s(&size));
  EXPECT_EQ(64, size);
  Arena arena(64);
  auto* memory = arena.place<uint64_t>(8);
  auto* record = reinterpret_cast<KvrsRandGaussState_16s*>(memory);
  ASSERT_EQ(kvrStatusOk, kvrsRandGaussInit_16s(record, 10, 500, 99));
  std::vector<Kvr16s> got(101);
  ASSERT_EQ(kvrStatusOk, kvrsRandGauss_16s(got.data(), 101, record));
  EXPECT_TRUE(arena.intact());
  WordModel words(99);
  countNotFirst(got, samples<Kvr16s>(words, 10, 500, 101));
}

// Moments, the share of samples in cells of equal probability, and the correlation of neighbours. Bounds are about five
// standard deviations of what true randomness would show.
TEST(RandGauss, Statistics) {
  constexpr int kLen = 1 << 20;
  std::vector<double> x(kLen);
  for (Kvr32u start : {1u, 2u}) {
    Kvr32u seed = start;
    ASSERT_EQ(kvrStatusOk, kvrsRandGauss_Direct_64f(x.data(), kLen, 0, 1, &seed));
    double sum = 0, squares = 0, fourth = 0, lag[4] = {};
    int cells[64] = {};
    for (int i = 0; i < kLen; ++i) {
      const double v = x[static_cast<size_t>(i)];
      sum += v;
      squares += v * v;
      fourth += v * v * v * v;
      const double probability = 0.5 * std::erfc(-v / std::sqrt(2.0));
      ++cells[std::clamp(static_cast<int>(probability * 64), 0, 63)];
      for (int k = 1; k <= 4 && k <= i; ++k) lag[k - 1] += v * x[static_cast<size_t>(i - k)];
    }
    const double n = kLen;
    EXPECT_NEAR(0, sum / n, 5 / std::sqrt(n));
    EXPECT_NEAR(1, squares / n, 5 * std::sqrt(2 / n));
    EXPECT_NEAR(3, fourth / n, 5 * std::sqrt(96 / n));
    double chiSquare = 0;
    for (int count : cells) chiSquare += (count - n / 64) * (count - n / 64) / (n / 64);
    EXPECT_NEAR(63, chiSquare, 5 * std::sqrt(2 * 63.0));
    for (double sumOfProducts : lag) EXPECT_NEAR(0, sumOfProducts / n, 5 / std::sqrt(n));
  }
}

}  // namespace
