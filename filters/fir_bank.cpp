// Filters at two rates: their sums.
// SPDX-License-Identifier: MIT
#include "filters/fir_bank.h"

#include "filters/fir_dot-inl.h"

namespace kvrs::fir {
namespace {

// Outputs whose products are added up side by side: as many as a block of 16 bytes has lanes.
template <class T>
inline constexpr int kSideBySide = 16 / sizeof(T);

// Within blocks of 16 bytes the sums of lanes of all vectors in turn: of two for two lanes, of four for four.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE V sumsInTurn(D d, const V* sums) {
  const auto add = [&](V a, V b) KVRS_UNROLLED {
    return hn::Add(hn::InterleaveLower(d, a, b), hn::InterleaveUpper(d, a, b));
  };
  if constexpr (kSideBySide<hn::TFromD<D>> == 2) {
    return add(sums[0], sums[1]);
  } else {
    return add(add(sums[0], sums[2]), add(sums[1], sums[3]));
  }
}

// The sum of all blocks of 16 bytes.
template <class D, class V = hn::Vec<D>>
KVRS_INLINE auto sumOfBlocks([[maybe_unused]] D d, V v) {
  using T = hn::TFromD<D>;
  if constexpr (hn::MaxLanes(D()) * sizeof(T) == 16) {
    return v;
  } else {
    const hn::Half<D> half;
    return sumOfBlocks(half, hn::Add(hn::LowerHalf(half, v), hn::UpperHalf(half, v)));
  }
}

// The next kSideBySide outputs of real filters that have at least a vector of taps in each phase. kUneven: some phases have a
// tap more.
template <bool kUneven, class T>
KVRS_INLINE void outputsSideBySide(const T* in, const T* bank, T* out, BankWalk& walk) {
  constexpr size_t N = kFirLanes<T>;
  constexpr int kOutputs = kSideBySide<T>;
  const Lanes<T, N> d;
  const Lanes<T, kOutputs> dOut;
  const size_t fewTaps = walk.fewTaps();
  const T* x[kOutputs];
  const T* h[kOutputs];
  hn::Vec<decltype(d)> sum[kOutputs];
  unroll<kOutputs>([&](auto i) KVRS_UNROLLED {
    x[i] = in + (walk.newestInput() + 1) - fewTaps;
    h[i] = bank + (kUneven ? walk.firstTap() : walk.phase() * fewTaps);
    sum[i] = hn::Zero(d);
    if constexpr (kUneven) {
      if (walk.taps() > fewTaps) {
        sum[i] = hn::IfThenElseZero(hn::FirstN(d, 1), hn::Set(d, unaligned::get(x[i] - 1) * *h[i]));
        ++h[i];
      }
    }
    walk.next();
  });
  size_t k = 0;
  for (; k + N <= fewTaps; k += N) {
    unroll<kOutputs>([&](auto i) KVRS_UNROLLED {
      sum[i] = hn::MulAdd(hn::LoadU(d, x[i] + k), hn::LoadU(d, h[i] + k), sum[i]);
    });
  }
  if (k < fewTaps) {
    // The last vector of taps without those that have been.
    const auto isNew = hn::Not(hn::FirstN(d, N - (fewTaps - k)));
    k = fewTaps - N;
    unroll<kOutputs>([&](auto i) KVRS_UNROLLED {
      const auto inputs = hn::IfThenElseZero(isNew, hn::LoadU(d, x[i] + k));
      sum[i] = hn::MulAdd(inputs, hn::LoadU(d, h[i] + k), sum[i]);
    });
  }
  hn::StoreU(sumOfBlocks(d, sumsInTurn(d, sum)), dOut, out);
}

// As many as there are in whole groups; tells how many.
template <bool kUneven, class T>
size_t groupsSideBySide(const T* in, const T* bank, T* out, size_t count, BankWalk& walk) {
  BankWalk own = walk;  // in registers
  size_t n = 0;
  for (; n + kSideBySide<T> <= count; n += kSideBySide<T>) outputsSideBySide<kUneven>(in, bank, out + n, own);
  walk = own;
  return n;
}

}  // namespace

template <class T>
void firBank(const T* in, const T* bank, FirSum<T>* out, size_t count, BankWalk& walk) {
  size_t n = 0;
  if constexpr (kShifts<T>) {
    if (walk.fewTaps() >= kFirLanes<T>) {
      n = walk.isUneven() ? groupsSideBySide<true>(in, bank, out, count, walk)
                          : groupsSideBySide<false>(in, bank, out, count, walk);
    }
  }
  for (; n < count; ++n, walk.next()) {
    out[n] = fir_detail::dot(in + walk.oldestInput(), bank + walk.firstTap(), walk.taps());
  }
}

template void firBank<Kvr32f>(const Kvr32f*, const Kvr32f*, Kvr32f*, size_t, BankWalk&);
template void firBank<Kvr64f>(const Kvr64f*, const Kvr64f*, Kvr64f*, size_t, BankWalk&);
template void firBank<Kvr32fc>(const Kvr32fc*, const Kvr32fc*, Kvr32fc*, size_t, BankWalk&);
template void firBank<Kvr64fc>(const Kvr64fc*, const Kvr64fc*, Kvr64fc*, size_t, BankWalk&);
template void firBank<Kvr16s>(const Kvr16s*, const Kvr16s*, Kvr32s*, size_t, BankWalk&);
template void firBank<Kvr16sc>(const Kvr16sc*, const Kvr16sc*, Kvr32sc*, size_t, BankWalk&);

}  // namespace kvrs::fir
