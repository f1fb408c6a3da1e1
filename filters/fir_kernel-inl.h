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

// Sums in flight that it takes to keep two multiply-adds a cycle going through pipelines of four stages.
inline constexpr int kSums = 8;

template <class D, class T, size_t N, int kTileBlocks>
class Tile {
 public:
  KVRS_INLINE Tile() {
    unroll<kTileBlocks * kSplit>([&](auto i) KVRS_UNROLLED { sum_[i] = hn::Zero(Tag()); });
  }

  KVRS_INLINE void accumulate(const D* in, const T* taps, size_t tapsLen) {
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
    unroll<kTileBlocks>([&](auto b) KVRS_UNROLLED {
      auto sum = sum_[b * kSplit];
      unroll<kSplit - 1>([&](auto i) KVRS_UNROLLED { sum = hn::Add(sum, sum_[b * kSplit + i + 1]); });
      hn::StoreU(sum, Tag(), out + N * b);
    });
  }

 private:
  using Tag = Lanes<T, N>;
  using V = hn::Vec<Tag>;

  // Short tiles spread the taps of one block over several sums.
  static constexpr int kSplit = kTileBlocks >= kSums            ? 1
                                : kTileBlocks * kDepth >= kSums ? kSums / kTileBlocks
                                                                : kDepth;

  template <int kTileDepth>
  KVRS_INLINE void run(const D* in, const T* taps, size_t first, size_t end) {
    if constexpr (kTileDepth > 0) {
      for (size_t s = first; s < end; ++s) {
        V tap[kTileDepth];
        unroll<kTileDepth>([&](auto q)
                               KVRS_UNROLLED { tap[q] = loadTap(taps + kTapCopies<T> * (N * q + s)); });
        unroll<kTileBlocks + kTileDepth - 1>([&](auto m) KVRS_UNROLLED {
          const V x = inRegister(load(in + N * m + s));
          unroll<kTileDepth>([&](auto q) KVRS_UNROLLED {
            constexpr int b = m - q;
            if constexpr (0 <= b && b < kTileBlocks) {
              V& sum = sum_[b * kSplit + q % kSplit];
              sum = hn::MulAdd(x, tap[q], sum);
            }
          });
        });
      }
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

// `vectors` vectors of N outputs: whole tiles, then halves, quarters ... of one.
template <class D, class T, size_t N, int kTileBlocks>
KVRS_INLINE void tiles(const D* in, T* out, size_t vectors, const T* taps, size_t tapsLen) {
  for (; vectors >= kTileBlocks; vectors -= kTileBlocks) {
    Tile<D, T, N, kTileBlocks> tile;
    tile.accumulate(in, taps, tapsLen);
    tile.store(out);
    in += N * kTileBlocks;
    out += N * kTileBlocks;
  }
  if constexpr (kTileBlocks > 1) tiles<D, T, N, kTileBlocks / 2>(in, out, vectors, taps, tapsLen);
}

// Fewer than 2N outputs: N from the front and N from the back, which may overlap; below N, shorter vectors.
template <class D, class T, size_t N>
KVRS_INLINE void fewOutputs(const D* in, T* out, size_t count, const T* taps, size_t tapsLen) {
  if (count >= N) {
    tiles<D, T, N, 1>(in, out, 1, taps, tapsLen);
    if (count > N) tiles<D, T, N, 1>(in + (count - N), out + (count - N), 1, taps, tapsLen);
  } else if constexpr (N > 1) {
    fewOutputs<D, T, N / 2>(in, out, count, taps, tapsLen);
  }
}

}  // namespace fir_detail

template <class D, class T>
void firKernel(const D* in, T* out, size_t count, const T* taps, size_t tapsLen) {
  constexpr size_t N = kLanes<T>;
  if (count < N) return fir_detail::fewOutputs<D, T, N / 2>(in, out, count, taps, tapsLen);
  fir_detail::tiles<D, T, N, fir_detail::kBlocks>(in, out, count / N, taps, tapsLen);
  // What is left over is the end of one more vector, whose front has been stored already.
  if (count % N != 0) {
    fir_detail::tiles<D, T, N, 1>(in + (count - N), out + (count - N), 1, taps, tapsLen);
  }
}

template <class T>
T firDot(const T* in, const T* taps, size_t len) {
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
  if (i < len) {
    // Both factors are cut off: what stands behind the arrays may be no number.
    const auto mask = hn::FirstN(d, len - i);
    const auto x = hn::IfThenElseZero(mask, hn::LoadU(d, in + i));
    sum1 = hn::MulAdd(x, hn::IfThenElseZero(mask, hn::LoadU(d, taps + i)), sum1);
  }
  return hn::GetLane(hn::SumOfLanes(d, hn::Add(hn::Add(sum0, sum1), hn::Add(sum2, sum3))));
}

}  // namespace kvrs

#endif
