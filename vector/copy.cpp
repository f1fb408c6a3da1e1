// Copies. Names of one width of elements share a symbol, see frame/aliases.def.
// SPDX-License-Identifier: MIT
#include "vector/copy.h"

#include "frame/check.h"
#include "frame/plain.h"
#include "kvrs/fill.h"

namespace kvrs {
namespace {

template <class Word>
[[gnu::noinline]] KvrStatus copyLong(const Word* src, Word* dst, size_t len) {
  if (!loop_detail::fitsAddress(len, sizeof(Word))) return kvrStatusBadLength;
  memcpy(dst, src, len * sizeof(Word));
  return kvrStatusOk;
}

// Elements of Word's width.
template <class Word, class T>
KvrStatus copyVector(const T* src, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  if (copyMasked<Word>(src, dst, len)) return kvrStatusOk;
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto from = reinterpret_cast<const Word*>(src);
  const auto to = reinterpret_cast<Word*>(dst);
  const size_t n = static_cast<size_t>(len);
  if (__builtin_expect(n <= kShortBytes / sizeof(Word), true)) {
    copyShort(reinterpret_cast<const Kvr8u*>(src), reinterpret_cast<Kvr8u*>(dst), n * sizeof(Word));
    return kvrStatusOk;
  }
  if (n >= kLibraryBytes / sizeof(Word) && from != to) return copyLong(from, to, n);
  return mapElements(Same(), to, n, from);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsCopy_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return copyVector<Kvr8u>(src, dst, len);
}
KvrStatus kvrsCopy_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return copyVector<Kvr16u>(src, dst, len);
}
KvrStatus kvrsCopy_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return copyVector<Kvr32u>(src, dst, len);
}
KvrStatus kvrsCopy_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return copyVector<Kvr64u>(src, dst, len);
}
KvrStatus kvrsCopy_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return copyVector<Pair<Kvr64u>>(src, dst, len);
}
