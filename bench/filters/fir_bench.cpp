// FIR filters on one thread, beside plain loops, Eigen, liquid-dsp and overlap-save on FFTW. The peers get their
// history in one piece with the new samples and keep none themselves, which spares them some work.
// SPDX-License-Identifier: MIT
#include "kvrs/fir.h"

#include <Eigen/Core>
#include <algorithm>

#include "bench/filters/overlap_save.h"
#include "kvrscore.h"
#ifdef KVRS_BENCH_LIQUID
#include <complex>

#include <liquid/liquid.h>
#endif

namespace kvrs::bench {
namespace {

// All loops: out[n] = sum over k of in[n + k] * taps[k], taps reversed.
struct Signal {
  Signal(int tapsCount, int length)
      : tapsLen(tapsCount),
        len(length),
        taps(array<float>(static_cast<size_t>(tapsCount))),
        in(array<float>(static_cast<size_t>(tapsCount + length))),
        out(array<float>(static_cast<size_t>(length))) {}

  const float* src() const { return in.get() + tapsLen - 1; }

  int tapsLen, len;
  std::shared_ptr<float> taps, in, out;
};

__attribute__((noinline)) void loopOverOutputs(const float* __restrict in, const float* __restrict taps,
                                               int tapsLen, float* __restrict out, int len) {
  for (int n = 0; n < len; ++n) {
    float sum = 0;
    for (int k = 0; k < tapsLen; ++k) sum += in[n + k] * taps[k];
    out[n] = sum;
  }
}

__attribute__((noinline)) void loopOverTaps(const float* __restrict in, const float* __restrict taps,
                                            int tapsLen, float* __restrict out, int len) {
  for (int n = 0; n < len; ++n) out[n] = 0;
  for (int k = 0; k < tapsLen; ++k) {
    for (int n = 0; n < len; ++n) out[n] += in[n + k] * taps[k];
  }
}

template <int kBlock>
__attribute__((noinline)) void loopInBlocks(const float* __restrict in, const float* __restrict taps,
                                            int tapsLen, float* __restrict out, int len) {
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    float sum[kBlock] = {};
    for (int k = 0; k < tapsLen; ++k) {
      for (int i = 0; i < kBlock; ++i) sum[i] += in[n + k + i] * taps[k];
    }
    for (int i = 0; i < kBlock; ++i) out[n + i] = sum[i];
  }
  loopOverOutputs(in + n, taps, tapsLen, out + n, len - n);
}

__attribute__((noinline)) void eigenDots(const float* in, const float* taps, int tapsLen, float* out,
                                         int len) {
  const Eigen::Map<const Eigen::VectorXf> h(taps, tapsLen), x(in, len + tapsLen - 1);
  for (int n = 0; n < len; ++n) out[n] = x.segment(n, tapsLen).dot(h);
}

__attribute__((noinline)) void eigenBlocks(const float* in, const float* taps, int tapsLen, float* out,
                                           int len) {
  constexpr int kBlock = 64;
  int n = 0;
  for (; n + kBlock <= len; n += kBlock) {
    Eigen::Array<float, kBlock, 1> sum = Eigen::Array<float, kBlock, 1>::Zero();
    for (int k = 0; k < tapsLen; ++k) {
      sum += Eigen::Map<const Eigen::Array<float, kBlock, 1>>(in + n + k) * taps[k];
    }
    Eigen::Map<Eigen::Array<float, kBlock, 1>>(out + n) = sum;
  }
  eigenDots(in + n, taps, tapsLen, out + n, len - n);
}

// One sample after the other, written out: the delay line is held twice, so that the window is one piece, and four sums run
// side by side.
template <int kTaps>
struct Unrolled {
  float line[2 * kTaps] = {}, taps[kTaps];
  int pos = 0;

  [[gnu::always_inline]] float operator()(float x) {
    line[pos] = line[pos + kTaps] = x;
    pos = pos + 1 < kTaps ? pos + 1 : 0;
    const float* window = line + pos;
    float sum[4] = {};
#pragma GCC unroll 16
    for (int k = 0; k < kTaps; ++k) sum[k % 4] += window[k] * taps[k];
    return (sum[0] + sum[1]) + (sum[2] + sum[3]);
  }
};

std::shared_ptr<KvrsFIRState_32f> stateFor(const Signal& signal, int threads) {
  ownSetNumThreads(threads);
  KvrsFIRState_32f* state = nullptr;
  if (kvrsFIRInitAlloc_32f(&state, signal.taps.get(), signal.tapsLen, nullptr) != kvrStatusOk) abort();
  ownSetNumThreads(0);
  return {state, [](KvrsFIRState_32f* made) { kvrsFIRFree_32f(made); }};
}

// Contestants make what they need in their first turn: there are many, and a filter may choose a few.
template <class Make>
auto lazily(Make make) {
  using Made = decltype(make());
  return [make, made = std::make_shared<std::unique_ptr<Made>>()]() -> const Made& {
    if (*made == nullptr) *made = std::make_unique<Made>(make());
    return **made;
  };
}

std::string nameOf(const char* what, int tapsLen, int len) {
  return std::string("fir/") + what + "/" + std::to_string(tapsLen) + "x" + std::to_string(len);
}

void addOurs(const std::string& name, const Signal& signal) {
  const auto state = lazily([=] { return stateFor(signal, 1); });
  add(name, "kvrs", [=] { kvrsFIR_32f(signal.src(), signal.out.get(), signal.len, state().get()); });
}

Register fir([] {
  for (int tapsLen : {8, 32, 64}) {
    for (int len : {512, 4096}) {
      const Signal s(tapsLen, len);
      const std::string name = nameOf("short", tapsLen, len);
      addOurs(name, s);
      const auto loop = [=](const char* who, auto run) {
        add(name, who, [=] { run(s.in.get(), s.taps.get(), s.tapsLen, s.out.get(), s.len); });
      };
      loop("loop_outputs", loopOverOutputs);
      loop("loop_taps", loopOverTaps);
      loop("loop_blocks", loopInBlocks<64>);
      loop("loop_blocks2", loopInBlocks<128>);
      loop("eigen_dots", eigenDots);
      loop("eigen_blocks", eigenBlocks);
#ifdef KVRS_BENCH_LIQUID
      const auto filter = lazily([=] {
        return std::shared_ptr<firfilt_rrrf_s>(
            firfilt_rrrf_create(s.taps.get(), static_cast<unsigned>(s.tapsLen)), firfilt_rrrf_destroy);
      });
      add(name, "liquid", [=] {
        firfilt_rrrf_execute_block(filter().get(), const_cast<float*>(s.src()), static_cast<unsigned>(s.len),
                                   s.out.get());
      });
#endif
    }
  }

  for (int tapsLen : {128, 256, 512, 1024}) {
    for (int len : {4096, 1000000}) {
      const Signal s(tapsLen, len);
      const std::string name = nameOf("long", tapsLen, len);
      addOurs(name, s);
      const auto blocks =
          lazily([=] { return OverlapSave<float>(s.taps.get(), tapsLen, s.in.get(), s.out.get(), len); });
      add(name, "fftw", [=] { blocks().run(s.in.get(), s.out.get(), len); });
    }
  }

  for (int tapsLen : {8, 64, 512}) {
    const Signal s(tapsLen, 100000);
    const std::string name = nameOf("inplace", tapsLen, s.len);
    const auto state = lazily([=] { return stateFor(s, 1); });
    // The peer is the same work from one array to another.
    add(name, "kvrs", [=] { kvrsFIR_32f_I(s.out.get(), s.len, state().get()); });
    add(name, "kvrs_not_in_place", [=] { kvrsFIR_32f(s.src(), s.out.get(), s.len, state().get()); });
  }

  for (int tapsLen : {64, 1024}) {
    const Signal s(tapsLen, 1000000);
    const std::string name = nameOf("threads", tapsLen, s.len);
    const auto one = lazily([=] { return stateFor(s, 1); });
    const auto all = lazily([=] { return stateFor(s, 0); });
    add(name, "kvrs", [=] { kvrsFIR_32f(s.src(), s.out.get(), s.len, all().get()); });
    add(name, "kvrs_one_thread", [=] { kvrsFIR_32f(s.src(), s.out.get(), s.len, one().get()); });
  }

  for (int tapsLen : {8, 16, 32, 64, 256}) {
    const Signal s(tapsLen, 256);
    const std::string name = nameOf("one", tapsLen, s.len);
    const auto state = lazily([=] { return stateFor(s, 1); });
    add(name, "kvrs", [=] {
      KvrsFIRState_32f* one = state().get();
      for (int n = 0; n < s.len; ++n) kvrsFIROne_32f(s.src()[n], s.out.get() + n, one);
    });
#ifdef KVRS_BENCH_LIQUID
    const auto filter = lazily([=] {
      return std::shared_ptr<firfilt_rrrf_s>(
          firfilt_rrrf_create(s.taps.get(), static_cast<unsigned>(s.tapsLen)), firfilt_rrrf_destroy);
    });
    add(name, "liquid", [=] {
      firfilt_rrrf_s* one = filter().get();
      for (int n = 0; n < s.len; ++n) {
        firfilt_rrrf_push(one, s.src()[n]);
        firfilt_rrrf_execute(one, s.out.get() + n);
      }
    });
#endif
    add(name, "loop", [=] {
      for (int n = 0; n < s.len; ++n)
        loopOverOutputs(s.in.get() + n, s.taps.get(), s.tapsLen, s.out.get() + n, 1);
    });
    const auto unrolled = [&]<int kTaps>(std::integral_constant<int, kTaps>) {
      const auto step = std::make_shared<Unrolled<kTaps>>();
      std::copy_n(s.taps.get(), kTaps, step->taps);
      add(name, "unrolled", [=] {
        for (int n = 0; n < s.len; ++n) {
          s.out.get()[n] = (*step)(s.src()[n]);
          writeMemory();
        }
      });
    };
    if (tapsLen == 8) unrolled(std::integral_constant<int, 8>());
    if (tapsLen == 16) unrolled(std::integral_constant<int, 16>());
  }
});

}  // namespace
}  // namespace kvrs::bench
