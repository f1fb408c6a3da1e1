// Hann and Hamming windows: w[n] = offset - c[n] with c[n] = a * cos(2 pi n / (len - 1)).
// SPDX-License-Identifier: MIT
#include "synth/window-inl.h"

namespace kvrs::window {
namespace {

struct Hann {
  static constexpr double kOffset = 0.5, kAmplitude = 0.5;
  static constexpr bool kEndsInZero = true;
};
struct Hamming {
  static constexpr double kOffset = 0.54, kAmplitude = 0.46;
  static constexpr bool kEndsInZero = false;
};

// Weights of integers, so many pairs a tile.
template <class T>
inline constexpr size_t kRestart = sizeof(T) == 2 ? 176 : 88;

template <class Kind, class T>
void raisedCosine(const T* src, T* dst, size_t n) {
  if (Kind::kEndsInZero && n == 3) return weighThree(src, dst);
  const CosineTerm term(Kind::kAmplitude, n);
  if constexpr (kIsInteger<T>) {
    const auto toWeights = [](auto d, auto c) __attribute__((always_inline)) {
      return hn::Sub(hn::Set(d, static_cast<float>(Kind::kOffset)), c);
    };
    weigh<float>(src, dst, n, kRestart<T>, singlesByFour(term, toWeights));
  } else {
    using W = Weight<T>;
    CosinePairs pairs(term);
    weigh<W>(src, dst, n, kTile, [&](W* weights, size_t, size_t count) {
      using D = CosinePairs::D;
      CosinePairs local = pairs;
      for (size_t i = 0; i < count; i += 2) {
        const auto w = hn::Sub(hn::Set(D(), Kind::kOffset), local.next());
        if constexpr (kIsDouble<T>) {
          hn::StoreU(w, D(), weights + i);
        } else {
          const hn::Rebind<float, D> d;
          hn::StoreU(hn::DemoteTo(d, w), d, weights + i);
        }
      }
      pairs = local;
    });
  }
}

template <class Kind, class T>
KvrStatus raisedCosine(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), require(len >= 3, kvrStatusBadLength), lengthOf<T>(len));
  return run<T>([=] { raisedCosine<Kind>(src, dst, static_cast<size_t>(len)); });
}

}  // namespace
}  // namespace kvrs::window

using namespace kvrs::window;

KvrStatus kvrsWinHann_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_16s_I(Kvr16s* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHann_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHann_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_32f_I(Kvr32f* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHann_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHann_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_64f_I(Kvr64f* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHann_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return raisedCosine<Hann>(src, dst, len);
}
KvrStatus kvrsWinHann_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return raisedCosine<Hann>(srcDst, srcDst, len);
}

KvrStatus kvrsWinHamming_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_16s_I(Kvr16s* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHamming_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHamming_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_32f_I(Kvr32f* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHamming_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHamming_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_64f_I(Kvr64f* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
KvrStatus kvrsWinHamming_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return raisedCosine<Hamming>(src, dst, len);
}
KvrStatus kvrsWinHamming_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return raisedCosine<Hamming>(srcDst, srcDst, len);
}
