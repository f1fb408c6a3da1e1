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
  Table<typename Form<D>::Lane> table;

  template <class I>
  KVRS_INLINE Cx<D> apply(D d, I j, Cx<D> x) const {
    if constexpr (j() == 0) {
      return x;
    } else {
      return mul(x, table.load(d, (j - 1) * kPoints<D>));
    }
  }
};

// Numbers, each for all lanes. Vectors of 16 bytes have no instruction that spreads a number on its way out of
// memory: there the factors are spread once and kept.
template <int R, class D>
class NumberTwiddles {
 public:
  using T = typename Form<D>::Lane;

  KVRS_INLINE NumberTwiddles(D d, const T* w) : w_(w) {
    if constexpr (kKept) unroll<R - 1>([&](auto j) KVRS_UNROLLED { kept_[j] = spread(d, w + 2 * j); });
  }

  template <class I>
  KVRS_INLINE Cx<D> apply(D d, I j, Cx<D> x) const {
    if constexpr (j() == 0) {
      return x;
    } else if constexpr (kKept) {
      return mul(x, kept_[j - 1]);
    } else {
      return mul(x, spread(d, w_ + 2 * (j - 1)));
    }
  }

 private:
  static constexpr bool kKept = kVectorBytes == 16;

  const T* w_;
  Complex<typename Form<D>::Vector> kept_[kKept ? R - 1 : 1];
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

// `count` of them side by side.
template <int R, class D, class In, class Out, class Twiddles>
KVRS_INLINE void passSteps(D d, In in, size_t stride, Out out, size_t outStride, size_t count,
                           const Twiddles& twiddles) {
  for (size_t q = 0; q < count; q += kPoints<D>) passStep<R>(d, in, q, stride, out, q, outStride, twiddles);
}

// The same with the rows at 0 .. 3 strides at one register, or twice that, from a pointer that runs: eight general
// registers are just enough then, if the compiler is kept from making one of each row.
struct RowStride {
  size_t one, three;

  explicit RowStride(size_t points) : one(2 * points), three(6 * points) {}
  template <class I>
  KVRS_INLINE size_t operator()(I k) const {
    return k % 3 == 0 ? k / 3 * three : k * one;
  }
  KVRS_INLINE void keep() { asm("" : "+r"(one), "+r"(three)); }
};

template <int R, class T, class In, class Out, class Twiddles>
KVRS_INLINE void passSteps(Pairs<T> d, In in, size_t stride, Out out, size_t outStride, size_t count,
                           const Twiddles& twiddles) {
  RowStride row(stride), outRow(outStride);
  const auto* const end = in.at(count).first();
  do {
    row.keep();
    outRow.keep();
    butterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.loadParts(d, row(k)); },
        [&](auto k, Cx<Pairs<T>> x) KVRS_UNROLLED { out.storeParts(d, outRow(k), twiddles.apply(d, k, x)); });
    in = in.at(kPoints<Pairs<T>>);
    out = out.at(kPoints<Pairs<T>>);
  } while (in.first() != end);
}

// A factor for all results, in place of twiddles.
template <class D>
struct Scale {
  typename Form<D>::Vector scale;

  template <class I>
  KVRS_INLINE Cx<D> apply(D, I, Cx<D> x) const {
    return mul(x, scale);
  }
};
struct NoScale {
  template <class D, class I, class X>
  KVRS_INLINE X apply(D, I, X x) const {
    return x;
  }
};

// Lane p of row j goes to lane j of row p, for R rows: R / L squares side by side. Rows come out in the order
// of the lanes, and the lanes in laneOrder where numbers come apart and together in it, so that whoever joins the
// parts again finds them where they belong.
template <bool kLaneOrder, int R, class D, class Store>
KVRS_INLINE void transposeRows(D d, const Cx<D> (&x)[R], Store store) {
  constexpr int L = static_cast<int>(hn::MaxLanes(d));
  unroll<R / L>([&](auto g) KVRS_UNROLLED {
    hn::Vec<D> re[L], im[L];
    unroll<L>([&](auto l) KVRS_UNROLLED {
      constexpr int kRow = kLaneOrder ? laneOrder<hn::TFromD<D>>(l, L) : l;
      re[l] = x[g * L + kRow].re;
      im[l] = x[g * L + kRow].im;
    });
    transpose(d, re);
    transpose(d, im);
    unroll<L>([&](auto l) KVRS_UNROLLED { store(l, g, Cx<D>{re[l], im[l]}); });
  });
}

// Pairs, the two of a vector to rows of their own: no part of a number leaves its neighbour.
template <bool kLaneOrder, int R, class T, class Store>
KVRS_INLINE void transposeRows(Pairs<T>, const Cx<Pairs<T>> (&x)[R], Store store) {
  if constexpr (kPoints<Pairs<T>> == 1) {
    unroll<R>([&](auto j) KVRS_UNROLLED { store(Index<0>(), j, x[j]); });
  } else {
    const auto d = Form<Pairs<T>>::lanes;
    unroll<R / 2>([&](auto g) KVRS_UNROLLED {
      store(Index<0>(), g, Cx<Pairs<T>>{hn::ConcatLowerLower(d, x[2 * g + 1].v, x[2 * g].v)});
      store(Index<1>(), g, Cx<Pairs<T>>{hn::ConcatUpperUpper(d, x[2 * g + 1].v, x[2 * g].v)});
    });
  }
}

// First pass: butterflies over points n / R apart, for L neighbours at once; the R results of each neighbour
// go together.
template <int R, class In, class T>
void firstPass(In in, Work<T> out, size_t n, const T* w) {
  const PassTag<T> d;
  using C = Cx<PassTag<T>>;
  constexpr size_t L = kPassLanes<T>;
  const size_t m = n / R;
  for (size_t p = 0; p < m; p += L, w += 2 * L * (R - 1)) {
    const LaneTwiddles<PassTag<T>> twiddles{{w}};
    C x[R];
    butterfly<R>(
        d, [&](auto k) KVRS_UNROLLED { return in.load(d, p + k * m); },
        [&](auto k, C y) KVRS_UNROLLED { x[k] = twiddles.apply(d, k, y); });
    transposeRows<In::kLaneOrder>(d, x, [&](auto lane, auto group, C row) KVRS_UNROLLED {
      constexpr int kRow = In::kLaneOrder ? laneOrder<T>(lane, L) : lane;
      out.store(d, R * (p + kRow) + group * L, row);
    });
  }
}

// A pass over groups of n points, s of them side by side: butterflies over points n / R apart. kSide is s where it is
// known beforehand: a loop so short had better be none.
template <int R, size_t kSide, class In, class Out, class T>
void middlePass(In in, Out out, size_t n, size_t side, const T* w) {
  const PassTag<T> d;
  const size_t m = n / R, s = kSide > 0 ? kSide : side;
  for (size_t p = 0; p < m; ++p, w += 2 * (R - 1)) {
    const NumberTwiddles<R, PassTag<T>> twiddles(d, w);
    passSteps<R>(d, in.at(s * p), s * m, out.at(s * R * p), s, s, twiddles);
  }
}

// The last one: groups of R points, no twiddles, and the scale on the way out. In and out may be the same memory.
template <int R, bool kScaled, class In, class Out, class T>
void lastPass(In in, Out out, size_t s, T scale) {
  const PassTag<T> d;
  if constexpr (kScaled) {
    passSteps<R>(d, in, s, out, s, s, Scale<PassTag<T>>{factor(d, scale)});
  } else {
    passSteps<R>(d, in, s, out, s, s, NoScale());
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
void stockham(int order, In in, Out out, Work<T> work, const T* w, T scale) {
  const Plan& plan = kStockhamPlans<T>[order];
  // Runs body(in) for the memory that holds the results of the last pass.
  bool inWork = true;
  const auto fromHere = [&](auto body) KVRS_UNROLLED {
    if (inWork) return body(work);
    if constexpr (kVectorBytes == 16 && In::kLaneOrder) {
      if (reinterpret_cast<uintptr_t>(out.p) % 16 == 0) return body(Work<T>{out.p});
    }
    body(out.area());
  };
  size_t n = size_t{1} << order, s = 1;
  const auto next = [&](int bits) {
    n >>= bits;
    s <<= bits;
    w += 2 * n * ((1 << bits) - 1);
  };
  firstPass<kFirstRadix<T>>(in, work, n, w);
  next(kFirstBits<T>);
  int pass = 1;
  for (; pass + 1 < plan.passes; ++pass) {
    withRadix<2>(plan.bits[pass], [&](auto r) KVRS_UNROLLED {
      const auto run = [&](auto from, auto to) KVRS_UNROLLED {
        pass == 1 ? middlePass<r(), kFirstRadix<T>>(from, to, n, s, w)
                  : middlePass<r(), 0>(from, to, n, s, w);
      };
      if constexpr (In::kLaneOrder) {
        fromHere([&](auto from) KVRS_UNROLLED { run(from, Blocks<T>{inWork ? out.p : work.p}); });
      } else {
        inWork ? run(work, out.area()) : run(out.area(), Blocks<T>{work.p});
      }
    });
    next(plan.bits[pass]);
    inWork = !inWork;
  }
  withRadix<2>(plan.bits[pass], [&](auto r) KVRS_UNROLLED {
    fromHere([&](auto from) KVRS_UNROLLED {
      scale != T(1) ? lastPass<r(), true>(from, out, s, scale) : lastPass<r(), false>(from, out, s, scale);
    });
  });
}

}  // namespace kvrs::fft

#endif
