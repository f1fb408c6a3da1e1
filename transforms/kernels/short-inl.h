// Transforms of up to 16 points: one butterfly on single numbers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SHORT_INL_H
#define KVRS_TRANSFORMS_KERNELS_SHORT_INL_H

#include "transforms/dft_engine.h"
#include "transforms/kernels/stage-inl.h"

namespace kvrs::dft {

template <int R, class T>
__attribute__((noinline)) void oneButterfly(const Points<const T>& src, const Points<T>& dst, T scale) {
  const Lanes<T, 1> d;
  using C = Complex<hn::Vec<Lanes<T, 1>>>;
  const T zero = 0;
  const T* const im = src.im != nullptr ? src.im : &zero;
  const size_t step = src.pairs ? 2 : 1, imStep = src.im != nullptr ? step : 0, outStep = dst.pairs ? 2 : 1;
  const auto factor = hn::Set(d, scale);
  anyButterfly<R>(
      d,
      [&](auto k) KVRS_UNROLLED {
        return C{hn::LoadU(d, src.re + k * step), hn::LoadU(d, im + k * imStep)};
      },
      [&](auto k, C x) KVRS_UNROLLED {
        hn::StoreU(hn::Mul(x.re, factor), d, dst.re + k * outStep);
        hn::StoreU(hn::Mul(x.im, factor), d, dst.im + k * outStep);
      });
}

// n up to kLastShort.
template <class T>
void runTiny(int n, const Points<const T>& src, const Points<T>& dst, T scale) {
  if (n == 1) return oneButterfly<1>(src, dst, scale);
  const auto run = [&](auto r) KVRS_UNROLLED { oneButterfly<r>(src, dst, scale); };
  n == 16 ? run(Index<16>()) : withRadix(n, run, [] {});
}

}  // namespace kvrs::dft

#endif
