// Roots of unity, read out of a quarter wave of the sine.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_WAVE_H
#define KVRS_TRANSFORMS_FFT_WAVE_H

#include <array>
#include <cstddef>

namespace kvrs::fft {

template <class T>
struct Root {
  T re, im;
};

// sin(2 pi k / M) for k = 0 .. M/4. Every twiddle factor is one of these values, so that it carries one
// rounding.
template <class T>
struct QuarterWave {
  const T* sine;
  int bits;  // log2 M

  constexpr T sin(size_t k) const {
    const size_t quarter = size_t{1} << (bits - 2);
    return k <= quarter ? sine[k] : sine[2 * quarter - k];
  }

  // exp(-2 pi i k / 2^order), order up to `bits`, any k.
  constexpr Root<T> root(size_t k, int order) const {
    const size_t full = size_t{1} << bits, half = full / 2, quarter = full / 4;
    const size_t s = (k << (bits - order)) & (full - 1);
    const size_t c = (s + quarter) & (full - 1);
    return {c < half ? sin(c) : -sin(c - half), s < half ? -sin(s) : sin(s - half)};
  }
};

// The table for M = 1024, part of the program. The series are exact to the last bits of a double.
template <class T>
inline constexpr auto kSine1024 = [] {
  constexpr long double kPi = 3.14159265358979323846264338327950288L;
  std::array<T, 257> table{};
  for (int k = 0; k <= 128; ++k) {
    const long double x = kPi * k / 512, x2 = x * x;
    long double sine = 0, cosine = 0;
    for (int i = 24; i >= 0; i -= 2) {
      cosine = 1 - cosine * x2 / ((i + 1) * (i + 2));
      sine = 1 - sine * x2 / ((i + 2) * (i + 3));
    }
    table[k] = static_cast<T>(sine * x);
    table[256 - k] = static_cast<T>(cosine);
  }
  return table;
}();

template <class T>
inline constexpr QuarterWave<T> kWave1024{kSine1024<T>.data(), 10};

}  // namespace kvrs::fft

#endif
