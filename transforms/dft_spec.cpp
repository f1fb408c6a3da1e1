// Contexts of transforms of any length: methods, work areas, tables.
// SPDX-License-Identifier: MIT
#include "transforms/dft_spec.h"

#include <cmath>
#include <cstring>

#include "frame/simd.h"
#include "kvrs/arith_float.h"
#include "transforms/dft_tables.h"
#include "transforms/fft_engine.h"
#include "transforms/fft_wave.h"
#include "transforms/kernels/lanes-inl.h"

namespace kvrs::dft {
namespace {

using fft::Root;

KvrStatus multiply(const Kvr32f* src, Kvr32f* srcDst, int len) {
  return kvrsMul_32fc_I(reinterpret_cast<const Kvr32fc*>(src), reinterpret_cast<Kvr32fc*>(srcDst), len);
}
KvrStatus multiply(const Kvr64f* src, Kvr64f* srcDst, int len) {
  return kvrsMul_64fc_I(reinterpret_cast<const Kvr64fc*>(src), reinterpret_cast<Kvr64fc*>(srcDst), len);
}

// exp(-2 pi i k / n) for k = 0 .. n - 1.
template <class T>
void fillRoots(Root<T>* root, int64_t n) {
  for (int64_t k = 0; 2 * k <= n; ++k) {
    root[k] = rootOf<T>(k, n);
    if (k > 0) root[n - k] = {root[k].re, 2 * k == n ? root[k].im : -root[k].im};
  }
}

// Takes blocks for a context. After a failure nothing more is taken, and whoever asks gets null.
template <class T>
class Builder {
 public:
  Builder(Record<T>* record, int64_t rootCount)
      : record_(record),
        count_(rootCount),
        memory_(static_cast<uint64_t>(rootCount) * sizeof(Root<T>)),
        roots_(memory_.as<Root<T>>()) {
    if (roots_ != nullptr) fillRoots(roots_, count_);
  }

  bool ok() const { return roots_ != nullptr && !failed_; }

  T* take(size_t numbers) {
    if (!ok()) return nullptr;
    void* block = kvrMalloc((numbers > 0 ? numbers : 1) * sizeof(T));
    if (block == nullptr) {
      failed_ = true;
      return nullptr;
    }
    record_->blocks[record_->blockCount++] = block;
    return static_cast<T*>(block);
  }

  // exp(-2 pi i k / n), n a divisor of the roots that there are.
  Root<T> root(int64_t k, int64_t n) const { return roots_[k * (count_ / n) % count_]; }

  void mixed(Mixed<T>* x, int n) {
    x->plan = makePlan<T>(n);
    makeMixed(*this, x);
  }

  void outOfOrder(OutOfOrder<T>* x, int n) {
    x->plan = makeOutOfOrderPlan<T>(n);
    const Plan& plan = x->plan;
    int64_t length = n;
    const int64_t block = plan.rows[plan.levels - 1];
    int used = 0;
    for (int level = 0; level < plan.levels; ++level) {
      const int64_t rows = plan.rows[level];
      x->numbers[level] = makeNumbers<T>(*this, plan.radix + used, plan.stages[level], rows);
      used += plan.stages[level];
      if (level + 1 < plan.levels) x->turns[level] = makeTurns<T>(*this, rows, length / rows, block);
      length /= rows;
    }
    makeOdd(*this, &x->odd, plan.radix, used);
  }

  // Row k of the table of a direct transform: cos and sin of 2 pi j k / n, j = 1 .. (n-1)/2, filled up with zeros.
  const T* direct(int n) {
    const int half = (n - 1) / 2, padded = wholeVectors<T>(half);
    T* const table = take(static_cast<size_t>(2 * half * padded));
    if (table == nullptr) return nullptr;
    T* to = table;
    for (int k = 1; k <= half; ++k, to += 2 * padded) {
      for (int j = 1; j <= padded; ++j) {
        const Root<T> w = j <= half ? root(j * k, n) : Root<T>{};
        to[j - 1] = w.re;
        to[padded + j - 1] = -w.im;
      }
    }
    return table;
  }

  void rows(RealRows<T>* x, int r, int n) {
    const int m = n / r;
    x->roots = makeOddRoots<T>(*this, r);
    T* const table = take(static_cast<size_t>(r - 1) * static_cast<size_t>(m));
    if (table == nullptr) return;
    for (int j = 1; j <= (r - 1) / 2; ++j) {
      T* const re = table + static_cast<size_t>(2 * (j - 1)) * static_cast<size_t>(m);
      for (int p = 0; p < m; ++p) {
        const Root<T> w = root(static_cast<int64_t>(p) * j, n);
        re[p] = w.re;
        re[m + p] = w.im;
      }
    }
    x->turns = table;
    x->r = r;
    x->m = m;
  }

  // For splitSpectrumOfAny.
  const T* halves(int n) {
    const int pairs = (n / 2 - 1) / 2;
    T* const table = take(static_cast<size_t>(2 * pairs));
    if (table == nullptr) return nullptr;
    T* to = table;
    const auto put = [&](int k, int lanes) {
      for (int lane = 0; lane < lanes; ++lane) {
        const Root<T> w = root(k + fft::laneOrder<T>(lane, lanes), n);
        to[lane] = w.re / 2;
        to[lanes + lane] = -w.im / 2;
      }
      to += 2 * lanes;
    };
    constexpr int kAll = static_cast<int>(kLanes<T>);
    int k = 1;
    for (; k + kAll - 1 <= pairs; k += kAll) put(k, kAll);
    for (; k <= pairs; ++k) put(k, 1);
    return table;
  }

 private:
  Record<T>* record_;
  int64_t count_;
  Scratch memory_;
  Root<T>* roots_;
  bool failed_ = false;
};

constexpr bool isPowerOfTwo(int64_t n) {
  return (n & (n - 1)) == 0;
}

// The estimate's error of 2^-11 or less is squared by one step of Newton's method.
void setRootScale(Record<float>* r) {
  const Lanes<float, 1> d;
  const float x = static_cast<float>(r->len);
  const float e = hn::GetLane(hn::ApproximateReciprocalSqrt(hn::Set(d, x)));
  r->scale = e * (x * e * e - 3.0f) * -0.5f;
}
void setRootScale(Record<double>* r) {
  r->scale = 1.0 / std::sqrt(static_cast<double>(r->len));
}

template <class T>
void setScale(Record<T>* r, int flag) {
  r->scaleFwd = flag == kvrFftDivFwdByN || flag == kvrFftDivBySqrtN;
  r->scaleInv = flag == kvrFftDivInvByN || flag == kvrFftDivBySqrtN;
  if (flag == kvrFftDivBySqrtN) {
    setRootScale(r);
  } else if (flag != kvrFftNoDivByAny) {
    r->scale = T(1) / static_cast<T>(r->len);
  }
}

// The work area of the inner transform of a convolution of M points.
template <class T>
int64_t innerWork(int64_t M) {
  if (isPowerOfTwo(M))
    return fft::sizesOf<T>(fft::Kind::kComplex, __builtin_ctzll(static_cast<uint64_t>(M))).work;
  return static_cast<int64_t>(2 * sizeof(T)) * (factorsOf(static_cast<int>(M)).extra + M) + 64;
}

// The tables of a chirp transform: with exp(-pi i k k / n) as chirp, the spectrum of its conjugate, periodic, over M.
template <class T>
KvrStatus makeChirp(Record<T>* r, int n) {
  Core<T>& core = r->core;
  const int M = static_cast<int>(chirpLength(n));
  core.method = Method::kChirp;
  core.n = n;
  core.length = M;
  Builder<T> build(r, 2 * static_cast<int64_t>(n));
  T* const chirp = build.take(2 * static_cast<size_t>(n));
  T* const spectrum = build.take(2 * static_cast<size_t>(M));
  if (!build.ok()) return kvrStatusOutOfMemory;
  std::memset(static_cast<void*>(spectrum), 0, 2 * static_cast<size_t>(M) * sizeof(T));
  const T over = T(1) / static_cast<T>(M);
  for (int64_t k = 0; k < n; ++k) {
    const Root<T> w = build.root(k * k % (2 * static_cast<int64_t>(n)), 2 * static_cast<int64_t>(n));
    chirp[2 * k] = w.re;
    chirp[2 * k + 1] = w.im;
    for (int64_t at : {k, (M - k) % M}) {
      spectrum[2 * at] = w.re * over;
      spectrum[2 * at + 1] = -w.im * over;
    }
  }
  core.chirp = chirp;
  core.spectrum = spectrum;
  if (isPowerOfTwo(M)) {
    const KvrStatus status =
        fft::initAllocRecord<T>(fft::Kind::kComplex, fft::kWordC32fc, &core.fft,
                                __builtin_ctz(static_cast<unsigned>(M)), kvrFftNoDivByAny, kvrHintNone);
    if (status != kvrStatusOk) return status;
  } else {
    Builder<T> inner(r, M);
    if (!inner.ok()) return kvrStatusOutOfMemory;
    inner.mixed(&core.mixed, M);
    if (!inner.ok()) return kvrStatusOutOfMemory;
  }
  // Its work area for a while.
  const Scratch memory(static_cast<uint64_t>(innerWork<T>(M)));
  if (!memory.ok()) return kvrStatusOutOfMemory;
  T* const work = memory.as<T>();
  if (core.fft != nullptr) {
    fft::transform(*core.fft, core.fft->order, fft::Direction::kForward, spectrum, spectrum, work, T(1));
  } else {
    runMixed(core.mixed, Points<const T>::ofPairs(spectrum), Points<T>::ofPairs(spectrum), work, T(1));
  }
  return kvrStatusOk;
}

// The radix of the rows of a real signal: neither so small that little is won nor so large that it takes long itself.
int rowsRadix(int n) {
  for (int r : {5, 7, 3, 11, 13}) {
    if (n % r == 0) return r;
  }
  for (int r = 17;; r += 2) {
    if (n % r == 0) return r;
  }
}

// Everything but powers of two beyond kLastShort.
template <class T>
KvrStatus makePlan(Kind kind, Record<T>* r) {
  constexpr int64_t kLimit = sizeof(T) == 4 ? int64_t{1} << 27 : int64_t{1} << 26;
  constexpr int64_t kPair = 2 * sizeof(T);
  const int len = r->len;
  if (len >= kLimit) return kvrStatusBadLength;
  const bool real = kind == Kind::kReal;
  const int n = real && len % 2 == 0 ? len / 2 : len;
  Core<T>& core = r->core;
  core.n = n;
  if (len > kLastShort) {
    const bool outOfOrder = kind == Kind::kOutOfOrder && n > 2000;
    const Factors factors = factorsOf(n, !outOfOrder);
    core.method = factors.count > 0 ? Method::kMixed : n < 51 ? Method::kDirect : Method::kChirp;
    if (core.method == Method::kChirp && n >= kLimit / 2) return kvrStatusBadLength;
    int64_t work;
    if (core.method == Method::kMixed) {
      r->leavesOrder = outOfOrder;
      work = kPair * (factors.extra + (outOfOrder ? 0 : n)) + 64;
      if (outOfOrder && factors.extra == 0) work = 0;
    } else if (core.method == Method::kDirect) {
      work = (real && len % 2 != 0 ? kPair / 2 : kPair) * n + 32;
    } else {
      const int64_t M = chirpLength(n);
      work = innerWork<T>(M) + kPair * M + 32;
    }
    r->workSize = static_cast<int32_t>(work);
  } else {
    core.method = Method::kShort;
  }

  {
    Builder<T> build(r, len);
    if (!build.ok()) return kvrStatusOutOfMemory;
    if (real && len % 2 == 0) r->halves = build.halves(len);
    if (r->leavesOrder) {
      build.outOfOrder(&r->outOfOrder, n);
    } else if (core.method == Method::kMixed && real && len % 2 != 0) {
      build.rows(&r->rows, rowsRadix(n), n);
      // What is left is short, a prime below 50, or a product again.
      core.n = n / rowsRadix(n);
      if (core.n > kLastShort && factorsOf(core.n).count == 0) core.method = Method::kDirect;
    }
    if (core.method == Method::kDirect && core.n > kLastShort) {
      core.direct = build.direct(core.n);
    } else if (!r->leavesOrder && core.method != Method::kChirp) {
      if (core.n <= kLastShort) core.method = Method::kShort;
      build.mixed(&core.mixed, core.n);
    }
    if (!build.ok()) return kvrStatusOutOfMemory;
  }
  return core.method == Method::kChirp ? makeChirp(r, n) : kvrStatusOk;
}

template <class T>
KvrStatus makeFft(Kind kind, Record<T>* r, int flag) {
  const int order = __builtin_ctz(static_cast<unsigned>(r->len));
  const fft::Kind fftKind = kind == Kind::kReal     ? fft::Kind::kReal
                            : kind == Kind::kPlanes ? fft::Kind::kPlanes
                                                    : fft::Kind::kComplex;
  constexpr bool kSingle = sizeof(T) == 4;
  const fft::IdWord word = kind == Kind::kReal     ? (kSingle ? fft::kWordR32f : fft::kWordR64f)
                           : kind == Kind::kPlanes ? (kSingle ? fft::kWordC32f : fft::kWordC64f)
                                                   : (kSingle ? fft::kWordC32fc : fft::kWordC64fc);
  fft::Record<T>* spec;
  const KvrStatus status = fft::initAllocRecord<T>(fftKind, word, &spec, order, flag, r->hint);
  if (status != kvrStatusOk) return status;
  r->fftSpec = spec;
  r->workSize = fft::bufSize(spec);
  return kvrStatusOk;
}

}  // namespace

template <class T>
void release(Record<T>* r) {
  for (int i = r->blockCount; i > 0; --i) kvrFree(r->blocks[i - 1]);
  if (r->core.fft != nullptr) kvrFree(r->core.fft);
  if (r->fftSpec != nullptr) kvrFree(r->fftSpec);
  r->idWord = 0;
  kvrFree(r);
}

template <class T>
KvrStatus initAllocRecord(Kind kind, IdWord word, Record<T>** record, int len, int flag,
                          KvrHintAlgorithm hint) {
  if (len < 1) return kvrStatusBadLength;
  Record<T>* const r = static_cast<Record<T>*>(kvrMalloc(sizeof(Record<T>)));
  if (r == nullptr) return kvrStatusOutOfMemory;
  std::memset(static_cast<void*>(r), 0, sizeof *r);
  r->len = len;
  r->hint = hint;
  KvrStatus status = kvrStatusBadFftFlag;
  if (fft::knownFlag(flag)) {
    setScale(r, flag);
    status = len > kLastShort && isPowerOfTwo(len) ? makeFft(kind, r, flag) : makePlan(kind, r);
  }
  if (status != kvrStatusOk) {
    release(r);
    return status;
  }
  r->idWord = word;
  *record = r;
  return kvrStatusOk;
}

template <class T>
void runChirp(const Core<T>& core, T* pairs, T* work) {
  multiply(core.chirp, pairs, core.n);
  std::memset(static_cast<void*>(pairs + 2 * static_cast<size_t>(core.n)), 0,
              2 * static_cast<size_t>(core.length - core.n) * sizeof(T));
  const auto forward = Points<T>::ofPairs(pairs), inverse = forward.exchanged();
  if (core.fft != nullptr) {
    T* const area = core.fft->workSize > 0 ? work : nullptr;
    fft::transform(*core.fft, core.fft->order, fft::Direction::kForward, pairs, pairs, area, T(1));
    multiply(core.spectrum, pairs, core.length);
    fft::transform(*core.fft, core.fft->order, fft::Direction::kInverse, pairs, pairs, area, T(1));
  } else {
    runMixed(core.mixed, asSource(forward), forward, work, T(1));
    multiply(core.spectrum, pairs, core.length);
    runMixed(core.mixed, asSource(inverse), inverse, work, T(1));
  }
  multiply(core.chirp, pairs, core.n);
}

template <class T>
void runCore(const Core<T>& core, const Points<const T>& src, const Points<T>& dst, T* work, T scale) {
  if (core.method == Method::kDirect) return runDirect(core.n, core.direct, src, dst, scale);
  if (core.method != Method::kChirp) return runMixed(core.mixed, src, dst, work, scale);
  const size_t n = static_cast<size_t>(core.n);
  movePoints(n, src, Points<T>::ofPairs(work), T(1));
  runChirp(core, work, work + 2 * static_cast<size_t>(core.length));
  movePoints(n, asSource(Points<T>::ofPairs(work)), dst, scale);
}

template KvrStatus initAllocRecord(Kind, IdWord, Record<float>**, int, int, KvrHintAlgorithm);
template KvrStatus initAllocRecord(Kind, IdWord, Record<double>**, int, int, KvrHintAlgorithm);
template void release(Record<float>*);
template void release(Record<double>*);
template void runChirp(const Core<float>&, float*, float*);
template void runChirp(const Core<double>&, double*, double*);
template void runCore(const Core<float>&, const Points<const float>&, const Points<float>&, float*, float);
template void runCore(const Core<double>&, const Points<const double>&, const Points<double>&, double*,
                      double);

}  // namespace kvrs::dft
