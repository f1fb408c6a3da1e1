// Transforms of integers beside conversion, FFTW and conversion.
// SPDX-License-Identifier: MIT
#include "kvrs/dft_integer.h"
#include "kvrs/fft_integer.h"

#include <limits>

#include "bench/transforms/fftw.h"
#include "kvrs/fft.h"

namespace kvrs::bench {
namespace {

// By a plain loop, halves to even and saturated, as far as a compiler takes it.
template <class I, class F>
__attribute__((noinline)) void toFloats(const I* src, F* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<F>(src[i]);
}
template <class I, class F>
__attribute__((noinline)) void toIntegers(const F* src, I* dst, int len, F factor) {
  constexpr F kLow = static_cast<F>(std::numeric_limits<I>::min()),
              kHigh = static_cast<F>(std::numeric_limits<I>::max());
  for (int i = 0; i < len; ++i) {
    const F v = __builtin_rint(src[i] * factor);
    dst[i] = static_cast<I>(v < kLow ? kLow : v > kHigh ? kHigh : v);
  }
}

template <class I, class F>
void addFloats(const std::string& name, const std::shared_ptr<I>& a, const std::shared_ptr<I>& b, int n,
               int scaleFactor) {
  const size_t count = 2 * static_cast<size_t>(n);
  const auto x = zeros<F>(count);
  addPrepared(name, "fftw", [=] {
    const std::shared_ptr<std::remove_pointer_t<typename Fftw<F>::Plan>> plan(
        Fftw<F>::pairs(n, x.get(), x.get(), FFTW_FORWARD), Fftw<F>::destroy);
    return [=](long calls) {
      const F factor = static_cast<F>(1.0 / (1 << scaleFactor));
      for (; calls > 0; --calls) {
        toFloats(a.get(), x.get(), 2 * n);
        Fftw<F>::execute(plan.get());
        toIntegers(x.get(), b.get(), 2 * n, factor);
        writeMemory();
      }
    };
  });
}

void addPairs16(int order) {
  const std::string name = "fft_integer/Fwd_CToC_16sc_Sfs/" + std::to_string(order);
  const int n = 1 << order;
  const auto a = array<Kvr16s>(2 * static_cast<size_t>(n)), b = array<Kvr16s>(2 * static_cast<size_t>(n));
  const auto made = withWork<KvrsFFTSpec_C_16sc>(order, kvrsFFTInitAlloc_C_16sc, kvrsFFTGetBufSize_C_16sc,
                                                 kvrsFFTFree_C_16sc);
  add(name, "kvrs", [=] {
    kvrsFFTFwd_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(a.get()), reinterpret_cast<Kvr16sc*>(b.get()),
                             made.spec.get(), order, made.buffer.get());
  });
  addFloats<Kvr16s, Kvr32f>(name, a, b, n, order);
}

void addPairs32(int order) {
  const std::string name = "fft_integer/Fwd_CToC_32sc_Sfs/" + std::to_string(order);
  const int n = 1 << order;
  const auto a = array<Kvr32s>(2 * static_cast<size_t>(n)), b = array<Kvr32s>(2 * static_cast<size_t>(n));
  const auto made = withWork<KvrsFFTSpec_C_32sc>(order, kvrsFFTInitAlloc_C_32sc, kvrsFFTGetBufSize_C_32sc,
                                                 kvrsFFTFree_C_32sc);
  add(name, "kvrs", [=] {
    kvrsFFTFwd_CToC_32sc_Sfs(reinterpret_cast<const Kvr32sc*>(a.get()), reinterpret_cast<Kvr32sc*>(b.get()),
                             made.spec.get(), order, made.buffer.get());
  });
  addFloats<Kvr32s, Kvr64f>(name, a, b, n, order);
}

void addDft16(int n) {
  const std::string name = "dft_integer/Fwd_CToC_16sc_Sfs/" + std::to_string(n);
  const auto a = array<Kvr16s>(2 * static_cast<size_t>(n)), b = array<Kvr16s>(2 * static_cast<size_t>(n));
  const auto made =
      withWork<KvrsDFTSpec_C_16sc>(n, kvrsDFTInitAlloc_C_16sc, kvrsDFTGetBufSize_C_16sc, kvrsDFTFree_C_16sc);
  add(name, "kvrs", [=] {
    kvrsDFTFwd_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(a.get()), reinterpret_cast<Kvr16sc*>(b.get()),
                             made.spec.get(), 10, made.buffer.get());
  });
  addFloats<Kvr16s, Kvr32f>(name, a, b, n, 10);
}

Register integer([] {
  for (int order : {3, 6, 8, 10, 14}) {
    addPairs16(order);
    addPairs32(order);
  }
  for (int n : {240, 1000}) addDft16(n);
});

}  // namespace
}  // namespace kvrs::bench
