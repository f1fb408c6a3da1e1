// States of recursive filters: sizes, construction, taps and their tables, delay lines.
// SPDX-License-Identifier: MIT
#include "filters/iir_state.h"

namespace kvrs::iir {
namespace {

constexpr uint64_t up16(uint64_t bytes) {
  return (bytes + 15) & ~uint64_t{15};
}
constexpr uint64_t up32(uint64_t bytes) {
  return (bytes + 31) & ~uint64_t{31};
}

constexpr uint64_t sizeOf32f(Form form, bool converts, uint64_t n) {
  switch (form) {
    case Form::direct:
      return (8 * n + 16) * 4 + (converts ? 8232 : 4136) + 48 + up16(8 * n + 4) + up16(4 * n + 4) + 32;
    case Form::cascade:
      return (converts ? 160 * n + 8232 : up16(160 * n + 4136) + 128 * n + 16) + 48 + up16(20 * n) +
             up16(8 * n) + 32;
    default:
      return up16(20 * n) + 144 * n + 80;
  }
}
constexpr uint64_t sizeOf32fc(Form form, bool converts, uint64_t n) {
  if (form == Form::direct) {
    return (16 * n + 36) * 8 + (converts ? 16464 : 8272) + 64 + up32(16 * n + 8) + up32(8 * n + 8) + 32;
  }
  return 1184 * n + (converts ? 16384 : 8192) + 64 + up32(40 * n) + up32(16 * n) + 64;
}
constexpr uint64_t sizeOf64f(Form form, bool converts, uint64_t n) {
  const uint64_t work = converts ? 16384 : 8192;
  switch (form) {
    case Form::direct:
      return (6 * n + 14) * 8 + work + 48 + up16(16 * n + 8) + up16(8 * n + 8) + 32;
    case Form::cascade:
      return 256 * n + work + 48 + up16(40 * n) + 16 * n;
    default:
      return 256 * n + 16432 + up16(40 * n) + 48 * n;
  }
}
constexpr uint64_t sizeOf64fc(Form form, bool converts, uint64_t n) {
  if (form == Form::direct) {
    return 16 * ((n + 1024) * (converts ? 2 : 1) + 14 * n + 10) + 48 + 32 * n + 16 + 16 * n + 16 + 32;
  }
  return 1024 * n + (converts ? 32768 : 16384) + 48 + up16(80 * n) + 32 * n + 32;
}

// The precision that tables are computed in: steps of a recursion lose a little each.
template <class W>
struct WideOf {
  using Type = Kvr64f;
};
template <>
struct WideOf<Kvr32fc> {
  using Type = Kvr64fc;
};
template <>
struct WideOf<Kvr64f> {
  using Type = long double;
};
template <>
struct WideOf<Kvr64fc> {
  struct Type {
    long double re, im;
  };
};

// No if one is NaN.
bool growsLittle(double tableSum, double tapSum, double most) {
  return tableSum <= most * (tapSum > 1 ? tapSum : 1);
}

template <class T>
T unit() {
  if constexpr (kIsComplex<T>) {
    return {1, 0};
  } else {
    return 1;
  }
}

}  // namespace

template <class W>
uint64_t stateSize(Form form, bool converts, uint64_t n) {
  if constexpr (sizeof(Part<W>) == 4) {
    return kIsComplex<W> ? sizeOf32fc(form, converts, n) : sizeOf32f(form, converts, n);
  } else {
    return kIsComplex<W> ? sizeOf64fc(form, converts, n) : sizeOf64f(form, converts, n);
  }
}

template <class W>
State<W>* build(Form form, uint32_t idWord, int n, const void* dlyLine, Kvr8u* memory) {
  const auto count = static_cast<size_t>(n);
  Carver carver(memory);
  auto* state = carver.take<State<W>>(1);
  state->idWord = idWord;
  state->form = form;
  state->allocated = 0;
  state->looksAhead = 0;
  state->df1DlyLine.set(nullptr);
  state->table.set(nullptr);
  if (form == Form::direct) {
    state->dlyLen = n;
    state->numBq = 0;
    state->taps.set(carver.take<W>(2 * count + 1));
    W* line = carver.take<W>(count + 1);
    state->dlyLine.set(line);
    line[count] = W{};
    if (count <= kMostBlockOrder) state->table.set(carver.take<W>((count + 1) * kBlock<W>));
  } else {
    // In doubles the df1 form is one on top of the transposed form.
    const bool onTop = form == Form::df1 && sizeof(W) == 8;
    state->dlyLen = form == Form::df1 && !onTop ? 4 * n : 2 * n;
    state->numBq = n;
    state->taps.set(carver.take<W>(5 * count));
    state->dlyLine.set(carver.take<W>(static_cast<size_t>(state->dlyLen)));
    if (form != Form::df1 || onTop) state->table.set(carver.take<W>(kSectionTable<W> * count));
    if (onTop) {
      W* line = carver.take<W>(4 * count);
      state->df1DlyLine.set(line);
      if (dlyLine == nullptr) {
        memset(line, 0, 4 * count * sizeof(W));
      } else {
        memcpy(line, dlyLine, 4 * count * sizeof(W));
      }
      dlyLine = nullptr;  // it is computed from the other in each call
    }
  }
  setDelayLine(state, dlyLine);
  return state;
}

template <class W>
void setDelayLine(State<W>* state, const void* dlyLine) {
  const size_t bytes = static_cast<size_t>(state->dlyLen) * sizeof(W);
  if (dlyLine == nullptr) {
    memset(static_cast<void*>(state->dlyLine.get()), 0, bytes);
  } else {
    memcpy(static_cast<void*>(state->dlyLine.get()), dlyLine, bytes);
  }
}

template <class W>
void getDelayLine(const State<W>* state, void* dlyLine) {
  memcpy(dlyLine, static_cast<const void*>(state->dlyLine.get()),
         static_cast<size_t>(state->dlyLen) * sizeof(W));
}

// 1 / A(z) = 1 / (1 - c1/z - c2/z^2). All rows obey its recursion, from which they are more exact than from differences of
// the first.
template <class W>
void makeSectionTable(const Section<W>& section, W* table) {
  using Wide = typename WideOf<W>::Type;
  const auto c1 = negative(converted<Wide>(section.a1)), c2 = negative(converted<Wide>(section.a2));
  const auto b0 = converted<Wide>(section.b0);
  const auto e1 = plus(converted<Wide>(section.b1), times(c1, b0));
  const auto e2 = plus(converted<Wide>(section.b2), times(c2, b0));
  Wide steady{};
  if constexpr (kIsComplex<Wide>) {
    steady.re = steadinessOf(section);
  } else {
    steady = steadinessOf(section);
  }
  // The number before the row and its first one; what else comes in on the way.
  struct Row {
    Wide before, now, first, second;
  };
  Row rows[] = {
      {Wide{}, unit<Wide>(), Wide{}, Wide{}},
      {unit<Wide>(), plus(c1, times(steady, c2)), Wide{}, Wide{}},
      {Wide{}, Wide{}, e1, e2},
      {Wide{}, plus(e1, times(steady, e2)), e2, Wide{}},
  };
  double worst = 0;
  for (size_t m = 0; m < kBlock<W>; ++m) {
    for (size_t r = 0; r < 4; ++r) {
      Row& row = rows[r];
      table[r * kBlock<W> + m] = converted<W>(row.now);
      Wide next = plus(times(c1, row.now), times(c2, row.before));
      next = plus(next, m == 0 ? row.first : m == 1 ? row.second : Wide{});
      // What the two outputs before do to the m-th one behind them; a NaN must not get lost.
      const double sum = bulk(next) + bulk(times(c2, row.now));
      if (r == 0 && !(sum <= worst)) worst = sum;
      row.before = row.now;
      row.now = next;
    }
  }
  table[2 * kBlock<W>] = converted<W>(e2);
  if (!growsLittle(worst, bulk(c1) + bulk(c2), kMostGrowthOfSection)) table[0] = W{};
}

template <class W>
void storeSection(State<W>* state, size_t index, const Section<W>& section) {
  state->sections()[index] = section;
  W* table = state->table.get();
  if (table != nullptr) makeSectionTable(section, table + index * kSectionTable<W>);
}

// With g the impulse response of 1 / A(z), an output y[n-k] adds F[k][m] y[n-k] to y[n+m]:
//
//   F[k][m] = sum over j from 0 to m of c[k+j] g[m-j],  c[k] = -a[k], 0 above the order
//
// which is the recursion with y[n-k] for its only input (Parhi, Messerschmitt, Pipeline interleaving and parallelism in
// recursive digital filters, 1989).
template <class W>
void makeDirectTable(State<W>* state) {
  state->looksAhead = 0;
  W* table = state->table.get();
  if (table == nullptr) return;
  using Wide = typename WideOf<W>::Type;
  constexpr size_t M = kBlock<W>;
  const auto order = static_cast<size_t>(state->dlyLen);
  const W* a = state->taps.get() + order;  // a[k] for k from 1
  double tapSum = 0;
  for (size_t k = 1; k <= order; ++k) tapSum += bulk(converted<Wide>(a[k]));
  // The recursion, of `first` and what comes in by c[k + m].
  const auto respond = [&](size_t k, Wide* row) {
    for (size_t m = 0; m < M; ++m) {
      Wide sum{};
      if (k + m <= order && k > 0) sum = negative(converted<Wide>(a[k + m]));
      if (k == 0 && m == 0) sum = unit<Wide>();
      for (size_t j = 1; j <= m && j <= order; ++j) {
        sum = minus(sum, times(converted<Wide>(a[j]), row[m - j]));
      }
      row[m] = sum;
    }
  };
  double sums[M] = {};
  for (size_t k = 0; k <= order; ++k) {
    Wide row[M];
    respond(k, row);
    for (size_t m = 0; m < M; ++m) {
      table[k * M + m] = converted<W>(row[m]);
      if (k > 0) sums[m] += bulk(row[m]);
    }
  }
  double worst = 0;
  for (double sum : sums) {
    if (!(sum <= worst)) worst = sum;
  }
  state->looksAhead = growsLittle(worst, tapSum, kMostGrowth) ? 1 : 0;
}

template <class W>
KvrStatus loadTaps(State<W>* state, const W* taps) {
  if (state->form == Form::direct) {
    const auto order = static_cast<size_t>(state->dlyLen);
    const W a0 = at(taps, order + 1);
    if (isZero(a0)) return kvrStatusDivByZeroError;
    const W scale = reciprocal(a0);
    W* stored = state->taps.get();
    for (size_t k = 0; k <= order; ++k) stored[k] = times(at(taps, k), scale);
    for (size_t k = 1; k <= order; ++k) stored[order + k] = times(at(taps, order + 1 + k), scale);
    makeDirectTable(state);
    return kvrStatusOk;
  }
  for (size_t i = 0; i < static_cast<size_t>(state->numBq); ++i) {
    W given[6];
    memcpy(given, reinterpret_cast<const char*>(taps) + i * sizeof given, sizeof given);
    const W a0 = given[3];
    if (isZero(a0) || isZero(given[0])) return kvrStatusDivByZeroError;
    Section<W> section{given[0], given[1], given[2], given[4], given[5]};
    if (!isOne(a0)) {
      const W scale = reciprocal(a0);
      section = {times(section.b0, scale), times(section.b1, scale), times(section.b2, scale),
                 times(section.a1, scale), times(section.a2, scale)};
    }
    storeSection(state, i, section);
  }
  return kvrStatusOk;
}

#define KVRS_IIR_STATE_OF(W)                                             \
  template uint64_t stateSize<W>(Form, bool, uint64_t);                  \
  template State<W>* build<W>(Form, uint32_t, int, const void*, Kvr8u*); \
  template void setDelayLine<W>(State<W>*, const void*);                 \
  template void getDelayLine<W>(const State<W>*, void*);                 \
  template KvrStatus loadTaps<W>(State<W>*, const W*);                   \
  template void makeSectionTable<W>(const Section<W>&, W*);              \
  template void storeSection<W>(State<W>*, size_t, const Section<W>&);   \
  template void makeDirectTable<W>(State<W>*)
KVRS_IIR_STATE_OF(Kvr32f);
KVRS_IIR_STATE_OF(Kvr32fc);
KVRS_IIR_STATE_OF(Kvr64f);
KVRS_IIR_STATE_OF(Kvr64fc);

}  // namespace kvrs::iir
