// SPDX-License-Identifier: MIT
#include "kvrs/spectrum.h"

#include <algorithm>

#include "tests/support/floats.h"

using namespace kvrs::test;

namespace {

template <class T>
using Product = KvrStatus (*)(const T*, const T*, T*, int) noexcept;
template <class T>
using ProductI = KvrStatus (*)(const T*, T*, int) noexcept;

enum class Format { pack, perm };

// a * b, or a * conj(b), of spectra that are stored in `format`.
template <class T>
std::vector<T> multiply(const std::vector<T>& a, const std::vector<T>& b, Format format, bool conjugate) {
  const size_t n = a.size();
  std::vector<T> c(n);
  c[0] = a[0] * b[0];
  size_t pairs = 1;
  if (n % 2 == 0) {
    const size_t nyquist = format == Format::pack ? n - 1 : 1;
    c[nyquist] = a[nyquist] * b[nyquist];
    if (format == Format::perm) pairs = 2;
  }
  const size_t pairsEnd = format == Format::pack && n % 2 == 0 ? n - 1 : n;
  for (size_t i = pairs; i < pairsEnd; i += 2) {
    if (conjugate) {
      c[i] = a[i] * b[i] + a[i + 1] * b[i + 1];
      c[i + 1] = a[i + 1] * b[i] - a[i] * b[i + 1];
    } else {
      c[i] = a[i] * b[i] - a[i + 1] * b[i + 1];
      c[i + 1] = a[i] * b[i + 1] + a[i + 1] * b[i];
    }
  }
  return c;
}

// `call` gets two sources and the destination, which is one of them for a form in place.
template <class T, class Call>
void sweepProduct(Call call, Format format, bool conjugate, bool inPlace) {
  Random random(3);
  Arena first(16384), second(16384), result(16384);
  for (int len : sweepLengths({128, 256, 512, 1024})) {
    const size_t n = static_cast<size_t>(len);
    for (size_t offset = 0; offset < 32; offset += len <= 70 ? 1 : 5) {
      for (Side side : {Side::front, Side::back}) {
        SCOPED_TRACE("len " + std::to_string(len) + ", offset " + std::to_string(offset));
        std::vector<T> a(n), b(n);
        for (T& x : a) x = anyFloat<T>(random);
        for (T& x : b) x = anyFloat<T>(random);
        T* src1 = first.place<T>(n, side, (3 * offset + 5) % 32);
        T* src2 = second.place<T>(n, side, offset);
        T* dst = inPlace ? src2 : result.place<T>(n, side, (7 * offset + 2) % 32);
        memcpy(src1, a.data(), n * sizeof(T));
        memcpy(src2, b.data(), n * sizeof(T));
        ASSERT_EQ(kvrStatusOk, call(src1, src2, dst, len));
        const std::vector<T> want = multiply(a, b, format, conjugate);
        for (size_t i = 0; i < n; ++i) {
          ASSERT_TRUE(sameFloat(get(dst, i), want[i]))
              << i << ": got " << get(dst, i) << ", want " << want[i];
        }
        ASSERT_EQ(0, memcmp(src1, a.data(), n * sizeof(T)));
        if (!inPlace) {
          ASSERT_EQ(0, memcmp(src2, b.data(), n * sizeof(T)));
          ASSERT_TRUE(result.intact());
        }
        ASSERT_TRUE(first.intact() && second.intact());
      }
    }
  }
}

template <class T>
void checkProduct(Product<T> f, Format format) {
  sweepProduct<T>(f, format, false, false);
  Arena arena(64);
  T* dst = arena.place<T>(4);
  const T src[4] = {};
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, src, dst, 4));
  EXPECT_EQ(kvrStatusNullPointer, f(src, nullptr, dst, 3));
  EXPECT_EQ(kvrStatusNullPointer, f(src, src, nullptr, 4));
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, src, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, src, dst, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, src, dst, -1));
  EXPECT_EQ(kvrStatusBadLength, f(src, src, dst, -2));
  EXPECT_TRUE(arena.untouched());
}

template <class T>
void checkProductInPlace(ProductI<T> f, Format format, bool conjugate = false) {
  sweepProduct<T>([f](const T* src, const T*, T* srcDst, int len) { return f(src, srcDst, len); }, format,
                  conjugate, true);
  Arena arena(64);
  T* srcDst = arena.place<T>(4);
  const T src[4] = {};
  EXPECT_EQ(kvrStatusNullPointer, f(nullptr, srcDst, 4));
  EXPECT_EQ(kvrStatusNullPointer, f(src, nullptr, 3));
  EXPECT_EQ(kvrStatusNullPointer, f(src, nullptr, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, srcDst, 0));
  EXPECT_EQ(kvrStatusBadLength, f(src, srcDst, -1));
  EXPECT_EQ(kvrStatusBadLength, f(src, srcDst, -2));
  EXPECT_TRUE(arena.untouched());
}

TEST(Spectrum, MulPack) {
  checkProduct(kvrsMulPack_32f, Format::pack);
  checkProduct(kvrsMulPack_64f, Format::pack);
  checkProductInPlace(kvrsMulPack_32f_I, Format::pack);
  checkProductInPlace(kvrsMulPack_64f_I, Format::pack);
}

TEST(Spectrum, MulPerm) {
  checkProduct(kvrsMulPerm_32f, Format::perm);
  checkProduct(kvrsMulPerm_64f, Format::perm);
  checkProductInPlace(kvrsMulPerm_32f_I, Format::perm);
  checkProductInPlace(kvrsMulPerm_64f_I, Format::perm);
}

TEST(Spectrum, MulPackConj) {
  checkProductInPlace(kvrsMulPackConj_32f_I, Format::pack, true);
  checkProductInPlace(kvrsMulPackConj_64f_I, Format::pack, true);
}

// What a scale factor leaves of an exact integer result.
Kvr16s shifted(int64_t r, int scaleFactor) {
  const auto saturated = [](int64_t v) { return std::clamp<int64_t>(v, -32768, 32767); };
  if (scaleFactor >= 0) return static_cast<Kvr16s>(saturated(r >> std::min(scaleFactor, 63)));
  r = saturated(r);
  for (int i = 0; i < std::min(-scaleFactor, 40); ++i) r = saturated(2 * r);
  return static_cast<Kvr16s>(r);
}

std::vector<Kvr16s> multiply16(const std::vector<Kvr16s>& a, const std::vector<Kvr16s>& b, Format format,
                               int scaleFactor) {
  const size_t n = a.size();
  std::vector<Kvr16s> c(n);
  const auto real = [&](size_t i) { c[i] = shifted(int64_t{a[i]} * b[i], scaleFactor); };
  real(0);
  const bool perm = format == Format::perm && n % 2 == 0;
  if (n % 2 == 0) real(perm ? 1 : n - 1);
  for (size_t i = perm ? 2 : 1; i + 1 < n; i += 2) {
    if (i + 1 == n - 1 && n % 2 == 0 && !perm) break;
    c[i] = shifted(int64_t{a[i]} * b[i] - int64_t{a[i + 1]} * b[i + 1], scaleFactor);
    c[i + 1] = shifted(int64_t{a[i]} * b[i + 1] + int64_t{a[i + 1]} * b[i], scaleFactor);
  }
  return c;
}

constexpr int kScaleFactors[] = {0,  1,  2,  5,   14,  15,  16,  17,  30,  31,  32,        33,
                                 64, -1, -2, -14, -15, -16, -17, -31, -32, -64, INT32_MAX, INT32_MIN};

template <class F, class FI>
void checkScaledProduct(F f, FI inPlace, Format format) {
  Random random(11);
  Arena first(1024), second(1024), result(1024);
  int turn = 0;
  for (int len :
       {1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 15, 16, 17, 18, 31, 32, 33, 34, 63, 64, 65, 66, 129, 130, 201, 256}) {
    for (int scaleFactor : kScaleFactors) {
      SCOPED_TRACE("len " + std::to_string(len) + ", scaleFactor " + std::to_string(scaleFactor));
      const size_t n = static_cast<size_t>(len), offset = static_cast<size_t>(++turn % 32);
      const Side side = turn % 3 == 0 ? Side::front : Side::back;
      std::vector<Kvr16s> a(n), b(n);
      for (Kvr16s& x : a) x = random.value<Kvr16s>();
      for (Kvr16s& x : b) x = random.value<Kvr16s>();
      if (turn % 4 == 0 && n > 3) std::fill_n(a.begin(), 4, -32768), std::fill_n(b.begin(), 4, -32768);
      const auto want = multiply16(a, b, format, scaleFactor);
      Kvr16s* src1 = first.place<Kvr16s>(n, side, (3 * offset + 1) % 32);
      Kvr16s* src2 = second.place<Kvr16s>(n, side, offset);
      Kvr16s* dst = result.place<Kvr16s>(n, side, (5 * offset + 2) % 32);
      memcpy(src1, a.data(), 2 * n);
      memcpy(src2, b.data(), 2 * n);
      ASSERT_EQ(kvrStatusOk, f(src1, src2, dst, len, scaleFactor));
      for (size_t i = 0; i < n; ++i) ASSERT_EQ(want[i], get(dst, i)) << i;
      ASSERT_EQ(0, memcmp(src1, a.data(), 2 * n) | memcmp(src2, b.data(), 2 * n));
      ASSERT_EQ(kvrStatusOk, inPlace(src1, src2, len, scaleFactor));
      ASSERT_EQ(0, memcmp(src2, want.data(), 2 * n)) << "in place";
      ASSERT_TRUE(first.intact() && second.intact() && result.intact());
    }
  }
}

TEST(Spectrum, ScaledProducts) {
  checkScaledProduct(kvrsMulPack_16s_Sfs, kvrsMulPack_16s_ISfs, Format::pack);
  checkScaledProduct(kvrsMulPerm_16s_Sfs, kvrsMulPerm_16s_ISfs, Format::perm);
}

// No rounding, unlike other scaled products; the one sum that 32 bits do not hold.
TEST(Spectrum, ScaledProductsByHand) {
  const Kvr16s a[3] = {3, -32768, -32768}, b[3] = {-1, -32768, -32768};
  Kvr16s dst[3];
  ASSERT_EQ(kvrStatusOk, kvrsMulPack_16s_Sfs(a, b, dst, 3, 1));
  EXPECT_EQ(-2, dst[0]);
  EXPECT_EQ(0, dst[1]);
  EXPECT_EQ(32767, dst[2]);
  ASSERT_EQ(kvrStatusOk, kvrsMulPerm_16s_Sfs(a, b, dst, 3, 17));
  EXPECT_EQ(-1, dst[0]);
  EXPECT_EQ(16384, dst[2]);
}

enum class Packed { pack, perm, ccs };

// Where the real part of X[k] stands among `n` packed numbers.
size_t packedAt(Packed format, size_t k, size_t n) {
  if (format == Packed::ccs) return 2 * k;
  if (k == 0) return 0;
  if (format == Packed::perm && n % 2 == 0) return 2 * k == n ? 1 : 2 * k;
  return 2 * k - 1;
}

template <class Part, class C, class F, class FI>
void checkWhole(F f, FI inPlace, Packed format) {
  Random random(7);
  Arena packed(65536), whole(65536);
  std::vector<int> lengths = sweepLengths();
  for (int len : {171, 172, 173, 511, 512, 1000, 1001}) lengths.push_back(len);
  for (int len : lengths) {
    if (len > 2000) continue;
    const size_t n = static_cast<size_t>(len);
    const size_t stored = format == Packed::ccs ? n + 2 - n % 2 : n;
    for (size_t offset : {0, 1, 6, 15, 31}) {
      SCOPED_TRACE("len " + std::to_string(len) + ", offset " + std::to_string(offset));
      std::vector<Part> x(stored);
      for (Part& v : x) v = random.value<Part>();
      std::vector<Part> want(2 * n);
      const auto negative = [](Part v) {
        return static_cast<Part>(std::is_integral_v<Part> && v == std::numeric_limits<Part>::min() ? -(v + 1)
                                                                                                   : -v);
      };
      for (size_t k = 0; 2 * k <= n; ++k) {
        const size_t at = packedAt(format, k, n);
        const bool real = k == 0 || 2 * k == n;
        const Part im = real ? Part(0) : x[at + 1];
        want[2 * k] = x[at];
        want[2 * k + 1] = im;
        if (real) continue;
        want[2 * (n - k)] = x[at];
        want[2 * (n - k) + 1] = negative(im);
      }
      const Side side = offset % 2 == 0 ? Side::front : Side::back;
      Part* src = packed.place<Part>(stored, side, offset);
      C* dst = whole.place<C>(n, side, (3 * offset + 1) % 32);
      memcpy(src, x.data(), stored * sizeof(Part));
      ASSERT_EQ(kvrStatusOk, f(src, dst, len));
      ASSERT_EQ(0, memcmp(dst, want.data(), n * sizeof(C)));
      ASSERT_EQ(0, memcmp(src, x.data(), stored * sizeof(Part)));
      ASSERT_TRUE(packed.intact() && whole.intact());
      // `len` complex numbers hold more than the packed ones, but for one point.
      C* srcDst = whole.place<C>(std::max(n, (stored + 1) / 2), side, offset);
      memcpy(srcDst, x.data(), stored * sizeof(Part));
      ASSERT_EQ(kvrStatusOk, inPlace(srcDst, len));
      ASSERT_EQ(0, memcmp(srcDst, want.data(), n * sizeof(C))) << "in place";
      ASSERT_TRUE(whole.intact());
    }
  }
}

TEST(Spectrum, ConjPack) {
  checkWhole<Kvr32f, Kvr32fc>(kvrsConjPack_32fc, kvrsConjPack_32fc_I, Packed::pack);
  checkWhole<Kvr64f, Kvr64fc>(kvrsConjPack_64fc, kvrsConjPack_64fc_I, Packed::pack);
  checkWhole<Kvr16s, Kvr16sc>(kvrsConjPack_16sc, kvrsConjPack_16sc_I, Packed::pack);
}

TEST(Spectrum, ConjPerm) {
  checkWhole<Kvr32f, Kvr32fc>(kvrsConjPerm_32fc, kvrsConjPerm_32fc_I, Packed::perm);
  checkWhole<Kvr64f, Kvr64fc>(kvrsConjPerm_64fc, kvrsConjPerm_64fc_I, Packed::perm);
  checkWhole<Kvr16s, Kvr16sc>(kvrsConjPerm_16sc, kvrsConjPerm_16sc_I, Packed::perm);
}

TEST(Spectrum, ConjCcs) {
  checkWhole<Kvr32f, Kvr32fc>(kvrsConjCcs_32fc, kvrsConjCcs_32fc_I, Packed::ccs);
  checkWhole<Kvr64f, Kvr64fc>(kvrsConjCcs_64fc, kvrsConjCcs_64fc_I, Packed::ccs);
  checkWhole<Kvr16s, Kvr16sc>(kvrsConjCcs_16sc, kvrsConjCcs_16sc_I, Packed::ccs);
}

// The layouts by hand: X[0] = 2, X[1] = 3 + 4i, X[2] = 5 and, for an odd length, no X[N/2].
TEST(Spectrum, LayoutsByHand) {
  const Kvr32f pack[4] = {2, 3, 4, 5}, perm[4] = {2, 5, 3, 4}, odd[3] = {2, 3, 4};
  const Kvr32f i[4] = {1, 0, 1, 1};  // Pack of 1, i, 1
  Kvr32f dst[4];
  ASSERT_EQ(kvrStatusOk, kvrsMulPack_32f(pack, i, dst, 4));
  EXPECT_EQ(std::vector<Kvr32f>({2, -4, 3, 5}), std::vector<Kvr32f>(dst, dst + 4));
  const Kvr32f iPerm[4] = {1, 1, 0, 1};
  ASSERT_EQ(kvrStatusOk, kvrsMulPerm_32f(perm, iPerm, dst, 4));
  EXPECT_EQ(std::vector<Kvr32f>({2, 5, -4, 3}), std::vector<Kvr32f>(dst, dst + 4));
  ASSERT_EQ(kvrStatusOk, kvrsMulPerm_32f(odd, i, dst, 3));
  EXPECT_EQ(std::vector<Kvr32f>({2, -4, 3}), std::vector<Kvr32f>(dst, dst + 3));
  // i * conj(3 + 4i) = 4 + 3i, while (3 + 4i) * conj(i) = 4 - 3i.
  memcpy(dst, pack, sizeof pack);
  ASSERT_EQ(kvrStatusOk, kvrsMulPackConj_32f_I(i, dst, 4));
  EXPECT_EQ(std::vector<Kvr32f>({2, 4, 3, 5}), std::vector<Kvr32f>(dst, dst + 4));
}

}  // namespace
