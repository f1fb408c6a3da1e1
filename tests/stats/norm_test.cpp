// SPDX-License-Identifier: MIT
#include "kvrs/norm.h"

#include "tests/support/reduction.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

enum class Kind { inf, l1, l2, l2Sqr };

SweepOptions lengths() {
  return {.lengths = sweepLengths({32768, 65536})};
}

// Of vectors or of differences, in extended precision: exact for integers.
struct Sums {
  long double most = 0, sum = 0, squares = 0;
  long double of(Kind kind) const {
    return kind == Kind::inf  ? most
           : kind == Kind::l1 ? sum
           : kind == Kind::l2 ? std::sqrt(squares)
                              : squares;
  }
};
inline void add(Sums& s, long double re, long double im = 0) {
  const long double square = re * re + im * im, x = im == 0 ? std::fabs(re) : std::sqrt(square);
  s.most = std::max(s.most, x);
  s.sum += x;
  s.squares += square;
}
template <class T>
Sums sumsOf(const T* a, const T* b, int len) {
  Sums s;
  for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
    const T x = get(a, i), y = b == nullptr ? T{} : get(b, i);
    if constexpr (std::is_arithmetic_v<T>) {
      // Differences of singles are rounded.
      if constexpr (std::is_same_v<T, Kvr32f>) {
        add(s, static_cast<Kvr32f>(x - y));
      } else {
        add(s, static_cast<long double>(x) - static_cast<long double>(y));
      }
    } else {
      add(s, static_cast<long double>(x.re) - y.re, static_cast<long double>(x.im) - y.im);
    }
  }
  return s;
}

// The extreme words among them, whose magnitudes and differences are the largest there are.
auto words() {
  return [](Random& random, size_t, auto) {
    return random.below(2) != 0 ? random.value<Kvr16s>()
                                : static_cast<Kvr16s>(random.below(2) != 0 ? -32768 : 32767);
  };
}

long double wordNorm(Kind kind, const Kvr16s* a, const Kvr16s* b, int len) {
  const long double norm = sumsOf(a, b, len).of(kind);
  return kind == Kind::inf && b == nullptr ? std::min(norm, 32767.0L) : norm;
}
// The rules for scale factors, on numbers of any size.
Kvr32s shifted32(long double norm, int scaleFactor) {
  if (scaleFactor >= 0) {
    const long double shifted = std::floor(std::ldexp(norm, -std::min(scaleFactor, 200)));
    return static_cast<Kvr32s>(static_cast<uint32_t>(static_cast<uint64_t>(shifted)));
  }
  const long double left = std::ldexp(norm, scaleFactor < -200 ? 200 : -scaleFactor);
  return static_cast<Kvr32s>(std::min(left, 2147483647.0L));
}
Kvr64s shifted64(long double norm, int scaleFactor) {
  if (scaleFactor >= 0) return static_cast<Kvr64s>(std::floor(std::ldexp(norm, -std::min(scaleFactor, 200))));
  const long double left = std::ldexp(norm, scaleFactor < -200 ? 200 : -scaleFactor);
  return left < 0x1p63L ? static_cast<Kvr64s>(left) : INT64_MAX;
}
Kvr32s scaledRoot(long double squares, int scaleFactor) {
  const int64_t factor = scaleFactor;
  const int count = static_cast<int>((factor < 0 ? -factor : factor) % 32);
  const double root = std::sqrt(static_cast<double>(squares));
  return scaledOracle<Kvr32s>(root, factor < 0 ? -count : count);
}

template <class R>
using Norm = KvrStatus (*)(const Kvr16s*, int, R*, int) noexcept;
template <class R>
using NormDiff = KvrStatus (*)(const Kvr16s*, const Kvr16s*, int, R*, int) noexcept;

template <class R, class Scale>
void checkWords(Kind kind, Norm<R> norm, NormDiff<R> diff, Scale scale) {
  for (int scaleFactor : {0, 3}) {
    sweepReductionWith<R, Kvr16s>(
        [=](const Kvr16s* a, int len, R* r) { return norm(a, len, r, scaleFactor); },
        exactly<R>(
            [=](const Kvr16s* a, int len) { return scale(wordNorm(kind, a, nullptr, len), scaleFactor); }),
        words(), lengths());
    sweepReductionWith<R, Kvr16s, Kvr16s>(
        [=](const Kvr16s* a, const Kvr16s* b, int len, R* r) { return diff(a, b, len, r, scaleFactor); },
        exactly<R>([=](const Kvr16s* a, const Kvr16s* b, int len) {
          return scale(wordNorm(kind, a, b, len), scaleFactor);
        }),
        words(), lengths());
  }
  Random random(17);
  for (int scaleFactor : kScaleFactors) {
    for (int len : {1, 2, 30, 1000, 70000}) {
      std::vector<Kvr16s> a(static_cast<size_t>(len)), b(a.size());
      for (int draw = 0; draw < 3; ++draw) {
        for (auto& x : a) x = static_cast<Kvr16s>(draw == 2 ? 0 : words()(random, 0, 0) >> 7 * draw);
        for (auto& x : b) x = static_cast<Kvr16s>(draw == 2 ? 0 : words()(random, 0, 0) >> 7 * draw);
        R got{}, gotDiff{};
        EXPECT_EQ(kvrStatusOk, norm(a.data(), len, &got, scaleFactor));
        EXPECT_EQ(kvrStatusOk, diff(a.data(), b.data(), len, &gotDiff, scaleFactor));
        EXPECT_EQ(scale(wordNorm(kind, a.data(), nullptr, len), scaleFactor), got)
            << len << " elements, scale factor " << scaleFactor;
        EXPECT_EQ(scale(wordNorm(kind, a.data(), b.data(), len), scaleFactor), gotDiff)
            << len << " elements, scale factor " << scaleFactor;
      }
    }
  }
}

TEST(Norm, WordsScaled) {
  checkWords<Kvr32s>(Kind::inf, kvrsNorm_Inf_16s32s_Sfs, kvrsNormDiff_Inf_16s32s_Sfs, shifted32);
  checkWords<Kvr32s>(Kind::l1, kvrsNorm_L1_16s32s_Sfs, kvrsNormDiff_L1_16s32s_Sfs, shifted32);
  checkWords<Kvr64s>(Kind::l1, kvrsNorm_L1_16s64s_Sfs, kvrsNormDiff_L1_16s64s_Sfs, shifted64);
  checkWords<Kvr64s>(Kind::l2Sqr, kvrsNorm_L2Sqr_16s64s_Sfs, kvrsNormDiff_L2Sqr_16s64s_Sfs, shifted64);
  checkWords<Kvr32s>(Kind::l2Sqr, kvrsNorm_L2_16s32s_Sfs, kvrsNormDiff_L2_16s32s_Sfs, scaledRoot);
}

// The largest sums of two blocks of 65,536 elements and of one: bit 31 and above.
TEST(Norm, WordsOfTheLargestMagnitude) {
  for (int len : {65535, 65536, 65537, 131072, 1 << 21}) {
    const std::vector<Kvr16s> low(static_cast<size_t>(len), -32768), high(low.size(), 32767);
    const int64_t n = len;
    Kvr32s norm = 0;
    Kvr64s wide = 0;
    Kvr32f single = 0;
    kvrsNorm_L1_16s32s_Sfs(low.data(), len, &norm, 0);
    EXPECT_EQ(static_cast<Kvr32s>(static_cast<uint32_t>(n * 32768)), norm);
    kvrsNorm_L1_16s32f(low.data(), len, &single);
    EXPECT_EQ(static_cast<Kvr32f>(n * 32768), single);
    kvrsNormDiff_L1_16s32f(low.data(), high.data(), len, &single);
    EXPECT_EQ(static_cast<Kvr32f>(n * 65535), single);
    kvrsNormDiff_L1_16s64s_Sfs(low.data(), high.data(), len, &wide, 0);
    EXPECT_EQ(n * 65535, wide);
    kvrsNormDiff_L2Sqr_16s64s_Sfs(low.data(), high.data(), len, &wide, 0);
    EXPECT_EQ(n * 65535 * 65535, wide);
    kvrsNorm_L2Sqr_16s64s_Sfs(low.data(), len, &wide, 0);
    EXPECT_EQ(n << 30, wide);
  }
}

TEST(Norm, WordsToFloats) {
  const auto check = [](Kind kind, auto norm, auto diff) {
    // Of the root as a double.
    const auto rounded = [=](const Kvr16s* a, const Kvr16s* b, int len) {
      return kind == Kind::l2
                 ? static_cast<Kvr32f>(std::sqrt(static_cast<double>(wordNorm(Kind::l2Sqr, a, b, len))))
                 : static_cast<Kvr32f>(wordNorm(kind, a, b, len));
    };
    sweepReductionWith<Kvr32f, Kvr16s>(
        norm, exactly<Kvr32f>([=](const Kvr16s* a, int len) { return rounded(a, nullptr, len); }), words(),
        lengths());
    sweepReductionWith<Kvr32f, Kvr16s, Kvr16s>(diff, exactly<Kvr32f>(rounded), words(), lengths());
  };
  check(Kind::inf, kvrsNorm_Inf_16s32f, kvrsNormDiff_Inf_16s32f);
  check(Kind::l1, kvrsNorm_L1_16s32f, kvrsNormDiff_L1_16s32f);
  check(Kind::l2, kvrsNorm_L2_16s32f, kvrsNormDiff_L2_16s32f);
}

// Sums of numbers without a sign: the error is a few units for each of the additions that one lane makes, of which there
// are at most len / 4, and random; the bound is for the lengths swept here.
template <class T, class R, class NormF, class DiffF>
void checkFloats(Kind kind, NormF norm, DiffF diff) {
  const long double bound = kind == Kind::inf ? 2 : 300;
  const auto near = [=](const T* a, const T* b, int len, R got) -> std::string {
    const long double want = sumsOf(a, b, len).of(kind);
    const long double distance = ulps(got, want);
    return distance <= bound ? "" : "got " + show(got) + ", " + std::to_string(distance) + " units away";
  };
  sweepReductionWith<R, T>(
      norm, [=](const T* a, int len, R got) { return near(a, nullptr, len, got); }, anyValues(), lengths());
  sweepReductionWith<R, T, T>(diff, near, anyValues(), lengths());
}

TEST(Norm, Floats) {
  checkFloats<Kvr32f, Kvr32f>(Kind::inf, kvrsNorm_Inf_32f, kvrsNormDiff_Inf_32f);
  checkFloats<Kvr32fc, Kvr32f>(Kind::inf, kvrsNorm_Inf_32fc32f, kvrsNormDiff_Inf_32fc32f);
  checkFloats<Kvr64f, Kvr64f>(Kind::inf, kvrsNorm_Inf_64f, kvrsNormDiff_Inf_64f);
  checkFloats<Kvr64fc, Kvr64f>(Kind::inf, kvrsNorm_Inf_64fc64f, kvrsNormDiff_Inf_64fc64f);
  checkFloats<Kvr32f, Kvr32f>(Kind::l1, kvrsNorm_L1_32f, kvrsNormDiff_L1_32f);
  checkFloats<Kvr32fc, Kvr64f>(Kind::l1, kvrsNorm_L1_32fc64f, kvrsNormDiff_L1_32fc64f);
  checkFloats<Kvr64f, Kvr64f>(Kind::l1, kvrsNorm_L1_64f, kvrsNormDiff_L1_64f);
  checkFloats<Kvr64fc, Kvr64f>(Kind::l1, kvrsNorm_L1_64fc64f, kvrsNormDiff_L1_64fc64f);
  checkFloats<Kvr32f, Kvr32f>(Kind::l2, kvrsNorm_L2_32f, kvrsNormDiff_L2_32f);
  checkFloats<Kvr32fc, Kvr64f>(Kind::l2, kvrsNorm_L2_32fc64f, kvrsNormDiff_L2_32fc64f);
  checkFloats<Kvr64f, Kvr64f>(Kind::l2, kvrsNorm_L2_64f, kvrsNormDiff_L2_64f);
  checkFloats<Kvr64fc, Kvr64f>(Kind::l2, kvrsNorm_L2_64fc64f, kvrsNormDiff_L2_64fc64f);
}

// What would overflow in single precision.
TEST(Norm, LargeSingles) {
  const Kvr32fc src[] = {{3e30f, 4e30f}, {0, 0}};
  Kvr32f inf = 0;
  Kvr64f l1 = 0, l2 = 0;
  kvrsNorm_Inf_32fc32f(src, 2, &inf);
  kvrsNorm_L1_32fc64f(src, 2, &l1);
  kvrsNorm_L2_32fc64f(src, 2, &l2);
  EXPECT_LE(ulps(inf, 5e30L), 3);
  EXPECT_NEAR(1, l1 / 5e30, 1e-6);
  EXPECT_NEAR(1, l2 / 5e30, 1e-6);
}

}  // namespace
