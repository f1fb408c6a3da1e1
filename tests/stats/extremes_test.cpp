// SPDX-License-Identifier: MIT
#include "kvrs/extremes.h"

#include "tests/support/floats.h"
#include "tests/support/large.h"
#include "tests/support/reduction.h"

using namespace kvrs::test;

namespace {

// Blocks that are searched are 8 KiB.
SweepOptions lengths() {
  return {.lengths = sweepLengths({1024, 2048, 4096, 8192, 16384})};
}

template <class T>
struct Extreme {
  T value;
  int index;
};
template <class T>
struct Both {
  T min, max;
  int minIndex, maxIndex;
};

template <class T>
T itself(T x) {
  return x;
}
template <class T>
T magnitude(T x) {
  const int64_t wide = x;
  return static_cast<T>(std::min<int64_t>(wide < 0 ? -wide : wide, std::numeric_limits<T>::max()));
}

// The definition: a later element takes the place of the best only if it is strictly better.
template <bool largest, class T>
Extreme<T> extreme(const T* src, int len, T (*of)(T)) {
  Extreme<T> best = {of(get(src, 0)), 0};
  for (int i = 1; i < len; ++i) {
    const T x = of(get(src, static_cast<size_t>(i)));
    if (largest ? x > best.value : x < best.value) best = {x, i};
  }
  return best;
}

// Few different values, so that extremes stand at many places, or any.
template <int kinds>
auto fewValues() {
  return [](Random& random, size_t, auto like) {
    using T = decltype(like);
    if (kinds == 0) return random.value<T>();
    return static_cast<T>(static_cast<int>(random.below(kinds)) - (T(-1) < T(0) ? kinds / 2 : 0));
  };
}

template <class T>
using Value = KvrStatus (*)(const T*, int, T*) noexcept;
template <class T>
using ValueAndIndex = KvrStatus (*)(const T*, int, T*, int*) noexcept;

template <bool largest, class T>
void checkExtreme(Value<T> value, ValueAndIndex<T> both, T (*of)(T) = itself<T>) {
  const auto judge = [=](const T* src, int len, Extreme<T> got) -> std::string {
    const Extreme<T> want = extreme<largest>(src, len, of);
    T alone{}, withoutIndex{};
    if (value(src, len, &alone) != kvrStatusOk || both(src, len, &withoutIndex, nullptr) != kvrStatusOk)
      return "status";
    if (alone != want.value || withoutIndex != want.value)
      return "value " + show(alone) + ", want " + show(want.value);
    if (got.value == want.value && got.index == want.index) return "";
    return "got " + show(got.value) + " at " + show(got.index) + ", want " + show(want.value) + " at " +
           show(want.index);
  };
  const auto call = [=](const T* src, int len, Extreme<T>* r) {
    return both(src, len, &r->value, &r->index);
  };
  sweepReductionWith<Extreme<T>, T>(call, judge, fewValues<0>(), lengths());
  sweepReductionWith<Extreme<T>, T>(call, judge, fewValues<3>(), lengths());
}

TEST(Extremes, MaxAndMin) {
  checkExtreme<true>(kvrsMax_16s, kvrsMaxIndx_16s);
  checkExtreme<true>(kvrsMax_32s, kvrsMaxIndx_32s);
  checkExtreme<true>(kvrsMax_32f, kvrsMaxIndx_32f);
  checkExtreme<true>(kvrsMax_64f, kvrsMaxIndx_64f);
  checkExtreme<false>(kvrsMin_16s, kvrsMinIndx_16s);
  checkExtreme<false>(kvrsMin_32s, kvrsMinIndx_32s);
  checkExtreme<false>(kvrsMin_32f, kvrsMinIndx_32f);
  checkExtreme<false>(kvrsMin_64f, kvrsMinIndx_64f);
}

TEST(Extremes, Magnitudes) {
  checkExtreme<true>(kvrsMaxAbs_16s, kvrsMaxAbsIndx_16s, magnitude<Kvr16s>);
  checkExtreme<true>(kvrsMaxAbs_32s, kvrsMaxAbsIndx_32s, magnitude<Kvr32s>);
  checkExtreme<false>(kvrsMinAbs_16s, kvrsMinAbsIndx_16s, magnitude<Kvr16s>);
  checkExtreme<false>(kvrsMinAbs_32s, kvrsMinAbsIndx_32s, magnitude<Kvr32s>);
}

// The two numbers of the largest magnitude tie, in both orders.
TEST(Extremes, LowestAndHighestTie) {
  const Kvr16s words[] = {5, -32768, 32767, -32768}, other[] = {5, 32767, -32768};
  const Kvr32s longs[] = {5, INT32_MIN, INT32_MAX}, lows[] = {INT32_MIN, INT32_MAX};
  Kvr16s w = 0;
  Kvr32s l = 0;
  int index = -1;
  kvrsMaxAbsIndx_16s(words, 4, &w, &index);
  EXPECT_EQ(32767, w);
  EXPECT_EQ(1, index);
  kvrsMaxAbsIndx_16s(other, 3, &w, &index);
  EXPECT_EQ(1, index);
  kvrsMaxAbsIndx_32s(longs, 3, &l, &index);
  EXPECT_EQ(INT32_MAX, l);
  EXPECT_EQ(1, index);
  kvrsMinAbsIndx_32s(lows, 2, &l, &index);
  EXPECT_EQ(INT32_MAX, l);
  EXPECT_EQ(0, index);
}

template <class T>
void checkMinMax(KvrStatus (*minMax)(const T*, int, T*, T*) noexcept,
                 KvrStatus (*withIndex)(const T*, int, T*, int*, T*, int*) noexcept) {
  const auto judge = [=](const T* src, int len, Both<T> got) -> std::string {
    const Extreme<T> min = extreme<false>(src, len, itself<T>), max = extreme<true>(src, len, itself<T>);
    T a{}, b{};
    if (minMax(src, len, &a, &b) != kvrStatusOk || a != min.value || b != max.value) return "MinMax";
    if (got.min != min.value || got.max != max.value) return "values";
    if (got.minIndex == min.index && got.maxIndex == max.index) return "";
    return "got " + show(got.minIndex) + ", " + show(got.maxIndex) + ", want " + show(min.index) + ", " +
           show(max.index);
  };
  const auto call = [=](const T* src, int len, Both<T>* r) {
    return withIndex(src, len, &r->min, &r->minIndex, &r->max, &r->maxIndex);
  };
  sweepReductionWith<Both<T>, T>(call, judge, fewValues<0>(), lengths());
  sweepReductionWith<Both<T>, T>(call, judge, fewValues<3>(), lengths());
}

TEST(Extremes, MinMax) {
  checkMinMax(kvrsMinMax_8u, kvrsMinMaxIndx_8u);
  checkMinMax(kvrsMinMax_16u, kvrsMinMaxIndx_16u);
  checkMinMax(kvrsMinMax_16s, kvrsMinMaxIndx_16s);
  checkMinMax(kvrsMinMax_32u, kvrsMinMaxIndx_32u);
  checkMinMax(kvrsMinMax_32s, kvrsMinMaxIndx_32s);
  checkMinMax(kvrsMinMax_32f, kvrsMinMaxIndx_32f);
  checkMinMax(kvrsMinMax_64f, kvrsMinMaxIndx_64f);
}

// One extreme, planted at every place, and a second one behind it.
TEST(Extremes, AreFoundEverywhere) {
  constexpr int len = 9000;
  std::vector<Kvr16s> words(len, 3);
  std::vector<Kvr32f> singles(len, 3);
  for (int i = 0; i < len; i += i < 300 || i > 3900 ? 1 : 37) {
    const int again = i + 1 + i % 97;
    const auto set = [&](int value) {
      words[i] = static_cast<Kvr16s>(value);
      singles[i] = static_cast<Kvr32f>(value);
      if (again >= len) return;
      words[again] = words[i];
      singles[again] = singles[i];
    };
    Kvr16s w = 0;
    Kvr32f s = 0;
    int atW = -1, atS = -1;
    set(7);
    kvrsMaxIndx_16s(words.data(), len, &w, &atW);
    kvrsMaxIndx_32f(singles.data(), len, &s, &atS);
    ASSERT_EQ(i, atW);
    ASSERT_EQ(i, atS);
    set(-7);
    kvrsMinIndx_16s(words.data(), len, &w, &atW);
    kvrsMinIndx_32f(singles.data(), len, &s, &atS);
    ASSERT_EQ(i, atW);
    ASSERT_EQ(i, atS);
    set(3);
  }
}

TEST(Extremes, NaNIsPassedOver) {
  const Kvr32f nan = std::numeric_limits<Kvr32f>::quiet_NaN();
  for (int len : {1, 2, 5, 40, 300, 5000}) {
    std::vector<Kvr32f> src(static_cast<size_t>(len), nan);
    Kvr32f min = 0, max = 0;
    int minIndex = -1, maxIndex = -1;
    EXPECT_EQ(kvrStatusOk, kvrsMinMaxIndx_32f(src.data(), len, &min, &minIndex, &max, &maxIndex));
    EXPECT_EQ(0, minIndex);
    EXPECT_EQ(0, maxIndex);
    EXPECT_EQ(kvrStatusOk, kvrsMaxIndx_32f(src.data(), len, &max, &maxIndex));
    EXPECT_EQ(0, maxIndex);
    for (int at = 0; at < len; at += 1 + len / 13) {
      src[at] = -2;
      kvrsMinMaxIndx_32f(src.data(), len, &min, &minIndex, &max, &maxIndex);
      EXPECT_EQ(at, minIndex);
      EXPECT_EQ(at, maxIndex);
      EXPECT_EQ(-2, min);
      EXPECT_EQ(-2, max);
      kvrsMinIndx_32f(src.data(), len, &min, &minIndex);
      EXPECT_EQ(at, minIndex);
      src[at] = nan;
    }
  }
}

TEST(Extremes, ZerosAreEqual) {
  const Kvr64f src[] = {-1, -0.0, 0.0, -0.0};
  Kvr64f max = 1;
  int index = -1;
  kvrsMaxIndx_64f(src, 4, &max, &index);
  EXPECT_EQ(1, index);
  EXPECT_TRUE(max == 0 && std::signbit(max));
}

TEST(Extremes, Infinities) {
  const Kvr32f inf = std::numeric_limits<Kvr32f>::infinity(), src[] = {-inf, -inf, -inf};
  Kvr32f max = 0;
  int index = -1;
  kvrsMaxIndx_32f(src, 3, &max, &index);
  EXPECT_EQ(-inf, max);
  EXPECT_EQ(0, index);
}

template <class T>
void checkEvery(KvrStatus (*max)(const T*, T*, int) noexcept, KvrStatus (*min)(const T*, T*, int) noexcept) {
  if (max != nullptr) sweepInPlace<T, T>(max, [](T a, T b) { return a > b ? a : b; });
  sweepInPlace<T, T>(min, [](T a, T b) { return a < b ? a : b; });
}

TEST(Extremes, Every) {
  checkEvery(kvrsMaxEvery_8u_I, kvrsMinEvery_8u_I);
  checkEvery(kvrsMaxEvery_16u_I, kvrsMinEvery_16u_I);
  checkEvery(kvrsMaxEvery_16s_I, kvrsMinEvery_16s_I);
  checkEvery(kvrsMaxEvery_32s_I, kvrsMinEvery_32s_I);
  checkEvery(kvrsMaxEvery_32f_I, kvrsMinEvery_32f_I);
  checkEvery<Kvr64f>(nullptr, kvrsMinEvery_64f_I);
  const auto larger = [](Kvr32f a, Kvr32f b) { return std::isnan(a) || std::isnan(b) || b >= a ? b : a; };
  const auto smaller = [](Kvr32f a, Kvr32f b) { return std::isnan(a) || std::isnan(b) || b <= a ? b : a; };
  sweepFloatsInPlace<Kvr32f, Kvr32f>(kvrsMaxEvery_32f_I, larger);
  sweepFloatsInPlace<Kvr32f, Kvr32f>(kvrsMinEvery_32f_I, smaller);
}

TEST(Extremes, MinEvery64fHasNoChecks) {
  Kvr64f src = 1, srcDst = 2;
  EXPECT_EQ(kvrStatusOk, kvrsMinEvery_64f_I(&src, &srcDst, 0));
  EXPECT_EQ(kvrStatusOk, kvrsMinEvery_64f_I(nullptr, nullptr, -3));
  EXPECT_EQ(2, srcDst);
}

template <class T>
int bitsOf(const T* src, int len) {
  int most = 0;
  for (int i = 0; i < len; ++i) {
    int64_t m = get(src, static_cast<size_t>(i));
    if (m < 0) m = -m;
    int bits = 0;
    for (; m != 0; m /= 2) ++bits;
    most = std::max(most, bits);
  }
  return most;
}
// frexp() gives m in [0.5, 1): m * 2^k is below 2^k and not below 2^(k-1). Subnormal numbers count as the exponent below
// the smallest normal one.
template <class T>
int exponentOf(const T* src, int len, bool* flat) {
  T most = 0;
  *flat = false;
  for (int i = 0; i < len; ++i) {
    const T x = get(src, static_cast<size_t>(i));
    if (!std::isfinite(x)) {
      *flat = true;
    } else if (std::fabs(x) > most) {
      most = std::fabs(x);
    }
  }
  if (most == 0) return 0;
  if (most < std::numeric_limits<T>::min()) return std::numeric_limits<T>::min_exponent - 1;
  int exponent;
  std::frexp(most, &exponent);
  return exponent;
}

template <class T>
void checkFloatOrder(KvrStatus (*maxOrder)(const T*, int, int*) noexcept) {
  struct Result {
    int order;
    KvrStatus status;
  };
  for (int kind = 0; kind < 3; ++kind) {
    sweepReductionWith<Result, T>(
        [=](const T* src, int len, Result* r) {
          r->status = maxOrder(src, len, &r->order);
          return kvrStatusOk;
        },
        [](const T* src, int len, Result got) -> std::string {
          bool flat;
          const int want = exponentOf(src, len, &flat);
          if (got.status != (flat ? kvrStatusMaxOrderFlat : kvrStatusOk)) return "status " + show(got.status);
          return got.order == want ? "" : "order " + show(got.order) + ", want " + show(want);
        },
        [=](Random& random, size_t, auto) {
          if (kind == 0) return anyFloat<T>(random);
          if (kind == 1) return random.below(4) == 0 ? std::numeric_limits<T>::denorm_min() : T(-0.0);
          return std::ldexp(static_cast<T>(random.unit()), static_cast<int>(random.below(100)) - 50);
        },
        {});
  }
}

TEST(MaxOrder, AllTypes) {
  sweepReduction<int, Kvr16s>(kvrsMaxOrder_16s, bitsOf<Kvr16s>);
  sweepReduction<int, Kvr32s>(kvrsMaxOrder_32s, bitsOf<Kvr32s>);
  checkFloatOrder(kvrsMaxOrder_32f);
  checkFloatOrder(kvrsMaxOrder_64f);
}

TEST(MaxOrder, Examples) {
  const auto of16 = [](Kvr16s x) {
    int order = 99;
    EXPECT_EQ(kvrStatusOk, kvrsMaxOrder_16s(&x, 1, &order));
    return order;
  };
  const auto of32 = [](Kvr32f x) {
    int order = 99;
    EXPECT_EQ(kvrStatusOk, kvrsMaxOrder_32f(&x, 1, &order));
    return order;
  };
  EXPECT_EQ(0, of16(0));
  EXPECT_EQ(1, of16(1));
  EXPECT_EQ(15, of16(32767));
  EXPECT_EQ(16, of16(-32768));
  EXPECT_EQ(1, of32(1.0f));
  EXPECT_EQ(0, of32(0.5f));
  EXPECT_EQ(2, of32(-2.0f));
  EXPECT_EQ(-1, of32(0.25f));
  EXPECT_EQ(0, of32(0.0f));
  const Kvr32f inf = std::numeric_limits<Kvr32f>::infinity(), withInf[] = {inf, 1, -0.5f},
               onlyInf[] = {inf, NAN};
  int order = 99;
  EXPECT_EQ(kvrStatusMaxOrderFlat, kvrsMaxOrder_32f(withInf, 3, &order));
  EXPECT_EQ(1, order);
  EXPECT_EQ(kvrStatusMaxOrderFlat, kvrsMaxOrder_32f(onlyInf, 2, &order));
  EXPECT_EQ(0, order);
}

}  // namespace
