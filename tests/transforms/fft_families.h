// The families of floating-point FFTs as tests see them: every transform takes and gives plain numbers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_TRANSFORMS_FFT_FAMILIES_H
#define KVRS_TESTS_TRANSFORMS_FFT_FAMILIES_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "kvrs/fft.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"
#include "tests/transforms/fft_oracle.h"

namespace kvrs::test {

constexpr int kFlags[] = {kvrFftDivFwdByN, kvrFftDivInvByN, kvrFftDivBySqrtN, kvrFftNoDivByAny};

enum class Layout { complex, planes, perm, pack, ccs };

template <class Family>
struct Transform {
  using Part = typename Family::Part;
  using Spec = typename Family::Spec;

  const char* name;
  Layout layout;
  bool inverse;
  KvrStatus (*call)(const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer);
  KvrStatus (*inPlace)(Part* srcDst, const Spec* spec, Kvr8u* buffer);

  // Numbers on the side of the spectrum and on that of the signal.
  size_t spectrumCount(int order) const {
    const size_t n = size_t{1} << order;
    return !Family::kReal ? 2 * n : layout == Layout::ccs ? (n > 1 ? n + 2 : 2) : n;
  }
  size_t signalCount(int order) const { return (Family::kReal ? 1 : 2) * (size_t{1} << order); }
  size_t srcCount(int order) const {
    if (!inverse) return signalCount(order);
    return layout == Layout::ccs && order == 0 ? 1 : spectrumCount(order);
  }
  size_t dstCount(int order) const { return inverse ? signalCount(order) : spectrumCount(order); }
  size_t inPlaceCount(int order) const { return std::max(srcCount(order), dstCount(order)); }
};

struct Complex32 {
  using Part = Kvr32f;
  using Spec = KvrsFFTSpec_C_32fc;
  static constexpr bool kReal = false;
  static constexpr bool kPlanes = false;
  static constexpr uint32_t kWord = 4;
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_C_32fc;
  static constexpr auto init = kvrsFFTInit_C_32fc;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_32fc;
  static constexpr auto free = kvrsFFTFree_C_32fc;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_32fc;

  static const std::vector<Transform<Complex32>>& transforms() {
    static const std::vector<Transform<Complex32>> all = {
        {"Fwd_CToC_32fc", Layout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src), reinterpret_cast<Kvr32fc*>(dst),
                                       spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_32fc_I(reinterpret_cast<Kvr32fc*>(srcDst), spec, buffer);
         }},
        {"Inv_CToC_32fc", Layout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src), reinterpret_cast<Kvr32fc*>(dst),
                                       spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_32fc_I(reinterpret_cast<Kvr32fc*>(srcDst), spec, buffer);
         }}};
    return all;
  }
};

struct Complex64 {
  using Part = Kvr64f;
  using Spec = KvrsFFTSpec_C_64fc;
  static constexpr bool kReal = false;
  static constexpr bool kPlanes = false;
  static constexpr uint32_t kWord = 7;
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_C_64fc;
  static constexpr auto init = kvrsFFTInit_C_64fc;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_64fc;
  static constexpr auto free = kvrsFFTFree_C_64fc;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_64fc;

  static const std::vector<Transform<Complex64>>& transforms() {
    static const std::vector<Transform<Complex64>> all = {
        {"Fwd_CToC_64fc", Layout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src), reinterpret_cast<Kvr64fc*>(dst),
                                       spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_64fc_I(reinterpret_cast<Kvr64fc*>(srcDst), spec, buffer);
         }},
        {"Inv_CToC_64fc", Layout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src), reinterpret_cast<Kvr64fc*>(dst),
                                       spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_64fc_I(reinterpret_cast<Kvr64fc*>(srcDst), spec, buffer);
         }}};
    return all;
  }
};

// The points of a context, 1 of none: contexts begin with their word and their order.
inline size_t pointsOf(const void* spec) {
  if (spec == nullptr) return 1;
  int32_t order;
  memcpy(&order, static_cast<const char*>(spec) + 4, sizeof order);
  return order < 0 || order > 30 ? 1 : size_t{1} << order;
}
// The imaginary parts of numbers whose real parts come first.
template <class Part>
Part* imaginary(Part* real, const void* spec) {
  return real == nullptr ? nullptr : real + pointsOf(spec);
}

struct Planes32 {
  using Part = Kvr32f;
  using Spec = KvrsFFTSpec_C_32f;
  static constexpr bool kReal = false;
  static constexpr bool kPlanes = true;
  static constexpr uint32_t kWord = 5;
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_C_32f;
  static constexpr auto init = kvrsFFTInit_C_32f;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_32f;
  static constexpr auto free = kvrsFFTFree_C_32f;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_32f;

  static const std::vector<Transform<Planes32>>& transforms() {
    static const std::vector<Transform<Planes32>> all = {
        {"Fwd_CToC_32f", Layout::planes, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_32f(src, imaginary(src, spec), dst, imaginary(dst, spec), spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_32f_I(srcDst, imaginary(srcDst, spec), spec, buffer);
         }},
        {"Inv_CToC_32f", Layout::planes, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_32f(src, imaginary(src, spec), dst, imaginary(dst, spec), spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_32f_I(srcDst, imaginary(srcDst, spec), spec, buffer);
         }}};
    return all;
  }
};

struct Planes64 {
  using Part = Kvr64f;
  using Spec = KvrsFFTSpec_C_64f;
  static constexpr bool kReal = false;
  static constexpr bool kPlanes = true;
  static constexpr uint32_t kWord = 8;
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_C_64f;
  static constexpr auto init = kvrsFFTInit_C_64f;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_64f;
  static constexpr auto free = kvrsFFTFree_C_64f;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_64f;

  static const std::vector<Transform<Planes64>>& transforms() {
    static const std::vector<Transform<Planes64>> all = {
        {"Fwd_CToC_64f", Layout::planes, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_64f(src, imaginary(src, spec), dst, imaginary(dst, spec), spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTFwd_CToC_64f_I(srcDst, imaginary(srcDst, spec), spec, buffer);
         }},
        {"Inv_CToC_64f", Layout::planes, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_64f(src, imaginary(src, spec), dst, imaginary(dst, spec), spec, buffer);
         },
         [](Part* srcDst, const Spec* spec, Kvr8u* buffer) {
           return kvrsFFTInv_CToC_64f_I(srcDst, imaginary(srcDst, spec), spec, buffer);
         }}};
    return all;
  }
};

struct Real32 {
  using Part = Kvr32f;
  using Spec = KvrsFFTSpec_R_32f;
  static constexpr bool kReal = true;
  static constexpr bool kPlanes = false;
  static constexpr uint32_t kWord = 6;
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_R_32f;
  static constexpr auto init = kvrsFFTInit_R_32f;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_R_32f;
  static constexpr auto free = kvrsFFTFree_R_32f;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_R_32f;

  static const std::vector<Transform<Real32>>& transforms() {
    static const std::vector<Transform<Real32>> all = {
        {"Fwd_RToPerm_32f", Layout::perm, false, kvrsFFTFwd_RToPerm_32f, kvrsFFTFwd_RToPerm_32f_I},
        {"Fwd_RToPack_32f", Layout::pack, false, kvrsFFTFwd_RToPack_32f, kvrsFFTFwd_RToPack_32f_I},
        {"Fwd_RToCCS_32f", Layout::ccs, false, kvrsFFTFwd_RToCCS_32f, kvrsFFTFwd_RToCCS_32f_I},
        {"Inv_PermToR_32f", Layout::perm, true, kvrsFFTInv_PermToR_32f, kvrsFFTInv_PermToR_32f_I},
        {"Inv_PackToR_32f", Layout::pack, true, kvrsFFTInv_PackToR_32f, kvrsFFTInv_PackToR_32f_I},
        {"Inv_CCSToR_32f", Layout::ccs, true, kvrsFFTInv_CCSToR_32f, kvrsFFTInv_CCSToR_32f_I}};
    return all;
  }
};

struct Real64 {
  using Part = Kvr64f;
  using Spec = KvrsFFTSpec_R_64f;
  static constexpr bool kReal = true;
  static constexpr bool kPlanes = false;
  static constexpr uint32_t kWord = 9;
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_R_64f;
  static constexpr auto init = kvrsFFTInit_R_64f;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_R_64f;
  static constexpr auto free = kvrsFFTFree_R_64f;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_R_64f;

  static const std::vector<Transform<Real64>>& transforms() {
    static const std::vector<Transform<Real64>> all = {
        {"Fwd_RToPerm_64f", Layout::perm, false, kvrsFFTFwd_RToPerm_64f, kvrsFFTFwd_RToPerm_64f_I},
        {"Fwd_RToPack_64f", Layout::pack, false, kvrsFFTFwd_RToPack_64f, kvrsFFTFwd_RToPack_64f_I},
        {"Fwd_RToCCS_64f", Layout::ccs, false, kvrsFFTFwd_RToCCS_64f, kvrsFFTFwd_RToCCS_64f_I},
        {"Inv_PermToR_64f", Layout::perm, true, kvrsFFTInv_PermToR_64f, kvrsFFTInv_PermToR_64f_I},
        {"Inv_PackToR_64f", Layout::pack, true, kvrsFFTInv_PackToR_64f, kvrsFFTInv_PackToR_64f_I},
        {"Inv_CCSToR_64f", Layout::ccs, true, kvrsFFTInv_CCSToR_64f, kvrsFFTInv_CCSToR_64f_I}};
    return all;
  }
};

using FftFamilies = testing::Types<Complex32, Planes32, Real32, Complex64, Planes64, Real64>;

// A context of the library's own memory.
template <class Family>
class Context {
 public:
  Context(int order, int flag) {
    EXPECT_EQ(kvrStatusOk, Family::initAlloc(&spec_, order, flag, kvrHintNone));
  }
  ~Context() {
    if (spec_ != nullptr) Family::free(spec_);
  }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;
  typename Family::Spec* get() const { return spec_; }
  int bufSize() const {
    int size = -1;
    EXPECT_EQ(kvrStatusOk, Family::getBufSize(spec_, &size));
    return size;
  }

 private:
  typename Family::Spec* spec_ = nullptr;
};

// By what a direction multiplies.
inline long double exactScale(int flag, bool inverse, int order) {
  const long double n = ldexpl(1, order);
  if (flag == kvrFftDivBySqrtN) return 1 / sqrtl(n);
  return flag == (inverse ? kvrFftDivInvByN : kvrFftDivFwdByN) ? 1 / n : 1;
}

template <class Part>
std::vector<Part> randomNumbers(size_t count, Random& random) {
  std::vector<Part> x(count);
  for (Part& v : x) v = random.value<Part>();
  return x;
}

// Where a layout keeps X[k], k = 0 .. N/2, of N = 2^order: the index of the real part; the imaginary one, if
// it is kept, comes next.
inline size_t placeOf(Layout layout, size_t k, int order) {
  const size_t n = size_t{1} << order;
  if (layout == Layout::ccs) return 2 * k;
  if (layout == Layout::perm) return n > 1 && k == n / 2 ? 1 : 2 * k;
  return k == 0 ? 0 : 2 * k - 1;
}
inline bool hasImaginary(size_t k, int order) {
  return k != 0 && 2 * k != size_t{1} << order;
}

// Where complex number i of 2^order stands: its real part, and how far behind that its imaginary one.
template <class Family>
size_t realPartAt(size_t i) {
  return Family::kPlanes ? i : 2 * i;
}
template <class Family>
size_t imaginaryBehind(int order) {
  return Family::kPlanes ? size_t{1} << order : 1;
}

// What a transform without scale makes of `src`, in extended precision, in the layout of its dst.
template <class Family>
std::vector<long double> oracle(const Transform<Family>& transform, const typename Family::Part* src,
                                int order) {
  using Part = typename Family::Part;
  const size_t n = size_t{1} << order;
  WideVector x(n);
  if (!Family::kReal) {
    for (size_t i = 0; i < n; ++i) {
      const Part* at = src + realPartAt<Family>(i);
      x[i] = {at[0], at[imaginaryBehind<Family>(order)]};
    }
  } else if (!transform.inverse) {
    for (size_t i = 0; i < n; ++i) x[i] = {src[i], 0};
  } else {
    for (size_t k = 0; k <= n / 2; ++k) {
      const size_t at = placeOf(transform.layout, k, order);
      x[k] = {src[at], hasImaginary(k, order) ? src[at + 1] : 0};
      if (k > 0) x[n - k] = {x[k].re, -x[k].im};
    }
  }
  WideVector y = fft(x);
  if (transform.inverse) y = backward(y);
  std::vector<long double> dst(transform.dstCount(order), 0);
  if (!Family::kReal) {
    for (size_t i = 0; i < n; ++i) {
      long double* at = &dst[realPartAt<Family>(i)];
      at[0] = y[i].re;
      at[imaginaryBehind<Family>(order)] = y[i].im;
    }
  } else if (transform.inverse) {
    for (size_t i = 0; i < n; ++i) dst[i] = y[i].re;
  } else {
    for (size_t k = 0; k <= n / 2; ++k) {
      const size_t at = placeOf(transform.layout, k, order);
      dst[at] = y[k].re;
      if (hasImaginary(k, order)) dst[at + 1] = y[k].im;
    }
  }
  return dst;
}

// The root mean square of the error over that of the wanted numbers, in units of eps sqrt(order).
template <class Part, class Want>
double errorInUnits(const Part* got, const Want* want, size_t count, long double scale, int order) {
  long double error = 0, norm = 0;
  for (size_t i = 0; i < count; ++i) {
    const long double w = want[i] * scale, d = got[i] - w;
    error += d * d;
    norm += w * w;
  }
  const long double relative = norm > 0 ? sqrtl(error / norm) : error > 0 ? HUGE_VALL : 0;
  const int units = order > 1 ? order : 1;
  return static_cast<double>(relative / (std::numeric_limits<Part>::epsilon() * sqrtl(units)));
}

// Errors of roundings that add up at random: about 0.3 measured, at most twice that allowed.
constexpr double kMostError = 0.6;

}  // namespace kvrs::test

#endif
