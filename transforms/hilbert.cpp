// The analytic signal: the signal and the inverse transform of its spectrum turned by -i.
//
// By the definition all but the first half of the spectrum is cleared, and a complex transform back gives the signal as real
// part. That need not be computed: the imaginary part alone is a real signal, whose spectrum is -i X[k] below the middle and
// 0 at both ends.
// SPDX-License-Identifier: MIT
#include <cstring>

#include "frame/buffer.h"
#include "frame/check.h"
#include "frame/saturate.h"
#include "frame/tile.h"
#include "frame/unaligned.h"
#include "kvrs/arith_float.h"
#include "kvrs/complex_parts.h"
#include "kvrs/convert.h"
#include "kvrs/dft.h"
#include "kvrs/hilbert.h"

namespace kvrs::hilbert {

enum IdWord : uint32_t { kWord32f32fc = 0x434d4145, kWord16s32fc, kWord16s16sc };

struct Record {
  uint32_t idWord;
  int32_t len;
  int32_t workSize;  // of the transform, as its GetBufSize tells it
  int32_t hint;      // kept, without effect
  KvrsDFTSpec_R_32f* dft;
};

}  // namespace kvrs::hilbert

struct KvrsHilbertSpec_32f32fc : kvrs::hilbert::Record {};
struct KvrsHilbertSpec_16s32fc : kvrs::hilbert::Record {};
struct KvrsHilbertSpec_16s16sc : kvrs::hilbert::Record {};

namespace kvrs::hilbert {
namespace {

using unaligned::get;
using unaligned::put;

template <class Spec>
KvrStatus initAlloc(IdWord word, Spec** spec, int len, KvrHintAlgorithm hint) {
  if (spec == nullptr) return kvrStatusNullPointer;
  if (len < 1) return kvrStatusBadLength;
  Scratch memory(sizeof(Record));
  if (!memory.ok()) return kvrStatusOutOfMemory;
  Record* const r = memory.as<Record>();
  r->len = len;
  r->hint = hint;
  const KvrStatus status = kvrsDFTInitAlloc_R_32f(&r->dft, len, kvrFftDivInvByN, hint);
  if (status != kvrStatusOk) return status;
  memory.keep();
  kvrsDFTGetBufSize_R_32f(r->dft, &r->workSize);
  r->idWord = word;
  *spec = static_cast<Spec*>(r);
  return kvrStatusOk;
}

KvrStatus release(Record* r) {
  const KvrStatus status = kvrsDFTFree_R_32f(r->dft);
  if (status != kvrStatusOk) return status;
  kvrFree(r);
  return kvrStatusOk;
}

// The Hilbert transform of len >= 3 numbers; dst may be src.
KvrStatus transform(const Record& r, const Kvr32f* src, Kvr32f* dst, Kvr8u* work) {
  KvrStatus status = kvrsDFTFwd_RToPerm_32f(src, dst, r.dft, work);
  if (status != kvrStatusOk) return status;
  // X[0] and, of an even length, X[len/2] come first.
  const int head = r.len % 2 == 0 ? 2 : 1;
  for (int i = 0; i < head; ++i) put(Kvr32f(0), dst + i);
  const int pairs = (r.len - 1) / 2;
  status = kvrsMulC_32fc_I({0, -1}, reinterpret_cast<Kvr32fc*>(dst + head), pairs);
  if (status != kvrStatusOk) return status;
  return kvrsDFTInv_PermToR_32f(dst, dst, r.dft, work);
}

// The imaginary parts stand in the second half of dst, since n + i is never written before it has been read: a tile at a
// time they go between the real parts, for which getReal(begin, count, tile) returns an array.
template <class GetReal>
void join(const Record& r, Kvr32fc* dst, GetReal getReal) {
  const size_t len = static_cast<size_t>(r.len);
  const Kvr32f* const imag = &dst->re + len;
  forTilePairs<Kvr32f, Kvr32f>(len, [=](Kvr32f* tile, Kvr32f* other, size_t begin, size_t count) {
    std::memcpy(static_cast<void*>(tile), static_cast<const void*>(imag + begin), count * sizeof(Kvr32f));
    kvrsRealToCplx_32f(getReal(begin, count, other), tile, dst + begin, static_cast<int>(count));
  });
}

// One or two numbers have no imaginary part.
template <class S, class D, class Part>
void withoutImag(const Record& r, const S* src, D* dst, Part part) {
  for (int i = 0; i < r.len; ++i) {
    const auto re = part(get(src + i));
    put(re, &dst[i].re);
    put(decltype(re)(0), &dst[i].im);
  }
}

KvrStatus run(const Record& r, const Kvr32f* src, Kvr32fc* dst) {
  if (r.len < 3) {
    withoutImag(r, src, dst, [](Kvr32f v) { return v; });
    return kvrStatusOk;
  }
  const WorkArea work(r.workSize, nullptr);
  if (!work.ok()) return kvrStatusOutOfMemory;
  const KvrStatus status = transform(r, src, &dst->re + r.len, work.as<Kvr8u>());
  if (status == kvrStatusOk) join(r, dst, [=](size_t begin, size_t, Kvr32f*) { return src + begin; });
  return status;
}

KvrStatus run(const Record& r, const Kvr16s* src, Kvr32fc* dst) {
  if (r.len < 3) {
    withoutImag(r, src, dst, [](Kvr16s v) { return static_cast<Kvr32f>(v); });
    return kvrStatusOk;
  }
  const WorkArea work(r.workSize, nullptr);
  if (!work.ok()) return kvrStatusOutOfMemory;
  Kvr32f* const imag = &dst->re + r.len;
  kvrsConvert_16s32f(src, imag, r.len);
  const KvrStatus status = transform(r, imag, imag, work.as<Kvr8u>());
  if (status != kvrStatusOk) return status;
  join(r, dst, [=](size_t begin, size_t count, Kvr32f* tile) {
    kvrsConvert_16s32f(src + begin, tile, static_cast<int>(count));
    return static_cast<const Kvr32f*>(tile);
  });
  return kvrStatusOk;
}

// v * 2^(-scaleFactor), truncated and saturated.
Kvr16s truncated(Kvr16s v, int scaleFactor) {
  if (scaleFactor >= 0) return static_cast<Kvr16s>(v / (1 << (scaleFactor < 16 ? scaleFactor : 16)));
  return saturate<Kvr16s>(int32_t{v} * (1 << (scaleFactor > -16 ? -scaleFactor : 15)));
}

KvrStatus run(const Record& r, const Kvr16s* src, Kvr16sc* dst, int scaleFactor) {
  if (r.len < 3) {
    withoutImag(r, src, dst, [=](Kvr16s v) { return truncated(v, scaleFactor); });
    return kvrStatusOk;
  }
  const size_t len = static_cast<size_t>(r.len);
  const size_t bytes = roundUp(len * sizeof(Kvr32f), kBufferAlignment);
  const Scratch block(uint64_t{bytes} + static_cast<uint64_t>(r.workSize));
  if (!block.ok()) return kvrStatusOutOfMemory;
  Kvr32f* const imag = block.as<Kvr32f>();
  kvrsConvert_16s32f(src, imag, r.len);
  const KvrStatus status = transform(r, imag, imag, block.as<Kvr8u>() + bytes);
  if (status != kvrStatusOk) return status;
  forTilePairs<Kvr32f, Kvr32fc>(len, [=](Kvr32f* tile, Kvr32fc* both, size_t begin, size_t count) {
    const int numbers = static_cast<int>(count);
    kvrsConvert_16s32f(src + begin, tile, numbers);
    kvrsRealToCplx_32f(tile, imag + begin, both, numbers);
    kvrsConvert_32f16s_Sfs(&both->re, &dst[begin].re, 2 * numbers, kvrRoundNear, scaleFactor);
  });
  return kvrStatusOk;
}

}  // namespace
}  // namespace kvrs::hilbert

using kvrs::hilbert::initAlloc;
using kvrs::hilbert::release;
using kvrs::hilbert::run;

KvrStatus kvrsHilbertInitAlloc_32f32fc(KvrsHilbertSpec_32f32fc** spec, int len,
                                       KvrHintAlgorithm hint) noexcept {
  return initAlloc(kvrs::hilbert::kWord32f32fc, spec, len, hint);
}

KvrStatus kvrsHilbertFree_32f32fc(KvrsHilbertSpec_32f32fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::hilbert::kWord32f32fc));
  return release(spec);
}

KvrStatus kvrsHilbert_32f32fc(const Kvr32f* src, Kvr32fc* dst, const KvrsHilbertSpec_32f32fc* spec) noexcept {
  KVRS_CHECK(pointers(src, dst, spec), context(spec, kvrs::hilbert::kWord32f32fc));
  return run(*spec, src, dst);
}

KvrStatus kvrsHilbertInitAlloc_16s32fc(KvrsHilbertSpec_16s32fc** spec, int len,
                                       KvrHintAlgorithm hint) noexcept {
  return initAlloc(kvrs::hilbert::kWord16s32fc, spec, len, hint);
}

KvrStatus kvrsHilbertFree_16s32fc(KvrsHilbertSpec_16s32fc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::hilbert::kWord16s32fc));
  return release(spec);
}

KvrStatus kvrsHilbert_16s32fc(const Kvr16s* src, Kvr32fc* dst, const KvrsHilbertSpec_16s32fc* spec) noexcept {
  KVRS_CHECK(pointers(src, dst, spec), context(spec, kvrs::hilbert::kWord16s32fc));
  return run(*spec, src, dst);
}

KvrStatus kvrsHilbertInitAlloc_16s16sc(KvrsHilbertSpec_16s16sc** spec, int len,
                                       KvrHintAlgorithm hint) noexcept {
  return initAlloc(kvrs::hilbert::kWord16s16sc, spec, len, hint);
}

KvrStatus kvrsHilbertFree_16s16sc(KvrsHilbertSpec_16s16sc* spec) noexcept {
  KVRS_CHECK(context(spec, kvrs::hilbert::kWord16s16sc));
  return release(spec);
}

KvrStatus kvrsHilbert_16s16sc_Sfs(const Kvr16s* src, Kvr16sc* dst, const KvrsHilbertSpec_16s16sc* spec,
                                  int scaleFactor) noexcept {
  KVRS_CHECK(pointers(src, dst, spec), context(spec, kvrs::hilbert::kWord16s16sc));
  return run(*spec, src, dst, scaleFactor);
}
