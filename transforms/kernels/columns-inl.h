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
    const auto lane = Blocks<const T>{lanes}.load(d, k * hn::MaxLanes(d));
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
    return mul(x, Blocks<const T>{table}.load(d, k * columns + c));
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

  // One butterfly is the whole transform.
  template <int R>
  void onlyPass(size_t first) const {
    for (size_t c = first; c < first + width; c += L) {
      Cx<Lanes<T, L>> x[R];
      loadRows(d, in, c, pitch, x);
      butterfly(d, x);
      unroll<R>([&](auto k) KVRS_UNROLLED { out.store(d, k * pitch + c, twiddles.apply(d, x[k], k, c)); });
    }
  }

  template <int R>
  void firstPass(size_t first, size_t n) const {
    const size_t m = n / R;
    const T* wp = w;
    for (size_t p = 0; p < m; ++p, wp += 2 * (R - 1)) {
      for (size_t c = 0; c < width; c += L) {
        Cx<Lanes<T, L>> x[R];
        loadRows(d, in, p * pitch + first + c, m * pitch, x);
        butterfly(d, x);
        twiddleAll(d, x, wp);
        storeRows(d, work, p * width + c, m * width, x);
      }
    }
  }

  template <int R>
  void middlePass(size_t points, size_t n, const T* wn) const {
    const size_t m = n / R;
    for (size_t base = 0; base < points; base += n) {
      const T* wp = wn;
      for (size_t p = 0; p < m; ++p, wp += 2 * (R - 1)) {
        for (size_t c = 0; c < width; c += L) {
          Cx<Lanes<T, L>> x[R];
          loadRows(d, work, (base + p) * width + c, m * width, x);
          butterfly(d, x);
          twiddleAll(d, x, wp);
          storeRows(d, work, (base + p) * width + c, m * width, x);
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
        Cx<Lanes<T, L>> x[R];
        loadRows(d, work, g * R * width + c, width, x);
        butterfly(d, x);
        unroll<R>([&](auto j) KVRS_UNROLLED {
          const size_t k = k0 + j * m;
          out.store(d, k * pitch + first + c, twiddles.apply(d, x[j], k, first + c));
        });
      }
    }
  }

  void transform(const Plan& plan, size_t points, size_t columns) const {
    for (size_t first = 0; first < columns; first += width) strip(plan, points, first);
  }

 private:
  // Runs body(Index<R>()) for the radix R of so many bits.
  template <class F>
  static KVRS_INLINE void withRadix(int bits, F body) {
    switch (bits) {
      case 1:
        return body(Index<2>());
      case 2:
        return body(Index<4>());
      case 3:
        return body(Index<8>());
      default:
        return body(Index<16>());
    }
  }

  void strip(const Plan& plan, size_t points, size_t first) const {
    if (plan.passes == 1) {
      return withRadix(plan.bits[0], [&](auto r) KVRS_UNROLLED { this->template onlyPass<r()>(first); });
    }
    size_t n = points;
    const T* wn = w;
    const auto next = [&](int bits) {
      n >>= bits;
      wn += 2 * n * ((1 << bits) - 1);
    };
    withRadix(plan.bits[0], [&](auto r) KVRS_UNROLLED { this->template firstPass<r()>(first, n); });
    next(plan.bits[0]);
    int pass = 1;
    for (; pass + 1 < plan.passes; ++pass) {
      withRadix(plan.bits[pass],
                [&](auto r) KVRS_UNROLLED { this->template middlePass<r()>(points, n, wn); });
      next(plan.bits[pass]);
    }
    withRadix(plan.bits[pass],
              [&](auto r) KVRS_UNROLLED { this->template lastPass<r()>(first, plan, points); });
  }
};

}  // namespace kvrs::fft

#endif
