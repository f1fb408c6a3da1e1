// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "kvrs/wavelet.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

template <class T>
struct Functions {
  KvrStatus (*forward)(const T*, int, T*, T*);
  KvrStatus (*inverse)(const T*, const T*, T*, int);
  KvrStatus (*forwardScaled)(const T*, int, T*, T*, int);
  KvrStatus (*inverseScaled)(const T*, const T*, T*, int, int);
};

template <class T>
Functions<T> functions();
template <>
Functions<Kvr8s> functions() {
  return {kvrsWTHaarFwd_8s, kvrsWTHaarInv_8s, kvrsWTHaarFwd_8s_Sfs, kvrsWTHaarInv_8s_Sfs};
}
template <>
Functions<Kvr16s> functions() {
  return {kvrsWTHaarFwd_16s, kvrsWTHaarInv_16s, kvrsWTHaarFwd_16s_Sfs, kvrsWTHaarInv_16s_Sfs};
}
template <>
Functions<Kvr32s> functions() {
  return {kvrsWTHaarFwd_32s, kvrsWTHaarInv_32s, kvrsWTHaarFwd_32s_Sfs, kvrsWTHaarInv_32s_Sfs};
}
template <>
Functions<Kvr64s> functions() {
  return {kvrsWTHaarFwd_64s, kvrsWTHaarInv_64s, kvrsWTHaarFwd_64s_Sfs, kvrsWTHaarInv_64s_Sfs};
}
template <>
Functions<Kvr32f> functions() {
  return {kvrsWTHaarFwd_32f, kvrsWTHaarInv_32f, nullptr, nullptr};
}
template <>
Functions<Kvr64f> functions() {
  return {kvrsWTHaarFwd_64f, kvrsWTHaarInv_64f, nullptr, nullptr};
}

// A scale factor that stands for the function without one.
constexpr int kPlain = 12345;

// sum * 2^(-shift), rounded and saturated. Sums of 64-bit integers are exact in extended precision.
template <class T>
T stored(long double sum, int shift) {
  using L = std::numeric_limits<T>;
  const int bounded = shift > 1000 ? 1000 : shift < -1000 ? -1000 : shift;
  return saturatedTo<T>(std::ldexp(sum, -bounded), kvrRoundNear, L::lowest(), L::max());
}

template <class T>
struct Bands {
  std::vector<T> low, high;
};

template <class T>
Bands<T> transformed(const std::vector<T>& x, [[maybe_unused]] int scaleFactor) {
  Bands<T> bands;
  for (size_t i = 0; i + 1 < x.size(); i += 2) {
    if constexpr (std::is_floating_point_v<T>) {
      bands.low.push_back(x[i] / 2 + x[i + 1] / 2);
      bands.high.push_back(x[i + 1] / 2 - x[i] / 2);
    } else {
      const int shift = scaleFactor == kPlain ? 1 : scaleFactor == INT_MAX ? INT_MAX : scaleFactor + 1;
      const long double x0 = x[i], x1 = x[i + 1];
      bands.low.push_back(stored<T>(x0 + x1, shift));
      bands.high.push_back(stored<T>(x1 - x0, shift));
    }
  }
  if (x.size() % 2 != 0) {
    if constexpr (std::is_floating_point_v<T>) {
      bands.low.push_back(x.back());
    } else {
      bands.low.push_back(stored<T>(x.back(), scaleFactor == kPlain ? 0 : scaleFactor));
    }
  }
  return bands;
}

template <class T>
std::vector<T> joined(const Bands<T>& bands, [[maybe_unused]] int scaleFactor) {
  std::vector<T> x;
  [[maybe_unused]] const int shift = scaleFactor == kPlain ? 0 : scaleFactor;
  for (size_t i = 0; i < bands.high.size(); ++i) {
    const T low = bands.low[i], high = bands.high[i];
    if constexpr (std::is_floating_point_v<T>) {
      x.push_back(low - high);
      x.push_back(low + high);
    } else {
      x.push_back(stored<T>(static_cast<long double>(low) - static_cast<long double>(high), shift));
      x.push_back(stored<T>(static_cast<long double>(low) + static_cast<long double>(high), shift));
    }
  }
  if (bands.low.size() > bands.high.size()) {
    if constexpr (std::is_floating_point_v<T>) {
      x.push_back(bands.low.back());
    } else {
      x.push_back(stored<T>(bands.low.back(), shift));
    }
  }
  return x;
}

template <class T>
KvrStatus forward(const T* src, int len, T* low, T* high, int scaleFactor) {
  const auto f = functions<T>();
  return scaleFactor == kPlain ? f.forward(src, len, low, high)
                               : f.forwardScaled(src, len, low, high, scaleFactor);
}
template <class T>
KvrStatus inverse(const T* low, const T* high, T* dst, int len, int scaleFactor) {
  const auto f = functions<T>();
  return scaleFactor == kPlain ? f.inverse(low, high, dst, len)
                               : f.inverseScaled(low, high, dst, len, scaleFactor);
}

template <class T>
void fill(T* array, const std::vector<T>& values) {
  if (!values.empty()) memcpy(static_cast<void*>(array), values.data(), values.size() * sizeof(T));
}
template <class T>
bool holds(const T* array, const std::vector<T>& values) {
  return values.empty() || memcmp(array, values.data(), values.size() * sizeof(T)) == 0;
}

template <class T>
class Checker {
 public:
  explicit Checker(size_t most) : a_(most * sizeof(T)), b_(most * sizeof(T)), c_(most * sizeof(T)) {}

  void check(const std::vector<T>& x, int scaleFactor, Random& random, int mode = FE_TONEAREST) {
    const size_t n = x.size(), lows = (n + 1) / 2, highs = n / 2;
    const int len = static_cast<int>(n);
    const Side side = random.below(2) != 0 ? Side::front : Side::back;
    const auto offset = [&] { return random.below(64); };
    const std::string what = std::to_string(8 * sizeof(T)) + " bits, length " + std::to_string(n) +
                             ", scale factor " + std::to_string(scaleFactor);
    const Bands<T> want = transformed(x, scaleFactor);

    T* src = a_.template place<T>(n, side, offset());
    T* low = b_.template place<T>(lows, side, offset());
    T* high = c_.template place<T>(highs, side, offset());
    fill(src, x);
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] { return forward(src, len, low, high, scaleFactor); }));
    ASSERT_TRUE(holds(src, x) && a_.intact() && b_.intact() && c_.intact()) << what;
    ASSERT_TRUE(holds(low, want.low)) << what;
    ASSERT_TRUE(holds(high, want.high)) << what;

    // Low values, then high ones, over the signal.
    fill(src, x);
    ASSERT_EQ(kvrStatusOk, forward(src, len, src, high, scaleFactor));
    ASSERT_TRUE(holds(src, want.low) && holds(high, want.high)) << what << ", in place";
    fill(src, x);
    ASSERT_EQ(kvrStatusOk, forward(src, len, low, src, scaleFactor));
    ASSERT_TRUE(holds(low, want.low) && holds(src, want.high)) << what << ", in place";

    // The inverse of anything.
    const Bands<T> bands{{x.begin(), x.begin() + static_cast<ptrdiff_t>(lows)},
                         {x.begin() + static_cast<ptrdiff_t>(lows), x.end()}};
    T* dst = a_.template place<T>(n, side, offset());
    fill(low, bands.low);
    fill(high, bands.high);
    ASSERT_EQ(kvrStatusOk, callWithRounding(mode, [&] { return inverse(low, high, dst, len, scaleFactor); }));
    ASSERT_TRUE(a_.intact() && b_.intact() && c_.intact()) << what;
    ASSERT_TRUE(holds(low, bands.low) && holds(high, bands.high)) << what;
    ASSERT_TRUE(holds(dst, joined(bands, scaleFactor))) << what << ", inverse";
  }

 private:
  Arena a_, b_, c_;
};

template <class T>
std::vector<T> values(size_t n, Random& random) {
  std::vector<T> x(n);
  for (T& v : x) v = random.value<T>();
  return x;
}

std::vector<int> lengths() {
  std::vector<int> all = sweepLengths();
  for (int len = 71; len <= 140; ++len) all.push_back(len);
  all.insert(all.end(), {255, 256, 257, 511, 513, 1024, 1025, 2047, 4095, 8193});
  return all;
}

template <class T>
void sweepHaar(std::initializer_list<int> scaleFactors) {
  Random random(21);
  Checker<T> checker(8200);
  for (int len : lengths()) {
    for (int scaleFactor : scaleFactors) {
      checker.check(values<T>(static_cast<size_t>(len), random), scaleFactor, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Haar, Sweep) {
  sweepHaar<Kvr8s>({kPlain, 0, 1, 3, -1, -2});
  sweepHaar<Kvr16s>({kPlain, 0, 1, 7, -1, -2});
  sweepHaar<Kvr32s>({kPlain, 0, 1, 15, -1, -2});
  sweepHaar<Kvr64s>({kPlain, 0, 1, 31, -1, -2});
  sweepHaar<Kvr32f>({kPlain});
  sweepHaar<Kvr64f>({kPlain});
}

// Every scale factor that makes a difference, on extremes and on all pairs of small numbers.
template <class T>
void checkScaleFactors() {
  Random random(22);
  std::vector<T> x;
  using L = std::numeric_limits<T>;
  const T corners[] = {L::lowest(),
                       static_cast<T>(L::lowest() + 1),
                       static_cast<T>(L::lowest() / 2),
                       T{-3},
                       T{-2},
                       T{-1},
                       T{0},
                       T{1},
                       T{2},
                       T{3},
                       static_cast<T>(L::max() / 2),
                       static_cast<T>(L::max() / 2 + 1),
                       static_cast<T>(L::max() - 1),
                       L::max()};
  for (T a : corners) {
    for (T b : corners) x.insert(x.end(), {a, b});
  }
  // Shorter numbers too: their sums are halves and quarters of all kinds of steps.
  for (unsigned bits = 0; bits < 8 * sizeof(T); ++bits) {
    for (int k = 0; k < 6; ++k) x.push_back(static_cast<T>(static_cast<T>(random.bits()) >> bits));
  }
  Checker<T> checker(x.size() + 1);
  constexpr int kBits = 8 * sizeof(T);
  std::vector<int> scaleFactors = {INT_MIN, INT_MIN + 1, -1000, 1000, INT_MAX - 1, INT_MAX};
  for (int s = -kBits - 3; s <= kBits + 3; ++s) scaleFactors.push_back(s);
  for (int scaleFactor : scaleFactors) {
    checker.check(x, scaleFactor, random, kCallerModes[random.below(4)]);
    if (testing::Test::HasFatalFailure()) return;
    // Each corner as the sample without a partner.
    for (T last : corners) {
      checker.check({T{1}, T{2}, last}, scaleFactor, random);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Haar, ScaleFactors) {
  checkScaleFactors<Kvr8s>();
  checkScaleFactors<Kvr16s>();
  checkScaleFactors<Kvr32s>();
  checkScaleFactors<Kvr64s>();
}

// low of the unrounded difference, in a wider format; and no overflow.
TEST(Haar, FloatsRoundOnce) {
  Random random(23);
  std::vector<Kvr32f> x(2000), low(1000), high(1000);
  for (Kvr32f& v : x)
    v = std::ldexp(static_cast<float>(random.unit()), static_cast<int>(random.below(60)) - 30);
  x[0] = x[1] = std::numeric_limits<float>::max();
  x[2] = std::numeric_limits<float>::lowest();
  x[3] = std::numeric_limits<float>::max();
  ASSERT_EQ(kvrStatusOk, kvrsWTHaarFwd_32f(x.data(), 2000, low.data(), high.data()));
  for (size_t i = 0; i < 1000; ++i) {
    const double x0 = x[2 * i], x1 = x[2 * i + 1], wide = (x1 - x0) * 0.5;
    EXPECT_EQ(static_cast<float>(wide), high[i]) << i;
    EXPECT_EQ(static_cast<float>(x0 + wide), low[i]) << i;
  }
}

TEST(Haar, OneSample) {
  const Kvr16s x = -321;
  Kvr16s low = 7, high = 9, back = 0;
  ASSERT_EQ(kvrStatusOk, kvrsWTHaarFwd_16s(&x, 1, &low, &high));
  EXPECT_EQ(-321, low);
  EXPECT_EQ(9, high);
  ASSERT_EQ(kvrStatusOk, kvrsWTHaarInv_16s(&low, &high, &back, 1));
  EXPECT_EQ(-321, back);
}

// Pyramids down to one value and back. Sums and differences as they are lose nothing.
template <class T>
void checkPyramid(size_t n, int forwardScale, int inverseScale, double tolerance) {
  Random random(24);
  std::vector<T> x(n);
  for (T& v : x) {
    if constexpr (std::is_floating_point_v<T>) {
      v = random.value<T>();
    } else {
      v = static_cast<T>(static_cast<int>(random.below(3)) - 1);
    }
  }
  std::vector<T> work = x;
  std::vector<std::vector<T>> highs;
  std::vector<size_t> lengthsOfLevels;
  for (size_t len = n; len > 1; len = (len + 1) / 2) {
    lengthsOfLevels.push_back(len);
    highs.emplace_back(len / 2);
    ASSERT_EQ(kvrStatusOk,
              forward(work.data(), static_cast<int>(len), work.data(), highs.back().data(), forwardScale));
  }
  std::vector<T> low(work.begin(), work.begin() + 1);
  for (size_t level = highs.size(); level-- > 0;) {
    std::vector<T> joint(lengthsOfLevels[level]);
    ASSERT_EQ(kvrStatusOk, inverse(low.data(), highs[level].data(), joint.data(),
                                   static_cast<int>(joint.size()), inverseScale));
    low = joint;
  }
  for (size_t i = 0; i < n; ++i) {
    ASSERT_NEAR(static_cast<double>(x[i]), static_cast<double>(low[i]), tolerance) << i << " of " << n;
  }
}

TEST(Haar, Pyramids) {
  for (size_t n : {2u, 64u, 1024u, 4096u}) {
    checkPyramid<Kvr16s>(n, -1, 1, 0);
    checkPyramid<Kvr32s>(n, -1, 1, 0);
    checkPyramid<Kvr64s>(n, -1, 1, 0);
    checkPyramid<Kvr32f>(n, kPlain, kPlain, 24 * 0x1p-24);
    checkPyramid<Kvr64f>(n, kPlain, kPlain, 24 * 0x1p-53);
  }
  for (size_t n : {3u, 77u, 1000u}) {
    checkPyramid<Kvr32f>(n, kPlain, kPlain, 24 * 0x1p-24);
    checkPyramid<Kvr64f>(n, kPlain, kPlain, 24 * 0x1p-53);
  }
  checkPyramid<Kvr8s>(32, -1, 1, 0);
}

}  // namespace
