// SPDX-License-Identifier: MIT
#include <cstdio>
#include <vector>

#include "bench/support/bench.h"
#include "kvrs.h"

namespace kvrs::bench {
namespace {
std::vector<Registration>& registrations() {
  static std::vector<Registration> all;
  return all;
}
}  // namespace

Register::Register(Registration registration) {
  registrations().push_back(registration);
}
}  // namespace kvrs::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::AddCustomContext("module", kvrsGetLibVersion()->targetCpu);
  for (auto registration : kvrs::bench::registrations()) registration();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
