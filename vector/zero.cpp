// Zeros. Names of one width share a symbol, see frame/aliases.def.
// SPDX-License-Identifier: MIT
#include <cstring>

#include "frame/check.h"
#include "frame/plain.h"
#include "kvrs/fill.h"
#include "vector/fill.h"

namespace kvrs {
namespace {

template <class Word>
[[gnu::noinline]] KvrStatus zeroLong(Word* dst, size_t len) {
  if (!loop_detail::fitsAddress(len, sizeof(Word))) return kvrStatusBadLength;
  memset(dst, 0, len * sizeof(Word));
  return kvrStatusOk;
}

// Elements of Word's width.
template <class Word, class T>
KvrStatus zeroVector(T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  if (fillMasked<Word>(Zeros(), dst, len)) return kvrStatusOk;
  KVRS_CHECK(pointers(dst), length(len));
  const auto to = reinterpret_cast<Word*>(dst);
  const size_t n = static_cast<size_t>(len);
  if (__builtin_expect(n >= kLibraryFill / sizeof(Word), false)) return zeroLong(to, n);
  return fillElements(Zeros(), to, n);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsZero_8u(Kvr8u* dst, int len) noexcept {
  return zeroVector<Kvr8u>(dst, len);
}
KvrStatus kvrsZero_16s(Kvr16s* dst, int len) noexcept {
  return zeroVector<Kvr16u>(dst, len);
}
KvrStatus kvrsZero_32f(Kvr32f* dst, int len) noexcept {
  return zeroVector<Kvr32u>(dst, len);
}
KvrStatus kvrsZero_64f(Kvr64f* dst, int len) noexcept {
  return zeroVector<Kvr64u>(dst, len);
}
KvrStatus kvrsZero_64fc(Kvr64fc* dst, int len) noexcept {
  return zeroVector<Pair<Kvr64u>>(dst, len);
}
