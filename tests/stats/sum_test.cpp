// SPDX-License-Identifier: MIT
#include "kvrs/sum.h"

#include <cfenv>

#include "tests/support/floats.h"
#include "tests/support/large.h"
#include "tests/support/reduction.h"

using namespace kvrs::test;

namespace {

// Blocks of 32,768 floats, and what sums in lanes of 32 bits hold of 16-bit elements.
SweepOptions lengths() {
  return {.lengths = sweepLengths({32768, 65536})};
}

template <class T>
int64_t exactSum(const T* src, int len) {
  int64_t sum = 0;
  for (int i = 0; i < len; ++i) sum += get(src, static_cast<size_t>(i));
  return sum;
}
template <class T>
Kvr64sc exactComplexSum(const T* src, int len) {
  Kvr64sc sum = {0, 0};
  for (int i = 0; i < len; ++i) {
    const T x = get(src, static_cast<size_t>(i));
    sum.re += x.re;
    sum.im += x.im;
  }
  return sum;
}

template <class D>
Kvr64sc scaledParts(Kvr64sc sum, int scaleFactor) {
  return {scaledOracle<D>(static_cast<long double>(sum.re), scaleFactor),
          scaledOracle<D>(static_cast<long double>(sum.im), scaleFactor)};
}

TEST(Sum, IntegersAtAllLengths) {
  sweepReduction<Kvr32s, Kvr16s>(
      [](const Kvr16s* src, int len, Kvr32s* sum) { return kvrsSum_16s32s_Sfs(src, len, sum, 0); },
      [](const Kvr16s* src, int len) { return static_cast<Kvr32s>(exactSum(src, len)); }, lengths());
  sweepReduction<Kvr16s, Kvr16s>(
      [](const Kvr16s* src, int len, Kvr16s* sum) { return kvrsSum_16s_Sfs(src, len, sum, 5); },
      [](const Kvr16s* src, int len) {
        return scaledOracle<Kvr16s>(static_cast<long double>(exactSum(src, len)), 5);
      });
  sweepReduction<Kvr32s, Kvr32s>(
      [](const Kvr32s* src, int len, Kvr32s* sum) { return kvrsSum_32s_Sfs(src, len, sum, 9); },
      [](const Kvr32s* src, int len) {
        return scaledOracle<Kvr32s>(static_cast<long double>(exactSum(src, len)), 9);
      },
      lengths());
  sweepReduction<Kvr32sc, Kvr16sc>(
      [](const Kvr16sc* src, int len, Kvr32sc* sum) { return kvrsSum_16sc32sc_Sfs(src, len, sum, 0); },
      [](const Kvr16sc* src, int len) {
        const Kvr64sc sum = exactComplexSum(src, len);
        return Kvr32sc{static_cast<Kvr32s>(sum.re), static_cast<Kvr32s>(sum.im)};
      },
      lengths());
  sweepReduction<Kvr16sc, Kvr16sc>(
      [](const Kvr16sc* src, int len, Kvr16sc* sum) { return kvrsSum_16sc_Sfs(src, len, sum, 4); },
      [](const Kvr16sc* src, int len) {
        const Kvr64sc want = scaledParts<Kvr16s>(exactComplexSum(src, len), 4);
        return Kvr16sc{static_cast<Kvr16s>(want.re), static_cast<Kvr16s>(want.im)};
      });
}

// All elements one value, the extremes among them, in lengths that fill every lane as far as it goes.
TEST(Sum, LanesHoldTheExtremes) {
  for (int len : {65535, 65536, 65537, 1 << 20, (1 << 21) + 5}) {
    for (int value : {-32768, 32767, -1}) {
      std::vector<Kvr16s> src(2 * static_cast<size_t>(len), static_cast<Kvr16s>(value));
      Kvr32s sum = 0;
      EXPECT_EQ(kvrStatusOk, kvrsSum_16s32s_Sfs(src.data(), len, &sum, 8));
      EXPECT_EQ(scaledOracle<Kvr32s>(static_cast<long double>(value) * len, 8), sum);
      Kvr32sc parts = {0, 0};
      EXPECT_EQ(kvrStatusOk,
                kvrsSum_16sc32sc_Sfs(reinterpret_cast<const Kvr16sc*>(src.data()), len, &parts, 8));
      EXPECT_EQ(sum, parts.re);
      EXPECT_EQ(sum, parts.im);
    }
    for (int64_t value : {int64_t{INT32_MIN}, int64_t{INT32_MAX}}) {
      const std::vector<Kvr32s> src(static_cast<size_t>(len), static_cast<Kvr32s>(value));
      Kvr32s sum = 0;
      EXPECT_EQ(kvrStatusOk, kvrsSum_32s_Sfs(src.data(), len, &sum, 24));
      EXPECT_EQ(scaledOracle<Kvr32s>(static_cast<long double>(value * len), 24), sum);
    }
  }
}

TEST(Sum, ScaleFactors) {
  Random random(7);
  for (int scaleFactor : kScaleFactors) {
    for (int len : {1, 2, 3, 40, 1000}) {
      for (int shift : {0, 10, 15, 31}) {
        std::vector<Kvr32s> wide(static_cast<size_t>(len));
        std::vector<Kvr16s> src(2 * static_cast<size_t>(len));
        for (auto& x : wide) x = random.value<Kvr32s>() >> shift;
        for (auto& x : src) x = static_cast<Kvr16s>(random.value<Kvr16s>() >> (shift & 15));
        const auto pairs = reinterpret_cast<const Kvr16sc*>(src.data());
        const auto sum16 = static_cast<long double>(exactSum(src.data(), len));
        const Kvr64sc sums = exactComplexSum(pairs, len);
        Kvr16s got16 = 0, gotMean = 0;
        Kvr32s got32 = 0, gotWide = 0;
        Kvr16sc gotPair = {0, 0}, gotPairMean = {0, 0};
        Kvr32sc gotPair32 = {0, 0};
        EXPECT_EQ(kvrStatusOk, kvrsSum_16s_Sfs(src.data(), len, &got16, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsSum_16s32s_Sfs(src.data(), len, &got32, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsSum_32s_Sfs(wide.data(), len, &gotWide, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsSum_16sc_Sfs(pairs, len, &gotPair, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsSum_16sc32sc_Sfs(pairs, len, &gotPair32, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsMean_16s_Sfs(src.data(), len, &gotMean, scaleFactor));
        EXPECT_EQ(kvrStatusOk, kvrsMean_16sc_Sfs(pairs, len, &gotPairMean, scaleFactor));
        EXPECT_EQ(scaledOracle<Kvr16s>(sum16, scaleFactor), got16) << scaleFactor;
        EXPECT_EQ(scaledOracle<Kvr32s>(sum16, scaleFactor), got32) << scaleFactor;
        EXPECT_EQ(scaledOracle<Kvr32s>(static_cast<long double>(exactSum(wide.data(), len)), scaleFactor),
                  gotWide)
            << scaleFactor;
        const Kvr64sc want16 = scaledParts<Kvr16s>(sums, scaleFactor),
                      want32 = scaledParts<Kvr32s>(sums, scaleFactor);
        EXPECT_EQ(want16.re, gotPair.re) << scaleFactor;
        EXPECT_EQ(want16.im, gotPair.im) << scaleFactor;
        EXPECT_EQ(want32.re, gotPair32.re) << scaleFactor;
        EXPECT_EQ(want32.im, gotPair32.im) << scaleFactor;
        // The quotient is a double: steps of halving and doubling change nothing but its exponent.
        const auto mean = [&](int64_t sum) {
          return scaledOracle<Kvr16s>(static_cast<double>(sum) / len, scaleFactor);
        };
        EXPECT_EQ(mean(exactSum(src.data(), len)), gotMean) << scaleFactor;
        EXPECT_EQ(mean(sums.re), gotPairMean.re) << scaleFactor;
        EXPECT_EQ(mean(sums.im), gotPairMean.im) << scaleFactor;
      }
    }
  }
}

// a / b to nearest, ties to even, with b > 0.
int64_t divided(int64_t a, int64_t b) {
  int64_t q = a / b, r = a % b;
  if (r < 0) q -= 1, r += b;
  if (2 * r > b || (2 * r == b && q % 2 != 0)) q += 1;
  return q;
}

TEST(Mean, Integers32) {
  const auto want = [](int64_t sum, int len, int scaleFactor) {
    const int64_t q = divided(sum, len);
    if (scaleFactor >= 0) return scaledOracle<Kvr32s>(static_cast<long double>(q), scaleFactor);
    if (scaleFactor >= -31 && sum >= INT32_MIN && sum <= INT32_MAX) {
      const int64_t shifted = divided(sum * (int64_t{1} << -scaleFactor), len);
      return static_cast<Kvr32s>(std::max(int64_t{INT32_MIN}, std::min(int64_t{INT32_MAX}, shifted)));
    }
    return scaledOracle<Kvr32s>(static_cast<long double>(q), scaleFactor);
  };
  Random random(3);
  for (int scaleFactor : kScaleFactors) {
    for (int len : {1, 2, 3, 4, 7, 50, 1001}) {
      for (int shift : {0, 8, 20, 29}) {
        std::vector<Kvr32s> src(static_cast<size_t>(len));
        for (auto& x : src) x = random.value<Kvr32s>() >> shift;
        Kvr32s mean = 0;
        EXPECT_EQ(kvrStatusOk, kvrsMean_32s_Sfs(src.data(), len, &mean, scaleFactor));
        EXPECT_EQ(want(exactSum(src.data(), len), len, scaleFactor), mean)
            << len << " elements, scale factor " << scaleFactor;
      }
    }
  }
  // The shift comes before the division where the sum fits, and behind the rounding where it does not.
  const Kvr32s small[] = {1, 0, 0}, large[] = {INT32_MAX, 2, 0};
  Kvr32s mean;
  kvrsMean_32s_Sfs(small, 3, &mean, -4);
  EXPECT_EQ(5, mean);  // 16 / 3
  kvrsMean_32s_Sfs(large, 3, &mean, -1);
  EXPECT_EQ(1431655766, mean);  // 715,827,883 times 2
  kvrsMean_32s_Sfs(large, 2, &mean, 0);
  EXPECT_EQ(1073741824, mean);  // 1,073,741,824.5, to even
}

// The order of the contract, in plain loops. `parts` numbers are an element.
long double fastTotal(const Kvr32f* src, int len, size_t parts) {
  const size_t n = static_cast<size_t>(len), step = parts;
  const auto at = [&](size_t i) { return get(src, i * step); };
  long double total = 0;
  const size_t misfit = reinterpret_cast<uintptr_t>(src) % 16;
  return [&](size_t address) {
    size_t i = 0;
    if (address % (4 * parts) == 0) {
      for (; i < n && (address + i * 4 * parts) % 16 != 0; ++i) total += at(i);
    }
    while (i < n) {
      const size_t end = std::min(n, i + 32768);
      Kvr32f s[16] = {};
      for (; i + 16 <= end; i += 16) {
        for (size_t l = 0; l < 16; ++l) s[l] += at(i + l);
      }
      Kvr32f r[4];
      for (size_t l = 0; l < 4; ++l) r[l] = (s[l] + s[l + 8]) + (s[l + 4] + s[l + 12]);
      for (; i + 4 <= end; i += 4) {
        for (size_t l = 0; l < 4; ++l) r[l] += at(i + l);
      }
      if (i + 2 <= end) r[0] += at(i), r[1] += at(i + 1), i += 2;
      if (i < end) r[0] += at(i), i += 1;
      total += r[0] + r[2];
      total += r[1] + r[3];
    }
    return total;
  }(misfit);
}
// Of the parts of complex elements the boundary is that of the element, so an imaginary part has that of its real one.
Kvr32fc fastComplexTotal(const Kvr32fc* src, int len, long double* exact) {
  const Kvr32f* const parts = reinterpret_cast<const Kvr32f*>(src);
  std::vector<uint8_t> moved(static_cast<size_t>(len) * 8 + 64);
  // Imaginary parts in the places of the real ones, at an address that is the same modulo 16.
  uint8_t* to = moved.data();
  while ((reinterpret_cast<uintptr_t>(to) - reinterpret_cast<uintptr_t>(src)) % 16 != 0) ++to;
  for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
    put(reinterpret_cast<Kvr32f*>(to), 2 * i, get(parts, 2 * i + 1));
  }
  exact[0] = fastTotal(parts, len, 2);
  exact[1] = fastTotal(reinterpret_cast<const Kvr32f*>(to), len, 2);
  return {static_cast<Kvr32f>(exact[0]), static_cast<Kvr32f>(exact[1])};
}

long double accurateTotal(const Kvr32f* src, int len, size_t parts) {
  const size_t n = static_cast<size_t>(len);
  long double s[8] = {};
  size_t i = 0;
  for (; i < n - n % 8; ++i) s[i % 8] += get(src, i * parts);
  for (; i < n; ++i) s[0] += get(src, i * parts);
  return ((s[0] + s[1]) + (s[2] + s[3])) + ((s[4] + s[5]) + (s[6] + s[7]));
}

Kvr64f doubleTotal(const Kvr64f* src, int len, size_t parts) {
  const size_t n = static_cast<size_t>(len);
  size_t i = parts == 1 && reinterpret_cast<uintptr_t>(src) % 16 != 0 ? 1 : 0;
  const size_t ahead = i;
  const size_t lanes = 8 / parts;
  Kvr64f s[8] = {};
  for (; i < n; ++i) s[(i - ahead) % lanes] += get(src, i * parts);
  if (ahead != 0) s[0] += get(src, 0);
  if (parts == 2) return (s[0] + s[1]) + (s[2] + s[3]);
  return ((s[0] + s[2]) + (s[4] + s[6])) + ((s[1] + s[3]) + (s[5] + s[7]));
}

// Numbers of many magnitudes, so that each order has a sum of its own.
auto spread() {
  return [](Random& random, size_t, auto like) {
    using T = decltype(like);
    const auto one = [&] { return std::ldexp(random.unit(), static_cast<int>(random.below(24))); };
    if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(one());
    } else {
      using Part = decltype(like.re);
      const Part re = static_cast<Part>(one());
      return T{re, static_cast<Part>(one())};
    }
  };
}

template <class R, class S, class Call, class Oracle>
void sweepSpread(Call call, Oracle oracle) {
  sweepReductionWith<R, S>(call, exactly<R>(oracle), spread(), lengths());
}

TEST(Sum, SinglesFast) {
  sweepSpread<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, int len, Kvr32f* sum) { return kvrsSum_32f(src, len, sum, kvrHintFast); },
      [](const Kvr32f* src, int len) { return static_cast<Kvr32f>(fastTotal(src, len, 1)); });
  sweepSpread<Kvr32fc, Kvr32fc>(
      [](const Kvr32fc* src, int len, Kvr32fc* sum) { return kvrsSum_32fc(src, len, sum, kvrHintFast); },
      [](const Kvr32fc* src, int len) {
        long double exact[2];
        return fastComplexTotal(src, len, exact);
      });
}

TEST(Sum, SinglesAccurate) {
  for (int hint : {int{kvrHintAccurate}, int{kvrHintNone}, 77}) {
    sweepSpread<Kvr32f, Kvr32f>(
        [=](const Kvr32f* src, int len, Kvr32f* sum) { return kvrsSum_32f(src, len, sum, hint); },
        [](const Kvr32f* src, int len) { return static_cast<Kvr32f>(accurateTotal(src, len, 1)); });
  }
  sweepSpread<Kvr32fc, Kvr32fc>(
      [](const Kvr32fc* src, int len, Kvr32fc* sum) { return kvrsSum_32fc(src, len, sum, kvrHintNone); },
      [](const Kvr32fc* src, int len) {
        const Kvr32f* parts = reinterpret_cast<const Kvr32f*>(src);
        return Kvr32fc{static_cast<Kvr32f>(accurateTotal(parts, len, 2)),
                       static_cast<Kvr32f>(accurateTotal(parts + 1, len, 2))};
      });
}

// Sums that stand next to a change of the rounded result: large numbers that cancel, with a small rest; halves of a unit in
// the last place; all magnitudes that there are.
TEST(Sum, SinglesAccurateNearTies) {
  Random random(11);
  for (int round = 0; round < 4000; ++round) {
    const int len = 1 + static_cast<int>(random.below(round % 10 == 0 ? 5000 : 100));
    std::vector<Kvr32f> src(static_cast<size_t>(len));
    for (auto& x : src) {
      switch (round % 4) {
        case 0:
          x = std::ldexp(static_cast<Kvr32f>(static_cast<int>(random.below(7)) - 3),
                         static_cast<int>(random.below(60)) - 30);
          break;
        case 1:
          x = std::ldexp(static_cast<Kvr32f>(random.unit()), static_cast<int>(random.below(250)) - 140);
          break;
        case 2:
          x = static_cast<Kvr32f>(static_cast<int>(random.below(3)) - 1) *
              (random.below(8) == 0 ? 0x1.000002p24f : 0.5f);
          break;
        default:
          x = anyFloat<Kvr32f>(random);
      }
    }
    for (int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
      fesetround(mode);
      Kvr32f sum = 0;
      const KvrStatus status = kvrsSum_32f(src.data(), len, &sum, kvrHintAccurate);
      volatile Kvr32f want = static_cast<Kvr32f>(accurateTotal(src.data(), len, 1));
      fesetround(FE_TONEAREST);
      ASSERT_EQ(kvrStatusOk, status);
      ASSERT_TRUE(sameFloat<Kvr32f>(sum, want))
          << "round " << round << ", len " << len << ": " << sum << ", " << want;
    }
  }
}

TEST(Sum, Doubles) {
  sweepSpread<Kvr64f, Kvr64f>(kvrsSum_64f,
                              [](const Kvr64f* src, int len) { return doubleTotal(src, len, 1); });
  sweepSpread<Kvr64fc, Kvr64fc>(kvrsSum_64fc, [](const Kvr64fc* src, int len) {
    const Kvr64f* parts = reinterpret_cast<const Kvr64f*>(src);
    return Kvr64fc{doubleTotal(parts, len, 2), doubleTotal(parts + 1, len, 2)};
  });
}

TEST(Mean, Floats) {
  const auto mean = [](long double sum, int len) {
    return static_cast<Kvr32f>(static_cast<double>(sum) / len);
  };
  sweepSpread<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, int len, Kvr32f* m) { return kvrsMean_32f(src, len, m, kvrHintFast); },
      [=](const Kvr32f* src, int len) { return mean(fastTotal(src, len, 1), len); });
  sweepSpread<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, int len, Kvr32f* m) { return kvrsMean_32f(src, len, m, kvrHintAccurate); },
      [=](const Kvr32f* src, int len) { return mean(accurateTotal(src, len, 1), len); });
  sweepSpread<Kvr32fc, Kvr32fc>(
      [](const Kvr32fc* src, int len, Kvr32fc* m) { return kvrsMean_32fc(src, len, m, kvrHintFast); },
      [=](const Kvr32fc* src, int len) {
        long double exact[2];
        fastComplexTotal(src, len, exact);
        return Kvr32fc{mean(exact[0], len), mean(exact[1], len)};
      });
  sweepSpread<Kvr32fc, Kvr32fc>(
      [](const Kvr32fc* src, int len, Kvr32fc* m) { return kvrsMean_32fc(src, len, m, kvrHintAccurate); },
      [=](const Kvr32fc* src, int len) {
        const Kvr32f* parts = reinterpret_cast<const Kvr32f*>(src);
        return Kvr32fc{mean(accurateTotal(parts, len, 2), len), mean(accurateTotal(parts + 1, len, 2), len)};
      });
  sweepSpread<Kvr64f, Kvr64f>(kvrsMean_64f,
                              [](const Kvr64f* src, int len) { return doubleTotal(src, len, 1) / len; });
  sweepSpread<Kvr64fc, Kvr64fc>(kvrsMean_64fc, [](const Kvr64fc* src, int len) {
    const Kvr64f* parts = reinterpret_cast<const Kvr64f*>(src);
    return Kvr64fc{doubleTotal(parts, len, 2) / len, doubleTotal(parts + 1, len, 2) / len};
  });
}

TEST(Sum, OfVectorsBeyondTheCache) {
  LargeVector<Kvr32f> src(4);
  const int len = src.size();
  for (int i = 0; i < len; ++i) src.data()[i] = static_cast<Kvr32f>(i % 1001) - 499.75f;
  Kvr32f sum = 0;
  EXPECT_EQ(kvrStatusOk, kvrsSum_32f(src.data(), len, &sum, kvrHintFast));
  EXPECT_EQ(static_cast<Kvr32f>(fastTotal(src.data(), len, 1)), sum);
  EXPECT_EQ(kvrStatusOk, kvrsSum_32f(src.data(), len, &sum, kvrHintAccurate));
  EXPECT_EQ(static_cast<Kvr32f>(accurateTotal(src.data(), len, 1)), sum);
}

}  // namespace
