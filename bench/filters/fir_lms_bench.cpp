// Adaptive filters beside plain loops and liquid-dsp's normalised one. The loops find their history in one piece with the new
// samples and keep none themselves.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms.h"

#include <algorithm>

#include "bench/support/bench.h"
#include "kvrs/fir_lms_multirate.h"
#ifdef KVRS_BENCH_LIQUID
#include <complex>

#include <liquid/liquid.h>
// All functions of its header that stand behind the first old one count as old.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#endif

namespace kvrs::bench {
namespace {

constexpr int kLen = 2048;

// Taps reversed: in[n .. n+tapsLen-1] is the window of output n. X are samples, T taps.
template <class X, class T>
__attribute__((noinline)) void loop(const X* __restrict in, const X* __restrict ref, X* __restrict out,
                                    T* __restrict taps, int tapsLen, float mu) {
  for (int n = 0; n < kLen; ++n) {
    float y = 0;
    for (int k = 0; k < tapsLen; ++k) y += static_cast<float>(in[n + k]) * taps[k];
    out[n] = static_cast<X>(y);
    const float step = 2 * mu * (static_cast<float>(ref[n]) - y);
    for (int k = 0; k < tapsLen; ++k) taps[k] += static_cast<float>(in[n + k]) * step;
  }
}

__attribute__((noinline)) void loopQ15(const Kvr16s* __restrict in, const Kvr16s* __restrict ref,
                                       Kvr16s* __restrict out, Kvr32s* __restrict taps, int tapsLen, int mu) {
  for (int n = 0; n < kLen; ++n) {
    double sum = 0, energy = 0;
    for (int k = 0; k < tapsLen; ++k) {
      sum += static_cast<double>(in[n + k]) * taps[k];
      energy += static_cast<double>(in[n + k]) * in[n + k];
    }
    const double y = sum * 0x1p-15;
    out[n] = static_cast<Kvr16s>(std::clamp(y, -32768.0, 32767.0));
    const double step = mu * (ref[n] - y) / energy;
    for (int k = 0; k < tapsLen; ++k) {
      taps[k] = static_cast<Kvr32s>(std::clamp(taps[k] + in[n + k] * step, -2147483648.0, 2147483647.0));
    }
  }
}

__attribute__((noinline)) void loopSteps(const Kvr16s* __restrict in, const Kvr32s* __restrict ref,
                                         Kvr32s* __restrict out, Kvr32s* __restrict taps, int tapsLen,
                                         int step, int mu) {
  for (int n = 0; n < kLen; ++n) {
    uint32_t sum = 0;
    for (int k = 0; k < tapsLen; ++k) {
      sum += static_cast<uint32_t>(in[n + k * step]) * static_cast<uint32_t>(taps[k] >> 16);
    }
    out[n] = static_cast<Kvr32s>(sum);
    const int g = (mu * (ref[n] - out[n]) + 16384) >> 15;
    for (int k = 0; k < tapsLen; ++k) taps[k] += g * in[n + k * step];
  }
}

__attribute__((noinline)) void loopComplexSteps(const Kvr16sc* __restrict in, Kvr32sc* __restrict out,
                                                Kvr32sc* __restrict taps, int tapsLen, int gRe, int gIm) {
  for (int n = 0; n < kLen; ++n) {
    uint32_t re = 0, im = 0;
    for (int k = 0; k < tapsLen; ++k) {
      const int xRe = in[n + k].re, xIm = in[n + k].im, hRe = taps[k].re >> 16, hIm = taps[k].im >> 16;
      re += static_cast<uint32_t>(xRe * hRe) - static_cast<uint32_t>(xIm * hIm);
      im += static_cast<uint32_t>(xRe * hIm) + static_cast<uint32_t>(xIm * hRe);
    }
    out[n] = {static_cast<Kvr32s>(re), static_cast<Kvr32s>(im)};
    for (int k = 0; k < tapsLen; ++k) {
      const int xRe = in[n + k].re, xIm = in[n + k].im;
      taps[k].re += xRe * gRe + xIm * gIm;
      taps[k].im += xRe * gIm - xIm * gRe;
    }
  }
}

template <class X>
struct Signal {
  explicit Signal(int tapsCount)
      : in(array<X>(static_cast<size_t>(tapsCount + kLen))),
        ref(array<X>(kLen)),
        out(array<X>(kLen)),
        taps(array<float>(static_cast<size_t>(tapsCount))),
        line(array<X>(static_cast<size_t>(2 * tapsCount))) {
    std::fill_n(taps.get(), tapsCount, 0.0f);
    std::fill_n(line.get(), 2 * tapsCount, X{});
  }
  std::shared_ptr<X> in, ref, out;
  std::shared_ptr<float> taps;
  std::shared_ptr<X> line;
};

// A step that is small for a full scale of `scale`.
float stepFor(int tapsLen, double scale) {
  return static_cast<float>(0.05 / tapsLen / (scale * scale));
}

Register floats([] {
  for (int tapsLen : {8, 16, 32, 64, 128, 256, 512}) {
    const float mu = stepFor(tapsLen, 1);
    const Signal<Kvr32f> s(tapsLen);
    const auto name = "fir_lms/32f/" + std::to_string(tapsLen);
    KvrsFIRLMSState_32f* state = nullptr;
    kvrsFIRLMSInitAlloc_32f(&state, nullptr, tapsLen, nullptr, 0);
    add(name, "kvrs", [=] { kvrsFIRLMS_32f(s.in.get(), s.ref.get(), s.out.get(), kLen, mu, state); });
    add(name, "loop", [=] { loop(s.in.get(), s.ref.get(), s.out.get(), s.taps.get(), tapsLen, mu); });
#ifdef KVRS_BENCH_LIQUID
    addPrepared(name, "liquid", [=] {
      const std::shared_ptr<std::remove_pointer_t<eqlms_rrrf>> filter(
          eqlms_rrrf_create(nullptr, static_cast<unsigned>(tapsLen)), eqlms_rrrf_destroy);
      eqlms_rrrf_set_bw(filter.get(), 0.05f);
      return Run([=](long calls) {
        for (; calls > 0; --calls) {
          for (int n = 0; n < kLen; ++n) {
            float y;
            eqlms_rrrf_push(filter.get(), s.in.get()[n]);
            eqlms_rrrf_execute(filter.get(), &y);
            s.out.get()[n] = y;
            eqlms_rrrf_step(filter.get(), s.ref.get()[n], y);
          }
        }
      });
    });
#endif
    const auto direct = "fir_lms/one_direct_32f/" + std::to_string(tapsLen);
    add(direct, "kvrs", [=] {
      int index = 0;
      for (int n = 0; n < kLen; ++n) {
        kvrsFIRLMSOne_Direct_32f(s.in.get()[n], s.ref.get()[n], s.out.get() + n, s.taps.get(), tapsLen, mu,
                                 s.line.get(), &index);
      }
    });
    add(direct, "loop", [=] { loop(s.in.get(), s.ref.get(), s.out.get(), s.taps.get(), tapsLen, mu); });
    const auto single = "fir_lms/32f_sample_by_sample/" + std::to_string(tapsLen);
    add(single, "kvrs", [=] {
      for (int n = 0; n < kLen; ++n)
        kvrsFIRLMS_32f(s.in.get() + n, s.ref.get() + n, s.out.get() + n, 1, mu, state);
    });
    add(single, "loop", [=] { loop(s.in.get(), s.ref.get(), s.out.get(), s.taps.get(), tapsLen, mu); });
  }
});

Register integers([] {
  for (int tapsLen : {16, 64, 512}) {
    const float mu = stepFor(tapsLen, 32768);
    const Signal<Kvr16s> s(tapsLen);
    const auto name = "fir_lms/32f_16s/" + std::to_string(tapsLen);
    KvrsFIRLMSState32f_16s* state = nullptr;
    kvrsFIRLMSInitAlloc32f_16s(&state, nullptr, tapsLen, nullptr, 0);
    add(name, "kvrs", [=] { kvrsFIRLMS32f_16s(s.in.get(), s.ref.get(), s.out.get(), kLen, mu, state); });
    add(name, "loop", [=] { loop(s.in.get(), s.ref.get(), s.out.get(), s.taps.get(), tapsLen, mu); });
    const auto direct = "fir_lms/one_direct_32f_16s/" + std::to_string(tapsLen);
    add(direct, "kvrs", [=] {
      int index = 0;
      for (int n = 0; n < kLen; ++n) {
        kvrsFIRLMSOne_Direct32f_16s(s.in.get()[n], s.ref.get()[n], s.out.get() + n, s.taps.get(), tapsLen, mu,
                                    s.line.get(), &index);
      }
    });
    add(direct, "loop", [=] { loop(s.in.get(), s.ref.get(), s.out.get(), s.taps.get(), tapsLen, mu); });
    const auto q15 = "fir_lms/one_direct_q15/" + std::to_string(tapsLen);
    const auto taps = array<Kvr32s>(static_cast<size_t>(tapsLen));
    std::fill_n(taps.get(), tapsLen, 0);
    add(q15, "kvrs", [=] {
      int index = 0;
      for (int n = 0; n < kLen; ++n) {
        kvrsFIRLMSOne_DirectQ15_16s(s.in.get()[n], s.ref.get()[n], s.out.get() + n, taps.get(), tapsLen, 1000,
                                    s.line.get(), &index);
      }
    });
    add(q15, "loop", [=] { loopQ15(s.in.get(), s.ref.get(), s.out.get(), taps.get(), tapsLen, 1000); });
  }
});

Register inSteps([] {
  for (int tapsLen : {16, 64, 512}) {
    for (int step : {1, 2, 3}) {
      const auto in = array<Kvr16s>(static_cast<size_t>(step * tapsLen + kLen));
      const auto ref = array<Kvr32s>(kLen), out = array<Kvr32s>(kLen);
      const auto taps = array<Kvr32s>(static_cast<size_t>(tapsLen));
      const auto name =
          "fir_lms_multirate/32s_16s/step" + std::to_string(step) + "/" + std::to_string(tapsLen);
      KvrsFIRLMSMRState32s_16s* state = nullptr;
      kvrsFIRLMSMRInitAlloc32s_16s(&state, nullptr, tapsLen, nullptr, 0, step, 0, 1);
      add(name, "kvrs", [=] {
        for (int n = 0; n < kLen; ++n) {
          kvrsFIRLMSMROneVal32s_16s(in.get()[n], out.get() + n, state);
          kvrsFIRLMSMRUpdateTaps32s_16s(ref.get()[n] - out.get()[n], state);
        }
      });
      add(name, "loop", [=] { loopSteps(in.get(), ref.get(), out.get(), taps.get(), tapsLen, step, 1); });
    }
    const auto in = array<Kvr16sc>(static_cast<size_t>(tapsLen + kLen));
    const auto out = array<Kvr32sc>(kLen), taps = array<Kvr32sc>(static_cast<size_t>(tapsLen));
    const auto name = "fir_lms_multirate/32sc_16sc/step1/" + std::to_string(tapsLen);
    KvrsFIRLMSMRState32sc_16sc* state = nullptr;
    kvrsFIRLMSMRInitAlloc32sc_16sc(&state, nullptr, tapsLen, nullptr, 0, 1, 0, 32768);
    add(name, "kvrs", [=] {
      for (int n = 0; n < kLen; ++n) {
        kvrsFIRLMSMROneVal32sc_16sc(in.get()[n], out.get() + n, state);
        kvrsFIRLMSMRUpdateTaps32sc_16sc(100, -77, state);
      }
    });
    add(name, "loop", [=] { loopComplexSteps(in.get(), out.get(), taps.get(), tapsLen, 100, -77); });
  }
});

}  // namespace
}  // namespace kvrs::bench
