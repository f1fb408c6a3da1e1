// SPDX-License-Identifier: MIT
#include <cmath>

#include "kvrs/divide.h"
#include "tests/vector/quotient.h"

using namespace kvrs::test;

namespace {

template <class T>
using Two = KvrStatus (*)(const T*, const T*, T*, int) noexcept;
template <class T>
using TwoI = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using Scalar = KvrStatus (*)(const T*, T, T*, int) noexcept;
template <class T>
using ScalarI = KvrStatus (*)(T, T*, int) noexcept;

template <class T>
struct BitsOf;
template <>
struct BitsOf<Kvr32f> {
  using Type = uint32_t;
  static constexpr Type undefined = 0x7FBFFFFF;
};
template <>
struct BitsOf<Kvr64f> {
  using Type = uint64_t;
  static constexpr Type undefined = 0x7FF7FFFFFFFFFFFF;
};

template <class T>
typename BitsOf<T>::Type bits(T x) {
  typename BitsOf<T>::Type b;
  memcpy(&b, &x, sizeof b);
  return b;
}

// What is wanted of a part: a number, some NaN, or the NaN of division by zero. NaN do not survive a return
// through the 32-bit processor stack unharmed, so they are kept as bits.
template <class T>
struct Want {
  typename BitsOf<T>::Type value = 0;
  bool anyNaN = false;
};

template <class T>
Want<T> number(T x) {
  return {bits(x), std::isnan(x)};
}
template <class T>
bool matches(const Want<T>& want, const T& got) {
  return want.anyNaN ? std::isnan(got) : want.value == bits(got);
}

template <class T>
Want<T> quotient(T d, T n) {
  if (d > 0 || d < 0) return number(static_cast<T>(n / d));
  if (d == 0 && n > 0) return number(std::numeric_limits<T>::infinity());
  if (d == 0 && n < 0) return number(-std::numeric_limits<T>::infinity());
  return {BitsOf<T>::undefined, false};
}

// Values of all sizes; one in twelve special.
template <class T>
T draw(Random& random, bool special) {
  if (special && random.below(12) == 0) {
    const T list[] = {0,
                      -T{0},
                      std::numeric_limits<T>::infinity(),
                      -std::numeric_limits<T>::infinity(),
                      std::numeric_limits<T>::quiet_NaN(),
                      std::numeric_limits<T>::denorm_min(),
                      -std::numeric_limits<T>::min() / 4,
                      std::numeric_limits<T>::max(),
                      T{1}};
    return list[random.below(9)];
  }
  T x = static_cast<T>(std::ldexp(random.unit(), static_cast<int>(random.below(60)) - 30));
  return x == 0 ? T{1} : x;
}

template <class T>
std::vector<T> drawVector(size_t n, uint64_t seed, bool special) {
  Random random(seed);
  std::vector<T> v(n);
  for (T& x : v) x = draw<T>(random, special);
  return v;
}

template <class T>
bool isUsual(T d) {
  return d > 0 || d < 0;
}

template <class T>
void expectQuotients(const std::vector<T>& a, const std::vector<T>& b, const std::vector<T>& got) {
  for (size_t i = 0; i < a.size(); ++i) {
    ASSERT_TRUE(matches(quotient(a[i], b[i]), got[i])) << b[i] << " / " << a[i] << ": got " << got[i];
  }
}

template <class T>
KvrStatus statusOfDivisors(const std::vector<T>& a) {
  for (T x : a)
    if (!isUsual(x)) return kvrStatusDivByZeroWarn;
  return kvrStatusOk;
}

template <class T>
void checkDiv(Two<T> f, TwoI<T> inPlace, int threadedFrom) {
  // Without special values through the sweep, with them by all lengths.
  const auto same = [](T x, T y) { return sameBits(x, y); };
  const auto drawOne = [](Random& random, size_t, auto) { return draw<T>(random, false); };
  const auto plain = [](T d, T n) { return static_cast<T>(n / d); };
  sweepMapWith<T, T, T>(f, plain, same, drawOne, SweepOptions{});
  sweepInPlaceWith<T, T>(inPlace, plain, same, drawOne, SweepOptions{});
  for (int len : sweepLengths({threadedFrom})) {
    const size_t n = static_cast<size_t>(len);
    const auto a = drawVector<T>(n, n, true), b = drawVector<T>(n, n + 1, true);
    std::vector<T> got(n);
    ASSERT_EQ(statusOfDivisors(a), f(a.data(), b.data(), got.data(), len));
    expectQuotients(a, b, got);
    got = b;
    ASSERT_EQ(statusOfDivisors(a), inPlace(a.data(), got.data(), len));
    expectQuotients(a, b, got);
    if (testing::Test::HasFatalFailure()) return;
  }
  for (int len : {threadedFrom - 1, threadedFrom, threadedFrom + 7}) {
    const size_t n = static_cast<size_t>(len);
    auto a = drawVector<T>(n, 3, false);
    const auto b = drawVector<T>(n, 4, false);
    for (bool zeroLast : {false, true}) {
      if (zeroLast) a[n - 1] = 0;
      for (const Mode& mode : {kModes[0], kModes[3]}) {
        expectSameOnThreads<T>(
            n, zeroLast ? kvrStatusDivByZeroWarn : kvrStatusOk, "len " + std::to_string(len),
            [&](T* dst) { return inMode(mode.fe, [&] { return f(a.data(), b.data(), dst, len); }); });
      }
    }
  }
}

// Vectors with two divisors that need a rule of their own, at every place: what lies before and between them is
// divided the short way.
template <class T>
void checkFewUnusual(Two<T> f, TwoI<T> inPlace) {
  const T unusual[] = {0, std::numeric_limits<T>::quiet_NaN(), -T{0}};
  for (int len : {5, 37, 83, 700}) {
    const size_t n = static_cast<size_t>(len);
    const auto usual = drawVector<T>(n, n, false), b = drawVector<T>(n, n + 1, true);
    for (size_t i = 0; i < n; ++i) {
      auto a = usual;
      a[i] = unusual[i % 3];
      a[(i + 310) % n] = unusual[i % 2];
      std::vector<T> got(n), inside = b;
      ASSERT_EQ(kvrStatusDivByZeroWarn, f(a.data(), b.data(), got.data(), len));
      ASSERT_EQ(kvrStatusDivByZeroWarn, inPlace(a.data(), inside.data(), len));
      expectQuotients(a, b, got);
      expectQuotients(a, b, inside);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(DivideFloat, FewUnusualDivisors) {
  checkFewUnusual(kvrsDiv_32f, kvrsDiv_32f_I);
  checkFewUnusual(kvrsDiv_64f, kvrsDiv_64f_I);
}

TEST(DivideFloat, Div32f) {
  checkDiv(kvrsDiv_32f, kvrsDiv_32f_I, threadedLength(4096));
}
TEST(DivideFloat, Div64f) {
  checkDiv(kvrsDiv_64f, kvrsDiv_64f_I, threadedLength(1024));
}

template <class T>
void checkSpecial(Two<T> f) {
  const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
  const T all[] = {0, -T{0}, 1, -1, inf, -inf, nan, -nan, std::numeric_limits<T>::denorm_min(), 3};
  // Alone, and in every lane of a longer vector of ordinary elements.
  for (T d : all) {
    for (T n : all) {
      for (int len : {1, 2, 3, 40}) {
        for (int at = 0; at < len; ++at) {
          std::vector<T> a(static_cast<size_t>(len), 2), b(a.size(), 3), got(a.size());
          a[static_cast<size_t>(at)] = d;
          b[static_cast<size_t>(at)] = n;
          ASSERT_EQ(isUsual(d) ? kvrStatusOk : kvrStatusDivByZeroWarn, f(a.data(), b.data(), got.data(), len))
              << n << " / " << d;
          expectQuotients(a, b, got);
        }
      }
    }
  }
}

TEST(DivideFloat, SpecialValues) {
  checkSpecial<Kvr32f>(kvrsDiv_32f);
  checkSpecial<Kvr64f>(kvrsDiv_64f);
}

TEST(DivideFloat, InfinityHasTheSignOfTheDividendAlone) {
  const Kvr32f divisors[] = {-0.0f, -0.0f, 0.0f, 0.0f}, dividends[] = {1, -1, -1, 0};
  Kvr32f dst[4];
  EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_32f(divisors, dividends, dst, 4));
  EXPECT_EQ(0x7F800000u, bits(dst[0]));
  EXPECT_EQ(0xFF800000u, bits(dst[1]));
  EXPECT_EQ(0xFF800000u, bits(dst[2]));
  EXPECT_EQ(0x7FBFFFFFu, bits(dst[3]));
}

TEST(DivideFloat, RaisesNoDivisionByZero) {
  const std::vector<Kvr32fc> zeros(50), some(50, {3, 4});
  std::vector<Kvr32fc> dst(50);
  feclearexcept(FE_ALL_EXCEPT);
  EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_32f(&zeros[0].re, &some[0].re, &dst[0].re, 100));
  EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDiv_32fc(zeros.data(), some.data(), dst.data(), 50));
  EXPECT_EQ(0, fetestexcept(FE_DIVBYZERO));
}

// Complex.

template <class C>
using Part = decltype(C{}.re);

template <class C>
struct ComplexWant {
  Want<Part<C>> re, im;
};

template <class C>
ComplexWant<C> complexQuotient(C d, C n) {
  using T = Part<C>;
  const T m = d.re * d.re + d.im * d.im;
  if (m == 0) return {{BitsOf<T>::undefined, false}, {BitsOf<T>::undefined, false}};
  const T r = 1 / m;
  return {number(static_cast<T>((n.re * d.re + n.im * d.im) * r)),
          number(static_cast<T>((n.im * d.re - n.re * d.im) * r))};
}

template <class C>
std::vector<C> drawComplex(size_t n, uint64_t seed, bool special) {
  const auto parts = drawVector<Part<C>>(2 * n, seed, special);
  std::vector<C> v(n);
  for (size_t i = 0; i < n; ++i) v[i] = {parts[2 * i], parts[2 * i + 1]};
  return v;
}

template <class C>
void expectComplexQuotients(const std::vector<C>& a, const std::vector<C>& b, const std::vector<C>& got) {
  for (size_t i = 0; i < a.size(); ++i) {
    const auto want = complexQuotient(a[i], b[i]);
    ASSERT_TRUE(matches(want.re, got[i].re) && matches(want.im, got[i].im))
        << show(b[i]) << " / " << show(a[i]) << ": got " << show(got[i]);
  }
}

// Of two places one holds a zero and one a NaN, which is no reason to warn.
template <class C>
void checkFewUnusualComplex(Two<C> f, TwoI<C> inPlace) {
  for (int len : {5, 37, 500}) {
    const size_t n = static_cast<size_t>(len);
    const auto usual = drawComplex<C>(n, n, false), b = drawComplex<C>(n, n + 1, true);
    for (size_t i = 0; i < n; ++i) {
      auto a = usual;
      a[(i + 310) % n].im = std::numeric_limits<Part<C>>::quiet_NaN();
      if (i % 4 != 0) a[i] = {0, 0};
      const KvrStatus want = i % 4 != 0 ? kvrStatusDivByZeroWarn : kvrStatusOk;
      std::vector<C> got(n), inside = b;
      ASSERT_EQ(want, f(a.data(), b.data(), got.data(), len));
      ASSERT_EQ(want, inPlace(a.data(), inside.data(), len));
      expectComplexQuotients(a, b, got);
      expectComplexQuotients(a, b, inside);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(DivideFloat, FewUnusualComplexDivisors) {
  checkFewUnusualComplex(kvrsDiv_32fc, kvrsDiv_32fc_I);
  checkFewUnusualComplex(kvrsDiv_64fc, kvrsDiv_64fc_I);
}

template <class C>
void checkComplex(Two<C> f, TwoI<C> inPlace, int threadedFrom) {
  const auto same = [](C x, C y) { return sameBits(x, y); };
  const auto drawOne = [](Random& random, size_t, auto) {
    return C{draw<Part<C>>(random, false), draw<Part<C>>(random, false)};
  };
  const auto plain = [](C d, C n) {
    const auto want = complexQuotient(d, n);
    C q;
    memcpy(&q.re, &want.re.value, sizeof q.re);
    memcpy(&q.im, &want.im.value, sizeof q.im);
    return q;
  };
  sweepMapWith<C, C, C>(f, plain, same, drawOne, SweepOptions{});
  sweepInPlaceWith<C, C>(inPlace, plain, same, drawOne, SweepOptions{});
  for (int len : sweepLengths({threadedFrom})) {
    const size_t n = static_cast<size_t>(len);
    auto a = drawComplex<C>(n, n, true);
    const auto b = drawComplex<C>(n, n + 1, true);
    if (len % 3 == 0) a[n / 2] = {0, 0};
    KvrStatus status = kvrStatusOk;
    for (C x : a)
      if (x.re * x.re + x.im * x.im == 0) status = kvrStatusDivByZeroWarn;
    std::vector<C> got(n), inside = b;
    ASSERT_EQ(status, f(a.data(), b.data(), got.data(), len));
    ASSERT_EQ(status, inPlace(a.data(), inside.data(), len));
    expectComplexQuotients(a, b, got);
    expectComplexQuotients(a, b, inside);
    if (testing::Test::HasFatalFailure()) return;
  }
  for (int len : {threadedFrom - 1, threadedFrom, threadedFrom + 7}) {
    const size_t n = static_cast<size_t>(len);
    auto a = drawComplex<C>(n, 3, false);
    const auto b = drawComplex<C>(n, 4, false);
    for (bool zeroLast : {false, true}) {
      if (zeroLast) a[n - 1] = {0, 0};
      for (const Mode& mode : {kModes[0], kModes[3]}) {
        expectSameOnThreads<C>(
            n, zeroLast ? kvrStatusDivByZeroWarn : kvrStatusOk, "len " + std::to_string(len),
            [&](C* dst) { return inMode(mode.fe, [&] { return f(a.data(), b.data(), dst, len); }); });
      }
    }
  }
}

TEST(DivideFloat, Div32fc) {
  checkComplex(kvrsDiv_32fc, kvrsDiv_32fc_I, threadedLength(1024));
}
TEST(DivideFloat, Div64fc) {
  checkComplex(kvrsDiv_64fc, kvrsDiv_64fc_I, threadedLength(1024));
}

// Of two NaN that meet either may be passed on, by where a thread's share ends; that it is one is the same for any team.
template <class C>
void checkNanOnThreads(Two<C> f) {
  using Part = decltype(C::re);
  const size_t n = static_cast<size_t>(threadedLength(1024)) + 7;
  std::vector<C> a(n), b(n), dst(n);
  Random random(6);
  for (auto* v : {&a, &b}) {
    for (C& x : *v) {
      for (Part* part : {&x.re, &x.im}) {
        *part = std::copysign(std::numeric_limits<Part>::quiet_NaN(), static_cast<Part>(random.unit()));
      }
    }
  }
  for (int threads : {1, 2, 3}) {
    ThreadCount count(threads);
    std::fill(dst.begin(), dst.end(), C{});
    EXPECT_EQ(kvrStatusOk, f(a.data(), b.data(), dst.data(), static_cast<int>(n)));
    for (size_t i = 0; i < n; ++i) ASSERT_TRUE(std::isnan(dst[i].re) && std::isnan(dst[i].im)) << i;
  }
}

TEST(DivideFloat, NanOnThreads) {
  checkNanOnThreads<Kvr32fc>(kvrsDiv_32fc);
  checkNanOnThreads<Kvr64fc>(kvrsDiv_64fc);
}

TEST(DivideFloat, DivCRev32f) {
  const Kvr32f inf = std::numeric_limits<Kvr32f>::infinity(), nan = std::numeric_limits<Kvr32f>::quiet_NaN();
  for (Kvr32f val : {3.0f, -0.7f, 0.0f, inf, nan}) {
    for (int len : sweepLengths({threadedLength(4096)})) {
      const size_t n = static_cast<size_t>(len);
      const auto a = drawVector<Kvr32f>(n, n, true);
      const std::vector<Kvr32f> vals(n, val);
      std::vector<Kvr32f> got(n);
      ASSERT_EQ(statusOfDivisors(a), kvrsDivCRev_32f(a.data(), val, got.data(), len));
      expectQuotients(a, vals, got);
      got = a;
      ASSERT_EQ(statusOfDivisors(a), kvrsDivCRev_32f_I(val, got.data(), len));
      expectQuotients(a, vals, got);
    }
  }
  const auto oracle = [](Kvr32f d) { return -2.5f / d; };
  const auto same = [](Kvr32f x, Kvr32f y) { return sameBits(x, y); };
  const auto drawOne = [](Random& random, size_t, auto) { return draw<Kvr32f>(random, false); };
  sweepMapWith<Kvr32f, Kvr32f>(
      [](const Kvr32f* src, Kvr32f* dst, int len) { return kvrsDivCRev_32f(src, -2.5f, dst, len); }, oracle,
      same, drawOne, SweepOptions{});
  sweepInPlaceWith<Kvr32f>([](Kvr32f* srcDst, int len) { return kvrsDivCRev_32f_I(-2.5f, srcDst, len); },
                           oracle, same, drawOne, SweepOptions{});
  const auto data = drawVector<Kvr32f>(threadedLength(4096) + 7, 5, true);
  expectSameOnThreads<Kvr32f>(data.size(), kvrStatusDivByZeroWarn, "threads", [&](Kvr32f* dst) {
    return kvrsDivCRev_32f(data.data(), 7, dst, static_cast<int>(data.size()));
  });
}

// Division by a scalar.

template <class T>
void checkDivC(Scalar<T> f, ScalarI<T> inPlace) {
  const auto src = drawVector<T>(333, 1, true);
  for (T val : {T{3}, T(-0.1), T{1}, T{-1}, T(1e-30), std::numeric_limits<T>::denorm_min(),
                std::numeric_limits<T>::infinity(), -std::numeric_limits<T>::infinity(),
                std::numeric_limits<T>::quiet_NaN()}) {
    const T factor = 1 / val;
    std::vector<T> got(333), inside = src;
    EXPECT_EQ(kvrStatusOk, f(src.data(), val, got.data(), 333));
    EXPECT_EQ(kvrStatusOk, inPlace(val, inside.data(), 333));
    for (size_t i = 0; i < src.size(); ++i) {
      // A factor of 1 copies, and one of 0 stores zeros.
      const Want<T> want = factor == 1   ? Want<T>{bits(src[i]), false}
                           : factor == 0 ? Want<T>{0, false}
                                         : number(static_cast<T>(src[i] * factor));
      ASSERT_TRUE(matches(want, got[i])) << src[i] << " / " << val << ": got " << got[i];
      ASSERT_TRUE(matches(want, inside[i])) << src[i] << " / " << val << " in place: got " << inside[i];
    }
  }
  auto dst = src;
  for (T zero : {T{0}, -T{0}}) {
    EXPECT_EQ(kvrStatusDivByZeroError, f(src.data(), zero, dst.data(), 333));
    EXPECT_EQ(kvrStatusDivByZeroError, inPlace(zero, dst.data(), 333));
    EXPECT_EQ(kvrStatusBadLength, f(src.data(), zero, dst.data(), 0));
    EXPECT_EQ(kvrStatusBadLength, inPlace(zero, dst.data(), 0));
    EXPECT_EQ(kvrStatusNullPointer, f(src.data(), zero, nullptr, 333));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(zero, nullptr, 333));
  }
  expectSame(src, dst, "after errors");
  const auto same = [](T x, T y) { return sameBits(x, y); };
  const auto drawOne = [](Random& random, size_t, auto) { return draw<T>(random, false); };
  const auto third = [](T x) { return static_cast<T>(x * (1 / T{3})); };
  sweepMapWith<T, T>([&](const T* s, T* d, int len) { return f(s, T{3}, d, len); }, third, same, drawOne,
                     SweepOptions{});
  sweepInPlaceWith<T>([&](T* d, int len) { return inPlace(T{3}, d, len); }, third, same, drawOne,
                      SweepOptions{});
}

TEST(DivideFloat, DivC32f) {
  checkDivC(kvrsDivC_32f, kvrsDivC_32f_I);
}
TEST(DivideFloat, DivC64f) {
  checkDivC(kvrsDivC_64f, kvrsDivC_64f_I);
}

TEST(DivideFloat, DivC32fMultipliesByTheRoundedReciprocal) {
  int different = 0;
  for (int i = 1; i < 100; ++i) {
    const Kvr32f x = static_cast<Kvr32f>(i);
    Kvr32f dst;
    EXPECT_EQ(kvrStatusOk, kvrsDivC_32f(&x, 3.0f, &dst, 1));
    EXPECT_EQ(x * (1.0f / 3.0f), dst);
    different += dst != x / 3.0f;
  }
  EXPECT_GT(different, 0);
}

template <class C>
void checkDivCComplex(Scalar<C> f, ScalarI<C> inPlace) {
  using T = Part<C>;
  const auto same = [](C x, C y) { return sameBits(x, y); };
  const auto drawOne = [](Random& random, size_t, auto) {
    return C{draw<T>(random, false), draw<T>(random, false)};
  };
  for (C val : {C{3, 0}, C{0, -2}, C{T(0.3), T(-0.7)}, C{1, 0}}) {
    const T r = 1 / (val.re * val.re + val.im * val.im);
    const C v = {val.re * r, -val.im * r};
    const auto oracle = [=](C a) { return C{a.re * v.re - a.im * v.im, a.re * v.im + a.im * v.re}; };
    sweepMapWith<C, C>([&](const C* s, C* d, int len) { return f(s, val, d, len); }, oracle, same, drawOne,
                       SweepOptions{});
    sweepInPlaceWith<C>([&](C* d, int len) { return inPlace(val, d, len); }, oracle, same, drawOne,
                        SweepOptions{});
  }
  const auto src = drawComplex<C>(50, 9, false);
  auto dst = src;
  const T tiny = std::numeric_limits<T>::denorm_min();
  for (C zero : {C{0, 0}, C{-T{0}, 0}, C{tiny, tiny}}) {  // the last one's squares vanish
    EXPECT_EQ(kvrStatusDivByZeroError, f(src.data(), zero, dst.data(), 50));
    EXPECT_EQ(kvrStatusDivByZeroError, inPlace(zero, dst.data(), 50));
    EXPECT_EQ(kvrStatusBadLength, f(src.data(), zero, dst.data(), -1));
    EXPECT_EQ(kvrStatusNullPointer, inPlace(zero, nullptr, 50));
  }
  expectSame(src, dst, "after errors");
}

TEST(DivideFloat, DivC32fc) {
  checkDivCComplex(kvrsDivC_32fc, kvrsDivC_32fc_I);
}
TEST(DivideFloat, DivC64fc) {
  checkDivCComplex(kvrsDivC_64fc, kvrsDivC_64fc_I);
}

}  // namespace
