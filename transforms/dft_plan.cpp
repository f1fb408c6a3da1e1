// Methods, factors and plans of transforms of any length.
// SPDX-License-Identifier: MIT
#include "transforms/dft_plan.h"

#include <algorithm>

#include "frame/simd.h"
#include "transforms/fft_plan.h"

namespace kvrs::dft {

Factors factorsOf(int n, bool arranged) {
  Factors f{};
  const bool quad = n % 4 == 0;
  int rest = n;
  const auto append = [&](int factor) { f.factor[f.count++] = factor; };
  while (rest % 4 == 0) {
    append(4);
    rest /= 4;
  }
  if (rest % 2 == 0) {
    rest /= 2;
    append(4);
    f.factor[0] = 2;
  }
  if (rest >= 9) {
    for (int d = 3;;) {
      if (rest % d == 0) {
        append(d);
        rest /= d;
      } else {
        d += 2;
        if (d > 50) return {};
      }
      if (rest < d * d) break;
    }
  }
  if (f.count == 0 || rest > (quad ? 150 : 50)) return {};
  append(rest);

  // The place of the factors decides how much scratch space they are entitled to.
  if (arranged && f.count > 2 && f.factor[1] == 4) {
    f.factor[0] *= 4;
    for (int i = 1; i + 1 < f.count; ++i) f.factor[i] = f.factor[i + 1];
    --f.count;
  }
  const int head = f.factor[0];
  if (arranged && head % 2 == 0) {
    f.factor[0] = f.factor[f.count - 1];
    f.factor[f.count - 1] = head;
  }
  int remaining = n;
  for (int i = 0; i < f.count; ++i) {
    remaining /= f.factor[i];
    if (f.factor[i] <= 13 || f.factor[i] % 2 == 0) continue;
    const int extra = i + 1 < f.count && remaining % 4 == 0 ? 4 * f.factor[i] : f.factor[i];
    if (extra > f.extra) f.extra = extra;
  }
  return f;
}

int64_t chirpLength(int64_t n) {
  constexpr int16_t kLengths[] = {128,  144,  160,  192,  200,  256,  288,  320,  384,  400,  512,
                                  576,  640,  768,  800,  1024, 1152, 1280, 1536, 1600, 2048, 2304,
                                  2560, 3072, 3200, 4096, 4608, 5120, 6144, 6400, 8192};
  for (int length : kLengths) {
    if (length >= 2 * n - 1) return length;
  }
  int64_t length = 16384;
  while (length < 2 * n - 1) length *= 2;
  return length;
}

namespace {

// The work of a radix for each point, more or less.
constexpr float costOf(int radix) {
  switch (radix) {
    case 2:
      return 1.0f;
    case 3:
    case 4:
      return 1.3f;
    case 5:
      return 1.7f;
    case 7:
      return 2.3f;
    case 8:
      return 1.8f;
    case 9:
      return 2.8f;
    case 11:
      return 3.4f;
    case 13:
      return 4.0f;
    case 16:
      return 2.4f;
    default:
      return 0.4f * static_cast<float>(radix);
  }
}

// What blocks of so many lanes do for `count` numbers, over what there is to do.
constexpr float lanesCost(int count, int lanes) {
  return static_cast<float>((count + lanes - 1) / lanes * lanes) / static_cast<float>(count);
}

// Whether a tile holds strips of so many rows (forStrips).
template <class T>
constexpr bool fitsTile(int rows, int lanes) {
  return rows * (2 * lanes - 1) <= kTilePoints<T>;
}

// The lanes to try after so many, and 0 at the end.
template <class T>
constexpr int fewerLanes(int lanes) {
  constexpr int kFewest = sizeof(T) == 4 ? 4 : 2;
  return lanes > kFewest ? lanes / 2 : lanes > 1 ? 1 : 0;
}

struct Radices {
  int count = 0;
  int radix[24];
  void append(int r) { radix[count++] = r; }
};

Radices radicesOf(int n) {
  Radices all;
  int twos = 0, threes = 0;
  for (; n % 2 == 0; n /= 2) ++twos;
  for (; n % 3 == 0; n /= 3) ++threes;
  for (int passes = (twos + fft::kMaxBits - 1) / fft::kMaxBits; passes > 0; --passes) {
    const int bits = (twos + passes - 1) / passes;
    all.append(1 << bits);
    twos -= bits;
  }
  for (; threes > 1; threes -= 2) all.append(9);
  if (threes > 0) all.append(3);
  for (int d = 5; n > 1; d += 2) {
    if (d * d > n) d = n;
    for (; n % d == 0; n /= d) all.append(d);
  }
  // The largest first.
  for (int i = 1; i < all.count; ++i) {
    for (int k = i; k > 0 && all.radix[k] > all.radix[k - 1]; --k) {
      const int r = all.radix[k];
      all.radix[k] = all.radix[k - 1];
      all.radix[k - 1] = r;
    }
  }
  return all;
}

// The two radices of a short transform that make the fewest vectors; none where there are no two.
template <class T>
bool twoPasses(int n, MixedPlan* plan) {
  // The operations of a radix from 2 to 16, loads and stores included.
  constexpr int kOperations[] = {16, 34, 40, 62, 80, 102, 100, 150, 144, 206, 184, 270, 232, 232, 240};
  constexpr int kLast = fft::kMaxBits >= 4 ? 16 : 15;
  constexpr int L = static_cast<int>(kLanes<T>);
  const auto blocks = [](int count) { return (count + L - 1) / L; };
  const auto square = [](int side) { return side * (__builtin_ctz(static_cast<unsigned>(side)) + 2); };
  const auto transposition = [&](int rows, int columns) {
    switch (shortSquares<T>(rows, columns)) {
      case Squares::small:
        return 2 * square(L / 2);
      case Squares::shared:
        return blocks(columns) * square(L);
      default:
        return 2 * blocks(columns) * blocks(rows) * square(L);
    }
  };
  int least = 0;
  if (n > kLastTwoPasses) return false;
  for (int rows = 2; rows <= kLast; ++rows) {
    const int columns = n / rows;
    if (n % rows != 0 || columns < 2 || columns > kLast) continue;
    const int work = kOperations[rows - 2] * blocks(columns) + kOperations[columns - 2] * blocks(rows) +
                     transposition(rows, columns);
    if (least != 0 && work > least) continue;  // of two that are alike the one with longer rows of results
    least = work;
    *plan = {.n = n, .strip = 1, .lanes = 1, .stripCount = 0, .count = 2, .radix = {rows, columns}};
  }
  return least != 0;
}

}  // namespace

// Every choice of radices for the strip is weighed. Fewer lanes cost about in proportion.
template <class T>
MixedPlan makeMixedPlan(int n) {
  const Radices all = radicesOf(n);
  MixedPlan best{};
  best.n = n;
  if (n <= kLastShort) return {.n = n, .strip = n, .lanes = 1, .stripCount = 1, .count = 1, .radix = {n}};
  if (twoPasses<T>(n, &best)) return best;
  float least = 1e30f;
  for (unsigned choice = 1; choice + 1 < 1u << all.count; ++choice) {
    int strip = 1, last = 0, stages = 0;
    float stripWork = 2.5f, restWork = 0;
    for (int i = 0; i < all.count; ++i) {
      const int r = all.radix[i];
      if (choice >> i & 1) {
        if (strip > kTilePoints<T>) break;
        strip *= r;
        stripWork += costOf(r);
      } else {
        restWork += costOf(r);
        last = r;
        ++stages;
      }
    }
    if (strip > kTilePoints<T> || last > kTilePoints<T>) continue;
    const int rest = n / strip;
    for (int lanes = static_cast<int>(kLanes<T>); lanes > 0; lanes = fewerLanes<T>(lanes)) {
      if (lanes > 1 && (strip < lanes || rest < lanes)) continue;
      if (!fitsTile<T>(strip, lanes) || !fitsTile<T>(last, lanes)) continue;
      // In place an even number of stages takes a copy.
      const float work = stripWork * lanesCost(rest, lanes) + restWork * lanesCost(strip, lanes) +
                         (stages % 2 == 0 ? 0.5f : 0.0f);
      const float cost = work / static_cast<float>(lanes);
      if (cost >= least) continue;
      least = cost;
      best.strip = strip;
      best.lanes = lanes;
      best.stripCount = best.count = 0;
      for (int i = 0; i < all.count; ++i) {
        if (choice >> i & 1) best.radix[best.stripCount++] = all.radix[i];
      }
      best.count = best.stripCount;
      for (int i = 0; i < all.count; ++i) {
        if (!(choice >> i & 1)) best.radix[best.count++] = all.radix[i];
      }
    }
  }
  return best;
}

namespace {

// The plan with the chosen radices in the last level; the others, the largest first, fill levels as far as a tile goes.
template <class T>
OutOfOrderPlan outOfOrderPlan(int n, const Radices& all, unsigned chosen, int lanes) {
  OutOfOrderPlan plan{};
  plan.n = n;
  plan.lanes = lanes;
  int used = 0;
  const auto put = [&](int radix) {
    if (plan.stages[plan.levels - 1] == 0) plan.size[plan.levels - 1] = 1;
    plan.size[plan.levels - 1] *= radix;
    ++plan.stages[plan.levels - 1];
    plan.radix[used++] = radix;
  };
  for (int i = 0; i < all.count; ++i) {
    if (chosen >> i & 1) continue;
    const int radix = all.radix[i];
    if (plan.levels == 0 || !fitsTile<T>(plan.size[plan.levels - 1] * radix, lanes)) ++plan.levels;
    put(radix);
  }
  ++plan.levels;
  for (int i = 0; i < all.count; ++i) {
    if (chosen >> i & 1) put(all.radix[i]);
  }
  return plan;
}

}  // namespace

// Every choice of radices for the last level is weighed: levels are passes through memory, and rows that are no multiple of
// the lanes cost what lies over another vector, in the last level and in the one before.
template <class T>
OutOfOrderPlan makeOutOfOrderPlan(int n) {
  const Radices all = radicesOf(n);
  OutOfOrderPlan best{};
  float least = 1e30f;
  for (int lanes = static_cast<int>(kLanes<T>); lanes > 0; lanes = fewerLanes<T>(lanes)) {
    if (lanes > 1 && !std::all_of(all.radix, all.radix + all.count,
                                  [=](int radix) { return fitsTile<T>(radix, lanes); })) {
      continue;
    }
    for (unsigned choice = 1; choice < 1u << all.count; ++choice) {
      int last = 1;
      for (int i = 0; i < all.count && last <= kTilePoints<T>; ++i) {
        if (choice >> i & 1) last *= all.radix[i];
      }
      if (last < lanes || n / last < lanes || !fitsTile<T>(last, lanes)) continue;
      const OutOfOrderPlan plan = outOfOrderPlan<T>(n, all, choice, lanes);
      const float cost =
          (static_cast<float>(plan.levels) + 2 * (lanesCost(last, lanes) - 1)) / static_cast<float>(lanes);
      if (cost >= least) continue;
      least = cost;
      best = plan;
    }
  }
  return best;
}

template OutOfOrderPlan makeOutOfOrderPlan<float>(int);
template OutOfOrderPlan makeOutOfOrderPlan<double>(int);
template MixedPlan makeMixedPlan<float>(int);
template MixedPlan makeMixedPlan<double>(int);

}  // namespace kvrs::dft
