// SPDX-License-Identifier: MIT
#include "frame/two_ended.h"

#include <algorithm>
#include <vector>

#include "tests/support/arena.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

struct Exchange {
  template <class D, class V>
  KVRS_INLINE Both<V> operator()(D d, size_t, V front, V back) const {
    return {mirrored(d, back), mirrored(d, front)};
  }
};

// Adds its own number to each element, so that one that is met twice shows.
struct AddIndex {
  template <class D, class V>
  KVRS_INLINE Both<V> operator()(D d, size_t n, V front, V back) const {
    const V index = hn::Iota(d, static_cast<int32_t>(n));
    return {hn::Add(front, index), hn::Add(back, mirrored(d, index))};
  }
};

template <class T>
void checkExchange() {
  constexpr size_t N = kLanes<T>;
  Arena from(4096), to(4096);
  for (int n : sweepLengths()) {
    const size_t len = static_cast<size_t>(n);
    if (len * sizeof(T) > 4000) continue;
    for (size_t offset : {0, 1, 7}) {
      std::vector<T> want(len);
      for (size_t i = 0; i < len; ++i) want[i] = static_cast<T>(i * 7 + 1);
      T* src = from.place<T>(len, Side::back, offset);
      T* dst = to.place<T>(len, Side::front, offset);
      for (size_t i = 0; i < len; ++i) put(src, i, want[i]);
      fromBothEnds<N>(Exchange(), static_cast<const T*>(src), dst, len, 0, len / 2);
      for (size_t i = 0; i < len; ++i) {
        if (len % 2 != 0 && i == len / 2) continue;  // the middle is nobody's business
        ASSERT_EQ(want[len - 1 - i], get(dst, i)) << len;
      }
      ASSERT_TRUE(to.intact() && from.intact());
      fromBothEnds<N>(Exchange(), static_cast<const T*>(src), src, len, 0, len / 2);
      for (size_t i = 0; i < len; ++i) ASSERT_EQ(want[len - 1 - i], get(src, i)) << len << " in place";
      ASSERT_TRUE(from.intact());
    }
  }
}

TEST(TwoEnded, Exchange) {
  checkExchange<uint8_t>();
  checkExchange<uint16_t>();
  checkExchange<uint32_t>();
  checkExchange<uint64_t>();
}

TEST(TwoEnded, EachElementOnceInAnyPieces) {
  for (size_t len : {2, 3, 9, 64, 101, 500}) {
    for (size_t piece : {1, 2, 5, 16, 64}) {
      std::vector<int32_t> x(len, 1000);
      for (size_t from = 0; from < len / 2; from += piece) {
        fromBothEnds<kLanes<int32_t>>(AddIndex(), const_cast<const int32_t*>(x.data()), x.data(), len, from,
                                      std::min(len / 2, from + piece));
      }
      for (size_t i = 0; i < len; ++i) {
        const bool middle = len % 2 != 0 && i == len / 2;
        ASSERT_EQ(middle ? 1000 : 1000 + static_cast<int32_t>(std::min(i, len - 1 - i)), x[i]) << len;
      }
    }
  }
}

TEST(TwoEnded, ComplexElements) {
  std::vector<Kvr32fc> x(37);
  for (size_t i = 0; i < x.size(); ++i) x[i] = {static_cast<float>(i), -static_cast<float>(i)};
  const auto exchange = [](auto d, size_t, auto front, auto back) {
    const auto mirror = [d](auto v) { return decltype(v){mirrored(d, v.re), mirrored(d, v.im)}; };
    return Both<decltype(front)>{mirror(back), mirror(front)};
  };
  fromBothEnds<kLanes<float>>(exchange, const_cast<const Kvr32fc*>(x.data()), x.data(), x.size(), 0,
                              x.size() / 2);
  for (size_t i = 0; i < x.size(); ++i) {
    EXPECT_EQ(static_cast<float>(36 - i), x[i].re);
    EXPECT_EQ(-static_cast<float>(36 - i), x[i].im);
  }
}

}  // namespace
