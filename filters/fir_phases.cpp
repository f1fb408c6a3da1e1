// Filters at two rates with small factors.
// SPDX-License-Identifier: MIT
#include "filters/fir_phases.h"

#include <algorithm>

#include "filters/fir_bank.h"

namespace kvrs::fir {
namespace {

// The inputs that the outputs of a phase meet: so many, with the newest one of its first output.
struct Phase {
  ptrdiff_t newest;
  size_t taps;
  size_t tap;  // the first one
};

// All phases in the order of their first outputs, and the oldest and newest input of a first output.
struct Phases {
  Phase all[kMostPhases];
  ptrdiff_t oldest, newest;

  Phases(const Rates& rates, int tapsLen, int64_t time) : oldest(PTRDIFF_MAX), newest(PTRDIFF_MIN) {
    BankWalk walk(rates, tapsLen, time);
    for (int i = 0; i < rates.upFactor; ++i, walk.next()) {
      all[i] = {walk.newestInput(), walk.taps(), walk.phase()};
      oldest = std::min(oldest, walk.oldestInput());
      newest = std::max(newest, walk.newestInput());
    }
  }
};

// The taps j, j + step ... of a phase meet the inputs of one array, the newest of them there at `input`.
struct Branch {
  size_t j, taps, input;
};

Branch branchOf(const Phase& phase, ptrdiff_t oldest, size_t which, size_t step) {
  const size_t newest = static_cast<size_t>(phase.newest - oldest);  // from where the arrays begin
  const size_t j = (newest + step - which) % step;
  return {j, (phase.taps - j - 1) / step + 1, (newest - j) / step};
}

// Every kStep-th input into an array of its own, by vectors. Returns how many of each.
template <size_t kStep, class Bits>
size_t spreadByVectors(const Bits* in, Bits* arrays, size_t stride, size_t count) {
  const hn::ScalableTag<Bits> d;
  constexpr size_t N = hn::MaxLanes(hn::ScalableTag<Bits>());
  size_t i = 0;
  for (; i + N <= count; i += N) {
    hn::Vec<decltype(d)> v0, v1, v2, v3;
    if constexpr (kStep == 2) {
      hn::LoadInterleaved2(d, in + i * 2, v0, v1);
    } else if constexpr (kStep == 3) {
      hn::LoadInterleaved3(d, in + i * 3, v0, v1, v2);
      hn::StoreU(v2, d, arrays + 2 * stride + i);
    } else {
      hn::LoadInterleaved4(d, in + i * 4, v0, v1, v2, v3);
      hn::StoreU(v2, d, arrays + 2 * stride + i);
      hn::StoreU(v3, d, arrays + 3 * stride + i);
    }
    hn::StoreU(v0, d, arrays + i);
    hn::StoreU(v1, d, arrays + stride + i);
  }
  return i;
}

// Input step * i + s as element i of array s, for `inputs` of them.
template <class T>
void spread(const T* in, T* arrays, size_t stride, size_t step, size_t inputs) {
  const size_t whole = inputs / step;
  size_t done = 0;
  if constexpr (sizeof(T) <= 8) {
    using Bits =
        std::conditional_t<sizeof(T) == 2, uint16_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>;
    const auto* from = reinterpret_cast<const Bits*>(in);
    auto* to = reinterpret_cast<Bits*>(arrays);
    if (step == 2) done = spreadByVectors<2>(from, to, stride, whole);
    if (step == 3) done = spreadByVectors<3>(from, to, stride, whole);
    if (step == 4) done = spreadByVectors<4>(from, to, stride, whole);
  }
  for (size_t s = 0; s < step; ++s) {
    for (size_t i = done; step * i + s < inputs; ++i)
      arrays[stride * s + i] = unaligned::get(in + (step * i + s));
  }
}

// Bytes of the arrays.
inline constexpr size_t kArrayBytes = 24576;

}  // namespace

template <class T>
void fillPhases(const T* tapsRev, FirLane<T>* table, int tapsLen, const Rates& rates, int64_t time) {
  const Phases phases(rates, tapsLen, time);
  const size_t up = static_cast<size_t>(rates.upFactor), down = static_cast<size_t>(rates.downFactor);
  for (size_t p = 0; p < up; ++p) {
    for (size_t s = 0; s < down; ++s) {
      const Branch branch = branchOf(phases.all[p], phases.oldest, s, down);
      for (size_t k = branch.taps; k-- > 0;) {
        const size_t tap = phases.all[p].tap + (branch.j + k * down) * up;
        fillTapTable(tapsRev + (static_cast<size_t>(tapsLen) - 1 - tap), table, 1);
        table += kTapLanes<T>;
      }
    }
  }
}

template <class T>
void firPhases(const T* in, const FirLane<T>* table, FirSum<T>* out, size_t iters, int tapsLen,
               const Rates& rates, int64_t time) {
  constexpr size_t kElements = kArrayBytes / sizeof(T), kMostIters = 256;
  const Phases phases(rates, tapsLen, time);
  const size_t up = static_cast<size_t>(rates.upFactor), down = static_cast<size_t>(rates.downFactor);
  const size_t spans = static_cast<size_t>(phases.newest - phases.oldest) + 1;  // inputs of one iteration
  const size_t stride = kElements / down;
  // One more of an array than its newest input, and room for a vector.
  const size_t room = stride - spans / down - 2;
  const size_t most = room < kMostIters ? room : kMostIters;
  alignas(64) T arrays[kElements];
  alignas(64) FirSum<T> row[kMostIters];
  for (; iters > 0;) {
    const size_t count = iters < most ? iters : most;
    const T* first = in + phases.oldest;
    if (down > 1) spread(first, arrays, stride, down, spans + (count - 1) * down);
    const FirLane<T>* taps = table;
    for (size_t p = 0; p < up; ++p) {
      FirBranch<T> branches[kMostPhases];
      for (size_t s = 0; s < down; ++s) {
        const Branch branch = branchOf(phases.all[p], phases.oldest, s, down);
        const T* inputs = down > 1 ? arrays + stride * s : first;
        branches[s] = {inputs + (branch.input + 1 - branch.taps), taps, branch.taps};
        taps += kTapLanes<T> * branch.taps;
      }
      if (up == 1) {
        firKernel(branches, down, out, count);
      } else {
        firKernel(branches, down, row, count);
        for (size_t m = 0; m < count; ++m) out[up * m + p] = row[m];
      }
    }
    in += count * down;
    out += count * up;
    iters -= count;
  }
}

#define KVRS_FIR_PHASES(T, Sum, Lane)                                       \
  template void fillPhases<T>(const T*, Lane*, int, const Rates&, int64_t); \
  template void firPhases<T>(const T*, const Lane*, Sum*, size_t, int, const Rates&, int64_t)
KVRS_FIR_PHASES(Kvr32f, Kvr32f, Kvr32f);
KVRS_FIR_PHASES(Kvr64f, Kvr64f, Kvr64f);
KVRS_FIR_PHASES(Kvr32fc, Kvr32fc, Kvr32f);
KVRS_FIR_PHASES(Kvr64fc, Kvr64fc, Kvr64f);
KVRS_FIR_PHASES(Kvr16s, Kvr32s, Kvr16s);
KVRS_FIR_PHASES(Kvr16sc, Kvr32sc, Kvr16s);
#undef KVRS_FIR_PHASES

}  // namespace kvrs::fir
