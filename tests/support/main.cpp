// Runs the tests against the module that KVRS_TEST_MODULE names, and makes sure that it is this one which is
// loaded.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "kvrs.h"

namespace {

constexpr int kSkipped = 77;  // for ctest

bool processorRuns(const char* module) {
  __builtin_cpu_init();
  if (strcmp(module, "s8") == 0) return __builtin_cpu_supports("ssse3");
  if (strcmp(module, "v2") == 0) return __builtin_cpu_supports("sse4.2") && __builtin_cpu_supports("popcnt");
  if (strcmp(module, "v3") == 0) {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
  }
  if (strcmp(module, "v4") == 0) {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl");
  }
  fprintf(stderr, "unknown module %s\n", module);
  exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const char* wanted = getenv("KVRS_TEST_MODULE");
  const char* loaded = kvrsGetLibVersion()->targetCpu;
  if (wanted != nullptr) {
    if (strncmp(wanted, loaded, sizeof(KvrLibraryVersion::targetCpu)) != 0) {
      fprintf(stderr, "wanted module %s, but %s is loaded\n", wanted, loaded);
      return 1;
    }
    if (!processorRuns(wanted)) {
      printf("SKIPPED: this processor cannot run module %s\n", wanted);
      return kSkipped;
    }
  }
  printf("module %s, %zu-bit\n", loaded, 8 * sizeof(void*));
  return RUN_ALL_TESTS();
}
