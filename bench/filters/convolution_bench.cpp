// Convolution on one thread, beside plain loops and FFTW.
// SPDX-License-Identifier: MIT
#include "kvrs/convolution.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "bench/filters/sliding_peers.h"
#include "kvrs/convert.h"
#include "kvrscore.h"

namespace kvrs::bench {
namespace {

std::string nameOf(const std::string& what, int len1, int len2) {
  return "convolution/" + what + "/" + std::to_string(len1) + "x" + std::to_string(len2);
}

template <class T, class Ours>
void addCases(const char* type, Ours ours) {
  for (const auto& [len1, len2] : std::vector<std::pair<int, int>>{
           {16, 16}, {64, 64}, {256, 256}, {4096, 32}, {1000, 1000}, {100000, 100}, {100000, 5000}}) {
    const int longer = len1, shorter = len2;
    const auto a = array<T>(static_cast<size_t>(longer)), b = array<T>(static_cast<size_t>(shorter)),
               dst = array<T>(static_cast<size_t>(longer + shorter));
    const std::string name = nameOf(type, longer, shorter);
    addPrepared(name, "kvrs", [=] {
      ownSetNumThreads(1);
      return [=](long calls) {
        for (; calls > 0; --calls) ours(a.get(), longer, b.get(), shorter, dst.get());
      };
    });
    if (longer < 10000 && longer + shorter < 2000 + 4000) {
      add(name, "loop", [=] { scatter(a.get(), longer, b.get(), shorter, dst.get()); });
    }
    if (shorter > 32) {
      addPrepared(name, "fftw", [=] {
        const auto best = bestFftw(a.get(), longer, b.get(), shorter, dst.get());
        return [=](long calls) {
          for (; calls > 0; --calls) best->run(a.get(), longer, b.get(), shorter, dst.get());
        };
      });
    }
  }
}

Register convolution([] {
  addCases<float>("32f", kvrsConv_32f);
  addCases<double>("64f", kvrsConv_64f);

  // 16 bits: beside converting, the same in single precision, and converting back.
  for (const auto& [len1, len2] :
       std::vector<std::pair<int, int>>{{64, 64}, {4096, 32}, {1000, 1000}, {100000, 100}}) {
    const int longer = len1, shorter = len2, count = longer + shorter - 1;
    const auto a = array<Kvr16s>(static_cast<size_t>(longer)),
               b = array<Kvr16s>(static_cast<size_t>(shorter)),
               dst = array<Kvr16s>(static_cast<size_t>(count));
    const auto a1 = array<float>(static_cast<size_t>(longer)),
               b1 = array<float>(static_cast<size_t>(shorter)),
               dst1 = array<float>(static_cast<size_t>(count));
    const std::string name = nameOf("16s", longer, shorter);
    add(name, "kvrs", [=] { kvrsConv_16s_Sfs(a.get(), longer, b.get(), shorter, dst.get(), 20); });
    add(name, "converted", [=] {
      kvrsConvert_16s32f(a.get(), a1.get(), longer);
      kvrsConvert_16s32f(b.get(), b1.get(), shorter);
      kvrsConv_32f(a1.get(), longer, b1.get(), shorter, dst1.get());
      kvrsConvert_32f16s_Sfs(dst1.get(), dst.get(), count, kvrRoundNear, 20);
    });
  }

  // Windows as speech coders have them.
  for (const auto& [len1, len2, dstLen, bias] : std::vector<std::array<int, 4>>{
           {4, 45, 41, 4}, {11, 50, 40, 10}, {31, 110, 80, 30}, {40, 40, 40, 0}, {60, 60, 60, 0}}) {
    const int taps = len1, inputs = len2, outputs = dstLen, before = bias;
    const auto a = array<float>(static_cast<size_t>(taps)), b = array<float>(static_cast<size_t>(inputs)),
               dst = array<float>(static_cast<size_t>(outputs));
    const std::string name = "convolution/biased/" + std::to_string(taps) + "x" + std::to_string(inputs);
    add(name, "kvrs",
        [=] { kvrsConvBiased_32f(a.get(), taps, b.get() + before, inputs, dst.get(), outputs, before); });
    add(name, "loop", [=] {
      const float* h = a.get();
      const float* x = b.get() + before;
      float* y = dst.get();
      if (before > 0) {
        for (int n = 0; n < outputs; ++n) y[n] = 0;
        for (int k = 0; k < taps; ++k) {
          for (int n = 0; n < outputs; ++n) y[n] += h[k] * x[n - k];
        }
      } else {
        for (int n = 0; n < outputs; ++n) y[n] = 0;
        for (int k = 0; k < taps; ++k) {
          for (int n = k; n < outputs; ++n) y[n] += h[k] * x[n - k];
        }
      }
    });
  }

  const auto x = array<float>(8), h = array<float>(8), y = array<float>(8);
  add("convolution/cyclic/8", "kvrs", [=] { kvrsConvCyclic8x8_32f(x.get(), h.get(), y.get()); });
  add("convolution/cyclic/8", "loop", [=] {
    const float *a = x.get(), *b = h.get();
    float sums[8] = {};
    for (int j = 0; j < 8; ++j) {
      for (int k = 0; k < 8; ++k) sums[k] += a[j] * b[(k - j) & 7];
    }
    memcpy(y.get(), sums, sizeof sums);
  });
  const auto x16 = array<Kvr16s>(8), h16 = array<Kvr16s>(8), y16 = array<Kvr16s>(8);
  add("convolution/cyclic/8_16s", "kvrs",
      [=] { kvrsConvCyclic8x8_16s_Sfs(x16.get(), h16.get(), y16.get(), 15); });
  add("convolution/cyclic/8_16s", "loop", [=] {
    const Kvr16s *a = x16.get(), *b = h16.get();
    Kvr16s* out = y16.get();
    for (int k = 0; k < 8; ++k) {
      int sum = 0;
      for (int j = 0; j < 8; ++j) sum += a[j] * b[(k - j) & 7];
      out[k] =
          static_cast<Kvr16s>(std::max(-32768, std::min(32767, (sum + 16383 + ((sum >> 15) & 1)) >> 15)));
    }
  });
});

}  // namespace
}  // namespace kvrs::bench
