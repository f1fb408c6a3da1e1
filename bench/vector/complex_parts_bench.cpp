// SPDX-License-Identifier: MIT
#include "kvrs/complex_parts.h"

#include "bench/support/bench.h"
#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

template <class C, class T>
__attribute__((noipa)) void loopReal(const C* src, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = src[i].re;
}
template <class C, class T>
__attribute__((noipa)) void loopSplit(const C* src, T* __restrict re, T* __restrict im, int len) {
  for (int i = 0; i < len; ++i) {
    re[i] = src[i].re;
    im[i] = src[i].im;
  }
}
template <class C, class T>
__attribute__((noipa)) void loopJoin(const T* re, const T* im, C* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = C{re[i], im[i]};
}
template <class C>
__attribute__((noipa)) void loopConj(const C* src, C* dst, int len) {
  for (int i = 0; i < len; ++i) {
    if constexpr (sizeof(C) == 4) {
      const int im = -src[i].im;
      dst[i] = C{src[i].re, static_cast<Kvr16s>(im > 32767 ? 32767 : im)};
    } else {
      dst[i] = C{src[i].re, -src[i].im};
    }
  }
}
template <class C>
__attribute__((noipa)) void loopConjFlip(const C* src, C* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const C z = src[len - 1 - i];
    if constexpr (sizeof(C) == 4) {
      dst[i] = C{z.re, static_cast<Kvr16s>(z.im == -32768 ? 32767 : -z.im)};
    } else {
      dst[i] = C{z.re, -z.im};
    }
  }
}

template <class C, class T>
struct Functions {
  const char* types;
  const char* part;
  KvrStatus (*real)(const C*, T*, int) noexcept;
  KvrStatus (*split)(const C*, T*, T*, int) noexcept;
  KvrStatus (*join)(const T*, const T*, C*, int) noexcept;
  KvrStatus (*conj)(const C*, C*, int) noexcept;
  KvrStatus (*conjFlip)(const C*, C*, int) noexcept;
};

template <class C, class T>
void compare(const Functions<C, T>& f) {
  for (int len : kLengths) {
    const auto name = [&](const char* what, const char* types) {
      return std::string("complex_parts/") + what + "_" + types + "/" + std::to_string(len);
    };
    const size_t n = static_cast<size_t>(len);
    // Imaginary parts lie a little more than n behind real ones: a distance of a multiple of 4 KiB would let loads
    // wait for stores to other arrays.
    const size_t im = n + 1024 / sizeof(T);
    const auto parts = array<T>(4 * n + im), out = array<T>(4 * n + im);
    const auto z = [n](const auto& p) { return reinterpret_cast<C*>(p.get()); };
    add(name("Real", f.types), "kvrs", [=] { f.real(z(parts), out.get(), len); });
    add(name("Real", f.types), "loop", [=] { loopReal(z(parts), out.get(), len); });
    add(name("CplxToReal", f.types), "kvrs", [=] { f.split(z(parts), out.get(), out.get() + im, len); });
    add(name("CplxToReal", f.types), "loop", [=] { loopSplit(z(parts), out.get(), out.get() + im, len); });
    add(name("RealToCplx", f.part), "kvrs", [=] { f.join(parts.get(), parts.get() + im, z(out), len); });
    add(name("RealToCplx", f.part), "loop", [=] { loopJoin(parts.get(), parts.get() + im, z(out), len); });
    add(name("Conj", f.types), "kvrs", [=] { f.conj(z(parts), z(out), len); });
    add(name("Conj", f.types), "loop", [=] { loopConj(z(parts), z(out), len); });
    add(name("ConjFlip", f.types), "kvrs", [=] { f.conjFlip(z(parts), z(out), len); });
    add(name("ConjFlip", f.types), "loop", [=] { loopConjFlip(z(parts), z(out), len); });
#ifdef KVRS_BENCH_VOLK
    if constexpr (sizeof(T) == 4) {
      const auto c = [](const auto& p) { return reinterpret_cast<lv_32fc_t*>(p.get()); };
      add(name("Real", f.types), "volk", [=] { volk_32fc_deinterleave_real_32f(out.get(), c(parts), len); });
      add(name("CplxToReal", f.types), "volk",
          [=] { volk_32fc_deinterleave_32f_x2(out.get(), out.get() + im, c(parts), len); });
      add(name("RealToCplx", f.part), "volk",
          [=] { volk_32f_x2_interleave_32fc(c(out), parts.get(), parts.get() + im, len); });
      add(name("Conj", f.types), "volk", [=] { volk_32fc_conjugate_32fc(c(out), c(parts), len); });
    } else if constexpr (sizeof(T) == 2) {
      const auto c = [](const auto& p) { return reinterpret_cast<lv_16sc_t*>(p.get()); };
      add(name("Real", f.types), "volk", [=] { volk_16ic_deinterleave_real_16i(out.get(), c(parts), len); });
      add(name("CplxToReal", f.types), "volk",
          [=] { volk_16ic_deinterleave_16i_x2(out.get(), out.get() + im, c(parts), len); });
    }
#endif
  }
}

Register complexParts([] {
  compare(Functions<Kvr16sc, Kvr16s>{"16sc", "16s", kvrsReal_16sc, kvrsCplxToReal_16sc, kvrsRealToCplx_16s,
                                     kvrsConj_16sc, kvrsConjFlip_16sc});
  compare(Functions<Kvr32fc, Kvr32f>{"32fc", "32f", kvrsReal_32fc, kvrsCplxToReal_32fc, kvrsRealToCplx_32f,
                                     kvrsConj_32fc, kvrsConjFlip_32fc});
  compare(Functions<Kvr64fc, Kvr64f>{"64fc", "64f", kvrsReal_64fc, kvrsCplxToReal_64fc, kvrsRealToCplx_64f,
                                     kvrsConj_64fc, kvrsConjFlip_64fc});
});

}  // namespace
}  // namespace kvrs::bench
