// Vectors too large for the cache, where functions ask for memory ahead or bypass the cache.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_LARGE_H
#define KVRS_TESTS_SUPPORT_LARGE_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <vector>

#include "tests/support/arena.h"

namespace kvrs::test {

// A vector of a few elements more than the last-level cache holds (1 MiB, where its size is not known), `offset` bytes
// off a multiple of 64, with its canaries.
template <class T>
class LargeVector {
 public:
  explicit LargeVector(size_t offset = 0)
      : bytes_(cacheBytes() + 1000 * sizeof(T)), memory_(bytes_ + 256, kCanary) {
    const size_t misfit = reinterpret_cast<uintptr_t>(memory_.data()) % 64;
    begin_ = memory_.data() + (128 - misfit) + offset;
  }

  T* data() { return reinterpret_cast<T*>(begin_); }
  int size() const { return static_cast<int>(bytes_ / sizeof(T)); }

  // Every element is want(i), and nothing outside was written.
  template <class Want>
  void expect(Want want) {
    const int len = size();
    for (int i = 0; i < len; ++i) {
      const T expected = want(static_cast<size_t>(i)), got = get(data(), static_cast<size_t>(i));
      if (memcmp(&expected, &got, sizeof got) != 0) {
        ADD_FAILURE() << "element " << i << " of " << len;
        return;
      }
    }
    const uint8_t* end = begin_ + static_cast<size_t>(len) * sizeof(T);
    for (const uint8_t* p = memory_.data(); p != begin_; ++p) ASSERT_EQ(kCanary, *p);
    for (const uint8_t* p = end; p != memory_.data() + memory_.size(); ++p) ASSERT_EQ(kCanary, *p);
  }

 private:
  static constexpr uint8_t kCanary = 0xA5;

  static size_t cacheBytes() {
    const long level3 = sysconf(_SC_LEVEL3_CACHE_SIZE);
    const long level2 = sysconf(_SC_LEVEL2_CACHE_SIZE);
    return level3 > 0   ? static_cast<size_t>(level3)
           : level2 > 0 ? static_cast<size_t>(level2)
                        : size_t{1} << 20;
  }

  size_t bytes_;
  std::vector<uint8_t> memory_;
  uint8_t* begin_;
};

}  // namespace kvrs::test

#endif
