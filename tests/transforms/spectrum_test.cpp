// SPDX-License-Identifier: MIT
#include "kvrs/spectrum.h"

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
