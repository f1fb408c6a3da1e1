// Adaptive FIR filters of integers in steps: a context of three blocks, sums and updates modulo 2^32.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms_multirate.h"

#include <climits>
#include <cstring>

#include "filters/ring.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/reduce.h"
#include "frame/unaligned.h"
#include "frame/widen.h"
#include "kvrs/reorder.h"

namespace kvrs::lms {

// T are taps, X samples.
template <class T, class X>
struct Steps {
  uint32_t idWord;
  int32_t tapsLen;
  int32_t dlyStep;
  int32_t dlyLen;
  int32_t updateDly;
  int32_t dlyPos;  // as SetDlyLine was given it
  int32_t mu;
  T* tapsRev;
  X* dlyLine;  // each sample twice, dlyLen apart

  size_t length() const { return static_cast<size_t>(tapsLen); }
  size_t lineLength() const { return static_cast<size_t>(dlyLen); }
  int32_t pos() const { return withinRing(dlyPos, dlyLen); }
};

}  // namespace kvrs::lms

struct KvrsFIRLMSMRState32s_16s : kvrs::lms::Steps<Kvr32s, Kvr16s> {
  using Tap = Kvr32s;
  using Sample = Kvr16s;
  static constexpr uint32_t kWord = 0x4C4D5352;
};
struct KvrsFIRLMSMRState32sc_16sc : kvrs::lms::Steps<Kvr32sc, Kvr16sc> {
  using Tap = Kvr32sc;
  using Sample = Kvr16sc;
  static constexpr uint32_t kWord = 0x4C4D5343;
};

namespace kvrs::lms {
namespace {

using uint = uint32_t;

constexpr int32_t wrapped(uint32_t value) {
  return static_cast<int32_t>(value);
}

template <class S>
KvrStatus contextOf(const S* state) {
  return check::context(state, S::kWord);
}

// ---- Contexts.

void flip(const Kvr32s* from, Kvr32s* to, int len) {
  kvrsFlip_32f(reinterpret_cast<const Kvr32f*>(from), reinterpret_cast<Kvr32f*>(to), len);
}
void flip(const Kvr32sc* from, Kvr32sc* to, int len) {
  kvrsFlip_64f(reinterpret_cast<const Kvr64f*>(from), reinterpret_cast<Kvr64f*>(to), len);
}

template <class S, class T = typename S::Tap>
void storeTaps(S* state, const T* taps) {
  if (taps == nullptr) {
    memset(static_cast<void*>(state->tapsRev), 0, state->length() * sizeof(T));
  } else {
    flip(taps, state->tapsRev, state->tapsLen);
  }
}

template <class S, class X = typename S::Sample>
void storeLine(S* state, const X* dlyLine, int dlyLineIndex) {
  const size_t bytes = state->lineLength() * sizeof(X);
  state->dlyPos = dlyLineIndex;
  if (dlyLine == nullptr) {
    memset(static_cast<void*>(state->dlyLine), 0, 2 * bytes);
  } else {
    memcpy(static_cast<void*>(state->dlyLine), dlyLine, bytes);
    memcpy(static_cast<void*>(state->dlyLine + state->dlyLen), dlyLine, bytes);
  }
}

// Null if there is no memory for so many.
template <class T>
T* allocate(uint64_t count) {
  const uint64_t bytes = count * sizeof(T);
  return bytes > SIZE_MAX / 2 ? nullptr : static_cast<T*>(kvrMalloc(static_cast<size_t>(bytes)));
}

template <class S>
KvrStatus release(S* state) {
  if (state != nullptr) {
    kvrFree(state->dlyLine);
    kvrFree(state->tapsRev);
    kvrFree(state);
  }
  return kvrStatusOk;
}

template <class S, class T = typename S::Tap, class X = typename S::Sample>
KvrStatus initAlloc(S** state, const T* taps, int tapsLen, const X* dlyLine, int dlyLineIndex, int dlyStep,
                    int updateDly, int mu) {
  const int64_t dlyLen = int64_t{tapsLen} * dlyStep + updateDly;
  KVRS_CHECK(pointers(state), require(tapsLen >= 1 && dlyStep >= 1 && updateDly >= 0, kvrStatusBadLength),
             require(dlyLineIndex >= 0 && dlyLineIndex < dlyLen, kvrStatusBadLength));
  if (dlyLen > INT_MAX) return kvrStatusOutOfMemory;
  S* made = allocate<S>(1);
  if (made == nullptr) return kvrStatusOutOfMemory;
  made->idWord = S::kWord;
  made->tapsLen = tapsLen;
  made->dlyStep = dlyStep;
  made->dlyLen = static_cast<int32_t>(dlyLen);
  made->updateDly = updateDly;
  made->mu = mu;
  made->tapsRev = allocate<T>(static_cast<uint64_t>(tapsLen));
  made->dlyLine = made->tapsRev == nullptr ? nullptr : allocate<X>(2 * static_cast<uint64_t>(dlyLen));
  if (made->dlyLine == nullptr) {
    release(made);
    return kvrStatusOutOfMemory;
  }
  storeTaps(made, taps);
  storeLine(made, dlyLine, dlyLineIndex);
  *state = made;
  return kvrStatusOk;
}

template <class S, class T = typename S::Tap>
KvrStatus getTaps(const S* state, T* taps) {
  KVRS_CHECK(pointers(state, taps), contextOf(state));
  flip(state->tapsRev, taps, state->tapsLen);
  return kvrStatusOk;
}

template <class S, class T = typename S::Tap>
KvrStatus setTaps(S* state, const T* taps) {
  KVRS_CHECK(contextOf(state));
  storeTaps(state, taps);
  return kvrStatusOk;
}

template <class S, class X = typename S::Sample>
KvrStatus getDlyLine(const S* state, X* dlyLine, int* dlyLineIndex) {
  KVRS_CHECK(pointers(state, dlyLine, dlyLineIndex), contextOf(state));
  memcpy(static_cast<void*>(dlyLine), state->dlyLine, state->lineLength() * sizeof(X));
  unaligned::put(static_cast<int>(state->dlyPos), dlyLineIndex);
  return kvrStatusOk;
}

template <class S, class X = typename S::Sample>
KvrStatus setDlyLine(S* state, const X* dlyLine, int dlyLineIndex) {
  KVRS_CHECK(contextOf(state));
  storeLine(state, dlyLine, dlyLineIndex);
  return kvrStatusOk;
}

template <class S, class X = typename S::Sample>
KvrStatus getDlyVal(const S* state, X* dst, int index) {
  KVRS_CHECK(pointers(state, dst), contextOf(state));
  KVRS_CHECK(require(index >= 0 && index <= state->dlyLen, kvrStatusBadArg));
  const int64_t at = int64_t{state->updateDly} + state->dlyStep + state->pos() + index - 1;
  unaligned::put(state->dlyLine[at % state->dlyLen], dst);
  return kvrStatusOk;
}

template <class S>
KvrStatus setMu(S* state, int mu) {
  KVRS_CHECK(contextOf(state));
  state->mu = mu;
  return kvrStatusOk;
}

template <class S, class X = typename S::Sample>
KvrStatus putVal(X val, S* state) {
  KVRS_CHECK(contextOf(state));
  state->dlyPos = state->pos();
  pushTwice(state->dlyLine, state->dlyLen, &state->dlyPos, val);
  return kvrStatusOk;
}

// ---- Samples that consecutive taps meet.
//
// Next to each other they are read as they are. Real ones two steps apart are the lower halves of 32 bits, which kernels take
// too; the half above the last one is in the line, as the ring goes on behind it. All others are gathered, 32 bits each.

constexpr size_t kGathered = 512;

// body(words, taps, count) for all taps of a filter, a piece at a time: the first tap meets the sample at `samples`.
template <class S, class X, class Body>
KVRS_INLINE void forPiecesOf(const S& state, const X* samples, Body body) {
  const size_t step = static_cast<size_t>(state.dlyStep);
  alignas(64) Kvr32s words[kGathered];
  forPieces(state.length(), kGathered, [&](size_t begin, size_t count) KVRS_UNROLLED {
    const auto gather = [&](size_t i, size_t steps) KVRS_UNROLLED {
      words[i + steps] = unaligned::get(reinterpret_cast<const Kvr32s*>(samples + steps * step));
    };
    size_t i = 0;
    for (; i + 4 <= count; i += 4, samples += 4 * step)
      unroll<4>([&](auto j) KVRS_UNROLLED { gather(i, j); });
    for (; i < count; ++i, samples += step) gather(i, 0);
    body(static_cast<const Kvr32s*>(words), state.tapsRev + begin, count);
  });
}

// ---- Vectors of 32-bit taps and of samples in the lower or upper halves of 32 bits, the other halves 0.

using D32 = Lanes<Kvr32s, kLanes<Kvr32s>>;
using D16 = hn::Repartition<Kvr16s, D32>;
using V32 = hn::Vec<D32>;

template <class V16>
KVRS_INLINE V32 asLower(V16 x) {
  const hn::RebindToUnsigned<D32> wide;
  const hn::RebindToUnsigned<hn::DFromV<V16>> narrow;
  return hn::BitCast(D32(), hn::PromoteTo(wide, hn::BitCast(narrow, x)));
}
template <class V16>
KVRS_INLINE V32 asUpper(V16 x) {
  if constexpr (kVectorBytes == 16) {
    const Lanes<Kvr16s, 8> whole;
    return hn::BitCast(D32(), hn::InterleaveLower(whole, hn::Zero(whole), resized<8>(x)));
  } else {
    return hn::ShiftLeft<16>(asLower(x));
  }
}

// The products of both halves, added up.
KVRS_INLINE V32 products(V32 a, V32 b) {
  return mulAddNeighbours(D32(), hn::BitCast(D16(), a), hn::BitCast(D16(), b));
}

// Pairs of numbers of 16 bits in all lanes.
KVRS_INLINE V32 halves(int32_t lower, int32_t upper) {
  return hn::Set(D32(), wrapped((static_cast<uint>(lower) & 0xFFFF) | static_cast<uint>(upper) << 16));
}

struct Join {
  KVRS_INLINE void join(V32& a, V32 b) const { a = hn::Add(a, b); }
};

// ---- Real filters.

// body(samples, taps, count), where samples are numbers of 16 bits or the lower halves of 32.
template <class Body>
KVRS_INLINE void forSamplesOf(const KvrsFIRLMSMRState32s_16s& state, const Kvr16s* samples, Body body) {
  if (state.dlyStep == 1) return body(samples, state.tapsRev, state.length());
  if (state.dlyStep == 2)
    return body(reinterpret_cast<const Kvr32s*>(samples), state.tapsRev, state.length());
  forPiecesOf(state, samples, body);
}

// The upper halves of taps times samples: pairs of halves are multiplied, and the lower one of a sample is 0.
struct Sum : Join {
  template <class V>
  KVRS_INLINE void operator()(V32& sum, V sample, V32 tap) const {
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      sum = hn::Add(sum, products(asUpper(sample), tap));
    } else {
      sum = hn::Add(sum, products(hn::ShiftLeft<16>(sample), tap));
    }
  }
};

template <class X>
int32_t sumOf(const X* samples, const Kvr32s* taps, size_t len) {
  return sumLanes(reduce<Kvr32s, 2>(Sum(), hn::Zero(D32()), len, samples, taps));
}

void sum(const KvrsFIRLMSMRState32s_16s& state, const Kvr16s* samples, Kvr32s* dst) {
  uint total = 0;
  forSamplesOf(state, samples, [&](const auto* x, const Kvr32s* taps, size_t len) {
    total += static_cast<uint>(sumOf(x, taps, len));
  });
  unaligned::put(wrapped(total), dst);
}

// tap + g * sample. Where g has 16 bits, pairs of halves are multiplied, those of g being g and 0.
template <bool kSmall>
struct Move {
  int32_t g;

  template <class V>
  KVRS_INLINE V32 operator()(D32, V sample, V32 tap) const {
    V32 lower;
    if constexpr (sizeof(hn::TFromV<V>) == 2) {
      lower = asLower(sample);
    } else {
      lower = sample;
    }
    if constexpr (kSmall) {
      return hn::Add(tap, products(lower, halves(g, 0)));
    } else {
      const V32 wide = hn::ShiftRight<16>(hn::ShiftLeft<16>(lower));
      return hn::Add(tap, hn::Mul(wide, hn::Set(D32(), g)));
    }
  }
};

template <bool kSmall>
void move(const KvrsFIRLMSMRState32s_16s& state, const Kvr16s* samples, int32_t g) {
  const Move<kSmall> op{g};
  const auto run = [&](const auto* x, Kvr32s* taps, size_t len) {
    mapElements(op, taps, len, x, static_cast<const Kvr32s*>(taps));
  };
  forSamplesOf(state, samples, run);
}

// ---- Complex filters.

// body(samples, taps, count), with the samples as words of 32 bits.
template <class Body>
KVRS_INLINE void forSamplesOf(const KvrsFIRLMSMRState32sc_16sc& state, const Kvr16sc* samples, Body body) {
  if (state.dlyStep == 1)
    return body(reinterpret_cast<const Kvr32s*>(samples), state.tapsRev, state.length());
  forPiecesOf(state, samples, body);
}

// Products of like parts, re*re and im*im in turn, and of unlike ones.
struct ComplexSum {
  struct Sums {
    V32 like, unlike;
  };

  template <class V16>
  KVRS_INLINE void operator()(Sums& sums, V16 parts, V32 tap) const {
    const V32 samples = asUpper(parts);
    sums.like = hn::Add(sums.like, products(samples, tap));
    sums.unlike = hn::Add(sums.unlike, products(samples, hn::Reverse2(D32(), tap)));
  }
  KVRS_INLINE void join(Sums& a, Sums b) const {
    a.like = hn::Add(a.like, b.like);
    a.unlike = hn::Add(a.unlike, b.unlike);
  }
};

// The sums of even and of odd lanes.
KVRS_INLINE Kvr32sc sumPairs(V32 v) {
  const hn::RepartitionToWide<D32> pairs;
  const uint64_t both =
      static_cast<uint64_t>(foldLanes(hn::BitCast(pairs, v), [](auto a, auto b) KVRS_UNROLLED {
        const hn::DFromV<decltype(a)> d;
        const hn::Repartition<Kvr32s, decltype(d)> parts;
        return hn::BitCast(d, hn::Add(hn::BitCast(parts, a), hn::BitCast(parts, b)));
      }));
  return {wrapped(static_cast<uint>(both)), wrapped(static_cast<uint>(both >> 32))};
}

void sum(const KvrsFIRLMSMRState32sc_16sc& state, const Kvr16sc* samples, Kvr32sc* dst) {
  const V32 zero = hn::Zero(D32());
  ComplexSum::Sums sums{zero, zero};
  forSamplesOf(state, samples, [&](const Kvr32s* x, const Kvr32sc* taps, size_t len) {
    const ComplexSum op;
    const auto* parts = reinterpret_cast<const Kvr16s*>(x);
    op.join(sums, reduce<Kvr32s, 2>(op, ComplexSum::Sums{zero, zero}, 2 * len, parts, &taps->re));
  });
  const Kvr32sc like = sumPairs(sums.like), unlike = sumPairs(sums.unlike);
  unaligned::put(Kvr32sc{wrapped(static_cast<uint>(like.re) - static_cast<uint>(like.im)),
                         wrapped(static_cast<uint>(unlike.re) + static_cast<uint>(unlike.im))},
                 dst);
}

// tap + g * conj(sample). Both parts of a sample stand in each of the two lanes of its tap.
template <bool kSmall>
struct ComplexMove {
  int32_t re, im;  // of g

  template <class V>
  KVRS_INLINE V32 operator()(D32, V samples, V32 tap) const {
    const hn::RepartitionToWide<hn::RebindToUnsigned<D32>> pairs;
    const hn::RebindToUnsigned<hn::DFromV<V>> narrow;
    const auto lower = hn::PromoteTo(pairs, hn::BitCast(narrow, samples));
    const V32 both = hn::BitCast(D32(), hn::Or(lower, hn::ShiftLeft<32>(lower)));
    if constexpr (kSmall) {
      return hn::Add(tap, products(both, hn::OddEven(halves(im, -re), halves(re, im))));
    } else {
      const auto set = [](int32_t even, int32_t odd)
                           KVRS_UNROLLED { return hn::OddEven(hn::Set(D32(), odd), hn::Set(D32(), even)); };
      const V32 xRe = hn::ShiftRight<16>(hn::ShiftLeft<16>(both)), xIm = hn::ShiftRight<16>(both);
      return hn::Add(tap, hn::Add(hn::Mul(xRe, set(re, im)), hn::Mul(xIm, set(im, -re))));
    }
  }
};

template <bool kSmall>
void move(const KvrsFIRLMSMRState32sc_16sc& state, const Kvr16sc* samples, int32_t re, int32_t im) {
  const ComplexMove<kSmall> op{re, im};
  forSamplesOf(state, samples, [&](const Kvr32s* x, Kvr32sc* taps, size_t len) {
    auto* pairs = asPairs<Kvr32s>(taps);
    mapElements(op, pairs, len, x, static_cast<const Pair<Kvr32s>*>(pairs));
  });
}

// ---- Outputs and updates.

// The sample that the last tap meets in an output; the next tap meets the one dlyStep behind it.
template <class S>
auto* samplesOf(const S& state) {
  return state.dlyLine + state.pos() + state.updateDly + (state.dlyStep - 1);
}

template <class S, class T = typename S::Tap>
KvrStatus one(T* dst, S* state) {
  KVRS_CHECK(pointers(dst, state), contextOf(state));
  sum(*state, samplesOf(*state), dst);
  return kvrStatusOk;
}

template <class S, class X = typename S::Sample, class T = typename S::Tap>
KvrStatus oneVal(X val, T* dst, S* state) {
  KVRS_CHECK(pointers(dst, state), contextOf(state));
  putVal(val, state);
  return one(dst, state);
}

// The step, at most 65536 in magnitude, and whether it has 16 bits and its negative too.
template <class S>
int32_t stepOf(const S& state, int err) {
  return wrapped(static_cast<uint>(state.mu) * static_cast<uint>(err) + 16384) >> 15;
}
constexpr bool isSmall(int32_t g) {
  return g > -32768 && g < 32768;
}

KvrStatus updateTaps(KvrsFIRLMSMRState32s_16s* state, int err) {
  KVRS_CHECK(contextOf(state));
  const auto* samples = samplesOf(*state) - state->updateDly;
  const int32_t g = stepOf(*state, err);
  if (isSmall(g)) {
    move<true>(*state, samples, g);
  } else {
    move<false>(*state, samples, g);
  }
  return kvrStatusOk;
}

KvrStatus updateTaps(KvrsFIRLMSMRState32sc_16sc* state, int errRe, int errIm) {
  KVRS_CHECK(contextOf(state));
  const auto* samples = samplesOf(*state) - state->updateDly;
  const int32_t re = stepOf(*state, errRe), im = stepOf(*state, errIm);
  if (isSmall(re) && isSmall(im)) {
    move<true>(*state, samples, re, im);
  } else {
    move<false>(*state, samples, re, im);
  }
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::lms

using namespace kvrs;

KvrStatus kvrsFIRLMSMRInitAlloc32s_16s(KvrsFIRLMSMRState32s_16s** state, const Kvr32s* taps, int tapsLen,
                                       const Kvr16s* dlyLine, int dlyLineIndex, int dlyStep, int updateDly,
                                       int mu) noexcept {
  return lms::initAlloc(state, taps, tapsLen, dlyLine, dlyLineIndex, dlyStep, updateDly, mu);
}

KvrStatus kvrsFIRLMSMRInitAlloc32sc_16sc(KvrsFIRLMSMRState32sc_16sc** state, const Kvr32sc* taps, int tapsLen,
                                         const Kvr16sc* dlyLine, int dlyLineIndex, int dlyStep, int updateDly,
                                         int mu) noexcept {
  return lms::initAlloc(state, taps, tapsLen, dlyLine, dlyLineIndex, dlyStep, updateDly, mu);
}

// Of both types, whose words it does not look at: their records differ in what the pointers point to.
KvrStatus kvrsFIRLMSMRFree32s_16s(KvrsFIRLMSMRState32s_16s* state) noexcept {
  return lms::release(state);
}

KvrStatus kvrsFIRLMSMRGetTaps32s_16s(const KvrsFIRLMSMRState32s_16s* state, Kvr32s* taps) noexcept {
  return lms::getTaps(state, taps);
}

KvrStatus kvrsFIRLMSMRGetTaps32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state, Kvr32sc* taps) noexcept {
  return lms::getTaps(state, taps);
}

KvrStatus kvrsFIRLMSMRSetTaps32s_16s(KvrsFIRLMSMRState32s_16s* state, const Kvr32s* taps) noexcept {
  return lms::setTaps(state, taps);
}

KvrStatus kvrsFIRLMSMRSetTaps32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state, const Kvr32sc* taps) noexcept {
  return lms::setTaps(state, taps);
}

// Of both types as well.
KvrStatus kvrsFIRLMSMRGetTapsPointer32s_16s(KvrsFIRLMSMRState32s_16s* state, Kvr32s** tapsPointer) noexcept {
  KVRS_CHECK(pointers(state, tapsPointer));
  unaligned::put(state->tapsRev, tapsPointer);
  return kvrStatusOk;
}

KvrStatus kvrsFIRLMSMRGetDlyLine32s_16s(const KvrsFIRLMSMRState32s_16s* state, Kvr16s* dlyLine,
                                        int* dlyLineIndex) noexcept {
  return lms::getDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSMRGetDlyLine32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state, Kvr16sc* dlyLine,
                                          int* dlyLineIndex) noexcept {
  return lms::getDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSMRSetDlyLine32s_16s(KvrsFIRLMSMRState32s_16s* state, const Kvr16s* dlyLine,
                                        int dlyLineIndex) noexcept {
  return lms::setDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSMRSetDlyLine32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state, const Kvr16sc* dlyLine,
                                          int dlyLineIndex) noexcept {
  return lms::setDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSMRGetDlyVal32s_16s(const KvrsFIRLMSMRState32s_16s* state, Kvr16s* dst,
                                       int index) noexcept {
  return lms::getDlyVal(state, dst, index);
}

KvrStatus kvrsFIRLMSMRGetDlyVal32sc_16sc(const KvrsFIRLMSMRState32sc_16sc* state, Kvr16sc* dst,
                                         int index) noexcept {
  return lms::getDlyVal(state, dst, index);
}

KvrStatus kvrsFIRLMSMRSetMu32s_16s(KvrsFIRLMSMRState32s_16s* state, int mu) noexcept {
  return lms::setMu(state, mu);
}

KvrStatus kvrsFIRLMSMRSetMu32sc_16sc(KvrsFIRLMSMRState32sc_16sc* state, int mu) noexcept {
  return lms::setMu(state, mu);
}

KvrStatus kvrsFIRLMSMRPutVal32s_16s(Kvr16s val, KvrsFIRLMSMRState32s_16s* state) noexcept {
  return lms::putVal(val, state);
}

KvrStatus kvrsFIRLMSMRPutVal32sc_16sc(Kvr16sc val, KvrsFIRLMSMRState32sc_16sc* state) noexcept {
  return lms::putVal(val, state);
}

KvrStatus kvrsFIRLMSMROne32s_16s(Kvr32s* dst, KvrsFIRLMSMRState32s_16s* state) noexcept {
  return lms::one(dst, state);
}

KvrStatus kvrsFIRLMSMROne32sc_16sc(Kvr32sc* dst, KvrsFIRLMSMRState32sc_16sc* state) noexcept {
  return lms::one(dst, state);
}

KvrStatus kvrsFIRLMSMROneVal32s_16s(Kvr16s val, Kvr32s* dst, KvrsFIRLMSMRState32s_16s* state) noexcept {
  return lms::oneVal(val, dst, state);
}

KvrStatus kvrsFIRLMSMROneVal32sc_16sc(Kvr16sc val, Kvr32sc* dst, KvrsFIRLMSMRState32sc_16sc* state) noexcept {
  return lms::oneVal(val, dst, state);
}

KvrStatus kvrsFIRLMSMRUpdateTaps32s_16s(int err, KvrsFIRLMSMRState32s_16s* state) noexcept {
  return lms::updateTaps(state, err);
}

KvrStatus kvrsFIRLMSMRUpdateTaps32sc_16sc(int errRe, int errIm, KvrsFIRLMSMRState32sc_16sc* state) noexcept {
  return lms::updateTaps(state, errRe, errIm);
}
