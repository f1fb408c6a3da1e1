// SPDX-License-Identifier: MIT
#include "kvrs/convert.h"

#include <cmath>

#include "bench/support/bench.h"
#ifdef KVRS_BENCH_VOLK
#include <volk/volk.h>
#endif

namespace kvrs::bench {
namespace {

constexpr int kLengths[] = {64, 1024, 16384, 4 << 20};

// What a user would write for the compiler: saturation by bounds, and a cast, which truncates.
template <class D, class S>
__attribute__((noipa)) void loopNarrow(const S* src, D* dst, int len, S scale, S lowest, S highest) {
  for (int i = 0; i < len; ++i) {
    const S x = src[i] * scale;
    dst[i] = static_cast<D>(x < lowest ? lowest : x > highest ? highest : x);
  }
}

// The same to nearest, with the function that the compiler makes an instruction of.
template <class D>
__attribute__((noipa, optimize("no-math-errno", "no-trapping-math"))) void loopNearest(
    const float* src, D* dst, int len, float scale, float lowest, float highest) {
  for (int i = 0; i < len; ++i) {
    const float x = src[i] * scale;
    dst[i] = static_cast<D>(static_cast<int>(std::rint(x < lowest ? lowest : x > highest ? highest : x)));
  }
}

template <class D, class S>
__attribute__((noipa)) void loopWiden(const S* src, D* dst, int len) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<D>(src[i]);
}

template <class D, class S>
__attribute__((noipa)) void loopWidenScaled(const S* src, D* dst, int len, D scale) {
  for (int i = 0; i < len; ++i) dst[i] = static_cast<D>(src[i]) * scale;
}

template <class D, class S>
__attribute__((noipa)) void loopSaturate(const S* src, D* dst, int len) {
  constexpr S lowest = static_cast<S>(-1) << (8 * sizeof(D) - 1), highest = static_cast<S>(~lowest);
  for (int i = 0; i < len; ++i)
    dst[i] = static_cast<D>(src[i] < lowest ? lowest : src[i] > highest ? highest : src[i]);
}

__attribute__((noipa)) void loopShift(const Kvr32s* src, Kvr16s* dst, int len, int shift) {
  const Kvr32s bias = (1 << (shift - 1)) - 1;
  for (int i = 0; i < len; ++i) {
    const Kvr32s x = (src[i] + bias + (src[i] >> shift & 1)) >> shift;
    dst[i] = static_cast<Kvr16s>(x < -32768 ? -32768 : x > 32767 ? 32767 : x);
  }
}

template <class D>
__attribute__((noipa)) void loopUnpack(const Kvr8u* src, D* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const unsigned word = src[3 * i] | src[3 * i + 1] << 8 | static_cast<unsigned>(src[3 * i + 2]) << 16;
    dst[i] = static_cast<D>(static_cast<int>(word << 8) >> 8);
  }
}

template <class S>
__attribute__((noipa)) void loopPack(const S* src, Kvr8u* dst, int len) {
  for (int i = 0; i < len; ++i) {
    const S bounded = src[i] < S(-8388608) ? S(-8388608) : src[i] > S(8388607) ? S(8388607) : src[i];
    const int x = static_cast<int>(bounded);
    dst[3 * i] = static_cast<Kvr8u>(x);
    dst[3 * i + 1] = static_cast<Kvr8u>(x >> 8);
    dst[3 * i + 2] = static_cast<Kvr8u>(x >> 16);
  }
}

// The compiler's own half-precision type, in which it has the processor's instructions where there are any.
__attribute__((noipa)) void loopFromHalf(const Kvr16f* src, float* dst, int len) {
  const auto half = reinterpret_cast<const _Float16*>(src);
  for (int i = 0; i < len; ++i) dst[i] = static_cast<float>(half[i]);
}
__attribute__((noipa)) void loopToHalf(const float* src, Kvr16f* dst, int len) {
  const auto half = reinterpret_cast<_Float16*>(dst);
  for (int i = 0; i < len; ++i) half[i] = static_cast<_Float16>(src[i]);
}

template <class S, class D, class Ours, class Loop>
void pair(const std::string& name, int len, Ours ours, Loop loop) {
  const auto src = array<S>(len);
  const auto dst = array<D>(len);
  const std::string full = "convert/" + name + "/" + std::to_string(len);
  add(full, "kvrs", [=] { ours(src.get(), dst.get(), len); });
  add(full, "loop", [=] { loop(src.get(), dst.get(), len); });
}

struct Packed {
  Kvr8u byte[3];
};
Kvr8u* bytes(Packed* p) {
  return reinterpret_cast<Kvr8u*>(p);
}
const Kvr8u* bytes(const Packed* p) {
  return reinterpret_cast<const Kvr8u*>(p);
}

template <class D>
void fromFloat(const std::string& name, int len, float lowest, float highest,
               KvrStatus (*function)(const float*, D*, int, KvrRoundMode, int) noexcept) {
  pair<float, D>(
      name + "_zero", len, [=](const float* s, D* d, int n) { function(s, d, n, kvrRoundZero, -7); },
      [=](const float* s, D* d, int n) { loopNarrow(s, d, n, 128.0f, lowest, highest); });
  pair<float, D>(
      name + "_near", len, [=](const float* s, D* d, int n) { function(s, d, n, kvrRoundNear, -7); },
      [=](const float* s, D* d, int n) { loopNearest(s, d, n, 128.0f, lowest, highest); });
}

Register convert([] {
  for (int len : kLengths) {
    fromFloat<Kvr8u>("32f8u_Sfs", len, 0, 255, kvrsConvert_32f8u_Sfs);
    fromFloat<Kvr8s>("32f8s_Sfs", len, -128, 127, kvrsConvert_32f8s_Sfs);
    fromFloat<Kvr16u>("32f16u_Sfs", len, 0, 65535, kvrsConvert_32f16u_Sfs);
    fromFloat<Kvr16s>("32f16s_Sfs", len, -32768, 32767, kvrsConvert_32f16s_Sfs);
    fromFloat<Kvr32s>("32f32s_Sfs", len, -0x1p31f, 0x1.fffffep30f, kvrsConvert_32f32s_Sfs);
    pair<double, Kvr16s>(
        "64f16s_Sfs", len,
        [](const double* s, Kvr16s* d, int n) { kvrsConvert_64f16s_Sfs(s, d, n, kvrRoundZero, -7); },
        [](const double* s, Kvr16s* d, int n) { loopNarrow(s, d, n, 128.0, -32768.0, 32767.0); });
    pair<double, Kvr32s>(
        "64f32s_Sfs", len,
        [](const double* s, Kvr32s* d, int n) { kvrsConvert_64f32s_Sfs(s, d, n, kvrRoundZero, -7); },
        [](const double* s, Kvr32s* d, int n) { loopNarrow(s, d, n, 128.0, -0x1p31, 2147483647.0); });
    pair<double, Kvr64s>(
        "64f64s_Sfs", len,
        [](const double* s, Kvr64s* d, int n) { kvrsConvert_64f64s_Sfs(s, d, n, kvrRoundZero, -7); },
        [](const double* s, Kvr64s* d, int n) { loopNarrow(s, d, n, 128.0, -0x1p63, 0x1.fffffffffffffp62); });
    pair<float, Packed>(
        "32f24s_Sfs", len,
        [](const float* s, Packed* d, int n) { kvrsConvert_32f24s_Sfs(s, bytes(d), n, 0); },
        [](const float* s, Packed* d, int n) { loopPack(s, bytes(d), n); });

    pair<Kvr8u, float>("8u32f", len, kvrsConvert_8u32f, loopWiden<float, Kvr8u>);
    pair<Kvr8s, float>("8s32f", len, kvrsConvert_8s32f, loopWiden<float, Kvr8s>);
    pair<Kvr16s, float>("16s32f", len, kvrsConvert_16s32f, loopWiden<float, Kvr16s>);
    pair<Kvr32s, float>("32s32f", len, kvrsConvert_32s32f, loopWiden<float, Kvr32s>);
    pair<Kvr16s, float>(
        "16s32f_Sfs", len, [](const Kvr16s* s, float* d, int n) { kvrsConvert_16s32f_Sfs(s, d, n, 15); },
        [](const Kvr16s* s, float* d, int n) { loopWidenScaled(s, d, n, 0x1p-15f); });
    pair<Kvr16s, double>(
        "16s64f_Sfs", len, [](const Kvr16s* s, double* d, int n) { kvrsConvert_16s64f_Sfs(s, d, n, 15); },
        [](const Kvr16s* s, double* d, int n) { loopWidenScaled(s, d, n, 0x1p-15); });
    pair<Kvr32s, double>("32s64f", len, kvrsConvert_32s64f, loopWiden<double, Kvr32s>);
    pair<Kvr64s, double>("64s64f", len, kvrsConvert_64s64f, loopWiden<double, Kvr64s>);
    pair<float, double>("32f64f", len, kvrsConvert_32f64f, loopWiden<double, float>);
    pair<double, float>("64f32f", len, kvrsConvert_64f32f, loopWiden<float, double>);
    pair<Kvr8s, Kvr16s>("8s16s", len, kvrsConvert_8s16s, loopWiden<Kvr16s, Kvr8s>);
    pair<Kvr16s, Kvr32s>("16s32s", len, kvrsConvert_16s32s, loopWiden<Kvr32s, Kvr16s>);
    pair<Packed, float>(
        "24s32f", len, [](const Packed* s, float* d, int n) { kvrsConvert_24s32f(bytes(s), d, n); },
        [](const Packed* s, float* d, int n) { loopUnpack(bytes(s), d, n); });
    pair<Packed, Kvr32s>(
        "24s32s", len, [](const Packed* s, Kvr32s* d, int n) { kvrsConvert_24s32s(bytes(s), d, n); },
        [](const Packed* s, Kvr32s* d, int n) { loopUnpack(bytes(s), d, n); });
    pair<Kvr32s, Packed>(
        "32s24s_Sfs", len,
        [](const Kvr32s* s, Packed* d, int n) { kvrsConvert_32s24s_Sfs(s, bytes(d), n, 0); },
        [](const Kvr32s* s, Packed* d, int n) { loopPack(s, bytes(d), n); });
    pair<Kvr32s, Kvr16s>("32s16s", len, kvrsConvert_32s16s, loopSaturate<Kvr16s, Kvr32s>);
    pair<Kvr32s, Kvr16s>(
        "32s16s_Sfs", len, [](const Kvr32s* s, Kvr16s* d, int n) { kvrsConvert_32s16s_Sfs(s, d, n, 5); },
        [](const Kvr32s* s, Kvr16s* d, int n) { loopShift(s, d, n, 5); });
    pair<Kvr16s, Kvr8s>(
        "16s8s_Sfs_0", len,
        [](const Kvr16s* s, Kvr8s* d, int n) { kvrsConvert_16s8s_Sfs(s, d, n, kvrRoundNear, 0); },
        loopSaturate<Kvr8s, Kvr16s>);
    pair<Kvr64s, Kvr32s>(
        "64s32s_Sfs_0", len,
        [](const Kvr64s* s, Kvr32s* d, int n) { kvrsConvert_64s32s_Sfs(s, d, n, kvrRoundNear, 0); },
        loopSaturate<Kvr32s, Kvr64s>);

    pair<Kvr16f, float>("16f32f", len, kvrsConvert_16f32f, loopFromHalf);
    pair<float, Kvr16f>(
        "32f16f_near", len,
        [](const float* s, Kvr16f* d, int n) { kvrsConvert_32f16f(s, d, n, kvrRoundNear); }, loopToHalf);
    pair<float, Kvr16f>(
        "32f16f_zero", len,
        [](const float* s, Kvr16f* d, int n) { kvrsConvert_32f16f(s, d, n, kvrRoundZero); }, loopToHalf);

#ifdef KVRS_BENCH_VOLK
    const auto peer = [len](const std::string& name, auto src, auto dst, auto call) {
      add("convert/" + name + "/" + std::to_string(len), "volk",
          [=] { call(src.get(), dst.get(), static_cast<unsigned>(len)); });
    };
    const auto floats = array<float>(len), floatsOut = array<float>(len);
    const auto doubles = array<double>(len), doublesOut = array<double>(len);
    const auto bytesIn = array<int8_t>(len), bytesOut = array<int8_t>(len);
    const auto shorts = array<int16_t>(len), shortsOut = array<int16_t>(len);
    const auto words = array<int32_t>(len), wordsOut = array<int32_t>(len);
    peer("32f8s_Sfs_near", floats, bytesOut,
         [](auto s, auto d, unsigned n) { volk_32f_s32f_convert_8i(d, s, 128, n); });
    peer("32f16s_Sfs_near", floats, shortsOut,
         [](auto s, auto d, unsigned n) { volk_32f_s32f_convert_16i(d, s, 128, n); });
    peer("32f32s_Sfs_near", floats, wordsOut,
         [](auto s, auto d, unsigned n) { volk_32f_s32f_convert_32i(d, s, 128, n); });
    peer("8s32f", bytesIn, floatsOut,
         [](auto s, auto d, unsigned n) { volk_8i_s32f_convert_32f(d, s, 128, n); });
    peer("16s32f_Sfs", shorts, floatsOut,
         [](auto s, auto d, unsigned n) { volk_16i_s32f_convert_32f(d, s, 32768, n); });
    peer("32s32f", words, floatsOut,
         [](auto s, auto d, unsigned n) { volk_32i_s32f_convert_32f(d, s, 1, n); });
    peer("32f64f", floats, doublesOut, [](auto s, auto d, unsigned n) { volk_32f_convert_64f(d, s, n); });
    peer("64f32f", doubles, floatsOut, [](auto s, auto d, unsigned n) { volk_64f_convert_32f(d, s, n); });
    peer("8s16s", bytesIn, shortsOut, [](auto s, auto d, unsigned n) { volk_8i_convert_16i(d, s, n); });
#endif
  }
});

}  // namespace
}  // namespace kvrs::bench
