// The version record.
// SPDX-License-Identifier: MIT
#include "kvrs/frame.h"

// KVRS_TARGET_CPU is the module's name, given by the build.
static const KvrLibraryVersion version = {
    6, 1, 137, 844, KVRS_TARGET_CPU, "kvrs" KVRS_TARGET_CPU "-6.1.dll", "6.1 build 137.53", "Jan 26 2010",
};

const KvrLibraryVersion* kvrsGetLibVersion() noexcept {
  return &version;
}
