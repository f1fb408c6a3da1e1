// Copies between vectors that may overlap. Names of one width of elements share a symbol, see frame/aliases.def.
//
// The element loop goes upward and reads each block before it writes it: that is right wherever dst lies below src, or
// at least len elements above it. What remains is moved downward here.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "kvrs/fill.h"
#include "vector/copy.h"

namespace kvrs {
namespace {

// From so many bytes on the C library moves downward as well as moveDown does; below, half as fast.
constexpr size_t kLibraryBytesDown = kVectorBytes > 16 ? size_t{1} << 19 : kLibraryBytes;

// At least a block.
template <class Word>
[[gnu::noinline]] KvrStatus moveDown(const Word* src, Word* dst, ptrdiff_t len) {
  using namespace loop_detail;
  constexpr ptrdiff_t N = kBlock<Word>;
  const ElementLanes<Word, N> d;
  const auto copyBlock = [&](ptrdiff_t i) {
    Element<Word>::store(Element<Word>::load(d, src + i), d, dst + i);
  };
  const ptrdiff_t end = len - N;
  const auto first = Element<Word>::load(d, src);
  const auto last = Element<Word>::load(d, src + end);
  const ptrdiff_t overhang = (reinterpret_cast<uintptr_t>(dst + end) & (N * sizeof(Word) - 1)) / sizeof(Word);
  ptrdiff_t i = end - (overhang != 0 ? overhang : N);
  for (; i > 3 * N; i -= 4 * N) {
    copyBlock(i);
    copyBlock(i - N);
    copyBlock(i - 2 * N);
    copyBlock(i - 3 * N);
  }
  for (; i > 0; i -= N) copyBlock(i);
  Element<Word>::store(first, d, dst);
  Element<Word>::store(last, d, dst + end);
  return kvrStatusOk;
}

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
  return moveDown(from, to, static_cast<ptrdiff_t>(n));
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
