// Strips of columns: out of memory into a tile, transformed there, and out of it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_TILE_INL_H
#define KVRS_TRANSFORMS_KERNELS_TILE_INL_H

#include "transforms/dft_engine.h"
#include "transforms/kernels/stage-inl.h"

namespace kvrs::dft {

// Complex numbers i, i + 1, ... of pairs, in their order.
template <class D, class T>
KVRS_INLINE Complex<hn::Vec<D>> loadPairs(D d, const T* p) {
  if constexpr (hn::MaxLanes(D()) == 1) {
    return {hn::LoadU(d, p), hn::LoadU(d, p + 1)};
  } else {
    const auto a = hn::LoadU(d, p), b = hn::LoadU(d, p + hn::MaxLanes(d));
    return {hn::ConcatEven(d, b, a), hn::ConcatOdd(d, b, a)};
  }
}
template <class D, class T>
KVRS_INLINE void storePairs(D d, Complex<hn::Vec<D>> x, T* p) {
  if constexpr (hn::MaxLanes(D()) == 1) {
    hn::StoreU(x.re, d, p);
    hn::StoreU(x.im, d, p + 1);
  } else {
    storeInterleaved(x.re, x.im, d, p);
  }
}

template <class D, class P>
KVRS_INLINE Complex<hn::Vec<D>> loadPoints(D d, const Points<P>& x, size_t i) {
  if (!x.pairs) return {hn::LoadU(d, x.re + i), x.im == nullptr ? hn::Zero(d) : hn::LoadU(d, x.im + i)};
  const auto v = loadPairs(d, x.first() + 2 * i);
  return x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re};
}
template <class D, class T>
KVRS_INLINE void storePoints(D d, Complex<hn::Vec<D>> v, const Points<T>& x, size_t i) {
  if (!x.pairs) {
    hn::StoreU(v.re, d, x.re + i);
    hn::StoreU(v.im, d, x.im + i);
  } else {
    storePairs(d, x.re < x.im ? v : Complex<hn::Vec<D>>{v.im, v.re}, x.first() + 2 * i);
  }
}

// A row of a tile is `width` numbers.
template <class T>
struct Tile {
  alignas(64) T re[kTilePoints<T>];
  alignas(64) T im[kTilePoints<T>];

  Planes<T> planes() { return {re, im}; }
};

// The factors of row j and columns of a strip stand together, width real parts and width imaginary ones, from j = 1 on.
template <class D, class T>
KVRS_INLINE Complex<hn::Vec<D>> turned(D d, Complex<hn::Vec<D>> x, const T* w, size_t width, size_t j,
                                       size_t q) {
  const T* at = w + 2 * width * (j - 1) + q;
  return mul(x, Complex<hn::Vec<D>>{hn::LoadU(d, at), hn::LoadU(d, at + width)});
}

// Rows `pitch` apart, from number `first` on. `w` may be null.
template <class D, class T>
void loadRows(D d, const Points<const T>& in, size_t first, size_t pitch, size_t rows, size_t width,
              const T* w, Planes<T> tile) {
  for (size_t j = 0; j < rows; ++j, first += pitch) {
    forBlocks<hn::MaxLanes(D())>(width, [&](size_t q) KVRS_UNROLLED {
      auto x = loadPoints(d, in, first + q);
      if (w != nullptr && j > 0) x = turned(d, x, w, width, j, q);
      tile.store(d, j * width + q, x);
    });
  }
}

template <class D, class T>
void storeRows(D d, Planes<T> tile, size_t rows, size_t width, const T* w, T scale, const Points<T>& out,
               size_t first, size_t pitch) {
  const auto factor = hn::Set(d, scale);
  for (size_t j = 0; j < rows; ++j, first += pitch) {
    forBlocks<hn::MaxLanes(D())>(width, [&](size_t q) KVRS_UNROLLED {
      auto x = tile.load(d, j * width + q);
      if (w != nullptr && j > 0) x = turned(d, x, w, width, j, q);
      if (scale != T(1)) x = mul(x, factor);
      storePoints(d, x, out, first + q);
    });
  }
}

// Row j of column l to number rows * l + j: squares of as many rows as lanes, the last ones over those before.
template <class D, class Load, class Store>
KVRS_INLINE void forSquares(D d, size_t rows, size_t columns, Load load, Store store) {
  constexpr int L = static_cast<int>(hn::MaxLanes(D()));
  using V = hn::Vec<D>;
  forBlocks<L>(columns, [&](size_t l) KVRS_UNROLLED {
    forBlocks<L>(rows, [&](size_t j) KVRS_UNROLLED {
      V re[L], im[L];
      unroll<L>([&](auto i) KVRS_UNROLLED {
        const auto x = load(j + i, l);
        re[i] = x.re;
        im[i] = x.im;
      });
      if constexpr (L > 1) {
        transpose(d, re);
        transpose(d, im);
      }
      unroll<L>([&](auto i) KVRS_UNROLLED { store(l + i, j, Complex<V>{re[i], im[i]}); });
    });
  });
}

// Numbers k of neighbouring blocks to row k of a tile, and back.
template <class D, class T>
void loadBlocks(D d, const Points<const T>& in, size_t length, size_t blocks, Planes<T> tile) {
  forSquares(
      d, blocks, length,
      [&](size_t block, size_t k) KVRS_UNROLLED { return loadPoints(d, in, block * length + k); },
      [&](size_t k, size_t block, Complex<hn::Vec<D>> x)
          KVRS_UNROLLED { tile.store(d, k * blocks + block, x); });
}
template <class D, class T>
void storeBlocks(D d, Planes<T> tile, size_t length, size_t blocks, T scale, const Points<T>& out) {
  const auto factor = hn::Set(d, scale);
  forSquares(
      d, length, blocks,
      [&](size_t k, size_t block) KVRS_UNROLLED { return mul(tile.load(d, k * blocks + block), factor); },
      [&](size_t block, size_t k, Complex<hn::Vec<D>> x)
          KVRS_UNROLLED { storePoints(d, x, out, block * length + k); });
}

template <class D, class T>
void storeTransposed(D d, Planes<T> tile, size_t rows, size_t width, const T* w, Planes<T> out) {
  forSquares(
      d, rows, width,
      [&](size_t j, size_t l) KVRS_UNROLLED {
        const auto x = tile.load(d, j * width + l);
        return j == 0 ? x : turned(d, x, w, width, j, l);
      },
      [&](size_t l, size_t j, Complex<hn::Vec<D>> x) KVRS_UNROLLED { out.store(d, l * rows + j, x); });
}

// The transform of n rows of `width` numbers in tile a, in `count` stages. The result is in the tile returned.
template <class D, class T>
Planes<T> tileStages(D d, const int* radix, int count, size_t n, size_t width, const T* w,
                     const OddRoots<T>& odd, Planes<T> a, Planes<T> b) {
  size_t side = width;
  for (int i = 0; i < count; ++i) {
    const size_t r = static_cast<size_t>(radix[i]), m = n / r;
    stage(d, radix[i], shapeOf(m, r, side), Planes<const T>{a.re, a.im}, b, w, odd.of(radix[i]));
    w += 2 * (m - 1) * (r - 1);
    side *= r;
    n = m;
    const Planes<T> other = a;
    a = b;
    b = other;
  }
  return a;
}

}  // namespace kvrs::dft

#endif
