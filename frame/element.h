// How vectors of each element type are loaded and stored. Real elements are one vector; complex ones are
// split into a vector of real and one of imaginary parts. Where an operation is as well or better served by
// the parts as they lie in memory, real and imaginary in turn, complex arrays are taken as pairs.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_ELEMENT_H
#define KVRS_FRAME_ELEMENT_H

#include <type_traits>

#include "frame/first.h"
#include "frame/interleave.h"
#include "frame/simd.h"

namespace kvrs {

template <class V>
struct Complex {
  V re, im;
};

// Element<T>::Lane is the type of one lane and kSpan how many lanes of a vector an element takes. loadFirst() and
// storeFirst() touch only the first elements of a block, fewer than all of them; its other lanes are read as 0.
template <class T>
struct Element {
  using Lane = T;
  static constexpr size_t kSpan = 1;

  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> load(Dt d, const T* p) {
    return hn::LoadU(d, p);
  }
  template <class Dt>
  static KVRS_INLINE void store(hn::Vec<Dt> v, Dt d, T* p) {
    hn::StoreU(v, d, p);
  }
  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> loadFirst(size_t count, Dt d, const T* p) {
    return kvrs::loadFirst(d, p, count);
  }
  template <class Dt>
  static KVRS_INLINE void storeFirst(size_t count, hn::Vec<Dt> v, Dt d, T* p) {
    kvrs::storeFirst(v, d, p, count);
  }
};

template <class T, class Part>
struct ComplexElement {
  using Lane = Part;
  static constexpr size_t kSpan = 1;

  template <class Dt>
  static KVRS_INLINE Complex<hn::Vec<Dt>> load(Dt d, const T* p) {
    constexpr size_t N = hn::MaxLanes(Dt());
    if constexpr (N * sizeof(Part) == 64) {
      return parts(d, hn::LoadU(d, &p->re), hn::LoadU(d, &p->re + N));
    } else {
      Complex<hn::Vec<Dt>> v;
      hn::LoadInterleaved2(d, &p->re, v.re, v.im);
      return v;
    }
  }
  template <class Dt>
  static KVRS_INLINE void store(Complex<hn::Vec<Dt>> v, Dt d, T* p) {
    storeInterleaved(v.re, v.im, d, &p->re);
  }
  template <class Dt>
  static KVRS_INLINE Complex<hn::Vec<Dt>> loadFirst(size_t count, Dt d, const T* p) {
    const auto both = loadFirstOfTwo(d, &p->re, 2 * count);
    return parts(d, both.first, both.second);
  }
  template <class Dt>
  static KVRS_INLINE void storeFirst(size_t count, Complex<hn::Vec<Dt>> v, Dt d, T* p) {
    storeFirstOfTwo(interleaved(d, v.re, v.im), d, &p->re, 2 * count);
  }

 private:
  template <class Dt, class V = hn::Vec<Dt>>
  static KVRS_INLINE Complex<V> parts(Dt d, V lower, V upper) {
    lower = inRegister(lower);
    upper = inRegister(upper);
    return {hn::ConcatEven(d, upper, lower), hn::ConcatOdd(d, upper, lower)};
  }
};

template <>
struct Element<Kvr16sc> : ComplexElement<Kvr16sc, Kvr16s> {};
template <>
struct Element<Kvr32sc> : ComplexElement<Kvr32sc, Kvr32s> {};
template <>
struct Element<Kvr64sc> : ComplexElement<Kvr64sc, Kvr64s> {};
template <>
struct Element<Kvr32fc> : ComplexElement<Kvr32fc, Kvr32f> {};
template <>
struct Element<Kvr64fc> : ComplexElement<Kvr64fc, Kvr64f> {};

template <class T>
using LaneOf = typename Element<T>::Lane;

// Two adjacent parts that stay side by side in one vector: real parts in its even lanes, imaginary ones in
// its odd lanes.
template <class Part>
struct Pair {
  Part re, im;
};

template <class Part>
struct Element<Pair<Part>> {
  using Lane = Part;
  static constexpr size_t kSpan = 2;

  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> load(Dt d, const Pair<Part>* p) {
    return hn::LoadU(d, &p->re);
  }
  template <class Dt>
  static KVRS_INLINE void store(hn::Vec<Dt> v, Dt d, Pair<Part>* p) {
    hn::StoreU(v, d, &p->re);
  }
  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> loadFirst(size_t count, Dt d, const Pair<Part>* p) {
    return kvrs::loadFirst(d, &p->re, 2 * count);
  }
  template <class Dt>
  static KVRS_INLINE void storeFirst(size_t count, hn::Vec<Dt> v, Dt d, Pair<Part>* p) {
    kvrs::storeFirst(v, d, &p->re, 2 * count);
  }
};

// An array as pairs of T: of complex elements, or of parts from any place on.
template <class Part, class T>
const Pair<Part>* asPairs(const T* p) {
  return reinterpret_cast<const Pair<Part>*>(p);
}
template <class Part, class T>
Pair<Part>* asPairs(T* p) {
  return reinterpret_cast<Pair<Part>*>(p);
}

// An element that is twice as wide as those of the other arrays, where an operation wants full vectors of these: a
// full block of it is two vectors.
template <class T>
struct Wide {
  T value;
};

// The tag of such a block.
template <class T>
struct TwoVectors {};

template <class T>
struct Element<Wide<T>> {
  using Lane = T;
  static constexpr size_t kSpan = 1;
  using Full = Lanes<T, kLanes<T>>;

  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> load(Dt d, const Wide<T>* p) {
    return hn::LoadU(d, &p->value);
  }
  template <class Dt>
  static KVRS_INLINE void store(hn::Vec<Dt> v, Dt d, Wide<T>* p) {
    hn::StoreU(v, d, &p->value);
  }
  static KVRS_INLINE Both<hn::Vec<Full>> load(TwoVectors<T>, const Wide<T>* p) {
    return {hn::LoadU(Full(), &p->value), hn::LoadU(Full(), &p[kLanes<T>].value)};
  }
  static KVRS_INLINE void store(Both<hn::Vec<Full>> v, TwoVectors<T>, Wide<T>* p) {
    hn::StoreU(v.first, Full(), &p->value);
    hn::StoreU(v.second, Full(), &p[kLanes<T>].value);
  }
  template <class Dt>
  static KVRS_INLINE hn::Vec<Dt> loadFirst(size_t count, Dt d, const Wide<T>* p) {
    return kvrs::loadFirst(d, &p->value, count);
  }
  template <class Dt>
  static KVRS_INLINE void storeFirst(size_t count, hn::Vec<Dt> v, Dt d, Wide<T>* p) {
    kvrs::storeFirst(v, d, &p->value, count);
  }
  static KVRS_INLINE Both<hn::Vec<Full>> loadFirst(size_t count, TwoVectors<T>, const Wide<T>* p) {
    return loadFirstOfTwo(Full(), &p->value, count);
  }
  static KVRS_INLINE void storeFirst(size_t count, Both<hn::Vec<Full>> v, TwoVectors<T>, Wide<T>* p) {
    storeFirstOfTwo(v, Full(), &p->value, count);
  }
};

// Bytes of a block's vector that an element takes.
template <class T>
inline constexpr size_t kSpanBytes = Element<T>::kSpan * sizeof(LaneOf<T>);
template <class T>
inline constexpr size_t kSpanBytes<Wide<T>> = sizeof(T) / 2;

namespace element_detail {

template <class T, size_t N>
struct TagOf {
  using Tag = Lanes<LaneOf<T>, N * Element<T>::kSpan>;
};
template <class T, size_t N>
struct TagOf<Wide<T>, N> {
  using Tag = std::conditional_t<(N > kLanes<T>), TwoVectors<T>, Lanes<T, N>>;
};

}  // namespace element_detail

// The tag of vectors that hold N elements.
template <class T, size_t N>
using ElementLanes = typename element_detail::TagOf<T, N>::Tag;

}  // namespace kvrs

#endif
