// SPDX-License-Identifier: MIT
#include "kvrs/threshold.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "bench/support/bench.h"
#include "kvrs/nearest.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384};

template <class T>
[[gnu::noinline]] void loopGT(const T* src, T* dst, int len, T level) {
  for (int i = 0; i < len; ++i) dst[i] = src[i] > level ? level : src[i];
}
template <class T>
[[gnu::noinline]] void loopLTVal(const T* src, T* dst, int len, T level, T value) {
  for (int i = 0; i < len; ++i) dst[i] = src[i] < level ? value : src[i];
}
template <class T>
[[gnu::noinline]] void loopGTAbs(const T* src, T* dst, int len, T level) {
  for (int i = 0; i < len; ++i)
    dst[i] = src[i] > level ? level : src[i] < -level ? static_cast<T>(-level) : src[i];
}
template <class T>
[[gnu::noinline]] void loopOutside(const T* src, T* dst, int len, T levelLT, T valueLT, T levelGT,
                                   T valueGT) {
  for (int i = 0; i < len; ++i) dst[i] = src[i] < levelLT ? valueLT : src[i] > levelGT ? valueGT : src[i];
}
template <class T>
[[gnu::noinline]] void loopLTInv(const T* src, T* dst, int len, T level) {
  for (int i = 0; i < len; ++i) dst[i] = 1 / std::copysign(std::max(std::fabs(src[i]), level), src[i]);
}
template <class C, class T>
[[gnu::noinline]] void loopComplexGT(const C* src, C* dst, int len, T level) {
  for (int i = 0; i < len; ++i) {
    const auto re = src[i].re, im = src[i].im;
    const T square = static_cast<T>(re) * static_cast<T>(re) + static_cast<T>(im) * static_cast<T>(im);
    dst[i] = src[i];
    if (square > level * level) {
      const T factor = level / std::sqrt(square);
      if constexpr (sizeof re == 2) {
        dst[i] = {static_cast<Kvr16s>(std::rint(re * factor)), static_cast<Kvr16s>(std::rint(im * factor))};
      } else {
        dst[i] = {re * factor, im * factor};
      }
    }
  }
}
template <class C, class T>
[[gnu::noinline]] void loopComplexGTVal(const C* src, C* dst, int len, T square, C value) {
  for (int i = 0; i < len; ++i) {
    const T re = src[i].re, im = src[i].im;
    dst[i] = re * re + im * im > square ? value : src[i];
  }
}
template <class C, class T>
[[gnu::noinline]] void loopComplexLTInv(const C* src, C* dst, int len, T level) {
  for (int i = 0; i < len; ++i) {
    const T re = src[i].re, im = src[i].im, square = re * re + im * im;
    const T divisor = square < level * level ? std::sqrt(square) * level : square;
    dst[i] = {re / divisor, -im / divisor};
  }
}

[[gnu::noinline]] void loopNearest(const Kvr16u* src, Kvr16u* dst, int* index, int len, const Kvr16u* table,
                                   int tableLen) {
  for (int i = 0; i < len; ++i) {
    const Kvr16u* const above = std::lower_bound(table + 1, table + tableLen - 1, src[i]);
    const Kvr16u* const nearest = src[i] - above[-1] > above[0] - src[i] ? above : above - 1;
    dst[i] = *nearest;
    index[i] = static_cast<int>(nearest - table);
  }
}

template <class Ours, class Loop>
void pair(const std::string& name, Ours ours, Loop loop) {
  add(name, "kvrs", ours);
  add(name, "loop", loop);
}

Register thresholds([] {
  for (int len : kLengths) {
    const std::string n = "/" + std::to_string(len);
    const size_t count = static_cast<size_t>(len);
    const auto s = newArray<Kvr16s>(2 * count), t = newArray<Kvr16s>(2 * count);
    const auto w = newArray<Kvr32s>(count), v = newArray<Kvr32s>(count);
    const auto a = newArray<Kvr32f>(2 * count), b = newArray<Kvr32f>(2 * count);
    const auto da = newArray<Kvr64f>(2 * count), db = newArray<Kvr64f>(2 * count);
    const auto* s16 = reinterpret_cast<const Kvr16sc*>(s.get());
    auto* t16 = reinterpret_cast<Kvr16sc*>(t.get());
    const auto* f32 = reinterpret_cast<const Kvr32fc*>(a.get());
    auto* g32 = reinterpret_cast<Kvr32fc*>(b.get());
    const auto* f64 = reinterpret_cast<const Kvr64fc*>(da.get());
    auto* g64 = reinterpret_cast<Kvr64fc*>(db.get());

    pair(
        "threshold/GT_16s" + n, [=] { kvrsThreshold_GT_16s(s.get(), t.get(), len, 100); },
        [=] { loopGT<Kvr16s>(s.get(), t.get(), len, 100); });
    pair(
        "threshold/GT_32s" + n, [=] { kvrsThreshold_GT_32s(w.get(), v.get(), len, 100); },
        [=] { loopGT<Kvr32s>(w.get(), v.get(), len, 100); });
    pair(
        "threshold/GT_32f" + n, [=] { kvrsThreshold_GT_32f(a.get(), b.get(), len, 0.5f); },
        [=] { loopGT<Kvr32f>(a.get(), b.get(), len, 0.5f); });
    pair(
        "threshold/GT_64f" + n, [=] { kvrsThreshold_GT_64f(da.get(), db.get(), len, 0.5); },
        [=] { loopGT<Kvr64f>(da.get(), db.get(), len, 0.5); });
    pair(
        "threshold/LTVal_32f" + n, [=] { kvrsThreshold_LTVal_32f(a.get(), b.get(), len, 0.5f, 2); },
        [=] { loopLTVal<Kvr32f>(a.get(), b.get(), len, 0.5f, 2); });
    pair(
        "threshold/GTAbs_16s" + n, [=] { kvrsThreshold_GTAbs_16s(s.get(), t.get(), len, 100); },
        [=] { loopGTAbs<Kvr16s>(s.get(), t.get(), len, 100); });
    pair(
        "threshold/LTValGTVal_32f" + n,
        [=] { kvrsThreshold_LTValGTVal_32f(a.get(), b.get(), len, -0.5f, -1, 0.5f, 1); },
        [=] { loopOutside<Kvr32f>(a.get(), b.get(), len, -0.5f, -1, 0.5f, 1); });
    pair(
        "threshold/LTInv_32f" + n, [=] { kvrsThreshold_LTInv_32f(a.get(), b.get(), len, 0.5f); },
        [=] { loopLTInv<Kvr32f>(a.get(), b.get(), len, 0.5f); });
    pair(
        "threshold/LTInv_64f" + n, [=] { kvrsThreshold_LTInv_64f(da.get(), db.get(), len, 0.5); },
        [=] { loopLTInv<Kvr64f>(da.get(), db.get(), len, 0.5); });
    pair(
        "threshold/LTInv_32fc" + n, [=] { kvrsThreshold_LTInv_32fc(f32, g32, len, 0.5f); },
        [=] { loopComplexLTInv(f32, g32, len, 0.5f); });
    pair(
        "threshold/GT_16sc" + n, [=] { kvrsThreshold_GT_16sc(s16, t16, len, 10000); },
        [=] { loopComplexGT(s16, t16, len, 10000.0f); });
    pair(
        "threshold/GT_32fc" + n, [=] { kvrsThreshold_GT_32fc(f32, g32, len, 0.5f); },
        [=] { loopComplexGT(f32, g32, len, 0.5f); });
    pair(
        "threshold/GT_64fc" + n, [=] { kvrsThreshold_GT_64fc(f64, g64, len, 0.5); },
        [=] { loopComplexGT(f64, g64, len, 0.5); });
    pair(
        "threshold/GTVal_16sc" + n,
        [=] {
          kvrsThreshold_GTVal_16sc(s16, t16, len, 10000, {1, 2});
        },
        [=] {
          loopComplexGTVal(s16, t16, len, 100000000, Kvr16sc{1, 2});
        });
    pair(
        "threshold/GTVal_32fc" + n,
        [=] {
          kvrsThreshold_GTVal_32fc(f32, g32, len, 0.5f, {1, 2});
        },
        [=] {
          loopComplexGTVal(f32, g32, len, 0.25f, Kvr32fc{1, 2});
        });
    pair(
        "threshold/GTVal_64fc" + n,
        [=] {
          kvrsThreshold_GTVal_64fc(f64, g64, len, 0.5, {1, 2});
        },
        [=] {
          loopComplexGTVal(f64, g64, len, 0.25, Kvr64fc{1, 2});
        });
  }

  constexpr int len = 4096;
  const auto src = newArray<Kvr16u>(len), dst = newArray<Kvr16u>(len);
  const auto index = newArray<int>(len);
  for (int tableLen : {16, 256, 4096}) {
    const auto table = newArray<Kvr16u>(static_cast<size_t>(tableLen));
    for (int i = 0; i < tableLen; ++i) table.get()[i] = static_cast<Kvr16u>((2 * i + 1) * (32768 / tableLen));
    pair(
        "nearest/FindNearest_16u/" + std::to_string(tableLen),
        [=] { kvrsFindNearest_16u(src.get(), dst.get(), index.get(), len, table.get(), tableLen); },
        [=] { loopNearest(src.get(), dst.get(), index.get(), len, table.get(), tableLen); });
  }
});

}  // namespace
}  // namespace kvrs::bench
