// How functions with a scale factor are tested: every scale factor on extreme and random operands, the
// caller's rounding modes and control words, then the standard sweep.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_VECTOR_SCALED_CHECK_H
#define KVRS_TESTS_VECTOR_SCALED_CHECK_H

#include <fpu_control.h>
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cfenv>
#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "tests/support/sweep.h"

namespace kvrs::test {

// r * 2^(-scaleFactor), rounded to nearest with ties to even and saturated: exact for |r| up to 2^64, the
// mantissa of extended precision.
template <class D>
D scaledTo(long double r, int scaleFactor) {
  const int shift = -std::max(-10000, std::min(10000, scaleFactor));
  const long double rounded = rintl(scalbnl(r, shift));
  const long double lowest = static_cast<long double>(std::numeric_limits<D>::lowest());
  const long double highest = static_cast<long double>(std::numeric_limits<D>::max());
  if (rounded <= lowest) return std::numeric_limits<D>::lowest();
  if (rounded >= highest) return std::numeric_limits<D>::max();
  return static_cast<D>(rounded);
}

// Values at the ends and in the middle of a type, and for complex types all pairs of some.
template <class T>
std::vector<T> extremes() {
  if constexpr (std::is_integral_v<T>) {
    const T low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
    const T half = static_cast<T>(T{1} << (std::numeric_limits<T>::digits / 2));
    return {low,
            static_cast<T>(low + 1),
            static_cast<T>(-1),
            T{0},
            T{1},
            T{2},
            T{3},
            half,
            static_cast<T>(half - 1),
            static_cast<T>(high / 2 + 1),
            static_cast<T>(high - 1),
            high};
  } else if constexpr (std::is_floating_point_v<T>) {
    return {T(0),       T(-0.0),    T(0.5),      T(1),   T(1.5),  T(-2.5),
            T(32766.5), T(32767.5), T(-32768.5), T(3e9), T(-3e9), T(1e30)};
  } else {
    using Part = decltype(T{}.re);
    const Part low = std::numeric_limits<Part>::min(), high = std::numeric_limits<Part>::max();
    std::vector<T> values;
    for (Part re : {low, Part{-1}, Part{0}, Part{1}, high}) {
      for (Part im : {low, Part{0}, Part{1}, high}) values.push_back({re, im});
    }
    return values;
  }
}

// Control word and exception masks of both floating-point units, without the flags.
struct ControlWords {
  unsigned vector = _mm_getcsr() & ~0x3Fu;
  fpu_control_t extended = [] {
    fpu_control_t word;
    _FPU_GETCW(word);
    return word;
  }();
  bool operator==(const ControlWords&) const = default;
};

inline std::vector<int> allScaleFactors() {
  std::vector<int> all;
  for (int n = -70; n <= 70; ++n) all.push_back(n);
  all.insert(all.end(), {INT_MIN, INT_MIN + 1, -1000000, -129, -128, -127, 126, 127, 128, 1000000, INT_MAX});
  return all;
}

// dst[i] = oracle(scaleFactor, src[i]...).
template <class D, class... S>
struct ScaledCase {
  std::string name;
  std::function<KvrStatus(const S*..., D*, int, int)> call;
  std::function<D(int, S...)> oracle;
  // Those of the sweep: one for each kernel.
  std::vector<int> swept = {0, 1, 5, -2, -40, 70};
  // The caller's rounding mode is followed: the oracle runs in it.
  bool followsRounding = false;
  // The call works in place, on a copy of its last source: dst is none of the sources.
  bool copiesFirst = false;
};

namespace scaled_check_detail {

template <class T>
std::vector<std::tuple<T>> operands(Random& random, int count) {
  std::vector<std::tuple<T>> all;
  for (T a : extremes<T>()) all.emplace_back(a);
  for (int i = 0; i < count; ++i) all.emplace_back(random.value<T>());
  return all;
}
template <class T, class Next, class... Rest>
std::vector<std::tuple<T, Next, Rest...>> operands(Random& random, int count) {
  std::vector<std::tuple<T, Next, Rest...>> all;
  const auto tails = operands<Next, Rest...>(random, 0);
  for (T a : extremes<T>()) {
    for (const auto& tail : tails) all.push_back(std::tuple_cat(std::make_tuple(a), tail));
  }
  for (int i = 0; i < count; ++i) {
    all.emplace_back(random.value<T>(), random.value<Next>(), random.value<Rest>()...);
  }
  return all;
}

template <class D, class... S, size_t... I>
void compare(const ScaledCase<D, S...>& c, const std::vector<std::tuple<S...>>& rows, int scaleFactor,
             int rounding, std::index_sequence<I...>) {
  const size_t n = rows.size();
  std::tuple<std::vector<S>...> src{std::vector<S>(n)...};
  std::vector<D> want(n), got(n);
  if (c.followsRounding) fesetround(rounding);
  for (size_t i = 0; i < n; ++i) {
    ((std::get<I>(src)[i] = std::get<I>(rows[i])), ...);
    want[i] = c.oracle(scaleFactor, std::get<I>(rows[i])...);
  }
  fesetround(rounding);
  const ControlWords before;
  const KvrStatus status = c.call(std::get<I>(src).data()..., got.data(), static_cast<int>(n), scaleFactor);
  const ControlWords after;
  fesetround(FE_TONEAREST);
  ASSERT_EQ(kvrStatusOk, status) << c.name;
  ASSERT_EQ(before, after) << c.name << " leaves a control word changed";
  for (size_t i = 0; i < n; ++i) {
    if (sameBits(got[i], want[i])) continue;
    std::string of;
    ((of += " " + show(std::get<I>(rows[i]))), ...);
    FAIL() << c.name << ", scale factor " << scaleFactor << ", rounding mode " << rounding << ", of" << of
           << ": got " << show(got[i]) << ", want " << show(want[i]);
  }
}

}  // namespace scaled_check_detail

template <class D, class... S>
void checkValues(const ScaledCase<D, S...>& c, const std::vector<int>& scaleFactors = allScaleFactors(),
                 int randomRows = 200) {
  Random random(7);
  const auto rows = scaled_check_detail::operands<S...>(random, randomRows);
  for (int scaleFactor : scaleFactors) {
    scaled_check_detail::compare(c, rows, scaleFactor, FE_TONEAREST, std::index_sequence_for<S...>());
    if (testing::Test::HasFatalFailure()) return;
  }
  for (int rounding : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
    for (int scaleFactor : {0, 1, 2, 7, 15, 16, 31, 33, -1, -20}) {
      scaled_check_detail::compare(c, rows, scaleFactor, rounding, std::index_sequence_for<S...>());
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

template <class D, class... S>
void checkSweep(const ScaledCase<D, S...>& c) {
  SweepOptions options = {.rounding = c.followsRounding ? Rounding::followed : Rounding::ignored,
                          .dstMayBeSource = !c.copiesFirst};
  options.lengths.clear();
  for (int len = 1; len <= 18; ++len) options.lengths.push_back(len);
  for (int len : {31, 32, 33, 63, 64, 65, 95, 129, 255, 300}) options.lengths.push_back(len);
  for (int scaleFactor : c.swept) {
    SCOPED_TRACE(c.name + ", scale factor " + std::to_string(scaleFactor));
    sweepMap<D, S...>(std::function<KvrStatus(const S*..., D*, int)>([&](const S*... src, D* dst, int len) {
                        return c.call(src..., dst, len, scaleFactor);
                      }),
                      std::function<D(S...)>([&](S... s) { return c.oracle(scaleFactor, s...); }), options);
    if (testing::Test::HasFatalFailure()) return;
  }
}

template <class D, class... S>
void checkScaled(const ScaledCase<D, S...>& c) {
  checkValues(c);
  if (!testing::Test::HasFatalFailure()) checkSweep(c);
}

// Functions of their argument forms.
template <class D, class A, class B>
using VectorSfs = KvrStatus (*)(const A*, const B*, D*, int, int) noexcept;
template <class D, class A>
using VectorISfs = KvrStatus (*)(const A*, D*, int, int) noexcept;
template <class T>
using ScalarSfs = KvrStatus (*)(const T*, T, T*, int, int) noexcept;
template <class T>
using ScalarISfs = KvrStatus (*)(T, T*, int, int) noexcept;

// What is stored, from the scale factor, the left-hand and the right-hand operand.
template <class D, class A, class B>
using ScaledRule = std::type_identity_t<std::function<D(int n, B left, A right)>>;

// f(src1, src2, dst) and inPlace(src, srcDst); src1 and src are the right-hand operand. Either function may be null.
template <class D, class A, class B>
void checkVectors(const char* name, VectorSfs<D, A, B> f, VectorISfs<D, A> inPlace,
                  const ScaledRule<D, A, B>& rule) {
  if (f != nullptr) {
    checkScaled(ScaledCase<D, A, B>{name, f, [&](int n, A src1, B src2) { return rule(n, src2, src1); }});
  }
  if (inPlace != nullptr) {
    const auto call = [=](const A* src, const D* before, D* srcDst, int len, int n) {
      memcpy(static_cast<void*>(srcDst), before, static_cast<size_t>(len) * sizeof(D));
      return inPlace(src, srcDst, len, n);
    };
    ScaledCase<D, A, D> c{std::string(name) + " in place", call,
                          [&](int n, A src, D srcDst) { return rule(n, srcDst, src); }};
    c.copiesFirst = true;
    checkScaled(c);
  }
}

// f(src, val, dst) and inPlace(val, srcDst); val is the right-hand operand.
template <class T>
void checkScalar(const char* name, ScalarSfs<T> f, ScalarISfs<T> inPlace, const ScaledRule<T, T, T>& rule) {
  Random random(3);
  std::vector<T> vals = extremes<T>();
  vals.push_back(random.value<T>());
  for (T val : vals) {
    ScaledCase<T, T> c{std::string(name) + " by " + show(val),
                       [=](const T* src, T* dst, int len, int n) { return f(src, val, dst, len, n); },
                       [&](int n, T src) { return rule(n, src, val); }};
    checkValues(c, allScaleFactors(), 30);
    if (sameBits(val, vals.back())) checkSweep(c);
    c.name += " in place";
    c.copiesFirst = true;
    c.call = [=](const T* before, T* srcDst, int len, int n) {
      memcpy(static_cast<void*>(srcDst), before, static_cast<size_t>(len) * sizeof(T));
      return inPlace(val, srcDst, len, n);
    };
    checkValues(c, {-33, -16, -3, 0, 1, 2, 9, 17, 30, 64}, 30);
    if (sameBits(val, vals.back())) checkSweep(c);
    if (testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace kvrs::test

#endif
