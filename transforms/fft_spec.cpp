// Sizes, initialisation and tables of the FFT contexts.
// SPDX-License-Identifier: MIT
#include "transforms/fft_spec.h"

#include <cmath>

#include "frame/shift.h"
#include "transforms/fft_plan.h"
#include "transforms/fft_wave.h"
#include "transforms/kernels/lanes-inl.h"

namespace kvrs::fft {
namespace {

constexpr int64_t down32(int64_t bytes) {
  return bytes & ~int64_t{31};
}

// Work areas of split 32-bit transforms, without slack.
constexpr int64_t splitWork32(int order) {
  constexpr int64_t kKib[] = {32, 128, 128, 256, 32, 128, 128, 256, 128, 128, 128, 256};  // order 16 and up
  return kKib[order - 16] * 1024;
}

// The bytes that a split 32-bit transform has for its tables: those of its rows, and its length at each
// level.
constexpr int64_t splitTables32(int order) {
  constexpr int kOuter[] = {4, 3, 4, 4, 4, 4, 8, 8, 8, 8, 8, 8};  // order 16 and up
  const int rows = order - kOuter[order - 16];
  const int64_t points = int64_t{1} << order;
  if (rows < 16) return down32((int64_t{8} << rows) + 39) + 8 * points;
  return splitTables32(rows) + 8 * points;
}

// The same in double precision: from order 14 on, each level of rows that are long enough split again.
constexpr int64_t splitWork64(int order) {
  return order < 22 ? 32768 : 65536;
}
constexpr int64_t splitTables64(int order) {
  const int rows = order - (order == 14 || order == 19 ? 4 : 6);
  const int64_t points = int64_t{1} << order;
  if (rows < 13) return down32((int64_t{16} << rows) + 47) + 16 * points;
  return splitTables64(rows) + 16 * points;
}
// Order 13, which is neither.
constexpr int64_t kTables64Of13 = down32((int64_t{4} << 13) + 31) + 65568;

Sizes sizes(int64_t spec, int64_t initBuf, int64_t work) {
  return {static_cast<int>(spec), static_cast<int>(initBuf), static_cast<int>(work)};
}

}  // namespace

Sizes Family<float>::complexSizes(int order) {
  if (order < 6) return sizes(116, 0, 0);
  const int64_t n = int64_t{1} << order;
  const int64_t quarter = down32(n + 35);
  if (order < 16) {
    return sizes(down32(8 * n + 39) + quarter + 128, order > 10 ? quarter + 32 : 0, down32(8 * n + 31) + 32);
  }
  return sizes(splitTables32(order) + quarter + 128, quarter + 32, splitWork32(order) + 32);
}

Sizes Family<float>::realSizes(int order) {
  if (order < 5) return sizes(116, 0, 0);
  const int64_t n = int64_t{1} << order, half = n / 2;
  const int64_t halves = 2 * down32(2 * n + 31);
  if (order < 7) return sizes(halves + 128, 0, 0);
  const int64_t initBuf = order > 10 ? down32(n + 35) + 32 : 0;
  const int64_t quarter = down32(half + 35);
  if (order < 17) {
    return sizes(halves + quarter + down32(8 * half + 39) + 128, initBuf, down32(8 * half + 31) + 32);
  }
  return sizes(halves + quarter + splitTables32(order - 1) + 128, initBuf, splitWork32(order - 1) + 32);
}

Sizes Family<double>::complexSizes(int order) {
  if (order < 6) return sizes(120, 0, 0);
  const int64_t n = int64_t{1} << order;
  const int64_t quarter = down32(n + 35);
  const int64_t initBuf = order > 10 ? down32(2 * n + 39) + 32 : 0;
  if (order < 13) return sizes(down32(16 * n + 47) + quarter + 128, initBuf, 0);
  if (order == 13) return sizes(kTables64Of13 + quarter + 128, initBuf, 0);
  return sizes(splitTables64(order) + quarter + 128, initBuf, splitWork64(order) + 32);
}

Sizes Family<double>::realSizes(int order) {
  if (order < 6) return sizes(120, 0, 0);
  const int64_t n = int64_t{1} << order, half = n / 2;
  const int64_t halves = 2 * down32(4 * n + 31);
  if (order == 6) return sizes(halves + 128, 0, 0);
  const int64_t initBuf = order > 10 ? down32(2 * n + 39) + 32 : 0;
  const int64_t other = halves + down32(half + 35) + 128;
  if (order < 14) return sizes(other + down32(16 * half + 47), initBuf, 0);
  if (order == 14) return sizes(other + kTables64Of13, initBuf, 0);
  return sizes(other + splitTables64(order - 1), initBuf, splitWork64(order - 1) + 32);
}

template <class T>
KvrStatus getSize(Kind kind, int order, int flag, int* specSize, int* initBufSize, int* workSize) {
  // The range of orders, and the range of lengths after everything else: two tests, so that an order between
  // them comes after a null pointer and a bad flag.
  if (order < 0 || order > 30) return kvrStatusBadFftOrder;
  if (specSize == nullptr || initBufSize == nullptr || workSize == nullptr) return kvrStatusNullPointer;
  if (!knownFlag(flag)) return kvrStatusBadFftFlag;
  if (order > Family<T>::kMaxOrder) return kvrStatusBadFftOrder;
  const Sizes size = sizesOf<T>(kind, order);
  *specSize = size.spec;
  *initBufSize = size.initBuf;
  *workSize = size.work;
  return kvrStatusOk;
}

namespace {

constexpr double kTwoPi = 6.283185307179586;

// A table for longer ones than kWave1024, also part of the program.
constexpr int kLongBits = 13;
template <class T>
constexpr auto kLongSine = makeSine<T, kLongBits>();

// What the sines lack in double precision.
constexpr auto kLongSineRest = [] {
  constexpr int64_t kM = int64_t{1} << kLongBits;
  std::array<double, kM / 4 + 1> table{};
  for (int64_t k = 0; k <= kM / 4; ++k) {
    const long double sine = turnOf(k, kM).im;
    table[static_cast<size_t>(k)] = static_cast<double>(sine - static_cast<double>(sine));
  }
  return table;
}();

// Fills in sin(a + b) for the angles a of the long table and all b between 0 and the next of them: the sine of a, and what b
// adds to it, which is little, so that its rounding hardly counts.
template <class T>
void fillSine(T* sine, int order) {
  constexpr size_t kAngles = size_t{1} << (kLongBits - 2), kSteps = 16;
  const size_t between = size_t{1} << (order - kLongBits);
  const double step = kTwoPi / static_cast<double>(size_t{1} << order);
  for (size_t first = 0; first < between; first += kSteps) {
    const size_t count = between < kSteps ? between : kSteps;
    double sineOfStep[kSteps], versineOfStep[kSteps];
    for (size_t i = 0; i < count; ++i) {
      const double b = static_cast<double>(first + i) * step, half = std::sin(0.5 * b);
      sineOfStep[i] = std::sin(b);
      versineOfStep[i] = 2 * half * half;
    }
    for (size_t a = 0; a < kAngles; ++a) {
      const double s = kLongSine<double>[a], c = kLongSine<double>[kAngles - a], rest = kLongSineRest[a];
      T* const to = sine + (a * between + first);
      for (size_t i = 0; i < count; ++i) {
        to[i] = static_cast<T>(s + (rest + (c * sineOfStep[i] - s * versineOfStep[i])));
      }
    }
  }
  sine[kAngles * between] = 1;
}

template <class T>
QuarterWave<T> quarterWave(int order, Kvr8u* initBuf) {
  if (order < 11) return kWave1024<T>;
  if (order <= kLongBits) return {kLongSine<T>.data(), kLongBits};
  T* sine = reinterpret_cast<T*>(alignUp(initBuf));
  fillSine(sine, order);
  return {sine, order};
}

// Whether a vector of numbers from many places takes less time than they do one by one: in 32-bit code four singles do not.
template <class T>
constexpr bool kGathers = kVectorRegisters > 8 || sizeof(T) == 8;

// Roots of unity in N lanes, as QuarterWave has them.
template <class T, size_t N>
class LaneRoots {
 public:
  using D = Lanes<T, N>;
  using DIndex = hn::RebindToSigned<D>;
  using Index = hn::Vec<DIndex>;
  struct Parts {
    hn::Vec<D> re, im;
  };

  LaneRoots(const QuarterWave<T>& wave, int order) : wave_(wave), order_(order) {}

  // The numbers 0 to N - 1, as they are or in the order of the lanes.
  static Index numbers(bool inLaneOrder) {
    alignas(64) hwy::MakeSigned<T> number[N];
    for (int lane = 0; lane < static_cast<int>(N); ++lane) {
      number[lane] = inLaneOrder ? laneOrder<T>(lane, static_cast<int>(N)) : lane;
    }
    return hn::Load(DIndex(), number);
  }
  static Index all(size_t k) { return hn::Set(DIndex(), static_cast<hwy::MakeSigned<T>>(k)); }

  // exp(-2 pi i k / 2^order).
  Parts at(Index k) const {
    if constexpr (kGathers<T>) {
      const Index turns = shiftLeftBy(DIndex(), k, wave_.bits - order_);
      return {sin(hn::Add(turns, bit(wave_.bits - 2))), hn::Neg(sin(turns))};
    } else {
      alignas(64) hwy::MakeSigned<T> number[N];
      alignas(64) T re[N], im[N];
      hn::Store(k, DIndex(), number);
      for (size_t lane = 0; lane < N; ++lane) {
        const Root<T> w = wave_.root(static_cast<size_t>(number[lane]), order_);
        re[lane] = w.re;
        im[lane] = w.im;
      }
      return {hn::Load(D(), re), hn::Load(D(), im)};
    }
  }

 private:
  static Index bit(int place) { return all(size_t{1} << place); }

  hn::Vec<D> sin(Index k) const {
    const DIndex di;
    const int bits = wave_.bits;
    const Index half = bit(bits - 1), within = hn::And(k, all((size_t{1} << (bits - 1)) - 1));
    const auto value = hn::GatherIndex(D(), wave_.sine, hn::Min(within, hn::Sub(half, within)));
    const int toSign = static_cast<int>(8 * sizeof(T)) - bits;
    return hn::Xor(value, hn::BitCast(D(), shiftLeftBy(di, hn::And(k, half), toSign)));
  }

  QuarterWave<T> wave_;
  int order_;
};

// Hands out the tables behind a record. A vector's worth of alignment, while it lasts, keeps loads from
// crossing cache lines.
template <class T>
class Tables {
 public:
  Tables(Record<T>* record, const QuarterWave<T>& wave, bool inLaneOrder)
      : wave_(wave),
        inLaneOrder_(inLaneOrder),
        next_(reinterpret_cast<T*>(roundUp(reinterpret_cast<uintptr_t>(record + 1), 64))) {}

  void halves(Record<T>* r, int order) {
    r->halves.set(next_);
    const size_t n = size_t{1} << order;
    if (n < 8) return;
    if (n / 4 >= kLanes<T>) {
      using Roots = LaneRoots<T, kLanes<T>>;
      const typename Roots::D d;
      const Roots roots(wave_, order);
      auto k = hn::Add(Roots::numbers(inLaneOrder_), Roots::all(1));
      for (size_t i = 0; i < n / 4; i += kLanes<T>, k = hn::Add(k, Roots::all(kLanes<T>))) {
        const auto w = roots.at(k);
        hn::StoreU(hn::Mul(w.re, hn::Set(d, T(0.5))), d, next_);
        hn::StoreU(hn::Mul(w.im, hn::Set(d, T(-0.5))), d, next_ + kLanes<T>);
        next_ += 2 * kLanes<T>;
      }
      return;
    }
    const int lanes = static_cast<int>(n / 4);
    for (size_t k = 1; k <= n / 4; k += lanes) {
      vectors(lanes, [&](int lane) {
        const Root<T> w = wave_.root(k + lane, order);
        return Root<T>{T(0.5) * w.re, T(-0.5) * w.im};
      });
    }
  }

  // Between the passes of a self-sorting transform: for the first pass vectors of its neighbours, then single
  // numbers.
  void stockham(Ref<T>* ref, int order) {
    ref->set(next_);
    if (order <= kLastSmallOrder<T>) return square(order);
    const Plan& plan = kStockhamPlans<T>[order];
    const size_t m = size_t{1} << (order - kFirstBits<T>);
    const PassRoots roots(wave_, order);
    auto numbers = passNumbers();
    for (size_t p = 0; p < m; p += kPassLanes<T>, numbers = hn::Add(numbers, PassRoots::all(kPassLanes<T>))) {
      auto k = numbers;
      for (size_t j = 1; j < kFirstRadix<T>; ++j, k = hn::Add(k, numbers)) putVector(roots.at(k));
    }
    passes(plan, 1, order - kFirstBits<T>);
  }

  // Between the passes of a column.
  void columns(Ref<T>* ref, int order) {
    ref->set(next_);
    passes(kColumnPlans[order], 0, order);
  }

  // exp(-2 pi i k c / 2^order), for rows k and columns c: at every column that begins a span.
  void spanTwiddles(Ref<T>* ref, int order, size_t rows, size_t columns) {
    ref->set(next_);
    for (size_t c = 0; c < columns; c += kFactorSpan<T>) {
      for (size_t k = 0; k < rows; ++k) put(wave_.root(k * c, order));
    }
  }
  // At all of them, in vectors.
  void tabledTwiddles(Ref<T>* ref, int order, size_t rows, size_t columns) {
    ref->set(next_);
    const PassRoots roots(wave_, order);
    const auto numbers = passNumbers();
    auto row = PassRoots::all(0);
    for (size_t k = 0; k < rows; ++k, row = hn::Add(row, numbers)) {
      for (size_t c = 0; c < columns; c += kPassLanes<T>) {
        putVector(roots.at(hn::Add(row, PassRoots::all(k * c))));
      }
    }
  }

 private:
  using PassRoots = LaneRoots<T, kPassLanes<T>>;

  void put(Root<T> w) {
    *next_++ = w.re;
    *next_++ = w.im;
  }

  // A vector of real parts and one of imaginary parts, of(0), of(1) ... in the order of the lanes.
  template <class F>
  void vectors(int lanes, F of) {
    for (int lane = 0; lane < lanes; ++lane) {
      const Root<T> w = of(inLaneOrder_ ? laneOrder<T>(lane, lanes) : lane);
      next_[lane] = w.re;
      next_[lanes + lane] = w.im;
    }
    next_ += 2 * lanes;
  }

  // What a pass loads at once.
  typename PassRoots::Index passNumbers() const { return PassRoots::numbers(inLaneOrder_ && !kPaired); }
  void putVector(const typename PassRoots::Parts& w) {
    const typename PassRoots::D d;
    if constexpr (kPaired) {
      hn::StoreInterleaved2(w.re, w.im, d, next_);
    } else {
      hn::StoreU(w.re, d, next_);
      hn::StoreU(w.im, d, next_ + kPassLanes<T>);
    }
    next_ += 2 * kPassLanes<T>;
  }

  // For each pass but the last, and each of its butterflies, exp(-2 pi i p j / n) for j = 1 .. radix - 1.
  void passes(const Plan& plan, int first, int order) {
    for (int pass = first; pass + 1 < plan.passes; ++pass) {
      const size_t m = size_t{1} << (order - plan.bits[pass]);
      for (size_t p = 0; p < m; ++p) {
        for (size_t j = 1; j < size_t{1} << plan.bits[pass]; ++j) put(wave_.root(p * j, order));
      }
      order -= plan.bits[pass];
    }
  }

  // Small transforms above order 5; those below have theirs in the program.
  void square(int order) {
    if (order < 6) return;
    if (size_t{1} << (order - 3) == kLanes<T>) {
      square<kLanes<T>>(order);
    } else {
      square<kLanes<T> / 2>(order);
    }
  }
  template <size_t N>
  void square(int order) {
    using Roots = LaneRoots<T, N>;
    const typename Roots::D d;
    const Roots roots(wave_, order);
    const auto numbers = Roots::numbers(inLaneOrder_);
    auto k = numbers;
    for (size_t j = 1; j < 8; ++j, k = hn::Add(k, numbers)) {
      const auto w = roots.at(k);
      hn::StoreU(w.re, d, next_);
      hn::StoreU(w.im, d, next_ + N);
      next_ += 2 * N;
    }
  }

  QuarterWave<T> wave_;
  bool inLaneOrder_;
  T* next_;
};

template <class T>
void setScale(Record<T>* r, int flag) {
  const double n = std::ldexp(1.0, r->order);
  r->scaleFwd = flag == kvrFftDivFwdByN || flag == kvrFftDivBySqrtN;
  r->scaleInv = flag == kvrFftDivInvByN || flag == kvrFftDivBySqrtN;
  if (flag == kvrFftDivBySqrtN) {
    r->scale = static_cast<T>(1.0 / std::sqrt(n));
  } else if (flag != kvrFftNoDivByAny) {
    r->scale = T(1) / static_cast<T>(n);
  }
}

}  // namespace

template <class T>
KvrStatus initRecord(Kind kind, IdWord word, Record<T>** record, int order, int flag, KvrHintAlgorithm hint,
                     Kvr8u* specMem, Kvr8u* initBuf) {
  if (order < 0 || order > Family<T>::kMaxOrder) return kvrStatusBadFftOrder;
  if (specMem == nullptr) return kvrStatusNullPointer;
  Record<T>* r = reinterpret_cast<Record<T>*>(alignUp(specMem));
  __builtin_memset(static_cast<void*>(r), 0, sizeof(*r));
  if (!knownFlag(flag)) return kvrStatusBadFftFlag;
  const Sizes size = sizesOf<T>(kind, order);
  if (size.initBuf > 0 && initBuf == nullptr) return kvrStatusNullPointer;
  r->order = order;
  r->hint = hint;
  r->workSize = size.work > 0 ? size.work - static_cast<int>(kBufferAlignment) : 0;
  setScale(r, flag);

  const int points = kind == Kind::kReal ? order - 1 : order;
  const bool tables = size.spec > sizesOf<T>(kind, 0).spec;
  if (tables) {
    Tables<T> t(r, quarterWave<T>(order, initBuf), kind != Kind::kPlanes);
    if (kind == Kind::kReal) t.halves(r, order);
    if (points <= kLastStockhamOrder<T>) {
      t.stockham(&r->rows, points);
    } else {
      const Split split = splitOf(points, r->workSize > 0 ? static_cast<size_t>(r->workSize) : kStackBytes);
      const size_t edge = size_t{1} << split.outer, middle = size_t{1} << split.middle;
      t.stockham(&r->rows, split.outer);
      t.columns(&r->columns, split.outer);
      t.tabledTwiddles(&r->places, points, edge, kFactorSpan<T>);
      if (split.middle > 0) {
        t.columns(&r->middle, split.middle);
        t.tabledTwiddles(&r->middleOuter, split.outer + split.middle, middle, edge);
      }
      t.spanTwiddles(&r->spans, points, edge, edge * middle);
    }
  }
  r->idWord = word;
  *record = r;
  return kvrStatusOk;
}

template <class T>
KvrStatus initAllocRecord(Kind kind, IdWord word, Record<T>** record, int order, int flag,
                          KvrHintAlgorithm hint) {
  int specSize, initBufSize, workSize;
  KvrStatus status = getSize<T>(kind, order, flag, &specSize, &initBufSize, &workSize);
  if (status != kvrStatusOk) return status;
  Scratch specMem(static_cast<uint64_t>(specSize));
  if (!specMem.ok()) return kvrStatusOutOfMemory;
  const Scratch initBuf(static_cast<uint64_t>(initBufSize));
  if (!initBuf.ok()) return kvrStatusOutOfMemory;
  Record<T>* made;
  status = initRecord<T>(kind, word, &made, order, flag, hint, specMem.as<Kvr8u>(), initBuf.as<Kvr8u>());
  if (status != kvrStatusOk) return status;
  specMem.keep();
  made->ownedByAlloc = 1;
  *record = made;
  return kvrStatusOk;
}

template KvrStatus getSize<float>(Kind, int, int, int*, int*, int*);
template KvrStatus initRecord<float>(Kind, IdWord, Record<float>**, int, int, KvrHintAlgorithm, Kvr8u*,
                                     Kvr8u*);
template KvrStatus initAllocRecord<float>(Kind, IdWord, Record<float>**, int, int, KvrHintAlgorithm);
template KvrStatus getSize<double>(Kind, int, int, int*, int*, int*);
template KvrStatus initRecord<double>(Kind, IdWord, Record<double>**, int, int, KvrHintAlgorithm, Kvr8u*,
                                      Kvr8u*);
template KvrStatus initAllocRecord<double>(Kind, IdWord, Record<double>**, int, int, KvrHintAlgorithm);

}  // namespace kvrs::fft
