// FIR filters of other types than single precision, and at two rates, on one thread, beside plain loops, Eigen, liquid-dsp,
// overlap-save on FFTW and the same filter in single precision between two conversions.
// SPDX-License-Identifier: MIT
#include <Eigen/Core>
#include <complex>
#include <cstring>

#include "bench/filters/overlap_save.h"
#include "kvrs/convert.h"
#include "kvrs/fir.h"
#include "kvrs/fir_multirate.h"
#include "kvrscore.h"
#ifdef KVRS_BENCH_LIQUID
#include <liquid/liquid.h>
#endif

namespace kvrs::bench {
namespace {

// Complex numbers from arrays of their parts.
template <class T>
std::shared_ptr<T> numbers(int count) {
  if constexpr (requires(T value) { value.re; }) {
    const auto parts = array<decltype(T::re)>(2 * static_cast<size_t>(count));
    return {parts, reinterpret_cast<T*>(parts.get())};
  } else {
    return array<T>(static_cast<size_t>(count));
  }
}

template <class T>
struct Data {
  Data(int tapsCount, int length)
      : tapsLen(tapsCount),
        len(length),
        taps(numbers<T>(tapsCount)),
        in(numbers<T>(tapsCount + length)),
        out(numbers<T>(length)) {}

  const T* src() const { return in.get() + tapsLen - 1; }

  int tapsLen, len;
  std::shared_ptr<T> taps, in, out;
};

// out[n] = sum over k of in[n + k] * taps[k], output by output.
template <class T>
__attribute__((noinline)) void loopOverOutputs(const T* __restrict in, const T* __restrict taps, int tapsLen,
                                               T* __restrict out, int len) {
  for (int n = 0; n < len; ++n) {
    T sum{};
    for (int k = 0; k < tapsLen; ++k) sum += in[n + k] * taps[k];
    out[n] = sum;
  }
}

// Blocks of outputs, tap by tap.
template <int kBlock, class T>
__attribute__((noinline)) void loopInBlocks(const T* __restrict in, const T* __restrict taps, int tapsLen,
                                            T* __restrict out, int len) {
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    T sum[kBlock] = {};
    for (int k = 0; k < tapsLen; ++k) {
      for (int i = 0; i < kBlock; ++i) sum[i] += in[n + k + i] * taps[k];
    }
    for (int i = 0; i < kBlock; ++i) out[n + i] = sum[i];
  }
  loopOverOutputs(in + n, taps, tapsLen, out + n, len - n);
}

template <class T>
void eigenBlocks(const T* in, const T* taps, int tapsLen, T* out, int len) {
  constexpr int kBlock = 64;
  using Block = Eigen::Array<T, kBlock, 1>;
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    Block sum = Block::Zero();
    for (int k = 0; k < tapsLen; ++k) sum += Eigen::Map<const Block>(in + n + k) * taps[k];
    Eigen::Map<Block>(out + n) = sum;
  }
  loopOverOutputs(in + n, taps, tapsLen, out + n, len - n);
}

// Complex numbers by their parts, so that -ffast-math has nothing to shuffle: over outputs, and over taps in blocks.
__attribute__((noinline, optimize("fast-math"))) void complexOutputs(const Kvr32fc* __restrict in,
                                                                     const Kvr32fc* __restrict taps,
                                                                     int tapsLen, Kvr32fc* __restrict out,
                                                                     int len) {
  for (int n = 0; n < len; ++n) {
    float re = 0, im = 0;
    for (int k = 0; k < tapsLen; ++k) {
      re += in[n + k].re * taps[k].re - in[n + k].im * taps[k].im;
      im += in[n + k].re * taps[k].im + in[n + k].im * taps[k].re;
    }
    out[n] = {re, im};
  }
}
__attribute__((noinline, optimize("fast-math"))) void complexBlocks(const Kvr32fc* __restrict in,
                                                                    const Kvr32fc* __restrict taps,
                                                                    int tapsLen, Kvr32fc* __restrict out,
                                                                    int len) {
  constexpr int kBlock = 64;
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    float re[kBlock] = {}, im[kBlock] = {};
    for (int k = 0; k < tapsLen; ++k) {
      for (int i = 0; i < kBlock; ++i) {
        const Kvr32fc x = in[n + k + i];
        re[i] += x.re * taps[k].re - x.im * taps[k].im;
        im[i] += x.re * taps[k].im + x.im * taps[k].re;
      }
    }
    for (int i = 0; i < kBlock; ++i) out[n + i] = {re[i], im[i]};
  }
  complexOutputs(in + n, taps, tapsLen, out + n, len - n);
}

// 16-bit integers with 32-bit sums, shifted right by 15.
__attribute__((noinline)) void shortBlocks(const Kvr16s* __restrict in, const Kvr16s* __restrict taps,
                                           int tapsLen, Kvr16s* __restrict out, int len) {
  constexpr int kBlock = 64;
  for (int n = 0; n + kBlock <= len; n += kBlock) {
    int32_t sum[kBlock] = {};
    for (int k = 0; k < tapsLen; ++k) {
      for (int i = 0; i < kBlock; ++i) sum[i] += in[n + k + i] * taps[k];
    }
    for (int i = 0; i < kBlock; ++i) {
      const int32_t scaled = (sum[i] + (1 << 14)) >> 15;
      out[n + i] = static_cast<Kvr16s>(scaled < -32768 ? -32768 : scaled > 32767 ? 32767 : scaled);
    }
  }
}

// The polyphase loop: out[n] meets the taps of its phase, which lie one behind the other.
__attribute__((noinline, optimize("fast-math"))) void polyphase(const float* __restrict newest,
                                                                const float* __restrict bank, int tapsOfPhase,
                                                                int up, int down, float* __restrict out,
                                                                int outputs) {
  int phase = 0;
  for (int n = 0; n < outputs; ++n) {
    const float* taps = bank + phase * tapsOfPhase;
    const float* in = newest - (tapsOfPhase - 1);
    float sum = 0;
    for (int k = 0; k < tapsOfPhase; ++k) sum += in[k] * taps[k];
    out[n] = sum;
    for (phase += down; phase >= up; phase -= up) ++newest;
  }
}

template <class Make>
auto lazily(Make make) {
  using Made = decltype(make());
  return [make, made = std::make_shared<std::unique_ptr<Made>>()]() -> const Made& {
    if (*made == nullptr) {
      ownSetNumThreads(1);
      *made = std::make_unique<Made>(make());
      ownSetNumThreads(0);
    }
    return **made;
  };
}

template <class S>
std::shared_ptr<S> owned(S* state, KvrStatus (*release)(S*)) {
  return {state, [release](S* made) { release(made); }};
}

std::string nameOf(const char* what, int tapsLen, int len) {
  return std::string("fir_types/") + what + "/" + std::to_string(tapsLen) + "x" + std::to_string(len);
}

template <class T, class S>
void addLong(const char* type, KvrStatus (*filter)(const T*, T*, int, S*) noexcept,
             KvrStatus (*initAlloc)(S**, const T*, int, const T*) noexcept,
             KvrStatus (*release)(S*) noexcept) {
  for (int tapsLen : {128, 512, 2048}) {
    for (int len : {16384, 262144}) {
      const Data<T> s(tapsLen, len);
      const std::string name = nameOf((std::string("long_") + type).c_str(), tapsLen, len);
      const auto state = lazily([=] {
        S* made;
        if (initAlloc(&made, s.taps.get(), tapsLen, nullptr) != kvrStatusOk) abort();
        return owned<S>(made, release);
      });
      add(name, "kvrs", [=] { filter(s.src(), s.out.get(), len, state().get()); });
      const auto blocks =
          lazily([=] { return OverlapSave<T>(s.taps.get(), tapsLen, s.in.get(), s.out.get(), len); });
      add(name, "fftw", [=] { blocks().run(s.in.get(), s.out.get(), len); });
    }
  }
}

Register types([] {
  for (int tapsLen : {8, 32, 64}) {
    const Data<Kvr64f> s(tapsLen, 4096);
    const std::string name = nameOf("64f", tapsLen, s.len);
    const auto state = lazily([=] {
      KvrsFIRState_64f* made;
      kvrsFIRInitAlloc_64f(&made, s.taps.get(), tapsLen, nullptr);
      return owned(made, kvrsFIRFree_64f);
    });
    add(name, "kvrs", [=] { kvrsFIR_64f(s.src(), s.out.get(), s.len, state().get()); });
    add(name, "loop_outputs",
        [=] { loopOverOutputs(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
    add(name, "loop_blocks",
        [=] { loopInBlocks<64>(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
    add(name, "eigen", [=] { eigenBlocks(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
  }

  for (int tapsLen : {8, 32, 128}) {
    const Data<Kvr32fc> s(tapsLen, 4096);
    const std::string name = nameOf("32fc", tapsLen, s.len);
    const auto state = lazily([=] {
      KvrsFIRState_32fc* made;
      kvrsFIRInitAlloc_32fc(&made, s.taps.get(), tapsLen, nullptr);
      return owned(made, kvrsFIRFree_32fc);
    });
    add(name, "kvrs", [=] { kvrsFIR_32fc(s.src(), s.out.get(), s.len, state().get()); });
    add(name, "loop_outputs", [=] { complexOutputs(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
    add(name, "loop_blocks", [=] { complexBlocks(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
#ifdef KVRS_BENCH_LIQUID
    const auto filter = lazily([=] {
      return std::shared_ptr<firfilt_cccf_s>(
          firfilt_cccf_create(reinterpret_cast<liquid_float_complex*>(s.taps.get()),
                              static_cast<unsigned>(tapsLen)),
          firfilt_cccf_destroy);
    });
    add(name, "liquid", [=] {
      firfilt_cccf_execute_block(
          filter().get(), reinterpret_cast<liquid_float_complex*>(const_cast<Kvr32fc*>(s.src())),
          static_cast<unsigned>(s.len), reinterpret_cast<liquid_float_complex*>(s.out.get()));
    });
#endif
  }

  addLong("64f", kvrsFIR_64f, kvrsFIRInitAlloc_64f, kvrsFIRFree_64f);
  addLong("32fc", kvrsFIR_32fc, kvrsFIRInitAlloc_32fc, kvrsFIRFree_32fc);
  addLong("64fc", kvrsFIR_64fc, kvrsFIRInitAlloc_64fc, kvrsFIRFree_64fc);

  for (int tapsLen : {8, 32, 64}) {
    const Data<Kvr16s> s(tapsLen, 4096);
    const std::string name = nameOf("16s", tapsLen, s.len);
    const auto state = lazily([=] {
      KvrsFIRState_16s* made;
      kvrsFIRInitAlloc_16s(&made, s.taps.get(), tapsLen, 0, nullptr);
      return owned(made, kvrsFIRFree_16s);
    });
    add(name, "kvrs", [=] { kvrsFIR_16s_Sfs(s.src(), s.out.get(), s.len, state().get(), 15); });
    add(name, "loop_blocks", [=] { shortBlocks(s.in.get(), s.taps.get(), tapsLen, s.out.get(), s.len); });
  }

  for (int tapsLen : {8, 32, 64}) {
    const Data<Kvr16s> s(tapsLen, 4096);
    const Data<Kvr32f> f(tapsLen, 4096);
    const std::string name = nameOf("32f_16s", tapsLen, s.len);
    const auto state = lazily([=] {
      KvrsFIRState32f_16s* made;
      kvrsFIRInitAlloc32f_16s(&made, f.taps.get(), tapsLen, nullptr);
      return owned(made, kvrsFIRFree32f_16s);
    });
    add(name, "kvrs", [=] { kvrsFIR32f_16s_Sfs(s.src(), s.out.get(), s.len, state().get(), 0); });
    const auto between = lazily([=] {
      KvrsFIRState_32f* made;
      kvrsFIRInitAlloc_32f(&made, f.taps.get(), tapsLen, nullptr);
      return owned(made, kvrsFIRFree_32f);
    });
    add(name, "kvrs_converted", [=] {
      kvrsConvert_16s32f(s.src(), f.in.get(), s.len);
      kvrsFIR_32f(f.in.get(), f.out.get(), s.len, between().get());
      kvrsConvert_32f16s_Sfs(f.out.get(), s.out.get(), s.len, kvrRoundNear, 0);
    });
  }

  // Decimation by 4 with 64 taps, interpolation by 4 and resampling by 3/2 with 24 taps a phase, 160/147 with 32.
  struct Case {
    int up, down, tapsOfPhase;
  };
  for (Case c : {Case{1, 4, 64}, {3, 2, 24}, {4, 1, 16}, {160, 147, 32}}) {
    const int iters = 4096 / c.down, tapsLen = c.up * c.tapsOfPhase;
    const Data<Kvr32f> s(tapsLen, (c.up > c.down ? c.up : c.down) * iters);
    const std::string name = "fir_types/up" + std::to_string(c.up) + "_down" + std::to_string(c.down) + "/" +
                             std::to_string(tapsLen) + "x4096";
    const auto state = lazily([=] {
      KvrsFIRMRState_32f* made;
      kvrsFIRMRInitAlloc_32f(&made, s.taps.get(), tapsLen, c.up, 0, c.down, 0, nullptr);
      return owned(made, kvrsFIRFree_32f);
    });
    add(name, "kvrs", [=] { kvrsFIR_32f(s.src(), s.out.get(), iters, state().get()); });
    add(name, "polyphase", [=] {
      polyphase(s.in.get() + c.tapsOfPhase - 1, s.taps.get(), c.tapsOfPhase, c.up, c.down, s.out.get(),
                iters * c.up);
    });
#ifdef KVRS_BENCH_LIQUID
    if (c.up > 1 && c.down > 1) {
      const auto resampler = lazily([=] {
        return std::shared_ptr<rresamp_rrrf_s>(
            rresamp_rrrf_create(static_cast<unsigned>(c.up), static_cast<unsigned>(c.down),
                                static_cast<unsigned>(c.tapsOfPhase / 2), s.taps.get()),
            rresamp_rrrf_destroy);
      });
      add(name, "liquid", [=] {
        rresamp_rrrf_execute_block(resampler().get(), const_cast<float*>(s.src()),
                                   static_cast<unsigned>(iters), s.out.get());
      });
    }
    if (c.up == 1) {
      const auto filter = lazily([=] {
        return std::shared_ptr<firdecim_rrrf_s>(
            firdecim_rrrf_create(static_cast<unsigned>(c.down), s.taps.get(), static_cast<unsigned>(tapsLen)),
            firdecim_rrrf_destroy);
      });
      add(name, "liquid", [=] {
        firdecim_rrrf_execute_block(filter().get(), const_cast<float*>(s.src()), static_cast<unsigned>(iters),
                                    s.out.get());
      });
    }
#endif
  }
});

}  // namespace
}  // namespace kvrs::bench
