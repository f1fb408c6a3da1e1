// Runs the fuzzer on inputs that are made from a seed, for as many of them or as long as is asked for.
// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "kvrs.h"
#include "tests/contract/contract.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

constexpr size_t kInputBytes = 1024;

void runInput(uint64_t seed, int64_t number) {
  Random random(seed * 0x9E3779B97F4A7C15u + static_cast<uint64_t>(number) * 0xD1B54A32D192ED03u + 1);
  uint8_t input[kInputBytes];
  for (size_t i = 0; i < kInputBytes; i += 8) {
    const uint64_t bits = random.bits();
    memcpy(input + i, &bits, sizeof bits);
  }
  fuzzing().call = number;
  fuzz(input, sizeof input);
}

double now() {
  timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

}  // namespace

// usage: kvrs_fuzz --seed S --first N --count N --seconds T --results FILE --verbose 1
// Ends with a line for each function: its name, and how often it has returned each status, if it was called at all.
int main(int argc, char** argv) {
  int64_t first = 0, count = INT64_MAX;
  double seconds = 1e9;
  for (int i = 1; i + 1 < argc; i += 2) {
    const char* const value = argv[i + 1];
    if (strcmp(argv[i], "--seed") == 0) fuzzing().seed = strtoull(value, nullptr, 10);
    if (strcmp(argv[i], "--first") == 0) first = atoll(value);
    if (strcmp(argv[i], "--verbose") == 0) fuzzing().isVerbose = atoi(value) != 0;
    if (strcmp(argv[i], "--count") == 0) count = atoll(value);
    if (strcmp(argv[i], "--seconds") == 0) seconds = atof(value);
    if (strcmp(argv[i], "--results") == 0) fuzzing().results = fopen(value, "w");
  }
  startFuzzing();
  const double end = now() + seconds;
  int64_t done = 0;
  for (; done < count && (done % 64 != 0 || now() < end); ++done) runInput(fuzzing().seed, first + done);
  if (fuzzing().results != nullptr) fclose(fuzzing().results);
  for (const Function& f : functions()) fuzzing().seen[f.name];
  for (const auto& [name, seen] : fuzzing().seen) {
    printf("seen %s", name.c_str());
    for (const auto& [status, times] : seen.statuses)
      printf(" %d:%lld", status, static_cast<long long>(times));
    printf("\n");
  }
  return fuzzing().failures != 0;
}
