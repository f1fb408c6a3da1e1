// Adaptive FIR filters: contexts and forms without one.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms.h"

#include <climits>
#include <cstring>
#include <type_traits>

#include "filters/fir_dot-inl.h"
#include "filters/fir_format-inl.h"
#include "filters/ring.h"
#include "frame/array_length.h"
#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/loop.h"
#include "frame/reduce.h"
#include "frame/ref.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "frame/unaligned.h"
#include "kvrs/convert.h"
#include "kvrs/fill.h"
#include "kvrs/mixed.h"
#include "kvrs/reorder.h"

namespace kvrs::lms {
namespace {

// Delay lines of filters from here on turn with the samples, shorter ones are put in order by each call.
constexpr int kTurnsFrom = 80;

// Samples that are put behind the window in one go.
constexpr size_t kStage = 1024;

constexpr size_t kLine = 64;

}  // namespace

// Taps and window fill whole vectors: their first one begins with `padding` lanes that do not count. The line holds padding,
// then the window at windowPos, the oldest sample first, and behind it room for kStage samples, so that windows of the
// samples to come lie in one piece too.
struct State {
  uint32_t idWord;
  int32_t tapsLen;
  // Where GetDlyLine shows the oldest sample of the window; as given, if no sample came since.
  int32_t dlyPos;
  int32_t windowPos;
  Ref<Kvr32f> tapsRev;  // the last tap first, behind zeros in place of padding
  Ref<Kvr32f> line;

  size_t length() const { return static_cast<size_t>(tapsLen); }
  Kvr32f* window() const { return line.present() + windowPos; }
  Kvr32f* staged() const { return window() + tapsLen; }
};

}  // namespace kvrs::lms

struct KvrsFIRLMSState_32f : kvrs::lms::State {
  using Sample = Kvr32f;
  static constexpr uint32_t kWord = 0x4C4D5331;
};
struct KvrsFIRLMSState32f_16s : kvrs::lms::State {
  using Sample = Kvr16s;
  static constexpr uint32_t kWord = 0x4C4D5300;
};

namespace kvrs::lms {
namespace {

// Each sample waits for the sum of the one before, whose lanes take the longer to add up the more there are. So few taps
// are in short vectors: measured on v4, of 16, 8 and 4 lanes.
constexpr size_t lanesFor(size_t tapsLen) {
  constexpr size_t kAll = kLanes<Kvr32f>;
  return tapsLen <= 32 ? 4 : tapsLen <= 128 && kAll > 8 ? 8 : kAll;
}

constexpr size_t paddingOf(size_t tapsLen) {
  return (0 - tapsLen) % lanesFor(tapsLen);
}

template <class S>
KvrStatus contextOf(const S* state) {
  return check::context(state, S::kWord);
}

// ---- Contexts.

// The window of a delay line whose oldest sample is at `pos`, and back.
template <class D>
void toWindow(const D* dlyLine, int pos, Kvr32f* window, int tapsLen) {
  for (int i = 0, at = withinRing(pos, tapsLen); i < tapsLen; ++i, at = at + 1 == tapsLen ? 0 : at + 1) {
    window[i] = static_cast<Kvr32f>(unaligned::get(dlyLine + at));
  }
}
template <class D>
void fromWindow(const Kvr32f* window, int pos, D* dlyLine, int tapsLen) {
  for (int i = 0, at = withinRing(pos, tapsLen); i < tapsLen; ++i, at = at + 1 == tapsLen ? 0 : at + 1) {
    unaligned::put(static_cast<D>(window[i]), dlyLine + at);
  }
}

template <class D>
void setWindow(State& state, const D* dlyLine, int pos) {
  state.dlyPos = pos;
  if (dlyLine == nullptr) {
    memset(state.window(), 0, state.length() * sizeof(Kvr32f));
  } else {
    toWindow(dlyLine, pos, state.window(), state.tapsLen);
  }
}

template <class S, class D = typename S::Sample>
KvrStatus initAlloc(S** state, const Kvr32f* taps, int tapsLen, const D* dlyLine, int dlyLineIndex) {
  KVRS_CHECK(pointers(state), length(tapsLen));
  const size_t len = static_cast<size_t>(tapsLen), padding = paddingOf(len);
  constexpr size_t kRecordBytes = roundUp(sizeof(S), kLine);
  const uint64_t tapBytes = (uint64_t{padding} + len) * sizeof(Kvr32f);
  const uint64_t bytes = kRecordBytes + kLine + 2 * tapBytes + kStage * sizeof(Kvr32f);
  if (bytes > INT_MAX) return kvrStatusOutOfMemory;
  void* block = kvrMalloc(static_cast<size_t>(bytes));
  if (block == nullptr) return kvrStatusOutOfMemory;
  memset(block, 0, static_cast<size_t>(bytes));
  Carver carver(block);
  S* made = carver.take<S>(1);
  made->idWord = S::kWord;
  made->tapsLen = tapsLen;
  made->tapsRev.set(carver.take<Kvr32f>(padding + len, kLine) + padding);
  made->line.set(carver.take<Kvr32f>(padding + len + kStage) + padding);
  if (taps != nullptr) kvrsFlip_32f(taps, made->tapsRev.present(), tapsLen);
  setWindow(*made, dlyLine, dlyLineIndex);
  *state = made;
  return kvrStatusOk;
}

template <class S>
KvrStatus getTaps(const S* state, Kvr32f* taps) {
  KVRS_CHECK(pointers(state, taps), contextOf(state));
  return kvrsFlip_32f(state->tapsRev.present(), taps, state->tapsLen);
}

template <class S, class D = typename S::Sample>
KvrStatus getDlyLine(const S* state, D* dlyLine, int* dlyLineIndex) {
  KVRS_CHECK(pointers(state, dlyLine, dlyLineIndex), contextOf(state));
  fromWindow(state->window(), state->dlyPos, dlyLine, state->tapsLen);
  unaligned::put(static_cast<int>(state->dlyPos), dlyLineIndex);
  return kvrStatusOk;
}

template <class S, class D = typename S::Sample>
KvrStatus setDlyLine(S* state, const D* dlyLine, int dlyLineIndex) {
  KVRS_CHECK(contextOf(state));
  setWindow(*state, dlyLine, dlyLineIndex);
  return kvrStatusOk;
}

// ---- The engine.

// taps[k] = taps[k] + x[k] * step, where kMoves; returns the sum of taps[k] * x[k+1] with the taps as they are then, where
// kSums. One pass over the taps does what belongs to two samples, so that none is loaded while its store is on its way.
template <size_t N, bool kMoves, bool kSums>
KVRS_INLINE Kvr32f pass(Kvr32f* taps, const Kvr32f* x, size_t len, size_t padding, Kvr32f step) {
  const Lanes<Kvr32f, N> d;
  using V = hn::Vec<decltype(d)>;
  const V steps = hn::Set(d, step);
  V sums[4];
  unroll<4>([&](auto i) KVRS_UNROLLED { sums[i] = hn::Zero(d); });
  const auto take = [&](size_t at, V now, V next, V& sum) KVRS_UNROLLED {
    V tap = hn::Load(d, taps + at);
    if constexpr (kMoves) {
      tap = hn::Add(tap, hn::Mul(now, steps));
      hn::Store(tap, d, taps + at);
    }
    if constexpr (kSums) sum = hn::MulAdd(tap, next, sum);
  };
  const auto takeAt = [&](size_t at, V& sum)
                          KVRS_UNROLLED { take(at, hn::LoadU(d, x + at), hn::LoadU(d, x + at + 1), sum); };
  // Padding stays out, whatever there is: infinities times 0 would not be 0.
  const auto counts = hn::Not(firstLanes(d, padding));
  take(0, hn::IfThenElseZero(counts, hn::LoadU(d, x)), hn::IfThenElseZero(counts, hn::LoadU(d, x + 1)),
       sums[0]);
  size_t i = N;
  for (; i + 4 * N <= len; i += 4 * N) {
    unroll<4>([&](auto j) KVRS_UNROLLED { takeAt(i + j * N, sums[j]); });
  }
  if (i < len) takeAt(i, sums[1]);
  if (i + N < len) takeAt(i + N, sums[2]);
  if (i + 2 * N < len) takeAt(i + 2 * N, sums[3]);
  return sumLanes(hn::Add(hn::Add(sums[0], sums[1]), hn::Add(sums[2], sums[3])));
}

// Filters the first `count` samples that are staged. dst may be ref.
template <size_t N>
__attribute__((noinline)) void adaptBy(State& state, const Kvr32f* ref, Kvr32f* dst, size_t count,
                                       Kvr32f mu) {
  const size_t padding = paddingOf(state.length()), len = padding + state.length();
  Kvr32f* taps = state.tapsRev.present() - padding;
  // The window of sample n begins at x + n + 1.
  const Kvr32f* x = state.window() - padding;
  const Kvr32f mu2 = mu + mu;
  Kvr32f y = pass<N, false, true>(taps, x, len, padding, 0), step;
  for (size_t n = 0;;) {
    step = (unaligned::get(ref + n) - y) * mu2;
    unaligned::put(y, dst + n);
    ++x;
    if (++n == count) break;
    y = pass<N, true, true>(taps, x, len, padding, step);
  }
  pass<N, true, false>(taps, x, len, padding, step);
}

void adapt(State& state, const Kvr32f* ref, Kvr32f* dst, size_t count, Kvr32f mu) {
  constexpr size_t kAll = kLanes<Kvr32f>;
  const size_t lanes = lanesFor(state.length());
  if constexpr (kAll > 4) {
    if (lanes == kAll) return adaptBy<kAll>(state, ref, dst, count, mu);
  }
  if constexpr (kAll > 8) {
    if (lanes == 8) return adaptBy<8>(state, ref, dst, count, mu);
  }
  adaptBy<4>(state, ref, dst, count, mu);
}

// Makes room behind the window for some of the samples that are left, and returns how many.
size_t makeRoom(State& state, size_t left) {
  const size_t count = left < kStage ? left : kStage;
  if (static_cast<size_t>(state.windowPos) + count > kStage) {
    memmove(state.line.present(), state.window(), state.length() * sizeof(Kvr32f));
    state.windowPos = 0;
  }
  return count;
}

// What is left when `len` samples have been filtered, by way of windowPos as far as the window goes.
void turn(State& state, int len) {
  state.dlyPos =
      state.tapsLen < kTurnsFrom
          ? 0
          : static_cast<int32_t>((int64_t{withinRing(state.dlyPos, state.tapsLen)} + len) % state.tapsLen);
}

// ---- Without a context.

KvrStatus checkIndex(int index, int tapsLen) {
  return check::require(index >= 0 && index < tapsLen, kvrStatusBadDelayIndex);
}

template <class Y, class X, class T>
KvrStatus checkDirect(const Y* dst, const T* taps, int tapsLen, const X* dlyLine, const int* dlyLineIndex) {
  KVRS_CHECK(pointers(dst, taps, dlyLine, dlyLineIndex), length(tapsLen));
  return checkIndex(unaligned::get(dlyLineIndex), tapsLen);
}

// Puts a sample into the caller's delay line and returns its window.
template <class X>
const X* pushInto(X* dlyLine, int* dlyLineIndex, int tapsLen, X sample) {
  int32_t pos = unaligned::get(dlyLineIndex);
  const X* window = pushTwice(dlyLine, tapsLen, &pos, sample);
  unaligned::put(static_cast<int>(pos), dlyLineIndex);
  return window;
}

// Samples of 16 bits as floats.
template <class V16>
KVRS_INLINE auto widened(V16 x) {
  constexpr size_t N = hn::MaxLanes(hn::DFromV<V16>());
  return hn::ConvertTo(Lanes<Kvr32f, N>(), hn::PromoteTo(Lanes<Kvr32s, N>(), x));
}
template <class V16>
KVRS_INLINE auto widenedToDouble(V16 x) {
  constexpr size_t N = hn::MaxLanes(hn::DFromV<V16>());
  return hn::PromoteTo(Lanes<Kvr64f, N>(), hn::PromoteTo(Lanes<Kvr32s, N>(), x));
}

using Floats = hn::Vec<Lanes<Kvr32f, kLanes<Kvr32f>>>;
using Doubles = hn::Vec<Lanes<Kvr64f, kLanes<Kvr64f>>>;

struct SumTaps {
  template <class V16>
  KVRS_INLINE void operator()(Floats& sum, V16 x, Floats tap) const {
    sum = hn::MulAdd(widened(x), tap, sum);
  }
  KVRS_INLINE void join(Floats& a, Floats b) const { a = hn::Add(a, b); }
};

struct MoveTaps {
  Kvr32f step;
  template <class D, class V16, class V>
  KVRS_INLINE V operator()(D d, V16 x, V tap) const {
    return hn::Add(tap, hn::Mul(widened(x), hn::Set(d, step)));
  }
};

// Products are exact, so that it makes no difference whether they are fused.
struct SumAndEnergy {
  struct Sums {
    Doubles sum, energy;
  };

  template <class V16, class V32>
  KVRS_INLINE void operator()(Sums& sums, V16 sample, V32 tap) const {
    const Doubles x = widenedToDouble(sample);
    sums.sum = hn::MulAdd(x, hn::PromoteTo(Lanes<Kvr64f, kLanes<Kvr64f>>(), tap), sums.sum);
    sums.energy = hn::MulAdd(x, x, sums.energy);
  }
  KVRS_INLINE void join(Sums& a, Sums b) const {
    a.sum = hn::Add(a.sum, b.sum);
    a.energy = hn::Add(a.energy, b.energy);
  }
};

struct MoveIntegerTaps {
  Kvr64f step;
  template <class D, class V16, class V32>
  KVRS_INLINE V32 operator()(D d, V16 sample, V32 tap) const {
    const hn::Rebind<Kvr64f, D> wide;
    const auto moved =
        hn::Add(hn::PromoteTo(wide, tap), hn::Mul(widenedToDouble(sample), hn::Set(wide, step)));
    return toInteger<false>(d, moved, INT_MIN, INT_MAX);
  }
};

// The normalised step, in a forced rounding mode.
void adaptNormalised(const Kvr16s* window, Kvr16s ref, Kvr16s* dst, Kvr32s* taps, int tapsLen, int mu) {
  const size_t len = static_cast<size_t>(tapsLen);
  const Doubles zero = hn::Zero(hn::DFromV<Doubles>());
  const auto sums = reduce<Kvr64f, 2>(SumAndEnergy(), SumAndEnergy::Sums{zero, zero}, len, window,
                                      static_cast<const Kvr32s*>(taps));
  const Kvr64f y = sumLanes(sums.sum) * 0x1p-15, energy = sumLanes(sums.energy);
  if (energy < 0.5) return;
  unaligned::put(fir::nearestScaled<Kvr16s>(y, 1), dst);
  const Kvr64f step = static_cast<Kvr64f>(mu) * (static_cast<Kvr64f>(ref) - y) / energy;
  mapInLanesOf<Kvr64f>(MoveIntegerTaps{step}, taps, len, window, static_cast<const Kvr32s*>(taps));
}

}  // namespace
}  // namespace kvrs::lms

using namespace kvrs;

KvrStatus kvrsFIRLMSInitAlloc_32f(KvrsFIRLMSState_32f** state, const Kvr32f* taps, int tapsLen,
                                  const Kvr32f* dlyLine, int dlyLineIndex) noexcept {
  return lms::initAlloc(state, taps, tapsLen, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSInitAlloc32f_16s(KvrsFIRLMSState32f_16s** state, const Kvr32f* taps, int tapsLen,
                                     const Kvr16s* dlyLine, int dlyLineIndex) noexcept {
  return lms::initAlloc(state, taps, tapsLen, dlyLine, dlyLineIndex);
}

// Of both types, whose words it does not look at: any block of the heap will do, and so will null.
KvrStatus kvrsFIRLMSFree_32f(KvrsFIRLMSState_32f* state) noexcept {
  kvrFree(state);
  return kvrStatusOk;
}

KvrStatus kvrsFIRLMSGetTaps_32f(const KvrsFIRLMSState_32f* state, Kvr32f* taps) noexcept {
  return lms::getTaps(state, taps);
}

KvrStatus kvrsFIRLMSGetTaps32f_16s(const KvrsFIRLMSState32f_16s* state, Kvr32f* taps) noexcept {
  return lms::getTaps(state, taps);
}

KvrStatus kvrsFIRLMSGetDlyLine_32f(const KvrsFIRLMSState_32f* state, Kvr32f* dlyLine,
                                   int* dlyLineIndex) noexcept {
  return lms::getDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSGetDlyLine32f_16s(const KvrsFIRLMSState32f_16s* state, Kvr16s* dlyLine,
                                      int* dlyLineIndex) noexcept {
  return lms::getDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSSetDlyLine_32f(KvrsFIRLMSState_32f* state, const Kvr32f* dlyLine,
                                   int dlyLineIndex) noexcept {
  return lms::setDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMSSetDlyLine32f_16s(KvrsFIRLMSState32f_16s* state, const Kvr16s* dlyLine,
                                      int dlyLineIndex) noexcept {
  return lms::setDlyLine(state, dlyLine, dlyLineIndex);
}

KvrStatus kvrsFIRLMS_32f(const Kvr32f* src, const Kvr32f* ref, Kvr32f* dst, int len, Kvr32f mu,
                         KvrsFIRLMSState_32f* state) noexcept {
  KVRS_CHECK(pointers(state, src, ref, dst), length(len, src, ref, dst), lms::contextOf(state));
  const size_t total = static_cast<size_t>(len);
  for (size_t done = 0, count; done < total; done += count) {
    count = lms::makeRoom(*state, total - done);
    kvrsCopy_32f(src + done, state->staged(), static_cast<int>(count));
    lms::adapt(*state, ref + done, dst + done, count, mu);
    state->windowPos += static_cast<int32_t>(count);
  }
  lms::turn(*state, len);
  return kvrStatusOk;
}

KvrStatus kvrsFIRLMS32f_16s(const Kvr16s* src, const Kvr16s* ref, Kvr16s* dst, int len, Kvr32f mu,
                            KvrsFIRLMSState32f_16s* state) noexcept {
  KVRS_CHECK(pointers(state, src, ref, dst), length(len, src, ref, dst), lms::contextOf(state));
  const size_t total = static_cast<size_t>(len);
  alignas(64) Kvr32f tile[lms::kStage];
  for (size_t done = 0, count; done < total; done += count) {
    count = lms::makeRoom(*state, total - done);
    const int samples = static_cast<int>(count);
    kvrsConvert_16s32f(src + done, state->staged(), samples);
    kvrsConvert_16s32f(ref + done, tile, samples);
    lms::adapt(*state, tile, tile, count, mu);
    kvrsConvert_32f16s_Sfs(tile, dst + done, samples, kvrRoundNear, 0);
    state->windowPos += samples;
  }
  lms::turn(*state, len);
  return kvrStatusOk;
}

KvrStatus kvrsFIRLMSOne_Direct_32f(Kvr32f src, Kvr32f ref, Kvr32f* dst, Kvr32f* taps, int tapsLen, Kvr32f mu,
                                   Kvr32f* dlyLine, int* dlyLineIndex) noexcept {
  KVRS_CHECK(lms::checkDirect(dst, taps, tapsLen, dlyLine, dlyLineIndex));
  const Kvr32f* window = lms::pushInto(dlyLine, dlyLineIndex, tapsLen, src);
  const Kvr32f y = fir_detail::dot(window, taps, static_cast<size_t>(tapsLen));
  unaligned::put(y, dst);
  return kvrsAddProductC_32f(window, (ref - y) * (mu + mu), taps, tapsLen);
}

KvrStatus kvrsFIRLMSOne_Direct32f_16s(Kvr16s src, Kvr16s ref, Kvr16s* dst, Kvr32f* taps, int tapsLen,
                                      Kvr32f mu, Kvr16s* dlyLine, int* dlyLineIndex) noexcept {
  using namespace lms;
  KVRS_CHECK(checkDirect(dst, taps, tapsLen, dlyLine, dlyLineIndex));
  const Kvr16s* window = pushInto(dlyLine, dlyLineIndex, tapsLen, src);
  const size_t len = static_cast<size_t>(tapsLen);
  const Kvr32f* const old = taps;
  const Kvr32f y = sumLanes(reduce<Kvr32f, 2>(SumTaps(), hn::Zero(hn::DFromV<Floats>()), len, window, old));
  unaligned::put(fir::nearestScaled<Kvr16s>(static_cast<Kvr64f>(y), 1), dst);
  return mapElements(MoveTaps{(static_cast<Kvr32f>(ref) - y) * (mu + mu)}, taps, len, window, old);
}

KvrStatus kvrsFIRLMSOne_DirectQ15_16s(Kvr16s src, Kvr16s ref, Kvr16s* dst, Kvr32s* taps, int tapsLen, int mu,
                                      Kvr16s* dlyLine, int* dlyLineIndex) noexcept {
  KVRS_CHECK(lms::checkDirect(dst, taps, tapsLen, dlyLine, dlyLineIndex));
  const Kvr16s* window = lms::pushInto(dlyLine, dlyLineIndex, tapsLen, src);
  underRounding(Rounding::nearest, [=] { lms::adaptNormalised(window, ref, dst, taps, tapsLen, mu); });
  return kvrStatusOk;
}
