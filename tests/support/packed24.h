// Packed elements of 24 bits in tests.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_PACKED24_H
#define KVRS_TESTS_SUPPORT_PACKED24_H

#include <cstdint>
#include <string>

#include "kvrs/types.h"

namespace kvrs::test {

struct Packed {
  Kvr8u low = 0, middle = 0, high = 0;

  static Packed of(int64_t value) {
    return {static_cast<Kvr8u>(value), static_cast<Kvr8u>(value >> 8), static_cast<Kvr8u>(value >> 16)};
  }
  int32_t asUnsigned() const { return low + 256 * middle + 65536 * high; }
  int32_t asSigned() const { return asUnsigned() - (high >= 128 ? 1 << 24 : 0); }
};
static_assert(sizeof(Packed) == 3);

inline std::string show(Packed value) {
  return std::to_string(value.asSigned());
}

}  // namespace kvrs::test

#endif
