// Sorting with a permutation: a quicksort whose every step is stated, since equal keys show them.
// SPDX-License-Identifier: MIT
#include <bit>
#include <type_traits>
#include <utility>

#include "frame/check.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "kvrs/sort.h"
#include "stats/sort_key.h"
#include "stats/vector_sort.h"

namespace kvrs {
namespace {

// Keys and the indices that go with them, at any address.
template <class T>
class Keyed {
 public:
  Keyed(T* keys, Kvr32s* indices) : keys_(keys), indices_(indices) {}

  KVRS_INLINE T key(ptrdiff_t i) const { return unaligned::get(keys_ + i); }
  KVRS_INLINE Kvr32s index(ptrdiff_t i) const { return unaligned::get(indices_ + i); }
  KVRS_INLINE void setIndex(ptrdiff_t i, Kvr32s index) const { unaligned::put(index, indices_ + i); }
  KVRS_INLINE void put(ptrdiff_t i, T key, Kvr32s index) const {
    unaligned::put(key, keys_ + i);
    setIndex(i, index);
  }
  KVRS_INLINE void exchange(ptrdiff_t i, ptrdiff_t j) const {
    const T key = this->key(i);
    const Kvr32s index = this->index(i);
    put(i, this->key(j), this->index(j));
    put(j, key, index);
  }

 private:
  T* keys_;
  Kvr32s* indices_;
};

struct Ascending {
  static constexpr bool kDescending = false;
  template <class T>
  static constexpr bool before(T a, T b) {
    return a < b;
  }
};
struct Descending {
  static constexpr bool kDescending = true;
  template <class T>
  static constexpr bool before(T a, T b) {
    return a > b;
  }
};

template <class Order, class T>
class IndexSort {
 public:
  IndexSort(T* keys, Kvr32s* indices, size_t len) : a_(keys, indices), len_(static_cast<ptrdiff_t>(len)) {}

  void run() {
    for (ptrdiff_t i = 0; i < len_; ++i) a_.setIndex(i, static_cast<Kvr32s>(i));
    const int64_t n = len_;
    if (quicksort(8 * n * std::bit_width(static_cast<uint64_t>(n)))) return;
    // What is sorted by now by other steps has no other order if all keys differ.
    for (ptrdiff_t i = 1; i < len_; ++i) {
      if (Order::before(a_.key(i - 1), a_.key(i))) continue;
      restore();
      quicksort(INT64_MAX);
      return;
    }
  }

 private:
  static constexpr ptrdiff_t kSelectedUpTo = 9;

  // Segments of at most kAtOnce elements may have no two equal keys; then they have one order only, which a faster sort finds
  // as well. Of 8u and 16-bit keys only short ones are worth the try, and shorter ones than kTriedFrom of none. In
  // s8, which neither compares lanes of 64 bits in one operation nor merges them, the other sort is no faster.
  static constexpr int kPlaceBits = 11;
  static constexpr ptrdiff_t kAtOnce = sizeof(T) == 1 || !kBlends ? 0
                                       : sizeof(T) == 2           ? 128
                                                                  : ptrdiff_t{1} << kPlaceBits;
  static constexpr ptrdiff_t kTriedFrom = 32;

  // `worthTrying` is the length up to which equal keys are unlikely, by what the last try has met.
  struct Segment {
    ptrdiff_t first, last;
    ptrdiff_t worthTrying;
    ptrdiff_t length() const { return last - first + 1; }
  };

  // Whether it came to its end within so many steps; segments that were left then are sorted otherwise.
  bool quicksort(int64_t steps) const {
    // The larger part waits, so each one waiting is at most half of the one before it.
    Segment waiting[32];
    int count = 0;
    Segment s{0, len_ - 1, kAtOnce};
    for (;;) {
      const ptrdiff_t n = s.length();
      if (n <= kSelectedUpTo) {
        select(s);
      } else if (steps < 0) {
        heapSort(s);
      } else if (n < kTriedFrom || n > s.worthTrying || !sortAtOnce(s)) {
        steps -= n;
        const auto [left, right] = partition(s);
        const bool leftIsLarger = left.length() >= right.length();
        const Segment larger = leftIsLarger ? left : right, smaller = leftIsLarger ? right : left;
        if (smaller.length() > 0) {
          waiting[count++] = larger;
          s = smaller;
          continue;
        }
        if (larger.length() > 0) {
          s = larger;
          continue;
        }
      }
      if (count == 0) return steps >= 0;
      s = waiting[--count];
    }
  }

  // Keys and places in one number, in order; false, and nothing done, if two keys are equal, or in 64 bits too close to be
  // told apart by what the place leaves of them, or if one is NaN.
  bool sortAtOnce(Segment& s) const {
    if constexpr (kAtOnce > 0) {
      using K = KeyOf<T, Order::kDescending>;
      using Key = typename K::Key;
      constexpr uint64_t kPlaces = (uint64_t{1} << kPlaceBits) - 1;
      const size_t n = static_cast<size_t>(s.length());
      alignas(64) Kvr64s sorted[kAtOnce];
      T keys[kAtOnce];
      Kvr32s indices[kAtOnce];
      bool anyNaN = false;
      for (size_t i = 0; i < n; ++i) {
        keys[i] = a_.key(s.first + static_cast<ptrdiff_t>(i));
        indices[i] = a_.index(s.first + static_cast<ptrdiff_t>(i));
        anyNaN |= keys[i] != keys[i];
        const Key bits =
            keys[i] == T{0} ? Key{0} : std::bit_cast<Key>(keys[i]);  // zeros of both signs are equal
        uint64_t key = K::from(bits);
        key = sizeof(T) < 8 ? key << kPlaceBits : (key & ~kPlaces) ^ (uint64_t{1} << 63);
        sorted[i] = static_cast<Kvr64s>(key | i);
      }
      if (anyNaN) {
        s.worthTrying = s.length() / 4;
        return false;
      }
      sortAlignedKeys(sorted, n);
      ptrdiff_t equal = 0;
      for (size_t i = 1; i < n; ++i) equal += static_cast<uint64_t>(sorted[i] ^ sorted[i - 1]) <= kPlaces;
      if (equal != 0) {
        s.worthTrying = s.length() / (2 * equal);
        return false;
      }
      for (size_t i = 0; i < n; ++i) {
        const size_t from = static_cast<size_t>(sorted[i]) & kPlaces;
        a_.put(s.first + static_cast<ptrdiff_t>(i), keys[from], indices[from]);
      }
      return true;
    }
    return false;
  }

  // The last of the extreme elements goes to the end.
  void select(Segment s) const {
    for (; s.last > s.first; --s.last) {
      ptrdiff_t at = s.first;
      T best = a_.key(at);
      for (ptrdiff_t i = s.first + 1; i <= s.last; ++i) {
        const T key = a_.key(i);
        const bool isLater = best == key || Order::before(best, key);
        best = isLater ? key : best;
        at = isLater ? i : at;
      }
      a_.exchange(at, s.last);
    }
  }

  KVRS_INLINE void inOrder(ptrdiff_t i, ptrdiff_t j) const {
    if (Order::before(a_.key(j), a_.key(i))) a_.exchange(i, j);
  }

  // What is below the pivot and what is behind it, without those in the middle that equal it. NaN stop both searches and
  // change places like others, so that they end.
  std::pair<Segment, Segment> partition(Segment s) const {
    const ptrdiff_t middle = s.first + (s.length() >> 1);
    if constexpr (std::is_integral_v<T>) {
      constexpr bool ascending = std::is_same_v<Order, Ascending>;
      const ptrdiff_t end = ascending ? s.first : s.last, next = ascending ? s.first + 1 : s.last - 1;
      if (a_.key(end) < a_.key(next)) a_.exchange(end, next);
    }
    inOrder(s.first, middle);
    inOrder(middle, s.last);
    inOrder(s.first, middle);
    const T pivot = a_.key(middle);
    const auto notBehind = [pivot](T key) { return key == pivot || Order::before(key, pivot); };
    ptrdiff_t i = s.first + 1, j = s.last;
    exchangeByPieces(
        i, j, [=](T key) { return !notBehind(key); }, [pivot](T key) { return !Order::before(pivot, key); });
    for (;;) {
      while (i <= j && notBehind(a_.key(i))) ++i;
      while (i <= j && Order::before(pivot, a_.key(j))) --j;
      if (i >= j) break;
      a_.exchange(i, j);
      ++i, --j;
    }
    ptrdiff_t left = i - 1, right = i;
    const auto notBefore = [pivot](T key) { return key == pivot || Order::before(pivot, key); };
    while (left >= s.first && notBefore(a_.key(left))) --left;
    if constexpr (std::is_floating_point_v<T>) {
      while (right <= s.last && notBehind(a_.key(right))) ++right;
    }
    return {{s.first, left, s.worthTrying}, {right, s.last, s.worthTrying}};
  }

  // The exchanges of a partition while i and j are far apart. Where the searches stop is written down for a piece of keys at
  // each end, without a jump that depends on a key, as half of these would be foretold wrongly; then as many are
  // exchanged as both have. (Edelkamp, Weiss: BlockQuicksort, 2016.)
  template <class StopsUp, class StopsDown>
  KVRS_INLINE void exchangeByPieces(ptrdiff_t& i, ptrdiff_t& j, StopsUp stopsUp, StopsDown stopsDown) const {
    constexpr ptrdiff_t kPiece = 32;
    struct Stops {
      uint8_t at[kPiece];
      int first = 0, end = 0;
      int count() const { return end - first; }
    } up, down;
    while (j - i + 1 >= 2 * kPiece) {
      if (up.count() == 0) {
        up.first = up.end = 0;
        for (int k = 0; k < kPiece; ++k) {
          up.at[up.end] = static_cast<uint8_t>(k);
          up.end += stopsUp(a_.key(i + k));
        }
      }
      if (down.count() == 0) {
        down.first = down.end = 0;
        for (int k = 0; k < kPiece; ++k) {
          down.at[down.end] = static_cast<uint8_t>(k);
          down.end += stopsDown(a_.key(j - k));
        }
      }
      for (int n = up.count() < down.count() ? up.count() : down.count(); n > 0; --n)
        a_.exchange(i + up.at[up.first++], j - down.at[down.first++]);
      if (up.count() == 0) i += kPiece;
      if (down.count() == 0) j -= kPiece;
    }
    if (up.count() != 0) i += up.at[up.first];
    if (down.count() != 0) j -= down.at[down.first];
  }

  void heapSort(Segment s) const {
    const ptrdiff_t n = s.length();
    for (ptrdiff_t root = n / 2; root-- > 0;) sink(s.first, root, n);
    for (ptrdiff_t end = n - 1; end > 0; --end) {
      a_.exchange(s.first, s.first + end);
      sink(s.first, 0, end);
    }
  }
  void sink(ptrdiff_t base, ptrdiff_t root, ptrdiff_t n) const {
    for (;;) {
      ptrdiff_t child = 2 * root + 1;
      if (child >= n) return;
      if (child + 1 < n && Order::before(a_.key(base + child), a_.key(base + child + 1))) ++child;
      if (!Order::before(a_.key(base + root), a_.key(base + child))) return;
      a_.exchange(base + root, base + child);
      root = child;
    }
  }

  // Every key back to where its index says.
  void restore() const {
    for (ptrdiff_t i = 0; i < len_; ++i) {
      while (a_.index(i) != i) a_.exchange(i, a_.index(i));
    }
  }

  Keyed<T> a_;
  ptrdiff_t len_;
};

template <class Order, class T>
KvrStatus sortIndex(T* srcDst, Kvr32s* dstIndx, int len) {
  KVRS_CHECK(pointers(srcDst, dstIndx), lengthOf<T>(len), lengthOf<Kvr32s>(len));
  IndexSort<Order, T>(srcDst, dstIndx, static_cast<size_t>(len)).run();
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

KvrStatus kvrsSortIndexAscend_8u_I(Kvr8u* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexAscend_16u_I(Kvr16u* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexAscend_16s_I(Kvr16s* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexAscend_32s_I(Kvr32s* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexAscend_32f_I(Kvr32f* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexAscend_64f_I(Kvr64f* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Ascending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_8u_I(Kvr8u* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_16u_I(Kvr16u* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_16s_I(Kvr16s* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_32s_I(Kvr32s* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_32f_I(Kvr32f* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
KvrStatus kvrsSortIndexDescend_64f_I(Kvr64f* srcDst, Kvr32s* dstIndx, int len) noexcept {
  return sortIndex<Descending>(srcDst, dstIndx, len);
}
