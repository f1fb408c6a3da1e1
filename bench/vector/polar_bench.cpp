// SPDX-License-Identifier: MIT
#include "kvrs/polar.h"

#include <algorithm>
#include <cmath>

#include "bench/support/bench.h"
#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif
#ifdef KVRS_BENCH_SLEEF
#include <immintrin.h>
#include <sleef.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

// The compiler's loops.
template <class C, class T>
[[gnu::noinline]] void loopMagnitude(const C* a, T* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const T re = a[i].re, im = a[i].im;
    dst[i] = std::sqrt(re * re + im * im);
  }
}
template <class S, class T>
[[gnu::noinline]] void loopMagnitude(const S* re, const S* im, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::sqrt(static_cast<T>(re[i] * re[i] + im[i] * im[i]));
}
[[gnu::noinline]] void loopMagnitude(const Kvr16sc* a, Kvr16s* dst, int len, float scale) {
  for (int i = 0; i < len; ++i) {
    const int re = a[i].re, im = a[i].im;
    dst[i] = static_cast<Kvr16s>(
        lrintf(std::min(std::sqrt(static_cast<float>(re * re + im * im)) * scale, 32767.0f)));
  }
}
[[gnu::noinline]] void loopMagnitude(const Kvr16s* a, const Kvr16s* b, Kvr16s* dst, int len, float scale) {
  for (int i = 0; i < len; ++i) {
    const int re = a[i], im = b[i];
    dst[i] = static_cast<Kvr16s>(
        lrintf(std::min(std::sqrt(static_cast<float>(re * re + im * im)) * scale, 32767.0f)));
  }
}
[[gnu::noinline]] void loopMagnitude(const Kvr32sc* a, Kvr32s* dst, int len, double scale) {
  for (int i = 0; i < len; ++i) {
    const double re = a[i].re, im = a[i].im;
    dst[i] = static_cast<Kvr32s>(lrint(std::min(std::sqrt(re * re + im * im) * scale, 2147483647.0)));
  }
}
[[gnu::noinline]] void loopMagSquared(const Kvr32sc* a, Kvr32s* dst, int len, double scale) {
  for (int i = 0; i < len; ++i) {
    const double re = a[i].re, im = a[i].im;
    dst[i] = static_cast<Kvr32s>(lrint(std::min((re * re + im * im) * scale, 2147483647.0)));
  }
}
template <class C, class T>
[[gnu::noinline]] void loopPower(const C* a, T* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const T re = a[i].re, im = a[i].im;
    dst[i] = re * re + im * im;
  }
}
[[gnu::noinline]] void loopPower(const Kvr16sc* a, Kvr16s* dst, int len, int shift) {
  for (int i = 0; i < len; ++i) {
    const int re = a[i].re, im = a[i].im;
    const unsigned s = static_cast<unsigned>(re * re + im * im);
    dst[i] = static_cast<Kvr16s>(std::min((s + (1u << (shift - 1)) - 1 + (s >> shift & 1)) >> shift, 32767u));
  }
}
template <class T>
[[gnu::noinline]] void loopPhase(const T* re, const T* im, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::atan2(im[i], re[i]);
}
template <class C, class T>
[[gnu::noinline]] void loopPhase(const C* a, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::atan2(static_cast<T>(a[i].im), static_cast<T>(a[i].re));
}
template <class C, class T>
[[gnu::noinline]] void loopScaledPhase(const C* a, T* dst, int len, double scale) {
  for (int i = 0; i < len; ++i) {
    dst[i] = static_cast<T>(std::round(std::atan2(static_cast<double>(a[i].im), a[i].re) * scale));
  }
}
template <class C, class T>
[[gnu::noinline]] void loopCartToPolar(const C* a, T* magnitude, T* phase, int len) {
  for (int i = 0; i < len; ++i) {
    const T re = a[i].re, im = a[i].im;
    magnitude[i] = std::sqrt(re * re + im * im);
    phase[i] = std::atan2(im, re);
  }
}
template <class T, class C>
[[gnu::noinline]] void loopPolarToCart(const T* magnitude, const T* phase, C* dst, int len) {
  for (int i = 0; i < len; ++i)
    dst[i] = {magnitude[i] * std::cos(phase[i]), magnitude[i] * std::sin(phase[i])};
}
template <class T>
[[gnu::noinline]] void loopPolarToCart(const T* magnitude, const T* phase, T* re, T* im, int len) {
  for (int i = 0; i < len; ++i) {
    re[i] = magnitude[i] * std::cos(phase[i]);
    im[i] = magnitude[i] * std::sin(phase[i]);
  }
}
[[gnu::noinline]] void loopPolarToCart(const Kvr16s* magnitude, const Kvr16s* phase, Kvr16sc* dst, int len,
                                       double phaseScale) {
  for (int i = 0; i < len; ++i) {
    const double x = phase[i] * phaseScale;
    dst[i] = {static_cast<Kvr16s>(std::round(magnitude[i] * std::cos(x))),
              static_cast<Kvr16s>(std::round(magnitude[i] * std::sin(x)))};
  }
}

#ifdef KVRS_BENCH_SLEEF
// SLEEF's functions for the module's vectors, in plain loops. Lengths are multiples of the vectors.
#if defined __AVX512F__
[[gnu::noinline]] void sleefPhase(const Kvr32f* re, const Kvr32f* im, Kvr32f* dst, int len) {
  for (int i = 0; i < len; i += 16)
    _mm512_storeu_ps(dst + i, Sleef_atan2f16_u10avx512f(_mm512_loadu_ps(im + i), _mm512_loadu_ps(re + i)));
}
[[gnu::noinline]] void sleefPhase(const Kvr64f* re, const Kvr64f* im, Kvr64f* dst, int len) {
  for (int i = 0; i < len; i += 8)
    _mm512_storeu_pd(dst + i, Sleef_atan2d8_u10avx512f(_mm512_loadu_pd(im + i), _mm512_loadu_pd(re + i)));
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr32f* magnitude, const Kvr32f* phase, Kvr32f* re, Kvr32f* im,
                                        int len) {
  for (int i = 0; i < len; i += 16) {
    const auto of = Sleef_sincosf16_u10avx512f(_mm512_loadu_ps(phase + i));
    const auto m = _mm512_loadu_ps(magnitude + i);
    _mm512_storeu_ps(re + i, _mm512_mul_ps(m, of.y));
    _mm512_storeu_ps(im + i, _mm512_mul_ps(m, of.x));
  }
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr64f* magnitude, const Kvr64f* phase, Kvr64f* re, Kvr64f* im,
                                        int len) {
  for (int i = 0; i < len; i += 8) {
    const auto of = Sleef_sincosd8_u10avx512f(_mm512_loadu_pd(phase + i));
    const auto m = _mm512_loadu_pd(magnitude + i);
    _mm512_storeu_pd(re + i, _mm512_mul_pd(m, of.y));
    _mm512_storeu_pd(im + i, _mm512_mul_pd(m, of.x));
  }
}
#elif defined __AVX2__
[[gnu::noinline]] void sleefPhase(const Kvr32f* re, const Kvr32f* im, Kvr32f* dst, int len) {
  for (int i = 0; i < len; i += 8)
    _mm256_storeu_ps(dst + i, Sleef_atan2f8_u10avx2(_mm256_loadu_ps(im + i), _mm256_loadu_ps(re + i)));
}
[[gnu::noinline]] void sleefPhase(const Kvr64f* re, const Kvr64f* im, Kvr64f* dst, int len) {
  for (int i = 0; i < len; i += 4)
    _mm256_storeu_pd(dst + i, Sleef_atan2d4_u10avx2(_mm256_loadu_pd(im + i), _mm256_loadu_pd(re + i)));
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr32f* magnitude, const Kvr32f* phase, Kvr32f* re, Kvr32f* im,
                                        int len) {
  for (int i = 0; i < len; i += 8) {
    const auto of = Sleef_sincosf8_u10avx2(_mm256_loadu_ps(phase + i));
    const auto m = _mm256_loadu_ps(magnitude + i);
    _mm256_storeu_ps(re + i, _mm256_mul_ps(m, of.y));
    _mm256_storeu_ps(im + i, _mm256_mul_ps(m, of.x));
  }
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr64f* magnitude, const Kvr64f* phase, Kvr64f* re, Kvr64f* im,
                                        int len) {
  for (int i = 0; i < len; i += 4) {
    const auto of = Sleef_sincosd4_u10avx2(_mm256_loadu_pd(phase + i));
    const auto m = _mm256_loadu_pd(magnitude + i);
    _mm256_storeu_pd(re + i, _mm256_mul_pd(m, of.y));
    _mm256_storeu_pd(im + i, _mm256_mul_pd(m, of.x));
  }
}
#else
[[gnu::noinline]] void sleefPhase(const Kvr32f* re, const Kvr32f* im, Kvr32f* dst, int len) {
  for (int i = 0; i < len; i += 4)
    _mm_storeu_ps(dst + i, Sleef_atan2f4_u10sse4(_mm_loadu_ps(im + i), _mm_loadu_ps(re + i)));
}
[[gnu::noinline]] void sleefPhase(const Kvr64f* re, const Kvr64f* im, Kvr64f* dst, int len) {
  for (int i = 0; i < len; i += 2)
    _mm_storeu_pd(dst + i, Sleef_atan2d2_u10sse4(_mm_loadu_pd(im + i), _mm_loadu_pd(re + i)));
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr32f* magnitude, const Kvr32f* phase, Kvr32f* re, Kvr32f* im,
                                        int len) {
  for (int i = 0; i < len; i += 4) {
    const auto of = Sleef_sincosf4_u10sse4(_mm_loadu_ps(phase + i));
    const auto m = _mm_loadu_ps(magnitude + i);
    _mm_storeu_ps(re + i, _mm_mul_ps(m, of.y));
    _mm_storeu_ps(im + i, _mm_mul_ps(m, of.x));
  }
}
[[gnu::noinline]] void sleefPolarToCart(const Kvr64f* magnitude, const Kvr64f* phase, Kvr64f* re, Kvr64f* im,
                                        int len) {
  for (int i = 0; i < len; i += 2) {
    const auto of = Sleef_sincosd2_u10sse4(_mm_loadu_pd(phase + i));
    const auto m = _mm_loadu_pd(magnitude + i);
    _mm_storeu_pd(re + i, _mm_mul_pd(m, of.y));
    _mm_storeu_pd(im + i, _mm_mul_pd(m, of.x));
  }
}
#endif
#endif

template <class To, class From>
To* as(const std::shared_ptr<From>& p) {
  return reinterpret_cast<To*>(p.get());
}

// One case: the library's function and its loop on the same arrays.
template <class Ours, class Loop>
void pair(const std::string& name, Ours ours, Loop loop) {
  add(name, "kvrs", ours);
  add(name, "loop", loop);
}

Register polar([] {
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const auto s = array<Kvr16s>(2 * len), t = array<Kvr16s>(2 * len);
    const auto w = array<Kvr32s>(2 * len), v = array<Kvr32s>(len);
    const auto a = array<Kvr32f>(2 * len), b = array<Kvr32f>(2 * len), c = array<Kvr32f>(len),
               d = array<Kvr32f>(len);
    const auto da = array<Kvr64f>(2 * len), db = array<Kvr64f>(2 * len), dc = array<Kvr64f>(len),
               dd = array<Kvr64f>(len);
    const auto* s16 = as<Kvr16sc>(s);
    const auto* s32 = as<Kvr32sc>(w);
    const auto* f32 = as<Kvr32fc>(a);
    const auto* f64 = as<Kvr64fc>(da);

    pair(
        "magnitude/Magnitude_16sc_Sfs" + n, [=] { kvrsMagnitude_16sc_Sfs(s16, t.get(), len, 1); },
        [=] { loopMagnitude(s16, t.get(), len, 0.5f); });
    pair(
        "magnitude/Magnitude_16s_Sfs" + n,
        [=] { kvrsMagnitude_16s_Sfs(s.get(), s.get() + len, t.get(), len, 1); },
        [=] { loopMagnitude(s.get(), s.get() + len, t.get(), len, 0.5f); });
    pair(
        "magnitude/Magnitude_32sc_Sfs" + n, [=] { kvrsMagnitude_32sc_Sfs(s32, v.get(), len, 1); },
        [=] { loopMagnitude(s32, v.get(), len, 0.5); });
    pair(
        "magnitude/Magnitude_16sc32f" + n, [=] { kvrsMagnitude_16sc32f(s16, c.get(), len); },
        [=] { loopMagnitude(s16, c.get(), len); });
    pair(
        "magnitude/Magnitude_16s32f" + n, [=] { kvrsMagnitude_16s32f(s.get(), s.get() + len, c.get(), len); },
        [=] { loopMagnitude(s.get(), s.get() + len, c.get(), len); });
    pair(
        "magnitude/Magnitude_32fc" + n, [=] { kvrsMagnitude_32fc(f32, c.get(), len); },
        [=] { loopMagnitude(f32, c.get(), len); });
    pair(
        "magnitude/Magnitude_64fc" + n, [=] { kvrsMagnitude_64fc(f64, dc.get(), len); },
        [=] { loopMagnitude(f64, dc.get(), len); });
    pair(
        "magnitude/Magnitude_32f" + n, [=] { kvrsMagnitude_32f(a.get(), b.get(), c.get(), len); },
        [=] { loopMagnitude(a.get(), b.get(), c.get(), len); });
    pair(
        "magnitude/Magnitude_64f" + n, [=] { kvrsMagnitude_64f(da.get(), db.get(), dc.get(), len); },
        [=] { loopMagnitude(da.get(), db.get(), dc.get(), len); });
    pair(
        "magnitude/MagSquared_32sc32s_Sfs" + n, [=] { kvrsMagSquared_32sc32s_Sfs(s32, v.get(), len, 32); },
        [=] { loopMagSquared(s32, v.get(), len, 0x1p-32); });
    pair(
        "magnitude/MagSquared_32fc64f" + n, [=] { kvrsMagSquared_32fc64f(f32, dc.get(), len); },
        [=] { loopPower(f32, dc.get(), len); });
    pair(
        "magnitude/PowerSpectr_16sc_Sfs" + n, [=] { kvrsPowerSpectr_16sc_Sfs(s16, t.get(), len, 16); },
        [=] { loopPower(s16, t.get(), len, 16); });
    pair(
        "magnitude/PowerSpectr_16sc32f" + n, [=] { kvrsPowerSpectr_16sc32f(s16, c.get(), len); },
        [=] { loopPower(s16, c.get(), len); });
    pair(
        "magnitude/PowerSpectr_32fc" + n, [=] { kvrsPowerSpectr_32fc(f32, c.get(), len); },
        [=] { loopPower(f32, c.get(), len); });
    pair(
        "magnitude/PowerSpectr_64fc" + n, [=] { kvrsPowerSpectr_64fc(f64, dc.get(), len); },
        [=] { loopPower(f64, dc.get(), len); });

    pair(
        "phase/Phase_16sc_Sfs" + n, [=] { kvrsPhase_16sc_Sfs(s16, t.get(), len, -13); },
        [=] { loopScaledPhase(s16, t.get(), len, 0x1p13); });
    pair(
        "phase/Phase_32sc_Sfs" + n, [=] { kvrsPhase_32sc_Sfs(s32, v.get(), len, -20); },
        [=] { loopScaledPhase(s32, v.get(), len, 0x1p20); });
    pair(
        "phase/Phase_16sc32f" + n, [=] { kvrsPhase_16sc32f(s16, c.get(), len); },
        [=] { loopPhase(s16, c.get(), len); });
    pair(
        "phase/Phase_32fc" + n, [=] { kvrsPhase_32fc(f32, c.get(), len); },
        [=] { loopPhase(f32, c.get(), len); });
    pair(
        "phase/Phase_64fc" + n, [=] { kvrsPhase_64fc(f64, dc.get(), len); },
        [=] { loopPhase(f64, dc.get(), len); });
    pair(
        "phase/Phase_32f" + n, [=] { kvrsPhase_32f(a.get(), b.get(), c.get(), len); },
        [=] { loopPhase(a.get(), b.get(), c.get(), len); });
    pair(
        "phase/Phase_64f" + n, [=] { kvrsPhase_64f(da.get(), db.get(), dc.get(), len); },
        [=] { loopPhase(da.get(), db.get(), dc.get(), len); });

    pair(
        "polar/CartToPolar_32fc" + n, [=] { kvrsCartToPolar_32fc(f32, c.get(), d.get(), len); },
        [=] { loopCartToPolar(f32, c.get(), d.get(), len); });
    pair(
        "polar/CartToPolar_64fc" + n, [=] { kvrsCartToPolar_64fc(f64, dc.get(), dd.get(), len); },
        [=] { loopCartToPolar(f64, dc.get(), dd.get(), len); });
    // Phases in [-pi, pi).
    const auto phases = array<Kvr32f>(len);
    const auto dphases = array<Kvr64f>(len);
    for (int i = 0; i < len; ++i) {
      dphases.get()[i] = static_cast<double>(static_cast<uint32_t>(i) * 2654435769u) * 0x1p-32 * 6.28 - 3.14;
      phases.get()[i] = static_cast<Kvr32f>(dphases.get()[i]);
    }
    pair(
        "polar/PolarToCart_32fc" + n,
        [=] { kvrsPolarToCart_32fc(a.get(), phases.get(), as<Kvr32fc>(b), len); },
        [=] { loopPolarToCart(a.get(), phases.get(), as<Kvr32fc>(b), len); });
    pair(
        "polar/PolarToCart_64fc" + n,
        [=] { kvrsPolarToCart_64fc(da.get(), dphases.get(), as<Kvr64fc>(db), len); },
        [=] { loopPolarToCart(da.get(), dphases.get(), as<Kvr64fc>(db), len); });
    pair(
        "polar/PolarToCart_32f" + n,
        [=] { kvrsPolarToCart_32f(a.get(), phases.get(), c.get(), d.get(), len); },
        [=] { loopPolarToCart(a.get(), phases.get(), c.get(), d.get(), len); });
    pair(
        "polar/PolarToCart_64f" + n,
        [=] { kvrsPolarToCart_64f(da.get(), dphases.get(), dc.get(), dd.get(), len); },
        [=] { loopPolarToCart(da.get(), dphases.get(), dc.get(), dd.get(), len); });
    pair(
        "polar/PolarToCart_16sc_Sfs" + n,
        [=] { kvrsPolarToCart_16sc_Sfs(s.get(), s.get() + len, as<Kvr16sc>(t), len, 0, 13); },
        [=] { loopPolarToCart(s.get(), s.get() + len, as<Kvr16sc>(t), len, 0x1p-13); });
#ifdef KVRS_BENCH_VOLK
    add("magnitude/Magnitude_32fc" + n, "volk",
        [=] { volk_32fc_magnitude_32f(c.get(), as<lv_32fc_t>(a), len); });
    add("magnitude/PowerSpectr_32fc" + n, "volk",
        [=] { volk_32fc_magnitude_squared_32f(c.get(), as<lv_32fc_t>(a), len); });
    add("phase/Phase_32fc" + n, "volk", [=] { volk_32fc_s32f_atan2_32f(c.get(), as<lv_32fc_t>(a), 1, len); });
#endif
#ifdef KVRS_BENCH_SLEEF
    add("phase/Phase_32f" + n, "sleef", [=] { sleefPhase(a.get(), b.get(), c.get(), len); });
    add("phase/Phase_64f" + n, "sleef", [=] { sleefPhase(da.get(), db.get(), dc.get(), len); });
    add("polar/PolarToCart_32f" + n, "sleef",
        [=] { sleefPolarToCart(a.get(), phases.get(), c.get(), d.get(), len); });
    add("polar/PolarToCart_64f" + n, "sleef",
        [=] { sleefPolarToCart(da.get(), dphases.get(), dc.get(), dd.get(), len); });
#endif
  }
  // Phases beyond the reduction in line.
  constexpr int len = 16384;
  const auto m = array<Kvr32f>(len), re = array<Kvr32f>(len), im = array<Kvr32f>(len);
  const auto wm = array<Kvr64f>(len), wre = array<Kvr64f>(len), wim = array<Kvr64f>(len);
  for (int exponent : {20, 60}) {
    const auto far = newArray<Kvr32f>(len);
    const auto wfar = newArray<Kvr64f>(len);
    for (int i = 0; i < len; ++i) {
      const double fraction = static_cast<double>(static_cast<uint32_t>(i) * 2654435769u) * 0x1p-32;
      wfar.get()[i] = std::ldexp(fraction, exponent);
      far.get()[i] = static_cast<Kvr32f>(wfar.get()[i]);
    }
    const std::string n = std::to_string(exponent);
    pair(
        "polar/PolarToCart_32f/phases to 2^" + n,
        [=] { kvrsPolarToCart_32f(m.get(), far.get(), re.get(), im.get(), len); },
        [=] { loopPolarToCart(m.get(), far.get(), re.get(), im.get(), len); });
    pair(
        "polar/PolarToCart_64f/phases to 2^" + n,
        [=] { kvrsPolarToCart_64f(wm.get(), wfar.get(), wre.get(), wim.get(), len); },
        [=] { loopPolarToCart(wm.get(), wfar.get(), wre.get(), wim.get(), len); });
#ifdef KVRS_BENCH_SLEEF
    add("polar/PolarToCart_32f/phases to 2^" + n, "sleef",
        [=] { sleefPolarToCart(m.get(), far.get(), re.get(), im.get(), len); });
    add("polar/PolarToCart_64f/phases to 2^" + n, "sleef",
        [=] { sleefPolarToCart(wm.get(), wfar.get(), wre.get(), wim.get(), len); });
#endif
  }
});

}  // namespace
}  // namespace kvrs::bench
