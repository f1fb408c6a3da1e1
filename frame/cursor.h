// Where a pass over arrays (frame/loop.h) stands in each of them. A cursor loads or stores a block of N elements at an
// index from its place, or the first few of a block, and moves on. There are these:
//
//   Cursor<T>     an array
//   Planes<T>     two arrays, of the real and of the imaginary parts of what the operation takes for complex
//   Downward<T>   an array in blocks from its last to its first, each block as it lies in memory
//   Backward<T>   an array from its last element to its first
//   Counter<T>    no array: the index of each element, for ramps and windows
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_CURSOR_H
#define KVRS_FRAME_CURSOR_H

#include <cstddef>
#include <cstdint>

#include "frame/element.h"
#include "frame/simd.h"

namespace kvrs {
namespace cursor_detail {

// Elements that have no way of their own to load and store a few of them go through a copy of a whole block.
template <class T, class Tag>
concept HasLoadFirst = requires(Tag d, const T* p) {
  Element<T>::loadFirst(1, d, p);
};
template <class T, class Tag, class V>
concept HasStoreFirst = requires(Tag d, V v, T* p) {
  Element<T>::storeFirst(1, v, d, p);
};

template <size_t N, class T>
KVRS_INLINE auto loadFirst(const T* p, ptrdiff_t count) {
  const ElementLanes<T, N> d;
  if constexpr (HasLoadFirst<T, ElementLanes<T, N>>) {
    return Element<T>::loadFirst(static_cast<size_t>(count), d, p);
  } else {
    T block[N] = {};
    for (ptrdiff_t i = 0; i < count; ++i) block[i] = p[i];
    return Element<T>::load(d, block);
  }
}

template <size_t N, class T, class V>
KVRS_INLINE void storeFirst(V v, T* p, ptrdiff_t count) {
  const ElementLanes<T, N> d;
  if constexpr (HasStoreFirst<T, ElementLanes<T, N>, V>) {
    Element<T>::storeFirst(static_cast<size_t>(count), v, d, p);
  } else {
    T block[N];
    Element<T>::store(v, d, block);
    for (ptrdiff_t i = 0; i < count; ++i) p[i] = block[i];
  }
}

// The elements of a vector in reverse order.
template <class T, size_t N, class D, class V>
KVRS_INLINE V reverse(D d, V v) {
  if constexpr (sizeof(T) == 16) {
    return hn::ReverseBlocks(d, v);
  } else if constexpr (sizeof(T) == 1) {
    alignas(16) static constexpr uint8_t kOrder[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    return hn::ReverseBlocks(d, hn::TableLookupBytes(v, hn::LoadDup128(d, kOrder)));
  } else if constexpr (sizeof(T) == 2 && N == 8) {
    alignas(16) static constexpr uint8_t kOrder[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};
    const hn::Repartition<uint8_t, D> bytes;
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, v), hn::Load(bytes, kOrder)));
  } else {
    return hn::Reverse(d, v);
  }
}

// v with its first element in all places from `count` on, so that these hold nothing that the array does not.
template <size_t kSpan, class D, class V>
KVRS_INLINE V filled(D d, V v, ptrdiff_t count) {
  using T = hn::TFromD<D>;
  const auto mask = firstLanes(d, kSpan * static_cast<size_t>(count));
  const T first = hn::GetLane(v);
  if constexpr (kSpan == 1) {
    return hn::IfThenElse(mask, v, hn::Set(d, first));
  } else {
    return hn::IfThenElse(mask, v, hn::OddEven(hn::Set(d, hn::ExtractLane(v, 1)), hn::Set(d, first)));
  }
}
template <size_t kSpan, class D, class V>
KVRS_INLINE Complex<V> filled(D d, Complex<V> v, ptrdiff_t count) {
  return {filled<kSpan>(d, v.re, count), filled<kSpan>(d, v.im, count)};
}

}  // namespace cursor_detail

// Makes an index or a pointer a counter of its own: the compiler would else make others of it, or leave it out and count
// by others, and s8 has no registers to spare.
template <class T>
KVRS_INLINE void keep(T& counter) {
  asm("" : "+r"(counter));
}

template <class T>
struct Cursor {
  T* p;

  static constexpr size_t kElementBytes = sizeof(T);  // in each array
  static constexpr size_t kLaneBytes = kSpanBytes<std::remove_const_t<T>>;
  template <size_t N>
  using Tag = ElementLanes<std::remove_const_t<T>, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    return Element<std::remove_const_t<T>>::load(Tag<N>(), p + i);
  }
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t count) const {
    return cursor_detail::loadFirst<N, std::remove_const_t<T>>(p, count);
  }
  template <size_t N>
  KVRS_INLINE auto loadFilled(ptrdiff_t count) const {
    return cursor_detail::filled<Element<std::remove_const_t<T>>::kSpan>(Tag<N>(), loadFirst<N>(count),
                                                                         count);
  }
  template <size_t N, class V>
  KVRS_INLINE void store(V v, ptrdiff_t i) const {
    Element<T>::store(v, Tag<N>(), p + i);
  }
  template <size_t N, class V>
  KVRS_INLINE void storeFirst(V v, ptrdiff_t count) const {
    cursor_detail::storeFirst<N>(v, p, count);
  }

  // Elements to the next address that is aligned to a block, or some number below a block if there is none.
  template <size_t N>
  KVRS_INLINE ptrdiff_t toAligned() const {
    return static_cast<ptrdiff_t>(((0 - reinterpret_cast<uintptr_t>(p)) & (N * sizeof(T) - 1)) / sizeof(T));
  }
  KVRS_INLINE void move(ptrdiff_t count) { keep(p += count); }
};

template <class T>
struct Planes {
  T *re, *im;

  static constexpr size_t kElementBytes = sizeof(T);
  static constexpr size_t kLaneBytes = kSpanBytes<std::remove_const_t<T>>;
  template <size_t N>
  using Tag = ElementLanes<std::remove_const_t<T>, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    const auto real = Cursor<T>{re}.template load<N>(i);
    return Complex<std::remove_const_t<decltype(real)>>{real, Cursor<T>{im}.template load<N>(i)};
  }
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t count) const {
    const auto real = Cursor<T>{re}.template loadFirst<N>(count);
    return Complex<std::remove_const_t<decltype(real)>>{real, Cursor<T>{im}.template loadFirst<N>(count)};
  }
  template <size_t N, class V>
  KVRS_INLINE void store(Complex<V> v, ptrdiff_t i) const {
    Cursor<T>{re}.template store<N>(v.re, i);
    Cursor<T>{im}.template store<N>(v.im, i);
  }
  template <size_t N, class V>
  KVRS_INLINE void storeFirst(Complex<V> v, ptrdiff_t count) const {
    Cursor<T>{re}.template storeFirst<N>(v.re, count);
    Cursor<T>{im}.template storeFirst<N>(v.im, count);
  }
  template <size_t N>
  KVRS_INLINE ptrdiff_t toAligned() const {
    return Cursor<T>{re}.template toAligned<N>();
  }
  KVRS_INLINE void move(ptrdiff_t count) {
    keep(re += count);
    keep(im += count);
  }
};

// `end` is behind the elements that come next.
template <class T>
struct Downward {
  T* end;

  static constexpr size_t kElementBytes = sizeof(T);
  static constexpr size_t kLaneBytes = kSpanBytes<std::remove_const_t<T>>;
  template <size_t N>
  using Tag = ElementLanes<std::remove_const_t<T>, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    return Cursor<T>{end}.template load<N>(-i - static_cast<ptrdiff_t>(N));
  }
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t count) const {
    return Cursor<T>{end - count}.template loadFirst<N>(count);
  }
  template <size_t N, class V>
  KVRS_INLINE void store(V v, ptrdiff_t i) const {
    Cursor<T>{end}.template store<N>(v, -i - static_cast<ptrdiff_t>(N));
  }
  template <size_t N, class V>
  KVRS_INLINE void storeFirst(V v, ptrdiff_t count) const {
    Cursor<T>{end - count}.template storeFirst<N>(v, count);
  }
  template <size_t N>
  KVRS_INLINE ptrdiff_t toAligned() const {
    return static_cast<ptrdiff_t>((reinterpret_cast<uintptr_t>(end) & (N * sizeof(T) - 1)) / sizeof(T));
  }
  KVRS_INLINE void move(ptrdiff_t count) { keep(end -= count); }
};

// `end` is behind the element that comes next. T are unsigned integers that stand for any elements of their width.
template <class T>
struct Backward {
  const T* end;

  static constexpr size_t kElementBytes = sizeof(T);
  static constexpr size_t kLaneBytes = kSpanBytes<T>;
  template <size_t N>
  using Tag = ElementLanes<T, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    return cursor_detail::reverse<T, N>(Tag<N>(), Downward<const T>{end}.template load<N>(i));
  }
  // Through a copy: reversed vectors begin with what lies in front of the array.
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t count) const {
    T block[N];
    Element<T>::store(cursor_detail::loadFirst<N>(end - count, count), Tag<N>(), block);
    T reversed[N] = {};
    for (ptrdiff_t i = 0; i < count; ++i) reversed[i] = block[count - 1 - i];
    return Element<T>::load(Tag<N>(), reversed);
  }
  KVRS_INLINE void move(ptrdiff_t count) { keep(end -= count); }
};

// Lanes of T: first, first + 1, first + 2, ... modulo the range of T; a float counts without an error up to 2^24.
template <class T>
struct Counter {
  T first;

  static constexpr size_t kElementBytes = 0;
  static constexpr size_t kLaneBytes = sizeof(T);
  template <size_t N>
  using Tag = Lanes<T, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    // Without the register the compiler adds up each lane by itself.
    return hn::Add(inRegister(hn::Set(Tag<N>(), static_cast<T>(first + static_cast<T>(i)))),
                   hn::Iota(Tag<N>(), 0));
  }
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t) const {
    return load<N>(0);
  }
  template <size_t N>
  KVRS_INLINE auto loadFilled(ptrdiff_t) const {
    return load<N>(0);
  }
  KVRS_INLINE void move(ptrdiff_t count) { first = static_cast<T>(first + static_cast<T>(count)); }
};

// The cursor of an argument of a loop: pointers stand for arrays.
template <class T>
KVRS_INLINE Cursor<T> cursorOf(T* p) {
  return {p};
}
template <class T>
KVRS_INLINE Planes<T> cursorOf(Planes<T> planes) {
  return planes;
}
template <class T>
KVRS_INLINE Downward<T> cursorOf(Downward<T> downward) {
  return downward;
}
template <class T>
KVRS_INLINE Cursor<const T> sourceOf(T* p) {
  return {p};
}
template <class C>
KVRS_INLINE C sourceOf(C cursor) {
  return cursor;
}

}  // namespace kvrs

#endif
