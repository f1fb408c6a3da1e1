// SPDX-License-Identifier: MIT
#include "kvrs/preemphasize.h"

#include <algorithm>
#include <cmath>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

__attribute__((noipa)) void loopSingles(Kvr32f* x, int len, Kvr32f val) {
  for (int i = len - 1; i > 0; --i) x[i] -= val * x[i - 1];
}

__attribute__((noipa)) void loopIntegers(Kvr16s* x, int len, Kvr32f val) {
  for (int i = len - 1; i > 0; --i) {
    const float y = std::nearbyint(x[i] - val * x[i - 1]);
    x[i] = static_cast<Kvr16s>(std::min(std::max(y, -32768.0f), 32767.0f));
  }
}

// A val of 0 keeps the data as it is, call after call.
Register preemphasize([] {
  for (int len : {64, 1024, 16384}) {
    const std::string n = std::to_string(len);
    const auto x = array<Kvr32f>(static_cast<size_t>(len));
    const auto y = array<Kvr16s>(static_cast<size_t>(len));
    add("preemphasize/32f/" + n, "kvrs", [=] { kvrsPreemphasize_32f(x.get(), len, 0.0f); });
    add("preemphasize/32f/" + n, "loop", [=] { loopSingles(x.get(), len, 0.0f); });
    add("preemphasize/16s/" + n, "kvrs", [=] { kvrsPreemphasize_16s(y.get(), len, 0.0f); });
    add("preemphasize/16s/" + n, "loop", [=] { loopIntegers(y.get(), len, 0.0f); });
  }
});

}  // namespace
}  // namespace kvrs::bench
