// SPDX-License-Identifier: MIT
#include "kvrs/sort.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

#ifdef KVRS_BENCH_VQSORT
#include <hwy/contrib/sort/vqsort.h>
#endif

#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 100000, 1000000};

// Every call sorts the same random elements, copied first.
template <class T, class Sort>
void addSort(const std::string& name, const std::string& who, int len, Sort sort) {
  addPrepared(name, who, [=]() -> Run {
    const size_t n = static_cast<size_t>(len);
    const auto random = newArray<T>(n), a = newArray<T>(n), buffer = newArray<T>(n);
    if (!std::is_floating_point_v<T>) {
      uint64_t state = 1;
      for (size_t i = 0; i < n; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        random.get()[i] = static_cast<T>(state >> 32);
      }
    }
    return [=](long calls) {
      for (; calls > 0; --calls) {
        memcpy(a.get(), random.get(), n * sizeof(T));
        sort(a.get(), buffer.get(), len);
        writeMemory();
      }
    };
  });
}

// The textbook's: bytes as digits, counted pass by pass.
template <class T>
__attribute__((noipa)) void plainRadix(T* a, T* buffer, int len) {
  using Key = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
  Key *from = reinterpret_cast<Key*>(a), *to = reinterpret_cast<Key*>(buffer);
  for (unsigned shift = 0; shift < 8 * sizeof(T); shift += 8) {
    unsigned at[256] = {}, next = 0;
    for (int i = 0; i < len; ++i) ++at[from[i] >> shift & 255];
    for (unsigned& place : at) place = std::exchange(next, next + place);
    for (int i = 0; i < len; ++i) to[at[from[i] >> shift & 255]++] = from[i];
    std::swap(from, to);
  }
}

template <class T>
void addAll(const std::string& type, int len, KvrStatus (*sort)(T*, int) noexcept,
            KvrStatus (*index)(T*, Kvr32s*, int) noexcept, KvrStatus (*radix)(T*, T*, int) noexcept) {
  const std::string n = type + "/" + std::to_string(len);
  const auto std = [](T* a, T*, int count) { std::sort(a, a + count); };
  addSort<T>("sort/SortAscend_" + n, "kvrs", len, [=](T* a, T*, int count) { sort(a, count); });
  addSort<T>("sort/SortAscend_" + n, "std", len, std);
#ifdef KVRS_BENCH_VQSORT
  addSort<T>("sort/SortAscend_" + n, "vqsort", len,
             [](T* a, T*, int count) { hwy::Sorter()(a, static_cast<size_t>(count), hwy::SortAscending()); });
#endif
  addSort<T>("sort/SortRadixAscend_" + n, "kvrs", len, [=](T* a, T* b, int count) { radix(a, b, count); });
  addSort<T>("sort/SortRadixAscend_" + n, "std", len, std);
  addSort<T>("sort/SortRadixAscend_" + n, "plain", len, plainRadix<T>);
  const auto indices = array<Kvr32s>(static_cast<size_t>(len));
  addSort<T>("sort/SortIndexAscend_" + n, "kvrs", len,
             [=](T* a, T*, int count) { index(a, indices.get(), count); });
  addSort<T>("sort/SortIndexAscend_" + n, "std", len, [=](T* a, T*, int count) {
    Kvr32s* const i = indices.get();
    std::iota(i, i + count, 0);
    std::sort(i, i + count, [=](Kvr32s x, Kvr32s y) { return a[x] < a[y]; });
  });
}

Register sorts([] {
  for (int len : kLengths) {
    addAll<Kvr32f>("32f", len, kvrsSortAscend_32f_I, kvrsSortIndexAscend_32f_I, kvrsSortRadixAscend_32f_I);
    addAll<Kvr32s>("32s", len, kvrsSortAscend_32s_I, kvrsSortIndexAscend_32s_I, kvrsSortRadixAscend_32s_I);
    addAll<Kvr64f>("64f", len, kvrsSortAscend_64f_I, kvrsSortIndexAscend_64f_I, kvrsSortRadixAscend_64f_I);
    const std::string n = "16s/" + std::to_string(len);
    addSort<Kvr16s>("sort/SortAscend_" + n, "kvrs", len,
                    [=](Kvr16s* a, Kvr16s*, int count) { kvrsSortAscend_16s_I(a, count); });
    addSort<Kvr16s>("sort/SortAscend_" + n, "std", len,
                    [](Kvr16s* a, Kvr16s*, int count) { std::sort(a, a + count); });
  }
});

}  // namespace
}  // namespace kvrs::bench
