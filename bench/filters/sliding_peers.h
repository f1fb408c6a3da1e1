// What the benches of convolutions and correlations compare with: plain loops, and convolution by FFTW, whose plans are made
// beforehand. Both signals are transformed in each call, as neither is known before.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_FILTERS_SLIDING_PEERS_H
#define KVRS_BENCH_FILTERS_SLIDING_PEERS_H

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>

#include "bench/transforms/fftw.h"

namespace kvrs::bench {

// Linear convolution by overlap-add in blocks of 2^order points, or by one transform where all fits into it. Kept to the end of
// the process.
template <class T>
class FftwConvolution {
 public:
  FftwConvolution(int points, bool conjugates) : points_(points), conjugates_(conjugates) {
    const auto n = static_cast<size_t>(points);
    frame_ = newArray<T>(n);
    spectrum_ = newArray<T>(n + 2);
    taps_ = newArray<T>(n + 2);
    forward_ = Fftw<T>::forward(points, frame_.get(), spectrum_.get());
    tapsForward_ = Fftw<T>::forward(points, frame_.get(), taps_.get());
    inverse_ = Fftw<T>::inverse(points, spectrum_.get(), frame_.get());
  }

  // dst gets longer + shorter - 1 results.
  void run(const T* a, int longer, const T* b, int shorter, T* dst) const {
    const int block = points_ - shorter + 1;
    load(b, shorter);
    Fftw<T>::execute(tapsForward_);
    memset(dst, 0, static_cast<size_t>(longer + shorter - 1) * sizeof(T));
    for (int i = 0; i < longer; i += block) {
      const int count = std::min(block, longer - i);
      load(a + i, count);
      Fftw<T>::execute(forward_);
      const T scale = T(1) / static_cast<T>(points_), sign = conjugates_ ? -1 : 1;
      const T* __restrict h = taps_.get();
      T* __restrict x = spectrum_.get();
      for (int k = 0; k <= points_ / 2; ++k) {
        const T re = x[2 * k] * h[2 * k] - sign * x[2 * k + 1] * h[2 * k + 1];
        const T im = sign * x[2 * k] * h[2 * k + 1] + x[2 * k + 1] * h[2 * k];
        x[2 * k] = re * scale;
        x[2 * k + 1] = im * scale;
      }
      Fftw<T>::execute(inverse_);
      T* __restrict out = dst + i;
      const T* __restrict y = frame_.get();
      for (int n = 0; n < count + shorter - 1; ++n) out[n] += y[n];
    }
  }

 private:
  void load(const T* x, int count) const {
    memcpy(frame_.get(), x, static_cast<size_t>(count) * sizeof(T));
    memset(frame_.get() + count, 0, static_cast<size_t>(points_ - count) * sizeof(T));
  }

  int points_;
  bool conjugates_;
  std::shared_ptr<T> frame_, spectrum_, taps_;
  typename Fftw<T>::Plan forward_, tapsForward_, inverse_;
};

// The fastest of all block lengths.
template <class T>
std::shared_ptr<FftwConvolution<T>> bestFftw(const T* a, int longer, const T* b, int shorter, T* dst,
                                             bool conjugates = false) {
  std::shared_ptr<FftwConvolution<T>> best;
  double shortest = 1e30;
  int points = 2;
  while (points < 2 * shorter) points *= 2;
  for (;; points *= 2) {
    const auto made = std::make_shared<FftwConvolution<T>>(points, conjugates);
    for (int turn = 0; turn < 5; ++turn) {
      const auto begin = std::chrono::steady_clock::now();
      made->run(a, longer, b, shorter, dst);
      const double time = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
      if (time < shortest) {
        shortest = time;
        best = made;
      }
    }
    if (points >= longer + shorter - 1) return best;
  }
}

// out[n] = sum over k of in[n + k] * taps[k].
template <class T>
__attribute__((noinline)) void slideOverOutputs(const T* __restrict in, const T* __restrict taps, int tapsLen,
                                                T* __restrict out, int count) {
  for (int n = 0; n < count; ++n) out[n] = 0;
  for (int k = 0; k < tapsLen; ++k) {
    const T tap = taps[k];
    for (int n = 0; n < count; ++n) out[n] += in[n + k] * tap;
  }
}

// Convolution, each element of the longer signal times the shorter one. Vectors of the shorter one.
template <class T>
__attribute__((noinline)) void scatter(const T* __restrict a, int longer, const T* __restrict b, int shorter,
                                       T* __restrict dst) {
  for (int n = 0; n < longer + shorter - 1; ++n) dst[n] = 0;
  for (int i = 0; i < longer; ++i) {
    const T x = a[i];
    for (int k = 0; k < shorter; ++k) dst[i + k] += x * b[k];
  }
}

}  // namespace kvrs::bench

#endif
