// Pseudo-random numbers of normal distribution, by the polar method.
//
// Pairs are drawn into tiles, where a pair that is refused is overwritten by the next one, so that no jump depends on
// it. Their radii and samples are then computed in vectors.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/generate.h"
#include "frame/halves.h"
#include "frame/to_integer.h"
#include "kvrs/random.h"
#include "synth/logarithm.h"
#include "synth/random_stream.h"

namespace kvrs {
namespace {

constexpr size_t kPairs = kTile / 2;

// Pairs (v, u), in the order of their samples, their u*u + v*v and the factors that these lead to.
struct Drawn {
  alignas(kVectorBytes) Kvr64fc pair[kPairs];
  alignas(kVectorBytes) double q[kPairs];
  alignas(kVectorBytes) double radius[kPairs];
};

void draw(RandomStream& stream, Drawn& drawn, size_t pairs) {
  constexpr double kScale = 4.656612873077e-10;
  for (size_t i = 0; i < pairs;) {
    const auto words = stream.nextTwo();
    const double u = words.first * kScale, v = words.second * kScale;
    const double q = u * u + v * v;
    drawn.pair[i] = {v, u};
    drawn.q[i] = q;
    i += static_cast<size_t>((q < 1.0) & (q != 0.0));
  }
}

struct Radius {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V q) const {
    return hn::Sqrt(hn::Div(hn::Mul(naturalLog(d, q), hn::Set(d, -2.0)), q));
  }
};

// (stdDev * radius) * value
struct Scaled {
  double stdDev;
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D d, V radius, Complex<V> value) const {
    const V factor = hn::Mul(hn::Set(d, stdDev), radius);
    return {hn::Mul(factor, value.re), hn::Mul(factor, value.im)};
  }
};

// Adds the mean and converts: of singles in their own precision, of others before.
template <class T>
struct Around {
  T mean;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V g) const {
    const hn::DFromV<V> dd;
    if constexpr (sizeof(T) == 8) {
      return hn::Add(g, hn::Set(dd, mean));
    } else if constexpr (sizeof(T) == 4) {
      return hn::Add(hn::DemoteTo(d, g), hn::Set(d, mean));
    } else {
      const hn::Rebind<int32_t, D> di;
      return hn::DemoteTo(d, truncateInt32(di, hn::Add(g, hn::Set(dd, static_cast<double>(mean)))));
    }
  }
};

template <class T>
struct Distribution {
  T mean, stdDev;

  // One sample.
  void make(double radius, double value, T* dst) const {
    const double g = (static_cast<double>(stdDev) * radius) * value;
    mapElements(Around<T>{mean}, dst, 1, &g);
  }
  // The samples of the pairs drawn, or all of them but the last one.
  void make(Drawn& drawn, T* dst, size_t len) const {
    const size_t pairs = (len + 1) / 2;
    mapElements(Radius(), drawn.radius, pairs, static_cast<const double*>(drawn.q));
    mapElements(Scaled{static_cast<double>(stdDev)}, drawn.pair, pairs,
                static_cast<const double*>(drawn.radius), static_cast<const Kvr64fc*>(drawn.pair));
    mapElements(Around<T>{mean}, dst, len, static_cast<const double*>(&drawn.pair[0].re));
  }
};

template <class T, uint32_t word>
struct GaussState {
  static constexpr uint32_t kWord = word;

  uint32_t idWord, seed;
  Distribution<T> distribution;
  RandomStream stream;
  int32_t needPair;  // 0 while the second sample of a pair is still to come
  alignas(8) double radius, savedU;
  double unused;

  void init(T mean, T stdDev, uint32_t fromSeed) {
    idWord = word;
    seed = fromSeed;
    distribution = {mean, stdDev};
    stream.start(seed);
    needPair = 1;
    radius = savedU = unused = 0;
  }
};

template <class T, class State>
KvrStatus initAlloc(State** state, T mean, T stdDev, Kvr32u seed) {
  const KvrStatus status = allocateState(state);
  if (status == kvrStatusOk) (*state)->init(mean, stdDev, seed);
  return status;
}

template <class T, class State>
KvrStatus gauss(T* dst, int len, State* state) {
  KVRS_CHECK(pointers(dst, state), lengthOf<T>(len), context(state, State::kWord));
  size_t left = static_cast<size_t>(len);
  if (state->needPair == 0) {
    state->distribution.make(state->radius, state->savedU, dst++);
    state->needPair = 1;
    --left;
  }
  Drawn drawn;
  RandomStream stream = state->stream;
  while (left != 0) {
    const size_t count = left < kTile ? left : kTile, pairs = (count + 1) / 2;
    draw(stream, drawn, pairs);
    const double lastU = drawn.pair[pairs - 1].im;
    state->distribution.make(drawn, dst, count);
    if (count % 2 != 0) {
      state->needPair = 0;
      state->radius = drawn.radius[pairs - 1];
      state->savedU = lastU;
    }
    dst += count;
    left -= count;
  }
  state->stream = stream;
  return kvrStatusOk;
}

template <class T>
KvrStatus gaussDirect(T* dst, int len, T mean, T stdDev, Kvr32u* seed) {
  KVRS_CHECK(pointers(dst, seed), lengthOf<T>(len));
  const Distribution<T> distribution{mean, stdDev};
  Drawn drawn;
  RandomStream stream;
  stream.start(*seed);
  for (size_t left = static_cast<size_t>(len); left != 0;) {
    const size_t count = left < kTile ? left : kTile;
    draw(stream, drawn, (count + 1) / 2);
    distribution.make(drawn, dst, count);
    dst += count;
    left -= count;
  }
  // A pair is always in hand, so that of an even length one is drawn that nobody uses.
  if (len % 2 == 0) draw(stream, drawn, 1);
  *seed = stream.x1;
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

struct KvrsRandGaussState_8u : GaussState<Kvr8u, 38> {};
struct KvrsRandGaussState_16s : GaussState<Kvr16s, 39> {};
struct KvrsRandGaussState_32f : GaussState<Kvr32f, 40> {};

// Callers may have kept it.
static_assert(sizeof(KvrsRandGaussState_16s) == 64);

KvrStatus kvrsRandGaussGetSize_16s(int* size) noexcept {
  KVRS_CHECK(pointers(size));
  *size = sizeof(KvrsRandGaussState_16s);
  return kvrStatusOk;
}

KvrStatus kvrsRandGaussInit_16s(KvrsRandGaussState_16s* state, Kvr16s mean, Kvr16s stdDev,
                                Kvr32u seed) noexcept {
  KVRS_CHECK(pointers(state));
  state->init(mean, stdDev, seed);
  return kvrStatusOk;
}

KvrStatus kvrsRandGaussInitAlloc_8u(KvrsRandGaussState_8u** state, Kvr8u mean, Kvr8u stdDev,
                                    Kvr32u seed) noexcept {
  return initAlloc(state, mean, stdDev, seed);
}
KvrStatus kvrsRandGaussInitAlloc_16s(KvrsRandGaussState_16s** state, Kvr16s mean, Kvr16s stdDev,
                                     Kvr32u seed) noexcept {
  return initAlloc(state, mean, stdDev, seed);
}
KvrStatus kvrsRandGaussInitAlloc_32f(KvrsRandGaussState_32f** state, Kvr32f mean, Kvr32f stdDev,
                                     Kvr32u seed) noexcept {
  return initAlloc(state, mean, stdDev, seed);
}

KvrStatus kvrsRandGaussFree_8u(KvrsRandGaussState_8u* state) noexcept {
  return releaseState(state);
}
KvrStatus kvrsRandGaussFree_16s(KvrsRandGaussState_16s* state) noexcept {
  return releaseState(state);
}
KvrStatus kvrsRandGaussFree_32f(KvrsRandGaussState_32f* state) noexcept {
  return releaseState(state);
}

KvrStatus kvrsRandGauss_8u(Kvr8u* dst, int len, KvrsRandGaussState_8u* state) noexcept {
  return gauss(dst, len, state);
}
KvrStatus kvrsRandGauss_16s(Kvr16s* dst, int len, KvrsRandGaussState_16s* state) noexcept {
  return gauss(dst, len, state);
}
KvrStatus kvrsRandGauss_32f(Kvr32f* dst, int len, KvrsRandGaussState_32f* state) noexcept {
  return gauss(dst, len, state);
}

KvrStatus kvrsRandGauss_Direct_16s(Kvr16s* dst, int len, Kvr16s mean, Kvr16s stdDev, Kvr32u* seed) noexcept {
  return gaussDirect(dst, len, mean, stdDev, seed);
}
KvrStatus kvrsRandGauss_Direct_32f(Kvr32f* dst, int len, Kvr32f mean, Kvr32f stdDev, Kvr32u* seed) noexcept {
  return gaussDirect(dst, len, mean, stdDev, seed);
}
KvrStatus kvrsRandGauss_Direct_64f(Kvr64f* dst, int len, Kvr64f mean, Kvr64f stdDev, Kvr32u* seed) noexcept {
  return gaussDirect(dst, len, mean, stdDev, seed);
}
