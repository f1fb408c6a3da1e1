// SPDX-License-Identifier: MIT
#include "frame/reduce.h"

#include <numeric>
#include <vector>

#include "tests/support/reduction.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

struct Join {
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Add(a, b);
  }
};
struct SumOp : Join {
  template <class V>
  KVRS_INLINE void operator()(V& sum, V x) const {
    sum = hn::Add(sum, x);
  }
};
struct SumOfProducts : Join {
  template <class V>
  KVRS_INLINE void operator()(V& sum, V x, V y) const {
    sum = hn::Add(sum, hn::Mul(x, y));
  }
};
// Elements widened, and complex ones taken apart.
struct SumWidened : Join {
  template <class V, class X>
  KVRS_INLINE void operator()(V& sum, X x) const {
    sum = hn::Add(sum, hn::PromoteTo(hn::DFromV<V>(), x));
  }
};
struct SumOfDifferences : Join {
  template <class V>
  KVRS_INLINE void operator()(V& sum, Complex<V> x) const {
    sum = hn::Add(sum, hn::Sub(x.re, x.im));
  }
};
struct Most {
  static constexpr bool kIdempotent = true;
  template <class V>
  KVRS_INLINE void operator()(V& most, V x) const {
    most = hn::Max(most, x);
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Max(a, b);
  }
};
// Products, to which 1 is neutral.
struct ProductOp {
  static constexpr uint32_t rest() { return 1; }
  template <class V>
  KVRS_INLINE void operator()(V& product, V x) const {
    product = hn::Mul(product, x);
  }
  template <class V>
  KVRS_INLINE void join(V& a, V b) const {
    a = hn::Mul(a, b);
  }
};
struct MaxLanes {
  template <class V>
  KVRS_INLINE V operator()(V a, V b) const {
    return hn::Max(a, b);
  }
};

template <class T>
using Full = Lanes<T, kLanes<T>>;

SweepOptions lengths() {
  return {.lengths = sweepLengths({8 * 64, 2048, 4096})};
}

template <class T>
T sumOf(const T* src, int len) {
  T sum = 0;
  for (int i = 0; i < len; ++i) sum = static_cast<T>(sum + get(src, static_cast<size_t>(i)));
  return sum;
}

template <class T, int k>
void checkSum() {
  sweepReduction<T, T>(
      [](const T* src, int len, T* sum) {
        *sum = sumLanes(reduce<T, k>(SumOp(), hn::Zero(Full<T>()), static_cast<size_t>(len), src));
        return kvrStatusOk;
      },
      sumOf<T>, lengths());
}

TEST(Reduce, EveryElementOnce) {
  checkSum<uint8_t, 1>();
  checkSum<uint16_t, 2>();
  checkSum<uint32_t, 4>();
  checkSum<uint64_t, 8>();
}

TEST(Reduce, TwoSources) {
  sweepReduction<uint32_t, uint32_t, uint32_t>(
      [](const uint32_t* a, const uint32_t* b, int len, uint32_t* sum) {
        *sum = sumLanes(
            reduce<uint32_t, 2>(SumOfProducts(), hn::Zero(Full<uint32_t>()), static_cast<size_t>(len), a, b));
        return kvrStatusOk;
      },
      [](const uint32_t* a, const uint32_t* b, int len) {
        uint32_t sum = 0;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) sum += get(a, i) * get(b, i);
        return sum;
      },
      lengths());
}

TEST(Reduce, WidenedAndComplexElements) {
  sweepReduction<int32_t, int16_t>(
      [](const int16_t* src, int len, int32_t* sum) {
        *sum = sumLanes(
            reduce<int32_t, 4>(SumWidened(), hn::Zero(Full<int32_t>()), static_cast<size_t>(len), src));
        return kvrStatusOk;
      },
      [](const int16_t* src, int len) {
        int32_t sum = 0;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) sum += get(src, i);
        return sum;
      },
      lengths());
  sweepReductionWith<Kvr64f, Kvr64fc>(
      [](const Kvr64fc* src, int len, Kvr64f* sum) {
        *sum = sumLanes(
            reduce<Kvr64f, 2>(SumOfDifferences(), hn::Zero(Full<Kvr64f>()), static_cast<size_t>(len), src));
        return kvrStatusOk;
      },
      exactly<Kvr64f>([](const Kvr64fc* src, int len) {
        Kvr64f sum = 0;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) sum += get(src, i).re - get(src, i).im;
        return sum;
      }),
      // Whole numbers, so that the order makes no difference.
      [](Random& random, size_t, auto) {
        const Kvr64f re = random.below(1000);
        return Kvr64fc{re, static_cast<Kvr64f>(random.below(1000)) + 0.5};
      },
      lengths());
}

// Nothing but elements: zeros would be larger than these, and smaller.
TEST(Reduce, IdempotentOperations) {
  const auto draw = [](Random& random, size_t, auto) {
    return -1 - static_cast<int16_t>(random.below(1000));
  };
  sweepReductionWith<int16_t, int16_t>(
      [](const int16_t* src, int len, int16_t* most) {
        const auto start = hn::Set(Full<int16_t>(), int16_t{-32768});
        *most = foldLanes(reduce<int16_t, 4>(Most(), start, static_cast<size_t>(len), src), MaxLanes());
        return kvrStatusOk;
      },
      exactly<int16_t>([](const int16_t* src, int len) {
        int16_t most = -32768;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) most = std::max(most, get(src, i));
        return most;
      }),
      draw, lengths());
}

TEST(Reduce, OtherNeutralElements) {
  sweepReduction<uint32_t, uint32_t>(
      [](const uint32_t* src, int len, uint32_t* product) {
        const auto start = hn::Set(Full<uint32_t>(), 1u);
        const auto all = reduce<uint32_t, 2>(ProductOp(), start, static_cast<size_t>(len), src);
        *product = foldLanes(all, [](auto a, auto b) { return hn::Mul(a, b); });
        return kvrStatusOk;
      },
      [](const uint32_t* src, int len) {
        uint32_t product = 1;
        for (size_t i = 0; i < static_cast<size_t>(len); ++i) product *= get(src, i);
        return product;
      },
      lengths());
}

// Element i is in lane i mod 16 of the accumulators, whatever a vector holds.
TEST(Reduce, LanesGoByPosition) {
  Random random(1);
  for (int len = 0; len < 200; ++len) {
    std::vector<float> src(static_cast<size_t>(len));
    for (auto& x : src) x = static_cast<float>(random.unit());
    constexpr int k = kLanesOf<float, 16>;
    hn::Vec<Full<float>> acc[k];
    for (auto& a : acc) a = hn::Zero(Full<float>());
    accumulate<float>(SumOp(), acc, src.size(), src.data());
    float got[16], want[16] = {};
    for (int j = 0; j < k; ++j) hn::StoreU(acc[j], Full<float>(), got + j * kLanes<float>);
    for (size_t i = 0; i < src.size(); ++i) want[i % 16] += src[i];
    for (int l = 0; l < 16; ++l) EXPECT_EQ(want[l], got[l]) << "len " << len << ", lane " << l;
  }
}

TEST(Reduce, Pieces) {
  for (size_t len : {1, 9, 10, 11, 95}) {
    size_t next = 0;
    forPieces(len, 10, [&](size_t begin, size_t count) {
      EXPECT_EQ(next, begin);
      EXPECT_LE(count, 10u);
      EXPECT_GE(count, 1u);
      next = begin + count;
    });
    EXPECT_EQ(len, next);
  }
}

template <class T>
void checkFolds() {
  T lanes[kLanes<T>];
  std::iota(lanes, lanes + kLanes<T>, T{1});
  for (size_t i = 0; i < kLanes<T>; ++i) {
    std::rotate(lanes, lanes + 1, lanes + kLanes<T>);
    const auto v = hn::LoadU(Full<T>(), lanes);
    EXPECT_EQ(static_cast<T>(kLanes<T> * (kLanes<T> + 1) / 2), sumLanes(v));
    EXPECT_EQ(static_cast<T>(kLanes<T>), foldLanes(v, MaxLanes()));
  }
}

TEST(Reduce, FoldsTakeEveryLane) {
  checkFolds<uint8_t>();
  checkFolds<int16_t>();
  checkFolds<uint32_t>();
  checkFolds<float>();
  checkFolds<double>();
}

TEST(Reduce, WideSums) {
  uint32_t lanes[kLanes<uint32_t>];
  uint64_t want = 0;
  Random random(2);
  for (auto& lane : lanes) want += lane = static_cast<uint32_t>(random.bits()) | 0x80000000u;
  WideSum sum;
  const auto v = hn::LoadU(Full<uint32_t>(), lanes);
  for (int i = 0; i < 1000; ++i) sum.add(v);
  EXPECT_EQ(1000 * want, sum.total());
  EXPECT_EQ(want, wideTotal(v));
}

TEST(Reduce, FirstOfEqualOnes) {
  const auto isSeven = [](auto x) { return hn::Eq(x, hn::Set(hn::DFromV<decltype(x)>(), 7)); };
  for (size_t len : {1, 5, 16, 17, 64, 130}) {
    std::vector<int32_t> src(len, 1);
    EXPECT_EQ(len, findFirst(src.data(), len, isSeven));
    for (size_t at = 0; at < len; ++at) {
      src[at] = 7;
      src[len - 1] = 7;
      EXPECT_EQ(at, findFirst(src.data(), len, isSeven));
      src[at] = src[len - 1] = 1;
    }
    // Zeros are not found behind the end.
    const auto isZero = [](auto x) { return hn::Eq(x, hn::Zero(hn::DFromV<decltype(x)>())); };
    EXPECT_EQ(len, findFirst(src.data(), len, isZero));
  }
}

}  // namespace
