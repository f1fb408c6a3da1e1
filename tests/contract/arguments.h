// What the families' rows say about a function, and memory and values for calls of it.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_CONTRACT_ARGUMENTS_H
#define KVRS_TESTS_CONTRACT_ARGUMENTS_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tests/contract/contract.h"
#include "tests/contract/family.h"

namespace kvrs::test {

// The rows of all families.
const FamilyRows& allRows();

// Whether an extended regular expression is the whole of a name.
bool matches(const char* pattern, const char* name);

// Whether a function, or one of its parameters, is named by a row.
bool isAmong(const std::vector<const char*>& functions, const Function& f);
bool isAmong(const std::vector<ParameterRow>& rows, const Function& f, const Parameter& p);

// Writes elements of a type ("Kvr32fc", "int"), and zeros behind them.
void writeElements(const char* type, std::span<const double> elements, std::span<uint8_t> memory);

class Arguments {
 public:
  // Arrays have `arrayBytes`, or what a context needs.
  explicit Arguments(const Function& f, size_t arrayBytes = size_t{1} << 13);
  ~Arguments() { releaseContexts(); }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  // Gives all arguments their valid values again. False if there is no maker for a context.
  bool reset();
  // What the function needs and nobody makes.
  const std::string& missing() const { return missing_; }

  Values::Value& operator[](int i) { return values_.at[i]; }
  // The memory that belongs to a pointer, as far as it is ours; empty for numbers.
  std::span<uint8_t> memory(int i) { return {begin(i), bytes_[i]}; }
  // The same with what lies before it and behind it, which belongs to nobody.
  std::span<uint8_t> memoryAndMargins(int i) { return memory_[i]; }
  // Whether the contents of an array matter, so that a row gives them.
  const ValidContents* contents(int i) const;

  KvrStatus run();
  // Releases what a successful call of an InitAlloc has made.
  KvrStatus releaseMade();

 private:
  struct Context {
    int parameter;
    void* record;
    void (*release)(void*);
  };

  static constexpr size_t kMargin = 64;

  uint8_t* begin(int i) { return memory_[i].empty() ? nullptr : memory_[i].data() + kMargin; }
  void* makeContext(int parameter, uint8_t* memory);
  void releaseContexts();

  const Function& f_;
  std::vector<std::vector<uint8_t>> memory_;  // with margins
  std::vector<size_t> bytes_;
  std::vector<std::vector<void*>> pointers_;  // of channels and contexts
  std::vector<Context> onHeap_;
  Values values_;
  std::string missing_;
};

}  // namespace kvrs::test

#endif
