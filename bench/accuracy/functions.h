// The functions that are compared with wide arithmetic.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_ACCURACY_FUNCTIONS_H
#define KVRS_BENCH_ACCURACY_FUNCTIONS_H

#include <cstddef>
#include <cstdint>

namespace kvrs::accuracy {

struct Function {
  const char* name;
  bool givesDoubles;
  uint64_t count;  // arguments 0 .. count-1
  // Results of the module for `count` arguments from `begin` on, at most kBlock.
  void (*results)(uint64_t begin, size_t count, void* to);
  // What they should be: in double precision for singles, in extended precision for doubles.
  void (*wanted)(uint64_t begin, size_t count, double* to);
  void (*wantedWide)(uint64_t begin, size_t count, long double* to);
  // The argument, to be shown.
  double (*argument)(uint64_t i);
};

// Null for an unknown name; with no name, all names are printed.
const Function* find(const char* name);

// Loops over the C library's functions of doubles, in vectors: oracle.cpp.
enum class Wide { log, exp, atan, sqrt, cbrt, sin, cos };
void apply(Wide f, const double* x, size_t count, double* to);

}  // namespace kvrs::accuracy

#endif
