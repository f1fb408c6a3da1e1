// Stages of transforms of any length: butterflies of every radix over rows of neighbouring numbers, real and imaginary
// parts apart.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_STAGE_INL_H
#define KVRS_TRANSFORMS_KERNELS_STAGE_INL_H

#include "transforms/dft_plan.h"
#include "transforms/kernels/stockham-inl.h"

namespace kvrs::dft {

using namespace fft;

template <class T>
using Full = Lanes<T, kLanes<T>>;

// For each p < m, butterflies over rows p, p + m, ... become results in rows R p, R p + 1, ...; a row is `count` numbers,
// whole vectors. Distances are in numbers: between the rows of a butterfly, and from one p to the next.
struct Shape {
  size_t m, count;
  size_t row, step;
  size_t outRow, outStep;
};

// body(q) for blocks of L numbers that cover `count`, at least L of them: the last one lies over the one before.
template <size_t L, class Body>
KVRS_INLINE void forBlocks(size_t count, Body body) {
  size_t q = 0;
  for (; q + L <= count; q += L) body(q);
  if (q < count) body(count - L);
}

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
KVRS_INLINE void anyButterfly(D d, Load load, Emit emit) {
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

template <int R, class T, class Twiddles>
KVRS_INLINE void butterflies(const Shape& g, Planes<const T> in, Planes<T> out, const Twiddles& twiddles) {
  const Full<T> d;
  for (size_t q = 0; q < g.count; q += kLanes<T>) {
    anyButterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, q + k * g.row); },
        [&](auto k, Cx<Full<T>> x)
            KVRS_UNROLLED { out.store(d, q + k * g.outRow, twiddles.apply(d, k, x)); });
  }
}

// `w` holds the factors exp(-2 pi i p j / (R m)), j = 1 .. R - 1, from p = 1 on.
template <int R, class T>
__attribute__((noinline)) void stageOf(const Shape& g, Planes<const T> in, Planes<T> out, const T* w) {
  butterflies<R>(g, in, out, NoScale());
  for (size_t p = 1; p < g.m; ++p, w += 2 * (R - 1)) {
    in = in.at(g.step);
    out = out.at(g.outStep);
    butterflies<R>(g, in, out, NumberTwiddles<R, Full<T>>(Full<T>(), w));
  }
}

// One stage of rows `distance` apart to rows `outPitch` apart, each result turned: the factors of row j stand together,
// `width` real parts and as many imaginary ones, from j = 1 on.
template <int R, class T, class In>
__attribute__((noinline)) void turnedStageOf(const In& in, size_t distance, Planes<T> out, size_t outPitch,
                                             const T* w, size_t width) {
  const Full<T> d;
  for (size_t q = 0; q < width; q += kLanes<T>) {
    anyButterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, q + k * distance); },
        [&](auto k, Cx<Full<T>> x) KVRS_UNROLLED {
          if constexpr (k > 0) {
            const T* const at = w + (2 * k - 2) * width + q;
            x = mul(x, Cx<Full<T>>{hn::LoadU(d, at), hn::LoadU(d, at + width)});
          }
          out.store(d, q + k * outPitch, x);
        });
  }
}

// The last stage of rows of one vector, `side` of them in each of R groups `row` numbers apart, to rows in memory.
template <int R, class T, class Out>
__attribute__((noinline)) void storedStageOf(size_t side, size_t row, Planes<const T> in, const Out& out,
                                             size_t distance) {
  const Full<T> d;
  for (size_t j = 0; j < side; ++j) {
    anyButterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, j * kLanes<T> + k * row); },
        [&](auto k, Cx<Full<T>> x) KVRS_UNROLLED { out.store(d, (j + k * side) * distance, x); });
  }
}

// An odd radix without a kernel of its own, r cosines and r sines of 2 pi k / r in `roots`. See oddButterfly.
inline constexpr int kMostPairs = 74;

template <class D, class T>
KVRS_INLINE void oddColumn(D d, int r, Planes<const T> in, size_t row, Planes<T> out, size_t outRow,
                           const T* roots, const T* w) {
  using C = Complex<hn::Vec<D>>;
  const int half = (r - 1) / 2;
  C u[kMostPairs], v[kMostPairs];
  const C x0 = in.load(d, 0);
  C sum = x0;
  for (int k = 0; k < half; ++k) {
    const C a = in.load(d, (static_cast<size_t>(k) + 1) * row);
    const C b = in.load(d, static_cast<size_t>(r - 1 - k) * row);
    u[k] = add(a, b);
    v[k] = sub(a, b);
    sum = add(sum, u[k]);
  }
  out.store(d, 0, sum);
  const auto store = [&](int j, C x) KVRS_UNROLLED {
    if (w != nullptr) x = mul(x, spread(d, w + 2 * (j - 1)));
    out.store(d, static_cast<size_t>(j) * outRow, x);
  };
  for (int j = 1; j <= half; ++j) {
    C a = x0, b{hn::Zero(d), hn::Zero(d)};
    for (int k = 0, at = 0; k < half; ++k) {
      at += j;
      if (at >= r) at -= r;
      const auto c = hn::Set(d, roots[at]), s = hn::Set(d, roots[r + at]);
      a = {hn::MulAdd(u[k].re, c, a.re), hn::MulAdd(u[k].im, c, a.im)};
      b = {hn::MulAdd(v[k].re, s, b.re), hn::MulAdd(v[k].im, s, b.im)};
    }
    store(j, subI(a, b));
    store(r - j, addI(a, b));
  }
}

template <class T>
__attribute__((noinline)) void oddStage(int r, const Shape& g, Planes<const T> in, Planes<T> out, const T* w,
                                        const T* roots) {
  for (size_t p = 0; p < g.m; ++p) {
    for (size_t q = 0; q < g.count; q += kLanes<T>) {
      oddColumn(Full<T>(), r, in.at(q), g.row, out.at(q), g.outRow, roots, p == 0 ? nullptr : w);
    }
    if (p > 0) w += 2 * (r - 1);
    in = in.at(g.step);
    out = out.at(g.outStep);
  }
}

// Runs body(Index<R>()) for a radix that has a kernel, else other().
template <class Body, class Other>
KVRS_INLINE void withRadix(int radix, Body body, Other other) {
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
    case 16:
      if constexpr (kLastRadix >= 16) return body(Index<16>());
      return;
    default:
      return other();
  }
}

template <class T>
void stage(int radix, const Shape& g, Planes<const T> in, Planes<T> out, const T* w, const T* roots) {
  withRadix(
      radix, [&](auto r) { stageOf<r>(g, in, out, w); }, [&] { oddStage(radix, g, in, out, w, roots); });
}

}  // namespace kvrs::dft

#endif
