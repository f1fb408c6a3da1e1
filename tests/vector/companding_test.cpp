// SPDX-License-Identifier: MIT
#include "kvrs/companding.h"

#include <cmath>
#include <vector>

#include "tests/support/floats.h"
#include "tests/support/rounding.h"

using namespace kvrs::test;

namespace {

// The laws, step by step.
Kvr16s aLawToLin(Kvr8u code) {
  const int a = code ^ 0x55, t = (a & 15) << 4, s = (a >> 4) & 7;
  const int sample = s == 0 ? t + 8 : s == 1 ? t + 0x108 : (t + 0x108) << (s - 1);
  return static_cast<Kvr16s>(a & 0x80 ? sample : -sample);
}
Kvr16s muLawToLin(Kvr8u code) {
  const int u = ~code & 0xFF, t = (((u & 15) << 3) + 0x84) << ((u >> 4) & 7);
  return static_cast<Kvr16s>(u & 0x80 ? 0x84 - t : t - 0x84);
}
Kvr8u linToALaw(Kvr16s sample) {
  int p = sample >> 3, mask = 0xD5;
  if (p < 0) {
    p = -p - 1;
    mask = 0x55;
  }
  int s = 0;
  while (p > ((0x100 << s) - 1) >> 3) ++s;
  const int step = (s < 2 ? p >> 1 : p >> s) & 15;
  return static_cast<Kvr8u>((step | s << 4) ^ mask);
}
Kvr8u linToMuLaw(Kvr16s sample) {
  int p = sample >> 2;
  if (p < 0) p = -p - 1;
  p = std::min(p + 33, 8191);
  int s = 0;
  while (p >> 6 >> s != 0) ++s;
  return static_cast<Kvr8u>((7 - s) << 4 | (15 - ((p >> (s + 1)) & 15)) | (sample < 0 ? 0 : 0x80));
}

Kvr32f toFloat(Kvr16s sample) {
  return static_cast<Kvr32f>(sample) / 32768;
}
Kvr16s toSample(Kvr32f x) {
  const Kvr32f scaled = x * 32768;
  if (std::isnan(scaled) || scaled < -32768) return -32768;
  if (scaled > 32767) return 32767;
  const volatile Kvr32f rounded = scaled + std::copysign(0.5f, x);  // in single precision
  return static_cast<Kvr16s>(rounded);
}

std::vector<Kvr8u> allCodes() {
  std::vector<Kvr8u> codes;
  for (int c = 0; c < 256; ++c) codes.push_back(static_cast<Kvr8u>(c));
  return codes;
}
std::vector<Kvr16s> allSamples() {
  std::vector<Kvr16s> samples;
  for (int x = -32768; x <= 32767; ++x) samples.push_back(static_cast<Kvr16s>(x));
  return samples;
}

template <class D, class S, class F, class Oracle>
void expectAll(F f, const std::vector<S>& src, Oracle oracle) {
  std::vector<D> got(src.size());
  ASSERT_EQ(kvrStatusOk, f(src.data(), got.data(), static_cast<int>(src.size())));
  for (size_t i = 0; i < src.size(); ++i) {
    const D want = oracle(src[i]);
    ASSERT_TRUE(sameBits(want, got[i])) << show(src[i]) << ": " << show(got[i]) << ", want " << show(want);
  }
}

TEST(Companding, AllCodesDecoded) {
  expectAll<Kvr16s>(kvrsALawToLin_8u16s, allCodes(), aLawToLin);
  expectAll<Kvr16s>(kvrsMuLawToLin_8u16s, allCodes(), muLawToLin);
  expectAll<Kvr32f>(kvrsALawToLin_8u32f, allCodes(), [](Kvr8u code) { return toFloat(aLawToLin(code)); });
  expectAll<Kvr32f>(kvrsMuLawToLin_8u32f, allCodes(), [](Kvr8u code) { return toFloat(muLawToLin(code)); });
}

TEST(Companding, AllSamplesEncoded) {
  expectAll<Kvr8u>(kvrsLinToALaw_16s8u, allSamples(), linToALaw);
  expectAll<Kvr8u>(kvrsLinToMuLaw_16s8u, allSamples(), linToMuLaw);
}

// Every half between two samples, with its neighbours among the floats, and what lies outside.
TEST(Companding, FloatsAboutEveryStep) {
  constexpr Kvr32f inf = std::numeric_limits<Kvr32f>::infinity();
  std::vector<Kvr32f> src{0, -0.0f, 1, -1, 2, -2, 1e30f, -1e30f, inf, -inf, NAN, 1e-40f, -1e-40f};
  for (int x = -32770; x <= 32770; ++x) {
    for (Kvr32f at : {static_cast<Kvr32f>(x) / 32768, (static_cast<Kvr32f>(x) + 0.5f) / 32768}) {
      src.insert(src.end(), {std::nextafter(at, -inf), at, std::nextafter(at, inf)});
    }
  }
  for (int mode : kCallerModes) {
    callWithRounding(mode, [&] {
      expectAll<Kvr8u>(kvrsLinToALaw_32f8u, src, [](Kvr32f x) { return linToALaw(toSample(x)); });
      expectAll<Kvr8u>(kvrsLinToMuLaw_32f8u, src, [](Kvr32f x) { return linToMuLaw(toSample(x)); });
      return kvrStatusOk;
    });
  }
}

TEST(Companding, KnownValues) {
  const auto decoded = [](auto f, Kvr8u code) {
    Kvr16s sample;
    EXPECT_EQ(kvrStatusOk, f(&code, &sample, 1));
    return sample;
  };
  EXPECT_EQ(8, decoded(kvrsALawToLin_8u16s, 0xD5));
  EXPECT_EQ(-8, decoded(kvrsALawToLin_8u16s, 0x55));
  EXPECT_EQ(-5504, decoded(kvrsALawToLin_8u16s, 0));
  EXPECT_EQ(5504, decoded(kvrsALawToLin_8u16s, 0x80));
  EXPECT_EQ(0, decoded(kvrsMuLawToLin_8u16s, 0xFF));
  EXPECT_EQ(0, decoded(kvrsMuLawToLin_8u16s, 0x7F));
  EXPECT_EQ(-32124, decoded(kvrsMuLawToLin_8u16s, 0));
  const Kvr16s top = 32767;
  const Kvr32f two = 2;
  Kvr8u code, other;
  kvrsLinToMuLaw_16s8u(&top, &code, 1);
  EXPECT_EQ(0x80, code);
  kvrsLinToALaw_16s8u(&top, &code, 1);
  kvrsLinToALaw_32f8u(&two, &other, 1);
  EXPECT_EQ(code, other);
  const Kvr8u quiet = 0x55;
  kvrsALawToMuLaw_8u(&quiet, &code, 1);
  EXPECT_EQ(0x7E, code);
}

// Magnitudes of codes, counted from the quietest, that decoding and encoding take to another code, `off` away.
struct Deviations {
  std::vector<int> positive, negative;
  int off;
  int codes;  // how many codes that are, with those that only change their sign
};

template <class F, class Decode, class Encode>
void checkCodeToCode(F f, Decode decode, Encode encode, int inverted, int invertedAfter,
                     const Deviations& deviations) {
  int differing = 0;
  const std::vector<Kvr8u> codes = allCodes();
  std::vector<Kvr8u> got(codes.size());
  ASSERT_EQ(kvrStatusOk, f(codes.data(), got.data(), 256));
  for (int code = 0; code < 256; ++code) {
    const bool positive = code >= 128;
    const int magnitude = (code ^ inverted) & 0x7F;
    const auto& list = positive ? deviations.positive : deviations.negative;
    const bool deviates = std::find(list.begin(), list.end(), magnitude) != list.end();
    const int again = encode(decode(static_cast<Kvr8u>(code)));
    const int want = ((again ^ invertedAfter) & 0x7F) - (deviates ? deviations.off : 0);
    EXPECT_EQ(want, (got[static_cast<size_t>(code)] ^ invertedAfter) & 0x7F) << "code " << code;
    EXPECT_EQ(positive, got[static_cast<size_t>(code)] >= 128) << "code " << code;
    differing += again != got[static_cast<size_t>(code)];
  }
  EXPECT_EQ(deviations.codes, differing);
}

TEST(Companding, ALawToMuLawDeviatesIn32Codes) {
  std::vector<int> all;
  for (int m = 80; m <= 95; ++m) all.push_back(m);
  checkCodeToCode(kvrsALawToMuLaw_8u, aLawToLin, linToMuLaw, 0x55, 0x7F, {all, all, 1, 32});
}

TEST(Companding, MuLawToALawDeviatesIn44Codes) {
  std::vector<int> positive{48, 49, 64}, negative{2, 4, 6, 8, 10, 12, 14, 48, 49, 64};
  for (int m = 81; m <= 95; ++m) {
    positive.push_back(m);
    negative.push_back(m);
  }
  // 43 so far; of the quietest codes, which decode to 0, encoding leaves the positive one.
  checkCodeToCode(kvrsMuLawToALaw_8u, muLawToLin, linToALaw, 0x7F, 0x55, {positive, negative, -1, 44});
}

TEST(Companding, Sweep) {
  sweepMap<Kvr16s, Kvr8u>(kvrsALawToLin_8u16s, aLawToLin);
  sweepMap<Kvr16s, Kvr8u>(kvrsMuLawToLin_8u16s, muLawToLin);
  sweepMap<Kvr32f, Kvr8u>(kvrsALawToLin_8u32f, [](Kvr8u code) { return toFloat(aLawToLin(code)); });
  sweepMap<Kvr32f, Kvr8u>(kvrsMuLawToLin_8u32f, [](Kvr8u code) { return toFloat(muLawToLin(code)); });
  sweepMap<Kvr8u, Kvr16s>(kvrsLinToALaw_16s8u, linToALaw);
  sweepMap<Kvr8u, Kvr16s>(kvrsLinToMuLaw_16s8u, linToMuLaw);
  const auto draw = [](Random& random, size_t, Kvr32f) {
    return random.below(2) != 0 ? anyFloat<Kvr32f>(random) : random.value<Kvr32f>();
  };
  sweepMapWith<Kvr8u, Kvr32f>(kvrsLinToALaw_32f8u, [](Kvr32f x) { return linToALaw(toSample(x)); },
                              sameBits<Kvr8u>, draw, {});
  sweepMapWith<Kvr8u, Kvr32f>(kvrsLinToMuLaw_32f8u, [](Kvr32f x) { return linToMuLaw(toSample(x)); },
                              sameBits<Kvr8u>, draw, {});
}

TEST(Companding, SweepCodes) {
  std::vector<Kvr8u> toMu(256), toA(256);
  kvrsALawToMuLaw_8u(allCodes().data(), toMu.data(), 256);
  kvrsMuLawToALaw_8u(allCodes().data(), toA.data(), 256);
  sweepMap<Kvr8u, Kvr8u>(kvrsALawToMuLaw_8u, [&](Kvr8u code) { return toMu[code]; });
  sweepMap<Kvr8u, Kvr8u>(kvrsMuLawToALaw_8u, [&](Kvr8u code) { return toA[code]; });
}

}  // namespace
