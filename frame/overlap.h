// Functions whose destination may lie over their sources in any way: results are those of elements computed one after
// the other.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FRAME_OVERLAP_H
#define KVRS_FRAME_OVERLAP_H

#include <cstddef>
#include <cstdint>

#include "frame/simd.h"
#include "kvrs/types.h"

namespace kvrs {

// Whether elements of src are stored before they are read when elements are computed one after the other: it
// begins below dst and reaches into it.
template <class S, class D>
bool readsResults(const S* src, const D* dst, size_t len) {
  const uintptr_t from = reinterpret_cast<uintptr_t>(src), to = reinterpret_cast<uintptr_t>(dst);
  return from < to && len <= SIZE_MAX / sizeof(S) && to - from < len * sizeof(S);
}

// map(dst, len, src...), a loop over elements, in their order. It may run over vectors as long as no source reads
// results: what lies above is read before it is stored.
template <class Map, class D, class... S>
KVRS_INLINE KvrStatus inElementOrder(const Map& map, D* dst, size_t len, const S*... src) {
  if (__builtin_expect((readsResults(src, dst, len) || ...), false)) {
    KvrStatus status = kvrStatusOk;
    for (size_t i = 0; i < len && status == kvrStatusOk; ++i) status = map(dst + i, 1, (src + i)...);
    return status;
  }
  return map(dst, len, src...);
}

}  // namespace kvrs

#endif
