// The element loop: dst[i] = op(src0[i], src1[i], ...) over whole vectors, whatever the length and the alignment.
//
// Where the processor has masks, what lies ahead of the first aligned block and what is left behind the last one is part
// of a block each. Where it has none, the blocks at both ends lie over the body:
//
//        first                                         last
//   |------------|                                |------------|
//   .     |------------|------------|------------|------------|
//   .     aligned body, 4 blocks a turn           .            .
//   0                                             len - N      len
//
// Both are computed before anything is stored and stored after the body, so that an operation in place reads each element
// before it is overwritten. Vectors shorter than N elements run the same way with blocks of N/2, N/4, ... elements.
//
// There is one loop for every alignment of a source: on processors of the last fifteen years an unaligned
// load costs nothing but the crossing of a cache line, which no alignment of dst can avoid for all sources at
// once.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_LOOP_H
#define KVRS_FRAME_LOOP_H

#include <cstddef>
#include <cstdint>
#include <utility>

#include "frame/element.h"
#include "frame/simd.h"
#include "kvrs/types.h"

namespace kvrs {
namespace loop_detail {

constexpr size_t widest(size_t a) {
  return a;
}
template <class... Rest>
constexpr size_t widest(size_t a, Rest... rest) {
  const size_t b = widest(rest...);
  return a > b ? a : b;
}

// Elements of a block: those whose widest lanes fill one vector.
template <class D, class... S>
inline constexpr size_t kBlock = kVectorBytes / widest(kSpanBytes<D>, kSpanBytes<S>...);

// Whether an array of `len` elements can exist. Without the question a length of more bytes than an address
// counts would wrap and write at random.
constexpr bool fitsAddress(size_t len, size_t elementBytes) {
  return len <= SIZE_MAX / elementBytes;
}

// One block from index i on.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto block(const Op& op, [[maybe_unused]] ptrdiff_t i, const S*... src) {
  const ElementLanes<D, N> d;
  return op(d, Element<S>::load(ElementLanes<S, N>(), src + i)...);
}

// The distance in bytes from dst to the next address that is aligned to a block.
template <size_t N, class D>
KVRS_INLINE size_t bytesToAligned(const D* dst) {
  return (0 - reinterpret_cast<uintptr_t>(dst)) & (N * sizeof(D) - 1);
}

// The first index behind 0 at which dst is aligned to a block; where none is, some index within the first
// block.
template <size_t N, class D>
KVRS_INLINE size_t firstAligned(const D* dst) {
  return N - (reinterpret_cast<uintptr_t>(dst) & (N * sizeof(D) - 1)) / sizeof(D);
}

// Makes an index or pointer a counter of its own: the compiler would else make others of it, or leave it out and count
// by others, and s8 has no registers to spare.
template <class T>
KVRS_INLINE void keep(T& counter) {
  asm("" : "+r"(counter));
}

// put(i) for every block from i on, kTurn blocks a turn, while there are so many before `end`; the index behind them.
template <size_t N, ptrdiff_t kTurn, class Put>
KVRS_INLINE ptrdiff_t forTurns(ptrdiff_t i, ptrdiff_t end, Put put) {
  static_assert(kTurn == 1 || kTurn == 4);
  constexpr ptrdiff_t n = N;
  for (const ptrdiff_t last = end - kTurn * n; i <= last; i += kTurn * n) {
    keep(i);
    put(i);
    if constexpr (kTurn == 4) {
      put(i + n);
      put(i + 2 * n);
      put(i + 3 * n);
    }
  }
  return i;
}

// Blocks of a turn: from afar it is memory that takes the time.
template <bool kFar>
inline constexpr ptrdiff_t kTurn = kFar ? 1 : 4;

// Whether loops move a pointer for each array: s8 has registers for them and for what is left, but not for an index and a
// bound as well. Elsewhere an index spares the additions.
inline constexpr bool kMovesPointers = sizeof(void*) == 4;

// put(i) for every block from i on while there is one before `end`.
template <size_t N, bool kFar = false, class Put>
KVRS_INLINE void forBlocks(ptrdiff_t i, ptrdiff_t end, Put put) {
  if constexpr (kMovesPointers && requires { put.advance(i); }) {
    constexpr ptrdiff_t n = N;
    put.advance(i);
    ptrdiff_t left = end - i - 4 * n;
    for (; !kFar && left >= 0; keep(left -= 4 * n), put.advance(4 * n)) {
      put(0);
      put(n);
      put(2 * n);
      put(3 * n);
    }
    for (left += 3 * n; left >= 0; keep(left -= n), put.advance(n)) put(0);
  } else {
    i = forTurns<N, kTurn<kFar>>(i, end, put);
    if constexpr (!kFar) forTurns<N, 1>(i, end, put);
  }
}

// Vectors of so many bytes, all arrays together, do not fit into the nearer caches.
inline constexpr size_t kFarBytes = size_t{4} << 20;

// Asks for the lines of the block that is so many bytes ahead. With two and three arrays of 8 to 64 MiB each it made loops
// faster by a tenth to a third; 512 to 4,096 bytes differed little from 16 MiB on, and below it this was the best. Stores
// that bypass the cache gave the same at best.
inline constexpr ptrdiff_t kAheadBytes = 1024;

template <size_t N, int forWriting = 0, ptrdiff_t kDistance = kAheadBytes, class T>
KVRS_INLINE void fetchAhead(const T* p, ptrdiff_t i) {
  const char* const ahead = reinterpret_cast<const char*>(p + i) + kDistance;
  for (size_t line = 0; line < N * sizeof(T); line += 64) __builtin_prefetch(ahead + line, forWriting);
}
template <size_t N, class T>
KVRS_INLINE void fetchAheadToWrite(const T* p, ptrdiff_t i) {
  fetchAhead<N, 1>(p, i);
}
// For loops that go down.
template <size_t N, class T>
KVRS_INLINE void fetchBehind(const T* p, ptrdiff_t i) {
  fetchAhead<N, 0, -kAheadBytes>(p, i);
}

// At most two blocks of N elements, which may lie over each other.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE void shortMap(const Op& op, D* dst, ptrdiff_t len, const S*... src) {
  if (len >= ptrdiff_t{N}) {
    const ElementLanes<D, N> d;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, len - N, src...);
    Element<D>::store(first, d, dst);
    Element<D>::store(last, d, dst + (len - N));
  } else if constexpr (N > 1) {
    shortMap<N / 2>(op, dst, len, src...);
  }
}

// Whether the first elements of a block are loaded and stored in one go.
template <class T, size_t N>
concept Masks = kMaskRegisters && requires(ElementLanes<T, N> d, const T* p) {
  Element<T>::loadFirst(1, d, p);
};
template <class D, class... S>
inline constexpr bool kAllMask = Masks<D, kBlock<D, S...>> && (Masks<S, kBlock<D, S...>> && ...);

// put(i) for every whole block of [0, len), of which there are at most four, and putFirst(i, count) for what is left
// behind them; len > 0. In short calls the jumps taken are most of the time, two cycles each: whole blocks have one.
template <size_t N, class Put, class PutFirst>
KVRS_INLINE void forFewBlocks(ptrdiff_t len, Put put, PutFirst putFirst) {
  constexpr ptrdiff_t n = N;
  const ptrdiff_t rest = len & (n - 1);
  if (__builtin_expect(rest != 0, false)) return putFirst(forTurns<N, 1>(0, len, put), rest);
  put(0);
  if (len < 2 * n) return;
  put(n);
  if (len < 3 * n) return;
  put(2 * n);
  if (len < 4 * n) return;
  put(3 * n);
}

// The same for any number of blocks; dst is aligned at all but the first and the last.
template <size_t N, bool kFar, class D, class Put, class PutFirst>
KVRS_INLINE void forManyBlocks(const D* dst, ptrdiff_t len, Put put, PutFirst putFirst) {
  ptrdiff_t i = static_cast<ptrdiff_t>(bytesToAligned<N>(dst) / sizeof(D));
  if (__builtin_expect(i != 0, false)) putFirst(0, i);
  i = forTurns<N, kTurn<kFar>>(i, len, put);
  if (__builtin_expect(i < len, false)) {
    if constexpr (!kFar) i = forTurns<N, 1>(i, len, put);
    if (i < len) putFirst(i, len - i);
  }
}

template <size_t N, class D, class V>
KVRS_INLINE void storeBlock(V v, ptrdiff_t i, D* dst) {
  Element<D>::store(v, ElementLanes<D, N>(), dst + i);
}
template <size_t N, class D, class V>
KVRS_INLINE void storeBlock(Complex<V> v, ptrdiff_t i, D* dst1, D* dst2) {
  storeBlock<N>(v.re, i, dst1);
  storeBlock<N>(v.im, i, dst2);
}

// What works on the block at index i: dst = op(src...), for one destination or two. advance() moves where i counts from.
template <size_t N, bool kFar, size_t kDsts, class D, class Op, class... S>
class Putter {
 public:
  template <class... Dst>
  KVRS_INLINE Putter(const Op& op, const S*... src, Dst... dst) : op_(op), dst_{dst...}, src_{src...} {}

  KVRS_INLINE void operator()(ptrdiff_t i) const {
    [&]<size_t... k>(std::index_sequence<k...>) __attribute__((always_inline)) {
      if constexpr (kFar) {
        (fetchAhead<N>(static_cast<const S*>(src_[k]), i), ...);
        for (D* p : dst_) fetchAheadToWrite<N>(p, i);
      }
      store(block<N, D>(op_, i, static_cast<const S*>(src_[k])...), i);
    }
    (std::index_sequence_for<S...>());
  }

  // Stores what an op has returned for the block at index i.
  template <class V>
  KVRS_INLINE void store(V v, ptrdiff_t i) const {
    if constexpr (kDsts == 1) {
      storeBlock<N>(v, i, dst_[0]);
    } else {
      storeBlock<N>(v, i, dst_[0], dst_[1]);
    }
  }

  KVRS_INLINE void advance(ptrdiff_t count) {
    for (D*& p : dst_) keep(p += count);
    [&]<size_t... k>(std::index_sequence<k...>) __attribute__((always_inline)) {
      (keep(src_[k] = static_cast<const S*>(src_[k]) + count), ...);
    }
    (std::index_sequence_for<S...>());
  }

 private:
  const Op& op_;
  D* dst_[kDsts];
  const void* src_[sizeof...(S) + 1];
};
template <size_t N, bool kFar, class D, class Op, class... S>
KVRS_INLINE auto putter(const Op& op, D* dst, const S*... src) {
  return Putter<N, kFar, 1, D, Op, S...>(op, src..., dst);
}

// At least a block, from the first element on, aligned or not, with nothing in registers but what the loop needs. `last`
// is what the op has returned for the last block before anything was stored.
template <size_t N, class Put, class V>
KVRS_INLINE void putFromStart(Put put, ptrdiff_t len, V last) {
  constexpr ptrdiff_t n = N;
  ptrdiff_t left = len - 5 * n;
  for (; left >= 0; keep(left -= 4 * n), put.advance(4 * n)) {
    put(0);
    put(n);
    put(2 * n);
    put(3 * n);
  }
  for (left += 3 * n; left > -n; keep(left -= n), put.advance(n)) put(0);
  put.store(last, left + n);
}

// From so many blocks on it is worth while to align the destination first.
inline constexpr size_t kAlignedFrom = 64;

// What works on the first elements of a block.
template <size_t N, class D, class Op, class... S>
KVRS_INLINE auto firstPutter(const Op& op, D* dst, const S*... src) {
  return [ =, &op ](ptrdiff_t i, ptrdiff_t count) __attribute__((always_inline)) {
    const ElementLanes<D, N> d;
    const size_t n = static_cast<size_t>(count);
    Element<D>::storeFirst(n, op(d, Element<S>::loadFirst(n, ElementLanes<S, N>(), src + i)...), d, dst + i);
  };
}

template <bool kFar, class D, class Op, class... S>
KVRS_INLINE void mapBlocks(const Op& op, D* dst, ptrdiff_t len, const S*... src) {
  constexpr ptrdiff_t N = kBlock<D, S...>;
  const auto put = putter<N, kFar>(op, dst, src...);
  if constexpr (kAllMask<D, S...>) {
    forManyBlocks<N, kFar>(dst, len, put, firstPutter<N>(op, dst, src...));
  } else {
    const ElementLanes<D, N> d;
    const ptrdiff_t end = len - N;
    const auto first = block<N, D>(op, 0, src...);
    const auto last = block<N, D>(op, end, src...);
    if (len > 4 * N) {
      forBlocks<N, kFar>(firstAligned<N>(dst), len - 1, put);
    } else if (len > 2 * N) {
      const auto second = block<N, D>(op, N, src...);
      const auto third = block<N, D>(op, end - N, src...);
      Element<D>::store(second, d, dst + N);
      Element<D>::store(third, d, dst + (end - N));
    }
    Element<D>::store(first, d, dst);
    Element<D>::store(last, d, dst + end);
  }
}

// Bytes of one element of every array.
template <class D, class... S>
inline constexpr size_t kBytesPerElement = (sizeof(D) + ... + sizeof(S));

// Less than a block, where there are no masks.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapPartOfBlock(const S*... src, D* dst, ptrdiff_t len, Op op) {
  constexpr size_t N = kBlock<D, S...>;
  if constexpr (N > 1) shortMap<N / 2>(op, dst, len, src...);
  return kvrStatusOk;
}

template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapToAligned(const S*... src, D* dst, ptrdiff_t len, Op op) {
  mapBlocks<false>(op, dst, len, src...);
  return kvrStatusOk;
}

// Far, or empty.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapFar(const S*... src, D* dst, size_t len, Op op) {
  if (len == 0) return kvrStatusOk;
  if (!fitsAddress(len, widest(sizeof(D), sizeof(S)...))) return kvrStatusBadLength;
  mapBlocks<true>(op, dst, static_cast<ptrdiff_t>(len), src...);
  return kvrStatusOk;
}

// A function of its own so that it calls nothing but at its end: no frame, nothing to save, and all forms of an operation
// share it. Its arguments stand in the order of the exports, which spares them the shuffling of registers.
template <class D, class Op, class... S>
[[gnu::noinline]] KvrStatus mapMany(const S*... src, D* dst, size_t len, Op op) {
  if (__builtin_expect(len - 1 >= kFarBytes / kBytesPerElement<D, S...>, false)) {
    return mapFar<D, Op, S...>(src..., dst, len, op);
  }
  if constexpr (!kAllMask<D, S...>) {
    if (len < kBlock<D, S...>)
      return mapPartOfBlock<D, Op, S...>(src..., dst, static_cast<ptrdiff_t>(len), op);
  }
  if constexpr (kMovesPointers) {
    constexpr size_t N = kBlock<D, S...>;
    if (len >= kAlignedFrom * N && bytesToAligned<N>(dst) != 0) {
      return mapToAligned<D, Op, S...>(src..., dst, static_cast<ptrdiff_t>(len), op);
    }
    putFromStart<N>(putter<N, false>(op, dst, src...), static_cast<ptrdiff_t>(len),
                    block<N, D>(op, static_cast<ptrdiff_t>(len - N), src...));
  } else {
    mapBlocks<false>(op, dst, static_cast<ptrdiff_t>(len), src...);
  }
  return kvrStatusOk;
}

}  // namespace loop_detail

// dst[i] = op(d, src[i]...) for i in [0, len). `op` is called with a tag of dst's lanes and the sources'
// vectors (a Complex for complex elements) and returns dst's. It is called for 1, 2, 4, ... elements up to a
// full block, and for some elements twice. Blocks are read and written upward: a source is dst itself, lies behind its
// beginning, or does not overlap it. `len` is below 2^32.
//
// The result is kvrStatusOk, and in a 32-bit process kvrStatusBadLength, with nothing written, for an array that
// does not fit into the address space. An export may end in the call, which then is a jump:
//
//   return mapElements(Add(), dst, len, src1, src2);
template <class D, class Op, class... S>
KVRS_INLINE KvrStatus mapElements(const Op& op, D* dst, size_t len, const S*... src) {
  using namespace loop_detail;
  if constexpr (kAllMask<D, S...>) {
    constexpr size_t N = kBlock<D, S...>;
    if (__builtin_expect(len - 1 < 4 * N, true)) {
      forFewBlocks<N>(static_cast<ptrdiff_t>(len), putter<N, false>(op, dst, src...),
                      firstPutter<N>(op, dst, src...));
      return kvrStatusOk;
    }
  }
  return mapMany<D, Op, S...>(src..., dst, len, op);
}

}  // namespace kvrs

#endif
