// The largest errors of elementary functions, in units in the last place of the result.
//
//   kvrs_accuracy_64                                     the functions' names
//   kvrs_accuracy_64 FUNCTION [BEGIN COUNT]              writes the results of the module that is loaded
//   kvrs_accuracy_64 FUNCTION BEGIN COUNT COMMAND...     reads them from commands that are such programs, and prints for each
//                                                        command its largest error and where that is
//
// tools/accuracy.py calls it.
// SPDX-License-Identifier: MIT
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "bench/accuracy/arguments.h"
#include "bench/accuracy/functions.h"

namespace kvrs::accuracy {
namespace {

// |got - want| in units of T at `want`. Two NaN and equal infinities are 0 apart; what rounds to infinity may be it.
template <class T, class W>
double distance(T got, W want) {
  using L = std::numeric_limits<T>;
  if (std::isnan(want)) return std::isnan(got) ? 0 : INFINITY;
  const T rounded = static_cast<T>(want);
  if (std::isinf(rounded) || !std::isfinite(got)) return rounded == got ? 0 : INFINITY;
  int exponent;
  std::frexp(want, &exponent);
  if (want == 0 || exponent < L::min_exponent) exponent = L::min_exponent;
  return static_cast<double>(std::fabs(static_cast<W>(got) - want) / std::ldexp(W{1}, exponent - L::digits));
}

struct Worst {
  double error = 0;
  uint64_t at = 0;

  void meet(double found, uint64_t i) {
    if (found <= error) return;
    error = found;
    at = i;
  }
};

// The same, quickly, for singles: whole blocks whose results are ordinary numbers are looked at in vectors.
void compare(const float* got, const double* want, uint64_t begin, size_t count, Worst& worst) {
  constexpr size_t kAtOnce = 64;
  for (size_t i = 0; i < count; i += kAtOnce) {
    const size_t end = std::min(count, i + kAtOnce);
    double most = 0;
    bool isOrdinary = true;
    for (size_t k = i; k < end; ++k) {
      const uint64_t exponent = std::bit_cast<uint64_t>(want[k]) >> 52 & 2047;
      isOrdinary = isOrdinary & (exponent > 1023 - 126) & (exponent < 1023 + 127);
      const double inverse = std::bit_cast<double>((2046 + 23 - exponent) << 52);
      const double error = std::fabs(got[k] - want[k]) * inverse;
      most = error > most || error != error ? error : most;
    }
    if (isOrdinary && most <= worst.error) continue;
    for (size_t k = i; k < end; ++k) worst.meet(distance(got[k], want[k]), begin + k);
  }
}

void compare(const double* got, const long double* want, uint64_t begin, size_t count, Worst& worst) {
  for (size_t i = 0; i < count; ++i) worst.meet(distance(got[i], want[i]), begin + i);
}

int write(const Function& f, uint64_t begin, uint64_t count) {
  const size_t bytes = f.givesDoubles ? 8 : 4;
  alignas(64) static uint8_t results[8 * kBlock];
  for (uint64_t i = 0; i < count; i += kBlock) {
    const size_t n = static_cast<size_t>(std::min<uint64_t>(kBlock, count - i));
    f.results(begin + i, n, results);
    if (fwrite(results, bytes, n, stdout) != n) return 1;
  }
  return fflush(stdout) == 0 ? 0 : 1;
}

int compareAll(const Function& f, uint64_t begin, uint64_t count, char** commands, int commandCount) {
  std::vector<FILE*> pipes;
  for (int c = 0; c < commandCount; ++c) pipes.push_back(popen(commands[c], "r"));
  std::vector<Worst> worst(pipes.size());
  const size_t bytes = f.givesDoubles ? 8 : 4;
  alignas(64) static uint8_t got[8 * kBlock];
  static double wanted[kBlock];
  static long double wantedWide[kBlock];
  for (uint64_t i = 0; i < count; i += kBlock) {
    const size_t n = static_cast<size_t>(std::min<uint64_t>(kBlock, count - i));
    if (f.givesDoubles) {
      f.wantedWide(begin + i, n, wantedWide);
    } else {
      f.wanted(begin + i, n, wanted);
    }
    for (size_t c = 0; c < pipes.size(); ++c) {
      if (pipes[c] == nullptr || fread(got, bytes, n, pipes[c]) != n) {
        fprintf(stderr, "nothing from: %s\n", commands[c]);
        return 1;
      }
      if (f.givesDoubles) {
        compare(reinterpret_cast<const double*>(got), wantedWide, begin + i, n, worst[c]);
      } else {
        compare(reinterpret_cast<const float*>(got), wanted, begin + i, n, worst[c]);
      }
    }
  }
  for (size_t c = 0; c < pipes.size(); ++c) {
    pclose(pipes[c]);
    printf("%.4f %.9g\n", worst[c].error, f.argument(worst[c].at));
  }
  return 0;
}

}  // namespace
}  // namespace kvrs::accuracy

int main(int argc, char** argv) {
  using namespace kvrs::accuracy;
  const Function* const f = find(argc > 1 ? argv[1] : nullptr);
  if (argc < 2) return 0;
  if (f == nullptr) {
    fprintf(stderr, "no function %s\n", argv[1]);
    return 1;
  }
  const uint64_t begin = argc > 3 ? strtoull(argv[2], nullptr, 10) : 0;
  const uint64_t count =
      std::min<uint64_t>(argc > 3 ? strtoull(argv[3], nullptr, 10) : f->count, f->count - begin);
  return argc > 4 ? compareAll(*f, begin, count, argv + 4, argc - 4) : write(*f, begin, count);
}
