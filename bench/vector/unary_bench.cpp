// SPDX-License-Identifier: MIT
#include "kvrs/unary.h"

#include <cmath>

#include "bench/support/bench.h"
#include "kvrs/mixed.h"

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

[[gnu::noipa]] void loopAbs(const Kvr16s* a, Kvr16s* dst, int len) {
  for (int i = 0; i < len; ++i) {
    dst[i] = static_cast<Kvr16s>(a[i] == -32768 ? 32767 : a[i] < 0 ? -a[i] : a[i]);
  }
}
[[gnu::noipa]] void loopAbs(const Kvr32s* a, Kvr32s* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] == INT32_MIN ? INT32_MAX : a[i] < 0 ? -a[i] : a[i];
}
[[gnu::noipa]] void loopAbs(const Kvr32f* a, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = std::fabs(a[i]);
}
template <class T>
[[gnu::noipa]] void loopSqr(const T* a, T* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = a[i] * a[i];
}
[[gnu::noipa]] void loopSqr(const Kvr32fc* a, Kvr32fc* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const Kvr32fc x = a[i];
    dst[i] = {x.re * x.re - x.im * x.im, 2 * x.re * x.im};
  }
}
[[gnu::noipa]] void loopSqr(const Kvr64fc* a, Kvr64fc* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const Kvr64fc x = a[i];
    dst[i] = {x.re * x.re - x.im * x.im, 2 * x.re * x.im};
  }
}
[[gnu::noipa]] void loopNormalize(const Kvr32f* a, Kvr32f* dst, int len, Kvr32f sub, Kvr32f div) {
  const Kvr32f factor = 1 / div;
  for (int i = 0; i < len; ++i) dst[i] = (a[i] - sub) * factor;
}
[[gnu::noipa]] void loopNormalize(const Kvr32fc* a, Kvr32fc* dst, int len, Kvr32fc sub, Kvr32f div) {
  const Kvr32f factor = 1 / div;
  for (int i = 0; i < len; ++i) dst[i] = {(a[i].re - sub.re) * factor, (a[i].im - sub.im) * factor};
}
[[gnu::noipa]] void loopNormalize(const Kvr16s* a, Kvr16s* dst, int len, int sub, float scale, float div) {
  for (int i = 0; i < len; ++i) {
    const long x = lrintf(static_cast<float>(a[i] - sub) * scale / div);
    dst[i] = static_cast<Kvr16s>(x < -32768 ? -32768 : x > 32767 ? 32767 : x);
  }
}
template <class T>
[[gnu::noipa]] void loopAddProduct(const T* a, const T* b, T* sum, int len) {
  for (int i = 0; i < len; ++i) sum[i] += a[i] * b[i];
}
[[gnu::noipa]] void loopAddProduct(const Kvr32fc* a, const Kvr32fc* b, Kvr32fc* sum, int len) {
  for (int i = 0; i < len; ++i) {
    const Kvr32fc x = a[i], y = b[i];
    sum[i] = {sum[i].re + (x.re * y.re - x.im * y.im), sum[i].im + (x.re * y.im + x.im * y.re)};
  }
}
[[gnu::noipa]] void loopAddProductC(const Kvr32f* a, Kvr32f val, Kvr32f* sum, int len) {
  for (int i = 0; i < len; ++i) sum[i] += a[i] * val;
}
[[gnu::noipa]] void loopMixed(const Kvr16s* a, const Kvr16s* b, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<Kvr32f>(a[i]) * static_cast<Kvr32f>(b[i]);
}
[[gnu::noipa]] void loopMixedAdd(const Kvr16s* a, const Kvr16s* b, Kvr32f* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<Kvr32f>(a[i] + b[i]);
}
[[gnu::noipa]] void loopRealComplex(const Kvr32f* a, const Kvr32fc* b, Kvr32fc* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = {a[i] * b[i].re, a[i] * b[i].im};
}

template <class T>
T* as(const std::shared_ptr<Kvr32f>& p) {
  return reinterpret_cast<T*>(p.get());
}

Register unary([] {
  for (int len : kLengths) {
    const std::string n = std::string("/").append(std::to_string(len));
    const auto a = array<Kvr32f>(2 * len), b = array<Kvr32f>(2 * len), dst = array<Kvr32f>(2 * len);
    const auto d = array<Kvr64f>(len), e = array<Kvr64f>(len), wide = array<Kvr64f>(2 * len);
    const auto s = array<Kvr16s>(len), t = array<Kvr16s>(len);
    const auto w = array<Kvr32s>(len);
    add("unary/Abs_16s" + n, "kvrs", [=] { kvrsAbs_16s(s.get(), t.get(), len); });
    add("unary/Abs_16s" + n, "loop", [=] { loopAbs(s.get(), t.get(), len); });
    add("unary/Abs_32s" + n, "kvrs", [=] { kvrsAbs_32s(w.get(), as<Kvr32s>(dst), len); });
    add("unary/Abs_32s" + n, "loop", [=] { loopAbs(w.get(), as<Kvr32s>(dst), len); });
    add("unary/Abs_32f" + n, "kvrs", [=] { kvrsAbs_32f(a.get(), dst.get(), len); });
    add("unary/Abs_32f" + n, "loop", [=] { loopAbs(a.get(), dst.get(), len); });
    add("unary/Sqr_32f" + n, "kvrs", [=] { kvrsSqr_32f(a.get(), dst.get(), len); });
    add("unary/Sqr_32f" + n, "loop", [=] { loopSqr(a.get(), dst.get(), len); });
    add("unary/Sqr_32fc" + n, "kvrs", [=] { kvrsSqr_32fc(as<Kvr32fc>(a), as<Kvr32fc>(dst), len); });
    add("unary/Sqr_32fc" + n, "loop", [=] { loopSqr(as<Kvr32fc>(a), as<Kvr32fc>(dst), len); });
    const auto pairs = [](const auto& p) { return reinterpret_cast<Kvr64fc*>(p.get()); };
    add("unary/Sqr_64fc" + n, "kvrs", [=] { kvrsSqr_64fc(pairs(d), pairs(wide), len / 2); });
    add("unary/Sqr_64fc" + n, "loop", [=] { loopSqr(pairs(d), pairs(wide), len / 2); });
    add("unary/Normalize_32f" + n, "kvrs", [=] { kvrsNormalize_32f(a.get(), dst.get(), len, 0.5f, 3); });
    add("unary/Normalize_32f" + n, "loop", [=] { loopNormalize(a.get(), dst.get(), len, 0.5f, 3); });
    add("unary/Normalize_32fc" + n, "kvrs", [=] {
      kvrsNormalize_32fc(as<Kvr32fc>(a), as<Kvr32fc>(dst), len, {0.5f, 1}, 3);
    });
    add("unary/Normalize_32fc" + n, "loop", [=] {
      loopNormalize(as<Kvr32fc>(a), as<Kvr32fc>(dst), len, {0.5f, 1}, 3);
    });
    add("unary/Normalize_16s" + n, "kvrs", [=] { kvrsNormalize_16s_Sfs(s.get(), t.get(), len, 5, 7, -1); });
    add("unary/Normalize_16s" + n, "loop", [=] { loopNormalize(s.get(), t.get(), len, 5, 2, 7); });
    // Products are small enough that the sums stay finite.
    add("mixed/AddProduct_32f" + n, "kvrs", [=] { kvrsAddProduct_32f(a.get(), b.get(), dst.get(), len); });
    add("mixed/AddProduct_32f" + n, "loop", [=] { loopAddProduct(a.get(), b.get(), dst.get(), len); });
    add("mixed/AddProduct_64f" + n, "kvrs", [=] { kvrsAddProduct_64f(d.get(), e.get(), wide.get(), len); });
    add("mixed/AddProduct_64f" + n, "loop", [=] { loopAddProduct(d.get(), e.get(), wide.get(), len); });
    add("mixed/AddProduct_32fc" + n, "kvrs",
        [=] { kvrsAddProduct_32fc(as<Kvr32fc>(a), as<Kvr32fc>(b), as<Kvr32fc>(dst), len); });
    add("mixed/AddProduct_32fc" + n, "loop",
        [=] { loopAddProduct(as<Kvr32fc>(a), as<Kvr32fc>(b), as<Kvr32fc>(dst), len); });
    add("mixed/AddProductC_32f" + n, "kvrs", [=] { kvrsAddProductC_32f(a.get(), 0.3f, dst.get(), len); });
    add("mixed/AddProductC_32f" + n, "loop", [=] { loopAddProductC(a.get(), 0.3f, dst.get(), len); });
    add("mixed/Mul_16s32f" + n, "kvrs", [=] { kvrsMul_16s32f(s.get(), t.get(), dst.get(), len); });
    add("mixed/Mul_16s32f" + n, "loop", [=] { loopMixed(s.get(), t.get(), dst.get(), len); });
    add("mixed/Add_16s32f" + n, "kvrs", [=] { kvrsAdd_16s32f(s.get(), t.get(), dst.get(), len); });
    add("mixed/Add_16s32f" + n, "loop", [=] { loopMixedAdd(s.get(), t.get(), dst.get(), len); });
    add("mixed/Mul_32f32fc" + n, "kvrs",
        [=] { kvrsMul_32f32fc(a.get(), as<Kvr32fc>(b), as<Kvr32fc>(dst), len); });
    add("mixed/Mul_32f32fc" + n, "loop",
        [=] { loopRealComplex(a.get(), as<Kvr32fc>(b), as<Kvr32fc>(dst), len); });
  }
});

}  // namespace
}  // namespace kvrs::bench
