// Transforms of any length, of one type of parts.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_DFT_INL_H
#define KVRS_TRANSFORMS_KERNELS_DFT_INL_H

#include <cstring>

#include "transforms/fft_engine.h"
#include "transforms/kernels/tile-inl.h"

namespace kvrs::dft {

template <class T>
void copyBytes(T* to, const T* from, size_t count) {
  std::memcpy(static_cast<void*>(to), from, count * sizeof(T));
}

// One level of a plan as it runs: its rows and radices, and what transforms a strip.
template <class T>
struct Level {
  size_t rows;
  const int* radix;
  int stages;
  const T* numbers;
  const OddRoots<T>& odd;

  Planes<T> transform(Planes<const T> in, size_t distance, size_t width, Planes<T> a, Planes<T> b) const {
    return tileStages(radix, stages, rows, width, numbers, odd, in, distance, a, b);
  }
  // In a tile.
  Planes<T> transform(Planes<T> tile, size_t width, Planes<T> other) const {
    return transform(sourceOf(tile), width, width, other, tile);
  }
  // Rows of memory transformed, then turned by the factors of a strip, to rows of whole vectors; those of `out`, or if that
  // is null of the tile returned.
  Planes<T> transformTurned(const Points<const T>& src, size_t distance, size_t width, const T* turns,
                            Planes<T> a, Planes<T> b, Planes<T> out, size_t outPitch) const {
    const size_t pitch = pitchOf<T>(width);
    const bool isOneStage = stages == 1 && *radix <= kLastRadix, isInTile = out.re == nullptr;
    if (isInTile) {
      out = b;
      outPitch = pitch;
    }
    const auto run = [&](const auto& in, size_t between) {
      withRadix(
          *radix, [&](auto r) { turnedStageOf<r>(in, between, out, outPitch, turns, width); }, [] {});
      return out;
    };
    if constexpr (kStagesReachMemory) {
      if (isOneStage) return run(MaskedRows<const T>(src, 0, width), distance);
    }
    // Whole rows of planes need no tile to be read.
    const bool isRead = !src.pairs && width % kLanes<T> == 0;
    if (!isRead) loadRows(src, 0, distance, rows, width, a.re, a.im);
    const Planes<const T> in = isRead ? Planes<const T>{src.re, src.im} : sourceOf(a);
    if (!isRead) distance = pitch;
    if constexpr (!kStagesReachMemory) {
      if (isOneStage) return run(in, distance);
    }
    const Planes<T> tile = transform(in, distance, pitch, b, a);
    if (isInTile) out = tile;
    turnRows(sourceOf(tile), pitch, rows, width, turns, out, outPitch);
    return out;
  }
  // Rows `pitch` apart transformed, to rows of memory.
  void transformStored(Planes<const T> in, size_t pitch, size_t width, Planes<T> a, Planes<T> b, T scale,
                       const Points<T>& dst, size_t first, size_t distance) const {
    if constexpr (kStagesReachMemory) {
      const int last = radix[stages - 1];
      if (last <= kLastRadix) {
        size_t side = 1;
        for (int i = 0; i + 1 < stages; ++i) side *= static_cast<size_t>(radix[i]);
        if (stages > 1) {
          const auto tile =
              tileStages(radix, stages - 1, rows, pitchOf<T>(width), numbers, odd, in, pitch, a, b);
          in = sourceOf(tile);
          pitch = kLanes<T>;
        }
        const MaskedRows<T> out(dst, first, width);
        return withRadix(
            last,
            [&](auto r) {
              storedStageOf<r>(side, pitch * side, in, ScaledRows<T>{out, scale}, distance);
            },
            [] {});
      }
    }
    const auto tile = transform(in, pitch, pitchOf<T>(width), a, b);
    storeRows(tile.re, tile.im, rows, width, scale, dst, first, distance);
  }
  static Planes<const T> sourceOf(Planes<T> p) { return {p.re, p.im}; }
};

// body(first, width) for strips of whole vectors that cover a side, the last one over the one before; where rows are
// filled up, or whole vectors, for strips of it one behind the other.
template <class T, class Body>
KVRS_INLINE void forStrips(size_t side, bool isWhole, Body body) {
  constexpr size_t L = kLanes<T>, kWidth = kTileWidth<T>;
  for (size_t first = 0, width; first < side; first += width) {
    width = side - first < kWidth ? side - first : kWidth;
    if (!isWhole && width % L != 0) {
      if (width < L) first = side - L;
      width = width < L ? L : width - width % L;
    }
    body(first, width);
  }
}

template <class T>
void oneColumn(const Level<T>& level, const Points<const T>& src, const Points<T>& dst, T scale) {
  Tile<T> a, b;
  loadRows(src, 0, 1, level.rows, 1, a.re, a.im);
  const auto result = level.transform(a.planes(), kLanes<T>, b.planes());
  storeRows(result.re, result.im, level.rows, 1, scale, dst, 0, 1);
}

// Pointers where a pair of them would come in two registers, be put together in memory and stall a load of both.
template <class T>
__attribute__((noinline)) void firstLevel(const Level<T>& level, size_t m, const T* turns,
                                          const Points<const T>& src, T* outRe, T* outIm, size_t outPitch) {
  Tile<T> a, b;
  for (size_t p = 0, width; p < m; p += width) {
    width = m - p < kTileWidth<T> ? m - p : kTileWidth<T>;
    const Planes<T> tile =
        level.transformTurned(src.at(p), m, width, turns, a.planes(), b.planes(), Planes<T>{}, 0);
    storeTransposed(tile, level.rows, width, Planes<T>{outRe + p * outPitch, outIm + p * outPitch}, outPitch);
    turns += 2 * width * (level.rows - 1);
  }
}

template <class T>
__attribute__((noinline)) void middleLevel(const Level<T>& level, size_t m, size_t side, const T* turns,
                                           Planes<const T> in, Planes<T> out) {
  const Full<T> d;
  Tile<T> a, b;
  for (size_t p = 0; p < m; ++p, turns += 2 * (level.rows - 1)) {
    forStrips<T>(side, false, [&](size_t first, size_t width) {
      const auto tile = level.transform(in.at(side * p + first), side * m, width, a.planes(), b.planes());
      for (size_t j = 0; j < level.rows; ++j) {
        const size_t to = side * (level.rows * p + j) + first;
        const T one[] = {1, 0};
        const auto w = spread(d, j == 0 ? one : turns + 2 * (j - 1));
        for (size_t q = 0; q < width; q += kLanes<T>)
          out.store(d, to + q, mul(tile.load(d, j * width + q), w));
      }
    });
  }
}

template <class T>
__attribute__((noinline)) void lastLevel(const Level<T>& level, size_t side, size_t pitch, const T* inRe,
                                         const T* inIm, const Points<T>& dst, T scale) {
  Tile<T> a, b;
  forStrips<T>(side, side != pitch, [&](size_t first, size_t width) {
    const Planes<const T> in{inRe + first, inIm + first};
    level.transformStored(in, pitch, width, a.planes(), b.planes(), scale, dst, first, side);
  });
}

// Two levels by way of rows that are filled up.
template <class T>
__attribute__((noinline)) void runPadded(const Level<T>& first, const Level<T>& last, const T* turns,
                                         const Points<const T>& src, const Points<T>& dst, T scale) {
  // Vectors reach beyond the last row where they are shared.
  alignas(64) T area[2 * kMostPadded<T> + kLanes<T>];
  const size_t pitch = pitchOf<T>(first.rows);
  T* im = area + kMostPadded<T>;
  if (shareVectors<T>(static_cast<int>(first.rows))) {
    im = area + kLanes<T> / 2;
    hn::StoreU(hn::Zero(Full<T>()), Full<T>(), area + pitch * last.rows);
  }
  firstLevel(first, last.rows, turns, src, area, im, pitch);
  lastLevel<T>(last, first.rows, pitch, area, im, dst, scale);
}

template <class T>
void runMixed(const Mixed<T>& x, const Points<const T>& src, const Points<T>& dst, T* work, T scale) {
  const Plan& plan = x.plan;
  if (plan.n <= kLastShort) return runTiny(plan.n, src, dst, scale);
  if (isStraight<T>(plan)) return runStraight(plan, x.turns, src, dst, scale);
  const int* radix = plan.radix;
  const T* numbers = x.numbers;
  const auto next = [&](int level) {
    const Level<T> made{static_cast<size_t>(plan.rows[level]), radix, plan.stages[level], numbers, x.odd};
    numbers += numbersOf(radix, made.stages, made.rows);
    radix += made.stages;
    return made;
  };
  const Level<T> first = next(0);
  if (plan.levels == 1) return oneColumn(first, src, dst, scale);
  if (isPadded<T>(plan)) return runPadded(first, next(1), x.turns, src, dst, scale);

  // The last level has to read out of the work area, as it stores in another order; before that the areas take turns.
  const size_t n = static_cast<size_t>(plan.n);
  const Planes<T> inWork{work, work + n};
  const Planes<T> inDst = dst.pairs ? Planes<T>{dst.first(), dst.first() + n} : Planes<T>{dst.re, dst.im};
  Planes<T> to = plan.levels % 2 == 0 ? inWork : inDst;
  Points<const T> from = src;
  if (to.re != work && (src.re == dst.re || src.im == dst.im)) {
    if (src.pairs) {
      copyBytes(work, src.first(), 2 * n);
      from = Points<const T>::ofPairs(work);
      if (dst.im < dst.re) from = from.exchanged();
    } else {
      copyBytes(work, src.re, n);
      copyBytes(work + n, src.im, n);
      from = Points<const T>::ofPlanes(work, work + n);
    }
  }
  size_t m = n / first.rows, side = first.rows;
  const T* turns = x.turns;
  firstLevel(first, m, turns, from, to.re, to.im, side);
  turns += 2 * (side - 1) * m;
  for (int i = 1; i + 1 < plan.levels; ++i) {
    const Level<T> level = next(i);
    const Planes<const T> in{to.re, to.im};
    to = to.re == work ? inDst : inWork;
    m /= level.rows;
    middleLevel(level, m, side, turns, in, to);
    turns += 2 * (level.rows - 1) * m;
    side *= level.rows;
  }
  lastLevel<T>(next(plan.levels - 1), side, side, to.re, to.im, dst, scale);
}

template <class T>
Level<T> levelOf(const OutOfOrder<T>& x, int level) {
  const int* radix = x.plan.radix;
  for (int i = 0; i < level; ++i) radix += x.plan.stages[i];
  return {static_cast<size_t>(x.plan.rows[level]), radix, x.plan.stages[level], x.numbers[level], x.odd};
}

// Between the levels the memory of dst holds blocks, those of the last level, each in strips of a tile's width: real parts,
// then imaginary ones, so that no pair is put together or taken apart.
template <class T>
struct BlockStrips {
  T* memory;
  size_t length;

  // body(first, width) for the strips of a block.
  template <class Body>
  KVRS_INLINE void forEach(Body body) const {
    for (size_t first = 0; first < length; first += kTileWidth<T>)
      body(first, length - first < kTileWidth<T> ? length - first : kTileWidth<T>);
  }
  // The strip that begins with point i.
  Points<T> at(size_t i, size_t width) const {
    return Points<T>::ofPlanes(memory + 2 * i, memory + 2 * i + width);
  }
};

// One level of `size` points from number `first` on, columns transformed and turned, in blocks; the outermost one from src.
template <class T>
__attribute__((noinline)) void outwardLevel(const Level<T>& level, const T* turns, size_t size, size_t first,
                                            const Points<const T>* src, const BlockStrips<T>& blocks) {
  const size_t rows = level.rows, rest = size / rows;
  Tile<T> a, b;
  for (size_t p = 0; p < rest; p += blocks.length) {
    blocks.forEach([&](size_t q, size_t width) {
      const size_t at = first + p + q;
      const Points<T> strip = blocks.at(at, width);
      const bool isWhole = width % kLanes<T> == 0;
      const Planes<T> out = isWhole ? Planes<T>{strip.re, strip.im} : Planes<T>{};
      const Planes<T> tile = level.transformTurned(src != nullptr ? src->at(at) : asSource(strip),
                                                   src != nullptr ? rest : 2 * rest, width, turns, a.planes(),
                                                   b.planes(), out, 2 * rest);
      if (!isWhole) storeRows<T>(tile.re, tile.im, rows, width, T(1), strip, 0, 2 * rest);
      turns += 2 * width * (rows - 1);
    });
  }
}

// The other way: turned and transformed, the outermost one to dst.
template <class T>
__attribute__((noinline)) void inwardLevel(const Level<T>& level, const T* turns, size_t size, size_t first,
                                           const BlockStrips<T>& blocks, const Points<T>* dst, T scale) {
  const size_t rows = level.rows, rest = size / rows;
  Tile<T> a, b;
  const auto tile = Level<T>::sourceOf(a.planes());
  for (size_t p = 0; p < rest; p += blocks.length) {
    blocks.forEach([&](size_t q, size_t width) {
      const size_t at = first + p + q, pitch = pitchOf<T>(width);
      const Points<T> strip = blocks.at(at, width);
      if (width % kLanes<T> == 0) {
        turnRows(Planes<const T>{strip.re, strip.im}, 2 * rest, rows, width, turns, a.planes(), pitch);
      } else {
        loadRows(asSource(strip), 0, 2 * rest, rows, width, a.re, a.im);
        turnRows(tile, pitch, rows, width, turns, a.planes(), pitch);
      }
      const bool isLast = dst != nullptr;
      level.transformStored(tile, pitch, width, b.planes(), a.planes(), scale, isLast ? dst->at(at) : strip,
                            0, isLast ? rest : 2 * rest);
      turns += 2 * width * (rows - 1);
    });
  }
}

// Blocks, number k of each in row k of a tile. Spectra stay as tiles have them: only signals are transposed.
template <class T>
__attribute__((noinline)) void lastOutward(const Level<T>& level, size_t n, const BlockStrips<T>& blocks,
                                           const Points<T>& dst, T scale) {
  const size_t length = level.rows, count = n / length;
  Tile<T> a, b;
  for (size_t block = 0, width; block < count; block += width) {
    width = count - block < kTileWidth<T> ? count - block : kTileWidth<T>;
    const size_t begin = block * length, pitch = pitchOf<T>(width);
    blocks.forEach([&](size_t k, size_t strip) {
      const Points<T> from = blocks.at(begin + k, strip);
      transposePlane<true, T>(from.re, 2 * length, width, strip, a.re + k * pitch, pitch, pitch);
      transposePlane<true, T>(from.im, 2 * length, width, strip, a.im + k * pitch, pitch, pitch);
    });
    level.transformStored(Level<T>::sourceOf(a.planes()), pitch, width, b.planes(), a.planes(), scale, dst,
                          begin, width);
  }
}

template <class T>
__attribute__((noinline)) void lastInward(const Level<T>& level, size_t n, const Points<const T>& src,
                                          const BlockStrips<T>& blocks) {
  const size_t length = level.rows, count = n / length;
  Tile<T> a, b;
  for (size_t block = 0, width; block < count; block += width) {
    width = count - block < kTileWidth<T> ? count - block : kTileWidth<T>;
    const size_t begin = block * length, pitch = pitchOf<T>(width);
    loadRows(src, begin, width, length, width, a.re, a.im);
    const auto tile = level.transform(a.planes(), pitch, b.planes());
    blocks.forEach([&](size_t k, size_t strip) {
      const Points<T> to = blocks.at(begin + k, strip);
      transposePlane<true, T>(tile.re + k * pitch, pitch, strip, width, to.re, 2 * length, strip);
      transposePlane<true, T>(tile.im + k * pitch, pitch, strip, width, to.im, 2 * length, strip);
    });
  }
}

template <class T>
BlockStrips<T> blocksOf(const OutOfOrder<T>& x, const Points<T>& dst) {
  return {dst.first(), static_cast<size_t>(x.plan.rows[x.plan.levels - 1])};
}

template <class T>
void runOutOfOrder(const OutOfOrder<T>& x, Points<const T> src, Points<T> dst, T scale) {
  const size_t n = static_cast<size_t>(x.plan.n);
  const BlockStrips<T> blocks = blocksOf(x, dst);
  const int last = x.plan.levels - 1;
  size_t size = n;
  for (int i = 0; i < last; ++i) {
    const Level<T> level = levelOf(x, i);
    for (size_t first = 0; first < n; first += size)
      outwardLevel<T>(level, x.turns[i], size, first, i == 0 ? &src : nullptr, blocks);
    size /= level.rows;
  }
  lastOutward(levelOf(x, last), n, blocks, dst, scale);
}

template <class T>
void runOutOfOrderInverse(const OutOfOrder<T>& x, Points<const T> src, Points<T> dst, T scale) {
  const size_t n = static_cast<size_t>(x.plan.n);
  const BlockStrips<T> blocks = blocksOf(x, dst);
  const int last = x.plan.levels - 1;
  lastInward(levelOf(x, last), n, src, blocks);
  size_t size = blocks.length;
  for (int i = last - 1; i >= 0; --i) {
    const Level<T> level = levelOf(x, i);
    size *= level.rows;
    for (size_t first = 0; first < n; first += size)
      inwardLevel<T>(level, x.turns[i], size, first, blocks, i == 0 ? &dst : nullptr, i == 0 ? scale : T(1));
  }
}

// Pair sums and differences are numbers for all lanes; results are the lanes. See oddButterfly.
template <class T>
void runDirect(int n, const T* table, const Points<const T>& src, const Points<T>& dst, T scale) {
  constexpr size_t L = kLanes<T>;
  const Lanes<T, L> d;
  const Lanes<T, 1> one;
  using C = Complex<hn::Vec<Lanes<T, L>>>;
  const size_t half = static_cast<size_t>(n - 1) / 2, padded = pitchOf<T>(half);
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
void movePoints(size_t n, const Points<const T>& src, const Points<T>& dst, T scale) {
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
