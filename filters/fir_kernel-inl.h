// The FIR kernel's body, for the sources that instantiate it (fir_kernel.h has the declarations).
//
// Vectors of N outputs are computed in tiles of kBlocks vectors, all in registers:
//
//   y(b) = sum over k of x(N*b + k) * tap[k]      y(b): outputs N*b .. N*b + N-1;  x(i): inputs i .. i + N-1
//
// With k = N*q + s the inputs of block b and tap N*q + s are x(N*(b+q) + s): the vector that serves tap s in
// block b serves tap N + s in block b-1, tap 2N + s in block b-2, and so on. So the kernel runs over s, holds
// kDepth of the taps s, N + s, 2N + s ... and loads each of the kBlocks + kDepth - 1 vectors of inputs once
// for kBlocks * kDepth multiply-adds. Nearly every load of a long vector crosses a cache line and takes the
// time of two; this way the multipliers are the bound, and not the loads:
//
//   kBlocks = 3, kDepth = 2     x(s)   x(s+N)   x(s+2N)   x(s+3N)
//   tap s                       y(0)   y(1)     y(2)
//   tap s+N                            y(0)     y(1)      y(2)
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_KERNEL_INL_H
#define KVRS_FILTERS_FIR_KERNEL_INL_H

#include "filters/fir_kernel.h"
#include "frame/unroll.h"

namespace kvrs {
namespace fir_detail {

// Tile sizes by what the registers hold: kBlocks sums, kDepth taps, one or two inputs. With 128-bit vectors a
// multiply and an add are two instructions, which keep the processor busier than the loads do; there is
// nothing to gain from depth.
inline constexpr int kBlocks = kVectorBytes == 64      ? 16
                               : kVectorBytes == 32    ? 8
                               : kVectorRegisters == 8 ? 5
                                                       : 8;
inline constexpr int kDepth = kVectorBytes >= 32 ? 4 : 1;

// Blocks of a whole tile of 64-byte vectors whose inputs for fewer than N taps come out of registers (Tile::runHeld).
inline constexpr int kHeld = kVectorBytes == 64 ? 6 : 0;

template <class D, class T, size_t N, int kTileBlocks>
class Tile {
 public:
  KVRS_INLINE Tile() {
    unroll<kTileBlocks * kSplit>([&](auto i) KVRS_UNROLLED { sum_[i] = hn::Zero(Tag()); });
  }

  KVRS_INLINE void accumulate(const D* in, const T* taps, size_t tapsLen) {
    if constexpr (kDepth == 1) return run<1>(in, taps, 0, tapsLen);
    for (size_t k = 0; k < tapsLen; k += N * kDepth) {
      const size_t rest = tapsLen - k;
      if (rest >= N * kDepth) {
        run<kDepth>(in + k, taps + kTapCopies<T> * k, 0, N);
        continue;
      }
      // The last taps: rest / N for every s, and one more for the first rest % N.
      const size_t depth = rest / N, more = rest % N;
      unroll<kDepth>([&](auto below) KVRS_UNROLLED {
        constexpr int kBelow = below;
        if (depth == kBelow) {
          run<kBelow + 1>(in + k, taps + kTapCopies<T> * k, 0, more);
          run<kBelow>(in + k, taps + kTapCopies<T> * k, more, N);
        }
      });
    }
  }

  KVRS_INLINE void store(T* out) {
    unroll<kTileBlocks>([&](auto b)
                            KVRS_UNROLLED { hn::StoreU(total<kSplit>(b * kSplit), Tag(), out + N * b); });
  }

 private:
  using Tag = Lanes<T, N>;
  using V = hn::Vec<Tag>;

  // A sum takes a multiply-add every four cycles at most, so small tiles spread the taps of a block over
  // several: as many as the registers of a whole tile allow.
  static constexpr int kSplit = kBlocks / kTileBlocks >= 4 ? 4 : kBlocks / kTileBlocks >= 2 ? 2 : 1;

  // Taps s of the groups from `taps` on, for s in [first, end).
  template <int kTileDepth>
  KVRS_INLINE void run(const D* in, const T* taps, size_t first, size_t end) {
    if constexpr (kTileDepth == 1 && kHeld > 0 && kTileBlocks == kBlocks) {
      runHeld(in, taps, first, end);
    } else if constexpr (kTileDepth > 0) {
      constexpr int kTurns = kTileDepth >= kSplit ? 1 : kSplit / kTileDepth;  // values of s at a time
      size_t s = first;
      for (; s + kTurns <= end; s += kTurns) {
        unroll<kTurns>([&](auto turn) KVRS_UNROLLED {
          step<kTileDepth, turn * kTileDepth>(in + s + turn, taps, s + turn);
        });
      }
      if constexpr (kTurns > 1) {
        for (; s < end; ++s) step<kTileDepth, 0>(in + s, taps, s);
      }
    }
  }

  // Taps s in [first, end), up to N of them, in a whole tile. Each vector of inputs serves one tap only, so that the
  // loads would be the bound by far. With kHeld of the blocks taking theirs out of two vectors that stay in registers,
  // loads and permutations, which keep a multiplier busy, take about the same time: 10 loads of two lines and 22
  // operations of the two multipliers for a tap, against 16 and 16.
  KVRS_INLINE void runHeld(const D* in, const T* taps, size_t first, size_t end) {
    V held[kHeld + 1];
    unroll<kHeld + 1>([&](auto b) KVRS_UNROLLED { held[b] = inRegister(load(in + N * b)); });
    const hn::RebindToSigned<Tag> di;
    auto from = hn::Iota(di, static_cast<int32_t>(first));
    for (size_t s = first; s < end; ++s) {
      const V tap = inRegister(loadTap(taps + s));
      unroll<kTileBlocks>([&](auto b) KVRS_UNROLLED {
        if constexpr (b < kHeld) {
          sum_[b] = hn::MulAdd(lanesOf(held[b + 1], held[b], from), tap, sum_[b]);
        } else {
          sum_[b] = hn::MulAdd(load(in + s + N * b), tap, sum_[b]);
        }
      });
      from = hn::Add(from, hn::Set(di, 1));
    }
  }

  template <int kTileDepth, int kFirstSum>
  KVRS_INLINE void step(const D* in, const T* taps, size_t s) {
    V tap[kTileDepth];
    unroll<kTileDepth>([&](auto q) KVRS_UNROLLED { tap[q] = loadTap(taps + kTapCopies<T> * (N * q + s)); });
    unroll<kTileBlocks + kTileDepth - 1>([&](auto m) KVRS_UNROLLED {
      const V x = kTileDepth == 1 ? load(in + N * m) : inRegister(load(in + N * m));
      unroll<kTileDepth>([&](auto q) KVRS_UNROLLED {
        constexpr int b = m - q;
        if constexpr (0 <= b && b < kTileBlocks) {
          V& sum = sum_[b * kSplit + (kFirstSum + q) % kSplit];
          sum = hn::MulAdd(x, tap[q], sum);
        }
      });
    });
  }

  template <int kCount>
  KVRS_INLINE V total(int first) const {
    if constexpr (kCount == 1) {
      return sum_[first];
    } else {
      return hn::Add(total<kCount / 2>(first), total<kCount / 2>(first + kCount / 2));
    }
  }

  static KVRS_INLINE V load(const T* p) { return hn::LoadU(Tag(), p); }

  static KVRS_INLINE V loadTap(const T* p) {
    if constexpr (kTapCopies<T> == 1) {
      return hn::Set(Tag(), *p);
    } else {
      return hn::Load(Tag(), p);
    }
  }

  V sum_[kTileBlocks * kSplit];
};

// out[n] for n in [done, count): whole tiles, then halves, quarters ... of one. A rest that nearly fills a tile
// is faster as one, with some outputs before it computed again, than in pieces. Wants N <= count.
template <class D, class T, size_t N, int kTileBlocks>
KVRS_INLINE void tiles(const D* in, T* out, size_t done, size_t count, const T* taps, size_t tapsLen) {
  constexpr size_t kOutputs = N * kTileBlocks;
  const auto run = [=](size_t first) KVRS_UNROLLED {
    Tile<D, T, N, kTileBlocks> tile;
    tile.accumulate(in + first, taps, tapsLen);
    tile.store(out + first);
  };
  for (; count - done >= kOutputs; done += kOutputs) run(done);
  const size_t rest = count - done;
  if (rest > (kTileBlocks == 1 ? 0 : kOutputs * 3 / 4) && count >= kOutputs) {
    run(count - kOutputs);
  } else if constexpr (kTileBlocks > 1) {
    tiles<D, T, N, kTileBlocks / 2>(in, out, done, count, taps, tapsLen);
  }
}

// Fewer outputs than a vector has.
template <class D, class T, size_t N>
KVRS_INLINE void fewOutputs(const D* in, T* out, size_t count, const T* taps, size_t tapsLen) {
  if (count >= N) {
    tiles<D, T, N, 1>(in, out, 0, count, taps, tapsLen);
  } else if constexpr (N > 1) {
    fewOutputs<D, T, N / 2>(in, out, count, taps, tapsLen);
  }
}

// The lanes of `sum`, and fewer than N products besides: those of the first N/2, N/4 ... elements that are left
// come in when the sum has been folded to as many lanes.
template <class T, size_t N>
KVRS_INLINE T foldedSum(hn::Vec<Lanes<T, N>> sum, const T* in, const T* taps, size_t len) {
  if constexpr (N == 1) {
    return hn::GetLane(sum);
  } else {
    const Lanes<T, N / 2> half;
    // s8 would take a constant for the upper of two lanes.
    const auto upper =
        N == 2 ? hn::LowerHalf(half, hn::Reverse2(Lanes<T, N>(), sum)) : hn::UpperHalf(half, sum);
    auto folded = hn::Add(hn::LowerHalf(half, sum), upper);
    if (len & (N / 2)) {
      folded = hn::MulAdd(hn::LoadU(half, in), hn::LoadU(half, taps), folded);
      in += N / 2;
      taps += N / 2;
    }
    return foldedSum<T, N / 2>(folded, in, taps, len);
  }
}

}  // namespace fir_detail

template <class D, class T>
void firKernel(const D* in, T* out, size_t count, const T* taps, size_t tapsLen) {
  constexpr size_t N = kLanes<T>;
  if (count >= 2 * N) {
    fir_detail::tiles<D, T, N, fir_detail::kBlocks>(in, out, 0, count, taps, tapsLen);
  } else if (count >= N) {
    fir_detail::tiles<D, T, N, 1>(in, out, 0, count, taps, tapsLen);
  } else {
    fir_detail::fewOutputs<D, T, N / 2>(in, out, count, taps, tapsLen);
  }
}

// in[0]*taps[0] + ... + in[len-1]*taps[len-1].
template <class T>
KVRS_INLINE T firDot(const T* in, const T* taps, size_t len) {
  constexpr size_t N = kLanes<T>;
  const Lanes<T, N> d;
  auto sum0 = hn::Zero(d), sum1 = sum0, sum2 = sum0, sum3 = sum0;
  size_t i = 0;
  for (; i + 4 * N <= len; i += 4 * N) {
    sum0 = hn::MulAdd(hn::LoadU(d, in + i), hn::LoadU(d, taps + i), sum0);
    sum1 = hn::MulAdd(hn::LoadU(d, in + i + N), hn::LoadU(d, taps + i + N), sum1);
    sum2 = hn::MulAdd(hn::LoadU(d, in + i + 2 * N), hn::LoadU(d, taps + i + 2 * N), sum2);
    sum3 = hn::MulAdd(hn::LoadU(d, in + i + 3 * N), hn::LoadU(d, taps + i + 3 * N), sum3);
  }
  for (; i + N <= len; i += N) sum0 = hn::MulAdd(hn::LoadU(d, in + i), hn::LoadU(d, taps + i), sum0);
  const auto sum = hn::Add(hn::Add(sum0, sum1), hn::Add(sum2, sum3));
  return fir_detail::foldedSum<T, N>(sum, in + i, taps + i, len - i);
}

namespace fir_detail {

// firShift by vectors of N.
template <class T, size_t N>
KVRS_INLINE T shift(T* window, const T* taps, const T* keep, size_t len, T newest) {
  const Lanes<T, N> d;
  auto sum = hn::Zero(d);
  auto upper = hn::Set(d, newest);
  const auto step = [&](auto lower) KVRS_UNROLLED {
    auto next = upper;  // of each 16 bytes of `lower`, what comes behind
    if constexpr (N * sizeof(T) == 32) next = hn::ConcatLowerUpper(d, upper, lower);
    const auto moved = hn::CombineShiftRightBytes<sizeof(T)>(d, next, lower);
    hn::StoreU(moved, d, window);
    sum = hn::MulAdd(moved, hn::LoadU(d, taps), sum);
    upper = lower;
  };
  // From the end on, where both arrays have whole vectors.
  window += len - N;
  taps += len - N;
  for (; len > N; len -= N, window -= N, taps -= N) step(hn::LoadU(d, window));
  step(hn::And(hn::LoadU(d, window), hn::LoadU(d, keep)));
  return hn::GetLane(hn::SumOfLanes(d, sum));
}

}  // namespace fir_detail

// Puts `newest` behind a window of `len` samples, moves them all by one to the front, and returns their sum of products.
// `keep` has all bits of the lanes of the first vector that are neither before the window nor its oldest sample.
template <class T>
KVRS_INLINE T firShift(T* window, const T* taps, const T* keep, size_t len, T newest) {
  if (shiftsByFew<T>(len)) return fir_detail::shift<T, kFewShiftLanes<T>>(window, taps, keep, len, newest);
  return fir_detail::shift<T, kShiftLanes<T>>(window, taps, keep, len, newest);
}

}  // namespace kvrs

#endif
