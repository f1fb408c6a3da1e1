// SPDX-License-Identifier: MIT
#include "kvrs/norm.h"

#include <Eigen/Core>

#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

#include "bench/stats/openblas.h"
#include "bench/support/bench.h"
#include "kvrs/dot_product.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

#define KVRS_FAST_LOOP __attribute__((noipa, optimize("O3", "fast-math")))

template <class T, class S = T>
KVRS_FAST_LOOP S loopL1(const T* src, int len) {
  S sum = 0;
  for (int i = 0; i < len; ++i) sum += src[i] < 0 ? -src[i] : src[i];
  return sum;
}
template <class S, class T>
KVRS_FAST_LOOP S loopL2(const T* src, int len) {
  S sum = 0;
  for (int i = 0; i < len; ++i) sum += static_cast<S>(src[i]) * src[i];
  return sum;
}
template <class T>
KVRS_FAST_LOOP T loopInf(const T* src, int len) {
  T most = 0;
  for (int i = 0; i < len; ++i) {
    const T x = src[i] < 0 ? -src[i] : src[i];
    most = x > most ? x : most;
  }
  return most;
}
template <class S, class T>
KVRS_FAST_LOOP S loopDot(const T* a, const T* b, int len) {
  S sum = 0;
  for (int i = 0; i < len; ++i) sum += static_cast<S>(a[i]) * b[i];
  return sum;
}
template <class P, class T>
KVRS_FAST_LOOP void loopComplexDot(const T* a, const T* b, int len, P* dp) {
  P re = 0, im = 0;
  for (int i = 0; i < len; ++i) {
    re += static_cast<P>(a[i].re) * b[i].re - static_cast<P>(a[i].im) * b[i].im;
    im += static_cast<P>(a[i].re) * b[i].im + static_cast<P>(a[i].im) * b[i].re;
  }
  dp[0] = re;
  dp[1] = im;
}

template <class T>
using Map = Eigen::Map<const Eigen::Matrix<T, Eigen::Dynamic, 1>>;
template <class T>
__attribute__((noipa)) T eigenL1(const T* a, int len) {
  return Map<T>(a, len).template lpNorm<1>();
}
template <class T>
__attribute__((noipa)) T eigenL2(const T* a, int len) {
  return Map<T>(a, len).norm();
}
template <class T>
__attribute__((noipa)) T eigenL2Diff(const T* a, const T* b, int len) {
  return (Map<T>(a, len) - Map<T>(b, len)).norm();
}
template <class T>
__attribute__((noipa)) T eigenInf(const T* a, int len) {
  return Map<T>(a, len).template lpNorm<Eigen::Infinity>();
}
template <class T>
__attribute__((noipa)) T eigenDot(const T* a, const T* b, int len) {
  return Map<T>(a, len).dot(Map<T>(b, len));
}

template <class T>
void addFloats(const std::string& type, int len, KvrStatus (*inf)(const T*, int, T*) noexcept,
               KvrStatus (*l1)(const T*, int, T*) noexcept, KvrStatus (*l2)(const T*, int, T*) noexcept,
               KvrStatus (*l2Diff)(const T*, const T*, int, T*) noexcept,
               KvrStatus (*dot)(const T*, const T*, int, T*) noexcept) {
  const std::string n = type + "/" + std::to_string(len);
  const auto a = array<T>(static_cast<size_t>(len)), b = array<T>(static_cast<size_t>(len));
  const auto one = [=](auto f) {
    return [=] {
      T norm;
      f(a.get(), len, &norm);
    };
  };
  const auto two = [=](auto f) {
    return [=] {
      T norm;
      f(a.get(), b.get(), len, &norm);
    };
  };
  add("norm/Inf_" + n, "kvrs", one(inf));
  add("norm/Inf_" + n, "loop", [=] { keep(loopInf(a.get(), len)); });
  add("norm/Inf_" + n, "eigen", [=] { keep(eigenInf(a.get(), len)); });
  add("norm/Inf_" + n, "openblas", [=] { keep(OpenBlas::maxAbsIndex(len, a.get())); });
  add("norm/L1_" + n, "kvrs", one(l1));
  add("norm/L1_" + n, "loop", [=] { keep(loopL1(a.get(), len)); });
  add("norm/L1_" + n, "eigen", [=] { keep(eigenL1(a.get(), len)); });
  add("norm/L1_" + n, "openblas", [=] { keep(OpenBlas::l1(len, a.get())); });
  add("norm/L2_" + n, "kvrs", one(l2));
  add("norm/L2_" + n, "loop", [=] { keep(loopL2<T>(a.get(), len)); });
  add("norm/L2_" + n, "eigen", [=] { keep(eigenL2(a.get(), len)); });
  add("norm/L2_" + n, "openblas", [=] { keep(OpenBlas::l2(len, a.get())); });
  add("norm/DiffL2_" + n, "kvrs", two(l2Diff));
  add("norm/DiffL2_" + n, "eigen", [=] { keep(eigenL2Diff(a.get(), b.get(), len)); });
  add("dotprod/" + n, "kvrs", two(dot));
  add("dotprod/" + n, "loop", [=] { keep(loopDot<T>(a.get(), b.get(), len)); });
  add("dotprod/" + n, "eigen", [=] { keep(eigenDot(a.get(), b.get(), len)); });
  add("dotprod/" + n, "openblas", [=] { keep(OpenBlas::dot(len, a.get(), b.get())); });
#ifdef KVRS_BENCH_VOLK
  if constexpr (sizeof(T) == 4) {
    add("dotprod/" + n, "volk", [=] {
      T dp;
      volk_32f_x2_dot_prod_32f(&dp, a.get(), b.get(), static_cast<unsigned>(len));
    });
  }
#endif
}

Register norms([] {
  for (int len : kLengths) {
    addFloats<Kvr32f>("32f", len, kvrsNorm_Inf_32f, kvrsNorm_L1_32f, kvrsNorm_L2_32f, kvrsNormDiff_L2_32f,
                      kvrsDotProd_32f);
    addFloats<Kvr64f>("64f", len, kvrsNorm_Inf_64f, kvrsNorm_L1_64f, kvrsNorm_L2_64f, kvrsNormDiff_L2_64f,
                      kvrsDotProd_64f);
    const std::string n = std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto a = array<Kvr16s>(2 * count), b = array<Kvr16s>(2 * count);
    const auto pairs = [](const auto& p) { return reinterpret_cast<const Kvr16sc*>(p.get()); };
    const auto f = array<Kvr32f>(2 * count), g = array<Kvr32f>(2 * count);
    const auto complex = [](const auto& p) { return reinterpret_cast<const Kvr32fc*>(p.get()); };
    add("dotprod/16s32s/" + n, "kvrs", [=] {
      Kvr32s dp;
      kvrsDotProd_16s32s_Sfs(a.get(), b.get(), len, &dp, 0);
    });
    add("dotprod/16s32s/" + n, "loop", [=] { keep(loopDot<Kvr32s>(a.get(), b.get(), len)); });
    add("dotprod/16s64s/" + n, "kvrs", [=] {
      Kvr64s dp;
      kvrsDotProd_16s64s(a.get(), b.get(), len, &dp);
    });
    add("dotprod/16s64s/" + n, "loop", [=] { keep(loopDot<Kvr64s>(a.get(), b.get(), len)); });
    add("dotprod/16sc64sc/" + n, "kvrs", [=] {
      Kvr64sc dp;
      kvrsDotProd_16sc64sc(pairs(a), pairs(b), len, &dp);
    });
    add("dotprod/16sc64sc/" + n, "loop", [=] {
      Kvr64s dp[2];
      loopComplexDot(pairs(a), pairs(b), len, dp);
    });
    add("dotprod/32fc/" + n, "kvrs", [=] {
      Kvr32fc dp;
      kvrsDotProd_32fc(complex(f), complex(g), len, &dp);
    });
    add("dotprod/32fc/" + n, "loop", [=] {
      Kvr32f dp[2];
      loopComplexDot(complex(f), complex(g), len, dp);
    });
    add("dotprod/32f64f/" + n, "kvrs", [=] {
      Kvr64f dp;
      kvrsDotProd_32f64f(f.get(), g.get(), len, &dp);
    });
    add("dotprod/32f64f/" + n, "loop", [=] { keep(loopDot<Kvr64f>(f.get(), g.get(), len)); });
    add("norm/L1_16s64s/" + n, "kvrs", [=] {
      Kvr64s norm;
      kvrsNorm_L1_16s64s_Sfs(a.get(), len, &norm, 0);
    });
    add("norm/L1_16s64s/" + n, "loop", [=] { keep(loopL1<Kvr16s, Kvr64s>(a.get(), len)); });
    add("norm/L2Sqr_16s64s/" + n, "kvrs", [=] {
      Kvr64s norm;
      kvrsNorm_L2Sqr_16s64s_Sfs(a.get(), len, &norm, 0);
    });
    add("norm/L2Sqr_16s64s/" + n, "loop", [=] { keep(loopL2<Kvr64s>(a.get(), len)); });
  }
});

}  // namespace
}  // namespace kvrs::bench
