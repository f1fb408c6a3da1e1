// Median filters.
//
// Few samples: a network of exchanges on as many windows as a vector has lanes. Of the 2H + 1 samples of a window H + 2 are
// taken; the smallest and the largest of them cannot be the median (H samples would have to be on either side of it) and are
// forgotten, the next sample joins, and so on, until three are left (Paeth, Median finding on a 3 x 3 grid, 1990):
//
//   a b c d e    of a b c d forget min and max;  e joins;  of three the middle one
//
// Many samples: the window in order of size, as long as it is some vectors. From where the oldest sample stands all others move
// down by one, and from where the newest belongs up again, in one pass over all of them without a branch:
//
//   oldest 4, newest 2    1 3 4 6 9  ->  1 3 6 9  ->  1 2 3 6 9
//
// Longer windows are left as they came, with their median and the numbers of samples below that and up to it. A sample that
// takes the place of another one changes these by one at most, so that the next median is this one or its neighbour in
// order of size, which a pass over the window in vectors finds.
// SPDX-License-Identifier: MIT
#include "kvrs/median.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>

#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/neighbours.h"
#include "frame/reduce.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

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

template <class T>
inline constexpr bool kIsFloat = std::is_floating_point_v<T>;

// What the order of floats tells apart and a comparison does not: NaN and -0.0.
struct Odd {
  template <class V>
  KVRS_INLINE auto operator()(V v) const {
    const hn::DFromV<V> d;
    const hn::RebindToSigned<decltype(d)> di;
    using Int = hn::TFromD<decltype(di)>;
    const auto isNegativeZero = hn::Eq(hn::BitCast(di, v), hn::Set(di, std::numeric_limits<Int>::min()));
    return hn::Or(hn::IsNaN(v), hn::RebindMask(d, isNegativeZero));
  }
};

// --- few samples ---

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

template <int M, class T>
class Few {
 public:
  // Vectors wanted: dst may be src.
  static void filter(const T* src, T* dst, size_t len) {
    // In front of the first sample and behind the last one stand copies of them.
    if (len < 2 * H + kChunk) return filterShort(src, dst, len);
    constexpr size_t kReach = 2 * H;
    T front[H + kReach + kSlack] = {}, back[kReach + H + kSlack] = {}, first[H + kSlack], last[H + kSlack];
    memcpy(static_cast<void*>(front + H), src, kReach * sizeof(T));
    std::fill_n(front, H, front[H]);
    memcpy(static_cast<void*>(back), reinterpret_cast<const char*>(src) + (len - kReach) * sizeof(T),
           kReach * sizeof(T));
    std::fill_n(back + kReach, H, back[kReach - 1]);
    medians(front + H, first, H);
    medians(back + H, last, H);
    filterInside(src, dst, H, len - H);
    memcpy(static_cast<void*>(dst), first, H * sizeof(T));
    memcpy(reinterpret_cast<char*>(dst) + (len - H) * sizeof(T), last, H * sizeof(T));
  }

 private:
  static constexpr size_t H = M / 2, N = kLanes<T>;
  // Samples at a time: so many that the windows of two chunks in turn have no sample that is new in neither of them.
  static constexpr int kVectors = static_cast<int>((2 * H + N - 1) / N);
  static constexpr size_t kChunk = kVectors * N;
  // That vectors may reach beyond an array of ours.
  static constexpr size_t kSlack = N;
  // Doubles are compared as they are in any case.
  static constexpr bool kHasOdd = std::is_same_v<T, Kvr32f>;
  using D = Lanes<T, N>;
  using V = hn::Vec<D>;

  // The medians around x[0] and the samples behind it.
  template <bool kAsIntegers>
  static KVRS_INLINE V mediansAt(const T* x) {
    V sample[M];
    unroll<M>([&](auto k) KVRS_UNROLLED { sample[k] = hn::LoadU(D(), x + k - static_cast<ptrdiff_t>(H)); });
    if constexpr (kAsIntegers) {
      const hn::RebindToSigned<D> di;
      hn::Vec<decltype(di)> key[M];
      unroll<M>([&](auto k) KVRS_UNROLLED { key[k] = Ordered()(di, hn::BitCast(di, sample[k])); });
      return hn::BitCast(D(), Ordered()(di, medianOf<H + 2>(key, key + H + 2)));
    } else {
      return medianOf<H + 2>(sample, sample + H + 2);
    }
  }

  // `samples` is ours and goes on beyond `count` by what a vector takes.
  static void medians(const T* samples, T* result, size_t count) {
    for (size_t i = 0; i < count; i += N) hn::StoreU(mediansAt<kHasOdd>(samples + i), D(), result + i);
  }

  static void filterShort(const T* src, T* dst, size_t len) {
    constexpr size_t kMost = 2 * H + kChunk;
    T samples[H + kMost + H + kSlack] = {}, result[kMost + kSlack];
    memcpy(static_cast<void*>(samples + H), src, len * sizeof(T));
    std::fill_n(samples, H, samples[H]);
    std::fill_n(samples + H + len, H, samples[H + len - 1]);
    medians(samples + H, result, len);
    memcpy(static_cast<void*>(dst), result, len * sizeof(T));
  }

  struct Chunk {
    V v[kVectors];
    KVRS_INLINE void store(T* to) const {
      unroll<kVectors>([&](auto k) KVRS_UNROLLED { hn::StoreU(v[k], D(), to + k * N); });
    }
  };
  template <bool kAsIntegers>
  static KVRS_INLINE Chunk chunkAt(const T* x) {
    Chunk chunk;
    unroll<kVectors>([&](auto k) KVRS_UNROLLED { chunk.v[k] = mediansAt<kAsIntegers>(x + k * N); });
    return chunk;
  }
  // Out of line: nobody waits for it.
  [[gnu::noinline]] static void chunkAsIntegers(const T* x, Chunk& chunk) { chunk = chunkAt<kHasOdd>(x); }

  // Whether one of the samples that a chunk is the first one to meet is odd.
  static KVRS_INLINE bool hasOdd(const T* x) {
    if constexpr (kHasOdd) {
      bool has = false;
      unroll<kVectors>([&](auto k) KVRS_UNROLLED {
        has = has || !hn::AllFalse(D(), Odd()(hn::LoadU(D(), x + H + k * N)));
      });
      return has;
    } else {
      return false;
    }
  }

  // Samples whose windows lie inside the array. Each chunk is stored when the windows of the next one have been read; the
  // last one, which lies over the one before it, is read before anything is stored.
  static void filterInside(const T* src, T* dst, size_t begin, size_t end) {
    Chunk last, old, next;
    chunkAsIntegers(src + end - kChunk, last);
    chunkAsIntegers(src + begin, old);
    bool isOdd = hasOdd(src + begin);
    size_t i = begin;
    while (i + 2 * kChunk <= end) {
      const T* const x = src + i + kChunk;
      isOdd = isOdd || hasOdd(x);
      if (__builtin_expect(isOdd, false)) {
        chunkAsIntegers(x, next);
      } else {
        next = chunkAt<false>(x);
      }
      old.store(dst + i);
      old = next;
      i += kChunk;
    }
    old.store(dst + i);
    last.store(dst + end - kChunk);
  }
};

// --- many samples ---

// What a window holds: floats as they are where they compare well, else as integers.
template <class T, bool kAsIntegers>
using Key = std::conditional_t<kAsIntegers, hwy::MakeSigned<T>, T>;

template <class T>
constexpr T kLowest = kIsFloat<T> ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::lowest();
template <class T>
constexpr T kHighest = kIsFloat<T> ? std::numeric_limits<T>::infinity() : std::numeric_limits<T>::max();

template <class T>
struct LargestBelow {
  T limit;
  template <class V>
  KVRS_INLINE void operator()(V& best, V v) const {
    const hn::DFromV<V> d;
    best = hn::Max(best, hn::IfThenElse(hn::Lt(v, hn::Set(d, limit)), v, hn::Set(d, kLowest<T>)));
  }
  template <class V>
  KVRS_INLINE void join(V& best, V other) const {
    best = hn::Max(best, other);
  }
};
template <class T>
struct SmallestAbove {
  T limit;
  template <class V>
  KVRS_INLINE void operator()(V& best, V v) const {
    const hn::DFromV<V> d;
    best = hn::Min(best, hn::IfThenElse(hn::Gt(v, hn::Set(d, limit)), v, hn::Set(d, kHighest<T>)));
  }
  template <class V>
  KVRS_INLINE void join(V& best, V other) const {
    best = hn::Min(best, other);
  }
};
struct MinLanes {
  template <class V>
  KVRS_INLINE V operator()(V a, V b) const {
    return hn::Min(a, b);
  }
};
struct MaxLanes {
  template <class V>
  KVRS_INLINE V operator()(V a, V b) const {
    return hn::Max(a, b);
  }
};
// Counts in lanes, which are as wide as an index at least.
template <class T>
struct CountEqual {
  T value;
  template <class Vi, class V>
  KVRS_INLINE void operator()(Vi& count, V v) const {
    const hn::DFromV<V> d;
    const hn::DFromV<Vi> di;
    count = hn::Sub(count, hn::VecFromMask(di, hn::RebindMask(di, hn::Eq(v, hn::Set(d, value)))));
  }
  template <class Vi>
  KVRS_INLINE void join(Vi& count, Vi other) const {
    count = hn::Add(count, other);
  }
};

// Windows of samples all alike in the beginning, and their element of index `rank` in order of size. What fills up the last
// vector of their memory is above all samples.

template <class T>
class SortedWindow {
 public:
  static constexpr size_t N = kLanes<T>;
  // So many vectors are moved in less time than others are searched.
  static constexpr size_t kMost = 16 * N;

  SortedWindow(T* samples, size_t count, size_t rank, T sample)
      : samples_(samples), kept_(roundUp(count, N)), rank_(rank) {
    std::fill_n(samples, count, sample);
    std::fill_n(sorted_, count, sample);
    std::fill_n(sorted_ + count, kept_ + N - count, kHighest<T>);
  }

  T median() const { return sorted_[rank_]; }

  KVRS_INLINE void replace(size_t at, T newest) {
    const auto oldest = hn::Set(D(), samples_[at]), newer = hn::Set(D(), newest);
    samples_[at] = newest;
    auto before = hn::Set(D(), kLowest<T>), here = hn::Load(D(), sorted_);
    for (size_t i = 0; i < kept_; i += N) {
      const auto behind = hn::Load(D(), sorted_ + i + N);
      const auto without = hn::IfThenElse(hn::Lt(here, oldest), here, lanesBehind(D(), here, behind));
      hn::Store(hn::Min(without, hn::Max(newer, lanesBefore(D(), without, before))), D(), sorted_ + i);
      before = without;
      here = behind;
    }
  }

 private:
  using D = Lanes<T, N>;

  T* samples_;
  size_t kept_, rank_;
  alignas(64) T sorted_[kMost + N];  // one vector more than is moved
};

template <class T>
class Window {
 public:
  static constexpr size_t kept(size_t count) { return roundUp(count, N); }

  Window(T* samples, size_t count, size_t rank, T sample)
      : samples_(samples), kept_(kept(count)), rank_(rank), median_(sample), upTo_(count) {
    std::fill_n(samples, count, sample);
    std::fill_n(samples + count, kept_ - count, kHighest<T>);
  }

  T median() const { return median_; }

  KVRS_INLINE void replace(size_t at, T newest) {
    const T oldest = samples_[at];
    samples_[at] = newest;
    below_ += static_cast<size_t>(newest < median_) - static_cast<size_t>(oldest < median_);
    upTo_ += static_cast<size_t>(newest <= median_) - static_cast<size_t>(oldest <= median_);
    if (below_ > rank_) {
      median_ = foldLanes(pass(LargestBelow<T>{median_}, kLowest<T>), MaxLanes());
      upTo_ = below_;
      below_ -= countEqual();
    } else if (upTo_ <= rank_) {
      median_ = foldLanes(pass(SmallestAbove<T>{median_}, kHighest<T>), MinLanes());
      below_ = upTo_;
      upTo_ += countEqual();
    }
  }

 private:
  static constexpr size_t N = kLanes<T>;
  using D = Lanes<T, N>;

  template <class Op>
  KVRS_INLINE hn::Vec<D> pass(Op op, T start) const {
    return reduce<T, kFewAccumulators>(op, hn::Set(D(), start), kept_, samples_);
  }
  // Those that fill up the last vector may count: where they do, all samples are up to the median.
  KVRS_INLINE size_t countEqual() const {
    if constexpr (kMaskRegisters || sizeof(T) < 4) {
      size_t count = 0;
      for (size_t i = 0; i < kept_; i += N) {
        count += hn::CountTrue(D(), hn::Eq(hn::LoadU(D(), samples_ + i), hn::Set(D(), median_)));
      }
      return count;
    } else {
      const hn::RebindToSigned<D> di;
      return static_cast<size_t>(
          sumLanes(reduce<T, kFewAccumulators>(CountEqual<T>{median_}, hn::Zero(di), kept_, samples_)));
    }
  }

  T* samples_;
  size_t kept_, rank_;
  T median_;
  size_t below_ = 0, upTo_;  // samples that are smaller than the median, and that are not larger
};

// `memory` has room for Window<...>::kept(mask) elements.
template <template <class> class W, class T, bool kAsIntegers>
[[gnu::noinline]] void slideBy(const T* src, T* dst, size_t len, size_t mask, void* memory) {
  using K = Key<T, kAsIntegers>;
  const auto keyAt = [=](size_t i) {
    const K bits = unaligned::get(reinterpret_cast<const K*>(src) + i);
    if constexpr (kAsIntegers && kIsFloat<T>) return ordered(bits);
    return bits;
  };
  const size_t half = mask / 2, ahead = mask - 1 - half;
  W<K> window(static_cast<K*>(memory), mask, half, keyAt(0));
  const K last = keyAt(len - 1);
  size_t oldest = 0, next = 1;
  const auto move = [&] {
    window.replace(oldest, next < len ? keyAt(next) : last);
    ++next;
    oldest = oldest + 1 < mask ? oldest + 1 : 0;
  };
  for (size_t k = 0; k < ahead; ++k) move();
  for (size_t i = 0;; ++i) {
    K median = window.median();
    if constexpr (kAsIntegers && kIsFloat<T>) median = ordered(median);
    // What is stored here has been read: with even masks of two samples none would be ahead.
    if (i + 1 == len) return unaligned::put(median, reinterpret_cast<K*>(dst) + i);
    move();
    unaligned::put(median, reinterpret_cast<K*>(dst) + i);
  }
}

template <class T, bool kAsIntegers>
void slide(const T* src, T* dst, size_t len, size_t mask, void* memory) {
  if (mask <= SortedWindow<Key<T, kAsIntegers>>::kMost) {
    slideBy<SortedWindow, T, kAsIntegers>(src, dst, len, mask, memory);
  } else {
    slideBy<Window, T, kAsIntegers>(src, dst, len, mask, memory);
  }
}

template <class T>
KvrStatus slide(const T* src, T* dst, size_t len, size_t mask) {
  // Beyond four lengths a longer window only adds pairs of the first and the last sample, between which the median lies.
  if (mask / 4 > len) mask = 4 * len + mask % 2;
  const Scratch scratch(uint64_t{sizeof(T)} * Window<T>::kept(mask));
  if (!scratch.ok()) return kvrStatusOutOfMemory;
  void* const memory = scratch.as<T>();
  if constexpr (!kIsFloat<T>) {
    slide<T, false>(src, dst, len, mask, memory);
  } else if (findFirst(src, len, Odd()) < len) {
    slide<T, true>(src, dst, len, mask, memory);
  } else {
    slide<T, false>(src, dst, len, mask, memory);
  }
  return kvrStatusOk;
}

// --- all ---

template <class T>
KvrStatus copied(const T* src, T* dst, size_t len) {
  if (src != dst) memcpy(static_cast<void*>(dst), src, len * sizeof(T));
  return kvrStatusOk;
}

template <class T>
KvrStatus filterWindows(const T* src, T* dst, size_t len, size_t mask) {
  if (len < 3 || mask == 1) return copied(src, dst, len);
  switch (mask) {
    case 3:
      Few<3, T>::filter(src, dst, len);
      return kvrStatusOk;
    case 5:
      Few<5, T>::filter(src, dst, len);
      return kvrStatusOk;
    case 7:
      Few<7, T>::filter(src, dst, len);
      return kvrStatusOk;
    case 9:
      Few<9, T>::filter(src, dst, len);
      return kvrStatusOk;
    default:
      const KvrStatus status = slide(src, dst, len, mask);
      if (status != kvrStatusOk) copied(src, dst, len);
      return status;
  }
}

template <class T>
KvrStatus filter(const T* src, T* dst, int len, int maskSize) {
  KVRS_CHECK(pointers(src, dst), lengthOf<T>(len), length(maskSize));
  const size_t n = static_cast<size_t>(len), mask = static_cast<size_t>(maskSize);
  const bool isEven = mask % 2 == 0;
  // Known to callers: long windows of 32s are taken as they are, even ones too.
  if (std::is_same_v<T, Kvr32s> && mask >= 11) return filterWindows(src, dst, n, mask);
  const KvrStatus status = filterWindows(src, dst, n, isEven ? mask - 1 : mask);
  return status == kvrStatusOk && isEven ? kvrStatusEvenMedianMask : status;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsFilterMedian_8u(const Kvr8u* src, Kvr8u* dst, int len, int maskSize) noexcept {
  return filter(src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_16s(const Kvr16s* src, Kvr16s* dst, int len, int maskSize) noexcept {
  return filter(src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32s(const Kvr32s* src, Kvr32s* dst, int len, int maskSize) noexcept {
  return filter(src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32f(const Kvr32f* src, Kvr32f* dst, int len, int maskSize) noexcept {
  return filter(src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_64f(const Kvr64f* src, Kvr64f* dst, int len, int maskSize) noexcept {
  return filter(src, dst, len, maskSize);
}
KvrStatus kvrsFilterMedian_8u_I(Kvr8u* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_16s_I(Kvr16s* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32s_I(Kvr32s* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_32f_I(Kvr32f* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, srcDst, len, maskSize);
}
KvrStatus kvrsFilterMedian_64f_I(Kvr64f* srcDst, int len, int maskSize) noexcept {
  return filter(srcDst, srcDst, len, maskSize);
}
