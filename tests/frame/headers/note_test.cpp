// SPDX-License-Identifier: MIT
#include "frame/note.h"

#include <vector>

#include "tests/support/arena.h"
#include "tests/support/sweep.h"

using namespace kvrs;
using namespace kvrs::test;

namespace {

// 10 * x; -1 for zero and -2 for negative numbers, with a warning of its own each.
template <bool kHeavy>
struct TenTimes {
  static constexpr bool kIsHeavy = kHeavy;

  template <class D, class V>
  KVRS_INLINE auto isUsual(D d, V x) const {
    return hn::Gt(x, hn::Zero(d));
  }
  template <class D, class V>
  KVRS_INLINE V quick(D d, V x) const {
    return hn::Mul(x, hn::Set(d, 10.0f));
  }
  template <class D, class V>
  KVRS_INLINE V any(D d, Notes& notes, V x) const {
    const auto zero = hn::Eq(x, hn::Zero(d)), negative = hn::Lt(x, hn::Zero(d));
    notes.add(d, kvrStatusLnZeroArg, zero, kvrStatusLnNegArg, negative);
    return hn::IfThenElse(zero, hn::Set(d, -1.0f), hn::IfThenElse(negative, hn::Set(d, -2.0f), quick(d, x)));
  }
};

float oracle(float x) {
  return x == 0 ? -1 : x < 0 ? -2 : 10 * x;
}

template <bool kHeavy>
void check(int len, const std::vector<std::pair<int, float>>& unusual, KvrStatus want) {
  const size_t n = static_cast<size_t>(len);
  Arena from(n * sizeof(float)), to(n * sizeof(float));
  float* const src = from.place<float>(n, Side::back);
  float* const dst = to.place<float>(n, Side::front, 4);
  for (int i = 0; i < len; ++i) src[i] = static_cast<float>(i + 1);
  for (const auto& [at, value] : unusual) src[at] = value;
  ASSERT_EQ(want, mapNoting(TenTimes<kHeavy>(), dst, n, src)) << len;
  for (int i = 0; i < len; ++i) ASSERT_EQ(oracle(src[i]), dst[i]) << len << " " << i;
  ASSERT_TRUE(to.intact());
  const std::vector<float> before(src, src + len);
  ASSERT_EQ(want, mapNoting(TenTimes<kHeavy>(), src, n, src)) << len << " in place";
  for (int i = 0; i < len; ++i) ASSERT_EQ(oracle(before[i]), src[i]) << len << " " << i;
  ASSERT_TRUE(from.intact());
}

template <bool kHeavy>
void checkAll() {
  for (int len : sweepLengths()) {
    check<kHeavy>(len, {}, kvrStatusOk);
    for (int at : {0, len / 2, len - 1}) {
      check<kHeavy>(len, {{at, 0.0f}}, kvrStatusLnZeroArg);
      check<kHeavy>(len, {{at, -5.0f}}, kvrStatusLnNegArg);
    }
    if (len < 2) continue;
    // The first in the order of elements, near and far from the second.
    for (int at : {0, (len - 1) / 2, len - 2}) {
      check<kHeavy>(len, {{at, 0.0f}, {len - 1, -1.0f}}, kvrStatusLnZeroArg);
      check<kHeavy>(len, {{at, -1.0f}, {len - 1, 0.0f}}, kvrStatusLnNegArg);
      check<kHeavy>(len, {{at, -1.0f}, {at + 1, 0.0f}}, kvrStatusLnNegArg);
    }
  }
}

TEST(Note, FourBlocksATurn) {
  checkAll<false>();
}

TEST(Note, OneBlockATurn) {
  checkAll<true>();
}

TEST(Note, Nothing) {
  float element = 1;
  EXPECT_EQ(kvrStatusOk, mapNoting(TenTimes<false>(), &element, 0, &element));
  EXPECT_EQ(1, element);
}

}  // namespace
