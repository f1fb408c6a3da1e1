// The fuzzer's entry for clang's libFuzzer, which has the main program.
// SPDX-License-Identifier: MIT
#include "tests/fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kvrs::test;
  static const bool isStarted = [] {
    startFuzzing();
    fuzzing().abortsOnFailure = true;
    return true;
  }();
  fuzz(data, isStarted ? size : 0);
  return 0;
}
