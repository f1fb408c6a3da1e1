// SPDX-License-Identifier: MIT
#include "kvrs/goertzel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/random.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"
#include "tests/support/ulps.h"

using namespace kvrs::test;

namespace {

using Exact = std::complex<long double>;

constexpr double kTwoPi = 6.283185307179586;

Exact exact(Kvr32f x) {
  return x;
}
Exact exact(Kvr64f x) {
  return x;
}
Exact exact(Kvr16s x) {
  return x;
}
template <class T>
Exact exact(T x) {
  return {static_cast<long double>(x.re), static_cast<long double>(x.im)};
}

struct Sums {
  Exact y;
  long double magnitude = 0;  // of all terms
};

// The definition, in extended precision. The angle of a sample is that of the double theta.
Sums definition(const std::vector<Exact>& x, double relFreq) {
  const double theta = relFreq * kTwoPi;
  Sums sums;
  for (size_t n = 0; n < x.size(); ++n) {
    const long double angle = static_cast<long double>(theta) * static_cast<long double>(n);
    sums.y += x[n] * Exact(std::cos(angle), -std::sin(angle));
    sums.magnitude += std::abs(x[n]);
  }
  return sums;
}

// The contract's rotation of `m` sums in single precision; what follows it in extended precision.
Sums rotation(const std::vector<Exact>& x, double relFreq, size_t m) {
  const double theta = relFreq * kTwoPi, c = std::cos(theta), s = std::sin(theta);
  const double c2 = 2 * c * c - 1, s2 = 2 * c * s;
  const float cosines[] = {1, static_cast<float>(c), static_cast<float>(c2),
                           static_cast<float>((4 * c * c - 3) * c), static_cast<float>(2 * c2 * c2 - 1)};
  const float sines[] = {0, static_cast<float>(s), static_cast<float>(s2),
                         static_cast<float>((3 - 4 * s * s) * s), static_cast<float>(2 * c2 * s2)};
  std::vector<float> re(m), im(m);
  const size_t rest = x.size() % m;
  for (size_t begin = x.size(); begin > rest;) {
    begin -= m;
    for (size_t l = 0; l < m; ++l) {
      const float oldRe = re[l], oldIm = im[l];
      const float a = oldRe * cosines[m], b = oldIm * sines[m], p = oldIm * cosines[m], q = oldRe * sines[m];
      re[l] = (a + b) + static_cast<float>(x[begin + l].real());
      im[l] = (p - q) + static_cast<float>(x[begin + l].imag());
    }
  }
  const auto turn = [&](size_t k) { return Exact(cosines[k], -sines[k]); };
  Sums sums;
  for (size_t l = 0; l < m; ++l) {
    const Exact term = Exact(re[l], im[l]) * turn(rest) * turn(l);
    sums.y += term;
    sums.magnitude += std::abs(term);
  }
  for (size_t n = 0; n < rest; ++n) {
    sums.y += x[n] * turn(n);
    sums.magnitude += std::abs(x[n]);
  }
  return sums;
}

constexpr float kFrequencies[] = {0.0f,     0.125f,        0.25f,          0.5f,        0.75f,
                                  1.0f / 3, 697.0f / 8000, 1633.0f / 8000, 1e-6f,       0.2001f,
                                  0.49999f, 0.61f,         0.93f,          0.99999994f, 0.0030517578f};

std::vector<int> lengths() {
  std::vector<int> all = sweepLengths();
  all.insert(all.end(), {205, 1000, 4096});
  return all;
}

// A function of single precision: `count` frequencies at once.
template <class T>
struct Single {
  const char* name;
  size_t count;
  std::function<KvrStatus(const T*, int, Kvr32fc*, const float*)> call;
};

template <class T>
void checkSingle(const Single<T>& f) {
  Random random(11);
  const size_t m = 4 / f.count;
  Arena from(4096 * sizeof(T)), to(sizeof(Kvr32fc) * 2);
  for (int len : lengths()) {
    const size_t n = static_cast<size_t>(len), offset = random.below(64);
    const Side side = random.below(2) != 0 ? Side::front : Side::back;
    T* const src = from.place<T>(n, side, offset);
    std::vector<Exact> x(n);
    for (size_t i = 0; i < n; ++i) {
      const T value = random.value<T>();
      put(src, i, value);
      x[i] = exact(value);
    }
    for (size_t k = 0; k < std::size(kFrequencies); ++k) {
      const float relFreq[2] = {kFrequencies[k], kFrequencies[(k + 5) % std::size(kFrequencies)]};
      Kvr32fc* const dst = to.place<Kvr32fc>(f.count, side, random.below(64));
      ASSERT_EQ(kvrStatusOk, f.call(src, len, dst, relFreq)) << f.name;
      ASSERT_TRUE(from.intact() && to.intact()) << f.name << ", length " << len;
      for (size_t j = 0; j < f.count; ++j) {
        const Exact got = exact(get(dst, j));
        const std::string what = std::string(f.name) + ", length " + std::to_string(len) + ", frequency " +
                                 std::to_string(relFreq[j]);
        // The last rotation and the additions.
        const Sums stated = rotation(x, relFreq[j], m);
        ASSERT_LE(std::abs(got - stated.y), 8 * 0x1p-24L * stated.magnitude) << what;
        // A step's own roundings, and the drift of its turn.
        const Sums wide = definition(x, relFreq[j]);
        const long double steps = static_cast<long double>(n / m + 2);
        ASSERT_LE(std::abs(got - wide.y), 4 * steps * 0x1p-24L * wide.magnitude) << what;
      }
    }
  }
}

TEST(Goertzel, Singles) {
  checkSingle<Kvr32f>({"32f", 1, [](const Kvr32f* src, int len, Kvr32fc* dst, const float* f) {
                         return kvrsGoertz_32f(src, len, dst, *f);
                       }});
  checkSingle<Kvr32f>({"two 32f", 2, kvrsGoertzTwo_32f});
}
TEST(Goertzel, ComplexSingles) {
  checkSingle<Kvr32fc>({"32fc", 1, [](const Kvr32fc* src, int len, Kvr32fc* dst, const float* f) {
                          return kvrsGoertz_32fc(src, len, dst, *f);
                        }});
  checkSingle<Kvr32fc>({"two 32fc", 2, kvrsGoertzTwo_32fc});
}

template <class T>
struct Integer {
  const char* name;
  size_t count;
  std::function<KvrStatus(const T*, int, Kvr16sc*, const float*, int)> call;
};

template <class T>
void checkInteger(const Integer<T>& f) {
  Random random(12);
  const size_t m = 4 / f.count;
  Arena from(4096 * sizeof(T)), to(sizeof(Kvr16sc) * 2);
  for (int len : lengths()) {
    const size_t n = static_cast<size_t>(len), offset = random.below(64);
    const Side side = random.below(2) != 0 ? Side::front : Side::back;
    T* const src = from.place<T>(n, side, offset);
    std::vector<Exact> x(n);
    for (size_t i = 0; i < n; ++i) {
      const T value = random.value<T>();
      put(src, i, value);
      x[i] = exact(value);
    }
    for (size_t k = 0; k < std::size(kFrequencies); ++k) {
      const float relFreq[2] = {kFrequencies[k], kFrequencies[(k + 5) % std::size(kFrequencies)]};
      std::vector<Sums> stated;
      for (size_t j = 0; j < f.count; ++j) stated.push_back(rotation(x, relFreq[j], m));
      for (int scaleFactor : {0, 3, 6, 9, 12, -1, -3}) {
        Kvr16sc* const dst = to.place<Kvr16sc>(f.count, side, random.below(64));
        ASSERT_EQ(kvrStatusOk, f.call(src, len, dst, relFreq, scaleFactor)) << f.name;
        ASSERT_TRUE(from.intact() && to.intact()) << f.name << ", length " << len;
        for (size_t j = 0; j < f.count; ++j) {
          const Exact want = stated[j].y * std::ldexp(1.0L, -scaleFactor);
          const long double slack = std::ldexp(8 * 0x1p-24L * stated[j].magnitude, -scaleFactor);
          const auto within = [&](Kvr16s got, long double exact) {
            return got >= saturatedTo<Kvr16s>(exact - slack, kvrRoundNear, -32768, 32767) &&
                   got <= saturatedTo<Kvr16s>(exact + slack, kvrRoundNear, -32768, 32767);
          };
          const Kvr16sc got = get(dst, j);
          ASSERT_TRUE(within(got.re, want.real()) && within(got.im, want.imag()))
              << f.name << ", length " << len << ", frequency " << relFreq[j] << ", scale factor "
              << scaleFactor << ": " << show(got) << " for " << want;
        }
      }
    }
  }
}

TEST(Goertzel, Integers) {
  checkInteger<Kvr16s>({"16s", 1, [](const Kvr16s* src, int len, Kvr16sc* dst, const float* f, int scale) {
                          return kvrsGoertz_16s_Sfs(src, len, dst, *f, scale);
                        }});
  checkInteger<Kvr16sc>({"16sc", 1, [](const Kvr16sc* src, int len, Kvr16sc* dst, const float* f, int scale) {
                           return kvrsGoertz_16sc_Sfs(src, len, dst, *f, scale);
                         }});
  checkInteger<Kvr16sc>({"two 16sc", 2, kvrsGoertzTwo_16sc_Sfs});
}

// Where all is exact: sums with signs, rounded to nearest in every mode, and saturated.
TEST(Goertzel, ExactIntegers) {
  Random random(13);
  for (int len : lengths()) {
    std::vector<Kvr16sc> x(static_cast<size_t>(len));
    for (auto& v : x)
      v = {static_cast<Kvr16s>(random.below(2001) - 1000), static_cast<Kvr16s>(random.below(2001) - 1000)};
    // Turns by 0 and by a half.
    for (const Kvr16s q15 : {0, 16384}) {
      int64_t re = 0, im = 0;
      for (size_t n = 0; n < x.size(); ++n) {
        const int sign = q15 != 0 && n % 2 != 0 ? -1 : 1;
        re += sign * x[n].re;
        im += sign * x[n].im;
      }
      for (int scaleFactor : {-3, -1, 0, 1, 2, 3, 5, 8, 40, 126, 127, 1000, -1000, -127, -126}) {
        const auto stored = [&](int64_t sum) {
          const long double scale = std::ldexp(1.0L, -std::clamp(scaleFactor, -127, 126));
          return saturatedTo<Kvr16s>(static_cast<long double>(sum) * scale, kvrRoundNear, -32768, 32767);
        };
        const Kvr16sc want{stored(re), stored(im)};
        for (int mode : kCallerModes) {
          Kvr16sc got{}, both[2] = {};
          const Kvr16s two[2] = {q15, static_cast<Kvr16s>(16384 - q15)};
          callWithRounding(mode,
                           [&] { return kvrsGoertzQ15_16sc_Sfs(x.data(), len, &got, q15, scaleFactor); });
          callWithRounding(mode,
                           [&] { return kvrsGoertzTwoQ15_16sc_Sfs(x.data(), len, both, two, scaleFactor); });
          // sin(pi) of a double is 2^-53: nothing beside a sum, but an odd one beside a half.
          const bool isExact = q15 == 0;
          if (isExact) {
            ASSERT_EQ(show(want), show(got)) << len << ", " << scaleFactor;
            ASSERT_EQ(show(want), show(both[0])) << len << ", " << scaleFactor;
          } else {
            ASSERT_LE(std::abs(want.re - got.re), 1) << len << ", " << scaleFactor;
            ASSERT_LE(std::abs(want.im - got.im), 1) << len << ", " << scaleFactor;
            ASSERT_LE(std::abs(want.re - both[0].re), 1) << len << ", " << scaleFactor;
          }
        }
      }
    }
  }
}

// Q15 is the same frequency as a float.
TEST(Goertzel, Q15) {
  Random random(14);
  std::vector<Kvr16sc> x(205);
  for (auto& v : x) v = random.value<Kvr16sc>();
  for (int q15 : {0, 1, 77, 4096, 8191, 16384, 30000, 32767}) {
    const float relFreq[2] = {static_cast<float>(q15) / 32768, 0.25f};
    const Kvr16s both[2] = {static_cast<Kvr16s>(q15), 8192};
    Kvr16sc want, got, want2[2], got2[2];
    ASSERT_EQ(kvrStatusOk, kvrsGoertz_16sc_Sfs(x.data(), 205, &want, relFreq[0], 7));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzQ15_16sc_Sfs(x.data(), 205, &got, both[0], 7));
    EXPECT_EQ(show(want), show(got));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_16sc_Sfs(x.data(), 205, want2, relFreq, 7));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwoQ15_16sc_Sfs(x.data(), 205, got2, both, 7));
    EXPECT_EQ(show(want2[0]) + show(want2[1]), show(got2[0]) + show(got2[1]));
  }
}

// --- double precision ---

// The contract's recurrence to the bit, from the sine and cosine that one sample shows.
struct Turn {
  double c, s;
};

Kvr64fc recurrence(const std::vector<Kvr64fc>& x, Turn turn) {
  const double k = 2 * turn.c;
  double re1 = 0, re2 = 0, im1 = 0, im2 = 0;
  for (const Kvr64fc& v : x) {
    const double tRe = v.re - re2, tIm = v.im - im2, kRe = re1 * k, kIm = im1 * k;
    re2 = re1;
    re1 = kRe + tRe;
    im2 = im1;
    im1 = kIm + tIm;
  }
  const double cRe = turn.c * re1, cIm = turn.c * im1, sRe = turn.s * re1, sIm = turn.s * im1;
  return {cRe - re2 - sIm, cIm - im2 + sRe};
}

Turn turnOf(double relFreq) {
  const Kvr64f one = 1;
  Kvr64fc y{};
  EXPECT_EQ(kvrStatusOk, kvrsGoertz_64f(&one, 1, &y, relFreq));
  const long double theta = static_cast<long double>(relFreq * kTwoPi);
  EXPECT_LE(ulps(y.re, std::cos(theta)), 1.5L) << relFreq;
  EXPECT_LE(ulps(y.im, std::sin(theta)), 1.5L) << relFreq;
  return {y.re, y.im};
}

template <class T>
struct Double {
  const char* name;
  size_t count;
  std::function<KvrStatus(const T*, int, Kvr64fc*, const double*)> call;
};

template <class T>
void checkDouble(const Double<T>& f) {
  Random random(15);
  Arena from(4096 * sizeof(T)), to(sizeof(Kvr64fc) * 2);
  for (int len : lengths()) {
    const size_t n = static_cast<size_t>(len), offset = random.below(64);
    const Side side = random.below(2) != 0 ? Side::front : Side::back;
    T* const src = from.place<T>(n, side, offset);
    std::vector<Kvr64fc> parts(n);
    std::vector<Exact> x(n);
    for (size_t i = 0; i < n; ++i) {
      const T value = random.value<T>();
      put(src, i, value);
      x[i] = exact(value);
      parts[i] = {static_cast<double>(x[i].real()), static_cast<double>(x[i].imag())};
    }
    for (size_t k = 0; k < std::size(kFrequencies); ++k) {
      const double relFreq[2] = {
          static_cast<double>(kFrequencies[k]) + (kFrequencies[k] == 0.61f ? 1e-9 : 0.0),
          static_cast<double>(kFrequencies[(k + 5) % std::size(kFrequencies)])};
      Kvr64fc* const dst = to.place<Kvr64fc>(f.count, side, random.below(64));
      ASSERT_EQ(kvrStatusOk, f.call(src, len, dst, relFreq)) << f.name;
      ASSERT_TRUE(from.intact() && to.intact()) << f.name << ", length " << len;
      for (size_t j = 0; j < f.count; ++j) {
        const Kvr64fc got = get(dst, j), want = recurrence(parts, turnOf(relFreq[j]));
        const std::string what = std::string(f.name) + ", length " + std::to_string(len) + ", frequency " +
                                 std::to_string(relFreq[j]);
        ASSERT_EQ(want.re, got.re) << what;
        ASSERT_EQ(want.im, got.im) << what;
        const Sums wide = definition(x, relFreq[j]);
        const long double angle = static_cast<long double>(relFreq[j] * kTwoPi) * static_cast<long double>(n);
        const long double growth =
            std::min(static_cast<long double>(n),
                     1 / std::abs(std::sin(static_cast<long double>(relFreq[j] * kTwoPi))));
        ASSERT_LE(std::abs(exact(got) - wide.y * Exact(std::cos(angle), std::sin(angle))),
                  4 * static_cast<long double>(n + 1) * growth * 0x1p-53L * wide.magnitude)
            << what;
      }
    }
  }
}

TEST(Goertzel, Doubles) {
  checkDouble<Kvr64f>({"64f", 1, [](const Kvr64f* src, int len, Kvr64fc* dst, const double* f) {
                         return kvrsGoertz_64f(src, len, dst, *f);
                       }});
  checkDouble<Kvr64f>({"two 64f", 2, kvrsGoertzTwo_64f});
}
TEST(Goertzel, ComplexDoubles) {
  checkDouble<Kvr64fc>({"64fc", 1, [](const Kvr64fc* src, int len, Kvr64fc* dst, const double* f) {
                          return kvrsGoertz_64fc(src, len, dst, *f);
                        }});
  checkDouble<Kvr64fc>({"two 64fc", 2, kvrsGoertzTwo_64fc});
}

// --- edges ---

TEST(Goertzel, ZeroFrequencySums) {
  std::vector<Kvr32f> x(37);
  std::vector<Kvr64f> y(37);
  for (size_t i = 0; i < x.size(); ++i) y[i] = x[i] = static_cast<float>(i) - 10;
  for (const float relFreq : {0.0f, -0.0f}) {
    Kvr32fc single{}, singles[2] = {};
    Kvr64fc twice{}, twices[2] = {};
    const float both[2] = {relFreq, relFreq};
    const double bothTwice[2] = {relFreq, relFreq};
    ASSERT_EQ(kvrStatusOk, kvrsGoertz_32f(x.data(), 37, &single, relFreq));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_32f(x.data(), 37, singles, both));
    ASSERT_EQ(kvrStatusOk, kvrsGoertz_64f(y.data(), 37, &twice, relFreq));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_64f(y.data(), 37, twices, bothTwice));
    for (const Kvr32fc& got : {single, singles[0], singles[1]}) {
      EXPECT_EQ(296, got.re);
      EXPECT_TRUE(sameBits(got.im, 0.0f)) << got.im;
    }
    for (const Kvr64fc& got : {twice, twices[0], twices[1]}) {
      EXPECT_EQ(296, got.re);
      EXPECT_EQ(0, got.im);
    }
  }
}

// Frequencies at any address, with nothing readable beside them.
TEST(Goertzel, FrequenciesAnywhere) {
  Random random(16);
  Arena arena(64);
  std::vector<Kvr16sc> x(100);
  std::vector<Kvr64f> y(100);
  for (size_t i = 0; i < x.size(); ++i) {
    x[i] = random.value<Kvr16sc>();
    y[i] = random.value<Kvr64f>();
  }
  const float single[2] = {0.1f, 0.75f};
  const double twice[2] = {0.1, 0.75};
  const Kvr16s q15[2] = {3277, 24576};
  const auto anywhere = [&](const auto& values, size_t offset) {
    auto* const to = arena.place<std::remove_cvref_t<decltype(values[0])>>(
        2, offset % 2 != 0 ? Side::front : Side::back, offset);
    put(to, 0, values[0]);
    put(to, 1, values[1]);
    return to;
  };
  Kvr16sc want[2], got[2];
  Kvr64fc wantTwice[2], gotTwice[2];
  for (size_t offset = 0; offset < 16; ++offset) {
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_16sc_Sfs(x.data(), 100, want, single, 8));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_16sc_Sfs(x.data(), 100, got, anywhere(single, offset), 8));
    EXPECT_EQ(show(want[0]) + show(want[1]), show(got[0]) + show(got[1]));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwoQ15_16sc_Sfs(x.data(), 100, want, q15, 8));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwoQ15_16sc_Sfs(x.data(), 100, got, anywhere(q15, offset), 8));
    EXPECT_EQ(show(want[0]) + show(want[1]), show(got[0]) + show(got[1]));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_64f(y.data(), 100, wantTwice, twice));
    ASSERT_EQ(kvrStatusOk, kvrsGoertzTwo_64f(y.data(), 100, gotTwice, anywhere(twice, offset)));
    EXPECT_EQ(show(wantTwice[0]) + show(wantTwice[1]), show(gotTwice[0]) + show(gotTwice[1]));
    ASSERT_TRUE(arena.intact());
  }
}

TEST(Goertzel, OneSample) {
  const Kvr32f one = 1;
  const Kvr64f oneTwice = 1;
  Kvr32fc y{};
  Kvr64fc yTwice{};
  ASSERT_EQ(kvrStatusOk, kvrsGoertz_32f(&one, 1, &y, 0.3f));
  EXPECT_EQ("(1, 0)", show(y));
  ASSERT_EQ(kvrStatusOk, kvrsGoertz_64f(&oneTwice, 1, &yTwice, 0.3));
  EXPECT_NEAR(std::cos(0.3 * kTwoPi), yTwice.re, 1e-15);
  EXPECT_NEAR(std::sin(0.3 * kTwoPi), yTwice.im, 1e-15);
}

TEST(Goertzel, FrequenciesOutOfRange) {
  const Kvr32fc x[4] = {};
  const Kvr64fc xTwice[4] = {};
  Kvr32fc y[2] = {{7, 7}, {7, 7}};
  Kvr64fc yTwice[2] = {{7, 7}, {7, 7}};
  for (const float bad :
       {1.0f, -1e-30f, 2.0f, INFINITY, -INFINITY, std::numeric_limits<float>::quiet_NaN()}) {
    const float first[2] = {bad, 0.1f}, second[2] = {0.1f, bad};
    const double firstTwice[2] = {bad, 0.1}, secondTwice[2] = {0.1, bad};
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertz_32fc(x, 4, y, bad));
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertzTwo_32fc(x, 4, y, first));
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertzTwo_32fc(x, 4, y, second));
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertz_64fc(xTwice, 4, yTwice, bad));
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertzTwo_64fc(xTwice, 4, yTwice, firstTwice));
    EXPECT_EQ(kvrStatusBadRelFreq, kvrsGoertzTwo_64fc(xTwice, 4, yTwice, secondTwice));
  }
  EXPECT_EQ("(7, 7)(7, 7)", show(y[0]) + show(y[1]));
  EXPECT_EQ("(7, 7)(7, 7)", show(yTwice[0]) + show(yTwice[1]));
  EXPECT_EQ(kvrStatusOk, kvrsGoertz_32fc(x, 4, y, 0.99999994f));
  EXPECT_EQ(kvrStatusOk, kvrsGoertz_64fc(xTwice, 4, yTwice, 1 - 0x1p-53));
}

}  // namespace
