// SPDX-License-Identifier: MIT
#include "frame/loop.h"

#include <type_traits>
#include <vector>

#include "frame/loop_two.h"

#include "tests/support/large.h"
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

// The last destination cannot be aligned to its elements.
TEST(Loop, BeyondTheCache) {
  for (size_t offset : {0, 4, 1}) {
    LargeVector<Kvr32u> src, dst(offset);
    for (int i = 0; i < src.size(); ++i) src.data()[i] = static_cast<Kvr32u>(i) * 2654435761u;
    ASSERT_EQ(kvrStatusOk,
              mapElements(AddOp(), dst.data(), static_cast<size_t>(dst.size()),
                          static_cast<const Kvr32u*>(src.data()), static_cast<const Kvr32u*>(src.data())));
    dst.expect([](size_t i) { return static_cast<Kvr32u>(i) * 2654435761u * 2; });
  }
}

struct PartsOp {
  template <class D, class V>
  KVRS_INLINE Complex<V> operator()(D, Complex<V> z) const {
    return z;
  }
};

// From the length on that is far, with one element before and behind each destination that must stay.
TEST(Loop, TwoResultsBeyondTheCache) {
  const size_t far = loop_detail::kFarBytes / loop_detail::kBytesPerElement<Kvr32f, Kvr32f, Kvr32fc>;
  for (size_t len : {far - 1, far, far + 1, far + 37}) {
    std::vector<Kvr32fc> src(len);
    for (size_t i = 0; i < len; ++i) src[i] = {static_cast<Kvr32f>(i), -static_cast<Kvr32f>(i)};
    std::vector<Kvr32f> re(len + 2, 0.5f), im(len + 2, 0.5f);
    ASSERT_EQ(kvrStatusOk, mapToTwo(PartsOp(), re.data() + 1, im.data() + 1, len,
                                    static_cast<const Kvr32fc*>(src.data())));
    for (size_t i = 0; i < len; ++i) {
      ASSERT_EQ(static_cast<Kvr32f>(i), re[i + 1]) << len;
      ASSERT_EQ(-static_cast<Kvr32f>(i), im[i + 1]) << len;
    }
    for (size_t i : {size_t{0}, len + 1}) {
      EXPECT_EQ(0.5f, re[i]);
      EXPECT_EQ(0.5f, im[i]);
    }
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
  size_t* mostLanes;
  template <class D, class V>
  KVRS_INLINE V operator()(D, V a) const {
    ++*calls;
    *mostLanes = std::max(*mostLanes, hn::MaxLanes(D()));
    return a;
  }
};

TEST(Loop, FewCallsOfFullVectors) {
  constexpr size_t N = kLanes<Kvr32u>;
  alignas(64) Kvr32u data[64 * N] = {};
  for (size_t len : {N, 2 * N, 4 * N, 5 * N, 32 * N, 33 * N + 1}) {
    int calls = 0;
    size_t mostLanes = 0;
    mapElements(CountingOp{&calls, &mostLanes}, data, len, static_cast<const Kvr32u*>(data));
    EXPECT_EQ(N, mostLanes);
    EXPECT_LE(calls, static_cast<int>((len + N - 1) / N) + 1) << len;
  }
}

}  // namespace
