// Transforms of a b points, both of them radices with a kernel, in two steps of vectors of pairs.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_STRAIGHT_INL_H
#define KVRS_TRANSFORMS_KERNELS_STRAIGHT_INL_H

#include "frame/first.h"
#include "transforms/kernels/tile-inl.h"

namespace kvrs::dft {

inline constexpr size_t kMostStraight = size_t{kLastShort} * kLastShort;

template <class T>
using PairVector = typename Form<Pairs<T>>::Vector;

// Minus zeros where the imaginary parts are: of conjugate numbers the forward transform gives the conjugate of the inverse
// one.
template <class T>
KVRS_INLINE PairVector<T> signsOf(bool isInverse) {
  return setPairs(Form<Pairs<T>>::lanes, T(0), isInverse ? T(-0.0) : T(0));
}

// Of pairs [R][columns]: the columns transformed, turned, and put in `area` as rows of whole vectors.
template <int R, class T>
__attribute__((noinline)) void columnsToRows(size_t columns, const T* src, bool isInverse, const T* turns,
                                             T* area) {
  constexpr Pairs<T> pairs;
  constexpr auto d = Form<Pairs<T>>::lanes;
  constexpr int P = kPairsOfVector<T>, kSquares = (R + P - 1) / P;
  using C = Cx<Pairs<T>>;
  const auto signs = signsOf<T>(isInverse);
  for (size_t q = 0; q < columns; q += P) {
    // Without masks the last vector lies over the one before.
    if (!kMaskRegisters && q + P > columns) q = columns - P;
    [[maybe_unused]] const auto mask = firstLanes(d, 2 * (columns - q < P ? columns - q : P));
    C y[kSquares * P];
    anyButterfly<R>(
        pairs,
        [&](auto k) KVRS_UNROLLED {
          const T* const from = src + 2 * (k * columns + q);
          if constexpr (kMaskRegisters) return C{hn::Xor(hn::MaskedLoad(mask, d, from), signs)};
          return C{hn::Xor(hn::LoadU(d, from), signs)};
        },
        [&](auto j, C x) KVRS_UNROLLED {
          if constexpr (j > 0) {
            const T* const w = turns + 2 * ((j - 1) * columns + q);
            x = mul(x, C{hn::LoadU(d, w)});
          }
          y[j] = x;
        });
    unroll<kSquares>([&](auto s) KVRS_UNROLLED {
      C x[P];
      // Rows that there are not are the last one's.
      unroll<P>([&](auto i) KVRS_UNROLLED { x[i] = y[s * P + i < R ? s * P + i : R - 1]; });
      transposePairs<T>(x);
      unroll<P>([&](auto i)
                    KVRS_UNROLLED { hn::Store(x[i].v, d, area + 2 * ((q + i) * kSquares * P + s * P)); });
    });
  }
}

// Of R rows of `count` pairs in `area`, the columns transformed, times `scale`, and stored as pairs [R][count].
template <int R, class T>
__attribute__((noinline)) void rowsToPairs(size_t count, const T* area, bool isInverse, T scale, T* dst) {
  constexpr Pairs<T> pairs;
  constexpr auto d = Form<Pairs<T>>::lanes;
  constexpr size_t P = kPairsOfVector<T>;
  using C = Cx<Pairs<T>>;
  const auto factor = hn::Xor(hn::Set(d, scale), signsOf<T>(isInverse));
  const size_t pitch = (count + P - 1) / P * P;
  // Without masks a vector may reach into the next row, which is stored later.
  for (size_t q = pitch; q > 0;) {
    q -= P;
    const size_t rest = count - q < P ? count - q : P;
    [[maybe_unused]] const auto mask = firstLanes(d, 2 * rest);
    anyButterfly<R>(
        pairs, [&](auto k) KVRS_UNROLLED { return C{hn::Load(d, area + 2 * (k * pitch + q))}; },
        [&](auto k, C x) KVRS_UNROLLED {
          const auto v = hn::Mul(x.v, factor);
          T* const to = dst + 2 * (k * count + q);
          if constexpr (kMaskRegisters) {
            hn::BlendedStore(v, mask, d, to);
          } else {
            if constexpr (k + 1 == R) {
              if (rest < P) return storeFirst(v, d, to, 2 * rest);
            }
            hn::StoreU(v, d, to);
          }
        });
  }
}

template <class Body>
KVRS_INLINE void withStraightRadix(int radix, Body body) {
  radix == 16 ? body(Index<16>()) : withRadix(radix, body, [] {});
}

template <class T>
void runStraight(const Plan& plan, const T* turns, const Points<const T>& src, const Points<T>& dst,
                 T scale) {
  alignas(64) T area[2 * kMostStraight];
  alignas(64) T other[2 * kMostStraight];
  // Other forms than pairs in their order, or exchanged on both sides, by way of such.
  const bool isInverse = src.isExchanged() && dst.isExchanged();
  const auto isDirect = [&](const auto& x) { return x.pairs && x.isExchanged() == isInverse; };
  const size_t n = static_cast<size_t>(plan.n);
  const T* const from = isDirect(src) ? src.first() : other;
  T* const to = isDirect(dst) ? dst.first() : other;
  if (from == other) movePoints(n, src, Points<T>::ofPairs(other), T(1));
  withStraightRadix(plan.rows[0], [&](auto r) {
    columnsToRows<r>(static_cast<size_t>(plan.rows[1]), from, isInverse, turns, area);
  });
  withStraightRadix(plan.rows[1], [&](auto r) {
    rowsToPairs<r>(static_cast<size_t>(plan.rows[0]), area, isInverse, scale, to);
  });
  if (to == other) movePoints(n, asSource(Points<T>::ofPairs(other)), dst, T(1));
}

}  // namespace kvrs::dft

#endif
