// SPDX-License-Identifier: MIT
#include "kvrs/divide.h"

#include <cmath>
#include <limits>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

template <class T, class W>
T saturated(W x) {
  constexpr W low = std::numeric_limits<T>::lowest(), high = std::numeric_limits<T>::max();
  return static_cast<T>(x < low ? low : x > high ? high : x);
}

// To nearest. Where the target can round, the compiler makes vectors of nearbyint, but never of lrint.
template <class T, class W>
T rounded(W x) {
  if constexpr (sizeof(W) == 4) return saturated<T>(nearbyintf(x));
  if constexpr (sizeof(W) == 8) return saturated<T>(nearbyint(x));
}

// The whole contract, as one would write it down.
template <class T, class W>
[[gnu::noipa]] bool loopDiv(const T* a, const T* b, T* __restrict dst, int len, W scale) {
  bool met = false;
  for (int i = 0; i < len; ++i) {
    if (a[i] == 0) {
      met = true;
      dst[i] = b[i] > 0 ? std::numeric_limits<T>::max() : b[i] < 0 ? std::numeric_limits<T>::lowest() : T{0};
    } else {
      dst[i] = rounded<T>(static_cast<W>(b[i]) / static_cast<W>(a[i]) * scale);
    }
  }
  return met;
}

[[gnu::noipa]] bool loopDivComplex(const Kvr16sc* a, const Kvr16sc* b, Kvr16sc* __restrict dst, int len,
                                   double scale) {
  bool met = false;
  for (int i = 0; i < len; ++i) {
    const double ar = a[i].re, ai = a[i].im, br = b[i].re, bi = b[i].im, m = (ar * ar + ai * ai) * scale;
    if (m == 0) {
      met = true;
      dst[i] = {0, 0};
    } else {
      dst[i] = {rounded<Kvr16s>((br * ar + bi * ai) / m), rounded<Kvr16s>((bi * ar - br * ai) / m)};
    }
  }
  return met;
}

template <class T>
[[gnu::noipa]] bool loopTruncate(const T* a, const T* b, T* __restrict dst, int len) {
  bool met = false;
  for (int i = 0; i < len; ++i) {
    if (a[i] == 0) {
      met = true;
      dst[i] = b[i] > 0 ? std::numeric_limits<T>::max() : b[i] < 0 ? std::numeric_limits<T>::lowest() : T{0};
    } else {
      dst[i] = saturated<T>(b[i] / a[i]);
    }
  }
  return met;
}

template <class T>
[[gnu::noipa]] void loopDivC(const T* a, float factor, T* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = rounded<T>(static_cast<float>(a[i]) * factor);
}

[[gnu::noipa]] void loopDivCComplex(const Kvr16sc* a, double re, double im, Kvr16sc* __restrict dst,
                                    int len) {
  for (int i = 0; i < len; ++i) {
    dst[i] = {rounded<Kvr16s>(a[i].re * re - a[i].im * im), rounded<Kvr16s>(a[i].re * im + a[i].im * re)};
  }
}

template <class T>
[[gnu::noipa]] void loopDivFloat(const T* a, const T* b, T* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = b[i] / a[i];
}

template <class T>
[[gnu::noipa]] void loopDivScalar(T val, const T* a, T* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = val / a[i];
}

template <class C>
[[gnu::noipa]] void loopDivFloatComplex(const C* a, const C* b, C* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) {
    const auto r = 1 / (a[i].re * a[i].re + a[i].im * a[i].im);
    dst[i] = {(b[i].re * a[i].re + b[i].im * a[i].im) * r, (b[i].im * a[i].re - b[i].re * a[i].im) * r};
  }
}

template <class T, class W, class F>
void addInteger(const char* type, int len, F f, W scale) {
  const auto a = array<T>(len), b = array<T>(len + 7), dst = array<T>(len);
  const std::string name = std::string("divide/Div_") + type + "/" + std::to_string(len);
  add(name, "kvrs", [=] { f(a.get(), b.get() + 7, dst.get(), len); });
  add(name, "loop", [=] { loopDiv<T, W>(a.get(), b.get() + 7, dst.get(), len, scale); });
}

template <class T, class F>
void addByScalar(const char* type, int len, F f, T val) {
  const auto a = array<T>(len), dst = array<T>(len);
  const std::string name = std::string("divide/DivC_") + type + "/" + std::to_string(len);
  add(name, "kvrs", [=] { f(a.get(), val, dst.get(), len); });
  add(name, "loop", [=] { loopDivC(a.get(), 1.0f / static_cast<float>(val), dst.get(), len); });
}

template <class T, class F>
void addFloat(const char* type, int len, F f) {
  const auto a = array<T>(len), b = array<T>(len + 7), dst = array<T>(len);
  const std::string name = std::string("divide/Div_") + type + "/" + std::to_string(len);
  add(name, "kvrs", [=] { f(a.get(), b.get() + 7, dst.get(), len); });
  add(name, "loop", [=] { loopDivFloat<T>(a.get(), b.get() + 7, dst.get(), len); });
}

template <class C, class T, class F>
void addComplex(const char* type, int len, F f) {
  const auto a = array<T>(2 * len), b = array<T>(2 * len + 14), dst = array<T>(2 * len);
  const auto c = [](const auto& p) { return reinterpret_cast<C*>(p.get()); };
  const std::string name = std::string("divide/Div_") + type + "/" + std::to_string(len);
  add(name, "kvrs", [=] { f(c(a), c(b) + 7, c(dst), len); });
  add(name, "loop", [=] { loopDivFloatComplex<C>(c(a), c(b) + 7, c(dst), len); });
}

Register divide([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    addInteger<Kvr8u>(
        "8u_Sfs", len, [](auto... x) { kvrsDiv_8u_Sfs(x..., -4); }, 16.0f);
    addInteger<Kvr16u>(
        "16u_Sfs", len, [](auto... x) { kvrsDiv_16u_Sfs(x..., -4); }, 16.0f);
    addInteger<Kvr16u>(
        "16u_Sfs_wide", len, [](auto... x) { kvrsDiv_16u_Sfs(x..., -10); }, 1024.0);
    addInteger<Kvr16s>(
        "16s_Sfs", len, [](auto... x) { kvrsDiv_16s_Sfs(x..., -4); }, 16.0f);
    addInteger<Kvr16s>(
        "16s_Sfs_wide", len, [](auto... x) { kvrsDiv_16s_Sfs(x..., -10); }, 1024.0);
    addInteger<Kvr32s>(
        "32s_Sfs", len, [](auto... x) { kvrsDiv_32s_Sfs(x..., -4); }, 16.0);
    addInteger<Kvr16s>(
        "Round_16s_Sfs_near", len, [](auto... x) { kvrsDiv_Round_16s_Sfs(x..., kvrRoundNear, -4); }, 16.0f);
    {
      const auto a = array<Kvr16s>(2 * len), b = array<Kvr16s>(2 * len + 2), dst = array<Kvr16s>(2 * len);
      const auto c = [](const auto& p) { return reinterpret_cast<Kvr16sc*>(p.get()); };
      add("divide/Div_16sc_Sfs/" + n, "kvrs", [=] { kvrsDiv_16sc_Sfs(c(a), c(b) + 1, c(dst), len, -4); });
      add("divide/Div_16sc_Sfs/" + n, "loop", [=] { loopDivComplex(c(a), c(b) + 1, c(dst), len, 0.0625); });
      add("divide/DivC_16sc_Sfs/" + n, "kvrs", [=] { kvrsDivC_16sc_Sfs(c(a), {3, 4}, c(dst), len, 0); });
      add("divide/DivC_16sc_Sfs/" + n, "loop",
          [=] { loopDivCComplex(c(a), 3.0 / 25, -4.0 / 25, c(dst), len); });
      add("divide/Div_Round_16s_Sfs_zero/" + n, "kvrs",
          [=] { kvrsDiv_Round_16s_Sfs(a.get(), b.get() + 1, dst.get(), len, kvrRoundZero, 0); });
      add("divide/Div_Round_16s_Sfs_zero/" + n, "loop",
          [=] { loopTruncate(a.get(), b.get() + 1, dst.get(), len); });
    }
    addByScalar<Kvr8u>(
        "8u_Sfs", len, [](auto... x) { kvrsDivC_8u_Sfs(x..., 0); }, 7);
    addByScalar<Kvr16u>(
        "16u_Sfs", len, [](auto... x) { kvrsDivC_16u_Sfs(x..., 0); }, 7);
    addByScalar<Kvr16s>(
        "16s_Sfs", len, [](auto... x) { kvrsDivC_16s_Sfs(x..., 0); }, 3);
    addFloat<Kvr32f>("32f", len, [](auto... x) { kvrsDiv_32f(x...); });
    addFloat<Kvr64f>("64f", len, [](auto... x) { kvrsDiv_64f(x...); });
    addComplex<Kvr32fc, Kvr32f>("32fc", len, [](auto... x) { kvrsDiv_32fc(x...); });
    addComplex<Kvr64fc, Kvr64f>("64fc", len, [](auto... x) { kvrsDiv_64fc(x...); });
    {
      const auto a = array<Kvr32f>(len), dst = array<Kvr32f>(len);
      add("divide/DivCRev_32f/" + n, "kvrs", [=] { kvrsDivCRev_32f(a.get(), 3, dst.get(), len); });
      add("divide/DivCRev_32f/" + n, "loop", [=] { loopDivScalar(3.0f, a.get(), dst.get(), len); });
    }
  }
});

}  // namespace
}  // namespace kvrs::bench
