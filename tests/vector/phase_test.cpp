// SPDX-License-Identifier: MIT
#include <cmath>

#include "kvrs/polar.h"
#include "tests/support/rounding.h"
#include "tests/support/ulps.h"
#include "tests/vector/planes.h"
#include "tests/vector/quotient.h"
#include "tests/vector/tied.h"

using namespace kvrs::test;

namespace {

constexpr int kBound = 2;

// The contract's angle: that of atan2, but for a point on both axes, whose x counts as positive.
long double angle(long double re, long double im) {
  return std::atan2(im, re == 0 ? 0.0L : re);
}

// A scaled angle, where the next half is not too near to tell.
template <class T>
Tied<T> scaledAngle(long double re, long double im, int scaleFactor, int signBelow) {
  const long double exact = angle(re, im);
  if (scaleFactor < signBelow) return {saturatedTo<T>(exact > 0 ? 1e30L : exact < 0 ? -1e30L : 0)};
  return tiedTo<T>(std::ldexp(exact, scaleFactor > 200 ? -200 : -scaleFactor), 0x1p-51L);
}

template <class T>
T nearest(T re, T im) {
  return static_cast<T>(angle(re, im));
}

template <class D, class... S, class Call, class Oracle>
void sweepAngles(Call call, Oracle oracle) {
  sweepMapWith<D, S...>(
      call, oracle,
      [](D got, D want) { return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, kBound); },
      [](Random& random, size_t, auto like) {
        if constexpr (std::is_floating_point_v<D> && sizeof like >= sizeof(D)) {
          return anyElement<decltype(like)>(random);
        } else {
          return random.value<decltype(like)>();
        }
      },
      SweepOptions{});
}

TEST(Phase, SweepFloats) {
  sweepAngles<Kvr32f, Kvr32f, Kvr32f>(kvrsPhase_32f, nearest<Kvr32f>);
  sweepAngles<Kvr64f, Kvr64f, Kvr64f>(kvrsPhase_64f, nearest<Kvr64f>);
  sweepAngles<Kvr32f, Kvr32fc>(kvrsPhase_32fc, [](Kvr32fc z) { return nearest(z.re, z.im); });
  sweepAngles<Kvr64f, Kvr64fc>(kvrsPhase_64fc, [](Kvr64fc z) { return nearest(z.re, z.im); });
}
TEST(Phase, Sweep16sToFloat) {
  const auto oracle = [](Kvr16s re, Kvr16s im) { return nearest<Kvr32f>(re, im); };
  const auto draw = [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); };
  const auto same = [](Kvr32f got, Kvr32f want) { return withinUlps(got, want, kBound); };
  sweepMapWith<Kvr32f, Kvr16s, Kvr16s>(kvrsPhase_16s32f, oracle, same, draw, SweepOptions{});
  sweepMapWith<Kvr32f, Kvr16sc>(
      kvrsPhase_16sc32f, [=](Kvr16sc z) { return oracle(z.re, z.im); }, same, draw, SweepOptions{});
}

// The bound itself, against a reference that is not rounded to the type. `ratio`: how far apart the exponents are.
template <class T, class F>
long double worstUlps(F f, int lowest, int highest, int turns) {
  constexpr int kLen = 2000;
  Random random(static_cast<uint64_t>(highest));
  std::vector<T> re(kLen), im(kLen), got(kLen);
  long double worst = 0;
  for (int turn = 0; turn < turns; ++turn) {
    for (int i = 0; i < kLen; ++i) {
      re[i] = ofExponents<T>(random, lowest, highest);
      im[i] = ofExponents<T>(random, lowest, highest);
      // Near the axes and the diagonals too.
      if (i % 8 == 0)
        im[i] = re[i] * (1 + static_cast<T>(static_cast<int>(i % 5) - 2) * std::numeric_limits<T>::epsilon());
      if (i % 16 == 1) im[i] = re[i] * static_cast<T>(0.0625);
    }
    EXPECT_EQ(kvrStatusOk, f(re.data(), im.data(), got.data(), kLen));
    for (int i = 0; i < kLen; ++i) worst = std::max(worst, ulps(got[i], angle(re[i], im[i])));
  }
  return worst;
}

TEST(Phase, Accuracy) {
  using F = std::numeric_limits<Kvr32f>;
  using D = std::numeric_limits<Kvr64f>;
  EXPECT_LT(worstUlps<Kvr32f>(kvrsPhase_32f, -1, 0, 200), kBound);
  EXPECT_LT(worstUlps<Kvr32f>(kvrsPhase_32f, -12, 12, 50), kBound);
  EXPECT_LT(worstUlps<Kvr32f>(kvrsPhase_32f, F::min_exponent - F::digits, F::max_exponent - 1, 50), kBound);
  EXPECT_LT(worstUlps<Kvr64f>(kvrsPhase_64f, -1, 0, 200), kBound);
  EXPECT_LT(worstUlps<Kvr64f>(kvrsPhase_64f, -30, 30, 50), kBound);
  EXPECT_LT(worstUlps<Kvr64f>(kvrsPhase_64f, D::min_exponent - D::digits, D::max_exponent - 1, 50), kBound);
}

// Every single t in [0, 1] of which many share an exponent: the polynomial on its own, as t / 1.
TEST(Phase, AccuracyOverTheUnitInterval) {
  constexpr int kLen = 4096;
  std::vector<Kvr32f> one(kLen, 1), t(kLen), got(kLen);
  long double worst = 0;
  uint32_t bits = 0;
  for (int turn = 0; turn < 100; ++turn) {
    for (Kvr32f& x : t) {
      memcpy(&x, &bits, sizeof x);
      bits += 0x3F800000u / (100 * kLen);
    }
    kvrsPhase_32f(one.data(), t.data(), got.data(), kLen);
    for (int i = 0; i < kLen; ++i)
      worst = std::max(worst, ulps(got[i], std::atan(static_cast<long double>(t[i]))));
  }
  EXPECT_LT(worst, 1);
}

template <class T, class C, class Planar, class Interleaved>
void checkSpecial(Planar planar, Interleaved interleaved) {
  const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
  const T all[] = {0,
                   -T{0},
                   1,
                   -1,
                   inf,
                   -inf,
                   nan,
                   std::numeric_limits<T>::denorm_min(),
                   -std::numeric_limits<T>::min(),
                   std::numeric_limits<T>::max(),
                   std::numeric_limits<T>::lowest()};
  for (T re : all) {
    for (T im : all) {
      for (int len : {1, 3, 40}) {
        const std::vector<T> res(static_cast<size_t>(len), re), ims(static_cast<size_t>(len), im);
        const std::vector<C> both(static_cast<size_t>(len), C{re, im});
        std::vector<T> got(res.size()), other(res.size());
        ASSERT_EQ(kvrStatusOk, planar(res.data(), ims.data(), got.data(), len));
        ASSERT_EQ(kvrStatusOk, interleaved(both.data(), other.data(), len));
        const long double want = angle(re, im);
        for (size_t i = 0; i < got.size(); ++i) {
          ASSERT_LT(ulps(got[i], want), kBound) << re << ", " << im << ": " << got[i];
          if (!std::isnan(want)) {
            ASSERT_EQ(std::signbit(im), std::signbit(got[i])) << re << ", " << im;
            ASSERT_TRUE(sameBits(got[i], other[i]));
          } else {
            ASSERT_TRUE(std::isnan(other[i]));
          }
        }
      }
    }
  }
}

TEST(Phase, SpecialValues) {
  checkSpecial<Kvr32f, Kvr32fc>(kvrsPhase_32f, kvrsPhase_32fc);
  checkSpecial<Kvr64f, Kvr64fc>(kvrsPhase_64f, kvrsPhase_64fc);
}

TEST(Phase, OfZeroIsZero) {
  const Kvr32fc f[4] = {{0, 0}, {-0.0f, 0}, {0, -0.0f}, {-0.0f, -0.0f}};
  const Kvr64fc d[4] = {{0, 0}, {-0.0, 0}, {0, -0.0}, {-0.0, -0.0}};
  const Kvr16sc s[4] = {};
  const Kvr32sc w[4] = {};
  Kvr32f gotF[4];
  Kvr64f gotD[4];
  Kvr16s gotS[4];
  Kvr32s gotW[4];
  kvrsPhase_32fc(f, gotF, 4);
  kvrsPhase_64fc(d, gotD, 4);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(gotF[i] == 0 && gotD[i] == 0);
  for (int scaleFactor : {INT_MIN, -29, -28, 0, 5, INT_MAX}) {
    kvrsPhase_16sc_Sfs(s, gotS, 4, scaleFactor);
    kvrsPhase_32sc_Sfs(w, gotW, 4, scaleFactor);
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(gotS[i] == 0 && gotW[i] == 0);
  }
}

// A mode of the caller's changes nothing and is given back.
TEST(Phase, IgnoresTheRoundingMode) {
  constexpr int kLen = 300;
  Random random(9);
  std::vector<Kvr32fc> f(kLen);
  std::vector<Kvr64fc> d(kLen);
  std::vector<Kvr16sc> s(kLen);
  for (int i = 0; i < kLen; ++i) {
    f[i] = anyElement<Kvr32fc>(random);
    d[i] = anyElement<Kvr64fc>(random);
    s[i] = random.value<Kvr16sc>();
  }
  std::vector<Kvr32f> firstF(kLen), gotF(kLen);
  std::vector<Kvr64f> firstD(kLen), gotD(kLen);
  std::vector<Kvr16s> firstS(kLen), gotS(kLen);
  kvrsPhase_32fc(f.data(), firstF.data(), kLen);
  kvrsPhase_64fc(d.data(), firstD.data(), kLen);
  kvrsPhase_16sc_Sfs(s.data(), firstS.data(), kLen, -12);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsPhase_32fc(f.data(), gotF.data(), kLen); });
    callWithRounding(mode, [&] { return kvrsPhase_64fc(d.data(), gotD.data(), kLen); });
    callWithRounding(mode, [&] { return kvrsPhase_16sc_Sfs(s.data(), gotS.data(), kLen, -12); });
    expectSame(firstF, gotF, "mode " + std::to_string(mode));
    expectSame(firstD, gotD, "mode " + std::to_string(mode));
    expectSame(firstS, gotS, "mode " + std::to_string(mode));
  }
}

template <class C>
std::vector<C> somePoints(uint64_t seed) {
  using T = decltype(C{}.re);
  Random random(seed);
  std::vector<C> v;
  for (int i = 0; i < 100; ++i) v.push_back(random.value<C>());
  for (int i = 0; i < 40; ++i) v.push_back({static_cast<T>(random.value<T>() >> 7), random.value<T>()});
  const T low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  for (T re : {T{0}, T{1}, T{-1}, low, high})
    for (T im : {T{0}, T{1}, T{-1}, low, high}) v.push_back({re, im});
  return v;
}

template <class C, class D, class Call>
void checkScaleFactors(Call call, int signBelow) {
  std::vector<int> all{INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
  for (int s = -140; s <= 140; ++s) all.push_back(s);
  for (int scaleFactor : all) {
    const std::vector<C> src = somePoints<C>(static_cast<uint64_t>(scaleFactor));
    std::vector<D> got(src.size());
    ASSERT_EQ(kvrStatusOk, call(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      ASSERT_TRUE(matches(scaledAngle<D>(src[i].re, src[i].im, scaleFactor, signBelow), got[i]))
          << show(src[i]) << ", scaleFactor " << scaleFactor << ": got " << got[i];
    }
  }
}

TEST(Phase, ScaleFactors) {
  checkScaleFactors<Kvr16sc, Kvr16s>(kvrsPhase_16sc_Sfs, -28);
  checkScaleFactors<Kvr32sc, Kvr32s>(kvrsPhase_32sc_Sfs, -20);
  checkScaleFactors<Kvr16sc, Kvr16s>(
      [](const Kvr16sc* src, Kvr16s* dst, int len, int scaleFactor) {
        std::vector<Kvr16s> re, im;
        for (int i = 0; i < len; ++i) {
          re.push_back(src[i].re);
          im.push_back(src[i].im);
        }
        return kvrsPhase_16s_Sfs(re.data(), im.data(), dst, len, scaleFactor);
      },
      -28);
}

// All points whose angle is near one half of an integer in some scale: the neighbours of rational approximations.
TEST(Phase, NearHalves) {
  for (int scaleFactor : {0, -3, -7, -13}) {
    std::vector<Kvr16sc> src;
    Random random(static_cast<uint64_t>(1 - scaleFactor));
    for (int k = 0; k < 200; ++k) {
      const int most = static_cast<int>(std::ldexp(3.14, -scaleFactor));
      const long double at =
          std::ldexp(static_cast<long double>(random.below(static_cast<uint32_t>(most))) + 0.5L, scaleFactor);
      for (int n = 0; n < 20; ++n) {
        const long double radius = 1000 + random.below(31000);
        src.push_back({static_cast<Kvr16s>(std::lrint(radius * std::cos(at))),
                       static_cast<Kvr16s>(std::lrint(radius * std::sin(at)))});
        if (n % 2) src.back().im = static_cast<Kvr16s>(-src.back().im);
      }
    }
    std::vector<Kvr16s> got(src.size());
    ASSERT_EQ(kvrStatusOk,
              kvrsPhase_16sc_Sfs(src.data(), got.data(), static_cast<int>(src.size()), scaleFactor));
    for (size_t i = 0; i < src.size(); ++i) {
      ASSERT_TRUE(matches(scaledAngle<Kvr16s>(src[i].re, src[i].im, scaleFactor, -28), got[i]))
          << show(src[i]);
    }
  }
}

TEST(Phase, SweepIntegers) {
  for (int scaleFactor : {-29, -13, 0}) {
    const auto draw = [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); };
    const auto of16s = [=](Kvr16s re, Kvr16s im) {
      return scaledAngle<Kvr16s>(re, im, scaleFactor, -28).value;
    };
    const auto of32sc = [=](Kvr32sc z) { return scaledAngle<Kvr32s>(z.re, z.im, scaleFactor, -20).value; };
    const auto with = [=](auto f) { return [=](auto... a) { return f(a..., scaleFactor); }; };
    SweepOptions options;
    options.lengths =
        scaleFactor == -13 ? sweepLengths() : std::vector<int>{1, 2, 3, 4, 5, 7, 8, 9, 16, 33, 65};
    sweepMapWith<Kvr16s, Kvr16s, Kvr16s>(with(kvrsPhase_16s_Sfs), of16s, sameBits<Kvr16s>, draw, options);
    sweepMapWith<Kvr16s, Kvr16sc>(
        with(kvrsPhase_16sc_Sfs), [=](Kvr16sc z) { return of16s(z.re, z.im); }, sameBits<Kvr16s>, draw,
        options);
    sweepMapWith<Kvr32s, Kvr32sc>(with(kvrsPhase_32sc_Sfs), of32sc, sameBits<Kvr32s>, draw, options);
  }
}

TEST(Phase, PlanesInPlace) {
  expectPlanesInPlace(kvrsPhase_32f, Kvr32f());
  expectPlanesInPlace(kvrsPhase_64f, Kvr64f());
  expectPlanesInPlace([](auto... a) { return kvrsPhase_16s_Sfs(a..., -13); }, Kvr16s());
}

}  // namespace
