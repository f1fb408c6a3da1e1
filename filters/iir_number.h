// Arithmetic on single working numbers of recursive filters, real or complex: each product and each sum is rounded by
// itself, and a complex product is the usual four products.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_IIR_NUMBER_H
#define KVRS_FILTERS_IIR_NUMBER_H

#include <cstddef>
#include <type_traits>

#include "frame/simd.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

namespace kvrs::iir {

template <class T>
inline constexpr bool kIsComplex = !std::is_arithmetic_v<T>;

template <class T>
struct PartOf {
  using Type = T;
};
template <class T>
requires kIsComplex<T>
struct PartOf<T> {
  using Type = decltype(T::re);
};
template <class T>
using Part = typename PartOf<T>::Type;

template <class T>
inline constexpr size_t kParts = kIsComplex<T> ? 2 : 1;

template <class T>
KVRS_INLINE T plus(T a, T b) {
  if constexpr (kIsComplex<T>) {
    return {a.re + b.re, a.im + b.im};
  } else {
    return a + b;
  }
}
template <class T>
KVRS_INLINE T minus(T a, T b) {
  if constexpr (kIsComplex<T>) {
    return {a.re - b.re, a.im - b.im};
  } else {
    return a - b;
  }
}
// Products are kept apart from the sums behind them: where GCC makes vectors of complex products it fuses the two, even
// under -ffp-contract=off.
template <class T>
KVRS_INLINE T times(T a, T b) {
  if constexpr (kIsComplex<T>) {
    const auto apart = [](auto product) KVRS_UNROLLED {
      if constexpr (sizeof product <= 8) product = inRegister(product);  // vectors have no more
      return product;
    };
    return {apart(a.re * b.re) - apart(a.im * b.im), apart(a.re * b.im) + apart(a.im * b.re)};
  } else {
    return a * b;
  }
}
template <class T>
KVRS_INLINE T negative(T a) {
  if constexpr (kIsComplex<T>) {
    return {-a.re, -a.im};
  } else {
    return -a;
  }
}
template <class T>
bool isZero(T a) {
  if constexpr (kIsComplex<T>) {
    return a.re == 0 && a.im == 0;
  } else {
    return a == 0;
  }
}
template <class T>
bool isOne(T a) {
  if constexpr (kIsComplex<T>) {
    return a.re == 1 && a.im == 0;
  } else {
    return a == 1;
  }
}
// 1 / a, of a complex number by its squared magnitude.
template <class T>
T reciprocal(T a) {
  if constexpr (kIsComplex<T>) {
    const Part<T> power = a.re * a.re + a.im * a.im;
    return {a.re / power, (0 - a.im) / power};
  } else {
    return 1 / a;
  }
}
// At least the magnitude of a, and less than twice it.
template <class T>
double bulk(T a) {
  if constexpr (kIsComplex<T>) {
    return bulk(a.re) + bulk(a.im);
  } else {
    return __builtin_fabs(static_cast<double>(a));
  }
}

// Parts converted one by one.
template <class To, class From>
KVRS_INLINE To converted(From from) {
  if constexpr (kIsComplex<To>) {
    return {static_cast<Part<To>>(from.re), static_cast<Part<To>>(from.im)};
  } else {
    return static_cast<To>(from);
  }
}

// Elements of callers' arrays, which may have any alignment.
template <class T>
KVRS_INLINE T at(const T* array, size_t i) {
  return unaligned::get(array + i);
}
template <class T>
KVRS_INLINE void setAt(T* array, size_t i, T element) {
  unaligned::put(element, array + i);
}

}  // namespace kvrs::iir

#endif
