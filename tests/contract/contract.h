// The table of all declared functions (made by tools/make_contract_table.py) and how its rows are called.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_CONTRACT_CONTRACT_H
#define KVRS_TESTS_CONTRACT_CONTRACT_H

#include <array>
#include <optional>
#include <span>
#include <type_traits>

#include "kvrs/types.h"

namespace kvrs::test {

enum class Kind {
  input,       // array that is read
  output,      // array or number that is written
  channels,    // array of pointers to arrays
  context,     // record of a transform or filter
  contexts,    // array of pointers to records
  newContext,  // where an Init stores the address of a new record
  address,     // where a function stores any other address
  length,      // len, srcLen, dstLen, len1, len2, numIters
  value,       // any other number
};

struct Parameter {
  Kind kind;
  const char* type;  // without const and stars
  const char* name;

  bool isPointer() const { return kind != Kind::length && kind != Kind::value; }
};

// The arguments of one call, by their place.
struct Values {
  struct Value {
    void* pointer = nullptr;
    double number = 0;
    std::optional<double> imaginary = {};  // of a complex number, if it is not `number` too
  };
  std::array<Value, 16> at;

  template <class P>
  P pointer(int i) const {
    return static_cast<P>(at[i].pointer);
  }
  template <class T>
  T number(int i) const {
    const double number = at[i].number;
    if constexpr (std::is_floating_point_v<T>) {
      return static_cast<T>(number);
    } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
      return static_cast<T>(static_cast<long long>(number));
    } else {
      T complex;
      complex.re = static_cast<decltype(complex.re)>(number);
      complex.im = static_cast<decltype(complex.im)>(at[i].imaginary.value_or(number));
      return complex;
    }
  }
};

struct Function {
  const char* name;
  const Parameter* parameters;
  int parameterCount;
  KvrStatus (*call)(const Values&);
  KvrStatus (*release)(void*);  // for functions that make a record on the heap

  std::span<const Parameter> all() const { return {parameters, static_cast<size_t>(parameterCount)}; }
  // The place of a parameter, or -1.
  int find(const char* parameter) const;
};

// All declared functions that return a status.
std::span<const Function> functions();
// Names of the declared functions that do not.
std::span<const char* const> otherFunctions();
// The names of frame/exports.def.
std::span<const char* const> exportNames();

}  // namespace kvrs::test

#endif
