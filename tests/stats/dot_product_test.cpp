// SPDX-License-Identifier: MIT
#include "kvrs/dot_product.h"

#include "tests/support/reduction.h"

using namespace kvrs::test;

namespace {

SweepOptions lengths() {
  return {.lengths = sweepLengths({32768, 65536})};
}

// The parts of any element, in extended precision.
struct Number {
  long double re, im;
};
template <class T>
Number number(T x) {
  if constexpr (std::is_arithmetic_v<T>) {
    return {static_cast<long double>(x), 0};
  } else {
    return {static_cast<long double>(x.re), static_cast<long double>(x.im)};
  }
}

// The sum, exact for 16-bit elements, and the sum of the products' magnitudes.
struct Dot {
  Number sum = {0, 0};
  long double size = 0;
};
template <class S1, class S2>
Dot dot(const S1* a, const S2* b, int len) {
  Dot d;
  for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
    const Number x = number(get(a, i)), y = number(get(b, i));
    d.sum.re += x.re * y.re - x.im * y.im;
    d.sum.im += x.re * y.im + x.im * y.re;
    d.size += (std::fabs(x.re) + std::fabs(x.im)) * (std::fabs(y.re) + std::fabs(y.im));
  }
  return d;
}

// A real result, or the parts of a complex one, each made by `convert`.
template <class R, class Convert>
R made(Number sum, Convert convert) {
  if constexpr (std::is_arithmetic_v<R>) {
    return convert.template operator()<R>(sum.re);
  } else {
    using Part = decltype(R::re);
    return {convert.template operator()<Part>(sum.re), convert.template operator()<Part>(sum.im)};
  }
}
struct Scaled {
  int scaleFactor, highest;
  template <class D>
  D operator()(long double sum) const {
    return scaledOracle<D>(sum, std::min(scaleFactor, highest));
  }
};
struct Converted {
  template <class D>
  D operator()(long double sum) const {
    return std::is_floating_point_v<D> ? static_cast<D>(static_cast<double>(sum)) : static_cast<D>(sum);
  }
};

// The extremes, so that products and their sums reach theirs.
auto words() {
  return [](Random& random, size_t, auto like) {
    using T = decltype(like);
    const auto one = [&] {
      return random.below(2) != 0 ? random.value<Kvr16s>()
                                  : static_cast<Kvr16s>(random.below(8) != 0 ? -32768 : 32767);
    };
    if constexpr (std::is_arithmetic_v<T>) {
      return static_cast<T>(one());
    } else {
      const Kvr16s re = one();
      return T{re, one()};
    }
  };
}

template <class R, class S1, class S2>
using DotSfs = KvrStatus (*)(const S1*, const S2*, int, R*, int) noexcept;
template <class R, class S1, class S2>
using DotPlain = KvrStatus (*)(const S1*, const S2*, int, R*) noexcept;

template <class R, class S1, class S2>
void checkScaled(DotSfs<R, S1, S2> f) {
  for (int scaleFactor : {0, 14}) {
    sweepReductionWith<R, S1, S2>(
        [=](const S1* a, const S2* b, int len, R* r) { return f(a, b, len, r, scaleFactor); },
        exactly<R>([=](const S1* a, const S2* b, int len) {
          return made<R>(dot(a, b, len).sum, Scaled{scaleFactor, 31});
        }),
        words());
  }
  Random random(23);
  for (int scaleFactor : kScaleFactors) {
    for (int len : {1, 2, 50, 3000}) {
      std::vector<S1> a(static_cast<size_t>(len));
      std::vector<S2> b(static_cast<size_t>(len));
      for (auto& x : a) x = words()(random, 0, x);
      for (auto& x : b) x = words()(random, 0, x);
      R got{};
      EXPECT_EQ(kvrStatusOk, f(a.data(), b.data(), len, &got, scaleFactor));
      const R want = made<R>(dot(a.data(), b.data(), len).sum, Scaled{scaleFactor, 31});
      EXPECT_TRUE(sameBits(want, got)) << "scale factor " << scaleFactor << ", len " << len << ": got "
                                       << show(got) << ", want " << show(want);
    }
  }
}
template <class R, class S1, class S2>
void checkExact(DotPlain<R, S1, S2> f) {
  sweepReductionWith<R, S1, S2>(f, exactly<R>([](const S1* a, const S2* b, int len) {
                                  return made<R>(dot(a, b, len).sum, Converted{});
                                }),
                                words(), lengths());
}

TEST(DotProduct, Words) {
  checkScaled(kvrsDotProd_16s_Sfs);
  checkScaled(kvrsDotProd_16s32s_Sfs);
  checkExact(kvrsDotProd_16s64s);
  checkExact(kvrsDotProd_16s32f);
}
TEST(DotProduct, ComplexWords) {
  checkScaled(kvrsDotProd_16sc_Sfs);
  checkScaled(kvrsDotProd_16sc32sc_Sfs);
  checkExact(kvrsDotProd_16sc64sc);
  checkExact(kvrsDotProd_16sc32fc);
}
TEST(DotProduct, RealAndComplexWords) {
  checkScaled(kvrsDotProd_16s16sc_Sfs);
  checkScaled(kvrsDotProd_16s16sc32sc_Sfs);
  checkExact(kvrsDotProd_16s16sc64sc);
  checkExact(kvrsDotProd_16s16sc32fc);
}

// The lowest element by itself everywhere: every sum of two products is 2^31, and every sum of parts the largest there is.
TEST(DotProduct, LowestWords) {
  for (int len : {1, 2, 3, 33, 65536, 100001}) {
    const std::vector<Kvr16s> a(2 * static_cast<size_t>(len), -32768);
    const auto pairs = reinterpret_cast<const Kvr16sc*>(a.data());
    const int64_t square = int64_t{len} << 30;
    Kvr64s real = 0;
    Kvr64sc both = {1, 1}, mixed = {1, 1};
    kvrsDotProd_16s64s(a.data(), a.data(), len, &real);
    kvrsDotProd_16sc64sc(pairs, pairs, len, &both);
    kvrsDotProd_16s16sc64sc(a.data(), pairs, len, &mixed);
    EXPECT_EQ(square, real);
    EXPECT_EQ(0, both.re);
    EXPECT_EQ(2 * square, both.im);
    EXPECT_EQ(square, mixed.re);
    EXPECT_EQ(square, mixed.im);
    // (-32768 - 32768i) (-32768 + 32767i), the largest real part, and the smallest.
    std::vector<Kvr16sc> b(static_cast<size_t>(len), Kvr16sc{-32768, 32767});
    kvrsDotProd_16sc64sc(pairs, b.data(), len, &both);
    EXPECT_EQ(square + int64_t{len} * 32768 * 32767, both.re);
    std::fill(b.begin(), b.end(), Kvr16sc{32767, -32768});
    kvrsDotProd_16sc64sc(pairs, b.data(), len, &both);
    EXPECT_EQ(-square - int64_t{len} * 32768 * 32767, both.re);
  }
}

// 32-bit elements: the order of the contract, in plain loops.
struct Lane {
  double s[8] = {};
  void add(size_t i, double product) { s[i % 8] += product; }
  double sum(size_t from, size_t step) const {
    double total = s[from];
    for (size_t i = from + step; i < 8; i += step) total += s[i];
    return total;
  }
};
template <class S1, class S2>
Number longDot(const S1* a, const S2* b, int len) {
  Lane first, second;
  for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
    const Number x = number(get(a, i)), y = number(get(b, i));
    const double xr = static_cast<double>(x.re), xi = static_cast<double>(x.im);
    const double yr = static_cast<double>(y.re), yi = static_cast<double>(y.im);
    if constexpr (std::is_arithmetic_v<S1>) {
      first.add(i, xr * yr);
      second.add(i, xr * yi);
    } else {
      first.add(2 * i, xr * yr);
      first.add(2 * i + 1, xi * yi);
      second.add(2 * i, xr * yi);
      second.add(2 * i + 1, xi * yr);
    }
  }
  if constexpr (std::is_arithmetic_v<S1>) return {first.sum(0, 1), second.sum(0, 1)};
  return {first.sum(0, 2) - first.sum(1, 2), second.sum(0, 1)};
}

template <class R, class S1, class S2>
void checkLongs(DotSfs<R, S1, S2> f) {
  for (int scaleFactor : {32, 0, 1, -1, 40, 60, 93, 94, 2000, -31, -32, -2000}) {
    const int bounded = std::max(-31, scaleFactor);
    sweepReductionWith<R, S1, S2>(
        [=](const S1* a, const S2* b, int len, R* r) { return f(a, b, len, r, scaleFactor); },
        exactly<R>([=](const S1* a, const S2* b, int len) {
          return made<R>(longDot(a, b, len), Scaled{bounded, 93});
        }),
        anyValues(), scaleFactor == 32 ? SweepOptions{} : SweepOptions{.lengths = {1, 2, 3, 9, 40, 1000}});
  }
  // Small elements, whose sums are exact: any order gives this.
  const auto small = [](Random& random, size_t, auto like) {
    using T = decltype(like);
    const auto one = [&] { return static_cast<int>(random.below(2001)) - 1000; };
    if constexpr (std::is_arithmetic_v<T>) {
      return static_cast<T>(one());
    } else {
      const int re = one();
      return T{re, one()};
    }
  };
  for (int scaleFactor : {0, 1, 5, -3, 31}) {
    sweepReductionWith<R, S1, S2>(
        [=](const S1* a, const S2* b, int len, R* r) { return f(a, b, len, r, scaleFactor); },
        exactly<R>([=](const S1* a, const S2* b, int len) {
          return made<R>(dot(a, b, len).sum, Scaled{scaleFactor, 93});
        }),
        small, {.lengths = {1, 2, 7, 8, 9, 31, 64, 500}});
  }
}

TEST(DotProduct, Longs) {
  checkLongs(kvrsDotProd_32s_Sfs);
  checkLongs(kvrsDotProd_16s32s32s_Sfs);
  checkLongs(kvrsDotProd_32sc_Sfs);
  checkLongs(kvrsDotProd_32s32sc_Sfs);
}

// The error of sums of open order: some units of the accumulators' precision of what the magnitudes add up to.
template <class R, class S1, class S2>
void checkFloats(DotPlain<R, S1, S2> f, long double unit) {
  sweepReductionWith<R, S1, S2>(
      f,
      [=](const S1* a, const S2* b, int len, R got) -> std::string {
        const Dot want = dot(a, b, len);
        const Number g = number(got);
        const long double bound = unit * (4 + std::sqrt(static_cast<long double>(len))) * want.size;
        return std::fabs(g.re - want.sum.re) <= bound && std::fabs(g.im - want.sum.im) <= bound
                   ? ""
                   : "got " + show(got);
      },
      anyValues(), lengths());
}

TEST(DotProduct, Floats) {
  checkFloats(kvrsDotProd_32f, 0x1p-24L);
  checkFloats(kvrsDotProd_32fc, 0x1p-24L);
  checkFloats(kvrsDotProd_32f32fc, 0x1p-24L);
  checkFloats(kvrsDotProd_64f, 0x1p-53L);
  checkFloats(kvrsDotProd_64fc, 0x1p-53L);
  checkFloats(kvrsDotProd_64f64fc, 0x1p-53L);
  checkFloats(kvrsDotProd_32f64f, 0x1p-53L);
  checkFloats(kvrsDotProd_32fc64fc, 0x1p-53L);
  checkFloats(kvrsDotProd_32f32fc64fc, 0x1p-53L);
}

}  // namespace
