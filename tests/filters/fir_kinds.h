// All types of FIR filters behind one set of functions, and an oracle in whole numbers: samples and taps are integers, and
// so small that every sum is exact in every type that it is computed in, or modulo 2^32 where the filter says so.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FILTERS_FIR_KINDS_H
#define KVRS_TESTS_FILTERS_FIR_KINDS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "kvrs/fir.h"
#include "tests/support/arena.h"
#include "tests/support/random.h"

namespace kvrs::test {

// A complex integer; im is 0 for real types.
struct Whole {
  int64_t re = 0, im = 0;
  bool operator==(const Whole&) const = default;
};

struct ElementType {
  size_t bytes;
  bool complex, floating;
  int64_t lowest, highest;  // of the range that results are saturated to
  void (*put)(void* array, size_t i, Whole value);
  Whole (*get)(const void* array, size_t i);
};

template <class T>
const ElementType* elementOf() {
  if constexpr (requires(T value) { value.re; }) {
    using Part = decltype(T::re);
    static const ElementType type{
        sizeof(T),
        true,
        std::is_floating_point_v<Part>,
        elementOf<Part>()->lowest,
        elementOf<Part>()->highest,
        [](void* array, size_t i, Whole v) {
          put(static_cast<T*>(array), i, T{static_cast<Part>(v.re), static_cast<Part>(v.im)});
        },
        [](const void* array, size_t i) {
          const T v = get(static_cast<const T*>(array), i);
          return Whole{static_cast<int64_t>(v.re), static_cast<int64_t>(v.im)};
        }};
    return &type;
  } else {
    constexpr bool isFloat = std::is_floating_point_v<T>;
    static const ElementType type{
        sizeof(T),
        false,
        isFloat,
        isFloat ? INT64_MIN : static_cast<int64_t>(std::numeric_limits<T>::lowest()),
        isFloat ? INT64_MAX : static_cast<int64_t>(std::numeric_limits<T>::max()),
        [](void* array, size_t i, Whole v) { put(static_cast<T*>(array), i, static_cast<T>(v.re)); },
        [](const void* array, size_t i) {
          return Whole{static_cast<int64_t>(get(static_cast<const T*>(array), i)), 0};
        }};
    return &type;
  }
}

// Functions that a type has none of are null; arguments that one has none of are not looked at.
struct FirKind {
  const char* name;  // the suffix of its functions
  const ElementType *data, *taps;
  bool scaled;     // results are times 2^-scaleFactor
  bool factored;   // taps are integers times 2^tapsFactor
  bool floatTaps;  // taps become such

  KvrStatus (*getStateSize)(int tapsLen, int* size) = nullptr;
  KvrStatus (*init)(void** state, const void* taps, int tapsLen, int tapsFactor, const void* dlyLine,
                    Kvr8u* buffer) = nullptr;
  KvrStatus (*initAlloc)(void** state, const void* taps, int tapsLen, int tapsFactor,
                         const void* dlyLine) = nullptr;
  KvrStatus (*free)(void* state) = nullptr;
  KvrStatus (*getTaps)(const void* state, void* taps, int* tapsFactor) = nullptr;
  KvrStatus (*setTaps)(const void* taps, void* state, int tapsFactor) = nullptr;
  KvrStatus (*getDlyLine)(const void* state, void* dlyLine) = nullptr;
  KvrStatus (*setDlyLine)(void* state, const void* dlyLine) = nullptr;
  KvrStatus (*one)(const void* src, void* dst, void* state, int scaleFactor) = nullptr;
  KvrStatus (*run)(const void* src, void* dst, int len, void* state, int scaleFactor) = nullptr;
  KvrStatus (*runInPlace)(void* srcDst, int len, void* state, int scaleFactor) = nullptr;
  KvrStatus (*getStateSizeMR)(int tapsLen, int upFactor, int downFactor, int* size) = nullptr;
  KvrStatus (*initMR)(void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor, int upPhase,
                      int downFactor, int downPhase, const void* dlyLine, Kvr8u* buffer) = nullptr;
  KvrStatus (*initAllocMR)(void** state, const void* taps, int tapsLen, int tapsFactor, int upFactor,
                           int upPhase, int downFactor, int downPhase, const void* dlyLine) = nullptr;

  bool integer() const { return factored || floatTaps; }  // 32-bit sums
  bool is(const char* suffix) const { return std::string(name) == suffix; }
};

std::span<const FirKind> firKinds();

using Wholes = std::vector<Whole>;

inline std::vector<Kvr8u> bytesOf(const ElementType& type, const Wholes& values) {
  std::vector<Kvr8u> bytes(values.size() * type.bytes);
  for (size_t i = 0; i < values.size(); ++i) type.put(bytes.data(), i, values[i]);
  return bytes;
}
inline Wholes wholesOf(const ElementType& type, const void* bytes, size_t count) {
  Wholes values(count);
  for (size_t i = 0; i < count; ++i) values[i] = type.get(bytes, i);
  return values;
}

inline Wholes randomWholes(Random& random, const ElementType& type, size_t count, int most) {
  const auto number = [&] {
    return static_cast<int64_t>(random.below(static_cast<uint32_t>(2 * most + 1))) - most;
  };
  Wholes values(count);
  for (Whole& value : values) {
    value.re = number();
    if (type.complex) value.im = number();
  }
  return values;
}

inline Wholes tapsFor(Random& random, const FirKind& kind, int tapsLen) {
  return randomWholes(random, *kind.taps, static_cast<size_t>(tapsLen), 8);
}
inline Wholes samplesFor(Random& random, const FirKind& kind, size_t len) {
  return randomWholes(random, *kind.data, len, 64);
}

// What becomes of a part of a sum: sums are times 2^-shift.
inline int64_t scaledPart(const FirKind& kind, int64_t sum, int64_t wantedShift) {
  if (!kind.scaled) return sum;
  int shift = static_cast<int>(std::max<int64_t>(-9999, std::min<int64_t>(9999, wantedShift)));
  if (kind.integer()) {
    shift = shift < -31 ? -31 : shift > 31 ? 31 : shift;
    uint32_t wrapped = static_cast<uint32_t>(sum);
    int32_t value = static_cast<int32_t>(wrapped);
    if (shift < 0) {
      value = static_cast<int32_t>(wrapped << -shift);
    } else if (shift > 0) {
      wrapped += (uint32_t{1} << (shift - 1)) - 1 + (static_cast<uint32_t>(value >> shift) & 1);
      value = static_cast<int32_t>(wrapped) >> shift;
    }
    sum = value;
  } else {
    // Exact: a power of two, and rounding to nearest with ties to even.
    const long double scaled = std::nearbyint(std::ldexp(static_cast<long double>(sum), -shift));
    sum = scaled > static_cast<long double>(kind.data->highest)  ? kind.data->highest
          : scaled < static_cast<long double>(kind.data->lowest) ? kind.data->lowest
                                                                 : static_cast<int64_t>(scaled);
  }
  return sum < kind.data->lowest ? kind.data->lowest : sum > kind.data->highest ? kind.data->highest : sum;
}

// A filter by its definition: it remembers all samples. At two rates time runs in steps of the high rate.
class WholeFilter {
 public:
  struct Rates {
    int up = 1, upPhase = 0, down = 1, downPhase = 0;
  };

  // `taps` as the filter holds them, times 2^tapsFactor.
  WholeFilter(const FirKind& kind, const Wholes& taps, int tapsFactor, const Wholes& dlyLine, Rates rates)
      : kind_(&kind), taps_(taps), factor_(tapsFactor), rates_(rates) {
    setDelayLine(dlyLine);
  }
  WholeFilter(const FirKind& kind, const Wholes& taps, int tapsFactor = 0, const Wholes& dlyLine = {})
      : WholeFilter(kind, taps, tapsFactor, dlyLine, Rates()) {}

  size_t delayLength() const {
    return (taps_.size() + static_cast<size_t>(rates_.up) - 1) / static_cast<size_t>(rates_.up);
  }
  void setTaps(const Wholes& taps, int tapsFactor) {
    taps_ = taps;
    factor_ = tapsFactor;
  }
  void setDelayLine(const Wholes& dlyLine) {
    past_.assign(delayLength(), Whole());
    for (size_t i = 0; i < dlyLine.size(); ++i) past_[past_.size() - 1 - i] = dlyLine[i];
  }
  Wholes delayLine() const {
    Wholes line(past_.rbegin(), past_.rend());
    line.resize(delayLength());
    return line;
  }

  // `samples` are whole iterations.
  Wholes run(const Wholes& samples, int scaleFactor) {
    const ptrdiff_t before = static_cast<ptrdiff_t>(past_.size());
    past_.insert(past_.end(), samples.begin(), samples.end());
    const size_t outputs = samples.size() / static_cast<size_t>(rates_.down) * static_cast<size_t>(rates_.up);
    Wholes results(outputs);
    for (size_t n = 0; n < outputs; ++n) {
      const int64_t time = rates_.downPhase + static_cast<int64_t>(n) * rates_.down;
      uint64_t re = 0, im = 0;  // modulo 2^64 at the least
      // The inputs at time - k.
      const int64_t since = time - rates_.upPhase;
      for (int64_t k = (since % rates_.up + rates_.up) % rates_.up; k < static_cast<int64_t>(taps_.size());
           k += rates_.up) {
        const int64_t at = since - k;
        const Whole x = past_[static_cast<size_t>(before + at / rates_.up)],
                    h = taps_[static_cast<size_t>(k)];
        re += static_cast<uint64_t>(x.re * h.re - x.im * h.im);
        im += static_cast<uint64_t>(x.re * h.im + x.im * h.re);
      }
      const int64_t shift = int64_t{scaleFactor} - factor_;
      results[n] = {scaledPart(*kind_, static_cast<int64_t>(re), shift),
                    kind_->data->complex ? scaledPart(*kind_, static_cast<int64_t>(im), shift) : 0};
    }
    past_.erase(past_.begin(), past_.end() - before);
    return results;
  }

 private:
  const FirKind* kind_;
  Wholes taps_;
  int factor_;
  Rates rates_;
  Wholes past_;
};

inline void expectSame(const Wholes& want, const Wholes& got) {
  ASSERT_EQ(want.size(), got.size());
  size_t bad = 0, first = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    if (want[i] == got[i]) continue;
    if (bad++ == 0) first = i;
  }
  if (bad != 0) {
    ADD_FAILURE() << bad << " of " << want.size() << ", the first at " << first << ": (" << got[first].re
                  << ", " << got[first].im << ") for (" << want[first].re << ", " << want[first].im << ")";
  }
}

}  // namespace kvrs::test

#endif
