// SPDX-License-Identifier: MIT
#include "kvrs/sort.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/floats.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

// The order of all bit patterns: by value, -0.0 below 0.0, NaN beyond the infinities on the side of their sign.
template <class T>
bool below(T a, T b) {
  if constexpr (std::is_integral_v<T>) {
    return a < b;
  } else {
    const auto rank = [](T x) { return std::isnan(x) ? (std::signbit(x) ? -2 : 2) : 0; };
    if (rank(a) != rank(b)) return rank(a) < rank(b);
    if (rank(a) != 0) {  // by the bits, which grow away from 0
      using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
      Bits x, y;
      memcpy(&x, &a, sizeof a);
      memcpy(&y, &b, sizeof b);
      return rank(a) < 0 ? x > y : x < y;
    }
    return a < b || (a == 0 && b == 0 && std::signbit(a) && !std::signbit(b));
  }
}

// Kinds of vectors that sorts are known to stumble over.
constexpr int kKinds = 12;
template <class T>
std::vector<T> vectorOf(int kind, size_t len, Random& random) {
  std::vector<T> v(len);
  const auto at = [&](size_t i) {
    return static_cast<T>(static_cast<int>(i % 100) - (T(-1) < T(0) ? 50 : 0));
  };
  for (size_t i = 0; i < len; ++i) {
    switch (kind) {
      case 0:
        v[i] = random.value<T>();
        break;
      case 1:  // all equal
        v[i] = T(7);
        break;
      case 2:  // in order
      case 3:  // reversed
        v[i] = static_cast<T>(i);
        break;
      case 4:  // organ pipe
        v[i] = static_cast<T>(std::min(i, len - i));
        break;
      case 5:  // few values
        v[i] = static_cast<T>(random.below(4));
        break;
      case 6:  // two values
        v[i] = static_cast<T>(random.below(2) * 3);
        break;
      case 7:  // one of another value
        v[i] = static_cast<T>(i == len / 3);
        break;
      case 8:  // saw teeth
        v[i] = at(i);
        break;
      case 9:  // in order but for the last
        v[i] = i + 1 == len ? T(0) : static_cast<T>(i);
        break;
      case 10:  // the extremes
        v[i] = random.below(2) != 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
        break;
      default:
        if constexpr (std::is_floating_point_v<T>) {
          v[i] = random.below(2) != 0 ? anyFloat<T>(random) : -anyFloat<T>(random);
        } else {
          v[i] = random.value<T>();
        }
    }
  }
  if (kind == 2) std::sort(v.begin(), v.end());
  if (kind == 3) std::sort(v.begin(), v.end(), std::greater<T>());
  return v;
}

template <class T>
void sortByOracle(std::vector<T>& v, bool descending) {
  std::sort(v.begin(), v.end(), [=](T a, T b) { return descending ? below(b, a) : below(a, b); });
}

// `sort(array, len)` leaves the elements of `before` in order, at every byte offset in `offsets`.
template <class T, class Sort>
void checkSort(Sort sort, bool descending, const std::vector<T>& before, std::initializer_list<int> offsets,
               const std::string& what) {
  std::vector<T> want = before;
  sortByOracle(want, descending);
  Arena arena(before.size() * sizeof(T) + 64);
  for (int offset : offsets) {
    T* array = arena.place<T>(before.size(), offset % 2 != 0 ? Side::front : Side::back,
                              static_cast<size_t>(offset));
    memcpy(static_cast<void*>(array), before.data(), before.size() * sizeof(T));
    ASSERT_EQ(kvrStatusOk, sort(array, static_cast<int>(before.size())));
    ASSERT_EQ(0, memcmp(static_cast<void*>(array), want.data(), want.size() * sizeof(T)))
        << what << ", " << before.size() << " elements, offset " << offset;
    ASSERT_TRUE(arena.intact());
  }
}

template <class T, class Sort>
void checkSorts(Sort sort, bool descending, std::initializer_list<size_t> longLengths) {
  Random random(31);
  for (size_t len = 1; len <= 300; ++len) {
    checkSort<T>(sort, descending, vectorOf<T>(static_cast<int>(len % kKinds), len, random), {0, 1, 4, 8},
                 "short");
    checkSort<T>(sort, descending, vectorOf<T>(0, len, random), {0, 3}, "short");
    if (testing::Test::HasFatalFailure()) return;
  }
  for (size_t len : longLengths) {
    for (int kind = 0; kind < kKinds; ++kind) {
      checkSort<T>(sort, descending, vectorOf<T>(kind, len, random), {0, 1}, "kind " + std::to_string(kind));
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

template <class T>
using InPlace = KvrStatus (*)(T*, int) noexcept;

template <class T>
void checkBoth(InPlace<T> ascend, InPlace<T> descend) {
  checkSorts<T>(ascend, false, {1000, 4097, 20011});
  checkSorts<T>(descend, true, {1000, 4097, 20011});
}

TEST(Sort, Bytes) {
  checkBoth(kvrsSortAscend_8u_I, kvrsSortDescend_8u_I);
}
TEST(Sort, Words) {
  checkBoth(kvrsSortAscend_16u_I, kvrsSortDescend_16u_I);
  checkBoth(kvrsSortAscend_16s_I, kvrsSortDescend_16s_I);
}
TEST(Sort, Longs) {
  checkBoth(kvrsSortAscend_32s_I, kvrsSortDescend_32s_I);
}
TEST(Sort, Floats) {
  checkBoth(kvrsSortAscend_32f_I, kvrsSortDescend_32f_I);
  checkBoth(kvrsSortAscend_64f_I, kvrsSortDescend_64f_I);
}
TEST(Sort, AMillion) {
  Random random(37);
  checkSort<Kvr32s>(kvrsSortAscend_32s_I, false, vectorOf<Kvr32s>(0, 1000003, random), {0}, "random");
  checkSort<Kvr32f>(kvrsSortDescend_32f_I, true, vectorOf<Kvr32f>(11, 1000003, random), {0}, "any floats");
  checkSort<Kvr64f>(kvrsSortAscend_64f_I, false, vectorOf<Kvr64f>(11, 1000003, random), {0}, "any floats");
}

template <class T>
using Radix = KvrStatus (*)(T*, T*, int) noexcept;

// With a buffer of its own offset and canaries.
template <class T>
auto withBuffer(Radix<T> f) {
  return [f](T* srcDst, int len) {
    Arena arena(static_cast<size_t>(len) * sizeof(T) + 64);
    T* buffer = arena.place<T>(static_cast<size_t>(len), Side::back, 3);
    const KvrStatus status = f(srcDst, buffer, len);
    EXPECT_TRUE(arena.intact());
    return status;
  };
}
template <class T>
void checkRadix(Radix<T> ascend, Radix<T> descend) {
  checkSorts<T>(withBuffer(ascend), false, {1000, 4095, 4096, 4097, 8191, 8192, 20011});
  checkSorts<T>(withBuffer(descend), true, {1000, 4095, 4096, 4097, 8191, 8192, 20011});
}

TEST(SortRadix, Integers) {
  checkRadix(kvrsSortRadixAscend_8u_I, kvrsSortRadixDescend_8u_I);
  checkRadix(kvrsSortRadixAscend_16u_I, kvrsSortRadixDescend_16u_I);
  checkRadix(kvrsSortRadixAscend_16s_I, kvrsSortRadixDescend_16s_I);
  checkRadix(kvrsSortRadixAscend_32u_I, kvrsSortRadixDescend_32u_I);
  checkRadix(kvrsSortRadixAscend_32s_I, kvrsSortRadixDescend_32s_I);
}
TEST(SortRadix, Floats) {
  checkRadix(kvrsSortRadixAscend_32f_I, kvrsSortRadixDescend_32f_I);
  checkRadix(kvrsSortRadixAscend_64f_I, kvrsSortRadixDescend_64f_I);
}
// The same with threads.
TEST(SortRadix, ThreadsChangeNothing) {
  Random random(41);
  for (int threads : {2, 3}) {
    ThreadCount count(threads);
    for (size_t len : {4095, 4096, 4097, 8191, 8192, 8193, 20011}) {
      for (int kind : {0, 1, 2, 5, 10, 11}) {
        const std::string what = std::to_string(threads) + " threads, kind " + std::to_string(kind);
        const auto u = vectorOf<Kvr32u>(kind, len, random);
        const auto s = vectorOf<Kvr32s>(kind, len, random);
        const auto f = vectorOf<Kvr32f>(kind, len, random);
        const auto d = vectorOf<Kvr64f>(kind, len, random);
        checkSort<Kvr32u>(withBuffer(kvrsSortRadixAscend_32u_I), false, u, {1}, what);
        checkSort<Kvr32u>(withBuffer(kvrsSortRadixDescend_32u_I), true, u, {0}, what);
        checkSort<Kvr32s>(withBuffer(kvrsSortRadixAscend_32s_I), false, s, {0}, what);
        checkSort<Kvr32s>(withBuffer(kvrsSortRadixDescend_32s_I), true, s, {0}, what);
        checkSort<Kvr32f>(withBuffer(kvrsSortRadixAscend_32f_I), false, f, {0}, what);
        checkSort<Kvr32f>(withBuffer(kvrsSortRadixDescend_32f_I), true, f, {2}, what);
        checkSort<Kvr64f>(withBuffer(kvrsSortRadixAscend_64f_I), false, d, {0}, what);
        checkSort<Kvr64f>(withBuffer(kvrsSortRadixDescend_64f_I), true, d, {4}, what);
        if (HasFatalFailure()) return;
      }
    }
  }
}

// From the lengths on at which the work is shared.
TEST(SortRadix, LongVectorsOfTwoThreads) {
  Random random(59);
  for (int threads : {1, 2, 3}) {
    ThreadCount count(threads);
    const std::string what = std::to_string(threads) + " threads";
    const size_t len = (size_t{1} << 20) + static_cast<size_t>(threads) - 2;
    checkSort<Kvr32s>(withBuffer(kvrsSortRadixAscend_32s_I), false, vectorOf<Kvr32s>(0, len, random), {0},
                      what);
    checkSort<Kvr32f>(withBuffer(kvrsSortRadixDescend_32f_I), true, vectorOf<Kvr32f>(5, len, random), {1},
                      what);
    checkSort<Kvr64f>(withBuffer(kvrsSortRadixAscend_64f_I), false, vectorOf<Kvr64f>(0, len / 2 + 1, random),
                      {0}, what);
  }
}

// Stable: among keys with the same bits the indices ascend.
template <class T>
void checkRadixIndex(KvrStatus (*f)(const T*, Kvr32u, Kvr32s*, Kvr32s*, int) noexcept, bool descending) {
  Random random(43);
  Arena keys(40000 * 16), dst(40000 * 4), tmp(40000 * 4);
  std::vector<int> lengths(100);
  std::iota(lengths.begin(), lengths.end(), 1);
  for (int len : {255, 256, 1000, 20000}) lengths.push_back(len);
  for (int len : lengths) {
    for (size_t stride : {sizeof(T), sizeof(T) + 1, size_t{7}, size_t{16}}) {
      const int kind = len % kKinds;
      const size_t n = static_cast<size_t>(len);
      const std::vector<T> values = vectorOf<T>(kind, n, random);
      // Nothing behind the last key.
      uint8_t* src = keys.place<uint8_t>((n - 1) * stride + sizeof(T), Side::back, n % 5);
      for (size_t i = 0; i < n; ++i) memcpy(src + i * stride, &values[i], sizeof(T));
      const std::vector<uint8_t> before(src, src + (n - 1) * stride + sizeof(T));
      Kvr32s* indices = dst.place<Kvr32s>(n, Side::back, n % 3);
      Kvr32s* other = tmp.place<Kvr32s>(n, Side::front, n % 7);
      ASSERT_EQ(kvrStatusOk,
                f(reinterpret_cast<const T*>(src), static_cast<Kvr32u>(stride), indices, other, len));
      std::vector<Kvr32s> want(n);
      std::iota(want.begin(), want.end(), 0);
      std::stable_sort(want.begin(), want.end(), [&](Kvr32s a, Kvr32s b) {
        return descending ? below(values[b], values[a]) : below(values[a], values[b]);
      });
      ASSERT_EQ(0, memcmp(static_cast<void*>(indices), want.data(), n * sizeof(Kvr32s)))
          << len << " elements, stride " << stride << ", kind " << kind;
      ASSERT_EQ(0, memcmp(src, before.data(), before.size()));
      ASSERT_TRUE(keys.intact() && dst.intact() && tmp.intact());
    }
  }
}

TEST(SortRadixIndex, AllTypes) {
  checkRadixIndex(kvrsSortRadixIndexAscend_8u, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_8u, true);
  checkRadixIndex(kvrsSortRadixIndexAscend_16u, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_16u, true);
  checkRadixIndex(kvrsSortRadixIndexAscend_16s, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_16s, true);
  checkRadixIndex(kvrsSortRadixIndexAscend_32u, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_32u, true);
  checkRadixIndex(kvrsSortRadixIndexAscend_32s, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_32s, true);
  checkRadixIndex(kvrsSortRadixIndexAscend_32f, false);
  checkRadixIndex(kvrsSortRadixIndexDescend_32f, true);
}

// The stated steps, by recursion on copies of records. Where the library takes another road, this is the definition.
template <class T>
struct Record {
  T key;
  Kvr32s index;
};
template <class T>
class StatedSort {
 public:
  StatedSort(std::vector<Record<T>>& a, bool descending) : a_(a), descending_(descending) {
    sort(0, static_cast<int>(a.size()) - 1);
  }

 private:
  bool before(T x, T y) const { return descending_ ? x > y : x < y; }
  void order(int i, int j) {
    if (before(a_[j].key, a_[i].key)) std::swap(a_[i], a_[j]);
  }
  void sort(int first, int last) {
    while (last - first + 1 > 9) {
      const int m = first + (last - first + 1) / 2;
      if (std::is_integral_v<T>) {
        const int end = descending_ ? last : first, next = descending_ ? last - 1 : first + 1;
        if (a_[end].key < a_[next].key) std::swap(a_[end], a_[next]);
      }
      order(first, m);
      order(m, last);
      order(first, m);
      const T pivot = a_[m].key;
      int i = first + 1, j = last;
      while (true) {
        while (i <= last && !before(pivot, a_[i].key)) ++i;
        while (before(pivot, a_[j].key)) --j;
        if (i > j) break;
        std::swap(a_[i], a_[j]);
      }
      while (j >= first && a_[j].key == pivot) --j;
      sort(first, j);
      first = i;
    }
    for (; last > first; --last) {
      int at = first;
      for (int i = first; i <= last; ++i) {
        if (!before(a_[i].key, a_[at].key)) at = i;
      }
      std::swap(a_[at], a_[last]);
    }
  }
  std::vector<Record<T>>& a_;
  bool descending_;
};

template <class T>
using WithIndex = KvrStatus (*)(T*, Kvr32s*, int) noexcept;

template <class T>
void checkIndex(WithIndex<T> f, bool descending, const std::vector<T>& keys, const std::string& what) {
  const size_t n = keys.size();
  std::vector<Record<T>> want(n);
  for (size_t i = 0; i < n; ++i) want[i] = {keys[i], static_cast<Kvr32s>(i)};
  StatedSort<T>(want, descending);
  Arena keyArena(n * sizeof(T)), indexArena(n * sizeof(Kvr32s));
  for (size_t offset : {0, 1, 6}) {
    T* srcDst = keyArena.place<T>(n, offset != 1 ? Side::back : Side::front, offset);
    Kvr32s* dstIndx = indexArena.place<Kvr32s>(n, offset != 1 ? Side::back : Side::front, offset);
    memcpy(static_cast<void*>(srcDst), keys.data(), n * sizeof(T));
    ASSERT_EQ(kvrStatusOk, f(srcDst, dstIndx, static_cast<int>(n)));
    for (size_t i = 0; i < n; ++i) {
      ASSERT_TRUE(sameBits(want[i].key, get(srcDst, i))) << what << ", len " << n << ", key " << i;
      ASSERT_EQ(want[i].index, get(dstIndx, i)) << what << ", len " << n << ", index " << i;
    }
    ASSERT_TRUE(keyArena.intact() && indexArena.intact());
  }
}

template <class T>
void checkIndexSorts(WithIndex<T> ascend, WithIndex<T> descend) {
  Random random(47);
  for (bool descending : {false, true}) {
    const WithIndex<T> f = descending ? descend : ascend;
    for (size_t len = 1; len <= 300; ++len) {
      for (int kind : {0, 5, static_cast<int>(len % 11)}) {
        checkIndex<T>(f, descending, vectorOf<T>(kind, len, random), "kind " + std::to_string(kind));
        if (testing::Test::HasFatalFailure()) return;
      }
    }
    for (size_t len : {1000, 9973}) {
      for (int kind = 0; kind < 11; ++kind) {
        checkIndex<T>(f, descending, vectorOf<T>(kind, len, random), "kind " + std::to_string(kind));
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(SortIndex, Integers) {
  checkIndexSorts(kvrsSortIndexAscend_8u_I, kvrsSortIndexDescend_8u_I);
  checkIndexSorts(kvrsSortIndexAscend_16u_I, kvrsSortIndexDescend_16u_I);
  checkIndexSorts(kvrsSortIndexAscend_16s_I, kvrsSortIndexDescend_16s_I);
  checkIndexSorts(kvrsSortIndexAscend_32s_I, kvrsSortIndexDescend_32s_I);
}
TEST(SortIndex, Floats) {
  checkIndexSorts(kvrsSortIndexAscend_32f_I, kvrsSortIndexDescend_32f_I);
  checkIndexSorts(kvrsSortIndexAscend_64f_I, kvrsSortIndexDescend_64f_I);
}

// With NaN among them: every element once, with its index.
TEST(SortIndex, NaNKeepsEveryElement) {
  Random random(53);
  for (int len = 1; len < 2000; len += 1 + len / 20) {
    const auto keys = vectorOf<Kvr32f>(11, static_cast<size_t>(len), random);
    std::vector<Kvr32f> srcDst = keys;
    std::vector<Kvr32s> indices(keys.size());
    ASSERT_EQ(kvrStatusOk, kvrsSortIndexAscend_32f_I(srcDst.data(), indices.data(), len));
    std::vector<bool> seen(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
      const size_t from = static_cast<size_t>(indices[i]);
      ASSERT_LT(from, keys.size());
      ASSERT_FALSE(seen[from]);
      seen[from] = true;
      ASSERT_TRUE(sameBits(keys[from], srcDst[i]));
    }
  }
}

// A sequence made while it is sorted, so that every pivot is next to the smallest (McIlroy: A killer adversary for quicksort,
// 1999): elements are unknown until compared, and then as small as can be.
class Adversary {
 public:
  static std::vector<Kvr32f> sequence(int len) {
    Adversary a(len);
    std::vector<int> order(static_cast<size_t>(len));
    std::iota(order.begin(), order.end(), 0);
    a.sort(order, 0, len - 1);
    return a.value_;
  }

 private:
  explicit Adversary(int len) : value_(static_cast<size_t>(len), kUnknown) {}
  static constexpr Kvr32f kUnknown = 1e9f;

  bool before(int x, int y) {
    if (value_[x] == kUnknown && value_[y] == kUnknown) (x == candidate_ ? value_[x] : value_[y]) = next_++;
    if (value_[x] == kUnknown) {
      candidate_ = x;
    } else if (value_[y] == kUnknown) {
      candidate_ = y;
    }
    return value_[x] < value_[y];
  }
  void order(std::vector<int>& a, int i, int j) {
    if (before(a[j], a[i])) std::swap(a[i], a[j]);
  }
  // The partitions of the stated steps on floats.
  void sort(std::vector<int>& a, int first, int last) {
    while (last - first + 1 > 9) {
      const int m = first + (last - first + 1) / 2;
      order(a, first, m);
      order(a, m, last);
      order(a, first, m);
      const int pivot = a[m];
      int i = first + 1, j = last;
      for (;;) {
        while (i <= last && (a[i] == pivot || !before(pivot, a[i]))) ++i;
        while (a[j] != pivot && before(pivot, a[j])) --j;
        if (i > j) break;
        std::swap(a[i], a[j]);
      }
      while (j >= first && a[j] == pivot) --j;
      sort(a, first, j);
      first = i;
    }
    for (int i = first + 1; i <= last; ++i) {
      for (int k = i; k > first && before(a[k], a[k - 1]); --k) std::swap(a[k], a[k - 1]);
    }
  }

  std::vector<Kvr32f> value_;
  int candidate_ = -1;
  Kvr32f next_ = 0;
};

// The permutation stays the stated one, beyond the number of steps at which a heap sort takes over, and where keys that are
// equal keep it from doing so.
TEST(SortIndex, KillerSequences) {
  std::vector<Kvr32f> keys = Adversary::sequence(6000);
  checkIndex<Kvr32f>(kvrsSortIndexAscend_32f_I, false, keys, "all different");
  keys[100] = keys[5000];
  keys[200] = keys[4000];
  keys[300] = keys[4000];
  checkIndex<Kvr32f>(kvrsSortIndexAscend_32f_I, false, keys, "some equal");
}

}  // namespace
