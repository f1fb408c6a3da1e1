// What a cosine transform does before and after its complex transform.
//
// The numbers x of even index, and behind them those of odd index in reverse order, are a real sequence v of N numbers with
// the spectrum V. With t(k) = exp(-i pi k / (2N)) and c = sqrt(2/N) the results are
//
//   y[k] = c Re t(k) V[k], y[N-k] = -c Im t(k) V[k]
//
// For odd N that is all, with a complex transform of N numbers. For even N a transform of M = N/2 numbers has the pairs of v:
//
//   z[m] = x[4m] + i x[4m+2], z[M-1-m] = x[4m+3] + i x[4m+1]
//
// Of its spectrum Z, with A = Z[k], B = conj Z[M-k], P = t(k) (A + B), Q = t(5k) (A - B) / i, one has
//
//   t(k) V[k] = (P + Q) / 2, t(M-k) V[M-k] = exp(-i pi/4) conj(P - Q) / 2
//
// and so four results y[k], y[N-k], y[M-k], y[M+k] from each pair of numbers. The other way all steps are undone: each is an
// orthogonal matrix but for a factor, which is in the table; and the table has the conjugate factors.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_DCT_INL_H
#define KVRS_TRANSFORMS_KERNELS_DCT_INL_H

#include <cstring>

#include "frame/complex.h"
#include "frame/simd.h"
#include "frame/unaligned.h"
#include "transforms/dct_spec.h"
#include "transforms/dft_spec.h"
#include "transforms/kernels/stage-inl.h"

namespace kvrs::dct {

using fft::add;
using fft::mul;
using fft::sub;
using unaligned::get;
using unaligned::put;

// FFTs up to this order have their tables in the program.
inline constexpr int kLastWithoutTables = 5;

template <class T>
inline constexpr size_t kFewestLanes = sizeof(T) == 4 ? 4 : 2;

// The lanes to try after L.
template <class T, size_t L>
inline constexpr size_t kFewer = L > kFewestLanes<T> ? L / 2 : 1;

// body(d, k) for blocks of k from 1 on up to the middle of n. A block may reach beyond the middle, but not beyond n - 1:
// then it computes a second time what blocks before it have stored.
template <class T, size_t L = kLanes<T>, class Body>
KVRS_INLINE void forTurns(size_t n, bool even, Body body, size_t k = 1) {
  const size_t last = even ? n / 2 : (n - 1) / 2;
  for (; k <= last && k + L <= n; k += L) body(Lanes<T, L>(), k);
  if constexpr (L > 1) {
    if (k <= last) forTurns<T, kFewer<T, L>>(n, even, body, k);
  }
}

// body(d, i) for blocks that cover `count` with vectors as long as fit; the last one lies over the one before it.
template <class T, size_t L = kLanes<T>, class Body>
KVRS_INLINE void forCover(size_t count, Body body) {
  if (count >= L) {
    dft::forBlocks<L>(count, [&](size_t i) KVRS_UNROLLED { body(Lanes<T, L>(), i); });
  } else if constexpr (L > 1) {
    forCover<T, kFewer<T, L>>(count, body);
  }
}

// The last L of numbers up to end, the last one first.
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE hn::Vec<D> loadDown(D d, const T* end) {
  return hn::Reverse(d, hn::LoadU(d, end - hn::MaxLanes(d)));
}
template <class D, class T = hn::TFromD<D>>
KVRS_INLINE void storeDown(hn::Vec<D> v, D d, T* end) {
  hn::StoreU(hn::Reverse(d, v), d, end - hn::MaxLanes(d));
}

// x to z, N = 2 M.
template <class T>
void sortEven(const T* x, size_t M, T* re, T* im) {
  forCover<T>(M / 2, [=](auto d, size_t m) KVRS_UNROLLED {
    constexpr size_t L = hn::MaxLanes(d);
    const T* const from = x + 4 * m;
    T *const endRe = re + M - m, *const endIm = im + M - m;
    if constexpr (L == 1) {
      re[m] = get(from);
      im[m] = get(from + 2);
      endRe[-1] = get(from + 3);
      endIm[-1] = get(from + 1);
    } else {
      const auto a = hn::LoadU(d, from), b = hn::LoadU(d, from + L);
      const auto c = hn::LoadU(d, from + 2 * L), e = hn::LoadU(d, from + 3 * L);
      const auto even0 = hn::ConcatEven(d, b, a), even1 = hn::ConcatEven(d, e, c);
      const auto odd0 = hn::ConcatOdd(d, b, a), odd1 = hn::ConcatOdd(d, e, c);
      hn::StoreU(hn::ConcatEven(d, even1, even0), d, re + m);
      hn::StoreU(hn::ConcatOdd(d, even1, even0), d, im + m);
      storeDown(hn::ConcatOdd(d, odd1, odd0), d, endRe);
      storeDown(hn::ConcatEven(d, odd1, odd0), d, endIm);
    }
  });
  if (M % 2 != 0) {
    re[M / 2] = get(x + 2 * M - 2);
    im[M / 2] = get(x + 2 * M - 1);
  }
}

// And back.
template <class T>
void unsortEven(const T* re, const T* im, size_t M, T* x) {
  forCover<T>(M / 2, [=](auto d, size_t m) KVRS_UNROLLED {
    T* const to = x + 4 * m;
    const T *const endRe = re + M - m, *const endIm = im + M - m;
    if constexpr (hn::MaxLanes(d) == 1) {
      put(re[m], to);
      put(im[m], to + 2);
      put(endRe[-1], to + 3);
      put(endIm[-1], to + 1);
    } else {
      hn::StoreInterleaved4(hn::LoadU(d, re + m), loadDown(d, endIm), hn::LoadU(d, im + m),
                            loadDown(d, endRe), d, to);
    }
  });
  if (M % 2 != 0) {
    put(re[M / 2], x + 2 * M - 2);
    put(im[M / 2], x + 2 * M - 1);
  }
}

// x to v, N odd.
template <class T>
void sortOdd(const T* x, size_t N, T* v) {
  forCover<T>(N / 2, [=](auto d, size_t j) KVRS_UNROLLED {
    constexpr size_t L = hn::MaxLanes(d);
    if constexpr (L == 1) {
      v[j] = get(x + 2 * j);
      v[N - 1 - j] = get(x + 2 * j + 1);
    } else {
      const auto a = hn::LoadU(d, x + 2 * j), b = hn::LoadU(d, x + 2 * j + L);
      hn::StoreU(hn::ConcatEven(d, b, a), d, v + j);
      storeDown(hn::ConcatOdd(d, b, a), d, v + N - j);
    }
  });
  v[N / 2] = get(x + N - 1);
}

template <class T>
void unsortOdd(const T* v, size_t N, T* x) {
  forCover<T>(N / 2, [=](auto d, size_t j) KVRS_UNROLLED {
    if constexpr (hn::MaxLanes(d) == 1) {
      put(v[j], x + 2 * j);
      put(v[N - 1 - j], x + 2 * j + 1);
    } else {
      hn::StoreInterleaved2(hn::LoadU(d, v + j), loadDown(d, v + N - j), d, x + 2 * j);
    }
  });
  put(v[N / 2], x + N - 1);
}

template <class D>
KVRS_INLINE Complex<hn::Vec<D>> factorAt(D d, const hn::TFromD<D>* w) {
  return {hn::LoadU(d, w), hn::LoadU(d, w + hn::MaxLanes(d))};
}

// Z to y, N = 2 M.
template <class T>
void rotateEven(const T* re, const T* im, size_t M, T scale0, const T* turns, T* y) {
  put((re[0] + im[0]) * scale0, y);
  put((re[0] - im[0]) * scale0, y + M);
  const size_t N = 2 * M;
  forTurns<T>(M, true, [&](auto d, size_t k) KVRS_UNROLLED {
    using C = Complex<hn::Vec<decltype(d)>>;
    constexpr size_t L = hn::MaxLanes(d);
    const auto root = hn::Set(d, static_cast<T>(0.70710678118654752440));
    const C a{hn::LoadU(d, re + k), hn::LoadU(d, im + k)};
    const C b{loadDown(d, re + M - k + 1), loadDown(d, im + M - k + 1)};
    const C w1 = factorAt(d, turns), w5 = factorAt(d, turns + 2 * L);
    turns += 4 * L;
    const auto p = mul(C{hn::Add(a.re, b.re), hn::Sub(a.im, b.im)}, w1);
    const auto q = mul(C{hn::Add(a.im, b.im), hn::Sub(b.re, a.re)}, w5);
    const C u = add(p, q), v = sub(p, q);
    hn::StoreU(u.re, d, y + k);
    storeDown(hn::Neg(u.im), d, y + N - k + 1);
    storeDown(hn::Mul(hn::Sub(v.re, v.im), root), d, y + M - k + 1);
    hn::StoreU(hn::Mul(hn::Add(v.re, v.im), root), d, y + M + k);
  });
}

template <class T>
void unrotateEven(const T* y, size_t M, T scale0, const T* turns, T* re, T* im) {
  const T first = get(y), middle = get(y + M);
  re[0] = (first + middle) * scale0;
  im[0] = (first - middle) * scale0;
  const size_t N = 2 * M;
  forTurns<T>(M, true, [&](auto d, size_t k) KVRS_UNROLLED {
    using C = Complex<hn::Vec<decltype(d)>>;
    constexpr size_t L = hn::MaxLanes(d);
    const auto root = hn::Set(d, static_cast<T>(0.70710678118654752440));
    const C u{hn::LoadU(d, y + k), hn::Neg(loadDown(d, y + N - k + 1))};
    const auto a = loadDown(d, y + M - k + 1), b = hn::LoadU(d, y + M + k);
    const C v{hn::Mul(hn::Add(a, b), root), hn::Mul(hn::Sub(b, a), root)};
    const C w1 = factorAt(d, turns), w5 = factorAt(d, turns + 2 * L);
    turns += 4 * L;
    const C p = mul(add(u, v), w1), q = mul(sub(u, v), w5);
    hn::StoreU(hn::Sub(p.re, q.im), d, re + k);
    hn::StoreU(hn::Add(p.im, q.re), d, im + k);
    storeDown(hn::Add(p.re, q.im), d, re + M - k + 1);
    storeDown(hn::Sub(q.re, p.im), d, im + M - k + 1);
  });
}

// V to y, N odd.
template <class T>
void rotateOdd(const T* re, const T* im, size_t N, T scale0, const T* turns, T* y) {
  put(re[0] * scale0, y);
  forTurns<T>(N, false, [&](auto d, size_t k) KVRS_UNROLLED {
    using C = Complex<hn::Vec<decltype(d)>>;
    const C u = mul(C{hn::LoadU(d, re + k), hn::LoadU(d, im + k)}, factorAt(d, turns));
    turns += 2 * hn::MaxLanes(d);
    hn::StoreU(u.re, d, y + k);
    storeDown(hn::Neg(u.im), d, y + N - k + 1);
  });
}

template <class T>
void unrotateOdd(const T* y, size_t N, T scale0, const T* turns, T* re, T* im) {
  re[0] = get(y) * scale0;
  im[0] = 0;
  forTurns<T>(N, false, [&](auto d, size_t k) KVRS_UNROLLED {
    using C = Complex<hn::Vec<decltype(d)>>;
    const C v = mul(C{hn::LoadU(d, y + k), hn::Neg(loadDown(d, y + N - k + 1))}, factorAt(d, turns));
    turns += 2 * hn::MaxLanes(d);
    hn::StoreU(v.re, d, re + k);
    hn::StoreU(v.im, d, im + k);
    storeDown(v.re, d, re + N - k + 1);
    storeDown(hn::Neg(v.im), d, im + N - k + 1);
  });
}

// The record's transform as the engine takes it.
template <class T>
KVRS_INLINE void loadMixed(const MixedParts<T>& parts, dft::Mixed<T>* x) {
  dft::Plan& plan = x->plan;
  plan.n = parts.n;
  plan.levels = parts.levels;
  x->numbers = parts.numbers.get();
  x->turns = parts.turns.get();
  x->odd.count = 0;
  const T* table = parts.odd.get();
  for (int level = 0, i = 0; level < plan.levels; ++level) {
    plan.rows[level] = 1;
    plan.stages[level] = parts.stages[level];
    for (int stage = 0; stage < plan.stages[level]; ++stage, ++i) {
      const int radix = parts.radix[i];
      plan.rows[level] *= radix;
      plan.radix[i] = radix;
      if (dft::hasKernel(radix) || x->odd.of(radix) != nullptr) continue;
      x->odd.radix[x->odd.count] = radix;
      x->odd.table[x->odd.count] = table;
      ++x->odd.count;
      table += 2 * radix;
    }
  }
}

// The forward transform of the record's convolution, in place.
template <class T>
void transformConvolution(const Record<T>& r, T* pairs, T* work) {
  using fft::Direction;
  if (r.mixed.get() == nullptr) {
    const fft::Record<T>& f = *r.fft.present();
    return fft::transform(f, f.order, Direction::kForward, pairs, pairs, work, T(1));
  }
  dft::Mixed<T> mixed;
  loadMixed(*r.mixed.present(), &mixed);
  const auto points = dft::Points<T>::ofPairs(pairs);
  dft::runMixed(mixed, dft::asSource(points), points, work, T(1));
}

}  // namespace kvrs::dct

#endif
