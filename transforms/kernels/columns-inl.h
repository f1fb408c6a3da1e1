// Transforms of the columns of a matrix in place, a strip of neighbouring columns at a time.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_COLUMNS_INL_H
#define KVRS_TRANSFORMS_KERNELS_COLUMNS_INL_H

#include "transforms/kernels/stockham-inl.h"

namespace kvrs::fft {

// exp(-2 pi i k c / N) for row k and columns c .. c + L - 1, as the product of one number for the row and the
// vector and one for the row and the lane: far smaller tables for four more operations.
template <class T>
struct FactoredTwiddles {
  const T* vectors;  // [c / L][k]
  const T* lanes;    // [k][lane]
  size_t rows;

  template <class D>
  KVRS_INLINE Cx<D> apply(D d, Cx<D> x, size_t k, size_t c) const {
    const T* v = vectors + 2 * (c / hn::MaxLanes(d) * rows + k);
    const auto lane = Table<T>{lanes}.load(d, k * hn::MaxLanes(d));
    return mul(x, mul(lane, Cx<D>{hn::Set(d, v[0]), hn::Set(d, v[1])}));
  }
};

// The same out of a table of its own.
template <class T>
struct TabledTwiddles {
  const T* table;  // [k][c]
  size_t columns;

  template <class D>
  KVRS_INLINE Cx<D> apply(D d, Cx<D> x, size_t k, size_t c) const {
    return mul(x, Table<T>{table}.load(d, k * columns + c));
  }
};

// Where the columns come from and go to: `points` rows, `pitch` numbers apart.
template <class T, class In, class Out, class Twiddles>
struct Columns {
  In in;
  Out out;
  size_t pitch;
  Blocks<T> work;
  size_t width;  // of a strip, in columns
  const T* w;
  Twiddles twiddles;

  static constexpr size_t L = kLanes<T>;
  static constexpr Lanes<T, L> d{};

  using D = Lanes<T, L>;

  // One butterfly is the whole transform.
  template <int R>
  void onlyPass(size_t first) const {
    for (size_t c = first; c < first + width; c += L) {
      butterfly<R>(
          d, [&](auto k) KVRS_UNROLLED { return in.load(d, k * pitch + c); },
          [&](auto k, Cx<D> x) KVRS_UNROLLED { out.store(d, k * pitch + c, twiddles.apply(d, x, k, c)); });
    }
  }

  template <int R>
  void firstPass(size_t first, size_t n) const {
    const size_t m = n / R;
    const T* wp = w;
    for (size_t p = 0; p < m; ++p, wp += 2 * (R - 1)) {
      const NumberTwiddles<R, D> turns(d, wp);
      for (size_t c = 0; c < width; c += L) {
        passStep<R>(d, in, p * pitch + first + c, m * pitch, work, p * width + c, m * width, turns);
      }
    }
  }

  template <int R>
  void middlePass(size_t points, size_t n, const T* wn) const {
    const size_t m = n / R;
    for (size_t base = 0; base < points; base += n) {
      const T* wp = wn;
      for (size_t p = 0; p < m; ++p, wp += 2 * (R - 1)) {
        const NumberTwiddles<R, D> turns(d, wp);
        for (size_t c = 0; c < width; c += L) {
          const size_t at = (base + p) * width + c;
          passStep<R>(d, work, at, m * width, work, at, m * width, turns);
        }
      }
    }
  }

  // The passes before have left group g of R rows at the place of its digits in reverse.
  template <int R>
  void lastPass(size_t first, const Plan& plan, size_t points) const {
    const size_t m = points / R;
    for (size_t g = 0; g < m; ++g) {
      const size_t k0 = plan.reverse(g);
      for (size_t c = 0; c < width; c += L) {
        butterfly<R>(
            d, [&](auto j) KVRS_UNROLLED { return work.load(d, (g * R + j) * width + c); },
            [&](auto j, Cx<D> x) KVRS_UNROLLED {
              const size_t k = k0 + j * m;
              out.store(d, k * pitch + first + c, twiddles.apply(d, x, k, first + c));
            });
      }
    }
  }

  void transform(const Plan& plan, size_t points, size_t columns) const {
    for (size_t first = 0; first < columns; first += width) strip(plan, points, first);
  }

 private:
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
    withRadix<2>(plan.bits[0], [&](auto r) KVRS_UNROLLED { this->template firstPass<r()>(first, n); });
    next(plan.bits[0]);
    int pass = 1;
    for (; pass + 1 < plan.passes; ++pass) {
      withRadix<2>(plan.bits[pass],
                   [&](auto r) KVRS_UNROLLED { this->template middlePass<r()>(points, n, wn); });
      next(plan.bits[pass]);
    }
    withRadix<2>(plan.bits[pass],
                 [&](auto r) KVRS_UNROLLED { this->template lastPass<r()>(first, plan, points); });
  }
};

}  // namespace kvrs::fft

#endif
