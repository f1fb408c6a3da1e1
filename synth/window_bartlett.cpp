// Bartlett windows: triangles.
// SPDX-License-Identifier: MIT
#include "synth/window-inl.h"

namespace kvrs::window {
namespace {

// Four lanes in single precision, from 0, s, 2s and 3s on.
class SingleRamp {
 public:
  explicit SingleRamp(float s)
      : w_(hn::Mul(hn::Iota(D(), 0.0f), hn::Set(D(), s))), step_(hn::Set(D(), 4 * s)) {}

  void operator()(float* weights, size_t, size_t count) {
    for (size_t i = 0; i < count; i += 4) {
      hn::StoreU(w_, D(), weights + i);
      w_ = hn::Add(w_, step_);
    }
  }

 private:
  using D = Lanes<float, 4>;
  hn::Vec<D> w_, step_;
};

// One sum in double precision.
class DoubleRamp {
 public:
  explicit DoubleRamp(double s) : w_(0), step_(s) {}

  void operator()(double* weights, size_t, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      weights[i] = w_;
      w_ += step_;
    }
  }

 private:
  double w_, step_;
};

// From so many pairs on, sums of singles would lose too much.
constexpr size_t kLongHalf = 641;

template <class T>
void bartlett(const T* src, T* dst, size_t n) {
  const double step = 2 / static_cast<double>(n - 1);
  if (n == 3) return weighThree(src, dst);
  if constexpr (kIsDouble<T>) {
    weigh<double>(src, dst, n, kTile, DoubleRamp(step));
  } else {
    const float single = static_cast<float>(step);
    if constexpr (!kIsInteger<T>) {
      if (n / 2 >= kLongHalf)
        return weigh<double>(src, dst, n, kTile, DoubleRamp(static_cast<double>(single)));
    }
    weigh<float>(src, dst, n, kTile, SingleRamp(single));
  }
}

template <class T>
KvrStatus bartlett(const T* src, T* dst, int len) {
  KVRS_CHECK(pointers(src, dst), require(len >= 3, kvrStatusBadLength), lengthOf<T>(len));
  return run<T>([=] { bartlett(src, dst, static_cast<size_t>(len)); });
}

}  // namespace
}  // namespace kvrs::window

using namespace kvrs::window;

KvrStatus kvrsWinBartlett_16s(const Kvr16s* src, Kvr16s* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_16s_I(Kvr16s* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
KvrStatus kvrsWinBartlett_16sc(const Kvr16sc* src, Kvr16sc* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_16sc_I(Kvr16sc* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
KvrStatus kvrsWinBartlett_32f(const Kvr32f* src, Kvr32f* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_32f_I(Kvr32f* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
KvrStatus kvrsWinBartlett_32fc(const Kvr32fc* src, Kvr32fc* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_32fc_I(Kvr32fc* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
KvrStatus kvrsWinBartlett_64f(const Kvr64f* src, Kvr64f* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_64f_I(Kvr64f* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
KvrStatus kvrsWinBartlett_64fc(const Kvr64fc* src, Kvr64fc* dst, int len) noexcept {
  return bartlett(src, dst, len);
}
KvrStatus kvrsWinBartlett_64fc_I(Kvr64fc* srcDst, int len) noexcept {
  return bartlett(srcDst, srcDst, len);
}
