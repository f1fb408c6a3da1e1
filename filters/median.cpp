// Median filters.
//
// Few samples: a network of exchanges on as many windows as a vector has lanes. Of the 2H + 1 samples of a window H + 2 are
// taken; the smallest and the largest of them cannot be the median (H samples would have to be on either side of it) and are
// forgotten, the next sample joins, and so on, until three are left (Paeth, Median finding on a 3 x 3 grid, 1990):
//
//   a b c d e    of a b c d forget min and max;  e joins;  of three the middle one
//
// Many samples: the window as a sorted array, in which the oldest sample is looked up, the new one put into its place and
// what lies between them moved by one.
// SPDX-License-Identifier: MIT
#include "kvrs/median.h"

#include <cstring>
#include <limits>
#include <type_traits>

#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"
#include "kvrs/fill.h"

namespace kvrs {
namespace {

// Integers in the order of floats, and back: negative ones are numbered downward.
template <class Int>
constexpr Int ordered(Int bits) {
  return bits < 0 ? static_cast<Int>(bits ^ std::numeric_limits<Int>::max()) : bits;
}
struct Ordered {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V bits) const {
    using Int = hn::TFromD<D>;
    return hn::Xor(bits, hn::And(hn::BroadcastSignBit(bits), hn::Set(d, std::numeric_limits<Int>::max())));
  }
};

// --- few samples ---

// What networks compare: singles as integers, everything else as it is.
template <class T>
using Few = std::conditional_t<std::is_same_v<T, Kvr32f>, Kvr32s, T>;

template <class V>
KVRS_INLINE void exchange(V& low, V& high) {
  const V smaller = hn::Min(low, high);
  high = hn::Max(low, high);
  low = smaller;
}

// The smallest of v[0] .. v[kCount-1] to the front, the largest to the back.
template <int kCount, class V>
KVRS_INLINE void extremesToEnds(V* v) {
  constexpr int kPairs = kCount / 2, kLast = kCount - 1;
  unroll<kPairs>([&](auto k) KVRS_UNROLLED { exchange(v[2 * k], v[2 * k + 1]); });
  unroll<kPairs - 1>([&](auto k) KVRS_UNROLLED { exchange(v[0], v[2 * k + 2]); });
  if constexpr (kCount % 2 != 0) exchange(v[0], v[kLast]);
  unroll<kCount % 2 != 0 ? kPairs : kPairs - 1>([&](auto k)
                                                    KVRS_UNROLLED { exchange(v[2 * k + 1], v[kLast]); });
}

// The median of `pool`, kCount samples, and of those from `next` on.
template <int kCount, class V>
KVRS_INLINE V medianOf(V* pool, [[maybe_unused]] const V* next) {
  extremesToEnds<kCount>(pool);
  if constexpr (kCount == 3) {
    return pool[1];
  } else {
    pool[0] = *next;
    return medianOf<kCount - 1>(pool, next + 1);
  }
}

template <int M, class V>
struct Windows {
  V sample[M];
};

// Reads the windows of N outputs; all of a block, of which the last ones may be nobody's, lie inside a tile.
template <int M, class T>
struct WindowCursor {
  const T* p;

  static constexpr size_t kElementBytes = sizeof(T);
  static constexpr size_t kLaneBytes = sizeof(T);
  template <size_t N>
  using Tag = Lanes<T, N>;

  template <size_t N>
  KVRS_INLINE auto load(ptrdiff_t i) const {
    const Tag<N> d;
    Windows<M, hn::Vec<Tag<N>>> windows;
    unroll<M>([&](auto k) KVRS_UNROLLED { windows.sample[k] = hn::LoadU(d, p + i + k); });
    return windows;
  }
  template <size_t N>
  KVRS_INLINE auto loadFirst(ptrdiff_t) const {
    return load<N>(0);
  }
  KVRS_INLINE void move(ptrdiff_t count) { keep(p += count); }
};

template <int M, bool kOrdered>
struct Median {
  static constexpr bool kIsHeavy = M > 3;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, Windows<M, V> windows) const {
    const V median = medianOf<M / 2 + 2>(windows.sample, windows.sample + M / 2 + 2);
    if constexpr (kOrdered) return Ordered()(d, median);
    return median;
  }
};

// Tile by tile, since windows reach back to samples that have been replaced.
template <int M, class T>
[[gnu::noinline]] KvrStatus filterByNetwork(T* srcDst, size_t len) {
  using Key = Few<T>;
  constexpr bool kOrdered = !std::is_same_v<T, Key>;
  constexpr size_t H = M / 2, kTile = 1024 / sizeof(Key), kSlack = kLanes<Key>;
  alignas(64) Key tile[H + kTile + H + kSlack] = {};
  Key* const samples = tile + H;
  const auto load = [&](size_t begin, Key* to, size_t count) {
    if constexpr (kOrdered) {
      mapElements(Ordered(), to, count, reinterpret_cast<const Key*>(srcDst) + begin);
    } else {
      memcpy(static_cast<void*>(to), reinterpret_cast<const char*>(srcDst) + begin * sizeof(T),
             count * sizeof(T));
    }
  };
  load(0, samples, 1);
  for (size_t k = 0; k < H; ++k) tile[k] = samples[0];
  for (size_t begin = 0; begin < len; begin += kTile) {
    const size_t left = len - begin, count = left < kTile ? left : kTile;
    const size_t there = left < count + H ? left : count + H;
    load(begin, samples, there);
    for (size_t k = there; k < count + H; ++k) samples[k] = samples[there - 1];
    Key behind[H];
    memcpy(behind, samples + count - H, sizeof behind);  // may reach into the samples before
    mapElements(Median<M, kOrdered>(), reinterpret_cast<Key*>(srcDst) + begin, count,
                WindowCursor<M, Key>{tile});
    memcpy(tile, behind, sizeof behind);
  }
  return kvrStatusOk;
}

// --- many samples ---

template <class T>
struct ManyOf {
  using Type = T;
};
template <>
struct ManyOf<Kvr32f> {
  using Type = Kvr32s;
};
template <>
struct ManyOf<Kvr64f> {
  using Type = Kvr64s;
};
template <class T>
using Many = typename ManyOf<T>::Type;

// The place of the first of `count` sorted keys that is not below `key`.
template <class Key>
size_t lowerBound(const Key* sorted, size_t count, Key key) {
  const Key* base = sorted;
  for (; count > 1; count -= count / 2) base += base[count / 2 - 1] < key ? count / 2 : 0;
  return static_cast<size_t>(base - sorted) + (*base < key ? 1 : 0);
}

template <class Key>
void replace(Key* sorted, size_t count, Key oldest, Key newest) {
  if (oldest == newest) return;
  const size_t from = lowerBound(sorted, count, oldest), to = lowerBound(sorted, count, newest);
  if (newest > oldest) {
    memmove(sorted + from, sorted + from + 1, (to - 1 - from) * sizeof(Key));
    sorted[to - 1] = newest;
  } else {
    memmove(sorted + to + 1, sorted + to, (from - to) * sizeof(Key));
    sorted[to] = newest;
  }
}

template <class T>
KvrStatus slide(T* srcDst, size_t len, size_t mask) {
  using Key = Many<T>;
  constexpr bool kOrdered = !std::is_same_v<T, Key>;
  // Beyond four lengths a longer window only adds pairs of the first and the last sample, between which the median lies.
  if (mask / 4 > len) mask = 4 * len + mask % 2;
  const Scratch memory(uint64_t{2 * sizeof(Key)} * mask);
  if (!memory.ok()) return kvrStatusOutOfMemory;
  auto* const ring = memory.as<Key>();
  Key* const sorted = ring + mask;
  const auto keyAt = [=](size_t i) {
    const Key bits = unaligned::get(reinterpret_cast<const Key*>(srcDst) + i);
    return kOrdered ? ordered(bits) : bits;
  };

  const size_t half = mask / 2, ahead = mask - 1 - half;
  const Key last = keyAt(len - 1);
  for (size_t k = 0; k < mask; ++k) {
    const Key key = k <= half ? keyAt(0) : k - half < len ? keyAt(k - half) : last;
    const size_t place = k == 0 ? 0 : lowerBound(sorted, k, key);
    memmove(sorted + place + 1, sorted + place, (k - place) * sizeof(Key));
    sorted[place] = key;
    ring[k] = key;
  }
  for (size_t i = 0, oldest = 0; i < len; ++i, oldest = oldest + 1 < mask ? oldest + 1 : 0) {
    const Key median = sorted[half];
    // Read before it may be overwritten: windows of even masks of two samples would have none ahead.
    const Key newest = i + 1 + ahead < len ? keyAt(i + 1 + ahead) : last;
    unaligned::put(kOrdered ? ordered(median) : median, reinterpret_cast<Key*>(srcDst) + i);
    replace(sorted, mask, ring[oldest], newest);
    ring[oldest] = newest;
  }
  return kvrStatusOk;
}

template <class T>
KvrStatus filterOdd(T* srcDst, size_t len, size_t mask) {
  if (len < 3) return kvrStatusOk;
  switch (mask) {
    case 1:
      return kvrStatusOk;
    case 3:
      return filterByNetwork<3>(srcDst, len);
    case 5:
      return filterByNetwork<5>(srcDst, len);
    case 7:
      return filterByNetwork<7>(srcDst, len);
    case 9:
      return filterByNetwork<9>(srcDst, len);
    default:
      return slide(srcDst, len, mask);
  }
}

template <class T>
KvrStatus filter(T* srcDst, int len, int maskSize) {
  KVRS_CHECK(pointers(srcDst), lengthOf<T>(len), length(maskSize));
  const size_t n = static_cast<size_t>(len), mask = static_cast<size_t>(maskSize);
  const bool isEven = mask % 2 == 0;
  // Known to callers: long windows of 32s are taken as they are, even ones too.
  if (std::is_same_v<T, Kvr32s> && mask >= 11) return n < 3 ? kvrStatusOk : slide(srcDst, n, mask);
  const KvrStatus status = filterOdd(srcDst, n, isEven ? mask - 1 : mask);
  return status == kvrStatusOk && isEven ? kvrStatusEvenMedianMask : status;
}

template <class T>
KvrStatus filterCopy(KvrStatus (*copy)(const T*, T*, int), const T* src, T* dst, int len, int maskSize) {
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), length(maskSize));
  if (src != dst) copy(src, dst, len);
  return filter(dst, len, maskSize);
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFilterMedian_8u(const Kvr8u* src, Kvr8u* dst, int len, int maskSize) noexcept {
  return filterCopy(kvrsCopy_8u, src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_16s(const Kvr16s* src, Kvr16s* dst, int len, int maskSize) noexcept {
  return filterCopy(kvrsCopy_16s, src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32s(const Kvr32s* src, Kvr32s* dst, int len, int maskSize) noexcept {
  return filterCopy(kvrsCopy_32s, src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32f(const Kvr32f* src, Kvr32f* dst, int len, int maskSize) noexcept {
  return filterCopy(kvrsCopy_32f, src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_64f(const Kvr64f* src, Kvr64f* dst, int len, int maskSize) noexcept {
  return filterCopy(kvrsCopy_64f, src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_8u_I(Kvr8u* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_16s_I(Kvr16s* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32s_I(Kvr32s* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32f_I(Kvr32f* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_64f_I(Kvr64f* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, len, maskSize);
}
