// Filter banks beside plain loops over outputs and taps; chains of them beside the transform of GSL.
// SPDX-License-Identifier: MIT
#include "kvrs/wavelet.h"

#include <gsl/gsl_wavelet.h>

#include <string>
#include <vector>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kHistory = 64;

// x has its history in front of it.
__attribute__((noipa)) void loopForward(const float* low, const float* high, int taps, const float* x,
                                        float* __restrict dstLow, float* __restrict dstHigh, int len) {
  for (int i = 0; i < len; ++i) {
    float sumLow = 0, sumHigh = 0;
    for (int k = 0; k < taps; ++k) {
      sumLow += low[k] * x[2 * i - k];
      sumHigh += high[k] * x[2 * i - k];
    }
    dstLow[i] = sumLow;
    dstHigh[i] = sumHigh;
  }
}

__attribute__((noipa)) void loopInverse(const float* low, const float* high, int taps, const float* srcLow,
                                        const float* srcHigh, float* __restrict dst, int len) {
  for (int i = 0; i < len; ++i) {
    float first = 0, second = 0;
    for (int k = 0; k < taps / 2; ++k) {
      first += low[2 * k] * srcLow[i - k] + high[2 * k] * srcHigh[i - k];
      second += low[2 * k + 1] * srcLow[i - k] + high[2 * k + 1] * srcHigh[i - k];
    }
    dst[2 * i] = first;
    dst[2 * i + 1] = second;
  }
}

Register wavelet([] {
  for (const int taps : {4, 8, 16}) {
    for (const int len : {32, 256, 4096}) {  // outputs of a channel
      const size_t n = static_cast<size_t>(len);
      const auto name = [&](const char* function) {
        return std::string("wavelet/") + function + "/" + std::to_string(taps) + "/" + std::to_string(len);
      };
      const auto low = array<float>(static_cast<size_t>(taps)),
                 high = array<float>(static_cast<size_t>(taps));
      const auto x = array<float>(kHistory + 2 * n), y = array<float>(kHistory + n),
                 z = array<float>(kHistory + n);
      const auto integers = array<Kvr16s>(2 * n);
      float *const signal = x.get() + kHistory, *const lows = y.get() + kHistory,
                   *const highs = z.get() + kHistory;
      KvrsWTFwdState_32f* forward = nullptr;
      KvrsWTFwdState_16s32f* forwardOfIntegers = nullptr;
      KvrsWTInvState_32f* inverse = nullptr;
      KvrsWTInvState_32f16s* inverseToIntegers = nullptr;
      kvrsWTFwdInitAlloc_32f(&forward, low.get(), taps, 0, high.get(), taps, 0);
      kvrsWTFwdInitAlloc_16s32f(&forwardOfIntegers, low.get(), taps, 0, high.get(), taps, 0);
      kvrsWTInvInitAlloc_32f(&inverse, low.get(), taps, 0, high.get(), taps, 0);
      kvrsWTInvInitAlloc_32f16s(&inverseToIntegers, low.get(), taps, 0, high.get(), taps, 0);
      add(name("fwd_32f"), "kvrs",
          [=, keep = x, keep2 = y, keep3 = z] { kvrsWTFwd_32f(signal, lows, highs, len, forward); });
      add(name("fwd_32f"), "loop",
          [=] { loopForward(low.get(), high.get(), taps, signal, lows, highs, len); });
      add(name("fwd_16s32f"), "kvrs",
          [=] { kvrsWTFwd_16s32f(integers.get(), lows, highs, len, forwardOfIntegers); });
      add(name("fwd_16s32f"), "loop",
          [=] { loopForward(low.get(), high.get(), taps, signal, lows, highs, len); });
      add(name("inv_32f"), "kvrs", [=] { kvrsWTInv_32f(lows, highs, len, signal, inverse); });
      add(name("inv_32f"), "loop",
          [=] { loopInverse(low.get(), high.get(), taps, lows, highs, signal, len); });
      add(name("inv_32f16s"), "kvrs",
          [=] { kvrsWTInv_32f16s(lows, highs, len, integers.get(), inverseToIntegers); });
      add(name("inv_32f16s"), "loop",
          [=] { loopInverse(low.get(), high.get(), taps, lows, highs, signal, len); });
    }
  }
});

// All levels of the transform of a vector by Daubechies' filters. GSL's is periodic, in doubles and in place; ours goes on from
// the vector before.
Register chains([] {
  for (const int taps : {4, 8, 16}) {
    for (const int len : {1024, 16384}) {
      const size_t n = static_cast<size_t>(len);
      const std::string name = "wavelet/chain/" + std::to_string(taps) + "/" + std::to_string(len);
      addPrepared(name, "kvrs", [=] {
        const std::shared_ptr<gsl_wavelet> wavelet(
            gsl_wavelet_alloc(gsl_wavelet_daubechies, static_cast<size_t>(taps)), gsl_wavelet_free);
        const std::vector<float> low(wavelet->h1, wavelet->h1 + taps), high(wavelet->g1, wavelet->g1 + taps);
        std::vector<KvrsWTFwdState_32f*> states;
        for (int half = len / 2; half >= 1; half /= 2) {
          states.emplace_back();
          kvrsWTFwdInitAlloc_32f(&states.back(), low.data(), taps, 0, high.data(), taps, 0);
        }
        const auto x = array<float>(n), lows = array<float>(n), highs = array<float>(n);
        return [=](long calls) {
          for (; calls > 0; --calls) {
            const float* src = x.get();
            int half = len / 2;
            for (KvrsWTFwdState_32f* state : states) {
              kvrsWTFwd_32f(src, lows.get(), highs.get() + half, half, state);
              src = lows.get();
              half /= 2;
            }
            writeMemory();
          }
        };
      });
      addPrepared(name, "gsl", [=] {
        const std::shared_ptr<gsl_wavelet> wavelet(
            gsl_wavelet_alloc(gsl_wavelet_daubechies, static_cast<size_t>(taps)), gsl_wavelet_free);
        const std::shared_ptr<gsl_wavelet_workspace> work(gsl_wavelet_workspace_alloc(n),
                                                          gsl_wavelet_workspace_free);
        const auto x = array<double>(n);
        return [=](long calls) {
          for (; calls > 0; --calls) {
            gsl_wavelet_transform_forward(wavelet.get(), x.get(), 1, n, work.get());
            writeMemory();
          }
        };
      });
    }
  }
});

}  // namespace
}  // namespace kvrs::bench
