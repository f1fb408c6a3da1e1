// Recursive filters against their definition.
// SPDX-License-Identifier: MIT
#include "kvrs/iir.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>

#include "tests/filters/iir_oracle.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

constexpr IirForm kForms[] = {IirForm::direct, IirForm::cascade, IirForm::df1};

template <class Check>
void forAllForms(Check check) {
  for (const IirType* type : iirTypes()) {
    for (IirForm form : kForms) {
      if (type->has(form)) check(*type, form);
      if (testing::Test::HasFailure()) return;
    }
  }
}

// The largest sample that a type stores, if that is an integer.
long double largest(const IirType& type) {
  const size_t bytes = type.isComplex ? type.sampleBytes / 2 : type.sampleBytes;
  return bytes == 2 ? 32767 : 2147483647;
}

// Outputs with the scale factor as they should be, but not rounded.
void expectNear(const IirType& type, const Numbers& want, const Numbers& got, long double tolerance,
                int scaleFactor) {
  ASSERT_EQ(want.size(), got.size());
  const long double scale = type.isScaled ? std::ldexp(1.0L, -scaleFactor) : 1;
  const long double most = largest(type);
  const auto part = [&](long double exact) {
    exact *= scale;
    return type.isScaled ? std::clamp(exact, -most - 1, most) : exact;
  };
  const long double allowed = tolerance * scale + (type.isScaled ? 0.5000001L : 0);
  size_t bad = 0, first = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    const long double re = std::abs(part(want[i].real()) - got[i].real());
    const long double im = std::abs(part(want[i].imag()) - got[i].imag());
    // Single-precision samples of sums in double precision are rounded once more.
    const long double stored =
        type.isScaled || type.sampleBytes == type.tapBytes ? 0 : std::abs(want[i]) * 0x1p-24L;
    if (re <= allowed + stored && im <= allowed + stored) continue;
    if (bad++ == 0) first = i;
  }
  EXPECT_EQ(0u, bad) << "the first at " << first << ": " << (bad != 0 ? got[first] : 0) << " for "
                     << (bad != 0 ? want[first] * scale : 0) << ", allowed " << allowed;
}

// Random stable filters: rounding errors are at most 8 units of the largest numbers inside, times the sum of the gains.
// Lengths at both sides of every way that a block may take.
TEST(Iir, RandomFilters) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n : {1, 2, 3, 5, 8, 13}) {
      const int order = form == IirForm::direct ? n : 2;
      for (int len : {1, 3, 7, 16, 4 * n, 4 * n + 1, 4 * n + 3, 100, 1025, 2100}) {
        const auto taps = stableTaps(random, type, form, n, order > 4 ? 0.8L : 0.95L);
        const int most = type.isScaled && type.sampleBytes <= 4 ? 1000 : 30000;
        const auto signal = wholeSignal(random, type, static_cast<size_t>(len), most);
        const auto line = wholeSignal(random, type, static_cast<size_t>(lineLength(form, n)), most);
        SCOPED_TRACE(describe(type, form, n, signal.size()));
        const int scaleFactor = static_cast<int>(random.below(7)) - 3;
        IirOracle oracle(form, n, taps, line);
        IirState state(type, form, n, taps, line);
        const auto want = oracle.run(signal);
        const auto got = state.run(signal, scaleFactor);
        const long double allowed = 8 * type.eps() * oracle.sensitivity(200);
        expectNear(type, want, got, allowed, scaleFactor);
        // It goes on from there.
        const auto more = wholeSignal(random, type, 20, most);
        const auto wantMore = oracle.run(more);
        expectNear(type, wantMore, state.run(more, scaleFactor), allowed, scaleFactor);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// Whole taps with poles on the unit circle and whole samples: nothing is rounded, by whichever way.
TEST(Iir, ExactFilters) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n : {1, 2, 4}) {
      for (int len : {1, 2, 3, 5, 9, 16, 17, 33, 50, 63}) {
        Numbers taps;
        const int sections = form == IirForm::direct ? 1 : n;
        for (int i = 0; i < sections; ++i) {
          const int order = form == IirForm::direct ? n : 2;
          Numbers b, a{1};
          for (int k = 0; k <= order; ++k) b.push_back(static_cast<int>(random.below(5)) - 2);
          if (form != IirForm::direct) b[0] = 1;
          // 1 / (1 - u/z^order) for a root of unity u, or with roots at angles of 60, 90 or 120 degrees.
          a.resize(static_cast<size_t>(order) + 1);
          const Number units[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
          a.back() = units[random.below(type.isComplex ? 4 : 2)];
          if (order == 2 && random.below(2) == 0) {
            a[1] = static_cast<int>(random.below(3)) - 1;
            a[2] = 1;
          }
          taps.insert(taps.end(), b.begin(), b.end());
          taps.insert(taps.end(), a.begin(), a.end());
        }
        const auto signal = wholeSignal(random, type, static_cast<size_t>(len), 2);
        const auto line = wholeSignal(random, type, static_cast<size_t>(lineLength(form, n)), 3);
        SCOPED_TRACE(describe(type, form, n, signal.size()));
        IirOracle oracle(form, n, taps, line);
        IirState state(type, form, n, taps, line);
        const auto want = oracle.run(signal);
        for (const Number x : want) {
          if (std::abs(x) > 32000) return;  // no longer exact everywhere
        }
        EXPECT_EQ(want, state.run(signal));
        if (!(form == IirForm::df1 && type.isDouble())) {
          EXPECT_EQ(oracle.line(), state.line(lineLength(form, n)));
        }
        EXPECT_EQ(oracle.run(signal)[0], state.run(signal)[0]);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// One sample at a time, in the stated order to the bit; short blocks give the same.
template <class T>
T product(T a, T b) {
  return a * b;
}
template <class P>
std::complex<P> product(std::complex<P> a, std::complex<P> b) {
  const P rr = a.real() * b.real(), ii = a.imag() * b.imag(), ri = a.real() * b.imag(),
          ir = a.imag() * b.real();
  return {rr - ii, ri + ir};
}
template <class T>
T reciprocal(T a) {
  return 1 / a;
}
template <class P>
std::complex<P> reciprocal(std::complex<P> a) {
  const P re2 = a.real() * a.real(), im2 = a.imag() * a.imag(), power = re2 + im2;
  return {a.real() / power, (0 - a.imag()) / power};
}
template <class T>
T fromNumber(Number x) {
  if constexpr (std::is_arithmetic_v<T>) {
    return static_cast<T>(x.real());
  } else {
    return T(x);
  }
}
template <class T>
Numbers stepsInOrder(IirForm form, int n, const Numbers& taps, const Numbers& line, const Numbers& signal) {
  const size_t order = form == IirForm::direct ? static_cast<size_t>(n) : 2,
               sections = form == IirForm::direct ? 1 : static_cast<size_t>(n);
  std::vector<T> b, a, d;
  for (size_t i = 0; i < sections; ++i) {
    const size_t at = i * (2 * order + 2);
    const T a0 = fromNumber<T>(taps[at + order + 1]), r = reciprocal(a0);
    const bool copied = form != IirForm::direct && a0 == T(1);
    const auto tap = [&](size_t k) {
      const T given = fromNumber<T>(taps[at + k]);
      return copied ? given : product(given, r);
    };
    for (size_t k = 0; k <= order; ++k) {
      b.push_back(tap(k));
      a.push_back(tap(order + 1 + k));
    }
    for (size_t k = 0; k < order; ++k) d.push_back(fromNumber<T>(line[i * order + k]));
    d.push_back(T(0));
  }
  Numbers out;
  for (const Number sample : signal) {
    T x = fromNumber<T>(sample);
    for (size_t i = 0; i < sections; ++i) {
      const size_t at = i * (order + 1);
      const T y = product(b[at], x) + d[at];
      for (size_t k = 1; k <= order; ++k) {
        const T bx = product(b[at + k], x), ay = product(a[at + k], y), next = d[at + k];
        if (form == IirForm::direct) {
          const T sum = bx - ay;
          d[at + k - 1] = sum + next;
        } else if (k == 1) {
          const T sum = bx + next;
          d[at] = sum - ay;
        } else {
          d[at + 1] = bx - ay;
        }
      }
      x = y;
    }
    out.push_back(Number(x));
  }
  return out;
}
Numbers stepsInOrder(const IirType& type, IirForm form, int n, const Numbers& taps, const Numbers& line,
                     const Numbers& signal) {
  if (type.isComplex) {
    return type.isDouble() ? stepsInOrder<std::complex<double>>(form, n, taps, line, signal)
                           : stepsInOrder<std::complex<float>>(form, n, taps, line, signal);
  }
  return type.isDouble() ? stepsInOrder<double>(form, n, taps, line, signal)
                         : stepsInOrder<float>(form, n, taps, line, signal);
}
long double stored(const IirType& type, long double y, int scaleFactor) {
  if (!type.isScaled) return type.sampleBytes == type.tapBytes ? y : static_cast<float>(y);
  const long double most = largest(type);
  return std::clamp(std::nearbyint(std::ldexp(y, -scaleFactor)), -most - 1, most) + 0.0L;
}

TEST(Iir, OneSampleAtATime) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    if (form == IirForm::df1) return;
    for (int n : {1, 2, 3, 4, 7, 16}) {
      const auto taps = stableTaps(random, type, form, n, 0.9L);
      const auto signal = wholeSignal(random, type, static_cast<size_t>(4 * n), 20000);
      const auto line = wholeSignal(random, type, static_cast<size_t>(lineLength(form, n)), 100);
      const int scaleFactor = static_cast<int>(random.below(5)) - 2;
      SCOPED_TRACE(describe(type, form, n, signal.size()));
      auto want = stepsInOrder(type, form, n, taps, line, signal);
      for (Number& y : want)
        y = {stored(type, y.real(), scaleFactor), type.isComplex ? stored(type, y.imag(), scaleFactor) : 0};
      IirState singly(type, form, n, taps, line);
      EXPECT_EQ(want, singly.runSingly(signal, scaleFactor));
      IirState block(type, form, n, taps, line);
      const bool isLong = type.name == "32f" && form == IirForm::cascade;  // from three samples on
      const size_t len = isLong ? 2 : signal.size();
      const auto got = block.run({signal.begin(), signal.begin() + static_cast<long>(len)}, scaleFactor);
      EXPECT_TRUE(std::equal(got.begin(), got.end(), want.begin()));
      if (testing::Test::HasFailure()) return;
    }
  });
}

// Scale factors of any size; zero stays zero.
TEST(Iir, ScaleFactors) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    if (!type.isScaled) return;
    Numbers taps(static_cast<size_t>(tapCount(form, 1)));
    taps[0] = 1;
    taps[form == IirForm::direct ? 2 : 3] = 1;
    const Numbers signal = {0, 1, -1, 2, 3, -5, 1000, -32768};
    const long double most = largest(type);
    for (int scaleFactor : {INT_MIN, -2000, -1024, -1023, -130, -128, -127, -40, -31,  -16,  -1,   0,
                            1,       2,     15,    16,    17,   126,  127,  128, 1022, 1023, 5000, INT_MAX}) {
      Numbers want;
      for (Number x : signal) {
        const long double y = scaleFactor > 60    ? 0
                              : scaleFactor < -60 ? x.real() * 1e30L
                                                  : std::ldexp(x.real(), -scaleFactor);
        want.push_back(std::clamp(std::nearbyint(y), -most - 1, most) + 0.0L);
      }
      IirState state(type, form, 1, taps);
      EXPECT_EQ(want, state.run(signal, scaleFactor)) << describe(type, form, 1, 8) << " " << scaleFactor;
      if (form == IirForm::df1) continue;
      EXPECT_EQ(want, state.runSingly(signal, scaleFactor))
          << describe(type, form, 1, 8) << " " << scaleFactor;
    }
  });
}

// A signal cut anywhere, its pieces run in every way there is, is the signal run in one piece.
TEST(Iir, StreamsInPieces) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n : {1, 2, 6}) {
      const auto taps = stableTaps(random, type, form, n, 0.85L);
      IirOracle oracle(form, n, taps);
      IirState state(type, form, n, taps);
      const int scaleFactor = type.isScaled ? -2 : 0;
      for (int piece = 0; piece < 40; ++piece) {
        const uint32_t most = random.below(10) == 0 ? 2500 : random.below(2) == 0 ? 100 : 5;
        const auto signal = wholeSignal(random, type, 1 + random.below(most), 500);
        const uint32_t way = random.below(form == IirForm::df1 ? 2 : 3);
        SCOPED_TRACE(describe(type, form, n, signal.size()) + ", way " + std::to_string(way));
        const auto want = oracle.run(signal);
        Numbers got;
        if (way == 0) {
          got = state.run(signal, scaleFactor);
        } else if (way == 1) {
          auto bytes = type.samples(signal);
          ASSERT_EQ(kvrStatusOk,
                    type.filterInPlace(bytes.data(), static_cast<int>(signal.size()), state, scaleFactor));
          got = type.samples(bytes);
        } else {
          got = state.runSingly(signal, scaleFactor);
        }
        expectNear(type, want, got, 8 * type.eps() * oracle.sensitivity(100), scaleFactor);
        if (testing::Test::HasFailure()) return;
      }
    }
  });
}

// Arrays at every byte offset, right before and right behind pages that may not be touched; in place the same bytes.
TEST(Iir, AlignmentAndBounds) {
  Random random;
  Arena srcArena(1200 * 16), dstArena(1200 * 16), tapsArena(4000), lineArena(4000);
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n : {1, 3}) {
      const auto numbers = stableTaps(random, type, form, n, 0.8L);
      const auto taps = type.taps(numbers);
      const auto line = type.taps(wholeSignal(random, type, static_cast<size_t>(lineLength(form, n)), 100));
      for (int len : {1, 2, 5, 13, 16, 33, 100, 1040}) {
        const auto src = type.samples(wholeSignal(random, type, static_cast<size_t>(len), 1000));
        std::vector<Kvr8u> want(src.size());
        void* state = nullptr;
        ASSERT_EQ(kvrStatusOk, type.initAlloc(form, &state, taps.data(), n, line.data()));
        ASSERT_EQ(kvrStatusOk, type.filter(src.data(), want.data(), len, state, 0));
        ASSERT_EQ(kvrStatusOk, type.free(state));
        for (size_t offset = 0; offset < 16; offset += 5) {
          for (Side side : {Side::front, Side::back}) {
            SCOPED_TRACE(describe(type, form, n, static_cast<size_t>(len)) + ", offset " +
                         std::to_string(offset));
            auto* tapsAt = tapsArena.place<Kvr8u>(taps.size(), side, offset);
            auto* lineAt = lineArena.place<Kvr8u>(line.size(), side, 15 - offset);
            auto* srcAt = srcArena.place<Kvr8u>(src.size(), side, offset * 9 % 64);
            auto* dstAt = dstArena.place<Kvr8u>(src.size(), side, offset * 13 % 64);
            std::copy(taps.begin(), taps.end(), tapsAt);
            std::copy(line.begin(), line.end(), lineAt);
            std::copy(src.begin(), src.end(), srcAt);
            ASSERT_EQ(kvrStatusOk, type.initAlloc(form, &state, tapsAt, n, lineAt));
            ASSERT_EQ(kvrStatusOk, type.filter(srcAt, dstAt, len, state, 0));
            EXPECT_EQ(0, memcmp(dstAt, want.data(), want.size()));
            EXPECT_TRUE(dstArena.intact());
            EXPECT_EQ(0, memcmp(srcAt, src.data(), src.size()));
            ASSERT_EQ(kvrStatusOk, type.setTaps(tapsAt, state));
            if (!(form == IirForm::df1 && type.isDouble())) {
              ASSERT_EQ(kvrStatusOk, type.setDlyLine(state, lineAt));
              ASSERT_EQ(kvrStatusOk, type.filterInPlace(srcAt, len, state, 0));
              EXPECT_EQ(0, memcmp(srcAt, want.data(), want.size()));
              ASSERT_EQ(kvrStatusOk, type.getDlyLine(state, lineAt));
            }
            EXPECT_TRUE(srcArena.intact() && tapsArena.intact() && lineArena.intact());
            ASSERT_EQ(kvrStatusOk, type.free(state));
          }
          if (testing::Test::HasFailure()) return;
        }
      }
    }
  });
}

// Poles close to the unit circle, double ones among them: look-ahead stays as close to the truth as single steps do.
TEST(Iir, PolesAtTheUnitCircle) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    const long double radius = type.isDouble() ? 0.9999L : 0.999L;
    for (long double angle : {0.0L, 0.001L, 0.3L, 1.0L, 1.5707963267948966L, 3.1415926535897932L}) {
      const int n = form == IirForm::direct ? 2 : 1;
      const Numbers given{1, 0.5L, 0.25L, 1, -2 * radius * std::cos(angle), radius * radius};
      const auto taps = type.taps(type.taps(given));
      const auto signal = wholeSignal(random, type, 5000, type.isScaled ? 5 : 1000);
      const int scaleFactor = type.isScaled ? 12 : 0;
      SCOPED_TRACE(describe(type, form, n, signal.size()) + ", angle " +
                   std::to_string(static_cast<double>(angle)));
      IirOracle oracle(form, n, taps);
      IirState state(type, form, n, taps);
      const auto want = oracle.run(signal);
      expectNear(type, want, state.run(signal, scaleFactor),
                 8 * type.eps() * oracle.sensitivity(static_cast<size_t>(6 / (1 - radius))), scaleFactor);
    }
  });
}

// An unstable filter runs on, to infinity or the end of the range.
TEST(Iir, UnstableFilters) {
  forAllForms([&](const IirType& type, IirForm form) {
    const int n = form == IirForm::direct ? 2 : 1;
    IirState state(type, form, n, {1, 0, 0, 1, -3, 1});
    const auto got = state.run(Numbers(1500, 1));
    const long double last = std::abs(got.back().real());
    EXPECT_TRUE(type.isScaled ? last >= largest(type) : !std::isfinite(last))
        << describe(type, form, n, 1500) << last;
  });
}

// Several channels are separate calls.
TEST(Iir, Channels) {
  Random random;
  const IirType& type = *iirTypes()[0];
  for (IirForm form : {IirForm::cascade, IirForm::df1}) {
    for (int channels : {1, 2, 3, 4, 5}) {
      for (int len : {1, 2, 3, 16, 100, 1500}) {
        std::vector<std::unique_ptr<IirState>> states, again;
        std::vector<std::vector<Kvr32f>> src, dst;
        std::vector<KvrsIIRState_32f*> pointers;
        std::vector<const Kvr32f*> from;
        std::vector<Kvr32f*> to;
        std::vector<Numbers> want;
        for (int i = 0; i < channels; ++i) {
          const int n = 1 + static_cast<int>(random.below(4));
          const auto taps = stableTaps(random, type, form, n, 0.9L);
          states.push_back(std::make_unique<IirState>(type, form, n, taps));
          again.push_back(std::make_unique<IirState>(type, form, n, taps));
          const auto signal = wholeSignal(random, type, static_cast<size_t>(len), 100);
          want.push_back(again.back()->run(signal));
          src.emplace_back(signal.size());
          for (size_t k = 0; k < signal.size(); ++k) src.back()[k] = static_cast<Kvr32f>(signal[k].real());
          dst.emplace_back(signal.size());
        }
        for (int i = 0; i < channels; ++i) {
          pointers.push_back(
              static_cast<KvrsIIRState_32f*>(static_cast<void*>(*states[static_cast<size_t>(i)])));
          from.push_back(src[static_cast<size_t>(i)].data());
          to.push_back(dst[static_cast<size_t>(i)].data());
        }
        ASSERT_EQ(kvrStatusOk, kvrsIIR_32f_P(from.data(), to.data(), len, channels, pointers.data()));
        const auto check = [&](const std::vector<std::vector<Kvr32f>>& got, const char* what) {
          for (size_t i = 0; i < got.size(); ++i) {
            for (size_t k = 0; k < got[i].size(); ++k) {
              ASSERT_NEAR(static_cast<double>(want[i][k].real()), got[i][k], 1e-3)
                  << what << " channel " << i << " of " << channels << ", sample " << k << " of " << len;
            }
          }
        };
        check(dst, "to");
        for (auto& state : states) EXPECT_EQ(kvrStatusOk, type.setDlyLine(*state, nullptr));
        to.clear();
        for (auto& channel : src) to.push_back(channel.data());
        ASSERT_EQ(kvrStatusOk, kvrsIIR_32f_IP(to.data(), len, channels, pointers.data()));
        check(src, "in place");
        if (HasFailure()) return;
      }
    }
  }
}

TEST(Iir, ChannelsOfIntegers) {
  Random random;
  const IirType& type = *iirTypes()[10];
  for (IirForm form : kForms) {
    for (int len : {1, 2, 40, 1500}) {
      constexpr int kCount = 3;
      const int scaleFactor[kCount] = {0, 2, -1};
      std::vector<Kvr32s> src[kCount], dst[kCount];
      const Kvr32s* from[kCount];
      Kvr32s* to[kCount];
      KvrsIIRState64f_32s* pointers[kCount];
      std::unique_ptr<IirState> states[kCount];
      Numbers want[kCount];
      for (int i = 0; i < kCount; ++i) {
        const int n = 1 + i;
        const auto taps = stableTaps(random, type, form, n, 0.9L);
        states[i] = std::make_unique<IirState>(type, form, n, taps);
        IirState separate(type, form, n, taps);
        const auto signal = wholeSignal(random, type, static_cast<size_t>(len), 10000);
        want[i] = separate.run(signal, scaleFactor[i]);
        src[i].resize(signal.size());
        for (size_t k = 0; k < signal.size(); ++k) src[i][k] = static_cast<Kvr32s>(signal[k].real());
        dst[i].resize(signal.size());
        from[i] = src[i].data();
        to[i] = dst[i].data();
        pointers[i] = static_cast<KvrsIIRState64f_32s*>(static_cast<void*>(*states[i]));
      }
      ASSERT_EQ(kvrStatusOk, kvrsIIR64f_32s_PSfs(from, to, len, kCount, pointers, scaleFactor));
      for (int i = 0; i < kCount; ++i) {
        for (size_t k = 0; k < dst[i].size(); ++k) ASSERT_EQ(want[i][k].real(), dst[i][k]) << i << " " << k;
      }
      if (form != IirForm::df1) {
        for (auto& state : states) EXPECT_EQ(kvrStatusOk, type.setDlyLine(*state, nullptr));
        for (int i = 0; i < kCount; ++i) to[i] = src[i].data();
        ASSERT_EQ(kvrStatusOk, kvrsIIR64f_32s_IPSfs(to, len, kCount, pointers, scaleFactor));
        for (int i = 0; i < kCount; ++i) {
          for (size_t k = 0; k < dst[i].size(); ++k) ASSERT_EQ(want[i][k].real(), src[i][k]) << i << " " << k;
        }
      }
    }
  }
}

// What is tested of channels, in which order.
TEST(Iir, ChannelChecks) {
  Random random;
  const IirType &floats = *iirTypes()[0], &integers = *iirTypes()[10];
  const auto state32f = [&](IirForm form) {
    return std::make_unique<IirState>(floats, form, 1, stableTaps(random, floats, form, 1, 0.5L));
  };
  const auto direct = state32f(IirForm::direct), cascade = state32f(IirForm::cascade),
             df1 = state32f(IirForm::df1);
  const auto as = [](const std::unique_ptr<IirState>& state) {
    return static_cast<KvrsIIRState_32f*>(static_cast<void*>(*state));
  };
  Kvr32f x[4] = {1, 2, 3, 4}, y[4] = {9, 9, 9, 9};
  const Kvr32f* src[2] = {x, x};
  Kvr32f* dst[2] = {y, y};
  KvrsIIRState_32f* states[2] = {as(direct), as(cascade)};
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIR_32f_P(nullptr, dst, 0, 0, states));
  EXPECT_EQ(kvrStatusBadLength, kvrsIIR_32f_P(src, dst, 0, 0, states));
  EXPECT_EQ(kvrStatusBadChannelCount, kvrsIIR_32f_P(src, dst, 4, 0, states));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIR_32f_P(src, dst, 4, 1, states));
  states[0] = as(cascade);
  states[1] = as(df1);
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIR_32f_P(src, dst, 4, 2, states));
  states[1] = nullptr;
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIR_32f_P(src, dst, 4, 2, states));
  states[1] = as(cascade);
  dst[1] = nullptr;
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIR_32f_P(src, dst, 4, 2, states));
  EXPECT_EQ(9, y[0]);

  const auto state64f = [&](IirForm form) {
    return std::make_unique<IirState>(integers, form, 1, stableTaps(random, integers, form, 1, 0.5L));
  };
  const auto direct64 = state64f(IirForm::direct), cascade64 = state64f(IirForm::cascade);
  const auto as64 = [](const std::unique_ptr<IirState>& state) {
    return static_cast<KvrsIIRState64f_32s*>(static_cast<void*>(*state));
  };
  Kvr32s u[4] = {1, 2, 3, 4}, v[4] = {9, 9, 9, 9};
  const Kvr32s* src64[2] = {u, u};
  Kvr32s* dst64[2] = {v, v};
  KvrsIIRState64f_32s* states64[2] = {as64(direct64), as64(cascade64)};
  const int scale[2] = {};
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIR64f_32s_PSfs(src64, dst64, 0, 0, states64, nullptr));
  EXPECT_EQ(kvrStatusBadLength, kvrsIIR64f_32s_PSfs(src64, dst64, 0, 0, states64, scale));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIR64f_32s_PSfs(src64, dst64, 4, 0, states64, scale));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIR64f_32s_PSfs(src64, dst64, 4, 2, states64, scale));
  states64[0] = as64(cascade64);
  EXPECT_EQ(kvrStatusOk, kvrsIIR64f_32s_PSfs(src64, dst64, 4, 0, states64, scale));
  states64[0] = nullptr;
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIR64f_32s_PSfs(src64, dst64, 4, 1, states64, scale));
  EXPECT_EQ(9, v[0]);
}

// The df1 form in doubles keeps inputs and outputs, seen as integers.
TEST(Iir, Df1OfDoubles) {
  const Kvr64f taps[12] = {1, 2, 1, 1, -0.5, 0.25, 1, 0, -1, 2, 1, 0.5};
  const Kvr64f line[8] = {3, -4, 5, 6, 7, 8, -9, 10};
  for (int len : {1, 2, 3, 8, 9, 30, 1025}) {
    KvrsIIRState64f_32s* state;
    ASSERT_EQ(kvrStatusOk, kvrsIIRInitAlloc64f_BiQuad_DF1_32s(&state, taps, 2, line));
    Kvr32s got[8];
    ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, got));
    for (int i = 0; i < 8; ++i) EXPECT_EQ(line[i], got[i]);
    const IirType& type = *iirTypes()[10];
    Random random;
    const auto signal = wholeSignal(random, type, static_cast<size_t>(len), 1000);
    IirOracle oracle(IirForm::df1, 2, Numbers(taps, taps + 12), Numbers(line, line + 8));
    oracle.run(signal);
    std::vector<Kvr8u> src = type.samples(signal);
    ASSERT_EQ(kvrStatusOk, type.filterInPlace(src.data(), len, state, 0));
    ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, got));
    const auto want = oracle.line();
    for (size_t i = 0; i < 8; ++i)
      EXPECT_NEAR(static_cast<double>(want[i].real()), got[i], 0.5001) << len << " " << i;
    const Kvr32s other[8] = {1, 2, 3, 4, 5, 6, 7, -8};
    ASSERT_EQ(kvrStatusOk, kvrsIIRSetDlyLine64f_DF1_32s(state, other));
    ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, got));
    EXPECT_EQ(0, memcmp(other, got, sizeof got));
    ASSERT_EQ(kvrStatusOk, kvrsIIRSetDlyLine64f_DF1_32s(state, nullptr));
    ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, got));
    for (Kvr32s value : got) EXPECT_EQ(0, value);
    EXPECT_EQ(kvrStatusOk, kvrsIIRFree64f_32s(state));
  }
  // Not on other contexts.
  KvrsIIRState64f_32s* cascade;
  ASSERT_EQ(kvrStatusOk, kvrsIIRInitAlloc64f_BiQuad_32s(&cascade, taps, 2, nullptr));
  Kvr32s got[8] = {};
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIRGetDlyLine64f_DF1_32s(cascade, got));
  EXPECT_EQ(kvrStatusContextMismatch, kvrsIIRSetDlyLine64f_DF1_32s(cascade, got));
  EXPECT_EQ(kvrStatusOk, kvrsIIRFree64f_32s(cascade));
}

// With a2 = 0 the last output is taken as it was stored, but for a single sample of a single section.
TEST(Iir, Df1OfDoublesWithoutA2) {
  const Kvr64f taps[6] = {0.5, 0, 0, 1, -1, 0};
  const Kvr32s x[3] = {3, 5, 6};
  Kvr32s y[3], line[4];
  KvrsIIRState64f_32s* state;
  ASSERT_EQ(kvrStatusOk, kvrsIIRInitAlloc64f_BiQuad_DF1_32s(&state, taps, 1, nullptr));
  ASSERT_EQ(kvrStatusOk, kvrsIIR64f_32s_Sfs(x, y, 1, state, 1));
  EXPECT_EQ(1, y[0]);  // 1.5 / 2
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, line));
  EXPECT_EQ(3, line[1]);
  EXPECT_EQ(2, line[3]);  // of 1.5
  ASSERT_EQ(kvrStatusOk, kvrsIIR64f_32s_Sfs(x + 1, y + 1, 2, state, 1));
  EXPECT_EQ(2, y[1]);  // (1.5 + 2.5) / 2
  EXPECT_EQ(4, y[2]);  // (4 + 3) / 2
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetDlyLine64f_DF1_32s(state, line));
  EXPECT_EQ(5, line[0]);
  EXPECT_EQ(6, line[1]);
  EXPECT_EQ(0, line[2]);
  EXPECT_EQ(8, line[3]);  // 4 * 2
  EXPECT_EQ(kvrStatusOk, kvrsIIRFree64f_32s(state));
}

}  // namespace
