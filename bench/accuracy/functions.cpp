// SPDX-License-Identifier: MIT
#include "bench/accuracy/functions.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/accuracy/arguments.h"
#include "kvrs.h"

namespace kvrs::accuracy {
namespace {

using Argument = double (*)(uint64_t);

// Singles: ranges of bit patterns.
double anySingle(uint64_t i) {
  return single(i);
}
// +0 and the smallest subnormal to infinity.
constexpr uint64_t kNotNegative = 0x7F800001, kAll = uint64_t{1} << 32;
// Between the limits of Exp_32f: magnitudes up to 87.0999984741211, of both signs by turns.
double forExp32(uint64_t i) {
  return single(i / 2 | (i & 1) << 31);
}
constexpr uint64_t kForExp32 = 2 * (uint64_t{0x42AE3333} + 1);
// All finite numbers, of both signs by turns.
constexpr uint64_t kFinite = 2 * uint64_t{0x7F800000};

// Doubles.
constexpr uint64_t kSome = 100000000;
double positive(uint64_t i) {
  // A third of them next to 1, where a logarithm is small.
  return i % 3 == 0 ? 1 + 0.5 * unit(i) : std::fabs(ofExponents(i, -1022, 1024));
}
double notNegative(uint64_t i) {
  return std::fabs(ofExponents(i, -1022, 1024));
}
double forExp(uint64_t i) {
  return i % 2 == 0 ? 709 * unit(i) : ofExponents(i, -40, 9);
}
double forExpOfSingle(uint64_t i) {
  return static_cast<float>(forExp(i));
}
double forAtan(uint64_t i) {
  return ofExponents(i, -40, 60);
}
double phase(uint64_t i) {
  return i % 2 == 0 ? 20 * unit(i) : ofExponents(i, -40, 100);
}
double first(uint64_t i) {
  return ofExponents(2 * i, -20, 20);
}
double second(uint64_t i) {
  return ofExponents(2 * i + 1, -20, 20);
}

template <class T>
const T* fill(Argument argument, uint64_t begin, size_t count, int which = 0) {
  alignas(64) static T x[2][kBlock];
  for (size_t i = 0; i < count; ++i) x[which][i] = static_cast<T>(argument(begin + i));
  return x[which];
}

template <auto call, class S, class D, Argument argument>
void results(uint64_t begin, size_t count, void* to) {
  call(fill<S>(argument, begin, count), static_cast<D*>(to), static_cast<int>(count));
}

template <Wide f, Argument argument>
void wanted(uint64_t begin, size_t count, double* to) {
  apply(f, fill<double>(argument, begin, count), count, to);
}

template <class F, F f, Argument argument>
void wantedWide(uint64_t begin, size_t count, long double* to) {
  for (size_t i = 0; i < count; ++i) to[i] = f(static_cast<long double>(argument(begin + i)));
}
using Wider = long double (*)(long double);

// Sines and cosines are the coordinates at a distance of 1.
template <class T, auto call, bool isSine, Argument argument>
void coordinates(uint64_t begin, size_t count, void* to) {
  static const std::vector<T> ones(kBlock, 1);
  static T other[kBlock];
  T* const wanted = static_cast<T*>(to);
  call(ones.data(), fill<T>(argument, begin, count), isSine ? other : wanted, isSine ? wanted : other,
       static_cast<int>(count));
}

template <class T, auto call>
void phases(uint64_t begin, size_t count, void* to) {
  const T* const y = fill<T>(first, begin, count, 0);
  const T* const x = fill<T>(second, begin, count, 1);
  call(x, y, static_cast<T*>(to), static_cast<int>(count));
}
void wantedPhases(uint64_t begin, size_t count, long double* to) {
  for (size_t i = 0; i < count; ++i) to[i] = atan2l(first(begin + i), second(begin + i));
}
void wantedPhasesOfSingles(uint64_t begin, size_t count, double* to) {
  for (size_t i = 0; i < count; ++i) {
    to[i] = std::atan2(static_cast<double>(static_cast<float>(first(begin + i))),
                       static_cast<double>(static_cast<float>(second(begin + i))));
  }
}

const Function kFunctions[] = {
    {"Ln_32f", false, kNotNegative, results<kvrsLn_32f, Kvr32f, Kvr32f, anySingle>,
     wanted<Wide::log, anySingle>, nullptr, anySingle},
    {"Exp_32f", false, kForExp32, results<kvrsExp_32f, Kvr32f, Kvr32f, forExp32>, wanted<Wide::exp, forExp32>,
     nullptr, forExp32},
    {"Arctan_32f", false, kAll, results<kvrsArctan_32f, Kvr32f, Kvr32f, anySingle>,
     wanted<Wide::atan, anySingle>, nullptr, anySingle},
    {"Sqrt_32f", false, kNotNegative, results<kvrsSqrt_32f, Kvr32f, Kvr32f, anySingle>,
     wanted<Wide::sqrt, anySingle>, nullptr, anySingle},
    {"Cubrt_32f", false, kAll, results<kvrsCubrt_32f, Kvr32f, Kvr32f, anySingle>,
     wanted<Wide::cbrt, anySingle>, nullptr, anySingle},
    {"Phase_32f", false, kSome, phases<Kvr32f, kvrsPhase_32f>, wantedPhasesOfSingles, nullptr, first},
    {"Ln_64f", true, kSome, results<kvrsLn_64f, Kvr64f, Kvr64f, positive>, nullptr,
     wantedWide<Wider, logl, positive>, positive},
    {"Ln_64f32f", false, kSome, results<kvrsLn_64f32f, Kvr64f, Kvr32f, positive>, wanted<Wide::log, positive>,
     nullptr, positive},
    {"Exp_64f", true, kSome, results<kvrsExp_64f, Kvr64f, Kvr64f, forExp>, nullptr,
     wantedWide<Wider, expl, forExp>, forExp},
    {"Exp_32f64f", true, kSome, results<kvrsExp_32f64f, Kvr32f, Kvr64f, forExpOfSingle>, nullptr,
     wantedWide<Wider, expl, forExpOfSingle>, forExpOfSingle},
    {"Arctan_64f", true, kSome, results<kvrsArctan_64f, Kvr64f, Kvr64f, forAtan>, nullptr,
     wantedWide<Wider, atanl, forAtan>, forAtan},
    {"Sqrt_64f", true, kSome, results<kvrsSqrt_64f, Kvr64f, Kvr64f, notNegative>, nullptr,
     wantedWide<Wider, sqrtl, notNegative>, notNegative},
    {"Phase_64f", true, kSome, phases<Kvr64f, kvrsPhase_64f>, nullptr, wantedPhases, first},
    {"PolarToCart_64f:re", true, kSome, coordinates<Kvr64f, kvrsPolarToCart_64f, false, phase>, nullptr,
     wantedWide<Wider, cosl, phase>, phase},
    {"PolarToCart_64f:im", true, kSome, coordinates<Kvr64f, kvrsPolarToCart_64f, true, phase>, nullptr,
     wantedWide<Wider, sinl, phase>, phase},
    {"PolarToCart_32f:re", false, kFinite, coordinates<Kvr32f, kvrsPolarToCart_32f, false, forExp32>,
     wanted<Wide::cos, forExp32>, nullptr, forExp32},
    {"PolarToCart_32f:im", false, kFinite, coordinates<Kvr32f, kvrsPolarToCart_32f, true, forExp32>,
     wanted<Wide::sin, forExp32>, nullptr, forExp32},
};

}  // namespace

const Function* find(const char* name) {
  for (const Function& f : kFunctions) {
    if (name == nullptr) printf("%s\n", f.name);
    if (name != nullptr && strcmp(name, f.name) == 0) return &f;
  }
  return nullptr;
}

}  // namespace kvrs::accuracy
