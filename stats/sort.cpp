// Sorting in place.
// SPDX-License-Identifier: MIT
#include "kvrs/sort.h"

#include <cstring>
#include <type_traits>

#include "frame/check.h"
#include "frame/loop.h"
#include "frame/simd.h"
#include "stats/counting_sort.h"
#include "stats/vector_sort.h"

namespace kvrs {

// Four tables, so that a count does not wait for the one before it where neighbours are equal.
void countingSort(Kvr8u* srcDst, size_t len, bool descending) {
  Kvr32u counts[4][256] = {};
  size_t i = 0;
  for (; i + 4 <= len; i += 4) {
    for (size_t t = 0; t < 4; ++t) ++counts[t][srcDst[i + t]];
  }
  for (; i < len; ++i) ++counts[0][srcDst[i]];
  for (int v = 0; v < 256; ++v) {
    const int value = descending ? 255 - v : v;
    const size_t count = size_t{counts[0][value]} + counts[1][value] + counts[2][value] + counts[3][value];
    if (count != 0) memset(srcDst, value, count);
    srcDst += count;
  }
}

namespace {

// Elements and keys, signed integers whose ascending order is the one that is asked for. The complement reverses an order;
// floats have theirs when the bits below the sign of negative ones are turned over, which undoes itself.
enum class Bits { asIs, otherSign, ofFloat };

template <Bits bits, bool kDescending>
struct ToKey {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V x) const {
    using T = hn::TFromD<D>;
    if (bits == Bits::otherSign)
      return hn::Xor(x, hn::Set(d, kDescending ? hwy::LimitsMax<T>() : hwy::LimitsMin<T>()));
    if (bits == Bits::ofFloat) {
      x = hn::Xor(x, hn::And(hn::BroadcastSignBit(x), hn::Set(d, hwy::LimitsMax<T>())));
    }
    return kDescending ? hn::Not(x) : x;
  }
};
template <Bits bits, bool kDescending>
struct FromKey {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V key) const {
    if (bits != Bits::ofFloat || !kDescending) return ToKey<bits, kDescending>()(d, key);
    return ToKey<bits, false>()(d, hn::Not(key));
  }
};

// Keys at an address that is no multiple of their width: all but one of them moved to the next one that is, and the last
// one put in its place among them.
template <class K>
[[gnu::noinline]] void sortMisalignedKeys(K* keys, size_t len) {
  Kvr8u* const bytes = reinterpret_cast<Kvr8u*>(keys);
  const size_t misfit = reinterpret_cast<uintptr_t>(keys) % sizeof(K), ahead = sizeof(K) - misfit;
  K last;
  memcpy(&last, bytes + (len - 1) * sizeof(K), sizeof last);
  K* const aligned = reinterpret_cast<K*>(bytes + ahead);
  memmove(aligned, bytes, (len - 1) * sizeof(K));
  sortAlignedKeys(aligned, len - 1);
  size_t below = 0, above = len - 1;
  while (below < above) {
    const size_t middle = below + (above - below) / 2;
    if (aligned[middle] <= last) {
      below = middle + 1;
    } else {
      above = middle;
    }
  }
  memmove(bytes, aligned, below * sizeof(K));
  memmove(bytes + (below + 1) * sizeof(K), aligned + below, (len - 1 - below) * sizeof(K));
  memcpy(bytes + below * sizeof(K), &last, sizeof last);
}

template <class K>
void sortAnywhere(K* keys, size_t len) {
  if (reinterpret_cast<uintptr_t>(keys) % sizeof(K) == 0) {
    sortAlignedKeys(keys, len);
  } else {
    sortMisalignedKeys(keys, len);
  }
}

}  // namespace

void sortKeys(Kvr16s* keys, size_t len) {
  sortAnywhere(keys, len);
}
void sortKeys(Kvr32s* keys, size_t len) {
  sortAnywhere(keys, len);
}
void sortKeys(Kvr64s* keys, size_t len) {
  sortAnywhere(keys, len);
}

namespace {

template <Bits bits, bool kDescending, class T>
KvrStatus sort(T* srcDst, int len) {
  using K = std::conditional_t<sizeof(T) == 2, Kvr16s, std::conditional_t<sizeof(T) == 4, Kvr32s, Kvr64s>>;
  KVRS_CHECK(pointers(srcDst), lengthOf<T>(len));
  const size_t n = static_cast<size_t>(len);
  K* const keys = reinterpret_cast<K*>(srcDst);
  constexpr bool kPlain = bits == Bits::asIs && !kDescending;
  if (n == 1) return kvrStatusOk;
  if constexpr (!kPlain) mapElements(ToKey<bits, kDescending>(), keys, n, keys);
  sortKeys(keys, n);
  if constexpr (!kPlain) mapElements(FromKey<bits, kDescending>(), keys, n, keys);
  return kvrStatusOk;
}

// Few bytes are sorted as words: the tables of counts alone take longer.
template <bool kDescending>
KvrStatus sortBytes(Kvr8u* srcDst, int len) {
  KVRS_CHECK(pointers(srcDst), length(len));
  constexpr size_t kCountedFrom = 128;
  const size_t n = static_cast<size_t>(len);
  if (n >= kCountedFrom) {
    countingSort(srcDst, n, kDescending);
    return kvrStatusOk;
  }
  alignas(64) Kvr16s words[kCountedFrom];
  constexpr int turn = kDescending ? 255 : 0;
  for (size_t i = 0; i < n; ++i) words[i] = static_cast<Kvr16s>(srcDst[i] ^ turn);
  sortAlignedKeys(words, n);
  for (size_t i = 0; i < n; ++i) srcDst[i] = static_cast<Kvr8u>(words[i] ^ turn);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSortAscend_8u_I(Kvr8u* srcDst, int len) noexcept {
  return sortBytes<false>(srcDst, len);
}
KvrStatus kvrsSortAscend_16u_I(Kvr16u* srcDst, int len) noexcept {
  return sort<Bits::otherSign, false>(srcDst, len);
}
KvrStatus kvrsSortAscend_16s_I(Kvr16s* srcDst, int len) noexcept {
  return sort<Bits::asIs, false>(srcDst, len);
}
KvrStatus kvrsSortAscend_32s_I(Kvr32s* srcDst, int len) noexcept {
  return sort<Bits::asIs, false>(srcDst, len);
}
KvrStatus kvrsSortAscend_32f_I(Kvr32f* srcDst, int len) noexcept {
  return sort<Bits::ofFloat, false>(srcDst, len);
}
KvrStatus kvrsSortAscend_64f_I(Kvr64f* srcDst, int len) noexcept {
  return sort<Bits::ofFloat, false>(srcDst, len);
}
KvrStatus kvrsSortDescend_8u_I(Kvr8u* srcDst, int len) noexcept {
  return sortBytes<true>(srcDst, len);
}
KvrStatus kvrsSortDescend_16u_I(Kvr16u* srcDst, int len) noexcept {
  return sort<Bits::otherSign, true>(srcDst, len);
}
KvrStatus kvrsSortDescend_16s_I(Kvr16s* srcDst, int len) noexcept {
  return sort<Bits::asIs, true>(srcDst, len);
}
KvrStatus kvrsSortDescend_32s_I(Kvr32s* srcDst, int len) noexcept {
  return sort<Bits::asIs, true>(srcDst, len);
}
KvrStatus kvrsSortDescend_32f_I(Kvr32f* srcDst, int len) noexcept {
  return sort<Bits::ofFloat, true>(srcDst, len);
}
KvrStatus kvrsSortDescend_64f_I(Kvr64f* srcDst, int len) noexcept {
  return sort<Bits::ofFloat, true>(srcDst, len);
}
