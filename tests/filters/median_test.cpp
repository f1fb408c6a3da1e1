// SPDX-License-Identifier: MIT
#include "kvrs/median.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

// Numbers in the order that the filter knows: of floats that of their bits.
int64_t key(Kvr8u x) {
  return x;
}
int64_t key(Kvr16s x) {
  return x;
}
int64_t key(Kvr32s x) {
  return x;
}
int64_t key(Kvr32f x) {
  const int64_t magnitude = std::bit_cast<uint32_t>(x) & 0x7FFFFFFF;
  return std::signbit(x) ? -1 - magnitude : magnitude;
}
int64_t key(Kvr64f x) {
  const int64_t magnitude = static_cast<int64_t>(std::bit_cast<uint64_t>(x) & 0x7FFFFFFFFFFFFFFF);
  return std::signbit(x) ? -1 - magnitude : magnitude;
}

// The definition: for each output its window, sorted. The window is from i - before to i + behind.
template <class T>
std::vector<T> medians(const std::vector<T>& x, int before, int behind) {
  const int len = static_cast<int>(x.size());
  std::vector<T> result;
  for (int i = 0; i < len; ++i) {
    std::vector<T> window;
    for (int k = i - before; k <= i + behind; ++k) window.push_back(x[std::clamp(k, 0, len - 1)]);
    std::nth_element(window.begin(), window.begin() + before, window.end(),
                     [](T a, T b) { return key(a) < key(b); });
    result.push_back(window[before]);
  }
  return result;
}

template <class T>
struct Median;
template <>
struct Median<Kvr8u> {
  static constexpr auto* copy = kvrsFilterMedian_8u;
  static constexpr auto* inPlace = kvrsFilterMedian_8u_I;
};
template <>
struct Median<Kvr16s> {
  static constexpr auto* copy = kvrsFilterMedian_16s;
  static constexpr auto* inPlace = kvrsFilterMedian_16s_I;
};
template <>
struct Median<Kvr32s> {
  static constexpr auto* copy = kvrsFilterMedian_32s;
  static constexpr auto* inPlace = kvrsFilterMedian_32s_I;
};
template <>
struct Median<Kvr32f> {
  static constexpr auto* copy = kvrsFilterMedian_32f;
  static constexpr auto* inPlace = kvrsFilterMedian_32f_I;
};
template <>
struct Median<Kvr64f> {
  static constexpr auto* copy = kvrsFilterMedian_64f;
  static constexpr auto* inPlace = kvrsFilterMedian_64f_I;
};

template <class T>
void check(const std::vector<T>& x, int maskSize, size_t offset, Side side) {
  const bool takesEven = std::is_same_v<T, Kvr32s> && maskSize >= 11;
  const bool isEven = maskSize % 2 == 0;
  const int half = takesEven ? maskSize / 2 : (maskSize - 1) / 2;
  const std::vector<T> want = x.size() < 3 ? x : medians(x, half, takesEven && isEven ? half - 1 : half);
  const KvrStatus status = isEven && !takesEven ? kvrStatusEvenMedianMask : kvrStatusOk;

  const size_t n = x.size();
  Arena from(n * sizeof(T)), to(n * sizeof(T));
  T* const src = from.place<T>(n, side, offset);
  T* const dst = to.place<T>(n, side, offset);
  memcpy(static_cast<void*>(src), x.data(), n * sizeof(T));
  const int before = liveBlocks();
  const std::string what = "len " + std::to_string(n) + ", mask " + std::to_string(maskSize);
  ASSERT_EQ(status, Median<T>::copy(src, dst, static_cast<int>(n), maskSize)) << what;
  ASSERT_EQ(0, memcmp(src, x.data(), n * sizeof(T))) << what;
  for (size_t i = 0; i < n; ++i) ASSERT_EQ(key(want[i]), key(get(dst, i))) << what << ", " << i;
  ASSERT_EQ(status, Median<T>::inPlace(src, static_cast<int>(n), maskSize)) << what;
  for (size_t i = 0; i < n; ++i) ASSERT_EQ(key(want[i]), key(get(src, i))) << what << ", in place, " << i;
  ASSERT_TRUE(from.intact()) << what;
  ASSERT_TRUE(to.intact()) << what;
  ASSERT_EQ(before, liveBlocks()) << what;
}

template <class T>
void sweep() {
  Random random;
  std::vector<int> lengths;
  for (int len = 1; len <= 40; ++len) lengths.push_back(len);
  for (int len : {64, 65, 127, 128, 129, 256, 261, 1024, 1030, 2050}) lengths.push_back(len);
  for (int len : lengths) {
    std::vector<T> x(static_cast<size_t>(len));
    for (int maskSize : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 31, 101, 201}) {
      if (len > 261 && maskSize > 13) continue;
      // Random numbers, and few different ones.
      for (bool few : {false, true}) {
        for (T& v : x) v = few ? static_cast<T>(random.below(4)) : random.value<T>();
        const size_t offset = random.below(64);
        check(x, maskSize, offset, random.below(2) ? Side::front : Side::back);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(Median, Bytes) {
  sweep<Kvr8u>();
}
TEST(Median, Integers16) {
  sweep<Kvr16s>();
}
TEST(Median, Integers32) {
  sweep<Kvr32s>();
}
TEST(Median, Singles) {
  sweep<Kvr32f>();
}
TEST(Median, Doubles) {
  sweep<Kvr64f>();
}

// Far longer than the vector: the borders fill the window.
TEST(Median, WindowsLongerThanTheVector) {
  Random random(3);
  for (int len : {3, 4, 10, 50}) {
    std::vector<Kvr32s> x(static_cast<size_t>(len));
    for (int maskSize : {4 * len - 1, 4 * len, 4 * len + 1, 4 * len + 2, 8 * len, 8 * len + 1, 3000, 3001}) {
      for (int turn = 0; turn < 4; ++turn) {
        for (Kvr32s& v : x) v = turn % 2 ? static_cast<Kvr32s>(random.below(3)) : random.value<Kvr32s>();
        if (maskSize >= 3) check(x, maskSize, 0, Side::back);
      }
    }
    // No memory for so many, and none needed.
    EXPECT_EQ(kvrStatusOk, kvrsFilterMedian_32s_I(x.data(), len, INT_MAX)) << len;
  }
}

TEST(Median, SpecialFloats) {
  const float infinity = std::numeric_limits<float>::infinity(),
              nan = std::numeric_limits<float>::quiet_NaN();
  const float special[] = {0.0f, -0.0f, infinity, -infinity, nan, -nan, 1e-40f, 1.0f, -1.0f};
  Random random(5);
  std::vector<Kvr32f> x(200);
  std::vector<Kvr64f> y(200);
  for (int maskSize : {3, 5, 7, 9, 11, 31}) {
    for (int turn = 0; turn < 20; ++turn) {
      for (size_t i = 0; i < x.size(); ++i) {
        x[i] = special[random.below(9)];
        y[i] = x[i];
      }
      check(x, maskSize, 0, Side::back);
      if (maskSize >= 11) check(y, maskSize, 0, Side::back);
      // Infinities are ordinary numbers to the networks of doubles.
      for (double& v : y) v = std::isnan(v) || v == 0 ? 0.5 : v;
      check(y, maskSize, 0, Side::back);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(Median, AnImpulseDisappears) {
  for (int maskSize : {3, 5, 9, 11, 101}) {
    std::vector<Kvr16s> x(300, 7);
    x[150] = 32767;
    ASSERT_EQ(kvrStatusOk, kvrsFilterMedian_16s_I(x.data(), 300, maskSize));
    for (Kvr16s v : x) EXPECT_EQ(7, v);
  }
}

TEST(Median, NoMemory) {
  std::vector<Kvr64f> x(100), dst(100);
  for (size_t i = 0; i < x.size(); ++i) x[i] = std::sin(static_cast<double>(i));
  const std::vector<Kvr64f> before = x;
  const FailingAllocator failing(1);
  EXPECT_EQ(kvrStatusOutOfMemory, kvrsFilterMedian_64f_I(x.data(), 100, 11));
  EXPECT_EQ(before, x);
  EXPECT_EQ(kvrStatusOutOfMemory, kvrsFilterMedian_64f(x.data(), dst.data(), 100, 12));
  EXPECT_EQ(before, dst);
  EXPECT_EQ(kvrStatusOk, kvrsFilterMedian_64f_I(x.data(), 100, 9));
}

}  // namespace
