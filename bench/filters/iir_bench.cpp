// Recursive filters beside plain loops: sample by sample through all sections, section by section over the block, both also
// with the compiler's freest arithmetic, and liquid-dsp.
// SPDX-License-Identifier: MIT
#include "kvrs/iir.h"

#include <complex>

#include "bench/support/bench.h"
#include "kvrs/convert.h"
#include "kvrs/iir_gen.h"
#ifdef KVRS_BENCH_LIQUID
#include <liquid/liquid.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLen = 4096;

// Stable sections, as b0, b1, b2, a0, a1, a2.
template <class T>
std::vector<T> sectionTaps(int sections) {
  std::vector<T> taps;
  for (int i = 0; i < sections; ++i) {
    const float r = 0.5f + 0.05f * static_cast<float>(i), c = 0.9f - 0.2f * static_cast<float>(i);
    for (float tap : {0.2f, 0.3f, 0.1f, 1.0f, -2 * r * c, r * r}) taps.push_back(T(tap));
  }
  return taps;
}

template <class T>
struct Section {
  T b0, b1, b2, a1, a2, d0, d1;
};
template <class T>
std::vector<Section<T>> plainSections(int sections) {
  const auto taps = sectionTaps<T>(sections);
  std::vector<Section<T>> all;
  for (int i = 0; i < sections; ++i) {
    const T* t = taps.data() + 6 * i;
    all.push_back({t[0], t[1], t[2], t[4], t[5], T(0), T(0)});
  }
  return all;
}

#define KVRS_FREE __attribute__((noinline, optimize("O3,fast-math")))

template <class T>
[[gnu::always_inline]] inline void samplesBody(Section<T>* sections, int count, const T* src, T* dst,
                                               int len) {
  for (int n = 0; n < len; ++n) {
    T x = src[n];
    for (int i = 0; i < count; ++i) {
      Section<T>& s = sections[i];
      const T y = s.b0 * x + s.d0;
      s.d0 = s.b1 * x - s.a1 * y + s.d1;
      s.d1 = s.b2 * x - s.a2 * y;
      x = y;
    }
    dst[n] = x;
  }
}
template <class T>
[[gnu::always_inline]] inline void sectionsBody(Section<T>* sections, int count, const T* src, T* dst,
                                                int len) {
  for (int i = 0; i < count; ++i) {
    const Section<T> s = sections[i];
    T d0 = s.d0, d1 = s.d1;
    for (int n = 0; n < len; ++n) {
      const T x = src[n], y = s.b0 * x + d0;
      d0 = s.b1 * x - s.a1 * y + d1;
      d1 = s.b2 * x - s.a2 * y;
      dst[n] = y;
    }
    sections[i].d0 = d0;
    sections[i].d1 = d1;
    src = dst;
  }
}
template <class T>
__attribute__((noinline)) void bySamples(Section<T>* s, int count, const T* src, T* dst, int len) {
  samplesBody(s, count, src, dst, len);
}
template <class T>
__attribute__((noinline)) void bySections(Section<T>* s, int count, const T* src, T* dst, int len) {
  sectionsBody(s, count, src, dst, len);
}

// What the compiler makes of each with all freedom; written out, since templates lose the attribute.
#define KVRS_FREE_LOOPS(T)                                                                        \
  KVRS_FREE void freeBySamples(Section<T>* sections, int count, const T* src, T* dst, int len) {  \
    for (int n = 0; n < len; ++n) {                                                               \
      T x = src[n];                                                                               \
      for (int i = 0; i < count; ++i) {                                                           \
        Section<T>& s = sections[i];                                                              \
        const T y = s.b0 * x + s.d0;                                                              \
        s.d0 = s.b1 * x - s.a1 * y + s.d1;                                                        \
        s.d1 = s.b2 * x - s.a2 * y;                                                               \
        x = y;                                                                                    \
      }                                                                                           \
      dst[n] = x;                                                                                 \
    }                                                                                             \
  }                                                                                               \
  KVRS_FREE void freeBySections(Section<T>* sections, int count, const T* src, T* dst, int len) { \
    for (int i = 0; i < count; ++i) {                                                             \
      const Section<T> s = sections[i];                                                           \
      T d0 = s.d0, d1 = s.d1;                                                                     \
      for (int n = 0; n < len; ++n) {                                                             \
        const T x = src[n], y = s.b0 * x + d0;                                                    \
        d0 = s.b1 * x - s.a1 * y + d1;                                                            \
        d1 = s.b2 * x - s.a2 * y;                                                                 \
        dst[n] = y;                                                                               \
      }                                                                                           \
      sections[i].d0 = d0;                                                                        \
      sections[i].d1 = d1;                                                                        \
      src = dst;                                                                                  \
    }                                                                                             \
  }
KVRS_FREE_LOOPS(float)
KVRS_FREE_LOOPS(double)
#undef KVRS_FREE_LOOPS

// A direct form of any order, transposed: the algorithm of SciPy's lfilter.
template <class T>
__attribute__((noinline)) void directLoop(const T* b, const T* a, T* d, int order, const T* src, T* dst,
                                          int len) {
  for (int n = 0; n < len; ++n) {
    const T x = src[n], y = b[0] * x + d[0];
    for (int k = 1; k < order; ++k) d[k - 1] = b[k] * x - a[k] * y + d[k];
    d[order - 1] = b[order] * x - a[order] * y;
    dst[n] = y;
  }
}
// The same with the last inputs and outputs at hand, which lie before the arrays.
template <class T>
__attribute__((noinline)) void historyLoop(const T* b, const T* a, int order, const T* src, T* dst, int len) {
  for (int n = 0; n < len; ++n) {
    T sum = 0;
    for (int k = 0; k <= order; ++k) sum += b[k] * src[n - k];
    for (int k = order; k > 0; --k) sum -= a[k] * dst[n - k];
    dst[n] = sum;
  }
}

template <class State, class... Arguments>
std::shared_ptr<State> made(KvrStatus (*init)(State**, Arguments...), KvrStatus (*free)(State*),
                            std::type_identity_t<Arguments>... arguments) {
  State* state = nullptr;
  if (init(&state, arguments...) != kvrStatusOk) abort();
  return {state, [free](State* p) { free(p); }};
}

std::string nameOf(const char* what, int n) {
  return std::string("iir/") + what + "/" + std::to_string(n);
}

template <class T>
void addLoops(
    const std::string& name, int sections, const std::shared_ptr<T>& src, const std::shared_ptr<T>& dst,
    std::initializer_list<std::pair<const char*, void (*)(Section<T>*, int, const T*, T*, int)>> loops) {
  for (const auto& [who, loop] : loops) {
    const auto state = std::make_shared<std::vector<Section<T>>>(plainSections<T>(sections));
    add(name, who, [=] { loop(state->data(), sections, src.get(), dst.get(), kLen); });
  }
}

Register iir([] {
  for (int sections : {1, 2, 4, 8}) {
    {
      const auto src = array<float>(kLen), dst = array<float>(kLen);
      const auto taps = sectionTaps<float>(sections);
      const auto name = nameOf("biquads_32f", sections);
      const auto state = made(kvrsIIRInitAlloc_BiQuad_32f, kvrsIIRFree_32f, taps.data(), sections, nullptr);
      add(name, "kvrs", [=] { kvrsIIR_32f(src.get(), dst.get(), kLen, state.get()); });
      addLoops<float>(name, sections, src, dst,
                      {{"samples", bySamples<float>},
                       {"sections", bySections<float>},
                       {"free_samples", freeBySamples},
                       {"free_sections", freeBySections}});
#ifdef KVRS_BENCH_LIQUID
      std::vector<float> b, a;
      for (int i = 0; i < 6 * sections; ++i) (i % 6 < 3 ? b : a).push_back(taps[static_cast<size_t>(i)]);
      const std::shared_ptr<iirfilt_rrrf_s> filter(
          iirfilt_rrrf_create_sos(b.data(), a.data(), static_cast<unsigned>(sections)), iirfilt_rrrf_destroy);
      add(name, "liquid", [=] { iirfilt_rrrf_execute_block(filter.get(), src.get(), kLen, dst.get()); });
#endif
    }
    {
      const auto src = array<double>(kLen), dst = array<double>(kLen);
      const auto name = nameOf("biquads_64f", sections);
      const auto state = made(kvrsIIRInitAlloc_BiQuad_64f, kvrsIIRFree_64f,
                              sectionTaps<double>(sections).data(), sections, nullptr);
      add(name, "kvrs", [=] { kvrsIIR_64f(src.get(), dst.get(), kLen, state.get()); });
      addLoops<double>(name, sections, src, dst,
                       {{"samples", bySamples<double>},
                        {"sections", bySections<double>},
                        {"free_samples", freeBySamples},
                        {"free_sections", freeBySections}});
    }
  }

  {
    // Loops over std::complex without the checks for NaN that its product has.
    using C = _Complex float;
    const auto src = array<float>(2 * kLen), dst = array<float>(2 * kLen);
    const auto reals = sectionTaps<float>(2);
    std::vector<Kvr32fc> taps;
    for (float tap : reals) taps.push_back({tap, 0});
    const auto* x = reinterpret_cast<const Kvr32fc*>(src.get());
    auto* y = reinterpret_cast<Kvr32fc*>(dst.get());
    const auto state = made(kvrsIIRInitAlloc_BiQuad_32fc, kvrsIIRFree_32fc, taps.data(), 2, nullptr);
    const auto name = nameOf("biquads_32fc", 2);
    add(name, "kvrs", [=, keepSrc = src, keepDst = dst] { kvrsIIR_32fc(x, y, kLen, state.get()); });
    const auto plain = std::make_shared<std::vector<Section<C>>>(plainSections<C>(2));
    const auto loop = [=](auto run) {
      return [=, keepSrc = src, keepDst = dst] {
        run(plain->data(), 2, reinterpret_cast<const C*>(x), reinterpret_cast<C*>(y), kLen);
      };
    };
    add(name, "samples",
        loop([](Section<C> * s, int n, const C* from, C* to, int len)
                 __attribute__((optimize("O3,cx-limited-range"))) {
                   for (int k = 0; k < len; ++k) {
                     C v = from[k];
                     for (int i = 0; i < n; ++i) {
                       const C out = s[i].b0 * v + s[i].d0;
                       s[i].d0 = s[i].b1 * v - s[i].a1 * out + s[i].d1;
                       s[i].d1 = s[i].b2 * v - s[i].a2 * out;
                       v = out;
                     }
                     to[k] = v;
                   }
                 }));
  }

  {
    // Two channels, together and one after the other.
    const int sections = 4;
    const auto taps = sectionTaps<float>(sections);
    std::shared_ptr<float> src[2], dst[2];
    std::shared_ptr<KvrsIIRState_32f> states[2];
    for (int i = 0; i < 2; ++i) {
      src[i] = array<float>(kLen);
      dst[i] = array<float>(kLen);
      states[i] = made(kvrsIIRInitAlloc_BiQuad_32f, kvrsIIRFree_32f, taps.data(), sections, nullptr);
    }
    const auto name = nameOf("channels_32f", 2);
    add(name, "kvrs", [=] {
      const float* from[2] = {src[0].get(), src[1].get()};
      float* to[2] = {dst[0].get(), dst[1].get()};
      KvrsIIRState_32f* both[2] = {states[0].get(), states[1].get()};
      kvrsIIR_32f_P(from, to, kLen, 2, both);
    });
    add(name, "kvrs_one_by_one", [=] {
      for (int i = 0; i < 2; ++i) kvrsIIR_32f(src[i].get(), dst[i].get(), kLen, states[i].get());
    });
    const auto plain = std::make_shared<std::vector<Section<float>>>(plainSections<float>(2 * sections));
    add(name, "samples", [=] {
      for (int i = 0; i < 2; ++i)
        bySamples(plain->data() + i * sections, sections, src[i].get(), dst[i].get(), kLen);
    });
  }

  for (int order : {2, 4, 8}) {
    std::vector<double> taps(2 * static_cast<size_t>(order) + 2);
    kvrsIIRGenLowpass_64f(0.2, 0, order, taps.data(), kvrButterworth);
    const auto run = [&]<class T>(const char* what, const std::vector<T>& t, auto filter, auto state) {
      const auto name = nameOf(what, order);
      const auto src = array<T>(kLen + 64), dst = array<T>(kLen + 64);
      T *x = src.get() + 64, *y = dst.get() + 64;
      add(name, "kvrs", [=, keepSrc = src, keepDst = dst] { filter(x, y, kLen, state.get()); });
      const auto d = std::make_shared<std::vector<T>>(64);
      add(name, "lfilter", [=, keepSrc = src, keepDst = dst] {
        directLoop(t.data(), t.data() + order + 1, d->data(), order, x, y, kLen);
      });
      add(name, "loop_history", [=, keepSrc = src, keepDst = dst] {
        historyLoop(t.data(), t.data() + order + 1, order, x, y, kLen);
      });
    };
    const std::vector<float> single(taps.begin(), taps.end());
    run("direct_32f", single, kvrsIIR_32f,
        made(kvrsIIRInitAlloc_32f, kvrsIIRFree_32f, single.data(), order, nullptr));
    run("direct_64f", taps, kvrsIIR_64f,
        made(kvrsIIRInitAlloc_64f, kvrsIIRFree_64f, taps.data(), order, nullptr));
  }

  {
    // 16-bit samples, beside conversion to floats and back.
    const auto src = array<int16_t>(kLen), dst = array<int16_t>(kLen);
    const auto floats = array<float>(kLen);
    const auto taps = sectionTaps<float>(2);
    const auto state = made(kvrsIIRInitAlloc32f_BiQuad_16s, kvrsIIRFree32f_16s, taps.data(), 2, nullptr);
    const auto name = nameOf("biquads_32f_16s", 2);
    add(name, "kvrs", [=] { kvrsIIR32f_16s_Sfs(src.get(), dst.get(), kLen, state.get(), 1); });
    const auto plain = std::make_shared<std::vector<Section<float>>>(plainSections<float>(2));
    using Loop = void (*)(Section<float>*, int, const float*, float*, int);
    const std::pair<const char*, Loop> loops[] = {{"samples", bySamples<float>},
                                                  {"sections", bySections<float>}};
    for (const auto& [who, loop] : loops) {
      add(name, who, [=, run = loop] {
        kvrsConvert_16s32f(src.get(), floats.get(), kLen);
        run(plain->data(), 2, floats.get(), floats.get(), kLen);
        kvrsConvert_32f16s_Sfs(floats.get(), dst.get(), kLen, kvrRoundNear, 1);
      });
    }
  }

  for (int sections : {1, 4}) {
    constexpr int kSingles = 256;
    const auto src = array<float>(kSingles), dst = array<float>(kSingles);
    const auto taps = sectionTaps<float>(sections);
    const auto state = made(kvrsIIRInitAlloc_BiQuad_32f, kvrsIIRFree_32f, taps.data(), sections, nullptr);
    const auto name = nameOf("one_32f", sections);
    add(name, "kvrs", [=] {
      for (int n = 0; n < kSingles; ++n) kvrsIIROne_32f(src.get()[n], dst.get() + n, state.get());
    });
    const auto plain = std::make_shared<std::vector<Section<float>>>(plainSections<float>(sections));
    add(name, "inlined", [=] {
      for (int n = 0; n < kSingles; ++n) {
        samplesBody(plain->data(), sections, src.get() + n, dst.get() + n, 1);
        writeMemory();
      }
    });
  }
});

}  // namespace
}  // namespace kvrs::bench
