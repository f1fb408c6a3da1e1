// Whole arrays of zeros, copies and one value.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_STORE_H
#define KVRS_FRAME_STORE_H

#include <cstddef>
#include <cstring>

namespace kvrs {

template <class T>
void storeZeros(T* dst, size_t len) {
  memset(static_cast<void*>(dst), 0, len * sizeof(T));
}

// All bits set.
template <class T>
void storeOnes(T* dst, size_t len) {
  memset(static_cast<void*>(dst), 0xFF, len * sizeof(T));
}

// Nothing where src is dst.
template <class T>
void storeCopy(const T* src, T* dst, size_t len) {
  if (src != dst) memcpy(static_cast<void*>(dst), src, len * sizeof(T));
}

}  // namespace kvrs

#endif
