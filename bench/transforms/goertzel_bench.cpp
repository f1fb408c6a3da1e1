// One or two frequencies beside the recurrence of second order as it is usually written.
// SPDX-License-Identifier: MIT
#include "kvrs/goertzel.h"

#include <cmath>
#include <string>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

template <class T, class S>
__attribute__((noinline)) void recurrence(const S* x, int len, T* re, T* im, double relFreq) {
  const double theta = relFreq * 6.283185307179586;
  const T c = static_cast<T>(std::cos(theta)), s = static_cast<T>(std::sin(theta)), k = 2 * c;
  T s1 = 0, s2 = 0;
  for (int n = 0; n < len; ++n) {
    const T s0 = static_cast<T>(x[n]) + k * s1 - s2;
    s2 = s1;
    s1 = s0;
  }
  *re = c * s1 - s2;
  *im = s * s1;
}
template <class T>
struct Pair {
  T re, im;
};
template <class T, class S>
__attribute__((noinline)) void complexRecurrence(const Pair<S>* x, int len, T* re, T* im, double relFreq) {
  const double theta = relFreq * 6.283185307179586;
  const T c = static_cast<T>(std::cos(theta)), s = static_cast<T>(std::sin(theta)), k = 2 * c;
  T re1 = 0, re2 = 0, im1 = 0, im2 = 0;
  for (int n = 0; n < len; ++n) {
    const T re0 = static_cast<T>(x[n].re) + k * re1 - re2, im0 = static_cast<T>(x[n].im) + k * im1 - im2;
    re2 = re1;
    re1 = re0;
    im2 = im1;
    im1 = im0;
  }
  *re = c * re1 - re2 - s * im1;
  *im = c * im1 - im2 + s * re1;
}
template <class T>
__attribute__((noinline)) void twoRecurrences(const T* x, int len, T* y, const T* relFreq) {
  T k[2], s1[2] = {0, 0}, s2[2] = {0, 0};
  for (int f = 0; f < 2; ++f) k[f] = static_cast<T>(2 * std::cos(relFreq[f] * 6.283185307179586));
  for (int n = 0; n < len; ++n) {
    for (int f = 0; f < 2; ++f) {
      const T s0 = x[n] + k[f] * s1[f] - s2[f];
      s2[f] = s1[f];
      s1[f] = s0;
    }
  }
  for (int f = 0; f < 2; ++f) {
    y[2 * f] = k[f] / 2 * s1[f] - s2[f];
    y[2 * f + 1] = static_cast<T>(std::sin(relFreq[f] * 6.283185307179586)) * s1[f];
  }
}

std::string name(const char* type, int len) {
  return std::string("goertzel/") + type + "/" + std::to_string(len);
}

Register goertzel([] {
  for (const int len : {64, 205, 1024, 4096}) {
    const size_t n = static_cast<size_t>(len);
    {
      const auto x = array<Kvr32f>(n);
      const auto y = array<Kvr32fc>(2);
      add(name("32f", len), "kvrs", [=] { kvrsGoertz_32f(x.get(), len, y.get(), 0.1f); });
      add(name("32f", len), "recurrence", [=] { recurrence(x.get(), len, &y.get()->re, &y.get()->im, 0.1); });
      const auto f = array<Kvr32f>(2);
      f.get()[0] = 0.1f;
      f.get()[1] = 0.2f;
      add(name("two_32f", len), "kvrs", [=] { kvrsGoertzTwo_32f(x.get(), len, y.get(), f.get()); });
      add(name("two_32f", len), "recurrence", [=] { twoRecurrences(x.get(), len, &y.get()->re, f.get()); });
    }
    {
      const auto x = array<Kvr32f>(2 * n);
      const auto y = array<Kvr32fc>(2);
      add(name("32fc", len), "kvrs",
          [=] { kvrsGoertz_32fc(reinterpret_cast<const Kvr32fc*>(x.get()), len, y.get(), 0.1f); });
      add(name("32fc", len), "recurrence", [=] {
        complexRecurrence(reinterpret_cast<const Pair<float>*>(x.get()), len, &y.get()->re, &y.get()->im,
                          0.1);
      });
    }
    {
      const auto x = array<Kvr16s>(n);
      const auto y = array<Kvr16sc>(2);
      const auto peer = array<Kvr32f>(2);
      add(name("16s", len), "kvrs", [=] { kvrsGoertz_16s_Sfs(x.get(), len, y.get(), 0.1f, 8); });
      add(name("16s", len), "recurrence", [=] { recurrence(x.get(), len, peer.get(), peer.get() + 1, 0.1); });
    }
    {
      const auto x = array<Kvr64f>(n);
      const auto y = array<Kvr64fc>(2);
      add(name("64f", len), "kvrs", [=] { kvrsGoertz_64f(x.get(), len, y.get(), 0.1); });
      add(name("64f", len), "recurrence", [=] { recurrence(x.get(), len, &y.get()->re, &y.get()->im, 0.1); });
      const auto f = array<Kvr64f>(2);
      f.get()[0] = 0.1;
      f.get()[1] = 0.2;
      add(name("two_64f", len), "kvrs", [=] { kvrsGoertzTwo_64f(x.get(), len, y.get(), f.get()); });
      add(name("two_64f", len), "recurrence", [=] { twoRecurrences(x.get(), len, &y.get()->re, f.get()); });
    }
  }
});

}  // namespace
}  // namespace kvrs::bench
