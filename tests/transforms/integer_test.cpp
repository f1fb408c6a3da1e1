// FFTs and DFTs of integers: sizes, statuses, fixed point to one unit, floating point against an oracle in extended
// precision, saturation.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "kvrs/dft.h"
#include "kvrs/dft_integer.h"
#include "kvrs/fft.h"
#include "kvrs/fft_integer.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"
#include "tests/transforms/dft_families.h"

using namespace kvrs::test;

namespace {

enum class Layout { complex, planes, perm, pack, ccs };

// A transform of n points; in and out are plain numbers, of planes the imaginary parts behind the real ones.
template <class In, class Out, class Spec>
struct IntegerTransform {
  const char* name;
  Layout layout;
  bool inverse;
  KvrStatus (*call)(const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n);
  KvrStatus (*inPlace)(In* srcDst, const Spec* spec, int scaleFactor, Kvr8u* buffer,
                       size_t n);  // may be null

  bool real() const { return layout != Layout::complex && layout != Layout::planes; }
  size_t spectrumCount(size_t n) const { return !real() ? 2 * n : layout == Layout::ccs ? n + 2 - n % 2 : n; }
  size_t signalCount(size_t n) const { return real() ? n : 2 * n; }
  size_t srcCount(size_t n) const { return inverse ? spectrumCount(n) : signalCount(n); }
  size_t dstCount(size_t n) const { return inverse ? signalCount(n) : spectrumCount(n); }
};

struct C16sc {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsFFTSpec_C_16sc;
  static constexpr uint32_t kWord = 1;
  static constexpr bool kSixteen = true;
  static constexpr int kForm = 0;  // pairs, planes, real
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_C_16sc;
  static constexpr auto init = kvrsFFTInit_C_16sc;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_16sc;
  static constexpr auto free = kvrsFFTFree_C_16sc;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_16sc;
  static constexpr auto floatSize = kvrsFFTGetSize_C_32fc;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_CToC_16sc", Layout::complex, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(src),
                                               reinterpret_cast<Kvr16sc*>(dst), spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_CToC_16sc_ISfs(reinterpret_cast<Kvr16sc*>(x), spec, scaleFactor, buffer);
             }},
            {"FFTInv_CToC_16sc", Layout::complex, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(src),
                                               reinterpret_cast<Kvr16sc*>(dst), spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CToC_16sc_ISfs(reinterpret_cast<Kvr16sc*>(x), spec, scaleFactor, buffer);
             }}};
  }
};

struct C16s {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsFFTSpec_C_16s;
  static constexpr uint32_t kWord = 2;
  static constexpr bool kSixteen = true;
  static constexpr int kForm = 1;  // pairs, planes, real
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_C_16s;
  static constexpr auto init = kvrsFFTInit_C_16s;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_16s;
  static constexpr auto free = kvrsFFTFree_C_16s;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_16s;
  static constexpr auto floatSize = kvrsFFTGetSize_C_32f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_CToC_16s", Layout::planes, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTFwd_CToC_16s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTFwd_CToC_16s_ISfs(x, x == nullptr ? x : x + n, spec, scaleFactor, buffer);
             }},
            {"FFTInv_CToC_16s", Layout::planes, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTInv_CToC_16s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTInv_CToC_16s_ISfs(x, x == nullptr ? x : x + n, spec, scaleFactor, buffer);
             }}};
  }
};

struct R16s {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsFFTSpec_R_16s;
  static constexpr uint32_t kWord = 3;
  static constexpr bool kSixteen = true;
  static constexpr int kForm = 2;  // pairs, planes, real
  static constexpr int kMaxOrder = 27;
  static constexpr auto getSize = kvrsFFTGetSize_R_16s;
  static constexpr auto init = kvrsFFTInit_R_16s;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_R_16s;
  static constexpr auto free = kvrsFFTFree_R_16s;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_R_16s;
  static constexpr auto floatSize = kvrsFFTGetSize_R_32f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_RToPerm_16s", Layout::perm, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPerm_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPerm_16s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTFwd_RToPack_16s", Layout::pack, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPack_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPack_16s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTFwd_RToCCS_16s", Layout::ccs, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToCCS_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToCCS_16s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_PermToR_16s", Layout::perm, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PermToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PermToR_16s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_PackToR_16s", Layout::pack, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PackToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PackToR_16s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_CCSToR_16s", Layout::ccs, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CCSToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CCSToR_16s_ISfs(x, spec, scaleFactor, buffer);
             }}};
  }
};

struct C32sc {
  using In = Kvr32s;
  using Out = Kvr32s;
  using Spec = KvrsFFTSpec_C_32sc;
  static constexpr uint32_t kWord = 0x434d414c;
  static constexpr bool kSixteen = false;
  static constexpr int kForm = 0;  // pairs, planes, real
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_C_32sc;
  static constexpr auto init = kvrsFFTInit_C_32sc;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_32sc;
  static constexpr auto free = kvrsFFTFree_C_32sc;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_32sc;
  static constexpr auto floatSize = kvrsFFTGetSize_C_64fc;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_CToC_32sc", Layout::complex, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_CToC_32sc_Sfs(reinterpret_cast<const Kvr32sc*>(src),
                                               reinterpret_cast<Kvr32sc*>(dst), spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_CToC_32sc_ISfs(reinterpret_cast<Kvr32sc*>(x), spec, scaleFactor, buffer);
             }},
            {"FFTInv_CToC_32sc", Layout::complex, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CToC_32sc_Sfs(reinterpret_cast<const Kvr32sc*>(src),
                                               reinterpret_cast<Kvr32sc*>(dst), spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CToC_32sc_ISfs(reinterpret_cast<Kvr32sc*>(x), spec, scaleFactor, buffer);
             }}};
  }
};

struct C32s {
  using In = Kvr32s;
  using Out = Kvr32s;
  using Spec = KvrsFFTSpec_C_32s;
  static constexpr uint32_t kWord = 0x434d414d;
  static constexpr bool kSixteen = false;
  static constexpr int kForm = 1;  // pairs, planes, real
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_C_32s;
  static constexpr auto init = kvrsFFTInit_C_32s;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_C_32s;
  static constexpr auto free = kvrsFFTFree_C_32s;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_C_32s;
  static constexpr auto floatSize = kvrsFFTGetSize_C_64f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_CToC_32s", Layout::planes, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTFwd_CToC_32s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTFwd_CToC_32s_ISfs(x, x == nullptr ? x : x + n, spec, scaleFactor, buffer);
             }},
            {"FFTInv_CToC_32s", Layout::planes, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTInv_CToC_32s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsFFTInv_CToC_32s_ISfs(x, x == nullptr ? x : x + n, spec, scaleFactor, buffer);
             }}};
  }
};

struct R32s {
  using In = Kvr32s;
  using Out = Kvr32s;
  using Spec = KvrsFFTSpec_R_32s;
  static constexpr uint32_t kWord = 0x434d414e;
  static constexpr bool kSixteen = false;
  static constexpr int kForm = 2;  // pairs, planes, real
  static constexpr int kMaxOrder = 26;
  static constexpr auto getSize = kvrsFFTGetSize_R_32s;
  static constexpr auto init = kvrsFFTInit_R_32s;
  static constexpr auto initAlloc = kvrsFFTInitAlloc_R_32s;
  static constexpr auto free = kvrsFFTFree_R_32s;
  static constexpr auto getBufSize = kvrsFFTGetBufSize_R_32s;
  static constexpr auto floatSize = kvrsFFTGetSize_R_64f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"FFTFwd_RToPerm_32s", Layout::perm, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPerm_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPerm_32s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTFwd_RToPack_32s", Layout::pack, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPack_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToPack_32s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTFwd_RToCCS_32s", Layout::ccs, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToCCS_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTFwd_RToCCS_32s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_PermToR_32s", Layout::perm, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PermToR_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PermToR_32s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_PackToR_32s", Layout::pack, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PackToR_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_PackToR_32s_ISfs(x, spec, scaleFactor, buffer);
             }},
            {"FFTInv_CCSToR_32s", Layout::ccs, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CCSToR_32s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             [](In* x, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsFFTInv_CCSToR_32s_ISfs(x, spec, scaleFactor, buffer);
             }}};
  }
};

struct D16sc {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsDFTSpec_C_16sc;
  using Inner = KvrsDFTSpec_C_32fc;
  static constexpr uint32_t kWord = 10;
  static constexpr int kForm = 0;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_16sc;
  static constexpr auto free = kvrsDFTFree_C_16sc;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_16sc;
  static constexpr auto innerAlloc = kvrsDFTInitAlloc_C_32fc;
  static constexpr auto innerFree = kvrsDFTFree_C_32fc;
  static constexpr auto innerBufSize = kvrsDFTGetBufSize_C_32fc;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"DFTFwd_CToC_16sc", Layout::complex, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTFwd_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(src),
                                               reinterpret_cast<Kvr16sc*>(dst), spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTInv_CToC_16sc", Layout::complex, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTInv_CToC_16sc_Sfs(reinterpret_cast<const Kvr16sc*>(src),
                                               reinterpret_cast<Kvr16sc*>(dst), spec, scaleFactor, buffer);
             },
             nullptr}};
  }
};

struct D16s {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsDFTSpec_C_16s;
  using Inner = KvrsDFTSpec_C_32f;
  static constexpr uint32_t kWord = 11;
  static constexpr int kForm = 1;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_C_16s;
  static constexpr auto free = kvrsDFTFree_C_16s;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_C_16s;
  static constexpr auto innerAlloc = kvrsDFTInitAlloc_C_32f;
  static constexpr auto innerFree = kvrsDFTFree_C_32f;
  static constexpr auto innerBufSize = kvrsDFTGetBufSize_C_32f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"DFTFwd_CToC_16s", Layout::planes, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsDFTFwd_CToC_16s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTInv_CToC_16s", Layout::planes, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t n) {
               return kvrsDFTInv_CToC_16s_Sfs(src, src == nullptr ? src : src + n, dst,
                                              dst == nullptr ? dst : dst + n, spec, scaleFactor, buffer);
             },
             nullptr}};
  }
};

struct DR16s {
  using In = Kvr16s;
  using Out = Kvr16s;
  using Spec = KvrsDFTSpec_R_16s;
  using Inner = KvrsDFTSpec_R_32f;
  static constexpr uint32_t kWord = 12;
  static constexpr int kForm = 2;
  static constexpr auto initAlloc = kvrsDFTInitAlloc_R_16s;
  static constexpr auto free = kvrsDFTFree_R_16s;
  static constexpr auto getBufSize = kvrsDFTGetBufSize_R_16s;
  static constexpr auto innerAlloc = kvrsDFTInitAlloc_R_32f;
  static constexpr auto innerFree = kvrsDFTFree_R_32f;
  static constexpr auto innerBufSize = kvrsDFTGetBufSize_R_32f;
  static std::vector<IntegerTransform<In, Out, Spec>> transforms() {
    return {{"DFTFwd_RToPerm_16s", Layout::perm, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTFwd_RToPerm_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTFwd_RToPack_16s", Layout::pack, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTFwd_RToPack_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTFwd_RToCCS_16s", Layout::ccs, false,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTFwd_RToCCS_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTInv_PermToR_16s", Layout::perm, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTInv_PermToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTInv_PackToR_16s", Layout::pack, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTInv_PackToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr},
            {"DFTInv_CCSToR_16s", Layout::ccs, true,
             [](const In* src, Out* dst, const Spec* spec, int scaleFactor, Kvr8u* buffer, size_t) {
               return kvrsDFTInv_CCSToR_16s_Sfs(src, dst, spec, scaleFactor, buffer);
             },
             nullptr}};
  }
};

using FftIntegers = testing::Types<C16sc, C16s, R16s, C32sc, C32s, R32s>;
using DftIntegers = testing::Types<D16sc, D16s, DR16s>;

template <class Family>
class FftInteger : public testing::Test {};
TYPED_TEST_SUITE(FftInteger, FftIntegers);
template <class Family>
class DftInteger : public testing::Test {};
TYPED_TEST_SUITE(DftInteger, DftIntegers);

// --- the oracle -------------------------------------------------------------------------------------------------

size_t placeOfTerm(Layout layout, size_t k, size_t n) {
  if (layout == Layout::ccs) return 2 * k;
  if (k == 0) return 0;
  if (layout == Layout::perm && n % 2 == 0) return 2 * k == n ? 1 : 2 * k;
  return 2 * k - 1;
}

// The exact transform without factors.
template <class In, class Out, class Spec>
std::vector<long double> transformOf(const IntegerTransform<In, Out, Spec>& t, const std::vector<In>& src,
                                     size_t n) {
  WideVector x(n);
  const auto at = [&](size_t i) { return static_cast<long double>(src[i]); };
  if (t.layout == Layout::complex) {
    for (size_t i = 0; i < n; ++i) x[i] = {at(2 * i), at(2 * i + 1)};
  } else if (t.layout == Layout::planes) {
    for (size_t i = 0; i < n; ++i) x[i] = {at(i), at(n + i)};
  } else if (!t.inverse) {
    for (size_t i = 0; i < n; ++i) x[i] = {at(i), 0};
  } else {
    for (size_t k = 0; 2 * k <= n; ++k) {
      const size_t p = placeOfTerm(t.layout, k, n);
      const bool real = k == 0 || 2 * k == n;
      x[k] = {at(p), real ? 0 : at(p + 1)};
      if (!real) x[n - k] = {x[k].re, -x[k].im};
    }
  }
  WideVector y = wideDft(x);
  if (t.inverse) y = backward(y);
  std::vector<long double> want(t.dstCount(n), 0);
  for (size_t k = 0; k < n; ++k) {
    if (t.layout == Layout::complex) {
      want[2 * k] = y[k].re;
      want[2 * k + 1] = y[k].im;
    } else if (t.layout == Layout::planes) {
      want[k] = y[k].re;
      want[n + k] = y[k].im;
    } else if (t.inverse) {
      want[k] = y[k].re;
    } else if (2 * k <= n) {
      const size_t p = placeOfTerm(t.layout, k, n);
      want[p] = y[k].re;
      if (k != 0 && 2 * k != n) want[p + 1] = y[k].im;
    }
  }
  return want;
}

long double scaleOf(int flag, bool inverse, size_t n) {
  if (flag == kvrFftDivBySqrtN) return 1 / sqrtl(n);
  return flag == (inverse ? kvrFftDivInvByN : kvrFftDivFwdByN) ? 1 / static_cast<long double>(n) : 1;
}

constexpr int kFlags[] = {kvrFftDivFwdByN, kvrFftDivInvByN, kvrFftDivBySqrtN, kvrFftNoDivByAny};

// `slack` is what floating-point work may be off by, before the rounding to an integer.
template <class Out>
void expectNear(const Out* got, const std::vector<long double>& want, long double factor, long double slack) {
  for (size_t i = 0; i < want.size(); ++i) {
    const long double low = std::numeric_limits<Out>::min(), high = std::numeric_limits<Out>::max();
    const long double w = std::clamp(want[i] * factor, low, high);
    ASSERT_LE(fabsl(got[i] - w), 0.5L + slack)
        << "number " << i << ", wanted " << static_cast<double>(want[i] * factor);
  }
}

// Numbers of few bits where results are to stay in range, else any.
template <class In>
std::vector<In> integers(size_t count, Random& random, bool any) {
  std::vector<In> x(count);
  for (In& v : x) {
    v = any ? random.value<In>() : static_cast<In>(static_cast<int>(random.below(2001)) - 1000);
  }
  return x;
}

template <class F>
struct Made {
  typename F::Spec* spec = nullptr;
  Made(int lengthOrOrder, int flag, KvrHintAlgorithm hint) {
    EXPECT_EQ(kvrStatusOk, F::initAlloc(&spec, lengthOrOrder, flag, hint));
  }
  ~Made() {
    if (spec != nullptr) F::free(spec);
  }
  Made(const Made&) = delete;
  Made& operator=(const Made&) = delete;
};

template <class F>
void checkTransforms(const typename F::Spec* spec, size_t n, int flag, int scaleFactor, bool any,
                     long double slackBits) {
  for (const auto& t : F::transforms()) {
    SCOPED_TRACE(std::string(t.name) + ", " + std::to_string(n) + " points, flag " + std::to_string(flag) +
                 ", scaleFactor " + std::to_string(scaleFactor));
    Random random(n + static_cast<size_t>(flag));
    const auto src = integers<typename F::In>(t.srcCount(n), random, any);
    const auto want = transformOf(t, src, n);
    const long double factor = scaleOf(flag, t.inverse, n) * ldexpl(1, -std::clamp(scaleFactor, -200, 200));
    long double most = 0;
    for (typename F::In v : src) most = std::max(most, fabsl(v));
    const long double slack = slackBits * most * sqrtl(n) * factor;
    std::vector<typename F::Out> dst(std::max(t.srcCount(n), t.dstCount(n)), 77);
    ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), spec, scaleFactor, nullptr, n));
    expectNear(dst.data(), want, factor, slack);
    if (testing::Test::HasFatalFailure()) return;
    const auto first = dst;
    std::copy(src.begin(), src.end(), dst.begin());
    if (t.inPlace != nullptr) {
      ASSERT_EQ(kvrStatusOk, t.inPlace(dst.data(), spec, scaleFactor, nullptr, n));
    } else {
      ASSERT_EQ(kvrStatusOk, t.call(dst.data(), dst.data(), spec, scaleFactor, nullptr, n));
    }
    ASSERT_EQ(0, memcmp(first.data(), dst.data(), t.dstCount(n) * sizeof(typename F::Out))) << "in place";
  }
}

// Floating point: all orders, flags, factors; a result is off by a few roundings of the float work at most.
TYPED_TEST(FftInteger, FloatingPoint) {
  using F = TypeParam;
  const long double bits = F::kSixteen ? 4 * 0x1p-23L : 4 * 0x1p-52L;
  for (int order = 0; order <= 13; ++order) {
    if (F::kSixteen && order == 0) continue;
    for (int flag : kFlags) {
      const Made<F> made(order, flag, kvrHintAccurate);
      for (int scaleFactor : {0, 1, 5, order, -3}) {
        checkTransforms<F>(made.spec, size_t{1} << order, flag, scaleFactor, false, bits);
        checkTransforms<F>(made.spec, size_t{1} << order, flag, scaleFactor + order, true, bits);
      }
      if (testing::Test::HasFailure()) return;
    }
  }
}

// Fixed point: within one unit before the final shift, and then rounded.
TYPED_TEST(FftInteger, FixedPoint) {
  using F = TypeParam;
  if (!F::kSixteen) return;
  for (int order = 1; order <= 3; ++order) {
    const size_t n = size_t{1} << order;
    for (int flag : kFlags) {
      for (int hint : {0, 1}) {
        const Made<F> made(order, flag, hint);
        for (int scaleFactor : {0, 1, 2, 5, 12, -1, -4}) {
          for (const auto& t : F::transforms()) {
            SCOPED_TRACE(std::string(t.name) + ", order " + std::to_string(order) + ", flag " +
                         std::to_string(flag) + ", scaleFactor " + std::to_string(scaleFactor));
            const bool odd = flag == kvrFftDivBySqrtN && order % 2 != 0;
            for (int turn = 0; turn < 20; ++turn) {
              Random random(static_cast<uint64_t>(turn));
              const auto src = integers<typename F::In>(t.srcCount(n), random, turn % 2 == 0);
              const auto want = transformOf(t, src, n);
              // 23170/32768 in place of sqrt(1/2).
              long double scale = scaleOf(flag, t.inverse, n);
              if (odd) scale = 23170.0L / 32768 / (1 << order / 2);
              const long double factor = scale * ldexpl(1, -scaleFactor);
              std::vector<typename F::Out> dst(std::max(t.srcCount(n), t.dstCount(n)));
              ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), made.spec, scaleFactor, nullptr, n));
              expectNear(dst.data(), want, factor, 2 * factor * ldexpl(1, order - 15) + 1e-9L);
              if (testing::Test::HasFailure()) return;
            }
          }
        }
      }
    }
  }
}

// Orders 1 and 2 have no product: to the bit. Halves go up.
TYPED_TEST(FftInteger, FixedPointToTheBit) {
  using F = TypeParam;
  if (!F::kSixteen) return;
  const auto rule = [](int64_t v, int shift) {
    if (shift > 31) shift = 31;
    if (shift > 0) v = (v + (int64_t{1} << (shift - 1))) >> shift;
    if (shift <= -32) v = 0;
    if (shift < 0 && shift > -32) v = static_cast<int32_t>(static_cast<uint32_t>(v) << -shift);
    return static_cast<Kvr16s>(std::clamp<int64_t>(v, -32768, 32767));
  };
  for (int order = 0; order <= 2; ++order) {
    const size_t n = size_t{1} << order;
    for (int flag : kFlags) {
      const Made<F> made(order, flag, kvrHintNone);
      for (int scaleFactor : {0,   1,   3,   17,  31,  32,  1000, INT_MAX, -1,    -13,
                              -14, -15, -16, -20, -31, -32, -46,  -47,     -1000, INT_MIN}) {
        for (const auto& t : F::transforms()) {
          SCOPED_TRACE(std::string(t.name) + ", order " + std::to_string(order) + ", flag " +
                       std::to_string(flag) + ", scaleFactor " + std::to_string(scaleFactor));
          Random random(9);
          const auto src = integers<typename F::In>(t.srcCount(n), random, true);
          const auto want = transformOf(t, src, n);
          std::vector<typename F::Out> dst(std::max(t.srcCount(n), t.dstCount(n)));
          ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), made.spec, scaleFactor, nullptr, n));
          const int64_t bounded = std::clamp<int64_t>(scaleFactor, -100000, 100000);
          for (size_t i = 0; i < want.size(); ++i) {
            int64_t v = llrintl(want[i]);
            int64_t shift = bounded;
            if (order > 0) {
              const int up = 15 - order;
              v *= int64_t{1} << up;
              shift += up;
              if (flag == kvrFftDivBySqrtN) {
                shift += order / 2;
                if (order % 2 != 0) v = v * 23170 >> 15;
              } else if (flag == (t.inverse ? kvrFftDivInvByN : kvrFftDivFwdByN)) {
                shift += order;
              }
            }
            ASSERT_EQ(rule(v, static_cast<int>(shift)), dst[i]) << i;
          }
        }
      }
    }
  }
}

TYPED_TEST(FftInteger, Saturation) {
  using F = TypeParam;
  for (int order : {3, 4, 8}) {
    const size_t n = size_t{1} << order;
    for (int hint : {0, 2}) {
      const Made<F> made(order, kvrFftNoDivByAny, hint);
      for (const auto& t : F::transforms()) {
        if (t.inverse) continue;
        constexpr auto high = std::numeric_limits<typename F::In>::max();
        std::vector<typename F::In> src(t.srcCount(n), high);
        std::vector<typename F::Out> dst(t.dstCount(n));
        ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), made.spec, 0, nullptr, n));
        EXPECT_EQ(high, dst[0]) << t.name << ", order " << order;
        src.assign(src.size(), std::numeric_limits<typename F::In>::min());
        ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), made.spec, 0, nullptr, n));
        EXPECT_EQ(std::numeric_limits<typename F::Out>::min(), dst[0]) << t.name << ", order " << order;
      }
    }
  }
}

struct Three {
  int spec, initBuf, work;
};
int down32(int x) {
  return x / 32 * 32;
}

template <class F>
Three wantedSizes(int order, KvrHintAlgorithm hint) {
  const int n = 1 << order;
  const auto q = [](int points) { return points / 4 * 4; };
  if (F::kSixteen && order == 0) return {84, 0, 0};
  if (F::kSixteen && order < 4 && (hint == kvrHintNone || hint == kvrHintFast)) {
    const int initBuf = down32(2 * (n / 4) + 33) + 32;
    if (F::kForm == 2) {
      return {down32(4 * n + 31) + down32(8 * n + 31) + down32(q(n / 2) + 35) + 96, initBuf, 4 * n + 8 + 32};
    }
    return {down32(8 * n + 31) + down32(q(n) + 35) + 96, initBuf, (F::kForm == 1 ? 12 : 8) * n + 32};
  }
  Three inner;
  EXPECT_EQ(kvrStatusOk,
            F::floatSize(order, kvrFftNoDivByAny, kvrHintNone, &inner.spec, &inner.initBuf, &inner.work));
  const int part = F::kSixteen ? 4 : 8;
  const int data = F::kForm == 2 ? part * (n + 2) : 2 * part * n;
  return {inner.spec + (F::kSixteen ? 96 : 64), F::kSixteen || inner.initBuf > 0 ? inner.initBuf + 32 : 0,
          inner.work + data + 32};
}

TYPED_TEST(FftInteger, GetSize) {
  using F = TypeParam;
  for (int order = -2; order <= 32; ++order) {
    for (int flag : {1, 2, 4, 8, 0, 3, 16}) {
      for (int missing = 0; missing < 8; ++missing) {
        const bool known = flag == 1 || flag == 2 || flag == 4 || flag == 8;
        const KvrStatus want = order < 0 || order > 30 ? kvrStatusBadFftOrder
                               : missing != 0          ? kvrStatusNullPointer
                               : !known                ? kvrStatusBadFftFlag
                               : order > F::kMaxOrder  ? kvrStatusBadFftOrder
                                                       : kvrStatusOk;
        for (int hint : {0, 1, 2, 99}) {
          Three got{-7, -7, -7};
          ASSERT_EQ(want, F::getSize(order, flag, hint, missing & 1 ? nullptr : &got.spec,
                                     missing & 2 ? nullptr : &got.initBuf, missing & 4 ? nullptr : &got.work))
              << order << ", " << flag << ", " << missing;
          if (want != kvrStatusOk) {
            ASSERT_TRUE(got.spec == -7 && got.initBuf == -7 && got.work == -7);
            continue;
          }
          const Three sizes = wantedSizes<F>(order, hint);
          ASSERT_EQ(sizes.spec, got.spec) << order << ", hint " << hint;
          ASSERT_EQ(sizes.initBuf, got.initBuf) << order << ", hint " << hint;
          ASSERT_EQ(sizes.work, got.work) << order << ", hint " << hint;
        }
      }
    }
  }
}

TYPED_TEST(FftInteger, InitChecks) {
  using F = TypeParam;
  auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
  typename F::Spec* spec = unset;
  alignas(32) static Kvr8u mem[1 << 17], initBuf[1 << 16];
  memset(mem, 0xA5, sizeof mem);
  EXPECT_EQ(kvrStatusNullPointer, F::init(nullptr, -1, 0, 0, nullptr, nullptr));
  for (int order : {-1, 31, 1000, F::kMaxOrder + 1, 30}) {
    EXPECT_EQ(kvrStatusBadFftOrder, F::init(&spec, order, 0, 0, nullptr, nullptr)) << order;
    EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, order, order > 30 || order < 0 ? 0 : 1, 0)) << order;
  }
  EXPECT_EQ(kvrStatusNullPointer, F::init(&spec, 4, 0, 0, nullptr, initBuf));
  EXPECT_EQ(kvrStatusNullPointer, F::init(&spec, 12, 0, 0, mem, nullptr));
  EXPECT_EQ(0xA5, mem[0]);
  for (int order : {0, 2, 4, 11}) {
    memset(mem, 0xA5, sizeof mem);
    EXPECT_EQ(kvrStatusBadFftFlag, F::init(&spec, order, 3, 0, mem, initBuf)) << order;
    uint32_t word;
    memcpy(&word, mem, 4);
    EXPECT_EQ(0u, word);
  }
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, 4, 1, 0));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 4, 5, 0));
  EXPECT_EQ(unset, spec);
  for (int order : {0, 1, 3, 4, 10, 12}) {
    const auto make = [&] {
      typename F::Spec* made = unset;
      const KvrStatus status = F::initAlloc(&made, order, 1, 0);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, F::free(made));
      } else {
        EXPECT_EQ(unset, made);
      }
      return status;
    };
    const Three sizes = wantedSizes<F>(order, 0);
    EXPECT_EQ(sizes.initBuf > 0 ? 2 : 1, countAllocationsWithFailures(make, kvrStatusOutOfMemory)) << order;
  }
}

// Blocks of exactly their sizes at any alignment, work areas and data between guard pages, no allocation.
TYPED_TEST(FftInteger, CopiedAsBytes) {
  using F = TypeParam;
  for (int order : {0, 2, 3, 6, 12}) {
    for (int hint : {0, 2}) {
      const size_t n = size_t{1} << order;
      const Three sizes = wantedSizes<F>(order, hint);
      const size_t bytes = static_cast<size_t>(sizes.spec);
      std::vector<Kvr8u> first(bytes + 64), second(bytes + 64),
          initBuf(static_cast<size_t>(sizes.initBuf) + 1);
      const auto aligned = [](std::vector<Kvr8u>& memory) {
        return reinterpret_cast<Kvr8u*>((reinterpret_cast<uintptr_t>(memory.data()) + 63) / 64 * 64);
      };
      typename F::Spec* spec = nullptr;
      ASSERT_EQ(kvrStatusOk, F::init(&spec, order, kvrFftDivFwdByN, hint, aligned(first), initBuf.data()));
      const ptrdiff_t place = reinterpret_cast<Kvr8u*>(spec) - aligned(first);
      memcpy(aligned(second), aligned(first), bytes);
      memset(aligned(first), 0xFF, bytes);
      spec = reinterpret_cast<typename F::Spec*>(aligned(second) + place);
      const Made<F> reference(order, kvrFftDivFwdByN, hint);
      for (const auto& t : F::transforms()) {
        SCOPED_TRACE(std::string(t.name) + ", order " + std::to_string(order));
        Random random(n);
        const auto src = integers<typename F::In>(t.srcCount(n), random, true);
        std::vector<typename F::Out> want(t.dstCount(n)), got(t.dstCount(n));
        ASSERT_EQ(kvrStatusOk, t.call(src.data(), want.data(), reference.spec, order, nullptr, n));
        ASSERT_EQ(kvrStatusOk, t.call(src.data(), got.data(), spec, order, nullptr, n));
        ASSERT_EQ(want, got);
      }
    }
  }
}

TYPED_TEST(FftInteger, Memory) {
  using F = TypeParam;
  for (int order = 0; order <= 12; ++order) {
    for (int hint : {0, 2}) {
      const size_t n = size_t{1} << order;
      const Three sizes = wantedSizes<F>(order, hint);
      Arena specArena(static_cast<size_t>(sizes.spec)), initArena(static_cast<size_t>(sizes.initBuf) + 1);
      Arena srcArena(16 * n + 64), dstArena(16 * n + 64), workArena(static_cast<size_t>(sizes.work) + 1);
      const Made<F> reference(order, kvrFftDivFwdByN, hint);
      int bufSize = -1;
      ASSERT_EQ(kvrStatusOk, F::getBufSize(reference.spec, &bufSize));
      ASSERT_EQ(sizes.work, bufSize);
      for (size_t offset : {0, 1, 7, 31}) {
        const Side side = offset % 2 == 0 ? Side::back : Side::front;
        typename F::Spec* spec = nullptr;
        ASSERT_EQ(kvrStatusOk, F::init(&spec, order, kvrFftDivFwdByN, hint,
                                       specArena.place<Kvr8u>(static_cast<size_t>(sizes.spec), side, offset),
                                       initArena.place<Kvr8u>(static_cast<size_t>(sizes.initBuf), side,
                                                              (3 * offset + 1) % 32)));
        ASSERT_TRUE(specArena.intact() && initArena.intact());
        for (const auto& t : F::transforms()) {
          SCOPED_TRACE(std::string(t.name) + ", order " + std::to_string(order) + ", offset " +
                       std::to_string(offset));
          Random random(offset);
          const auto src = integers<typename F::In>(t.srcCount(n), random, true);
          std::vector<typename F::Out> want(t.dstCount(n));
          ASSERT_EQ(kvrStatusOk, t.call(src.data(), want.data(), reference.spec, order, nullptr, n));
          auto* from = srcArena.place<typename F::In>(t.srcCount(n), side, (5 * offset + 2) % 32);
          auto* to = dstArena.place<typename F::Out>(t.dstCount(n), side, offset);
          auto* buffer = workArena.place<Kvr8u>(static_cast<size_t>(sizes.work), side, (7 * offset + 3) % 32);
          memcpy(from, src.data(), src.size() * sizeof src[0]);
          const int calls = allocationCount();
          ASSERT_EQ(kvrStatusOk, t.call(from, to, spec, order, buffer, n));
          ASSERT_EQ(0, memcmp(to, want.data(), want.size() * sizeof want[0]));
          ASSERT_EQ(0, memcmp(from, src.data(), src.size() * sizeof src[0]));
          ASSERT_EQ(calls, allocationCount());
          ASSERT_TRUE(srcArena.intact() && dstArena.intact() && workArena.intact() && specArena.intact());
          if (sizes.work > 0) {
            FailingAllocator failing(1);
            ASSERT_EQ(kvrStatusOutOfMemory, t.call(from, to, spec, order, nullptr, n));
          }
        }
        EXPECT_EQ(kvrStatusOk, F::free(spec));
        EXPECT_EQ(kvrStatusContextMismatch, F::free(spec));
      }
    }
  }
}

// --- 16 bits in, 32 bits out ------------------------------------------------------------------------------------

TEST(FftInteger16s32s, ThereAndBack) {
  for (int order = 0; order <= 14; ++order) {
    const size_t n = size_t{1} << order;
    KvrsFFTSpec_R_16s32s* spec = nullptr;
    ASSERT_EQ(kvrStatusOk, kvrsFFTInitAlloc_R_16s32s(&spec, order, kvrFftDivInvByN, kvrHintNone));
    Random random(n);
    const auto src = integers<Kvr16s>(n, random, true);
    IntegerTransform<Kvr16s, Kvr32s, KvrsFFTSpec_R_16s32s> forward{"", Layout::ccs, false, nullptr, nullptr};
    const auto want = transformOf(forward, src, n);
    std::vector<Kvr32s> spectrum(n + 2, 77);
    std::vector<Kvr16s> back(n);
    for (int scaleFactor : {0, 4, -6}) {
      ASSERT_EQ(kvrStatusOk,
                kvrsFFTFwd_RToCCS_16s32s_Sfs(src.data(), spectrum.data(), spec, scaleFactor, nullptr));
      const long double factor = ldexpl(1, -scaleFactor);
      expectNear(spectrum.data(), want, factor, 4 * 0x1p-23L * 32768 * sqrtl(n) * factor);
      ASSERT_FALSE(HasFailure()) << order << ", " << scaleFactor;
    }
    ASSERT_EQ(kvrStatusOk, kvrsFFTFwd_RToCCS_16s32s_Sfs(src.data(), spectrum.data(), spec, 0, nullptr));
    EXPECT_EQ(0, spectrum[1]);
    EXPECT_EQ(0, spectrum[n == 1 ? 1 : n + 1]);
    spectrum[1] = 12345;  // not looked at
    if (n > 1) spectrum[n + 1] = -999;
    ASSERT_EQ(kvrStatusOk, kvrsFFTInv_CCSToR_32s16s_Sfs(spectrum.data(), back.data(), spec, 0, nullptr));
    for (size_t i = 0; i < n; ++i) ASSERT_NEAR(src[i], back[i], 1) << order;
    int work = -1, s, b, w;
    ASSERT_EQ(kvrStatusOk, kvrsFFTGetBufSize_R_16s32s(spec, &work));
    ASSERT_EQ(kvrStatusOk, kvrsFFTGetSize_R_32f(order, 8, 0, &s, &b, &w));
    EXPECT_EQ(w + 4 * static_cast<int>(n) + 8 + 32, work);
    int s2, b2, w2;
    ASSERT_EQ(kvrStatusOk, kvrsFFTGetSize_R_16s32s(order, 8, 0, &s2, &b2, &w2));
    EXPECT_EQ(s + 64, s2);
    EXPECT_EQ(b > 0 ? b + 32 : 0, b2);
    EXPECT_EQ(work, w2);
    {
      FailingAllocator failing(1);
      EXPECT_EQ(kvrStatusOutOfMemory,
                kvrsFFTFwd_RToCCS_16s32s_Sfs(src.data(), spectrum.data(), spec, 0, nullptr));
      EXPECT_EQ(kvrStatusOutOfMemory,
                kvrsFFTInv_CCSToR_32s16s_Sfs(spectrum.data(), back.data(), spec, 0, nullptr));
    }
    EXPECT_EQ(kvrStatusOk, kvrsFFTFree_R_16s32s(spec));
  }
}

// --- any length -------------------------------------------------------------------------------------------------

TYPED_TEST(DftInteger, Transforms) {
  using F = TypeParam;
  for (int n : {2,  3,   5,   7,   12,  15,  16,  17,   30,   32,   45,  60,
                94, 100, 101, 106, 128, 243, 480, 1000, 1009, 1024, 2187}) {
    const int flag = kFlags[n % 4];
    const Made<F> made(n, flag, kvrHintNone);
    ASSERT_NE(nullptr, made.spec);
    typename F::Inner* inner = nullptr;
    int innerSize = -1, size = -1;
    ASSERT_EQ(kvrStatusOk, F::innerAlloc(&inner, n, flag, kvrHintNone));
    ASSERT_EQ(kvrStatusOk, F::innerBufSize(inner, &innerSize));
    ASSERT_EQ(kvrStatusOk, F::innerFree(inner));
    ASSERT_EQ(kvrStatusOk, F::getBufSize(made.spec, &size));
    EXPECT_EQ(F::kForm == 2 ? 4 * n + innerSize + 40 : 8 * n + innerSize + 32, size) << n;
    for (int scaleFactor : {0, 3, -2}) {
      checkTransforms<F>(made.spec, static_cast<size_t>(n), flag, scaleFactor, false, 8 * 0x1p-23L);
      checkTransforms<F>(made.spec, static_cast<size_t>(n), flag, scaleFactor + 8, true, 8 * 0x1p-23L);
    }
    if (testing::Test::HasFailure()) return;
  }
}

TYPED_TEST(DftInteger, OnePoint) {
  using F = TypeParam;
  const Made<F> made(1, kvrFftDivBySqrtN, kvrHintNone);
  int size = -1;
  ASSERT_EQ(kvrStatusOk, F::getBufSize(made.spec, &size));
  EXPECT_EQ(0, size);
  FailingAllocator failing(1);
  for (const auto& t : F::transforms()) {
    for (int scaleFactor : {0, 1, 2, -1, -20, -32, 31, 400}) {
      std::vector<Kvr16s> src(t.srcCount(1)), dst(t.dstCount(1), 77);
      src[0] = 7;
      if (!t.real()) src[1] = -3;
      ASSERT_EQ(kvrStatusOk, t.call(src.data(), dst.data(), made.spec, scaleFactor, nullptr, 1));
      const auto want = [&](int v) {
        if (scaleFactor > 0)
          return (v + (int64_t{1} << (std::min(scaleFactor, 31) - 1))) >> std::min(scaleFactor, 31);
        if (scaleFactor <= -32) return int64_t{0};
        return std::clamp<int64_t>(static_cast<int32_t>(static_cast<uint32_t>(v) << -scaleFactor), -32768,
                                   32767);
      };
      EXPECT_EQ(want(7), dst[0]) << t.name << ", " << scaleFactor;
      if (dst.size() > 1) {
        EXPECT_EQ(t.real() ? 0 : want(-3), dst[1]) << t.name << ", " << scaleFactor;
      }
    }
  }
}

TYPED_TEST(DftInteger, InitAlloc) {
  using F = TypeParam;
  auto* const unset = reinterpret_cast<typename F::Spec*>(uintptr_t{0x1234});
  typename F::Spec* spec = unset;
  const int live = liveBlocks();
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, 0, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, 0, 0, 0));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 1, 0, 0));
  EXPECT_EQ(kvrStatusBadFftFlag, F::initAlloc(&spec, 60, 3, 0));
  EXPECT_EQ(kvrStatusBadFftOrder, F::initAlloc(&spec, 1 << 28, 1, 0));
  EXPECT_EQ(kvrStatusBadLength, F::initAlloc(&spec, INT_MAX, 1, 0));
  EXPECT_EQ(unset, spec);
  EXPECT_EQ(live, liveBlocks());
  for (int len : {1, 12, 17, 64, 101, 1000}) {
    const auto make = [&] {
      typename F::Spec* made = unset;
      const KvrStatus status = F::initAlloc(&made, len, 1, 0);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, F::free(made));
      }
      return status;
    };
    EXPECT_LT(0, countAllocationsWithFailures(make, kvrStatusOutOfMemory, 40)) << len;
  }
  const Made<F> made(101, 1, 0);
  for (const auto& t : F::transforms()) {
    std::vector<Kvr16s> src(t.srcCount(101), 1), dst(t.dstCount(101), 7);
    const auto before = dst;
    FailingAllocator failing(1);
    EXPECT_EQ(kvrStatusOutOfMemory, t.call(src.data(), dst.data(), made.spec, 0, nullptr, 101));
    EXPECT_EQ(before, dst);
  }
}

}  // namespace
