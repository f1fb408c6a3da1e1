// SPDX-License-Identifier: MIT
#include "kvrs/polar.h"

#include <algorithm>
#include <cmath>

#include "tests/support/rounding.h"
#include "tests/support/ulps.h"
#include "tests/vector/quotient.h"
#include "tests/vector/tied.h"

using namespace kvrs::test;

namespace {

template <class T>
using Back = KvrStatus (*)(const T*, const T*, T*, T*, int) noexcept;

// What the contract allows, in units in the last place.
template <class T>
inline constexpr double kBound = sizeof(T) == 4 ? 0.6 : 2;

// A distance beyond which a value must be the one wanted, after the reference has been rounded itself.
constexpr int kRounded = 2;

long double re(long double magnitude, long double phase) {
  return magnitude * std::cos(phase);
}
long double im(long double magnitude, long double phase) {
  return magnitude * std::sin(phase);
}

template <class T>
bool near(T got, T want) {
  return std::isnan(want) ? std::isnan(got) : withinUlps(got, want, kRounded);
}

// Magnitudes of all kinds, phases up to where the reduction changes and, now and then, beyond.
template <class T>
T draw(Random& random, size_t source) {
  if (source == 0) return anyFloat<T>(random);
  switch (random.below(40)) {
    case 0:
      return anyFloat<T>(random);
    case 1:
      return ofExponents<T>(random, 14, 35);
    case 2:
      return static_cast<T>(1.5707963267948966 * random.below(1 << 20));
    default:
      return static_cast<T>(random.unit() * 7);
  }
}

template <class C, class T>
void sweepToComplex(KvrStatus (*f)(const T*, const T*, C*, int) noexcept) {
  sweepMapWith<C, T, T>(
      f,
      [](T m, T p) {
        return C{static_cast<T>(re(m, p)), static_cast<T>(im(m, p))};
      },
      [](C got, C want) { return near(got.re, want.re) && near(got.im, want.im); },
      [](Random& random, size_t source, T) { return draw<T>(random, source); }, SweepOptions{});
}

TEST(PolarToCart, SweepComplex) {
  sweepToComplex(kvrsPolarToCart_32fc);
  sweepToComplex(kvrsPolarToCart_64fc);
}

// Each destination in turn, while the other one lies between guards of its own.
template <class T>
void sweepPlanes(Back<T> f) {
  Arena other(1100 * sizeof(T));
  for (bool second : {false, true}) {
    size_t offset = 0;
    sweepMapWith<T, T, T>(
        [&](const T* m, const T* p, T* dst, int len) {
          T* rest =
              other.place<T>(static_cast<size_t>(len), offset % 2 ? Side::front : Side::back, offset % 32);
          ++offset;
          const KvrStatus status = second ? f(m, p, rest, dst, len) : f(m, p, dst, rest, len);
          EXPECT_TRUE(other.intact());
          return status;
        },
        [&](T m, T p) { return static_cast<T>(second ? im(m, p) : re(m, p)); }, near<T>,
        [](Random& random, size_t source, T) { return draw<T>(random, source); }, SweepOptions{});
  }
}

TEST(PolarToCart, SweepPlanes) {
  sweepPlanes<Kvr32f>(kvrsPolarToCart_32f);
  sweepPlanes<Kvr64f>(kvrsPolarToCart_64f);
}

// The worst of both parts over phases that `phase(random)` draws; magnitudes are in [1, 2).
template <class T, class Phase>
long double worstUlps(Back<T> f, int turns, Phase phase) {
  constexpr int kLen = 1000;
  Random random(17);
  std::vector<T> m(kLen), p(kLen), gotRe(kLen), gotIm(kLen);
  long double worst = 0;
  for (int turn = 0; turn < turns; ++turn) {
    for (int i = 0; i < kLen; ++i) {
      m[i] = ofExponents<T>(random, 0, 0);
      p[i] = phase(random);
    }
    EXPECT_EQ(kvrStatusOk, f(m.data(), p.data(), gotRe.data(), gotIm.data(), kLen));
    for (int i = 0; i < kLen; ++i) {
      const long double here = std::max(ulps(gotRe[i], re(m[i], p[i])), ulps(gotIm[i], im(m[i], p[i])));
      if (here > worst) worst = here;
    }
  }
  return worst;
}

// All sizes of phases, and those next to multiples of a quarter turn, where one part all but vanishes.
template <class T>
void checkAccuracy(Back<T> f) {
  using L = std::numeric_limits<T>;
  for (auto [lowest, highest] : {std::pair{-3, 1},
                                 {-20, 5},
                                 {5, 15},
                                 {14, 24},
                                 {22, 33},
                                 {30, L::max_exponent - 1},
                                 {L::min_exponent - 1, -1},
                                 {L::min_exponent - L::digits, L::min_exponent}}) {
    const auto all = [=](Random& random) { return ofExponents<T>(random, lowest, highest); };
    EXPECT_LT(worstUlps<T>(f, 60, all), kBound<T>) << lowest << ".." << highest;
  }
  for (int bits : {2, 8, 14, 16, 22, 24, 30}) {
    const auto nearQuarters = [=](Random& random) {
      const long double quarters = 1 + random.below(uint32_t{1} << bits);
      const T x = static_cast<T>(quarters * 1.57079632679489661923132169163975144L);
      const int away = static_cast<int>(random.below(5)) - 2;
      return x * (1 + static_cast<T>(away) * L::epsilon());
    };
    EXPECT_LT(worstUlps<T>(f, 40, nearQuarters), kBound<T>) << "multiples below 2^" << bits;
  }
}

TEST(PolarToCart, Accuracy32f) {
  checkAccuracy<Kvr32f>(kvrsPolarToCart_32f);
}
TEST(PolarToCart, Accuracy64f) {
  checkAccuracy<Kvr64f>(kvrsPolarToCart_64f);
}

// The doubles nearest to a multiple of a quarter turn; values from computations with 400 digits.
TEST(PolarToCart, ClosestToQuarterTurns) {
  const Kvr64f m[] = {1, 1, 1, 1};
  const Kvr64f p[] = {0x1.6ac5b262ca1ffp+849, -0x1.6ac5b262ca1ffp+849, 0x1.921fb54442d18p+0, 1e22};
  Kvr64f gotRe[4], gotIm[4];
  ASSERT_EQ(kvrStatusOk, kvrsPolarToCart_64f(m, p, gotRe, gotIm, 4));
  const long double wantRe[] = {-4.68716592425462761112e-19L, -4.68716592425462761112e-19L,
                                6.12323399573676588613e-17L, 0.523214785395138945498L};
  const long double wantIm[] = {1, -1, 1, -0.852200849767188801773L};
  for (int i = 0; i < 4; ++i) {
    EXPECT_LT(ulps(gotRe[i], wantRe[i]), 2) << i;
    EXPECT_LT(ulps(gotIm[i], wantIm[i]), 2) << i;
  }
}

// Alone, and in every lane among ordinary phases.
template <class T>
void checkSpecial(Back<T> f) {
  using L = std::numeric_limits<T>;
  const T inf = L::infinity(), nan = L::quiet_NaN(), tiny = L::denorm_min();
  for (T phase :
       {T{0}, -T{0}, inf, -inf, nan, tiny, -tiny, L::max(), L::lowest(), T{60000}, T{1e12}, T{1e30}}) {
    for (T magnitude : {T{0}, -T{0}, T{1}, -T{2}, inf, -inf, nan, tiny, L::max()}) {
      for (int len : {1, 2, 21}) {
        for (int at = 0; at < len; ++at) {
          std::vector<T> m(static_cast<size_t>(len), 3), p(m.size(), 1), gotRe(m.size()), gotIm(m.size());
          m[static_cast<size_t>(at)] = magnitude;
          p[static_cast<size_t>(at)] = phase;
          ASSERT_EQ(kvrStatusOk, f(m.data(), p.data(), gotRe.data(), gotIm.data(), len));
          for (size_t i = 0; i < m.size(); ++i) {
            const T wantRe = static_cast<T>(re(m[i], p[i])), wantIm = static_cast<T>(im(m[i], p[i]));
            ASSERT_TRUE(near(gotRe[i], wantRe)) << m[i] << ", " << p[i] << ": " << gotRe[i];
            ASSERT_TRUE(near(gotIm[i], wantIm)) << m[i] << ", " << p[i] << ": " << gotIm[i];
          }
        }
      }
    }
  }
}

TEST(PolarToCart, SpecialValues) {
  checkSpecial<Kvr32f>(kvrsPolarToCart_32f);
  checkSpecial<Kvr64f>(kvrsPolarToCart_64f);
}

template <class T>
void checkPlanesInPlace(Back<T> f) {
  for (int len : {1, 5, 16, 33, 100, 1000}) {
    const size_t n = static_cast<size_t>(len);
    const auto m = randomVector<T>(n, 3), p = randomVector<T>(n, 4);
    std::vector<T> wantRe(n), wantIm(n);
    f(m.data(), p.data(), wantRe.data(), wantIm.data(), len);
    for (bool crossed : {false, true}) {
      auto a = m, b = p;
      f(a.data(), b.data(), crossed ? b.data() : a.data(), crossed ? a.data() : b.data(), len);
      expectSame(wantRe, crossed ? b : a, "re");
      expectSame(wantIm, crossed ? a : b, "im");
    }
  }
}

TEST(PolarToCart, PlanesInPlace) {
  checkPlanesInPlace<Kvr32f>(kvrsPolarToCart_32f);
  checkPlanesInPlace<Kvr64f>(kvrsPolarToCart_64f);
}

// Integers.

constexpr long double kError = 0x1p-50L;  // relative to the magnitude

template <class C>
struct TiedParts {
  Tied<decltype(C{}.re)> re, im;
};

template <class C>
TiedParts<C> parts(long double magnitude, long double phase) {
  using T = decltype(C{}.re);
  const long double scale = std::fabs(magnitude);
  return {tiedTo<T>(re(magnitude, phase), kError, scale), tiedTo<T>(im(magnitude, phase), kError, scale)};
}
template <class C>
bool matches(const TiedParts<C>& want, C got) {
  return kvrs::test::matches(want.re, got.re) && kvrs::test::matches(want.im, got.im);
}

long double scaled(int value, int scaleFactor, int limit) {
  return std::ldexp(static_cast<long double>(value), -std::clamp(scaleFactor, -limit, limit));
}

void checkScaled(int magScaleFactor, int phaseScaleFactor) {
  Random random(static_cast<uint64_t>(magScaleFactor) * 65537 + static_cast<uint64_t>(phaseScaleFactor));
  std::vector<Kvr16s> m, p;
  for (int i = 0; i < 60; ++i) {
    m.push_back(random.value<Kvr16s>());
    p.push_back(random.value<Kvr16s>());
  }
  for (Kvr16s a : {-32768, -1, 0, 1, 32767})
    for (Kvr16s b : {-32768, -1, 0, 1, 32767}) m.push_back(a), p.push_back(b);
  std::vector<Kvr16sc> got(m.size());
  ASSERT_EQ(kvrStatusOk, kvrsPolarToCart_16sc_Sfs(m.data(), p.data(), got.data(), static_cast<int>(m.size()),
                                                  magScaleFactor, phaseScaleFactor));
  for (size_t i = 0; i < m.size(); ++i) {
    const auto want = parts<Kvr16sc>(scaled(m[i], magScaleFactor, 31), scaled(p[i], phaseScaleFactor, 1000));
    ASSERT_TRUE(matches(want, got[i])) << m[i] << ", " << p[i] << " by " << magScaleFactor << ", "
                                       << phaseScaleFactor << ": got " << show(got[i]);
  }
}

TEST(PolarToCart, ScaleFactors) {
  std::vector<int> all{INT_MIN, INT_MIN + 1, -1001, -1000, -999, 999, 1000, 1001, INT_MAX - 1, INT_MAX};
  for (int s = -140; s <= 140; ++s) all.push_back(s);
  for (int s : all) {
    checkScaled(s, 13);
    checkScaled(-1, s);
    checkScaled(s, s);
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class C, class T>
void sweepIntegers(KvrStatus (*f)(const T*, const T*, C*, int)) {
  sweepMapWith<C, T, T>(
      f,
      [](T m, T p) {
        const auto both = parts<C>(m, p);
        return C{both.re.value, both.im.value};
      },
      sameBits<C>, [](Random& random, size_t, T) { return random.value<T>(); }, SweepOptions{});
}

TEST(PolarToCart, SweepIntegers) {
  sweepIntegers<Kvr16sc, Kvr16s>(kvrsPolarToCart_16sc);
  sweepIntegers<Kvr32sc, Kvr32s>(kvrsPolarToCart_32sc);
  sweepMapWith<Kvr16sc, Kvr16s, Kvr16s>(
      [](const Kvr16s* m, const Kvr16s* p, Kvr16sc* dst, int len) {
        return kvrsPolarToCart_16sc_Sfs(m, p, dst, len, 0, 13);
      },
      [](Kvr16s m, Kvr16s p) {
        const auto both = parts<Kvr16sc>(m, scaled(p, 13, 1000));
        return Kvr16sc{both.re.value, both.im.value};
      },
      sameBits<Kvr16sc>, [](Random& random, size_t, Kvr16s) { return random.value<Kvr16s>(); },
      SweepOptions{});
}

// 16-bit phases in whole radians, all of them.
TEST(PolarToCart, EveryWholePhase) {
  std::vector<Kvr16s> m(65536, 32767), p(65536);
  for (int i = 0; i < 65536; ++i) p[static_cast<size_t>(i)] = static_cast<Kvr16s>(i - 32768);
  std::vector<Kvr16sc> got(65536);
  ASSERT_EQ(kvrStatusOk, kvrsPolarToCart_16sc(m.data(), p.data(), got.data(), 65536));
  for (size_t i = 0; i < got.size(); ++i) ASSERT_TRUE(matches(parts<Kvr16sc>(m[i], p[i]), got[i])) << p[i];
}

// Cartesian to polar: each magnitude by its definition, each phase within its bound.

template <class T>
[[gnu::noinline]] T magnitude(T a, T b) {
  asm volatile("");
  const T aa = a * a, bb = b * b;
  return std::sqrt(aa + bb);
}

template <class T>
void checkPolar(T a, T b, T gotMag, T gotPhase) {
  ASSERT_TRUE(sameFloat(magnitude(a, b), gotMag)) << a << ", " << b << ": " << gotMag;
  const long double angle =
      std::atan2(static_cast<long double>(b), static_cast<long double>(a == 0 ? T{0} : a));
  ASSERT_LT(ulps(gotPhase, angle), 2) << a << ", " << b << ": " << gotPhase;
}

template <class C, class Interleaved, class Planar>
void checkCartToPolar(Interleaved interleaved, Planar planar) {
  using T = decltype(C{}.re);
  Random random(23);
  Arena source(16 * 1100), magnitudes(16 * 1100), phases(16 * 1100);
  for (int len : sweepLengths()) {
    const size_t n = static_cast<size_t>(len);
    for (size_t offset = 0; offset < 32; offset += 7) {
      const Side side = offset % 2 ? Side::front : Side::back;
      C* src = source.place<C>(n, side, (offset * 5) % 32);
      T* mag = magnitudes.place<T>(n, side, offset);
      T* phase = phases.place<T>(n, side, (offset * 3) % 32);
      std::vector<T> a(n), b(n), mag2(n), phase2(n);
      for (size_t i = 0; i < n; ++i) {
        const C z = anyElement<C>(random);
        put(src, i, z);
        a[i] = z.re;
        b[i] = z.im;
      }
      ASSERT_EQ(kvrStatusOk, interleaved(src, mag, phase, len));
      ASSERT_EQ(kvrStatusOk, planar(a.data(), b.data(), mag2.data(), phase2.data(), len));
      for (size_t i = 0; i < n; ++i) {
        checkPolar(a[i], b[i], get(mag, i), get(phase, i));
        checkPolar(a[i], b[i], mag2[i], phase2[i]);
        if (testing::Test::HasFatalFailure()) return;
      }
      ASSERT_TRUE(source.intact() && magnitudes.intact() && phases.intact());
    }
  }
  // Magnitudes follow the caller's rounding mode, phases do not.
  constexpr int kLen = 300;
  std::vector<C> src(kLen);
  for (C& z : src) z = random.value<C>();
  std::vector<T> first(kLen), mag(kLen), phase(kLen);
  interleaved(src.data(), mag.data(), first.data(), kLen);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] {
      const KvrStatus status = interleaved(src.data(), mag.data(), phase.data(), kLen);
      for (int i = 0; i < kLen; ++i) EXPECT_EQ(magnitude(src[i].re, src[i].im), mag[i]);
      return status;
    });
    expectSame(first, phase, "mode " + std::to_string(mode));
  }
}

TEST(CartToPolar, Floats) {
  checkCartToPolar<Kvr32fc>(kvrsCartToPolar_32fc, kvrsCartToPolar_32f);
  checkCartToPolar<Kvr64fc>(kvrsCartToPolar_64fc, kvrsCartToPolar_64f);
}

TEST(CartToPolar, Threads) {
  const int from = threadedLength(2048);
  const auto src = randomVector<Kvr32fc>(static_cast<size_t>(from) + 1, 7);
  std::vector<Kvr32f> phase(src.size());
  for (int len : {from - 1, from, from + 1}) {
    expectSameOnThreads<Kvr32f>(
        static_cast<size_t>(len), kvrStatusOk, "len " + std::to_string(len),
        [&](Kvr32f* dst) { return kvrsCartToPolar_32fc(src.data(), dst, phase.data(), len); });
  }
}

TEST(CartToPolar, Integers) {
  Random random(31);
  const auto draw = [&] {
    const int shift = static_cast<int>(random.below(12));
    return Kvr16sc{static_cast<Kvr16s>(random.value<Kvr16s>() >> shift),
                   static_cast<Kvr16s>(random.value<Kvr16s>() >> shift)};
  };
  for (auto [magScaleFactor, phaseScaleFactor] :
       {std::pair{0, 0}, {1, -13}, {-20, 5}, {16, -28}, {3, -29}, {17, 3}}) {
    for (int len : {1, 7, 32, 100}) {
      std::vector<Kvr16sc> src(static_cast<size_t>(len));
      for (Kvr16sc& z : src) z = draw();
      std::vector<Kvr16s> mag(src.size()), phase(src.size());
      ASSERT_EQ(kvrStatusOk, kvrsCartToPolar_16sc_Sfs(src.data(), mag.data(), phase.data(), len,
                                                      magScaleFactor, phaseScaleFactor));
      for (size_t i = 0; i < src.size(); ++i) {
        const int64_t sum = int64_t{src[i].re} * src[i].re + int64_t{src[i].im} * src[i].im;
        const float root = std::ldexp(std::sqrt(static_cast<float>(sum)), -magScaleFactor);
        const Kvr16s wantMag = magScaleFactor == 16 ? sum > 1 << 30
                               : magScaleFactor > 16
                                   ? 0
                                   : static_cast<Kvr16s>(std::rint(std::min(root, 32767.0f)));
        ASSERT_EQ(wantMag, mag[i]) << show(src[i]);
        const long double angle =
            std::atan2(static_cast<long double>(src[i].im), static_cast<long double>(src[i].re));
        const auto wantPhase = phaseScaleFactor < -28
                                   ? Tied<Kvr16s>{extreme<Kvr16s>(angle > 0   ? 1
                                                                  : angle < 0 ? -1
                                                                              : 0)}
                                   : tiedTo<Kvr16s>(std::ldexp(angle, -phaseScaleFactor), 0x1p-51L);
        ASSERT_TRUE(kvrs::test::matches(wantPhase, phase[i])) << show(src[i]) << ": " << phase[i];
      }
    }
  }
}

// Two calls, each with its own tests: the magnitudes are there when the phases are refused.
TEST(CartToPolar, IntegersTestDstPhaseLast) {
  const Kvr16sc src[] = {{3, 4}, {5, 12}};
  Kvr16s mag[2] = {-1, -1}, phase[2] = {-1, -1};
  EXPECT_EQ(kvrStatusNullPointer, kvrsCartToPolar_16sc_Sfs(src, mag, nullptr, 2, 0, 0));
  EXPECT_EQ(5, mag[0]);
  EXPECT_EQ(13, mag[1]);
  EXPECT_EQ(kvrStatusBadLength, kvrsCartToPolar_16sc_Sfs(src, mag, nullptr, 0, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsCartToPolar_16sc_Sfs(src, nullptr, phase, 2, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsCartToPolar_16sc_Sfs(nullptr, mag, phase, 0, 0, 0));
  EXPECT_EQ(-1, phase[0]);
}

// Modes of the caller's change no phase that is read.
TEST(PolarToCart, IgnoresTheRoundingMode) {
  constexpr int kLen = 300;
  Random random(41);
  std::vector<Kvr32f> m(kLen), p(kLen);
  std::vector<Kvr64f> wideM(kLen), wideP(kLen);
  std::vector<Kvr32s> w(kLen), v(kLen);
  for (int i = 0; i < kLen; ++i) {
    m[i] = static_cast<Kvr32f>(random.unit());
    p[i] = draw<Kvr32f>(random, 1);
    wideM[i] = random.unit();
    wideP[i] = draw<Kvr64f>(random, 1);
    w[i] = random.value<Kvr32s>();
    v[i] = random.value<Kvr32s>();
  }
  std::vector<Kvr32fc> first(kLen), got(kLen);
  std::vector<Kvr64fc> wideFirst(kLen), wideGot(kLen);
  std::vector<Kvr32sc> wholeFirst(kLen), wholeGot(kLen);
  kvrsPolarToCart_32fc(m.data(), p.data(), first.data(), kLen);
  kvrsPolarToCart_64fc(wideM.data(), wideP.data(), wideFirst.data(), kLen);
  kvrsPolarToCart_32sc(w.data(), v.data(), wholeFirst.data(), kLen);
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] { return kvrsPolarToCart_32fc(m.data(), p.data(), got.data(), kLen); });
    callWithRounding(mode,
                     [&] { return kvrsPolarToCart_64fc(wideM.data(), wideP.data(), wideGot.data(), kLen); });
    callWithRounding(mode, [&] { return kvrsPolarToCart_32sc(w.data(), v.data(), wholeGot.data(), kLen); });
    for (int i = 0; i < kLen; ++i) {
      EXPECT_TRUE(sameFloat(first[i], got[i]) && sameFloat(wideFirst[i], wideGot[i])) << i;
      EXPECT_TRUE(sameBits(wholeFirst[i], wholeGot[i])) << i;
    }
  }
}

}  // namespace
