// SPDX-License-Identifier: MIT
#include <limits>

#include "kvrs/convert.h"
#include "tests/support/packed24.h"
#include "tests/support/rounding.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

using Wide = long double;  // holds every 64-bit integer; scaling it by a power of two is exact

template <class T>
T scaled(int64_t x, int scaleFactor, KvrRoundMode mode, T lowest, T highest) {
  return saturatedTo(std::ldexp(static_cast<Wide>(x), -scaleFactor), mode, lowest, highest);
}

template <class S>
std::vector<S> values() {
  Random random(9);
  std::vector<S> all;
  for (int i = 0; i < 500; ++i) all.push_back(random.value<S>());
  for (int i = 0; i < 500; ++i)
    all.push_back(static_cast<S>(static_cast<int64_t>(random.bits()) >> random.below(64)));
  for (int bit = 0; bit < static_cast<int>(8 * sizeof(S)); ++bit) {
    for (uint64_t base : {uint64_t{1} << bit, uint64_t{3} << bit, uint64_t{5} << bit}) {
      for (uint64_t offset : {uint64_t{0}, uint64_t{1}, ~uint64_t{0}}) {
        all.push_back(static_cast<S>(base + offset));
        all.push_back(static_cast<S>(0 - base + offset));
      }
    }
  }
  return all;
}

std::vector<int> scaleFactors() {
  std::vector<int> all;
  for (int s = -70; s <= 70; ++s) all.push_back(s);
  for (int s : {-1000, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
    all.push_back(s);
  return all;
}

// `call(src, dst, len, rndMode, scaleFactor)` against `oracle(x, rndMode, scaleFactor)`.
template <class S, class D, class Call, class Oracle>
void check(Call call, Oracle oracle, std::initializer_list<KvrRoundMode> modes = {kvrRoundNear}) {
  const std::vector<S> src = values<S>();
  for (KvrRoundMode mode : modes) {
    for (int scaleFactor : scaleFactors()) {
      std::vector<D> dst(src.size());
      ASSERT_EQ(kvrStatusOk, call(src.data(), dst.data(), static_cast<int>(src.size()), mode, scaleFactor));
      for (size_t i = 0; i < src.size(); ++i) {
        const D want = oracle(src[i], mode, scaleFactor);
        ASSERT_TRUE(sameBits(dst[i], want))
            << show(src[i]) << ", mode " << mode << ", scaleFactor " << scaleFactor << ": got "
            << show(dst[i]) << ", want " << show(want);
      }
    }
    for (int scaleFactor : {0, 3, -2}) {
      sweepMapWith<D, S>(
          [&](const S* src, D* dst, int len) { return call(src, dst, len, mode, scaleFactor); },
          [&](S x) { return oracle(x, mode, scaleFactor); }, sameBits<D>,
          [](Random& random, size_t, S) { return random.value<S>(); }, {});
    }
  }
}

constexpr std::initializer_list<KvrRoundMode> kAllModes = {kvrRoundZero, kvrRoundNear, kvrRoundFinancial, 7,
                                                           -1};

TEST(ConvertNarrow, From16sTo8s) {
  const auto oracle = [](Kvr16s x, KvrRoundMode mode, int scaleFactor) -> Kvr8s {
    if (scaleFactor >= 18) return 0;
    if (scaleFactor < -6) return x > 0 ? 127 : x < 0 ? -128 : 0;
    return scaled<Kvr8s>(x, scaleFactor, mode, -128, 127);
  };
  check<Kvr16s, Kvr8s>(kvrsConvert_16s8s_Sfs, oracle, kAllModes);
}

// Every number, for the shifts that round.
TEST(ConvertNarrow, From16sTo8sExhaustive) {
  std::vector<Kvr16s> src(65536);
  std::vector<Kvr8s> dst(65536);
  for (int i = 0; i < 65536; ++i) src[static_cast<size_t>(i)] = static_cast<Kvr16s>(i - 32768);
  for (KvrRoundMode mode : {kvrRoundZero, kvrRoundNear, kvrRoundFinancial}) {
    for (int scaleFactor = 1; scaleFactor <= 18; ++scaleFactor) {
      ASSERT_EQ(kvrStatusOk, kvrsConvert_16s8s_Sfs(src.data(), dst.data(), 65536, mode, scaleFactor));
      for (size_t i = 0; i < src.size(); ++i) {
        // In integers: the quotient and what is left of it decide.
        const int64_t step = int64_t{1} << scaleFactor, x = src[i];
        const int64_t magnitude = x < 0 ? -x : x, whole = magnitude / step, left = 2 * (magnitude % step);
        const bool up = mode == kvrRoundNear ? left > step || (left == step && whole % 2 == 1)
                                             : mode == kvrRoundFinancial && left >= step;
        const int64_t rounded = (x < 0 ? -1 : 1) * (whole + (up ? 1 : 0));
        ASSERT_EQ(std::clamp<int64_t>(rounded, -128, 127), dst[i])
            << x << ", mode " << mode << ", scaleFactor " << scaleFactor;
      }
    }
  }
}

TEST(ConvertNarrow, From64sTo32s) {
  const auto oracle = [](Kvr64s x, KvrRoundMode mode, int scaleFactor) -> Kvr32s {
    if (scaleFactor > 63) return 0;
    return scaled<Kvr32s>(x, std::max(scaleFactor, -100), mode, std::numeric_limits<Kvr32s>::min(),
                          std::numeric_limits<Kvr32s>::max());
  };
  check<Kvr64s, Kvr32s>(kvrsConvert_64s32s_Sfs, oracle, kAllModes);
}

TEST(ConvertNarrow, From32sTo16s) {
  const auto oracle = [](Kvr32s x, KvrRoundMode, int scaleFactor) {
    return scaled<Kvr16s>(x, std::clamp(scaleFactor, -15, 31), kvrRoundNear, -32768, 32767);
  };
  check<Kvr32s, Kvr16s>([](const Kvr32s* src, Kvr16s* dst, int len, KvrRoundMode,
                           int scaleFactor) { return kvrsConvert_32s16s_Sfs(src, dst, len, scaleFactor); },
                        oracle);
  sweepMap<Kvr16s, Kvr32s>(kvrsConvert_32s16s, [&](Kvr32s x) { return oracle(x, kvrRoundNear, 0); });
}

TEST(ConvertNarrow, To24Bits) {
  check<Kvr32s, Packed>(
      [](const Kvr32s* src, Packed* dst, int len, KvrRoundMode, int scaleFactor) {
        return kvrsConvert_32s24s_Sfs(src, reinterpret_cast<Kvr8u*>(dst), len, scaleFactor);
      },
      [](Kvr32s x, KvrRoundMode, int scaleFactor) {
        return Packed::of(
            scaled<int>(x, std::clamp(scaleFactor, -31, 31), kvrRoundNear, -0x800000, 0x7FFFFF));
      });
  check<Kvr32u, Packed>(
      [](const Kvr32u* src, Packed* dst, int len, KvrRoundMode, int scaleFactor) {
        return kvrsConvert_32u24u_Sfs(src, reinterpret_cast<Kvr8u*>(dst), len, scaleFactor);
      },
      [](Kvr32u x, KvrRoundMode, int scaleFactor) {
        return Packed::of(scaled<int>(x, std::clamp(scaleFactor, -31, 31), kvrRoundNear, 0, 0xFFFFFF));
      });
}

TEST(ConvertNarrow, Widening) {
  sweepMap<Kvr16s, Kvr8s>(kvrsConvert_8s16s, [](Kvr8s x) { return static_cast<Kvr16s>(x); });
  sweepMap<Kvr32s, Kvr16s>(kvrsConvert_16s32s, [](Kvr16s x) { return static_cast<Kvr32s>(x); });
}

}  // namespace
