// Which passes a power-of-two transform makes, by its order and by the lanes of a vector.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_PLAN_H
#define KVRS_TRANSFORMS_FFT_PLAN_H

#include <array>

#include "frame/simd.h"

namespace kvrs::fft {

// A sequence of passes, each of radix 2^bits.
struct Plan {
  int passes;
  uint8_t bits[7];

  // What the passes of a transform in place leave in row group g, the last pass not counted, belongs to the
  // index with the digits of g in reverse.
  constexpr size_t reverse(size_t g) const {
    size_t index = 0;
    int weight = 0, rest = 0;
    for (int i = 0; i + 1 < passes; ++i) rest += bits[i];
    for (int i = 0; i + 1 < passes; ++i) {
      rest -= bits[i];
      const size_t digit = g >> rest;
      g &= (size_t{1} << rest) - 1;
      index += digit << weight;
      weight += bits[i];
    }
    return index;
  }
};

// Whether the passes hold complex numbers in pairs, as memory does, instead of real and imaginary parts in vectors of
// their own: that takes half the registers for the price of a shuffle in each product.
inline constexpr bool kPaired = kVectorRegisters < 16;

// The complex numbers that a pass works on side by side.
template <class T>
inline constexpr size_t kPassLanes = kPaired ? kLanes<T> / 2 : kLanes<T>;

// The columns of a split transform that share a factor for each row (FactoredTwiddles): a strip's width has to be a
// multiple. Factors for one vector each are least work where it is long; else several share one that stays in reach.
template <class T>
inline constexpr size_t kFactorSpan = kPaired ? 64 / sizeof(T) : kPassLanes<T>;

// The largest radix, and the usual one: its points have to find room in the vector registers, more or less.
inline constexpr int kMaxBits = kVectorRegisters >= 32 ? 4 : 3;
inline constexpr int kUsualBits = kVectorRegisters >= 16 ? kMaxBits : 2;

// `order` bits dealt out to passes evenly, the larger last, where a pass has the fewest twiddles; `first` bits go to
// the first pass if given.
constexpr Plan makePlan(int order, int first = 0) {
  Plan plan{};
  if (first > 0) plan.bits[plan.passes++] = static_cast<uint8_t>(first);
  int rest = order - first;
  int left = kUsualBits < kMaxBits ? rest / kUsualBits : (rest + kMaxBits - 1) / kMaxBits;
  if (left == 0) left = 1;
  for (; left > 0; --left) {
    const int bits = rest / left;
    plan.bits[plan.passes++] = static_cast<uint8_t>(bits);
    rest -= bits;
  }
  return plan;
}

// Self-sorting transforms. The first pass turns a square of lanes, so its radix is at least their number.
template <class T>
inline constexpr int kFirstBits = kLanes<T> == 16 ? 4
                                  : kPaired       ? 2
                                                  : 3;
template <class T>
inline constexpr int kFirstRadix = 1 << kFirstBits<T>;

// Up to this order a transform stays in registers.
template <class T>
inline constexpr int kLastSmallOrder = kLanes<T> == 16  ? 7
                                       : kLanes<T> == 8 ? 6
                                                        : 5;

// Up to this order a transform is one sequence of passes; from the next on it is split into rows and columns. Single
// precision has a work area of the transform's length up to there; double precision has none before it is split, and
// makes do with as much as may lie on the stack, for a while after that, too.
template <class T>
inline constexpr int kLastStockhamOrder = sizeof(T) == 4 ? 15 : 11;
inline constexpr size_t kStackBytes = 32768;

template <class T>
inline constexpr auto kStockhamPlans = [] {
  std::array<Plan, kLastStockhamOrder<T> + 1> plans{};
  for (int order = kLastSmallOrder<T> + 1; order <= kLastStockhamOrder<T>; ++order) {
    plans[order] = makePlan(order, kFirstBits<T>);
  }
  return plans;
}();

inline constexpr auto kColumnPlans = [] {
  std::array<Plan, 12> plans{};
  for (int order = 1; order < 12; ++order) plans[order] = makePlan(order);
  return plans;
}();

// A split transform sees its points as an array [2^outer][2^middle][2^outer].
struct Split {
  int outer, middle;
};
// The edge is as long as the work area allows, which holds a strip of columns: of two cache lines at least, so that
// lines are used whole, and of four at most.
constexpr Split splitOf(int order, size_t workBytes) {
  int outer = order / 2;
  while (size_t{128} << outer > workBytes) --outer;
  return {outer, order - 2 * outer};
}
template <class T>
constexpr size_t stripWidth(int outer, size_t workBytes) {
  const size_t bytes = workBytes >> outer;
  return (bytes < 256 ? bytes : 256) / (2 * sizeof(T));
}

}  // namespace kvrs::fft

#endif
