// Short transforms: up to 16 points one butterfly on single numbers, and up to 256 points two passes over lanes.
//
// Of n = rows * columns points the index is columns * j + q, that of the results j' + rows * q':
//
//   rows j become j', for all columns q side by side, turned by exp(-2 pi i j' q / n)
//   the numbers are transposed in squares, so that rows are lanes
//   columns q become q', for all j' side by side
//
// Vectors reach beyond a row where that is shorter: the lanes behind it hold whatever is there and go nowhere.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SHORT_INL_H
#define KVRS_TRANSFORMS_KERNELS_SHORT_INL_H

#include <type_traits>

#include "frame/element.h"
#include "transforms/kernels/tile-inl.h"

namespace kvrs::dft {

// Of A * B points, A and B without a common factor, the transform is one of A x B and needs no turns (I. J. Good, The
// interaction algorithm and practical Fourier analysis, J. Royal Stat. Soc. B 20, 1958).
template <int A, int B, class D, class Load, class Emit>
KVRS_INLINE void primeFactors(D d, Load load, Emit emit) {
  using C = Cx<D>;
  constexpr auto resultOf = [](int j, int q) {
    int k = j;
    while (k % B != q) k += A;
    return k;
  };
  C x[A][B];
  unroll<B>([&](auto q) KVRS_UNROLLED {
    butterfly<A>(
        d, [&](auto j) KVRS_UNROLLED { return load(Index<(B * j + A * q) % (A * B)>()); },
        [&](auto j, C v) KVRS_UNROLLED { x[j][q] = v; });
  });
  unroll<A>([&](auto j) KVRS_UNROLLED {
    butterfly<B>(
        d, [&](auto q) KVRS_UNROLLED { return x[j][q]; },
        [&](auto q, C v) KVRS_UNROLLED { emit(Index<resultOf(j, q)>(), v); });
  });
}

template <int R, class D, class Load, class Emit>
KVRS_INLINE void shortButterfly(D d, Load load, Emit emit) {
  if constexpr (R == 6 || R == 10 || R == 14) {
    primeFactors<2, R / 2>(d, load, emit);
  } else if constexpr (R == 12) {
    primeFactors<4, 3>(d, load, emit);
  } else if constexpr (R == 15) {
    primeFactors<3, 5>(d, load, emit);
  } else {
    butterfly<R>(d, load, emit);
  }
}

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
  shortButterfly<R>(
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

// body(q) for blocks of L that cover `count`: several, the last one over the one before, or one that reaches beyond.
template <size_t L, class Body>
KVRS_INLINE void forShortBlocks(size_t count, Body body) {
  size_t q = 0;
  for (; q + L < count; q += L) body(q);
  body(count < L ? 0 : count - L);
}

template <class T>
using PairOf = std::conditional_t<sizeof(T) == 4, Kvr32fc, Kvr64fc>;

// The first `count` numbers from i on, fewer than lanes.
template <class D, class T>
__attribute__((noinline)) Complex<hn::Vec<D>> loadPointsFirst(D d, const Points<const T>& x, size_t i,
                                                              size_t count) {
  if (!x.pairs) {
    return {loadFirst(d, x.re + i, count), x.im == nullptr ? hn::Zero(d) : loadFirst(d, x.im + i, count)};
  }
  const auto v =
      Element<PairOf<T>>::loadFirst(count, d, reinterpret_cast<const PairOf<T>*>(x.first() + 2 * i));
  return x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re};
}
template <class D, class T>
__attribute__((noinline)) void storePointsFirst(D d, Complex<hn::Vec<D>> v, const Points<T>& x, size_t i,
                                                size_t count) {
  if (!x.pairs) {
    storeFirst(v.re, d, x.re + i, count);
    storeFirst(v.im, d, x.im + i, count);
  } else {
    Element<PairOf<T>>::storeFirst(count, x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re}, d,
                                   reinterpret_cast<PairOf<T>*>(x.first() + 2 * i));
  }
}

template <int R, class D, class T>
__attribute__((noinline)) void shortRows(D d, size_t columns, const Points<const T>& in, Planes<T> out,
                                         size_t pitch, const T* w) {
  using C = Cx<D>;
  constexpr size_t L = hn::MaxLanes(D());
  const size_t n = R * columns;
  forShortBlocks<L>(columns, [&](size_t q) KVRS_UNROLLED {
    shortButterfly<R>(
        d,
        [&](auto k) KVRS_UNROLLED {
          const size_t at = k * columns + q;
          return at + L <= n ? loadPoints(d, in, at) : loadPointsFirst(d, in, at, n - at);
        },
        [&](auto k, C x) KVRS_UNROLLED {
          if constexpr (k > 0) {
            const T* const at = w + (2 * k - 2) * columns + q;
            x = mul(x, C{hn::LoadU(d, at), hn::LoadU(d, at + columns)});
          }
          out.store(d, k * pitch + q, x);
        });
  });
}

// A row that a vector reaches beyond is stored before the next one.
template <int R, class D, class T>
__attribute__((noinline)) void shortColumns(D d, size_t rows, Planes<const T> in, size_t pitch,
                                            const Points<T>& out, T scale) {
  using C = Cx<D>;
  constexpr size_t L = hn::MaxLanes(D());
  const size_t n = R * rows;
  const auto factor = hn::Set(d, scale);
  forShortBlocks<L>(rows, [&](size_t j) KVRS_UNROLLED {
    C y[R];
    shortButterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, k * pitch + j); },
        [&](auto k, C x) KVRS_UNROLLED { y[k] = mul(x, factor); });
    unroll<R>([&](auto k) KVRS_UNROLLED {
      const size_t at = k * rows + j;
      at + L <= n ? storePoints(d, y[k], out, at) : storePointsFirst(d, y[k], out, at, n - at);
    });
  });
}

// Rows to columns in squares. Rows that there are not are copies of another one: what memory happens to hold could be
// subnormal, and slow.
template <class D, class T>
__attribute__((noinline)) void shortTranspose(D d, size_t rows, size_t columns, const T* in, size_t pitch,
                                              T* out, size_t outPitch) {
  constexpr int L = static_cast<int>(hn::MaxLanes(D()));
  for (size_t q = 0; q < columns; q += L) {
    for (size_t j = 0; j < rows; j += L) {
      hn::Vec<D> x[L];
      unroll<L>([&](auto i)
                    KVRS_UNROLLED { x[i] = hn::LoadU(d, in + (j + i < rows ? j + i : j) * pitch + q); });
      transpose(d, x);
      unroll<L>([&](auto i) KVRS_UNROLLED { hn::StoreU(x[i], d, out + (q + i) * outPitch + j); });
    }
  }
}

// Of so few rows that real and imaginary parts fill a square together; they become the halves of a vector.
template <class D, class T>
__attribute__((noinline)) void shortTransposeBoth(D d, size_t rows, size_t columns, Planes<const T> in,
                                                  size_t pitch, T* out) {
  constexpr int L = static_cast<int>(hn::MaxLanes(D())), kHalf = L / 2;
  for (size_t q = 0; q < columns; q += L) {
    hn::Vec<D> x[L];
    unroll<kHalf>([&](auto i) KVRS_UNROLLED {
      const size_t at = (i < rows ? i : 0) * pitch + q;
      x[i] = hn::LoadU(d, in.re + at);
      x[kHalf + i] = hn::LoadU(d, in.im + at);
    });
    transpose(d, x);
    unroll<L>([&](auto i) KVRS_UNROLLED { hn::StoreU(x[i], d, out + (q + i) * L); });
  }
}

template <class T>
void runShort(const Mixed<T>& x, const Points<const T>& src, const Points<T>& dst, T scale) {
  constexpr size_t L = kLanes<T>, kSide = 16, kArea = kSide * kSide;
  const Lanes<T, L> d;
  alignas(64) T a[2 * kArea], b[2 * kArea + L];
  const size_t rows = static_cast<size_t>(x.plan.radix[0]), columns = static_cast<size_t>(x.plan.radix[1]);
  const Planes<T> turned{a, a + kArea};
  withRadix(x.plan.radix[0],
            [&](auto r) KVRS_UNROLLED { shortRows<r>(d, columns, src, turned, kSide, x.turns); });
  Planes<const T> lanes{b, b + kArea};
  size_t pitch = kSide;
  const Squares squares = shortSquares<T>(static_cast<int>(rows), static_cast<int>(columns));
  if (squares == Squares::whole) {
    shortTranspose(d, rows, columns, turned.re, kSide, b, pitch);
    shortTranspose(d, rows, columns, turned.im, kSide, b + kArea, pitch);
  }
  // In both forms of few rows vectors reach beyond the last one.
  if constexpr (kHasSmallSquares) {
    constexpr size_t kHalf = L / 2;
    if (squares == Squares::small) {
      const Lanes<T, kHalf> half;
      pitch = kHalf;
      lanes.im = b + kHalf * kHalf;
      shortTranspose(half, rows, columns, turned.re, kSide, b, pitch);
      shortTranspose(half, rows, columns, turned.im, kSide, b + kHalf * kHalf, pitch);
      hn::StoreU(hn::Zero(d), d, b + 2 * kHalf * kHalf);
    } else if (squares == Squares::shared) {
      pitch = L;
      lanes.im = b + kHalf;
      shortTransposeBoth(d, rows, columns, Planes<const T>{turned.re, turned.im}, kSide, b);
      hn::StoreU(hn::Zero(d), d, b + (columns + L - 1) / L * L * L);
    }
  }
  withRadix(x.plan.radix[1],
            [&](auto r) KVRS_UNROLLED { shortColumns<r>(d, rows, lanes, pitch, dst, scale); });
}

}  // namespace kvrs::dft

#endif
