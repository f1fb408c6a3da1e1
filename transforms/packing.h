// Where the packed layouts keep the terms of the spectrum of n real numbers (kvrs/fft.h tells the layouts).
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_PACKING_H
#define KVRS_TRANSFORMS_PACKING_H

#include <cstddef>
#include <cstring>

#include "frame/unaligned.h"

namespace kvrs {

enum class Packing { kPerm, kPack, kCcs };

// The last real term, n even.
template <Packing kPacking>
constexpr size_t lastTerm(size_t n) {
  return kPacking == Packing::kPerm ? 1 : kPacking == Packing::kPack ? n - 1 : n;
}

// The real part of the first complex term.
template <Packing kPacking>
constexpr size_t firstPair(size_t n) {
  return kPacking == Packing::kCcs || (kPacking == Packing::kPerm && n % 2 == 0) ? 2 : 1;
}

// Perm to the packing asked for, in place.
template <Packing kPacking, class T>
void packFromPerm(T* x, size_t n) {
  using unaligned::get;
  using unaligned::put;
  if constexpr (kPacking == Packing::kPack) {
    if (n % 2 != 0 || n == 2) return;
    const T last = get(x + 1);
    std::memmove(x + 1, x + 2, (n - 2) * sizeof(T));
    put(last, x + n - 1);
  } else if constexpr (kPacking == Packing::kCcs) {
    if (n % 2 == 0) {
      put(get(x + 1), x + n);
      put(T(0), x + n + 1);
    } else {
      std::memmove(x + 2, x + 1, (n - 1) * sizeof(T));
    }
    put(T(0), x + 1);
  }
}

// Any packing to Perm; src may be dst.
template <Packing kPacking, class T>
void permFromPack(const T* src, T* dst, size_t n) {
  const T first = unaligned::get(src);
  const bool even = n % 2 == 0;
  const T last = even ? unaligned::get(src + lastTerm<kPacking>(n)) : first;
  const size_t head = even ? 2 : 1;
  std::memmove(dst + head, src + firstPair<kPacking>(n), (n - head) * sizeof(T));
  unaligned::put(first, dst);
  if (even) unaligned::put(last, dst + 1);
}

}  // namespace kvrs

#endif
