// Transforms too long for a work area of their own length: rows and columns, in place.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_SPLIT_INL_H
#define KVRS_TRANSFORMS_KERNELS_SPLIT_INL_H

#include "transforms/kernels/columns-inl.h"

namespace kvrs::fft {

// The square of kTile x kTile complex numbers whose rows are `pitch` numbers apart: a row of it is a cache
// line.
inline constexpr int kTile = 8;

// Exchanges tile a with the transpose of tile b; a may be b.
template <class T>
struct ComplexTypes;
template <>
struct ComplexTypes<Kvr32f> {
  using Type = Kvr32fc;
};
template <class T>
using ComplexOf = typename ComplexTypes<T>::Type;

inline void exchangeTiles(Kvr32fc* a, Kvr32fc* b, size_t pitch) {
  // A complex number moves as one lane of 64 bits.
  constexpr int L = static_cast<int>(kLanes<double> < kTile ? kLanes<double> : kTile);
  const Lanes<double, L> d;
  using V = hn::Vec<decltype(d)>;
  const auto at = [pitch](Kvr32fc* tile, int row, int column)
                      KVRS_UNROLLED { return reinterpret_cast<double*>(tile + row * pitch + column); };
  for (int r = 0; r < kTile; r += L) {
    for (int c = a == b ? r : 0; c < kTile; c += L) {
      V x[L], y[L];
      unroll<L>([&](auto i) KVRS_UNROLLED {
        x[i] = hn::LoadU(d, at(a, r + i, c));
        y[i] = hn::LoadU(d, at(b, c + i, r));
      });
      transpose(d, x);
      transpose(d, y);
      unroll<L>([&](auto i) KVRS_UNROLLED {
        hn::StoreU(x[i], d, at(b, c + i, r));
        hn::StoreU(y[i], d, at(a, r + i, c));
      });
    }
  }
}

// Tables of a split transform.
template <class T>
struct SplitTables {
  const T* columns;      // between the passes of a column
  const T* vectors;      // FactoredTwiddles after the columns
  const T* lanes;        // the same
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
void splitTransform(int order, In in, Out out, T* work, size_t workPoints, const SplitTables<T>& tables,
                    T scale) {
  const Split split = splitOf(order);
  const size_t edge = size_t{1} << split.outer;
  const size_t pitch = size_t{1} << (split.outer + split.middle);
  const size_t width = stripWidth(split.outer, workPoints);

  Columns<T, In, Out, FactoredTwiddles<T>>{
      in, out, pitch, {work}, width, tables.columns, {tables.vectors, tables.lanes, edge}}
      .transform(kColumnPlans[split.outer], edge, pitch);

  for (size_t block = 0; block < edge; block += kTile) {
    for (size_t row = block; row < block + kTile; ++row) {
      const Out points{out.p + 2 * row * pitch};
      if (split.middle > 0) {
        Columns<T, In, Out, TabledTwiddles<T>>{
            In{points.p}, points, edge, {work}, width, tables.middle, {tables.middleOuter, edge}}
            .transform(kColumnPlans[split.middle], size_t{1} << split.middle, edge);
      }
      for (size_t k2 = 0; k2 < pitch; k2 += edge) {
        const Out piece{points.p + 2 * k2};
        stockham(split.outer, In{piece.p}, piece, Blocks<T>{work}, Blocks<T>{piece.p}, tables.rows, scale);
      }
    }
    for (size_t k2 = 0; k2 < pitch; k2 += edge) {
      auto* matrix = reinterpret_cast<ComplexOf<T>*>(out.p) + k2;
      for (size_t before = 0; before <= block; before += kTile) {
        exchangeTiles(matrix + block * pitch + before, matrix + before * pitch + block, pitch);
      }
    }
  }
}

}  // namespace kvrs::fft

#endif
