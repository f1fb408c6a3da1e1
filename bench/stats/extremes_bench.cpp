// SPDX-License-Identifier: MIT
#include "kvrs/extremes.h"

#include <Eigen/Core>

#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

#include "bench/stats/openblas.h"
#include "bench/support/bench.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

#define KVRS_FAST_LOOP __attribute__((noipa, optimize("O3", "fast-math")))

template <class T>
KVRS_FAST_LOOP T loopMax(const T* src, int len) {
  T max = src[0];
  for (int i = 1; i < len; ++i) max = src[i] > max ? src[i] : max;
  return max;
}
template <class T>
KVRS_FAST_LOOP T loopMaxIndex(const T* src, int len, int* indx) {
  T max = src[0];
  *indx = 0;
  for (int i = 1; i < len; ++i) {
    if (src[i] > max) max = src[i], *indx = i;
  }
  return max;
}
template <class T>
KVRS_FAST_LOOP T loopMinMaxIndex(const T* src, int len, int* minIndx, int* maxIndx) {
  T min = src[0], max = src[0];
  *minIndx = *maxIndx = 0;
  for (int i = 1; i < len; ++i) {
    if (src[i] > max) max = src[i], *maxIndx = i;
    if (src[i] < min) min = src[i], *minIndx = i;
  }
  return min;
}
template <class T>
__attribute__((noipa)) T eigenMax(const T* src, int len) {
  return Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>(src, len).maxCoeff();
}

template <class T>
void addMax(const std::string& type, int len, KvrStatus (*max)(const T*, int, T*) noexcept,
            KvrStatus (*maxIndx)(const T*, int, T*, int*) noexcept,
            KvrStatus (*minMaxIndx)(const T*, int, T*, int*, T*, int*) noexcept) {
  const std::string n = type + "/" + std::to_string(len);
  const auto a = array<T>(static_cast<size_t>(len));
  add("extremes/Max_" + n, "kvrs", [=] {
    T value;
    max(a.get(), len, &value);
  });
  add("extremes/Max_" + n, "loop", [=] { keep(loopMax(a.get(), len)); });
  add("extremes/Max_" + n, "eigen", [=] { keep(eigenMax(a.get(), len)); });
  add("extremes/MaxIndx_" + n, "kvrs", [=] {
    T value;
    int index;
    maxIndx(a.get(), len, &value, &index);
  });
  add("extremes/MaxIndx_" + n, "loop", [=] {
    int index;
    keep(loopMaxIndex(a.get(), len, &index));
  });
  if constexpr (std::is_floating_point_v<T>) {
    add("extremes/MaxIndx_" + n, "openblas", [=] { keep(OpenBlas::maxIndex(len, a.get())); });
  }
#ifdef KVRS_BENCH_VOLK
  if constexpr (std::is_same_v<T, Kvr32f>) {
    add("extremes/MaxIndx_" + n, "volk", [=] {
      uint32_t index;
      volk_32f_index_max_32u(&index, a.get(), static_cast<unsigned>(len));
    });
  }
#endif
  add("extremes/MinMaxIndx_" + n, "kvrs", [=] {
    T low, high;
    int lowAt, highAt;
    minMaxIndx(a.get(), len, &low, &lowAt, &high, &highAt);
  });
  add("extremes/MinMaxIndx_" + n, "loop", [=] {
    int lowAt, highAt;
    keep(loopMinMaxIndex(a.get(), len, &lowAt, &highAt));
  });
  if constexpr (std::is_floating_point_v<T>) {
    add("extremes/MinMaxIndx_" + n, "openblas", [=] {
      keep(OpenBlas::minIndex(len, a.get()));
      keep(OpenBlas::maxIndex(len, a.get()));
    });
  }
}

Register extremes([] {
  for (int len : kLengths) {
    addMax<Kvr32f>("32f", len, kvrsMax_32f, kvrsMaxIndx_32f, kvrsMinMaxIndx_32f);
    addMax<Kvr64f>("64f", len, kvrsMax_64f, kvrsMaxIndx_64f, kvrsMinMaxIndx_64f);
    addMax<Kvr16s>("16s", len, kvrsMax_16s, kvrsMaxIndx_16s, kvrsMinMaxIndx_16s);
    addMax<Kvr32s>("32s", len, kvrsMax_32s, kvrsMaxIndx_32s, kvrsMinMaxIndx_32s);
    const std::string n = std::to_string(len);
    const auto a = array<Kvr32f>(static_cast<size_t>(len));
    add("extremes/MaxOrder_32f/" + n, "kvrs", [=] {
      int order;
      kvrsMaxOrder_32f(a.get(), len, &order);
    });
  }
});

}  // namespace
}  // namespace kvrs::bench
