// Order of elements. What is moved are the elements' bits, one kernel for each width.
// SPDX-License-Identifier: MIT
#include "frame/array_length.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/plain.h"
#include "kvrs/reorder.h"

namespace kvrs {
namespace {

// Elements of Word's width.
template <class Word, class T>
KvrStatus flip(const T* src, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(src, dst), length(len));
  const auto from = reinterpret_cast<const Word*>(src);
  const auto to = reinterpret_cast<Word*>(dst);
  return mapElements(Same(), to, static_cast<size_t>(len), Backward<Word>{from + len});
}

// From both ends to the middle, where the last blocks lie over each other.
template <class Word, class T>
KvrStatus flipInPlace(T* srcDst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(srcDst), length(len, srcDst));
  constexpr ptrdiff_t N = loop_detail::kBlock<Word>;
  Cursor<Word> front{reinterpret_cast<Word*>(srcDst)};
  Downward<Word> back{front.p + len};
  ptrdiff_t left = len;
  for (; left >= N; left -= 2 * N) {
    const auto first = Backward<Word>{front.p + N}.template load<N>(0);
    front.template store<N>(Backward<Word>{back.end}.template load<N>(0), 0);
    back.template store<N>(first, 0);
    front.move(N);
    back.move(N);
  }
  if (left > 0) {
    const auto last = Backward<Word>{back.end}.template loadFirst<N>(left);
    front.template storeFirst<N>(last, left);
  }
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
