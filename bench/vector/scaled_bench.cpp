// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <type_traits>

#include "bench/support/bench.h"
#include "kvrs/arith_scaled.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

// The peers: the plain loops that say the same, in the narrowest type that holds the exact result, with dst apart
// from the sources.

template <class D, class R>
inline D saturated(R r) {
  constexpr R lowest = std::numeric_limits<D>::min(), highest = std::numeric_limits<D>::max();
  return static_cast<D>(r < lowest ? lowest : r > highest ? highest : r);
}

// Runs run(store) with what makes a stored value of an exact result: a loop for each kind of scale factor, which is
// only known at run time.
template <class D, class R, class Run>
inline __attribute__((always_inline)) void atScale(int scaleFactor, Run run) {
  if (scaleFactor == 0) {
    run([](R r) { return saturated<D>(r); });
  } else if (scaleFactor > 0) {
    const R bias = (R{1} << (scaleFactor - 1)) - 1;
    run([=](R r) { return saturated<D, R>((r + bias + ((r >> scaleFactor) & 1)) >> scaleFactor); });
  } else {
    run([=](R r) { return saturated<D, R>(static_cast<R>(saturated<D>(r)) << -scaleFactor); });
  }
}

// `op` is a functor, so that it is inlined.
template <class R, class D, class A, class B, class Op>
[[gnu::noipa]] void loop(const A* a, const B* b, D* __restrict dst, int len, int scaleFactor, Op op) {
  atScale<D, R>(scaleFactor, [=](auto store) {
    for (int i = 0; i < len; ++i) dst[i] = store(op(a[i], b[i]));
  });
}

template <class R, class T, class Op>
[[gnu::noipa]] void loopScalar(const T* a, T val, T* __restrict dst, int len, int scaleFactor, Op op) {
  atScale<T, R>(scaleFactor, [=](auto store) {
    for (int i = 0; i < len; ++i) dst[i] = store(op(a[i], val));
  });
}

template <class R, class C, class Op>
[[gnu::noipa]] void loopComplex(const C* a, const C* b, C* __restrict dst, int len, int scaleFactor, Op op) {
  atScale<decltype(C::re), R>(scaleFactor, [=](auto store) {
    for (int i = 0; i < len; ++i) {
      R re, im;
      op(a[i], b[i], re, im);
      dst[i] = {store(re), store(im)};
    }
  });
}

[[gnu::noipa]] void loopAddProduct(const Kvr16s* a, const Kvr16s* b, Kvr16s* srcDst, int len,
                                   int scaleFactor) {
  atScale<Kvr16s, int>(scaleFactor, [=](auto store) {
    for (int i = 0; i < len; ++i) srcDst[i] = store(a[i] * b[i] + srcDst[i]);
  });
}

[[gnu::noipa]] void loopWidened(const Kvr8u* a, const Kvr8u* b, Kvr16u* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<Kvr16u>(a[i] + b[i]);
}

[[gnu::noipa]] void loopMulLow(const Kvr32s* a, const Kvr32s* b, Kvr32s* __restrict dst, int len, int shift) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<Kvr32s>(int64_t{a[i]} * b[i] >> shift);
}

[[gnu::noipa]] void loopMul32s(const Kvr32s* a, const Kvr32s* b, Kvr32s* __restrict dst, int len,
                               double scale) {
  for (int i = 0; i < len; ++i) {
    double x = static_cast<double>(a[i]) * scale * static_cast<double>(b[i]);
    x = x < -0x1p31 ? -0x1p31 : x;
    x = x > 0x1p31 - 1 ? 0x1p31 - 1 : x;
    dst[i] = static_cast<Kvr32s>(nearbyint(x));
  }
}

[[gnu::noipa]] void loopMul32f16s(const Kvr32f* a, Kvr32f val, Kvr16s* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) {
    float x = a[i] * val;
    x = x < -32768.0f ? -32768.0f : x;
    x = x > 32767.0f ? 32767.0f : x;
    dst[i] = static_cast<Kvr16s>(nearbyintf(x));
  }
}

[[gnu::noipa]] void loopMulExtended(long double val, Kvr64s* srcDst, int len) {
  for (int i = 0; i < len; ++i) {
    const long double x = static_cast<long double>(srcDst[i]) * val;
    srcDst[i] = x >= 0x1p63L - 0.5L ? INT64_MAX : x <= -0x1p63L ? INT64_MIN : llrintl(x);
  }
}

constexpr auto plus = [](auto a, auto b) { return a + b; };
constexpr auto minus = [](auto a, auto b) { return b - a; };

// One case: the name carries scale factor and length.
template <class Ours, class Theirs>
void contest(const char* what, int scaleFactor, int len, Ours ours, Theirs theirs) {
  const std::string name =
      std::string("scaled/") + what + "/" + std::to_string(scaleFactor) + "/" + std::to_string(len);
  add(name, "kvrs", ours);
  add(name, "loop", theirs);
}

template <class T, class R, class F, class Op>
void vectors(const char* what, F f, int len, Op op, std::initializer_list<int> scaleFactors) {
  const auto a = array<T>(len), b = array<T>(len), dst = array<T>(len);
  for (int n : scaleFactors) {
    contest(
        what, n, len, [=] { f(a.get(), b.get(), dst.get(), len, n); },
        [=] { loop<R>(a.get(), b.get(), dst.get(), len, n, op); });
  }
}

template <class T, class R, class F, class Op>
void scalar(const char* what, F f, int len, Op op, std::initializer_list<int> scaleFactors) {
  const auto a = array<T>(len), dst = array<T>(len);
  const T val = 77;
  for (int n : scaleFactors) {
    contest(
        what, n, len, [=] { f(a.get(), val, dst.get(), len, n); },
        [=] { loopScalar<R>(a.get(), val, dst.get(), len, n, op); });
  }
}

template <class C, class R, class F>
void complexProducts(const char* what, F f, int len, std::initializer_list<int> scaleFactors) {
  const auto a = array<C>(len), b = array<C>(len), dst = array<C>(len);
  const auto times = [](C x, C y, R& re, R& im) {
    re = R{x.re} * y.re - R{x.im} * y.im;
    im = R{x.im} * y.re + R{x.re} * y.im;
  };
  for (int n : scaleFactors) {
    contest(
        what, n, len, [=] { f(a.get(), b.get(), dst.get(), len, n); },
        [=] { loopComplex<R>(a.get(), b.get(), dst.get(), len, n, times); });
  }
}

template <class R>
constexpr auto times = [](auto a, auto b) { return static_cast<R>(a) * static_cast<R>(b); };
template <class R>
constexpr auto widePlus = [](auto a, auto b) { return static_cast<R>(a) + static_cast<R>(b); };
template <class R>
constexpr auto wideMinus = [](auto a, auto b) { return static_cast<R>(b) - static_cast<R>(a); };

Register scaled([] {
  for (int len : kLengths) {
    vectors<Kvr8u, int>("Add_8u", kvrsAdd_8u_Sfs, len, plus, {0, 1, 3, -2});
    vectors<Kvr16u, int>("Add_16u", kvrsAdd_16u_Sfs, len, plus, {0, 3});
    vectors<Kvr16s, int>("Add_16s", kvrsAdd_16s_Sfs, len, plus, {0, 1, 3, -2, -16});
    vectors<Kvr32s, int64_t>("Add_32s", kvrsAdd_32s_Sfs, len, widePlus<int64_t>, {0, 1, 3, -2});
    vectors<Kvr8u, int>("Sub_8u", kvrsSub_8u_Sfs, len, minus, {0, 3});
    vectors<Kvr16s, int>("Sub_16s", kvrsSub_16s_Sfs, len, minus, {0, 1, 3});
    vectors<Kvr32s, int64_t>("Sub_32s", kvrsSub_32s_Sfs, len, wideMinus<int64_t>, {0, 1, 3});
    scalar<Kvr16s, int>("AddC_16s", kvrsAddC_16s_Sfs, len, plus, {0, 3});
    scalar<Kvr32s, int64_t>("SubCRev_32s", kvrsSubCRev_32s_Sfs, len, wideMinus<int64_t>, {0, 3});
    vectors<Kvr8u, int>("Mul_8u", kvrsMul_8u_Sfs, len, times<int>, {0, 5, -2});
    vectors<Kvr16u, uint32_t>("Mul_16u", kvrsMul_16u_Sfs, len, times<uint32_t>, {0, 8, 16});
    vectors<Kvr16u, uint64_t>("Mul_16u", kvrsMul_16u_Sfs, len, times<uint64_t>, {20});
    vectors<Kvr16s, int>("Mul_16s", kvrsMul_16s_Sfs, len, times<int>, {0, 1, 15, -2});
    scalar<Kvr16s, int>("MulC_16s", kvrsMulC_16s_Sfs, len, times<int>, {0, 15});
    complexProducts<Kvr16sc, int>("Mul_16sc", kvrsMul_16sc_Sfs, len, {0, 15});
    complexProducts<Kvr32sc, int64_t>("Mul_32sc", kvrsMul_32sc_Sfs, len, {0, 31});

    const auto a = array<Kvr32s>(len), b = array<Kvr32s>(len), dst = array<Kvr32s>(len);
    const auto shorts = [](const auto& p) { return reinterpret_cast<Kvr16s*>(p.get()); };
    contest(
        "Mul_32s", 31, len, [=] { kvrsMul_32s_Sfs(a.get(), b.get(), dst.get(), len, 31); },
        [=] { loopMul32s(a.get(), b.get(), dst.get(), len, 0x1p-31); });
    contest(
        "Mul_16s32s", 4, len, [=] { kvrsMul_16s32s_Sfs(shorts(a), shorts(b), dst.get(), len, 4); },
        [=] { loop<int>(shorts(a), shorts(b), dst.get(), len, 4, times<int>); });
    contest(
        "Mul_Low_32s", 31, len, [=] { kvrsMul_Low_32s_Sfs(a.get(), b.get(), dst.get(), len, 31); },
        [=] { loopMulLow(a.get(), b.get(), dst.get(), len, 31); });
    contest(
        "AddProduct_16s", 15, len,
        [=] { kvrsAddProduct_16s_Sfs(shorts(a), shorts(b), shorts(dst), len, 15); },
        [=] { loopAddProduct(shorts(a), shorts(b), shorts(dst), len, 15); });
    contest(
        "Add_8u16u", 0, len,
        [=] {
          kvrsAdd_8u16u(reinterpret_cast<Kvr8u*>(a.get()), reinterpret_cast<Kvr8u*>(b.get()),
                        reinterpret_cast<Kvr16u*>(dst.get()), len);
        },
        [=] {
          loopWidened(reinterpret_cast<Kvr8u*>(a.get()), reinterpret_cast<Kvr8u*>(b.get()),
                      reinterpret_cast<Kvr16u*>(dst.get()), len);
        });

    const auto floats = array<Kvr32f>(len);
    contest(
        "MulC_32f16s", 0, len, [=] { kvrsMulC_32f16s_Sfs(floats.get(), 1e4f, shorts(dst), len, 0); },
        [=] { loopMul32f16s(floats.get(), 1e4f, shorts(dst), len); });
    const auto longs = array<Kvr64s>(len);
    for (int n : {0, 40}) {
      contest(
          "MulC_64s", n, len, [=] { kvrsMulC_64s_ISfs(-1, longs.get(), len, n); },
          [=] { loopMulExtended(ldexpl(-1, -n), longs.get(), len); });
    }
    vectors<Kvr64s, int64_t>("Add_64s", kvrsAdd_64s_Sfs, len,
                             [](int64_t x, int64_t y) {
                               int64_t sum;
                               return __builtin_add_overflow(x, y, &sum) ? (x < 0 ? INT64_MIN : INT64_MAX)
                                                                         : sum;
                             },
                             {0, 3});
  }
});

}  // namespace
}  // namespace kvrs::bench
