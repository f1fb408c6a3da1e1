// Wrong functions: a library that is loaded before the one under test and gives some of its functions a fault each. A test
// of the tests runs them against every fault and expects them to fail.
//
// KVRS_WRONG names the fault; without it all functions are right. KVRS_WRONG=list prints the faults and ends the program.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TESTS_APPARATUS_WRONG_H
#define KVRS_TESTS_APPARATUS_WRONG_H

#include <dlfcn.h>

#include <cstddef>
#include <cstdint>

namespace kvrs::wrong {

// A fault: "kvrsAdd_32f where dst is its first source", and the tests that must see it (a filter of GoogleTest's).
class Fault {
 public:
  Fault(const char* what, const char* tests);
  bool isOn() const { return isOn_; }

 private:
  bool isOn_;
};

// The right function of the same name.
template <class F>
F* right(const char* name) {
  return reinterpret_cast<F*>(dlsym(RTLD_NEXT, name));
}

// Makes an element another one, at any address.
template <class T>
void spoil(T* array, ptrdiff_t i) {
  reinterpret_cast<uint8_t*>(array)[i * static_cast<ptrdiff_t>(sizeof(T))] ^= 0x40;
}

}  // namespace kvrs::wrong

#endif
