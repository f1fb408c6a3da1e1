// SPDX-License-Identifier: MIT
#include "kvrs/median.h"

#include <gsl/gsl_filter.h>

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

template <class T>
inline void exchange(T& a, T& b) {
  const T low = a < b ? a : b, high = a < b ? b : a;
  a = low;
  b = high;
}

// A loop that the compiler makes vectors of.
template <class T>
__attribute__((noipa)) void loopMedian3(const T* x, T* dst, int len) {
  for (int i = 1; i + 1 < len; ++i) {
    T a = x[i - 1], b = x[i], c = x[i + 1];
    exchange(a, b);
    exchange(b, c);
    exchange(a, b);
    dst[i] = b;
  }
}

template <class T>
__attribute__((noipa)) void loopMedian5(const T* x, T* dst, int len) {
  for (int i = 2; i + 2 < len; ++i) {
    T a = x[i - 2], b = x[i - 1], c = x[i], d = x[i + 1], e = x[i + 2];
    exchange(a, b);
    exchange(c, d);
    exchange(a, c);
    exchange(b, d);
    exchange(b, c);
    exchange(c, e);
    exchange(b, c);
    dst[i] = c;
  }
}

// Those of three columns: the largest of their smallest, the middle one of their middle ones, the smallest of their largest.
template <class T>
__attribute__((noipa)) void loopMedian9(const T* x, T* dst, int len) {
  const auto sort = [](T & a, T & b, T & c) __attribute__((always_inline)) {
    exchange(a, b);
    exchange(b, c);
    exchange(a, b);
  };
  for (int i = 4; i + 4 < len; ++i) {
    T a = x[i - 4], b = x[i - 3], c = x[i - 2], d = x[i - 1], e = x[i], f = x[i + 1], g = x[i + 2],
      h = x[i + 3], j = x[i + 4];
    sort(a, b, c);
    sort(d, e, f);
    sort(g, h, j);
    exchange(a, d);
    exchange(d, g);
    sort(b, e, h);
    exchange(f, j);
    exchange(c, f);
    sort(g, e, c);
    dst[i] = e;
  }
}

// The sorted window with linear searches.
template <class T>
__attribute__((noipa)) void loopMedianOfMany(const T* x, T* dst, int len, int mask) {
  T window[256];
  const int half = mask / 2;
  std::fill(window, window + mask, x[0]);
  for (int k = 0; k < half && k < len; ++k) window[half + 1 + k] = x[k];
  std::sort(window, window + mask);
  for (int i = 0; i < len; ++i) {
    const T newest = x[std::min(i + half, len - 1)], oldest = x[std::max(i - half - 1, 0)];
    int k = 0;
    while (window[k] != oldest) ++k;
    for (; k + 1 < mask && window[k + 1] < newest; ++k) window[k] = window[k + 1];
    for (; k > 0 && window[k - 1] > newest; --k) window[k] = window[k - 1];
    window[k] = newest;
    dst[i] = window[half];
  }
}

// The moving median of GSL, which has doubles alone and holds its window in two heaps.
void addGsl(const std::string& name, const std::shared_ptr<Kvr64f>& x, const std::shared_ptr<Kvr64f>& dst,
            int len, int mask) {
  addPrepared(name, "gsl", [=] {
    const std::shared_ptr<gsl_filter_median_workspace> work(
        gsl_filter_median_alloc(static_cast<size_t>(mask)), gsl_filter_median_free);
    return [=](long calls) {
      const auto from = gsl_vector_const_view_array(x.get(), static_cast<size_t>(len));
      auto to = gsl_vector_view_array(dst.get(), static_cast<size_t>(len));
      for (; calls > 0; --calls) {
        gsl_filter_median(GSL_FILTER_END_PADVALUE, &from.vector, &to.vector, work.get());
        writeMemory();
      }
    };
  });
}

template <class T, class Ours>
void addCases(const char* type, Ours ours) {
  for (int len : {256, 4096}) {
    const auto x = array<T>(static_cast<size_t>(len)), dst = array<T>(static_cast<size_t>(len));
    for (int mask : {3, 5, 9, 31, 101}) {
      const std::string name =
          std::string("median/") + type + "/" + std::to_string(mask) + "/" + std::to_string(len);
      add(name, "kvrs", [=] { ours(x.get(), dst.get(), len, mask); });
      add(name, "loop", [=] {
        if (mask == 3) return loopMedian3(x.get(), dst.get(), len);
        if (mask == 5) return loopMedian5(x.get(), dst.get(), len);
        if (mask == 9) return loopMedian9(x.get(), dst.get(), len);
        loopMedianOfMany(x.get(), dst.get(), len, mask);
      });
      if constexpr (std::is_same_v<T, Kvr64f>) {
        if (mask > 9) addGsl(name, x, dst, len, mask);
      }
    }
  }
}

Register median([] {
  addCases<Kvr8u>("8u", kvrsFilterMedian_8u);
  addCases<Kvr16s>("16s", kvrsFilterMedian_16s);
  addCases<Kvr32f>("32f", kvrsFilterMedian_32f);
  addCases<Kvr64f>("64f", kvrsFilterMedian_64f);
});

}  // namespace
}  // namespace kvrs::bench
