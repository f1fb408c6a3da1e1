// Exports that answer in place of others, where a value leaves nothing to compute. Their checks stand in for the
// caller's own, so that a source which they do not take is not tested.
// SPDX-License-Identifier: MIT
#ifndef KVRS_VECTOR_STAND_IN_H
#define KVRS_VECTOR_STAND_IN_H

#include "frame/array_length.h"
#include "frame/check.h"
#include "kvrs/fill.h"

namespace kvrs {

// The Zero of T's width.
template <class T>
KvrStatus zeroInstead(T* dst, int len) {
  if constexpr (sizeof(T) == 1) return kvrsZero_8u(reinterpret_cast<Kvr8u*>(dst), len);
  if constexpr (sizeof(T) == 2) return kvrsZero_16s(reinterpret_cast<Kvr16s*>(dst), len);
  if constexpr (sizeof(T) == 4) return kvrsZero_32f(reinterpret_cast<Kvr32f*>(dst), len);
  if constexpr (sizeof(T) == 8) return kvrsZero_64f(reinterpret_cast<Kvr64f*>(dst), len);
}

// The Copy of T's width; nothing is left to do in place.
template <class T>
KvrStatus copyInstead(const T* src, T* dst, int len) {
  if (src == dst) {
    KVRS_CHECK(pointers(dst), length(len, dst));
    return kvrStatusOk;
  }
  if constexpr (sizeof(T) == 1) {
    return kvrsCopy_8u(reinterpret_cast<const Kvr8u*>(src), reinterpret_cast<Kvr8u*>(dst), len);
  }
  if constexpr (sizeof(T) == 2) {
    return kvrsCopy_16s(reinterpret_cast<const Kvr16s*>(src), reinterpret_cast<Kvr16s*>(dst), len);
  }
  if constexpr (sizeof(T) == 4) {
    return kvrsCopy_32f(reinterpret_cast<const Kvr32f*>(src), reinterpret_cast<Kvr32f*>(dst), len);
  }
  if constexpr (sizeof(T) == 8) {
    return kvrsCopy_64f(reinterpret_cast<const Kvr64f*>(src), reinterpret_cast<Kvr64f*>(dst), len);
  }
}

}  // namespace kvrs

#endif
