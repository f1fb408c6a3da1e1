// Roots of unity, read out of a quarter wave of the sine.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_WAVE_H
#define KVRS_TRANSFORMS_FFT_WAVE_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace kvrs::fft {

template <class T>
struct Root {
  T re, im;
};

// (cos, sin) of 2 pi k / n by their series, exact to the last bits of a double. For constants of the program.
constexpr Root<long double> turnOf(int64_t k, int64_t n) {
  constexpr long double kPi = 3.14159265358979323846264338327950288L;
  // Within an eighth of a turn, and from there by symmetries.
  k = (k % n + n) % n;
  const bool below = 2 * k > n;  // the lower half: the sine is negative
  if (below) k = n - k;
  const bool left = 4 * k > n;
  const int64_t x = left ? n - 2 * k : 2 * k;  // half turns, times n
  const bool steep = 4 * x > n;
  const long double angle = kPi * (steep ? n - 2 * x : 2 * x) / (2 * n), square = angle * angle;
  long double sine = 0, cosine = 0;
  for (int i = 24; i >= 0; i -= 2) {
    cosine = 1 - cosine * square / ((i + 1) * (i + 2));
    sine = 1 - sine * square / ((i + 2) * (i + 3));
  }
  sine *= angle;
  const long double re = steep ? sine : cosine, im = steep ? cosine : sine;
  return {left ? -re : re, below ? -im : im};
}

// sin(2 pi k / M) for k = 0 .. M/4. Every twiddle factor is one of these values, so that it carries one
// rounding.
template <class T>
struct QuarterWave {
  const T* sine;
  int bits;  // log2 M

  // For any k. Tables of contexts are made of many of these: there is nothing to branch on.
  constexpr T sin(size_t k) const {
    const size_t half = size_t{1} << (bits - 1), within = k & (half - 1);
    const T sign[] = {1, -1};
    return sine[within < half - within ? within : half - within] * sign[k >> (bits - 1) & 1];
  }

  // exp(-2 pi i k / 2^order), order up to `bits`, any k.
  constexpr Root<T> root(size_t k, int order) const {
    const size_t s = k << (bits - order);
    return {sin(s + (size_t{1} << (bits - 2))), -sin(s)};
  }
};

// sin(2 pi k / M) for k = 0 .. M/4.
template <class T, int kBits>
constexpr auto makeSine() {
  constexpr int64_t kM = int64_t{1} << kBits;
  std::array<T, kM / 4 + 1> table{};
  for (int64_t k = 0; k <= kM / 4; ++k) table[static_cast<size_t>(k)] = static_cast<T>(turnOf(k, kM).im);
  return table;
}

// The table for M = 1024, part of the program.
template <class T>
inline constexpr auto kSine1024 = makeSine<T, 10>();

template <class T>
inline constexpr QuarterWave<T> kWave1024{kSine1024<T>.data(), 10};

}  // namespace kvrs::fft

#endif
