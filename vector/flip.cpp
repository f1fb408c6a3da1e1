// Order of elements. What is moved are the elements' bits, one kernel for each width.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/loop_reversed.h"
#include "kvrs/reorder.h"

namespace kvrs {
namespace {

using namespace loop_detail;

// Elements of Word's width.
template <class Word, class T>
KvrStatus flip(const T* src, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto from = reinterpret_cast<const Word*>(src);
  const auto to = reinterpret_cast<Word*>(dst);
  return mapReversed<Unchanged>(from, to, static_cast<size_t>(len));
}

template <class Word, class T>
KvrStatus flipInPlace(T* srcDst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(srcDst), length(len));
  if (!fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  constexpr ptrdiff_t N = kBlock<Word>;
  const ElementLanes<Word, N> d;
  Word* front = reinterpret_cast<Word*>(srcDst);
  ptrdiff_t left = len;
  for (; left > 2 * N; left -= 2 * N) {
    Word* const back = front + (left - N);
    const auto a = reversedBlock<Unchanged, Word, N>(front);
    const auto b = reversedBlock<Unchanged, Word, N>(back);
    Element<Word>::store(b, d, front);
    Element<Word>::store(a, d, back);
    front += N;
  }
  shortReversed<Unchanged, Word, N>(front, front, left);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFlip_8u(const Kvr8u* src, Kvr8u* dst, int len) noexcept {
  return flip<Kvr8u>(src, dst, len);
}
KvrStatus kvrsFlip_16u(const Kvr16u* src, Kvr16u* dst, int len) noexcept {
  return flip<Kvr16u>(src, dst, len);
}
KvrStatus kvrsFlip_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return flip<Kvr32u>(src, dst, len);
}
KvrStatus kvrsFlip_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return flip<Kvr64u>(src, dst, len);
}
KvrStatus kvrsFlip_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return flip<Kvr64u>(src, dst, len);
}
KvrStatus kvrsFlip_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return flip<Pair<Kvr64u>>(src, dst, len);
}
KvrStatus kvrsFlip_8u_I(Kvr8u* srcDst, int len) noexcept {
  return flipInPlace<Kvr8u>(srcDst, len);
}
KvrStatus kvrsFlip_16u_I(Kvr16u* srcDst, int len) noexcept {
  return flipInPlace<Kvr16u>(srcDst, len);
}
KvrStatus kvrsFlip_32f_I(Kvr32f* srcDst, int len) noexcept {
  return flipInPlace<Kvr32u>(srcDst, len);
}
KvrStatus kvrsFlip_64f_I(Kvr64f* srcDst, int len) noexcept {
  return flipInPlace<Kvr64u>(srcDst, len);
}
KvrStatus kvrsFlip_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return flipInPlace<Kvr64u>(srcDst, len);
}
KvrStatus kvrsFlip_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return flipInPlace<Pair<Kvr64u>>(srcDst, len);
}
