// States of recursive filters: sizes, memory, copies, taps, what is refused. And the table of all types that the other tests
// of these filters use.
// SPDX-License-Identifier: MIT
#include <climits>
#include <cmath>

#include "kvrs/iir.h"
#include "tests/filters/iir_oracle.h"
#include "tests/support/alias.h"
#include "tests/support/arena.h"
#include "tests/support/core.h"

using namespace kvrs::test;

namespace {

// Sample type S, working type W; delay lines are given as D.
template <class State, class S, class W, class D, bool kScaled>
struct IirFunctions {
  using Init = KvrStatus (*)(State**, const W*, int, const D*, Kvr8u*);
  using InitAlloc = KvrStatus (*)(State**, const W*, int, const D*);
  template <class... Scale>
  struct Filters {
    using One = KvrStatus (*)(S, S*, State*, Scale...);
    using Block = KvrStatus (*)(const S*, S*, int, State*, Scale...);
    using InPlace = KvrStatus (*)(S*, int, State*, Scale...);
  };
  using F = std::conditional_t<kScaled, Filters<int>, Filters<>>;

  KvrStatus (*size[3])(int, int*);
  Init init[3];
  InitAlloc initAlloc[3];
  KvrStatus (*free)(State*);
  KvrStatus (*getDlyLine)(const State*, D*);
  KvrStatus (*setDlyLine)(State*, const D*);
  KvrStatus (*setTaps)(const W*, State*);
  typename F::One one;
  typename F::Block block;
  typename F::InPlace inPlace;
};

template <class State, class S, class W, class D, bool kScaled>
class TypedIir final : public IirType {
 public:
  TypedIir(const char* tag, std::initializer_list<int> numbers,
           const IirFunctions<State, S, W, D, kScaled>& functions)
      : f_(functions) {
    name = tag;
    std::copy(numbers.begin(), numbers.end(), words);
    isComplex = !std::is_arithmetic_v<S>;
    isScaled = kScaled;
    sampleBytes = sizeof(S);
    tapBytes = sizeof(W);
  }

  void putSample(void* array, size_t i, Number value) const override { set<S>(array, i, value); }
  Number getSample(const void* array, size_t i) const override { return get<S>(array, i); }
  void putTap(void* array, size_t i, Number value) const override { set<W>(array, i, value); }
  Number getTap(const void* array, size_t i) const override { return get<W>(array, i); }

  KvrStatus size(IirForm form, int n, int* bytes) const override { return f_.size[index(form)](n, bytes); }
  KvrStatus init(IirForm form, void** state, const void* taps, int n, const void* dlyLine,
                 Kvr8u* buffer) const override {
    State* made = nullptr;
    const KvrStatus status =
        f_.init[index(form)](state == nullptr ? nullptr : &made, static_cast<const W*>(taps), n,
                             static_cast<const D*>(dlyLine), buffer);
    if (made != nullptr) *state = made;
    return status;
  }
  KvrStatus initAlloc(IirForm form, void** state, const void* taps, int n,
                      const void* dlyLine) const override {
    State* made = nullptr;
    const KvrStatus status = f_.initAlloc[index(form)](
        state == nullptr ? nullptr : &made, static_cast<const W*>(taps), n, static_cast<const D*>(dlyLine));
    if (made != nullptr) *state = made;
    return status;
  }
  KvrStatus free(void* state) const override { return f_.free(static_cast<State*>(state)); }
  KvrStatus getDlyLine(const void* state, void* dlyLine) const override {
    return f_.getDlyLine(static_cast<const State*>(state), static_cast<D*>(dlyLine));
  }
  KvrStatus setDlyLine(void* state, const void* dlyLine) const override {
    return f_.setDlyLine(static_cast<State*>(state), static_cast<const D*>(dlyLine));
  }
  KvrStatus setTaps(const void* taps, void* state) const override {
    return f_.setTaps(static_cast<const W*>(taps), static_cast<State*>(state));
  }
  KvrStatus one(const void* val, void* dst, void* state, [[maybe_unused]] int scaleFactor) const override {
    S sample;
    memcpy(&sample, val, sizeof sample);
    if constexpr (kScaled) {
      return f_.one(sample, static_cast<S*>(dst), static_cast<State*>(state), scaleFactor);
    } else {
      return f_.one(sample, static_cast<S*>(dst), static_cast<State*>(state));
    }
  }
  KvrStatus filter(const void* src, void* dst, int len, void* state,
                   [[maybe_unused]] int scaleFactor) const override {
    if constexpr (kScaled) {
      return f_.block(static_cast<const S*>(src), static_cast<S*>(dst), len, static_cast<State*>(state),
                      scaleFactor);
    } else {
      return f_.block(static_cast<const S*>(src), static_cast<S*>(dst), len, static_cast<State*>(state));
    }
  }
  KvrStatus filterInPlace(void* srcDst, int len, void* state,
                          [[maybe_unused]] int scaleFactor) const override {
    if constexpr (kScaled) {
      return f_.inPlace(static_cast<S*>(srcDst), len, static_cast<State*>(state), scaleFactor);
    } else {
      return f_.inPlace(static_cast<S*>(srcDst), len, static_cast<State*>(state));
    }
  }

 private:
  static size_t index(IirForm form) { return static_cast<size_t>(form); }

  template <class T>
  static void set(void* array, size_t i, Number value) {
    T element;
    if constexpr (std::is_arithmetic_v<T>) {
      element = static_cast<T>(value.real());
    } else {
      element = {static_cast<decltype(T::re)>(value.real()), static_cast<decltype(T::im)>(value.imag())};
    }
    memcpy(static_cast<char*>(array) + i * sizeof(T), &element, sizeof(T));
  }
  template <class T>
  static Number get(const void* array, size_t i) {
    T element;
    memcpy(&element, static_cast<const char*>(array) + i * sizeof(T), sizeof(T));
    if constexpr (std::is_arithmetic_v<T>) {
      return element;
    } else {
      return {static_cast<long double>(element.re), static_cast<long double>(element.im)};
    }
  }

  IirFunctions<State, S, W, D, kScaled> f_;
};

}  // namespace

const std::vector<const IirType*>& kvrs::test::iirTypes() {
  static const TypedIir<KvrsIIRState_32f, Kvr32f, Kvr32f, Kvr32f, false> type32f(
      "32f", {1, 2, 29},
      {{kvrsIIRGetStateSize_32f, kvrsIIRGetStateSize_BiQuad_32f, kvrsIIRGetStateSize_BiQuad_DF1_32f},
       {kvrsIIRInit_32f, kvrsIIRInit_BiQuad_32f, kvrsIIRInit_BiQuad_DF1_32f},
       {kvrsIIRInitAlloc_32f, kvrsIIRInitAlloc_BiQuad_32f, kvrsIIRInitAlloc_BiQuad_DF1_32f},
       kvrsIIRFree_32f,
       kvrsIIRGetDlyLine_32f,
       kvrsIIRSetDlyLine_32f,
       kvrsIIRSetTaps_32f,
       kvrsIIROne_32f,
       kvrsIIR_32f,
       kvrsIIR_32f_I});
  static const TypedIir<KvrsIIRState_32fc, Kvr32fc, Kvr32fc, Kvr32fc, false> type32fc(
      "32fc", {3, 4, 0},
      {{kvrsIIRGetStateSize_32fc, kvrsIIRGetStateSize_BiQuad_32fc, nullptr},
       {kvrsIIRInit_32fc, kvrsIIRInit_BiQuad_32fc, nullptr},
       {kvrsIIRInitAlloc_32fc, kvrsIIRInitAlloc_BiQuad_32fc, nullptr},
       kvrsIIRFree_32fc,
       kvrsIIRGetDlyLine_32fc,
       kvrsIIRSetDlyLine_32fc,
       kvrsIIRSetTaps_32fc,
       kvrsIIROne_32fc,
       kvrsIIR_32fc,
       kvrsIIR_32fc_I});
  static const TypedIir<KvrsIIRState32f_16s, Kvr16s, Kvr32f, Kvr32f, true> type32f_16s(
      "32f_16s", {5, 6, 0},
      {{kvrsIIRGetStateSize32f_16s, kvrsIIRGetStateSize32f_BiQuad_16s, nullptr},
       {kvrsIIRInit32f_16s, kvrsIIRInit32f_BiQuad_16s, nullptr},
       {kvrsIIRInitAlloc32f_16s, kvrsIIRInitAlloc32f_BiQuad_16s, nullptr},
       kvrsIIRFree32f_16s,
       kvrsIIRGetDlyLine32f_16s,
       kvrsIIRSetDlyLine32f_16s,
       kvrsIIRSetTaps32f_16s,
       kvrsIIROne32f_16s_Sfs,
       kvrsIIR32f_16s_Sfs,
       kvrsIIR32f_16s_ISfs});
  static const TypedIir<KvrsIIRState32fc_16sc, Kvr16sc, Kvr32fc, Kvr32fc, true> type32fc_16sc(
      "32fc_16sc", {7, 8, 0},
      {{kvrsIIRGetStateSize32fc_16sc, kvrsIIRGetStateSize32fc_BiQuad_16sc, nullptr},
       {kvrsIIRInit32fc_16sc, kvrsIIRInit32fc_BiQuad_16sc, nullptr},
       {kvrsIIRInitAlloc32fc_16sc, kvrsIIRInitAlloc32fc_BiQuad_16sc, nullptr},
       kvrsIIRFree32fc_16sc,
       kvrsIIRGetDlyLine32fc_16sc,
       kvrsIIRSetDlyLine32fc_16sc,
       kvrsIIRSetTaps32fc_16sc,
       kvrsIIROne32fc_16sc_Sfs,
       kvrsIIR32fc_16sc_Sfs,
       kvrsIIR32fc_16sc_ISfs});
  static const TypedIir<KvrsIIRState32s_16s, Kvr16s, Kvr32f, Kvr32s, true> type32s_16s(
      "32s_16s", {9, 10, 0},
      {{kvrsIIRGetStateSize32s_16s, kvrsIIRGetStateSize32s_BiQuad_16s, nullptr},
       {kvrsIIRInit32s_16s32f, kvrsIIRInit32s_BiQuad_16s32f, nullptr},
       {kvrsIIRInitAlloc32s_16s32f, kvrsIIRInitAlloc32s_BiQuad_16s32f, nullptr},
       kvrsIIRFree32s_16s,
       kvrsIIRGetDlyLine32s_16s,
       kvrsIIRSetDlyLine32s_16s,
       kvrsIIRSetTaps32s_16s32f,
       kvrsIIROne32s_16s_Sfs,
       kvrsIIR32s_16s_Sfs,
       kvrsIIR32s_16s_ISfs});
  static const TypedIir<KvrsIIRState32sc_16sc, Kvr16sc, Kvr32fc, Kvr32sc, true> type32sc_16sc(
      "32sc_16sc", {11, 12, 0},
      {{kvrsIIRGetStateSize32sc_16sc, kvrsIIRGetStateSize32sc_BiQuad_16sc, nullptr},
       {kvrsIIRInit32sc_16sc32fc, kvrsIIRInit32sc_BiQuad_16sc32fc, nullptr},
       {kvrsIIRInitAlloc32sc_16sc32fc, kvrsIIRInitAlloc32sc_BiQuad_16sc32fc, nullptr},
       kvrsIIRFree32sc_16sc,
       kvrsIIRGetDlyLine32sc_16sc,
       kvrsIIRSetDlyLine32sc_16sc,
       kvrsIIRSetTaps32sc_16sc32fc,
       kvrsIIROne32sc_16sc_Sfs,
       kvrsIIR32sc_16sc_Sfs,
       kvrsIIR32sc_16sc_ISfs});
  static const TypedIir<KvrsIIRState_64f, Kvr64f, Kvr64f, Kvr64f, false> type64f(
      "64f", {13, 14, 0},
      {{kvrsIIRGetStateSize_64f, kvrsIIRGetStateSize_BiQuad_64f, nullptr},
       {kvrsIIRInit_64f, kvrsIIRInit_BiQuad_64f, nullptr},
       {kvrsIIRInitAlloc_64f, kvrsIIRInitAlloc_BiQuad_64f, nullptr},
       kvrsIIRFree_64f,
       kvrsIIRGetDlyLine_64f,
       kvrsIIRSetDlyLine_64f,
       kvrsIIRSetTaps_64f,
       kvrsIIROne_64f,
       kvrsIIR_64f,
       kvrsIIR_64f_I});
  static const TypedIir<KvrsIIRState_64fc, Kvr64fc, Kvr64fc, Kvr64fc, false> type64fc(
      "64fc", {15, 16, 0},
      {{kvrsIIRGetStateSize_64fc, kvrsIIRGetStateSize_BiQuad_64fc, nullptr},
       {kvrsIIRInit_64fc, kvrsIIRInit_BiQuad_64fc, nullptr},
       {kvrsIIRInitAlloc_64fc, kvrsIIRInitAlloc_BiQuad_64fc, nullptr},
       kvrsIIRFree_64fc,
       kvrsIIRGetDlyLine_64fc,
       kvrsIIRSetDlyLine_64fc,
       kvrsIIRSetTaps_64fc,
       kvrsIIROne_64fc,
       kvrsIIR_64fc,
       kvrsIIR_64fc_I});
  static const TypedIir<KvrsIIRState64f_32f, Kvr32f, Kvr64f, Kvr64f, false> type64f_32f(
      "64f_32f", {17, 18, 0},
      {{kvrsIIRGetStateSize64f_32f, kvrsIIRGetStateSize64f_BiQuad_32f, nullptr},
       {kvrsIIRInit64f_32f, kvrsIIRInit64f_BiQuad_32f, nullptr},
       {kvrsIIRInitAlloc64f_32f, kvrsIIRInitAlloc64f_BiQuad_32f, nullptr},
       kvrsIIRFree64f_32f,
       kvrsIIRGetDlyLine64f_32f,
       kvrsIIRSetDlyLine64f_32f,
       kvrsIIRSetTaps64f_32f,
       kvrsIIROne64f_32f,
       kvrsIIR64f_32f,
       kvrsIIR64f_32f_I});
  static const TypedIir<KvrsIIRState64fc_32fc, Kvr32fc, Kvr64fc, Kvr64fc, false> type64fc_32fc(
      "64fc_32fc", {19, 20, 0},
      {{kvrsIIRGetStateSize64fc_32fc, kvrsIIRGetStateSize64fc_BiQuad_32fc, nullptr},
       {kvrsIIRInit64fc_32fc, kvrsIIRInit64fc_BiQuad_32fc, nullptr},
       {kvrsIIRInitAlloc64fc_32fc, kvrsIIRInitAlloc64fc_BiQuad_32fc, nullptr},
       kvrsIIRFree64fc_32fc,
       kvrsIIRGetDlyLine64fc_32fc,
       kvrsIIRSetDlyLine64fc_32fc,
       kvrsIIRSetTaps64fc_32fc,
       kvrsIIROne64fc_32fc,
       kvrsIIR64fc_32fc,
       kvrsIIR64fc_32fc_I});
  static const TypedIir<KvrsIIRState64f_32s, Kvr32s, Kvr64f, Kvr64f, true> type64f_32s(
      "64f_32s", {21, 22, 30},
      {{kvrsIIRGetStateSize64f_32s, kvrsIIRGetStateSize64f_BiQuad_32s, kvrsIIRGetStateSize64f_BiQuad_DF1_32s},
       {kvrsIIRInit64f_32s, kvrsIIRInit64f_BiQuad_32s, kvrsIIRInit64f_BiQuad_DF1_32s},
       {kvrsIIRInitAlloc64f_32s, kvrsIIRInitAlloc64f_BiQuad_32s, kvrsIIRInitAlloc64f_BiQuad_DF1_32s},
       kvrsIIRFree64f_32s,
       kvrsIIRGetDlyLine64f_32s,
       kvrsIIRSetDlyLine64f_32s,
       kvrsIIRSetTaps64f_32s,
       kvrsIIROne64f_32s_Sfs,
       kvrsIIR64f_32s_Sfs,
       kvrsIIR64f_32s_ISfs});
  static const TypedIir<KvrsIIRState64fc_32sc, Kvr32sc, Kvr64fc, Kvr64fc, true> type64fc_32sc(
      "64fc_32sc", {23, 24, 0},
      {{kvrsIIRGetStateSize64fc_32sc, kvrsIIRGetStateSize64fc_BiQuad_32sc, nullptr},
       {kvrsIIRInit64fc_32sc, kvrsIIRInit64fc_BiQuad_32sc, nullptr},
       {kvrsIIRInitAlloc64fc_32sc, kvrsIIRInitAlloc64fc_BiQuad_32sc, nullptr},
       kvrsIIRFree64fc_32sc,
       kvrsIIRGetDlyLine64fc_32sc,
       kvrsIIRSetDlyLine64fc_32sc,
       kvrsIIRSetTaps64fc_32sc,
       kvrsIIROne64fc_32sc_Sfs,
       kvrsIIR64fc_32sc_Sfs,
       kvrsIIR64fc_32sc_ISfs});
  static const TypedIir<KvrsIIRState64f_16s, Kvr16s, Kvr64f, Kvr64f, true> type64f_16s(
      "64f_16s", {25, 26, 0},
      {{kvrsIIRGetStateSize64f_16s, kvrsIIRGetStateSize64f_BiQuad_16s, nullptr},
       {kvrsIIRInit64f_16s, kvrsIIRInit64f_BiQuad_16s, nullptr},
       {kvrsIIRInitAlloc64f_16s, kvrsIIRInitAlloc64f_BiQuad_16s, nullptr},
       kvrsIIRFree64f_16s,
       kvrsIIRGetDlyLine64f_16s,
       kvrsIIRSetDlyLine64f_16s,
       kvrsIIRSetTaps64f_16s,
       kvrsIIROne64f_16s_Sfs,
       kvrsIIR64f_16s_Sfs,
       kvrsIIR64f_16s_ISfs});
  static const TypedIir<KvrsIIRState64fc_16sc, Kvr16sc, Kvr64fc, Kvr64fc, true> type64fc_16sc(
      "64fc_16sc", {27, 28, 0},
      {{kvrsIIRGetStateSize64fc_16sc, kvrsIIRGetStateSize64fc_BiQuad_16sc, nullptr},
       {kvrsIIRInit64fc_16sc, kvrsIIRInit64fc_BiQuad_16sc, nullptr},
       {kvrsIIRInitAlloc64fc_16sc, kvrsIIRInitAlloc64fc_BiQuad_16sc, nullptr},
       kvrsIIRFree64fc_16sc,
       kvrsIIRGetDlyLine64fc_16sc,
       kvrsIIRSetDlyLine64fc_16sc,
       kvrsIIRSetTaps64fc_16sc,
       kvrsIIROne64fc_16sc_Sfs,
       kvrsIIR64fc_16sc_Sfs,
       kvrsIIR64fc_16sc_ISfs});

  static const std::vector<const IirType*> all = {&type32f,     &type32fc,      &type32f_16s, &type32fc_16sc,
                                                  &type32s_16s, &type32sc_16sc, &type64f,     &type64fc,
                                                  &type64f_32f, &type64fc_32fc, &type64f_32s, &type64fc_32sc,
                                                  &type64f_16s, &type64fc_16sc};
  return all;
}

namespace {

constexpr IirForm kForms[] = {IirForm::direct, IirForm::cascade, IirForm::df1};

int64_t up(int64_t value, int64_t to) {
  return (value + to - 1) / to * to;
}

// The stated sizes.
int64_t statedSize(const IirType& type, IirForm form, int64_t n) {
  const std::string samples = type.name.substr(type.name.find('_') + 1);
  const bool converts = type.name.find('_') != std::string::npos;
  if (!type.isComplex && !type.isDouble()) {
    if (form == IirForm::direct) {
      return (8 * n + 16) * 4 + (converts ? 8232 : 4136) + 48 + up(8 * n + 4, 16) + up(4 * n + 4, 16) + 32;
    }
    if (form == IirForm::df1) return up(20 * n, 16) + 144 * n + 80;
    return (converts ? 160 * n + 8232 : up(160 * n + 4136, 16) + 128 * n + 16) + 48 + up(20 * n, 16) +
           up(8 * n, 16) + 32;
  }
  if (!type.isDouble()) {
    if (form == IirForm::direct) {
      return (16 * n + 36) * 8 + (converts ? 16464 : 8272) + 64 + up(16 * n + 8, 32) + up(8 * n + 8, 32) + 32;
    }
    return 1184 * n + (converts ? 16384 : 8192) + 64 + up(40 * n, 32) + up(16 * n, 32) + 64;
  }
  if (!type.isComplex) {
    if (form == IirForm::direct) {
      return (6 * n + 14) * 8 + (converts ? 16384 : 8192) + 48 + up(16 * n + 8, 16) + up(8 * n + 8, 16) + 32;
    }
    if (form == IirForm::df1) return 256 * n + 16432 + up(40 * n, 16) + 48 * n;
    return 256 * n + (converts ? 16384 : 8192) + 48 + up(40 * n, 16) + 16 * n;
  }
  if (form == IirForm::direct) {
    return 16 * ((n + 1024) * (converts ? 2 : 1) + 14 * n + 10) + 48 + 32 * n + 16 + 16 * n + 16 + 32;
  }
  return 1024 * n + (converts ? 32768 : 16384) + 48 + up(80 * n, 16) + 32 * n + 32;
}

template <class Check>
void forAllForms(Check check) {
  for (const IirType* type : iirTypes()) {
    for (IirForm form : kForms) {
      if (type->has(form)) check(*type, form);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(IirState, Sizes) {
  forAllForms([](const IirType& type, IirForm form) {
    for (int n = 1; n <= 300; ++n) {
      int size = 0;
      ASSERT_EQ(kvrStatusOk, type.size(form, n, &size));
      ASSERT_EQ(statedSize(type, form, n), size) << describe(type, form, n, 0);
    }
    int size = 77;
    EXPECT_EQ(kvrStatusBadIirOrder, type.size(form, 0, &size));
    EXPECT_EQ(kvrStatusBadIirOrder, type.size(form, INT_MIN, &size));
    EXPECT_EQ(kvrStatusBadIirOrder, type.size(form, INT_MAX, &size));
    EXPECT_EQ(77, size);
    EXPECT_EQ(kvrStatusNullPointer, type.size(form, 0, nullptr));
  });
}

// Told by hand.
TEST(IirState, SizesByHand) {
  int size = 0;
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetStateSize_BiQuad_DF1_32f(1, &size));
  EXPECT_EQ(32 + 144 + 80, size);
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetStateSize_32f(4, &size));
  EXPECT_EQ(48 * 4 + 4136 + 48 + 48 + 32 + 32, size);
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetStateSize_BiQuad_32f(1, &size));
  EXPECT_EQ(4304 + 128 + 16 + 48 + 32 + 16 + 32, size);
  ASSERT_EQ(kvrStatusOk, kvrsIIRGetStateSize64fc_16sc(1, &size));
  EXPECT_EQ(16 * (2 * 1025 + 14 + 10) + 48 + 32 + 16 + 16 + 16 + 32, size);
}

// In a block of exactly the stated size, at any address: nothing is touched outside, by Init or by filters.
TEST(IirState, StaysInItsBlock) {
  Random random;
  Arena arena(300000);
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n = 1; n <= 64; n += n < 20 ? 1 : 11) {
      int size;
      ASSERT_EQ(kvrStatusOk, type.size(form, n, &size));
      const auto numbers = stableTaps(random, type, form, n, 0.5L);
      const auto taps = type.taps(numbers);
      const auto src = type.samples(wholeSignal(random, type, 1100, 100));
      for (size_t offset = 0; offset < 32; offset += n < 3 ? 1 : 13) {
        for (Side side : {Side::back, Side::front}) {
          auto* buffer = arena.place<Kvr8u>(static_cast<size_t>(size), side, offset);
          void* state = nullptr;
          ASSERT_EQ(kvrStatusOk, type.init(form, &state, taps.data(), n, nullptr, buffer));
          EXPECT_EQ((reinterpret_cast<uintptr_t>(buffer) + 31) / 32 * 32, reinterpret_cast<uintptr_t>(state));
          std::vector<Kvr8u> dst(src.size());
          for (int len : {4 * n, 1100})
            ASSERT_EQ(kvrStatusOk, type.filter(src.data(), dst.data(), len, state, 0));
          ASSERT_EQ(kvrStatusOk, type.setTaps(taps.data(), state));
          ASSERT_EQ(kvrStatusOk, type.setDlyLine(state, nullptr));
          ASSERT_EQ(kvrStatusOk, type.free(state));
          ASSERT_EQ(kvrStatusOk, type.filter(src.data(), dst.data(), 1, state, 0));  // Free left it as it was
          ASSERT_TRUE(arena.intact()) << describe(type, form, n, 0);
        }
      }
    }
  });
}

TEST(IirState, CopiedAsBytes) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    const int n = 3;
    int size;
    ASSERT_EQ(kvrStatusOk, type.size(form, n, &size));
    const auto taps = type.taps(stableTaps(random, type, form, n, 0.9L));
    const auto src = type.samples(wholeSignal(random, type, 300, 100));
    std::vector<Kvr8u> first(static_cast<size_t>(size) + 64), second(first.size() + 32), dst(src.size()),
        again(src.size());
    void* state = nullptr;
    ASSERT_EQ(kvrStatusOk, type.init(form, &state, taps.data(), n, nullptr, first.data()));
    ASSERT_EQ(kvrStatusOk, type.filter(src.data(), dst.data(), 300, state, 0));
    Kvr8u* copy = second.data() + (static_cast<Kvr8u*>(state) - first.data());
    copy += (reinterpret_cast<uintptr_t>(state) - reinterpret_cast<uintptr_t>(copy)) % 32;
    memcpy(copy, state, static_cast<size_t>(size) - 31);
    ASSERT_EQ(kvrStatusOk, type.filter(src.data(), dst.data(), 300, state, 0));
    std::fill(first.begin(), first.end(), Kvr8u{0xFF});
    ASSERT_EQ(kvrStatusOk, type.filter(src.data(), again.data(), 300, copy, 0));
    EXPECT_EQ(dst, again) << describe(type, form, n, 300);
  });
}

TEST(IirState, AllocationFails) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    const auto taps = type.taps(stableTaps(random, type, form, 2, 0.9L));
    const auto make = [&] {
      void* state = nullptr;
      const KvrStatus status = type.initAlloc(form, &state, taps.data(), 2, nullptr);
      EXPECT_EQ(status == kvrStatusOk, state != nullptr);
      if (status == kvrStatusOk) {
        EXPECT_EQ(kvrStatusOk, type.free(state));
      }
      return status;
    };
    EXPECT_EQ(1, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
    IirState state(type, form, 2, type.taps(taps));
    const int before = allocationCount();
    state.run(wholeSignal(random, type, 2000, 10));
    EXPECT_EQ(kvrStatusOk, type.setTaps(taps.data(), state));
    EXPECT_EQ(before, allocationCount());
  });
}

// Which words each type's functions take, and that nothing is written when it is another.
TEST(IirState, Words) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    int size;
    ASSERT_EQ(kvrStatusOk, type.size(form, 1, &size));
    std::vector<Kvr8u> buffer(static_cast<size_t>(size));
    const auto taps = type.taps(stableTaps(random, type, form, 1, 0.9L));
    void* state = nullptr;
    ASSERT_EQ(kvrStatusOk, type.init(form, &state, taps.data(), 1, nullptr, buffer.data()));
    const int own = type.words[static_cast<int>(form)];
    const char letters[] = {static_cast<char>('0' + own % 10), static_cast<char>('0' + own / 10), 'I', 'I'};
    EXPECT_EQ(0, memcmp(state, letters, 4));
    const auto good = buffer;
    for (int number = 0; number <= 31; ++number) {
      const uint32_t word = 0x49493030u + static_cast<uint32_t>(number / 10 * 256 + number % 10);
      memcpy(state, &word, sizeof word);
      const auto before = buffer;
      const auto takes = [&](std::initializer_list<int> words) {
        return std::find(words.begin(), words.end(), number) != words.end() && number != 0
                   ? kvrStatusOk
                   : kvrStatusContextMismatch;
      };
      const KvrStatus any = takes({type.words[0], type.words[1], type.words[2]});
      const KvrStatus one = takes({type.words[0], type.words[1]});
      // The second name of kvrsIIRSetTaps_32fc lets it take the contexts of the other type.
      const bool shared = type.name == "32fc" || type.name == "32sc_16sc";
      const KvrStatus set = shared ? takes({3, 4, 11, 12}) : any;
      alignas(16) Kvr8u data[64] = {}, untouched[64] = {};
      EXPECT_EQ(any, type.free(state));
      EXPECT_EQ(any, type.getDlyLine(state, data));
      EXPECT_EQ(set, type.setTaps(taps.data(), state)) << type.name << " " << number;
      EXPECT_EQ(any, type.setDlyLine(state, nullptr));
      EXPECT_EQ(0, memcmp(untouched, data, sizeof data));
      memset(data, 5, sizeof data);
      memset(untouched, 5, sizeof untouched);
      if (one != kvrStatusOk) {
        EXPECT_EQ(one, type.one(taps.data(), data, state, 0)) << type.name << " " << number;
      }
      if (any != kvrStatusOk) {
        EXPECT_EQ(any, type.filter(taps.data(), data, 1, state, 0));
        EXPECT_EQ(any, type.filterInPlace(data, 1, state, 0));
        EXPECT_EQ(0, memcmp(untouched, data, sizeof data));
        EXPECT_EQ(before, buffer);
      }
      buffer = good;
    }
  });
}

// What is tested before what. Single faults are the contract tests' business.
TEST(IirState, OrderOfChecks) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    const auto taps = type.taps(stableTaps(random, type, form, 1, 0.9L));
    std::vector<Kvr8u> buffer(60000), data(64);
    void* state = nullptr;
    EXPECT_EQ(kvrStatusNullPointer, type.init(form, &state, nullptr, 0, nullptr, buffer.data()));
    EXPECT_EQ(kvrStatusNullPointer, type.init(form, &state, taps.data(), 0, nullptr, nullptr));
    EXPECT_EQ(kvrStatusBadIirOrder, type.init(form, &state, taps.data(), 0, nullptr, buffer.data()));
    EXPECT_EQ(kvrStatusNullPointer, type.initAlloc(form, &state, nullptr, 0, nullptr));
    EXPECT_EQ(kvrStatusBadIirOrder, type.initAlloc(form, &state, taps.data(), -3, nullptr));
    EXPECT_EQ(kvrStatusBadIirOrder, type.initAlloc(form, &state, taps.data(), INT_MAX, nullptr));
    EXPECT_EQ(nullptr, state);
    ASSERT_EQ(kvrStatusOk, type.init(form, &state, taps.data(), 1, nullptr, buffer.data()));
    memset(state, 0, 4);
    EXPECT_EQ(kvrStatusNullPointer, type.filter(nullptr, data.data(), 0, state, 0));
    EXPECT_EQ(kvrStatusBadLength, type.filter(taps.data(), data.data(), 0, state, 0));  // before the word
    EXPECT_EQ(kvrStatusBadLength, type.filterInPlace(data.data(), -1, state, 0));
    EXPECT_EQ(kvrStatusContextMismatch, type.filter(taps.data(), data.data(), 1, state, 0));
    EXPECT_EQ(kvrStatusNullPointer, type.one(taps.data(), nullptr, state, 0));
    EXPECT_EQ(kvrStatusNullPointer, type.getDlyLine(state, nullptr));
    EXPECT_EQ(kvrStatusNullPointer, type.setTaps(nullptr, state));
    EXPECT_EQ(kvrStatusContextMismatch, type.setDlyLine(state, nullptr));
  });
}

// Taps that are refused, and what has been stored by then.
TEST(IirState, RefusedTaps) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    const int n = 2;
    const auto good = stableTaps(random, type, form, n, 0.9L);
    const size_t sections = form == IirForm::direct ? 1 : 2, perSection = 6;  // of order 2 alike
    for (size_t bad = 0; bad < sections; ++bad) {
      for (size_t which : {size_t{3}, size_t{0}}) {
        auto numbers = good;
        numbers[bad * perSection + which] = 0;
        const bool refused = which == 3 || form != IirForm::direct;
        const auto taps = type.taps(numbers);
        void* made = nullptr;
        std::vector<Kvr8u> buffer(60000);
        const KvrStatus status = refused ? kvrStatusDivByZeroError : kvrStatusOk;
        ASSERT_EQ(status, type.init(form, &made, taps.data(), n, nullptr, buffer.data()))
            << describe(type, form, n, which);
        EXPECT_EQ(refused, made == nullptr);
        const int blocks = liveBlocks();
        made = nullptr;
        ASSERT_EQ(status, type.initAlloc(form, &made, taps.data(), n, nullptr));
        EXPECT_EQ(blocks + (refused ? 0 : 1), liveBlocks());
        if (!refused) {
          EXPECT_EQ(kvrStatusOk, type.free(made));
          continue;
        }
        // SetTaps: the sections before the refused one are new, the others as they were.
        auto others = stableTaps(random, type, form, n, 0.9L);
        others[bad * perSection + which] = 0;
        const auto given = type.taps(others);
        IirState state(type, form, n, good);
        EXPECT_EQ(kvrStatusDivByZeroError, type.setTaps(given.data(), state));
        auto mixed = good;
        for (size_t i = 0; i < bad * perSection; ++i) mixed[i] = others[i];
        IirState wanted(type, form, n, mixed);
        const auto signal = wholeSignal(random, type, 40, 1000);
        EXPECT_EQ(wanted.run(signal), state.run(signal)) << describe(type, form, n, which);
      }
    }
    // A NaN is let through.
    for (size_t which : {0, 3}) {
      auto numbers = good;
      numbers[which] = std::nanl("");
      IirState state(type, form, n, numbers);
      state.run(wholeSignal(random, type, 100, 100));
    }
  });
}

// Delay lines read, set, read; null is silence.
TEST(IirState, DelayLines) {
  Random random;
  forAllForms([&](const IirType& type, IirForm form) {
    for (int n : {1, 2, 5}) {
      const auto taps = stableTaps(random, type, form, n, 0.9L);
      // The df1 form in doubles shows the transposed line here; its own has functions of its own.
      const bool onTop = form == IirForm::df1 && type.isDouble();
      const int count = onTop ? 2 * n : lineLength(form, n);
      const auto line = wholeSignal(random, type, static_cast<size_t>(count), 1000);
      IirState state(type, form, n, taps, onTop ? Numbers() : line);
      if (!onTop) {
        EXPECT_EQ(line, state.line(count));
      }
      const auto other = wholeSignal(random, type, static_cast<size_t>(count), 1000);
      EXPECT_EQ(kvrStatusOk, type.setDlyLine(state, type.taps(other).data()));
      EXPECT_EQ(other, state.line(count));
      EXPECT_EQ(kvrStatusOk, type.setTaps(type.taps(taps).data(), state));
      EXPECT_EQ(other, state.line(count));  // which leaves it
      EXPECT_EQ(kvrStatusOk, type.setDlyLine(state, nullptr));
      EXPECT_EQ(Numbers(static_cast<size_t>(count)), state.line(count));
    }
  });
}

// Integer taps: converted, and in SetTaps with a status that says nothing.
TEST(IirState, IntegerTaps) {
  Random random;
  const Kvr32s whole[6] = {300, -200, 100, 1 << 10, -900, 400};
  const Kvr32sc pairs[6] = {{300, 20}, {-200, 5}, {100, -9}, {1 << 10, 30}, {-900, 100}, {400, -50}};
  const int factor = 10;
  for (bool cascade : {false, true}) {
    const int n = cascade ? 1 : 2;
    const auto form = cascade ? IirForm::cascade : IirForm::direct;
    for (bool complex : {false, true}) {
      const IirType& type = *iirTypes()[complex ? 5 : 4];
      Numbers numbers;
      for (int i = 0; i < 6; ++i) {
        numbers.push_back(complex ? Number(pairs[i].re, pairs[i].im) / 1024.0L : Number(whole[i]) / 1024.0L);
      }
      const auto signal = wholeSignal(random, type, 100, 1000);
      IirState floats(type, form, n, numbers);
      const auto want = floats.run(signal);
      std::vector<Kvr8u> buffer(60000), dst(signal.size() * type.sampleBytes);
      const auto src = type.samples(signal);
      const auto check = [&](void* state) {
        ASSERT_NE(nullptr, state);
        ASSERT_EQ(kvrStatusOk, type.filter(src.data(), dst.data(), 100, state, 0));
        EXPECT_EQ(want, type.samples(dst));
      };
      const auto init = [&](Kvr8u* memory, void** state) {
        if (complex) {
          KvrsIIRState32sc_16sc* made = nullptr;
          const KvrStatus status =
              memory == nullptr ? (cascade ? kvrsIIRInitAlloc32sc_BiQuad_16sc : kvrsIIRInitAlloc32sc_16sc)(
                                      &made, pairs, n, factor, nullptr)
                                : (cascade ? kvrsIIRInit32sc_BiQuad_16sc : kvrsIIRInit32sc_16sc)(
                                      &made, pairs, n, factor, nullptr, memory);
          *state = made;
          return status;
        }
        KvrsIIRState32s_16s* made = nullptr;
        const KvrStatus status = memory == nullptr
                                     ? (cascade ? kvrsIIRInitAlloc32s_BiQuad_16s : kvrsIIRInitAlloc32s_16s)(
                                           &made, whole, n, factor, nullptr)
                                     : (cascade ? kvrsIIRInit32s_BiQuad_16s : kvrsIIRInit32s_16s)(
                                           &made, whole, n, factor, nullptr, memory);
        *state = made;
        return status;
      };
      void* state = nullptr;
      ASSERT_EQ(kvrStatusOk, init(buffer.data(), &state));
      check(state);
      // One block for the conversion, one for the context.
      const auto make = [&] {
        void* made = nullptr;
        const KvrStatus status = init(nullptr, &made);
        EXPECT_EQ(status == kvrStatusOk, made != nullptr);
        if (made != nullptr) {
          check(made);
          EXPECT_EQ(kvrStatusOk, type.free(made));
        }
        return status;
      };
      EXPECT_EQ(2, countAllocationsWithFailures(make, kvrStatusOutOfMemory));
      const auto makeInPlace = [&] { return init(buffer.data(), &state); };
      EXPECT_EQ(1, countAllocationsWithFailures(makeInPlace, kvrStatusOutOfMemory));

      // SetTaps on other taps.
      IirState other(type, form, n, stableTaps(random, type, form, n, 0.5L));
      const auto set = [&] {
        void* const target = other;
        return complex ? kvrsIIRSetTaps32sc_16sc(pairs, static_cast<KvrsIIRState32sc_16sc*>(target), factor)
                       : kvrsIIRSetTaps32s_16s(whole, static_cast<KvrsIIRState32s_16s*>(target), factor);
      };
      const int blocks = liveBlocks();
      {
        FailingAllocator failing(1);
        EXPECT_EQ(kvrStatusOutOfMemory, set());
      }
      EXPECT_EQ(kvrStatusContextMismatch, set());
      EXPECT_EQ(blocks, liveBlocks());
      check(other);
    }
  }
  IirState wrong(*iirTypes()[2], IirForm::direct, 2,
                 stableTaps(random, *iirTypes()[2], IirForm::direct, 2, 0.5L));
  void* const target = wrong;
  EXPECT_EQ(kvrStatusContextMismatch,
            kvrsIIRSetTaps32s_16s(whole, static_cast<KvrsIIRState32s_16s*>(target), 0));
  EXPECT_EQ(kvrStatusNullPointer,
            kvrsIIRSetTaps32s_16s(nullptr, static_cast<KvrsIIRState32s_16s*>(target), 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIRSetTaps32s_16s(whole, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer, kvrsIIRSetTaps32sc_16sc(pairs, nullptr, 0));
  EXPECT_EQ(kvrStatusNullPointer,
            kvrsIIRSetTaps32sc_16sc(nullptr, static_cast<KvrsIIRState32sc_16sc*>(target), 0));
  EXPECT_EQ(kvrStatusContextMismatch,
            kvrsIIRSetTaps32sc_16sc(pairs, static_cast<KvrsIIRState32sc_16sc*>(target), 0));
}

TEST(IirState, SecondNames) {
  expectOneFunction({"kvrsIIRGetStateSize32s_16s", "kvrsIIRGetStateSize32s_16s32f"});
  expectOneFunction({"kvrsIIRGetStateSize32s_BiQuad_16s", "kvrsIIRGetStateSize32s_BiQuad_16s32f"});
  expectOneFunction({"kvrsIIRGetStateSize32sc_16sc", "kvrsIIRGetStateSize32sc_16sc32fc"});
  expectOneFunction({"kvrsIIRGetStateSize32sc_BiQuad_16sc", "kvrsIIRGetStateSize32sc_BiQuad_16sc32fc"});
  expectOneFunction({"kvrsIIRSetTaps_32fc", "kvrsIIRSetTaps32sc_16sc32fc"});
}

}  // namespace
