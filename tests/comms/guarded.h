// An array of a call: anywhere, aligned or not, next to a page that may not be touched.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_COMMS_GUARDED_H
#define KVRS_TESTS_COMMS_GUARDED_H

#include <cstring>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/random.h"

namespace kvrs::test {

template <class T>
class Guarded {
 public:
  Guarded(const std::vector<T>& values, Random& random)
      : count_(values.size()), arena_(count_ * sizeof(T)), array_(place(random)) {
    memcpy(static_cast<void*>(array_), values.data(), count_ * sizeof(T));
  }

  operator T*() const { return array_; }
  std::vector<T> values() const {
    std::vector<T> result(count_);
    memcpy(static_cast<void*>(result.data()), array_, count_ * sizeof(T));
    return result;
  }
  bool intact() const { return arena_.intact(); }

 private:
  T* place(Random& random) {
    const Side side = random.below(2) ? Side::front : Side::back;
    return arena_.place<T>(count_, side, random.below(3) ? random.below(64) : 0);
  }

  size_t count_;
  Arena arena_;
  T* array_;
};

}  // namespace kvrs::test

#endif
