// Comparing with peers. Every case is registered under "family/case"; of its contestants "kvrs" is the library. How they
// are measured: support/main.cpp.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_SUPPORT_BENCH_H
#define KVRS_BENCH_SUPPORT_BENCH_H

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kvrs::bench {

// So many calls in a row.
using Run = std::function<void(long calls)>;

// A contestant of a case. `prepare` makes it ready, which is not measured, and only if the case is asked for.
void addPrepared(const std::string& name, const std::string& who, std::function<Run()> prepare);

// Nothing is kept in registers or left out from one call to the next.
inline void writeMemory() {
  asm volatile("" ::: "memory");
}
// The value is wanted, for all that the compiler knows.
template <class T>
void keep(const T& value) {
  asm volatile("" ::"g"(&value) : "memory");
}

// Runs `body` as one contestant of a case.
template <class Body>
void add(const std::string& name, const std::string& who, Body body) {
  addPrepared(name, who, [body] {
    return [body](long calls) {
      for (; calls > 0; --calls) {
        body();
        writeMemory();
      }
    };
  });
}

template <class T>
std::shared_ptr<T> newArray(size_t count) {
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

// An array aligned to a cache line, filled with small numbers that are no special values of any type. All cases are
// registered before the first one runs, more of them than a 32-bit process has room for, so long arrays are dealt out
// of a few: a case may hold up to eight of a length.
template <class T>
std::shared_ptr<T> array(size_t count) {
  constexpr size_t kLong = size_t{1} << 18, kOfALength = 8;
  if (count * sizeof(T) < kLong) return newArray<T>(count);
  static std::map<size_t, std::vector<std::shared_ptr<T>>> dealt;
  static std::map<size_t, size_t> next;
  auto& arrays = dealt[count];
  const size_t i = next[count]++ % kOfALength;
  if (i == arrays.size()) arrays.push_back(newArray<T>(count));
  return arrays[i];
}

// The bench's main runs these before it starts, in the order of the linker.
using Registration = void (*)();
struct Register {
  explicit Register(Registration registration);
};

}  // namespace kvrs::bench

#endif
