// Order of elements. What is moved are the elements' bits, one kernel for each width.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/loop.h"
#include "kvrs/reorder.h"

namespace kvrs {
namespace {

using namespace loop_detail;

// The elements of a vector in reverse order.
template <class T, size_t N, class D, class V>
KVRS_INLINE V reverse(D d, V v) {
  const hn::Repartition<uint8_t, D> bytes;
  if constexpr (N == 1) {
    return v;
  } else if constexpr (sizeof(T) == 16) {
    return hn::ReverseBlocks(d, v);
  } else if constexpr (sizeof(T) == 1 && N >= 16) {
    alignas(16) static constexpr uint8_t kOrder[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    return hn::ReverseBlocks(d, hn::TableLookupBytes(v, hn::LoadDup128(d, kOrder)));
  } else if constexpr (sizeof(T) == 2 && N == 8) {
    alignas(16) static constexpr uint8_t kOrder[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};
    return hn::BitCast(d, hn::TableLookupBytes(hn::BitCast(bytes, v), hn::Load(bytes, kOrder)));
  } else if constexpr (sizeof(T) == 1) {
    const hn::RepartitionToWide<D> words;
    const auto w = reverse<uint16_t, N / 2>(words, hn::BitCast(words, v));
    return hn::BitCast(d, hn::Or(hn::ShiftLeft<8>(w), hn::ShiftRight<8>(w)));
  } else {
    return hn::Reverse(d, v);
  }
}

// A block of src, reversed.
template <class T, size_t N>
KVRS_INLINE auto reversedBlock(const T* src) {
  const ElementLanes<T, N> d;
  return reverse<T, N>(d, Element<T>::load(d, src));
}

// At most two blocks of N elements, which may lie over each other; dst may be src.
template <class T, size_t N>
KVRS_INLINE void shortFlip(const T* src, T* dst, ptrdiff_t len) {
  if (len >= ptrdiff_t{N}) {
    const ElementLanes<T, N> d;
    const auto front = reversedBlock<T, N>(src + (len - N));
    const auto back = reversedBlock<T, N>(src);
    Element<T>::store(front, d, dst);
    Element<T>::store(back, d, dst + (len - N));
  } else if constexpr (N > 1) {
    shortFlip<T, N / 2>(src, dst, len);
  }
}

template <class T>
[[gnu::noinline]] KvrStatus flipElements(const T* src, T* dst, ptrdiff_t len) {
  constexpr ptrdiff_t N = kBlock<T>;
  if (len <= 2 * N) {
    shortFlip<T, N>(src, dst, len);
    return kvrStatusOk;
  }
  const ElementLanes<T, N> d;
  const ptrdiff_t end = len - N;
  const T* const lastBlock = src + end;
  const auto first = reversedBlock<T, N>(lastBlock);
  const auto last = reversedBlock<T, N>(src);
  forBlocks<N>(firstAligned<N>(dst), end,
               [&](ptrdiff_t i) { Element<T>::store(reversedBlock<T, N>(lastBlock - i), d, dst + i); });
  Element<T>::store(first, d, dst);
  Element<T>::store(last, d, dst + end);
  return kvrStatusOk;
}

// Elements of Word's width.
template <class Word, class T>
KvrStatus flip(const T* src, T* dst, int len) {
  static_assert(sizeof(Word) == sizeof(T));
  KVRS_CHECK(pointers(src, dst), length(len));
  if (!fitsAddress(static_cast<size_t>(len), sizeof(T))) return kvrStatusBadLength;
  return flipElements(reinterpret_cast<const Word*>(src), reinterpret_cast<Word*>(dst), len);
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
    const auto a = reversedBlock<Word, N>(front);
    const auto b = reversedBlock<Word, N>(back);
    Element<Word>::store(b, d, front);
    Element<Word>::store(a, d, back);
    front += N;
  }
  shortFlip<Word, N>(front, front, left);
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
