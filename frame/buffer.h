// Memory: rounding a pointer up, cutting tables out of a block, temporary blocks, and the work area rule of the
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

// A block of the core library's memory for as long as the scope lasts, none when no bytes are needed. A number of bytes that
// no address can tell is memory that cannot be had.
//
//   const Scratch copy(uint64_t{len} * sizeof(Kvr32f));
//   if (!copy.ok()) return kvrStatusOutOfMemory;
class Scratch {
 public:
  explicit Scratch(uint64_t bytes) : needed_(bytes > 0) {
    if (needed_ && bytes <= SIZE_MAX) block_ = kvrMalloc(static_cast<size_t>(bytes));
  }
  ~Scratch() {
    if (block_ != nullptr) kvrFree(block_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  bool ok() const { return !needed_ || block_ != nullptr; }

  // Null when no bytes are needed, or none can be had.
  template <class T>
  T* as() const {
    return static_cast<T*>(block_);
  }

  // The block outlives the scope: from now on it is the caller's to release.
  void keep() { block_ = nullptr; }

 private:
  bool needed_;
  void* block_ = nullptr;
};

// The work area of one transform call: none when no bytes are needed; the caller's buffer, rounded up, when
// there is one; otherwise a block of its own for as long as the scope lasts.
//
//   WorkArea work(spec->workSize, buffer);
//   if (!work.ok()) return kvrStatusOutOfMemory;
class WorkArea {
 public:
  WorkArea(int bytes, Kvr8u* buffer)
      : owned_(bytes > 0 && buffer == nullptr ? static_cast<uint64_t>(bytes) : 0),
        memory_(bytes <= 0          ? nullptr
                : buffer != nullptr ? alignUp(buffer)
                                    : owned_.as<Kvr8u>()) {}

  bool ok() const { return owned_.ok(); }

  // Null when no bytes are needed.
  template <class T>
  T* as() const {
    return reinterpret_cast<T*>(memory_);
  }

 private:
  Scratch owned_;
  Kvr8u* memory_;
};

}  // namespace kvrs

#endif
