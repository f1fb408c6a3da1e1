// One small record of every context type, made in the test's memory.
// SPDX-License-Identifier: MIT
#include <cstring>

#include "kvrs.h"
#include "tests/contract/contract.h"

namespace kvrs::test {
namespace {

constexpr Kvr32f kTaps32f[] = {1, 2, 3, 4};
constexpr size_t kInitBuffer = kContextBytes / 2;  // from here on, for what Init needs for a while

struct Maker {
  const char* type;
  void* (*make)(Kvr8u* memory);
};

const Maker kMakers[] = {
#ifdef KVRS_FFT_H
    {"KvrsFFTSpec_C_32fc",
     [](Kvr8u* memory) -> void* {
       KvrsFFTSpec_C_32fc* spec = nullptr;
       kvrsFFTInit_C_32fc(&spec, 4, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
       return spec;
     }},
    {"KvrsFFTSpec_R_32f",
     [](Kvr8u* memory) -> void* {
       KvrsFFTSpec_R_32f* spec = nullptr;
       kvrsFFTInit_R_32f(&spec, 4, kvrFftNoDivByAny, kvrHintNone, memory, memory + kInitBuffer);
       return spec;
     }},
#endif
#ifdef KVRS_FIR_H
    {"KvrsFIRState_32f",
     [](Kvr8u* memory) -> void* {
       KvrsFIRState_32f* state = nullptr;
       kvrsFIRInit_32f(&state, kTaps32f, 4, nullptr, memory);
       return state;
     }},
#endif
};

}  // namespace

void* makeContext(const char* type, const char*, void* memory) {
  memset(memory, 0, kContextBytes);
  for (const Maker& maker : kMakers) {
    if (strcmp(maker.type, type) == 0) return maker.make(static_cast<Kvr8u*>(memory));
  }
  return nullptr;
}

}  // namespace kvrs::test
