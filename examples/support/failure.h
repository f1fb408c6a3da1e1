// What ends the program with a message.
// SPDX-License-Identifier: MIT
#pragma once

#include <kvrs.h>

#include <stdexcept>
#include <string>

namespace examples {

struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Ends the program unless the library's call succeeded: check("kvrsFIR_32f", kvrsFIR_32f(...)).
inline void check(const char* call, KvrStatus status) {
  if (status < 0) throw Failure(std::string(call) + " failed: " + kvrsStatusText(status));
}

}  // namespace examples
