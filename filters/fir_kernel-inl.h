// The FIR kernel's body, for the sources that instantiate it (fir_kernel.h has the declarations).
//
// Blocks of O outputs are computed in tiles of kBlocks blocks, all in registers:
//
//   y(b) = sum over k of x(O*b + k) * tap[k]      y(b): outputs O*b .. O*b + O-1;  x(i): inputs i .. i + O-1
//
// With k = O*q + s the inputs of block b and tap O*q + s are x(O*(b+q) + s): the vector that serves tap s in
// block b serves tap O + s in block b-1, tap 2O + s in block b-2, and so on. So the kernel runs over s, holds
// kDepth of the taps s, O + s, 2O + s ... and loads each of the kBlocks + kDepth - 1 vectors of inputs once
// for kBlocks * kDepth multiply-adds. Nearly every load of a long vector crosses a cache line and takes the
// time of two; this way the multipliers are the bound, and not the loads:
//
//   kBlocks = 3, kDepth = 2     x(s)   x(s+O)   x(s+2O)   x(s+3O)
//   tap s                       y(0)   y(1)     y(2)
//   tap s+O                            y(0)     y(1)      y(2)
//
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_KERNEL_INL_H
#define KVRS_FILTERS_FIR_KERNEL_INL_H

#include "filters/fir_arith-inl.h"
#include "filters/fir_dot-inl.h"

namespace kvrs {
namespace fir_detail {

// Tile sizes by what the registers hold: the sums of kBlocks blocks, kDepth taps, one or two inputs. With 128-bit vectors a
// multiply and an add are two instructions, which keep the processor busier than the loads do; there is nothing to gain
// from depth. Nor is there for integers, which two taps at a time have little use for.
template <class T>
inline constexpr int kBlocks = (kVectorBytes == 64      ? 16
                                : kVectorBytes == 32    ? 8
                                : kVectorRegisters == 8 ? 5
                                                        : 8) /
                               Arith<T, kFirLanes<T>>::kVectorsOfSum;
template <class T>
inline constexpr int kDepth = FirElement<T>::kInteger || kVectorBytes < 32      ? 1
                              : FirElement<T>::kComplex&& kVectorRegisters < 32 ? 2
                                                                                : 4;

// Blocks of a whole tile of 64-byte vectors whose inputs for fewer than O taps come out of registers (Tile::runHeld).
template <class T>
inline constexpr int kHeld = kVectorBytes == 64 && sizeof(T) == 4 && !FirElement<T>::kInteger ? 6 : 0;

template <class T, size_t O, int kTileBlocks>
class Tile {
  using A = Arith<T, O>;
  using Lane = FirLane<T>;
  using Sum = typename A::Sum;

 public:
  KVRS_INLINE Tile() {
    unroll<kTileBlocks * kSplit>([&](auto i) KVRS_UNROLLED { sum_[i] = A::zero(); });
  }

  KVRS_INLINE void accumulate(const T* in, const Lane* taps, size_t tapsLen) {
    if constexpr (A::kGroup == 2) {
      run<1>(in, taps, 0, tapsLen / 2 * 2);
      if (tapsLen % 2 != 0) {
        // With an input of weight 0 before the last one, as there may be none behind it.
        const T* last = in + tapsLen - 2;
        const auto tap = A::lastTap(taps + (tapsLen - 1));
        unroll<kTileBlocks>([&](auto b) KVRS_UNROLLED {
          sum_[b * kSplit] = A::add(sum_[b * kSplit], A::load(last + O * b), tap);
        });
      }
      return;
    }
    if constexpr (kDepth<T> == 1) return run<1>(in, taps, 0, tapsLen);
    for (size_t k = 0; k < tapsLen; k += O * kDepth<T>) {
      const size_t rest = tapsLen - k;
      if (rest >= O * kDepth<T>) {
        run<kDepth<T>>(in + k, taps + kTapLanes<T> * k, 0, O);
        continue;
      }
      // The last taps: rest / O for every s, and one more for the first rest % O.
      const size_t depth = rest / O, more = rest % O;
      unroll<kDepth<T>>([&](auto below) KVRS_UNROLLED {
        constexpr int kBelow = below;
        if (depth == kBelow) {
          run<kBelow + 1>(in + k, taps + kTapLanes<T> * k, 0, more);
          run<kBelow>(in + k, taps + kTapLanes<T> * k, more, O);
        }
      });
    }
  }

  KVRS_INLINE void store(FirSum<T>* out) {
    unroll<kTileBlocks>([&](auto b) KVRS_UNROLLED { A::store(total<kSplit>(b * kSplit), out + O * b); });
  }

 private:
  // A sum takes a multiply-add every four cycles at most, so small tiles spread the taps of a block over
  // several: as many as the registers of a whole tile allow.
  static constexpr int kSplit = kBlocks<T> / kTileBlocks >= 4 ? 4 : kBlocks<T> / kTileBlocks >= 2 ? 2 : 1;

  // Taps s of the groups from `taps` on, for s in [first, end).
  template <int kTileDepth>
  KVRS_INLINE void run(const T* in, const Lane* taps, size_t first, size_t end) {
    if constexpr (kTileDepth == 1 && kHeld < T >> 0 && kTileBlocks == kBlocks<T>) {
      runHeld(in, taps, first, end);
    } else if constexpr (kTileDepth > 0) {
      constexpr int kTurns = kTileDepth >= kSplit ? 1 : kSplit / kTileDepth;  // steps at a time
      constexpr size_t kTaps = A::kGroup;
      size_t s = first;
      for (; s + kTurns * kTaps <= end; s += kTurns * kTaps) {
        unroll<kTurns>([&](auto turn) KVRS_UNROLLED {
          step<kTileDepth, turn * kTileDepth>(in + s + turn * kTaps, taps, s + turn * kTaps);
        });
      }
      if constexpr (kTurns > 1) {
        for (; s < end; s += kTaps) step<kTileDepth, 0>(in + s, taps, s);
      }
    }
  }

  // Taps s in [first, end), up to O of them, in a whole tile. Each vector of inputs serves one tap only, so that the
  // loads would be the bound by far. With kHeld of the blocks taking theirs out of two vectors that stay in registers,
  // loads and permutations, which keep a multiplier busy, take about the same time: 10 loads of two lines and 22
  // operations of the two multipliers for a tap, against 16 and 16.
  KVRS_INLINE void runHeld(const T* in, const Lane* taps, size_t first, size_t end) {
    typename A::Input held[kHeld<T> + 1];
    unroll<kHeld<T> + 1>([&](auto b) KVRS_UNROLLED { held[b] = A::held(A::load(in + O * b)); });
    const hn::RebindToSigned<typename A::D> di;
    auto from = hn::Iota(di, static_cast<int32_t>(first));
    for (size_t s = first; s < end; ++s) {
      const auto tap = A::held(A::tap(taps + s));
      unroll<kTileBlocks>([&](auto b) KVRS_UNROLLED {
        if constexpr (b < kHeld<T>) {
          sum_[b] = A::add(sum_[b], lanesOf(held[b + 1], held[b], from), tap);
        } else {
          sum_[b] = A::add(sum_[b], A::load(in + s + O * b), tap);
        }
      });
      from = hn::Add(from, hn::Set(di, 1));
    }
  }

  template <int kTileDepth, int kFirstSum>
  KVRS_INLINE void step(const T* in, const Lane* taps, size_t s) {
    typename A::Tap tap[kTileDepth];
    unroll<kTileDepth>([&](auto q) KVRS_UNROLLED { tap[q] = A::tap(taps + kTapLanes<T> * (O * q + s)); });
    unroll<kTileBlocks + kTileDepth - 1>([&](auto m) KVRS_UNROLLED {
      const auto x = kTileDepth == 1 ? A::load(in + O * m) : A::held(A::load(in + O * m));
      unroll<kTileDepth>([&](auto q) KVRS_UNROLLED {
        constexpr int b = m - q;
        if constexpr (0 <= b && b < kTileBlocks) {
          Sum& sum = sum_[b * kSplit + (kFirstSum + q) % kSplit];
          sum = A::add(sum, x, tap[q]);
        }
      });
    });
  }

  template <int kCount>
  KVRS_INLINE Sum total(int first) const {
    if constexpr (kCount == 1) {
      return sum_[first];
    } else {
      return A::join(total<kCount / 2>(first), total<kCount / 2>(first + kCount / 2));
    }
  }

  Sum sum_[kTileBlocks * kSplit];
};

// What a kernel sums up.
template <class T>
struct Branches {
  const FirBranch<T>* all;
  size_t count;
};

// out[n] for n in [done, count): whole tiles, then halves, quarters ... of one. A rest that nearly fills a tile
// is faster as one, with some outputs before it computed again, than in pieces. Wants O <= count.
template <class T, size_t O, int kTileBlocks>
KVRS_INLINE void tiles(Branches<T> branches, FirSum<T>* out, size_t done, size_t count) {
  constexpr size_t kOutputs = O * kTileBlocks;
  const auto run = [=](size_t first) KVRS_UNROLLED {
    Tile<T, O, kTileBlocks> tile;
    for (size_t i = 0; i < branches.count; ++i) {
      const FirBranch<T>& branch = branches.all[i];
      tile.accumulate(branch.in + first, branch.table, branch.tapsLen);
    }
    tile.store(out + first);
  };
  for (; count - done >= kOutputs; done += kOutputs) run(done);
  const size_t rest = count - done;
  if (rest > (kTileBlocks == 1 ? 0 : kOutputs * 3 / 4) && count >= kOutputs) {
    run(count - kOutputs);
  } else if constexpr (kTileBlocks > 1) {
    tiles<T, O, kTileBlocks / 2>(branches, out, done, count);
  }
}

// The fewest outputs that a vector takes.
template <class T>
inline constexpr size_t kFewestOutputs = Arith<T, kFirLanes<T>>::kGroup;

// One output, where a vector takes two.
template <class T>
FirSum<T> oneOutput(Branches<T> branches, size_t n) {
  uint32_t sum = 0;
  for (size_t i = 0; i < branches.count; ++i) {
    const FirBranch<T>& branch = branches.all[i];
    sum += static_cast<uint32_t>(dot(branch.in + n, branch.table, branch.tapsLen));
  }
  return static_cast<FirSum<T>>(sum);
}

// Fewer outputs than a vector has.
template <class T, size_t O>
KVRS_INLINE void fewOutputs(Branches<T> branches, FirSum<T>* out, size_t count) {
  if (count >= O) {
    tiles<T, O, 1>(branches, out, 0, count);
  } else if constexpr (O > kFewestOutputs<T>) {
    fewOutputs<T, O / 2>(branches, out, count);
  } else if constexpr (kFewestOutputs<T> > 1) {
    *out = oneOutput(branches, 0);
  }
}

}  // namespace fir_detail

template <class T>
void firKernel(const FirBranch<T>* all, size_t branchCount, FirSum<T>* out, size_t count) {
  constexpr size_t O = kFirLanes<T>;
  const fir_detail::Branches<T> branches{all, branchCount};
  if constexpr (fir_detail::kFewestOutputs < T >> 1) {
    if (all->tapsLen < 2) {
      for (size_t n = 0; n < count; ++n) out[n] = fir_detail::oneOutput(branches, n);
      return;
    }
  }
  if (count >= 2 * O) {
    fir_detail::tiles<T, O, fir_detail::kBlocks<T>>(branches, out, 0, count);
  } else if (count >= O) {
    fir_detail::tiles<T, O, 1>(branches, out, 0, count);
  } else if constexpr (O > 1) {
    fir_detail::fewOutputs<T, O / 2>(branches, out, count);
  }
}

template <class T>
size_t firTileOutputs() {
  return kFirLanes<T> * fir_detail::kBlocks<T>;
}

template <class T>
FirSum<T> firDot(const T* in, const T* taps, size_t len) {
  return fir_detail::dot(in, taps, len);
}

}  // namespace kvrs

#endif
