// SPDX-License-Identifier: MIT
#include "kvrs/correlation.h"

#include <algorithm>
#include <climits>

#include "tests/filters/sliding_oracle.h"

using namespace kvrs::test;

namespace {

enum class Form { plain, normA, normB };

template <class T>
KvrStatus cross(const T* src1, int len1, const T* src2, int len2, T* dst, int dstLen, int lowLag,
                int scaleFactor) {
  if constexpr (std::is_same_v<T, Kvr32f>)
    return kvrsCrossCorr_32f(src1, len1, src2, len2, dst, dstLen, lowLag);
  if constexpr (std::is_same_v<T, Kvr64f>)
    return kvrsCrossCorr_64f(src1, len1, src2, len2, dst, dstLen, lowLag);
  if constexpr (std::is_same_v<T, Kvr32fc>)
    return kvrsCrossCorr_32fc(src1, len1, src2, len2, dst, dstLen, lowLag);
  if constexpr (std::is_same_v<T, Kvr64fc>)
    return kvrsCrossCorr_64fc(src1, len1, src2, len2, dst, dstLen, lowLag);
  if constexpr (std::is_same_v<T, Kvr16s>) {
    return kvrsCrossCorr_16s_Sfs(src1, len1, src2, len2, dst, dstLen, lowLag, scaleFactor);
  }
}

template <class T>
KvrStatus autoCorr(Form form, const T* src, int srcLen, T* dst, int dstLen, int scaleFactor) {
  const auto pick = [=](auto plain, auto normA, auto normB) {
    return form == Form::plain ? plain : form == Form::normA ? normA : normB;
  };
  if constexpr (std::is_same_v<T, Kvr16s>) {
    return pick(kvrsAutoCorr_16s_Sfs, kvrsAutoCorr_NormA_16s_Sfs, kvrsAutoCorr_NormB_16s_Sfs)(
        src, srcLen, dst, dstLen, scaleFactor);
  } else {
    if constexpr (std::is_same_v<T, Kvr32f>) {
      return pick(kvrsAutoCorr_32f, kvrsAutoCorr_NormA_32f, kvrsAutoCorr_NormB_32f)(src, srcLen, dst, dstLen);
    }
    if constexpr (std::is_same_v<T, Kvr64f>) {
      return pick(kvrsAutoCorr_64f, kvrsAutoCorr_NormA_64f, kvrsAutoCorr_NormB_64f)(src, srcLen, dst, dstLen);
    }
    if constexpr (std::is_same_v<T, Kvr32fc>) {
      return pick(kvrsAutoCorr_32fc, kvrsAutoCorr_NormA_32fc, kvrsAutoCorr_NormB_32fc)(src, srcLen, dst,
                                                                                       dstLen);
    }
    if constexpr (std::is_same_v<T, Kvr64fc>) {
      return pick(kvrsAutoCorr_64fc, kvrsAutoCorr_NormA_64fc, kvrsAutoCorr_NormB_64fc)(src, srcLen, dst,
                                                                                       dstLen);
    }
  }
}

struct Sum {
  Wide value{};
  long double magnitude = 0;  // of all products
};
template <class T>
Sum definition(const std::vector<T>& a, const std::vector<T>& b, int64_t lag) {
  Sum sum;
  const auto len1 = static_cast<int64_t>(a.size()), len2 = static_cast<int64_t>(b.size());
  long double re = 0, im = 0;
  for (int64_t k = std::max(int64_t{0}, -lag); k < len1 && k + lag < len2; ++k) {
    const Wide x = wide(a[static_cast<size_t>(k)]), y = wide(b[static_cast<size_t>(k + lag)]);
    re += x.real() * y.real() + x.imag() * y.imag();
    im += x.real() * y.imag() - x.imag() * y.real();
    sum.magnitude +=
        (std::fabs(x.real()) + std::fabs(x.imag())) * (std::fabs(y.real()) + std::fabs(y.imag()));
  }
  sum.value = Wide(re, im);
  return sum;
}

template <class T>
long double norm(const std::vector<T>& x) {
  long double sum = 0;
  for (const T v : x) sum += std::norm(wide(v));
  return std::sqrt(sum);
}

// Of many lags those near the ends and some between.
bool isTested(size_t n, size_t count) {
  return count < 300 || n < 60 || n + 60 >= count || n % 23 == 0;
}

enum class Data { whole, noise };

template <class T>
std::vector<T> signal(Random& random, int len, Data data) {
  return data == Data::whole ? wholeNumbers<T>(random, len, 7) : kvrs::test::noise<T>(random, len);
}

// Compares a result with a sum, which the normalisation divides by `divisor`.
template <class T>
void expect(T got, Sum sum, bool isByTransforms, Data data, long double norms, size_t products,
            long double divisor, int scaleFactor, const std::string& what) {
  const bool isWhole = data == Data::whole;
  long double error = isByTransforms
                          ? 8 * epsilonOf<T>() * norms
                          : epsilonOf<T>() * sum.magnitude * std::sqrt(static_cast<long double>(products));
  if (isWhole) error = isByTransforms ? std::min(error, 0.01L) : 0;
  const Wide want = sum.value / divisor;
  if constexpr (std::is_same_v<T, Kvr16s>) {
    if (isWhole) error = 0.01L;  // exact but for the normalisation
    ASSERT_TRUE(isRounded(got, want.real(), scaleFactor, error / divisor))
        << what << ": " << got << " for " << want.real();
  } else {
    error = error / divisor + (divisor != 1 ? 2 * epsilonOf<T>() * std::abs(want) : 0);
    const Wide difference = wide(got) - want;
    ASSERT_LE(std::max(std::fabs(difference.real()), std::fabs(difference.imag())), error)
        << what << ": " << wide(got) << " for " << want;
  }
}

bool crossByTransforms(int limit, int64_t lags, int len1, int len2) {
  return static_cast<float>(lags) * static_cast<float>(std::min(len1, len2)) /
             static_cast<float>(std::max(len1, len2)) >=
         static_cast<float>(limit);
}

// What a type's gates are: lags from which the FFT takes over.
template <class T>
constexpr int kCrossGate = std::is_same_v<T, Kvr64f> || std::is_same_v<T, Kvr64fc> ? 512
                           : std::is_same_v<T, Kvr32fc>                            ? 256
                                                                                   : 384;
template <class T>
constexpr int kAutoGate = std::is_same_v<T, Kvr32fc>   ? 152
                          : std::is_same_v<T, Kvr64fc> ? 368
                                                       : 856;

template <class T>
void checkCross(Random& random, int len1, int len2, int dstLen, int lowLag, Data data, int scaleFactor = 0) {
  const std::string what = std::to_string(len1) + " and " + std::to_string(len2) + " elements, " +
                           std::to_string(dstLen) + " lags from " + std::to_string(lowLag);
  const auto a = signal<T>(random, len1, data), b = signal<T>(random, len2, data);
  EdgeArray<T> src1(a, random), src2(b, random), dst(static_cast<size_t>(dstLen), random);
  const int before = liveBlocks();
  ASSERT_EQ(kvrStatusOk, cross<T>(src1, len1, src2, len2, dst, dstLen, lowLag, scaleFactor)) << what;
  ASSERT_EQ(before, liveBlocks()) << what;
  ASSERT_TRUE(src1.holds(a) && src2.holds(b)) << what;
  ASSERT_TRUE(src1.intact() && src2.intact() && dst.intact()) << what;
  const int64_t first = std::max(int64_t{lowLag}, int64_t{1} - len1),
                end = std::min(int64_t{lowLag} + dstLen, int64_t{len2});
  const bool isByTransforms = end > first && crossByTransforms(kCrossGate<T>, end - first, len1, len2);
  const long double norms = norm(a) * norm(b);
  for (size_t n = 0; n < static_cast<size_t>(dstLen); ++n) {
    if (!isTested(n, static_cast<size_t>(dstLen))) continue;
    const int64_t lag = lowLag + static_cast<int64_t>(n);
    const bool isThere = lag >= first && lag < end;
    expect(dst[n], definition(a, b, lag), isByTransforms && isThere, data, norms,
           static_cast<size_t>(std::min(len1, len2)), 1, scaleFactor, what + ", " + std::to_string(n));
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class T>
void sweepCross() {
  Random random;
  // All lags and some beyond.
  for (int len1 : {1, 2, 3, 7, 8, 15, 16, 17, 31, 33, 64, 65, 100, 150}) {
    for (int len2 : {1, 2, 5, 8, 16, 20, 32, 33, 63, 65, 128, 149}) {
      checkCross<T>(random, len1, len2, len1 + len2 + 3, -len1 - 1, Data::whole);
      checkCross<T>(random, len1, len2, 1 + static_cast<int>(random.below(30)),
                    static_cast<int>(random.below(static_cast<uint32_t>(len1 + len2))) - len1, Data::noise,
                    17);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
  // Few lags of long signals: pieces of taps.
  for (int dstLen : {1, 2, 3, 5, 8, 13, 40, 100}) {
    checkCross<T>(random, 3000, 2900, dstLen, -7, Data::whole, 4);
    checkCross<T>(random, 2500, 5000, dstLen, 60, Data::noise, 20);
    checkCross<T>(random, 5000, 600, dstLen, -1000, Data::noise, 20);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(CrossCorr, Singles) {
  sweepCross<Kvr32f>();
}
TEST(CrossCorr, Doubles) {
  sweepCross<Kvr64f>();
}
TEST(CrossCorr, ComplexSingles) {
  sweepCross<Kvr32fc>();
}
TEST(CrossCorr, ComplexDoubles) {
  sweepCross<Kvr64fc>();
}
TEST(CrossCorr, Words) {
  sweepCross<Kvr16s>();
}

// On both sides of the gate, either signal the longer one; one transform, blocks of inputs, pieces of taps.
template <class T>
void gatesOfCross() {
  Random random(2);
  constexpr int kGate = kCrossGate<T>;
  for (const Data data : {Data::whole, Data::noise}) {
    for (int more : {-1, 0, 1}) {
      const int lags = kGate + more;
      checkCross<T>(random, 600, 600, lags, -lags / 2, data, 20);
      checkCross<T>(random, 600, 600, lags, -599, data, 20);
      checkCross<T>(random, 600, 600, lags + 50, 600 - lags, data,
                    20);  // 50 lags without products do not count
      checkCross<T>(random, 600, 1200, 2 * lags, -200, data, 20);
      checkCross<T>(random, 1200, 600, 2 * lags, -900, data, 20);
    }
    checkCross<T>(random, 500, 1000, 800, -10, data, 20);
    checkCross<T>(random, 500, 2000, 800, -10, data, 20);
    checkCross<T>(random, 300, 6000, 6299, -299, data, 20);
    checkCross<T>(random, 6000, 300, 6299, -5999, data, 20);
    checkCross<T>(random, 300, 899, 1198, -299, data, 20);
    checkCross<T>(random, 900, 300, 1199, -899, data, 20);
    checkCross<T>(random, 9000, 9000, 520, -100, data, 20);
    checkCross<T>(random, 9000, 7000, 700, -100, data, 20);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(CrossCorr, SinglesAtTheGate) {
  gatesOfCross<Kvr32f>();
}
TEST(CrossCorr, DoublesAtTheGate) {
  gatesOfCross<Kvr64f>();
}
TEST(CrossCorr, ComplexSinglesAtTheGate) {
  gatesOfCross<Kvr32fc>();
}
TEST(CrossCorr, ComplexDoublesAtTheGate) {
  gatesOfCross<Kvr64fc>();
}
TEST(CrossCorr, WordsAtTheGate) {
  gatesOfCross<Kvr16s>();
}

// Lags far outside have no products, nor has anything around the few that do.
template <class T>
void lagsFarOutside() {
  Random random(3);
  for (int lowLag :
       {INT_MIN, INT_MIN + 1, -2000000000, -100, -39, 20, 21, 100, 2000000000, INT_MAX - 30, INT_MAX}) {
    checkCross<T>(random, 10, 20, 30, lowLag, Data::whole);
  }
  checkCross<T>(random, 10, 20, 3000, -1500, Data::whole);
  checkCross<T>(random, 900, 800, 6000, -3000, Data::whole, 3);
  checkCross<T>(random, 800, 900, 3000, -799, Data::whole, 3);
  checkCross<T>(random, 800, 900, 3000, -3000, Data::whole, 3);
}

TEST(CrossCorr, LagsFarOutside) {
  lagsFarOutside<Kvr32f>();
  lagsFarOutside<Kvr64f>();
  lagsFarOutside<Kvr32fc>();
  lagsFarOutside<Kvr64fc>();
  lagsFarOutside<Kvr16s>();
}

void checkExact(Random& random, int len1, int len2, int dstLen, int lowLag, int extremes) {
  const std::string what = std::to_string(len1) + " and " + std::to_string(len2) + " elements, " +
                           std::to_string(dstLen) + " lags from " + std::to_string(lowLag);
  auto a = noise<Kvr16s>(random, len1), b = noise<Kvr16s>(random, len2);
  if (extremes > 0) {
    std::fill(a.begin(), a.end(), extremes == 2 ? 32767 : -32768);
    std::fill(b.begin(), b.end(), extremes == 3 ? 32767 : -32768);
  }
  EdgeArray<Kvr16s> src1(a, random), src2(b, random);
  EdgeArray<Kvr64s> dst(static_cast<size_t>(dstLen), random);
  ASSERT_EQ(kvrStatusOk, kvrsCrossCorr_16s64s(src1, len1, src2, len2, dst, dstLen, lowLag)) << what;
  ASSERT_TRUE(src1.holds(a) && src2.holds(b) && src1.intact() && src2.intact() && dst.intact()) << what;
  for (int n = 0; n < dstLen; ++n) {
    int64_t want = 0;
    const int64_t lag = int64_t{lowLag} + n;
    for (int64_t k = std::max(int64_t{0}, -lag); k < len1 && k + lag < len2; ++k) {
      want += int64_t{a[static_cast<size_t>(k)]} * b[static_cast<size_t>(k + lag)];
    }
    ASSERT_EQ(want, dst[static_cast<size_t>(n)]) << what << ": " << n;
  }
}

TEST(CrossCorr, ExactSums) {
  Random random(4);
  for (int extremes : {0, 1, 2, 3}) {
    for (int len1 : {1, 2, 3, 16, 33, 64, 255, 256, 257, 496, 497, 1000}) {
      for (int len2 : {1, 2, 5, 17, 64, 100, 256, 300, 992, 1100}) {
        checkExact(random, len1, len2, 40, -len1 - 1, extremes);
        checkExact(random, len1, len2, 70, len2 - 60, extremes);
        checkExact(random, len1, len2, 1 + static_cast<int>(random.below(700)), -20, extremes);
        if (HasFatalFailure()) return;
      }
    }
    for (int lowLag : {INT_MIN, -101, 100, INT_MAX}) checkExact(random, 100, 100, 20, lowLag, extremes);
  }
  const int before = liveBlocks();
  const FailingAllocator failing(1);
  checkExact(random, 2000, 2000, 1500, -700, 0);
  EXPECT_EQ(before, liveBlocks());
}

template <class T>
void checkAuto(Random& random, Form form, int srcLen, int dstLen, Data data, int scaleFactor = 0) {
  const std::string what = std::to_string(srcLen) + " elements, " + std::to_string(dstLen) + " lags, form " +
                           std::to_string(static_cast<int>(form));
  const auto a = signal<T>(random, srcLen, data);
  EdgeArray<T> src(a, random), dst(static_cast<size_t>(dstLen), random);
  const int before = liveBlocks();
  ASSERT_EQ(kvrStatusOk, autoCorr<T>(form, src, srcLen, dst, dstLen, scaleFactor)) << what;
  ASSERT_EQ(before, liveBlocks()) << what;
  ASSERT_TRUE(src.holds(a) && src.intact() && dst.intact()) << what;
  const bool isByTransforms = std::min(srcLen, dstLen) >= kAutoGate<T>;
  const long double norms = norm(a) * norm(a);
  for (int n = 0; n < dstLen; ++n) {
    if (!isTested(static_cast<size_t>(n), static_cast<size_t>(dstLen))) continue;
    const long double divisor = n >= srcLen || form == Form::plain ? 1
                                : form == Form::normA              ? srcLen
                                                                   : srcLen - n;
    expect(dst[static_cast<size_t>(n)], definition(a, a, n), isByTransforms && n < srcLen, data, norms,
           static_cast<size_t>(srcLen), divisor, scaleFactor, what + ", " + std::to_string(n));
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class T>
void sweepAuto() {
  Random random(5);
  constexpr int kGate = kAutoGate<T>;
  for (const Form form : {Form::plain, Form::normA, Form::normB}) {
    for (int srcLen = 1; srcLen <= 70; ++srcLen) {
      checkAuto<T>(random, form, srcLen, srcLen + 2, Data::whole);
      checkAuto<T>(random, form, srcLen, 1 + srcLen / 3, Data::noise, 18);
    }
    for (int srcLen : {100, 257, 1030, 3000}) {
      for (int dstLen : {1, 2, 5, 16, 40, 101, 150}) {
        checkAuto<T>(random, form, srcLen, dstLen, Data::whole, 4);
        checkAuto<T>(random, form, srcLen, dstLen, Data::noise, 20);
      }
    }
    for (int lags : {kGate - 1, kGate, kGate + 1}) {
      checkAuto<T>(random, form, lags, lags + 100, Data::whole, 4);
      checkAuto<T>(random, form, 1500, lags, Data::whole, 4);
      checkAuto<T>(random, form, 1500, lags, Data::noise, 20);
    }
    checkAuto<T>(random, form, 2048, 2100, Data::noise, 20);
    checkAuto<T>(random, form, 20000, 900, Data::noise, 24);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(AutoCorr, Singles) {
  sweepAuto<Kvr32f>();
}
TEST(AutoCorr, Doubles) {
  sweepAuto<Kvr64f>();
}
TEST(AutoCorr, ComplexSingles) {
  sweepAuto<Kvr32fc>();
}
TEST(AutoCorr, ComplexDoubles) {
  sweepAuto<Kvr64fc>();
}
TEST(AutoCorr, Words) {
  sweepAuto<Kvr16s>();
}

TEST(AutoCorr, ScaleFactors) {
  Random random(6);
  for (const Form form : {Form::plain, Form::normA, Form::normB}) {
    for (int scaleFactor = -40; scaleFactor <= 40; ++scaleFactor) {
      checkAuto<Kvr16s>(random, form, 20, 25, Data::whole, scaleFactor);
      checkAuto<Kvr16s>(random, form, 900, 900, Data::whole, scaleFactor > -3 ? scaleFactor : 0);
    }
  }
  // The normalised sum is rounded once: 3 / 2 to 2, 5 / 2 to 2.
  const Kvr16s a[] = {1, 1, 1, 0}, b[] = {1, 2};
  Kvr16s dst[4];
  ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_16s_Sfs(a, 4, dst, 4, 1));
  EXPECT_EQ((std::vector<Kvr16s>{2, 1, 0, 0}), std::vector<Kvr16s>(dst, dst + 4));
  ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_NormA_16s_Sfs(b, 2, dst, 1, 0));
  EXPECT_EQ(2, dst[0]);
  // Nothing saturates before the end: the sum of squares is 2^45.
  const std::vector<Kvr16s> loud(1 << 15, -32768);
  ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_16s_Sfs(loud.data(), 1 << 15, dst, 2, 31));
  EXPECT_EQ(16384, dst[0]);
  ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_NormA_16s_Sfs(loud.data(), 1 << 15, dst, 2, 16));
  EXPECT_EQ(16384, dst[0]);
  ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_16s_Sfs(loud.data(), 1 << 15, dst, 2, 30));
  EXPECT_EQ(32767, dst[0]);
}

// A sample that is no number meets its own products alone where they are computed one by one.
TEST(AutoCorr, InfiniteSamplesStayWhereTheyAre) {
  Random random(7);
  for (int srcLen : {5, 40, 300, 3000}) {
    auto x = wholeNumbers<Kvr32f>(random, srcLen, 7);
    for (Kvr32f& v : x) v = 1 + std::fabs(v);
    x[1] = std::numeric_limits<Kvr32f>::infinity();
    std::vector<Kvr32f> dst(static_cast<size_t>(std::min(srcLen, 800)));
    ASSERT_EQ(kvrStatusOk, kvrsAutoCorr_32f(x.data(), srcLen, dst.data(), static_cast<int>(dst.size())));
    // The last lag of all has the first and the last sample only.
    for (size_t n = 0; n < dst.size(); ++n) {
      EXPECT_EQ(n == x.size() - 1, static_cast<bool>(std::isfinite(dst[n]))) << srcLen << ": " << n;
      EXPECT_TRUE(n + 1 == x.size() || !std::isnan(dst[n])) << srcLen << ": " << n;
    }
  }
}

// Memory is asked for once where transforms take over, and never before; without it nothing is written.
template <class T>
void failingMemory() {
  Random random(8);
  constexpr int kLags = kAutoGate<T>, kLen = 1000, kCross = kCrossGate<T>;
  const auto x = noise<T>(random, kLen);
  EdgeArray<T> dst(size_t{1100}, random);
  for (const Form form : {Form::plain, Form::normA, Form::normB}) {
    const auto call = [&](int lags) { return autoCorr<T>(form, x.data(), kLen, dst, lags, 10); };
    {
      const FailingAllocator failing(1);
      ASSERT_EQ(kvrStatusOutOfMemory, call(1100));
      ASSERT_TRUE(form != Form::plain || dst.untouched());
    }
    EXPECT_EQ(0, countAllocationsWithFailures([&] { return call(kLags - 1); }, kvrStatusOutOfMemory));
    EXPECT_EQ(1, countAllocationsWithFailures([&] { return call(kLags); }, kvrStatusOutOfMemory));
  }
  EdgeArray<T> dst2(size_t{1100}, random);
  const auto call = [&](int lags) { return cross<T>(x.data(), kLen, x.data(), kLen, dst2, lags, -20, 10); };
  {
    const FailingAllocator failing(1);
    ASSERT_EQ(kvrStatusOutOfMemory, call(1100));
    ASSERT_TRUE(dst2.untouched());
  }
  EXPECT_EQ(0, countAllocationsWithFailures([&] { return call(kCross - 1); }, kvrStatusOutOfMemory));
  EXPECT_EQ(1, countAllocationsWithFailures([&] { return call(kCross); }, kvrStatusOutOfMemory));
}

TEST(Correlation, OneBlockOfMemoryAtMost) {
  failingMemory<Kvr32f>();
  failingMemory<Kvr64f>();
  failingMemory<Kvr32fc>();
  failingMemory<Kvr64fc>();
  failingMemory<Kvr16s>();
}

TEST(Correlation, TooLongForAnyTransform) {
  Kvr32f x[4] = {}, dst[4] = {5, 5, 5, 5};
  EXPECT_GT(0, kvrsCrossCorr_32f(x, INT_MAX, x, INT_MAX, dst, INT_MAX, -100));
  EXPECT_GT(0, kvrsAutoCorr_32f(x, INT_MAX, dst, INT_MAX));
  EXPECT_EQ(5, dst[0]);
}

}  // namespace
