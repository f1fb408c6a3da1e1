// SPDX-License-Identifier: MIT
#include "kvrs/threshold.h"

#include <cmath>
#include <vector>

#include "tests/support/floats.h"

using namespace kvrs::test;

namespace {

template <class T>
using Level = KvrStatus (*)(const T*, T*, int, T) noexcept;
template <class T>
using LevelI = KvrStatus (*)(T*, int, T) noexcept;
template <class T>
using LevelValue = KvrStatus (*)(const T*, T*, int, T, T) noexcept;
template <class T>
using LevelValueI = KvrStatus (*)(T*, int, T, T) noexcept;
template <class T>
using Relation = KvrStatus (*)(const T*, T*, int, T, KvrCmpOp) noexcept;
template <class T>
using RelationI = KvrStatus (*)(T*, int, T, KvrCmpOp) noexcept;
template <class T>
using TwoLevels = KvrStatus (*)(const T*, T*, int, T, T, T, T) noexcept;
template <class T>
using TwoLevelsI = KvrStatus (*)(T*, int, T, T, T, T) noexcept;

// The forms, for one element.
template <class T>
T greater(T x, T level) {
  return x > level ? level : x;
}
template <class T>
T less(T x, T level) {
  return x < level ? level : x;
}
template <class T>
T greaterVal(T x, T level, T value) {
  return x > level ? value : x;
}
template <class T>
T lessVal(T x, T level, T value) {
  return x < level ? value : x;
}
// In a type that holds the magnitude of the lowest integer.
template <class T>
using Wide = std::conditional_t<std::is_floating_point_v<T>, long double, int64_t>;
template <class T>
Wide<T> magnitude(T x) {
  return x < 0 ? -Wide<T>{x} : Wide<T>{x};
}
template <class T>
T signedLevel(T x, T level) {
  if constexpr (std::is_floating_point_v<T>) {
    return std::copysign(level, x);
  } else {
    return static_cast<T>(x < 0 ? -level : level);
  }
}
template <class T>
T greaterAbs(T x, T level) {
  return magnitude(x) > level ? signedLevel(x, level) : x;
}
template <class T>
T lessAbs(T x, T level) {
  return magnitude(x) < level ? signedLevel(x, level) : x;
}

// Among the elements are the level itself, its neighbours and its negative.
template <class T>
T drawAbout(Random& random, T level) {
  switch (random.below(8)) {
    case 0:
      return level;
    case 1:
      return static_cast<T>(0 - level);
    case 2:
      if constexpr (std::is_floating_point_v<T>)
        return std::nextafter(level, std::numeric_limits<T>::infinity());
      return static_cast<T>(level + 1 > level ? level + 1 : level);
    case 3:
      if constexpr (std::is_floating_point_v<T>)
        return std::nextafter(level, -std::numeric_limits<T>::infinity());
      return static_cast<T>(level - 1 < level ? level - 1 : level);
    default:
      if constexpr (std::is_floating_point_v<T>) return anyFloat<T>(random);
      return random.value<T>();
  }
}

template <class T>
bool same(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) return sameFloat(a, b);
  return a == b;
}

template <class T, class Call, class CallI, class Oracle>
void check(Call call, CallI callI, Oracle oracle, T level) {
  const auto draw = [=](Random& random, size_t, T) { return drawAbout(random, level); };
  // One level in all lengths, the others in some.
  SweepOptions options;
  if (level != T{1} && level != T(0.5)) options.lengths = {1, 2, 3, 5, 8, 15, 16, 17, 31, 33, 65};
  sweepMapWith<T, T>(call, oracle, same<T>, draw, options);
  sweepInPlaceWith<T>(callI, oracle, same<T>, draw, options);
}

template <class T>
std::vector<T> levels() {
  using L = std::numeric_limits<T>;
  if constexpr (std::is_floating_point_v<T>) {
    return {T(0), -T(0), T(0.5), T(-0.5), L::infinity(), L::quiet_NaN()};
  } else {
    return {T{0}, T{1}, T{-100}, T{1000}, L::max(), L::lowest()};
  }
}
template <class T>
std::vector<T> magnitudeLevels() {
  std::vector<T> some;
  for (T level : levels<T>())
    if (!(level < 0)) some.push_back(level);
  return some;
}

template <class T>
void checkLevel(Level<T> f, LevelI<T> fI, T (*oracle)(T, T), const std::vector<T>& levels) {
  for (T level : levels) {
    check<T>([=](const T* src, T* dst, int len) { return f(src, dst, len, level); },
             [=](T* srcDst, int len) { return fI(srcDst, len, level); },
             [=](T x) { return oracle(x, level); }, level);
  }
}

template <class T>
void checkRelation(Relation<T> f, RelationI<T> fI) {
  for (KvrCmpOp relOp : {kvrCmpLess, kvrCmpGreater}) {
    for (T level : levels<T>()) {
      check<T>([=](const T* src, T* dst, int len) { return f(src, dst, len, level, relOp); },
               [=](T* srcDst, int len) { return fI(srcDst, len, level, relOp); },
               [=](T x) { return relOp == kvrCmpGreater ? greater(x, level) : less(x, level); }, level);
    }
  }
}

template <class T>
void checkValue(LevelValue<T> f, LevelValueI<T> fI, T (*oracle)(T, T, T)) {
  for (T level : levels<T>()) {
    for (T value : {T(42), std::numeric_limits<T>::lowest()}) {
      check<T>([=](const T* src, T* dst, int len) { return f(src, dst, len, level, value); },
               [=](T* srcDst, int len) { return fI(srcDst, len, level, value); },
               [=](T x) { return oracle(x, level, value); }, level);
    }
  }
}

template <class T>
void checkTwo(TwoLevels<T> f, TwoLevelsI<T> fI) {
  struct Case {
    T levelLT, valueLT, levelGT, valueGT;
  };
  const T high = std::numeric_limits<T>::max(), low = std::numeric_limits<T>::lowest();
  // Values that would be replaced again, equal levels, all kept.
  for (const Case c : {Case{T(-5), T(7), T(5), T(-7)},
                       {T(3), low, T(3), high},
                       {low, T(1), high, T(2)},
                       {T(0), T(0), T(1), T(1)}}) {
    for (T level : {c.levelLT, c.levelGT}) {
      check<T>(
          [=](const T* src, T* dst, int len) {
            return f(src, dst, len, c.levelLT, c.valueLT, c.levelGT, c.valueGT);
          },
          [=](T* srcDst, int len) { return fI(srcDst, len, c.levelLT, c.valueLT, c.levelGT, c.valueGT); },
          [=](T x) { return x < c.levelLT   ? c.valueLT
                            : x > c.levelGT ? c.valueGT
                                            : x; }, level);
    }
  }
}

TEST(Threshold, ByRelation) {
  checkRelation<Kvr16s>(kvrsThreshold_16s, kvrsThreshold_16s_I);
  checkRelation<Kvr32f>(kvrsThreshold_32f, kvrsThreshold_32f_I);
  checkRelation<Kvr64f>(kvrsThreshold_64f, kvrsThreshold_64f_I);
}
TEST(Threshold, GT) {
  checkLevel<Kvr16s>(kvrsThreshold_GT_16s, kvrsThreshold_GT_16s_I, greater, levels<Kvr16s>());
  checkLevel<Kvr32s>(kvrsThreshold_GT_32s, kvrsThreshold_GT_32s_I, greater, levels<Kvr32s>());
  checkLevel<Kvr32f>(kvrsThreshold_GT_32f, kvrsThreshold_GT_32f_I, greater, levels<Kvr32f>());
  checkLevel<Kvr64f>(kvrsThreshold_GT_64f, kvrsThreshold_GT_64f_I, greater, levels<Kvr64f>());
}
TEST(Threshold, LT) {
  checkLevel<Kvr16s>(kvrsThreshold_LT_16s, kvrsThreshold_LT_16s_I, less, levels<Kvr16s>());
  checkLevel<Kvr32s>(kvrsThreshold_LT_32s, kvrsThreshold_LT_32s_I, less, levels<Kvr32s>());
  checkLevel<Kvr32f>(kvrsThreshold_LT_32f, kvrsThreshold_LT_32f_I, less, levels<Kvr32f>());
  checkLevel<Kvr64f>(kvrsThreshold_LT_64f, kvrsThreshold_LT_64f_I, less, levels<Kvr64f>());
}
TEST(Threshold, GTVal) {
  checkValue<Kvr16s>(kvrsThreshold_GTVal_16s, kvrsThreshold_GTVal_16s_I, greaterVal);
  checkValue<Kvr32f>(kvrsThreshold_GTVal_32f, kvrsThreshold_GTVal_32f_I, greaterVal);
  checkValue<Kvr64f>(kvrsThreshold_GTVal_64f, kvrsThreshold_GTVal_64f_I, greaterVal);
}
TEST(Threshold, LTVal) {
  checkValue<Kvr16s>(kvrsThreshold_LTVal_16s, kvrsThreshold_LTVal_16s_I, lessVal);
  checkValue<Kvr32f>(kvrsThreshold_LTVal_32f, kvrsThreshold_LTVal_32f_I, lessVal);
  checkValue<Kvr64f>(kvrsThreshold_LTVal_64f, kvrsThreshold_LTVal_64f_I, lessVal);
}
TEST(Threshold, GTAbs) {
  checkLevel<Kvr16s>(kvrsThreshold_GTAbs_16s, kvrsThreshold_GTAbs_16s_I, greaterAbs,
                     magnitudeLevels<Kvr16s>());
  checkLevel<Kvr32s>(kvrsThreshold_GTAbs_32s, kvrsThreshold_GTAbs_32s_I, greaterAbs,
                     magnitudeLevels<Kvr32s>());
  checkLevel<Kvr32f>(kvrsThreshold_GTAbs_32f, kvrsThreshold_GTAbs_32f_I, greaterAbs,
                     {0, 0.5f, INFINITY, NAN});
  checkLevel<Kvr64f>(kvrsThreshold_GTAbs_64f, kvrsThreshold_GTAbs_64f_I, greaterAbs, {0, 0.5, INFINITY, NAN});
}
TEST(Threshold, LTAbs) {
  checkLevel<Kvr16s>(kvrsThreshold_LTAbs_16s, kvrsThreshold_LTAbs_16s_I, lessAbs, magnitudeLevels<Kvr16s>());
  checkLevel<Kvr32s>(kvrsThreshold_LTAbs_32s, kvrsThreshold_LTAbs_32s_I, lessAbs, magnitudeLevels<Kvr32s>());
  checkLevel<Kvr32f>(kvrsThreshold_LTAbs_32f, kvrsThreshold_LTAbs_32f_I, lessAbs, {0, 0.5f, INFINITY, NAN});
  checkLevel<Kvr64f>(kvrsThreshold_LTAbs_64f, kvrsThreshold_LTAbs_64f_I, lessAbs, {0, 0.5, INFINITY, NAN});
}
TEST(Threshold, LTValGTVal) {
  checkTwo<Kvr16s>(kvrsThreshold_LTValGTVal_16s, kvrsThreshold_LTValGTVal_16s_I);
  checkTwo<Kvr32s>(kvrsThreshold_LTValGTVal_32s, kvrsThreshold_LTValGTVal_32s_I);
  checkTwo<Kvr32f>(kvrsThreshold_LTValGTVal_32f, kvrsThreshold_LTValGTVal_32f_I);
  checkTwo<Kvr64f>(kvrsThreshold_LTValGTVal_64f, kvrsThreshold_LTValGTVal_64f_I);
}

TEST(Threshold, LowestIntegerHasALargeMagnitude) {
  const Kvr16s lowest = -32768;
  Kvr16s got;
  kvrsThreshold_GTAbs_16s(&lowest, &got, 1, 32767);
  EXPECT_EQ(-32767, got);
  kvrsThreshold_LTAbs_16s(&lowest, &got, 1, 32767);
  EXPECT_EQ(-32768, got);
}

TEST(Threshold, SignBitOfZero) {
  const Kvr32f src[] = {0, -0.0f};
  Kvr32f got[2];
  kvrsThreshold_LTAbs_32f(src, got, 2, 2);
  EXPECT_EQ(2, got[0]);
  EXPECT_EQ(-2, got[1]);
  kvrsThreshold_LTAbs_32f(src, got, 2, 0);
  EXPECT_TRUE(sameBits(0.0f, got[0]) && sameBits(-0.0f, got[1]));
  // A zero is not beyond the zero of the other sign.
  kvrsThreshold_GT_32f(src, got, 1, -0.0f);
  EXPECT_TRUE(sameBits(0.0f, got[0]));
  kvrsThreshold_LT_32f(src + 1, got, 1, 0.0f);
  EXPECT_TRUE(sameBits(-0.0f, got[0]));
}

// NaN of the level refuses nothing, and one that is an element keeps its bits.
TEST(Threshold, NaNIsKept) {
  const uint32_t bits = 0xFFC12345;
  Kvr32f nan, got;
  memcpy(&nan, &bits, sizeof nan);
  const auto expectKept = [&](KvrStatus status) {
    EXPECT_EQ(kvrStatusOk, status);
    EXPECT_TRUE(sameBits(nan, got));
  };
  expectKept(kvrsThreshold_GT_32f(&nan, &got, 1, 1));
  expectKept(kvrsThreshold_LT_32f(&nan, &got, 1, 1));
  expectKept(kvrsThreshold_GTVal_32f(&nan, &got, 1, 1, 2));
  expectKept(kvrsThreshold_LTVal_32f(&nan, &got, 1, 1, 2));
  expectKept(kvrsThreshold_GTAbs_32f(&nan, &got, 1, 1));
  expectKept(kvrsThreshold_LTAbs_32f(&nan, &got, 1, 1));
  expectKept(kvrsThreshold_LTValGTVal_32f(&nan, &got, 1, 1, 2, 3, 4));
}

}  // namespace
