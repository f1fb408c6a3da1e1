// What the fuzzer knows of the functions besides their table in tests/contract/contract.h (made by
// tools/make_fuzz_table.py).
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FUZZ_TABLE_H
#define KVRS_TESTS_FUZZ_TABLE_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "kvrs/types.h"

namespace kvrs::test {

struct Facts {
  const char* name;
  uint32_t constants;                   // a bit for each argument that points at const
  std::span<const KvrStatus> statuses;  // that the function's contract names
  const char* record;                   // the struct that it makes, takes or releases, or ""
  bool isExact;                         // whether its results are the same bytes in every module
};

struct Allocation {
  const char* name;
  void* (*call)(int len);
  size_t elementBytes;
};

// In the order of functions().
std::span<const Facts> facts();
// kvrsMalloc of all types.
std::span<const Allocation> allocations();

}  // namespace kvrs::test

#endif
