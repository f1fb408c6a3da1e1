// Transforms of up to 16 points: one butterfly on single numbers.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SHORT_INL_H
#define KVRS_TRANSFORMS_KERNELS_SHORT_INL_H

#include "transforms/dft_engine.h"
#include "transforms/kernels/stage-inl.h"

namespace kvrs::dft {

// Calls body(Index<R>()) for a radix from 2 to 16.
template <class Body>
KVRS_INLINE void withRadix(int radix, Body body) {
  switch (radix) {
    case 2:
      return body(Index<2>());
    case 3:
      return body(Index<3>());
    case 4:
      return body(Index<4>());
    case 5:
      return body(Index<5>());
    case 6:
      return body(Index<6>());
    case 7:
      return body(Index<7>());
    case 8:
      return body(Index<8>());
    case 9:
      return body(Index<9>());
    case 10:
      return body(Index<10>());
    case 11:
      return body(Index<11>());
    case 12:
      return body(Index<12>());
    case 13:
      return body(Index<13>());
    case 14:
      return body(Index<14>());
    case 15:
      return body(Index<15>());
    default:
      return body(Index<16>());
  }
}

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
  withRadix(n, [&](auto r) KVRS_UNROLLED { oneButterfly<r>(src, dst, scale); });
}

}  // namespace kvrs::dft

#endif
