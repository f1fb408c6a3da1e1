// SPDX-License-Identifier: MIT
#include "kvrs/sum.h"

#include <Eigen/Core>

#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

#include "bench/stats/openblas.h"
#include "bench/support/bench.h"
#include "kvrs/count.h"
#include "kvrs/deviation.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

// A compiler that may reorder sums, as ours of the fast kind are.
#define KVRS_FAST_LOOP __attribute__((noipa, optimize("O3", "fast-math")))

template <class S, class T>
KVRS_FAST_LOOP S loopSum(const T* src, int len) {
  S sum = 0;
  for (int i = 0; i < len; ++i) sum += src[i];
  return sum;
}

template <class T>
KVRS_FAST_LOOP T loopDeviation(const T* src, int len) {
  T sum = 0, squares = 0;
  for (int i = 0; i < len; ++i) sum += src[i];
  const T mean = sum / static_cast<T>(len);
  for (int i = 0; i < len; ++i) squares += (src[i] - mean) * (src[i] - mean);
  return __builtin_sqrt(squares / static_cast<T>(len - 1));
}

KVRS_FAST_LOOP int loopCount(const Kvr32s* src, int len, Kvr32s lower, Kvr32s upper) {
  int count = 0;
  for (int i = 0; i < len; ++i) count += src[i] > lower && src[i] < upper;
  return count;
}
KVRS_FAST_LOOP int loopCrossings(const Kvr32f* src, int len) {
  int count = 0;
  for (int i = 0; i + 1 < len; ++i) count += src[i] * src[i + 1] < 0;
  return count;
}

template <class T>
__attribute__((noipa)) T eigenSum(const T* src, int len) {
  return Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(src, len).sum();
}

Register sums([] {
  for (int len : kLengths) {
    const std::string n = std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto a = array<Kvr32f>(count);
    const auto d = array<Kvr64f>(count);
    const auto w = array<Kvr16s>(count);
    const auto l = array<Kvr32s>(count);
    add("sum/Sum_32f_fast/" + n, "kvrs", [=] {
      Kvr32f sum;
      kvrsSum_32f(a.get(), len, &sum, kvrHintFast);
    });
    add("sum/Sum_32f_fast/" + n, "loop", [=] { keep(loopSum<Kvr32f>(a.get(), len)); });
    add("sum/Sum_32f_fast/" + n, "eigen", [=] { keep(eigenSum(a.get(), len)); });
    add("sum/Sum_32f_fast/" + n, "openblas", [=] { keep(OpenBlas::sum(len, a.get())); });
#ifdef KVRS_BENCH_VOLK
    add("sum/Sum_32f_fast/" + n, "volk", [=] {
      Kvr32f sum;
      volk_32f_accumulator_s32f(&sum, a.get(), static_cast<unsigned>(len));
    });
#endif
    add("sum/Sum_32f_accurate/" + n, "kvrs", [=] {
      Kvr32f sum;
      kvrsSum_32f(a.get(), len, &sum, kvrHintAccurate);
    });
    add("sum/Sum_32f_accurate/" + n, "loop", [=] { keep(loopSum<long double>(a.get(), len)); });
    add("sum/Sum_64f/" + n, "kvrs", [=] {
      Kvr64f sum;
      kvrsSum_64f(d.get(), len, &sum);
    });
    add("sum/Sum_64f/" + n, "loop", [=] { keep(loopSum<Kvr64f>(d.get(), len)); });
    add("sum/Sum_64f/" + n, "eigen", [=] { keep(eigenSum(d.get(), len)); });
    add("sum/Sum_64f/" + n, "openblas", [=] { keep(OpenBlas::sum(len, d.get())); });
    add("sum/Mean_32f_fast/" + n, "kvrs", [=] {
      Kvr32f mean;
      kvrsMean_32f(a.get(), len, &mean, kvrHintFast);
    });
    add("sum/Mean_32f_fast/" + n, "loop",
        [=] { keep(loopSum<Kvr32f>(a.get(), len) / static_cast<Kvr32f>(len)); });
    add("sum/Mean_32f_fast/" + n, "openblas",
        [=] { keep(OpenBlas::sum(len, a.get()) / static_cast<Kvr32f>(len)); });
    add("sum/Mean_64f/" + n, "kvrs", [=] {
      Kvr64f mean;
      kvrsMean_64f(d.get(), len, &mean);
    });
    add("sum/Mean_64f/" + n, "loop", [=] { keep(loopSum<Kvr64f>(d.get(), len) / static_cast<Kvr64f>(len)); });
    add("sum/Mean_64f/" + n, "openblas", [=] { keep(OpenBlas::sum(len, d.get()) / len); });
    add("sum/Sum_16s32s/" + n, "kvrs", [=] {
      Kvr32s sum;
      kvrsSum_16s32s_Sfs(w.get(), len, &sum, 0);
    });
    add("sum/Sum_16s32s/" + n, "loop", [=] { keep(loopSum<Kvr32s>(w.get(), len)); });
    add("sum/Sum_32s/" + n, "kvrs", [=] {
      Kvr32s sum;
      kvrsSum_32s_Sfs(l.get(), len, &sum, 0);
    });
    add("sum/Sum_32s/" + n, "loop", [=] { keep(loopSum<Kvr64s>(l.get(), len)); });

    add("deviation/StdDev_32f_fast/" + n, "kvrs", [=] {
      Kvr32f dev;
      kvrsStdDev_32f(a.get(), len, &dev, kvrHintFast);
    });
    add("deviation/StdDev_32f_fast/" + n, "loop", [=] { keep(loopDeviation(a.get(), len)); });
    add("deviation/StdDev_32f_accurate/" + n, "kvrs", [=] {
      Kvr32f dev;
      kvrsStdDev_32f(a.get(), len, &dev, kvrHintAccurate);
    });
    add("deviation/StdDev_32f_accurate/" + n, "loop", [=] { keep(loopDeviation(a.get(), len)); });
    add("deviation/StdDev_64f/" + n, "kvrs", [=] {
      Kvr64f dev;
      kvrsStdDev_64f(d.get(), len, &dev);
    });
    add("deviation/StdDev_64f/" + n, "loop", [=] { keep(loopDeviation(d.get(), len)); });

    add("count/CountInRange_32s/" + n, "kvrs", [=] {
      int in;
      kvrsCountInRange_32s(l.get(), len, &in, -1000000, 1000000);
    });
    add("count/CountInRange_32s/" + n, "loop", [=] { keep(loopCount(l.get(), len, -1000000, 1000000)); });
    add("count/ZeroCrossing_32f/" + n, "kvrs", [=] {
      Kvr32f zc;
      kvrsZeroCrossing_32f(a.get(), len, &zc, 0);
    });
    add("count/ZeroCrossing_32f/" + n, "loop", [=] { keep(loopCrossings(a.get(), len)); });
  }
});

}  // namespace
}  // namespace kvrs::bench
