// Sorting by digits, of elements in place and of the indices of strided keys.
// SPDX-License-Identifier: MIT
#include <cstring>
#include <type_traits>

#include "frame/check.h"
#include "frame/simd.h"
#include "frame/threads.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "kvrs/sort.h"
#include "stats/counting_sort.h"
#include "stats/sort_key.h"
#include "stats/vector_sort.h"

namespace kvrs {
namespace {

// Digits of a key, least significant first: two of 8 bits, or 11, 11 and 10 of each 32.
template <class Key>
struct Digits {
  static constexpr int kCount = sizeof(Key) == 2 ? 2 : sizeof(Key) / 4 * 3;
  static constexpr size_t kValues = sizeof(Key) == 2 ? 256 : 2048;

  static constexpr int shift(int digit) {
    return sizeof(Key) == 2 ? 8 * digit : 32 * (digit / 3) + 11 * (digit % 3);
  }
  static constexpr Key mask(int digit) { return sizeof(Key) == 2 ? 0xFF : digit % 3 == 2 ? 0x3FF : 0x7FF; }
  static KVRS_INLINE size_t of(Key key, int digit) {
    return static_cast<size_t>(key >> shift(digit) & mask(digit));
  }
};

// How often each value of each digit occurs, and where its run begins.
template <class Key>
class Places {
 public:
  using D = Digits<Key>;

  KVRS_INLINE void count(Key key) {
    for (int digit = 0; digit < D::kCount; ++digit) ++at_[digit][D::of(key, digit)];
  }
  // Whether all keys, of which one is given, have one value of a digit.
  bool allEqual(int digit, Key key, size_t len) const { return at_[digit][D::of(key, digit)] == len; }
  void begin(int digit) {
    Kvr32u next = 0;
    for (Kvr32u& place : at_[digit]) {
      const Kvr32u occurrences = place;
      place = next;
      next += occurrences;
    }
  }
  KVRS_INLINE size_t take(int digit, Key key) { return at_[digit][D::of(key, digit)]++; }

 private:
  Kvr32u at_[D::kCount][D::kValues] = {};
};

// Where the vectorised quicksort is faster, with the same result, as equal keys are equal bits: in wide vectors, and where
// the tables of counts are longer than the vector; in s8, whose vectors have no extremes of 32 bits, not for long.
template <class Key>
constexpr size_t kCountedFrom = sizeof(Key) == 2 || !kBlends ? 256
                                : kVectorBytes > 16          ? SIZE_MAX
                                : sizeof(Key) == 4           ? 2048
                                                             : 8192;
template <class K, bool kKeysRemain, class Key = typename K::Key>
[[gnu::noinline]] Key* vectorSort(Key* src, size_t len) {
  using Signed = std::make_signed_t<Key>;
  for (size_t i = 0; i < len; ++i)
    unaligned::put(static_cast<Key>(K::from(unaligned::get(src + i)) ^ K::kSign), src + i);
  sortKeys(reinterpret_cast<Signed*>(src), len);
  for (size_t i = 0; i < len; ++i) {
    const Key key = static_cast<Key>(unaligned::get(src + i) ^ K::kSign);
    unaligned::put(kKeysRemain ? key : K::back(key), src + i);
  }
  return src;
}

// Sorts [0, len) of `src`, with `other` for a second array of that length; returns in which of the two the result is. The
// elements are those of K's type when it begins, and at the end keys or elements again.
template <class K, bool kKeysRemain, class Key = typename K::Key>
[[gnu::noinline]] Key* radixSort(Key* src, Key* other, size_t len) {
  using D = Digits<Key>;
  Places<Key> places;
  for (size_t i = 0; i < len; ++i) places.count(K::from(unaligned::get(src + i)));
  const Key some = K::from(unaligned::get(src));
  int passes[D::kCount], count = 0;
  for (int digit = 0; digit < D::kCount; ++digit) {
    if (!places.allEqual(digit, some, len)) passes[count++] = digit;
  }
  if (count == 0) {
    if (kKeysRemain) {
      for (size_t i = 0; i < len; ++i) unaligned::put(some, src + i);
    }
    return src;
  }
  for (int pass = 0; pass < count; ++pass) {
    const int digit = passes[pass];
    places.begin(digit);
    const auto move = [&](auto before, auto behind) KVRS_UNROLLED {
      for (size_t i = 0; i < len; ++i) {
        const Key key = before(unaligned::get(src + i));
        unaligned::put(behind(key), other + places.take(digit, key));
      }
    };
    const auto asIs = [](Key key) KVRS_UNROLLED { return key; };
    const auto toKey = [](Key bits) KVRS_UNROLLED { return K::from(bits); };
    const auto toBits = [](Key key) KVRS_UNROLLED { return K::back(key); };
    const bool isFirst = pass == 0, isLast = pass == count - 1 && !kKeysRemain;
    if (isFirst && isLast) {
      move(toKey, toBits);
    } else if (isFirst) {
      move(toKey, asIs);
    } else if (isLast) {
      move(asIs, toBits);
    } else {
      move(asIs, asIs);
    }
    Key* const to = other;
    other = src;
    src = to;
  }
  return src;
}

// Either of the two.
template <class K, bool kKeysRemain, class Key = typename K::Key>
Key* sortByKey(Key* src, [[maybe_unused]] Key* other, size_t len) {
  constexpr size_t from = kCountedFrom<Key>;
  if constexpr (from < SIZE_MAX) {
    if (len >= from) return radixSort<K, kKeysRemain>(src, other, len);
  }
  return vectorSort<K, kKeysRemain>(src, len);
}

// Two sorted runs of keys into `dst`, as elements: the first half of them from below, the others from above. Where keys
// are equal it does not matter which comes first.
template <class K, class Key = typename K::Key>
void mergeFromBelow(const Key* a, const Key* endOfA, const Key* b, const Key* endOfB, Key* dst,
                    size_t count) {
  for (; count > 0; --count, ++dst) {
    const bool takeA = b == endOfB || (a != endOfA && unaligned::get(a) <= unaligned::get(b));
    unaligned::put(K::back(unaligned::get(takeA ? a : b)), dst);
    a += takeA;
    b += !takeA;
  }
}
template <class K, class Key = typename K::Key>
void mergeFromAbove(const Key* a, const Key* endOfA, const Key* b, const Key* endOfB, Key* endOfDst,
                    size_t count) {
  for (; count > 0; --count) {
    const bool takeB =
        endOfA == a || (endOfB != b && unaligned::get(endOfA - 1) <= unaligned::get(endOfB - 1));
    endOfA -= !takeB;
    endOfB -= takeB;
    unaligned::put(K::back(unaligned::get(takeB ? endOfB : endOfA)), --endOfDst);
  }
}

// Two threads sort a part each, from srcDst to buffer, and merge from both ends. False if there is one thread only, with
// nothing done.
template <class K, class Key = typename K::Key>
bool sortByTwo(Key* srcDst, Key* buffer, size_t len) {
  if (ownGetNumThreads() < 2) return false;
  int granted = 1;
  const size_t half = len / 2;
  const auto sortPart = [&](size_t begin, size_t count) {
    Key* const sorted = sortByKey<K, true>(srcDst + begin, buffer + begin, count);
    if (sorted != buffer + begin) memcpy(buffer + begin, sorted, count * sizeof(Key));
  };
  runTeam(kTwoThreads, [&](int thread, int team) {
    if (thread == 0) granted = team;
    if (thread == 0) sortPart(0, half);
    if (thread == team - 1) sortPart(half, len - half);
  });
  const Key *a = buffer, *b = buffer + half, *end = buffer + len;
  runTeam(granted, [&](int thread, int team) {
    if (thread == 0) mergeFromBelow<K>(a, b, b, end, srcDst, half);
    if (thread == team - 1) mergeFromAbove<K>(a, b, b, end, srcDst + len, len - half);
  });
  return true;
}

template <bool kDescending, class T>
KvrStatus sortRadix(T* srcDst, T* buffer, int len) {
  KVRS_CHECK(pointers(srcDst, buffer), lengthOf<T>(len));
  using K = KeyOf<T, kDescending>;
  using Key = typename K::Key;
  const size_t n = static_cast<size_t>(len);
  Key *const keys = reinterpret_cast<Key*>(srcDst), *const other = reinterpret_cast<Key*>(buffer);
  if constexpr (sizeof(T) >= 4) {
    constexpr size_t kSharedFrom = threadedLength(sizeof(T) == 4 ? 8192 : 4096);
    if (n >= kSharedFrom && sortByTwo<K>(keys, other, n)) return kvrStatusOk;
  }
  if (sortByKey<K, false>(keys, other, n) != keys) memcpy(keys, other, n * sizeof(Key));
  return kvrStatusOk;
}

template <bool kDescending>
KvrStatus sortRadixBytes(Kvr8u* srcDst, Kvr8u* buffer, int len) {
  KVRS_CHECK(pointers(srcDst, buffer), length(len));
  countingSort(srcDst, static_cast<size_t>(len), kDescending);
  return kvrStatusOk;
}

// The key at any distance from the one before it.
template <class K>
struct StridedKeys {
  const Kvr8u* src;
  size_t stride;
  KVRS_INLINE typename K::Key operator[](size_t i) const {
    return K::from(unaligned::get(reinterpret_cast<const typename K::Key*>(src + i * stride)));
  }
};

// Each pass takes the indices in the order of the one before it, the first in their own. The last one ends in dstIndx.
template <class K, class Key = typename K::Key>
void radixIndices(StridedKeys<K> keys, Kvr32s* dstIndx, Kvr32s* tmpIndx, size_t len) {
  constexpr int kPasses = Digits<Key>::kCount;
  Places<Key> places;
  for (size_t i = 0; i < len; ++i) places.count(keys[i]);
  Kvr32s *from = nullptr, *to = kPasses % 2 != 0 ? dstIndx : tmpIndx;
  for (int digit = 0; digit < kPasses; ++digit) {
    places.begin(digit);
    for (size_t i = 0; i < len; ++i) {
      const Kvr32s index = from == nullptr ? static_cast<Kvr32s>(i) : unaligned::get(from + i);
      unaligned::put(index, to + places.take(digit, keys[static_cast<size_t>(index)]));
    }
    from = to;
    to = from == dstIndx ? tmpIndx : dstIndx;
  }
}
template <class K>
void countedIndices(StridedKeys<K> keys, Kvr32s* dstIndx, size_t len) {
  Kvr32u places[257] = {};
  for (size_t i = 0; i < len; ++i) ++places[keys[i] + 1];
  for (int value = 1; value < 256; ++value) places[value] += places[value - 1];
  for (size_t i = 0; i < len; ++i) unaligned::put(static_cast<Kvr32s>(i), dstIndx + places[keys[i]]++);
}

template <bool kDescending, class T>
KvrStatus sortRadixIndex(const T* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx, Kvr32s* tmpIndx, int len) {
  KVRS_CHECK(pointers(src, dstIndx, tmpIndx), lengthOf<Kvr32s>(len),
             require(srcStrideBytes >= sizeof(T), kvrStatusBadLength));
  const StridedKeys<KeyOf<T, kDescending>> keys{reinterpret_cast<const Kvr8u*>(src), srcStrideBytes};
  if constexpr (sizeof(T) == 1) {
    countedIndices(keys, dstIndx, static_cast<size_t>(len));
  } else {
    radixIndices(keys, dstIndx, tmpIndx, static_cast<size_t>(len));
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSortRadixAscend_8u_I(Kvr8u* srcDst, Kvr8u* buffer, int len) noexcept {
  return sortRadixBytes<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_16u_I(Kvr16u* srcDst, Kvr16u* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_16s_I(Kvr16s* srcDst, Kvr16s* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_32u_I(Kvr32u* srcDst, Kvr32u* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_32s_I(Kvr32s* srcDst, Kvr32s* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_32f_I(Kvr32f* srcDst, Kvr32f* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixAscend_64f_I(Kvr64f* srcDst, Kvr64f* buffer, int len) noexcept {
  return sortRadix<false>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_8u_I(Kvr8u* srcDst, Kvr8u* buffer, int len) noexcept {
  return sortRadixBytes<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_16u_I(Kvr16u* srcDst, Kvr16u* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_16s_I(Kvr16s* srcDst, Kvr16s* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_32u_I(Kvr32u* srcDst, Kvr32u* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_32s_I(Kvr32s* srcDst, Kvr32s* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_32f_I(Kvr32f* srcDst, Kvr32f* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixDescend_64f_I(Kvr64f* srcDst, Kvr64f* buffer, int len) noexcept {
  return sortRadix<true>(srcDst, buffer, len);
}
KvrStatus kvrsSortRadixIndexAscend_8u(const Kvr8u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                      Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexAscend_16u(const Kvr16u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexAscend_16s(const Kvr16s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexAscend_32u(const Kvr32u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexAscend_32s(const Kvr32s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexAscend_32f(const Kvr32f* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<false>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_8u(const Kvr8u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                       Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_16u(const Kvr16u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                        Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_16s(const Kvr16s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                        Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_32u(const Kvr32u* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                        Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_32s(const Kvr32s* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                        Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
KvrStatus kvrsSortRadixIndexDescend_32f(const Kvr32f* src, Kvr32u srcStrideBytes, Kvr32s* dstIndx,
                                        Kvr32s* tmpIndx, int len) noexcept {
  return sortRadixIndex<true>(src, srcStrideBytes, dstIndx, tmpIndx, len);
}
