// SPDX-License-Identifier: MIT
#include "kvrs/window.h"

#include <cmath>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 2048, 65536};

__attribute__((noipa)) void loopProduct(const Kvr32f* src, const Kvr32f* table, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src[i] * table[i];
}
__attribute__((noipa)) void loopHann(const Kvr32f* src, Kvr32f* dst, int len) {
  const double step = 6.283185307179586 / (len - 1);
  for (int i = 0; i < len; ++i) dst[i] = src[i] * static_cast<float>(0.5 - 0.5 * std::cos(step * i));
}

Register window([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const auto src = array<Kvr32f>(len), dst = array<Kvr32f>(len), table = array<Kvr32f>(len);
    const auto peers = [&](const std::string& name) {
      add(name, "table", [=] { loopProduct(src.get(), table.get(), dst.get(), len); });
      add(name, "cos", [=] { loopHann(src.get(), dst.get(), len); });
    };
    add("window/WinBartlett_32f/" + n, "kvrs", [=] { kvrsWinBartlett_32f(src.get(), dst.get(), len); });
    peers("window/WinBartlett_32f/" + n);
    add("window/WinHann_32f/" + n, "kvrs", [=] { kvrsWinHann_32f(src.get(), dst.get(), len); });
    peers("window/WinHann_32f/" + n);
    add("window/WinBlackmanStd_32f/" + n, "kvrs", [=] { kvrsWinBlackmanStd_32f(src.get(), dst.get(), len); });
    peers("window/WinBlackmanStd_32f/" + n);
    const float alpha = 16.0f / static_cast<float>(len);
    add("window/WinKaiser_32f/" + n, "kvrs", [=] { kvrsWinKaiser_32f(src.get(), dst.get(), len, alpha); });
    peers("window/WinKaiser_32f/" + n);
    const auto samples = array<Kvr16s>(len), results = array<Kvr16s>(len);
    add("window/WinHann_16s/" + n, "kvrs", [=] { kvrsWinHann_16s(samples.get(), results.get(), len); });
    peers("window/WinHann_16s/" + n);
  }
});

}  // namespace
}  // namespace kvrs::bench
