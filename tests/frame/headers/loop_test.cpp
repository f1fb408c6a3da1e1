// SPDX-License-Identifier: MIT
#include "frame/loop.h"

#include <vector>

#include "tests/support/arena.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

struct AddOp {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b) const {
    return hn::Add(a, b);
  }
};

struct AddThreeOp {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a, V b, V c) const {
    return hn::Add(hn::Add(a, b), c);
  }
};

struct ConstantOp {
  int32_t val;
  template <class D>
  KVRS_INLINE auto operator()(D d) const {
    return hn::Set(d, val);
  }
};

struct WidenOp {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return hn::PromoteTo(d, a);
  }
};

struct NarrowOp {
  template <class D, class V>
  KVRS_INLINE auto operator()(D d, V a) const {
    return hn::DemoteTo(d, a);
  }
};

// Real times complex: sources and destination of different kinds.
struct ScaleOp {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, V a, Complex<V> b) const {
    return {hn::Mul(a, b.re), hn::Mul(a, b.im)};
  }
};

// The sum of both parts, over pairs: the tag has two lanes for an element.
struct SwapPartsOp {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    static_assert(hn::MaxLanes(D()) % 2 == 0);
    return hn::Reverse2(d, a);
  }
};

struct AddOneOp {
  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) const {
    return hn::Add(a, hn::Set(d, hn::TFromD<D>(1)));
  }
};

struct SameOp {
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    return a;
  }
};

// Lengths around one, two and four blocks of the widest vectors, and around many turns.
SweepOptions lengths() {
  return {.lengths = sweepLengths({4 * 64, 8 * 64, 12 * 64})};
}

TEST(Loop, TwoSources) {
  const auto call = [](const Kvr16u* a, const Kvr16u* b, Kvr16u* dst, int len) {
    return mapElements(AddOp(), dst, static_cast<size_t>(len), a, b);
  };
  const auto sum = [](Kvr16u a, Kvr16u b) { return static_cast<Kvr16u>(a + b); };
  sweepMap<Kvr16u, Kvr16u, Kvr16u>(call, sum, lengths());
  sweepInPlace<Kvr16u, Kvr16u>(
      [=](const Kvr16u* src, Kvr16u* srcDst, int len) { return call(src, srcDst, srcDst, len); }, sum,
      lengths());
  sweepInPlace<Kvr16u>([=](Kvr16u* srcDst, int len) { return call(srcDst, srcDst, srcDst, len); },
                       [=](Kvr16u a) { return sum(a, a); }, lengths());
}

TEST(Loop, NoSourceAndThree) {
  sweepMap<Kvr32s>(
      [](Kvr32s* dst, int len) { return mapElements(ConstantOp{-7}, dst, static_cast<size_t>(len)); },
      [] { return Kvr32s{-7}; }, lengths());
  sweepMap<Kvr32u, Kvr32u, Kvr32u, Kvr32u>(
      [](const Kvr32u* a, const Kvr32u* b, const Kvr32u* c, Kvr32u* dst, int len) {
        return mapElements(AddThreeOp(), dst, static_cast<size_t>(len), a, b, c);
      },
      [](Kvr32u a, Kvr32u b, Kvr32u c) { return a + b + c; }, lengths());
}

TEST(Loop, DifferentWidths) {
  sweepMap<Kvr32s, Kvr16s>([](const Kvr16s* src, Kvr32s* dst,
                              int len) { return mapElements(WidenOp(), dst, static_cast<size_t>(len), src); },
                           [](Kvr16s a) { return Kvr32s{a}; }, lengths());
  sweepMap<Kvr16s, Kvr32s>(
      [](const Kvr32s* src, Kvr16s* dst, int len) {
        return mapElements(NarrowOp(), dst, static_cast<size_t>(len), src);
      },
      [](Kvr32s a) { return static_cast<Kvr16s>(std::clamp(a, -32768, 32767)); }, lengths());
  sweepMap<Kvr32s, Kvr8u>([](const Kvr8u* src, Kvr32s* dst,
                             int len) { return mapElements(WidenOp(), dst, static_cast<size_t>(len), src); },
                          [](Kvr8u a) { return Kvr32s{a}; }, lengths());
}

TEST(Loop, ComplexElements) {
  const auto call = [](const Kvr32f* a, const Kvr32fc* b, Kvr32fc* dst, int len) {
    return mapElements(ScaleOp(), dst, static_cast<size_t>(len), a, b);
  };
  const auto oracle = [](Kvr32f a, Kvr32fc b) { return Kvr32fc{a * b.re, a * b.im}; };
  sweepMap<Kvr32fc, Kvr32f, Kvr32fc>(call, oracle, lengths());
  sweepInPlace<Kvr32fc, Kvr32f>(
      [=](const Kvr32f* a, Kvr32fc* srcDst, int len) { return call(a, srcDst, srcDst, len); }, oracle,
      lengths());
}

TEST(Loop, Pairs) {
  const auto swapped = [](auto a) { return decltype(a){a.im, a.re}; };
  sweepMap<Kvr64fc, Kvr64fc>(
      [](const Kvr64fc* src, Kvr64fc* dst, int len) {
        return mapElements(SwapPartsOp(), asPairs<Kvr64f>(dst), static_cast<size_t>(len),
                           asPairs<Kvr64f>(src));
      },
      swapped, lengths());
  sweepInPlace<Kvr32fc>(
      [](Kvr32fc* srcDst, int len) {
        const Pair<Kvr32f>* src = asPairs<Kvr32f>(static_cast<const Kvr32fc*>(srcDst));
        return mapElements(SwapPartsOp(), asPairs<Kvr32f>(srcDst), static_cast<size_t>(len), src);
      },
      swapped, lengths());
}

TEST(Loop, NothingToDo) {
  Kvr32s element = 5;
  EXPECT_EQ(kvrStatusOk, mapElements(ConstantOp{1}, &element, 0));
  EXPECT_EQ(5, element);
  const Kvr32s source = 7;
  EXPECT_EQ(kvrStatusOk, mapElements(WidenOp(), &element, 0, reinterpret_cast<const Kvr16s*>(&source)));
  EXPECT_EQ(5, element);
}

// Two planes, of which a source may be one.
struct PartsOp {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, Complex<V> z) const {
    return z;
  }
};

TEST(Loop, TwoResults) {
  for (int len : sweepLengths({4 * 64, 16 * 64, 64 * 64})) {
    for (size_t offset : {0, 4, 36}) {
      const size_t n = static_cast<size_t>(len);
      std::vector<Kvr32fc> src(n);
      for (size_t i = 0; i < n; ++i) src[i] = {static_cast<Kvr32f>(i), -static_cast<Kvr32f>(i)};
      Arena reArena(n * sizeof(Kvr32f)), imArena(n * sizeof(Kvr32f));
      Kvr32f* const re = reArena.place<Kvr32f>(n, Side::back, offset);
      Kvr32f* const im = imArena.place<Kvr32f>(n, Side::front, offset);
      ASSERT_EQ(kvrStatusOk, mapElements(PartsOp(), Planes<Kvr32f>{re, im}, n, src.data()));
      for (size_t i = 0; i < n; ++i) {
        ASSERT_EQ(static_cast<Kvr32f>(i), re[i]) << len;
        ASSERT_EQ(-static_cast<Kvr32f>(i), im[i]) << len;
      }
      EXPECT_TRUE(reArena.intact());
      EXPECT_TRUE(imArena.intact());
    }
  }
}

TEST(Loop, Downward) {
  sweepMap<Kvr16u, Kvr16u>(
      [](const Kvr16u* src, Kvr16u* dst, int len) {
        return mapElements(AddOneOp(), Downward<Kvr16u>{dst + len}, static_cast<size_t>(len),
                           Downward<const Kvr16u>{src + len});
      },
      [](Kvr16u a) { return static_cast<Kvr16u>(a + 1); }, lengths());
  // A destination above its source, over which it lies.
  for (int len : sweepLengths({64 * 64})) {
    for (int above : {1, 3, 16, 33}) {
      std::vector<Kvr8u> data(static_cast<size_t>(len + above)), want = data;
      for (int i = 0; i < len; ++i) data[i] = static_cast<Kvr8u>(i * 7);
      for (int i = 0; i < len; ++i) want[i + above] = static_cast<Kvr8u>(i * 7 + 1);
      Kvr8u* const end = data.data() + len;
      mapElements(AddOneOp(), Downward<Kvr8u>{end + above}, static_cast<size_t>(len),
                  Downward<const Kvr8u>{end});
      for (int i = above; i < len + above; ++i)
        ASSERT_EQ(want[i], data[i]) << len << " " << above << " " << i;
    }
  }
}

template <class T>
void checkBackward() {
  for (int len : sweepLengths({4 * 64, 64 * 64})) {
    const size_t n = static_cast<size_t>(len);
    Arena from(n * sizeof(T)), to(n * sizeof(T));
    T* const src = from.place<T>(n, len % 2 ? Side::front : Side::back, 0);
    T* const dst = to.place<T>(n, len % 2 ? Side::back : Side::front, 0);
    for (size_t i = 0; i < n * sizeof(T); ++i)
      reinterpret_cast<Kvr8u*>(src)[i] = static_cast<Kvr8u>(i * 11 + i / 256);
    ASSERT_EQ(kvrStatusOk, mapElements(SameOp(), dst, n, Backward<T>{src + n}));
    for (size_t i = 0; i < n; ++i)
      ASSERT_EQ(0, memcmp(src + i, dst + (n - 1 - i), sizeof(T))) << len << " " << i;
    ASSERT_TRUE(to.intact());
  }
}

TEST(Loop, Backward) {
  checkBackward<Kvr8u>();
  checkBackward<Kvr16u>();
  checkBackward<Kvr32u>();
  checkBackward<Kvr64u>();
  checkBackward<Pair<Kvr64u>>();
}

TEST(Loop, Counter) {
  for (int len : sweepLengths({16 * 64})) {
    std::vector<Kvr32s> ints(static_cast<size_t>(len) + 1, -1);
    std::vector<Kvr64f> floats(static_cast<size_t>(len) + 1, -1);
    const size_t n = static_cast<size_t>(len);
    ASSERT_EQ(kvrStatusOk, mapElements(SameOp(), ints.data(), n, Counter<Kvr32s>{5}));
    ASSERT_EQ(kvrStatusOk, mapElements(SameOp(), floats.data(), n, Counter<Kvr64f>{0.5}));
    for (int i = 0; i < len; ++i) {
      ASSERT_EQ(5 + i, ints[i]) << len;
      ASSERT_EQ(0.5 + i, floats[i]) << len;
    }
    EXPECT_EQ(-1, ints[n]);
    EXPECT_EQ(-1, floats[n]);
  }
}

// Each element once and in order, and lanes without an element as copies of one: sums of blocks, as they come.
struct SumOp {
  double sum = 0;
  int lanes = 0;
  bool foreign = false;

  template <class D, class V>
  KVRS_INLINE V operator()(D d, V a) {
    const hn::Rebind<double, D> wide;
    sum += hn::GetLane(hn::SumOfLanes(wide, hn::PromoteTo(wide, a)));
    lanes += static_cast<int>(hn::MaxLanes(D()));
    foreign |= !hn::AllFalse(d, hn::Eq(a, hn::Zero(d)));
    return hn::Add(a, a);
  }
};

TEST(Loop, KeepsSomethingFromBlockToBlock) {
  for (int len : sweepLengths()) {
    std::vector<Kvr32f> data(static_cast<size_t>(len), 3);
    const SumOp op = mapKeeping<double>(SumOp(), data.data(), data.size(), data.data());
    // The lanes without an element are counted as the first of their block, which is 3 too.
    EXPECT_EQ(3.0 * op.lanes, op.sum);
    EXPECT_LT(op.lanes - len, static_cast<int>(kLanes<double>));
    EXPECT_FALSE(op.foreign) << len;
    for (Kvr32f x : data) ASSERT_EQ(6, x) << len;
  }
}

TEST(Loop, MoreBytesThanAnAddressCounts) {
  if constexpr (sizeof(size_t) == 4) {
    Kvr32s element = 5;
    EXPECT_EQ(kvrStatusBadLength, mapElements(ConstantOp{1}, &element, size_t{1} << 30));
    EXPECT_EQ(kvrStatusBadLength, mapElements(ConstantOp{1}, &element, (size_t{1} << 30) + 1));
    EXPECT_EQ(5, element);
  } else {
    EXPECT_TRUE(loop_detail::fitsAddress(0x7FFFFFFF, 16));
  }
}

// How often, and with how many lanes, the functor runs.
struct CountingOp {
  int* calls;
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    static_assert(hn::MaxLanes(D()) == kLanes<Kvr32u>, "full vectors only");
    ++*calls;
    return a;
  }
};
struct HeavyCountingOp : CountingOp {
  static constexpr bool kIsHeavy = true;
};

TEST(Loop, FewCalls) {
  constexpr size_t N = kLanes<Kvr32u>;
  alignas(64) Kvr32u data[128 * N] = {};
  for (size_t len : {size_t{1}, N - 1, N, 2 * N, 4 * N, 5 * N, 32 * N, 33 * N + 1, 100 * N}) {
    int calls = 0;
    mapElements(CountingOp{&calls}, data, len, data);
    EXPECT_EQ(static_cast<int>((len + N - 1) / N), calls) << len;
    calls = 0;
    mapElements(HeavyCountingOp{{&calls}}, data, len, data);
    EXPECT_EQ(static_cast<int>((len + N - 1) / N), calls) << len;
  }
}

}  // namespace
