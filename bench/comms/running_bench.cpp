// SPDX-License-Identifier: MIT
#include "kvrs/running.h"

#include <algorithm>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

__attribute__((noipa)) Kvr32s loopLinear(const Kvr16s* x, int len, Kvr32s before, int shift, int alpha) {
  double acc = before;
  for (int i = 0; i < len; ++i) acc = acc * alpha + (x[i] >> shift) * (1 - alpha);
  return static_cast<Kvr32s>(std::clamp(acc, -2147483648.0, 2147483647.0));
}

template <class F>
__attribute__((noipa)) Kvr32s loopPower(const Kvr16s* x, int len, Kvr32s before, int shift, F alpha) {
  F acc = static_cast<F>(before);
  for (int i = 0; i < len; ++i) acc = acc * alpha + static_cast<F>((x[i] * x[i]) >> shift) * (1 - alpha);
  return static_cast<Kvr32s>(std::clamp<double>(static_cast<double>(acc), -2147483648.0, 2147483647.0));
}

template <class T>
__attribute__((noipa)) void loopSums(const T* x, Kvr32f* dst, int len, int mask) {
  float sum = 0;
  for (int k = 0; k < mask; ++k) sum += static_cast<float>(x[k]);
  for (int i = 0;; ++i) {
    dst[i] = sum;
    if (i + 1 == len) return;
    sum += static_cast<float>(x[i + mask] - x[i]);
  }
}

template <class T, class Sums>
void addSums(const std::string& type, Sums sums) {
  for (int len : {64, 1024, 16384}) {
    for (int mask : {16, 400, 1000}) {
      const std::string name =
          "running/SumWindow_" + type + "/" + std::to_string(mask) + "/" + std::to_string(len);
      const auto x = array<T>(static_cast<size_t>(len + mask));
      const auto dst = array<Kvr32f>(static_cast<size_t>(len));
      add(name, "kvrs", [=] { sums(x.get(), dst.get(), len, mask); });
      add(name, "loop", [=] { loopSums(x.get(), dst.get(), len, mask); });
    }
  }
}

Register running([] {
  addSums<Kvr8u>("8u32f", kvrsSumWindow_8u32f);
  addSums<Kvr16s>("16s32f", kvrsSumWindow_16s32f);
  for (int len : {64, 1024, 16384}) {
    const std::string n = std::to_string(len);
    // One alpha that any signal stays in range with, and one by which a constant does.
    for (int alpha : {-1, 3}) {
      const std::string name = "/alpha " + std::to_string(alpha) + "/" + n;
      const auto x = array<Kvr16s>(static_cast<size_t>(len));
      const auto acc = array<Kvr32s>(1);
      if (alpha == 3) std::fill_n(x.get(), len, Kvr16s{100});
      const Kvr16s a = static_cast<Kvr16s>(alpha);
      add("running/UpdateLinear" + name, "kvrs", [=] {
        *acc.get() = 100;
        kvrsUpdateLinear_16s32s_I(x.get(), len, acc.get(), 0, a, kvrHintNone);
      });
      add("running/UpdateLinear" + name, "loop",
          [=] { *acc.get() = loopLinear(x.get(), len, 100, 0, alpha); });
      add("running/UpdatePower" + name, "kvrs", [=] {
        *acc.get() = 10000;
        kvrsUpdatePower_16s32s_I(x.get(), len, acc.get(), 0, a, kvrHintNone);
      });
      add("running/UpdatePower" + name, "loop",
          [=] { *acc.get() = loopPower<double>(x.get(), len, 10000, 0, alpha); });
      add("running/UpdatePower fast" + name, "kvrs", [=] {
        *acc.get() = 10000;
        kvrsUpdatePower_16s32s_I(x.get(), len, acc.get(), 0, a, kvrHintFast);
      });
      add("running/UpdatePower fast" + name, "loop",
          [=] { *acc.get() = loopPower<float>(x.get(), len, 10000, 0, static_cast<float>(alpha)); });
    }
  }
});

}  // namespace
}  // namespace kvrs::bench
