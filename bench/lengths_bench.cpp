// Ratios over all lengths that are powers of two: the plot of docs/performance.md. The loops are compiled with -ffast-math,
// so that the compiler may add up in vectors and call its vector library.
// SPDX-License-Identifier: MIT
#include "kvrs.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "bench/transforms/fftw.h"
#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif
#ifdef KVRS_BENCH_VQSORT
#include <hwy/contrib/sort/vqsort.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLeastOrder = 4, kMostOrder = 20;

[[gnu::noinline]] void loopAdd(const Kvr32f* a, const Kvr32f* b, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] + b[i];
}
[[gnu::noinline]] void loopMul(const Kvr16s* a, const Kvr16s* b, Kvr16s* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const int product = a[i] * b[i], odd = product >> 15 & 1;
    dst[i] = static_cast<Kvr16s>(std::min((product + 0x3FFF + odd) >> 15, 32767));
  }
}
[[gnu::noinline]] void loopConvert(const Kvr16s* src, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src[i];
}
[[gnu::noinline]] void loopMagnitude(const Kvr32fc* src, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::sqrt(src[i].re * src[i].re + src[i].im * src[i].im);
}
[[gnu::noinline]] void loopLn(const Kvr32f* src, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::log(src[i]);
}
[[gnu::noinline]] Kvr32f loopDotProd(const Kvr32f* a, const Kvr32f* b, int len) {
  Kvr32f sum = 0;
  for (int i = 0; i < len; ++i) sum += a[i] * b[i];
  return sum;
}
[[gnu::noinline]] Kvr32f loopMax(const Kvr32f* src, int len) {
  Kvr32f max = src[0];
  for (int i = 1; i < len; ++i) max = src[i] > max ? src[i] : max;
  return max;
}

// 64 taps, reversed, over 63 samples of history and the new ones.
constexpr int kTaps = 64;
[[gnu::noinline]] void loopFIR(const Kvr32f* __restrict src, const Kvr32f* __restrict taps,
                               Kvr32f* __restrict dst, int len) {
  constexpr int kBlock = 64;
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    Kvr32f sum[kBlock] = {};
    for (int k = 0; k < kTaps; ++k) {
      for (int i = 0; i < kBlock; ++i) sum[i] += src[n + k + i] * taps[k];
    }
    for (int i = 0; i < kBlock; ++i) dst[n + i] = sum[i];
  }
  for (; n < len; ++n) dst[n] = loopDotProd(src + n, taps, kTaps);
}

void addElements(int len, const std::string& n) {
  const auto a = array<Kvr32f>(len), b = array<Kvr32f>(len), dst = array<Kvr32f>(len);
  const auto positive = newArray<Kvr32f>(len);  // which no other case writes into
  const auto pairs = array<Kvr32fc>(len);
  const auto s = array<Kvr16s>(len), t = array<Kvr16s>(len), product = array<Kvr16s>(len);
  for (int i = 0; i < len; ++i) {
    positive.get()[i] = std::abs(a.get()[i]) + 1e-6f;
    pairs.get()[i] = {a.get()[i], b.get()[i]};
  }
  add("lengths/Add_32f/" + n, "kvrs", [=] { kvrsAdd_32f(a.get(), b.get(), dst.get(), len); });
  add("lengths/Add_32f/" + n, "loop", [=] { loopAdd(a.get(), b.get(), dst.get(), len); });
  add("lengths/Mul_16s_Sfs/" + n, "kvrs", [=] { kvrsMul_16s_Sfs(s.get(), t.get(), product.get(), len, 15); });
  add("lengths/Mul_16s_Sfs/" + n, "loop", [=] { loopMul(s.get(), t.get(), product.get(), len); });
  add("lengths/Convert_16s32f/" + n, "kvrs", [=] { kvrsConvert_16s32f(s.get(), dst.get(), len); });
  add("lengths/Convert_16s32f/" + n, "loop", [=] { loopConvert(s.get(), dst.get(), len); });
  add("lengths/Magnitude_32fc/" + n, "kvrs", [=] { kvrsMagnitude_32fc(pairs.get(), dst.get(), len); });
  add("lengths/Magnitude_32fc/" + n, "loop", [=] { loopMagnitude(pairs.get(), dst.get(), len); });
  add("lengths/Ln_32f/" + n, "kvrs", [=] { kvrsLn_32f(positive.get(), dst.get(), len); });
  add("lengths/Ln_32f/" + n, "loop", [=] { loopLn(positive.get(), dst.get(), len); });
  add("lengths/DotProd_32f/" + n, "kvrs", [=] {
    Kvr32f sum;
    kvrsDotProd_32f(a.get(), b.get(), len, &sum);
  });
  add("lengths/DotProd_32f/" + n, "loop", [=] { keep(loopDotProd(a.get(), b.get(), len)); });
  add("lengths/Max_32f/" + n, "kvrs", [=] {
    Kvr32f max;
    kvrsMax_32f(a.get(), len, &max);
  });
  add("lengths/Max_32f/" + n, "loop", [=] { keep(loopMax(a.get(), len)); });
#ifdef KVRS_BENCH_VOLK
  const unsigned count = static_cast<unsigned>(len);
  add("lengths/Add_32f/" + n, "VOLK", [=] { volk_32f_x2_add_32f(dst.get(), a.get(), b.get(), count); });
  add("lengths/Magnitude_32fc/" + n, "VOLK",
      [=] { volk_32fc_magnitude_32f(dst.get(), reinterpret_cast<const lv_32fc_t*>(pairs.get()), count); });
  add("lengths/DotProd_32f/" + n, "VOLK", [=] {
    Kvr32f sum;
    volk_32f_x2_dot_prod_32f(&sum, a.get(), b.get(), count);
  });
#endif
}

void addFilter(int len, const std::string& n) {
  const auto taps = array<Kvr32f>(kTaps), src = array<Kvr32f>(len + kTaps), dst = array<Kvr32f>(len);
  KvrsFIRState_32f* made = nullptr;
  if (kvrsFIRInitAlloc_32f(&made, taps.get(), kTaps, nullptr) != kvrStatusOk) abort();
  const std::shared_ptr<KvrsFIRState_32f> state(made, kvrsFIRFree_32f);
  add("lengths/FIR_32f/" + n, "kvrs", [=] { kvrsFIR_32f(src.get(), dst.get(), len, state.get()); });
  add("lengths/FIR_32f/" + n, "loop", [=] { loopFIR(src.get(), taps.get(), dst.get(), len); });
}

void addSort(int len, const std::string& n) {
  const auto random = newArray<Kvr32f>(len), a = array<Kvr32f>(len);
  const auto contestant = [=](const std::string& who, auto sort) {
    add("lengths/SortAscend_32f/" + n, who, [=] {  // the same random elements in every call
      memcpy(a.get(), random.get(), static_cast<size_t>(len) * sizeof(Kvr32f));
      sort(a.get());
    });
  };
  contestant("kvrs", [=](Kvr32f* data) { kvrsSortAscend_32f_I(data, len); });
#ifdef KVRS_BENCH_VQSORT
  contestant("vqsort",
             [=](Kvr32f* data) { hwy::Sorter()(data, static_cast<size_t>(len), hwy::SortAscending()); });
#endif
}

void addTransforms(int order, const std::string& n) {
  const int len = 1 << order;
  const auto a = zeros<Kvr32fc>(len), b = zeros<Kvr32fc>(len);
  const auto pairs = withWork<KvrsFFTSpec_C_32fc>(order, kvrsFFTInitAlloc_C_32fc, kvrsFFTGetBufSize_C_32fc,
                                                  kvrsFFTFree_C_32fc);
  add("lengths/FFTFwd_CToC_32fc/" + n, "kvrs",
      [=] { kvrsFFTFwd_CToC_32fc(a.get(), b.get(), pairs.spec.get(), pairs.buffer.get()); });
  addFftw<Kvr32f>("lengths/FFTFwd_CToC_32fc/" + n,
                  [=] { return Fftw<Kvr32f>::pairs(len, a.get(), b.get(), FFTW_FORWARD); });
  const auto x = zeros<Kvr32f>(len + 2), y = zeros<Kvr32f>(len + 2);
  const auto real =
      withWork<KvrsFFTSpec_R_32f>(order, kvrsFFTInitAlloc_R_32f, kvrsFFTGetBufSize_R_32f, kvrsFFTFree_R_32f);
  add("lengths/FFTFwd_RToCCS_32f/" + n, "kvrs",
      [=] { kvrsFFTFwd_RToCCS_32f(x.get(), y.get(), real.spec.get(), real.buffer.get()); });
  addFftw<Kvr32f>("lengths/FFTFwd_RToCCS_32f/" + n,
                  [=] { return Fftw<Kvr32f>::forward(len, x.get(), y.get()); });
}

Register lengths([] {
  for (int order = kLeastOrder; order <= kMostOrder; ++order) {
    const std::string n = std::to_string(1 << order);
    addElements(1 << order, n);
    addFilter(1 << order, n);
    addSort(1 << order, n);
    addTransforms(order, n);
  }
});

}  // namespace
}  // namespace kvrs::bench
