// Windows as their contract tells them, element by element in plain arithmetic.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SYNTH_WINDOW_MODEL_H
#define KVRS_TESTS_SYNTH_WINDOW_MODEL_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"
#include "tests/support/short.h"
#include "tests/support/sweep.h"

namespace kvrs::test {

inline double cosineOf(double x) {
  return static_cast<double>(std::cos(static_cast<long double>(x)));
}

// c[n] = a * cos(n * A) for n below `count`.
struct CosineModel {
  double a, angle, twice;

  CosineModel(double amplitude, int len)
      : a(amplitude), angle(6.283185307179586 / (len - 1)), twice(2 * cosineOf(angle)) {}

  static void recur(std::vector<double>& c, double factor, size_t distance, size_t from, size_t count) {
    for (size_t n = from; n < count; ++n) {
      const double product = factor * c[n - distance];
      c.push_back(product - c[n - 2 * distance]);
    }
  }
  std::vector<double> oneByOne(size_t count) const {
    const double second = a * cosineOf(angle);
    std::vector<double> c = {a, twice * a - second};
    recur(c, twice, 1, 2, count);
    return c;
  }
  std::vector<double> byTwo(size_t count) const {
    std::vector<double> c = oneByOne(4);
    recur(c, 2 * cosineOf(2 * angle), 2, 4, count);
    return c;
  }
  // In single precision, started anew after so many.
  std::vector<float> byFour(size_t count, size_t restart) const {
    const float factor = static_cast<float>(2 * cosineOf(4 * angle));
    std::vector<float> all;
    for (size_t k = 0; k < count; k += restart) {
      std::vector<double> start;
      if (k == 0) {
        start = oneByOne(8);
      } else {
        const auto direct = [&](size_t n) {
          return static_cast<double>(static_cast<long double>(a) *
                                     std::cos(static_cast<long double>(n) * static_cast<long double>(angle)));
        };
        start = {direct(k - 1), direct(k)};
        recur(start, twice, 1, 2, 9);
        start.erase(start.begin());
      }
      std::vector<float> c(start.begin(), start.end());
      for (size_t n = 8; n < restart; ++n) {
        const float product = factor * c[n - 4];
        c.push_back(product - c[n - 8]);
      }
      all.insert(all.end(), c.begin(), c.begin() + static_cast<std::ptrdiff_t>(restart));
    }
    return all;
  }
};

// Samples times weights.
inline Kvr16s times(Kvr16s x, float w) {
  const float product = static_cast<float>(x) * w;
  return static_cast<Kvr16s>(std::clamp(std::nearbyint(product), -32768.0f, 32767.0f));
}
inline float times(float x, float w) {
  return x * w;
}
inline float times(float x, double w) {
  return static_cast<float>(static_cast<double>(x) * w);
}
inline double times(double x, double w) {
  return x * w;
}
template <class T, class W>
T times(T x, W w) {
  return {times(x.re, w), times(x.im, w)};
}

template <class T>
struct PartType {
  using Type = T;
};
template <>
struct PartType<Kvr16sc> {
  using Type = Kvr16s;
};
template <>
struct PartType<Kvr32fc> {
  using Type = Kvr32f;
};
template <>
struct PartType<Kvr64fc> {
  using Type = Kvr64f;
};
template <class T>
using PartOf = typename PartType<T>::Type;

// The weights are those of the front half.
template <class T, class W>
std::vector<T> windowed(const std::vector<T>& x, const std::vector<W>& weights) {
  std::vector<T> y = x;
  const size_t len = x.size();
  for (size_t n = 0; n < len / 2; ++n) {
    y[n] = times(x[n], weights[n]);
    y[len - 1 - n] = times(x[len - 1 - n], weights[n]);
  }
  return y;
}

template <class T>
std::vector<T> zeroEnds(std::vector<T> three) {
  three.front() = three.back() = T{};
  return three;
}

// Every length from `shortest` to 1,100, or beyond 200 every stride-th one, and fewer up to 2,100, where nothing changes any
// more, not in place and in place, with guard pages and changing alignments: accepts(got, x) says whether a result is right,
// and tells about it if not.
template <class T, class Call, class CallI, class Accepts>
void checkWindow(Call call, CallI inPlace, int shortest, Accepts accepts, int stride = 1) {
  constexpr int kLongest = 2100;
  Arena from(kLongest * sizeof(T)), to(kLongest * sizeof(T));
  Random random(static_cast<uint64_t>(shortest) + sizeof(T));
  const int far = 7 * stride;
  for (int len = shortest; len <= kLongest; len += len < 200 ? 1 : len < 1100 ? inFull(stride, far) : far) {
    const size_t n = static_cast<size_t>(len), offset = n * 5 % 64;
    const Side side = len % 3 == 0 ? Side::front : Side::back;
    std::vector<T> x(n), got(n);
    for (T& v : x) v = random.value<T>();
    T* src = from.place<T>(n, side, offset);
    T* dst = to.place<T>(n, side, (offset * 3 + 1) % 64);
    for (size_t i = 0; i < n; ++i) put(src, i, x[i]);
    ASSERT_EQ(kvrStatusOk, call(src, dst, len)) << len;
    for (size_t i = 0; i < n; ++i) got[i] = get(dst, i);
    ASSERT_TRUE(accepts(got, x)) << "length " << len;
    ASSERT_TRUE(from.intact() && to.intact()) << "length " << len;
    ASSERT_EQ(kvrStatusOk, inPlace(src, len)) << len;
    for (size_t i = 0; i < n; ++i)
      ASSERT_TRUE(sameBits(get(src, i), got[i])) << "in place, length " << len << " at " << i;
    ASSERT_TRUE(from.intact()) << "in place, length " << len;
  }
}

// The same against the one right result.
template <class T, class Call, class CallI, class Model>
void checkExactWindow(Call call, CallI inPlace, int shortest, Model model) {
  checkWindow<T>(call, inPlace, shortest, [&](const std::vector<T>& got, const std::vector<T>& x) {
    const std::vector<T> want = model(x);
    for (size_t i = 0; i < x.size(); ++i) {
      if (!sameBits(got[i], want[i])) {
        ADD_FAILURE() << "element " << i << " of " << x.size() << ": " << show(got[i]) << " instead of "
                      << show(want[i]);
        return false;
      }
    }
    return true;
  });
}

template <class T>
using Window = KvrStatus (*)(const T*, T*, int) noexcept;
template <class T>
using WindowI = KvrStatus (*)(T*, int) noexcept;

}  // namespace kvrs::test

#endif
