// The arguments at which functions are compared with wide arithmetic: number i of a function is the same in every program.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_ACCURACY_ARGUMENTS_H
#define KVRS_BENCH_ACCURACY_ARGUMENTS_H

#include <bit>
#include <cmath>
#include <cstdint>

namespace kvrs::accuracy {

// Elements of a call, and of what goes from program to program at a time.
inline constexpr size_t kBlock = 8192;

// A single of these bits.
inline float single(uint64_t i) {
  return std::bit_cast<float>(static_cast<uint32_t>(i));
}

// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
inline uint64_t hash(uint64_t i) {
  uint64_t z = (i + 1) * 0x9E3779B97F4A7C15u;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

// In [-1, 1).
inline double unit(uint64_t i) {
  return static_cast<double>(static_cast<int64_t>(hash(i))) * 0x1p-63;
}

// A double of either sign: all bits by chance, but with an exponent from `lowest` on up to below `highest`.
inline double ofExponents(uint64_t i, int lowest, int highest) {
  const uint64_t bits = hash(i), count = static_cast<uint64_t>(highest - lowest);
  const uint64_t exponent = static_cast<uint64_t>(1023 + lowest) + hash(~i) % count;
  return std::bit_cast<double>((bits & 0x800FFFFFFFFFFFFFu) | exponent << 52);
}

}  // namespace kvrs::accuracy

#endif
