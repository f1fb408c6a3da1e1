// The passes of a self-sorting transform, and the plan that strings them together.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_KERNELS_STOCKHAM_INL_H
#define KVRS_TRANSFORMS_KERNELS_STOCKHAM_INL_H

#include "transforms/fft_plan.h"
#include "transforms/kernels/butterfly-inl.h"

namespace kvrs::fft {

// The factors of a pass, x times factor j for j = 1 .. R - 1: vectors of them, for the lanes.
template <class D>
struct LaneTwiddles {
  Table<hn::TFromD<D>> table;

  template <class I>
  KVRS_INLINE Cx<D> apply(D d, I j, Cx<D> x) const {
    if constexpr (j() == 0) {
      return x;
    } else {
      return mul(x, table.load(d, (j - 1) * hn::MaxLanes(d)));
    }
  }
};

// Numbers, each for all lanes. Vectors of 16 bytes have no instruction that spreads a number on its way out of
// memory: there the factors are spread once and kept.
template <int R, class D>
class NumberTwiddles {
 public:
  KVRS_INLINE NumberTwiddles(D d, const hn::TFromD<D>* w) : w_(w) {
    if constexpr (kKept) {
      unroll<2 * (R - 1)>([&](auto i) KVRS_UNROLLED { kept_[i] = hn::Set(d, w[i]); });
    }
  }

  template <class I>
  KVRS_INLINE Cx<D> apply(D d, I j, Cx<D> x) const {
    if constexpr (j() == 0) {
      return x;
    } else if constexpr (kKept) {
      return mul(x, Cx<D>{kept_[2 * j - 2], kept_[2 * j - 1]});
    } else {
      return mul(x, Cx<D>{hn::Set(d, w_[2 * j - 2]), hn::Set(d, w_[2 * j - 1])});
    }
  }

 private:
  static constexpr bool kKept = kVectorBytes == 16;

  const hn::TFromD<D>* w_;
  hn::Vec<D> kept_[kKept ? 2 * (R - 1) : 1];
};

// One butterfly of a pass: rows `stride` apart in, rows `outStride` apart out.
template <int R, class D, class In, class Out, class Twiddles>
KVRS_INLINE void passStep(D d, In in, size_t first, size_t stride, Out out, size_t outFirst, size_t outStride,
                          const Twiddles& twiddles) {
  butterfly<R>(
      d, [&](auto k) KVRS_UNROLLED { return in.load(d, first + k * stride); },
      [&](auto k, Cx<D> x)
          KVRS_UNROLLED { out.store(d, outFirst + k * outStride, twiddles.apply(d, k, x)); });
}

// A factor for all results, in place of twiddles.
template <class D>
struct Scale {
  hn::Vec<D> factor;

  template <class I>
  KVRS_INLINE Cx<D> apply(D, I, Cx<D> x) const {
    return mul(x, factor);
  }
};
struct NoScale {
  template <class D, class I, class X>
  KVRS_INLINE X apply(D, I, X x) const {
    return x;
  }
};

// Lane p of row j goes to lane j of row p, for R rows: R / L squares side by side. Rows come out in the order
// of the lanes, and the lanes in laneOrder, so that whoever joins the parts again finds them where they
// belong.
template <int R, class D, class Store>
KVRS_INLINE void transposeRows(D d, const Cx<D> (&x)[R], Store store) {
  constexpr int L = static_cast<int>(hn::MaxLanes(d));
  unroll<R / L>([&](auto g) KVRS_UNROLLED {
    hn::Vec<D> re[L], im[L];
    unroll<L>([&](auto l) KVRS_UNROLLED {
      re[l] = x[g * L + laneOrder<hn::TFromD<D>>(l, L)].re;
      im[l] = x[g * L + laneOrder<hn::TFromD<D>>(l, L)].im;
    });
    transpose(d, re);
    transpose(d, im);
    unroll<L>([&](auto l) KVRS_UNROLLED { store(l, g, Cx<D>{re[l], im[l]}); });
  });
}

// First pass: butterflies over points n / R apart, for L neighbours at once; the R results of each neighbour
// go together.
template <int R, size_t L, class In, class T>
void firstPass(In in, Blocks<T> out, size_t n, const T* w) {
  const Lanes<T, L> d;
  using C = Cx<Lanes<T, L>>;
  const size_t m = n / R;
  for (size_t p = 0; p < m; p += L, w += 2 * L * (R - 1)) {
    const LaneTwiddles<Lanes<T, L>> twiddles{{w}};
    C x[R];
    butterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, p + k * m); },
        [&](auto k, C y) KVRS_UNROLLED { x[k] = twiddles.apply(d, k, y); });
    transposeRows(d, x, [&](auto lane, auto group, C row) KVRS_UNROLLED {
      constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, L) : lane;
      out.store(d, R * (p + kRow) + group * L, row);
    });
  }
}

// A pass over groups of n points, s of them side by side: butterflies over points n / R apart.
template <int R, class In, class Out, class T>
void middlePass(In in, Out out, size_t n, size_t s, const T* w) {
  const Lanes<T, kLanes<T>> d;
  const size_t m = n / R;
  for (size_t p = 0; p < m; ++p, w += 2 * (R - 1)) {
    const NumberTwiddles<R, Lanes<T, kLanes<T>>> twiddles(d, w);
    for (size_t q = 0; q < s; q += kLanes<T>) {
      passStep<R>(d, in, q + s * p, s * m, out, q + s * R * p, s, twiddles);
    }
  }
}

// The last one: groups of R points, no twiddles, and the scale on the way out. In and out may be the same memory.
template <int R, bool kScaled, class In, class Out, class T>
void lastPass(In in, Out out, size_t s, T scale) {
  const Lanes<T, kLanes<T>> d;
  for (size_t q = 0; q < s; q += kLanes<T>) {
    if constexpr (kScaled) {
      passStep<R>(d, in, q, s, out, q, s, Scale<Lanes<T, kLanes<T>>>{hn::Set(d, scale)});
    } else {
      passStep<R>(d, in, q, s, out, q, s, NoScale());
    }
  }
}

// Runs body(Index<R>()) for the radix R of so many bits.
template <int kLeastBits, class F>
KVRS_INLINE void withRadix(int bits, F body) {
  if constexpr (kLeastBits < kMaxBits) {
    if (bits == kLeastBits) return body(Index<1 << kLeastBits>());
    return withRadix<kLeastBits + 1>(bits, body);
  } else {
    return body(Index<1 << kMaxBits>());
  }
}

// The whole transform of 2^order points. The work area and the memory of `out` take turns; the last pass needs no
// other memory than that of `out`, so that any number of passes will do.
template <class T, class In, class Out>
void stockham(int order, In in, Out out, Blocks<T> work, const T* w, T scale) {
  const Plan& plan = kStockhamPlans<T>[order];
  const auto scratch = out.scratch();
  size_t n = size_t{1} << order, s = 1;
  const auto next = [&](int bits) {
    n >>= bits;
    s <<= bits;
    w += 2 * n * ((1 << bits) - 1);
  };
  firstPass<kFirstRadix<T>, kLanes<T>>(in, work, n, w);
  next(kFirstBits<T>);
  bool inWork = true;
  int pass = 1;
  for (; pass + 1 < plan.passes; ++pass) {
    withRadix<2>(plan.bits[pass], [&](auto r) KVRS_UNROLLED {
      inWork ? middlePass<r()>(work, scratch, n, s, w) : middlePass<r()>(scratch, work, n, s, w);
    });
    next(plan.bits[pass]);
    inWork = !inWork;
  }
  withRadix<2>(plan.bits[pass], [&](auto r) KVRS_UNROLLED {
    const auto last = [&](auto from) KVRS_UNROLLED {
      scale != T(1) ? lastPass<r(), true>(from, out, s, scale) : lastPass<r(), false>(from, out, s, scale);
    };
    inWork ? last(work) : last(scratch);
  });
}

}  // namespace kvrs::fft

#endif
