// SPDX-License-Identifier: MIT
#include "kvrs/deviation.h"

#include "kvrs/sum.h"
#include "tests/support/reduction.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

struct Moments {
  long double n, sum = 0, squares = 0;

  template <class T>
  Moments(const T* src, int len) : n(len) {
    for (int i = 0; i < len; ++i) {
      const long double x = get(src, static_cast<size_t>(i));
      sum += x;
      squares += x * x;
    }
  }
  long double deviation() const { return std::sqrt(std::max(0.0L, n * squares - sum * sum) / (n * (n - 1))); }
};

SweepOptions lengths() {
  SweepOptions options{.lengths = sweepLengths({32768, 65536})};
  std::erase(options.lengths, 1);
  return options;
}

// The formula of the contract on the exact sums of 16-bit elements.
double wordDeviation(const Kvr16s* src, int len) {
  const Moments m(src, len);
  const double n = len, a = static_cast<double>(m.sum), b = static_cast<double>(m.squares);
  return std::sqrt(std::max(0.0, n * b - a * a) / (n * (n - 1)));
}
double wordMean(const Kvr16s* src, int len) {
  return static_cast<double>(Moments(src, len).sum) / len;
}

template <class T>
struct Both {
  T mean, stdDev;
};
template <class T>
Both<T> wantBoth(const Kvr16s* src, int len, int scaleFactor) {
  return {scaledOracle<T>(wordMean(src, len), scaleFactor),
          scaledOracle<T>(wordDeviation(src, len), scaleFactor)};
}
template <class T>
auto sameBoth(int scaleFactor) {
  return [=](const Kvr16s* src, int len, Both<T> got) -> std::string {
    const Both<T> want = wantBoth<T>(src, len, scaleFactor);
    if (got.mean != want.mean) return "mean " + show(got.mean) + ", want " + show(want.mean);
    return got.stdDev == want.stdDev ? "" : "deviation " + show(got.stdDev) + ", want " + show(want.stdDev);
  };
}

TEST(Deviation, WordsAtAllLengths) {
  sweepReductionWith<Both<Kvr32s>, Kvr16s>(
      [](const Kvr16s* src, int len, Both<Kvr32s>* r) {
        return kvrsMeanStdDev_16s32s_Sfs(src, len, &r->mean, &r->stdDev, -6);
      },
      sameBoth<Kvr32s>(-6), anyValues(), lengths());
  sweepReduction<Kvr16s, Kvr16s>(
      [](const Kvr16s* src, int len, Kvr16s* s) { return kvrsStdDev_16s_Sfs(src, len, s, 1); },
      [](const Kvr16s* src, int len) { return scaledOracle<Kvr16s>(wordDeviation(src, len), 1); }, lengths());
}

TEST(Deviation, ScaleFactors) {
  Random random(5);
  for (int scaleFactor : kScaleFactors) {
    for (int len : {2, 3, 10, 700}) {
      std::vector<Kvr16s> src(static_cast<size_t>(len));
      for (auto& x : src) x = random.value<Kvr16s>();
      Both<Kvr16s> got16 = {}, alone16 = {};
      Both<Kvr32s> got32 = {}, alone32 = {};
      EXPECT_EQ(kvrStatusOk,
                kvrsMeanStdDev_16s_Sfs(src.data(), len, &got16.mean, &got16.stdDev, scaleFactor));
      EXPECT_EQ(kvrStatusOk,
                kvrsMeanStdDev_16s32s_Sfs(src.data(), len, &got32.mean, &got32.stdDev, scaleFactor));
      EXPECT_EQ(kvrStatusOk, kvrsStdDev_16s_Sfs(src.data(), len, &alone16.stdDev, scaleFactor));
      EXPECT_EQ(kvrStatusOk, kvrsStdDev_16s32s_Sfs(src.data(), len, &alone32.stdDev, scaleFactor));
      EXPECT_EQ("", sameBoth<Kvr16s>(scaleFactor)(src.data(), len, got16)) << scaleFactor;
      EXPECT_EQ("", sameBoth<Kvr32s>(scaleFactor)(src.data(), len, got32)) << scaleFactor;
      EXPECT_EQ(got16.stdDev, alone16.stdDev);
      EXPECT_EQ(got32.stdDev, alone32.stdDev);
    }
  }
}

TEST(Deviation, ExtremesFillTheLanes) {
  for (int len : {65536, 1 << 20, (1 << 21) + 3}) {
    std::vector<Kvr16s> src(static_cast<size_t>(len), -32768);
    Both<Kvr32s> got = {};
    EXPECT_EQ(kvrStatusOk, kvrsMeanStdDev_16s32s_Sfs(src.data(), len, &got.mean, &got.stdDev, 0));
    EXPECT_EQ(-32768, got.mean);
    EXPECT_EQ(0, got.stdDev);
    for (size_t i = 1; i < src.size(); i += 2) src[i] = 32767;
    EXPECT_EQ(kvrStatusOk, kvrsMeanStdDev_16s32s_Sfs(src.data(), len, &got.mean, &got.stdDev, -10));
    EXPECT_EQ("", sameBoth<Kvr32s>(-10)(src.data(), len, got));
  }
}

// Of data around 0, where nothing cancels: the sums are right to a few units of their precision, and the deviation to half
// as many.
TEST(Deviation, Floats) {
  const auto near = [](long double bound) {
    return [=](auto src, int len, auto got) -> std::string {
      const long double want = Moments(src, len).deviation();
      return std::fabs(got - want) <= bound * (want + 1) ? "" : "got " + show(got) + ", want " + show(want);
    };
  };
  sweepReductionWith<Kvr64f, Kvr64f>(kvrsStdDev_64f, near(1e-13L), anyValues(), lengths());
  sweepReductionWith<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, int len, Kvr32f* s) { return kvrsStdDev_32f(src, len, s, kvrHintAccurate); },
      near(1.2e-7L), anyValues(), lengths());
  sweepReductionWith<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, int len, Kvr32f* s) { return kvrsStdDev_32f(src, len, s, kvrHintFast); },
      near(2e-5L), anyValues(), lengths());
}

// Far from 0 the accurate sums still hold.
TEST(Deviation, AccurateFarFromZero) {
  Random random(9);
  std::vector<Kvr32f> src(10007);
  for (auto& x : src) x = 1000 + static_cast<Kvr32f>(random.unit()) * 0.25f;
  const int len = static_cast<int>(src.size());
  Kvr32f got = 0;
  EXPECT_EQ(kvrStatusOk, kvrsStdDev_32f(src.data(), len, &got, kvrHintAccurate));
  long double mean = 0, square = 0;
  for (Kvr32f x : src) mean += x;
  mean /= len;
  for (Kvr32f x : src) square += (x - mean) * (x - mean);
  EXPECT_LE(ulps(got, std::sqrt(square / (len - 1))), 2);
}

TEST(Deviation, MeansAreThoseOfMean) {
  Random random(13);
  for (int len : {2, 17, 1000, 40001}) {
    std::vector<Kvr64f> wide(static_cast<size_t>(len));
    std::vector<Kvr32f> src(static_cast<size_t>(len));
    for (auto& x : wide) x = random.unit();
    for (auto& x : src) x = static_cast<Kvr32f>(random.unit());
    Kvr64f mean64 = 0, both64 = 0, dev64 = 0, alone64 = 0;
    kvrsMean_64f(wide.data(), len, &mean64);
    EXPECT_EQ(kvrStatusOk, kvrsMeanStdDev_64f(wide.data(), len, &both64, &dev64));
    kvrsStdDev_64f(wide.data(), len, &alone64);
    EXPECT_EQ(mean64, both64);
    EXPECT_EQ(alone64, dev64);
    for (KvrHintAlgorithm hint : {kvrHintFast, kvrHintAccurate, kvrHintNone}) {
      Kvr32f mean = 0, both = 0, dev = 0, alone = 0;
      kvrsMean_32f(src.data(), len, &mean, hint);
      EXPECT_EQ(kvrStatusOk, kvrsMeanStdDev_32f(src.data(), len, &both, &dev, hint));
      kvrsStdDev_32f(src.data(), len, &alone, hint);
      EXPECT_EQ(mean, both);
      EXPECT_EQ(alone, dev);
    }
  }
}

TEST(Deviation, OfEqualElementsIsZero) {
  for (int len : {2, 3, 7, 64, 1000, 100003}) {
    for (double value : {0.1, 3.7, -1e10, 1e-30, 0.0}) {
      const std::vector<Kvr64f> wide(static_cast<size_t>(len), value);
      const std::vector<Kvr32f> src(static_cast<size_t>(len), static_cast<Kvr32f>(value));
      Kvr64f dev64 = 1;
      Kvr32f fast = 1, accurate = 1;
      kvrsStdDev_64f(wide.data(), len, &dev64);
      kvrsStdDev_32f(src.data(), len, &fast, kvrHintFast);
      kvrsStdDev_32f(src.data(), len, &accurate, kvrHintAccurate);
      EXPECT_EQ(0.0, dev64) << value;
      EXPECT_EQ(0.0f, fast) << value;
      EXPECT_EQ(0.0f, accurate) << value;
    }
  }
}

TEST(Deviation, PassesNaNOn) {
  const Kvr64f src[] = {1, 2, NAN, 4};
  Kvr64f dev = 0;
  EXPECT_EQ(kvrStatusOk, kvrsStdDev_64f(src, 4, &dev));
  EXPECT_TRUE(std::isnan(dev));
}

TEST(Deviation, NeedsTwoElements) {
  const Kvr16s words[2] = {1, 2};
  const Kvr32f singles[2] = {1, 2};
  const Kvr64f doubles[2] = {1, 2};
  Kvr16s w[2] = {7, 7};
  Kvr32s l[2] = {7, 7};
  Kvr32f f[2] = {7, 7};
  Kvr64f d[2] = {7, 7};
  for (int len : {1, 0, -1}) {
    EXPECT_EQ(kvrStatusBadLength, kvrsStdDev_16s_Sfs(words, len, w, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsStdDev_16s32s_Sfs(words, len, l, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsStdDev_32f(singles, len, f, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsStdDev_64f(doubles, len, d));
    EXPECT_EQ(kvrStatusBadLength, kvrsMeanStdDev_16s_Sfs(words, len, w, w + 1, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsMeanStdDev_16s32s_Sfs(words, len, l, l + 1, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsMeanStdDev_32f(singles, len, f, f + 1, 0));
    EXPECT_EQ(kvrStatusBadLength, kvrsMeanStdDev_64f(doubles, len, d, d + 1));
  }
  EXPECT_EQ(7, w[0]);
  EXPECT_EQ(7, l[1]);
  EXPECT_EQ(7, f[0]);
  EXPECT_EQ(7, d[1]);
}

}  // namespace
