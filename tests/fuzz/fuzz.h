// The fuzzer: turns bytes into calls of random functions and looks whether each keeps what the library promises.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FUZZ_FUZZ_H
#define KVRS_TESTS_FUZZ_FUZZ_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <set>
#include <string>

#include "kvrs/types.h"

namespace kvrs::test {

// What has been seen of a function.
struct Seen {
  int64_t calls = 0;
  std::map<KvrStatus, int64_t> statuses;
};

// Where reports go, and what they name.
struct Fuzzing {
  uint64_t seed = 0;
  int64_t call = 0;  // which input of this seed is being run
  FILE* results =
      nullptr;  // gets a line for each call: its number, function, status and a hash of its results
  bool isVerbose = false;  // prints every call
  bool abortsOnFailure = false;
  std::map<std::string, Seen> seen;
  int64_t calls = 0;
  int64_t failures = 0;
  std::set<std::string> failed;  // what has been reported of which function
};
Fuzzing& fuzzing();

// Before the first input.
void startFuzzing();

// Runs what some bytes mean: calls of one function, or of several on one record.
void fuzz(const uint8_t* data, size_t size);

}  // namespace kvrs::test

#endif
