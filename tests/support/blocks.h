// A closer look at the blocks of the test's core library (core.h): guard pages behind them, and what they hold.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_SUPPORT_BLOCKS_H
#define KVRS_TESTS_SUPPORT_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kvrs::test {

// The memory of all live blocks, the oldest first.
std::vector<std::span<uint8_t>> liveMemory();

// From now on blocks lie between pages that may not be touched, their ends at most 31 bytes before one, and those of
// more than `most` bytes are refused.
void guardBlocks(size_t most);

// What guarded blocks are full of when they are handed out.
void fillBlocks(uint8_t byte);

// Requests that have been refused, for whatever reason.
int refusedBlocks();

// Guarded blocks whose last bytes, between their size and the next multiple of 32, had changed when they were released.
int overrunBlocks();

}  // namespace kvrs::test

#endif
