// The stream of words behind the random numbers, in integers alone.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SYNTH_RANDOM_MODEL_H
#define KVRS_TESTS_SYNTH_RANDOM_MODEL_H

#include <cstdint>

namespace kvrs::test {

class WordModel {
 public:
  explicit WordModel(uint32_t seed) : x1_(seed), x2_(step(seed)), x3_(step(x2_)) {}

  int64_t next() {
    const uint64_t kModulus = uint64_t{1} << 32;
    uint64_t t = (x2_ + kModulus - x3_) % kModulus;
    if (borrows_) t = (t + kModulus - 1) % kModulus;
    lcg_ = step(lcg_);
    borrows_ = t >= kModulus / 2;
    const uint64_t n = borrows_ ? (t + kModulus - 18) % kModulus : t;
    x3_ = x2_;
    x2_ = x1_;
    x1_ = n;
    const uint64_t w = (n + lcg_) % kModulus;
    return w < kModulus / 2 ? static_cast<int64_t>(w)
                            : static_cast<int64_t>(w) - static_cast<int64_t>(kModulus);
  }
  uint32_t x1() const { return static_cast<uint32_t>(x1_); }
  uint64_t lcg() const { return lcg_; }

 private:
  static uint64_t step(uint64_t x) { return (69069 * x + 1013904243) % (uint64_t{1} << 32); }

  uint64_t lcg_ = 1131199209, x1_, x2_, x3_;
  bool borrows_ = true;
};

inline constexpr uint32_t kSeeds[] = {0, 1, 7, 69069, 0x7FFFFFFF, 0x80000000, 0xDEADBEEF, 0xFFFFFFFF};

}  // namespace kvrs::test

#endif
