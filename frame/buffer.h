// Caller's memory: rounding a pointer up, cutting tables out of a block, and the work area rule of the
// transforms.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_BUFFER_H
#define KVRS_FRAME_BUFFER_H

#include <cstddef>
#include <cstdint>

#include "kvrs/types.h"
#include "kvrscore.h"

namespace kvrs {

// Caller's buffers are used from the next multiple of 32 bytes on.
inline constexpr size_t kBufferAlignment = 32;

constexpr uintptr_t roundUp(uintptr_t value, size_t alignment) {
  return (value + alignment - 1) & ~(static_cast<uintptr_t>(alignment) - 1);
}

template <class T>
T* alignUp(T* p, size_t alignment = kBufferAlignment) {
  return reinterpret_cast<T*>(roundUp(reinterpret_cast<uintptr_t>(p), alignment));
}

// Hands out the tables of a block one behind the other. A size query runs the same requests on a null block,
// so that the two cannot drift apart: used() is then the size.
class Carver {
 public:
  explicit Carver(void* block) : base_(reinterpret_cast<uintptr_t>(block)), next_(base_) {}

  template <class T>
  T* take(size_t count, size_t alignment = alignof(T)) {
    next_ = roundUp(next_, alignment);
    T* table = reinterpret_cast<T*>(next_);
    next_ += count * sizeof(T);
    return table;
  }

  size_t used() const { return next_ - base_; }

 private:
  uintptr_t base_;
  uintptr_t next_;
};

// The work area of one transform call: none when no bytes are needed; the caller's buffer, rounded up, when
// there is one; otherwise a block of its own for as long as the scope lasts.
//
//   WorkArea work(spec->workSize, buffer);
//   if (!work.ok()) return kvrStatusOutOfMemory;
class WorkArea {
 public:
  WorkArea(int bytes, Kvr8u* buffer) : needed_(bytes > 0) {
    if (!needed_) return;
    if (buffer == nullptr) owned_ = kvrMalloc(static_cast<size_t>(bytes));
    memory_ = buffer != nullptr ? alignUp(buffer) : static_cast<Kvr8u*>(owned_);
  }
  ~WorkArea() {
    if (owned_ != nullptr) kvrFree(owned_);
  }
  WorkArea(const WorkArea&) = delete;
  WorkArea& operator=(const WorkArea&) = delete;

  bool ok() const { return !needed_ || memory_ != nullptr; }

  // Null when no bytes are needed.
  template <class T>
  T* as() const {
    return reinterpret_cast<T*>(memory_);
  }

 private:
  bool needed_;
  void* owned_ = nullptr;
  Kvr8u* memory_ = nullptr;
};

}  // namespace kvrs

#endif
