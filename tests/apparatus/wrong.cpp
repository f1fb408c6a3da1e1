// SPDX-License-Identifier: MIT
#include "tests/apparatus/wrong.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kvrs::wrong {
namespace {

const char* wanted() {
  const char* name = getenv("KVRS_WRONG");
  return name != nullptr ? name : "";
}

// Runs after the constructors of all faults, as its file is the last one that is linked.
[[gnu::constructor(65535)]] void endList() {
  if (strcmp(wanted(), "list") != 0) return;
  fflush(stdout);
  _exit(0);
}

}  // namespace

Fault::Fault(const char* what, const char* tests) : isOn_(strcmp(what, wanted()) == 0) {
  if (strcmp(wanted(), "list") == 0) printf("%s\t%s\n", what, tests);
}

}  // namespace kvrs::wrong
