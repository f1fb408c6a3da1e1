// Triangles of any asymmetry.
//
// A wave falls for L2 = pi + asym radians from magn to -magn and rises for L1 = pi - asym. Each sample is the last one and
// the step of the leg; what oversteps an end is reflected there, stretched by the ratio of the two slopes.
// SPDX-License-Identifier: MIT
#include "kvrs/triangle.h"

#include "frame/check.h"
#include "frame/generate.h"
#include "kvrscore.h"
#include "synth/phase.h"
#include "synth/sample_formats.h"

namespace kvrs {
namespace {

struct Legs {
  double stepDown, stepUp, ratioDown, ratioUp, wrapUp, wrapDown, offsDown, offsUp;

  Legs() = default;
  Legs(double magn, double rFreq, double asym) {
    const double l2 = kPi + asym, l1 = kPi - asym, k = 12.566370614359172 * magn;
    stepDown = -(k * rFreq) / l2;
    stepUp = (k * rFreq) / l1;
    wrapDown = k / l2;
    wrapUp = k / l1;
    ratioDown = -l1 / l2;
    offsDown = magn - magn * ratioDown;
    ratioUp = -l2 / l1;
    offsUp = magn * ratioUp - magn;
  }
};

struct Wave {
  double step, value;
  int32_t rising;

  Wave(double wasStep, double wasValue, int32_t wasRising)
      : step(wasStep), value(wasValue), rising(wasRising) {}
  Wave(const Legs& legs, double magn, double asym, double phase) {
    const double l2 = kPi + asym, l1 = kPi - asym;
    if (phase < l2) {
      value = (1 - (phase + phase) / l2) * magn;
      step = legs.stepDown;
    } else {
      value = (((phase - l2) * 2.0) / l1 - 1.0) * magn;
      step = legs.stepUp;
    }
    rising = step > 0;
  }

  KVRS_INLINE double next(const Legs& legs, double magn) {
    const double sample = value;
    value += step;
    if (rising && value > magn) {
      const double reflected = legs.ratioDown * value + legs.offsDown;
      // Otherwise a whole falling leg is overstepped: always one of no length, whose ratio is infinite.
      if (reflected >= -magn) {
        value = reflected;
        step = legs.stepDown;
        rising = 0;
      } else {
        value -= legs.wrapUp;
      }
    } else if (!rising && value < -magn) {
      const double reflected = legs.ratioUp * value + legs.offsUp;
      if (reflected <= magn) {
        value = reflected;
        step = legs.stepUp;
        rising = 1;
      } else {
        value += legs.wrapDown;
      }
    }
    return sample;
  }
};

void real(const Legs& legs, Wave& wave, double magn, auto* dst, size_t len) {
  generate<double>(FromDouble<Integer::roundedAway>(), dst, len, [&](double* tile, size_t count) {
    Wave local = wave;
    for (size_t i = 0; i < count; ++i) tile[i] = local.next(legs, magn);
    wave = local;
  });
}

void complex(const Legs& legs, Wave re, Wave im, double magn, auto* parts, size_t len) {
  generate<double>(FromDouble<Integer::roundedAway>(), parts, 2 * len, [&](double* tile, size_t count) {
    for (size_t i = 0; i < count; i += 2) {
      tile[i] = re.next(legs, magn);
      tile[i + 1] = im.next(legs, magn);
    }
  });
}

// The imaginary part is behind the real one by half of its rising leg, a quarter of a period where both legs are alike.
double imaginaryPhase(double phase, double asym) {
  const double shifted = phase + (kTwoPi + (kPi + asym)) * 0.5;
  return shifted >= kTwoPi ? shifted - kTwoPi : shifted;
}

template <class T, class M, class P>
KvrStatus direct(T* dst, int len, M magn, P rFreq, P asym, P* phase) {
  KVRS_CHECK(pointers(phase), require(magn > 0, kvrStatusBadTriangleMagnitude),
             frequency(rFreq, kvrStatusBadTriangleFreq), asymmetry(asym, kvrStatusBadTriangleAsym),
             phaseAt(phase, kvrStatusBadTrianglePhase), pointers(dst), lengthOf<T>(len));
  const double a = static_cast<double>(magn), h = static_cast<double>(asym),
               start = static_cast<double>(*phase);
  *phase = phaseAfter(*phase, rFreq, len);
  const Legs legs(a, static_cast<double>(rFreq), h);
  Wave wave(legs, a, h, start);
  if constexpr (kPartsOf<T> == 1) {
    real(legs, wave, a, dst, static_cast<size_t>(len));
  } else {
    const Wave quadrature(legs, a, h, imaginaryPhase(start, h));
    complex(legs, wave, quadrature, a, reinterpret_cast<PartOf<T>*>(dst), static_cast<size_t>(len));
  }
  return kvrStatusOk;
}

}  // namespace

namespace check {
namespace {

KvrStatus triangleQ15(int magn, int rFreqQ15, int phaseQ15, int asymQ15) {
  return firstBad(require(magn >= 1, kvrStatusBadTriangleMagnitude),
                  q15(rFreqQ15, 0, kFreqQ15, kvrStatusBadTriangleFreq),
                  q15(phaseQ15, 0, kPhaseQ15, kvrStatusBadTrianglePhase),
                  q15(asymQ15, -kAsymQ15, kAsymQ15, kvrStatusBadTriangleAsym));
}

}  // namespace
}  // namespace check
}  // namespace kvrs

using namespace kvrs;

struct KvrsTriangleState_16s {
  static constexpr uint32_t kWord = 0x434D4149;  // "IAMC"

  uint32_t idWord;
  alignas(8) double magn;
  double rFreq, phase, asym;
  Legs legs;
  double step, value;  // from here on a Wave, which as a member would end with padding
  int32_t rising;
  int32_t allocated;
  int32_t started;

  void init(Kvr16s magnitude, Kvr16s rFreqQ15, Kvr32s phaseQ15, Kvr32s asymQ15) {
    *this = {};
    idWord = kWord;
    magn = magnitude;
    rFreq = rFreqQ15 * kQ15;
    phase = phaseQ15 * kQ15;
    asym = asymQ15 * kQ15;
  }

  Wave wave() const { return {step, value, rising}; }
  void keep(const Wave& from) {
    step = from.step;
    value = from.value;
    rising = from.rising;
  }
};

// Callers may have kept it.
static_assert(sizeof(KvrsTriangleState_16s) == 136);

KvrStatus kvrsTriangleGetStateSizeQ15_16s(int* size) noexcept {
  KVRS_CHECK(pointers(size));
  *size = sizeof(KvrsTriangleState_16s);
  return kvrStatusOk;
}

KvrStatus kvrsTriangleInitQ15_16s(KvrsTriangleState_16s* state, Kvr16s magn, Kvr16s rFreqQ15, Kvr32s phaseQ15,
                                  Kvr32s asymQ15) noexcept {
  KVRS_CHECK(pointers(state), triangleQ15(magn, rFreqQ15, phaseQ15, asymQ15));
  state->init(magn, rFreqQ15, phaseQ15, asymQ15);
  return kvrStatusOk;
}

KvrStatus kvrsTriangleInitAllocQ15_16s(KvrsTriangleState_16s** state, Kvr16s magn, Kvr16s rFreqQ15,
                                       Kvr32s phaseQ15, Kvr32s asymQ15) noexcept {
  KVRS_CHECK(pointers(state), triangleQ15(magn, rFreqQ15, phaseQ15, asymQ15));
  auto* block = static_cast<KvrsTriangleState_16s*>(kvrMalloc(sizeof(KvrsTriangleState_16s)));
  if (block == nullptr) return kvrStatusOutOfMemory;
  block->init(magn, rFreqQ15, phaseQ15, asymQ15);
  block->allocated = 1;
  *state = block;
  return kvrStatusOk;
}

KvrStatus kvrsTriangleFree(KvrsTriangleState_16s* state) noexcept {
  KVRS_CHECK(context(state, KvrsTriangleState_16s::kWord));
  if (state->allocated == 1) kvrFree(state);
  return kvrStatusOk;
}

KvrStatus kvrsTriangleQ15_16s(Kvr16s* dst, int len, KvrsTriangleState_16s* state) noexcept {
  KVRS_CHECK(pointers(dst, state), lengthOf<Kvr16s>(len), context(state, KvrsTriangleState_16s::kWord));
  if (!state->started) {
    state->legs = Legs(state->magn, state->rFreq, state->asym);
    state->keep({state->legs, state->magn, state->asym, state->phase});
    state->started = 1;
  }
  Wave wave = state->wave();
  real(state->legs, wave, state->magn, dst, static_cast<size_t>(len));
  state->keep(wave);
  return kvrStatusOk;
}

KvrStatus kvrsTriangleQ15_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr16s rFreqQ15, Kvr32s phaseQ15,
                                     Kvr32s asymQ15) noexcept {
  KVRS_CHECK(pointers(dst), lengthOf<Kvr16s>(len), triangleQ15(magn, rFreqQ15, phaseQ15, asymQ15));
  // Exact in single precision.
  const auto single = [](int q15) { return static_cast<float>(q15) * static_cast<float>(kQ15); };
  float phase = single(phaseQ15);
  return direct(dst, len, magn, single(rFreqQ15), single(asymQ15), &phase);
}

KvrStatus kvrsTriangle_Direct_16s(Kvr16s* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f asym,
                                  Kvr32f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
KvrStatus kvrsTriangle_Direct_16sc(Kvr16sc* dst, int len, Kvr16s magn, Kvr32f rFreq, Kvr32f asym,
                                   Kvr32f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
KvrStatus kvrsTriangle_Direct_32f(Kvr32f* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f asym,
                                  Kvr32f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
KvrStatus kvrsTriangle_Direct_32fc(Kvr32fc* dst, int len, Kvr32f magn, Kvr32f rFreq, Kvr32f asym,
                                   Kvr32f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
KvrStatus kvrsTriangle_Direct_64f(Kvr64f* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f asym,
                                  Kvr64f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
KvrStatus kvrsTriangle_Direct_64fc(Kvr64fc* dst, int len, Kvr64f magn, Kvr64f rFreq, Kvr64f asym,
                                   Kvr64f* phase) noexcept {
  return direct(dst, len, magn, rFreq, asym, phase);
}
