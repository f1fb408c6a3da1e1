// Numbers on a command line.
// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/failure.h"

namespace examples {

// The value of an option; what is no number, or out of range, ends the program with a message.
inline double number(const std::string& option, const char* text, double lowest, double highest) {
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (end == text || *end != '\0' || !(value >= lowest && value <= highest)) {
    char range[64];
    snprintf(range, sizeof range, "%g to %g", lowest, highest);
    throw Failure(option + " wants a number from " + range + ", not \"" + text + "\"");
  }
  return value;
}

inline int wholeNumber(const std::string& option, const char* text, int lowest, int highest) {
  const double value = number(option, text, lowest, highest);
  if (value != std::floor(value)) throw Failure(option + " wants a whole number, not \"" + text + "\"");
  return static_cast<int>(value);
}

}  // namespace examples
