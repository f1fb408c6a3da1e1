// A reference inside a block: the distance in bytes from itself to its target, 0 for null. It takes 32 bits
// in every module, so a record has one layout and one size, and a block may be copied as bytes, since all its
// references point into the block itself.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_REF_H
#define KVRS_FRAME_REF_H

#include <cstdint>

namespace kvrs {

template <class T>
class Ref {
 public:
  // A copy elsewhere would point elsewhere; only whole blocks are copied.
  Ref() = default;
  Ref(const Ref&) = delete;
  Ref& operator=(const Ref&) = delete;

  void set(const T* target) {
    offset_ = target == nullptr ? 0 : static_cast<int32_t>(reinterpret_cast<intptr_t>(target) - here());
  }
  T* get() const { return offset_ == 0 ? nullptr : present(); }
  // The same of a reference that is known not to be null.
  T* present() const { return reinterpret_cast<T*>(here() + offset_); }

 private:
  intptr_t here() const { return reinterpret_cast<intptr_t>(this); }

  int32_t offset_;
};

}  // namespace kvrs

#endif
