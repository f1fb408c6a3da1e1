// SPDX-License-Identifier: MIT
#include <cfenv>
#include <climits>
#include <cmath>
#include <vector>

#include "kvrs/roots.h"
#include "tests/support/ulps.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

struct Exact {
  long double re, im;
};

// In extended precision, whose exponents hold all squares.
Exact root(long double re, long double im) {
  const long double larger = std::sqrt((std::sqrt(re * re + im * im) + std::fabs(re)) / 2);
  const long double other = larger == 0 ? 0 : std::fabs(im) / (2 * larger);
  return {re < 0 ? other : larger, std::copysign(re < 0 ? larger : other, im)};
}

template <class C>
C nearest(C z) {
  const Exact exact = root(z.re, z.im);
  using T = decltype(z.re);
  return {static_cast<T>(exact.re), static_cast<T>(exact.im)};
}

template <class C>
void sweepBoth(KvrStatus (*f)(const C*, C*, int) noexcept, KvrStatus (*inPlace)(C*, int) noexcept,
               int bound) {
  using T = decltype(C{}.re);
  const auto same = [=](C got, C want) { return withinUlps(got, want, bound); };
  const auto draw = [](Random& random, size_t, C) {
    const auto part = [&] {
      for (;;) {
        const T x = random.below(2) != 0 ? anyFloat<T>(random) : static_cast<T>(random.unit());
        if (std::isfinite(x)) return x;
      }
    };
    const T re = part();
    return C{re, part()};
  };
  sweepMapWith<C, C>(f, nearest<C>, same, draw, SweepOptions{});
  sweepInPlaceWith<C>(inPlace, nearest<C>, same, draw, SweepOptions{});
}

TEST(SqrtComplex, Sweep) {
  sweepBoth<Kvr32fc>(kvrsSqrt_32fc, kvrsSqrt_32fc_I, 1);
  sweepBoth<Kvr64fc>(kvrsSqrt_64fc, kvrsSqrt_64fc_I, 4);
}

// No root warns; negative reals have an imaginary root with the sign of their imaginary part.
TEST(SqrtComplex, SignsAndAxes) {
  const Kvr64fc src[] = {{-4, 0},   {-4, -0.0},   {4, 0}, {4, -0.0}, {0, 0},
                         {0, -0.0}, {-0.0, -0.0}, {0, 8}, {0, -8},   {-3, 4}};
  const Kvr64fc want[] = {{0, 2},    {0, -2},   {2, 0}, {2, -0.0}, {0, 0},
                          {0, -0.0}, {0, -0.0}, {2, 2}, {2, -2},   {1, 2}};
  Kvr64fc got[10];
  Kvr32fc src32[10], got32[10];
  for (int i = 0; i < 10; ++i) src32[i] = {static_cast<Kvr32f>(src[i].re), static_cast<Kvr32f>(src[i].im)};
  ASSERT_EQ(kvrStatusOk, kvrsSqrt_64fc(src, got, 10));
  ASSERT_EQ(kvrStatusOk, kvrsSqrt_32fc(src32, got32, 10));
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(sameBits(want[i].re, got[i].re) && sameBits(want[i].im, got[i].im))
        << show(src[i]) << show(got[i]);
    EXPECT_TRUE(sameBits(static_cast<Kvr32f>(want[i].re), got32[i].re)) << show(src32[i]) << show(got32[i]);
    EXPECT_TRUE(sameBits(static_cast<Kvr32f>(want[i].im), got32[i].im)) << show(src32[i]) << show(got32[i]);
  }
}

// Squares far out of range.
TEST(SqrtComplex, ExtremeMagnitudes) {
  Random random(3);
  std::vector<Kvr64fc> src(4000), got(4000);
  for (Kvr64fc& z : src) {
    const int exponent = static_cast<int>(random.below(2090)) - 1070;
    z = {std::ldexp(random.unit(), exponent),
         std::ldexp(random.unit(), exponent - static_cast<int>(random.below(80)))};
  }
  ASSERT_EQ(kvrStatusOk, kvrsSqrt_64fc(src.data(), got.data(), 4000));
  for (size_t i = 0; i < src.size(); ++i) {
    ASSERT_TRUE(withinUlps(got[i], nearest(src[i]), 4)) << show(src[i]) << ": " << show(got[i]);
  }
}

// Integers: rounded from double precision, with either neighbour where that cannot tell.
bool isRounded(long double exact, int scaleFactor, Kvr16s got) {
  const long double scaled = std::ldexp(exact, -scaleFactor);
  if (scaled >= 32767) return got == 32767;
  if (scaled <= -32768) return got == -32768;
  const long double off = std::fabs(static_cast<long double>(got) - scaled);
  // A tie of exact roots goes to the even neighbour.
  return off < 0.5L || (off == 0.5L && got % 2 == 0) || (off != 0.5L && off < 0.5L + 0x1p-30L);
}

TEST(SqrtComplex, ScaleFactorsOf16sc) {
  Random random(5);
  for (int scaleFactor : {INT_MIN, -100, -21, -20, -15, -8, -7, -1, 0, 1, 2, 7, 8, 9, 20, 101, INT_MAX}) {
    std::vector<Kvr16sc> src, got;
    for (int re : {-32768, -32767, -100, -9, -1, 0, 1, 9, 100, 32767})
      for (int im : {-32768, -40, -1, 0, 1, 40, 32767})
        src.push_back({static_cast<Kvr16s>(re), static_cast<Kvr16s>(im)});
    for (int i = 0; i < 500; ++i) src.push_back(random.value<Kvr16sc>());
    got.resize(src.size());
    ASSERT_EQ(kvrStatusOk,
              kvrsSqrt_16sc_Sfs(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    const int factor = std::max(-200, std::min(200, scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      const Exact exact = root(src[i].re, src[i].im);
      ASSERT_TRUE(isRounded(exact.re, factor, got[i].re) && isRounded(exact.im, factor, got[i].im))
          << show(src[i]) << ", scaleFactor " << scaleFactor << ": " << show(got[i]);
    }
  }
}

TEST(SqrtComplex, Sweep16sc) {
  // The root to nearest, then an integer in the caller's mode.
  const auto oracle = [](Kvr16sc z) {
    const int mode = fegetround();
    fesetround(FE_TONEAREST);
    const Exact exact = root(z.re, z.im);
    fesetround(mode);
    return Kvr16sc{static_cast<Kvr16s>(std::nearbyint(exact.re * 4)),
                   static_cast<Kvr16s>(std::nearbyint(exact.im * 4))};
  };
  sweepMap<Kvr16sc, Kvr16sc>(
      [](const Kvr16sc* src, Kvr16sc* dst, int len) { return kvrsSqrt_16sc_Sfs(src, dst, len, -2); }, oracle,
      {.rounding = Rounding::followed});
  sweepInPlace<Kvr16sc>([](Kvr16sc* srcDst, int len) { return kvrsSqrt_16sc_ISfs(srcDst, len, -2); }, oracle,
                        {.rounding = Rounding::followed});
}

TEST(SqrtComplex, OnThreads) {
  const auto src = randomVector<Kvr16sc>(static_cast<size_t>(threadedLength(256)) + 3, 4);
  expectSameOnThreads<Kvr16sc>(src.size(), kvrStatusOk, "16sc", [&](Kvr16sc* dst) {
    return kvrsSqrt_16sc_Sfs(src.data(), dst, static_cast<int>(src.size()), -3);
  });
  const auto floats = randomVector<Kvr32fc>(static_cast<size_t>(threadedLength(512)) + 3, 4);
  expectSameOnThreads<Kvr32fc>(floats.size(), kvrStatusOk, "32fc", [&](Kvr32fc* dst) {
    return kvrsSqrt_32fc(floats.data(), dst, static_cast<int>(floats.size()));
  });
}

}  // namespace
