// Transforms of the columns of a matrix in place, a strip of neighbouring columns at a time.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_COLUMNS_INL_H
#define KVRS_TRANSFORMS_KERNELS_COLUMNS_INL_H

#include "transforms/kernels/stockham-inl.h"

namespace kvrs::fft {

// exp(-2 pi i k c / N) for row k and columns c .. c + kFactorSpan - 1, as the product of one number for the row and the
// span and one for the row and the place in the span: far smaller tables for four more operations.
template <class T>
struct FactoredTwiddles {
  const T* spans;   // [c / span][k]
  const T* places;  // [k][place]
  size_t rows;

  // Spread once where a span is several vectors, else on the way out of memory, which keeps registers free.
  template <class D>
  struct Row {
    const T* number;
    Table<T> places;
    Complex<typename Form<D>::Vector> kept;

    KVRS_INLINE Cx<D> apply(D d, Cx<D> x, size_t place) const {
      if constexpr (kPoints<D> < kFactorSpan<T>) return mul(x, mul(places.load(d, place), kept));
      return mul(x, mul(places.load(d, place), spread(d, number)));
    }
  };

  template <class D>
  KVRS_INLINE Row<D> row(D d, size_t k, size_t c) const {
    Row<D> r;
    r.number = spans + 2 * (c / kFactorSpan<T> * rows + k);
    r.places = Table<T>{places}.at(k * kFactorSpan<T>);
    if constexpr (kPoints<D> < kFactorSpan<T>) r.kept = spread(d, r.number);
    return r;
  }
};

// The same out of a table of its own.
template <class T>
struct TabledTwiddles {
  const T* table;  // [k][c]
  size_t columns;

  template <class D>
  struct Row {
    Table<T> places;

    KVRS_INLINE Cx<D> apply(D d, Cx<D> x, size_t place) const { return mul(x, places.load(d, place)); }
  };

  template <class D>
  KVRS_INLINE Row<D> row(D, size_t k, size_t c) const {
    return {Table<T>{table}.at(k * columns + c)};
  }
};

// Of a transform of n points in each column of a strip, the passes before the last one: they know nothing of what follows.
template <int R, class T, class In>
void firstColumnPass(In in, size_t pitch, Work<T> work, size_t width, size_t n, const T* w) {
  constexpr PassTag<T> d;
  const size_t m = n / R;
  for (size_t p = 0; p < m; ++p, w += 2 * (R - 1)) {
    const NumberTwiddles<R, PassTag<T>> turns(d, w);
    passSteps<R>(d, in.at(p * pitch), m * pitch, work.at(p * width), m * width, width, turns);
  }
}

template <int R, class T>
void middleColumnPass(Work<T> work, size_t width, size_t points, size_t n, const T* w) {
  constexpr PassTag<T> d;
  const size_t m = n / R;
  for (size_t base = 0; base < points; base += n) {
    const T* wp = w;
    for (size_t p = 0; p < m; ++p, wp += 2 * (R - 1)) {
      const NumberTwiddles<R, PassTag<T>> turns(d, wp);
      const auto rows = work.at((base + p) * width);
      passSteps<R>(d, rows, m * width, rows, m * width, width, turns);
    }
  }
}

// Where the columns come from and go to: `points` rows, `pitch` numbers apart.
template <class T, class In, class Out, class Twiddles>
struct Columns {
  In in;
  Out out;
  size_t pitch;
  Work<T> work;
  size_t width;  // of a strip, in columns
  const T* w;
  Twiddles twiddles;

  using D = PassTag<T>;
  static constexpr D d{};

  // One butterfly is the whole transform.
  template <int R>
  void onlyPass(size_t first) const {
    for (size_t c = first; c < first + width; c += kFactorSpan<T>) turnedSteps<R>(in.at(c), pitch, c, 0, 1);
  }

  // The passes before have left group g of R rows at the place of its digits in reverse.
  template <int R>
  void lastPass(size_t first, const Plan& plan, size_t points) const {
    const size_t m = points / R;
    for (size_t g = 0; g < m; ++g) {
      const size_t k0 = plan.reverse(g);
      for (size_t c = 0; c < width; c += kFactorSpan<T>) {
        turnedSteps<R>(work.at(g * R * width + c), width, first + c, k0, m);
      }
    }
  }

  void transform(const Plan& plan, size_t points, size_t columns) const {
    for (size_t first = 0; first < columns; first += width) strip(plan, points, first);
  }

 private:
  // Last butterflies for a span of columns from c on: `from` gives R rows, which become rows k0, k0 + m, ... of the
  // result.
  template <int R, class From>
  KVRS_INLINE void turnedSteps(From from, size_t stride, size_t c, size_t k0, size_t m) const {
    typename Twiddles::template Row<D> rows[R];
    unroll<R>([&](auto j) KVRS_UNROLLED { rows[j] = twiddles.row(d, k0 + j * m, c); });
    for (size_t place = 0; place < kFactorSpan<T>; place += kPoints<D>) {
      butterfly<R>(
          d, [&](auto k) KVRS_UNROLLED { return from.load(d, k * stride + place); },
          [&](auto j, Cx<D> x)
              KVRS_UNROLLED { out.store(d, (k0 + j * m) * pitch + c + place, rows[j].apply(d, x, place)); });
    }
  }

  void strip(const Plan& plan, size_t points, size_t first) const {
    if (plan.passes == 1) {
      return withRadix<1>(plan.bits[0], [&](auto r) KVRS_UNROLLED { this->template onlyPass<r()>(first); });
    }
    size_t n = points;
    const T* wn = w;
    const auto next = [&](int bits) {
      n >>= bits;
      wn += 2 * n * ((1 << bits) - 1);
    };
    withRadix<2>(plan.bits[0],
                 [&](auto r) KVRS_UNROLLED { firstColumnPass<r()>(in.at(first), pitch, work, width, n, w); });
    next(plan.bits[0]);
    int pass = 1;
    for (; pass + 1 < plan.passes; ++pass) {
      withRadix<2>(plan.bits[pass],
                   [&](auto r) KVRS_UNROLLED { middleColumnPass<r()>(work, width, points, n, wn); });
      next(plan.bits[pass]);
    }
    withRadix<2>(plan.bits[pass],
                 [&](auto r) KVRS_UNROLLED { this->template lastPass<r()>(first, plan, points); });
  }
};

}  // namespace kvrs::fft

#endif
