// What a transform has to give: the definition in extended precision, by the sum for short lengths and by
// plain halving for long ones.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_TRANSFORMS_FFT_ORACLE_H
#define KVRS_TESTS_TRANSFORMS_FFT_ORACLE_H

#include <cmath>
#include <cstddef>
#include <vector>

namespace kvrs::test {

struct Wide {
  long double re, im;
};
using WideVector = std::vector<Wide>;

inline Wide operator+(Wide a, Wide b) {
  return {a.re + b.re, a.im + b.im};
}
inline Wide operator-(Wide a, Wide b) {
  return {a.re - b.re, a.im - b.im};
}
inline Wide operator*(Wide a, Wide b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// exp(-2 pi i j / n) for j = 0 .. n-1, n a power of two. Angles stay within an eighth of a turn.
inline WideVector waves(size_t n) {
  constexpr long double kTwoPi = 6.283185307179586476925286766559L;
  WideVector w(n);
  const auto eighth = [&](size_t j) {
    const long double angle = kTwoPi * static_cast<long double>(j) / static_cast<long double>(n);
    return Wide{cosl(angle), -sinl(angle)};
  };
  for (size_t j = 0; 8 * j <= n; ++j) {
    const Wide v = eighth(j);
    const auto set = [&](size_t at, Wide value) {
      if (at < n) w[at] = value;
    };
    set(j, v);
    if (n < 8 && j > 0) continue;
    if (n >= 4) {
      set(n / 4 + j, {v.im, -v.re});
      set(n / 4 - j, {-v.im, -v.re});
      set(n / 2 - j, {-v.re, v.im});
      set(3 * n / 4 - j, {v.im, v.re});
      set(3 * n / 4 + j, {-v.im, v.re});
      if (j > 0) set(n - j, {v.re, -v.im});
    }
    if (n >= 2) set(n / 2 + j, {-v.re, -v.im});
  }
  return w;
}

// The sum of the definition.
inline WideVector dft(const WideVector& x) {
  const size_t n = x.size();
  const WideVector w = waves(n);
  WideVector y(n);
  for (size_t k = 0; k < n; ++k) {
    Wide sum{0, 0};
    for (size_t i = 0; i < n; ++i) sum = sum + x[i] * w[i * k % n];
    y[k] = sum;
  }
  return y;
}

// The same by halves, for powers of two.
inline void fftHalves(const Wide* x, size_t stride, Wide* y, size_t n, const WideVector& w) {
  if (n == 1) {
    y[0] = x[0];
    return;
  }
  fftHalves(x, 2 * stride, y, n / 2, w);
  fftHalves(x + stride, 2 * stride, y + n / 2, n / 2, w);
  for (size_t k = 0; k < n / 2; ++k) {
    const Wide a = y[k], b = y[k + n / 2] * w[k * stride];
    y[k] = a + b;
    y[k + n / 2] = a - b;
  }
}
inline WideVector fft(const WideVector& x) {
  WideVector y(x.size());
  fftHalves(x.data(), 1, y.data(), x.size(), waves(x.size()));
  return y;
}

// The inverse without a scale is the forward transform read backward.
inline WideVector backward(const WideVector& y) {
  const size_t n = y.size();
  WideVector z(n);
  for (size_t k = 0; k < n; ++k) z[k] = y[(n - k) % n];
  return z;
}

}  // namespace kvrs::test

#endif
