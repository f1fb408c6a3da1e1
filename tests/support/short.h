// Runs that leave cases out: of modules whose code is that of another one in narrower or wider vectors, and of modules
// that run slowly, under sanitizers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_SHORT_H
#define KVRS_TESTS_SUPPORT_SHORT_H

#include <cstdlib>
#include <cstring>

namespace kvrs::test {

// KVRS_TEST_SWEEP=short. Every function, type and threshold is still there, in fewer lengths, alignments and trials.
inline bool isShort() {
  static const bool is = [] {
    const char* wanted = getenv("KVRS_TEST_SWEEP");
    return wanted != nullptr && strcmp(wanted, "short") == 0;
  }();
  return is;
}

// A step in a full run, or the one in a short run.
template <class T>
T inFull(T full, T inShort) {
  return isShort() ? inShort : full;
}

}  // namespace kvrs::test

#endif
