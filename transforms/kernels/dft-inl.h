// Transforms of any length, of one type of parts.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_DFT_INL_H
#define KVRS_TRANSFORMS_KERNELS_DFT_INL_H

#include <cstring>

#include "transforms/fft_engine.h"
#include "transforms/kernels/tile-inl.h"

namespace kvrs::dft {

// Runs body(tag) for so many lanes.
template <class T, class Body>
KVRS_INLINE void withLanes(int lanes, Body body) {
  constexpr int kAll = static_cast<int>(kLanes<T>), kFewest = sizeof(T) == 4 ? 4 : 2;
  if (lanes == kAll) return body(Lanes<T, kAll>());
  if constexpr (kAll / 2 >= kFewest) {
    if (lanes == kAll / 2) return body(Lanes<T, kAll / 2>());
  }
  if constexpr (kAll / 4 >= kFewest) {
    if (lanes == kAll / 4) return body(Lanes<T, kAll / 4>());
  }
  body(Lanes<T, 1>());
}

template <class T>
void copyBytes(T* to, const T* from, size_t count) {
  std::memcpy(static_cast<void*>(to), from, count * sizeof(T));
}

template <class D, class T>
void runStrip(D d, const Mixed<T>& x, const Points<const T>& src, const Points<T>& dst, T scale) {
  const size_t n = static_cast<size_t>(x.plan.n);
  Tile<T> a, b;
  loadRows(d, src, 0, 1, n, 1, static_cast<const T*>(nullptr), a.planes());
  const auto result =
      tileStages(d, x.plan.radix, x.plan.count, n, 1, x.stripNumbers, x.odd, a.planes(), b.planes());
  storeRows(d, result, n, 1, static_cast<const T*>(nullptr), scale, dst, 0, 1);
}

template <class D, class T>
__attribute__((noinline)) void runStrips(D d, const Mixed<T>& x, Points<const T> src, const Points<T>& dst,
                                         T* work, T scale) {
  const size_t n = static_cast<size_t>(x.plan.n), rows = static_cast<size_t>(x.plan.strip), rest = n / rows;
  const int stages = x.plan.count - x.plan.stripCount;
  const Planes<T> inWork{work, work + n};
  const Planes<T> inDst = dst.pairs ? Planes<T>{dst.first(), dst.first() + n} : Planes<T>{dst.re, dst.im};
  Tile<T> a, b;

  // The last stage has to read out of the work area, as it stores in another order.
  if (stages % 2 == 0 && (src.re == dst.re || src.im == dst.im)) {
    if (src.pairs) {
      copyBytes(work, src.first(), 2 * n);
      src = Points<const T>::ofPairs(work);
      if (dst.im < dst.re) src = src.exchanged();
    } else {
      copyBytes(work, src.re, n);
      copyBytes(work + n, src.im, n);
      src = Points<const T>::ofPlanes(work, work + n);
    }
  }
  Planes<T> from = stages % 2 == 0 ? inDst : inWork;
  const T* turns = x.turns;
  forStrips<T>(rows, rest, hn::MaxLanes(d), [&](size_t first, size_t width) {
    loadRows(d, src, first, rest, rows, width, static_cast<const T*>(nullptr), a.planes());
    const auto tile = tileStages(d, x.plan.radix, x.plan.stripCount, rows, width, x.stripNumbers, x.odd,
                                 a.planes(), b.planes());
    storeTransposed(d, tile, rows, width, turns, from.at(first * rows));
    turns += 2 * width * (rows - 1);
  });

  size_t left = rest, side = rows;
  const T* w = x.restNumbers;
  const auto source = [](Planes<T> p) { return Planes<const T>{p.re, p.im}; };
  for (int i = x.plan.stripCount; i + 1 < x.plan.count; ++i) {
    const size_t r = static_cast<size_t>(x.plan.radix[i]), m = left / r;
    const Planes<T> to = from.re == inWork.re ? inDst : inWork;
    stage(d, x.plan.radix[i], shapeOf(m, r, side), source(from), to, w, x.odd.of(x.plan.radix[i]));
    w += 2 * (m - 1) * (r - 1);
    side *= r;
    left = m;
    from = to;
  }
  const int radix = x.plan.radix[x.plan.count - 1];
  forStrips<T>(left, side, hn::MaxLanes(d), [&](size_t first, size_t width) {
    stage(d, radix, Shape{1, width, side, 0, width, 0}, source(from.at(first)), a.planes(),
          static_cast<const T*>(nullptr), x.odd.of(radix));
    storeRows(d, a.planes(), left, width, static_cast<const T*>(nullptr), scale, dst, first, side);
  });
}

template <class T>
void runMixed(const Mixed<T>& x, Points<const T> src, Points<T> dst, T* work, T scale) {
  if (x.plan.n <= kLastShort) return runTiny(x.plan.n, src, dst, scale);
  if (x.plan.isShort()) return runShort(x, src, dst, scale);
  if (x.plan.count == x.plan.stripCount) return runStrip(Lanes<T, 1>(), x, src, dst, scale);
  withLanes<T>(x.plan.lanes, [&](auto d) { runStrips(d, x, src, dst, work, scale); });
}

// One level forward: columns transformed, then turned.
template <class D, class T>
void levelForward(D d, const OutOfOrder<T>& x, int level, const int* radix, size_t length,
                  const Points<const T>& src, const Points<T>& dst) {
  const size_t rows = static_cast<size_t>(x.plan.size[level]), rest = length / rows;
  Tile<T> a, b;
  const T* turns = x.turns[level];
  forStrips<T>(rows, rest, hn::MaxLanes(d), [&](size_t first, size_t width) {
    loadRows(d, src, first, rest, rows, width, static_cast<const T*>(nullptr), a.planes());
    const auto tile = tileStages(d, radix, x.plan.stages[level], rows, width, x.numbers[level], x.odd,
                                 a.planes(), b.planes());
    storeRows(d, tile, rows, width, turns, T(1), dst, first, rest);
    turns += 2 * width * (rows - 1);
  });
}

// And back: turned, then transformed.
template <class D, class T>
void levelInverse(D d, const OutOfOrder<T>& x, int level, const int* radix, size_t length, T scale,
                  const Points<const T>& src, const Points<T>& dst) {
  const size_t rows = static_cast<size_t>(x.plan.size[level]), rest = length / rows;
  Tile<T> a, b;
  const T* turns = x.turns[level];
  forStrips<T>(rows, rest, hn::MaxLanes(d), [&](size_t first, size_t width) {
    loadRows(d, src, first, rest, rows, width, turns, a.planes());
    const auto tile = tileStages(d, radix, x.plan.stages[level], rows, width, x.numbers[level], x.odd,
                                 a.planes(), b.planes());
    storeRows(d, tile, rows, width, static_cast<const T*>(nullptr), scale, dst, first, rest);
    turns += 2 * width * (rows - 1);
  });
}

// Contiguous blocks, number k of each in row k of a tile. Spectra stay as tiles have them: only signals are transposed.
template <class D, class T>
void lastLevel(D d, Direction direction, const OutOfOrder<T>& x, const int* radix, T scale,
               const Points<const T>& src, const Points<T>& dst) {
  const int level = x.plan.levels - 1;
  const size_t length = static_cast<size_t>(x.plan.size[level]),
               blocks = static_cast<size_t>(x.plan.n) / length;
  const T* const none = nullptr;
  Tile<T> a, b;
  forStrips<T>(length, blocks, hn::MaxLanes(d), [&](size_t first, size_t width) {
    const size_t begin = first * length, count = width * length;
    if (direction == Direction::kForward) {
      loadBlocks(d, src.at(begin), length, width, a.planes());
    } else {
      loadRows(d, src, begin, 0, 1, count, none, a.planes());
    }
    const auto tile = tileStages(d, radix, x.plan.stages[level], length, width, x.numbers[level], x.odd,
                                 a.planes(), b.planes());
    if (direction == Direction::kForward) {
      storeRows(d, tile, 1, count, none, scale, dst, begin, 0);
    } else {
      storeBlocks(d, tile, length, width, scale, dst.at(begin));
    }
  });
}

template <class T>
void runOutOfOrder(const OutOfOrder<T>& x, Points<const T> src, Points<T> dst, T scale) {
  withLanes<T>(x.plan.lanes, [&](auto d) {
    const int* radix = x.plan.radix;
    const size_t n = static_cast<size_t>(x.plan.n);
    size_t length = n;
    for (int level = 0; level + 1 < x.plan.levels; ++level) {
      for (size_t block = 0; block < n; block += length) {
        levelForward(d, x, level, radix, length, src.at(block), dst.at(block));
      }
      radix += x.plan.stages[level];
      length /= static_cast<size_t>(x.plan.size[level]);
      src = asSource(dst);
    }
    lastLevel(d, Direction::kForward, x, radix, scale, src, dst);
  });
}

template <class T>
void runOutOfOrderInverse(const OutOfOrder<T>& x, Points<const T> src, Points<T> dst, T scale) {
  withLanes<T>(x.plan.lanes, [&](auto d) {
    const int* radix = x.plan.radix;
    const size_t n = static_cast<size_t>(x.plan.n);
    for (int level = 0; level + 1 < x.plan.levels; ++level) radix += x.plan.stages[level];
    lastLevel(d, Direction::kInverse, x, radix, x.plan.levels == 1 ? scale : T(1), src, dst);
    size_t length = static_cast<size_t>(x.plan.size[x.plan.levels - 1]);
    for (int level = x.plan.levels - 2; level >= 0; --level) {
      radix -= x.plan.stages[level];
      length *= static_cast<size_t>(x.plan.size[level]);
      for (size_t block = 0; block < n; block += length) {
        levelInverse(d, x, level, radix, length, level == 0 ? scale : T(1), asSource(dst.at(block)),
                     dst.at(block));
      }
    }
  });
}

template <class T>
int directLanes() {
  return static_cast<int>(kLanes<T>);
}

// Pair sums and differences are numbers for all lanes; results are the lanes. See oddButterfly.
template <class T>
void runDirect(int n, const T* table, Points<const T> src, Points<T> dst, T scale) {
  constexpr size_t L = kLanes<T>;
  const Lanes<T, L> d;
  const Lanes<T, 1> one;
  using C = Complex<hn::Vec<Lanes<T, L>>>;
  const size_t half = static_cast<size_t>(n - 1) / 2, padded = (half + L - 1) / L * L;
  T u[2 * 24], v[2 * 24];
  auto x0 = mul(loadPoints(one, src, 0), hn::Set(one, scale));
  auto sum = x0;
  for (size_t k = 0; k < half; ++k) {
    const auto a = mul(loadPoints(one, src, k + 1), hn::Set(one, scale));
    const auto b = mul(loadPoints(one, src, static_cast<size_t>(n) - 1 - k), hn::Set(one, scale));
    const auto plus = add(a, b), minus = sub(a, b);
    hn::Store(plus.re, one, u + 2 * k);
    hn::Store(plus.im, one, u + 2 * k + 1);
    hn::Store(minus.re, one, v + 2 * k);
    hn::Store(minus.im, one, v + 2 * k + 1);
    sum = add(sum, plus);
  }
  alignas(64) T early[2][32], late[2][32];
  for (size_t j = 0; j < padded; j += L) {
    C a{hn::Set(d, hn::GetLane(x0.re)), hn::Set(d, hn::GetLane(x0.im))}, b{hn::Zero(d), hn::Zero(d)};
    const T* at = table + j;
    for (size_t k = 0; k < half; ++k, at += 2 * padded) {
      const auto c = hn::LoadU(d, at), s = hn::LoadU(d, at + padded);
      a = {hn::MulAdd(hn::Set(d, u[2 * k]), c, a.re), hn::MulAdd(hn::Set(d, u[2 * k + 1]), c, a.im)};
      b = {hn::MulAdd(hn::Set(d, v[2 * k]), s, b.re), hn::MulAdd(hn::Set(d, v[2 * k + 1]), s, b.im)};
    }
    const C y = subI(a, b), z = addI(a, b);
    hn::Store(y.re, d, early[0] + j);
    hn::Store(y.im, d, early[1] + j);
    hn::Store(z.re, d, late[0] + j);
    hn::Store(z.im, d, late[1] + j);
  }
  storePoints(one, sum, dst, 0);
  for (size_t j = 0; j < half; ++j) {
    storePoints(one, {hn::Load(one, early[0] + j), hn::Load(one, early[1] + j)}, dst, j + 1);
    storePoints(one, {hn::Load(one, late[0] + j), hn::Load(one, late[1] + j)}, dst,
                static_cast<size_t>(n) - 1 - j);
  }
}

template <class T>
void movePoints(size_t n, Points<const T> src, Points<T> dst, T scale) {
  const Lanes<T, kLanes<T>> d;
  const Lanes<T, 1> one;
  size_t i = 0;
  for (; i + kLanes<T> <= n; i += kLanes<T>)
    storePoints(d, mul(loadPoints(d, src, i), hn::Set(d, scale)), dst, i);
  for (; i < n; ++i) storePoints(one, mul(loadPoints(one, src, i), hn::Set(one, scale)), dst, i);
}

// One place p of all rows, for as many lanes.
template <class D, class T>
KVRS_INLINE void realRowsForward(D d, const RealRows<T>& x, size_t p, const T* src, T* rows) {
  const size_t m = static_cast<size_t>(x.m);
  const int half = (x.r - 1) / 2;
  hn::Vec<D> u[kMostPairs], v[kMostPairs];
  const auto x0 = hn::LoadU(d, src + p);
  auto sum = x0;
  for (int k = 0; k < half; ++k) {
    const auto a = hn::LoadU(d, src + (static_cast<size_t>(k) + 1) * m + p);
    const auto b = hn::LoadU(d, src + static_cast<size_t>(x.r - 1 - k) * m + p);
    u[k] = hn::Add(a, b);
    v[k] = hn::Sub(a, b);
    sum = hn::Add(sum, u[k]);
  }
  hn::StoreU(sum, d, rows + p);
  for (int j = 1; j <= half; ++j) {
    auto a = x0, b = hn::Zero(d);
    for (int k = 0, at = 0; k < half; ++k) {
      at += j;
      if (at >= x.r) at -= x.r;
      a = hn::MulAdd(u[k], hn::Set(d, x.roots[at]), a);
      b = hn::MulAdd(v[k], hn::Set(d, x.roots[x.r + at]), b);
    }
    const size_t row = (2 * static_cast<size_t>(j) - 1) * m + p;
    const T* w = x.turns + (row - m);
    const auto y =
        mul(Complex<hn::Vec<D>>{a, hn::Neg(b)}, Complex<hn::Vec<D>>{hn::LoadU(d, w), hn::LoadU(d, w + m)});
    hn::StoreU(y.re, d, rows + row);
    hn::StoreU(y.im, d, rows + row + m);
  }
}

template <class D, class T>
KVRS_INLINE void realRowsInverse(D d, const RealRows<T>& x, size_t p, const T* rows, T* dst, T scale) {
  const size_t m = static_cast<size_t>(x.m);
  const int half = (x.r - 1) / 2;
  const auto factor = hn::Set(d, scale), twice = hn::Set(d, scale + scale);
  hn::Vec<D> u[kMostPairs], v[kMostPairs];
  const auto x0 = hn::Mul(hn::LoadU(d, rows + p), factor);
  auto sum = x0;
  for (int j = 1; j <= half; ++j) {
    const size_t row = (2 * static_cast<size_t>(j) - 1) * m + p;
    const T* w = x.turns + (row - m);
    // By the conjugate.
    const auto re = hn::LoadU(d, rows + row), im = hn::LoadU(d, rows + row + m);
    const auto c = hn::LoadU(d, w), s = hn::LoadU(d, w + m);
    u[j - 1] = hn::Mul(hn::MulAdd(im, s, hn::Mul(re, c)), twice);
    v[j - 1] = hn::Mul(hn::NegMulAdd(re, s, hn::Mul(im, c)), twice);
    sum = hn::Add(sum, u[j - 1]);
  }
  hn::StoreU(sum, d, dst + p);
  for (int k = 1; k <= half; ++k) {
    auto a = x0, b = hn::Zero(d);
    for (int j = 0, at = 0; j < half; ++j) {
      at += k;
      if (at >= x.r) at -= x.r;
      a = hn::MulAdd(u[j], hn::Set(d, x.roots[at]), a);
      b = hn::MulAdd(v[j], hn::Set(d, x.roots[x.r + at]), b);
    }
    hn::StoreU(hn::Sub(a, b), d, dst + static_cast<size_t>(k) * m + p);
    hn::StoreU(hn::Add(a, b), d, dst + static_cast<size_t>(x.r - k) * m + p);
  }
}

template <class T>
void RealRows<T>::forward(const T* src, T* rows) const {
  const size_t places = static_cast<size_t>(m);
  if (places < kLanes<T>) {
    for (size_t p = 0; p < places; ++p) realRowsForward(Lanes<T, 1>(), *this, p, src, rows);
    return;
  }
  forBlocks<kLanes<T>>(places,
                       [&](size_t p) { realRowsForward(Lanes<T, kLanes<T>>(), *this, p, src, rows); });
}

template <class T>
void RealRows<T>::inverse(T* rows, T* dst, T scale) const {
  const size_t places = static_cast<size_t>(m);
  if (places < kLanes<T>) {
    for (size_t p = 0; p < places; ++p) realRowsInverse(Lanes<T, 1>(), *this, p, rows, dst, scale);
    return;
  }
  forBlocks<kLanes<T>>(places,
                       [&](size_t p) { realRowsInverse(Lanes<T, kLanes<T>>(), *this, p, rows, dst, scale); });
}

}  // namespace kvrs::dft

#endif
