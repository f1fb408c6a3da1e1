// Elementary functions of integers, beside plain loops of their definitions.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <string>

#include "bench/support/bench.h"
#include "kvrs/exponential.h"
#include "kvrs/logarithm.h"
#include "kvrs/roots.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384};

template <class F, class D, class S>
[[gnu::noinline]] void loopScaledSqrt(const S* src, D* dst, int len, F scale) {
  for (int i = 0; i < len; ++i) {
    const F root = std::sqrt(static_cast<F>(src[i] > 0 ? src[i] : 0)) * scale;
    dst[i] = static_cast<D>(std::rint(std::min(root, static_cast<F>(std::numeric_limits<D>::max() / 2))));
  }
}
template <class T>
[[gnu::noinline]] void loopScaledExp(const T* src, T* dst, int len, double scale) {
  for (int i = 0; i < len; ++i) {
    const double power = std::exp(static_cast<double>(src[i])) * scale;
    dst[i] =
        static_cast<T>(std::rint(std::min(power, static_cast<double>(std::numeric_limits<T>::max() / 2))));
  }
}
template <class F, class T>
[[gnu::noinline]] void loopScaledLn(const T* src, T* dst, int len, F scale) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<T>(std::rint(std::log(static_cast<F>(src[i])) * scale));
}

template <class Ours, class Loop>
void pair(const std::string& name, Ours ours, Loop loop) {
  add(name, "kvrs", ours);
  add(name, "loop", loop);
}

Register elementaryIntegers([] {
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto s = newArray<Kvr16s>(count), t = newArray<Kvr16s>(count);
    const auto w = newArray<Kvr32s>(count), v = newArray<Kvr32s>(count);
    const auto q = newArray<Kvr64s>(count), r = newArray<Kvr64s>(count);
    const auto g = newArray<Kvr16sc>(count), h = newArray<Kvr16sc>(count);
    for (int i = 0; i < len; ++i) {
      const double x =
          static_cast<double>(static_cast<uint32_t>(i + 1) * 2654435769u) * 0x1p-32;  // in (0, 1)
      s.get()[i] = static_cast<Kvr16s>(1 + x * 32000);
      w.get()[i] = static_cast<Kvr32s>(1 + x * 2e9);
      q.get()[i] = static_cast<Kvr64s>(1 + x * 9e18);
      g.get()[i] = {static_cast<Kvr16s>(s.get()[i] - 16000), s.get()[i]};
    }

    pair(
        "exponential/Exp_16s_Sfs" + n, [=] { kvrsExp_16s_Sfs(s.get(), t.get(), len, 0); },
        [=] { loopScaledExp(s.get(), t.get(), len, 1); });
    pair(
        "exponential/Exp_32s_Sfs" + n, [=] { kvrsExp_32s_Sfs(w.get(), v.get(), len, 0); },
        [=] { loopScaledExp(w.get(), v.get(), len, 1); });
    pair(
        "exponential/Exp_64s_Sfs" + n, [=] { kvrsExp_64s_Sfs(q.get(), r.get(), len, 0); },
        [=] { loopScaledExp(q.get(), r.get(), len, 1); });
    pair(
        "logarithm/Ln_16s_Sfs" + n, [=] { kvrsLn_16s_Sfs(s.get(), t.get(), len, 0); },
        [=] { loopScaledLn(s.get(), t.get(), len, 1.0f); });
    pair(
        "logarithm/Ln_16s_Sfs, scaled up" + n, [=] { kvrsLn_16s_Sfs(s.get(), t.get(), len, -10); },
        [=] { loopScaledLn(s.get(), t.get(), len, 1024.0f); });
    pair(
        "logarithm/Ln_32s_Sfs" + n, [=] { kvrsLn_32s_Sfs(w.get(), v.get(), len, 0); },
        [=] { loopScaledLn(w.get(), v.get(), len, 1.0); });
    pair(
        "logarithm/10Log10_32s_Sfs" + n, [=] { kvrs10Log10_32s_Sfs(w.get(), v.get(), len, 0); },
        [=] { loopScaledLn(w.get(), v.get(), len, 4.342944819032518); });
    pair(
        "roots/Sqrt_16s_Sfs" + n, [=] { kvrsSqrt_16s_Sfs(s.get(), t.get(), len, -4); },
        [=] { loopScaledSqrt(s.get(), t.get(), len, 16.0f); });
    pair(
        "roots/Sqrt_32s16s_Sfs" + n, [=] { kvrsSqrt_32s16s_Sfs(w.get(), t.get(), len, 2); },
        [=] { loopScaledSqrt(w.get(), t.get(), len, 0.25); });
    pair(
        "roots/Sqrt_64s16s_Sfs" + n, [=] { kvrsSqrt_64s16s_Sfs(q.get(), t.get(), len, 17); },
        [=] { loopScaledSqrt(q.get(), t.get(), len, 0x1p-17); });
    pair(
        "roots/Sqrt_64s_Sfs" + n, [=] { kvrsSqrt_64s_Sfs(q.get(), r.get(), len, 0); },
        [=] { loopScaledSqrt(q.get(), r.get(), len, 1.0); });
    pair(
        "roots/Sqrt_16sc_Sfs" + n, [=] { kvrsSqrt_16sc_Sfs(g.get(), h.get(), len, 0); },
        [=] {
          for (int i = 0; i < len; ++i) {
            const auto root = std::sqrt(std::complex<float>(g.get()[i].re, g.get()[i].im));
            h.get()[i] = {static_cast<Kvr16s>(std::rint(root.real())),
                          static_cast<Kvr16s>(std::rint(root.imag()))};
          }
        });
    pair(
        "roots/Cubrt_32s16s_Sfs" + n, [=] { kvrsCubrt_32s16s_Sfs(w.get(), t.get(), len, -4); },
        [=] {
          for (int i = 0; i < len; ++i)
            t.get()[i] = static_cast<Kvr16s>(std::rint(std::cbrt(static_cast<float>(w.get()[i])) * 16));
        });
  }
});

}  // namespace
}  // namespace kvrs::bench
