// SPDX-License-Identifier: MIT
#include "kvrs/shift.h"

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

template <class T>
__attribute__((noinline)) void loopLeft(const T* src, int val, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<T>(src[i] << val);
}
template <class T>
__attribute__((noinline)) void loopRight(const T* src, int val, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<T>(src[i] >> val);
}

template <class T, class F>
void contest(const char* name, int len, F f, void (*loop)(const T*, int, T*, int)) {
  const auto src = array<T>(static_cast<size_t>(len)), dst = array<T>(static_cast<size_t>(len));
  const std::string label = std::string("shift/") + name + "/" + std::to_string(len);
  add(label, "kvrs", [=] { f(src.get(), 3, dst.get(), len); });
  add(label, "loop", [=] { loop(src.get(), 3, dst.get(), len); });
}

Register shift([] {
  for (int len : {64, 1024, 16384, 4 << 20}) {
    contest<Kvr8u>("LShiftC_8u", len, kvrsLShiftC_8u, loopLeft<Kvr8u>);
    contest<Kvr16s>("LShiftC_16s", len, kvrsLShiftC_16s, loopLeft<Kvr16s>);
    contest<Kvr8u>("RShiftC_8u", len, kvrsRShiftC_8u, loopRight<Kvr8u>);
    contest<Kvr16s>("RShiftC_16s", len, kvrsRShiftC_16s, loopRight<Kvr16s>);
    contest<Kvr32s>("RShiftC_32s", len, kvrsRShiftC_32s, loopRight<Kvr32s>);
  }
});

}  // namespace
}  // namespace kvrs::bench
