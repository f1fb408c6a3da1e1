// A user's program in C++: the difference of two bit patterns, and which module found it.
// SPDX-License-Identifier: MIT
#include <kvrs.h>
#include <kvrscore.h>

#include <cstdio>
#include <vector>

int main() {
  std::vector<Kvr32u> a(1000, 0xFFFF0000u), b(1000, 0x00FFFF00u), difference(1000);
  if (kvrsXor_32u(a.data(), b.data(), difference.data(), static_cast<int>(a.size())) != kvrStatusOk) return 1;
  for (Kvr32u bits : difference) {
    if (bits != 0xFF00FF00u) return 1;
  }
  ownSetNumThreads(3);
  if (ownGetNumThreads() != 3) return 1;
  std::printf("%s\n", kvrsGetLibVersion()->targetCpu);
}
