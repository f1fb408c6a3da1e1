// SPDX-License-Identifier: MIT
#include "kvrs/demodulate.h"

#include <cmath>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

__attribute__((noipa)) void loopDemodulate(const Kvr16s* re, const Kvr16s* im, Kvr16s* dst, int len,
                                           Kvr16sc* delay) {
  float lastRe = delay->re, lastIm = delay->im;
  for (int i = 0; i < len; ++i) {
    const float x = re[i] * lastRe + im[i] * lastIm, y = im[i] * lastRe - re[i] * lastIm;
    dst[i] = static_cast<Kvr16s>(std::lrintf(10430.06f * atan2f(y, x)));
    lastRe = re[i];
    lastIm = im[i];
  }
  *delay = {re[len - 1], im[len - 1]};
}

Register demodulate([] {
  for (int len : {64, 1024, 16384}) {
    const std::string name = "demodulate/FM_16s/" + std::to_string(len);
    const size_t n = static_cast<size_t>(len);
    const auto re = array<Kvr16s>(n), im = array<Kvr16s>(n), dst = array<Kvr16s>(n);
    const auto delay = array<Kvr16sc>(1);
    add(name, "kvrs", [=] { kvrsDemodulateFM_CToR_16s(re.get(), im.get(), dst.get(), len, delay.get()); });
    add(name, "loop", [=] { loopDemodulate(re.get(), im.get(), dst.get(), len, delay.get()); });
  }
});

}  // namespace
}  // namespace kvrs::bench
