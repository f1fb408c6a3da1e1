// The standard sweep of element-wise functions: lengths, byte offsets of every array, guard pages, canaries,
// in place against an oracle for one element.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_SWEEP_H
#define KVRS_TESTS_SUPPORT_SWEEP_H

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
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

struct SweepOptions {
  std::vector<int> lengths = sweepLengths();
  KvrStatus status = kvrStatusOk;
  uint64_t seed = 1;
};

// What the sweep needs to know of a function dst[i] = oracle(src[i]...), without its types, so that the sweep itself is
// compiled once. Sources of `oracle` and results of both are aligned; those of `call` have any address.
class SweepCase {
 public:
  std::vector<size_t> sourceBytes;  // of one element
  size_t resultBytes = 0;

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

// What depends on the types alone.
template <class D, class... S>
class TypedCase : public SweepCase {
 public:
  TypedCase() {
    sourceBytes = {sizeof(S)...};
    resultBytes = sizeof(D);
  }
  std::string show(const void* result, size_t i) const final {
    return test::show(static_cast<const D*>(result)[i]);
  }

 protected:
  ~TypedCase() = default;
};

template <class Call, class Oracle, class Same, class Draw, class D, class... S>
class FunctionCase final : public TypedCase<D, S...> {
 public:
  FunctionCase(Call& call, Oracle& oracle, Same& same, Draw& draw)
      : call_(call), oracle_(oracle), same_(same), draw_(draw) {}

  void draw(Random& random, size_t source, [[maybe_unused]] void* elements, size_t n) const override {
    size_t k = 0;
    [[maybe_unused]] const auto fill = [&]<class T>(T* to) {
      if (k++ != source) return;
      for (size_t i = 0; i < n; ++i) to[i] = draw_(random, source, T{});
    };
    (fill(static_cast<S*>(elements)), ...);
  }
  KvrStatus call(const void* const* src, void* dst, int len) const override {
    return [&]<size_t... I>(std::index_sequence<I...>) {
      return call_(static_cast<const S*>(src[I])..., static_cast<D*>(dst), len);
    }
    (std::index_sequence_for<S...>());
  }
  void oracle(const void* const* src, void* want, size_t n) const override {
    [&]<size_t... I>(std::index_sequence<I...>) {
      for (size_t i = 0; i < n; ++i) static_cast<D*>(want)[i] = oracle_(static_cast<const S*>(src[I])[i]...);
    }
    (std::index_sequence_for<S...>());
  }
  size_t firstWrong(const void* got, const void* want, size_t n) const override {
    size_t i = 0;
    while (i < n && same_(static_cast<const D*>(got)[i], static_cast<const D*>(want)[i])) ++i;
    return i;
  }

 private:
  Call& call_;
  Oracle& oracle_;
  Same& same_;
  Draw& draw_;
};

}  // namespace sweep_detail

// A function dst[i] = oracle(src[i]...): `call(src..., dst, len)` runs it, `same(got, want)` compares.
// `draw(random, source number, T{})` makes a source's elements, of type T.
template <class D, class... S, class Call, class Oracle, class Same, class Draw>
void sweepMapWith(Call call, Oracle oracle, Same same, Draw draw, const SweepOptions& options) {
  sweep(sweep_detail::FunctionCase<Call, Oracle, Same, Draw, D, S...>(call, oracle, same, draw), options);
}

template <class D, class... S, class Call, class Oracle>
void sweepMap(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepMapWith<D, S...>(
      call, oracle, [](D a, D b) { return sameBits(a, b); },
      [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); }, options);
}

// The same for a function that works in place: srcDst[i] = oracle(src..., srcDst[i]), `call(src..., srcDst,
// len)`.
template <class T, class... S, class Call, class Oracle, class Same, class Draw>
void sweepInPlaceWith(Call call, Oracle oracle, Same same, Draw draw, const SweepOptions& options) {
  sweepMapWith<T, S..., T>(
      [&](const S*... src, const T* srcDstBefore, T* srcDst, int len) {
        memcpy(static_cast<void*>(srcDst), srcDstBefore, static_cast<size_t>(len) * sizeof(T));
        return call(src..., srcDst, len);
      },
      oracle, same, draw, options);
}

template <class T, class... S, class Call, class Oracle>
void sweepInPlace(Call call, Oracle oracle, const SweepOptions& options = {}) {
  sweepInPlaceWith<T, S...>(
      call, oracle, [](T a, T b) { return sameBits(a, b); },
      [](Random& random, size_t, auto like) { return random.value<decltype(like)>(); }, options);
}

}  // namespace kvrs::test

#endif
