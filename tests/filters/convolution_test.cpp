// SPDX-License-Identifier: MIT
#include "kvrs/convolution.h"

#include <algorithm>
#include <climits>

#include "tests/filters/sliding_oracle.h"

using namespace kvrs::test;

namespace {

template <class T>
KvrStatus conv(const T* src1, int len1, const T* src2, int len2, T* dst, int scaleFactor = 0) {
  if constexpr (std::is_same_v<T, Kvr32f>) return kvrsConv_32f(src1, len1, src2, len2, dst);
  if constexpr (std::is_same_v<T, Kvr64f>) return kvrsConv_64f(src1, len1, src2, len2, dst);
  if constexpr (std::is_same_v<T, Kvr16s>) {
    return kvrsConv_16s_Sfs(src1, len1, src2, len2, dst, scaleFactor);
  }
}

// The definition; and the sums of the products' magnitudes, which bound what rounding can do. Of many results those near the
// ends and some between.
bool isTested(size_t n, size_t count) {
  return count < 600 || n < 80 || n + 80 >= count || n % 17 == 0;
}

struct Want {
  std::vector<long double> sums, magnitudes;
};
template <class T>
Want definition(const std::vector<T>& a, const std::vector<T>& b) {
  const size_t count = a.size() + b.size() - 1;
  Want want{std::vector<long double>(count), std::vector<long double>(count)};
  for (size_t n = 0; n < count; ++n) {
    if (!isTested(n, count)) continue;
    long double sum = 0, magnitude = 0;
    for (size_t k = n < b.size() ? 0 : n - (b.size() - 1); k < a.size() && k <= n; ++k) {
      const long double product = static_cast<long double>(a[k]) * b[n - k];
      sum += product;
      magnitude += std::fabs(product);
    }
    want.sums[n] = sum;
    want.magnitudes[n] = magnitude;
  }
  return want;
}

bool byTransforms(size_t len1, size_t len2) {
  return len1 + len2 - 1 >= 512 && std::min(len1, len2) >= 64;
}

template <class T>
long double norm(const std::vector<T>& x) {
  long double sum = 0;
  for (const T v : x) sum += static_cast<long double>(v) * v;
  return std::sqrt(sum);
}

// The error that a sum may have: of `count` products one by one, or by transforms, whose error is of the size of the signals'
// norms.
template <class T>
long double errorOf(const std::vector<T>& a, const std::vector<T>& b, const Want& want, long double norms,
                    size_t n) {
  if (byTransforms(a.size(), b.size())) return 8 * epsilonOf<T>() * norms;
  return epsilonOf<T>() * want.magnitudes[n] *
         std::sqrt(static_cast<long double>(std::min(a.size(), b.size())));
}

enum class Data { whole, noise };

template <class T>
void check(Random& random, int len1, int len2, Data data, int scaleFactor = 0) {
  const std::string what = std::to_string(len1) + " and " + std::to_string(len2) + " elements";
  const auto a = data == Data::whole ? wholeNumbers<T>(random, len1, 7) : noise<T>(random, len1),
             b = data == Data::whole ? wholeNumbers<T>(random, len2, 7) : noise<T>(random, len2);
  EdgeArray<T> src1(a, random), src2(b, random), dst(a.size() + b.size() - 1, random);
  const int before = liveBlocks();
  ASSERT_EQ(kvrStatusOk, conv<T>(src1, len1, src2, len2, dst, scaleFactor)) << what;
  ASSERT_EQ(before, liveBlocks()) << what;
  ASSERT_TRUE(src1.intact() && src2.intact() && dst.intact()) << what;
  ASSERT_TRUE(src1.holds(a) && src2.holds(b)) << what;
  const Want want = definition(a, b);
  const long double norms = norm(a) * norm(b);
  for (size_t n = 0; n < want.sums.size(); ++n) {
    if (!isTested(n, want.sums.size())) continue;
    const long double error = errorOf(a, b, want, norms, n), got = dst[n];
    if (std::is_same_v<T, Kvr16s>) {
      // Whole numbers have exact sums, far below a unit's error.
      ASSERT_TRUE(
          isRounded(static_cast<Kvr16s>(got), want.sums[n], scaleFactor, data == Data::whole ? 0.01L : error))
          << what << ", " << n << ": " << got << " for " << want.sums[n];
    } else if (data == Data::whole && !byTransforms(a.size(), b.size())) {
      ASSERT_EQ(want.sums[n], got) << what << ", " << n;
    } else {
      ASSERT_NEAR(want.sums[n], got, data == Data::whole ? std::min(error, 0.01L) : error)
          << what << ", " << n;
    }
  }
}

template <class T>
void sweep() {
  Random random;
  for (int len1 = 1; len1 <= 20; ++len1) {
    for (int len2 = 1; len2 <= 20; ++len2) check<T>(random, len1, len2, Data::whole);
  }
  for (int len1 : {1, 2, 5, 17, 31, 32, 33, 63, 64, 65, 100, 127, 129, 256, 270}) {
    for (int len2 : {1, 3, 16, 31, 33, 64, 65, 96, 128, 200, 241, 255}) {
      if (len1 + len2 > 512) continue;
      check<T>(random, len1, len2, Data::whole);
      check<T>(random, len1, len2, Data::noise, 18);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Convolution, Singles) {
  sweep<Kvr32f>();
}
TEST(Convolution, Doubles) {
  sweep<Kvr64f>();
}
TEST(Convolution, Words) {
  sweep<Kvr16s>();
}

// On both sides of each gate: 512 results, 64 elements, a longer source of 4,096, three times the shorter one; pieces of the
// direct path at their ends; transforms of one block and of many.
template <class T>
void gates() {
  Random random(2);
  const int pairs[][2] = {{256, 256}, {257, 256}, {448, 64},   {449, 64},   {449, 63},    {450, 63},
                          {511, 1},   {512, 1},   {4095, 63},  {4096, 63},  {4097, 63},   {9000, 20},
                          {191, 64},  {192, 64},  {449, 100},  {1199, 400}, {1200, 400},  {1201, 400},
                          {4096, 64}, {4097, 64}, {20000, 64}, {6000, 129}, {5000, 2500}, {1000, 1000}};
  for (const auto& [longer, shorter] : pairs) {
    check<T>(random, longer, shorter, Data::whole);
    check<T>(random, shorter, longer, Data::noise, 20);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(Convolution, SinglesAtTheGates) {
  gates<Kvr32f>();
}
TEST(Convolution, DoublesAtTheGates) {
  gates<Kvr64f>();
}
TEST(Convolution, WordsAtTheGates) {
  gates<Kvr16s>();
}

TEST(Convolution, ScaleFactors) {
  Random random(3);
  for (int scaleFactor = -40; scaleFactor <= 40; ++scaleFactor) {
    check<Kvr16s>(random, 20, 9, Data::whole, scaleFactor);
    check<Kvr16s>(random, 500, 70, Data::whole, scaleFactor);
  }
  // Sums of 0 stay 0 whatever the scale factor is, and all others go to an end or to 0.
  const Kvr16s a[] = {3, 0, -3}, b[] = {1, 0};
  for (int scaleFactor : {-30, -1000, INT_MIN}) {
    Kvr16s dst[4];
    ASSERT_EQ(kvrStatusOk, kvrsConv_16s_Sfs(a, 3, b, 2, dst, scaleFactor));
    EXPECT_EQ((std::vector<Kvr16s>{32767, 0, -32768, 0}), std::vector<Kvr16s>(dst, dst + 4)) << scaleFactor;
  }
  for (int scaleFactor : {30, 1000, INT_MAX}) {
    Kvr16s dst[4];
    ASSERT_EQ(kvrStatusOk, kvrsConv_16s_Sfs(a, 3, b, 2, dst, scaleFactor));
    EXPECT_EQ((std::vector<Kvr16s>(4, 0)), std::vector<Kvr16s>(dst, dst + 4)) << scaleFactor;
  }
  // Ties to even.
  const Kvr16s one[] = {1}, odd[] = {1, 3, 5, -1, -3};
  Kvr16s dst[5];
  ASSERT_EQ(kvrStatusOk, kvrsConv_16s_Sfs(odd, 5, one, 1, dst, 1));
  EXPECT_EQ((std::vector<Kvr16s>{0, 2, 2, 0, -2}), std::vector<Kvr16s>(dst, dst + 5));
}

// A sample that is no number meets its own products alone where they are computed one by one.
TEST(Convolution, InfiniteSamplesStayWhereTheyAre) {
  Random random(4);
  for (int len1 : {5, 40, 300, 3000}) {
    for (int len2 : {5, 40, 63}) {
      for (const bool inLonger : {false, true}) {
        auto a = wholeNumbers<Kvr32f>(random, len1, 7), b = wholeNumbers<Kvr32f>(random, len2, 7);
        for (Kvr32f& v : a) v = v == 0 ? 1 : v;
        for (Kvr32f& v : b) v = v == 0 ? 1 : v;
        auto& with = inLonger ? a : b;
        const size_t at = random.below(static_cast<uint32_t>(with.size()));
        with[at] = std::numeric_limits<Kvr32f>::infinity();
        const size_t others = inLonger ? b.size() : a.size();
        std::vector<Kvr32f> dst(a.size() + b.size() - 1);
        ASSERT_EQ(kvrStatusOk, conv(a.data(), len1, b.data(), len2, dst.data()));
        for (size_t n = 0; n < dst.size(); ++n) {
          ASSERT_EQ(n < at || n >= at + others, static_cast<bool>(std::isfinite(dst[n])))
              << len1 << ", " << len2 << ": " << n << " with the sample at " << at;
        }
      }
    }
  }
}

template <class T>
void sameBytesOnThreads(int len1, int len2) {
  Random random(5);
  const auto a = noise<T>(random, len1), b = noise<T>(random, len2);
  std::vector<T> want(a.size() + b.size() - 1), got(want.size());
  for (int threads : {1, 2, 3, 8, 0, INT_MIN}) {
    const ThreadCount count(threads);
    auto& dst = threads == 1 ? want : got;
    ASSERT_EQ(kvrStatusOk, conv(a.data(), len1, b.data(), len2, dst.data(), 20));
    if (threads != 1) {
      ASSERT_EQ(0, memcmp(want.data(), got.data(), want.size() * sizeof(T))) << threads;
    }
  }
}

TEST(Convolution, NoResultDependsOnThreads) {
  sameBytesOnThreads<Kvr32f>(300001, 100);
  sameBytesOnThreads<Kvr32f>(1000, 150000);
  sameBytesOnThreads<Kvr64f>(150001, 300);
  sameBytesOnThreads<Kvr16s>(200001, 64);
}

template <class T>
void failingMemory(int len1, int len2, int allocations) {
  Random random(6);
  EdgeArray<T> src1(noise<T>(random, len1), random), src2(noise<T>(random, len2), random),
      dst(static_cast<size_t>(len1 + len2 - 1), random);
  {
    const FailingAllocator failing(1);
    if (allocations > 0) {
      EXPECT_EQ(kvrStatusOutOfMemory, conv<T>(src1, len1, src2, len2, dst));
      EXPECT_TRUE(dst.untouched());
    }
  }
  EXPECT_EQ(allocations, countAllocationsWithFailures([&] { return conv<T>(src1, len1, src2, len2, dst); },
                                                      kvrStatusOutOfMemory));
}

TEST(Convolution, OneBlockOfMemoryAtMost) {
  failingMemory<Kvr32f>(5000, 63, 0);
  failingMemory<Kvr32f>(1000, 500, 1);
  failingMemory<Kvr32f>(9000, 64, 1);
  failingMemory<Kvr64f>(256, 256, 0);
  failingMemory<Kvr64f>(257, 256, 1);
  failingMemory<Kvr16s>(9000, 63, 0);
  failingMemory<Kvr16s>(100, 9000, 1);
  const ThreadCount count(8);
  failingMemory<Kvr32f>(200000, 200, 1);
}

TEST(Convolution, TooLongForAnyTransform) {
  Kvr32f x[4] = {}, dst[4] = {5, 5, 5, 5};
  const KvrStatus status = kvrsConv_32f(x, INT_MAX, x, INT_MAX, dst);
  EXPECT_EQ(sizeof(size_t) == 4 ? kvrStatusOutOfMemory : kvrStatusBadFftOrder, status);
  Kvr64f y[4] = {}, dst2[4] = {};
  EXPECT_GT(0, kvrsConv_64f(y, INT_MAX, y, INT_MAX, dst2));
  EXPECT_EQ(5, dst[0]);
}

// ---- Biased.

std::vector<long double> biased(const std::vector<Kvr32f>& a, const std::vector<Kvr32f>& b, int dstLen,
                                int bias) {
  std::vector<long double> want(static_cast<size_t>(dstLen));
  for (int n = 0; n < dstLen; ++n) {
    for (int k = 0; k < static_cast<int>(a.size()); ++k) {
      const int64_t at = int64_t{n} + bias - k;
      if (at >= 0 && at < static_cast<int64_t>(b.size())) {
        want[static_cast<size_t>(n)] +=
            static_cast<long double>(a[static_cast<size_t>(k)]) * b[static_cast<size_t>(at)];
      }
    }
  }
  return want;
}

void checkBiased(Random& random, int len1, int len2, int dstLen, int bias) {
  const std::string what = std::to_string(len1) + ", " + std::to_string(len2) + ", " +
                           std::to_string(dstLen) + ", bias " + std::to_string(bias);
  const auto a = wholeNumbers<Kvr32f>(random, len1, 15), b = wholeNumbers<Kvr32f>(random, len2, 15);
  EdgeArray<Kvr32f> src1(a, random), src2(b, random), dst(static_cast<size_t>(dstLen), random);
  const auto origin =
      reinterpret_cast<uintptr_t>(static_cast<Kvr32f*>(src2)) + static_cast<uintptr_t>(bias) * sizeof(Kvr32f);
  ASSERT_EQ(kvrStatusOk,
            kvrsConvBiased_32f(src1, len1, reinterpret_cast<const Kvr32f*>(origin), len2, dst, dstLen, bias))
      << what;
  ASSERT_TRUE(src1.holds(a) && src2.holds(b) && src1.intact() && src2.intact() && dst.intact()) << what;
  const auto want = biased(a, b, dstLen, bias);
  for (size_t n = 0; n < want.size(); ++n) ASSERT_EQ(want[n], dst[n]) << what << ": " << n;
}

TEST(ConvBiased, SizesOfSpeech) {
  const int sizes[][4] = {{4, 45, 41, 4},    {11, 50, 40, 10}, {16, 56, 40, 16}, {31, 70, 40, 30},
                          {31, 110, 80, 30}, {40, 40, 40, 0},  {60, 60, 60, 0}};
  Random random;
  for (const auto& [len1, len2, dstLen, bias] : sizes) {
    for (int turn = 0; turn < 8; ++turn) checkBiased(random, len1, len2, dstLen, bias);
    // Their neighbours.
    checkBiased(random, len1, len2, dstLen, bias + 1);
    checkBiased(random, len1, len2 - 1, dstLen, bias);
    checkBiased(random, len1 + 1, len2, dstLen, bias);
    checkBiased(random, len1, len2, dstLen + 1, bias);
  }
}

TEST(ConvBiased, Triangles) {
  Random random(2);
  for (int len = 1; len <= 170; ++len) checkBiased(random, len, len, len, 0);
}

TEST(ConvBiased, AllWindows) {
  Random random(3);
  for (int turn = 0; turn < 600; ++turn) {
    const int len1 = 1 + static_cast<int>(random.below(60)), len2 = 1 + static_cast<int>(random.below(90)),
              dstLen = 1 + static_cast<int>(random.below(100)),
              bias = static_cast<int>(random.below(200)) - 110;
    checkBiased(random, len1, len2, dstLen, bias);
    if (HasFatalFailure()) return;
  }
  checkBiased(random, 3000, 2000, 2500, 100);
  checkBiased(random, 100, 5000, 4000, 150);
}

TEST(ConvBiased, NoElementInReach) {
  const Kvr32f a[2] = {1, 2}, b[3] = {1, 2, 3};
  for (int bias : {INT_MIN, -100000, -20, 20, 100000, INT_MAX}) {
    Kvr32f dst[10];
    std::fill(dst, dst + 10, 9.0f);
    ASSERT_EQ(kvrStatusOk, kvrsConvBiased_32f(a, 2, b, 3, dst, 10, bias));
    EXPECT_TRUE(std::all_of(dst, dst + 10, [](Kvr32f v) { return v == 0; })) << bias;
  }
}

// ---- Cyclic.

TEST(ConvCyclic, Singles) {
  Random random;
  for (int turn = 0; turn < 200; ++turn) {
    const auto x = wholeNumbers<Kvr32f>(random, 8, 1000), h = wholeNumbers<Kvr32f>(random, 8, 1000);
    std::vector<Kvr32f> want(8);
    for (size_t k = 0; k < 8; ++k) {
      for (size_t j = 0; j < 8; ++j) want[k] += x[j] * h[(k + 8 - j) % 8];
    }
    EdgeArray<Kvr32f> a(x, random), b(h, random), y(size_t{8}, random);
    ASSERT_EQ(kvrStatusOk, kvrsConvCyclic8x8_32f(a, b, y));
    ASSERT_TRUE(y.holds(want) && y.intact() && a.holds(x) && b.holds(h));
    // In place of either source.
    EdgeArray<Kvr32f> c(x, random);
    ASSERT_EQ(kvrStatusOk, kvrsConvCyclic8x8_32f(c, b, c));
    ASSERT_EQ(kvrStatusOk, kvrsConvCyclic8x8_32f(a, b, b));
    ASSERT_TRUE(c.holds(want) && b.holds(want) && b.intact() && c.intact());
  }
}

TEST(ConvCyclic, RealAndComplex) {
  Random random;
  for (int turn = 0; turn < 200; ++turn) {
    const auto x = wholeNumbers<Kvr32f>(random, 4, 1000);
    const auto h = wholeNumbers<Kvr32fc>(random, 4, 1000);
    std::vector<Kvr32fc> want(4);
    for (size_t k = 0; k < 4; ++k) {
      for (size_t j = 0; j < 4; ++j) {
        want[k].re += x[j] * h[(k + 4 - j) % 4].re;
        want[k].im += x[j] * h[(k + 4 - j) % 4].im;
      }
    }
    EdgeArray<Kvr32f> a(x, random);
    EdgeArray<Kvr32fc> b(h, random), y(size_t{4}, random);
    ASSERT_EQ(kvrStatusOk, kvrsConvCyclic4x4_32f32fc(a, b, y));
    ASSERT_TRUE(y.holds(want) && y.intact() && a.holds(x) && b.holds(h));
    ASSERT_EQ(kvrStatusOk, kvrsConvCyclic4x4_32f32fc(a, b, b));
    ASSERT_TRUE(b.holds(want) && b.intact());
  }
}

// The rule for sums modulo 2^32.
Kvr16s scaled(int64_t sum, int scaleFactor) {
  sum = static_cast<int32_t>(static_cast<uint32_t>(sum));
  const long double exact = std::ldexp(static_cast<long double>(sum), -std::clamp(scaleFactor, -100, 100));
  return static_cast<Kvr16s>(std::max(-32768.0L, std::min(32767.0L, std::nearbyint(exact))));
}

TEST(ConvCyclic, Words) {
  Random random;
  for (int scaleFactor :
       {0, 1, -1, 2, 5, 12, 15, 16, 17, 30, 31, 32, 33, 40, -2, -15, -16, -31, -32, -40, INT_MAX, INT_MIN}) {
    for (int turn = 0; turn < 60; ++turn) {
      auto x = noise<Kvr16s>(random, 8), h = noise<Kvr16s>(random, 8);
      if (turn % 3 == 0) x = wholeNumbers<Kvr16s>(random, 8, 20), h = wholeNumbers<Kvr16s>(random, 8, 20);
      if (turn == 1) x.assign(8, -32768), h.assign(8, -32768);
      std::vector<Kvr16s> want(8);
      for (size_t k = 0; k < 8; ++k) {
        int64_t sum = 0;
        for (size_t j = 0; j < 8; ++j) sum += int64_t{x[j]} * h[(k + 8 - j) % 8];
        want[k] = scaled(sum, scaleFactor);
      }
      EdgeArray<Kvr16s> a(x, random), b(h, random), y(size_t{8}, random);
      ASSERT_EQ(kvrStatusOk, kvrsConvCyclic8x8_16s_Sfs(a, b, y, scaleFactor));
      ASSERT_TRUE(y.holds(want) && y.intact()) << scaleFactor;
      ASSERT_EQ(kvrStatusOk, kvrsConvCyclic8x8_16s_Sfs(a, b, a, scaleFactor));
      ASSERT_TRUE(a.holds(want) && a.intact() && b.holds(h)) << scaleFactor;
    }
  }
}

}  // namespace
