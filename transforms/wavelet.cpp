// Two-channel filter banks.
//
// Outputs are computed side by side in the lanes of a vector, each the sum of its own products in the order of the contract:
// products in single precision, sums in double. So results are the same to the bit in all modules and however a signal is cut.
// SPDX-License-Identifier: MIT
#include "kvrs/wavelet.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "frame/generate.h"
#include "frame/loop.h"
#include "frame/unroll.h"
#include "kvrs/convert.h"
#include "kvrscore.h"
#include "transforms/byte_pairs.h"
#include "transforms/wavelet_state.h"

namespace kvrs::wavelet {
namespace {

// Outputs of a block: as many as sums fill a vector; two of them where products would leave half a vector empty that costs
// as much as a whole one.
constexpr size_t kVectors = kVectorBytes == 16 ? 2 : 1;
constexpr size_t kBlock = kVectors * kLanes<double>;
using Doubles = Lanes<double, kLanes<double>>;
using Singles = Lanes<float, kBlock>;

struct Sums {
  hn::Vec<Doubles> part[kVectors];
};
KVRS_INLINE Sums plus(Sums a, Sums b) {
  unroll<kVectors>([&](auto v) KVRS_UNROLLED { a.part[v] = hn::Add(a.part[v], b.part[v]); });
  return a;
}
template <class V>
KVRS_INLINE Sums widened(V x) {
  if constexpr (kVectors == 1) {
    return {{hn::PromoteTo(Doubles(), x)}};
  } else {
    const hn::Half<hn::DFromV<V>> half;
    return {
        {hn::PromoteTo(Doubles(), hn::LowerHalf(half, x)), hn::PromoteTo(Doubles(), hn::UpperHalf(half, x))}};
  }
}
template <class D>
KVRS_INLINE hn::Vec<D> narrowed(D d, const Sums& x) {
  if constexpr (kVectors == 1) {
    return hn::DemoteTo(d, x.part[0]);
  } else {
    const hn::Half<D> half;
    return hn::Combine(d, hn::DemoteTo(half, x.part[1]), hn::DemoteTo(half, x.part[0]));
  }
}

// The samples that meet taps in the outputs of a block: for tap `begin` + k, with an even `begin`.
struct SplitWindow {
  const Kvr32f *even, *odd;
  template <int k>
  const Kvr32f* samples(size_t begin, Index<k>) const {
    return (k % 2 == 0 ? even : odd) + begin / 2 + k / 2;
  }
  void move(size_t outputs) {
    even += outputs;
    odd += outputs;
  }
};
struct Window {
  const Kvr32f* p;
  template <int k>
  const Kvr32f* samples(size_t begin, Index<k>) const {
    return p + begin + k;
  }
  void move(size_t outputs) { p += outputs; }
};

template <class Samples, class K>
KVRS_INLINE Sums product(const Samples& window, hn::Vec<Singles> tap, size_t begin, K k) {
  return widened(hn::Mul(hn::LoadU(Singles(), window.samples(begin, k)), tap));
}

// Of `whole` taps, a multiple of eight, the sums of those whose index modulo 4 is kFirst, kFirst + kStep and so on.
template <int kFirst, int kStep, int kCount, class Next>
KVRS_INLINE void sumsOfEights(const Next& next, size_t whole, Sums (&part)[kCount]) {
  unroll<kCount>([&](auto i) KVRS_UNROLLED {
    part[i] = plus(next(0, Index<kFirst + i * kStep>()), next(0, Index<kFirst + i * kStep + 4>()));
  });
  for (size_t j = 8; j < whole; j += 8) {
    unroll<kCount>([&](auto i) KVRS_UNROLLED {
      part[i] = plus(part[i], next(j, Index<kFirst + i * kStep>()));
      part[i] = plus(part[i], next(j, Index<kFirst + i * kStep + 4>()));
    });
  }
}

// Their total: all four at a time, or where registers are few the even ones and then the odd ones.
template <class Next>
KVRS_INLINE Sums totalOfEights(const Next& next, size_t whole) {
  if constexpr (kVectors == 1) {
    Sums all[4];
    sumsOfEights<0, 1>(next, whole, all);
    return plus(plus(all[0], all[2]), plus(all[1], all[3]));
  } else {
    Sums even[2], odd[2];
    sumsOfEights<0, 2>(next, whole, even);
    const Sums total = plus(even[0], even[1]);
    sumsOfEights<1, 2>(next, whole, odd);
    return plus(total, plus(odd[0], odd[1]));
  }
}

// `len` outputs of up to eight taps, which stay in registers where there are as many.
template <int kTaps, class Samples>
void runFew(Samples window, const Kvr32f* taps, Kvr32f* dst, size_t len) {
  hn::Vec<Singles> held[kTaps];
  unroll<kTaps>([&](auto k) KVRS_UNROLLED { held[k] = hn::Set(Singles(), taps[k]); });
  generateBlocks<kBlock>(dst, len, [&](auto d) KVRS_UNROLLED {
    Sums sum;
    if constexpr (kTaps == 8) {
      sum = totalOfEights([&](size_t, auto k) KVRS_UNROLLED { return product(window, held[k], 0, k); }, 8);
    } else {
      sum = product(window, held[0], 0, Index<0>());
      unroll<kTaps - 1>(
          [&](auto k) KVRS_UNROLLED { sum = plus(sum, product(window, held[k + 1], 0, Index<k + 1>())); });
    }
    window.move(kBlock);
    return narrowed(d, sum);
  });
}

// Of more than eight.
template <class Samples>
void runMany(Samples window, const Kvr32f* taps, size_t count, Kvr32f* dst, size_t len) {
  const size_t whole = count / 8 * 8;
  const auto next = [&](size_t j, auto k)
                        KVRS_UNROLLED { return product(window, hn::Set(Singles(), taps[j + k]), j, k); };
  generateBlocks<kBlock>(dst, len, [&](auto d) KVRS_UNROLLED {
    Sums sum = totalOfEights(next, whole);
    size_t j = whole;
    const auto plusNext = [&](auto several) KVRS_UNROLLED {
      unroll<several>([&](auto k) KVRS_UNROLLED { sum = plus(sum, next(j, k)); });
      j += several;
    };
    if (count & 4) plusNext(Index<4>());
    if (count & 2) plusNext(Index<2>());
    if (count & 1) plusNext(Index<1>());
    window.move(kBlock);
    return narrowed(d, sum);
  });
}

template <class Samples>
[[gnu::noinline]] void run(Samples window, const Filter& filter, Kvr32f* dst, size_t len) {
  const Kvr32f* const taps = filter.reversed.present();
  switch (filter.taps) {
    case 0:
      return static_cast<void>(memset(dst, 0, len * sizeof(Kvr32f)));
    case 1:
      return runFew<1>(window, taps, dst, len);
    case 2:
      return runFew<2>(window, taps, dst, len);
    case 3:
      return runFew<3>(window, taps, dst, len);
    case 4:
      return runFew<4>(window, taps, dst, len);
    case 5:
      return runFew<5>(window, taps, dst, len);
    case 6:
      return runFew<6>(window, taps, dst, len);
    case 7:
      return runFew<7>(window, taps, dst, len);
    case 8:
      return runFew<8>(window, taps, dst, len);
    default:
      return runMany(window, taps, static_cast<size_t>(filter.taps), dst, len);
  }
}

// --- forward ---

// Of a pair of samples the first one and the second one, as singles.
template <class T>
struct ToSingles {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, Complex<V> x) const {
    if constexpr (std::is_same_v<T, Kvr32f>) {
      return x;
    } else {
      const hn::Rebind<T, D> dt;
      const hn::Rebind<int32_t, D> di;
      const auto converted = [&](V v) KVRS_UNROLLED {
        return hn::ConvertTo(d, hn::PromoteTo(di, hn::BitCast(dt, v)));
      };
      return Complex<hn::Vec<D>>{converted(x.re), converted(x.im)};
    }
  }
};

template <class T>
using PairOf =
    std::conditional_t<sizeof(T) == 1, Kvr8sc, std::conditional_t<sizeof(T) == 2, Kvr16sc, Kvr32fc>>;

// What an array of the longest of a call is made of: pairs of samples, or singles.
template <class T>
using Longest = std::conditional_t<(sizeof(PairOf<T>) > sizeof(Kvr32f)), PairOf<T>, Kvr32f>;

// `count` pairs of samples to the end of the line.
template <class T>
KVRS_INLINE void take(ForwardChannel* channel, const T* src, size_t count) {
  reserve(channel, count);
  Kvr32f* const even = channel->even.present() + channel->line.at;
  Kvr32f* const odd = channel->odd.present() + channel->line.at;
  const ptrdiff_t lead = channel->lead;
  const Planes<Kvr32f> places = lead % 2 == 0
                                    ? Planes<Kvr32f>{even + lead / 2, odd + lead / 2}
                                    : Planes<Kvr32f>{odd + (lead + 1) / 2 - 1, even + (lead + 1) / 2};
  mapElements(ToSingles<T>(), places, count, reinterpret_cast<const PairOf<T>*>(src));
}

// `count` outputs, over whose samples the line moves on.
void filter(ForwardChannel* channel, Kvr32f* dst, size_t count) {
  const int32_t at = channel->line.at;
  run(SplitWindow{channel->even.present() + at, channel->odd.present() + at}, channel->filter, dst, count);
  channel->line.at += static_cast<int32_t>(count);
}

template <class T>
KvrStatus forward(const T* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen, State<ForwardChannel>* state,
                  Word word) {
  KVRS_CHECK(sound(state, word), pointers(src, dstLow, dstHigh), lengthOf<Longest<T>>(dstLen));
  for (size_t left = static_cast<size_t>(dstLen); left != 0;) {
    const size_t count = std::min(left, kPiece);
    // Both read before either is written, which may lie over the source.
    take(&state->low, src, count);
    take(&state->high, src, count);
    filter(&state->low, dstLow, count);
    filter(&state->high, dstHigh, count);
    src += 2 * count;
    dstLow += count;
    dstHigh += count;
    left -= count;
  }
  return kvrStatusOk;
}

// --- inverse ---

KVRS_INLINE void take(InverseChannel* channel, const Kvr32f* src, size_t count) {
  reserve(channel, count);
  Kvr32f* const end = channel->samples.present() + channel->line.at + channel->line.dlyLen;
  memcpy(end, src, count * sizeof(Kvr32f));
}

// The first and the second outputs of `count` pairs, from one channel.
struct Halves {
  alignas(64) Kvr32f half[2][kPiece];
};
void filter(InverseChannel* channel, Halves* to, size_t count) {
  const Kvr32f* const line = channel->samples.present() + channel->line.at;
  for (int k = 0; k < 2; ++k) {
    run(Window{line + channel->filter[k].from}, channel->filter[k], to->half[k], count);
  }
  channel->line.at += static_cast<int32_t>(count);
}

struct AddInTurn {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, V low0, V high0, V low1, V high1) const {
    return {hn::Add(low0, high0), hn::Add(low1, high1)};
  }
};

void join(State<InverseChannel>* state, Kvr32f* dst, size_t count) {
  Halves low, high;
  filter(&state->low, &low, count);
  filter(&state->high, &high, count);
  mapElements(AddInTurn(), reinterpret_cast<Kvr32fc*>(dst), count, low.half[0], high.half[0], low.half[1],
              high.half[1]);
}

template <class T>
using ToInteger = KvrStatus (*)(const Kvr32f*, T*, int, KvrRoundMode, int);

template <class T>
KvrStatus inverse(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, T* dst,
                  State<InverseChannel>* state, Word word, [[maybe_unused]] ToInteger<T> convert = nullptr) {
  // Known to callers: the length before `dst`.
  KVRS_CHECK(sound(state, word), pointers(srcLow, srcHigh), lengthOf<Longest<T>>(srcLen), pointers(dst));
  for (size_t left = static_cast<size_t>(srcLen); left != 0;) {
    const size_t count = std::min(left, kPiece);
    take(&state->low, srcLow, count);
    take(&state->high, srcHigh, count);
    if constexpr (std::is_same_v<T, Kvr32f>) {
      join(state, dst, count);
    } else {
      alignas(64) Kvr32f tile[2 * kPiece];
      join(state, tile, count);
      convert(tile, dst, static_cast<int>(2 * count), kvrRoundNear, 0);
    }
    srcLow += count;
    srcHigh += count;
    dst += 2 * count;
    left -= count;
  }
  return kvrStatusOk;
}

// --- contexts ---

KvrStatus offset(int value) {
  return check::require(value >= -1, kvrStatusBadWaveletOffset);
}

template <class Record, class Channel = decltype(Record::low)>
KvrStatus initAlloc(Record** state, Word word, const Given& low, const Given& high) {
  KVRS_CHECK(pointers(state, low.taps), length(low.len), pointers(high.taps), length(high.len),
             offset(low.offset), offset(high.offset));
  *state = static_cast<Record*>(create<Channel>(word, low, high));
  return *state != nullptr ? kvrStatusOk : kvrStatusOutOfMemory;
}

template <class Channel>
KvrStatus release(State<Channel>* state, Word word) {
  KVRS_CHECK(sound(state, word));
  state->idWord = 0;
  kvrFree(state);
  return kvrStatusOk;
}

template <class Channel>
KvrStatus getLines(const State<Channel>* state, Word word, Kvr32f* dlyLow, Kvr32f* dlyHigh) {
  KVRS_CHECK(sound(state, word), pointers(dlyLow, dlyHigh));
  getDlyLine(state->low, dlyLow);
  getDlyLine(state->high, dlyHigh);
  return kvrStatusOk;
}

template <class Channel>
KvrStatus setLines(State<Channel>* state, Word word, const Kvr32f* dlyLow, const Kvr32f* dlyHigh) {
  KVRS_CHECK(sound(state, word), pointers(dlyLow, dlyHigh));
  setDlyLine(&state->low, dlyLow);
  setDlyLine(&state->high, dlyHigh);
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::wavelet

using namespace kvrs::wavelet;

KvrStatus kvrsWTFwdInitAlloc_32f(KvrsWTFwdState_32f** state, const Kvr32f* tapsLow, int lenLow, int offsLow,
                                 const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kForward_32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTFwdFree_32f(KvrsWTFwdState_32f* state) noexcept {
  return release(state, kForward_32f);
}
KvrStatus kvrsWTFwdGetDlyLine_32f(const KvrsWTFwdState_32f* state, Kvr32f* dlyLow, Kvr32f* dlyHigh) noexcept {
  return getLines(state, kForward_32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwdSetDlyLine_32f(KvrsWTFwdState_32f* state, const Kvr32f* dlyLow,
                                  const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kForward_32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwd_32f(const Kvr32f* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                        KvrsWTFwdState_32f* state) noexcept {
  return forward(src, dstLow, dstHigh, dstLen, state, kForward_32f);
}

KvrStatus kvrsWTFwdInitAlloc_8u32f(KvrsWTFwdState_8u32f** state, const Kvr32f* tapsLow, int lenLow,
                                   int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kForward_8u32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTFwdFree_8u32f(KvrsWTFwdState_8u32f* state) noexcept {
  return release(state, kForward_8u32f);
}
KvrStatus kvrsWTFwdGetDlyLine_8u32f(const KvrsWTFwdState_8u32f* state, Kvr32f* dlyLow,
                                    Kvr32f* dlyHigh) noexcept {
  return getLines(state, kForward_8u32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwdSetDlyLine_8u32f(KvrsWTFwdState_8u32f* state, const Kvr32f* dlyLow,
                                    const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kForward_8u32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwd_8u32f(const Kvr8u* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                          KvrsWTFwdState_8u32f* state) noexcept {
  return forward(src, dstLow, dstHigh, dstLen, state, kForward_8u32f);
}

KvrStatus kvrsWTFwdInitAlloc_8s32f(KvrsWTFwdState_8s32f** state, const Kvr32f* tapsLow, int lenLow,
                                   int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kForward_8s32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTFwdFree_8s32f(KvrsWTFwdState_8s32f* state) noexcept {
  return release(state, kForward_8s32f);
}
KvrStatus kvrsWTFwdGetDlyLine_8s32f(const KvrsWTFwdState_8s32f* state, Kvr32f* dlyLow,
                                    Kvr32f* dlyHigh) noexcept {
  return getLines(state, kForward_8s32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwdSetDlyLine_8s32f(KvrsWTFwdState_8s32f* state, const Kvr32f* dlyLow,
                                    const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kForward_8s32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwd_8s32f(const Kvr8s* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                          KvrsWTFwdState_8s32f* state) noexcept {
  return forward(src, dstLow, dstHigh, dstLen, state, kForward_8s32f);
}

KvrStatus kvrsWTFwdInitAlloc_16u32f(KvrsWTFwdState_16u32f** state, const Kvr32f* tapsLow, int lenLow,
                                    int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kForward_16u32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTFwdFree_16u32f(KvrsWTFwdState_16u32f* state) noexcept {
  return release(state, kForward_16u32f);
}
KvrStatus kvrsWTFwdGetDlyLine_16u32f(const KvrsWTFwdState_16u32f* state, Kvr32f* dlyLow,
                                     Kvr32f* dlyHigh) noexcept {
  return getLines(state, kForward_16u32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwdSetDlyLine_16u32f(KvrsWTFwdState_16u32f* state, const Kvr32f* dlyLow,
                                     const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kForward_16u32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwd_16u32f(const Kvr16u* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                           KvrsWTFwdState_16u32f* state) noexcept {
  return forward(src, dstLow, dstHigh, dstLen, state, kForward_16u32f);
}

KvrStatus kvrsWTFwdInitAlloc_16s32f(KvrsWTFwdState_16s32f** state, const Kvr32f* tapsLow, int lenLow,
                                    int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kForward_16s32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTFwdFree_16s32f(KvrsWTFwdState_16s32f* state) noexcept {
  return release(state, kForward_16s32f);
}
KvrStatus kvrsWTFwdGetDlyLine_16s32f(const KvrsWTFwdState_16s32f* state, Kvr32f* dlyLow,
                                     Kvr32f* dlyHigh) noexcept {
  return getLines(state, kForward_16s32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwdSetDlyLine_16s32f(KvrsWTFwdState_16s32f* state, const Kvr32f* dlyLow,
                                     const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kForward_16s32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTFwd_16s32f(const Kvr16s* src, Kvr32f* dstLow, Kvr32f* dstHigh, int dstLen,
                           KvrsWTFwdState_16s32f* state) noexcept {
  return forward(src, dstLow, dstHigh, dstLen, state, kForward_16s32f);
}

KvrStatus kvrsWTInvInitAlloc_32f(KvrsWTInvState_32f** state, const Kvr32f* tapsLow, int lenLow, int offsLow,
                                 const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kInverse_32f, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTInvFree_32f(KvrsWTInvState_32f* state) noexcept {
  return release(state, kInverse_32f);
}
KvrStatus kvrsWTInvGetDlyLine_32f(const KvrsWTInvState_32f* state, Kvr32f* dlyLow, Kvr32f* dlyHigh) noexcept {
  return getLines(state, kInverse_32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInvSetDlyLine_32f(KvrsWTInvState_32f* state, const Kvr32f* dlyLow,
                                  const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kInverse_32f, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInv_32f(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr32f* dst,
                        KvrsWTInvState_32f* state) noexcept {
  return inverse(srcLow, srcHigh, srcLen, dst, state, kInverse_32f);
}

KvrStatus kvrsWTInvInitAlloc_32f8u(KvrsWTInvState_32f8u** state, const Kvr32f* tapsLow, int lenLow,
                                   int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kInverse_32f8u, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTInvFree_32f8u(KvrsWTInvState_32f8u* state) noexcept {
  return release(state, kInverse_32f8u);
}
KvrStatus kvrsWTInvGetDlyLine_32f8u(const KvrsWTInvState_32f8u* state, Kvr32f* dlyLow,
                                    Kvr32f* dlyHigh) noexcept {
  return getLines(state, kInverse_32f8u, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInvSetDlyLine_32f8u(KvrsWTInvState_32f8u* state, const Kvr32f* dlyLow,
                                    const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kInverse_32f8u, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInv_32f8u(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr8u* dst,
                          KvrsWTInvState_32f8u* state) noexcept {
  return inverse(srcLow, srcHigh, srcLen, dst, state, kInverse_32f8u, kvrsConvert_32f8u_Sfs);
}

KvrStatus kvrsWTInvInitAlloc_32f8s(KvrsWTInvState_32f8s** state, const Kvr32f* tapsLow, int lenLow,
                                   int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kInverse_32f8s, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTInvFree_32f8s(KvrsWTInvState_32f8s* state) noexcept {
  return release(state, kInverse_32f8s);
}
KvrStatus kvrsWTInvGetDlyLine_32f8s(const KvrsWTInvState_32f8s* state, Kvr32f* dlyLow,
                                    Kvr32f* dlyHigh) noexcept {
  return getLines(state, kInverse_32f8s, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInvSetDlyLine_32f8s(KvrsWTInvState_32f8s* state, const Kvr32f* dlyLow,
                                    const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kInverse_32f8s, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInv_32f8s(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr8s* dst,
                          KvrsWTInvState_32f8s* state) noexcept {
  return inverse(srcLow, srcHigh, srcLen, dst, state, kInverse_32f8s, kvrsConvert_32f8s_Sfs);
}

KvrStatus kvrsWTInvInitAlloc_32f16u(KvrsWTInvState_32f16u** state, const Kvr32f* tapsLow, int lenLow,
                                    int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kInverse_32f16u, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTInvFree_32f16u(KvrsWTInvState_32f16u* state) noexcept {
  return release(state, kInverse_32f16u);
}
KvrStatus kvrsWTInvGetDlyLine_32f16u(const KvrsWTInvState_32f16u* state, Kvr32f* dlyLow,
                                     Kvr32f* dlyHigh) noexcept {
  return getLines(state, kInverse_32f16u, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInvSetDlyLine_32f16u(KvrsWTInvState_32f16u* state, const Kvr32f* dlyLow,
                                     const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kInverse_32f16u, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInv_32f16u(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr16u* dst,
                           KvrsWTInvState_32f16u* state) noexcept {
  return inverse(srcLow, srcHigh, srcLen, dst, state, kInverse_32f16u, kvrsConvert_32f16u_Sfs);
}

KvrStatus kvrsWTInvInitAlloc_32f16s(KvrsWTInvState_32f16s** state, const Kvr32f* tapsLow, int lenLow,
                                    int offsLow, const Kvr32f* tapsHigh, int lenHigh, int offsHigh) noexcept {
  return initAlloc(state, kInverse_32f16s, {tapsLow, lenLow, offsLow}, {tapsHigh, lenHigh, offsHigh});
}
KvrStatus kvrsWTInvFree_32f16s(KvrsWTInvState_32f16s* state) noexcept {
  return release(state, kInverse_32f16s);
}
KvrStatus kvrsWTInvGetDlyLine_32f16s(const KvrsWTInvState_32f16s* state, Kvr32f* dlyLow,
                                     Kvr32f* dlyHigh) noexcept {
  return getLines(state, kInverse_32f16s, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInvSetDlyLine_32f16s(KvrsWTInvState_32f16s* state, const Kvr32f* dlyLow,
                                     const Kvr32f* dlyHigh) noexcept {
  return setLines(state, kInverse_32f16s, dlyLow, dlyHigh);
}
KvrStatus kvrsWTInv_32f16s(const Kvr32f* srcLow, const Kvr32f* srcHigh, int srcLen, Kvr16s* dst,
                           KvrsWTInvState_32f16s* state) noexcept {
  return inverse(srcLow, srcHigh, srcLen, dst, state, kInverse_32f16s, kvrsConvert_32f16s_Sfs);
}
