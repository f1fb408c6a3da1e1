// Pseudo-random numbers of uniform distribution.
// SPDX-License-Identifier: MIT
#include "frame/check.h"
#include "frame/generate.h"
#include "frame/halves.h"
#include "frame/rounding.h"
#include "frame/to_integer.h"
#include "kvrs/random.h"
#include "synth/random_stream.h"

namespace kvrs {
namespace {

// What a word becomes: word * scale + mean.
struct Range {
  double mean, scale;
};

// `low` and `high` of an integer type are added and subtracted as int.
template <class T>
Range rangeOf(T low, T high) {
  return {static_cast<double>(low + high) * 0.5, static_cast<double>(high - low) * 2.3283064365387e-10};
}

enum class To { nearest, zero };

template <To to>
struct InRange {
  Range range;

  template <class D, class V>
  KVRS_INLINE hn::Vec<D> operator()(D d, V words) const {
    return through<double>(
        [this](auto dst, auto part) __attribute__((always_inline)) { return this->convert(dst, part); }, d,
        words);
  }

 private:
  template <class D, class V>
  KVRS_INLINE hn::Vec<D> convert(D d, V words) const {
    using T = hn::TFromD<D>;
    const hn::Rebind<double, D> dd;
    const hn::Rebind<int32_t, D> di;
    const auto v =
        hn::Add(hn::Mul(hn::PromoteTo(dd, words), hn::Set(dd, range.scale)), hn::Set(dd, range.mean));
    if constexpr (sizeof(T) == 8) {
      return v;
    } else if constexpr (sizeof(T) == 4) {
      return hn::DemoteTo(d, v);
    } else {
      return hn::DemoteTo(d, to == To::nearest ? nearestInt32(di, v) : truncateInt32(di, v));
    }
  }
};

template <To to, class T>
void uniform(RandomStream& stream, Range range, T* dst, size_t len) {
  RandomStream local = stream;
  generate<int32_t>(InRange<to>{range}, dst, len, [&](int32_t* tile, size_t count) {
    for (size_t i = 0; i + 2 <= count; i += 2) {
      const auto words = local.nextTwo();
      tile[i] = words.first;
      tile[i + 1] = words.second;
    }
    if (count % 2 != 0) tile[count - 1] = local.next();
  });
  stream = local;
}

template <class T, uint32_t word>
struct UniformState {
  static constexpr uint32_t kWord = word;

  uint32_t idWord, seed;
  T low, high;
  alignas(8) Range range;
  RandomStream stream;

  void init(T fromLow, T toHigh, uint32_t fromSeed) {
    idWord = word;
    seed = fromSeed;
    low = fromLow;
    high = toHigh;
    range = rangeOf(low, high);
    stream.start(seed);
  }
};

template <class T, class State>
KvrStatus initAlloc(State** state, T low, T high, Kvr32u seed) {
  const KvrStatus status = allocateState(state);
  if (status == kvrStatusOk) (*state)->init(low, high, seed);
  return status;
}

template <class T, class State>
KvrStatus uniform(T* dst, int len, State* state) {
  KVRS_CHECK(pointers(dst, state), lengthOf<T>(len), context(state, State::kWord));
  uniform<To::zero>(state->stream, state->range, dst, static_cast<size_t>(len));
  return kvrStatusOk;
}

template <class T>
KvrStatus uniformDirect(T* dst, int len, T low, T high, Kvr32u* seed) {
  KVRS_CHECK(pointers(dst, seed), lengthOf<T>(len));
  const size_t n = static_cast<size_t>(len);
  const Range range = rangeOf(low, high);
  RandomStream stream;
  stream.start(*seed);
  if constexpr (sizeof(T) == 2) {
    // Pairs are rounded; the odd last sample is truncated.
    const size_t pairs = n & ~size_t{1};
    underRounding(Rounding::nearest, [&] { uniform<To::nearest>(stream, range, dst, pairs); });
    uniform<To::zero>(stream, range, dst + pairs, n - pairs);
  } else {
    uniform<To::nearest>(stream, range, dst, n);
  }
  *seed = stream.x1;
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs

using namespace kvrs;

struct KvrsRandUniState_8u : UniformState<Kvr8u, 35> {};
struct KvrsRandUniState_16s : UniformState<Kvr16s, 36> {};
struct KvrsRandUniState_32f : UniformState<Kvr32f, 37> {};

// Callers may have kept it.
static_assert(sizeof(KvrsRandUniState_16s) == 56);

KvrStatus kvrsRandUniformGetSize_16s(int* size) noexcept {
  KVRS_CHECK(pointers(size));
  *size = sizeof(KvrsRandUniState_16s);
  return kvrStatusOk;
}

KvrStatus kvrsRandUniformInit_16s(KvrsRandUniState_16s* state, Kvr16s low, Kvr16s high,
                                  Kvr32u seed) noexcept {
  KVRS_CHECK(pointers(state));
  state->init(low, high, seed);
  return kvrStatusOk;
}

KvrStatus kvrsRandUniformInitAlloc_8u(KvrsRandUniState_8u** state, Kvr8u low, Kvr8u high,
                                      Kvr32u seed) noexcept {
  return initAlloc(state, low, high, seed);
}
KvrStatus kvrsRandUniformInitAlloc_16s(KvrsRandUniState_16s** state, Kvr16s low, Kvr16s high,
                                       Kvr32u seed) noexcept {
  return initAlloc(state, low, high, seed);
}
KvrStatus kvrsRandUniformInitAlloc_32f(KvrsRandUniState_32f** state, Kvr32f low, Kvr32f high,
                                       Kvr32u seed) noexcept {
  return initAlloc(state, low, high, seed);
}

KvrStatus kvrsRandUniformFree_8u(KvrsRandUniState_8u* state) noexcept {
  return releaseState(state);
}
KvrStatus kvrsRandUniformFree_16s(KvrsRandUniState_16s* state) noexcept {
  return releaseState(state);
}
KvrStatus kvrsRandUniformFree_32f(KvrsRandUniState_32f* state) noexcept {
  return releaseState(state);
}

KvrStatus kvrsRandUniform_8u(Kvr8u* dst, int len, KvrsRandUniState_8u* state) noexcept {
  return uniform(dst, len, state);
}
KvrStatus kvrsRandUniform_16s(Kvr16s* dst, int len, KvrsRandUniState_16s* state) noexcept {
  return uniform(dst, len, state);
}
KvrStatus kvrsRandUniform_32f(Kvr32f* dst, int len, KvrsRandUniState_32f* state) noexcept {
  return uniform(dst, len, state);
}

KvrStatus kvrsRandUniform_Direct_16s(Kvr16s* dst, int len, Kvr16s low, Kvr16s high, Kvr32u* seed) noexcept {
  return uniformDirect(dst, len, low, high, seed);
}
KvrStatus kvrsRandUniform_Direct_32f(Kvr32f* dst, int len, Kvr32f low, Kvr32f high, Kvr32u* seed) noexcept {
  return uniformDirect(dst, len, low, high, seed);
}
KvrStatus kvrsRandUniform_Direct_64f(Kvr64f* dst, int len, Kvr64f low, Kvr64f high, Kvr32u* seed) noexcept {
  return uniformDirect(dst, len, low, high, seed);
}
