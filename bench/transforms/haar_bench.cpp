// Haar transforms beside the loops that the compiler makes vectors of.
// SPDX-License-Identifier: MIT
#include <string>
#include <type_traits>

#include "bench/support/bench.h"
#include "kvrs/wavelet.h"

namespace kvrs::bench {
namespace {

// Exact sums, of 64-bit integers too.
template <class T>
inline T halved(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    return (a + b) * T(0.5);
  } else if constexpr (sizeof(T) < 4) {
    const int sum = a + b;
    return static_cast<T>((sum + ((sum >> 1) & 1)) >> 1);
  } else if constexpr (sizeof(T) == 4) {
    const int64_t sum = static_cast<int64_t>(a) + b;
    return static_cast<T>((sum + ((sum >> 1) & 1)) >> 1);
  } else {
    const T half = (a & b) + ((a ^ b) >> 1);
    return half + (half & (a ^ b) & 1);
  }
}
template <class T>
inline T saturated(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    return a + b;
  } else if constexpr (sizeof(T) < 4) {
    const int sum = a + b, top = (1 << (8 * sizeof(T) - 1)) - 1;
    return static_cast<T>(sum > top ? top : sum < -top - 1 ? -top - 1 : sum);
  } else {
    T sum;
    if (__builtin_add_overflow(a, b, &sum))
      sum = a < 0 ? T(T(1) << (8 * sizeof(T) - 1)) : T(~(T(1) << (8 * sizeof(T) - 1)));
    return sum;
  }
}
template <class T>
inline T minus(T a) {
  if constexpr (std::is_floating_point_v<T>) {
    return -a;
  } else {
    return static_cast<T>(~a);  // off by one, at the same cost as a difference
  }
}

template <class T>
__attribute__((noipa)) void loopForward(const T* __restrict x, int len, T* __restrict low,
                                        T* __restrict high) {
  for (int i = 0; i < len / 2; ++i) {
    low[i] = halved<T>(x[2 * i], x[2 * i + 1]);
    high[i] = halved<T>(x[2 * i + 1], minus(x[2 * i]));
  }
}
template <class T>
__attribute__((noipa)) void loopInverse(const T* __restrict low, const T* __restrict high, T* __restrict x,
                                        int len) {
  for (int i = 0; i < len / 2; ++i) {
    x[2 * i] = saturated<T>(low[i], minus(high[i]));
    x[2 * i + 1] = saturated<T>(low[i], high[i]);
  }
}

template <class T, class Forward, class Inverse>
void addCases(const char* type, Forward forward, Inverse inverse) {
  for (int len : {64, 256, 4096}) {
    const size_t n = static_cast<size_t>(len);
    const auto x = array<T>(n), low = array<T>(n / 2), high = array<T>(n / 2);
    const auto name = [&](const char* direction) {
      return std::string("haar/") + direction + "_" + type + "/" + std::to_string(len);
    };
    add(name("fwd"), "kvrs", [=] { forward(x.get(), len, low.get(), high.get()); });
    add(name("fwd"), "loop", [=] { loopForward(x.get(), len, low.get(), high.get()); });
    add(name("inv"), "kvrs", [=] { inverse(low.get(), high.get(), x.get(), len); });
    add(name("inv"), "loop", [=] { loopInverse(low.get(), high.get(), x.get(), len); });
  }
}

Register haar([] {
  addCases<Kvr8s>("8s", kvrsWTHaarFwd_8s, kvrsWTHaarInv_8s);
  addCases<Kvr16s>("16s", kvrsWTHaarFwd_16s, kvrsWTHaarInv_16s);
  addCases<Kvr32s>("32s", kvrsWTHaarFwd_32s, kvrsWTHaarInv_32s);
  addCases<Kvr64s>("64s", kvrsWTHaarFwd_64s, kvrsWTHaarInv_64s);
  addCases<Kvr32f>("32f", kvrsWTHaarFwd_32f, kvrsWTHaarInv_32f);
  addCases<Kvr64f>("64f", kvrsWTHaarFwd_64f, kvrsWTHaarInv_64f);
});

}  // namespace
}  // namespace kvrs::bench
