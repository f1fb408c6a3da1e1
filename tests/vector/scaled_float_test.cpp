// SPDX-License-Identifier: MIT
#include "kvrs/arith_scaled.h"
#include "tests/vector/scaled_check.h"

using namespace kvrs::test;

namespace {

// 32-bit products in double precision: rounded to 53 bits, scaled, and rounded once more.
Kvr32s roundedTo32s(double x) {
  if (x <= -0x1p31) return std::numeric_limits<Kvr32s>::min();
  if (x >= 0x1p31 - 1) return std::numeric_limits<Kvr32s>::max();
  return static_cast<Kvr32s>(nearbyint(x));
}
double doubleScale(int n) {
  return ldexp(1.0, -std::max(n, -100));
}
Kvr32s doubleProduct(int n, Kvr32s a, Kvr32s b) {
  if (n > 62) return 0;
  const double scaled = static_cast<double>(a) * doubleScale(n);
  return roundedTo32s(scaled * static_cast<double>(b));
}

Kvr32sc doubleProductComplex(int n, Kvr32sc a, Kvr32s b) {
  return {doubleProduct(n, a.re, b), doubleProduct(n, a.im, b)};
}

TEST(ScaledMul32s, Vectors) {
  checkVectors<Kvr32s>("32s", kvrsMul_32s_Sfs, kvrsMul_32s_ISfs, doubleProduct);
  checkVectors<Kvr32sc, Kvr32s, Kvr32sc>("32s32sc", kvrsMul_32s32sc_Sfs, kvrsMul_32s32sc_ISfs,
                                         doubleProductComplex);
}

TEST(ScaledMul32s, Scalar) {
  checkScalar<Kvr32s>("32s", kvrsMulC_32s_Sfs, kvrsMulC_32s_ISfs, doubleProduct);
}

TEST(ScaledAddProduct, InDoublePrecision) {
  const auto call = [](const Kvr32s* a, const Kvr32s* b, const Kvr32s* before, Kvr32s* srcDst, int len,
                       int n) {
    memcpy(srcDst, before, static_cast<size_t>(len) * sizeof *srcDst);
    return kvrsAddProduct_32s_Sfs(a, b, srcDst, len, n);
  };
  const auto oracle = [](int n, Kvr32s a, Kvr32s b, Kvr32s c) {
    if (n > 62) return 0;
    if (n <= -31) {
      const int64_t sum = int64_t{a} * b + c;
      return sum > 0 ? std::numeric_limits<Kvr32s>::max() : sum < 0 ? std::numeric_limits<Kvr32s>::min() : 0;
    }
    const double product = static_cast<double>(a) * static_cast<double>(b);
    return roundedTo32s((product + static_cast<double>(c)) * doubleScale(n));
  };
  checkScaled(ScaledCase<Kvr32s, Kvr32s, Kvr32s, Kvr32s>{
      .name = "32s", .call = call, .oracle = oracle, .copiesFirst = true});
}

// The last bit of this product is lost in 53 bits, which makes a tie of what lies above one.
TEST(ScaledMul32s, RoundsTo53BitsFirst) {
  int found = 0;
  for (int64_t a = 0x7FFFFF01; found < 20; a -= 2) {
    // b = (2^32 + 1) / a modulo 2^33, by Newton's iteration for the inverse.
    uint64_t inverse = static_cast<uint64_t>(a);
    for (int i = 0; i < 6; ++i) inverse *= 2 - static_cast<uint64_t>(a) * inverse;
    const int64_t b = static_cast<int64_t>((inverse * 0x100000001u) & 0x1FFFFFFFF);
    const int64_t r = a * (b & 0x7FFFFFFF);
    if (b >= (int64_t{1} << 31) || r < (int64_t{1} << 55) || ((r >> 33) & 1) != 0) continue;
    ++found;
    const Kvr32s x = static_cast<Kvr32s>(a), y = static_cast<Kvr32s>(b);
    Kvr32s dst = 0;
    ASSERT_EQ(kvrStatusOk, kvrsMul_32s_Sfs(&x, &y, &dst, 1, 33));
    EXPECT_EQ(r >> 33, dst) << "the tie goes to even";
    EXPECT_EQ((r >> 33) + 1, scaledTo<Kvr32s>(static_cast<long double>(r), 33)) << "and the exact product up";
    ASSERT_EQ(kvrStatusOk, kvrsMulC_32s_Sfs(&x, y, &dst, 1, 33));
    EXPECT_EQ(r >> 33, dst);
  }
}

Kvr32s lowProduct(int n, Kvr32s a, Kvr32s b) {
  const int64_t r = int64_t{a} * b;
  if (n > 62) return 0;
  if (n < -31)
    return r > 0 ? std::numeric_limits<Kvr32s>::max() : r < 0 ? std::numeric_limits<Kvr32s>::min() : 0;
  if (n <= 0) return static_cast<Kvr32s>(static_cast<uint32_t>(r) << -n);
  if (n <= 31) return static_cast<Kvr32s>(static_cast<uint32_t>(static_cast<uint64_t>(r) >> n));
  return static_cast<Kvr32s>(r >> 32) >> (n - 32);
}

TEST(ScaledMulLow, Vectors) {
  checkScaled(ScaledCase<Kvr32s, Kvr32s, Kvr32s>{
      "Low_32s", kvrsMul_Low_32s_Sfs, lowProduct, {0, 5, -2, 40, -40, 70}});
}

// Sources anywhere in the same memory: elements are computed one after the other.
TEST(ScaledMulLow, SourcesOverlapInAnyWay) {
  Random random(5);
  std::vector<Kvr32s> fresh(700);
  for (Kvr32s& x : fresh) x = random.value<Kvr32s>();
  for (int scaleFactor : {0, -3, 7, 33, -40}) {
    for (ptrdiff_t by1 : {0, 4, -4, 20, -20, 2, -2, 256, -256, 600, -600}) {
      for (ptrdiff_t by2 : {0, 12, -8, 400, -160}) {
        for (int len : {1, 2, 3, 8, 17, 33, 64, 100, 200}) {
          auto want = fresh, got = fresh;
          const auto at = [](std::vector<Kvr32s>& v, ptrdiff_t by) {
            return reinterpret_cast<Kvr32s*>(reinterpret_cast<uint8_t*>(v.data() + 250) + by);
          };
          for (size_t i = 0; i < static_cast<size_t>(len); ++i) {
            put(at(want, 0), i, lowProduct(scaleFactor, get(at(want, by1), i), get(at(want, by2), i)));
          }
          ASSERT_EQ(kvrStatusOk,
                    kvrsMul_Low_32s_Sfs(at(got, by1), at(got, by2), at(got, 0), len, scaleFactor));
          ASSERT_TRUE(want == got) << "sources " << by1 << " and " << by2 << " bytes behind dst, len " << len
                                   << ", scale factor " << scaleFactor;
        }
      }
    }
  }
}

TEST(ScaledMulLow, DoesNotRoundNorSaturate) {
  const Kvr32s a[] = {3, -3, 0x10000, 0x7FFFFFFF, 0x7FFFFFFF}, b[] = {1, 1, 0x10000, 2, 0x7FFFFFFF};
  Kvr32s dst[5];
  ASSERT_EQ(kvrStatusOk, kvrsMul_Low_32s_Sfs(a, b, dst, 5, 1));
  EXPECT_EQ(1, dst[0]) << "1.5 would round to 2";
  EXPECT_EQ(-2, dst[1]);
  EXPECT_EQ(std::numeric_limits<Kvr32s>::min(), dst[2]) << "the 32 bits from bit 1 on";
  ASSERT_EQ(kvrStatusOk, kvrsMul_Low_32s_Sfs(a, b, dst, 5, 0));
  EXPECT_EQ(0, dst[2]) << "only the low 32 bits";
  EXPECT_EQ(-2, dst[3]);
  ASSERT_EQ(kvrStatusOk, kvrsMul_Low_32s_Sfs(a, b, dst, 5, 32));
  EXPECT_EQ(0x3FFFFFFF, dst[4]);
  EXPECT_EQ(-1, dst[1]);
}

Kvr16s to16s(float x) {
  if (std::isnan(x)) return std::signbit(x) ? -32768 : 32767;
  const float rounded = nearbyintf(x);
  return rounded <= -32768.0f ? -32768 : rounded >= 32767.0f ? 32767 : static_cast<Kvr16s>(rounded);
}

TEST(ScaledMulFloat, Low32f16s) {
  for (float val : {1.0f, -0.5f, 3.25f, 1e4f, 1e-3f}) {
    ScaledCase<Kvr16s, Kvr32f> c{
        "Low_32f16s",
        [=](const Kvr32f* src, Kvr16s* dst, int len, int) { return kvrsMulC_Low_32f16s(src, val, dst, len); },
        [=](int, Kvr32f a) { return to16s(a * val); },
        {0}};
    c.followsRounding = true;
    checkScaled(c);
  }
}

TEST(ScaledMulFloat, Scaled32f16s) {
  for (float val : {1.0f, -0.5f, 3.25f, 1e4f, 1e38f, 1e-38f}) {
    checkScaled(ScaledCase<Kvr16s, Kvr32f>{"32f16s",
                                           [=](const Kvr32f* src, Kvr16s* dst, int len, int n) {
                                             return kvrsMulC_32f16s_Sfs(src, val, dst, len, n);
                                           },
                                           [=](int n, Kvr32f a) {
                                             const int exponent = n >= 127 ? -127 : n <= -126 ? 126 : -n;
                                             const float scaled = val * ldexpf(1.0f, exponent);
                                             return to16s(a * scaled);
                                           },
                                           {0, -14, 3}});
  }
}

TEST(ScaledMulFloat, ByNaN) {
  constexpr int len = 67;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  Kvr32f src[len];
  for (int i = 0; i < len; ++i) src[i] = i % 3 == 0 ? nan : i % 3 == 1 ? -nan : static_cast<float>(i);
  for (float val : {nan, -nan}) {
    for (const bool isScaled : {false, true}) {
      Kvr16s dst[len] = {};
      ASSERT_EQ(kvrStatusOk, isScaled ? kvrsMulC_32f16s_Sfs(src, val, dst, len, 2)
                                      : kvrsMulC_Low_32f16s(src, val, dst, len));
      for (int i = 0; i < len; ++i) EXPECT_EQ(to16s(val), dst[i]) << i;
    }
  }
}

// The 64-bit forms: each step in extended precision.
Kvr64s to64s(long double x) {
  return scaledTo<Kvr64s>(x, 0);
}
long double extendedScale(int n) {
  return scalbnl(1.0L, -std::max(-10000, std::min(10000, n)));
}

template <class T>
void checkExtended(const char* name, KvrStatus (*f)(T, Kvr64s*, int, int) noexcept,
                   const std::vector<T>& vals, std::function<Kvr64s(int, Kvr64s, T)> oracle) {
  for (T val : vals) {
    ScaledCase<Kvr64s, Kvr64s> c{std::string(name) + " by " + show(val),
                                 [=](const Kvr64s* before, Kvr64s* srcDst, int len, int n) {
                                   memcpy(srcDst, before, static_cast<size_t>(len) * sizeof *srcDst);
                                   return f(val, srcDst, len, n);
                                 },
                                 [=](int n, Kvr64s a) { return oracle(n, a, val); },
                                 {0, 5, -3}};
    c.copiesFirst = true;
    checkValues(c, {INT_MIN, -2000, -1138, -70, -64, -63, -62, -33, -8, -2, -1, 0,   1,    2,    3,      7,
                    15,      16,    31,    32,  33,  52,  53,  62,  63, 64, 65, 130, 1000, 1200, INT_MAX});
    if (sameBits(val, vals.back())) checkSweep(c);
    if (testing::Test::HasFatalFailure()) return;
  }
}

std::vector<Kvr64s> integers() {
  auto vals = extremes<Kvr64s>();
  vals.insert(vals.end(), {-7, 10, 0x123456789ABCDEF, 3037000500});
  return vals;
}

TEST(ScaledExtended, MulBy64s) {
  checkExtended<Kvr64s>("64s", kvrsMulC_64s_ISfs, integers(), [](int n, Kvr64s a, Kvr64s val) {
    const long double scaled = static_cast<long double>(val) * extendedScale(n);
    return to64s(static_cast<long double>(a) * scaled);
  });
}

TEST(ScaledExtended, MulBy64f) {
  checkExtended<Kvr64f>("64f64s", kvrsMulC_64f64s_ISfs,
                        {0.0, -0.0, 0.5, 1.0, -1.5, 1e300, -1e-300, 0x1p-1074, 0x1.fffffffffffffp1023, 3.3},
                        [](int n, Kvr64s a, Kvr64f val) {
                          const long double scaled = static_cast<long double>(val) * extendedScale(n);
                          return to64s(static_cast<long double>(a) * scaled);
                        });
}

// Without rounding the kernel tells from the element alone whether its product fits.
TEST(ScaledExtended, IntegerProductsAtTheirBounds) {
  auto vals = integers();
  vals.insert(vals.end(), {5, -5, 1000000007, -1000000007, Kvr64s{1} << 62, -(Kvr64s{1} << 62)});
  for (Kvr64s val : vals) {
    for (int n : {0, -1, -7, -31, -61, -62, -63, -64, -65, INT_MIN}) {
      const long double scaled = static_cast<long double>(val) * scalbnl(1.0L, -std::max(n, -2000));
      const long double bound = val == 0 ? 0x1p62L : truncl(0x1p63L / fabsl(scaled));
      std::vector<Kvr64s> srcDst;
      for (int beside = -2; beside <= 2; ++beside) {
        srcDst.push_back(to64s(bound + static_cast<long double>(beside)));
        srcDst.push_back(to64s(-bound + static_cast<long double>(beside)));
      }
      const auto before = srcDst;
      ASSERT_EQ(kvrStatusOk, kvrsMulC_64s_ISfs(val, srcDst.data(), static_cast<int>(srcDst.size()), n));
      for (size_t i = 0; i < before.size(); ++i) {
        ASSERT_EQ(to64s(static_cast<long double>(before[i]) * scaled), srcDst[i])
            << before[i] << " by " << val << ", scale factor " << n;
      }
    }
  }
}

TEST(ScaledExtended, DivBy64s) {
  auto vals = integers();
  vals.erase(std::find(vals.begin(), vals.end(), 0));
  checkExtended<Kvr64s>("64s", kvrsDivC_64s_ISfs, vals, [](int n, Kvr64s a, Kvr64s val) {
    const long double scaled = static_cast<long double>(a) * extendedScale(n);
    return to64s(scaled / static_cast<long double>(val));
  });
}

TEST(ScaledExtended, DivisionByZero) {
  for (int n : {0, 5, -5, 100, INT_MIN}) {
    for (int len = 1; len <= 20; ++len) {
      std::vector<Kvr64s> srcDst(static_cast<size_t>(len) + 1);
      for (int i = 0; i <= len; ++i) srcDst[i] = i % 3 == 0 ? 0 : i % 3 == 1 ? 1000 + i : -i;
      const Kvr64s behind = srcDst[len];
      ASSERT_EQ(kvrStatusDivByZeroWarn, kvrsDivC_64s_ISfs(0, srcDst.data(), len, n));
      for (int i = 0; i < len; ++i) {
        ASSERT_EQ(i % 3 == 0 ? 0 : i % 3 == 1 ? INT64_MAX : INT64_MIN, srcDst[i]) << i;
      }
      ASSERT_EQ(behind, srcDst[len]);
    }
  }
}

// A length is refused only if it is 0.
TEST(ScaledExtended, NegativeLengthIsNoError) {
  Kvr64s srcDst[2] = {5, 6};
  for (int len : {-1, -2, INT_MIN}) {
    EXPECT_EQ(kvrStatusOk, kvrsMulC_64s_ISfs(3, srcDst, len, 0));
    EXPECT_EQ(kvrStatusOk, kvrsMulC_64f64s_ISfs(3, srcDst, len, 0));
    EXPECT_EQ(kvrStatusOk, kvrsDivC_64s_ISfs(3, srcDst, len, 0));
    EXPECT_EQ(kvrStatusDivByZeroWarn, kvrsDivC_64s_ISfs(0, srcDst, len, 0));
  }
  EXPECT_EQ(kvrStatusBadLength, kvrsMulC_64s_ISfs(3, srcDst, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsMulC_64f64s_ISfs(3, srcDst, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsDivC_64s_ISfs(0, srcDst, 0, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsMulC_64s_ISfs(3, nullptr, 0, 0));
  EXPECT_EQ(5, srcDst[0]);
  EXPECT_EQ(6, srcDst[1]);
}

}  // namespace
