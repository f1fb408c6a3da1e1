// Where the packed layouts keep the terms of the spectrum of n real numbers (kvrs/fft.h tells the layouts).
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_PACKING_H
#define KVRS_TRANSFORMS_PACKING_H

#include <cstddef>

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

}  // namespace kvrs

#endif
