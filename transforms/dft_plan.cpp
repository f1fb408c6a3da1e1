// Methods, factors and plans of transforms of any length.
// SPDX-License-Identifier: MIT
#include "transforms/dft_plan.h"

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

// The operations of a radix, loads and stores included.
constexpr int operationsOf(int radix) {
  constexpr int kOperations[] = {16, 34, 40, 62, 80, 102, 100, 150, 144, 206, 184, 270, 232, 232, 240};
  return kOperations[radix - 2];
}
// For each point.
constexpr float costOf(int radix) {
  if (radix > kLastShort) return 2.0f * static_cast<float>(radix) + 6.0f;
  return static_cast<float>(operationsOf(radix)) / static_cast<float>(radix);
}

struct Radices {
  int count;
  int radix[8];
  float cost;
};

// Those of the least work, the largest last, where a stage has the fewest factors between; none where a prime is too large.
Radices radicesOf(int rows, int most = kMostRows) {
  constexpr float kStage = 3.0f;  // what a stage costs besides
  Radices best{0, {}, rows == 1 ? 0.0f : 1e9f};
  const auto attempt = [&](int radix) {
    const Radices rest = radicesOf(rows / radix, radix);
    const float cost = rest.cost + costOf(radix) + kStage;
    if (cost >= best.cost || rest.count == 8) return;
    best = rest;
    best.radix[best.count++] = radix;
    best.cost = cost;
  };
  for (int radix = 2; radix <= rows && radix <= most; ++radix) {
    if (rows % radix != 0) continue;
    bool isPrime = radix > kLastShort;
    for (int d = 2; d * d <= radix && isPrime; ++d) isPrime = radix % d != 0;
    if (radix <= kLastRadix || isPrime) attempt(radix);
  }
  return best;
}

// Every choice of levels is weighed.
template <class T>
class Search {
 public:
  Search(int n, bool inOrder) : n_(n), inOrder_(inOrder) {
    best_.n = n;
    for (int rows = 2; rows <= kMostRows; ++rows) {
      if (n % rows != 0) continue;
      const Radices radices = radicesOf(rows);
      if (radices.count == 0) continue;
      rows_[count_] = rows;
      radices_[count_++] = radices;
    }
    for (depth_ = 2; least_ == kNone && depth_ <= kMostLevels; ++depth_) choose(0, n, 0);
  }

  const Plan& best() const { return best_; }

 private:
  static constexpr float kNone = 1e30f;
  static constexpr int kAll = static_cast<int>(kLanes<T>);

  void choose(int level, int rest, float cost) {
    for (int i = 0; i < count_; ++i) {
      const int rows = rows_[i];
      if (rest % rows != 0 || (level + 1 == depth_) != (rest == rows)) continue;
      chosen_[level] = i;
      const float before = !inOrder_ && rest == rows ? cost * strippedBy(rows) : cost;
      const float all = before + costOfLevel(level, rest, rows, radices_[i].cost);
      if (all >= least_) continue;
      if (level + 1 < depth_) {
        choose(level + 1, rest / rows, all);
      } else {
        least_ = all;
        keep();
      }
    }
  }

  // Out of order, what it costs the other levels that their strips end where blocks of so many points do, and that these
  // lie across cache lines.
  static float strippedBy(int block) {
    const float filled = static_cast<float>(wholeVectors<T>(block)) / static_cast<float>(block);
    return block % 4 == 0 ? filled : 1.1f * filled;
  }

  // In operations on vectors.
  float costOfLevel(int level, int rest, int rows, float stages) const {
    const int first = rows_[chosen_[0]], m = rest / rows, side = n_ / rest;
    const auto vectors = [](int numbers) { return static_cast<float>(wholeVectors<T>(numbers) / kAll); };
    const float columns = !inOrder_    ? (rest == rows ? vectors(side) : static_cast<float>(side * m) / kAll)
                          : level == 0 ? vectors(m)
                          : depth_ == 2 || side % kAll == 0
                              ? vectors(first) * static_cast<float>(side / first * m)
                          : side < kAll ? kNone
                                        : (vectors(side) + 0.5f) * static_cast<float>(m);
    const float large = inOrder_ ? 0.0f : 0.02f * static_cast<float>(rows);  // tiles take nearest memory
    float cost = columns * static_cast<float>(rows) * (stages + large + 8.0f);
    const int transposed = inOrder_ ? 0 : depth_ - 1;
    if (level == transposed) {
      constexpr float kSquare = static_cast<float>(2 * kAll * (__builtin_ctz(kAll) + 5));
      cost += kSquare * (!inOrder_ ? vectors(side) * vectors(rows)
                                   : columns * (shareVectors<T>(rows) ? 0.5f : vectors(rows)));
    }
    if (inOrder_ && level == 0 && rows % kAll != 0 && rows < kAll &&
        (depth_ > 2 || wholeVectors<T>(rows) > kMostPadded<T> / m)) {
      return kNone;
    }
    return cost;
  }

  void keep() {
    best_.levels = depth_;
    int used = 0;
    for (int level = 0; level < depth_; ++level) {
      const Radices& radices = radices_[chosen_[level]];
      best_.rows[level] = rows_[chosen_[level]];
      best_.stages[level] = radices.count;
      for (int i = 0; i < radices.count; ++i) best_.radix[used++] = radices.radix[i];
    }
  }

  int n_;
  bool inOrder_;
  int count_ = 0, depth_;
  int rows_[kMostRows];
  Radices radices_[kMostRows];
  int chosen_[kMostLevels];
  float least_ = kNone;
  Plan best_{};
};

// Of two radices, the first level's first; without levels if there are none that fit.
template <class T>
Plan straightPlan(int n) {
  constexpr int P = kPairsOfVector<T>;
  const auto vectors = [](int count) { return (count + P - 1) / P; };
  Plan best{};
  int least = 0;
  for (int a = 2; a <= kLastShort; ++a) {
    const int b = n / a;
    const Plan plan{.n = n, .levels = 2, .rows = {a, b}, .stages = {1, 1}, .radix = {a, b}};
    if (a * b != n || b < 2 || !isStraight<T>(plan)) continue;
    constexpr int kTurn = 5, kSquare = P * (__builtin_ctz(P) + 1);
    const int cost = vectors(b) * (operationsOf(a) / 2 + kTurn * a + kSquare * vectors(a)) +
                     vectors(a) * operationsOf(b) / 2;
    if (best.levels > 0 && cost >= least) continue;
    best = plan;
    least = cost;
  }
  return best;
}

}  // namespace

template <class T>
Plan makePlan(int n) {
  if (n <= kLastShort) return {.n = n, .levels = 1, .rows = {n}, .stages = {1}, .radix = {n}};
  const Plan straight = straightPlan<T>(n);
  return straight.levels > 0 ? straight : Search<T>(n, true).best();
}

template <class T>
Plan makeOutOfOrderPlan(int n) {
  return Search<T>(n, false).best();
}

template Plan makePlan<float>(int);
template Plan makePlan<double>(int);
template Plan makeOutOfOrderPlan<float>(int);
template Plan makeOutOfOrderPlan<double>(int);

}  // namespace kvrs::dft
