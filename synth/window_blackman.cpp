// Blackman windows: w[n] = (alpha + 0.5) - c[n] - 4 alpha c[n]^2 with c[n] = 0.5 cos(2 pi n / (len - 1)), which is
// (alpha + 1)/2 - 0.5 cos(x) - alpha/2 cos(2x) with one cosine.
// SPDX-License-Identifier: MIT
#include "synth/window-inl.h"

namespace kvrs::window {
namespace {

constexpr double kAmplitude = 0.5;

// Up to so many pairs singles are weighed in single precision, and doubles by two lanes.
constexpr size_t kShortHalf = 512;

// Weights of integers, so many pairs a tile.
template <class T>
inline constexpr size_t kRestart = sizeof(T) == 2 ? 120 : 56;
constexpr size_t kScaledRestart = 16;

// Weights of cosine terms, in single precision.
struct SingleWeights {
  float offset, factor;

  explicit SingleWeights(float alpha) : offset(alpha + 0.5f), factor(-4 * alpha) {}

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V c) const {
    return hn::Add(hn::Mul(hn::Mul(c, c), hn::Set(d, factor)), hn::Sub(hn::Set(d, offset), c));
  }
};

// In double precision, of vectors or numbers.
struct DoubleWeights {
  double offset, factor;

  explicit DoubleWeights(double alpha) : offset(alpha + 0.5), factor(alpha * 4.0) {}

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V c) const {
    return hn::Sub(hn::Sub(hn::Set(d, offset), c), hn::Mul(hn::Mul(c, c), hn::Set(d, factor)));
  }
};

template <class T>
void blackmanOfIntegers(const T* src, T* dst, size_t n, float alpha) {
  weigh<float>(src, dst, n, kRestart<T>, singlesByFour(CosineTerm(kAmplitude, n), SingleWeights(alpha)));
}

// The cosine terms in double precision, one by one, as the tile has them.
template <class W>
auto termsOf(CosineSteps& steps) {
  return [&steps](W* terms, size_t count) {
    CosineSteps local = steps;
    for (size_t i = 0; i < count; ++i) terms[i] = static_cast<W>(local.next());
    steps = local;
  };
}

// Weights of a tile of terms, in place.
template <class W, class ToWeights>
KVRS_INLINE void toWeights(W* tile, size_t count, const ToWeights& convert) {
  const Lanes<W, kLanes<W>> d;
  for (size_t i = 0; i < count; i += kLanes<W>) hn::Store(convert(d, hn::Load(d, tile + i)), d, tile + i);
}

template <class T>
void blackmanShort(const T* src, T* dst, size_t n, Weight<T> alpha) {
  const CosineTerm term(kAmplitude, n);
  if constexpr (kIsDouble<T>) {
    CosinePairs pairs(term);
    weigh<double>(src, dst, n, kTile, [&](double* weights, size_t, size_t count) {
      const CosinePairs::D d;
      for (size_t i = 0; i < count; i += 2) hn::StoreU(pairs.next(), d, weights + i);
      toWeights(weights, count, DoubleWeights(alpha));
    });
  } else {
    CosineSteps steps(term);
    weigh<float>(src, dst, n, kTile, [&](float* weights, size_t, size_t count) {
      termsOf<float>(steps)(weights, count);
      toWeights(weights, count, SingleWeights(alpha));
    });
  }
}

template <class T>
void blackmanLong(const T* src, T* dst, size_t n, double alpha) {
  CosineSteps steps(CosineTerm(kAmplitude, n));
  weigh<double>(src, dst, n, kTile, [&](double* weights, size_t, size_t count) {
    termsOf<double>(steps)(weights, count);
    toWeights(weights, count, DoubleWeights(alpha));
  });
}

template <class T>
KvrStatus blackman(const T* src, T* dst, int len, Weight<T> alpha) {
  KVRS_CHECK(pointers(src, dst), require(len >= 3, kvrStatusBadLength), lengthOf<T>(len));
  return run<T>([=] {
    const size_t n = static_cast<size_t>(len);
    if (n == 3) {
      weighThree(src, dst);
    } else if constexpr (kIsInteger<T>) {
      blackmanOfIntegers(src, dst, n, alpha);
    } else if (n / 2 <= kShortHalf) {
      blackmanShort(src, dst, n, alpha);
    } else {
      blackmanLong(src, dst, n, alpha);
    }
  });
}

// The window whose sidelobes fall off fastest is not the classic one, whose alpha is this.
template <class T>
constexpr Weight<T> kStandard = static_cast<Weight<T>>(-0.16);

template <class T>
KvrStatus blackmanOpt(const T* src, T* dst, int len) {
  KVRS_CHECK(require(len >= 4, kvrStatusBadLength));
  const double r = 0.5 / cosine(kPi / static_cast<double>(len - 1));
  return blackman(src, dst, len, static_cast<Weight<T>>((0 - r) * r));
}

float fromQ15(int alphaQ15) {
  return static_cast<float>(alphaQ15) * static_cast<float>(kQ15);
}

// Products limited to 16 bits before they are rounded. A weight of 0 with an infinite scale leaves 0.
struct TimesScaled {
  template <class D, class V, class W>
  KVRS_INLINE V operator()(D d, V v, W w) const {
    const hn::DFromV<W> dw;
    const auto product = hn::Mul(Times::singles(dw, v), w);
    const auto number = hn::IfThenElseZero(hn::Eq(product, product), product);
    return hn::DemoteTo(d, nearestInt32(hn::Rebind<int32_t, D>(), bound(dw, number, -32768.0f, 32767.0f)));
  }
};

// Three elements: the middle one by the scale alone, halves away from zero.
Kvr16s scaledMiddle(Kvr16s value, double scale) {
  const double v = value * scale;
  if (v > 32767.0) return 32767;
  if (v < -32768.0) return -32768;
  if (v != v) return 0;
  return static_cast<Kvr16s>(v >= 0 ? v + 0.5 : v - 0.5);
}

void blackmanScaled(Kvr16s* srcDst, size_t n, int alphaQ15, int scaleFactor) {
  const size_t middle = n / 2;
  const double scale = pow(2.0, -static_cast<double>(scaleFactor));
  Kvr16s value;
  memcpy(&value, srcDst + middle, sizeof value);
  if (n == 3) {
    value = scaledMiddle(value, scale);
    memset(static_cast<void*>(srcDst), 0, 3 * sizeof(Kvr16s));
    memcpy(srcDst + 1, &value, sizeof value);
    return;
  }
  const float single = static_cast<float>(scale);
  const auto scaledWeights =
      [ weights = SingleWeights(fromQ15(alphaQ15)), single ](auto d, auto c) __attribute__((always_inline)) {
    return hn::Mul(weights(d, c), hn::Set(d, single));
  };
  const Kvr16s* src = srcDst;
  weighHalves<float>(src, srcDst, n, kScaledRestart, singlesByFour(CosineTerm(kAmplitude, n), scaledWeights),
                     TimesScaled());
  if (n % 2 != 0) {
    const Lanes<float, 1> d;
    const Lanes<Kvr16s, 1> d16;
    hn::StoreU(TimesScaled()(d16, hn::Set(d16, value), hn::Set(d, single)), d16, srcDst + middle);
  }
}

KvrStatus blackmanScaled(Kvr16s* srcDst, int len, int alphaQ15, int scaleFactor) {
  KVRS_CHECK(pointers(srcDst), require(len >= 3, kvrStatusBadLength), lengthOf<Kvr16s>(len));
  return run<Kvr16s>([=] { blackmanScaled(srcDst, static_cast<size_t>(len), alphaQ15, scaleFactor); });
}

}  // namespace
}  // namespace kvrs::window

using namespace kvrs::window;

KvrStatus kvrsWinBlackman_16s(const Kvr16s* src, Kvr16s* dst, int len, Kvr32f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_16s_I(Kvr16s* srcDst, int len, Kvr32f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinBlackman_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, Kvr32f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_16sc_I(Kvr16sc* srcDst, int len, Kvr32f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinBlackman_32f(const Kvr32f* src, Kvr32f* dst, int len, Kvr32f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_32f_I(Kvr32f* srcDst, int len, Kvr32f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinBlackman_32fc(const Kvr32fc* src, Kvr32fc* dst, int len, Kvr32f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_32fc_I(Kvr32fc* srcDst, int len, Kvr32f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinBlackman_64f(const Kvr64f* src, Kvr64f* dst, int len, Kvr64f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_64f_I(Kvr64f* srcDst, int len, Kvr64f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}
KvrStatus kvrsWinBlackman_64fc(const Kvr64fc* src, Kvr64fc* dst, int len, Kvr64f alpha) noexcept {
  return blackman(src, dst, len, alpha);
}
KvrStatus kvrsWinBlackman_64fc_I(Kvr64fc* srcDst, int len, Kvr64f alpha) noexcept {
  return blackman(srcDst, srcDst, len, alpha);
}

KvrStatus kvrsWinBlackmanStd_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr16s>);
}
KvrStatus kvrsWinBlackmanStd_16s_I(Kvr16s* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr16s>);
}
KvrStatus kvrsWinBlackmanStd_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr16sc>);
}
KvrStatus kvrsWinBlackmanStd_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr16sc>);
}
KvrStatus kvrsWinBlackmanStd_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr32f>);
}
KvrStatus kvrsWinBlackmanStd_32f_I(Kvr32f* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr32f>);
}
KvrStatus kvrsWinBlackmanStd_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr32fc>);
}
KvrStatus kvrsWinBlackmanStd_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr32fc>);
}
KvrStatus kvrsWinBlackmanStd_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr64f>);
}
KvrStatus kvrsWinBlackmanStd_64f_I(Kvr64f* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr64f>);
}
KvrStatus kvrsWinBlackmanStd_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return blackman(src, dst, len, kStandard<Kvr64fc>);
}
KvrStatus kvrsWinBlackmanStd_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return blackman(srcDst, srcDst, len, kStandard<Kvr64fc>);
}

KvrStatus kvrsWinBlackmanOpt_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_16s_I(Kvr16s* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}
KvrStatus kvrsWinBlackmanOpt_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}
KvrStatus kvrsWinBlackmanOpt_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_32f_I(Kvr32f* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}
KvrStatus kvrsWinBlackmanOpt_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}
KvrStatus kvrsWinBlackmanOpt_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_64f_I(Kvr64f* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}
KvrStatus kvrsWinBlackmanOpt_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return blackmanOpt(src, dst, len);
}
KvrStatus kvrsWinBlackmanOpt_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return blackmanOpt(srcDst, srcDst, len);
}

KvrStatus kvrsWinBlackmanQ15_16s(const Kvr16s* src, Kvr16s* dst, int len, int alphaQ15) noexcept {
  return blackman(src, dst, len, fromQ15(alphaQ15));
}
KvrStatus kvrsWinBlackmanQ15_16s_I(Kvr16s* srcDst, int len, int alphaQ15) noexcept {
  return blackman(srcDst, srcDst, len, fromQ15(alphaQ15));
}
KvrStatus kvrsWinBlackmanQ15_16sc(const Kvr16sc* src, Kvr16sc* dst, int len, int alphaQ15) noexcept {
  return blackman(src, dst, len, fromQ15(alphaQ15));
}
KvrStatus kvrsWinBlackmanQ15_16sc_I(Kvr16sc* srcDst, int len, int alphaQ15) noexcept {
  return blackman(srcDst, srcDst, len, fromQ15(alphaQ15));
}
KvrStatus kvrsWinBlackmanQ15_16s_ISfs(Kvr16s* srcDst, int len, int alphaQ15, int scaleFactor) noexcept {
  return blackmanScaled(srcDst, len, alphaQ15, scaleFactor);
}
