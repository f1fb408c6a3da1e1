// Strips of columns: out of memory into a tile, transformed there, and out of it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_TILE_INL_H
#define KVRS_TRANSFORMS_KERNELS_TILE_INL_H

#include <type_traits>

#include "frame/element.h"
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

template <class T>
using PairOf = std::conditional_t<sizeof(T) == 4, Kvr32fc, Kvr64fc>;

// Rows of up to kTileWidth numbers, one behind the other in whole vectors.
template <class T>
struct Tile {
  static constexpr int kRows = (kMostRows + kTileWidth<T> - 1) / kTileWidth<T> * kTileWidth<T>;
  alignas(64) T re[kRows * kTileWidth<T>];
  alignas(64) T im[kRows * kTileWidth<T>];

  Planes<T> planes() { return {re, im}; }
};

template <class T>
size_t pitchOf(size_t width) {
  return static_cast<size_t>(wholeVectors<T>(static_cast<int>(width)));
}

// Rows `distance` apart, from number `first` on. Parts exchanged go to the tile exchanged.
template <class T>
__attribute__((noinline)) void loadRows(const Points<const T>& in, size_t first, size_t distance, size_t rows,
                                        size_t width, Planes<T> tile) {
  const Full<T> d;
  constexpr size_t L = kLanes<T>;
  const size_t rest = width % L, whole = width - rest;
  if (in.pairs) {
    if (in.im < in.re) tile = {tile.im, tile.re};
    const T* p = in.first() + 2 * first;
    for (; rows > 0; --rows, p += 2 * distance) {
      for (size_t q = 0; q < whole; q += L, tile = tile.at(L)) tile.store(d, 0, loadPairs(d, p + 2 * q));
      if (rest == 0) continue;
      tile.store(d, 0, Element<PairOf<T>>::loadFirst(rest, d, reinterpret_cast<const PairOf<T>*>(p) + whole));
      tile = tile.at(L);
    }
  } else {
    const auto loadPlane = [&](const T* p, T* to) {
      for (size_t row = 0; row < rows; ++row, p += distance) {
        for (size_t q = 0; q < whole; q += L, to += L) hn::StoreU(hn::LoadU(d, p + q), d, to);
        if (rest == 0) continue;
        hn::StoreU(loadFirst(d, p + whole, rest), d, to);
        to += L;
      }
    };
    loadPlane(in.re + first, tile.re);
    if (in.im != nullptr) return loadPlane(in.im + first, tile.im);
    for (size_t i = 0; i < rows * pitchOf<T>(width); i += L) hn::StoreU(hn::Zero(d), d, tile.im + i);
  }
}

// Times `scale`.
template <class T>
__attribute__((noinline)) void storeRows(Planes<T> tile, size_t rows, size_t width, T scale,
                                         const Points<T>& out, size_t first, size_t distance) {
  const Full<T> d;
  constexpr size_t L = kLanes<T>;
  const size_t rest = width % L, whole = width - rest;
  const auto factor = hn::Set(d, scale);
  if (out.pairs) {
    if (out.im < out.re) tile = {tile.im, tile.re};
    T* p = out.first() + 2 * first;
    for (; rows > 0; --rows, p += 2 * distance) {
      for (size_t q = 0; q < whole; q += L, tile = tile.at(L))
        storePairs(d, mul(tile.load(d, 0), factor), p + 2 * q);
      if (rest == 0) continue;
      Element<PairOf<T>>::storeFirst(rest, mul(tile.load(d, 0), factor), d,
                                     reinterpret_cast<PairOf<T>*>(p) + whole);
      tile = tile.at(L);
    }
  } else {
    const auto storePlane = [&](const T* from, T* p) {
      for (size_t row = 0; row < rows; ++row, p += distance) {
        for (size_t q = 0; q < whole; q += L, from += L)
          hn::StoreU(hn::Mul(hn::LoadU(d, from), factor), d, p + q);
        if (rest == 0) continue;
        storeFirst(hn::Mul(hn::LoadU(d, from), factor), d, p + whole, rest);
        from += L;
      }
    };
    storePlane(tile.re, out.re + first);
    storePlane(tile.im, out.im + first);
  }
}

// The rows of a tile turned. The factors of row j and columns of a strip stand together, width real parts and width
// imaginary ones, from j = 1 on.
template <class T>
void turnRows(Planes<T> tile, size_t rows, size_t width, const T* w) {
  const Full<T> d;
  for (tile = tile.at(pitchOf<T>(width)); rows > 1; --rows, w += 2 * width) {
    for (size_t q = 0; q < width; q += kLanes<T>, tile = tile.at(kLanes<T>)) {
      const Cx<Full<T>> turn{hn::LoadU(d, w + q), hn::LoadU(d, w + width + q)};
      tile.store(d, 0, mul(tile.load(d, 0), turn));
    }
  }
}

// L x L numbers, row i of them from load(i), to L vectors of columns, column i to store(i).
template <class T, class Load, class Store>
KVRS_INLINE void square(Load load, Store store) {
  const Full<T> d;
  constexpr int L = static_cast<int>(kLanes<T>);
  hn::Vec<Full<T>> re[L], im[L];
  unroll<L>([&](auto i) KVRS_UNROLLED {
    const auto x = load(i);
    re[i] = x.re;
    im[i] = x.im;
  });
  transpose(d, re);
  transpose(d, im);
  unroll<L>([&](auto i) KVRS_UNROLLED { store(i, Cx<Full<T>>{re[i], im[i]}); });
}

template <class T>
__attribute__((noinline)) void transposePlane(const T* in, size_t pitch, size_t rows, size_t width, T* out,
                                              size_t outPitch) {
  const Full<T> d;
  constexpr int L = static_cast<int>(kLanes<T>);
  for (size_t q = 0; q < width; q += L) {
    for (size_t j = 0; j < rows; j += L) {
      if (j + L > outPitch) j = rows - L;
      hn::Vec<Full<T>> x[L];
      const T* from = in + j * pitch + q;
      unroll<L>([&](auto i) KVRS_UNROLLED {
        x[i] = hn::LoadU(d, from);
        from += pitch;
      });
      transpose(d, x);
      T* to = out + q * outPitch + j;
      unroll<L>([&](auto i) KVRS_UNROLLED {
        if (q + i >= width) return;
        hn::StoreU(x[i], d, to);
        to += outPitch;
      });
    }
  }
}

// Column q of the tile, turned, to row q of `out`. Rows of `out` are filled up with zeros where they are longer than the
// column is; else the last square of lanes lies over the one before.
template <class T>
void storeTransposed(Planes<T> tile, size_t rows, size_t width, const T* w, Planes<T> out, size_t outPitch) {
  const Full<T> d;
  const size_t pitch = pitchOf<T>(width);
  turnRows(tile, rows, width, w);
  for (size_t i = rows * pitch; i < pitchOf<T>(rows) * pitch; i += kLanes<T>)
    tile.store(d, i, Cx<Full<T>>{hn::Zero(d), hn::Zero(d)});
  transposePlane(tile.re, pitch, rows, width, out.re, outPitch);
  transposePlane(tile.im, pitch, rows, width, out.im, outPitch);
}

// Numbers k of neighbouring blocks of `length` to row k of a tile, and back; a vector or more of them.
template <class T>
void loadBlocks(const Points<const T>& in, size_t length, size_t blocks, Planes<T> tile) {
  const Full<T> d;
  constexpr size_t L = kLanes<T>;
  const size_t pitch = pitchOf<T>(blocks);
  for (size_t block = 0; block < blocks; block += L) {
    forBlocks<L>(length, [&](size_t k) KVRS_UNROLLED {
      square<T>(
          [&](auto i) KVRS_UNROLLED {
            return loadPoints(d, in, (block + i < blocks ? block + i : blocks - 1) * length + k);
          },
          [&](auto i, Cx<Full<T>> x) KVRS_UNROLLED { tile.store(d, (k + i) * pitch + block, x); });
    });
  }
}
template <class T>
void storeBlocks(Planes<T> tile, size_t length, size_t blocks, T scale, const Points<T>& out) {
  const Full<T> d;
  constexpr size_t L = kLanes<T>;
  const size_t pitch = pitchOf<T>(blocks);
  const auto factor = hn::Set(d, scale);
  for (size_t block = 0; block < blocks; block += L) {
    forBlocks<L>(length, [&](size_t k) KVRS_UNROLLED {
      square<T>([&](auto i) KVRS_UNROLLED { return mul(tile.load(d, (k + i) * pitch + block), factor); },
                [&](auto i, Cx<Full<T>> x) KVRS_UNROLLED {
                  if (block + i < blocks) storePoints(d, x, out, (block + i) * length + k);
                });
    });
  }
}

// The transform of rows of whole vectors, `distance` apart in `in`, in `count` stages by way of a and b. The first one
// writes to a, so that `in` may be b. The result is in the tile returned.
template <class T>
Planes<T> tileStages(const int* radix, int count, size_t rows, size_t width, const T* w,
                     const OddRoots<T>& odd, Planes<const T> in, size_t distance, Planes<T> a, Planes<T> b) {
  size_t side = width, n = rows;
  for (int i = 0; i < count; ++i) {
    const size_t r = static_cast<size_t>(radix[i]), m = n / r;
    stage(radix[i], Shape{m, side, distance * m, distance, side, side * r}, in, a, w, odd.of(radix[i]));
    w += 2 * (m - 1) * (r - 1);
    side *= r;
    distance = side;
    n = m;
    in = {a.re, a.im};
    const Planes<T> other = b;
    b = a;
    a = other;
  }
  return b;
}

}  // namespace kvrs::dft

#endif
