// What valid calls look like: how large arrays are, and which numbers and contents functions take.
//
// `functions` and `parameter` are extended regular expressions on whole names; among rows that match, the first counts.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_FUZZ_RULES_H
#define KVRS_TESTS_FUZZ_RULES_H

#include <array>
#include <cstdint>
#include <span>

#include "tests/contract/contract.h"

namespace kvrs::test {

// The fuzzer's choices, decoded from its input; zeros when that has come to an end.
class Choices {
 public:
  Choices(const uint8_t* data, size_t size) : data_(data), left_(size) {}

  bool isEmpty() const { return left_ == 0; }
  // In [0, n), and 0 for an n of 0.
  uint32_t below(uint32_t n) {
    if (n == 0) return 0;
    uint32_t value = 0;
    for (uint32_t range = n - 1; range != 0; range >>= 8) value = value << 8 | next();
    return value % n;
  }
  int between(int low, int high) {
    return low + static_cast<int>(below(static_cast<uint32_t>(high - low + 1)));
  }
  bool oneIn(uint32_t n) { return below(n) == 0; }
  uint32_t word() { return below(1u << 16) << 16 | below(1u << 16); }
  template <class T, size_t n>
  T pick(const T (&from)[n]) {
    return from[below(n)];
  }

 private:
  uint8_t next() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }

  const uint8_t* data_;
  size_t left_;
};

// A call in the making: its numbers, the record that it is made for, and the inputs that are in their places.
struct Scope {
  const Function* function;
  const Values* values;
  const Function* maker;  // of the call's record, or null
  const Values* made;     // its arguments
  std::array<std::span<uint8_t>, 16> memory;

  // A number of the call, or else of the record's making; 1 if neither has one of this name.
  int64_t operator[](const char* name) const;
  bool has(const char* name) const;
  // Whether the name of the function, or of the one that has made the record, contains a word.
  bool isNamed(const char* word) const;
  bool isMadeBy(const char* word) const;
  // The integers of an array.
  std::span<const uint8_t> contents(const char* parameter) const;
  // What a size query says: of the record that an Init is to make, or of the work area of a transform.
  int64_t recordSize(const char* output) const;
  int64_t workSize() const;
};

// How many elements an array has.
struct Extent {
  const char* functions;
  const char* parameter;
  int64_t (*elements)(const Scope&);
  bool isInBytes = false;
};
// A number, or the one element that an array holds, in a call that is to succeed.
struct Number {
  const char* functions;
  const char* parameter;
  double (*draw)(Choices&, const Scope&);
};
// What is special in an array that is full of random elements.
struct Contents {
  const char* functions;
  const char* parameter;
  void (*adapt)(Choices&, const Scope&, std::span<uint8_t> memory);
};
// How many elements from its beginning on a pointer stands.
struct Displacement {
  const char* functions;
  const char* parameter;
  int64_t (*elements)(const Scope&);
};
struct Name {
  const char* functions;
  const char* parameter;
};

// The first row for a parameter, or null.
const Extent* extentOf(const Function& f, const Parameter& p);
const Number* numberOf(const Function& f, const Parameter& p);
const Contents* contentsOf(const Function& f, const Parameter& p);
const Displacement* displacementOf(const Function& f, const Parameter& p);

// Outputs that are read too, and those whose contents after the call are nobody's business.
bool isReadToo(const Function& f, const Parameter& p);
bool isScratch(const Function& f, const Parameter& p);
// Bytes of an element of a type; 1 for records.
size_t bytesOf(const char* type);

}  // namespace kvrs::test

#endif
