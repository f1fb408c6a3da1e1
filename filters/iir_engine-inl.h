// The engines of recursive filters, for the sources that instantiate them.
//
// A recursion is as slow as the additions that each output needs of the one before. Look-ahead lets a whole block of
// outputs depend on the block before instead (Parhi, Messerschmitt, 1989). A section is b0 and (e1/z + e2/z^2) / A(z) side
// by side; with z[n] the outputs of the latter, e its impulse response and g that of 1 / A(z), M of them are M columns of
// one product,
//
//   (z[n], z[n+1], z[n+2], ...) = x[n]   (0, e[1], e[2], ...)    + x[n-1] (e1 g0, e1 g1 + e2 g0, e1 g2 + e2 g1, ...)
//                               + x[n+1] (0,  0,   e[1], ...)    + x[n-2] (e2 g0, e2 g1, e2 g2, ...)
//                               + x[n+2] (0,  0,    0, ...) + ... + z[n-1] (g1, g2, g3, ...) + z[n-2] (c2 g0, c2 g1, ...)
//
// in which all terms but the last two are known long before. (The outputs themselves would do for z, but those of a filter
// that changes little, such as a high-pass at a low frequency, come from large terms that cancel.) Complex numbers lie in
// vectors as pairs. A product with a complex number x is one with x.re and another with x.im that is turned by a quarter at
// the end, for a whole sum at once.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_IIR_ENGINE_INL_H
#define KVRS_FILTERS_IIR_ENGINE_INL_H

#include "filters/iir_engine.h"
#include "frame/complex.h"
#include "frame/unroll.h"

namespace kvrs::iir {

template <class W>
using Tag = Lanes<Part<W>, kLanes<Part<W>>>;
template <class W>
using Vec = hn::Vec<Tag<W>>;

// Numbers in a vector.
template <class W>
inline constexpr size_t kWide = kVectorBytes / sizeof(W);

template <class W>
KVRS_INLINE Vec<W> loadVector(const W* from) {
  return hn::LoadU(Tag<W>(), reinterpret_cast<const Part<W>*>(from));
}
template <class W>
KVRS_INLINE void storeVector(Vec<W> v, W* to) {
  hn::StoreU(v, Tag<W>(), reinterpret_cast<Part<W>*>(to));
}

// One number in all lanes, part by part.
template <class W>
struct Everywhere {
  Vec<W> parts[kParts<W>];
};

template <class W>
KVRS_INLINE Everywhere<W> everywhere(W x) {
  const Tag<W> d;
  if constexpr (kIsComplex<W>) {
    return {{hn::Set(d, x.re), hn::Set(d, x.im)}};
  } else {
    return {{hn::Set(d, x)}};
  }
}
template <int lane, class V>
KVRS_INLINE V lanesOfOne(V v) {
  if constexpr (sizeof(v.raw) == 16) {
    return hn::Broadcast<lane>(v);
  } else {
    const hn::DFromV<V> d;
    const hn::RebindToSigned<decltype(d)> di;
    return hn::TableLookupLanes(v, hn::IndicesFromVec(d, hn::Set(di, lane)));
  }
}
template <class W, int i>
KVRS_INLINE Everywhere<W> everywhereOf(Vec<W> v) {
  if constexpr (kIsComplex<W>) {
    return {{lanesOfOne<2 * i>(v), lanesOfOne<2 * i + 1>(v)}};
  } else {
    return {{lanesOfOne<i>(v)}};
  }
}
template <class W>
KVRS_INLINE W one(Everywhere<W> x) {
  if constexpr (kIsComplex<W>) {
    return {hn::GetLane(x.parts[0]), hn::GetLane(x.parts[1])};
  } else {
    return hn::GetLane(x.parts[0]);
  }
}

// A sum of products of rows and single numbers.
template <class W>
struct Sum {
  Vec<W> parts[kParts<W>];

  KVRS_INLINE void add(Vec<W> row, Everywhere<W> x) {
    parts[0] = hn::MulAdd(x.parts[0], row, parts[0]);
    if constexpr (kIsComplex<W>) parts[1] = hn::MulAdd(x.parts[1], row, parts[1]);
  }
  KVRS_INLINE void add(Vec<W> row, W x) { add(row, everywhere(x)); }
  KVRS_INLINE void begin(Vec<W> row, Everywhere<W> x) {
    parts[0] = hn::Mul(x.parts[0], row);
    if constexpr (kIsComplex<W>) parts[1] = hn::Mul(x.parts[1], row);
  }
  KVRS_INLINE void add(const Sum& other) {
    for (size_t i = 0; i < kParts<W>; ++i) parts[i] = hn::Add(parts[i], other.parts[i]);
  }
  KVRS_INLINE Vec<W> total() const {
    if constexpr (kIsComplex<W>) {
      const Tag<W> d;
      return subAdd(d, parts[0], swapParts(d, parts[1]));
    } else {
      return parts[0];
    }
  }
};
template <class W>
KVRS_INLINE Sum<W> nothing() {
  Sum<W> sum;
  for (size_t i = 0; i < kParts<W>; ++i) sum.parts[i] = hn::Zero(Tag<W>());
  return sum;
}

// response[m - shift] for m from 0 on, with zeros before the response: the rows that a block's own numbers meet. As blocks
// may be two vectors, shifts begin below 0.
template <class W>
struct ShiftedRows {
  static constexpr int kFirst = static_cast<int>(kWide<W>) - static_cast<int>(kBlock<W>);

  // `response` has kBlock numbers, the first of which may be left out.
  KVRS_INLINE explicit ShiftedRows(const W* response, bool withFirst = true) {
    alignas(64) W padded[kWide<W> + kBlock<W>] = {};
    memcpy(static_cast<void*>(padded + kWide<W>), response, kBlock<W> * sizeof(W));
    if (!withFirst) padded[kWide<W>] = W{};
    for (int i = 0; i < static_cast<int>(kBlock<W>); ++i) {
      rows[i] = loadVector(padded + (static_cast<int>(kWide<W>) - kFirst - i));
    }
  }
  template <int shift>
  KVRS_INLINE Vec<W> row() const {
    return rows[shift - kFirst];
  }

  Vec<W> rows[kBlock<W>];
};

// Sums that a block is added up in, side by side: a product waits for the sum before it, and of the operations that wait a
// processor holds about a hundred, which in one chain is too little for the blocks that it takes to be busy.
inline constexpr int kChains = kVectorRegisters == 8 ? 1 : kVectorRegisters == 32 ? 4 : 2;

template <class W>
struct Chains {
  static constexpr int kVectors = static_cast<int>(kBlockVectors);
  static constexpr int kWidth = static_cast<int>(kWide<W>);

  // Begins with what the numbers x(i), i from 0 to kBlock - 1, do to the block.
  template <class X>
  KVRS_INLINE explicit Chains(const ShiftedRows<W>& rows, X x) {
    unroll<static_cast<int>(kBlock<W>)>([&](auto index) KVRS_UNROLLED {
      constexpr int i = decltype(index)::value;
      const auto number = everywhere<W>(x(i));
      unroll<kVectors>([&](auto vector) KVRS_UNROLLED {
        constexpr int v = decltype(vector)::value, shift = i - v * kWidth;
        Sum<W>& sum = sums[i % kChains][v];
        if constexpr (shift >= kWidth) {
          if constexpr (i < kChains) sum = nothing<W>();
        } else if constexpr (i < kChains) {
          sum.begin(rows.template row<shift>(), number);
        } else {
          sum.add(rows.template row<shift>(), number);
        }
      });
    });
  }

  // `row(v)` is the vector that a number's row has for vector v of the block.
  template <int chain, class Row>
  KVRS_INLINE void add(Row row, W x) {
    const auto number = everywhere(x);
    unroll<kVectors>([&](auto v) KVRS_UNROLLED { sums[chain][v].add(row(v), number); });
  }

  // All in the first.
  KVRS_INLINE void join() {
    unroll<kVectors>([&](auto v) KVRS_UNROLLED {
      unroll<kChains / 2>([&](auto i) KVRS_UNROLLED { sums[i][v].add(sums[i + kChains / 2][v]); });
      unroll<kChains / 4>([&](auto i) KVRS_UNROLLED { sums[i][v].add(sums[i + 1][v]); });
    });
  }

  Sum<W> sums[kChains][kBlockVectors];
};
static_assert(static_cast<int>(kBlock<Kvr64fc>) >= kChains || kChains == 1);

// Fewer samples are not worth the rows.
template <class W>
inline constexpr size_t kLookAheadFrom = kBlock<W> + 2;

// The last inputs and outputs of a section, in the order of a df1 delay line.
template <class W>
struct Past {
  W x2, x1, y2, y1;
};
// The same with outputs but for what b0 adds to them.
template <class W>
struct Recursion {
  W x2, x1, z2, z1;
};

template <class W>
bool looksAhead(const W* sectionTable) {
  return !isZero(sectionTable[0]);
}

// The last two numbers of a signal as look-ahead takes them: the last one, and the step to it.
template <class W>
struct Steps {
  Everywhere<W> last, step;

  KVRS_INLINE void set(Everywhere<W> v2, Everywhere<W> v1, Vec<W> steadiness) {
    last = v1;
    unroll<static_cast<int>(kParts<W>)>(
        [&](auto i) KVRS_UNROLLED { step.parts[i] = hn::NegMulAdd(steadiness, v1.parts[i], v2.parts[i]); });
  }
};

// A section by look-ahead, on at least a block. `past` moves on.
template <class W>
void sectionByBlocks(const Section<W>& section, const W* table, Recursion<W>& past, const W* in, W* out,
                     size_t len) {
  constexpr size_t M = kBlock<W>;
  constexpr int P = static_cast<int>(kBlockVectors), kLast = static_cast<int>(kWide<W>) - 1;
  const ShiftedRows<W> rows(table + 2 * M, false);
  const auto b0 = everywhere(section.b0);
  Vec<W> xRow[P], xStepRow[P], zRow[P], zStepRow[P];
  unroll<P>([&](auto v) KVRS_UNROLLED {
    const W* from = table + v * kWide<W>;
    const auto scaled = [&](W by) {
      Sum<W> sum;
      sum.begin(loadVector(from), everywhere(by));
      return sum.total();
    };
    xRow[v] = loadVector(from + 3 * M);
    xStepRow[v] = scaled(table[2 * M]);
    zRow[v] = loadVector(from + M);
    zStepRow[v] = scaled(negative(section.a2));
  });
  const auto steadiness = hn::Set(Tag<W>(), steadinessOf(section));
  Steps<W> xs, zs;
  xs.set(everywhere(past.x2), everywhere(past.x1), steadiness);
  zs.set(everywhere(past.z2), everywhere(past.z1), steadiness);

  Vec<W> y[P], z[P];
  const auto block = [&](const W* x) KVRS_UNROLLED {
    Chains<W> chains(rows, [&](int i) KVRS_UNROLLED { return at(x, static_cast<size_t>(i)); });
    unroll<P>([&](auto v) KVRS_UNROLLED {
      chains.sums[0][v].add(xRow[v], xs.last);
      chains.sums[kChains - 1][v].add(xStepRow[v], xs.step);
    });
    chains.join();
    unroll<P>([&](auto v) KVRS_UNROLLED {
      Sum<W>& sum = chains.sums[0][v];
      sum.add(zRow[v], zs.last);
      sum.add(zStepRow[v], zs.step);
      z[v] = sum.total();
      Sum<W> straight;
      straight.begin(loadVector(x + v * kWide<W>), b0);
      y[v] = hn::Add(straight.total(), z[v]);
    });
  };
  W x2 = past.x2, x1 = past.x1;
  auto z2 = everywhere(past.z2), z1 = everywhere(past.z1);
  size_t n = 0;
  for (; n + M <= len; n += M) {
    block(in + n);
    x2 = at(in, n + M - 2);
    x1 = at(in, n + M - 1);
    xs.set(everywhere(x2), everywhere(x1), steadiness);
    unroll<P>([&](auto v) KVRS_UNROLLED { storeVector(y[v], out + n + v * kWide<W>); });
    z1 = everywhereOf<W, kLast>(z[P - 1]);
    if constexpr (kWide<W> == 1) {
      z2 = everywhereOf<W, 0>(z[P - 2]);
    } else {
      z2 = everywhereOf<W, kLast - 1>(z[P - 1]);
    }
    zs.set(z2, z1, steadiness);
  }
  past = {x2, x1, one(z2), one(z1)};
  const size_t rest = len - n;
  if (rest == 0) return;
  // The last block, with zeros for the inputs that it has not.
  alignas(64) W own[M] = {}, results[M], parts[M];
  memcpy(static_cast<void*>(own), reinterpret_cast<const char*>(in) + n * sizeof(W), rest * sizeof(W));
  block(own);
  unroll<P>([&](auto v) KVRS_UNROLLED {
    storeVector(y[v], results + v * kWide<W>);
    storeVector(z[v], parts + v * kWide<W>);
  });
  memcpy(reinterpret_cast<char*>(out) + n * sizeof(W), static_cast<const void*>(results), rest * sizeof(W));
  past = {rest > 1 ? own[rest - 2] : past.x1, own[rest - 1], rest > 1 ? parts[rest - 2] : past.z1,
          parts[rest - 1]};
}

// The same sample by sample, in the stated order.
template <class W>
void transposedBySamples(const Section<W>& section, W& d0, W& d1, const W* in, W* out, size_t len) {
  const Section<W> taps = section;
  W d[2] = {d0, d1};
  for (size_t n = 0; n < len; ++n) setAt(out, n, transposedStep(taps, d, at(in, n)));
  d0 = d[0];
  d1 = d[1];
}
template <class W>
void df1BySamples(const Section<W>& section, Past<W>& past, const W* in, W* out, size_t len) {
  Past<W> p = past;
  for (size_t n = 0; n < len; ++n) {
    const W x = at(in, n), inputs = plus(times(section.b1, p.x1), times(section.b2, p.x2));
    const W y =
        plus(minus(minus(inputs, times(section.a2, p.y2)), times(section.a1, p.y1)), times(section.b0, x));
    p = {p.x1, x, p.y1, y};
    setAt(out, n, y);
  }
  past = p;
}

// Two samples lead from the transposed delay line, whose first number is what the recursion adds to an output, to a past.
template <class W>
void transposedByBlocks(const Section<W>& section, const W* table, W* d, const W* in, W* out, size_t len) {
  Recursion<W> past{at(in, 0), at(in, 1), d[0], W{}};
  setAt(out, 0, transposedStep(section, d, past.x2));
  past.z1 = d[0];
  setAt(out, 1, transposedStep(section, d, past.x1));
  sectionByBlocks(section, table, past, in + 2, out + 2, len - 2);
  // b1 x1 + c1 y1 and so on, with the outputs in their two parts.
  const W e1 = table[2 * kBlock<W> + 1], e2 = table[2 * kBlock<W>];
  d[0] = minus(minus(plus(times(e1, past.x1), times(e2, past.x2)), times(section.a1, past.z1)),
               times(section.a2, past.z2));
  d[1] = minus(times(e2, past.x1), times(section.a2, past.z1));
}

// Where vectors are short, look-ahead gains less than it takes once there are many sections. Those can stand in the lanes of
// kGroups vectors instead, each at a sample that lies one behind that of the section before it:
//
//   lane       0      1      2      3
//   takes in   x[n]   y0     y1     y2       y being the outputs of the lanes in the step before
//
// No order of operations changes, so results are those of single samples to the bit. The triangles at both ends, where not
// all sections have a sample, are run one by one. Takes at least as many samples as sections.
template <int kGroups, class W>
void sectionsInLanes(const Section<W>* sections, W* d, const W* in, W* out, size_t len) {
  const Tag<W> tag;
  constexpr size_t N = kWide<W>, S = N * kGroups;
  alignas(64) W y[S], taps[5][S], d0[S], d1[S];
  for (size_t n = 0; n + 1 < S; ++n) {
    W x = at(in, n);
    for (size_t s = 0; s + 1 < S - n; ++s) x = transposedStep(sections[s], d + 2 * s, x);
    y[S - 2 - n] = x;
  }
  y[S - 1] = W{};
  for (size_t s = 0; s < S; ++s) {
    const Section<W>& from = sections[s];
    taps[0][s] = from.b0;
    taps[1][s] = from.b1;
    taps[2][s] = from.b2;
    taps[3][s] = from.a1;
    taps[4][s] = from.a2;
    d0[s] = d[2 * s];
    d1[s] = d[2 * s + 1];
  }
  Vec<W> ys[kGroups], d0s[kGroups], d1s[kGroups];
  unroll<kGroups>([&](auto g) KVRS_UNROLLED {
    ys[g] = hn::Load(tag, y + g * N);
    d0s[g] = hn::Load(tag, d0 + g * N);
    d1s[g] = hn::Load(tag, d1 + g * N);
  });
  for (size_t n = S - 1; n < len; ++n) {
    const Vec<W> x = hn::Set(tag, at(in, n));
    unroll<kGroups>([&](auto turn) KVRS_UNROLLED {
      constexpr int g = kGroups - 1 - decltype(turn)::value;
      const Vec<W> from = g == 0 ? x : ys[g > 0 ? g - 1 : 0];
      const Vec<W> inputs = hn::CombineShiftRightLanes<N - 1>(tag, ys[g], from);
      const auto times = [&](int tap, Vec<W> v)
                             KVRS_UNROLLED { return hn::Mul(v, hn::Load(tag, taps[tap] + g * N)); };
      ys[g] = hn::Add(times(0, inputs), d0s[g]);
      d0s[g] = hn::Sub(hn::Add(times(1, inputs), d1s[g]), times(3, ys[g]));
      d1s[g] = hn::Sub(times(2, inputs), times(4, ys[g]));
    });
    setAt(out, n - (S - 1), hn::ExtractLane(ys[kGroups - 1], N - 1));
  }
  unroll<kGroups>([&](auto g) KVRS_UNROLLED {
    hn::Store(ys[g], tag, y + g * N);
    hn::Store(d0s[g], tag, d0 + g * N);
    hn::Store(d1s[g], tag, d1 + g * N);
  });
  for (size_t s = 0; s < S; ++s) {
    d[2 * s] = d0[s];
    d[2 * s + 1] = d1[s];
  }
  for (size_t n = len + 1 - S; n < len; ++n) {
    W x = y[len - 1 - n];
    for (size_t s = len - n; s < S; ++s) x = transposedStep(sections[s], d + 2 * s, x);
    setAt(out, n, x);
  }
}

// From so many sections on.
template <class W>
inline constexpr size_t kLanesFrom =
    kVectorBytes == 16 && !kIsComplex<W> && kWide<W> > 1 ? 2 * kWide<W> : SIZE_MAX;

// Runs as many sections as it is good for, and tells how many.
template <class W>
size_t firstInLanes(State<W>& state, const W* in, W* out, size_t len) {
  size_t done = 0;
  if constexpr (kLanesFrom<W> != SIZE_MAX) {
    const auto sections = static_cast<size_t>(state.numBq);
    const auto run = [&](auto groups) {
      sectionsInLanes<decltype(groups)::value>(state.sections() + done, state.dlyLine.get() + 2 * done,
                                               done == 0 ? in : out, out, len);
      done += decltype(groups)::value * kWide<W>;
    };
    while (sections - done >= 2 * kLanesFrom<W> && len >= 8 * kLanesFrom<W>) run(Index<4>());
    while (sections - done >= kLanesFrom<W> && len >= 4 * kLanesFrom<W>) run(Index<2>());
  }
  return done;
}

// There is no room for tables in its states.
template <class W>
void filterDf1(State<W>& state, const W* in, W* out, size_t len) {
  auto* past = reinterpret_cast<Past<W>*>(state.dlyLine.get());
  for (int i = 0; i < state.numBq; ++i, in = out) {
    const Section<W>& section = state.sections()[i];
    alignas(64) W table[kSectionTable<W>] = {};
    if (len >= kLookAheadFrom<W>) makeSectionTable(section, table);
    if (looksAhead(table)) {
      const Past<W> old = past[i];
      Recursion<W> recursion{old.x2, old.x1, minus(old.y2, times(section.b0, old.x2)),
                             minus(old.y1, times(section.b0, old.x1))};
      sectionByBlocks(section, table, recursion, in, out, len);
      past[i] = {recursion.x2, recursion.x1, at(out, len - 2), at(out, len - 1)};
    } else {
      df1BySamples(section, past[i], in, out, len);
    }
  }
}

// A df1 delay line on top of the transposed one follows the last samples of each section.
template <class W>
void filterCascade(State<W>& state, const W* in, W* out, size_t len, Past<W>* past) {
  const auto sections = static_cast<size_t>(state.numBq);
  const bool isLong = state.idWord == wordOf<KvrsIIRState_32f>(Form::cascade) || len > 4 * sections;
  const bool byBlocks = isLong && len >= kLookAheadFrom<W>;
  if (!byBlocks && sections > 1 && past == nullptr) {
    for (size_t n = 0; n < len; ++n) setAt(out, n, filterSample(state, at(in, n)));
    return;
  }
  const size_t done = byBlocks && past == nullptr ? firstInLanes(state, in, out, len) : 0;
  if (done > 0) in = out;
  W* d = state.dlyLine.get() + 2 * done;
  const W* table = state.table.get() + done * kSectionTable<W>;
  for (size_t i = done; i < sections; ++i, d += 2, table += kSectionTable<W>, in = out) {
    const Section<W>& section = state.sections()[i];
    Past<W> next{};
    if (past != nullptr) next = {len > 1 ? at(in, len - 2) : past[i].x1, at(in, len - 1), W{}, W{}};
    if (byBlocks && looksAhead(table)) {
      transposedByBlocks(section, table, d, in, out, len);
    } else {
      transposedBySamples(section, d[0], d[1], in, out, len);
    }
    if (past == nullptr) continue;
    next.y2 = len > 1 ? at(out, len - 2) : past[i].y1;
    next.y1 = at(out, len - 1);
    past[i] = next;
  }
}

// Samples that a direct form filters at a time.
inline constexpr size_t kDirectChunk = 512;
// What may be written behind an array: four vectors.
template <class W>
inline constexpr size_t kOverrun = 4 * kWide<W>;

// out[i] = sum over k below n of taps[k] * x[i-k], for i below count and some beyond.
template <class W>
void sumProducts(const W* x, W* out, size_t count, const W* taps, size_t n) {
  for (size_t i = 0; i < count; i += 4 * kWide<W>) {
    Sum<W> sums[4];
    unroll<4>([&](auto v) KVRS_UNROLLED { sums[v] = nothing<W>(); });
    for (size_t k = 0; k < n; ++k) {
      const auto tap = everywhere(taps[k]);
      const W* from = x + i - k;
      unroll<4>([&](auto v) KVRS_UNROLLED { sums[v].add(loadVector(from + v * kWide<W>), tap); });
    }
    unroll<4>([&](auto v) KVRS_UNROLLED { storeVector(sums[v].total(), out + i + v * kWide<W>); });
  }
}

// y[n] = w[n] + sum over k of c[k] * y[n-k], with zeros before y[0], which has room for them.
template <class W>
void recursion(const W* w, W* y, size_t len, const W* table, size_t order) {
  constexpr size_t M = kBlock<W>;
  constexpr int P = static_cast<int>(kBlockVectors);
  const ShiftedRows<W> rows(table);
  const auto rowOf = [=](size_t k) KVRS_UNROLLED {
    return [from = table + k * M](auto v) KVRS_UNROLLED { return loadVector(from + v * kWide<W>); };
  };
  for (size_t n = 0; n < len; n += M) {
    Chains<W> chains(rows, [&](int i) KVRS_UNROLLED { return w[n + static_cast<size_t>(i)]; });
    size_t k = order;
    for (; k >= kChains; k -= kChains) {
      unroll<kChains>(
          [&](auto c) KVRS_UNROLLED { chains.template add<decltype(c)::value>(rowOf(k - c), y[n - k + c]); });
    }
    unroll<kChains - 1>([&](auto c) KVRS_UNROLLED {
      if (k > c) chains.template add<decltype(c)::value>(rowOf(k - c), y[n - k + c]);
    });
    chains.join();
    unroll<P>([&](auto v) KVRS_UNROLLED { storeVector(chains.sums[0][v].total(), y + n + v * kWide<W>); });
  }
}

// With d the transposed delay line, of N numbers, on L samples:
//
//   w[i] = d[i] + sum of b[k] * x[i-k]          for i from 0 to L + N-1, x and d being 0 outside
//   y[n] = w[n] + sum of c[k] * y[n-k]          for n from 0 to L-1
//   d[i] = w[L+i] + sum of c[k] * y[L+i-k]      with y 0 from L on
template <class W>
void directByBlocks(State<W>& state, const W* in, W* out, size_t len) {
  const auto order = static_cast<size_t>(state.dlyLen);
  const W* taps = state.taps.get();
  W* d = state.dlyLine.get();
  constexpr size_t kRoom = kDirectChunk + kMostBlockOrder + kOverrun<W>;
  alignas(64) W buffer[kMostBlockOrder + kRoom], w[kRoom], left[kMostBlockOrder + kOverrun<W>];
  W* signal = buffer + order;
  const auto silence = [=](W* from, size_t count) { memset(static_cast<void*>(from), 0, count * sizeof(W)); };
  silence(buffer, order);
  memcpy(static_cast<void*>(signal), in, len * sizeof(W));
  silence(signal + len, order + kOverrun<W>);
  sumProducts<W>(signal, w, len + order, taps, order + 1);
  for (size_t i = 0; i < order; ++i) w[i] = plus(w[i], d[i]);
  recursion<W>(w, signal, len, state.table.get(), order);
  memcpy(static_cast<void*>(out), signal, len * sizeof(W));
  silence(signal + len, order + kOverrun<W>);
  sumProducts<W>(signal + len - 1, left, order, taps + order + 1, order);
  for (size_t i = 0; i < order; ++i) d[i] = minus(w[len + i], left[i]);
}

template <class W>
void filterDirect(State<W>& state, const W* in, W* out, size_t len) {
  if (state.looksAhead == 0 || len <= 4 * static_cast<size_t>(state.dlyLen)) {
    for (size_t n = 0; n < len; ++n) setAt(out, n, filterSample(state, at(in, n)));
    return;
  }
  for (size_t begin = 0; begin < len; begin += kDirectChunk) {
    directByBlocks(state, in + begin, out + begin, len - begin < kDirectChunk ? len - begin : kDirectChunk);
  }
}

template <class W>
void filterTile(State<W>& state, const W* in, W* out, size_t len) {
  if (state.form == Form::direct) {
    filterDirect(state, in, out, len);
  } else if (state.form == Form::cascade) {
    filterCascade<W>(state, in, out, len, nullptr);
  } else if (auto* past = reinterpret_cast<Past<W>*>(state.df1DlyLine.get()); past != nullptr) {
    filterCascade(state, in, out, len, past);
  } else {
    filterDf1(state, in, out, len);
  }
}

}  // namespace kvrs::iir

#endif
