// Transforms too long for a work area of their own length: rows and columns, in place.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SPLIT_INL_H
#define KVRS_TRANSFORMS_KERNELS_SPLIT_INL_H

#include "transforms/kernels/columns-inl.h"
#include "transforms/kernels/small-inl.h"

namespace kvrs::fft {

// A square tile of so many complex numbers each way: a row of it is a cache line.
inline constexpr size_t kTile = 8;

// Exchanges tile a with the transpose of tile b; a may be b. E is as large as an element, rows are `pitch` of them
// apart.
template <class E>
void exchangeTiles(E* a, E* b, size_t pitch) {
  constexpr int L = static_cast<int>(kLanes<E> < kTile ? kLanes<E> : kTile);
  const Lanes<E, L> d;
  for (size_t r = 0; r < kTile; r += L) {
    for (size_t c = a == b ? r : 0; c < kTile; c += L) {
      E* const inA = a + r * pitch + c;
      E* const inB = b + c * pitch + r;
      hn::Vec<Lanes<E, L>> x[L], y[L];
      unroll<L>([&](auto i) KVRS_UNROLLED {
        x[i] = hn::LoadU(d, inA + i * pitch);
        y[i] = hn::LoadU(d, inB + i * pitch);
      });
      transpose(d, x);
      transpose(d, y);
      unroll<L>([&](auto i) KVRS_UNROLLED {
        hn::StoreU(x[i], d, inB + i * pitch);
        hn::StoreU(y[i], d, inA + i * pitch);
      });
    }
  }
}

// A pair of floats moves as one lane of 64 bits.
template <bool kSwapped>
void exchangeTiles(Interleaved<Kvr32f, kSwapped> a, Interleaved<Kvr32f, kSwapped> b, size_t pitch) {
  exchangeTiles(reinterpret_cast<double*>(a.p), reinterpret_cast<double*>(b.p), pitch);
}
// A pair of doubles is a vector.
template <bool kSwapped>
void exchangeTiles(Interleaved<Kvr64f, kSwapped> a, Interleaved<Kvr64f, kSwapped> b, size_t pitch) {
  const Lanes<Kvr64f, 2> d;
  for (size_t r = 0; r < kTile; ++r) {
    for (size_t c = a.p == b.p ? r : 0; c < kTile; ++c) {
      Kvr64f* const inA = a.at(r * pitch + c).p;
      Kvr64f* const inB = b.at(c * pitch + r).p;
      const auto x = hn::LoadU(d, inA);
      hn::StoreU(hn::LoadU(d, inB), d, inA);
      hn::StoreU(x, d, inB);
    }
  }
}
template <class T>
void exchangeTiles(Planes<T> a, Planes<T> b, size_t pitch) {
  exchangeTiles(a.re, b.re, pitch);
  exchangeTiles(a.im, b.im, pitch);
}

// Tables of a split transform.
template <class T>
struct SplitTables {
  const T* columns;      // between the passes of a column
  const T* spans;        // FactoredTwiddles after the columns
  const T* places;       // the same
  const T* middle;       // between the passes of the middle index
  const T* middleOuter;  // TabledTwiddles after the middle index
  const T* rows;         // of a row transform
};

// Index n = (n1, n2, n3), 2^a x 2^b x 2^a of them, becomes k = (k3, k2, k1):
//
//   over n1, in strips of columns (n2, n3)   -> k1, turned by k1 (n2, n3) / N
//   over n2, within row k1, columns n3       -> k2, turned by k2 n3 / 2^(a+b)
//   over n3, within row (k1, k2)             -> k3
//   for each k2 the square matrix (k1, k3) is transposed
//
// The last three are done on kTile rows k1 at a time, and their tiles change places with those of the rows
// before.
template <class In, class Out, class T>
void splitTransform(int order, In in, Out out, T* work, size_t workBytes, const SplitTables<T>& tables,
                    T scale) {
  const Split split = splitOf(order, workBytes);
  const size_t edge = size_t{1} << split.outer;
  const size_t pitch = size_t{1} << (split.outer + split.middle);
  const size_t width = stripWidth<T>(split.outer, workBytes);

  Columns<T, In, Out, FactoredTwiddles<T>>{
      in, out, pitch, {work}, width, tables.columns, {tables.spans, tables.places, edge}}
      .transform(kColumnPlans[split.outer], edge, pitch);

  for (size_t block = 0; block < edge; block += kTile) {
    for (size_t row = block; row < block + kTile; ++row) {
      const Out points = out.at(row * pitch);
      if (split.middle > 0) {
        Columns<T, typename Out::Source, Out, TabledTwiddles<T>>{
            points.source(), points, edge, {work}, width, tables.middle, {tables.middleOuter, edge}}
            .transform(kColumnPlans[split.middle], size_t{1} << split.middle, edge);
      }
      for (size_t k2 = 0; k2 < pitch; k2 += edge) {
        const Out piece = points.at(k2);
        unsplitTransform(split.outer, piece.source(), piece, work, tables.rows, scale);
      }
    }
    for (size_t k2 = 0; k2 < pitch; k2 += edge) {
      const Out matrix = out.at(k2);
      for (size_t before = 0; before <= block; before += kTile) {
        exchangeTiles(matrix.at(block * pitch + before), matrix.at(before * pitch + block), pitch);
      }
    }
  }
}

}  // namespace kvrs::fft

#endif
