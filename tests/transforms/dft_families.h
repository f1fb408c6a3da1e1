// The families of transforms of any length as tests see them: every transform takes and gives plain numbers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_TRANSFORMS_DFT_FAMILIES_H
#define KVRS_TESTS_TRANSFORMS_DFT_FAMILIES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "kvrs/dft.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"
#include "tests/transforms/fft_oracle.h"

namespace kvrs::test {

enum class DftLayout { complex, planes, perm, pack, ccs };

template <class Family>
struct DftTransform {
  using Part = typename Family::Part;

  const char* name;
  DftLayout layout;
  bool inverse;
  // Of planes the imaginary parts stand behind the n real ones.
  KvrStatus (*call)(const Part* src, Part* dst, const typename Family::Spec* spec, Kvr8u* buffer, size_t n);

  size_t spectrumCount(size_t n) const {
    return !Family::kReal ? 2 * n : layout == DftLayout::ccs ? n + 2 - n % 2 : n;
  }
  size_t signalCount(size_t n) const { return Family::kReal ? n : 2 * n; }
  size_t srcCount(size_t n) const { return inverse ? spectrumCount(n) : signalCount(n); }
  size_t dstCount(size_t n) const { return inverse ? signalCount(n) : spectrumCount(n); }
  size_t mostCount(size_t n) const { return std::max(srcCount(n), dstCount(n)); }
};

struct DftComplex32 {
  using Part = Kvr32f;
  using Spec = KvrsDFTSpec_C_32fc;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 13;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_32fc;
  static constexpr auto free = kvrsDFTFree_C_32fc;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_32fc;

  static const std::vector<DftTransform<DftComplex32>>& transforms() {
    static const std::vector<DftTransform<DftComplex32>> all = {
        {"DFTFwd_CToC_32fc", DftLayout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src), reinterpret_cast<Kvr32fc*>(dst),
                                       spec, buffer);
         }},
        {"DFTInv_CToC_32fc", DftLayout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src), reinterpret_cast<Kvr32fc*>(dst),
                                       spec, buffer);
         }}};
    return all;
  }
};

struct DftComplex64 {
  using Part = Kvr64f;
  using Spec = KvrsDFTSpec_C_64fc;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 16;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_64fc;
  static constexpr auto free = kvrsDFTFree_C_64fc;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_64fc;

  static const std::vector<DftTransform<DftComplex64>>& transforms() {
    static const std::vector<DftTransform<DftComplex64>> all = {
        {"DFTFwd_CToC_64fc", DftLayout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src), reinterpret_cast<Kvr64fc*>(dst),
                                       spec, buffer);
         }},
        {"DFTInv_CToC_64fc", DftLayout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src), reinterpret_cast<Kvr64fc*>(dst),
                                       spec, buffer);
         }}};
    return all;
  }
};

struct DftOutOfOrder32 {
  using Part = Kvr32f;
  using Spec = KvrsDFTOutOrdSpec_C_32fc;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 0x434d414a;
  static constexpr auto initAlloc = kvrsDFTOutOrdInitAlloc_C_32fc;
  static constexpr auto free = kvrsDFTOutOrdFree_C_32fc;
  static constexpr auto getBufSize = kvrsDFTOutOrdGetBufSize_C_32fc;

  static const std::vector<DftTransform<DftOutOfOrder32>>& transforms() {
    static const std::vector<DftTransform<DftOutOfOrder32>> all = {
        {"DFTOutOrdFwd_CToC_32fc", DftLayout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTOutOrdFwd_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src),
                                             reinterpret_cast<Kvr32fc*>(dst), spec, buffer);
         }},
        {"DFTOutOrdInv_CToC_32fc", DftLayout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTOutOrdInv_CToC_32fc(reinterpret_cast<const Kvr32fc*>(src),
                                             reinterpret_cast<Kvr32fc*>(dst), spec, buffer);
         }}};
    return all;
  }
};

struct DftOutOfOrder64 {
  using Part = Kvr64f;
  using Spec = KvrsDFTOutOrdSpec_C_64fc;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 0x434d414b;
  static constexpr auto initAlloc = kvrsDFTOutOrdInitAlloc_C_64fc;
  static constexpr auto free = kvrsDFTOutOrdFree_C_64fc;
  static constexpr auto getBufSize = kvrsDFTOutOrdGetBufSize_C_64fc;

  static const std::vector<DftTransform<DftOutOfOrder64>>& transforms() {
    static const std::vector<DftTransform<DftOutOfOrder64>> all = {
        {"DFTOutOrdFwd_CToC_64fc", DftLayout::complex, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTOutOrdFwd_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src),
                                             reinterpret_cast<Kvr64fc*>(dst), spec, buffer);
         }},
        {"DFTOutOrdInv_CToC_64fc", DftLayout::complex, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTOutOrdInv_CToC_64fc(reinterpret_cast<const Kvr64fc*>(src),
                                             reinterpret_cast<Kvr64fc*>(dst), spec, buffer);
         }}};
    return all;
  }
};

struct DftPlanes32 {
  using Part = Kvr32f;
  using Spec = KvrsDFTSpec_C_32f;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 14;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_32f;
  static constexpr auto free = kvrsDFTFree_C_32f;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_32f;

  static const std::vector<DftTransform<DftPlanes32>>& transforms() {
    static const std::vector<DftTransform<DftPlanes32>> all = {
        {"DFTFwd_CToC_32f", DftLayout::planes, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t n) {
           return kvrsDFTFwd_CToC_32f(src, src == nullptr ? src : src + n, dst,
                                      dst == nullptr ? dst : dst + n, spec, buffer);
         }},
        {"DFTInv_CToC_32f", DftLayout::planes, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t n) {
           return kvrsDFTInv_CToC_32f(src, src == nullptr ? src : src + n, dst,
                                      dst == nullptr ? dst : dst + n, spec, buffer);
         }}};
    return all;
  }
};

struct DftPlanes64 {
  using Part = Kvr64f;
  using Spec = KvrsDFTSpec_C_64f;
  static constexpr bool kReal = false;
  static constexpr uint32_t kWord = 17;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_64f;
  static constexpr auto free = kvrsDFTFree_C_64f;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_64f;

  static const std::vector<DftTransform<DftPlanes64>>& transforms() {
    static const std::vector<DftTransform<DftPlanes64>> all = {
        {"DFTFwd_CToC_64f", DftLayout::planes, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t n) {
           return kvrsDFTFwd_CToC_64f(src, src == nullptr ? src : src + n, dst,
                                      dst == nullptr ? dst : dst + n, spec, buffer);
         }},
        {"DFTInv_CToC_64f", DftLayout::planes, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t n) {
           return kvrsDFTInv_CToC_64f(src, src == nullptr ? src : src + n, dst,
                                      dst == nullptr ? dst : dst + n, spec, buffer);
         }}};
    return all;
  }
};

struct DftReal32 {
  using Part = Kvr32f;
  using Spec = KvrsDFTSpec_R_32f;
  static constexpr bool kReal = true;
  static constexpr uint32_t kWord = 15;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_R_32f;
  static constexpr auto free = kvrsDFTFree_R_32f;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_R_32f;

  static const std::vector<DftTransform<DftReal32>>& transforms() {
    static const std::vector<DftTransform<DftReal32>> all = {
        {"DFTFwd_RToPerm_32f", DftLayout::perm, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToPerm_32f(src, dst, spec, buffer);
         }},
        {"DFTFwd_RToPack_32f", DftLayout::pack, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToPack_32f(src, dst, spec, buffer);
         }},
        {"DFTFwd_RToCCS_32f", DftLayout::ccs, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToCCS_32f(src, dst, spec, buffer);
         }},
        {"DFTInv_PermToR_32f", DftLayout::perm, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_PermToR_32f(src, dst, spec, buffer);
         }},
        {"DFTInv_PackToR_32f", DftLayout::pack, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_PackToR_32f(src, dst, spec, buffer);
         }},
        {"DFTInv_CCSToR_32f", DftLayout::ccs, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_CCSToR_32f(src, dst, spec, buffer);
         }}};
    return all;
  }
};

struct DftReal64 {
  using Part = Kvr64f;
  using Spec = KvrsDFTSpec_R_64f;
  static constexpr bool kReal = true;
  static constexpr uint32_t kWord = 18;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_R_64f;
  static constexpr auto free = kvrsDFTFree_R_64f;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_R_64f;

  static const std::vector<DftTransform<DftReal64>>& transforms() {
    static const std::vector<DftTransform<DftReal64>> all = {
        {"DFTFwd_RToPerm_64f", DftLayout::perm, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToPerm_64f(src, dst, spec, buffer);
         }},
        {"DFTFwd_RToPack_64f", DftLayout::pack, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToPack_64f(src, dst, spec, buffer);
         }},
        {"DFTFwd_RToCCS_64f", DftLayout::ccs, false,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTFwd_RToCCS_64f(src, dst, spec, buffer);
         }},
        {"DFTInv_PermToR_64f", DftLayout::perm, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_PermToR_64f(src, dst, spec, buffer);
         }},
        {"DFTInv_PackToR_64f", DftLayout::pack, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_PackToR_64f(src, dst, spec, buffer);
         }},
        {"DFTInv_CCSToR_64f", DftLayout::ccs, true,
         [](const Part* src, Part* dst, const Spec* spec, Kvr8u* buffer, size_t) {
           return kvrsDFTInv_CCSToR_64f(src, dst, spec, buffer);
         }}};
    return all;
  }
};

using DftFamilies = testing::Types<DftComplex32, DftPlanes32, DftReal32, DftComplex64, DftPlanes64, DftReal64,
                                   DftOutOfOrder32, DftOutOfOrder64>;

template <class Family>
class DftContext {
 public:
  DftContext(size_t n, int flag) {
    EXPECT_EQ(kvrStatusOk, Family::initAlloc(&spec_, static_cast<int>(n), flag, kvrHintNone)) << n;
  }
  ~DftContext() {
    if (spec_ != nullptr) Family::free(spec_);
  }
  DftContext(const DftContext&) = delete;
  DftContext& operator=(const DftContext&) = delete;
  typename Family::Spec* get() const { return spec_; }
  int bufSize() const {
    int size = -1;
    EXPECT_EQ(kvrStatusOk, Family::getBufSize(spec_, &size));
    return size;
  }

 private:
  typename Family::Spec* spec_ = nullptr;
};

// The definition, in extended precision: by its sum, by the smallest factor of the length, or, for large primes, by a
// convolution through FFTs of halves.
inline WideVector wideDft(const WideVector& x) {
  constexpr long double kPi = 3.14159265358979323846264338327950288L;
  const size_t n = x.size();
  if (n > 64 && (n & (n - 1)) == 0) return fft(x);
  size_t factor = 2;
  while (factor * factor <= n && n % factor != 0) ++factor;
  const bool prime = factor * factor > n;
  if (!prime || n <= 64) {
    WideVector w(n), y(n);
    for (size_t k = 0; k < n; ++k) w[k] = {cosl(2 * kPi * k / n), -sinl(2 * kPi * k / n)};
    const size_t parts = prime ? n : factor, length = n / parts;
    std::vector<WideVector> part(parts, WideVector(length));
    for (size_t i = 0; i < n; ++i) part[i % parts][i / parts] = x[i];
    if (length > 1) {
      for (WideVector& p : part) p = wideDft(p);
    }
    for (size_t k = 0; k < n; ++k) {
      Wide sum{0, 0};
      for (size_t i = 0; i < parts; ++i) sum = sum + part[i][k % length] * w[i * k % n];
      y[k] = sum;
    }
    return y;
  }
  size_t m = 1;
  while (m < 2 * n - 1) m *= 2;
  WideVector chirp(n), a(m, Wide{0, 0}), b(m, Wide{0, 0});
  for (uint64_t k = 0; k < n; ++k) {
    const long double angle = kPi * static_cast<long double>(k * k % (2 * n)) / static_cast<long double>(n);
    chirp[k] = {cosl(angle), -sinl(angle)};
    a[k] = x[k] * chirp[k];
    b[k] = b[(m - k) % m] = {chirp[k].re, -chirp[k].im};
  }
  a = fft(a);
  b = fft(b);
  for (size_t k = 0; k < m; ++k) a[k] = a[k] * b[k];
  a = backward(fft(a));
  WideVector y(n);
  for (size_t k = 0; k < n; ++k) y[k] = a[k] * chirp[k] * Wide{1 / static_cast<long double>(m), 0};
  return y;
}

}  // namespace kvrs::test

#endif
