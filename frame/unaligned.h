// Scalar access to callers' arrays, which may lie at any address: an element that is read through a pointer of its own
// type is taken by the compiler for an aligned one.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_UNALIGNED_H
#define KVRS_FRAME_UNALIGNED_H

namespace kvrs::unaligned {

namespace detail {

// An access in place, where memcpy would take 64-bit integers of 32-bit code through a copy on the stack.
template <class T>
struct [[gnu::packed, gnu::may_alias]] Anywhere {
  T value;
};

}  // namespace detail

template <class T>
T get(const T* from) {
  return reinterpret_cast<const detail::Anywhere<T>*>(from)->value;
}

template <class T>
void put(T value, T* to) {
  reinterpret_cast<detail::Anywhere<T>*>(to)->value = value;
}

}  // namespace kvrs::unaligned

#endif
