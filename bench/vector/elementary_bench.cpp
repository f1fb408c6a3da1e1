// Elementary functions. The loops are compiled with -ffast-math, which in 64-bit programs makes them calls of the compiler's
// vector library.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <complex>
#include <string>

#include "bench/support/bench.h"
#include "kvrs/arctan.h"
#include "kvrs/cauchy.h"
#include "kvrs/exponential.h"
#include "kvrs/logarithm.h"
#include "kvrs/roots.h"
#ifdef KVRS_BENCH_SLEEF
#include <immintrin.h>
#include <sleef.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384};

template <class S, class D>
[[gnu::noinline]] void loopExp(const S* src, D* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::exp(static_cast<D>(src[i]));
}
template <class S, class D>
[[gnu::noinline]] void loopLn(const S* src, D* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<D>(std::log(src[i]));
}
template <class T>
[[gnu::noinline]] void loopArctan(const T* src, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::atan(src[i]);
}
template <class T>
[[gnu::noinline]] void loopSqrt(const T* src, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::sqrt(src[i]);
}
[[gnu::noinline]] void loopCubrt(const Kvr32f* src, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::cbrt(src[i]);
}
template <class C>
[[gnu::noinline]] void loopComplexSqrt(const C* src, C* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const auto root = std::sqrt(std::complex(src[i].re, src[i].im));
    dst[i] = {root.real(), root.imag()};
  }
}
template <class T>
[[gnu::noinline]] double loopSumLn(const T* src, int len) {
  double sum = 0;
  for (int i = 0; i < len; ++i) sum += std::log(static_cast<double>(src[i]));
  return sum;
}
[[gnu::noinline]] void loopCauchy(Kvr32f* x, int len, float inverse) {
  for (int i = 0; i < len; ++i) x[i] = 0.5f * std::log(1 + x[i] * inverse * (x[i] * inverse));
}
[[gnu::noinline]] void loopCauchyD(Kvr32f* x, int len, float square) {
  for (int i = 0; i < len; ++i) x[i] = x[i] / (x[i] * x[i] + square);
}

#ifdef KVRS_BENCH_SLEEF
#if defined __AVX512F__
using F = __m512;
using G = __m512d;
constexpr auto sleefExpF = Sleef_expf16_u10avx512f, sleefLnF = Sleef_logf16_u10avx512f,
               sleefArctanF = Sleef_atanf16_u10avx512f;
constexpr auto sleefExpD = Sleef_expd8_u10avx512f, sleefLnD = Sleef_logd8_u10avx512f,
               sleefArctanD = Sleef_atand8_u10avx512f;
F load(const Kvr32f* p) {
  return _mm512_loadu_ps(p);
}
G load(const Kvr64f* p) {
  return _mm512_loadu_pd(p);
}
void store(Kvr32f* p, F v) {
  _mm512_storeu_ps(p, v);
}
void store(Kvr64f* p, G v) {
  _mm512_storeu_pd(p, v);
}
#elif defined __AVX2__
using F = __m256;
using G = __m256d;
constexpr auto sleefExpF = Sleef_expf8_u10avx2, sleefLnF = Sleef_logf8_u10avx2,
               sleefArctanF = Sleef_atanf8_u10avx2;
constexpr auto sleefExpD = Sleef_expd4_u10avx2, sleefLnD = Sleef_logd4_u10avx2,
               sleefArctanD = Sleef_atand4_u10avx2;
F load(const Kvr32f* p) {
  return _mm256_loadu_ps(p);
}
G load(const Kvr64f* p) {
  return _mm256_loadu_pd(p);
}
void store(Kvr32f* p, F v) {
  _mm256_storeu_ps(p, v);
}
void store(Kvr64f* p, G v) {
  _mm256_storeu_pd(p, v);
}
#else
using F = __m128;
using G = __m128d;
constexpr auto sleefExpF = Sleef_expf4_u10sse4, sleefLnF = Sleef_logf4_u10sse4,
               sleefArctanF = Sleef_atanf4_u10sse4;
constexpr auto sleefExpD = Sleef_expd2_u10sse4, sleefLnD = Sleef_logd2_u10sse4,
               sleefArctanD = Sleef_atand2_u10sse4;
F load(const Kvr32f* p) {
  return _mm_loadu_ps(p);
}
G load(const Kvr64f* p) {
  return _mm_loadu_pd(p);
}
void store(Kvr32f* p, F v) {
  _mm_storeu_ps(p, v);
}
void store(Kvr64f* p, G v) {
  _mm_storeu_pd(p, v);
}
#endif
// Lengths are multiples of the vectors.
template <auto f, class T>
[[gnu::noinline]] void sleef(const T* src, T* dst, int len) {
  constexpr int n = static_cast<int>((sizeof(T) == 4 ? sizeof(F) : sizeof(G)) / sizeof(T));
  for (int i = 0; i < len; i += n) store(dst + i, f(load(src + i)));
}
#endif

template <class Ours, class Loop>
void pair(const std::string& name, Ours ours, Loop loop) {
  add(name, "kvrs", ours);
  add(name, "loop", loop);
}

Register elementary([] {
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto a = newArray<Kvr32f>(count), b = newArray<Kvr32f>(count), p = newArray<Kvr32f>(count);
    const auto da = newArray<Kvr64f>(count), db = newArray<Kvr64f>(count), dp = newArray<Kvr64f>(count);
    const auto ca = newArray<Kvr32fc>(count), cb = newArray<Kvr32fc>(count);
    const auto za = newArray<Kvr64fc>(count), zb = newArray<Kvr64fc>(count);
    for (int i = 0; i < len; ++i) {
      const double x =
          static_cast<double>(static_cast<uint32_t>(i + 1) * 2654435769u) * 0x1p-32;  // in (0, 1)
      da.get()[i] = x * 20 - 10;
      dp.get()[i] = x * 100 + 1e-3;
      a.get()[i] = static_cast<Kvr32f>(da.get()[i]);
      p.get()[i] = static_cast<Kvr32f>(dp.get()[i]);
      ca.get()[i] = {a.get()[i], p.get()[i]};
      za.get()[i] = {da.get()[i], dp.get()[i]};
    }

    pair(
        "exponential/Exp_32f" + n, [=] { kvrsExp_32f(a.get(), b.get(), len); },
        [=] { loopExp(a.get(), b.get(), len); });
    pair(
        "exponential/Exp_64f" + n, [=] { kvrsExp_64f(da.get(), db.get(), len); },
        [=] { loopExp(da.get(), db.get(), len); });
    pair(
        "exponential/Exp_32f64f" + n, [=] { kvrsExp_32f64f(a.get(), db.get(), len); },
        [=] { loopExp(a.get(), db.get(), len); });

    pair(
        "logarithm/Ln_32f" + n, [=] { kvrsLn_32f(p.get(), b.get(), len); },
        [=] { loopLn(p.get(), b.get(), len); });
    pair(
        "logarithm/Ln_64f" + n, [=] { kvrsLn_64f(dp.get(), db.get(), len); },
        [=] { loopLn(dp.get(), db.get(), len); });
    pair(
        "logarithm/Ln_64f32f" + n, [=] { kvrsLn_64f32f(dp.get(), b.get(), len); },
        [=] { loopLn(dp.get(), b.get(), len); });
    pair(
        "logarithm/SumLn_32f" + n,
        [=] {
          Kvr32f sum;
          kvrsSumLn_32f(p.get(), len, &sum);
        },
        [=] { keep(loopSumLn(p.get(), len)); });
    pair(
        "logarithm/SumLn_64f" + n,
        [=] {
          Kvr64f sum;
          kvrsSumLn_64f(dp.get(), len, &sum);
        },
        [=] { keep(loopSumLn(dp.get(), len)); });

    pair(
        "arctan/Arctan_32f" + n, [=] { kvrsArctan_32f(a.get(), b.get(), len); },
        [=] { loopArctan(a.get(), b.get(), len); });
    pair(
        "arctan/Arctan_64f" + n, [=] { kvrsArctan_64f(da.get(), db.get(), len); },
        [=] { loopArctan(da.get(), db.get(), len); });

    pair(
        "roots/Sqrt_32f" + n, [=] { kvrsSqrt_32f(p.get(), b.get(), len); },
        [=] { loopSqrt(p.get(), b.get(), len); });
    pair(
        "roots/Sqrt_64f" + n, [=] { kvrsSqrt_64f(dp.get(), db.get(), len); },
        [=] { loopSqrt(dp.get(), db.get(), len); });
    pair(
        "roots/Sqrt_32fc" + n, [=] { kvrsSqrt_32fc(ca.get(), cb.get(), len); },
        [=] { loopComplexSqrt(ca.get(), cb.get(), len); });
    pair(
        "roots/Sqrt_64fc" + n, [=] { kvrsSqrt_64fc(za.get(), zb.get(), len); },
        [=] { loopComplexSqrt(za.get(), zb.get(), len); });
    pair(
        "roots/Cubrt_32f" + n, [=] { kvrsCubrt_32f(a.get(), b.get(), len); },
        [=] { loopCubrt(a.get(), b.get(), len); });

    pair(
        "cauchy/Cauchy_32f_I" + n, [=] { kvrsCauchy_32f_I(b.get(), len, 2); },
        [=] { loopCauchy(b.get(), len, 0.5f); });
    pair(
        "cauchy/CauchyD_32f_I" + n, [=] { kvrsCauchyD_32f_I(b.get(), len, 2); },
        [=] { loopCauchyD(b.get(), len, 4); });
#ifdef KVRS_BENCH_SLEEF
    add("exponential/Exp_32f" + n, "sleef", [=] { sleef<sleefExpF>(a.get(), b.get(), len); });
    add("exponential/Exp_64f" + n, "sleef", [=] { sleef<sleefExpD>(da.get(), db.get(), len); });
    add("logarithm/Ln_32f" + n, "sleef", [=] { sleef<sleefLnF>(p.get(), b.get(), len); });
    add("logarithm/Ln_64f" + n, "sleef", [=] { sleef<sleefLnD>(dp.get(), db.get(), len); });
    add("arctan/Arctan_32f" + n, "sleef", [=] { sleef<sleefArctanF>(a.get(), b.get(), len); });
    add("arctan/Arctan_64f" + n, "sleef", [=] { sleef<sleefArctanD>(da.get(), db.get(), len); });
#endif
  }
});

}  // namespace
}  // namespace kvrs::bench
