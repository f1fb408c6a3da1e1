// What a quotient of integers is, computed in integers: the oracle of the division tests.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_VECTOR_QUOTIENT_H
#define KVRS_TESTS_VECTOR_QUOTIENT_H

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/core.h"
#include "tests/support/sweep.h"

namespace kvrs::test {

enum class To { nearestEven, nearestAway, zero, down, up };

// The rounding modes of the processor and what they do.
struct Mode {
  int fe;
  To to;
};
inline constexpr Mode kModes[] = {
    {FE_TONEAREST, To::nearestEven}, {FE_TOWARDZERO, To::zero}, {FE_DOWNWARD, To::down}, {FE_UPWARD, To::up}};

// Runs a call under a mode, and checks that it leaves the control word as it was.
template <class Call>
KvrStatus inMode(int fe, Call call) {
  fesetround(fe);
  const unsigned before = _mm_getcsr() & ~0x3Fu;
  const KvrStatus status = call();
  const unsigned after = _mm_getcsr() & ~0x3Fu;
  const int mode = fegetround();
  fesetround(FE_TONEAREST);
  EXPECT_EQ(before, after);
  EXPECT_EQ(fe, mode);
  return status;
}

// oracle(to, elements...) for the caller's mode, itself in the nearest one: what Rounding::followed sweeps.
template <class Oracle>
auto inCallersMode(Oracle oracle) {
  return [=](auto... elements) {
    const int fe = fegetround();
    if (fe == FE_TONEAREST) return oracle(To::nearestEven, elements...);
    fesetround(FE_TONEAREST);
    const auto result = oracle(fe == FE_TOWARDZERO ? To::zero
                               : fe == FE_DOWNWARD ? To::down
                                                   : To::up,
                               elements...);
    fesetround(fe);
    return result;
  };
}

// Whether a quotient with this floor and remainder goes one up.
template <class Word>
bool goesUp(Word floor, Word rest, Word den, bool negative, To to) {
  switch (to) {
    case To::nearestEven:
      return rest > den - rest || (rest == den - rest && (floor & 1) != 0);
    case To::nearestAway:
      return rest >= den - rest;
    case To::zero:
      return false;
    case To::down:
      return negative && rest != 0;
    default:
      return !negative && rest != 0;
  }
}

template <class D>
D bounded(bool negative, uint64_t magnitude) {
  const uint64_t most = negative ? 0 - static_cast<uint64_t>(int64_t{std::numeric_limits<D>::lowest()})
                                 : static_cast<uint64_t>(std::numeric_limits<D>::max());
  if (magnitude > most) magnitude = most;
  return static_cast<D>(negative ? 0 - magnitude : magnitude);
}

// n / d * 2^(-scaleFactor), d not 0; |n| * 2^(-scaleFactor) and |d| * 2^scaleFactor are below 2^64.
template <class D>
D exactQuotient(int64_t n, int64_t d, int scaleFactor, To to) {
  const bool negative = (n < 0) != (d < 0);
  uint64_t num = static_cast<uint64_t>(n < 0 ? -n : n), den = static_cast<uint64_t>(d < 0 ? -d : d);
  (scaleFactor < 0 ? num : den) <<= scaleFactor < 0 ? -scaleFactor : scaleFactor;
  if (num <= UINT32_MAX && den <= UINT32_MAX) {
    const uint32_t n32 = static_cast<uint32_t>(num), d32 = static_cast<uint32_t>(den), floor = n32 / d32;
    return bounded<D>(negative, floor + uint64_t{goesUp(floor, n32 % d32, d32, negative, to)});
  }
  const uint64_t floor = num / den;
  return bounded<D>(negative, floor + goesUp(floor, num % den, den, negative, to));
}

template <class D>
D extreme(int64_t sign) {
  return sign > 0 ? std::numeric_limits<D>::max() : sign < 0 ? std::numeric_limits<D>::lowest() : D{0};
}

// The bounds of a family.
struct Bounds {
  int signBelow, zeroAbove;
};

// The whole rule for real integers, quotients being exact.
template <class D>
D quotientByRule(int64_t n, int64_t d, int scaleFactor, Bounds bounds, To to) {
  if (d == 0) return extreme<D>(n);
  if (scaleFactor > bounds.zeroAbove) return 0;
  if (scaleFactor < bounds.signBelow) return extreme<D>(n == 0 ? 0 : (n < 0) != (d < 0) ? -1 : 1);
  return exactQuotient<D>(n, d, scaleFactor, to);
}

inline std::vector<int> allScaleFactors() {
  std::vector<int> all{INT_MIN, INT_MIN + 1, -1000, -128, 128, 1000, INT_MAX - 1, INT_MAX};
  for (int s = -70; s <= 70; ++s) all.push_back(s);
  return all;
}

template <class T>
std::vector<T> randomVector(size_t n, uint64_t seed) {
  Random random(seed);
  std::vector<T> v(n);
  for (T& x : v) x = random.value<T>();
  return v;
}

template <class T>
bool isZero(T x) {
  if constexpr (std::is_arithmetic_v<T>) {
    return x == 0;
  } else {
    return x.re == 0 && x.im == 0;
  }
}

// The status that a division by these elements ends with.
template <class T>
KvrStatus statusFor(const T* divisors, size_t n) {
  for (size_t i = 0; i < n; ++i)
    if (isZero(get(divisors, i))) return kvrStatusDivByZeroWarn;
  return kvrStatusOk;
}

// Vectors from these lengths on are shared among threads.
constexpr int threadedLength(int familys) {
  return 128 * familys;
}

template <class D>
void expectSame(const std::vector<D>& want, const std::vector<D>& got, const std::string& what) {
  if (memcmp(want.data(), got.data(), want.size() * sizeof(D)) == 0) return;
  for (size_t i = 0; i < want.size(); ++i) {
    ASSERT_TRUE(sameBits(want[i], got[i]))
        << what << ", element " << i << ": got " << show(got[i]) << ", want " << show(want[i]);
  }
}

// Runs `call(dst)` with 1, 2, 3 and 8 threads: the same bytes and the same status each time.
template <class D, class Call>
void expectSameOnThreads(size_t len, KvrStatus status, const std::string& what, Call call) {
  std::vector<D> one(len), other(len);
  ASSERT_EQ(status, call(one.data())) << what;
  for (int threads : {2, 3, 8}) {
    ThreadCount count(threads);
    memset(static_cast<void*>(other.data()), 0x55, len * sizeof(D));
    ASSERT_EQ(status, call(other.data())) << what << ", threads " << threads;
    expectSame(one, other, what + ", threads " + std::to_string(threads));
  }
}

}  // namespace kvrs::test

#endif
