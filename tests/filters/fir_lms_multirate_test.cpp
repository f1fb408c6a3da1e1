// Adaptive filters in steps against their definition, to the bit.
// SPDX-License-Identifier: MIT
#include "kvrs/fir_lms_multirate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/core.h"
#include "tests/support/random.h"

using namespace kvrs::test;

namespace {

struct Real {
  using State = KvrsFIRLMSMRState32s_16s;
  using T = Kvr32s;
  using X = Kvr16s;
  static constexpr bool complex = false;
  static constexpr uint32_t word = 0x4C4D5352;
  static constexpr auto* initAlloc = kvrsFIRLMSMRInitAlloc32s_16s;
  static constexpr auto* free = kvrsFIRLMSMRFree32s_16s;
  static constexpr auto* getTaps = kvrsFIRLMSMRGetTaps32s_16s;
  static constexpr auto* setTaps = kvrsFIRLMSMRSetTaps32s_16s;
  static constexpr auto* getTapsPointer = kvrsFIRLMSMRGetTapsPointer32s_16s;
  static constexpr auto* getDlyLine = kvrsFIRLMSMRGetDlyLine32s_16s;
  static constexpr auto* setDlyLine = kvrsFIRLMSMRSetDlyLine32s_16s;
  static constexpr auto* getDlyVal = kvrsFIRLMSMRGetDlyVal32s_16s;
  static constexpr auto* setMu = kvrsFIRLMSMRSetMu32s_16s;
  static constexpr auto* putVal = kvrsFIRLMSMRPutVal32s_16s;
  static constexpr auto* one = kvrsFIRLMSMROne32s_16s;
  static constexpr auto* oneVal = kvrsFIRLMSMROneVal32s_16s;
  static KvrStatus update(int re, int, State* state) { return kvrsFIRLMSMRUpdateTaps32s_16s(re, state); }
};

struct Cplx {
  using State = KvrsFIRLMSMRState32sc_16sc;
  using T = Kvr32sc;
  using X = Kvr16sc;
  static constexpr bool complex = true;
  static constexpr uint32_t word = 0x4C4D5343;
  static constexpr auto* initAlloc = kvrsFIRLMSMRInitAlloc32sc_16sc;
  static constexpr auto* free = kvrsFIRLMSMRFree32sc_16sc;
  static constexpr auto* getTaps = kvrsFIRLMSMRGetTaps32sc_16sc;
  static constexpr auto* setTaps = kvrsFIRLMSMRSetTaps32sc_16sc;
  static constexpr auto* getTapsPointer = kvrsFIRLMSMRGetTapsPointer32sc_16sc;
  static constexpr auto* getDlyLine = kvrsFIRLMSMRGetDlyLine32sc_16sc;
  static constexpr auto* setDlyLine = kvrsFIRLMSMRSetDlyLine32sc_16sc;
  static constexpr auto* getDlyVal = kvrsFIRLMSMRGetDlyVal32sc_16sc;
  static constexpr auto* setMu = kvrsFIRLMSMRSetMu32sc_16sc;
  static constexpr auto* putVal = kvrsFIRLMSMRPutVal32sc_16sc;
  static constexpr auto* one = kvrsFIRLMSMROne32sc_16sc;
  static constexpr auto* oneVal = kvrsFIRLMSMROneVal32sc_16sc;
  static constexpr auto* update = kvrsFIRLMSMRUpdateTaps32sc_16sc;
};

template <class F>
class LmsSteps : public testing::Test {};
using Forms = testing::Types<Real, Cplx>;
TYPED_TEST_SUITE(LmsSteps, Forms);

// A number of either kind; real ones have no imaginary part.
struct Whole {
  int64_t re = 0, im = 0;
  bool operator==(const Whole&) const = default;
};
void PrintTo(const Whole& value, std::ostream* out) {
  *out << value.re << " + " << value.im << "i";
}
template <class E>
Whole whole(E element) {
  if constexpr (std::is_integral_v<E>) {
    return {element, 0};
  } else {
    return {element.re, element.im};
  }
}
template <class E>
E element(Whole value) {
  if constexpr (std::is_integral_v<E>) {
    return static_cast<E>(value.re);
  } else {
    return {static_cast<decltype(E::re)>(value.re), static_cast<decltype(E::im)>(value.im)};
  }
}
template <class E>
std::vector<Whole> wholes(const std::vector<E>& elements) {
  std::vector<Whole> all;
  for (const E& e : elements) all.push_back(whole(e));
  return all;
}
template <class E>
std::vector<E> randoms(Random& random, size_t count) {
  std::vector<E> all(count);
  for (E& e : all) e = random.value<E>();
  return all;
}

// Modulo 2^32, as a signed number. Sums of a few thousand products of 32 and 16 bits stay below 2^63.
int64_t wrapped(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}

struct Geometry {
  int tapsLen, dlyStep, updateDly;
  int dlyLen() const { return tapsLen * dlyStep + updateDly; }
};

// Taps in forward order, and the ring as the delay line shows it.
class Model {
 public:
  Model(Geometry geometry, std::vector<Whole> taps, std::vector<Whole> line, int pos, int mu)
      : g_(geometry), taps_(std::move(taps)), ring_(std::move(line)), pos_(pos), mu_(mu) {}

  Whole x(int64_t age) const {
    const int64_t len = g_.dlyLen();
    return ring_[static_cast<size_t>(((pos_ - 1 - age) % len + 2 * len) % len)];
  }
  void put(Whole value) {
    pos_ = ((pos_ % g_.dlyLen()) + g_.dlyLen()) % g_.dlyLen();
    ring_[static_cast<size_t>(pos_)] = value;
    pos_ = (pos_ + 1) % g_.dlyLen();
  }
  Whole one() const {
    Whole sum;
    for (int k = 0; k < g_.tapsLen; ++k) {
      const Whole s = x(int64_t{k} * g_.dlyStep), t = taps_[static_cast<size_t>(k)];
      const Whole h{t.re >> 16, t.im >> 16};
      sum.re += h.re * s.re - h.im * s.im;
      sum.im += h.re * s.im + h.im * s.re;
    }
    return {wrapped(sum.re), wrapped(sum.im)};
  }
  int64_t step(int err) const { return wrapped(wrapped(int64_t{mu_} * err) + 16384) >> 15; }
  void update(int errRe, int errIm) {
    const int64_t re = step(errRe), im = errIm == 0 && !isComplex ? 0 : step(errIm);
    for (int k = 0; k < g_.tapsLen; ++k) {
      const Whole s = x(int64_t{k} * g_.dlyStep + g_.updateDly);
      Whole& t = taps_[static_cast<size_t>(k)];
      t.re = wrapped(t.re + s.re * re + s.im * im);
      t.im = isComplex ? wrapped(t.im + s.re * im - s.im * re) : 0;
    }
  }
  Whole value(int index) const { return x(int64_t{g_.tapsLen - 1} * g_.dlyStep - index); }

  Geometry g_;
  std::vector<Whole> taps_, ring_;
  int64_t pos_;
  int mu_;
  bool isComplex = true;
};

constexpr Geometry kGeometries[] = {
    {1, 1, 0},   {1, 1, 1},   {1, 5, 2},   {2, 1, 0},   {2, 2, 1},  {3, 2, 0},   {4, 1, 3},   {5, 3, 0},
    {7, 1, 1},   {8, 1, 0},   {8, 2, 5},   {9, 2, 0},   {15, 1, 0}, {16, 1, 9},  {16, 2, 0},  {17, 1, 0},
    {17, 2, 3},  {17, 4, 1},  {31, 1, 2},  {32, 1, 0},  {33, 2, 2}, {33, 3, 7},  {48, 1, 0},  {63, 1, 64},
    {64, 1, 0},  {64, 2, 0},  {64, 7, 20}, {65, 1, 1},  {65, 2, 1}, {100, 1, 3}, {100, 2, 1}, {129, 5, 0},
    {511, 3, 1}, {512, 3, 0}, {513, 3, 2}, {1100, 2, 5}};

template <class F>
class Filter {
 public:
  using T = typename F::T;
  using X = typename F::X;

  Filter(Geometry geometry, Random& random)
      : random_(random),
        g_(geometry),
        taps_(randoms<T>(random, static_cast<size_t>(geometry.tapsLen))),
        line_(randoms<X>(random, static_cast<size_t>(geometry.dlyLen()))),
        start_(static_cast<int>(random.below(static_cast<uint32_t>(geometry.dlyLen())))),
        model_(geometry, wholes(taps_), wholes(line_), start_, 1000) {
    model_.isComplex = F::complex;
    EXPECT_EQ(kvrStatusOk, F::initAlloc(&state_, taps_.data(), g_.tapsLen, line_.data(), start_, g_.dlyStep,
                                        g_.updateDly, 1000));
  }
  ~Filter() { EXPECT_EQ(kvrStatusOk, F::free(state_)); }
  Filter(const Filter&) = delete;
  Filter& operator=(const Filter&) = delete;

  void put() {
    const X x = random_.value<X>();
    ASSERT_EQ(kvrStatusOk, F::putVal(x, state_));
    model_.put(whole(x));
  }
  void one() {
    T* dst = place<T>();
    ASSERT_EQ(kvrStatusOk, F::one(dst, state_));
    ASSERT_EQ(model_.one(), whole(get(dst, 0))) << name();
    ASSERT_TRUE(arena().intact());
  }
  void oneVal() {
    const X x = random_.value<X>();
    T* dst = place<T>();
    ASSERT_EQ(kvrStatusOk, F::oneVal(x, dst, state_));
    model_.put(whole(x));
    ASSERT_EQ(model_.one(), whole(get(dst, 0))) << name();
    ASSERT_TRUE(arena().intact());
  }
  // Steps of 16 bits and of one more, and right at that border.
  void update() {
    const int mu = random_.below(2) == 0 ? random_.value<int32_t>() : static_cast<int>(random_.below(40000));
    ASSERT_EQ(kvrStatusOk, F::setMu(state_, mu));
    model_.mu_ = mu;
    const auto error = [&] {
      return random_.below(3) == 0 ? random_.value<int32_t>()
                                   : static_cast<int>(random_.below(60000)) - 30000;
    };
    const int re = error(), im = error();
    ASSERT_EQ(kvrStatusOk, F::update(re, im, state_));
    model_.update(re, im);
  }
  // With a mu of 1 the step is the error, shifted: so it can be anything.
  void updateBy(int64_t stepRe, int64_t stepIm) {
    ASSERT_EQ(kvrStatusOk, F::setMu(state_, 1));
    model_.mu_ = 1;
    const auto error = [](int64_t g) { return static_cast<int>(wrapped(g * 32768 - 16384)); };
    ASSERT_EQ(stepRe, model_.step(error(stepRe)));
    ASSERT_EQ(kvrStatusOk, F::update(error(stepRe), error(stepIm), state_));
    model_.update(error(stepRe), error(stepIm));
  }
  void expectTaps() {
    T* taps = place<T>(static_cast<size_t>(g_.tapsLen));
    ASSERT_EQ(kvrStatusOk, F::getTaps(state_, taps));
    for (size_t k = 0; k < model_.taps_.size(); ++k) {
      ASSERT_EQ(model_.taps_[k], whole(get(taps, k))) << name() << ", tap " << k;
    }
    ASSERT_TRUE(arena().intact());
  }
  void expectLine() {
    X* line = place<X>(static_cast<size_t>(g_.dlyLen()));
    int index = -77;
    ASSERT_EQ(kvrStatusOk, F::getDlyLine(state_, line, &index));
    ASSERT_EQ(model_.pos_, index);
    for (size_t i = 0; i < model_.ring_.size(); ++i) {
      ASSERT_EQ(model_.ring_[i], whole(get(line, i))) << name() << ", " << i;
    }
    ASSERT_TRUE(arena().intact());
  }
  void expectValues() {
    for (int index = 0; index <= g_.dlyLen(); ++index) {
      X* dst = place<X>();
      ASSERT_EQ(kvrStatusOk, F::getDlyVal(state_, dst, index));
      ASSERT_EQ(model_.value(index), whole(get(dst, 0))) << name() << ", value " << index;
      ASSERT_TRUE(arena().intact());
    }
  }
  void setTaps() {
    const auto taps = randoms<T>(random_, static_cast<size_t>(g_.tapsLen));
    T* at = place<T>(taps.size());
    memcpy(static_cast<void*>(at), taps.data(), taps.size() * sizeof(T));
    ASSERT_EQ(kvrStatusOk, F::setTaps(state_, at));
    model_.taps_ = wholes(taps);
  }
  void clearTaps() {
    ASSERT_EQ(kvrStatusOk, F::setTaps(state_, nullptr));
    model_.taps_.assign(model_.taps_.size(), {});
  }
  void setLine(int index) {
    const auto line = randoms<X>(random_, static_cast<size_t>(g_.dlyLen()));
    X* at = place<X>(line.size());
    memcpy(static_cast<void*>(at), line.data(), line.size() * sizeof(X));
    ASSERT_EQ(kvrStatusOk, F::setDlyLine(state_, at, index));
    model_.ring_ = wholes(line);
    model_.pos_ = index;
  }
  void clearLine(int index) {
    ASSERT_EQ(kvrStatusOk, F::setDlyLine(state_, nullptr, index));
    model_.ring_.assign(model_.ring_.size(), {});
    model_.pos_ = index;
  }
  // By way of the context's own taps, the last one first.
  void swapEnds() {
    T* taps = nullptr;
    ASSERT_EQ(kvrStatusOk, F::getTapsPointer(state_, &taps));
    ASSERT_EQ(model_.taps_.front(), whole(taps[g_.tapsLen - 1]));
    ASSERT_EQ(model_.taps_.back(), whole(taps[0]));
    std::swap(taps[0], taps[g_.tapsLen - 1]);
    std::swap(model_.taps_.front(), model_.taps_.back());
  }

  typename F::State* state() { return state_; }
  Geometry geometry() const { return g_; }

 private:
  std::string name() const {
    return std::to_string(g_.tapsLen) + " taps, step " + std::to_string(g_.dlyStep) + ", " +
           std::to_string(g_.updateDly) + " late";
  }
  static Arena& arena() {
    static Arena arena(1 << 15);
    return arena;
  }
  template <class E>
  E* place(size_t count = 1) {
    return arena().template place<E>(count, random_.below(2) == 0 ? Side::front : Side::back,
                                     random_.below(16));
  }

  Random& random_;
  Geometry g_;
  std::vector<T> taps_;
  std::vector<X> line_;
  int start_;
  Model model_;
  typename F::State* state_ = nullptr;
};

TYPED_TEST(LmsSteps, AnyOrderOfCalls) {
  Random random;
  for (const Geometry& geometry : kGeometries) {
    Filter<TypeParam> filter(geometry, random);
    filter.one();
    filter.expectLine();
    filter.expectTaps();
    for (int call = 0; call < 400; ++call) {
      switch (random.below(12)) {
        case 0:
          filter.one();
          break;
        case 1:
          filter.swapEnds();
          break;
        case 2:
        case 3:
        case 4:
          filter.put();
          break;
        case 5:
        case 6:
          filter.update();
          break;
        default:
          filter.oneVal();
      }
      if (call % 50 == 17) filter.setTaps();
      if (call % 100 == 51) filter.clearTaps();
      if (call % 20 == 0) filter.expectTaps();
      if (call % 40 == 0) filter.expectLine();
      if (call % 100 == 33)
        filter.setLine(static_cast<int>(random.below(static_cast<uint32_t>(geometry.dlyLen()))));
      if (call % 200 == 77) filter.clearLine(0);
      if (call % 200 == 11) filter.expectValues();
      if (this->HasFailure()) return;
    }
  }
}

// Steps on both sides of 16 bits, and the largest there are.
TYPED_TEST(LmsSteps, StepsOfAnySize) {
  Random random;
  for (const Geometry& geometry : kGeometries) {
    Filter<TypeParam> filter(geometry, random);
    for (int64_t re : {0, 1, -1, 32766, 32767, 32768, 32769, -32767, -32768, -32769, 65535, -65536}) {
      for (int64_t im : {0, 32767, 32768, -32767, -32768, -65536}) {
        filter.updateBy(re, im);
        filter.oneVal();
      }
      filter.expectTaps();
      if (this->HasFailure()) return;
    }
  }
}

// The lowest numbers everywhere, whose products are the largest.
TYPED_TEST(LmsSteps, Extremes) {
  using F = TypeParam;
  for (const Geometry& geometry : kGeometries) {
    const Whole lowTap{INT_MIN, F::complex ? INT_MIN : 0}, lowSample{-32768, F::complex ? -32768 : 0};
    const std::vector<typename F::T> taps(static_cast<size_t>(geometry.tapsLen),
                                          element<typename F::T>(lowTap));
    const std::vector<typename F::X> line(static_cast<size_t>(geometry.dlyLen()),
                                          element<typename F::X>(lowSample));
    Model model(geometry, wholes(taps), wholes(line), 0, INT_MIN);
    model.isComplex = F::complex;
    typename F::State* state = nullptr;
    ASSERT_EQ(kvrStatusOk, F::initAlloc(&state, taps.data(), geometry.tapsLen, line.data(), 0,
                                        geometry.dlyStep, geometry.updateDly, INT_MIN));
    for (int turn = 0; turn < 3; ++turn) {
      typename F::T dst;
      ASSERT_EQ(kvrStatusOk, F::one(&dst, state));
      ASSERT_EQ(model.one(), whole(dst));
      ASSERT_EQ(kvrStatusOk, F::update(INT_MIN + turn, INT_MIN, state));
      model.update(INT_MIN + turn, INT_MIN);
    }
    F::free(state);
  }
}

// An index that the line does not have is given back as it is, and taken modulo the line's length by all else.
TYPED_TEST(LmsSteps, UntestedIndices) {
  Random random;
  for (const Geometry& geometry : {Geometry{1, 1, 0}, {4, 1, 0}, {5, 3, 2}, {33, 2, 1}}) {
    const int len = geometry.dlyLen();
    for (int index : {len, len + 1, 5 * len + 3, -1, -len, INT_MAX, INT_MIN}) {
      Filter<TypeParam> filter(geometry, random);
      filter.setLine(index);
      filter.expectLine();
      filter.one();
      filter.expectValues();
      filter.update();
      filter.expectTaps();
      filter.expectLine();
      filter.put();
      filter.expectLine();
      filter.oneVal();
      filter.clearLine(index);
      filter.expectLine();
      if (this->HasFailure()) return;
    }
  }
}

// What the documentation says of single numbers.
TEST(LmsStepsExamples, Numbers) {
  KvrsFIRLMSMRState32s_16s* state = nullptr;
  const Kvr32s tap = 0x0000FFFF;
  ASSERT_EQ(kvrStatusOk, kvrsFIRLMSMRInitAlloc32s_16s(&state, &tap, 1, nullptr, 0, 1, 0, 32767));
  Kvr32s dst = 5;
  ASSERT_EQ(kvrStatusOk, kvrsFIRLMSMROneVal32s_16s(1000, &dst, state));
  EXPECT_EQ(0, dst);  // the lower half of a tap does not filter,
  ASSERT_EQ(kvrStatusOk, kvrsFIRLMSMRUpdateTaps32s_16s(1, state));
  Kvr32s now;
  ASSERT_EQ(kvrStatusOk, kvrsFIRLMSMRGetTaps32s_16s(state, &now));
  EXPECT_EQ(0x0000FFFF + 1000, now);  // but adapts: the step is (32767 + 16384) >> 15 = 1
  ASSERT_EQ(kvrStatusOk, kvrsFIRLMSMROne32s_16s(&dst, state));
  EXPECT_EQ(1000, dst);
  kvrsFIRLMSMRFree32s_16s(state);
}

// Found is the filter whose taps have these upper halves. The error is the wanted output less the output.
TYPED_TEST(LmsSteps, Converges) {
  using F = TypeParam;
  Random random;
  for (const Geometry& geometry : {Geometry{8, 1, 0}, {8, 1, 4}, {12, 2, 0}, {10, 3, 2}}) {
    std::vector<Whole> wanted(static_cast<size_t>(geometry.tapsLen));
    for (Whole& tap : wanted)
      tap = {static_cast<int64_t>(random.unit() * 8000),
             F::complex ? static_cast<int64_t>(random.unit() * 8000) : 0};
    std::vector<Whole> shifted = wanted;
    for (Whole& tap : shifted) tap = {tap.re * 65536, tap.im * 65536};
    Model system(geometry, shifted, std::vector<Whole>(static_cast<size_t>(geometry.dlyLen())), 0, 0);
    typename F::State* state = nullptr;
    ASSERT_EQ(kvrStatusOk, F::initAlloc(&state, nullptr, geometry.tapsLen, nullptr, 0, geometry.dlyStep,
                                        geometry.updateDly, 1));
    std::vector<Whole> errors(static_cast<size_t>(geometry.updateDly) + 1);
    for (int n = 0; n < 20000; ++n) {
      const Whole x{static_cast<int64_t>(random.unit() * 2000),
                    F::complex ? static_cast<int64_t>(random.unit() * 2000) : 0};
      typename F::T dst;
      ASSERT_EQ(kvrStatusOk, F::oneVal(element<typename F::X>(x), &dst, state));
      system.put(x);
      const Whole want = system.one(), got = whole(dst);
      errors.insert(errors.begin(), {want.re - got.re, want.im - got.im});
      errors.pop_back();
      // Late by as many samples as the samples that the update sees.
      ASSERT_EQ(kvrStatusOk,
                F::update(static_cast<int>(errors.back().re), static_cast<int>(errors.back().im), state));
    }
    std::vector<typename F::T> found(static_cast<size_t>(geometry.tapsLen));
    ASSERT_EQ(kvrStatusOk, F::getTaps(state, found.data()));
    for (size_t k = 0; k < found.size(); ++k) {
      const Whole tap = whole(found[k]);
      ASSERT_NEAR(wanted[k].re, tap.re >> 16, 40) << geometry.tapsLen << " taps, tap " << k;
      ASSERT_NEAR(wanted[k].im, tap.im >> 16, 40);
    }
    F::free(state);
  }
}

TYPED_TEST(LmsSteps, Creation) {
  using F = TypeParam;
  using T = typename F::T;
  using X = typename F::X;
  typename F::State* state = nullptr;
  const int before = liveBlocks();
  ASSERT_EQ(kvrStatusOk, F::initAlloc(&state, nullptr, 5, nullptr, 6, 1, 2, 7));
  EXPECT_EQ(before + 3, liveBlocks());
  uint32_t word;
  memcpy(&word, state, sizeof word);
  EXPECT_EQ(F::word, word);
  std::vector<T> taps(5, element<T>({1, 1}));
  std::vector<X> line(7, element<X>({1, 1}));
  int index = 0;
  ASSERT_EQ(kvrStatusOk, F::getTaps(state, taps.data()));
  ASSERT_EQ(kvrStatusOk, F::getDlyLine(state, line.data(), &index));
  EXPECT_EQ(std::vector<Whole>(5), wholes(taps));
  EXPECT_EQ(std::vector<Whole>(7), wholes(line));
  EXPECT_EQ(6, index);
  // Neither Free nor GetTapsPointer looks at the word.
  memset(static_cast<void*>(state), 0, sizeof word);
  T* pointer = nullptr;
  EXPECT_EQ(kvrStatusOk, F::getTapsPointer(state, &pointer));
  EXPECT_NE(nullptr, pointer);
  EXPECT_EQ(kvrStatusOk, F::free(state));
  EXPECT_EQ(before, liveBlocks());
  EXPECT_EQ(kvrStatusOk, F::free(nullptr));
  const auto make = [&] {
    const KvrStatus status = F::initAlloc(&state, taps.data(), 5, line.data(), 0, 1, 2, 7);
    return status == kvrStatusOk ? F::free(state) : status;
  };
  EXPECT_EQ(3, countAllocationsWithFailures(make, kvrStatusOutOfMemory));

  auto* const untouched = reinterpret_cast<typename F::State*>(intptr_t{64});
  state = untouched;
  const auto init = [&](int tapsLen, int dlyLineIndex, int dlyStep, int updateDly) {
    return F::initAlloc(&state, nullptr, tapsLen, nullptr, dlyLineIndex, dlyStep, updateDly, 1);
  };
  EXPECT_EQ(kvrStatusNullPointer, F::initAlloc(nullptr, nullptr, 0, nullptr, -1, 0, -1, 1));
  EXPECT_EQ(kvrStatusBadLength, init(0, 0, 1, 5));
  EXPECT_EQ(kvrStatusBadLength, init(-4, 0, -4, 0));
  EXPECT_EQ(kvrStatusBadLength, init(4, 0, 0, 5));
  EXPECT_EQ(kvrStatusBadLength, init(4, 0, 1, -1));
  EXPECT_EQ(kvrStatusBadLength, init(4, -1, 1, 0));
  EXPECT_EQ(kvrStatusBadLength, init(4, 4, 1, 0));
  EXPECT_EQ(kvrStatusBadLength, init(4, 15, 3, 3));
  EXPECT_EQ(kvrStatusOutOfMemory, init(INT_MAX, 0, INT_MAX, INT_MAX));
  EXPECT_EQ(kvrStatusOutOfMemory, init(1 << 16, 0, 1 << 15, 0));
  EXPECT_EQ(untouched, state);
}

TYPED_TEST(LmsSteps, OrderOfChecks) {
  using F = TypeParam;
  using T = typename F::T;
  using X = typename F::X;
  Random random;
  Filter<F> filter({4, 1, 1}, random);
  auto* state = filter.state();
  const T tap = element<T>({9, 9});
  const X sample = element<X>({9, 9});
  std::vector<T> taps(5, tap);
  std::vector<X> line(6, sample);
  int index = 9;
  EXPECT_EQ(kvrStatusBadArg, F::getDlyVal(state, line.data(), -1));
  EXPECT_EQ(kvrStatusBadArg, F::getDlyVal(state, line.data(), 6));
  EXPECT_EQ(kvrStatusNullPointer, F::getDlyVal(state, nullptr, 6));
  EXPECT_EQ(kvrStatusNullPointer, F::getTapsPointer(state, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::setTaps(nullptr, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::setDlyLine(nullptr, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, F::setMu(nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, F::putVal(sample, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::update(1, 1, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::one(taps.data(), nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::oneVal(sample, taps.data(), nullptr));
  uint32_t right;
  const uint32_t wrong = F::word ^ ('R' ^ 'C');  // the word of the other type
  memcpy(&right, state, sizeof right);
  memcpy(static_cast<void*>(state), &wrong, sizeof wrong);
  EXPECT_EQ(kvrStatusNullPointer, F::getTaps(state, nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::getDlyLine(state, nullptr, &index));
  EXPECT_EQ(kvrStatusNullPointer, F::getDlyLine(state, line.data(), nullptr));
  EXPECT_EQ(kvrStatusNullPointer, F::getDlyVal(state, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, F::one(nullptr, state));
  EXPECT_EQ(kvrStatusNullPointer, F::oneVal(sample, nullptr, state));
  EXPECT_EQ(kvrStatusContextMismatch, F::getTaps(state, taps.data()));
  EXPECT_EQ(kvrStatusContextMismatch, F::setTaps(state, taps.data()));
  EXPECT_EQ(kvrStatusContextMismatch, F::getDlyLine(state, line.data(), &index));
  EXPECT_EQ(kvrStatusContextMismatch, F::setDlyLine(state, nullptr, 3));
  EXPECT_EQ(kvrStatusContextMismatch, F::getDlyVal(state, line.data(), 6));
  EXPECT_EQ(kvrStatusContextMismatch, F::setMu(state, 3));
  EXPECT_EQ(kvrStatusContextMismatch, F::putVal(sample, state));
  EXPECT_EQ(kvrStatusContextMismatch, F::one(taps.data(), state));
  EXPECT_EQ(kvrStatusContextMismatch, F::oneVal(sample, taps.data(), state));
  EXPECT_EQ(kvrStatusContextMismatch, F::update(30000, 30000, state));
  memcpy(static_cast<void*>(state), &right, sizeof right);
  filter.expectTaps();
  filter.expectLine();
  EXPECT_EQ(9, index);
  EXPECT_EQ(std::vector<Whole>(5, whole(tap)), wholes(taps));
  EXPECT_EQ(std::vector<Whole>(6, whole(sample)), wholes(line));
  // The step is still 1000 of the beginning.
  EXPECT_EQ(kvrStatusOk, F::update(32768, 0, state));
}

}  // namespace
