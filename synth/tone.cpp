// Tones: cosines and complex exponentials.
//
// All but the Q15 tones run the recurrence of the cosine, cos(a + b) = 2 cos(b) * cos(a) - cos(a - b), on several samples
// at once, the accurate way in doubles from end to end, the fast way in the sample's precision with a new start every
// 1,024 samples. The samples of a complex tone are taken as numbers, real and imaginary parts in turn, that run it alike.
// SPDX-License-Identifier: MIT
#include "kvrs/tone.h"

#include <type_traits>

#include "frame/check.h"
#include "frame/generate.h"
#include "frame/rounding.h"
#include "frame/sincos.h"
#include "frame/unroll.h"
#include "kvrscore.h"
#include "synth/phase.h"
#include "synth/sample_formats.h"

namespace kvrs {
namespace {

struct Tone {
  double magn;
  double w;  // radians a sample
  double phase;

  // Stores the kParts numbers of the sample at an angle.
  template <size_t kParts>
  void sample(double angle, double* numbers) const {
    numbers[0] = magn * cosine(angle);
    if constexpr (kParts == 2) numbers[1] = magn * sine(angle);
  }
};

// Continues the two samples at x until there are `samples` of them.
template <size_t kParts>
void recur(double c, double* x, size_t samples) {
  for (size_t i = 2 * kParts; i < samples * kParts; ++i) x[i] = c * x[i - kParts] - x[i - 2 * kParts];
}

// Two samples at a time.
template <size_t kParts>
class AccurateTone {
 public:
  explicit AccurateTone(const Tone& tone) {
    const double c = 2 * cosine(tone.w);
    double x[4 * kParts];
    tone.sample<kParts>(tone.phase, x);
    tone.sample<kParts>(tone.phase + tone.w, x + kParts);
    recur<kParts>(c, x, 4);
    for (size_t k = 0; k < kParts; ++k) {
      now_[k] = hn::LoadU(d, x + 2 * k);
      next_[k] = hn::LoadU(d, x + 2 * (kParts + k));
    }
    factor_ = hn::Set(d, c * c - 2);
  }

  void make(double* tile, size_t count) {
    for (size_t i = 0; i < count; i += 2 * kParts) {
      for (size_t k = 0; k < kParts; ++k) {
        hn::StoreU(now_[k], d, tile + i + 2 * k);
        const auto after = hn::Sub(hn::Mul(factor_, next_[k]), now_[k]);
        now_[k] = next_[k];
        next_[k] = after;
      }
    }
  }

 private:
  static constexpr Lanes<double, 2> d{};
  using V = hn::Vec<Lanes<double, 2>>;
  V now_[kParts], next_[kParts], factor_;
};

template <class T>
void accurate(const Tone& tone, T* dst, size_t len) {
  AccurateTone<kPartsOf<T>> state(tone);
  generate<double>(
      FromDouble<Integer::truncated>(), reinterpret_cast<PartOf<T>*>(dst),
      len * kPartsOf<T>, [&](double* tile, size_t count) __attribute__((always_inline)) {
        state.make(tile, count);
      });
}

// Pieces that the fast way starts anew.
constexpr size_t kPiece = 1024;

// One piece. F is the precision in which it runs: 32 bytes of numbers at once from those of one and of two turns ago.
template <class F, size_t kParts>
struct FastTone {
  static constexpr size_t kNumbers = 32 / sizeof(F), kSeeds = 2 * kNumbers;

  alignas(kVectorBytes) F numbers[kPiece * kParts];
  double seeds[kSeeds];  // the first of them, unrounded
  double c;
  hn::Vec<Lanes<F, kNumbers>> factor;

  explicit FastTone(const Tone& tone) : c(2 * cosine(tone.w)) {
    // 2 cos(2w), 2 cos(4w), 2 cos(8w)
    double multiple = c * c * (c * c - 4) + 2;
    if (kNumbers / kParts == 2) multiple = c * c - 2;
    if (kNumbers / kParts == 8) multiple = multiple * multiple - 2;
    factor = hn::Set(Lanes<F, kNumbers>(), static_cast<F>(multiple));
  }

  // The first `count` numbers of the piece from sample i on.
  void make(const Tone& tone, double i, size_t count) {
    tone.sample<kParts>(tone.w * i + tone.phase, seeds);
    tone.sample<kParts>(tone.w * (i + 1) + tone.phase, seeds + kParts);
    recur<kParts>(c, seeds, kSeeds / kParts);
    for (size_t k = 0; k < kSeeds; ++k) numbers[k] = static_cast<F>(seeds[k]);
    const Lanes<F, kNumbers> d;
    constexpr size_t N = hn::MaxLanes(d);
    constexpr int kVectors = static_cast<int>(kNumbers / N);
    hn::Vec<decltype(d)> before[kVectors], last[kVectors];
    unroll<kVectors>([&](auto k) KVRS_UNROLLED {
      before[k] = hn::Load(d, numbers + k * N);
      last[k] = hn::Load(d, numbers + kNumbers + k * N);
    });
    for (size_t at = kSeeds; at < count; at += kNumbers) {
      unroll<kVectors>([&](auto k) KVRS_UNROLLED {
        const auto next = hn::Sub(hn::Mul(factor, last[k]), before[k]);
        before[k] = last[k];
        last[k] = next;
        hn::Store(next, d, numbers + at + k * N);
      });
    }
  }
};

template <class T>
void fast(const Tone& tone, T* dst, size_t len) {
  using Part = PartOf<T>;
  constexpr size_t kParts = kPartsOf<T>;
  using F = std::conditional_t<sizeof(Part) == 8, double, float>;
  FastTone<F, kParts> piece(tone);
  Part* parts = reinterpret_cast<Part*>(dst);
  for (size_t i = 0; i < len; i += kPiece) {
    const size_t count = (len - i < kPiece ? len - i : kPiece) * kParts;
    const size_t seeds = count < piece.kSeeds ? count : piece.kSeeds;
    piece.make(tone, static_cast<double>(i), count);
    mapElements(FromDouble<Integer::truncated>(), parts, seeds, static_cast<const double*>(piece.seeds));
    mapElements(FromSingle(), parts + seeds, count - seeds, static_cast<const F*>(piece.numbers + seeds));
    parts += count;
  }
}

template <class T, class M, class P>
KvrStatus direct(T* dst, int len, M magn, P rFreq, P* phase, KvrHintAlgorithm hint) {
  KVRS_CHECK(pointers(phase), require(magn > 0, kvrStatusBadToneMagnitude),
             frequency(rFreq, kvrStatusBadToneFreq), phaseAt(phase, kvrStatusBadTonePhase), pointers(dst),
             lengthOf<T>(len));
  const Tone tone{static_cast<double>(magn), static_cast<double>(rFreq) * kTwoPi,
                  static_cast<double>(*phase)};
  *phase = phaseAfter(*phase, rFreq, len);
  const size_t n = static_cast<size_t>(len);
  if (hint != kvrHintFast) {
    accurate(tone, dst, n);
  } else if constexpr (sizeof(PartOf<T>) == 2) {
    underRounding(Rounding::nearest, [&] { fast(tone, dst, n); });
  } else {
    fast(tone, dst, n);
  }
  return kvrStatusOk;
}

// Each sample a cosine of its own, of w * n + phase with n from `first` on.
void independent(const Tone& tone, Kvr16s* dst, size_t len, double first) {
  constexpr size_t N = kLanes<double>;
  const Lanes<double, N> d;
  auto n = hn::Add(hn::Iota(d, 0.0), hn::Set(d, first));
  generateBlocks<N>(dst, len, [&](auto d16) {
    const auto angle = hn::Add(hn::Mul(hn::Set(d, tone.w), n), hn::Set(d, tone.phase));
    n = hn::Add(n, hn::Set(d, static_cast<double>(N)));
    const auto v = hn::Mul(hn::Set(d, tone.magn), sinCos<SinCosFor::doubles>(d, angle).cos);
    return FromDouble<Integer::roundedAway>()(d16, v);
  });
}

}  // namespace

namespace check {
namespace {

KvrStatus toneQ15(int magn, int rFreqQ15, int phaseQ15) {
  return firstBad(require(magn >= 1, kvrStatusBadToneMagnitude),
                  q15(rFreqQ15, 0, kFreqQ15, kvrStatusBadToneFreq),
                  q15(phaseQ15, 0, kPhaseQ15, kvrStatusBadTonePhase));
}

}  // namespace
}  // namespace check
}  // namespace kvrs

using namespace kvrs;

struct KvrsToneState_16s {
  static constexpr uint32_t kWord = 0x434D4148;  // "HAMC"

  uint32_t idWord;
  alignas(8) double magn;
  double rFreq, phase;
  uint32_t count;  // samples made so far
  int32_t allocated;
  int32_t started;

  void init(Kvr16s magnitude, Kvr16s rFreqQ15, Kvr32s phaseQ15) {
    idWord = kWord;
    magn = magnitude;
    rFreq = rFreqQ15 * kQ15;
    phase = phaseQ15 * kQ15;
    count = 0;
    allocated = started = 0;
  }
};

// Callers may have kept it.
static_assert(sizeof(KvrsToneState_16s) == 48);

KvrStatus kvrsToneGetStateSizeQ15_16s(int* size) noexcept {
  KVRS_CHECK(pointers(size));
  *size = sizeof(KvrsToneState_16s);
  return kvrStatusOk;
}

KvrStatus kvrsToneInitQ15_16s(KvrsToneState_16s* state, Kvr16s magn, Kvr16s rFreqQ15,
                              Kvr32s phaseQ15) noexcept {
  KVRS_CHECK(pointers(state), toneQ15(magn, rFreqQ15, phaseQ15));
  state->init(magn, rFreqQ15, phaseQ15);
  return kvrStatusOk;
}

KvrStatus kvrsToneInitAllocQ15_16s(KvrsToneState_16s** state, Kvr16s magn, Kvr16s rFreqQ15,
                                   Kvr32s phaseQ15) noexcept {
  KVRS_CHECK(pointers(state), toneQ15(magn, rFreqQ15, phaseQ15));
  auto* block = static_cast<KvrsToneState_16s*>(kvrMalloc(sizeof(KvrsToneState_16s)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  block->init(magn, rFreqQ15, phaseQ15);
  block->allocated = 1;
  *state = block;
  return kvrStatusOk;
}

KvrStatus kvrsToneFree(KvrsToneState_16s* state) noexcept {
  KVRS_CHECK(context(state, KvrsToneState_16s::kWord));
  if (state->allocated == 1) kvrFree(state);
  return kvrStatusOk;
}

KvrStatus kvrsToneQ15_16s(Kvr16s* dst, int len, KvrsToneState_16s* state) noexcept {
  KVRS_CHECK(pointers(dst, state), lengthOf<Kvr16s>(len), context(state, KvrsToneState_16s::kWord));
  const Tone tone{state->magn, kTwoPi * state->rFreq, state->phase};
  independent(tone, dst, static_cast<size_t>(len), state->count);
  state->count += static_cast<uint32_t>(len);
  state->started = 1;
  return kvrStatusOk;
}

KvrStatus kvrsToneQ15_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr16s rFreqQ15,
                                 Kvr32s phaseQ15) noexcept {
  KVRS_CHECK(pointers(dst), lengthOf<Kvr16s>(len), toneQ15(magn, rFreqQ15, phaseQ15));
  const Tone tone{static_cast<double>(magn), kTwoPi * (rFreqQ15 * kQ15), phaseQ15 * kQ15};
  independent(tone, dst, static_cast<size_t>(len), 0);
  return kvrStatusOk;
}

KvrStatus kvrsTone_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f* phase,
                              KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
KvrStatus kvrsTone_Direct_16sc(Kvr16sc* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f* phase,
                               KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
KvrStatus kvrsTone_Direct_32f(Kvr32f* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f* phase,
                              KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
KvrStatus kvrsTone_Direct_32fc(Kvr32fc* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f* phase,
                               KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
KvrStatus kvrsTone_Direct_64f(Kvr64f* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f* phase,
                              KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
KvrStatus kvrsTone_Direct_64fc(Kvr64fc* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f* phase,
                               KvrHintAlgorithm hint) noexcept {
  return direct(dst, len, magn, rFreq, phase, hint);
}
