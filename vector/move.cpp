// Copies between vectors that may overlap. Names of one width of elements share a symbol, see frame/aliases.def.
//
// The element loop reads each block before it writes it: upward that is right wherever dst lies below src, or at least
// len elements above it. What remains is moved downward.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/plain.h"
#include "kvrs/fill.h"
#include "vector/copy.h"

namespace kvrs {
namespace {

// From so many bytes on the C library moves downward as well as the element loop does; below, half as fast.
constexpr size_t kLibraryBytesDown = kVectorBytes > 16 ? size_t{1} << 19 : kLibraryBytes;

template <class Word>
[[gnu::noinline]] KvrStatus moveLong(const Word* src, Word* dst, size_t len) {
  if (!loop_detail::fitsAddress(len, sizeof(Word))) return kvrStatusBadLength;
  memmove(dst, src, len * sizeof(Word));
  return kvrStatusOk;
}

// Elements of Word's width.
template <class Word, class T>
KvrStatus moveVector(const T* src, T* dst, int len) {
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
  const size_t above = reinterpret_cast<uintptr_t>(dst) - reinterpret_cast<uintptr_t>(src);
  const bool downward = above < n * sizeof(Word);
  if (n >= (downward ? kLibraryBytesDown : kLibraryBytes) / sizeof(Word)) return moveLong(from, to, n);
  if (!downward) return mapElements(Same(), to, n, from);
  return mapElements(Same(), Downward<Word>{to + n}, n, Downward<const Word>{from + n});
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsMove_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return moveVector<Kvr8u>(src, dst, len);
}
KvrStatus kvrsMove_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return moveVector<Kvr16u>(src, dst, len);
}
KvrStatus kvrsMove_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return moveVector<Kvr32u>(src, dst, len);
}
KvrStatus kvrsMove_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return moveVector<Kvr64u>(src, dst, len);
}
KvrStatus kvrsMove_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return moveVector<Pair<Kvr64u>>(src, dst, len);
}
