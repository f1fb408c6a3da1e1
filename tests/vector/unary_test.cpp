// SPDX-License-Identifier: MIT
#include "kvrs/unary.h"

#include <cmath>

#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using Map = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using MapI = KvrStatus (*)(T*, int) noexcept;

template <class T, class Oracle, class Draw>
void check(Map<T> f, MapI<T> inPlace, Oracle oracle, Draw draw) {
  const auto same = [](T a, T b) { return sameBits(a, b); };
  const auto drawOne = [&](Random& random, size_t, auto) { return draw(random); };
  sweepMapWith<T, T>(f, oracle, same, drawOne, SweepOptions{});
  sweepInPlaceWith<T>(inPlace, oracle, same, drawOne, SweepOptions{});
}

template <class T>
T anyValue(Random& random) {
  return random.value<T>();
}

template <class T>
T magnitude(T x) {
  return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : static_cast<T>(x < 0 ? -x : x);
}

TEST(Abs, Integers) {
  check(kvrsAbs_16s, kvrsAbs_16s_I, magnitude<Kvr16s>, anyValue<Kvr16s>);
  check(kvrsAbs_32s, kvrsAbs_32s_I, magnitude<Kvr32s>, anyValue<Kvr32s>);
}

TEST(Abs, AllOf16s) {
  std::vector<Kvr16s> all(65536), got(65536);
  for (size_t i = 0; i < 65536; ++i) all[i] = static_cast<Kvr16s>(i);
  EXPECT_EQ(kvrStatusOk, kvrsAbs_16s(all.data(), got.data(), 65536));
  for (size_t i = 0; i < 65536; ++i) ASSERT_EQ(magnitude(all[i]), got[i]);
}

TEST(Abs, TheMinimumStoresTheMaximum) {
  Kvr16s a = -32768;
  Kvr32s b = INT32_MIN;
  EXPECT_EQ(kvrStatusOk, kvrsAbs_16s_I(&a, 1));
  EXPECT_EQ(kvrStatusOk, kvrsAbs_32s_I(&b, 1));
  EXPECT_EQ(32767, a);
  EXPECT_EQ(2147483647, b);
}

// Random bits: NaN of every kind, infinities, subnormals. All arrays are integers here, so that no NaN passes
// through a register that would change it.
template <class T, class Bits>
void checkSignBit(Map<T> f, MapI<T> inPlace) {
  const auto cleared = [](Bits x) { return static_cast<Bits>(x << 1 >> 1); };
  sweepMap<Bits, Bits>(
      [&](const Bits* src, Bits* dst, int len) {
        return f(reinterpret_cast<const T*>(src), reinterpret_cast<T*>(dst), len);
      },
      cleared);
  sweepInPlace<Bits>([&](Bits* srcDst, int len) { return inPlace(reinterpret_cast<T*>(srcDst), len); },
                     cleared);
  for (Bits x : {static_cast<Bits>(-1), static_cast<Bits>(Bits{1} << (sizeof(Bits) * 8 - 1))}) {
    EXPECT_EQ(kvrStatusOk, inPlace(reinterpret_cast<T*>(&x), 1));
    EXPECT_TRUE(x >> (sizeof(Bits) * 8 - 1) == 0);
  }
}

TEST(Abs, FloatsLoseTheSignBitOnly) {
  checkSignBit<Kvr32f, uint32_t>(kvrsAbs_32f, kvrsAbs_32f_I);
  checkSignBit<Kvr64f, uint64_t>(kvrsAbs_64f, kvrsAbs_64f_I);
}

template <class T>
T anyFloat(Random& random) {
  if (random.below(10) == 0) {
    const T list[] = {0, -T{0}, std::numeric_limits<T>::infinity(), -std::numeric_limits<T>::infinity()};
    return list[random.below(4)];
  }
  const int most = std::numeric_limits<T>::max_exponent;
  return static_cast<T>(std::ldexp(random.unit(), static_cast<int>(random.below(2u * most)) - most));
}

template <class C>
C anyFiniteComplex(Random& random) {
  using T = decltype(C{}.re);
  const int most = std::numeric_limits<T>::max_exponent / 2;
  const auto part = [&] {
    return static_cast<T>(std::ldexp(random.unit(), static_cast<int>(random.below(2u * most)) - most));
  };
  return {part(), part()};
}

TEST(Square, Floats) {
  check(
      kvrsSqr_32f, kvrsSqr_32f_I, [](Kvr32f x) { return x * x; }, anyFloat<Kvr32f>);
  check(
      kvrsSqr_64f, kvrsSqr_64f_I, [](Kvr64f x) { return x * x; }, anyFloat<Kvr64f>);
}

template <class C>
C complexSquare(C x) {
  return {x.re * x.re - x.im * x.im, 2 * x.re * x.im};
}

TEST(Square, Complex) {
  check(kvrsSqr_32fc, kvrsSqr_32fc_I, complexSquare<Kvr32fc>, anyFiniteComplex<Kvr32fc>);
  check(kvrsSqr_64fc, kvrsSqr_64fc_I, complexSquare<Kvr64fc>, anyFiniteComplex<Kvr64fc>);
  Kvr32fc i = {0, 1};
  EXPECT_EQ(kvrStatusOk, kvrsSqr_32fc_I(&i, 1));
  EXPECT_EQ(-1, i.re);
  EXPECT_EQ(0, i.im);
}

template <class T>
using Normalize = KvrStatus (*)(const T*, T*, int, T, T) noexcept;

template <class T>
void checkNormalize(Normalize<T> f) {
  const auto same = [](T a, T b) { return sameBits(a, b); };
  const auto drawOne = [](Random& random, size_t, auto) { return random.value<T>(); };
  for (T vDiv : {T{3}, T(-0.1), std::numeric_limits<T>::min(), std::numeric_limits<T>::infinity()}) {
    const T vSub = T(0.3);
    const auto oracle = [=](T x) { return static_cast<T>((x - vSub) * (1 / vDiv)); };
    sweepMapWith<T, T>([&](const T* src, T* dst, int len) { return f(src, dst, len, vSub, vDiv); }, oracle,
                       same, drawOne, SweepOptions{});
    sweepInPlaceWith<T>([&](T* srcDst, int len) { return f(srcDst, srcDst, len, vSub, vDiv); }, oracle, same,
                        drawOne, SweepOptions{});
  }
  const T src[] = {1, 2};
  T dst[] = {7, 8};
  const T below = std::numeric_limits<T>::min() - std::numeric_limits<T>::denorm_min();
  for (T vDiv : {T{0}, -T{0}, below, -below, std::numeric_limits<T>::denorm_min()}) {
    EXPECT_EQ(kvrStatusDivByZeroError, f(src, dst, 2, 0, vDiv));
    EXPECT_EQ(kvrStatusBadLength, f(src, dst, 0, 0, vDiv));
    EXPECT_EQ(kvrStatusNullPointer, f(nullptr, dst, 2, 0, vDiv));
  }
  EXPECT_EQ(7, dst[0]);
  EXPECT_EQ(8, dst[1]);
  EXPECT_EQ(kvrStatusOk, f(src, dst, 2, 0, -std::numeric_limits<T>::min()));
}

TEST(Normalize, Floats) {
  checkNormalize<Kvr32f>(kvrsNormalize_32f);
  checkNormalize<Kvr64f>(kvrsNormalize_64f);
}

template <class C, class Call>
void checkNormalizeComplex(Call f) {
  using T = decltype(C{}.re);
  const auto same = [](C a, C b) { return sameBits(a, b); };
  const auto drawOne = [](Random& random, size_t, auto) { return random.value<C>(); };
  const C vSub = {T(0.3), T(-0.7)};
  const T vDiv = T(-0.6);
  const auto oracle = [=](C x) { return C{(x.re - vSub.re) * (1 / vDiv), (x.im - vSub.im) * (1 / vDiv)}; };
  sweepMapWith<C, C>([&](const C* src, C* dst, int len) { return f(src, dst, len, vSub, vDiv); }, oracle,
                     same, drawOne, SweepOptions{});
  sweepInPlaceWith<C>([&](C* srcDst, int len) { return f(srcDst, srcDst, len, vSub, vDiv); }, oracle, same,
                      drawOne, SweepOptions{});
  const C src[] = {{1, 2}};
  C dst[] = {{7, 8}};
  const T below = std::numeric_limits<T>::min() - std::numeric_limits<T>::denorm_min();
  EXPECT_EQ(kvrStatusDivByZeroError, f(src, dst, 1, vSub, below));
  EXPECT_EQ(kvrStatusDivByZeroError, f(src, dst, 1, vSub, -T{0}));
  EXPECT_EQ(7, dst[0].re);
  EXPECT_EQ(8, dst[0].im);
}

TEST(Normalize, Complex) {
  checkNormalizeComplex<Kvr32fc>(kvrsNormalize_32fc);
  checkNormalizeComplex<Kvr64fc>(kvrsNormalize_64fc);
}

TEST(Normalize, RefusesSubnormalDivisors) {
  const Kvr32f src = 1;
  Kvr32f dst = 7;
  EXPECT_EQ(kvrStatusDivByZeroError, kvrsNormalize_32f(&src, &dst, 1, 0, 1e-40f));
  EXPECT_EQ(7, dst);
}

// 2^(-scaleFactor) of its low seven bits; 127 gives 0.
float sevenBitScale(int s) {
  if (s >= 0) return s % 128 == 127 ? 0 : std::ldexp(1.0f, -(s % 128));
  return std::ldexp(1.0f, -(s % 128));
}

Kvr16s normalized(Kvr16s x, Kvr16s vSub, int vDiv, int s) {
  const float scaled = static_cast<float>(x - vSub) * sevenBitScale(s);
  const float quotient = scaled / static_cast<float>(vDiv);
  return static_cast<Kvr16s>(std::fmax(std::fmin(std::nearbyint(quotient), 32767.0f), -32768.0f));
}

TEST(Normalize, Integers) {
  for (int s : {0, 2, -3}) {
    sweepMap<Kvr16s, Kvr16s>([&](const Kvr16s* src, Kvr16s* dst,
                                 int len) { return kvrsNormalize_16s_Sfs(src, dst, len, -77, 3, s); },
                             [&](Kvr16s x) { return normalized(x, -77, 3, s); });
    sweepMap<Kvr16sc, Kvr16sc>(
        [&](const Kvr16sc* src, Kvr16sc* dst, int len) {
          return kvrsNormalize_16sc_Sfs(src, dst, len, {1000, -32768}, -7, s);
        },
        [&](Kvr16sc x) {
          return Kvr16sc{normalized(x.re, 1000, -7, s), normalized(x.im, -32768, -7, s)};
        });
  }
  const auto src = randomVector<Kvr16s>(300, 8);
  std::vector<Kvr16s> want(300), got(300);
  std::vector<int> scaleFactors = allScaleFactors();
  for (int s : {126, 127, 128, 129, 255, -127, -128, -129, -255, -256}) scaleFactors.push_back(s);
  for (int s : scaleFactors) {
    for (int vDiv : {1, -1, 3, 1000, -32768, 65537, 16777217, INT_MAX, INT_MIN}) {
      for (Kvr16s vSub : {0, 1, -32768, 32767}) {
        for (size_t i = 0; i < 300; ++i) want[i] = normalized(src[i], vSub, vDiv, s);
        // To nearest, whatever the caller's mode.
        ASSERT_EQ(kvrStatusOk, inMode(kModes[vDiv & 3].fe, [&] {
                    return kvrsNormalize_16s_Sfs(src.data(), got.data(), 300, vSub, vDiv, s);
                  }));
        expectSame(want, got, "s " + std::to_string(s) + ", vDiv " + std::to_string(vDiv));
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
  const auto before = got;
  EXPECT_EQ(kvrStatusDivByZeroError, kvrsNormalize_16s_Sfs(src.data(), got.data(), 300, 1, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsNormalize_16s_Sfs(src.data(), got.data(), 0, 1, 0, 0));
  expectSame(before, got, "after an error");
  const Kvr16sc one = {1, 1};
  Kvr16sc dst = {7, 8};
  EXPECT_EQ(kvrStatusDivByZeroError, kvrsNormalize_16sc_Sfs(&one, &dst, 1, one, 0, 0));
  EXPECT_EQ(7, dst.re);
}

TEST(Normalize, ScaleFactorCountsBySevenBits) {
  const Kvr16s src[] = {1000, -1000};
  Kvr16s dst[2];
  EXPECT_EQ(kvrStatusOk, kvrsNormalize_16s_Sfs(src, dst, 2, 0, 10, 128));
  EXPECT_EQ(100, dst[0]);
  EXPECT_EQ(kvrStatusOk, kvrsNormalize_16s_Sfs(src, dst, 2, 0, 10, -129));
  EXPECT_EQ(-200, dst[1]);
  EXPECT_EQ(kvrStatusOk, kvrsNormalize_16s_Sfs(src, dst, 2, 0, 10, 127));
  EXPECT_EQ(0, dst[0]);
}

}  // namespace
