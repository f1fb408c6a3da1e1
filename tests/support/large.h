// Vectors too large for the nearer caches, where functions ask for memory ahead.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_LARGE_H
#define KVRS_TESTS_SUPPORT_LARGE_H

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/support/arena.h"

namespace kvrs::test {

// From so many bytes on, all arrays of a call together, the loops ask for memory ahead (frame/loop.h). The size of the
// machine's caches decides nothing.
inline constexpr size_t kFarBytes = size_t{4} << 20;

// A vector of a few elements more, `offset` bytes off a multiple of 64, with its canaries.
template <class T>
class LargeVector {
 public:
  explicit LargeVector(size_t offset = 0)
      : bytes_(kFarBytes + 1000 * sizeof(T)), memory_(bytes_ + 256, kCanary) {
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

  size_t bytes_;
  std::vector<uint8_t> memory_;
  uint8_t* begin_;
};

}  // namespace kvrs::test

#endif
