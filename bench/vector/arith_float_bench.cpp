// SPDX-License-Identifier: MIT
#include "kvrs/arith_float.h"

#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

template <class T>
__attribute__((noipa)) void loopAdd(const T* a, const T* b, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] + b[i];
}

template <class T>
__attribute__((noipa)) void loopMul(const T* a, const T* b, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] * b[i];
}

template <class T>
__attribute__((noipa)) void loopSubInPlace(const T* a, T* srcDst, int len) {
  for (int i = 0; i < len; ++i) srcDst[i] = srcDst[i] - a[i];
}

template <class T>
__attribute__((noipa)) void loopMulC(const T* a, T val, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] * val;
}

template <class T>
__attribute__((noipa)) void loopMulComplex(const T* a, const T* b, T* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const auto re = a[i].re * b[i].re - a[i].im * b[i].im;
    const auto im = a[i].re * b[i].im + a[i].im * b[i].re;
    dst[i].re = re;
    dst[i].im = im;
  }
}

template <class T>
__attribute__((noipa)) void loopMulCComplex(const T* a, T val, T* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const auto re = a[i].re * val.re - a[i].im * val.im;
    const auto im = a[i].re * val.im + a[i].im * val.re;
    dst[i].re = re;
    dst[i].im = im;
  }
}

Register arithFloat([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    {
      const auto a = array<Kvr32f>(count), b = array<Kvr32f>(count), dst = array<Kvr32f>(count);
      add("arith_float/Add_32f/" + n, "kvrs", [=] { kvrsAdd_32f(a.get(), b.get(), dst.get(), len); });
      add("arith_float/Add_32f/" + n, "loop", [=] { loopAdd(a.get(), b.get(), dst.get(), len); });
      add("arith_float/Sub_32f_I/" + n, "kvrs", [=] { kvrsSub_32f_I(a.get(), b.get(), len); });
      add("arith_float/Sub_32f_I/" + n, "loop", [=] { loopSubInPlace(a.get(), b.get(), len); });
      add("arith_float/MulC_32f/" + n, "kvrs", [=] { kvrsMulC_32f(a.get(), 0.3f, dst.get(), len); });
      add("arith_float/MulC_32f/" + n, "loop", [=] { loopMulC(a.get(), 0.3f, dst.get(), len); });
#ifdef KVRS_BENCH_VOLK
      const unsigned points = static_cast<unsigned>(len);
      add("arith_float/Add_32f/" + n, "volk",
          [=] { volk_32f_x2_add_32f(dst.get(), a.get(), b.get(), points); });
      add("arith_float/MulC_32f/" + n, "volk",
          [=] { volk_32f_s32f_multiply_32f(dst.get(), a.get(), 0.3f, points); });
#endif
    }
    {
      const auto a = array<Kvr64f>(count), b = array<Kvr64f>(count), dst = array<Kvr64f>(count);
      add("arith_float/Mul_64f/" + n, "kvrs", [=] { kvrsMul_64f(a.get(), b.get(), dst.get(), len); });
      add("arith_float/Mul_64f/" + n, "loop", [=] { loopMul(a.get(), b.get(), dst.get(), len); });
#ifdef KVRS_BENCH_VOLK
      add("arith_float/Mul_64f/" + n, "volk",
          [=] { volk_64f_x2_multiply_64f(dst.get(), a.get(), b.get(), static_cast<unsigned>(len)); });
#endif
    }
    // Complex vectors as pairs of the real ones, so that all parts are ordinary numbers.
    const auto complexCases = [&]<class T, class Part>(const char* type, T val, Part, auto mul, auto mulC) {
      const auto a = array<Part>(2 * count), b = array<Part>(2 * count), dst = array<Part>(2 * count);
      const auto at = [](const auto& p) { return reinterpret_cast<T*>(p.get()); };
      const std::string mulCase = std::string("arith_float/Mul_") + type + "/" + n;
      const std::string mulCCase = std::string("arith_float/MulC_") + type + "/" + n;
      add(mulCase, "kvrs", [=] { mul(at(a), at(b), at(dst), len); });
      add(mulCase, "loop", [=] { loopMulComplex(at(a), at(b), at(dst), len); });
      add(mulCCase, "kvrs", [=] { mulC(at(a), val, at(dst), len); });
      add(mulCCase, "loop", [=] { loopMulCComplex(at(a), val, at(dst), len); });
#ifdef KVRS_BENCH_VOLK
      if constexpr (sizeof(Part) == 4) {
        const auto points = [](const auto& p) { return reinterpret_cast<lv_32fc_t*>(p.get()); };
        add(mulCase, "volk", [=] {
          volk_32fc_x2_multiply_32fc(points(dst), points(a), points(b), static_cast<unsigned>(len));
        });
      }
#endif
    };
    complexCases("32fc", Kvr32fc{0.3f, 0.4f}, Kvr32f(), kvrsMul_32fc, kvrsMulC_32fc);
    complexCases("64fc", Kvr64fc{0.3, 0.4}, Kvr64f(), kvrsMul_64fc, kvrsMulC_64fc);
  }
});

}  // namespace
}  // namespace kvrs::bench
