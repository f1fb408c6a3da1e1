// Functions of doubles as loops that the compiler makes calls of its vector library of. Their errors are below 4 units in the
// last place of a double, 2^-27 of those of a single.
// SPDX-License-Identifier: MIT
#include <cmath>

#include "bench/accuracy/functions.h"

namespace kvrs::accuracy {

void apply(Wide f, const double* x, size_t count, double* to) {
  switch (f) {
    case Wide::log:
      for (size_t i = 0; i < count; ++i) to[i] = std::log(x[i]);
      break;
    case Wide::exp:
      for (size_t i = 0; i < count; ++i) to[i] = std::exp(x[i]);
      break;
    case Wide::atan:
      for (size_t i = 0; i < count; ++i) to[i] = std::atan(x[i]);
      break;
    case Wide::sqrt:
      for (size_t i = 0; i < count; ++i) to[i] = std::sqrt(x[i]);
      break;
    case Wide::cbrt:
      for (size_t i = 0; i < count; ++i) to[i] = std::cbrt(x[i]);
      break;
    case Wide::sin:
      for (size_t i = 0; i < count; ++i) to[i] = std::sin(x[i]);
      break;
    case Wide::cos:
      for (size_t i = 0; i < count; ++i) to[i] = std::cos(x[i]);
      break;
  }
}

}  // namespace kvrs::accuracy
