// Comparing with peers. Every case is registered under "family/case/who"; who is "kvrs" for the library. The
// ratio of a peer is its median time over ours (tools/bench_ratios.py).
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_SUPPORT_BENCH_H
#define KVRS_BENCH_SUPPORT_BENCH_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace kvrs::bench {

// Runs `body` as one contestant of a case.
template <class Body>
void add(const std::string& name, const std::string& who, Body body) {
  benchmark::RegisterBenchmark((name + "/" + who).c_str(), [body](benchmark::State& state) {
    for (auto _ : state) {
      body();
      benchmark::ClobberMemory();
    }
  });
}

// An array aligned to a cache line, alive as long as a contestant holds it, filled with small numbers that
// are no special values of any type.
template <class T>
std::shared_ptr<T> array(size_t count) {
  void* block = nullptr;
  if (posix_memalign(&block, 64, count * sizeof(T) + 64) != 0) abort();
  T* data = static_cast<T*>(block);
  uint32_t state = 1;
  for (size_t i = 0; i < count * sizeof(T) / sizeof(uint8_t); ++i) {
    state = state * 1664525u + 1013904223u;
    reinterpret_cast<uint8_t*>(data)[i] = static_cast<uint8_t>(state >> 24);
  }
  if constexpr (requires { T{} < T{0.5f}; }) {
    if constexpr (T(0.5f) != T(0)) {
      for (size_t i = 0; i < count; ++i) {
        state = state * 1664525u + 1013904223u;
        data[i] = static_cast<T>(static_cast<int32_t>(state)) * static_cast<T>(0x1p-31);
      }
    }
  }
  return std::shared_ptr<T>(data, [](T* p) { free(p); });
}

// The bench's main runs these before it starts, in the order of the linker.
using Registration = void (*)();
struct Register {
  explicit Register(Registration registration);
};

}  // namespace kvrs::bench

#endif
