// Recursive filters of all types behind one interface, and their definition in extended precision.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FILTERS_IIR_ORACLE_H
#define KVRS_TESTS_FILTERS_IIR_ORACLE_H

#include <gtest/gtest.h>

#include <complex>
#include <cstring>
#include <string>
#include <vector>

#include "kvrs/types.h"
#include "tests/support/random.h"

namespace kvrs::test {

using Number = std::complex<long double>;
using Numbers = std::vector<Number>;

enum class IirForm { direct, cascade, df1 };

// The functions of one context type. Arrays are untyped; put() and get() know their elements.
class IirType {
 public:
  std::string name;
  int words[3];  // by form; 0 where there is none
  bool isComplex, isScaled;
  size_t sampleBytes, tapBytes;

  bool has(IirForm form) const { return words[static_cast<int>(form)] != 0; }
  bool isDouble() const { return tapBytes == (isComplex ? 16u : 8u); }
  long double eps() const { return isDouble() ? 0x1p-53L : 0x1p-24L; }

  virtual void putSample(void* array, size_t i, Number value) const = 0;
  virtual Number getSample(const void* array, size_t i) const = 0;
  virtual void putTap(void* array, size_t i, Number value) const = 0;
  virtual Number getTap(const void* array, size_t i) const = 0;

  virtual KvrStatus size(IirForm form, int n, int* bytes) const = 0;
  virtual KvrStatus init(IirForm form, void** state, const void* taps, int n, const void* dlyLine,
                         Kvr8u* buffer) const = 0;
  virtual KvrStatus initAlloc(IirForm form, void** state, const void* taps, int n,
                              const void* dlyLine) const = 0;
  virtual KvrStatus free(void* state) const = 0;
  virtual KvrStatus getDlyLine(const void* state, void* dlyLine) const = 0;
  virtual KvrStatus setDlyLine(void* state, const void* dlyLine) const = 0;
  virtual KvrStatus setTaps(const void* taps, void* state) const = 0;
  virtual KvrStatus one(const void* val, void* dst, void* state, int scaleFactor) const = 0;
  virtual KvrStatus filter(const void* src, void* dst, int len, void* state, int scaleFactor) const = 0;
  virtual KvrStatus filterInPlace(void* srcDst, int len, void* state, int scaleFactor) const = 0;

  // Numbers as arrays of the type's own.
  std::vector<Kvr8u> samples(const Numbers& numbers) const {
    std::vector<Kvr8u> bytes(numbers.size() * sampleBytes);
    for (size_t i = 0; i < numbers.size(); ++i) putSample(bytes.data(), i, numbers[i]);
    return bytes;
  }
  std::vector<Kvr8u> taps(const Numbers& numbers) const {
    std::vector<Kvr8u> bytes(numbers.size() * tapBytes);
    for (size_t i = 0; i < numbers.size(); ++i) putTap(bytes.data(), i, numbers[i]);
    return bytes;
  }
  Numbers samples(const std::vector<Kvr8u>& bytes) const {
    Numbers numbers(bytes.size() / sampleBytes);
    for (size_t i = 0; i < numbers.size(); ++i) numbers[i] = getSample(bytes.data(), i);
    return numbers;
  }
  Numbers taps(const std::vector<Kvr8u>& bytes) const {
    Numbers numbers(bytes.size() / tapBytes);
    for (size_t i = 0; i < numbers.size(); ++i) numbers[i] = getTap(bytes.data(), i);
    return numbers;
  }

 protected:
  ~IirType() = default;
};

// All fourteen.
const std::vector<const IirType*>& iirTypes();

inline int tapCount(IirForm form, int n) {
  return form == IirForm::direct ? 2 * n + 2 : 6 * n;
}
inline int lineLength(IirForm form, int n) {
  return form == IirForm::direct ? n : form == IirForm::cascade ? 2 * n : 4 * n;
}

// A filter by its definition: sections of any order in the transposed direct form II, or with the last inputs and outputs
// for a delay line.
class IirOracle {
 public:
  IirOracle(IirForm form, int n, const Numbers& taps, const Numbers& line = {}) : form_(form) {
    const int order = form == IirForm::direct ? n : 2, sections = form == IirForm::direct ? 1 : n;
    for (int i = 0; i < sections; ++i) {
      Section s;
      const size_t at = static_cast<size_t>(i * (2 * order + 2)), count = static_cast<size_t>(order);
      const Number a0 = taps[at + count + 1];
      for (size_t k = 0; k <= count; ++k) {
        s.b.push_back(taps[at + k] / a0);
        s.a.push_back(taps[at + count + 1 + k] / a0);
      }
      s.d.assign(count + 1, 0);
      s.past.assign(4, 0);
      const size_t share = form == IirForm::df1 ? 4 : count;
      for (size_t k = 0; k < share && !line.empty(); ++k) {
        (form == IirForm::df1 ? s.past : s.d)[k] = line[static_cast<size_t>(i) * share + k];
      }
      s_.push_back(s);
    }
  }

  Numbers run(Numbers signal) {
    for (Section& s : s_) {
      for (Number& x : signal) {
        s.largest = std::max(s.largest, std::abs(x));
        x = form_ == IirForm::df1 ? s.stepDf1(x) : s.step(x);
        s.largest = std::max(s.largest, std::abs(x));
      }
    }
    return signal;
  }
  Numbers line() const {
    Numbers all;
    for (const Section& s : s_) {
      if (form_ == IirForm::df1) {
        all.insert(all.end(), s.past.begin(), s.past.end());
      } else {
        all.insert(all.end(), s.d.begin(), s.d.end() - 1);
      }
    }
    return all;
  }

  // How far outputs may be off if each section's recursion is wrong by one unit of its largest number for each of its
  // taps: what one such error does to all outputs together, that is the sum of the gains from there to the end.
  long double sensitivity(size_t len) const {
    long double sum = 0;
    for (size_t i = 0; i < s_.size(); ++i) {
      Numbers impulse(len, 0);
      impulse[0] = 1;
      Section poles = s_[i];
      std::fill(poles.b.begin(), poles.b.end(), Number(0));
      poles.b[0] = 1;
      std::fill(poles.d.begin(), poles.d.end(), Number(0));
      for (Number& x : impulse) x = poles.step(x);
      for (size_t j = i + 1; j < s_.size(); ++j) {
        Section next = s_[j];
        std::fill(next.d.begin(), next.d.end(), Number(0));
        for (Number& x : impulse) x = next.step(x);
      }
      long double gain = 0, taps = 0;
      for (Number x : impulse) gain += std::abs(x);
      for (Number tap : s_[i].b) taps += std::abs(tap);
      for (Number tap : s_[i].a) taps += std::abs(tap);
      sum += gain * taps * s_[i].largest;
    }
    return sum;
  }

 private:
  struct Section {
    Numbers b, a, d, past;
    long double largest = 0;

    Number step(Number x) {
      const Number y = b[0] * x + d[0];
      for (size_t k = 1; k < b.size(); ++k) d[k - 1] = b[k] * x - a[k] * y + d[k];
      return y;
    }
    Number stepDf1(Number x) {
      const Number y = b[0] * x + b[1] * past[1] + b[2] * past[0] - a[1] * past[3] - a[2] * past[2];
      past = {past[1], x, past[3], y};
      return y;
    }
  };

  IirForm form_;
  std::vector<Section> s_;
};

// A context on the heap for as long as it is in scope.
class IirState {
 public:
  IirState(const IirType& type, IirForm form, int n, const Numbers& taps, const Numbers& line = {})
      : type_(type) {
    const auto given = type.taps(taps), delay = type.taps(line);
    EXPECT_EQ(kvrStatusOk,
              type.initAlloc(form, &state_, given.data(), n, line.empty() ? nullptr : delay.data()));
  }
  ~IirState() { EXPECT_EQ(kvrStatusOk, type_.free(state_)); }
  IirState(const IirState&) = delete;
  IirState& operator=(const IirState&) = delete;

  operator void*() const { return state_; }

  Numbers run(const Numbers& signal, int scaleFactor = 0) {
    const auto src = type_.samples(signal);
    std::vector<Kvr8u> dst(src.size());
    EXPECT_EQ(kvrStatusOk,
              type_.filter(src.data(), dst.data(), static_cast<int>(signal.size()), state_, scaleFactor));
    return type_.samples(dst);
  }
  Numbers runSingly(const Numbers& signal, int scaleFactor = 0) {
    const auto src = type_.samples(signal);
    std::vector<Kvr8u> dst(src.size());
    for (size_t i = 0; i < src.size(); i += type_.sampleBytes) {
      EXPECT_EQ(kvrStatusOk, type_.one(&src[i], &dst[i], state_, scaleFactor));
    }
    return type_.samples(dst);
  }
  Numbers line(int count) const {
    std::vector<Kvr8u> bytes(static_cast<size_t>(count) * type_.tapBytes);
    EXPECT_EQ(kvrStatusOk, type_.getDlyLine(state_, bytes.data()));
    return type_.taps(bytes);
  }

 private:
  const IirType& type_;
  void* state_ = nullptr;
};

// Whole numbers up to `most` in magnitude; complex ones in both parts.
inline Numbers wholeSignal(Random& random, const IirType& type, size_t len, int most) {
  const auto whole = [&] {
    return static_cast<long double>(static_cast<int>(random.below(static_cast<uint32_t>(2 * most + 1))) -
                                    most);
  };
  Numbers signal(len);
  for (Number& x : signal) x = {whole(), type.isComplex ? whole() : 0};
  return signal;
}

// Taps of a stable filter, rounded to the type's own: poles within `radius`, zeros anywhere near the unit circle.
inline Numbers stableTaps(Random& random, const IirType& type, IirForm form, int n, long double radius) {
  const auto polynomial = [&](int order, long double most) {
    Numbers p{1};
    while (static_cast<int>(p.size()) <= order) {
      const Number root =
          std::polar(most * std::sqrt((random.unit() + 1) / 2), 3.14159265358979L * random.unit());
      const bool real = static_cast<int>(p.size()) == order && !type.isComplex;
      Numbers roots{real ? Number(root.real()) : root};
      if (!type.isComplex && !real) roots.push_back(std::conj(root));
      for (const Number r : roots) {
        p.push_back(0);
        for (size_t k = p.size() - 1; k > 0; --k) p[k] -= r * p[k - 1];
      }
    }
    if (!type.isComplex) {
      for (Number& c : p) c = c.real();
    }
    return p;
  };
  const int order = form == IirForm::direct ? n : 2;
  Numbers taps;
  for (int i = 0; i < (form == IirForm::direct ? 1 : n); ++i) {
    const Numbers b = polynomial(order, 1.2L), a = polynomial(order, radius);
    const Number a0 = random.below(2) == 0
                          ? Number(1)
                          : Number(0.5L + 2 * std::abs(random.unit()), type.isComplex ? 0.3L : 0);
    for (Number tap : b) taps.push_back(tap * (0.25L + std::abs(static_cast<long double>(random.unit()))));
    for (Number tap : a) taps.push_back(tap * a0);
  }
  return type.taps(type.taps(taps));  // as the type has them
}

inline std::string describe(const IirType& type, IirForm form, int n, size_t len) {
  const char* const forms[] = {"direct form", "cascade", "direct form 1"};
  return type.name + ", " + forms[static_cast<int>(form)] + " of " + std::to_string(n) + ", " +
         std::to_string(len) + " samples";
}

}  // namespace kvrs::test

#endif
