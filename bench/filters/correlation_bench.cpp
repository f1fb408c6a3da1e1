// Correlation on one thread, beside plain loops and FFTW.
// SPDX-License-Identifier: MIT
#include "kvrs/correlation.h"

#include <string>
#include <utility>
#include <vector>

#include "bench/filters/sliding_peers.h"
#include "kvrs/convert.h"

namespace kvrs::bench {
namespace {

std::string nameOf(const std::string& what, int len1, int len2) {
  return "correlation/" + what + "/" + std::to_string(len1) + "x" + std::to_string(len2);
}

// All lags. The peer by FFTW convolves with the conjugate spectrum, which takes as long.
template <class T, class Ours>
void addCross(const char* type, Ours ours) {
  for (const auto& [len1, len2] :
       std::vector<std::pair<int, int>>{{64, 64}, {1000, 1000}, {100, 100000}, {5000, 100000}}) {
    const int shorter = len1, longer = len2, lags = shorter + longer - 1;
    const auto a = array<T>(static_cast<size_t>(shorter)), b = array<T>(static_cast<size_t>(longer)),
               dst = array<T>(static_cast<size_t>(lags));
    const std::string name = nameOf(std::string("cross_") + type, shorter, longer);
    add(name, "kvrs", [=] { ours(a.get(), shorter, b.get(), longer, dst.get(), lags, 1 - shorter); });
    if (longer == 64) add(name, "loop", [=] { scatter(b.get(), longer, a.get(), shorter, dst.get()); });
    addPrepared(name, "fftw", [=] {
      const auto best = bestFftw(b.get(), longer, a.get(), shorter, dst.get(), true);
      return [=](long calls) {
        for (; calls > 0; --calls) best->run(b.get(), longer, a.get(), shorter, dst.get());
      };
    });
  }
}

// The lags from 0 on.
template <class T>
__attribute__((noinline)) void loopOfLags(const T* __restrict x, int len, T* __restrict dst, int lags) {
  for (int n = 0; n < lags; ++n) dst[n] = 0;
  const int whole = len - lags + 1;
  for (int k = 0; k < whole; ++k) {
    const T tap = x[k];
    for (int n = 0; n < lags; ++n) dst[n] += tap * x[k + n];
  }
  for (int k = whole; k < len; ++k) {
    const T tap = x[k];
    for (int n = 0; n < len - k; ++n) dst[n] += tap * x[k + n];
  }
}

template <class T, class Ours>
void addAuto(const char* type, Ours ours) {
  for (const auto& [srcLen, dstLen] :
       std::vector<std::pair<int, int>>{{256, 16}, {10000, 40}, {2000, 500}, {100000, 1000}, {2000, 2000}}) {
    const int len = srcLen, lags = dstLen;
    const auto x = array<T>(static_cast<size_t>(len)), dst = array<T>(static_cast<size_t>(2 * len));
    const std::string name = nameOf(std::string("auto_") + type, len, lags);
    add(name, "kvrs", [=] { ours(x.get(), len, dst.get(), lags); });
    if (lags <= 500) {
      add(name, "loop", [=] { loopOfLags(x.get(), len, dst.get(), lags); });
    } else {
      addPrepared(name, "fftw", [=] {
        int points = 2;
        while (points < len + lags) points *= 2;
        const auto made = std::make_shared<FftwConvolution<T>>(points, true);
        const auto all = array<T>(static_cast<size_t>(2 * len));
        return [=](long calls) {
          for (; calls > 0; --calls) made->run(x.get(), len, x.get(), len, all.get());
        };
      });
    }
  }
}

__attribute__((noinline)) void loopOfWords(const Kvr16s* __restrict a, const Kvr16s* __restrict b, int len,
                                           Kvr64s* __restrict dst, int lags) {
  for (int n = 0; n < lags; ++n) {
    Kvr64s sum = 0;
    for (int k = 0; k < len; ++k) sum += a[k] * b[k + n];
    dst[n] = sum;
  }
}

Register correlation([] {
  addCross<float>("32f", kvrsCrossCorr_32f);
  addCross<double>("64f", kvrsCrossCorr_64f);
  addAuto<float>("32f", kvrsAutoCorr_32f);
  addAuto<double>("64f", kvrsAutoCorr_64f);

  for (const auto& [srcLen, dstLen] :
       std::vector<std::pair<int, int>>{{256, 16}, {4096, 100}, {2000, 1000}}) {
    const int len = srcLen, lags = dstLen;
    const auto x = array<Kvr16s>(static_cast<size_t>(len)), dst = array<Kvr16s>(static_cast<size_t>(lags));
    const auto x1 = array<float>(static_cast<size_t>(len)), dst1 = array<float>(static_cast<size_t>(lags));
    const std::string name = nameOf("auto_16s", len, lags);
    add(name, "kvrs", [=] { kvrsAutoCorr_16s_Sfs(x.get(), len, dst.get(), lags, 20); });
    add(name, "converted", [=] {
      kvrsConvert_16s32f(x.get(), x1.get(), len);
      kvrsAutoCorr_32f(x1.get(), len, dst1.get(), lags);
      kvrsConvert_32f16s_Sfs(dst1.get(), dst.get(), lags, kvrRoundNear, 20);
    });
  }

  for (const auto& [taps, lagCount] : std::vector<std::pair<int, int>>{{256, 16}, {1000, 500}}) {
    const int len = taps, lags = lagCount;
    const auto a = array<Kvr16s>(static_cast<size_t>(len)),
               b = array<Kvr16s>(static_cast<size_t>(len + lags));
    const auto dst = array<Kvr64s>(static_cast<size_t>(lags));
    const std::string name = nameOf("cross_16s64s", len, lags);
    add(name, "kvrs", [=] { kvrsCrossCorr_16s64s(a.get(), len, b.get(), len + lags, dst.get(), lags, 0); });
    add(name, "loop", [=] { loopOfWords(a.get(), b.get(), len, dst.get(), lags); });
  }
});

}  // namespace
}  // namespace kvrs::bench
