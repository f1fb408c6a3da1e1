// The standard sweep of element-wise functions against an oracle for one element: lengths from 1 to what no near cache
// holds, byte offsets of every array, guard pages, canaries, dst on top of each source, the caller's rounding modes, threads.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_SWEEP_H
#define KVRS_TESTS_SUPPORT_SWEEP_H

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"

namespace kvrs::test {

// 1 to 70, some lengths of several vectors, and each threshold with its neighbours.
std::vector<int> sweepLengths(std::initializer_list<int> thresholds = {});

template <class T>
bool sameBits(T a, T b) {
  return memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
std::string show(T value) {
  if constexpr (std::is_arithmetic_v<T>) {
    return testing::PrintToString(+value);
  } else {
    return "(" + show(value.re) + ", " + show(value.im) + ")";
  }
}

// How results go with the caller's rounding mode.
enum class Rounding {
  byType,    // ignored where all elements are integers, untested where one is not
  ignored,   // the same in all modes, those of the oracle in the nearest one
  followed,  // those of the oracle in the same mode
};

struct SweepOptions {
  std::vector<int> lengths = sweepLengths();
  KvrStatus status = kvrStatusOk;
  uint64_t seed = 1;
  Rounding rounding = Rounding::byType;
  // Whether dst may be any of the sources with elements of its size.
  bool dstMayBeSource = true;
  // Whether lengths far beyond `lengths` are run: some thousand elements, and more than fit into the nearer caches.
  bool far = true;
  // The length from which the function uses threads. Far lengths run on 1 and on 3 threads in any case.
  int threadedFrom = 0;
};

// What the sweep needs to know of a function dst[i] = oracle(src[i]...), without its types, so that the sweep itself is
// compiled once. Sources of `oracle` and results of both are aligned; those of `call` have any address.
class SweepCase {
 public:
  std::vector<size_t> sourceBytes;       // of one element
  std::vector<const void*> sourceTypes;  // something for each type
  size_t resultBytes = 0;
  bool allIntegers = false;
  // The function works in place: the last source is what dst holds before, and `call` does not get it.
  bool inPlace = false;

  virtual void draw(Random& random, size_t source, void* elements, size_t n) const = 0;
  virtual KvrStatus call(const void* const* src, void* dst, int len) const = 0;
  virtual void oracle(const void* const* src, void* want, size_t n) const = 0;
  // The first of n results that is not as wanted, or n.
  virtual size_t firstWrong(const void* got, const void* want, size_t n) const = 0;
  virtual std::string show(const void* result, size_t i) const = 0;

 protected:
  ~SweepCase() = default;
};

void sweep(const SweepCase& c, const SweepOptions& options);

namespace sweep_detail {

// A function or lambda of the caller's, by its signature alone: what is compiled for each of them is one call. Results go
// through memory: the registers that 32-bit code returns floats in would quieten a signalling NaN.
template <class Signature>
class Ref;
template <class R, class... A>
class Ref<R(A...)> {
 public:
  template <class F>
  explicit Ref(F& f) requires(!std::is_same_v<F, Ref>)  // a copy refers to what its original refers to
      : object_(const_cast<void*>(static_cast<const void*>(&f))),
        call_([](void* object, R* result, A... a) { *result = (*static_cast<F*>(object))(a...); }) {}
  void to(R* result, A... a) const { call_(object_, result, a...); }
  R operator()(A... a) const {
    R result;
    to(&result, a...);
    return result;
  }

 private:
  void* object_;
  void (*call_)(void*, R*, A...);
};

template <class T>
inline constexpr char kType = 0;

template <class T>
constexpr bool isInteger() {
  if constexpr (requires(T t) { t.re; }) {
    return std::is_integral_v<decltype(T::re)>;
  } else {
    return !std::is_floating_point_v<T>;
  }
}

// What depends on the types alone.
template <class D, class... S>
class ElementCase : public SweepCase {
 public:
  ElementCase(Ref<D(S...)> oracle, Ref<bool(D, D)> same, Ref<S(Random&, size_t, S)>... draw)
      : oracle_(oracle), same_(same), draw_(draw...) {
    sourceBytes = {sizeof(S)...};
    sourceTypes = {&kType<S>...};
    resultBytes = sizeof(D);
    allIntegers = (isInteger<D>() && ... && isInteger<S>());
  }

  void draw([[maybe_unused]] Random& random, [[maybe_unused]] size_t source, [[maybe_unused]] void* elements,
            [[maybe_unused]] size_t n) const final {
    [&]<size_t... I>(std::index_sequence<I...>) {
      [[maybe_unused]] const auto fill = [&](size_t k, auto* to, const auto& one) {
        for (size_t i = 0; k == source && i < n; ++i) one.to(to + i, random, source, {});
      };
      (fill(I, static_cast<S*>(elements), std::get<I>(draw_)), ...);
    }
    (std::index_sequence_for<S...>());
  }
  void oracle([[maybe_unused]] const void* const* src, void* want, size_t n) const final {
    [&]<size_t... I>(std::index_sequence<I...>) {
      for (size_t i = 0; i < n; ++i)
        oracle_.to(static_cast<D*>(want) + i, static_cast<const S*>(src[I])[i]...);
    }
    (std::index_sequence_for<S...>());
  }
  size_t firstWrong(const void* got, const void* want, size_t n) const final {
    size_t i = 0;
    while (i < n && same_(static_cast<const D*>(got)[i], static_cast<const D*>(want)[i])) ++i;
    return i;
  }
  std::string show(const void* result, size_t i) const final {
    return test::show(static_cast<const D*>(result)[i]);
  }

 protected:
  ~ElementCase() = default;

 private:
  Ref<D(S...)> oracle_;
  Ref<bool(D, D)> same_;
  std::tuple<Ref<S(Random&, size_t, S)>...> draw_;
};

template <class D, class... S>
class MapCase final : public ElementCase<D, S...> {
 public:
  template <class... Elements>
  explicit MapCase(Ref<KvrStatus(const S*..., D*, int)> call, Elements... elements)
      : ElementCase<D, S...>(elements...), call_(call) {}

  KvrStatus call([[maybe_unused]] const void* const* src, void* dst, int len) const override {
    return [&]<size_t... I>(std::index_sequence<I...>) {
      return call_(static_cast<const S*>(src[I])..., static_cast<D*>(dst), len);
    }
    (std::index_sequence_for<S...>());
  }

 private:
  Ref<KvrStatus(const S*..., D*, int)> call_;
};

template <class T, class... S>
class InPlaceCase final : public ElementCase<T, S..., T> {
 public:
  template <class... Elements>
  explicit InPlaceCase(Ref<KvrStatus(const S*..., T*, int)> call, Elements... elements)
      : ElementCase<T, S..., T>(elements...), call_(call) {
    this->inPlace = true;
  }

  KvrStatus call([[maybe_unused]] const void* const* src, void* srcDst, int len) const override {
    return [&]<size_t... I>(std::index_sequence<I...>) {
      return call_(static_cast<const S*>(src[I])..., static_cast<T*>(srcDst), len);
    }
    (std::index_sequence_for<S...>());
  }

 private:
  Ref<KvrStatus(const S*..., T*, int)> call_;
};

struct SameBits {
  template <class T>
  bool operator()(T a, T b) const {
    return sameBits(a, b);
  }
};
struct DrawValue {
  template <class T>
  T operator()(Random& random, size_t, T) const {
    return random.value<T>();
  }
};

}  // namespace sweep_detail

// A function dst[i] = oracle(src[i]...): `call(src..., dst, len)` runs it, `same(got, want)` compares.
// `draw(random, source number, T{})` makes a source's elements, of type T.
template <class D, class... S, class Call, class Oracle, class Same, class Draw>
void sweepMapWith(Call call, Oracle oracle, Same same, [[maybe_unused]] Draw draw,
                  const SweepOptions& options) {
  using namespace sweep_detail;
  sweep(MapCase<D, S...>(Ref<KvrStatus(const S*..., D*, int)>(call), Ref<D(S...)>(oracle),
                         Ref<bool(D, D)>(same), Ref<S(Random&, size_t, S)>(draw)...),
        options);
}

template <class D, class... S, class Call, class Oracle>
void sweepMap(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepMapWith<D, S...>(call, oracle, sweep_detail::SameBits{}, sweep_detail::DrawValue{}, options);
}

// The same for a function that works in place: srcDst[i] = oracle(src..., srcDst[i]), `call(src..., srcDst,
// len)`.
template <class T, class... S, class Call, class Oracle, class Same, class Draw>
void sweepInPlaceWith(Call call, Oracle oracle, Same same, Draw draw, const SweepOptions& options) {
  using namespace sweep_detail;
  sweep(InPlaceCase<T, S...>(Ref<KvrStatus(const S*..., T*, int)>(call), Ref<T(S..., T)>(oracle),
                             Ref<bool(T, T)>(same), Ref<S(Random&, size_t, S)>(draw)...,
                             Ref<T(Random&, size_t, T)>(draw)),
        options);
}

template <class T, class... S, class Call, class Oracle>
void sweepInPlace(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepInPlaceWith<T, S...>(call, oracle, sweep_detail::SameBits{}, sweep_detail::DrawValue{}, options);
}

}  // namespace kvrs::test

#endif
