// What a family says about its functions: where their checks leave the usual order, what is valid and what is refused, and
// how a record of its contexts is made. Each file in tests/contract/families/ has one Family; everything that it does not
// mention is held to the usual rules.
//
// `functions` and `parameter` are extended regular expressions on whole names. A family's rows are about its own functions
// alone; among rows that match the same, the first one counts.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_CONTRACT_FAMILY_H
#define KVRS_TESTS_CONTRACT_FAMILY_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kvrs/types.h"

namespace kvrs::test {

// Pointers or lengths of functions.
struct ParameterRow {
  const char* functions = ".*";
  const char* parameter = "";
};

// What a number is in a valid call, where it is not the usual one: 16 for a length, 1 for others, and the rows of rows.cpp
// for names that many families share (scaleFactor is 0, order is 4 ...).
struct ValidValue {
  const char* functions = ".*";
  const char* parameter = "";
  double value = 0;
};

// What an array holds in a valid call, where any bytes will not do: a phase in range, ascending positions, taps of a stable
// filter. In elements of the parameter's type, a complex one being two numbers; zeros follow.
struct ValidContents {
  const char* functions = ".*";
  const char* parameter = "";
  std::vector<double> elements;
};

// How a value that is refused ranks with other faults.
enum class Rank {
  beforePointers,  // reported even where a pointer is null
  afterPointers,   // not where a pointer is null, but even where a length is bad
  afterLength,     // only where nothing else is wrong
};

// A number that is refused.
struct BadValue {
  const char* functions = ".*";
  const char* parameter = "";
  double value = 0;
  KvrStatus status = kvrStatusOk;
  Rank rank = Rank::afterLength;
};

// Contents of an array that are refused.
struct BadContents {
  const char* functions = ".*";
  const char* parameter = "";
  std::vector<double> elements;
  KvrStatus status = kvrStatusOk;
  Rank rank = Rank::afterLength;
};

// How the word of a function's context ranks with other faults, where it is not the first thing that is looked at.
struct ContextRank {
  const char* functions = ".*";
  Rank rank = Rank::afterLength;
};

// Words that a function accepts in its context besides the one of its own maker's record.
struct AcceptedWords {
  const char* functions = ".*";
  std::vector<uint32_t> words;
};

// What functions report when memory fails, where it is not kvrStatusOutOfMemory.
struct MemoryStatus {
  const char* functions = ".*";
  KvrStatus status = kvrStatusOutOfMemory;
};

// Makes a small record of a context type, fit for some functions: in `memory` of kContextBytes zeros, or on the heap, and
// then `release` is not null. Where several functions take a type but want another word in it, each gets a row.
struct ContextMaker {
  const char* type = "";  // "KvrsFFTSpec_C_32fc"
  const char* functions = ".*";
  void* (*make)(Kvr8u* memory) = nullptr;
  void (*release)(void* record) = nullptr;
};
inline constexpr size_t kContextBytes = size_t{1} << 16;
// From here on a maker's memory is free for what an Init needs for a while.
inline constexpr size_t kInitBuffer = kContextBytes / 2;

// A maker's `release`: releaseBy<kvrsDFTFree_C_32fc>.
template <auto release>
void releaseBy(void* record) {
  [record]<class Record>(KvrStatus (*call)(Record*)) { call(static_cast<Record*>(record)); }(+release);
}

struct FamilyRows {
  std::vector<ParameterRow> optionalPointers = {};  // may be null
  std::vector<ParameterRow> latePointers = {};      // tested after the values of Rank::afterPointers
  std::vector<ParameterRow> lastPointers =
      {};  // tested after everything else, when other outputs have been written
  std::vector<const char*> lengthFirst = {};        // functions that test the length before the pointers
  std::vector<const char*> lengthAgainstZero = {};  // functions that refuse a length of 0 only
  std::vector<ParameterRow> freeLengths = {};       // lengths that only rows of badValues speak about
  std::vector<ParameterRow> oneElement = {};        // outputs of one element, whatever the length
  std::vector<const char*> unchecked = {};          // functions without any checks
  std::vector<ValidValue> validValues = {};
  std::vector<ValidContents> validContents = {};
  std::vector<BadValue> badValues = {};
  std::vector<BadContents> badContents = {};
  std::vector<ContextMaker> contexts = {};
  std::vector<ContextRank> contextRanks = {};
  std::vector<AcceptedWords> acceptedWords = {};
  std::vector<MemoryStatus> memoryStatuses = {};
  std::vector<const char*> wordless = {};  // functions whose contexts have no word
};

class Family {
 public:
  explicit Family(FamilyRows rows);
};

}  // namespace kvrs::test

#endif
