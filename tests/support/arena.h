// Memory for one array of a test: any byte alignment, a page that may not be touched right before it or right
// behind it, and canaries in the bytes between.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_ARENA_H
#define KVRS_TESTS_SUPPORT_ARENA_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace kvrs::test {

enum class Side {
  front,  // right behind a page that may not be touched
  back,   // right before one
};

class Arena {
 public:
  explicit Arena(size_t bytes = 0) { map(bytes); }
  ~Arena() { munmap(map_, mapped_); }
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  // `count` elements, `offset` bytes (below 64) away from the guard page of a side, in new memory if what there is does
  // not hold them. Fills the array and the bytes around it with canaries.
  template <class T>
  T* place(size_t count, Side side = Side::back, size_t offset = 0) {
    bytes_ = count * sizeof(T);
    if (offset > kMargin) abort();
    if (bytes_ + 2 * kMargin > usable_) {
      munmap(map_, mapped_);
      map(bytes_);
    }
    begin_ = side == Side::front ? first_ + offset : first_ + usable_ - offset - bytes_;
    uint8_t* low = lowEdge();
    memset(low, kCanary, static_cast<size_t>(highEdge() - low));
    return reinterpret_cast<T*>(begin_);
  }

  // No byte around the array has changed.
  bool intact() const {
    for (const uint8_t* p = lowEdge(); p != begin_; ++p)
      if (*p != kCanary) return false;
    for (const uint8_t* p = begin_ + bytes_; p != highEdge(); ++p)
      if (*p != kCanary) return false;
    return true;
  }

  // Nor has one inside, if all it ever held are the canaries of place().
  bool untouched() const {
    for (size_t i = 0; i < bytes_; ++i)
      if (begin_[i] != kCanary) return false;
    return intact();
  }

 private:
  static constexpr size_t kMargin = 256;
  static constexpr uint8_t kCanary = 0xA5;

  void map(size_t bytes) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    usable_ = (bytes + 2 * kMargin + page - 1) / page * page;
    mapped_ = usable_ + 2 * page;
    void* all = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) abort();
    map_ = static_cast<uint8_t*>(all);
    first_ = map_ + page;
    if (mprotect(map_, page, PROT_NONE) != 0 || mprotect(first_ + usable_, page, PROT_NONE) != 0) abort();
  }

  uint8_t* lowEdge() const {
    return static_cast<size_t>(begin_ - first_) > kMargin ? begin_ - kMargin : first_;
  }
  uint8_t* highEdge() const {
    uint8_t* end = begin_ + bytes_;
    uint8_t* last = first_ + usable_;
    return static_cast<size_t>(last - end) > kMargin ? end + kMargin : last;
  }

  uint8_t* map_;
  uint8_t* first_;
  size_t usable_, mapped_;
  uint8_t* begin_ = nullptr;
  size_t bytes_ = 0;
};

// Elements at any address, aligned or not.
template <class T>
T get(const T* array, size_t i) {
  T value;
  memcpy(&value, reinterpret_cast<const uint8_t*>(array) + i * sizeof(T), sizeof(T));
  return value;
}
template <class T>
void put(T* array, size_t i, T value) {
  memcpy(reinterpret_cast<uint8_t*>(array) + i * sizeof(T), &value, sizeof(T));
}

}  // namespace kvrs::test

#endif
