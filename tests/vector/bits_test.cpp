// SPDX-License-Identifier: MIT
#include <limits>

#include "kvrs/fill.h"
#include "kvrs/reorder.h"
#include "tests/support/sweep.h"

using namespace kvrs::test;

namespace {

bool bitAt(const Kvr8u* string, size_t i) {
  return (string[i / 8] >> (7 - i % 8) & 1) != 0;
}
void setBit(Kvr8u* string, size_t i, bool bit) {
  const Kvr8u mask = static_cast<Kvr8u>(0x80 >> i % 8);
  string[i / 8] = static_cast<Kvr8u>(bit ? string[i / 8] | mask : string[i / 8] & ~mask);
}

// Arrays of exactly the bytes that hold the strings, against the guard pages.
void checkCopyBits(int srcOffset, int dstOffset, int len, Side side) {
  static Arena srcArena(1 << 13), dstArena(1 << 13);
  static Random random;
  const size_t srcBytes = static_cast<size_t>(srcOffset + len + 7) / 8;
  const size_t dstBytes = static_cast<size_t>(dstOffset + len + 7) / 8;
  Kvr8u* src = srcArena.place<Kvr8u>(srcBytes, side);
  Kvr8u* dst = dstArena.place<Kvr8u>(dstBytes, side);
  for (size_t i = 0; i < srcBytes; ++i) src[i] = static_cast<Kvr8u>(random.bits());
  std::vector<Kvr8u> want(dstBytes);
  for (size_t i = 0; i < dstBytes; ++i) dst[i] = want[i] = static_cast<Kvr8u>(random.bits());
  for (int i = 0; i < len; ++i) {
    setBit(want.data(), static_cast<size_t>(dstOffset + i), bitAt(src, static_cast<size_t>(srcOffset + i)));
  }
  ASSERT_EQ(kvrStatusOk, kvrsCopy_1u(src, srcOffset, dst, dstOffset, len));
  for (size_t i = 0; i < dstBytes; ++i) {
    ASSERT_EQ(want[i], dst[i]) << "from " << srcOffset << " to " << dstOffset << ", len " << len << ", byte "
                               << i;
  }
  ASSERT_TRUE(srcArena.intact());
  ASSERT_TRUE(dstArena.intact());
}

TEST(CopyBits, EveryPhaseAndShortLength) {
  for (int srcOffset = 0; srcOffset < 8; ++srcOffset) {
    for (int dstOffset = 0; dstOffset < 8; ++dstOffset) {
      for (int len = 1; len <= 140; ++len) {
        checkCopyBits(srcOffset, dstOffset, len, len % 2 == 0 ? Side::back : Side::front);
        if (testing::Test::HasFatalFailure()) return;
      }
      for (int len : {511, 512, 513, 2047, 4096, 4103, 8000}) {
        checkCopyBits(srcOffset, dstOffset, len, Side::back);
        checkCopyBits(srcOffset, dstOffset, len, Side::front);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
}

TEST(CopyBits, OffsetsOfManyBytes) {
  for (int srcOffset : {8, 13, 71, 640, 1001}) {
    for (int dstOffset : {9, 16, 70, 643}) {
      for (int len : {1, 15, 16, 17, 69, 70, 71, 1000}) checkCopyBits(srcOffset, dstOffset, len, Side::back);
    }
  }
}

TEST(CopyBits, Statuses) {
  Kvr8u src[2] = {0xFF, 0xFF}, dst[2] = {};
  const int lowest = std::numeric_limits<int>::min();
  EXPECT_EQ(kvrStatusNullPointer, kvrsCopy_1u(nullptr, -1, dst, -1, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsCopy_1u(src, -1, nullptr, -1, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_1u(src, 0, dst, 0, 0));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_1u(src, 0, dst, 0, lowest));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_1u(src, -1, dst, 0, 1));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_1u(src, 0, dst, -1, 1));
  EXPECT_EQ(kvrStatusBadLength, kvrsCopy_1u(src, lowest, dst, lowest, 1));
  EXPECT_EQ(0, dst[0]);
}

void checkPackBits(int len, int offset, int mostBits, Side side, uint64_t seed) {
  static Arena arena(1 << 15);
  Random random(seed);
  std::vector<Kvr32u> codes(static_cast<size_t>(len));
  std::vector<int> counts(codes.size());
  std::vector<bool> bits;
  for (size_t i = 0; i < codes.size(); ++i) {
    codes[i] = static_cast<Kvr32u>(random.bits());
    counts[i] = static_cast<int>(random.below(static_cast<uint32_t>(mostBits) + 4)) - 3;
    if (random.below(50) == 0) counts[i] = std::numeric_limits<int>::max();
    if (random.below(50) == 0) counts[i] = std::numeric_limits<int>::min();
    const int count = counts[i] < 0 ? 0 : counts[i] > 32 ? 32 : counts[i];
    for (int bit = count - 1; bit >= 0; --bit) bits.push_back((codes[i] >> bit & 1) != 0);
  }
  const size_t phase = static_cast<size_t>(offset & 7);
  const size_t bytes = (phase + bits.size() + 7) / 8;
  Kvr8u* dst = arena.place<Kvr8u>(bytes, side);
  std::vector<Kvr8u> want(bytes);
  for (size_t i = 0; i < bytes; ++i) dst[i] = want[i] = static_cast<Kvr8u>(random.bits());
  for (size_t i = 0; i < bits.size(); ++i) setBit(want.data(), phase + i, bits[i]);
  // Callers' arrays may lie at any address.
  static Arena codesArena(1 << 15), countsArena(1 << 15), writtenArena(64);
  Kvr32u* codesAt = codesArena.place<Kvr32u>(codes.size(), side, seed % 4);
  int* countsAt = countsArena.place<int>(counts.size(), side, seed / 4 % 4);
  int* writtenAt = writtenArena.place<int>(1, side, seed / 16 % 4);
  memcpy(codesAt, codes.data(), codes.size() * sizeof codes[0]);
  memcpy(countsAt, counts.data(), counts.size() * sizeof counts[0]);
  ASSERT_EQ(kvrStatusOk, kvrsPackBits_32u8u(codesAt, countsAt, len, dst, offset, writtenAt));
  int written;
  memcpy(&written, writtenAt, sizeof written);
  ASSERT_EQ(static_cast<int>(bits.size()), written);
  for (size_t i = 0; i < bytes; ++i)
    ASSERT_EQ(want[i], dst[i]) << "len " << len << ", offset " << offset << ", byte " << i;
  ASSERT_TRUE(arena.intact() && codesArena.intact() && countsArena.intact() && writtenArena.intact());
}

TEST(PackBits, RandomCodes) {
  uint64_t seed = 1;
  for (int len = 1; len <= 100; ++len) {
    for (int offset : {0, 1, 2, 3, 4, 5, 6, 7, 8, 13, 1000001, std::numeric_limits<int>::max()}) {
      for (int mostBits : {1, 8, 31, 33, 40}) {
        checkPackBits(len, offset, mostBits, seed % 2 == 0 ? Side::back : Side::front, seed);
        ++seed;
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  }
  checkPackBits(3000, 5, 33, Side::back, seed);
}

TEST(PackBits, TwoCodesMakeAByte) {
  const Kvr32u codes[] = {0xA, 0x5};
  const int counts[] = {4, 4};
  Kvr8u dst[2] = {0x11, 0x22};
  int written = 0;
  ASSERT_EQ(kvrStatusOk, kvrsPackBits_32u8u(codes, counts, 2, dst, 0, &written));
  EXPECT_EQ(0xA5, dst[0]);
  EXPECT_EQ(0x22, dst[1]);
  EXPECT_EQ(8, written);
}

TEST(PackBits, NothingToWrite) {
  const Kvr32u code = 0xFFFFFFFF;
  for (int count : {0, -1, std::numeric_limits<int>::min()}) {
    Kvr8u dst = 0x5A;
    int written = -1;
    ASSERT_EQ(kvrStatusOk, kvrsPackBits_32u8u(&code, &count, 1, &dst, 3, &written));
    EXPECT_EQ(0x5A, dst);
    EXPECT_EQ(0, written);
  }
}

TEST(PackBits, Statuses) {
  const Kvr32u code = 1;
  const int count = 1;
  Kvr8u dst = 0x5A;
  int written = 77;
  EXPECT_EQ(kvrStatusNullPointer, kvrsPackBits_32u8u(nullptr, &count, 0, &dst, -1, &written));
  EXPECT_EQ(kvrStatusNullPointer, kvrsPackBits_32u8u(&code, nullptr, 0, &dst, -1, &written));
  EXPECT_EQ(kvrStatusNullPointer, kvrsPackBits_32u8u(&code, &count, 0, nullptr, -1, &written));
  EXPECT_EQ(kvrStatusNullPointer, kvrsPackBits_32u8u(&code, &count, 0, &dst, -1, nullptr));
  EXPECT_EQ(kvrStatusBadLength, kvrsPackBits_32u8u(&code, &count, 0, &dst, 0, &written));
  EXPECT_EQ(kvrStatusBadLength, kvrsPackBits_32u8u(&code, &count, 1, &dst, -1, &written));
  EXPECT_EQ(0x5A, dst);
  EXPECT_EQ(77, written);
}

}  // namespace
