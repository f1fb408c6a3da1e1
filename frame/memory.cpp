// The memory exports. Names of one element width share a symbol, see frame/aliases.def.
// SPDX-License-Identifier: MIT
#include "kvrs/frame.h"
#include "kvrscore.h"

namespace {

template <class T>
T* allocate(int len) {
  if (len < 1) return nullptr;
  // In 32 bits and untested on purpose: the contract lets a huge length wrap.
  const uint32_t bytes = static_cast<uint32_t>(len) * static_cast<uint32_t>(sizeof(T));
  return static_cast<T*>(kvrMalloc(bytes));
}

}  // namespace

Kvr8u* kvrsMalloc_8u(int len) noexcept {
  return allocate<Kvr8u>(len);
}
Kvr16s* kvrsMalloc_16s(int len) noexcept {
  return allocate<Kvr16s>(len);
}
Kvr32f* kvrsMalloc_32f(int len) noexcept {
  return allocate<Kvr32f>(len);
}
Kvr64f* kvrsMalloc_64f(int len) noexcept {
  return allocate<Kvr64f>(len);
}
Kvr64fc* kvrsMalloc_64fc(int len) noexcept {
  return allocate<Kvr64fc>(len);
}

void kvrsFree(void* ptr) noexcept {
  kvrFree(ptr);
}
