// The FFTs beside FFTW: plans made by measuring, one thread, the same arrays' alignment, and FFTW free to destroy its
// input, which ours never do.
// SPDX-License-Identifier: MIT
#include "kvrs/fft.h"

#include <fftw3.h>

#include <cstring>

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

// Zeros: transforms in place, over and over, stay where they are.
template <class T>
std::shared_ptr<T> zeros(size_t count) {
  const auto data = array<T>(count);
  memset(static_cast<void*>(data.get()), 0, count * sizeof(T));
  return data;
}

// FFTW as a contestant. Planning is not timed; what one planning has learnt, the next knows.
template <class Make>
void addFftw(const std::string& name, Make make) {
  addPrepared(name, "fftw", [make] {
    const std::shared_ptr<fftwf_plan_s> plan(make(), fftwf_destroy_plan);
    return [plan](long calls) {
      for (; calls > 0; --calls) {
        fftwf_execute(plan.get());
        writeMemory();
      }
    };
  });
}

template <class Spec>
struct Context {
  std::shared_ptr<Spec> spec;
  std::shared_ptr<Kvr8u> buffer;
};

Context<KvrsFFTSpec_C_32fc> complexContext(int order) {
  KvrsFFTSpec_C_32fc* spec;
  int size;
  if (kvrsFFTInitAlloc_C_32fc(&spec, order, kvrFftNoDivByAny, kvrHintNone) != kvrStatusOk) abort();
  kvrsFFTGetBufSize_C_32fc(spec, &size);
  return {std::shared_ptr<KvrsFFTSpec_C_32fc>(spec, kvrsFFTFree_C_32fc), array<Kvr8u>(size + 1)};
}

Context<KvrsFFTSpec_R_32f> realContext(int order) {
  KvrsFFTSpec_R_32f* spec;
  int size;
  if (kvrsFFTInitAlloc_R_32f(&spec, order, kvrFftNoDivByAny, kvrHintNone) != kvrStatusOk) abort();
  kvrsFFTGetBufSize_R_32f(spec, &size);
  return {std::shared_ptr<KvrsFFTSpec_R_32f>(spec, kvrsFFTFree_R_32f), array<Kvr8u>(size + 1)};
}

void addComplex(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr32fc>(n), b = zeros<Kvr32fc>(n);
  const auto pairs = [](const auto& p) { return reinterpret_cast<fftwf_complex*>(p.get()); };
  const auto plan = [=](bool inPlace, int sign) {
    return [=] { return fftwf_plan_dft_1d(n, pairs(a), pairs(inPlace ? a : b), sign, FFTW_MEASURE); };
  };
  const auto [spec, buffer] = complexContext(order);
  const auto c = spec;
  const auto work = buffer;
  add("fft/Fwd_CToC_32fc/" + name, "kvrs",
      [=] { kvrsFFTFwd_CToC_32fc(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_CToC_32fc/" + name, plan(false, FFTW_FORWARD));
  add("fft/Inv_CToC_32fc/" + name, "kvrs",
      [=] { kvrsFFTInv_CToC_32fc(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Inv_CToC_32fc/" + name, plan(false, FFTW_BACKWARD));
  add("fft/Fwd_CToC_32fc_I/" + name, "kvrs", [=] { kvrsFFTFwd_CToC_32fc_I(a.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_CToC_32fc_I/" + name, plan(true, FFTW_FORWARD));
  add("fft/Inv_CToC_32fc_I/" + name, "kvrs", [=] { kvrsFFTInv_CToC_32fc_I(a.get(), c.get(), work.get()); });
  addFftw("fft/Inv_CToC_32fc_I/" + name, plan(true, FFTW_BACKWARD));
}

void addReal(int order) {
  const std::string name = std::to_string(order);
  const int n = 1 << order;
  const auto a = zeros<Kvr32f>(n + 2), b = zeros<Kvr32f>(n + 2);
  const auto pairs = [](const auto& p) { return reinterpret_cast<fftwf_complex*>(p.get()); };
  const auto forward = [=](bool inPlace) {
    return [=] { return fftwf_plan_dft_r2c_1d(n, a.get(), pairs(inPlace ? a : b), FFTW_MEASURE); };
  };
  const auto inverse = [=](bool inPlace) {
    return [=] { return fftwf_plan_dft_c2r_1d(n, pairs(a), (inPlace ? a : b).get(), FFTW_MEASURE); };
  };
  const auto [spec, buffer] = realContext(order);
  const auto c = spec;
  const auto work = buffer;
  add("fft/Fwd_RToPerm_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_RToPerm_32f/" + name, forward(false));
  add("fft/Inv_PermToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Inv_PermToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToCCS_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToCCS_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_RToCCS_32f/" + name, forward(false));
  add("fft/Inv_CCSToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_CCSToR_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Inv_CCSToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToPack_32f/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPack_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_RToPack_32f/" + name, forward(false));
  add("fft/Inv_PackToR_32f/" + name, "kvrs",
      [=] { kvrsFFTInv_PackToR_32f(a.get(), b.get(), c.get(), work.get()); });
  addFftw("fft/Inv_PackToR_32f/" + name, inverse(false));
  add("fft/Fwd_RToPerm_32f_I/" + name, "kvrs",
      [=] { kvrsFFTFwd_RToPerm_32f_I(a.get(), c.get(), work.get()); });
  addFftw("fft/Fwd_RToPerm_32f_I/" + name, forward(true));
  add("fft/Inv_PermToR_32f_I/" + name, "kvrs",
      [=] { kvrsFFTInv_PermToR_32f_I(a.get(), c.get(), work.get()); });
  addFftw("fft/Inv_PermToR_32f_I/" + name, inverse(true));
}

Register fft([] {
  for (int order = 4; order <= 20; ++order) {
    addComplex(order);
    addReal(order);
  }
});

}  // namespace
}  // namespace kvrs::bench
