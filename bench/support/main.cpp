// Measures contestants against each other: KVRS_BENCH [FILTER [ROUNDS]] prints a line for each case and contestant whose
// name matches the regular expression: case, contestant, median time in nanoseconds, and the ratio to kvrs's time.
//
// The contestants of a case take turns in bursts of some ten microseconds, and the ratio is the median of those within
// a round: what disturbs the machine for longer than a round disturbs all of them alike, and what is shorter falls out
// of the median.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <vector>

#include "bench/support/bench.h"
#include "kvrs.h"

namespace kvrs::bench {
namespace {

constexpr double kBurst = 50e3;   // nanoseconds
constexpr double kLongest = 1e9;  // of a case, but for kLeastRounds
constexpr int kRounds = 101, kLeastRounds = 7;

std::vector<Registration>& registrations() {
  static std::vector<Registration> all;
  return all;
}

struct Contestant {
  std::string who;
  std::function<Run()> prepare;
};

// In the order of their registration.
struct Cases {
  std::vector<std::string> names;
  std::map<std::string, std::vector<Contestant>> contestants;
};

Cases& cases() {
  static Cases all;
  return all;
}

double nanosecondsOf(const Run& run, long calls) {
  const auto begin = std::chrono::steady_clock::now();
  run(calls);
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The calls of a burst, found by doubling; that warms caches and predictors too.
long callsOfBurst(const Run& run) {
  nanosecondsOf(run, 1);
  for (long calls = 1;; calls *= 2) {
    const double time = nanosecondsOf(run, calls);
    if (time >= kBurst / 2)
      return std::max(1L, static_cast<long>(static_cast<double>(calls) * kBurst / time));
  }
}

void measure(const std::string& name, const std::vector<Contestant>& contestants, int mostRounds) {
  const size_t n = contestants.size();
  std::vector<Run> runs;
  std::vector<long> calls;
  double round = 0;
  for (const Contestant& c : contestants) {
    runs.push_back(c.prepare());
    calls.push_back(callsOfBurst(runs.back()));
    round += nanosecondsOf(runs.back(), calls.back());
  }
  const int rounds = std::min(mostRounds, std::max(kLeastRounds, static_cast<int>(kLongest / round)));

  std::vector<std::vector<double>> times(n), ratios(n);
  for (int r = 0; r < rounds; ++r) {
    for (size_t i = 0; i < n; ++i) {
      const size_t k = (i + static_cast<size_t>(r)) % n;  // everyone is first in turn
      times[k].push_back(nanosecondsOf(runs[k], calls[k]) / static_cast<double>(calls[k]));
    }
    const auto ours = std::find_if(contestants.begin(), contestants.end(),
                                   [](const Contestant& c) { return c.who == "kvrs"; });
    if (ours == contestants.end()) continue;
    for (size_t k = 0; k < n; ++k)
      ratios[k].push_back(times[k].back() / times[ours - contestants.begin()].back());
  }
  for (size_t k = 0; k < n; ++k) {
    printf("%s\t%s\t%.2f\t%.4f\n", name.c_str(), contestants[k].who.c_str(), median(times[k]),
           ratios[k].empty() ? 0.0 : median(ratios[k]));
  }
  fflush(stdout);
}

}  // namespace

Register::Register(Registration registration) {
  registrations().push_back(registration);
}

void addPrepared(const std::string& name, const std::string& who, std::function<Run()> prepare) {
  auto& contestants = cases().contestants[name];
  if (contestants.empty()) cases().names.push_back(name);
  contestants.push_back({who, std::move(prepare)});
}

}  // namespace kvrs::bench

int main(int argc, char** argv) {
  using namespace kvrs::bench;
  const std::regex filter(argc > 1 ? argv[1] : ".");
  const int rounds = argc > 2 ? atoi(argv[2]) : kRounds;
  for (const Registration registration : registrations()) registration();
#ifdef __clang__
  const char* const compiler = __VERSION__;
#else
  const char* const compiler = "GCC " __VERSION__;
#endif
  printf("module\t%s\t%s\n", kvrsGetLibVersion()->targetCpu, compiler);
  for (const std::string& name : cases().names) {
    if (std::regex_search(name, filter)) measure(name, cases().contestants[name], rounds);
  }
}
