// A long filter by FFTW, as one writes it: overlap-save with measured plans, at its own best block size for the signal at hand.
// The samples come in one piece with their history.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_FILTERS_OVERLAP_SAVE_H
#define KVRS_BENCH_FILTERS_OVERLAP_SAVE_H

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <type_traits>

#include "bench/transforms/fftw.h"

namespace kvrs::bench {

// T is a float, or a pair of them.
template <class T>
class OverlapSave {
  static constexpr bool kComplex = !std::is_floating_point_v<T>;
  using Part = std::conditional_t<sizeof(T) == (kComplex ? 8 : 4), float, double>;
  using Pair = typename Fftw<Part>::Pair;
  using Plan = std::shared_ptr<std::remove_pointer_t<typename Fftw<Part>::Plan>>;

  struct Blocks {
    Blocks(const T* tapsRev, int tapsCount, int length)
        : tapsLen(tapsCount),
          fftLen(length),
          frame(newArray<Part>(2 * static_cast<size_t>(length))),
          spectrum(newArray<Part>(2 * static_cast<size_t>(length) + 2)),
          taps(newArray<Part>(2 * static_cast<size_t>(length) + 2)) {
      if constexpr (kComplex) {
        forward = planned(Fftw<Part>::pairs(fftLen, frame.get(), spectrum.get(), FFTW_FORWARD));
        inverse = planned(Fftw<Part>::pairs(fftLen, spectrum.get(), frame.get(), FFTW_BACKWARD));
      } else {
        forward = planned(Fftw<Part>::forward(fftLen, frame.get(), spectrum.get()));
        inverse = planned(Fftw<Part>::inverse(fftLen, spectrum.get(), frame.get()));
      }
      memset(frame.get(), 0, static_cast<size_t>(fftLen) * sizeof(T));
      constexpr int kParts = kComplex ? 2 : 1;
      const auto* from = reinterpret_cast<const Part*>(tapsRev);
      for (int k = 0; k < tapsLen; ++k) {
        for (int part = 0; part < kParts; ++part) {
          frame.get()[kParts * k + part] =
              from[kParts * (tapsLen - 1 - k) + part] / static_cast<Part>(fftLen);
        }
      }
      Fftw<Part>::execute(forward.get());
      memcpy(taps.get(), spectrum.get(), 2 * static_cast<size_t>(bins()) * sizeof(Part));
    }

    int bins() const { return kComplex ? fftLen : fftLen / 2 + 1; }

    void run(const T* in, T* out, int len) const {
      const int past = tapsLen - 1, step = fftLen - past;
      T* x = reinterpret_cast<T*>(frame.get());
      for (int n = 0; n < len; n += step) {
        const int count = std::min(step, len - n);
        memcpy(x, in + n, static_cast<size_t>(past + count) * sizeof(T));
        memset(x + past + count, 0, static_cast<size_t>(step - count) * sizeof(T));
        Fftw<Part>::execute(forward.get());
        multiply(spectrum.get(), taps.get(), bins());
        Fftw<Part>::execute(inverse.get());
        memcpy(out + n, x + past, static_cast<size_t>(count) * sizeof(T));
      }
    }

    static Plan planned(typename Fftw<Part>::Plan plan) { return Plan(plan, Fftw<Part>::destroy); }

    static void multiply(Part* __restrict x, const Part* __restrict h, int count) {
      for (int k = 0; k < count; ++k) {
        const Part re = x[2 * k] * h[2 * k] - x[2 * k + 1] * h[2 * k + 1];
        x[2 * k + 1] = x[2 * k] * h[2 * k + 1] + x[2 * k + 1] * h[2 * k];
        x[2 * k] = re;
      }
    }

    int tapsLen, fftLen;
    std::shared_ptr<Part> frame, spectrum, taps;
    Plan forward, inverse;
  };

 public:
  // The last tap comes first.
  OverlapSave(const T* tapsRev, int tapsLen, const T* in, T* out, int len) {
    double best = 1e30;
    int fftLen = 4;
    while (fftLen < 2 * tapsLen) fftLen *= 2;
    for (int turn = 0; turn < 6 && fftLen <= 65536; ++turn, fftLen *= 2) {
      auto candidate = std::make_unique<Blocks>(tapsRev, tapsLen, fftLen);
      double time = 1e30;
      for (int run = 0; run < 5; ++run) {
        const auto begin = std::chrono::steady_clock::now();
        candidate->run(in, out, len);
        time =
            std::min(time, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
      }
      if (time < best) {
        best = time;
        blocks_ = std::move(candidate);
      }
    }
  }

  void run(const T* in, T* out, int len) const { blocks_->run(in, out, len); }

 private:
  std::unique_ptr<Blocks> blocks_;
};

}  // namespace kvrs::bench

#endif
