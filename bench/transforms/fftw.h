// FFTW as a contestant, in both precisions: plans made by measuring, one thread.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_TRANSFORMS_FFTW_H
#define KVRS_BENCH_TRANSFORMS_FFTW_H

#include <fftw3.h>

#include <cstring>

#include "bench/support/bench.h"
#include "kvrs/types.h"

namespace kvrs::bench {

template <class T>
struct Fftw;

template <>
struct Fftw<float> {
  using Pair = fftwf_complex;
  using Plan = fftwf_plan;
  static Plan pairs(int n, void* in, void* out, int sign) {
    return fftwf_plan_dft_1d(n, static_cast<Pair*>(in), static_cast<Pair*>(out), sign, FFTW_MEASURE);
  }
  static Plan planes(int n, float* re, float* im, float* outRe, float* outIm) {
    const fftwf_iodim dim{n, 1, 1};
    return fftwf_plan_guru_split_dft(1, &dim, 0, nullptr, re, im, outRe, outIm, FFTW_MEASURE);
  }
  static Plan forward(int n, float* in, void* out) {
    return fftwf_plan_dft_r2c_1d(n, in, static_cast<Pair*>(out), FFTW_MEASURE);
  }
  static Plan inverse(int n, void* in, float* out) {
    return fftwf_plan_dft_c2r_1d(n, static_cast<Pair*>(in), out, FFTW_MEASURE);
  }
  static Plan cosine(int n, float* in, float* out, fftw_r2r_kind kind) {
    return fftwf_plan_r2r_1d(n, in, out, kind, FFTW_MEASURE);
  }
  static void execute(Plan plan) { fftwf_execute(plan); }
  static void destroy(Plan plan) { fftwf_destroy_plan(plan); }
};

template <>
struct Fftw<double> {
  using Pair = fftw_complex;
  using Plan = fftw_plan;
  static Plan pairs(int n, void* in, void* out, int sign) {
    return fftw_plan_dft_1d(n, static_cast<Pair*>(in), static_cast<Pair*>(out), sign, FFTW_MEASURE);
  }
  static Plan planes(int n, double* re, double* im, double* outRe, double* outIm) {
    const fftw_iodim dim{n, 1, 1};
    return fftw_plan_guru_split_dft(1, &dim, 0, nullptr, re, im, outRe, outIm, FFTW_MEASURE);
  }
  static Plan forward(int n, double* in, void* out) {
    return fftw_plan_dft_r2c_1d(n, in, static_cast<Pair*>(out), FFTW_MEASURE);
  }
  static Plan inverse(int n, void* in, double* out) {
    return fftw_plan_dft_c2r_1d(n, static_cast<Pair*>(in), out, FFTW_MEASURE);
  }
  static Plan cosine(int n, double* in, double* out, fftw_r2r_kind kind) {
    return fftw_plan_r2r_1d(n, in, out, kind, FFTW_MEASURE);
  }
  static void execute(Plan plan) { fftw_execute(plan); }
  static void destroy(Plan plan) { fftw_destroy_plan(plan); }
};

// Planning is not timed; what one planning has learnt, the next knows. `make` gives the plan.
template <class T, class Make>
void addFftw(const std::string& name, Make make) {
  addPrepared(name, "fftw", [make] {
    const std::shared_ptr<std::remove_pointer_t<typename Fftw<T>::Plan>> plan(make(), Fftw<T>::destroy);
    return [plan](long calls) {
      for (; calls > 0; --calls) {
        Fftw<T>::execute(plan.get());
        writeMemory();
      }
    };
  });
}

// Zeros: transforms in place, over and over, stay where they are.
template <class T>
std::shared_ptr<T> zeros(size_t count) {
  const auto data = array<T>(count);
  memset(static_cast<void*>(data.get()), 0, count * sizeof(T));
  return data;
}

// A context with its work area, made by `init` for an order or a length.
template <class Spec>
struct WithWork {
  std::shared_ptr<Spec> spec;
  std::shared_ptr<Kvr8u> buffer;
};
template <class Spec, class Init, class GetBufSize, class Free>
WithWork<Spec> withWork(int size, Init init, GetBufSize getBufSize, Free free) {
  Spec* spec;
  int bytes;
  if (init(&spec, size, kvrFftNoDivByAny, kvrHintNone) != kvrStatusOk) abort();
  getBufSize(spec, &bytes);
  return {std::shared_ptr<Spec>(spec, free), array<Kvr8u>(static_cast<size_t>(bytes) + 1)};
}

}  // namespace kvrs::bench

#endif
