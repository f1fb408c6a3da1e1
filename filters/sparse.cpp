// Sparse filters: a record, its taps with their places in the history, and the history.
// SPDX-License-Identifier: MIT
#include "kvrs/sparse.h"

#include <climits>
#include <cstring>

#include "frame/array_length.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/ref.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "frame/unroll.h"

namespace kvrs::sparse {

// One list of taps. The last one comes first, and places count from the oldest sample of the history: with that at h[0] and
// the newest sample at h[order], tap i meets h[places[i]].
struct Taps {
  int32_t count;
  int32_t order;
  Ref<Kvr32f> taps;
  Ref<int32_t> places;
  Ref<Kvr32f> history;  // the last `order` numbers, the oldest first, and room for as many behind them
};

}  // namespace kvrs::sparse

struct KvrsFIRSparseState_32f {
  kvrs::sparse::Taps inputs;
};
struct KvrsIIRSparseState_32f {
  kvrs::sparse::Taps inputs, outputs;
};

namespace kvrs::sparse {
namespace {

constexpr size_t kAlignment = 16;

constexpr uint64_t up16(uint64_t bytes) {
  return (bytes + 15) / 16 * 16;
}
constexpr uint64_t count(int n) {
  return static_cast<uint64_t>(n);
}

// Positions of a list of at least one ascend strictly from `least` on.
bool ascends(const int* positions, int n, int least) {
  int64_t before = int64_t{least} - 1;
  for (int i = 0; i < n; ++i) {
    const int position = unaligned::get(positions + i);
    if (position <= before) return false;
    before = position;
  }
  return true;
}

void layOut(Carver& carver, Taps& list, const Kvr32f* taps, const int* positions, int n,
            const Kvr32f* dlyLine) {
  const auto order = static_cast<size_t>(unaligned::get(positions + (n - 1))), total = static_cast<size_t>(n);
  list.count = n;
  list.order = static_cast<int32_t>(order);
  auto* reversed = carver.take<Kvr32f>(total);
  auto* places = carver.take<int32_t>(total);
  auto* history = carver.take<Kvr32f>(2 * order);
  list.taps.set(reversed);
  list.places.set(places);
  list.history.set(history);
  for (size_t i = 0; i < total; ++i) {
    reversed[i] = unaligned::get(taps + (total - 1 - i));
    places[i] = static_cast<int32_t>(order) - unaligned::get(positions + (total - 1 - i));
  }
  memset(history, 0, 2 * order * sizeof *history);
  for (size_t i = 0; i < order && dlyLine != nullptr; ++i)
    history[i] = unaligned::get(dlyLine + (order - 1 - i));
}

// dst[m] = sum over the taps of taps[i] * base[m + places[i]], for kVectors vectors.
template <int kVectors, class D>
KVRS_INLINE void sumVectors(D d, const Taps& list, const Kvr32f* base, Kvr32f* dst) {
  constexpr size_t N = hn::MaxLanes(D());
  const Kvr32f* taps = list.taps.present();
  const int32_t* places = list.places.present();
  hn::Vec<D> sums[kVectors];
  unroll<kVectors>([&](auto v) KVRS_UNROLLED { sums[v] = hn::Zero(d); });
  for (int i = 0; i < list.count; ++i) {
    const auto tap = hn::Set(d, taps[i]);
    const Kvr32f* from = base + places[i];
    unroll<kVectors>([&](auto v)
                         KVRS_UNROLLED { sums[v] = hn::MulAdd(tap, hn::LoadU(d, from + v * N), sums[v]); });
  }
  unroll<kVectors>([&](auto v) KVRS_UNROLLED { hn::StoreU(sums[v], d, dst + v * N); });
}

// The same for `len` outputs.
void sums(const Taps& list, const Kvr32f* base, Kvr32f* dst, size_t len) {
  constexpr size_t N = kLanes<Kvr32f>;
  const Lanes<Kvr32f, N> d;
  size_t m = 0;
  for (; m + 4 * N <= len; m += 4 * N) sumVectors<4>(d, list, base + m, dst + m);
  for (; m + N <= len; m += N) sumVectors<1>(d, list, base + m, dst + m);
  if (m == len) return;
  if (len >= N) {
    sumVectors<1>(d, list, base + (len - N), dst + (len - N));  // some of them again
    return;
  }
  const Lanes<Kvr32f, 1> single;
  for (; m < len; ++m) sumVectors<1>(single, list, base + m, dst + m);
}

void copy(const Kvr32f* from, Kvr32f* to, size_t n) {
  memcpy(static_cast<void*>(to), static_cast<const void*>(from), n * sizeof *to);
}

void filterInputs(const Taps& list, const Kvr32f* src, Kvr32f* dst, size_t len) {
  const auto order = static_cast<size_t>(list.order);
  Kvr32f* history = list.history.present();
  const size_t first = len < order ? len : order;
  copy(src, history + order, first);
  sums(list, history, dst, first);
  if (len <= order) {
    memmove(history, history + len, order * sizeof *history);
  } else {
    copy(src + (len - order), history, order);
    sums(list, src, dst + order, len - order);
  }
}

// y[m] += taps[i] * y[m + places[i] - order] for the taps in turn, in blocks of outputs that do not meet each other.
template <int kVectors, class D>
KVRS_INLINE size_t feedBackBlocks(D d, const Taps& list, Kvr32f* y, size_t len, size_t begin) {
  constexpr size_t N = hn::MaxLanes(D());
  const Kvr32f* const taps = list.taps.present();
  const int32_t* const places = list.places.present();
  const ptrdiff_t count = list.count, order = list.order;
  for (; begin + kVectors * N <= len; begin += kVectors * N) {
    Kvr32f* const to = y + begin;
    hn::Vec<D> sums[kVectors];
    unroll<kVectors>([&](auto v) KVRS_UNROLLED { sums[v] = hn::LoadU(d, to + v * N); });
    for (ptrdiff_t i = 0; i < count; ++i) {
      const auto tap = hn::Set(d, taps[i]);
      const Kvr32f* from = to + (places[i] - order);
      unroll<kVectors>([&](auto v) KVRS_UNROLLED {
        sums[v] = hn::Add(sums[v], hn::Mul(tap, hn::LoadU(d, from + v * N)));
      });
    }
    unroll<kVectors>([&](auto v) KVRS_UNROLLED { hn::StoreU(sums[v], d, to + v * N); });
  }
  return begin;
}

// A tap on the output before, the last of the list: that one is handed on without a way through memory.
void feedBackFromLast(const Taps& list, Kvr32f* y, size_t len) {
  const Kvr32f* taps = list.taps.present();
  const int32_t* places = list.places.present();
  const int others = list.count - 1;
  const Kvr32f tap = taps[others];
  Kvr32f last = unaligned::get(y - 1);
  for (size_t m = 0; m < len; ++m) {
    Kvr32f sum = unaligned::get(y + m);
    for (int i = 0; i < others; ++i) sum += taps[i] * unaligned::get(y + m + places[i] - list.order);
    last = sum + tap * last;
    unaligned::put(last, y + m);
  }
}

void feedBack(const Taps& list, Kvr32f* y, size_t len) {
  constexpr size_t N = kLanes<Kvr32f>, kHalf = N < 8 ? N : 8;
  const auto least = static_cast<size_t>(list.order - list.places.present()[list.count - 1]);
  if (least == 1) return feedBackFromLast(list, y, len);
  const Lanes<Kvr32f, N> d;
  size_t begin = 0;
  // A block can run once the youngest outputs that it meets have gone through memory, as they seldom lie as they were stored.
  // The larger the block, the younger these are: blocks of a quarter leave the recursion most of its length.
  if (least >= 8 * N) begin = feedBackBlocks<4>(d, list, y, len, begin);
  if (least >= 4 * N) begin = feedBackBlocks<1>(d, list, y, len, begin);
  if (N > kHalf && least >= 4 * kHalf) begin = feedBackBlocks<1>(Lanes<Kvr32f, kHalf>(), list, y, len, begin);
  if (least >= 4) begin = feedBackBlocks<1>(Lanes<Kvr32f, 4>(), list, y, len, begin);
  feedBackBlocks<1>(Lanes<Kvr32f, 1>(), list, y, len, begin);
}

void filterOutputs(const Taps& list, Kvr32f* dst, size_t len) {
  const auto order = static_cast<size_t>(list.order);
  Kvr32f* history = list.history.present();
  const size_t first = len < order ? len : order;
  copy(dst, history + order, first);
  feedBack(list, history + order, first);
  copy(history + order, dst, first);
  if (len <= order) {
    memmove(history, history + len, order * sizeof *history);
  } else {
    feedBack(list, dst + order, len - order);
    copy(dst + (len - order), history, order);
  }
}

}  // namespace
}  // namespace kvrs::sparse

using namespace kvrs;

KvrStatus kvrsFIRSparseGetStateSize_32f(int nzTapsLen, int order, int* size) noexcept {
  KVRS_CHECK(pointers(size), tapsLength(nzTapsLen), tapsLength(order));
  const uint64_t n = sparse::count(nzTapsLen);
  const uint64_t bytes = 2 * sparse::up16(4 * n) + sparse::up16(8 * sparse::count(order)) + 16 * n + 48;
  KVRS_CHECK(require(bytes <= INT_MAX, kvrStatusBadTapsLength));
  *size = static_cast<int>(bytes);
  return kvrStatusOk;
}

KvrStatus kvrsFIRSparseInit_32f(KvrsFIRSparseState_32f** state, const Kvr32f* nzTaps, const int* nzTapsPos,
                                int nzTapsLen, const Kvr32f* dlyLine, Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, nzTaps, nzTapsPos, buffer), tapsLength(nzTapsLen));
  KVRS_CHECK(require(sparse::ascends(nzTapsPos, nzTapsLen, 0), kvrStatusBadSparseIndex));
  Carver carver(alignUp(buffer, sparse::kAlignment));
  auto* made = carver.take<KvrsFIRSparseState_32f>(1);
  sparse::layOut(carver, made->inputs, nzTaps, nzTapsPos, nzTapsLen, dlyLine);
  *state = made;
  return kvrStatusOk;
}

// The states of this kind have no word to be looked at.
KvrStatus kvrsFIRSparse_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsFIRSparseState_32f* state) noexcept {
  KVRS_CHECK(pointers(state, src, dst), length(len, src, dst));
  sparse::filterInputs(state->inputs, src, dst, static_cast<size_t>(len));
  return kvrStatusOk;
}

KvrStatus kvrsIIRSparseGetStateSize_32f(int nzTapsLen1, int nzTapsLen2, int order1, int order2,
                                        int* size) noexcept {
  KVRS_CHECK(pointers(size), require(nzTapsLen1 >= 1 && nzTapsLen2 >= 0, kvrStatusBadIirOrder),
             require(order1 >= 0 && order2 >= 0, kvrStatusBadSparseIndex));
  const uint64_t orders = sparse::count(order1) + sparse::count(order2);
  const uint64_t bytes = 2 * sparse::up16(4 * sparse::count(nzTapsLen1)) +
                         2 * sparse::up16(4 * sparse::count(nzTapsLen2)) + (8 * orders + 23) / 16 * 16 + 64;
  KVRS_CHECK(require(bytes <= INT_MAX, kvrStatusBadIirOrder));
  *size = static_cast<int>(bytes);
  return kvrStatusOk;
}

KvrStatus kvrsIIRSparseInit_32f(KvrsIIRSparseState_32f** state, const Kvr32f* nzTaps, const int* nzTapsPos,
                                int nzTapsLen1, int nzTapsLen2, const Kvr32f* dlyLine,
                                Kvr8u* buffer) noexcept {
  KVRS_CHECK(pointers(state, nzTaps, nzTapsPos, buffer),
             require(nzTapsLen1 >= 1 && nzTapsLen2 >= 1, kvrStatusBadIirOrder));
  KVRS_CHECK(require(
      sparse::ascends(nzTapsPos, nzTapsLen1, 0) && sparse::ascends(nzTapsPos + nzTapsLen1, nzTapsLen2, 1),
      kvrStatusBadSparseIndex));
  Carver carver(alignUp(buffer, sparse::kAlignment));
  auto* made = carver.take<KvrsIIRSparseState_32f>(1);
  sparse::layOut(carver, made->inputs, nzTaps, nzTapsPos, nzTapsLen1, dlyLine);
  const Kvr32f* outputs = dlyLine == nullptr ? nullptr : dlyLine + made->inputs.order;
  sparse::layOut(carver, made->outputs, nzTaps + nzTapsLen1, nzTapsPos + nzTapsLen1, nzTapsLen2, outputs);
  *state = made;
  return kvrStatusOk;
}

// The states of this kind have no word to be looked at.
KvrStatus kvrsIIRSparse_32f(const Kvr32f* src, Kvr32f* dst, int len, KvrsIIRSparseState_32f* state) noexcept {
  KVRS_CHECK(pointers(state, src, dst), length(len, src, dst));
  sparse::filterInputs(state->inputs, src, dst, static_cast<size_t>(len));
  sparse::filterOutputs(state->outputs, dst, static_cast<size_t>(len));
  return kvrStatusOk;
}
