// FIR filters by their definition, in double precision, and states to compare with it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FILTERS_FIR_ORACLE_H
#define KVRS_TESTS_FILTERS_FIR_ORACLE_H

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "kvrs/fir.h"
#include "tests/support/random.h"

namespace kvrs::test {

// Whole numbers, so small that every sum of a filter of 4,096 taps is exact in single precision.
inline std::vector<Kvr32f> wholeNumbers(Random& random, size_t count, int most) {
  std::vector<Kvr32f> numbers(count);
  for (Kvr32f& number : numbers) {
    number = static_cast<Kvr32f>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) - most);
  }
  return numbers;
}
inline std::vector<Kvr32f> wholeTaps(Random& random, int tapsLen) {
  return wholeNumbers(random, static_cast<size_t>(tapsLen), 8);
}
inline std::vector<Kvr32f> wholeSamples(Random& random, int len) {
  return wholeNumbers(random, static_cast<size_t>(len), 64);
}

// A filter by its definition. It remembers every sample that it was given.
class FirOracle {
 public:
  FirOracle(const std::vector<Kvr32f>& taps, const Kvr32f* dlyLine) : past_(taps.size(), 0.0) {
    setTaps(taps);
    setDelayLine(dlyLine);
  }

  void setTaps(const std::vector<Kvr32f>& taps) { taps_.assign(taps.begin(), taps.end()); }
  void setDelayLine(const Kvr32f* dlyLine) {
    past_.assign(taps_.size(), 0.0);
    for (size_t i = 0; i < taps_.size() && dlyLine != nullptr; ++i) past_[taps_.size() - 1 - i] = dlyLine[i];
  }

  std::vector<double> run(const std::vector<Kvr32f>& samples) {
    std::vector<double> outputs;
    for (Kvr32f sample : samples) {
      past_.push_back(sample);
      double sum = 0;
      const double* newest = past_.data() + past_.size() - 1;
      for (size_t k = 0; k < taps_.size(); ++k) sum += taps_[k] * newest[-static_cast<ptrdiff_t>(k)];
      outputs.push_back(sum);
    }
    past_.erase(past_.begin(), past_.end() - static_cast<ptrdiff_t>(taps_.size()));
    return outputs;
  }

  // In the caller's order.
  std::vector<Kvr32f> delayLine() const { return {past_.rbegin(), past_.rend()}; }

 private:
  std::vector<double> taps_, past_;
};

// How far results may be off: whole numbers come out exact from the direct engine, and from the FFT with an
// error that is far below one half (its root mean square, about eps * sqrt(order) times that of the results,
// is below 0.01).
inline double toleranceOf(int tapsLen, int len) {
  return tapsLen >= 64 && len >= 512 ? 0.25 : 0.0;
}

inline void expectNear(const std::vector<double>& want, const Kvr32f* got, double tolerance) {
  size_t bad = 0, first = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    Kvr32f value;
    memcpy(&value, reinterpret_cast<const char*>(got) + i * sizeof value, sizeof value);
    if (std::abs(value - want[i]) <= tolerance) continue;
    if (bad++ == 0) first = i;
  }
  Kvr32f value = 0;
  if (bad != 0) memcpy(&value, reinterpret_cast<const char*>(got) + first * sizeof value, sizeof value);
  EXPECT_EQ(0u, bad) << "of " << want.size() << ", the first at " << first << ": " << value << " for "
                     << (bad != 0 ? want[first] : 0);
}

inline std::vector<Kvr32f> delayLineOf(const KvrsFIRState_32f* state, int tapsLen) {
  std::vector<Kvr32f> line(static_cast<size_t>(tapsLen));
  EXPECT_EQ(kvrStatusOk, kvrsFIRGetDlyLine_32f(state, line.data()));
  return line;
}

// A state on the heap for as long as it is in scope.
class FirState {
 public:
  explicit FirState(const std::vector<Kvr32f>& taps, const Kvr32f* dlyLine = nullptr) {
    EXPECT_EQ(kvrStatusOk,
              kvrsFIRInitAlloc_32f(&state_, taps.data(), static_cast<int>(taps.size()), dlyLine));
  }
  ~FirState() { EXPECT_EQ(kvrStatusOk, kvrsFIRFree_32f(state_)); }
  FirState(const FirState&) = delete;
  FirState& operator=(const FirState&) = delete;

  operator KvrsFIRState_32f*() const { return state_; }

 private:
  KvrsFIRState_32f* state_ = nullptr;
};

// Spoils the FFT context inside a state: a call that uses it fails from then on, which shows what runs on the
// FFT engine. The context is found by its first two words, kind and order.
inline bool spoilFft(KvrsFIRState_32f* state, int tapsLen) {
  int size, order = 0;
  if (kvrsFIRGetStateSize_32f(tapsLen, &size) != kvrStatusOk) return false;
  while (tapsLen >> (order + 1) != 0) ++order;
  const uint32_t wanted[] = {6, static_cast<uint32_t>(order + 2)};
  int found = 0;
  for (char* at = reinterpret_cast<char*>(state); size >= 16 + static_cast<int>(sizeof wanted);
       size -= 4, at += 4) {
    if (memcmp(at, wanted, sizeof wanted) != 0) continue;
    memset(at, 0, 4);
    ++found;
  }
  return found >= 1;  // more, where memory that was used before holds one
}

}  // namespace kvrs::test

#endif
